// The annual loop on small land bases of straight-line stands (2 m3/ha per year of age unless a
// test says otherwise), with the clock fixed at 2030.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <tuple>

#include "base/errors.hpp"
#include "harvest/queue_order.hpp"
#include "harvest/simulation.hpp"
#include "model/arx_records.hpp"
#include "support/calc_fixture.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

using Floats = std::vector<float>;

// The fixture with its included list taken from the screen, as cmdCalculate leaves it.
struct Land : test::CalcFixture {
    explicit Land(const std::vector<test::TestStand>& stands, int16_t horizon = 10)
        : CalcFixture(stands) {
        m.Settings.SPLIT = 10.0f;
        m.Calc.CalcHorizon = horizon;
        prepare();
        SetCutOrder(session);
    }
    Block& block(int b) { return m.Calc.BlockList[b]; }
    int16_t simulate(int16_t mode, double rate) {
        run.HarvestRate = rate;
        int16_t failed = 0;
        AVAC(session, mode, failed);
        return failed;
    }
    float volumeCut(int offset) const {
        const YearRec& y = m.Calc.YearTable[offset];
        return y.VolConifer + y.VolDeciduous;
    }
    // Blocks set up and the clock at the start of a run to 2040, as AVAC begins.
    void startYears() {
        SetupCut(session);
        run.CurYear = run.StartYear;
        run.EndYear = 2040;
        m.Calc.YearTable.resize(10);
    }
};

TEST(SetupCut, SplitsAtSplitAndNetsDownPiecesAndRoads) {
    Land land({{"BIG", 25.0f, 100}, {"ROAD", 10.0f, 100}});
    land.m.PolyM[1].ROADAREA = 1.0f;
    SetupCut(land.session);
    ASSERT_EQ(land.m.Calc.BlockLast, 3);
    EXPECT_EQ((Floats{land.block(0).Area, land.block(1).Area, land.block(2).Area}),
              (Floats{10, 10, 5}));
    const Block& b = land.block(0);
    EXPECT_EQ(std::tuple(land.block(2).Polygon, b.DueYear, b.StandYear, b.Road),
              std::tuple(0, 2030 - 100 + 80, 1930, 0));

    land.screen.chkConNetDown = true;  // "15"
    SetupCut(land.session);
    const Block& roaded = land.block(3);
    const RoadRec& road = land.m.Calc.RoadList[1];
    ASSERT_EQ(roaded.Road, 1);
    EXPECT_NEAR(roaded.Area, 7.65f, 1e-5f);
    EXPECT_NEAR(road.RoadArea, 0.85f, 1e-6f);
    EXPECT_EQ(std::tuple(road.RoadBlock, road.RoadYear), std::tuple(3, roaded.StandYear));
    EXPECT_NEAR(land.m.Calc.NetArea, 35.0f * 0.85f, 1e-4f);
}

TEST(SetupCut, SkipsBadPolygonsOnceAndCountsThemInTheNetArea) {
    Land land({{"GOOD", 10.0f, 100}, {"NOAGE", 4.0f, 100}, {"OTHER", 6.0f, 100}});
    land.m.Poly[1].HAR[0] = 0;
    land.m.PolyC[2].OWNERSHIP = 1;
    land.screen.chkCut[1] = false;
    SetCutOrder(land.session);
    land.run.FirstSetup = true;
    SetupCut(land.session);
    EXPECT_EQ(land.m.Calc.BlockLast, 0);  // neither the skipped nor the unticked polygon
    EXPECT_FLOAT_EQ(land.m.Calc.NetArea, 14.0f);
    const auto& shown = land.host.prompt.shown;
    ASSERT_EQ(shown.size(), 1u);
    EXPECT_EQ(shown[0].title, "Skip Polygons");
    EXPECT_NE(shown[0].text.find("NOAGE\r\n    Harvest Age = 0\r\n"), std::string::npos);
    SetupCut(land.session);  // later trials run silently
    EXPECT_EQ(shown.size(), 1u);
}

