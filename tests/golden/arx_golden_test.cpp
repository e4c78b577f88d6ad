// SaveArx against images built independently from the documented offsets, in every version the
// writer offers, and the round trips between the writer and the reader.

#include <gtest/gtest.h>

#include "base/dates.hpp"
#include "frame/project_open.hpp"
#include "golden/arx_layout.hpp"
#include "golden/arx_sample_model.hpp"
#include "model/colours.hpp"
#include "model/project_file.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex {
namespace {

using test::buildArxImage;
using test::Bytes;
using test::getF4;
using test::getF8;
using test::getI2;
using test::getI4;
using test::getText;

const std::string kStamp32 = "March 29, 2007 - 3.226Release   ";
const std::vector<std::string> kSaveDate = {"ProjectHeader.LastDate"};

class ArxGolden : public ::testing::Test {
protected:
    Bytes save(Model& m, int16_t version, const std::string& name = "golden.arx") {
        SaveArx(m, host, dir.file(name), version, false);
        return test::readFileBytes(dir.file(name));
    }
    // Saves the sample as `version` and loads it back into `loaded`.
    Model roundTrip(int16_t version, Model& loaded) {
        Model m = test::distinctModel();
        save(m, version);
        EXPECT_TRUE(LoadARX(loaded, host, dir.file("golden.arx")));
        return m;
    }

