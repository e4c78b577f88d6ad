// The periodic calculation report, byte for byte: its heading and rows under the combinations of
// settings, both delimiters, names that hold a delimiter, and a former file left alone when a
// run is refused or fails. The longer files are kept under tests/golden/data/calc_report
// (ARBOREX_UPDATE_GOLDEN=1 rewrites them).

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

#include "base/errors.hpp"
#include "report/calc_report.hpp"
#include "support/calc_fixture.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void expectGolden(const std::string& name, const std::string& text) {
    const std::string path =
        std::string(ARBOREX_SOURCE_DIR) + "/tests/golden/data/calc_report/" + name;
    if (std::getenv("ARBOREX_UPDATE_GOLDEN")) {
        std::ofstream(path, std::ios::binary) << text;
        return;
    }
    EXPECT_EQ(text, readFile(path)) << name;
}

void writeFile(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

ReportOptions options(int16_t increment, bool poly, bool total, bool avg, bool addRow) {
    ReportOptions o;
    o.RptIncrement = increment;
    o.RptShowPoly = poly ? -1 : 0;
    o.RptTotal = total ? -1 : 0;
    o.RptIncAvg = avg ? -1 : 0;
    o.RptAddRow = addRow ? -1 : 0;
    return o;
}

// Four stands at 1000 m3/yr: a ripe one, one with a road that ripens in the sixth year,
// non-commercial brush and a young managed stand. Everything harvestable is cut by 2039.
struct ReportProject {
    test::CalcFixture fx{{{"Ripe", 12.0f, 90},
                          {"Roaded", 8.0f, 75},
                          {"Brush", 4.0f, 30, 2, 1},
                          {"Young", 6.0f, 20, 1, 1}}};
    test::TempDir dir;

    ReportProject() {
        fx.m.Ref.OwnershipCodes = {'C', 'P', 'W', 'F'};
        fx.m.PolyC[1].OWNERSHIP = 1;
        fx.m.PolyM[1].ROADAREA = 1.0f;
        fx.m.PolyM[2].NCVOLHA = 40.0f;
        fx.m.PolyM[2].NCDECIDUOUS = 25;
        fx.m.Poly[0].VSICALC = 21.5f;
        fx.m.Poly[3].TSICALC = 18.25f;
        fx.prepare();
        fx.screen.txtVolToCut = "1000";
        // The rate field rules even when the search is ticked.
        fx.screen.chkCalcRate = true;
    }

    std::string report(const ReportOptions& o, bool tab, int16_t horizon) {
        fx.m.Settings.PLANHORZ = horizon;
        fx.m.Report = o;
        const std::string path = dir.file(tab ? "report.txt" : "report.csv");
        EXPECT_TRUE(runCalcReport(fx.session, path, tab));
        EXPECT_EQ(fx.run.ReportEvery, 0);
        return readFile(path);
    }
};

TEST(CalcReport, PolygonRowsEveryTenYearsTabDelimited) {
    ReportProject p;
    // Rows at offsets 9 and 19 (2039, 2049), after the "Existing" rows of 2029.
    expectGolden("polygons_10.txt", p.report(options(10, true, false, false, false), true, 20));
    EXPECT_TRUE(p.fx.observer.trialRows.empty());  // one run at the entered rate, no search
    EXPECT_EQ(p.fx.observer.finalRuns, 1);         // the screen still hears of the run
}

TEST(CalcReport, EverythingWithTotalsAveragesAndBlankRowsCommaSeparated) {
    ReportProject p;
    expectGolden("everything_10.csv", p.report(options(10, true, true, true, true), false, 10));
}

TEST(CalcReport, TotalsOnlyEveryFiveYears) {
    ReportProject p;
    expectGolden("totals_5.csv", p.report(options(5, false, true, false, false), false, 20));
}

TEST(CalcReport, AveragesOnlyEveryYear) {
    ReportProject p;
    expectGolden("averages_1.csv", p.report(options(1, false, false, true, false), false, 2));
}

TEST(CalcReport, NeitherPolygonsNorTotalsNorAveragesLeavesHeadingAndBlankRows) {
    ReportProject p;
    EXPECT_EQ(p.report(options(10, false, false, false, true), false, 20),
              "Year,Polygon Name,\r\n\r\n\r\n\r\n");
    EXPECT_EQ(p.report(options(1, false, false, false, false), true, 20),
              "Year\tPolygon Name\t\r\n");
}

TEST(CalcReport, AnIncrementPastTheHorizonGivesTheExistingRowsOnly) {
    ReportProject p;
    const std::string text = p.report(options(50, false, true, false, false), false, 20);
    EXPECT_EQ(text,
              "Year,Polygon Name,Harvested Volume,Harvested Area,Harvested Area CCE,Area,Volume,"
              "Area,Volume,Road Area,Road Volume,Total Area,Total Volume\r\n"
              "Existing,TOTAL,,,,16,2296,13,1264,1,0,30,3560\r\n");
}

TEST(CalcReport, ADelimiterOrQuoteInANameIsWrittenAsItIs) {
    ReportProject p;
    p.fx.m.Poly[0].NAME = "Ri,p\"e\tX";
    p.fx.prepare();
    const std::string comma = p.report(options(50, true, false, false, false), false, 20);
    EXPECT_NE(comma.find("\r\nExisting,Ri,p\"e\tX,C,,,,,89,12.0,2136.0,V,,PL,21.5,,,,,,,,,,12.0,"
                         "2136.0\r\n"),
              std::string::npos);
    const std::string tab = p.report(options(50, true, false, false, false), true, 20);
    EXPECT_NE(tab.find("\r\nExisting\tRi,p\"e\tX\tC\t"), std::string::npos);
}

TEST(CalcReport, ARefusedCalculationLeavesTheFormerFile) {
    ReportProject p;
    p.fx.screen.chkCut = {false, false, false, false};
    const std::string path = p.dir.file("kept.csv");
    writeFile(path, "former\r\n");
    EXPECT_FALSE(runCalcReport(p.fx.session, path, false));
    EXPECT_EQ(readFile(path), "former\r\n");
    EXPECT_EQ(p.fx.run.ReportEvery, 0);
    ASSERT_FALSE(p.fx.host.prompt.shown.empty());
    EXPECT_EQ(p.fx.host.prompt.shown.back().text,
              "Please select which ownership(s) to harvest by placing checks in the harvest "
              "boxes.");
}

TEST(CalcReport, AveragesOverAPeriodWithoutHarvestFailAndLeaveTheFormerFile) {
    ReportProject p;
    p.fx.screen.txtVolToCut = "0";
    p.fx.m.Report = options(10, true, false, true, false);
    p.fx.m.Settings.PLANHORZ = 20;
    const std::string path = p.dir.file("kept.txt");
    writeFile(path, "former\r\n");
    try {
        runCalcReport(p.fx.session, path, true);
        ADD_FAILURE() << "no failure";
    } catch (const ArborexError& e) {
        EXPECT_EQ(e.number(), ErrDivisionByZero);
    }
    EXPECT_EQ(readFile(path), "former\r\n");
    EXPECT_EQ(p.fx.run.ReportEvery, 0);
}

TEST(CalcReport, WithoutHarvestTheStandsAgeOnAndNonCommercialGroundRepeatsTheAgeAbove) {
    ReportProject p;
    p.fx.screen.txtVolToCut = "0";
    const std::string text = p.report(options(10, true, true, false, false), false, 10);
    // The first block was opened (its method shows) but nothing was cut; the brush's age cell
    // repeats the roaded stand's 84 above it, and the road's standing volume counts.
    EXPECT_NE(text.find("\r\n2039,Ripe,C,CC,,,,99,12.0,2376.0,V,,PL,21.5,,,,,,,,,,12.0,2376.0\r\n"
                        "2039,Roaded,P,,,,,84,7.0,1176.0,V,,PL,0.0,,,,,,,,1.0,168.0,8.0,1344.0\r\n"
                        "2039,Brush,C,,,,,84,4.0,160.0,T,25,PL,0.0,"),
              std::string::npos);
    EXPECT_NE(text.find("\r\n2039,TOTAL,,,0,0.000,0.000,,23,3712,,,,,,6,348,,,,,1,168,30,4228\r\n"),
              std::string::npos);
}

}  // namespace
}  // namespace arborex
