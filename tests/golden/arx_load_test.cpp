// LoadARX on images built by hand for every version family: what an old file lacks is filled,
// what it must not keep is reset, and the boxes a load shows.

#include <gtest/gtest.h>

#include <tuple>

#include "frame/project_open.hpp"
#include "golden/arx_layout.hpp"
#include "golden/arx_sample_model.hpp"
#include "model/project_file.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

using test::buildArxImage;
using I2Pair = std::array<int16_t, 2>;
using F4Pair = std::array<float, 2>;

const char* const kRecalculate = "All yield curves must be recalculated.";
const char* const kMapsheetTitle = "Remove mapsheet identifier?";

class ArxLoad : public ::testing::Test {
protected:
    // Writes the description as a file of `version` and loads it into `into`.
    bool loadImage(const Model& description, int16_t version, Model& into) {
        test::writeFileBytes(path(), buildArxImage(description, version).bytes());
        return LoadARX(into, host, path());
    }
    bool loadImage(const Model& description, int16_t version) {
        return loadImage(description, version, loaded);
    }
    std::string path() const { return dir.file("image.arx"); }
    const test::ShownBox* boxTitled(const std::string& title) const {
        for (const auto& box : host.prompt.shown)
            if (box.title == title) return &box;
        return nullptr;
    }

    test::TempDir dir;
    test::FakeHost host;
    Model loaded;
};

// The sample with names as files below 3001 keep them.
Model oldNamedModel() {
    Model m = test::distinctModel();
    test::setOldFormNames(m);
    return m;
}

// HAR targets of which some equal the age computed under the polygon's own model.
void setComputedTargets(Model& m) {
    auto harvestAge = [&m](int p, int model) {
        return m.HarvAge[static_cast<std::size_t>(p)][static_cast<std::size_t>(model)].HarvestAge;
    };
    // MGNT {0, 1}: the existing target was computed, the future one was the user's.
    m.Poly[0].HAR = {harvestAge(0, 0), static_cast<int16_t>(harvestAge(0, 1) + 1)};
    // MGNT {1, 0}: both computed, each under its own model.
    m.Poly[1].HAR = {harvestAge(1, 1), harvestAge(1, 0)};
    // MGNT {1, 1}: the existing target equals the VDYP age, which is not its model's.
    m.Poly[2].HAR = {harvestAge(2, 0), harvestAge(2, 1)};
    m.Poly[2].YIELDSTATE = {0, 3};
}