    test::TempDir dir;
    test::FakeHost host;
};

// What every old file's load does to curve states: all that were set are now out of date.
void outOfDate(Model& m) {
    for (PolyData& poly : m.Poly)
        for (int16_t& state : poly.YIELDSTATE) state = state > 0 ? 1 : state;
}

TEST_F(ArxGolden, Version3226IsTheDocumentedLayoutFieldByField) {
    Model m = test::distinctModel();
    m.Header.FileStamp = "an earlier program";
    m.Header.FileVersion = 200;
    Model expected = m;
    expected.Header.FileStamp = "March 29, 2007 - 3.226Release";

    const double before = dateNow();
    const Bytes file = save(m, 3226);
    const double after = dateNow();

    EXPECT_EQ(buildArxImage(expected, 3226).differences(file, kSaveDate), "");
    EXPECT_EQ(getText(file, 0, 32), kStamp32);
    EXPECT_EQ(getI2(file, 240), 3226);
    const double lastDate = getF8(file, 232);
    const double oneSecond = 1.0 / 86400.0;
    EXPECT_GE(lastDate, before - 2 * oneSecond);
    EXPECT_LE(lastDate, after + 2 * oneSecond);
    EXPECT_EQ(m.Header.LastDate, lastDate);
    EXPECT_EQ(m.Header.FileVersion, 3226);
    EXPECT_EQ(m.Poly[1].NAME.str(), "ABC_12");  // names keep their form in this version
}

// The same layout read at literal offsets, so that a slip in the image builder cannot hide
// one in the writer.
TEST_F(ArxGolden, Version3226AtLiteralOffsets) {
    Model m = test::distinctModel();
    const Bytes file = save(m, 3226);
    // 3 polygons; VDYP 5 rows, TIPSY 3 rows; order of 3; arrays of 3, 3, 2 and 3 elements.
    const std::size_t size = 242 + 2 + 150 + 88 + 3 * 355 + 26 + 20 + 2 + 3 * 2 + 3 * 5 * 10 +
                             3 * 5 * 12 + 3 * 3 * 10 + 402 + 8 + 4 + 3 * 42 + 3 * 14 + 2 * 44 +
                             3 * 258 + 14;
    ASSERT_EQ(file.size(), size);
    EXPECT_EQ(getText(file, 32, 32), "A12345" + std::string(26, ' '));
    EXPECT_EQ(getText(file, 208, 16), "3.2m" + std::string(12, ' '));
    EXPECT_EQ(getF8(file, 224), 39170.25);
    EXPECT_EQ(getI2(file, 242), 2);
    const std::size_t settings = 244;
    EXPECT_EQ(getI2(file, settings + 4), m.Settings.PLANHORZ);
    EXPECT_EQ(getF4(file, settings + 32), m.Settings.SPLIT);
    // YieldMaxAge[0], YieldMinAge[1], YieldIncAge[1], YieldRows[0] and [1].
    for (auto [at, value] : {std::pair{52, 6}, {58, 5}, {62, 10}, {64, 4}, {66, 2}})
        EXPECT_EQ(getI2(file, settings + at), value) << at;
    EXPECT_EQ(getF8(file, settings + 70 + 9 * 8), m.Settings.OldColors[9]);
    const std::size_t second = settings + 150;
    EXPECT_EQ(getI2(file, second + 2), m.Settings.ALTWBS);
    EXPECT_EQ(getI4(file, second + 6), m.Settings.COLORS[0]);
    EXPECT_EQ(getI4(file, second + 6 + 19 * 4), m.Settings.COLORS[19]);

    const std::size_t poly1 = second + 88 + 355;
    EXPECT_EQ(getText(file, poly1, 12), "ABC_12      ");
    EXPECT_EQ(getF4(file, poly1 + 12), m.Poly[1].AREA);
    EXPECT_EQ(getF4(file, poly1 + 23), m.Poly[1].VSITEINDEX);
    EXPECT_EQ(getI4(file, poly1 + 91), m.Poly[1].DENSITY);
    EXPECT_EQ(getI2(file, poly1 + 171), 0);  // MGNT[1]
    EXPECT_EQ(getI2(file, poly1 + 175), 3);  // YIELDSTATE[1]
    const std::size_t calc1 = poly1 + 177;
    EXPECT_EQ(getI2(file, calc1 + 6), m.PolyC[1].DELETE);
    EXPECT_EQ(getF4(file, calc1 + 46), m.PolyC[1].MINCUTDBH[1]);
    const std::size_t mgmt1 = calc1 + 54;
    EXPECT_EQ(getF4(file, mgmt1 + 66), m.PolyM[1].CTHEIGHT);
    EXPECT_EQ(getI2(file, mgmt1 + 94), m.PolyM[1].FSTARTYEAR);
    const std::size_t harv1 = mgmt1 + 96;
    EXPECT_EQ(getI2(file, harv1 + 14 + 8), m.HarvAge[1][1].HarvestAge);

    const std::size_t recordA = second + 88 + 3 * 355;
    EXPECT_EQ(getI4(file, recordA + 14), m.Calc.inputs.SavedVolRate);
    EXPECT_EQ(getI2(file, recordA + 26 + 18), m.Calc.inputs.SavedWithin);
    const std::size_t order = recordA + 46;
    EXPECT_EQ(getI2(file, order), 2);
    EXPECT_EQ(getI2(file, order + 2), 2);
    const std::size_t vyield = order + 8;
    EXPECT_EQ(getI2(file, vyield + 12), m.VYield(0, 1).Vol);
    const std::size_t vmix = vyield + 150;
    EXPECT_EQ(getI2(file, vmix + 5 * 12 + 10), m.VMix(1, 0)[5]);
    const std::size_t tyield = vmix + 180;
    EXPECT_EQ(getF4(file, tyield + 8 * 10 + 6), m.TYield(2, 2).Mai);
    const std::size_t recordB = tyield + 90;
    EXPECT_EQ(getF8(file, recordB + 12), m.Calc.inputs.SavedAreaRate);
    EXPECT_EQ(getI2(file, recordB + 22), 4);
    const std::size_t bounds = recordB + 402;
    EXPECT_EQ(getI2(file, bounds + 6), 2);  // CalcHorizon
    EXPECT_EQ(getF4(file, bounds + 8), m.Calc.NetArea);
    const std::size_t years = bounds + 12 + 3 * 42 + 3 * 14 + 2 * 44;
    EXPECT_EQ(getF4(file, years + 2 * 258 + 218 + 36), m.Calc.YearTable[2].AgeClassArea[9]);
    EXPECT_EQ(getI2(file, size - 14), 5);  // first report option
}

TEST_F(ArxGolden, Version200HasOldRowsOldColoursAndOldNames) {
    Model m = test::distinctModel();
    Model expected = m;
    const Bytes file = save(m, 200);

    for (std::size_t i = 0; i < 10; ++i)
        expected.Settings.OldColors[i] = static_cast<double>(expected.Settings.COLORS[i]);
    test::setOldFormNames(expected);
    EXPECT_EQ(buildArxImage(expected, 200).differences(file, kSaveDate), "");
    EXPECT_EQ(file.size(), 242u + 2 + 150 + 3 * (177 + 54 + 28) + 26 + 20 + 2 + 6 + 3 * 5 * 16 +
                               3 * 5 * 24 + 3 * 3 * 16);

    // The first old VDYP row, in real units.
    const std::size_t vyield = 242 + 2 + 150 + 3 * 259 + 26 + 20 + 8;
    EXPECT_EQ(getF4(file, vyield), static_cast<float>(m.VYield(0, 0).Dia) / 10.0f);
    EXPECT_EQ(getF4(file, vyield + 12), m.VYield(0, 0).Mai);
    EXPECT_EQ(getF8(file, 244 + 70 + 8), static_cast<double>(m.Settings.COLORS[1]));

    // The conversions stay in memory.
    EXPECT_EQ(m.Poly[1].NAME.raw(), "ABC     12  ");
    EXPECT_EQ(m.Poly[2].NAME.raw(), "ABCDEFG HIJ ");
    EXPECT_EQ(m.Settings.OldColors, expected.Settings.OldColors);
    EXPECT_EQ(m.Header.FileVersion, 200);
}

TEST_F(ArxGolden, Version111HasTheShortSettingsBlockAndNoCalculationFlags) {
    Model m = test::distinctModel();
    Model expected = m;
    const Bytes file = save(m, 111);

    test::setOldFormNames(expected);
    EXPECT_EQ(buildArxImage(expected, 111).differences(file, kSaveDate), "");
    EXPECT_EQ(file.size(), 242u + 2 + 134 + 3 * (177 + 28) + 26 + 2 + 6 + 3 * 5 * 16 + 3 * 3 * 16);
    EXPECT_EQ(getF4(file, 244 + 2), m.Settings.PCADJUSTFACT);
    EXPECT_EQ(getI2(file, 244 + 22), m.Settings.PCNETDOWN);
    EXPECT_EQ(getI2(file, 244 + 48), 4);  // YieldRows[0]
    // Its colours are the old ones as they stood, not the current COLORS.
    EXPECT_EQ(getF8(file, 244 + 54), expected.Settings.OldColors[0]);
    EXPECT_EQ(m.Settings.OldColors, expected.Settings.OldColors);
    EXPECT_EQ(m.Header.FileVersion, 111);
    EXPECT_EQ(m.Poly[0].NAME.raw(), "093G045 1234");
}

TEST_F(ArxGolden, OldNamesSplitAtABlankElseAnUnderscoreElseAfterSeven) {
    Model m = test::distinctModel();
    m.Poly[0].NAME = "AB CD";
    m.Poly[1].NAME = "X_Y_Z";
    m.Poly[2].NAME = "ABCDEFG";
    const Bytes file = save(m, 200);
    EXPECT_EQ(m.Poly[0].NAME.raw(), "AB      CD  ");
    EXPECT_EQ(m.Poly[1].NAME.raw(), "X       Y_Z ");
    EXPECT_EQ(m.Poly[2].NAME.raw(), "ABCDEFG     ");
    EXPECT_EQ(getText(file, 244 + 150, 12), "AB      CD  ");
}

TEST_F(ArxGolden, LoadOfSaveGivesBackEveryField) {
    Model loaded;
    SetDefaults(loaded);
    const ReportOptions reportBefore = loaded.Report;
    Model expected = roundTrip(3226, loaded);
    EXPECT_EQ(loaded.Header.LastDate, expected.Header.LastDate);

    expected.Settings.PCADJUSTHARVAGE = 0;
    setColours(expected);
    EXPECT_EQ(buildArxImage(expected, 3226)
                  .differences(buildArxImage(loaded, 3226).bytes(), {"ReportOptions"}),
              "");
    EXPECT_EQ(loaded.Report.RptIncrement, reportBefore.RptIncrement);
    EXPECT_EQ(loaded.Report.RptExcel, reportBefore.RptExcel);
    EXPECT_EQ(test::polygonArrayMismatch(loaded), "");
    EXPECT_EQ(loaded.CutOrderKey.size(), 3u);
    EXPECT_TRUE(host.prompt.shown.empty()) << host.prompt.shown.front().text;
    EXPECT_TRUE(loaded.LoadGood);
    EXPECT_FALSE(loaded.OldFormat || loaded.OldVersion || loaded.NewTIPSY);
    EXPECT_EQ(loaded.Files[FileProject], dir.file("golden.arx"));
    EXPECT_EQ(loaded.Files[FileDisplayName], "golden");
}

// A file that the program itself could have written comes back byte for byte.
TEST_F(ArxGolden, SaveOfLoadGivesBackTheFileExceptItsDate) {
    Model description = test::distinctModel();
    setColours(description);
    description.Settings.PCADJUSTHARVAGE = 0;
    description.Report = ReportOptions{};
    const test::ArxImage image = buildArxImage(description, 3226);

    test::writeFileBytes(dir.file("image.arx"), image.bytes());
    Model m;
    ASSERT_TRUE(LoadARX(m, host, dir.file("image.arx")));
    EXPECT_EQ(image.differences(save(m, 3226, "again.arx"), kSaveDate), "");
}

TEST_F(ArxGolden, Version200RoundTripKeepsWhatTheVersionHolds) {
    Model loaded;
    host.prompt.answers = {Answer::No};  // keep the map sheet in the names
    const Model m = roundTrip(200, loaded);

    Model expected = m;
    expected.Settings.PCADJUSTHARVAGE = 0;
    expected.Settings.SPLIT = 100.0f;
    expected.Poly[1].NAME = "ABC 12";
    expected.Poly[2].NAME = "ABCDEFG HIJ";
    outOfDate(expected);
    // Old rows are read and thrown away.
    expected.VYield.assign(3, 5);
    expected.VMix.assign(3, 5);
    expected.TYield.assign(3, 3);
    EXPECT_EQ(buildArxImage(expected, 200).differences(buildArxImage(loaded, 200).bytes()), "");
    EXPECT_TRUE(host.prompt.showed("All yield curves must be recalculated."));
    for (int p = 0; p < 3; ++p) {
        EXPECT_EQ(loaded.PolyM[p].TUTILIZ, m.Poly[p].VUTILIZ);
        EXPECT_EQ(loaded.PolyM[p].NCDESC, loaded.DefaultPolyM.NCDESC);
    }
}

TEST_F(ArxGolden, Version111RoundTripFillsWhatTheVersionLacks) {
    Model loaded;
    host.prompt.answers = {Answer::Yes};  // names become the polygon part alone
    Model expected = roundTrip(111, loaded);

    expected.Poly[0].NAME = "1234";
    expected.Poly[1].NAME = "12";
    expected.Poly[2].NAME = "HIJ";
    outOfDate(expected);
    for (PolyData& poly : expected.Poly) poly.OAF1 = poly.OAF2 = -1;
    expected.VYield.assign(3, 5);
    expected.TYield.assign(3, 3);
    // Nothing is deleted in a file of this age and no polygon has criteria of its own, so
    // loading works out every polygon's harvest ages afresh, from the curves it threw away.
    for (PolyCalc& calc : expected.PolyC) {
        calc.DELETE = 0;
        calc.MINCUTAGE = {-1, -1};
        calc.MINCUTVOL = calc.MINCUTDBH = {-1.0f, -1.0f};
    }
    calcAllCutAges(expected, 0);
    calcAllCutAges(expected, 1);
    EXPECT_EQ(buildArxImage(expected, 111).differences(buildArxImage(loaded, 111).bytes()), "");
    EXPECT_EQ(loaded.Calc.inputs.SavedCut, (std::array<int16_t, 4>{1, 1, 1, 1}));
    EXPECT_EQ(loaded.PolyC[2].SORT, 2);
}

}  // namespace
}  // namespace arborex
