// Successors, NSR restocking and commercial thins, worked on one 25 ha polygon in 2030 whose
// curves grow 3 m3/ha a year (curve 1: existing, curve 2: future).

#include <gtest/gtest.h>

#include "harvest/regeneration.hpp"
#include "support/calc_fixture.hpp"

namespace arborex {
namespace {

using test::CalcFixture;

class Regeneration : public ::testing::Test {
protected:
    void SetUp() override {
        fx.run.StartYear = fx.run.CurYear = fx.run.FirstCutYear = 2030;
        fx.run.EndYear = 2130;
        fx.run.Period = 1;
        fx.m.Calc.CalcHorizon = 100;
        fx.m.Calc.YearTable.resize(100);
        auto& curves = fx.run.Yields.CurveTable;
        curves.assign(3, {});
        for (int a = 0; a <= kExpandedTopAge; ++a) {
            curves[1].ConVol[static_cast<std::size_t>(a)] = 3.0f * static_cast<float>(a);
            curves[2].ConVol[static_cast<std::size_t>(a)] = 3.0f * static_cast<float>(a);
        }
        poly().AREA = 25.0f;
        poly().HAR = {80, 70};
        fx.m.PolyC[0].REGENDELAY = 2;
    }
    PolyData& poly() { return fx.m.Poly[0]; }
    PolyMgmt& mgmt() { return fx.m.PolyM[0]; }
    Block& block(int b) { return fx.m.Calc.BlockList[b]; }

    // A first-rotation block of 10 ha at `age` with `method`.
    int16_t addBlock(int16_t method, int age) {
        auto& calc = fx.m.Calc;
        const auto b = static_cast<int16_t>(calc.BlockLast + 1);
        calc.BlockLast = b;
        calc.BlockList.resize(b);
        Block& blk = calc.BlockList[b];
        blk.Status = method == 6 ? 6 : 1;
        blk.Method = method;
        blk.Area = 10.0f;
        blk.Curve = 1;
        blk.NextCurve = 2;
        blk.HarvestAge = 80;
        blk.StandYear = static_cast<int16_t>(fx.run.CurYear - age);
        blk.DueYear = static_cast<int16_t>(blk.StandYear + 80);
        blk.Rotation = 1;
        return b;
    }
    // A future with a thin of 30 m3/ha at age 20.
    void thinEveryRotation() {
        poly().MGNT[1] = 1;
        mgmt().COMTHIN = 1;
        mgmt().ROADAREA = 1.0f;
        mgmt().TIPSYCACHE[0] = 20;
        mgmt().TIPSYCACHE[1] = 30;
    }