// What every file below 200 gets for the polygon fields and calculation flags it lacks. The
// flag that such a file leaves alone keeps what the reset before reading gave it.
void expectOldFill(const Model& loaded, const Model& description, int16_t flag4) {
    for (int p = 0; p < 3; ++p) {
        SCOPED_TRACE("polygon " + std::to_string(p));
        const PolyCalc& c = loaded.PolyC[p];
        EXPECT_EQ(std::tie(c.SORT, c.LISTROW, c.EXCLUDE, c.DELETE, c.OWNERSHIP, c.CALCFLAG, c.CALCA,
                           c.CALCB, c.REGENDELAY),
                  std::make_tuple(p, p, 0, 0, 0, 0, 0, 0, -1));
        EXPECT_EQ(c.VCCCALC, 0.0f);
        EXPECT_EQ(std::tie(c.MINCUTAGE, c.MINCUTDBH, c.MINCUTVOL),
                  std::make_tuple(I2Pair{-1, -1}, F4Pair{-1.0f, -1.0f}, F4Pair{-1.0f, -1.0f}));
        EXPECT_EQ(c.VX, (std::array<int16_t, 6>{1, 1, 1, 1, 1, 1}));
        const PolyData& poly = loaded.Poly[p];
        EXPECT_EQ(std::tie(poly.OAF1, poly.OAF2), std::make_tuple(-1, -1));
        EXPECT_EQ(poly.AREA, description.Poly[p].AREA);
        EXPECT_EQ(poly.TI, description.Poly[p].TI);
        const PolyMgmt& g = loaded.PolyM[p];
        EXPECT_EQ(std::tie(g.TUTILIZ, g.ROADAREA, g.FSTARTYEAR),
                  std::make_tuple(description.Poly[p].VUTILIZ, 7.5f, 12));
        EXPECT_EQ(g.NCDESC.str(), "default NC");
        EXPECT_EQ(g.TG, (std::array<int16_t, 5>{1, 2, 3, 4, 5}));
    }
    EXPECT_EQ(loaded.Poly[0].HAR, (I2Pair{-1, description.Poly[0].HAR[1]}));
    EXPECT_EQ(loaded.Poly[1].HAR, (I2Pair{-1, -1}));
    EXPECT_EQ(loaded.Poly[2].HAR, (I2Pair{description.Poly[2].HAR[0], -1}));
    // Curves of old files are recalculated: what was current is now out of date.
    EXPECT_EQ(loaded.Poly[0].YIELDSTATE, (I2Pair{1, 1}));
    EXPECT_EQ(loaded.Poly[2].YIELDSTATE, (I2Pair{0, 1}));

    const CalcInputs& in = loaded.Calc.inputs;
    EXPECT_EQ(in.SavedCut, (std::array<int16_t, 4>{1, 1, 1, 1}));
    EXPECT_EQ(std::tie(in.reservedFlag4, in.SavedDisPC, in.reservedFlag6, in.SavedHarvGap,
                       in.SavedNoHarv, in.SavedWithin),
              std::make_tuple(flag4, 0, 0, 0, 0, 0));
}

// Files below 111 hold eight settings only, 111 a short block of them; the settings of 111 are
// compared field by field by its round trip, so what is checked here is what both lack.
TEST_F(ArxLoad, Below200FillsWhatTheFileLacks) {
    for (const int16_t version : {100, 111}) {
        SCOPED_TRACE(version);
        Model d = oldNamedModel();
        setComputedTargets(d);
        if (version < 111) d.Settings.YieldRows = {99, 77};  // stale: the reader works them out
        loaded = Model();
        PolyMgmt& fill = loaded.DefaultPolyM;
        fill.NCDESC = "default NC";
        fill.ROADAREA = 7.5f;
        fill.TUTILIZ = 99.0f;
        fill.TG = {1, 2, 3, 4, 5};
        fill.FSTARTYEAR = 12;
        loaded.Calc.inputs.reservedFlag4 = 31;
        Model probe = loaded;
        ResetVars(probe);
        const int16_t flag4 = probe.Calc.inputs.reservedFlag4;
        host.prompt.shown.clear();
        host.prompt.answers = {Answer::No};

        ASSERT_TRUE(loadImage(d, version));
        const ProjectSettings& s = loaded.Settings;
        EXPECT_EQ(std::tie(s.YieldRows, s.YieldMinAge, s.YieldMaxAge, s.YieldIncAge),
                  std::make_tuple(I2Pair{4, 2}, I2Pair{2, 5}, I2Pair{6, 25}, I2Pair{1, 10}));
        EXPECT_EQ(test::polygonArrayMismatch(loaded), "");
        expectOldFill(loaded, d, flag4);
        const CalcInputs& in = loaded.Calc.inputs;
        EXPECT_EQ(std::tie(in.SavedVolRate, in.SavedCalcRate),
                  std::tie(d.Calc.inputs.SavedVolRate, d.Calc.inputs.SavedCalcRate));
        EXPECT_EQ(loaded.CutOrderLast, 2);
        EXPECT_EQ(loaded.CutOrder, d.CutOrder);
        EXPECT_EQ(loaded.VYield(1, 4).Vol, 0);  // old rows are not kept
        EXPECT_EQ(loaded.Poly[1].NAME.str(), "ABC 12");
        EXPECT_TRUE(host.prompt.showed(kRecalculate));
        EXPECT_TRUE(loaded.OldFormat);
        EXPECT_EQ(loaded.Header.FileVersion, version);
    }
    const ProjectSettings& s = loaded.Settings;
    EXPECT_EQ(std::tie(s.SPLIT, s.YIELDMODE), std::make_tuple(100.0f, 1));
}

