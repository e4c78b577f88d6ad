// Cutting steps worked on hand-made blocks. Curve 1 grows 3 m3/ha a year, all conifer (300 at
// 100 years); curve 2 stands at 200 conifer + 100 deciduous at every age. The year is 2030.

#include <gtest/gtest.h>

#include "base/errors.hpp"
#include "harvest/cutting.hpp"
#include "support/calc_fixture.hpp"

namespace arborex {
namespace {

class Cutting : public ::testing::Test {
protected:
    void SetUp() override {
        fx.run.StartYear = fx.run.CurYear = 2030;
        fx.run.EndYear = 2130;
        fx.m.Calc.CalcHorizon = 100;
        fx.m.Calc.YearTable.resize(100);
        fx.m.Calc.CutCount = 1;  // the entry that PreCut would have opened
        fx.m.Calc.CutList.resize(1);
        auto& curves = fx.run.Yields.CurveTable;
        curves.assign(3, {});
        for (int a = 0; a <= kExpandedTopAge; ++a) {
            const auto i = static_cast<std::size_t>(a);
            curves[1].Age[i].ConVol = 3.0f * static_cast<float>(a);
            curves[2].Age[i].ConVol = 200.0f;
            curves[2].Age[i].DecVol = 100.0f;
        }
        fx.m.PolyM[0].NCVOLHA = 300.0f;
        fx.m.PolyM[0].NCDECIDUOUS = 40;
        fx.m.Settings.PCADJUSTFACT = 0.8f;  // only a re-entry (method 3) is adjusted
    }

    // Block b of `area` ha at `age`, and its successor b + 1 standing at `residualAge`, as
    // PlantBlock leaves them.
    int16_t addBlock(int16_t method, float area, int age, int16_t curve = 1, int residualAge = 0) {
        auto& calc = fx.m.Calc;
        const auto b = static_cast<int16_t>(calc.BlockLast + 1);
        calc.BlockLast = static_cast<int16_t>(b + 1);
        calc.BlockList.resize(calc.BlockLast);
        Block& blk = calc.BlockList[b];
        blk.Status = 1;
        blk.Method = method;
        blk.Area = area;
        blk.Curve = curve;
        blk.StandYear = static_cast<int16_t>(fx.run.CurYear - age);
        blk.NextBlock = static_cast<int16_t>(b + 1);
        blk.Rotation = 1;
        Block& next = calc.BlockList[b + 1];
        next = blk;
        next.StandYear = static_cast<int16_t>(fx.run.CurYear - residualAge);
        next.PrevBlock = b;
        next.NextBlock = 0;
        next.Rotation = 2;
        return b;
    }
    Block& block(int b) { return fx.m.Calc.BlockList[b]; }
    template <typename F>
    static int errorNumberOf(F f) {
        try {
            f();
        } catch (const ArborexError& e) {
            return e.number();
        }
        return 0;
    }

