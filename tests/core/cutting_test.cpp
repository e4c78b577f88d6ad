// Cutting steps worked on hand-made blocks. Curve 1 grows 3 m3/ha a year, all conifer (300 at
// 100 years); curve 2 stands at 200 conifer + 100 deciduous at every age. The year is 2030.

#include <gtest/gtest.h>

#include "frame/errors.hpp"
#include "harvest/cutting.hpp"
#include "support/calc_fixture.hpp"

namespace arborex {
namespace {

using test::CalcFixture;

class Cutting : public ::testing::Test {
protected:
    void SetUp() override {
        fx.run.StartYear = fx.run.CurYear = 2030;
        fx.run.EndYear = 2130;
        fx.m.Calc.CalcHorizon = 100;
        fx.m.Calc.YearTable.resize(100);
        fx.m.Calc.CutCount = 1;  // the entry that PreCut would have opened
        auto& curves = fx.run.Yields.CurveTable;
        curves.assign(3, {});
        for (int a = 0; a <= kExpandedTopAge; ++a) {
            const auto i = static_cast<std::size_t>(a);
            curves[1].ConVol[i] = 3.0f * static_cast<float>(a);
            curves[2].ConVol[i] = 200.0f;
            curves[2].DecVol[i] = 100.0f;
        }
        fx.m.PolyM[0].NCVOLHA = 300.0f;
        fx.m.PolyM[0].NCDECIDUOUS = 40;
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

    void cut(int16_t b) { CutBlock(fx.session, b, 1); }

    CalcFixture fx{{test::TestStand{}}};
};

TEST_F(Cutting, ClearcutRunsOverTwoStepsAndTheSuccessorMirrorsIt) {
    const int16_t b = addBlock(1, 10.0f, 100);
    fx.run.VolLeft = 1000;
    cut(b);
    EXPECT_FLOAT_EQ(block(b).CutFraction, 1.0f / 3.0f);
    EXPECT_FLOAT_EQ(block(b + 1).CutFraction, 2.0f / 3.0f);
    EXPECT_EQ(fx.run.VolLeft, 0);
    EXPECT_EQ(block(b).Status, 1);

    fx.run.VolLeft = 3000;
    cut(b);
    EXPECT_EQ(block(b).CutFraction, 1.0f);
    EXPECT_EQ(block(b + 1).CutFraction, 0.0f);
    EXPECT_EQ(block(b).Status, 17);
    EXPECT_EQ(fx.run.VolLeft, 1000);
}

TEST_F(Cutting, AnExactFitIsVisitedOnceMoreWithNothingLeft) {
    const int16_t b = addBlock(1, 10.0f, 100);
    fx.run.VolLeft = 3000;
    cut(b);
    EXPECT_EQ(fx.run.VolLeft, 0);
    EXPECT_EQ(block(b).Status, 17);
    cut(b);  // the next step's visit: U is 0
    EXPECT_EQ(block(b).Status, 33);
    EXPECT_EQ(block(b).CutFraction, 1.0f);
    EXPECT_EQ(fx.run.VolLeft, 0);
}

TEST_F(Cutting, AreaRunCutsWholeStandsByArea) {
    const int16_t b = addBlock(1, 10.0f, 100);
    fx.run.AreaRun = true;
    fx.run.AreaLeft = 4.0f;
    cut(b);
    EXPECT_FLOAT_EQ(block(b).CutFraction, 0.4f);
    EXPECT_EQ(fx.run.AreaLeft, 0.0f);
    fx.run.AreaLeft = 10.0f;
    cut(b);
    EXPECT_EQ(block(b).Status, 17);
    EXPECT_NEAR(fx.run.AreaLeft, 4.0f, 1e-5);
}

TEST_F(Cutting, PartialCutIsChargedAtItsClearcutEquivalent) {
    // 300 m3/ha now, 180 left standing at the residual age of 60: S = 0.4.
    const int16_t b = addBlock(2, 15.0f, 100, 1, 60);
    fx.run.AreaRun = true;
    fx.run.AreaLeft = 10.0f;
    cut(b);
    EXPECT_EQ(block(b).CutFraction, 1.0f);
    EXPECT_EQ(block(b + 1).CutFraction, 0.0f);
    EXPECT_EQ(block(b).Status, 17);
    EXPECT_NEAR(fx.run.AreaLeft, 4.0f, 1e-5);

    const int16_t c = addBlock(2, 15.0f, 100, 1, 60);
    fx.run.AreaLeft = 3.0f;  // pays for 7.5 ha of partial cut
    cut(c);
    EXPECT_NEAR(block(c).CutFraction, 0.5f, 1e-6);
    EXPECT_NEAR(block(c + 1).CutFraction, 0.5f, 1e-6);
    EXPECT_EQ(fx.run.AreaLeft, 0.0f);
}

TEST_F(Cutting, ReentryTakesTheAdjustedShareOfTheCurve) {
    fx.m.Settings.PCADJUSTFACT = 0.8f;
    // (300 - 180) * 0.8 = 96 m3/ha removable on 15 ha: 1,440 m3 in all.
    const int16_t b = addBlock(3, 15.0f, 100, 1, 60);
    fx.run.VolLeft = 1000;
    cut(b);
    EXPECT_NEAR(block(b).CutFraction, 1000.0f / 1440.0f, 1e-6);
    EXPECT_EQ(fx.run.VolLeft, 0);

    const int16_t first = addBlock(2, 15.0f, 100, 1, 60);  // a first entry is not adjusted
    fx.run.VolLeft = 2000;
    cut(first);
    EXPECT_EQ(block(first).Status, 17);
    EXPECT_EQ(fx.run.VolLeft, 200);
}

TEST_F(Cutting, ConiferOnlySpendsNoAllowanceOnDeciduousExceptOnNC) {
    fx.screen.chkConifer = true;
    const int16_t vdyp = addBlock(1, 10.0f, 50, 2);
    fx.run.VolLeft = 1000;
    cut(vdyp);
    EXPECT_FLOAT_EQ(block(vdyp).CutFraction, 0.5f);  // G is 200, the conifer volume

    // An NC stand keeps its deciduous share in G: 300 m3/ha are charged.
    const int16_t nc = addBlock(7, 10.0f, 50);
    fx.run.VolLeft = 1000;
    cut(nc);
    EXPECT_FLOAT_EQ(block(nc).CutFraction, 1.0f / 3.0f);
}

TEST_F(Cutting, AgesOutsideTheCurve) {
    const int16_t old = addBlock(1, 10.0f, 400);  // reads age 350: 1,050 m3/ha
    fx.run.VolLeft = 1050;
    cut(old);
    EXPECT_FLOAT_EQ(block(old).CutFraction, 0.1f);

    const int16_t unborn = addBlock(1, 10.0f, -1);
    fx.run.VolLeft = 1000;
    try {
        CutBlock(fx.session, unborn, 1);
        FAIL() << "a negative age must fail";
    } catch (const ArborexError& e) {
        EXPECT_EQ(e.number(), ErrSubscript);
    }
    const int16_t partial = addBlock(2, 10.0f, 100, 1, 351);  // a residual is never capped
    try {
        CutBlock(fx.session, partial, 1);
        FAIL() << "a residual age past 350 must fail";
    } catch (const ArborexError& e) {
        EXPECT_EQ(e.number(), ErrSubscript);
    }
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
    cut(mixed);
    cut(nc);
    cut(partial);
    const YearRec& year = fx.m.Calc.YearTable[0];
    EXPECT_FLOAT_EQ(year.VolConifer, 2000.0f + 180.0f + 1200.0f);
    EXPECT_FLOAT_EQ(year.VolDeciduous, 0.0f);  // the NC block's share is dropped too
    EXPECT_FLOAT_EQ(year.AreaCCE, 10.0f + 1.0f + 4.0f);
    EXPECT_FLOAT_EQ(year.VolCC, 2180.0f);
    EXPECT_FLOAT_EQ(fx.m.Calc.CutList[1].CutPotential, 2000.0f + 180.0f + 3000.0f);
}

}  // namespace
}  // namespace arborex