// What a load of the current version keeps is compared field by field by the round trip; the
// report options are the program's own and are neither taken from the file nor reset.
TEST_F(ArxLoad, StatusNamesThePartBeingReadAndTheReportOptionsStay) {
    loaded.Report = {9, 9, 9, 9, 9, 9, 9};
    ASSERT_TRUE(loadImage(test::distinctModel(), 3226));
    const ReportOptions& r = loaded.Report;
    EXPECT_EQ(std::tie(r.RptIncrement, r.RptShowPoly, r.RptPrompt), std::make_tuple(9, 9, 9));
    const auto& texts = host.status.texts;
    ASSERT_FALSE(texts.empty());
    const std::string lead = "Loading ARX file : " + path();
    EXPECT_EQ(texts.front().rfind(lead, 0), 0u) << texts.front();
    EXPECT_NE(texts.front().find("Polygon Data"), std::string::npos);
    for (const char* part : {"VDYP Data", "VDYP Mix Species Data", "TIPSY Data"}) {
        bool seen = false;
        for (const auto& text : texts) seen = seen || text.find(part) != std::string::npos;
        EXPECT_TRUE(seen) << part;
    }
    EXPECT_FALSE(host.status.open);
}

TEST_F(ArxLoad, MapsheetQuestionBelow3001) {
    struct Case {
        int16_t version;
        Answer answer;
        std::array<const char*, 3> names;
    };
    for (const Case& c : {Case{3000, Answer::No, {"093G045 1234", "ABC 12", "ABCDEFG HIJ"}},
                          Case{3000, Answer::Yes, {"1234", "12", "HIJ"}},
                          Case{3001, Answer::Yes, {"093G045 1234", "ABC     12", "ABCDEFG HIJ"}}}) {
        SCOPED_TRACE(c.version);
        host.prompt.shown.clear();
        host.prompt.answers = {c.answer};
        const Model d = oldNamedModel();
        Model m;
        ASSERT_TRUE(loadImage(d, c.version, m));
        const test::ShownBox* box = boxTitled(kMapsheetTitle);
        ASSERT_EQ(box != nullptr, c.version < 3001);
        if (box) {
            EXPECT_EQ(box->text, "Do you want to remove the mapsheet name from the polygon name?");
            EXPECT_EQ(box->buttons, Buttons::YesNo);
        }
        for (std::size_t p = 0; p < 3; ++p) EXPECT_EQ(m.Poly[p].NAME.str(), c.names[p]);
        // Version 3000 already has the current layout, so its curves stand.
        EXPECT_FALSE(host.prompt.showed(kRecalculate));
        EXPECT_EQ(m.VYield(2, 4).Vol, d.VYield(2, 4).Vol);
    }
}

TEST_F(ArxLoad, SplitAndSortMethodOfEarlierCurrentLayouts) {
    const Model d = test::distinctModel();
    for (auto [version, split, sortMethod] :
         {std::tuple{3005, 100.0f, -3}, {3011, 100.0f, 4}, {3100, d.Settings.SPLIT, 4}}) {
        SCOPED_TRACE(version);
        Model m;
        ASSERT_TRUE(loadImage(d, static_cast<int16_t>(version), m));
        EXPECT_EQ(m.Settings.SPLIT, split);
        EXPECT_EQ(m.Calc.inputs.SortMethod, sortMethod);
        EXPECT_EQ(m.Calc.inputs.OrderColumn, d.Calc.inputs.OrderColumn);
    }
}

