// The harvest order lists: row texts, the default order, the sorts, and the user's moves.

#include <gtest/gtest.h>

#include "harvest/queue_order.hpp"
#include "support/calc_fixture.hpp"

namespace arborex {
namespace {

using test::TestStand;
using Polygons = std::vector<int>;
using Keys = std::vector<int16_t>;

// A 10 ha stand due at 80, VDYP unless `existing` says otherwise.
TestStand stand(int16_t age, int16_t existing = 0) {
    return {.name = "", .age = age, .existing = existing};
}

class QueueOrder : public ::testing::Test {
protected:
    // The stands, ownership letters C, P, T, O, shown in the default order.
    void start(const std::vector<TestStand>& stands) {
        f = std::make_unique<test::CalcFixture>(stands);
        f->m.Ref.OwnershipCodes = {'C', 'P', 'T', 'O'};
        f->m.CutOrderLast = -1;
        ShowPolygonOrder(session(), 0);
    }
    void startAges(const std::vector<int16_t>& ages) {
        std::vector<TestStand> stands;
        for (int16_t age : ages) stands.push_back(stand(age));
        start(stands);
    }
    CalcSession& session() { return f->session; }
    std::vector<OrderRow>& rows(OrderList list) { return f->screen.lstCutOrder[list]; }
    Polygons order(OrderList list = IncludedList) {
        Polygons polygons;
        for (const OrderRow& row : rows(list)) polygons.push_back(row.polygon);
        return polygons;
    }
    void sort(int16_t index) { mniSort_Click(session(), index, {}); }
    const CalcInputs& inputs() const { return f->m.Calc.inputs; }

