// What a run records: harvest entries, the cut side of the yearly table, the period
// accumulators, the species tallies and the index of standing blocks, worked by hand on blocks
// set up directly over the test land base (StartYear 2030).

#include <gtest/gtest.h>

#include <string>

#include "frame/errors.hpp"
#include "harvest/results.hpp"
#include "support/calc_fixture.hpp"

namespace arborex {
namespace {

using test::CalcFixture;

class Results : public ::testing::Test {
protected:
    // 0 a VDYP stand, 1 a TIPSY stand, 2 a name of the full 12 characters, 3 VDYP now and
    // TIPSY later.
    CalcFixture fx{{{"STAND A", 10.0f, 80, 0, 0},
                    {"STAND B", 10.0f, 80, 1, 1},
                    {"ABCDEFGHIJKL", 10.0f, 80, 0, 0},
                    {"MIXED", 10.0f, 80, 0, 1}}};
    CalcState& calc = fx.m.Calc;
    CalcRun& run = fx.run;

    void SetUp() override {
        fx.prepare();
        run.StartYear = 2030;
        run.CurYear = 2030;
        calc.CalcHorizon = 5;
        calc.YearTable.resize(calc.CalcHorizon);
    }
    // A first-rotation clearcut block of 10 ha on polygon p, its stand age 0 in `standYear`.
    int16_t addBlock(int16_t p, int16_t standYear, int16_t dueYear, int16_t rotation = 1) {
        Block b;
        b.Polygon = p;
        b.Status = 1;
        b.Method = 1;
        b.Area = 10.0f;
        b.StandYear = standYear;
        b.DueYear = dueYear;
        b.Rotation = rotation;
        b.Curve = run.Yields.PolyCurveExisting[static_cast<std::size_t>(p)];
        calc.BlockLast = static_cast<int16_t>(calc.BlockLast + 1);
        calc.BlockList.resize(calc.BlockLast);
        calc.BlockList[calc.BlockLast] = b;
        return calc.BlockLast;
    }
    void step(int16_t block, float con, float dec, float area, int16_t method) {
        UpdateReports(fx.session, con, dec, area, area, method, block, con + dec);
    }
    const YearRec& year(int offset) { return calc.YearTable[offset]; }
    const CutRec& lastCut() { return calc.CutList[calc.CutCount]; }
};

TEST(AgeClass, TwentyYearClassesTo140ThenTwoWideOnes) {
    EXPECT_EQ(ageClass(0), 0);
    EXPECT_EQ(ageClass(1), 1);
    EXPECT_EQ(ageClass(20), 1);
    EXPECT_EQ(ageClass(21), 2);
    EXPECT_EQ(ageClass(140), 7);
    EXPECT_EQ(ageClass(141), 8);
    EXPECT_EQ(ageClass(250), 8);
    EXPECT_EQ(ageClass(251), 9);
}

TEST_F(Results, EntryOpensWithTheStandAndGrowsByOne) {
    const int16_t b = addBlock(0, 1950, 2035);
    const int16_t old = addBlock(1, 1630, 2000);  // TIPSY, 400 years old
    AddReportCut(fx.session, b, 1);
    AddReportCut(fx.session, b, 4);
    AddReportCut(fx.session, old, 1);
    ASSERT_EQ(calc.CutCount, 3);
    ASSERT_EQ(calc.CutList.upperBound(), 3);
    const CutRec& first = calc.CutList[1];
    EXPECT_EQ(first.BlockIdx, b);
    EXPECT_EQ(first.CutMethod, 1);
    EXPECT_EQ(first.StartYr, 2030);
    EXPECT_EQ(first.EndYr, 2030);
    EXPECT_EQ(first.YearsFromDue, 5);
    EXPECT_EQ(first.CutAge, 80);
    EXPECT_FLOAT_EQ(first.CutVolHa, 160.0f);  // 2 m3/ha a year
    EXPECT_FLOAT_EQ(first.CutDbh, 24.0f);
    EXPECT_EQ(calc.CutList[2].YearsFromDue, 0);  // a thin is never early or late
    // Past the curves' top age the values are those at 350; the age stays true.
    EXPECT_EQ(lastCut().CutAge, 400);
    EXPECT_EQ(lastCut().YearsFromDue, -30);
    EXPECT_FLOAT_EQ(lastCut().CutVolHa, 700.0f);
    EXPECT_FLOAT_EQ(lastCut().CutDbh, 105.0f);
}

TEST_F(Results, CutPastTheHorizonRecordsNothing) {
    const int16_t b = addBlock(0, 1950, 2030);
    run.CurYear = 2036;
    AddReportCut(fx.session, b, 1);
    step(b, 50.0f, 10.0f, 2.0f, 1);
    EXPECT_EQ(lastCut().CutArea, 0.0f);
    EXPECT_EQ(lastCut().CutVolume, 0.0f);
    for (int y = 0; y <= calc.CalcHorizon; ++y) {
        EXPECT_EQ(year(y).NumPolygons, 0);
        EXPECT_EQ(year(y).AreaCC, 0.0f);
        EXPECT_EQ(year(y).BlockNames.str(), "");
    }
}

TEST_F(Results, BlockNamesStopAt128CharactersMidName) {
    const int16_t b = addBlock(2, 1950, 2030);
    AddReportCut(fx.session, b, 1);
    for (int i = 0; i < 11; ++i) step(b, 0.0f, 0.0f, 0.0f, 1);
    std::string expected = "ABCDEFGHIJKL";
    for (int i = 0; i < 8; ++i) expected += ", ABCDEFGHIJKL";
    expected += ", AB";
    EXPECT_EQ(year(0).BlockNames.str(), expected);
    EXPECT_EQ(year(0).NumPolygons, 11);
}

TEST_F(Results, MethodsLandInTheirOwnFields) {
    const int16_t b = addBlock(0, 1950, 2030);
    AddReportCut(fx.session, b, 1);
    step(b, 30.0f, 10.0f, 1.0f, 1);
    step(b, 3.0f, 1.0f, 2.0f, 2);
    step(b, 6.0f, 2.0f, 4.0f, 3);
    step(b, 5.0f, 0.0f, 8.0f, 4);
    step(b, 7.0f, 1.0f, 16.0f, 5);
    step(b, 0.0f, 0.0f, 32.0f, 6);
    step(b, 20.0f, 0.0f, 64.0f, 7);
    const YearRec& y = year(0);
    EXPECT_EQ(y.NumPolygons, 7);
    EXPECT_EQ(y.AreaCC, 1.0f);
    EXPECT_EQ(y.AreaPC, 6.0f);
    EXPECT_EQ(y.AreaCT, 8.0f);
    EXPECT_EQ(y.AreaRoad, 16.0f);
    EXPECT_EQ(y.AreaNSR, 32.0f);
    EXPECT_EQ(y.AreaNC, 64.0f);
    EXPECT_EQ(y.VolCC, 60.0f);  // clearcut and NC
    EXPECT_EQ(y.VolPC, 12.0f);
    EXPECT_EQ(y.VolCT, 5.0f);
    EXPECT_EQ(y.VolRoad, 8.0f);
    EXPECT_EQ(y.VolConifer, 71.0f);
    EXPECT_EQ(y.VolDeciduous, 14.0f);
    EXPECT_EQ(y.AreaCCE, 127.0f);
    EXPECT_EQ(lastCut().CutMethod, 7);  // the latest step's method
}

TEST_F(Results, EntryOverTwoYearsRegeneratesFromItsMiddle) {
    // The cut block is on polygon 0 (delay 9); the newest block is on polygon 1 (delay 3).
    fx.m.PolyC[0].REGENDELAY = 9;
    fx.m.PolyC[1].REGENDELAY = 3;
    const int16_t b = addBlock(0, 1950, 2031);
    const int16_t next = addBlock(0, 2031, 2101, 2);
    calc.BlockList[next].HarvestAge = 70;
    calc.BlockList[b].NextBlock = next;
    addBlock(1, 1950, 2040);
    run.AreaRun = true;
    run.HarvestRate = 5.0;
    run.CurYear = 2031;
    AddReportCut(fx.session, b, 1);
    step(b, 30.0f, 0.0f, 3.0f, 1);
    step(b, 20.0f, 0.0f, 2.0f, 1);
    run.CurYear = 2032;
    step(b, 50.0f, 0.0f, 5.0f, 1);

    EXPECT_EQ(year(1).NumPolygons, 2);
    EXPECT_EQ(year(2).NumPolygons, 1);
    EXPECT_EQ(year(1).AreaCC, 5.0f);
    EXPECT_EQ(year(2).AreaCC, 5.0f);
    const CutRec& cut = lastCut();
    EXPECT_EQ(cut.StartYr, 2031);
    EXPECT_EQ(cut.EndYr, 2032);
    EXPECT_EQ(cut.CutArea, 10.0f);
    EXPECT_EQ(cut.CutVolume, 100.0f);
    EXPECT_EQ(cut.CutConifer, 100.0f);
    EXPECT_EQ(cut.CutPotential, 100.0f);
    EXPECT_FLOAT_EQ(cut.CutYears, 2.0f);
    // 2032 - 1/2 + 3 = 2034.5, rounded to the even neighbour.
    EXPECT_EQ(calc.BlockList[next].StandYear, 2034);
    EXPECT_EQ(calc.BlockList[next].DueYear, 2104);
}

TEST_F(Results, ClearcutInOneYearTakesTheProjectDelay) {
    fx.m.Settings.REGENDELAY = 2;  // polygon's own delay is -1
    const int16_t b = addBlock(0, 1950, 2030);
    const int16_t next = addBlock(0, 2032, 2100, 2);
    calc.BlockList[next].HarvestAge = 70;
    calc.BlockList[b].NextBlock = next;
    AddReportCut(fx.session, b, 1);
    step(b, 10.0f, 0.0f, 10.0f, 1);
    EXPECT_EQ(calc.BlockList[next].StandYear, 2032);
    EXPECT_EQ(calc.BlockList[next].DueYear, 2102);
}

TEST_F(Results, CutYearsSharesTheRateAndAZeroRateDiscardsThem) {
    const int16_t b = addBlock(0, 1950, 2030);
    run.HarvestRate = 100.0;  // m3/yr
    AddReportCut(fx.session, b, 1);
    step(b, 40.0f, 10.0f, 1.0f, 1);
    EXPECT_FLOAT_EQ(lastCut().CutYears, 0.5f);
    run.HarvestRate = 0.0;
    step(b, 40.0f, 10.0f, 1.0f, 1);
    EXPECT_EQ(lastCut().CutYears, 0.0f);
    EXPECT_EQ(lastCut().CutVolume, 100.0f);
}

TEST_F(Results, PeriodAccumulatorsOnlyWhileAReportIsWritten) {
    const int16_t b = addBlock(0, 1950, 2030);
    const int16_t old = addBlock(2, 1900, 2030);
    AddReportCut(fx.session, b, 1);
    step(b, 10.0f, 0.0f, 1.0f, 1);  // ReportEvery 0: nothing gathered, nothing sized
    EXPECT_TRUE(run.Report.ReportVolAcc.empty());

    run.ReportEvery = 5;
    run.Report.clear(4);
    UpdateReports(fx.session, 30.0f, 10.0f, 2.0f, 1.0f, 2, b, 0.0f);
    UpdateReports(fx.session, 5.0f, 0.0f, 1.0f, 0.5f, 4, old, 0.0f);
    UpdateReports(fx.session, 5.0f, 5.0f, 1.0f, 1.0f, 1, b, 0.0f);
    const PeriodAccumulators& acc = run.Report;
    EXPECT_EQ(acc.ReportVolAcc[0], 50.0);
    EXPECT_EQ(acc.ReportAreaAcc[0], 3.0);
    EXPECT_EQ(acc.ReportCceAcc[0], 2.0);
    EXPECT_EQ(acc.ReportFlag[0], (1 << 1) | (1 << 2));
    EXPECT_EQ(acc.ReportFlag[2], 1 << 4);
    EXPECT_EQ(acc.ReportMinAge, 80);
    EXPECT_EQ(acc.ReportMaxAge, 130);
    EXPECT_EQ(acc.ReportSum1, 80.0 * 1.0 + 130.0 * 0.5 + 80.0 * 1.0);
    EXPECT_EQ(acc.ReportSum2, 80.0 * 40.0 + 130.0 * 5.0 + 80.0 * 10.0);
}

TEST_F(Results, SpeciesTalliesFollowTheRotationsManagement) {
    // VDYP species: 1 PL (fixture), 2 AT deciduous, 3 FD; TIPSY: 1 PL, 2 SX.
    SpeciesRec aspen;
    aspen.Deciduous = 1;
    fx.m.Ref.SpeciesV.push_back(aspen);
    fx.m.Ref.SpeciesV.push_back(SpeciesRec{});
    fx.m.Ref.SpeciesVCount = 3;
    PolyData& poly = fx.m.Poly[3];
    poly.VSIDX = {1, 2, 3, 0, 0, 0};
    poly.VP = {60, 20, 20, 0, 0, 0};
    fx.m.PolyC[3].VX = {1, 1, 0, 0, 0, 0};  // FD excluded
    poly.TSIDX = {1, 2, 0, 0, 0};
    poly.TP = {75, 25, 0, 0, 0};
    run.SpeciesVolV.allocate(3);
    run.SpeciesVolT.allocate(2);
    const int16_t now = addBlock(3, 1950, 2030);
    const int16_t later = addBlock(3, 1950, 2030, 2);
    AddReportCut(fx.session, now, 1);

    step(now, 40.0f, 10.0f, 1.0f, 1);  // ResultsValid 0: no tally
    EXPECT_EQ(run.SpeciesVolV.rows[1][0], 0.0);

    run.ResultsValid = 1;
    run.CurYear = 2031;
    step(now, 40.0f, 10.0f, 1.0f, 1);
    run.CurYear = 2032;
    step(now, 40.0f, 10.0f, 1.0f, 1);
    const auto& v = run.SpeciesVolV.rows;
    // PL keeps its share of the conifer percents; the excluded FD's share is not handed on.
    EXPECT_EQ(v[1][2], 30.0);
    EXPECT_EQ(v[1][3], 30.0);
    EXPECT_EQ(v[1][0], 60.0);
    EXPECT_EQ(v[2][0], 20.0);
    EXPECT_EQ(v[3][0], 0.0);

    step(later, 30.0f, 10.0f, 1.0f, 1);
    const auto& t = run.SpeciesVolT.rows;
    EXPECT_EQ(t[1][3], 30.0);
    EXPECT_EQ(t[2][3], 10.0);
    EXPECT_EQ(t[2][0], 10.0);
    EXPECT_EQ(v[1][0], 60.0);  // the second rotation is TIPSY only

    // 250 years is the tallies' hard limit.
    calc.CalcHorizon = 260;
    calc.YearTable.resize(calc.CalcHorizon);
    run.CurYear = 2030 + 251;
    try {
        step(now, 1.0f, 0.0f, 1.0f, 1);
        FAIL() << "no failure";
    } catch (const ArborexError& e) {
        EXPECT_EQ(e.number(), ErrSubscript);
    }
}

TEST_F(Results, ReportIndexKeepsTheLastStandingBlockOfEachSide) {
    run.IncludedPoly = {1, 0, 2};
    run.IncludedLast = 2;
    addBlock(0, 1950, 2020);  // 0: standing now
    addBlock(0, 2030, 2050);  // 1: next
    addBlock(0, 1950, 2030);  // 2: due this year counts as now, and wins
    const int16_t gone = addBlock(1, 1950, 2020);
    calc.BlockList[gone].CutFraction = 1.0f;  // 3: fully cut, never counted
    addBlock(1, 2030, 2040);                  // 4: next
    BuildReportIndex(fx.session);
    EXPECT_EQ(run.ExistingIdx, (std::vector<int16_t>{0, 3, 0}));
    EXPECT_EQ(run.FutureIdx, (std::vector<int16_t>{5, 2, 0}));
}

}  // namespace
}  // namespace arborex