TEST_F(ArxLoad, RecalculationOnlyBelowVersion290) {
    Model d = test::distinctModel();
    ASSERT_TRUE(loadImage(d, 289));
    EXPECT_TRUE(host.prompt.showed(kRecalculate));
    EXPECT_TRUE(loaded.OldFormat);

    host.prompt.shown.clear();
    Model at290;
    ASSERT_TRUE(loadImage(d, 290, at290));
    EXPECT_FALSE(host.prompt.showed(kRecalculate));
    EXPECT_EQ(at290.Poly[0].YIELDSTATE, (I2Pair{3, 2}));
    EXPECT_EQ(at290.VYield(2, 3).Vol, d.VYield(2, 3).Vol);
    EXPECT_EQ(at290.VMix(1, 4)[3], d.VMix(1, 4)[3]);
}

// Another TIPSY's curves are out of date from version 200 on; the old-format rule then makes
// every state above 0 a 1.
TEST_F(ArxLoad, NewTipsyMarksTipsyCurvesFromVersion200) {
    Model d = test::distinctModel();
    d.Header.TIPSYVersion = "3.1";
    d.Poly[0].YIELDSTATE = {0, 0};
    d.Poly[1].YIELDSTATE = {3, 0};
    for (auto [version, first, second] : {std::tuple{3226, I2Pair{0, 1}, I2Pair{3, 1}},
                                          {200, I2Pair{0, 1}, I2Pair{1, 1}},
                                          {111, I2Pair{0, 0}, I2Pair{1, 0}}}) {
        SCOPED_TRACE(version);
        host.prompt.shown.clear();
        Model m;
        ASSERT_TRUE(loadImage(d, static_cast<int16_t>(version), m));
        EXPECT_TRUE(m.NewTIPSY);
        EXPECT_TRUE(host.prompt.showed("&NEWTIPSY"));
        EXPECT_EQ(m.Poly[0].YIELDSTATE, first);
        EXPECT_EQ(m.Poly[1].YIELDSTATE, second);
    }
}

TEST_F(ArxLoad, AnotherProgramStampShowsTheOldVersionBox) {
    ASSERT_TRUE(loadImage(test::distinctModel(), 3226));
    EXPECT_FALSE(host.prompt.showed("File Version: "));
    EXPECT_FALSE(loaded.OldVersion);

    Model d = test::distinctModel();
    d.Header.FileStamp = "Arborex 3.1 beta";
    ASSERT_TRUE(loadImage(d, 3226));
    const test::ShownBox* box = boxTitled("NOT FOUND - &OLDVERSION");
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->icon, Icon::Information);
    const std::string head = "File Version: Arborex 3.1 beta";
    const std::string tail = "Program Version: March 29, 2007 - 3.226Release";
    EXPECT_TRUE(box->text == head + "\n\n" + tail || box->text == head + "\r\n\r\n" + tail)
        << box->text;
    EXPECT_TRUE(loaded.OldVersion);
}

TEST_F(ArxLoad, OldVersionBoxTitleComesFromTheCatalogue) {
    MessageCatalogue& c = loaded.Messages;
    c.MessageTags = {{FixedString<16>("&OLDVERSION"), 0}};
    c.MessageLines = {{FixedString<128>("Older project file"), -1, 1}};
    c.TagCount = 0;
    c.LineCount = 0;
    Model d = test::distinctModel();
    d.Header.FileStamp = "March 1, 2004";
    ASSERT_TRUE(loadImage(d, 3226));
    bool titled = false;
    for (const auto& box : host.prompt.shown)
        titled = titled || (box.title.rfind("Older project file", 0) == 0 &&
                            box.text.find("File Version: March 1, 2004") != std::string::npos);
    EXPECT_TRUE(titled);
}

TEST_F(ArxLoad, NoPolygonsIsSaidAndTheRestStillReads) {
    Model d = test::distinctModel();
    d.LastPoly = -1;
    ASSERT_TRUE(loadImage(d, 3226));
    EXPECT_TRUE(host.prompt.showed("This file contains no polygon information"));
    EXPECT_EQ(loaded.LastPoly, -1);
    EXPECT_EQ(test::polygonArrayMismatch(loaded), "");
    EXPECT_EQ(loaded.Calc.NetArea, d.Calc.NetArea);
    EXPECT_EQ(loaded.Calc.YearTable[2].InvArea, d.Calc.YearTable[2].InvArea);
}

