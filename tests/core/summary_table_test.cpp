// The summary list worked on a small project: VDYP volume 2 m3/ha and MAI 0.1 per year of age,
// TIPSY 3 m3/ha and 0.2, on a 10-year grid. VDYP culminates at 80 with its criteria met at 70;
// TIPSY culminates at 60 with its criteria met at 90.

#include "report/summary_table.hpp"

#include <gtest/gtest.h>

#include "base/dates.hpp"
#include "base/errors.hpp"
#include "frame/project_open.hpp"
#include "frame/startup.hpp"
#include "model/polygon_lifecycle.hpp"
#include "support/fake_host.hpp"

namespace arborex {
namespace {

using Cells = std::array<std::string, kSummaryColumnCount>;

class Summary : public ::testing::Test {
protected:
    void SetUp() override {
        programDefaults(m);
        m.Settings.YieldMinAge = {0, 0};
        m.Settings.YieldMaxAge = {200, 200};
        m.Settings.YieldIncAge = {10, 10};
        m.Settings.PCperc = 25;
        SetAgeInc(m);
        EmptyArrays(m);
        add("Alpha", 10.0f, 35, {0, 1}, {-1, 70});
        add("Beta", 500.0f, 60, {0, 0}, {-1, -1});
        m.PolyC[1].DELETE = 1;
        add("Gamma", 30.0f, 50, {0, 0}, {74, 90});
        add("Delta", 20.0f, 0, {2, 3}, {-1, -1});
        add("Echo", 1040.0f, 100, {0, 0}, {60, -1});
        m.Poly[4].SILVI = 1;
        m.Poly[4].PCNEXT = 30;
        for (int p = 0; p <= m.LastPoly; ++p) {
            for (int k = 0; k <= 20; ++k) {
                m.VYield(p, k).Vol = static_cast<int16_t>(200 * k);
                m.VYield(p, k).Mai = static_cast<float>(k);
                m.TYield(p, k).Vol = static_cast<int16_t>(300 * k);
                m.TYield(p, k).Mai = static_cast<float>(2 * k);
            }
            // The calculated age is read from the culmination and the criteria, not HarvestAge.
            m.HarvAge[static_cast<std::size_t>(p)][0] = {80, 0, 0, 70, 1, 8.0f};
            m.HarvAge[static_cast<std::size_t>(p)][1] = {60, 0, 0, 90, 1, 12.0f};
        }
    }
    void add(const char* name, float area, int16_t age, std::array<int16_t, 2> mgnt,
             std::array<int16_t, 2> har) {
        PolyData data;
        PolyCalc calc;
        PolyMgmt mgmt;
        projectFollowingPolygon(data, calc, mgmt);
        data.NAME = name;
        data.AREA = area;
        data.AGE = age;
        data.MGNT = mgnt;
        data.HAR = har;
        appendPolygon(m, data, calc, mgmt);
    }
    Model m;
};

TEST_F(Summary, RowsMarkTheTargetsAndTheTotalAveragesByArea) {
    const std::vector<SummaryRow> rows = ShowSummary(m);
    ASSERT_EQ(rows.size(), 5u);
    // A calculated age in brackets and without a marker; "*" below the criteria though past
    // the culmination.
    EXPECT_EQ(rows[0].key, "PG0");
    EXPECT_EQ(rows[0].cells, (Cells{"Alpha", "10.0", "35", "VDYP", "[80] ", "160.0", "8.0", "TIPSY",
                                    "70*", "210.0", "14.0", "", ""}));
    // The deleted polygon has no row, and the next keeps its own index. "<" before the
    // culmination; a target at or past the calculated age shows bare.
    EXPECT_EQ(rows[1].key, "PG2");
    EXPECT_EQ(rows[1].cells, (Cells{"Gamma", "30.0", "50", "VDYP", "74<", "148.0", "7.4", "VDYP",
                                    "90", "180.0", "9.0", "", ""}));
    // Non commercial and NSR have no age, volume or MAI.
    EXPECT_EQ(rows[2].key, "PG3");
    EXPECT_EQ(rows[2].cells, (Cells{"Delta", "20.0", "0", "Non Commercial", "", "", "", "NSR", "",
                                    "", "", "", ""}));
    // Partial cut: "*" below both the criteria and the culmination; the future group gives way
    // to "PC", the percent follows the project in brackets, the re-entry is the polygon's.
    EXPECT_EQ(rows[3].key, "PG4");
    EXPECT_EQ(rows[3].cells, (Cells{"Echo", "1040.0", "100", "VDYP", "60*", "120.0", "6.0", "PC",
                                    "", "", "", "[25]", "30"}));
    // Area 1,100. Existing volume (1600 + 4440 + 124800) / 1100, MAI (80 + 222 + 6240) / 1100.
    // The future averages still hold Echo's calculated 160.0 and 8.0 behind its "PC":
    // (2100 + 5400 + 166400) / 1100 and (140 + 270 + 8320) / 1100.
    EXPECT_EQ(rows[4].key, "TOTAL");
    EXPECT_TRUE(rows[4].total);
    EXPECT_EQ(rows[4].cells, (Cells{"TOTAL", "1,100.0", "", "Avg.", "", "118.9", "5.9", "Avg.", "",
                                    "158.1", "7.9", "", ""}));
    EXPECT_FALSE(rows[0].total);
}

TEST_F(Summary, TargetAtTheCalculatedAgeHasNoMarker) {
    m.Poly[0].HAR = {80, 90};
    const SummaryRow row = ShowSummary(m).front();
    EXPECT_EQ(row.cells[4], "80");
    EXPECT_EQ(row.cells[8], "90");
    m.Poly[0].HAR = {79, 89};
    EXPECT_EQ(ShowSummary(m).front().cells[4], "79<");
    EXPECT_EQ(ShowSummary(m).front().cells[8], "89*");
}

TEST_F(Summary, NoAreaLeftIsADivisionByZero) {
    for (PolyCalc& calc : m.PolyC) calc.DELETE = 1;
    try {
        ShowSummary(m);
        FAIL() << "no failure";
    } catch (const ArborexError& e) {
        EXPECT_EQ(e.number(), ErrDivisionByZero);
    }
}

TEST_F(Summary, ClipboardTextHasTheSummaryHeadingAndTrimmedCells) {
    const std::string text = summaryClipboardText(ShowSummary(m), "C:\\plans\\tenure.arx",
                                                  dayCountFromParts({2026, 11, 23, 14, 5, 9}));
    EXPECT_EQ(text.rfind("Summary - 2:05:09 PM on 2026-11-23\r\n", 0), 0u) << text;
    EXPECT_NE(text.find("\r\nC:\\plans\\tenure.arx\r\nArborex for Windows 3.226 (March 29, 2007)"
                        "\r\n\r\nPolygon\tArea (ha)\tCurrent Age\tE Yield\tE Age\t"
                        "E Vol (m\xb3/ha)\tE MAI\tF Yield\tF Age\tF Vol (m\xb3/ha)\tF MAI\tPC %\t"
                        "PC re-entry\t\r\nAlpha\t10.0\t35\tVDYP\t[80]\t160.0\t8.0\tTIPSY\t70*\t"),
              std::string::npos)
        << text;
    EXPECT_TRUE(
        text.ends_with("TOTAL\t1,100.0\t\tAvg.\t\t118.9\t5.9\tAvg.\t\t158.1\t7.9\t\t\t\r\n"));
}

TEST(SummarySample, TheSampleProjectsTotalRow) {
    test::FakeHost host;
    Model m;
    programDefaults(m);
    m.Paths[ArborexFolder] = std::string(ARBOREX_SOURCE_DIR) + "/data/";
    LoadReferenceData(m, host);
    ASSERT_TRUE(LoadARX(m, host, std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx"));
    const std::vector<SummaryRow> rows = ShowSummary(m);
    ASSERT_EQ(rows.size(), 16u);
    EXPECT_EQ(rows[1].key, "PG1");
    EXPECT_EQ(rows[1].cells, (Cells{"93B045 102", "12.3", "120", "VDYP", "[115] ", "150.5", "1.3",
                                    "PC", "", "", "", "[20]", "[20]"}));
    EXPECT_EQ(rows[6].cells[3], "Non Commercial");
    EXPECT_EQ(rows[6].cells[8], "[999] ");  // a target the TIPSY curve never reaches
    EXPECT_EQ(rows[15].cells, (Cells{"TOTAL", "375.5", "", "Avg.", "", "236.7", "2.9", "Avg.", "",
                                     "228.8", "3.4", "", ""}));
}

}  // namespace
}  // namespace arborex
