// Successors, NSR restocking and commercial thins, worked on one 25 ha polygon in 2030 whose
// curves grow 3 m3/ha a year (curve 1: existing, curve 2: future).

#include <gtest/gtest.h>

#include <tuple>

#include "harvest/regeneration.hpp"
#include "support/calc_fixture.hpp"

namespace arborex {
namespace {

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
        for (int a = 0; a <= kExpandedTopAge; ++a)
            curves[1].Age[static_cast<std::size_t>(a)].ConVol =
                curves[2].Age[static_cast<std::size_t>(a)].ConVol = 3.0f * static_cast<float>(a);
        poly().AREA = 25.0f;
        poly().HAR = {80, 70};
        fx.m.PolyC[0].REGENDELAY = 2;
    }
    PolyData& poly() { return fx.m.Poly[0]; }
    Block& block(int b) { return fx.m.Calc.BlockList[b]; }
    // Status, method, stand year and due year of block b.
    std::tuple<int, int, int, int> plan(int b) {
        const Block& n = block(b);
        return {n.Status, n.Method, n.StandYear, n.DueYear};
    }

    // The loop's walks learn of blocks as the engine makes them; blocks built or changed by
    // hand are registered again.
    void registerBlocks() {
        fx.run.Walks.clear();
        for (int b = 0; b <= fx.m.Calc.BlockLast; ++b) fx.run.Walks.track(b, block(b));
    }

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
        PolyMgmt& mgmt = fx.m.PolyM[0];
        poly().MGNT[1] = 1;
        mgmt.COMTHIN = 1;
        mgmt.ROADAREA = 1.0f;
        mgmt.TIPSYCACHE[0] = 20;
        mgmt.TIPSYCACHE[1] = 30;
    }

    test::CalcFixture fx{{test::TestStand{}}};
};

TEST_F(Regeneration, ClearcutSuccessorStartsAfterTheDelay) {
    const int16_t b = addBlock(1, 80);
    PlantBlock(fx.session, b);
    ASSERT_EQ(fx.m.Calc.BlockLast, 1);
    EXPECT_EQ(block(b).NextBlock, 1);
    EXPECT_EQ(plan(1), std::tuple(1, 1, 2032, 2100));
    const Block& n = block(1);
    // Harvest age, rotation, curve, links and thin of the successor.
    EXPECT_EQ(std::tuple(n.HarvestAge, n.Rotation, n.Curve, n.PrevBlock, n.NextBlock, n.ThinVol),
              std::tuple(70, 2, 2, b, 0, 0));

    poly().HAR[1] = -1;  // the calculated age of the future model
    fx.m.HarvAge[0][0].HarvestAge = 65;
    PlantBlock(fx.session, 1);
    EXPECT_EQ(std::tuple(block(2).HarvestAge, block(2).Rotation), std::tuple(65, 3));
}

TEST_F(Regeneration, PartialCutSuccessorIsSetBackWithoutDelay) {
    const int16_t b = addBlock(2, 90);
    block(b).ResidualAge = 40;
    poly().PCNEXT = 30;
    PlantBlock(fx.session, b);
    EXPECT_EQ(plan(1), std::tuple(2, 3, 1990, 2060));

    poly().PCNEXT = -1;  // the project's re-entry period
    PlantBlock(fx.session, 1);
    EXPECT_EQ(block(2).DueYear, 2030 + fx.m.Settings.PCnext);
    EXPECT_EQ(block(2).Method, 3);
}

TEST_F(Regeneration, FutureManagementDecidesTheSuccessor) {
    const int16_t nc = addBlock(1, 80);
    poly().MGNT[1] = 2;
    PlantBlock(fx.session, nc);
    EXPECT_EQ(std::tuple(block(1).Status, block(1).Method), std::tuple(7, 7));

    poly().MGNT[1] = 3;
    PlantBlock(fx.session, nc);
    EXPECT_EQ(std::tuple(block(2).Status, block(2).Method), std::tuple(6, 6));

    poly().MGNT[1] = 5;  // no screen gives this: shown, and the copy is kept
    const int16_t nsr = addBlock(6, 0);
    PlantBlock(fx.session, nsr);
    ASSERT_EQ(fx.host.prompt.shown.size(), 1u);
    EXPECT_EQ(fx.host.prompt.shown[0].text, "5");
    // NSR ground turns into a stand.
    EXPECT_EQ(std::tuple(block(4).Status, block(4).Method), std::tuple(1, 1));
}

TEST_F(Regeneration, EveryRotationThinsOnTheWholePolygon) {
    thinEveryRotation();
    PlantBlock(fx.session, addBlock(1, 80));
    // (25 - 1) ha x 30, although the block is 10 ha
    EXPECT_EQ(std::tuple(block(1).ThinVol, block(1).ThinYear), std::tuple(720, 2030 + 20 + 2));
    fx.run.CurYear = 2102;
    PlantBlock(fx.session, 1);
    EXPECT_EQ(std::tuple(block(2).ThinVol, block(2).ThinYear), std::tuple(720, 2102 + 20 + 2));
}

TEST_F(Regeneration, NSRRestocksWhenItFallsDue) {
    const int16_t b = addBlock(6, 0);
    block(b).DueYear = 2033;
    registerBlocks();
    fx.run.CurYear = 2032;
    NSR(fx.session, 1);
    EXPECT_EQ(fx.m.Calc.BlockLast, 0);

    fx.run.CurYear = 2033;
    NSR(fx.session, 1);
    ASSERT_EQ(fx.m.Calc.BlockLast, 1);
    EXPECT_EQ(std::tuple(block(b).Status, block(b).CutFraction), std::tuple(22, 1.0f));
    EXPECT_EQ(plan(1), std::tuple(1, 1, 2035, 2033 + 70));
    EXPECT_FLOAT_EQ(fx.m.Calc.YearTable[3].AreaNSR, 10.0f);
}

TEST_F(Regeneration, ThinsTakeOneEntryAndWholeYearsWhenLarge) {
    thinEveryRotation();
    const int16_t first = addBlock(1, 80);
    const int16_t second = addBlock(1, 80);
    block(first).ThinVol = block(second).ThinVol = 400;
    block(first).ThinYear = block(second).ThinYear = 2030;
    registerBlocks();
    fx.run.VolLeft = 1000;
    CommercialThin(fx.session, 1);
    EXPECT_EQ(block(first).ThinVol, 400);  // the first block of the list never thins
    EXPECT_EQ(block(second).ThinVol, 0);
    EXPECT_EQ(std::tuple(fx.run.VolLeft, fx.run.CurYear, fx.m.Calc.CutCount),
              std::tuple(600, 2030, 1));
    EXPECT_FLOAT_EQ(fx.m.Calc.YearTable[0].VolCT, 400.0f);

    // 2,500 m3 against 1,000 a year with 600 left: two whole years pass.
    block(second).ThinVol = 2500;
    registerBlocks();
    fx.run.HarvestRate = 1000.0;
    CommercialThin(fx.session, 1);
    EXPECT_EQ(std::tuple(fx.run.CurYear, block(second).ThinVol, fx.run.VolLeft),
              std::tuple(2032, 0, 100));
    EXPECT_FLOAT_EQ(fx.m.Calc.YearTable[0].VolCT, 1000.0f);
    EXPECT_FLOAT_EQ(fx.m.Calc.YearTable[2].VolCT, 900.0f);
}

}  // namespace
}  // namespace arborex
