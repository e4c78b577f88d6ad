// LoadARX on images built by hand for every version family: what an old file lacks is filled,
// what it must not keep is reset, and the boxes a load shows.

#include <gtest/gtest.h>

#include "golden/arx_layout.hpp"
#include "golden/arx_sample_model.hpp"
#include "model/project_file.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

using test::ArxImage;
using test::buildArxImage;
using test::Bytes;

const char* const kRecalculate = "All yield curves must be recalculated.";
const char* const kMapsheetTitle = "Remove mapsheet identifier?";
const char* const kMapsheetText = "Do you want to remove the mapsheet name from the polygon name?";

::testing::AssertionResult matches(const ArxImage& expected, const Bytes& actual) {
    const std::vector<std::string> diffs = expected.differences(actual);
    if (diffs.empty()) return ::testing::AssertionSuccess();
    auto failure = ::testing::AssertionFailure() << diffs.size() << " differences:";
    for (std::size_t i = 0; i < diffs.size() && i < 40; ++i) failure << "\n  " << diffs[i];
    return failure;
}

class ArxLoad : public ::testing::Test {
protected:
    // Writes the description as a file of `version` and loads it into `loaded`.
    bool loadImage(const Model& description, int16_t version) {
        image = buildArxImage(description, version);
        test::writeFileBytes(path(), image.bytes());
        return LoadARX(loaded, host, path());
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
    ArxImage image;
};

// Names as files below 3001 keep them: an 8-character map sheet and a 4-character polygon.
Model oldNamedModel() {
    Model m = test::distinctModel();
    m.Poly[0].NAME = "093G045 1234";
    m.Poly[1].NAME = "ABC     12  ";
    m.Poly[2].NAME = "ABCDEFG HIJ ";
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

// What every file below 200 gets for the polygon fields it lacks.
void expectOldPolygonFill(const Model& loaded, const Model& description) {
    for (int p = 0; p < 3; ++p) {
        SCOPED_TRACE("polygon " + std::to_string(p));
        const PolyCalc& c = loaded.PolyC[p];
        EXPECT_EQ(c.SORT, p);
        EXPECT_EQ(c.LISTROW, p);
        EXPECT_EQ(c.EXCLUDE, 0);
        EXPECT_EQ(c.DELETE, 0);
        EXPECT_EQ(c.OWNERSHIP, 0);
        EXPECT_EQ(c.VCCCALC, 0.0f);
        EXPECT_EQ(c.CALCFLAG, 0);
        EXPECT_EQ(c.CALCA, 0);
        EXPECT_EQ(c.CALCB, 0);
        EXPECT_EQ(c.REGENDELAY, -1);
        EXPECT_EQ(c.MINCUTAGE, (std::array<int16_t, 2>{-1, -1}));
        EXPECT_EQ(c.MINCUTDBH, (std::array<float, 2>{-1.0f, -1.0f}));
        EXPECT_EQ(c.MINCUTVOL, (std::array<float, 2>{-1.0f, -1.0f}));
        EXPECT_EQ(c.VX, (std::array<int16_t, 6>{1, 1, 1, 1, 1, 1}));
        EXPECT_EQ(loaded.Poly[p].OAF1, -1);
        EXPECT_EQ(loaded.Poly[p].OAF2, -1);
        EXPECT_EQ(loaded.Poly[p].AREA, description.Poly[p].AREA);
        EXPECT_EQ(loaded.Poly[p].TI, description.Poly[p].TI);
        const PolyMgmt& g = loaded.PolyM[p];
        EXPECT_EQ(g.TUTILIZ, description.Poly[p].VUTILIZ);
        EXPECT_EQ(g.NCDESC.str(), "default NC");
        EXPECT_EQ(g.ROADAREA, 7.5f);
        EXPECT_EQ(g.TG, (std::array<int16_t, 5>{1, 2, 3, 4, 5}));
        EXPECT_EQ(g.FSTARTYEAR, 12);
    }
    EXPECT_EQ(loaded.Poly[0].HAR, (std::array<int16_t, 2>{-1, description.Poly[0].HAR[1]}));
    EXPECT_EQ(loaded.Poly[1].HAR, (std::array<int16_t, 2>{-1, -1}));
    EXPECT_EQ(loaded.Poly[2].HAR, (std::array<int16_t, 2>{description.Poly[2].HAR[0], -1}));
    // Curves of old files are recalculated: what was current is now out of date.
    EXPECT_EQ(loaded.Poly[0].YIELDSTATE, (std::array<int16_t, 2>{1, 1}));
    EXPECT_EQ(loaded.Poly[2].YIELDSTATE, (std::array<int16_t, 2>{0, 1}));
}

void expectOldFlags(const Model& loaded, int16_t flag4) {
    const CalcInputs& in = loaded.Calc.inputs;
    EXPECT_EQ(in.SavedCut, (std::array<int16_t, 4>{1, 1, 1, 1}));
    EXPECT_EQ(in.reservedFlag4, flag4);
    EXPECT_EQ(in.SavedDisPC, 0);
    EXPECT_EQ(in.reservedFlag6, 0);
    EXPECT_EQ(in.SavedHarvGap, 0);
    EXPECT_EQ(in.SavedNoHarv, 0);
    EXPECT_EQ(in.SavedWithin, 0);
}

void prepareDefaultPolygon(Model& m) {
    m.DefaultPolyM.NCDESC = "default NC";
    m.DefaultPolyM.ROADAREA = 7.5f;
    m.DefaultPolyM.TUTILIZ = 99.0f;
    m.DefaultPolyM.TG = {1, 2, 3, 4, 5};
    m.DefaultPolyM.FSTARTYEAR = 12;
}

// The flag that a file below 200 leaves alone keeps what the reset before reading gave it.
int16_t flag4AfterReset(const Model& m) {
    Model probe = m;
    ResetVars(probe);
    return probe.Calc.inputs.reservedFlag4;
}

TEST_F(ArxLoad, BelowVersion111EightSettingsAndFilledPolygons) {
    Model d = oldNamedModel();
    setComputedTargets(d);
    d.Settings.YieldRows = {99, 77};  // stale counts: the reader works them out itself
    prepareDefaultPolygon(loaded);
    loaded.Calc.inputs.reservedFlag4 = 31;
    const int16_t flag4 = flag4AfterReset(loaded);
    host.prompt.answers = {Answer::No};

    ASSERT_TRUE(loadImage(d, 100));
    EXPECT_EQ(loaded.Settings.YieldRows, (std::array<int16_t, 2>{4, 2}));
    EXPECT_EQ(loaded.Settings.YieldMinAge, (std::array<int16_t, 2>{2, 5}));
    EXPECT_EQ(loaded.Settings.YieldMaxAge, (std::array<int16_t, 2>{6, 25}));
    EXPECT_EQ(loaded.Settings.YieldIncAge, (std::array<int16_t, 2>{1, 10}));
    EXPECT_EQ(test::polygonArrayMismatch(loaded), "");
    expectOldPolygonFill(loaded, d);
    expectOldFlags(loaded, flag4);
    EXPECT_EQ(loaded.Calc.inputs.SavedVolRate, d.Calc.inputs.SavedVolRate);
    EXPECT_EQ(loaded.Calc.inputs.SavedCalcRate, d.Calc.inputs.SavedCalcRate);
    EXPECT_EQ(loaded.CutOrderLast, 2);
    EXPECT_EQ(loaded.CutOrder, d.CutOrder);
    EXPECT_EQ(loaded.VYield(1, 4).Vol, 0);  // old rows are not kept
    EXPECT_TRUE(host.prompt.showed(kRecalculate));
    EXPECT_TRUE(loaded.OldFormat);
    EXPECT_EQ(loaded.Header.FileVersion, 100);
}

TEST_F(ArxLoad, Version111ShortSettingsBlockAndFilledPolygons) {
    Model d = oldNamedModel();
    setComputedTargets(d);
    prepareDefaultPolygon(loaded);
    const int16_t flag4 = flag4AfterReset(loaded);
    host.prompt.answers = {Answer::No};

    ASSERT_TRUE(loadImage(d, 111));
    const ProjectSettings& s = loaded.Settings;
    EXPECT_EQ(s.REGENDELAY, d.Settings.REGENDELAY);
    EXPECT_EQ(s.PCADJUSTFACT, d.Settings.PCADJUSTFACT);
    EXPECT_EQ(s.PLANHORZ, d.Settings.PLANHORZ);
    EXPECT_EQ(s.MINVOL, d.Settings.MINVOL);
    EXPECT_EQ(s.MINDIA, d.Settings.MINDIA);
    EXPECT_EQ(s.MINAGE, d.Settings.MINAGE);
    EXPECT_EQ(s.OAF1, d.Settings.OAF1);
    EXPECT_EQ(s.OAF2, d.Settings.OAF2);
    EXPECT_EQ(s.PCNETDOWN, d.Settings.PCNETDOWN);
    EXPECT_EQ(s.VDYPPSYUB, d.Settings.VDYPPSYUB);
    EXPECT_EQ(s.TIPSYSITE, d.Settings.TIPSYSITE);
    EXPECT_EQ(s.TIPSYHEIGHT, d.Settings.TIPSYHEIGHT);
    EXPECT_EQ(s.NETMAI, d.Settings.NETMAI);
    EXPECT_EQ(s.USERLEVEL, d.Settings.USERLEVEL);
    EXPECT_EQ(s.YieldRows, (std::array<int16_t, 2>{4, 2}));
    EXPECT_EQ(s.YIELDINC, d.Settings.YIELDINC);
    EXPECT_EQ(s.OldColors, d.Settings.OldColors);
    EXPECT_EQ(s.SPLIT, 100.0f);
    EXPECT_EQ(s.YIELDMODE, 1);
    expectOldPolygonFill(loaded, d);
    expectOldFlags(loaded, flag4);
    EXPECT_EQ(loaded.Poly[1].NAME.str(), "ABC 12");
    EXPECT_TRUE(host.prompt.showed(kRecalculate));
}

TEST_F(ArxLoad, Version200FillsManagementFromTheDefaultPolygon) {
    Model d = oldNamedModel();
    d.Settings.PCADJUSTHARVAGE = 1;
    prepareDefaultPolygon(loaded);
    host.prompt.answers = {Answer::No};

    ASSERT_TRUE(loadImage(d, 200));
    for (int p = 0; p < 3; ++p) {
        EXPECT_EQ(loaded.PolyM[p].TUTILIZ, d.Poly[p].VUTILIZ);
        EXPECT_EQ(loaded.PolyM[p].NCDESC.str(), "default NC");
        EXPECT_EQ(loaded.PolyC[p].SORT, d.PolyC[p].SORT);  // the file has its own
        EXPECT_EQ(loaded.PolyC[p].MINCUTDBH, d.PolyC[p].MINCUTDBH);
        EXPECT_EQ(loaded.Poly[p].HAR, d.Poly[p].HAR);
        EXPECT_EQ(loaded.Poly[p].OAF2, d.Poly[p].OAF2);
    }
    EXPECT_EQ(loaded.Settings.PCADJUSTHARVAGE, 0);
    EXPECT_EQ(loaded.Settings.PCperc, d.Settings.PCperc);
    EXPECT_EQ(loaded.Settings.OldColors, d.Settings.OldColors);
    EXPECT_EQ(loaded.Calc.inputs.SavedWithin, d.Calc.inputs.SavedWithin);
    EXPECT_EQ(loaded.Calc.inputs.SavedCut, d.Calc.inputs.SavedCut);
    EXPECT_TRUE(host.prompt.showed(kRecalculate));
    EXPECT_EQ(loaded.Poly[1].YIELDSTATE, (std::array<int16_t, 2>{1, 1}));
}

TEST_F(ArxLoad, CurrentVersionNeitherFillsNorAsks) {
    Model d = test::distinctModel();
    d.Settings.PCADJUSTHARVAGE = 1;
    ASSERT_TRUE(loadImage(d, 3226));
    EXPECT_EQ(loaded.Settings.PCADJUSTHARVAGE, 0);
    EXPECT_EQ(loaded.Settings.SPLIT, d.Settings.SPLIT);
    EXPECT_EQ(loaded.Calc.inputs.SortMethod, 4);
    EXPECT_EQ(loaded.Poly[1].YIELDSTATE, d.Poly[1].YIELDSTATE);
    EXPECT_EQ(loaded.PolyM[2].FINCREASE, d.PolyM[2].FINCREASE);
    EXPECT_TRUE(host.prompt.shown.empty());
    EXPECT_FALSE(loaded.OldFormat);
}

TEST_F(ArxLoad, StatusNamesThePartBeingRead) {
    ASSERT_TRUE(loadImage(test::distinctModel(), 3226));
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

TEST_F(ArxLoad, MapsheetQuestionBelow3001KeepsTheMapsheetOnNo) {
    host.prompt.answers = {Answer::No};
    const Model d = oldNamedModel();
    ASSERT_TRUE(loadImage(d, 3000));
    const test::ShownBox* box = boxTitled(kMapsheetTitle);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(box->text, kMapsheetText);
    EXPECT_EQ(box->buttons, Buttons::YesNo);
    EXPECT_EQ(loaded.Poly[0].NAME.str(), "093G045 1234");
    EXPECT_EQ(loaded.Poly[1].NAME.str(), "ABC 12");
    EXPECT_EQ(loaded.Poly[2].NAME.str(), "ABCDEFG HIJ");
    // Version 3000 already has the current layout, so its curves stand.
    EXPECT_FALSE(host.prompt.showed(kRecalculate));
    EXPECT_EQ(loaded.VYield(2, 4).Vol, d.VYield(2, 4).Vol);
}

TEST_F(ArxLoad, MapsheetQuestionBelow3001KeepsThePolygonNumberOnYes) {
    host.prompt.answers = {Answer::Yes};
    ASSERT_TRUE(loadImage(oldNamedModel(), 3000));
    EXPECT_EQ(loaded.Poly[0].NAME.str(), "1234");
    EXPECT_EQ(loaded.Poly[1].NAME.str(), "12");
    EXPECT_EQ(loaded.Poly[2].NAME.str(), "HIJ");
}

TEST_F(ArxLoad, NoMapsheetQuestionFrom3001) {
    ASSERT_TRUE(loadImage(oldNamedModel(), 3001));
    EXPECT_EQ(boxTitled(kMapsheetTitle), nullptr);
    EXPECT_EQ(loaded.Poly[1].NAME.raw(), "ABC     12  ");
}

TEST_F(ArxLoad, SplitAndSortMethodOfEarlierCurrentLayouts) {
    Model d = test::distinctModel();
    ASSERT_TRUE(loadImage(d, 3005));
    EXPECT_EQ(loaded.Settings.SPLIT, 100.0f);
    EXPECT_EQ(loaded.Calc.inputs.SortMethod, -3);
    EXPECT_EQ(loaded.Calc.inputs.OrderColumn, d.Calc.inputs.OrderColumn);

    Model at3011;
    test::writeFileBytes(path(), buildArxImage(d, 3011).bytes());
    ASSERT_TRUE(LoadARX(at3011, host, path()));
    EXPECT_EQ(at3011.Settings.SPLIT, 100.0f);
    EXPECT_EQ(at3011.Calc.inputs.SortMethod, 4);

    Model at3100;
    test::writeFileBytes(path(), buildArxImage(d, 3100).bytes());
    ASSERT_TRUE(LoadARX(at3100, host, path()));
    EXPECT_EQ(at3100.Settings.SPLIT, d.Settings.SPLIT);
}

TEST_F(ArxLoad, RecalculationOnlyBelowVersion290) {
    Model d = test::distinctModel();
    ASSERT_TRUE(loadImage(d, 289));
    EXPECT_TRUE(host.prompt.showed(kRecalculate));
    EXPECT_TRUE(loaded.OldFormat);

    test::FakeHost other;
    Model at290;
    test::writeFileBytes(path(), buildArxImage(d, 290).bytes());
    ASSERT_TRUE(LoadARX(at290, other, path()));
    EXPECT_FALSE(other.prompt.showed(kRecalculate));
    EXPECT_EQ(at290.Poly[0].YIELDSTATE, (std::array<int16_t, 2>{3, 2}));
    EXPECT_EQ(at290.VYield(2, 3).Vol, d.VYield(2, 3).Vol);
    EXPECT_EQ(at290.VMix(1, 4)[3], d.VMix(1, 4)[3]);
}

// Another TIPSY's curves are out of date from version 200 on; the old-format rule then makes
// every state above 0 a 1.
std::array<std::array<int16_t, 2>, 2> statesAfterNewTipsy(int16_t version, bool& box) {
    Model d = test::distinctModel();
    d.Header.TIPSYVersion = "3.1";
    d.Poly[0].YIELDSTATE = {0, 0};
    d.Poly[1].YIELDSTATE = {3, 0};
    test::TempDir dir;
    test::FakeHost host;
    Model loaded;
    test::writeFileBytes(dir.file("t.arx"), buildArxImage(d, version).bytes());
    EXPECT_TRUE(LoadARX(loaded, host, dir.file("t.arx")));
    EXPECT_TRUE(loaded.NewTIPSY);
    box = host.prompt.showed("&NEWTIPSY");
    return {loaded.Poly[0].YIELDSTATE, loaded.Poly[1].YIELDSTATE};
}

TEST(ArxLoadNewTipsy, MarksTipsyCurvesFromVersion200) {
    using States = std::array<std::array<int16_t, 2>, 2>;
    bool box = false;
    EXPECT_EQ(statesAfterNewTipsy(3226, box), (States{{{0, 1}, {3, 1}}}));
    EXPECT_TRUE(box);
    EXPECT_EQ(statesAfterNewTipsy(200, box), (States{{{0, 1}, {1, 1}}}));
    EXPECT_TRUE(box);
    EXPECT_EQ(statesAfterNewTipsy(111, box), (States{{{0, 0}, {1, 0}}}));
    EXPECT_TRUE(box);
}

TEST_F(ArxLoad, AnotherProgramStampShowsTheOldVersionBox) {
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

TEST_F(ArxLoad, SameStampShowsNoOldVersionBox) {
    ASSERT_TRUE(loadImage(test::distinctModel(), 3226));
    EXPECT_FALSE(host.prompt.showed("File Version: "));
    EXPECT_FALSE(loaded.OldVersion);
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
    EXPECT_EQ(in.AreaRunSaved, empty.AreaRunSaved);
    EXPECT_EQ(in.SavedAreaRate, empty.SavedAreaRate);
    EXPECT_EQ(in.SortMethod, empty.SortMethod);
    EXPECT_EQ(in.Text1, empty.Text1);
    EXPECT_EQ(in.SavedVolRate, empty.SavedVolRate);
    EXPECT_EQ(in.SavedCut, empty.SavedCut);
    EXPECT_EQ(in.SavedWithin, empty.SavedWithin);
    // The bounds and arrays after the record are still read.
    EXPECT_EQ(loaded.Calc.BlockLast, 2);
    EXPECT_EQ(loaded.Calc.BlockList[2].Area, d.Calc.BlockList[2].Area);
    EXPECT_EQ(loaded.Calc.RoadList[3].RoadCut, d.Calc.RoadList[3].RoadCut);
    EXPECT_EQ(loaded.Calc.NetArea, d.Calc.NetArea);
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
    EXPECT_EQ(got.BlockLast, 0);
    EXPECT_EQ(got.RoadLast, 1);
    EXPECT_EQ(got.CutCount, 1);
    EXPECT_EQ(got.CalcHorizon, 0);
    EXPECT_EQ(got.BlockList[0].Polygon, 0);
    EXPECT_EQ(got.RoadList[1].RoadBlock, 0);
    EXPECT_EQ(got.CutList[1].CutAge, 0);
    EXPECT_EQ(got.YearTable[0].NumPolygons, 0);
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
    const Bytes file = test::readFileBytes(path());
    image = buildArxImage(m, 3226);
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

TEST_F(ArxLoad, ReportOptionsOfTheFileAreNeverTaken) {
    Model d = test::distinctModel();
    loaded.Report = {9, 9, 9, 9, 9, 9, 9};
    ASSERT_TRUE(loadImage(d, 3226));
    EXPECT_EQ(loaded.Report.RptIncrement, 9);
    EXPECT_EQ(loaded.Report.RptShowPoly, 9);
    EXPECT_EQ(loaded.Report.RptPrompt, 9);
}

TEST_F(ArxLoad, ImageAndModelAgreeFieldByField) {
    // A last check of the whole picture: the loaded current file, written again by the
    // independent builder, is the file.
    Model d = test::distinctModel();
    d.Settings.PCADJUSTHARVAGE = 0;
    ASSERT_TRUE(loadImage(d, 3226));
    Model again = loaded;
    again.Settings.COLORS = d.Settings.COLORS;  // the load sets the program's colours
    again.Report = d.Report;
    EXPECT_TRUE(matches(image, buildArxImage(again, 3226).bytes()));
}

}  // namespace
}  // namespace arborex
