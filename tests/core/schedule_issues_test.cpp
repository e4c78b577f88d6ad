// The schedule's issues: a year against the rate and the constraints, an entry against its
// stand's minimums, and the issue line that counts them.

#include "report/schedule_issues.hpp"

#include <gtest/gtest.h>

#include "model/model.hpp"

namespace arborex {
namespace {

YearRec harvested(float volume) {
    YearRec year;
    year.VolConifer = volume * 0.75f;
    year.VolDeciduous = volume * 0.25f;
    return year;
}

TEST(ScheduleIssues, YearAgainstTheRate) {
    const IssueLimits limits{1000.0, false, 0.0f, 0.0f};
    // Exactly 98% of the rate is not low.
    EXPECT_EQ(yearIssueText(yearIssues(harvested(980.0f), limits)), "");
    EXPECT_EQ(yearIssueText(yearIssues(harvested(979.9f), limits)), "Low Harvest. ");
    EXPECT_EQ(yearIssueText(yearIssues(harvested(0.0f), limits)), "No Harvest. ");

    // An area-based run judges the clearcut-equivalent area, whatever the volume.
    YearRec year = harvested(5000.0f);
    year.AreaCCE = 9.7f;
    EXPECT_TRUE(yearIssues(year, {10.0, true, 0.0f, 0.0f}).lowHarvest);
    year.AreaCCE = 0.0f;
    EXPECT_TRUE(yearIssues(year, {10.0, true, 0.0f, 0.0f}).noHarvest);
}

TEST(ScheduleIssues, YearAgainstTheConstraints) {
    YearRec year = harvested(500.0f);
    year.InvArea = 200.0f;
    year.InvAreaAge = 59.0f;     // 29.5% older than the age
    year.InvAreaHeight = 61.0f;  // 30.5% taller than the height
    const IssueLimits limits{1000.0, false, 30.0f, 31.0f};
    EXPECT_EQ(yearIssueText(yearIssues(year, limits)), "Low Harvest. Height & Age  cons. not met");
    EXPECT_EQ(yearIssueText(yearIssues(year, {400.0, false, 29.5f, 0.0f})), "");
    // Without inventory area nothing is tested; unticked constraints count as 0%.
    year.InvArea = 0.0f;
    EXPECT_EQ(yearIssueText(yearIssues(year, limits)), "Low Harvest. ");
}

// One stand, VDYP now and TIPSY later, with one entry per rotation.
struct TwoRotations : ::testing::Test {
    Model m;
    void SetUp() override {
        ResizePolygonArrays(m, 1);
        m.LastPoly = 0;
        m.Poly[0].MGNT = {0, 1};
        m.Settings.MINDIA = 20.0f;
        m.Settings.MINVOL = 150.0f;
        m.Settings.MINAGE = 60;
        PolyCalc& criteria = m.PolyC[0];
        criteria.MINCUTDBH = {-1.0f, 15.0f};
        criteria.MINCUTVOL = {-1.0f, -1.0f};
        criteria.MINCUTAGE = {-1, 50};
        m.Calc.BlockLast = 1;
        m.Calc.BlockList.resize(1);
        m.Calc.BlockList[0].Rotation = 1;
        m.Calc.BlockList[1].Rotation = 2;
        m.Calc.CutCount = 2;
        m.Calc.CutList.resize(2);
        m.Calc.CutList[1] = entry(0, 19.9f, 150.0f, 59);
        m.Calc.CutList[2] = entry(1, 19.9f, 149.0f, 55);
        m.Calc.CalcHorizon = 2;
        m.Calc.YearTable.resize(2);
        for (int y = 0; y <= 2; ++y) m.Calc.YearTable[y] = harvested(1000.0f);
    }
    static CutRec entry(int16_t block, float dbh, float volHa, int16_t age) {
        CutRec cut;
        cut.BlockIdx = block;
        cut.CutDbh = dbh;
        cut.CutVolHa = volHa;
        cut.CutAge = age;
        return cut;
    }
};

TEST_F(TwoRotations, EntriesMeetTheMinimumsOfTheirRotationsManagement) {
    // Rotation 1 is VDYP and takes the project's minimums; rotation 2 is TIPSY with its own.
    EXPECT_EQ(entryIssueText(m, 1), "Minimum DBH, Age not met");
    EXPECT_EQ(entryIssueText(m, 2), "Minimum Volume not met");
    m.Poly[0].MGNT[1] = 2;  // not commercial: nothing to judge
    EXPECT_EQ(entryIssueText(m, 2), "");
}

TEST_F(TwoRotations, IssueLineCountsEntriesAndYears) {
    bool any = false;
    const IssueLimits limits{1000.0, false, 0.0f, 0.0f};
    EXPECT_EQ(issueLine(m, limits, any),
              "Harvesting Issues (Polygon=2, Annual=0): Min Parameters not met for 2 entries");
    EXPECT_TRUE(any);

    m.Calc.YearTable[0] = harvested(0.0f);
    m.Calc.YearTable[1] = harvested(900.0f);
    m.Calc.YearTable[1].InvArea = 10.0f;
    m.Calc.YearTable[2].InvArea = 10.0f;
    m.Calc.CutList[1] = entry(0, 25.0f, 200.0f, 80);
    m.Calc.CutList[2] = entry(1, 25.0f, 200.0f, 80);
    EXPECT_EQ(issueLine(m, {1000.0, false, 50.0f, 0.0f}, any),
              "Harvesting Issues (Polygon=0, Annual=4): Age Constraints: 2   No Harvest for 1 "
              "years   Low Harvest for 1 years   ");

    m.Calc.YearTable[0] = harvested(1000.0f);
    m.Calc.YearTable[1] = harvested(1000.0f);
    EXPECT_EQ(issueLine(m, limits, any), "No Harvesting Issues");
    EXPECT_FALSE(any);
}

TEST_F(TwoRotations, EntriesOfBlocksBeyondTheRunAreNotCounted) {
    m.Calc.BlockLast = 0;
    bool any = false;
    EXPECT_EQ(issueLine(m, {1000.0, false, 0.0f, 0.0f}, any),
              "Harvesting Issues (Polygon=1, Annual=0): Min Parameters not met for 1 entries");
}

}  // namespace
}  // namespace arborex
