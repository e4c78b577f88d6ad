// Purging soft-deleted polygons keeps every per-polygon array in step and the harvest order valid.

#include <gtest/gtest.h>

#include "model/polygon_lifecycle.hpp"
#include "support/fake_host.hpp"
#include "support/small_project.hpp"

namespace arborex {
namespace {

// Five polygons "P0".."P4", each with distinctive curve rows and harvest ages.
Model fivePolygons() {
    Model m = test::smallProject({"P0", "P1", "P2", "P3", "P4"});
    for (int p = 0; p < 5; ++p) {
        m.VYield(p, 4).Vol = static_cast<int16_t>(100 + p);
        m.VMix(p, 1)[2] = static_cast<int16_t>(10 + p);
        m.TYield(p, 2).Mai = 1.0f + static_cast<float>(p);
        m.HarvAge[p][1].HarvestAge = static_cast<int16_t>(60 + p);
    }
    m.CutOrderLast = 4;
    m.CutOrder = {4, 3, 2, 1, 0};
    m.CutOrderKey = {40, 30, 20, 10, 5};
    m.Calc.BlockLast = 7;
    m.Calc.CalcHorizon = 250;
    return m;
}

TEST(PurgeDeletedPolygons, MovesKeptPolygonsDownWithTheirCurvesAndRenumbersTheOrder) {
    Model m = fivePolygons();
    m.PolyC[1].DELETE = 1;
    m.PolyC[3].DELETE = 1;
    m.CurPoly = 4;
    test::FakeHost host;
    host.views.polygonScreen = true;

    PurgeDeletedPolygons(m, host);

    ASSERT_EQ(m.LastPoly, 2);
    ASSERT_EQ(m.Poly.size(), 3u);
    ASSERT_EQ(m.VYield.polygonCount(), 3);
    const char* names[] = {"P0", "P2", "P4"};
    const int original[] = {0, 2, 4};
    for (int p = 0; p < 3; ++p) {
        EXPECT_EQ(m.Poly[p].NAME.str(), names[p]);
        EXPECT_EQ(m.VYield(p, 4).Vol, 100 + original[p]);
        EXPECT_EQ(m.VMix(p, 1)[2], 10 + original[p]);
        EXPECT_FLOAT_EQ(m.TYield(p, 2).Mai, 1.0f + static_cast<float>(original[p]));
        EXPECT_EQ(m.HarvAge[p][1].HarvestAge, 60 + original[p]);
    }
    // Order 4,3,2,1,0 loses 3 and 1, then follows the new indexes.
    ASSERT_EQ(m.CutOrderLast, 2);
    EXPECT_EQ(m.CutOrder, (std::vector<int16_t>{2, 1, 0}));
    // Keys move with their positions; renumbered positions lose theirs.
    EXPECT_EQ(m.CutOrderKey, (std::vector<int16_t>{0, 0, 5}));
    EXPECT_EQ(m.CurPoly, 2);
    // The saved run no longer fits the order.
    EXPECT_EQ(m.Calc.BlockLast, -1);
    EXPECT_EQ(m.Calc.CalcHorizon, 0);
    EXPECT_EQ(host.views.redisplays, std::vector<int>{2});
}

TEST(PurgeDeletedPolygons, WithNothingDeletedChangesNothing) {
    Model m = fivePolygons();
    test::FakeHost host;
    PurgeDeletedPolygons(m, host);
    EXPECT_EQ(m.LastPoly, 4);
    EXPECT_EQ(m.CutOrder, (std::vector<int16_t>{4, 3, 2, 1, 0}));
    EXPECT_EQ(m.Calc.BlockLast, 7);
}

TEST(PurgeDeletedPolygons, CurrentPolygonDeletedMovesToTheNearestKeptOne) {
    Model m = fivePolygons();
    m.PolyC[2].DELETE = 1;
    m.PolyC[3].DELETE = 1;
    m.CurPoly = 3;
    test::FakeHost host;
    PurgeDeletedPolygons(m, host);
    // P4 (one away) is nearer than P1 (two away); it is now index 2.
    EXPECT_EQ(m.CurPoly, 2);
    EXPECT_EQ(m.Poly[static_cast<std::size_t>(m.CurPoly)].NAME.str(), "P4");
}

TEST(PurgeDeletedPolygons, AllDeletedLeavesAnEmptyProject) {
    Model m = fivePolygons();
    for (auto& c : m.PolyC) c.DELETE = 1;
    m.CurPoly = 0;
    test::FakeHost host;
    PurgeDeletedPolygons(m, host);
    EXPECT_EQ(m.LastPoly, -1);
    EXPECT_EQ(m.CurPoly, -1);
    EXPECT_EQ(m.CutOrderLast, -1);
    ASSERT_EQ(m.Poly.size(), 1u);
    EXPECT_EQ(m.Poly[0].NAME.str(), "");
}

}  // namespace
}  // namespace arborex