    std::unique_ptr<test::CalcFixture> f;
};

TEST_F(QueueOrder, RowsShowValueAvailabilityAndArea) {
    start({{.name = "Alpha", .area = 12.25f, .age = 50},
           {.name = "Bravo", .age = 30, .existing = 1},
           {.name = "Charlie", .existing = 2},
           {.name = "Delta", .existing = 3}});
    f->m.PolyC[1].OWNERSHIP = 1;
    f->m.PolyM[2].NCRESTOCKIN = 4;
    f->m.Poly[1].HAR[0] = -1;
    f->m.HarvAge[1][1] = {.HarvestAge = 70, .MaxMAI = 3.456f};
    f->m.Poly[0].VSICALC = 18.25f;
    f->m.Poly[1].TSICALC = 21.0f;
    f->m.Poly[1].TS[0] = "CW";
    ShowPolygonOrder(session(), 0);
    std::vector<std::string> texts;
    for (const OrderRow& row : rows(IncludedList)) texts.push_back(row.text);
    EXPECT_EQ(texts,
              (std::vector<std::string>{
                  "C Alpha       \t50   \t-30   \t12.3", "P Bravo       \t30   \t-40   \t10.0",
                  "C Charlie     \tNC   \t-4   \t10.0", "C Delta       \tNSR   \t0   \t10.0"}));
    EXPECT_EQ(orderTitle(0), " O Polygon              Age      Avail For    Area (ha)");

    const auto valueOfBravo = [&](int16_t column) {
        f->m.Calc.inputs.OrderColumn = column;
        ShowPolygonOrder(session(), 0);
        const std::string& text = rows(IncludedList)[1].text;
        return text.substr(15, text.find('\t', 15) - 15);
    };
    EXPECT_EQ(valueOfBravo(1), "3.46   ");
    EXPECT_EQ(valueOfBravo(2), "21.0   ");
    EXPECT_EQ(valueOfBravo(3), "CW   ");
    EXPECT_EQ(leadSpecies(f->m, 0), "PL");
    EXPECT_EQ(leadSpecies(f->m, 3), "NSR");
}

TEST_F(QueueOrder, PolygonsWithErrorsAreStarredAndReported) {
    startAges({50, 60, 70, 80});
    f->m.Poly[1].AREA = 0.0f;
    f->m.Poly[1].YIELDSTATE[0] = 2;
    f->m.Poly[2].MGNT = {1, 1};
    f->m.Poly[2].YIELDSTATE = {0, 1};  // VDYP not needed, TIPSY is
    f->m.PolyC[3].DELETE = 1;
    f->m.CutOrderLast = -1;
    ShowPolygonOrder(session(), -1);

    EXPECT_EQ(order(), Polygons{0});
    EXPECT_EQ(order(ExcludedList), (Polygons{1, 2}));
    EXPECT_EQ(rows(ExcludedList)[0].text.substr(0, 4), "*C P");
    EXPECT_EQ(f->m.PolyC[0].SORT, 1);
    EXPECT_EQ(f->m.PolyC[1].SORT, 0);
    ASSERT_EQ(f->host.prompt.shown.size(), 1u);
    EXPECT_EQ(f->host.prompt.shown[0].title, "Missing Yield Data....");
    EXPECT_TRUE(
        f->host.prompt.showed("P1\t - Area is 0 ha\nP1\t - VDYP Required and not Current\n"
                              "P2\t - TIPSY Required and not Current\n"));

    // The default order was read back, so the starred rows are not in it; without `warn`
    // nothing is shown.
    EXPECT_EQ(f->m.CutOrderLast, 0);
    ShowPolygonOrder(session(), 0);
    EXPECT_EQ(f->host.prompt.shown.size(), 1u);
    EXPECT_EQ(order(ExcludedList), (Polygons{1, 2}));
}

TEST_F(QueueOrder, SetCutOrderLeavesUntickedOwnershipsOutOfIncludedPoly) {
    startAges({50, 60, 70, 80});
    f->m.PolyC[1].OWNERSHIP = 2;
    f->m.PolyC[3].OWNERSHIP = 7;  // no box at all
    f->screen.chkCut[2] = false;
    SetCutOrder(session());
    EXPECT_EQ(f->m.CutOrderLast, 3);
    EXPECT_EQ(f->m.CutOrder, (Keys{0, 1, 2, 3}));
    EXPECT_EQ(f->run.IncludedLast, 1);
    EXPECT_EQ(f->run.IncludedPoly, (Keys{0, 2}));
}

TEST_F(QueueOrder, SortsAreDescendingAndStable) {
    startAges({30, 50, 30, 70});
    sort(0);
    EXPECT_EQ(order(), (Polygons{3, 1, 0, 2}));
    EXPECT_EQ(f->m.CutOrder, (Keys{3, 1, 0, 2}));
    sort(0);
    EXPECT_EQ(order(), (Polygons{3, 1, 0, 2}));
    sort(3);
    EXPECT_EQ(order(), (Polygons{0, 2, 1, 3}));
    EXPECT_EQ(inputs().SortMethod, 3);
    EXPECT_EQ(inputs().OrderColumn, 0);
    EXPECT_TRUE(f->run.RateDirty);
    EXPECT_TRUE(f->observer.dirty);

    // Random keys lie in 0..1000 and differ from one sort to the next.
    startAges({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
    sort(2);
    const Keys first = f->m.CutOrder;
    for (int16_t key : f->m.CutOrderKey) EXPECT_TRUE(key >= 0 && key <= 1000) << key;
    sort(2);
    EXPECT_NE(f->m.CutOrder, first);
    EXPECT_EQ(inputs().SortMethod, 2);
}

TEST_F(QueueOrder, RestockingStandsSortLevelWithStandsAtHarvestAge) {
    start({stand(80), stand(0, 3), stand(0, 2), stand(90), stand(0, 3)});
    f->m.PolyM[4].NSRRESTOCKIN = 5;
    sort(1);
    EXPECT_EQ(f->m.CutOrderKey, (Keys{10, 0, 0, 0, -5}));
    EXPECT_EQ(order(), (Polygons{3, 0, 1, 2, 4}));
}

TEST_F(QueueOrder, MaiAndSiteIndexKeysRoundHalfToEven) {
    start({stand(0), stand(0, 1), stand(0, 2)});
    f->m.HarvAge[0][0].MaxMAI = 2.5f;
    f->m.HarvAge[1][1].MaxMAI = 3.0f;
    f->m.Poly[0].VSICALC = 18.25f;
    f->m.Poly[1].TSICALC = 18.75f;
    f->m.Poly[1].VSICALC = 40.0f;  // not the model in use
    sort(4);
    EXPECT_EQ(f->m.CutOrderKey, (Keys{3000, 2500, 0}));
    EXPECT_EQ(inputs().OrderColumn, 1);
    sort(5);
    EXPECT_EQ(f->m.CutOrderKey, (Keys{188, 182, 0}));
    EXPECT_EQ(order(), (Polygons{1, 0, 2}));
    EXPECT_EQ(inputs().OrderColumn, 2);
}

TEST_F(QueueOrder, LeadSpeciesFollowsTheUsersRankingEvenWhenCancelled) {
    start({stand(0), stand(0), stand(0, 1), stand(0, 2), stand(0)});
    f->m.Poly[0].VS[0] = "FD";
    f->m.Poly[2].TS[0] = "CW";
    std::vector<std::string> proposed;
    mniSort_Click(session(), 6, [&](const std::vector<std::string>& species) {
        proposed = species;
        return std::optional<std::vector<std::string>>({"NC", "CW", "PL", "FD"});
    });
    EXPECT_EQ(proposed, (std::vector<std::string>{"FD", "PL", "CW", "NC"}));
    EXPECT_EQ(order(), (Polygons{3, 2, 1, 4, 0}));
    EXPECT_EQ(inputs().OrderColumn, 3);

    // A cancelled ranking still sorts, on the keys the rows already have.
    startAges({10, 20, 30, 40});
    lstCutOrder_DblClick(session(), IncludedList, 3);
    sort(3);  // youngest first: keys -10, -20, -30
    EXPECT_EQ(order(), (Polygons{0, 1, 2}));
    lstCutOrder_DblClick(session(), ExcludedList, 0);
    mniSort_Click(session(), 6, [](const std::vector<std::string>&) {
        return std::optional<std::vector<std::string>>();
    });
    // The row that came back has a new key of 0 and so rises to the top.
    EXPECT_EQ(order(), (Polygons{3, 0, 1, 2}));
    EXPECT_EQ(inputs().SortMethod, 6);
}

TEST_F(QueueOrder, IncludeAndExcludeAllKeepStarredRowsOut) {
    startAges({10, 20});
    mnuInclude_Click(session(), 1);
    sort(0);  // an empty list: a box and nothing else
    EXPECT_TRUE(f->host.prompt.showed("No Polygons are selected to be cut"));
    EXPECT_EQ(order(ExcludedList), (Polygons{1, 0}));
    EXPECT_EQ(inputs().SortMethod, -1);

    startAges({10, 20, 30, 40});
    f->m.Poly[2].AREA = 0.0f;
    mniSortDefault_Click(session());
    EXPECT_EQ(order(), (Polygons{0, 1, 3}));
    lstCutOrder_MouseUp(session(), IncludedList, 1);  // the left button moves nothing
    EXPECT_EQ(order(), (Polygons{0, 1, 3}));
    mnuInclude_Click(session(), 1);
    EXPECT_EQ(order(ExcludedList), (Polygons{2, 3, 1, 0}));
    mnuInclude_Click(session(), 0);
    EXPECT_EQ(order(), (Polygons{0, 1, 3}));
    EXPECT_EQ(order(ExcludedList), Polygons{2});

    lstCutOrder_DblClick(session(), ExcludedList, 0);
    EXPECT_TRUE(f->host.prompt.showed(
        "This polygon contains an error and can't be added to the 'Included Blocks' section"));
    EXPECT_EQ(rows(ExcludedList).size(), 1u);
}

TEST_F(QueueOrder, MovesSetCustomOrderEvenWhenRefused) {
    startAges({10, 20, 30, 40});
    f->run.RateDirty = false;
    EXPECT_EQ(cmdMove_Click(session(), 1, 0), 0);  // Up on the top row
    EXPECT_EQ(order(), (Polygons{0, 1, 2, 3}));
    EXPECT_EQ(inputs().SortMethod, -2);
    EXPECT_TRUE(f->run.RateDirty);
    EXPECT_EQ(cmdMove_Click(session(), 2, 3), 3);  // Down on the bottom row
    EXPECT_EQ(cmdMove_Click(session(), 0, -1), -1);
    EXPECT_EQ(cmdMove_Click(session(), 0, 2), 0);
    EXPECT_EQ(order(), (Polygons{2, 0, 1, 3}));
    EXPECT_EQ(cmdMove_Click(session(), 3, 0), 3);
    EXPECT_EQ(cmdMove_Click(session(), 2, 1), 2);
    EXPECT_EQ(order(), (Polygons{0, 3, 1, 2}));

    mniSortDefault_Click(session());
    EXPECT_EQ(order(), (Polygons{0, 1, 2, 3}));
    EXPECT_EQ(inputs().SortMethod, -1);
    mniSortCustom_Click(session());
    EXPECT_TRUE(
        f->host.prompt.showed("Use the 'Top', 'Up', 'Down' and 'Bottom' buttons next to "
                              "the harvest order list to adjust your sort order manually"));
}

}  // namespace
}  // namespace arborex