TEST(ChooseBlock, QueuesPassedBlocksAndRelaxesByDueYear) {
    Land land({{"A", 10.0f, 40}, {"B", 10.0f, 40}, {"C", 10.0f, 40}});
    SetupCut(land.session);
    land.run.CurYear = 2030;
    land.block(0).DueYear = 2036;
    land.block(1).DueYear = land.block(2).DueYear = 2033;
    land.run.Relax = 2;
    EXPECT_EQ(ChooseBlock(land.session), -1);
    EXPECT_EQ(land.run.QueueLast, 2);
    EXPECT_EQ(land.block(0).Status, 3);

    // Due in 3 years, two of them: the first in list order; due in 6 is out of reach.
    land.run.Relax = 5;
    EXPECT_EQ(ChooseBlock(land.session), 1);
    EXPECT_EQ(land.block(1).Status, 4);
    EXPECT_EQ(land.run.CutQueue[1], kQueueTaken);
    EXPECT_EQ(land.block(1).NextBlock, 3);  // planted at once
    EXPECT_EQ(ChooseBlock(land.session), 2);
    EXPECT_EQ(ChooseBlock(land.session), -1);

    // The queue serves what fell due, in the order it was passed; due this year counts.
    land.run.CurYear = 2036;
    EXPECT_EQ(ChooseBlock(land.session), 0);
    EXPECT_EQ(land.run.CutQueue[0], kQueueTaken);

    // Due in exactly 5 years is within reach.
    Land five({{"A", 10.0f, 40}});
    SetupCut(five.session);
    five.run.CurYear = 2030;
    five.run.Relax = 5;
    five.block(0).DueYear = 2035;
    EXPECT_EQ(ChooseBlock(five.session), 0);
}

TEST(IncrementYear, TakesTheInventoryAndTestsTheConstraints) {
    Land land({{"OLD", 10.0f, 100}, {"YOUNG", 5.0f, 30}});
    land.startYears();
    land.run.HarvestRate = 700.4;
    IncrementYear(land.session, -1);
    const YearRec& y = land.m.Calc.YearTable[0];
    // Inventory area, mature and immature volume, their sum, age classes 5 and 2.
    EXPECT_EQ((Floats{y.InvArea, y.MatureCon, y.ImmatureCon, y.InvVolume, y.AgeClassArea[5],
                      y.AgeClassArea[2]}),
              (Floats{15, 10 * 200, 5 * 60, 2300, 10, 5}));
    EXPECT_FALSE(land.run.ConstraintBroken);  // both boxes unticked: never broken
    EXPECT_EQ(land.run.VolLeft, 700);
    EXPECT_EQ(land.run.CurYear, 2030);  // the first call holds the clock

    // 10 of 15 ha are 100 or older: 66.7%, under a requirement of 67%.
    land.screen.chkConAge = true;
    land.screen.txtAge = "100";
    land.screen.txtAgePerc = "67";
    IncrementYear(land.session, 0);
    EXPECT_TRUE(land.run.ConstraintBroken);
    EXPECT_EQ(land.run.CurYear, 2031);
    land.screen.txtAgePerc = "66";
    IncrementYear(land.session, 0);
    EXPECT_FALSE(land.run.ConstraintBroken);

    // Nothing left standing: the ratios cannot be formed.
    for (Block& b : land.m.Calc.BlockList) b.CutFraction = 1.0f;
    try {
        IncrementYear(land.session, 0);
        FAIL() << "no failure";
    } catch (const ArborexError& e) {
        EXPECT_EQ(e.number(), ErrDivisionByZero);
    }

    // 12.2 has no exact binary form: the field must be read the way the heights are stored,
    // so that a stand of exactly the constraint height reaches it.
    Land tall({{"A", 10.0f, 100}});
    tall.startYears();
    for (CurveAge& age : tall.run.Yields.CurveTable.at(tall.block(0).Curve).Age) age.Height = 12.2f;
    tall.screen.chkConHeight = true;
    tall.screen.txtHeight = "12.2";
    tall.screen.txtHeightPerc = "100";
    IncrementYear(tall.session, -1);
    EXPECT_EQ(tall.m.Calc.YearTable[0].InvAreaHeight, 10.0f);
    EXPECT_FALSE(tall.run.ConstraintBroken);
}

TEST(AVAC, RateOfZeroStaysOnTheFirstBlockAndCutsNothing) {
    Land land({{"A", 10.0f, 100}, {"B", 10.0f, 100}});
    EXPECT_EQ(land.simulate(kTrialRun, 0.0), 0);
    EXPECT_EQ(land.run.CurYear, 2041);
    EXPECT_EQ(land.m.Calc.CutCount, 1);
    for (int y = 0; y <= 10; ++y) EXPECT_EQ(land.volumeCut(y), 0.0f);
    EXPECT_EQ(land.block(1).Status, 1);  // never reached
}

