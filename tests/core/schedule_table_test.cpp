// The schedule's two views as text, and the table as the clipboard receives it.

#include "report/schedule_table.hpp"

#include <gtest/gtest.h>

#include "base/dates.hpp"
#include "support/fake_host.hpp"

namespace arborex {
namespace {

struct Schedule : ::testing::Test {
    Model m;
    CalcScreen screen;
    CalcRun run;
    test::ScriptedPrompt prompt;
    CalcObserver observer;
    CalcSession s{m, screen, run, prompt, observer};

    void SetUp() override {
        ResizePolygonArrays(m, 1);
        m.LastPoly = 0;
        m.Poly[0].NAME = "93B045 101";
        m.Poly[0].MGNT = {0, 1};
        m.PolyC[0].OWNERSHIP = 1;
        m.PolyC[0].MINCUTDBH = {-1.0f, -1.0f};
        m.PolyC[0].MINCUTVOL = {-1.0f, -1.0f};
        m.PolyC[0].MINCUTAGE = {-1, -1};
        m.Settings.MINDIA = 20.0f;
        m.Ref.OwnershipCodes = {'C', 'P', 'T', 'O'};
        run.StartYear = 2030;
        screen.txtVolToCut = "1000";

        CalcState& calc = m.Calc;
        calc.CalcHorizon = 1;
        calc.NetArea = 200.0f;
        calc.YearTable.resize(1);
        YearRec& y = calc.YearTable[0];
        y.BlockNames = "93B045 101, 93B045 101";
        y.AreaCC = 4.25f;
        y.AreaRoad = 0.5f;
        y.AreaCCE = 4.75f;
        y.VolCC = 1234.0f;
        y.VolConifer = 1000.0f;
        y.VolDeciduous = 250.5f;
        y.NumPolygons = 2;
        y.InvArea = 190.0f;
        y.InvAreaHeight = 101.0f;  // 50.5% of the net area
        y.InvAreaAge = 30.0f;
        y.InvVolume = 40000.0f;
        y.MatureCon = 20000.0f;
        y.MatureDec = 4000.0f;
        y.ImmatureDec = 6000.0f;
        y.ImmatureCon = 10000.0f;

        calc.BlockLast = 1;
        calc.BlockList.resize(1);
        calc.BlockList[0] = block(kFinishedStep + kStatusRelaxed, 1);
        calc.BlockList[1] = block(-1, 2);
        calc.BlockList[1].CutFraction = 0.375f;
        calc.CutCount = 3;
        calc.CutList.resize(3);
        calc.CutList[1] = cut(0, kMethodClearcut, 1250.5f, 2500.0f, 18.0f);
        calc.CutList[2] = cut(1, kMethodFirstPartial, 300.0f, 0.0f, 25.0f);
        calc.CutList[3] = cut(2, kMethodClearcut, 1.0f, 1.0f, 25.0f);  // no such block
    }
    static Block block(int16_t status, int16_t rotation) {
        Block b;
        b.Status = status;
        b.Rotation = rotation;
        return b;
    }
    static CutRec cut(int16_t block, int16_t method, float volume, float potential, float dbh) {
        CutRec c;
        c.BlockIdx = block;
        c.CutMethod = method;
        c.CutVolume = volume;
        c.CutConifer = volume * 0.8f;
        c.CutPotential = potential;
        c.CutDbh = dbh;
        c.CutArea = 4.25f;
        c.CutAreaCCE = 4.1234f;
        c.CutAge = 95;
        c.CutVolHa = 294.2f;
        c.StartYr = 2030;
        c.EndYr = 2031;
        return c;
    }
};

TEST_F(Schedule, AnnualViewPlainAndAdvanced) {
    screen.txtVolToCut = "1300";
    ScheduleTable table = scheduleTable(s, ScheduleView::Annual, false);
    EXPECT_EQ(run.HarvestRate, 1300.0);  // filling the table stores the entered rate
    ASSERT_EQ(table.rows.size(), 2u);
    EXPECT_EQ(table.columns.back(), "Age Cons.");
    EXPECT_EQ(table.rows[0].key, "RY0");
    EXPECT_EQ(table.rows[0].cells,
              (std::vector<std::string>{"2030", "93B045 101, 93B045 101", "4.750", "4.750",
                                        "Low Harvest. ", "1,250.5", "1,000", "251", "20.0%", "2",
                                        "51%", "15%"}));
    EXPECT_EQ(table.rows[1].cells[4], "No Harvest. ");
    EXPECT_EQ(table.rows[1].cells[8], "0.0%");

    table = scheduleTable(s, ScheduleView::Annual, true);
    ASSERT_EQ(table.columns.size(), 24u);
    EXPECT_EQ(table.columns.back(), "Deciduius %");
    EXPECT_EQ(std::vector<std::string>(table.rows[0].cells.begin() + 9, table.rows[0].cells.end()),
              (std::vector<std::string>{"4.250", "1,234", "", "", "", "", "0.500", "", "2", "50.5%",
                                        "15.0%", "40,000", "30,000", "10,000", "25.0%"}));
}

TEST_F(Schedule, PolygonViewStopsAtEntriesBeyondTheRun) {
    ScheduleTable table = scheduleTable(s, ScheduleView::Polygon, false);
    ASSERT_EQ(table.rows.size(), 2u);
    EXPECT_EQ(table.rows[0].key, "RC1");
    EXPECT_EQ(table.rows[0].cells,
              (std::vector<std::string>{"93B045 101", "P", "Relaxed", "1", "Clearcut",
                                        "Minimum DBH not met", "2030", "2031", "1,251", "4.3"}));
    EXPECT_EQ(table.rows[0].colour, (Rgb{0, 0, 0}));
    // A block that never finished shows how much of it was cut.
    EXPECT_EQ(table.rows[1].cells[2], "38% complete");
    EXPECT_EQ(table.rows[1].cells[4], "1st Partial Harvest");
    EXPECT_EQ(table.rows[1].colour, (Rgb{0, 192, 0}));

    table = scheduleTable(s, ScheduleView::Polygon, true);
    EXPECT_EQ(
        std::vector<std::string>(table.rows[0].cells.begin() + 9, table.rows[0].cells.end()),
        (std::vector<std::string>{"1,000", "250", "50", "4.3", "4.123", "95", "18.0", "294.2"}));
    // No potential volume: the share harvested shows 0, not a failure.
    EXPECT_EQ(table.rows[1].cells[11], "0");
}

TEST_F(Schedule, NothingBeforeAnyRun) {
    m.Calc.CalcHorizon = 0;
    EXPECT_TRUE(scheduleTable(s, ScheduleView::Annual, false).columns.empty());
    EXPECT_TRUE(scheduleTable(s, ScheduleView::Polygon, true).rows.empty());
}

TEST_F(Schedule, ClipboardText) {
    ScheduleTable table;
    table.columns = {"Year", "Block List"};
    table.rows.push_back({"RY0", {"2030", " 93B045 101 "}, {}});
    const double when = dayCountFromParts({2026, 11, 23, 14, 5, 9});
    EXPECT_EQ(scheduleClipboardText(table, "/data/woodlot.arx", when),
              "Harvest Schedule - 2:05:09 PM on 2026-11-23\r\n/data/woodlot.arx\r\nArborex for "
              "Windows 3.226 (March 29, 2007)\r\n\r\nYear\tBlock List\t\r\n2030\t93B045 101\t\r\n");
}

}  // namespace
}  // namespace arborex
