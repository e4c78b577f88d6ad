// The simulation's table of curves by single year, worked on small projects with the default
// grids (VDYP 0..300 by 1 year, TIPSY 0..350 by 10 years).

#include <gtest/gtest.h>

#include <tuple>

#include "base/errors.hpp"
#include "harvest/expansion.hpp"
#include "support/fake_host.hpp"

namespace arborex {
namespace {

using Floats = std::vector<float>;

class Expansion : public ::testing::Test {
protected:
    void SetUp() override {
        ResetVars(m);
        SetDefaults(m);
        EmptyArrays(m);
        // Species rows: 1 pine, 2 aspen (deciduous).
        SpeciesRec pine, aspen;
        pine.Code = "PL";
        aspen.Code = "AT";
        aspen.Deciduous = 1;
        m.Ref.SpeciesV.push_back(pine);
        m.Ref.SpeciesV.push_back(aspen);
        m.Ref.SpeciesVCount = 2;
    }
    // A polygon with managements `existing` and `future`, VDYP species PL (slot 0) and AT
    // (slot 1), and curves that grow with the grid step.
    int addPolygon(const char* name, int16_t existing, int16_t future) {
        const int p = m.LastPoly + 1;
        ResizePolygonArrays(m, p + 1);
        m.LastPoly = static_cast<int16_t>(p);
        m.Poly[p].NAME = name;
        m.Poly[p].MGNT = {existing, future};
        m.Poly[p].VSIDX = {1, 2, 0, 0, 0, 0};
        m.PolyC[p].VX = {1, 1, 0, 0, 0, 0};
        for (int k = 0; k <= 300; ++k) {
            m.VYield(p, k) = {static_cast<int16_t>(k * 2 + 1), static_cast<int16_t>(9999),
                              static_cast<int16_t>(k * 3 + 1), 0.0f};
            m.VMix(p, k) = {
                static_cast<int16_t>(k * 7 + 1), static_cast<int16_t>(k + 3), 500, 0, 0, 0};
        }
        for (int k = 0; k <= 35; ++k)
            m.TYield(p, k) = {static_cast<int16_t>(k * 17 + 3),
                              static_cast<int16_t>(k * k * 13 + 7), static_cast<int16_t>(k * 9 + 1),
                              0.0f};
        return p;
    }
    void expand() { ExpandYields(m, host.status, yields); }
    const ExpandedCurve& curve(int index) const {
        return yields.CurveTable.at(static_cast<std::size_t>(index));
    }
    // Where the curves point, for polygon p: (existing, future).
    std::tuple<int, int> curvesOf(int p) const {
        const auto i = static_cast<std::size_t>(p);
        return {yields.PolyCurveExisting[i], yields.PolyCurveFuture[i]};
    }
    static float between(float f, float low, float high) {
        const float lowPart = (1.0f - f) * low;
        const float highPart = f * high;
        return lowPart + highPart;
    }
    Model m;
    test::FakeHost host;
    ExpandedYields yields;
};

TEST_F(Expansion, TipsyCurveByYearFromTheTenYearGrid) {
    const int p = addPolygon("T1", 1, 1);
    expand();
    ASSERT_EQ(yields.CurveCount, 1);
    EXPECT_EQ(curvesOf(p), std::tuple(1, 1));
    const ExpandedCurve& c = curve(1);
    EXPECT_EQ(c.CurveModel, 1);
    const float vol4 = 215.0f / 10.0f;  // 4 * 4 * 13 + 7
    const float vol5 = 332.0f / 10.0f;
    EXPECT_EQ((Floats{c.Age[40].ConVol, c.Age[45].ConVol, c.Age[47].ConVol, c.Age[45].Height,
                      c.Age[45].Dbh, c.Age[45].DecVol, c.Age[350].ConVol}),
              (Floats{vol4, between(0.5f, vol4, vol5), between(0.7f, vol4, vol5),
                      between(0.5f, 37.0f / 10.0f, 46.0f / 10.0f),
                      between(0.5f, 71.0f / 10.0f, 88.0f / 10.0f), 0.0f, 15932.0f / 10.0f}));
    EXPECT_EQ(host.status.texts.front(), "Expanding Yield Curves");
    EXPECT_FALSE(host.status.open);
}

TEST_F(Expansion, VdypVolumeIsTheSpeciesSplitWithoutExcludedSlots) {
    const int p = addPolygon("V1", 0, 0);
    m.PolyC[p].VX[2] = 0;  // 50 m3/ha of an excluded third species never counts
    m.Poly[p].VSIDX[2] = 1;
    m.Settings.YieldMinAge[0] = 10;
    SetAgeInc(m);
    expand();
    const ExpandedCurve& c = curve(1);
    EXPECT_EQ(std::tuple(c.Age[9].ConVol, c.Age[9].Height), std::tuple(0.0f, 0.0f));
    // Age 20 is grid step 10 of a grid starting at 10.
    EXPECT_EQ((Floats{c.Age[20].ConVol, c.Age[20].DecVol, c.Age[20].Height, c.Age[20].Dbh}),
              (Floats{71.0f / 10.0f, 13.0f / 10.0f, 31.0f / 10.0f, 21.0f / 10.0f}));
    // From 300 on, step 290 (age 300) without interpolation; the stored Vol (999.9) is unused.
    for (int a : {300, 301, 350})
        EXPECT_EQ(std::tuple(c.Age[a].ConVol, c.Age[a].DecVol), std::tuple(203.1f, 29.3f)) << a;
}

TEST_F(Expansion, AllSpeciesExcludedLeavesHeightButNoVolumeAndIsReported) {
    addPolygon("Good", 0, 0);
    const int p = addPolygon(" Bare ", 0, 0);
    const int gone = addPolygon("Gone", 0, 0);
    m.PolyC[p].VX.fill(0);
    m.PolyC[gone].VX.fill(0);
    m.PolyC[gone].DELETE = 1;
    expand();
    EXPECT_GT(curve(2).Age[100].Height, 0.0f);
    for (int a = 0; a <= 350; ++a) ASSERT_EQ(curve(2).Age[a].ConVol + curve(2).Age[a].DecVol, 0.0f);

    int16_t result = 0;
    CheckYields(m, host.prompt, yields, result);
    ASSERT_EQ(host.prompt.shown.size(), 1u);
    EXPECT_EQ(host.prompt.shown[0].title, "Yield Errors");
    EXPECT_EQ(host.prompt.shown[0].text,
              "The following polygons do not have any volume in thier yield curves.  Go back to "
              "the polyon data screen and recalculate all yields.\n\nBare - VDYP\n");
    EXPECT_EQ(result, MsgOk);
}

TEST_F(Expansion, CurvesFollowTheModelLoopAndTheManagements) {
    const int later = addPolygon("TIPSY now, VDYP later", 1, 0);
    const int nsr = addPolygon("NSR", 3, 0);
    const int nc = addPolygon("NC", 2, 1);
    expand();
    ASSERT_EQ(yields.CurveCount, 4);
    // The VDYP curves first, then the TIPSY ones, each in polygon order.
    EXPECT_EQ(std::tuple(curve(1).CurveModel, curve(1).CurvePoly, curve(2).CurveModel,
                         curve(4).CurveModel),
              std::tuple(0, later, 1, 1));
    EXPECT_EQ(curvesOf(later), std::tuple(2, 1));
    EXPECT_EQ(curvesOf(nsr), std::tuple(0, 3));
    EXPECT_EQ(curvesOf(nc), std::tuple(0, 4));

    // A second expansion starts afresh.
    m.Poly[later].MGNT = {0, 0};
    expand();
    EXPECT_EQ(yields.CurveCount, 3);
    EXPECT_EQ(curvesOf(later), std::tuple(1, 1));

    int16_t result = 0;
    CheckYields(m, host.prompt, yields, result);
    EXPECT_TRUE(host.prompt.shown.empty());
}

TEST_F(Expansion, MoreCurvesThanASixteenBitIndexIsAnOverflow) {
    m.Settings.YieldMaxAge = {10, 10};
    m.Settings.YieldIncAge = {10, 10};
    SetAgeInc(m);
    ResizePolygonArrays(m, 16384);
    m.LastPoly = 16383;
    for (PolyData& poly : m.Poly) poly.MGNT = {0, 1};
    try {
        expand();
        FAIL() << "no overflow";
    } catch (const ArborexError& e) {
        EXPECT_EQ(e.number(), ErrOverflow);
    }
    m.Poly[0].MGNT = {0, 0};
    expand();
    EXPECT_EQ(yields.CurveCount, 32767);
}

TEST_F(Expansion, PartialCutSetsTheStandBackToTheResidualVolume) {
    const int p = addPolygon("PC", 1, 1);
    m.Poly[p].PCPERC = -1;
    m.Settings.PCperc = 50;
    for (int k = 0; k <= 35; ++k) m.TYield(p, k).Vol = static_cast<int16_t>(k * 200);  // 2/yr
    expand();
    Block block{.Polygon = static_cast<int16_t>(p), .Curve = 1, .HarvestAge = 100};
    SetPC(m, yields, block);  // 200 m3/ha: half is 100, first passed at 51
    EXPECT_EQ(block.ResidualAge, 51);

    m.Poly[p].PCPERC = 25;
    block.HarvestAge = 400;  // capped at 350: 700 * 0.75 = 525, first passed at 263
    SetPC(m, yields, block);
    EXPECT_EQ(block.ResidualAge, 263);

    for (int k = 0; k <= 35; ++k) m.TYield(p, k).Vol = 1000;
    m.Settings.YieldMinAge[1] = 0;
    expand();
    block.ResidualAge = 9;
    SetPC(m, yields, block);
    EXPECT_EQ(block.ResidualAge, 0);
}

}  // namespace
}  // namespace arborex