// Three 10 ha stands past the top of their curves: 3,000 m3 each, for good.
TEST(AVAC, FinalRunDropsTheFirstAllowanceAndRevisitsBlocksFinishedExactly) {
    Land land({{"A", 10.0f, 310, 0, 0, 1.0f},
               {"B", 10.0f, 310, 0, 0, 1.0f},
               {"C", 10.0f, 310, 0, 0, 1.0f}});
    land.run.DelayYears = 1;
    EXPECT_EQ(land.simulate(kFinalRun, 2000.0), 0);
    EXPECT_EQ(
        std::tuple(land.observer.finalRuns, land.run.ResultsValid, land.m.Calc.inputs.SavedVolRate),
        std::tuple(1, 1, 2000));
    const float expected[] = {0, 2000, 2000, 2000, 2000, 1000, 0};
    for (int y = 0; y <= 6; ++y) EXPECT_FLOAT_EQ(land.volumeCut(y), expected[y]) << y;
    // B runs out in year 3 exactly with the allowance: it is visited again in year 4 with
    // nothing left to cut, which finishes it a second time. A and C end with allowance left.
    EXPECT_EQ(std::tuple(land.block(0).Status, land.block(1).Status, land.block(2).Status),
              std::tuple(1 + 16, 1 + 16 + 16, 1 + 16));
    const auto& years = land.m.Calc.YearTable;
    EXPECT_EQ(std::tuple(years[2].NumPolygons, years[4].NumPolygons, years[5].NumPolygons),
              std::tuple(2, 2, 1));
}

TEST(AVAC, ABlockTakenEarlyIsCutToTheEndAcrossSteps) {
    // Due in 3 years, taken by Relax in the first; 1,540 m3 on it against 1,000 a year.
    Land land({{"A", 10.0f, 77}});
    land.run.Relax = 5;
    EXPECT_EQ(land.simulate(kFinalRun, 1000.0), 0);
    EXPECT_EQ(std::tuple(land.block(0).Status, land.block(0).CutFraction),
              std::tuple(4 + 16, 1.0f));
    ASSERT_EQ(land.m.Calc.CutCount, 1);
    EXPECT_EQ(std::tuple(land.m.Calc.CutList[1].StartYr, land.m.Calc.CutList[1].EndYr),
              std::tuple(2030, 2031));
    EXPECT_EQ(land.volumeCut(0), 1000.0f);
    EXPECT_NEAR(land.volumeCut(1), 547.0f, 0.1f);  // the rest, at one year older
    EXPECT_EQ(land.volumeCut(2), 0.0f);
}

TEST(AVAC, TrialsStopWithTheirFailureWord) {
    Land land({{"A", 10.0f, 100}, {"B", 10.0f, 30}});
    EXPECT_EQ(land.simulate(kTrialRun, 2000.0), -1);
    EXPECT_EQ(land.run.LastError, "Nothing Harvestable");
    EXPECT_EQ(land.run.CurYear, 2031);

    // Failing on the very first inventory cuts nothing.
    land.screen.chkConHeight = true;
    land.screen.txtHeight = "150";
    land.screen.txtHeightPerc = "60";
    EXPECT_EQ(land.simulate(kTrialRun, 100.0), -1);
    EXPECT_EQ(land.run.LastError, "Constraints");
    EXPECT_EQ(land.m.Calc.CutCount, 0);
    EXPECT_EQ(land.volumeCut(0), 0.0f);
}

// The tables as the project file writes them.
std::string tableBytes(const Model& m, const std::string& path) {
    {
        ByteWriter w(path);
        for (int b = 0; b <= m.Calc.BlockLast; ++b) arx::write(w, m.Calc.BlockList[b]);
        for (int c = 1; c <= m.Calc.CutCount; ++c) arx::write(w, m.Calc.CutList[c]);
        for (int y = 0; y <= m.Calc.CalcHorizon; ++y) arx::write(w, m.Calc.YearTable[y]);
    }
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

TEST(AVAC, TwoIdenticalRunsLeaveIdenticalTables) {
    test::TempDir dir;
    Land land({{"A", 25.0f, 100}, {"B", 10.0f, 60, 0, 1}, {"C", 7.0f, 75}}, 60);
    land.m.PolyM[0].ROADAREA = 2.0f;
    land.screen.chkConNetDown = true;
    EXPECT_EQ(land.simulate(kFinalRun, 900.0), 0);
    const std::string first = tableBytes(land.m, dir.file("first"));
    EXPECT_EQ(land.simulate(kFinalRun, 900.0), 0);
    EXPECT_GT(land.m.Calc.CutCount, 5);
    EXPECT_EQ(tableBytes(land.m, dir.file("second")), first);
}

}  // namespace
}  // namespace arborex
