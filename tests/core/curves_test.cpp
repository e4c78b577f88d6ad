// Queries on yield curves, worked on a two-polygon project with the default grids
// (VDYP 0..300 by 1 year, TIPSY 0..350 by 10 years).

#include <gtest/gtest.h>

#include "base/errors.hpp"
#include "model/model.hpp"
#include "yield/curves.hpp"

namespace arborex {
namespace {

// The interpolation as the queries must compute it, step by step in float.
float lerp(float frac, float low, float high) {
    const float lowPart = (1.0f - frac) * low;
    const float highPart = high * frac;
    return lowPart + highPart;
}

template <typename F>
int errorNumberOf(F f) {
    try {
        f();
    } catch (const ArborexError& e) {
        return e.number();
    }
    return 0;
}

class Curves : public ::testing::Test {
protected:
    void SetUp() override {
        ResetVars(m);
        SetDefaults(m);
        m.LastPoly = 1;
        EmptyArrays(m);
        ResizePolygonArrays(m, 2);
        for (int p = 0; p < 2; ++p) {
            for (int k = 0; k <= 35; ++k) {
                YieldRow& r = m.TYield(p, k);
                r.Dia = static_cast<int16_t>(k * 17 + 3);
                r.Vol = static_cast<int16_t>(k * k * 13 + 7);
                r.Ht = static_cast<int16_t>(k * 9 + 1);
                r.Mai = 0.37f * static_cast<float>(k);
            }
            for (int k = 0; k <= 300; ++k) {
                m.VYield(p, k).Vol = static_cast<int16_t>(k * 7 + 1);
                m.VYield(p, k).Mai = 1.5f;
                m.VMix(p, k)[2] = static_cast<int16_t>(k * 4 + 2);
            }
        }
    }
    float tVol(int step) const { return static_cast<float>(m.TYield(0, step).Vol); }
    void setThin(int16_t age, int16_t before, int16_t after) {
        m.PolyM[0].COMTHIN = 1;
        m.PolyM[0].TIPSYCACHE[0] = age;
        m.PolyM[0].TIPSYCACHE[2] = before;
        m.PolyM[0].TIPSYCACHE[3] = after;
    }
    Model m;
};

TEST_F(Curves, InterpolatesBetweenGridAgesAndHoldsTheEnds) {
    EXPECT_EQ(FindVol(m, 1, 45, 0), lerp(0.5f, tVol(4), tVol(5)) / 10.0f);
    EXPECT_EQ(FindVol(m, 1, 40, 0), tVol(4) / 10.0f);
    EXPECT_EQ(FindVol(m, 1, 47, 0), lerp(0.7f, tVol(4), tVol(5)) / 10.0f);
    EXPECT_EQ(FindVol(m, 1, -1, 0), 0.0f);
    EXPECT_EQ(FindVol(m, 1, 350, 0), tVol(35) / 10.0f);
    EXPECT_EQ(FindVol(m, 0, -1, 0), 0.0f);
    EXPECT_EQ(FindVol(m, 0, 300, 0), 2101.0f / 10.0f);
    EXPECT_EQ(FindVol(m, 0, 999, 0), 2101.0f / 10.0f);
    EXPECT_EQ(FindVol(m, 0, 123, 0), 862.0f / 10.0f);

    EXPECT_EQ(FindDia(m, 1, 43, 0), lerp(0.3f, 71.0f, 88.0f) / 10.0f);
    EXPECT_EQ(FindHt(m, 1, 43, 0), lerp(0.3f, 37.0f, 46.0f) / 10.0f);
    EXPECT_EQ(findMai(m, 1, 43, 0), lerp(0.3f, m.TYield(0, 4).Mai, m.TYield(0, 5).Mai));
    EXPECT_EQ(FindDia(m, 1, 400, 0), 598.0f / 10.0f);
    EXPECT_EQ(findMai(m, 0, 999, 0), 1.5f);
}

TEST_F(Curves, AModelOtherThanVdypOrTipsyGivesZero) {
    EXPECT_EQ(FindVol(m, 2, 45, 0), 0.0f);
    EXPECT_EQ(FindDia(m, -1, 45, 0), 0.0f);
    EXPECT_EQ(FindHt(m, 2, 45, 0), 0.0f);
    EXPECT_EQ(findMai(m, 2, 45, 0), 0.0f);
}

TEST_F(Curves, ACommercialThinInsideAnIntervalSplitsTheVolumeLine) {
    setThin(43, 2500, 1200);
    const float before = 2500.0f, after = 1200.0f;
    const float w42 = 1.0f / 3.0f;
    EXPECT_EQ(FindVol(m, 1, 42, 0), (tVol(4) * w42 + (1.0f - w42) * before) / 10.0f);
    EXPECT_EQ(FindVol(m, 1, 43, 0), before / 10.0f);
    const float w44 = 6.0f / 7.0f;
    EXPECT_EQ(FindVol(m, 1, 44, 0), (after * w44 + (1.0f - w44) * tVol(5)) / 10.0f);
    EXPECT_EQ(FindVol(m, 1, 40, 0), tVol(4) / 10.0f);
    EXPECT_EQ(FindVol(m, 1, 50, 0), tVol(5) / 10.0f);
    EXPECT_EQ(FindVol(m, 1, 55, 0), lerp(0.5f, tVol(5), tVol(6)) / 10.0f);

    // Diameter, height and MAI go straight through the thin.
    EXPECT_EQ(FindDia(m, 1, 43, 0), lerp(0.3f, 71.0f, 88.0f) / 10.0f);
    EXPECT_EQ(FindHt(m, 1, 44, 0), lerp(0.4f, 37.0f, 46.0f) / 10.0f);
    EXPECT_EQ(findMai(m, 1, 42, 0), lerp(0.2f, m.TYield(0, 4).Mai, m.TYield(0, 5).Mai));

    // The walk stops at the volume before the thin and never looks back.
    EXPECT_EQ(FindAgeVol(m, 1, 250.0f, 0), 43);
}

TEST_F(Curves, TheThinRuleActsOnlyOnACommercialThinOffTheGrid) {
    setThin(40, 2500, 1200);
    EXPECT_EQ(FindVol(m, 1, 43, 0), lerp(0.3f, tVol(4), tVol(5)) / 10.0f);
    EXPECT_EQ(FindVol(m, 1, 40, 0), tVol(4) / 10.0f);
    setThin(43, 2500, 1200);
    m.PolyM[0].COMTHIN = 0;
    EXPECT_EQ(FindVol(m, 1, 43, 0), lerp(0.3f, tVol(4), tVol(5)) / 10.0f);
    EXPECT_EQ(FindVol(m, 1, 44, 0), lerp(0.4f, tVol(4), tVol(5)) / 10.0f);
}

TEST_F(Curves, FirstAgeMeetingATargetWalksEveryYear) {
    EXPECT_EQ(FindAgeVol(m, 1, 0.0f, 0), 0);
    EXPECT_EQ(FindAgeVol(m, 1, 5000.0f, 0), 999);
    EXPECT_EQ(FindAgeVol(m, 1, FindVol(m, 1, 47, 0), 0), 47);
    EXPECT_EQ(FindAgeVol(m, 1, FindVol(m, 1, 47, 0) + 0.01f, 0), 48);
    EXPECT_EQ(FindAgeDia(m, 1, FindDia(m, 1, 123, 0), 0), 123);
    EXPECT_EQ(FindAgeMAI(m, 1, findMai(m, 1, 61, 0), 0), 61);
    EXPECT_EQ(FindAgeMAI(m, 0, 1.6f, 0), 999);
    EXPECT_EQ(FindAgeVol(m, 0, 86.2f, 0), 123);
    EXPECT_EQ(errorNumberOf([&] { FindAgeVol(m, 2, 1.0f, 0); }), ErrSubscript);
}

TEST_F(Curves, TargetsAndCulminationStartAtTheGridsFirstAge) {
    m.Settings.YieldMinAge[1] = 20;
    SetAgeInc(m);
    ResizePolygonArrays(m, 2);
    ClearTYield(m, 1);
    EXPECT_EQ(FindAgeVol(m, 1, 0.0f, 1), 20);
    EXPECT_EQ(FindMAIMax(m, 1, 1), 20);
    EXPECT_EQ(FindVol(m, 1, 19, 0), 0.0f);
    EXPECT_EQ(FindVol(m, 1, 25, 0), lerp(0.5f, tVol(0), tVol(1)) / 10.0f);
}

TEST_F(Curves, CulminationKeepsTheYoungerOfEqualMaxima) {
    for (int k = 0; k <= 35; ++k) m.TYield(0, k).Mai = 1.0f;
    m.TYield(0, 6).Mai = 3.5f;
    m.TYield(0, 7).Mai = 3.4f;
    m.TYield(0, 8).Mai = 3.5f;
    EXPECT_EQ(FindMAIMax(m, 1, 0), 60);
    EXPECT_EQ(FindMAIMax(m, 1, 1), 350);
    EXPECT_EQ(FindMax(3, 5), 5);
    EXPECT_EQ(FindMax(5, 3), 5);
}

TEST_F(Curves, SpeciesVolumeUsesTheVdypGrid) {
    EXPECT_EQ(FindVolSpec(m, 45, 0, 2), 182.0f / 10.0f);
    EXPECT_EQ(FindVolSpec(m, 999, 0, 2), 1202.0f / 10.0f);
    EXPECT_EQ(FindVolSpec(m, -1, 0, 2), 0.0f);
    EXPECT_EQ(FindVolSpec(m, 45, 0, 3), 0.0f);
    EXPECT_EQ(errorNumberOf([&] { FindVolSpec(m, 45, 0, 6); }), ErrSubscript);
}

TEST_F(Curves, ClearingWipesOnePolygonsCurveAndItsStatus) {
    for (int p = 0; p < 2; ++p) {
        m.PolyC[p].VCCCALC = 40.0f;
        m.Poly[p].VSICALC = 18.5f;
        m.Poly[p].TSICALC = 21.0f;
        m.Poly[p].YIELDSTATE = {3, 3};
    }
    clearVYield(m, 0);
    for (int16_t age = -1; age <= 301; ++age) ASSERT_EQ(FindVol(m, 0, age, 0), 0.0f) << age;
    EXPECT_EQ(FindMAIMax(m, 0, 0), 0);
    EXPECT_EQ(FindVolSpec(m, 100, 0, 2), 0.0f);
    EXPECT_EQ(m.PolyC[0].VCCCALC, 0.0f);
    EXPECT_EQ(m.Poly[0].VSICALC, 0.0f);
    EXPECT_EQ(m.Poly[0].YIELDSTATE, (std::array<int16_t, 2>{0, 3}));
    EXPECT_EQ(m.Poly[0].TSICALC, 21.0f);
    EXPECT_EQ(FindVol(m, 1, 40, 0), tVol(4) / 10.0f);
    EXPECT_EQ(FindVol(m, 0, 300, 1), 2101.0f / 10.0f);
    EXPECT_EQ(m.PolyC[1].VCCCALC, 40.0f);

    m.PolyM[1].TIPSYCACHE[0] = 43;
    ClearTYield(m, 1);
    EXPECT_EQ(FindVol(m, 1, 350, 1), 0.0f);
    EXPECT_EQ(findMai(m, 1, 350, 1), 0.0f);
    EXPECT_EQ(m.Poly[1].TSICALC, 0.0f);
    EXPECT_EQ(m.Poly[1].YIELDSTATE, (std::array<int16_t, 2>{3, 0}));
    EXPECT_EQ(m.Poly[1].VSICALC, 18.5f);
    EXPECT_EQ(m.PolyM[1].TIPSYCACHE[0], 43);
    EXPECT_EQ(FindVol(m, 1, 350, 0), tVol(35) / 10.0f);
}

TEST_F(Curves, FaultsThrowTheirNumbers) {
    EXPECT_EQ(errorNumberOf([&] { FindVol(m, 1, 45, 2); }), ErrSubscript);
    EXPECT_EQ(errorNumberOf([&] { FindDia(m, 0, 45, -1); }), ErrSubscript);
    EXPECT_EQ(errorNumberOf([&] { clearVYield(m, 2); }), ErrSubscript);
    EXPECT_EQ(errorNumberOf([&] { FindAgeVol(m, 1, 1.0f, 5); }), ErrSubscript);

    // A range that is not a multiple of the step reads past the last row.
    m.Settings.YieldMaxAge[1] = 355;
    SetAgeInc(m);
    EXPECT_EQ(errorNumberOf([&] { FindVol(m, 1, 352, 0); }), ErrSubscript);
    EXPECT_EQ(FindVol(m, 1, 355, 0), tVol(35) / 10.0f);

    m.Settings.YieldMinAge[1] = -30000;
    m.Settings.YieldMaxAge[1] = 30000;
    EXPECT_EQ(errorNumberOf([&] { FindHt(m, 1, 10000, 0); }), ErrOverflow);

    m.Settings.YieldMinAge[1] = 0;
    m.Settings.YieldMaxAge[1] = 350;
    m.Settings.YieldIncAge[1] = 0;
    EXPECT_EQ(errorNumberOf([&] { FindVol(m, 1, 45, 0); }), ErrDivisionByZero);
    EXPECT_EQ(errorNumberOf([&] { findMai(m, 1, 45, 0); }), ErrDivisionByZero);
    EXPECT_EQ(errorNumberOf([&] { FindMAIMax(m, 1, 0); }), ErrDivisionByZero);
}

}  // namespace
}  // namespace arborex