    test::CalcFixture fx{{test::TestStand{}}};
};

// One step on a new block (or, `again`, on the previous row's block) with an allowance of m3,
// or of ha in an area run, and the share of the block cut, the allowance left and the status
// after it. The successor always stands on what is not cut.
struct Step {
    int16_t method;
    float area;
    int age;
    int16_t curve;
    int residualAge;
    bool again, coniferOnly, byArea;
    float allowance, fraction, left;
    int16_t status;
};

TEST_F(Cutting, StepsTakeTheirShareOfTheAllowance) {
    const Step steps[] = {
        // Clearcut of 3,000 m3 over two steps.
        {1, 10, 100, 1, 0, false, false, false, 1000, 1.0f / 3.0f, 0, 1},
        {1, 10, 100, 1, 0, true, false, false, 3000, 1, 1000, 17},
        // An exact fit is visited once more with nothing left, and finishes a second time.
        {1, 10, 100, 1, 0, false, false, false, 3000, 1, 0, 17},
        {1, 10, 100, 1, 0, true, false, false, 0, 1, 0, 33},
        // An area run cuts whole stands by area.
        {1, 10, 100, 1, 0, false, false, true, 4, 0.4f, 0, 1},
        {1, 10, 100, 1, 0, true, false, true, 10, 1, 4, 17},
        // A partial cut is charged at its clearcut equivalent: 300 m3/ha now, 180 left at the
        // residual age of 60, so S = 0.4; 3 ha pay for 7.5 ha of partial cut.
        {2, 15, 100, 1, 60, false, false, true, 10, 1, 4, 17},
        {2, 15, 100, 1, 60, false, false, true, 3, 0.5f, 0, 1},
        // A re-entry removes (300 - 180) * 0.8 = 96 m3/ha on 15 ha: 1,440 m3 in all; a first
        // entry is not adjusted.
        {3, 15, 100, 1, 60, false, false, false, 1000, 1000.0f / 1440.0f, 0, 1},
        {2, 15, 100, 1, 60, false, false, false, 2000, 1, 200, 17},
        // Conifer only spends nothing on deciduous (G is 200), except on NC ground (300).
        {1, 10, 50, 2, 0, false, true, false, 1000, 0.5f, 0, 1},
        {7, 10, 50, 1, 0, false, true, false, 1000, 1.0f / 3.0f, 0, 1},
        // Past the top of the curve the volume at 350 is read: 1,050 m3/ha.
        {1, 10, 400, 1, 0, false, false, false, 1050, 0.1f, 0, 1},
    };
    int16_t b = 0;
    int row = 0;
    for (const Step& step : steps) {
        SCOPED_TRACE(row++);
        if (!step.again)
            b = addBlock(step.method, step.area, step.age, step.curve, step.residualAge);
        fx.screen.chkConifer = step.coniferOnly;
        fx.run.AreaRun = step.byArea;
        fx.run.AreaLeft = step.allowance;
        fx.run.VolLeft = static_cast<int32_t>(step.allowance);
        CutBlock(fx.session, b, 1);
        EXPECT_NEAR(block(b).CutFraction, step.fraction, 1e-6f);
        EXPECT_NEAR(block(b + 1).CutFraction, 1.0f - step.fraction, 1e-6f);
        if (step.byArea)
            EXPECT_NEAR(fx.run.AreaLeft, step.left, 1e-5f);
        else
            EXPECT_EQ(fx.run.VolLeft, static_cast<int32_t>(step.left));
        EXPECT_EQ(block(b).Status, step.status);
    }
}

// The allowance left is the difference stored to a float, then rounded half to even:
// 33534 - 6657.499 is 26876.5 as a float, so 26876 is left, not the 26877 of a double.
TEST_F(Cutting, TheAllowanceLeftIsRoundedFromAFloat) {
    fx.run.Yields.CurveTable[1].Age[100].ConVol = 6657.4990234375f;
    const int16_t b = addBlock(1, 1, 100);
    fx.run.VolLeft = 33534;
    CutBlock(fx.session, b, 1);
    EXPECT_EQ(block(b).CutFraction, 1.0f);
    EXPECT_EQ(fx.run.VolLeft, 26876);
}

TEST_F(Cutting, AgesOutsideTheCurveFail) {
    const int16_t unborn = addBlock(1, 10.0f, -1);
    fx.run.VolLeft = 1000;
    EXPECT_EQ(errorNumberOf([&] { CutBlock(fx.session, unborn, 1); }), ErrSubscript);
    const int16_t partial = addBlock(2, 10.0f, 100, 1, 351);  // a residual is never capped
    EXPECT_EQ(errorNumberOf([&] { CutBlock(fx.session, partial, 1); }), ErrSubscript);
}

TEST_F(Cutting, RoadsCutOnceAndNSRGroundGivesAreaWithoutVolume) {
    auto& calc = fx.m.Calc;
    const int16_t b = addBlock(1, 10.0f, 100);
    const int16_t nsr = addBlock(6, 10.0f, 100);
    calc.RoadLast = 2;
    calc.RoadList.resize(2);
    calc.RoadList[1] = {b, 2.0f, static_cast<int16_t>(fx.run.CurYear - 100), 1, 0.0f};
    calc.RoadList[2] = {nsr, 2.0f, static_cast<int16_t>(fx.run.CurYear - 100), 1, 0.0f};

    fx.run.VolLeft = 300;  // half of the 600 m3 on the road
    CutRoad(fx.session, 1);
    EXPECT_FLOAT_EQ(calc.RoadList[1].RoadCut, 0.5f);
    EXPECT_EQ(fx.run.VolLeft, 0);

    fx.run.VolLeft = 1000;
    CutRoad(fx.session, 2);
    EXPECT_EQ(calc.RoadList[2].RoadCut, 1.0f);
    EXPECT_EQ(fx.run.VolLeft, 1000);
    const YearRec& year = calc.YearTable[0];
    EXPECT_FLOAT_EQ(year.AreaRoad, 3.0f);
    EXPECT_FLOAT_EQ(year.VolRoad, 300.0f);
    EXPECT_FLOAT_EQ(year.AreaCCE, 1.0f);  // the NSR road adds none
}

TEST_F(Cutting, StepsReportTheirSharesAndClearcutEquivalent) {
    const int16_t mixed = addBlock(1, 10.0f, 50, 2);
    fx.screen.chkConifer = true;
    const int16_t nc = addBlock(7, 1.0f, 50);
    const int16_t partial = addBlock(2, 10.0f, 100, 1, 60);
    fx.run.VolLeft = 100000;
    for (int16_t b : {mixed, nc, partial}) CutBlock(fx.session, b, 1);
    const YearRec& year = fx.m.Calc.YearTable[0];
    EXPECT_FLOAT_EQ(year.VolConifer, 2000.0f + 180.0f + 1200.0f);
    EXPECT_FLOAT_EQ(year.VolDeciduous, 0.0f);  // the NC block's share is dropped too
    EXPECT_FLOAT_EQ(year.AreaCCE, 10.0f + 1.0f + 4.0f);
    EXPECT_FLOAT_EQ(year.VolCC, 2180.0f);
    EXPECT_FLOAT_EQ(fx.m.Calc.CutList[1].CutPotential, 2000.0f + 180.0f + 3000.0f);
}

}  // namespace
}  // namespace arborex