    CalcFixture fx{{test::TestStand{}}};
};

TEST_F(Regeneration, ClearcutSuccessorStartsAfterTheDelay) {
    const int16_t b = addBlock(1, 80);
    PlantBlock(fx.session, b);
    ASSERT_EQ(fx.m.Calc.BlockLast, 1);
    EXPECT_EQ(block(b).NextBlock, 1);
    const Block& n = block(1);
    EXPECT_EQ(n.StandYear, 2032);
    EXPECT_EQ(n.DueYear, 2100);
    EXPECT_EQ(n.HarvestAge, 70);
    EXPECT_EQ(n.Status, 1);
    EXPECT_EQ(n.Method, 1);
    EXPECT_EQ(n.Rotation, 2);
    EXPECT_EQ(n.Curve, 2);
    EXPECT_EQ(n.PrevBlock, b);
    EXPECT_EQ(n.NextBlock, 0);
    EXPECT_EQ(n.ThinVol, 0);

    poly().HAR[1] = -1;  // the calculated age of the future model
    fx.m.HarvAge[0][0].HarvestAge = 65;
    PlantBlock(fx.session, 1);
    EXPECT_EQ(block(2).HarvestAge, 65);
    EXPECT_EQ(block(2).Rotation, 3);
}

TEST_F(Regeneration, PartialCutSuccessorIsSetBackWithoutDelay) {
    const int16_t b = addBlock(2, 90);
    block(b).ResidualAge = 40;
    poly().PCNEXT = 30;
    PlantBlock(fx.session, b);
    const Block& n = block(1);
    EXPECT_EQ(n.StandYear, 1990);
    EXPECT_EQ(n.DueYear, 2060);
    EXPECT_EQ(n.Status, 2);
    EXPECT_EQ(n.Method, 3);

    poly().PCNEXT = -1;  // the project's re-entry period
    PlantBlock(fx.session, 1);
    EXPECT_EQ(block(2).DueYear, 2030 + fx.m.Settings.PCnext);
    EXPECT_EQ(block(2).Method, 3);
}

TEST_F(Regeneration, FutureManagementDecidesTheSuccessor) {
    const int16_t nc = addBlock(1, 80);
    poly().MGNT[1] = 2;
    PlantBlock(fx.session, nc);
    EXPECT_EQ(block(1).Status, 7);
    EXPECT_EQ(block(1).Method, 7);

    poly().MGNT[1] = 3;
    PlantBlock(fx.session, nc);
    EXPECT_EQ(block(2).Status, 6);
    EXPECT_EQ(block(2).Method, 6);

    poly().MGNT[1] = 5;  // no screen gives this: shown, and the copy is kept
    const int16_t nsr = addBlock(6, 0);
    PlantBlock(fx.session, nsr);
    ASSERT_EQ(fx.host.prompt.shown.size(), 1u);
    EXPECT_EQ(fx.host.prompt.shown[0].text, "5");
    EXPECT_EQ(block(4).Status, 1);
    EXPECT_EQ(block(4).Method, 1);  // NSR ground turns into a stand
}

TEST_F(Regeneration, EveryRotationThinsOnTheWholePolygon) {
    thinEveryRotation();
    const int16_t b = addBlock(1, 80);
    PlantBlock(fx.session, b);
    EXPECT_EQ(block(1).ThinVol, 720);  // (25 - 1) ha x 30, although the block is 10 ha
    EXPECT_EQ(block(1).ThinYear, 2030 + 20 + 2);
    fx.run.CurYear = 2102;
    PlantBlock(fx.session, 1);
    EXPECT_EQ(block(2).ThinVol, 720);
    EXPECT_EQ(block(2).ThinYear, 2102 + 20 + 2);
}

TEST_F(Regeneration, NSRRestocksWhenItFallsDue) {
    const int16_t b = addBlock(6, 0);
    block(b).DueYear = 2033;
    fx.run.CurYear = 2032;
    NSR(fx.session, 1);
    EXPECT_EQ(fx.m.Calc.BlockLast, 0);

    fx.run.CurYear = 2033;
    NSR(fx.session, 1);
    ASSERT_EQ(fx.m.Calc.BlockLast, 1);
    EXPECT_EQ(block(b).Status, 22);
    EXPECT_EQ(block(b).CutFraction, 1.0f);
    EXPECT_EQ(block(1).Method, 1);
    EXPECT_EQ(block(1).StandYear, 2035);
    EXPECT_EQ(block(1).DueYear, 2033 + 70);
    EXPECT_FLOAT_EQ(fx.m.Calc.YearTable[3].AreaNSR, 10.0f);
}

TEST_F(Regeneration, SmallThinTakesOneEntryAndNoYear) {
    thinEveryRotation();
    const int16_t first = addBlock(1, 80);
    const int16_t second = addBlock(1, 80);
    block(first).ThinVol = block(second).ThinVol = 400;
    block(first).ThinYear = block(second).ThinYear = 2030;
    fx.run.VolLeft = 1000;
    CommercialThin(fx.session, 1);
    EXPECT_EQ(block(first).ThinVol, 400);  // the first block of the list never thins
    EXPECT_EQ(block(second).ThinVol, 0);
    EXPECT_EQ(fx.run.VolLeft, 600);
    EXPECT_EQ(fx.run.CurYear, 2030);
    EXPECT_EQ(fx.m.Calc.CutCount, 1);
    EXPECT_FLOAT_EQ(fx.m.Calc.YearTable[0].VolCT, 400.0f);
}

TEST_F(Regeneration, LargeThinEatsWholeYears) {
    thinEveryRotation();
    addBlock(1, 80);
    const int16_t b = addBlock(1, 80);
    block(b).ThinVol = 2500;
    block(b).ThinYear = 2030;
    fx.run.HarvestRate = 1000.0;
    fx.run.VolLeft = 1000;
    CommercialThin(fx.session, 1);
    EXPECT_EQ(fx.run.CurYear, 2032);
    EXPECT_EQ(block(b).ThinVol, 0);
    EXPECT_EQ(fx.run.VolLeft, 500);
    EXPECT_FLOAT_EQ(fx.m.Calc.YearTable[0].VolCT, 1000.0f);
    EXPECT_FLOAT_EQ(fx.m.Calc.YearTable[2].VolCT, 500.0f);
}

}  // namespace
}  // namespace arborex
