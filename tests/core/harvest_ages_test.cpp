// Harvest ages worked on one polygon whose VDYP curve (1-year grid) passes 150 m3/ha at 62 and
// 15 cm at 48, with MAI culminating at 80, under the default criteria (40 years, 150 m3/ha,
// 15 cm).

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "base/min_max.hpp"
#include "model/model.hpp"
#include "yield/curves.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex {
namespace {

using Ages = std::tuple<int, int, int, int, int>;

// MaiAge, VolAge, DiaAge, ConstraintAge and HarvestAge.
Ages ages(const HarvAgeRec& r) {
    return {r.MaiAge, r.VolAge, r.DiaAge, r.ConstraintAge, r.HarvestAge};
}

class HarvestAges : public ::testing::Test {
protected:
    void SetUp() override {
        ResetVars(m);
        SetDefaults(m);
        m.LastPoly = 1;
        EmptyArrays(m);
        ResizePolygonArrays(m, 2);
        for (PolyCalc& calc : m.PolyC) {
            calc.MINCUTAGE = {-1, -1};
            calc.MINCUTVOL = calc.MINCUTDBH = {-1.0f, -1.0f};
        }
        for (int k = 0; k <= 300; ++k) {
            YieldRow& row = m.VYield(0, k);
            row.Vol = static_cast<int16_t>(k * 24 + 12);  // 1500 tenths first at 62
            row.Dia = static_cast<int16_t>(k * 3 + 6);    // 150 tenths first at 48
            row.Mai = 5.0f - 0.01f * static_cast<float>(std::abs(k - 80));
        }
    }
    const HarvAgeRec& vdyp(int p = 0) const { return m.HarvAge[static_cast<std::size_t>(p)][0]; }
    Model m;
};

TEST_F(HarvestAges, LatestOfTheCriteriaAndTheCulmination) {
    calcAllCutAges(m, 0);
    EXPECT_EQ(ages(vdyp()), Ages(80, 62, 48, 62, 80));
    EXPECT_EQ(vdyp().MaxMAI, 5.0f);
    m.PolyC[0].MINCUTAGE[0] = 100;
    calcAllCutAges(m, 0);
    EXPECT_EQ(ages(vdyp()), Ages(80, 62, 48, 100, 100));

    // A blank curve: first grid age for the culmination, no MAI, targets never met.
    EXPECT_EQ(ages(vdyp(1)), Ages(0, 999, 999, 999, 999));
    EXPECT_EQ(vdyp(1).MaxMAI, 0.0f);
    m.PolyC[0].MINCUTVOL[0] = 800.0f;  // the curve tops out at 721.2
    calcAllCutAges(m, 0);
    EXPECT_EQ(ages(vdyp()), Ages(80, 999, 48, 999, 999));
}

TEST_F(HarvestAges, OnlyMinusOneFallsBackToTheProjectCriteria) {
    m.PolyC[0].MINCUTVOL[0] = m.PolyC[0].MINCUTDBH[0] = 0.0f;
    m.PolyC[0].MINCUTAGE[0] = 0;
    calcAllCutAges(m, 0);
    EXPECT_EQ(ages(vdyp()), Ages(80, 0, 0, 0, 80));

    // The project's criteria are read when used, not copied into the polygon.
    m.PolyC[0].MINCUTVOL[0] = -1.0f;
    m.Settings.MINVOL = 30.0f;  // 300 tenths first at 12
    m.Settings.MINAGE = 90;
    m.PolyC[0].MINCUTAGE[0] = -1;
    calcAllCutAges(m, 0);
    EXPECT_EQ(ages(vdyp()), Ages(80, 12, 0, 90, 90));
}

TEST_F(HarvestAges, CalcCutAgeKeepsTheStoredCulmination) {
    calcAllCutAges(m, 0);
    m.HarvAge[0][0].MaiAge = 120;
    m.HarvAge[0][0].MaxMAI = 9.5f;
    m.PolyC[0].MINCUTDBH[0] = 30.0f;  // 300 tenths first at 98
    CalcCutAge(m, 0, 0);
    EXPECT_EQ(ages(vdyp()), Ages(120, 62, 98, 98, 120));
    EXPECT_EQ(vdyp().MaxMAI, 9.5f);
}

TEST_F(HarvestAges, DeletedPolygonsAndTheOtherModelAreLeftAlone) {
    m.PolyC[1].DELETE = 1;
    m.HarvAge[1][0].HarvestAge = m.HarvAge[0][1].HarvestAge = 7;
    calcAllCutAges(m, 0);
    EXPECT_EQ(m.HarvAge[1][0].HarvestAge, 7);
    EXPECT_EQ(m.HarvAge[0][1].HarvestAge, 7);
    calcAllCutAges(m, 1);
    EXPECT_EQ(m.HarvAge[0][1].HarvestAge, 999);  // no TIPSY curve: every polygon is worked out
}

TEST_F(HarvestAges, UpdateYieldsConfirmsImportedCurvesWithVolume) {
    m.LastPoly = 2;
    ResizePolygonArrays(m, 3);
    m.PolyC[2].DELETE = 1;
    for (int k = 0; k <= 300; ++k) m.VYield(2, k).Vol = 50;
    m.Poly[0].YIELDSTATE = {2, 2};  // VDYP has volume at 300, TIPSY none at 350
    m.Poly[1].YIELDSTATE = {1, 3};
    m.Poly[2].YIELDSTATE = {2, 0};
    m.Settings.MINAGE = 70;
    UpdateYields(m);
    // Confirmed, left, never lowered, and a deleted polygon untouched.
    EXPECT_EQ(m.Poly[0].YIELDSTATE, (std::array<int16_t, 2>{3, 2}));
    EXPECT_EQ(m.Poly[1].YIELDSTATE, (std::array<int16_t, 2>{1, 3}));
    EXPECT_EQ(m.Poly[2].YIELDSTATE[0], 2);
    EXPECT_EQ(vdyp().ConstraintAge, 70);
    EXPECT_EQ(m.HarvAge[0][1].ConstraintAge, 999);
}

TEST(HarvestAgesOfTheLargestProject, ReachTheLastPolygonThereCanBe) {
    Model m;
    ResetVars(m);
    SetDefaults(m);
    m.Settings.YieldMaxAge = {20, 20};
    m.Settings.YieldIncAge = {10, 10};
    SetAgeInc(m);
    ResizePolygonArrays(m, 32768);
    m.LastPoly = 32767;
    m.PolyC[32767].MINCUTVOL = {-1.0f, -1.0f};
    m.VYield(32767, 2).Vol = 2000;
    m.VYield(32767, 2).Mai = 1.0f;
    UpdateYields(m);
    EXPECT_EQ(m.HarvAge[32767][0].MaiAge, 20);
    EXPECT_EQ(m.HarvAge[32767][0].VolAge, 18);  // 150 of the 200 at 20
}

TEST(MinMax, ClampsLowFirstThenHighAndFormats) {
    const auto clamp = [](std::string text, float low, float high, int16_t decimals) {
        minMax(text, low, high, decimals);
        return text;
    };
    EXPECT_EQ(clamp("abc", 0.1f, 999.9f, 1), "0.1");
    EXPECT_EQ(clamp("5000", 0.1f, 999.9f, 1), "999.9");
    EXPECT_EQ(clamp("12.25", 0.0f, 100.0f, 2), "12.25");
    EXPECT_EQ(clamp("12.6", 0.0f, 100.0f, 0), "13");
    EXPECT_EQ(clamp("7", 0.0f, 100.0f, -1), "7");
    EXPECT_EQ(clamp(" 42kg", 0.0f, 100.0f, 1), "42.0");
    // A range upside down: the high bound has the last word.
    EXPECT_EQ(clamp("1", 10.0f, 5.0f, 0), "5");
    EXPECT_EQ(clamp("1e999", 0.0f, 100.0f, 0), "100");
    EXPECT_EQ(clamp("-1e999", -5.0f, 100.0f, 0), "-5");
}

}  // namespace
}  // namespace arborex