TEST_F(ArxLoad, BlankCalculationRecordResetsTheCalculationAndReadsOn) {
    Model d = test::distinctModel();
    d.Calc.inputs.AreaRunSaved = 0x2020;
    ASSERT_TRUE(loadImage(d, 3226));
    const CalcInputs& in = loaded.Calc.inputs;
    const CalcInputs empty;
    EXPECT_EQ(std::tie(in.AreaRunSaved, in.SavedAreaRate, in.SortMethod, in.Text1, in.SavedVolRate,
                       in.SavedCut, in.SavedWithin),
              std::tie(empty.AreaRunSaved, empty.SavedAreaRate, empty.SortMethod, empty.Text1,
                       empty.SavedVolRate, empty.SavedCut, empty.SavedWithin));
    // The bounds and arrays after the record are still read.
    const CalcState& got = loaded.Calc;
    EXPECT_EQ(got.BlockLast, 2);
    EXPECT_EQ(got.BlockList[2].Area, d.Calc.BlockList[2].Area);
    EXPECT_EQ(got.RoadList[3].RoadCut, d.Calc.RoadList[3].RoadCut);
    EXPECT_EQ(got.NetArea, d.Calc.NetArea);
}

TEST_F(ArxLoad, ArraysAtTheirThresholdsAreNotRead) {
    Model d = test::distinctModel();
    CalcState& c = d.Calc;
    c.BlockList.resize(0);
    c.RoadList.resize(1);
    c.CutList.resize(1);
    c.YearTable.resize(0);
    c.BlockLast = 0;
    c.RoadLast = 1;
    c.CutCount = 1;
    c.CalcHorizon = 0;
    ASSERT_TRUE(loadImage(d, 3226));
    const CalcState& got = loaded.Calc;
    EXPECT_EQ(std::tie(got.BlockLast, got.RoadLast, got.CutCount, got.CalcHorizon),
              std::make_tuple(0, 1, 1, 0));
    EXPECT_EQ(std::tie(got.BlockList[0].Polygon, got.RoadList[1].RoadBlock, got.CutList[1].CutAge,
                       got.YearTable[0].NumPolygons),
              std::make_tuple(0, 0, 0, 0));
}

// The writer puts out every allocated element; the reader skips an array at its threshold, so
// the roads are read from where the writer put the block. Earlier programs did the same.
TEST_F(ArxLoad, SkippedArrayThatHeldElementsShiftsTheLaterOnes) {
    Model m = test::distinctModel();
    m.Calc.BlockLast = 0;       // the writer still puts out blocks 0..2
    m.Calc.RoadList.resize(2);  // roads 1..2
    m.Calc.RoadLast = 2;
    m.Calc.CutCount = 0;
    m.Calc.CalcHorizon = 0;
    SaveArx(m, host, path(), 3226, false);
    const test::Bytes file = test::readFileBytes(path());
    const test::ArxImage image = buildArxImage(m, 3226);
    ASSERT_EQ(file.size(), image.bytes().size());
    const std::size_t block0 = image.recordOffset("Block[0]");

    ASSERT_TRUE(LoadARX(loaded, host, path()));
    const CalcState& got = loaded.Calc;
    EXPECT_EQ(got.RoadLast, 2);
    EXPECT_EQ(got.RoadList[1].RoadBlock, m.Calc.BlockList[0].Polygon);
    EXPECT_EQ(got.RoadList[1].RoadArea, test::getF4(file, block0 + 2));
    EXPECT_EQ(got.RoadList[2].RoadBlock, test::getI2(file, block0 + 14));
    EXPECT_EQ(got.RoadList[2].RoadCut, test::getF4(file, block0 + 24));
    EXPECT_EQ(got.BlockList[0].Polygon, 0);
}

}  // namespace
}  // namespace arborex
