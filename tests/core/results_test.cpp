// What a run records: harvest entries, the cut side of the yearly table, the period
// accumulators, the species tallies and the index of standing blocks, worked by hand on blocks
// set up directly over the test land base (StartYear 2030).

#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "base/errors.hpp"
#include "harvest/results.hpp"
#include "support/calc_fixture.hpp"

namespace arborex {
namespace {

using Floats = std::vector<float>;

class Results : public ::testing::Test {
protected:
    // 0 a VDYP stand, 1 a TIPSY stand, 2 a name of the full 12 characters, 3 VDYP now and
    // TIPSY later.
    test::CalcFixture fx{{{"STAND A", 10.0f, 80, 0, 0},
                          {"STAND B", 10.0f, 80, 1, 1},
                          {"ABCDEFGHIJKL", 10.0f, 80, 0, 0},
                          {"MIXED", 10.0f, 80, 0, 1}}};
    CalcState& calc = fx.m.Calc;
    CalcRun& run = fx.run;

    void SetUp() override {
        fx.prepare();
        run.StartYear = run.CurYear = 2030;
        calc.CalcHorizon = 5;
        calc.YearTable.resize(calc.CalcHorizon);
    }
    // A clearcut block of 10 ha on polygon p, its stand age 0 in `standYear`.
    int16_t addBlock(int16_t p, int16_t standYear, int16_t dueYear, int16_t rotation = 1) {
        calc.BlockLast = static_cast<int16_t>(calc.BlockLast + 1);
        calc.BlockList.resize(calc.BlockLast);
        calc.BlockList[calc.BlockLast] = {
            .Polygon = p,
            .Status = 1,
            .Curve = run.Yields.PolyCurveExisting[static_cast<std::size_t>(p)],
            .Area = 10.0f,
            .DueYear = dueYear,
            .StandYear = standYear,
            .Method = 1,
            .Rotation = rotation};
        return calc.BlockLast;
    }
    // A successor of `b` on polygon 0 with a harvest age of 70.
    int16_t addSuccessor(int16_t b, int16_t standYear, int16_t dueYear) {
        const int16_t next = addBlock(0, standYear, dueYear, 2);
        calc.BlockList[next].HarvestAge = 70;
        calc.BlockList[b].NextBlock = next;
        return next;
    }
    void step(int16_t block, float con, float dec, float area, int16_t method) {
        UpdateReports(fx.session, con, dec, area, area, method, block, con + dec);
    }
    const YearRec& year(int offset) { return calc.YearTable[offset]; }
    const CutRec& lastCut() { return calc.CutList[calc.CutCount]; }
};

TEST(AgeClass, TwentyYearClassesTo140ThenTwoWideOnes) {
    std::vector<int> classes;
    for (int age : {0, 1, 20, 21, 140, 141, 250, 251}) classes.push_back(ageClass(age));
    EXPECT_EQ(classes, (std::vector<int>{0, 1, 1, 2, 7, 8, 8, 9}));
}

TEST_F(Results, EntryOpensWithTheStandAndGrowsByOne) {
    const int16_t b = addBlock(0, 1950, 2035);
    const int16_t old = addBlock(1, 1630, 2000);  // TIPSY, 400 years old
    AddReportCut(fx.session, b, 1);
    AddReportCut(fx.session, b, 4);
    AddReportCut(fx.session, old, 1);
    ASSERT_EQ(calc.CutCount, 3);
    ASSERT_EQ(calc.CutList.upperBound(), 3);
    // Block, method, years, years from due, age, volume (2 m3/ha a year) and dbh.
    const CutRec& c = calc.CutList[1];
    EXPECT_EQ(std::tuple(c.BlockIdx, c.CutMethod, c.StartYr, c.EndYr, c.YearsFromDue, c.CutAge,
                         c.CutVolHa, c.CutDbh),
              std::tuple(b, 1, 2030, 2030, 5, 80, 160.0f, 24.0f));
    EXPECT_EQ(calc.CutList[2].YearsFromDue, 0);  // a thin is never early or late
    // Past the curves' top age the values are those at 350; the age stays true.
    const CutRec& o = lastCut();
    EXPECT_EQ(std::tuple(o.CutAge, o.YearsFromDue, o.CutVolHa, o.CutDbh),
              std::tuple(400, -30, 700.0f, 105.0f));
}

TEST_F(Results, CutPastTheHorizonRecordsNothing) {
    const int16_t b = addBlock(0, 1950, 2030);
    run.CurYear = 2036;
    AddReportCut(fx.session, b, 1);
    step(b, 50.0f, 10.0f, 2.0f, 1);
    EXPECT_EQ(lastCut().CutArea, 0.0f);
    EXPECT_EQ(lastCut().CutVolume, 0.0f);
    for (int y = 0; y <= calc.CalcHorizon; ++y)
        EXPECT_EQ(std::tuple(year(y).NumPolygons, year(y).AreaCC, year(y).BlockNames.str()),
                  std::tuple(0, 0.0f, ""))
            << y;
}

TEST_F(Results, BlockNamesStopAt128CharactersMidName) {
    const int16_t b = addBlock(2, 1950, 2030);
    AddReportCut(fx.session, b, 1);
    for (int i = 0; i < 11; ++i) step(b, 0.0f, 0.0f, 0.0f, 1);
    std::string expected = "ABCDEFGHIJKL";
    for (int i = 0; i < 8; ++i) expected += ", ABCDEFGHIJKL";
    EXPECT_EQ(year(0).BlockNames.str(), expected + ", AB");
    EXPECT_EQ(year(0).NumPolygons, 11);
}

TEST_F(Results, MethodsLandInTheirOwnFields) {
    const int16_t b = addBlock(0, 1950, 2030);
    AddReportCut(fx.session, b, 1);
    // Methods 1..7 with areas 1, 2, 4, ... 64 so that every sum shows its parts.
    const float con[] = {30, 3, 6, 5, 7, 0, 20};
    const float dec[] = {10, 1, 2, 0, 1, 0, 0};
    for (int16_t method = 1; method <= 7; ++method)
        step(b, con[method - 1], dec[method - 1], static_cast<float>(1 << (method - 1)), method);
    const YearRec& y = year(0);
    EXPECT_EQ(y.NumPolygons, 7);
    // Areas: clearcut, partial cut (both entries), thin, road, NSR, NC, clearcut equivalent.
    EXPECT_EQ((Floats{y.AreaCC, y.AreaPC, y.AreaCT, y.AreaRoad, y.AreaNSR, y.AreaNC, y.AreaCCE}),
              (Floats{1, 6, 8, 16, 32, 64, 127}));
    // Volumes: clearcut with NC, partial cut, thin, road, conifer, deciduous.
    EXPECT_EQ((Floats{y.VolCC, y.VolPC, y.VolCT, y.VolRoad, y.VolConifer, y.VolDeciduous}),
              (Floats{60, 12, 5, 8, 71, 14}));
    EXPECT_EQ(lastCut().CutMethod, 7);  // the latest step's method
}

TEST_F(Results, EntryOverTwoYearsRegeneratesFromItsMiddle) {
    // The cut block is on polygon 0 (delay 9); the newest block is on polygon 1 (delay 3).
    fx.m.PolyC[0].REGENDELAY = 9;
    fx.m.PolyC[1].REGENDELAY = 3;
    const int16_t b = addBlock(0, 1950, 2031);
    const int16_t next = addSuccessor(b, 2031, 2101);
    addBlock(1, 1950, 2040);
    run.AreaRun = true;
    run.HarvestRate = 5.0;
    run.CurYear = 2031;
    AddReportCut(fx.session, b, 1);
    step(b, 30.0f, 0.0f, 3.0f, 1);
    step(b, 20.0f, 0.0f, 2.0f, 1);
    run.CurYear = 2032;
    step(b, 50.0f, 0.0f, 5.0f, 1);

    EXPECT_EQ(std::tuple(year(1).NumPolygons, year(2).NumPolygons), std::tuple(2, 1));
    EXPECT_EQ(std::tuple(year(1).AreaCC, year(2).AreaCC), std::tuple(5.0f, 5.0f));
    const CutRec& c = lastCut();
    EXPECT_EQ(std::tuple(c.StartYr, c.EndYr, c.CutArea, c.CutVolume, c.CutConifer, c.CutPotential,
                         c.CutYears),
              std::tuple(2031, 2032, 10.0f, 100.0f, 100.0f, 100.0f, 2.0f));
    // 2032 - 1/2 + 3 = 2034.5, rounded to the even neighbour.
    EXPECT_EQ(calc.BlockList[next].StandYear, 2034);
    EXPECT_EQ(calc.BlockList[next].DueYear, 2104);
}

TEST_F(Results, ClearcutInOneYearTakesTheProjectDelay) {
    fx.m.Settings.REGENDELAY = 2;  // polygon's own delay is -1
    const int16_t b = addBlock(0, 1950, 2030);
    const int16_t next = addSuccessor(b, 2032, 2100);
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
    const PeriodAccumulators& a = run.Report;
    EXPECT_EQ(std::tuple(a.ReportVolAcc[0], a.ReportAreaAcc[0], a.ReportCceAcc[0]),
              std::tuple(50.0, 3.0, 2.0));
    EXPECT_EQ(a.ReportFlag[0], (1 << 1) | (1 << 2));
    EXPECT_EQ(a.ReportFlag[2], 1 << 4);
    EXPECT_EQ(std::tuple(a.ReportMinAge, a.ReportMaxAge), std::tuple(80, 130));
    EXPECT_EQ(a.ReportSum1, 80.0 * 1.0 + 130.0 * 0.5 + 80.0 * 1.0);
    EXPECT_EQ(a.ReportSum2, 80.0 * 40.0 + 130.0 * 5.0 + 80.0 * 10.0);
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
    const auto& v = run.SpeciesVolV.rows;
    EXPECT_EQ(v[1][0], 0.0);

    run.ResultsValid = 1;
    run.CurYear = 2031;
    step(now, 40.0f, 10.0f, 1.0f, 1);
    run.CurYear = 2032;
    step(now, 40.0f, 10.0f, 1.0f, 1);
    // PL keeps its share of the conifer percents; the excluded FD's share is not handed on.
    EXPECT_EQ(std::tuple(v[1][2], v[1][3], v[1][0], v[2][0], v[3][0]),
              std::tuple(30.0, 30.0, 60.0, 20.0, 0.0));

    step(later, 30.0f, 10.0f, 1.0f, 1);
    const auto& t = run.SpeciesVolT.rows;
    EXPECT_EQ(std::tuple(t[1][3], t[2][3], t[2][0]), std::tuple(30.0, 10.0, 10.0));
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
