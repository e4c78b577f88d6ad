// The stand growth model: shape of the curves, the two worked lodgepole pine stands, mixed
// stands and the commercial thin.

#include "growth/growth_model.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <functional>
#include <string>
#include <tuple>
#include <vector>

namespace arborex::growth {
namespace {

using Curve = std::function<CurvePoint(int)>;

StandInputs pureStand(const std::string& code, float siteIndex) {
    StandInputs stand;
    stand.siteIndex = siteIndex;
    stand.species = {{code, 100, code == "AT"}};
    return stand;
}

// Interior lodgepole pine: natural, closure 50%, and planted at 1600 stems/ha.
const StandInputs kNaturalPine = pureStand("PL", 18.0f);
const StandInputs kManagedPine = pureStand("PL", 21.0f);

Curve natural(const StandInputs& stand) {
    return [stand](int age) { return naturalStandAt(stand, age); };
}
Curve managed(const StandInputs& stand) {
    return [stand](int age) { return managedStandAt(stand, age); };
}

int firstAge(const Curve& curve, const std::function<bool(const CurvePoint&)>& met) {
    for (int age = 0; age <= 350; ++age)
        if (met(curve(age))) return age;
    return 999;
}

int culminationAge(const Curve& curve) {
    int best = 0;
    for (int age = 1; age <= 350; ++age)
        if (curve(age).mai > curve(best).mai) best = age;
    return best;
}

::testing::AssertionResult within(float value, float low, float high) {
    if (value >= low && value <= high) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << value << " outside " << low << ".." << high;
}

TEST(GrowthModel, SiteCurvePassesThroughSiteIndexAtFifty) {
    for (const char* code : {"PL", "SX", "FD", "AT", "BL", "ZZ", ""}) {
        SCOPED_TRACE(code);
        const StandInputs stand = pureStand(code, 23.0f);
        EXPECT_NEAR(naturalStandAt(stand, 50).height, 23.0f, 1e-4f);
        EXPECT_NEAR(managedStandAt(stand, 50).height, 23.0f, 1e-4f);
        EXPECT_EQ(naturalStandAt(stand, 0).height, 0.0f);
    }
    // Pine races ahead early and flattens sooner; spruce is the other way; an unknown code
    // lies between.
    const auto heightAt = [](const char* code, int age) {
        return naturalStandAt(pureStand(code, 18.0f), age).height;
    };
    EXPECT_GT(heightAt("PL", 20), heightAt("ZZ", 20));
    EXPECT_GT(heightAt("ZZ", 20), heightAt("SX", 20));
    EXPECT_LT(heightAt("PL", 150), heightAt("ZZ", 150));
    EXPECT_LT(heightAt("ZZ", 150), heightAt("SX", 150));
    EXPECT_EQ(heightAt("FD", 20), heightAt("ZZ", 20));
    EXPECT_EQ(heightAt("pli", 20), heightAt("PL", 20));
}

TEST(GrowthModel, CurvesAreBoundedAndNeverShrinkInHeightOrDiameter) {
    std::vector<StandInputs> stands;
    for (const char* code : {"PL", "SX", "FD", "AT", "ZZ"})
        for (float siteIndex : {3.0f, 12.0f, 21.0f, 35.0f, 60.0f})
            stands.push_back(pureStand(code, siteIndex));
    StandInputs extremes = pureStand("SX", 60.0f);
    extremes.crownClosure = 100;
    extremes.density = 30000;
    extremes.oaf1 = extremes.oaf2 = 0.0f;
    stands.push_back(extremes);
    extremes.crownClosure = extremes.density = 0;
    extremes.utilisation = 0.0f;
    stands.push_back(extremes);

    bool capReached = false;
    for (const StandInputs& stand : stands) {
        SCOPED_TRACE(stand.species[0].code + " SI " + std::to_string(stand.siteIndex));
        for (const bool isNatural : {true, false}) {
            const Curve curve = isNatural ? natural(stand) : managed(stand);
            CurvePoint previous = curve(0);
            for (int age = 1; age <= 400; ++age) {
                const CurvePoint p = curve(age);
                for (float v : {p.height, p.diameter, p.volume, p.mai})
                    ASSERT_TRUE(std::isfinite(v) && v >= 0.0f) << "age " << age;
                ASSERT_LE(p.volume, 3276.0f);
                ASSERT_GE(p.height, previous.height) << "age " << age;
                ASSERT_GE(p.diameter, previous.diameter) << "age " << age;
                if (!isNatural) {
                    ASSERT_GE(p.volume, previous.volume) << "age " << age;
                }
                capReached = capReached || p.volume == 3276.0f;
                previous = p;
            }
        }
    }
    EXPECT_TRUE(capReached);
}

TEST(GrowthModel, NaturalLodgepolePineExample) {
    const Curve pine = natural(kNaturalPine);
    EXPECT_TRUE(
        within(firstAge(pine, [](const CurvePoint& p) { return p.volume >= 150.0f; }), 55, 75));
    EXPECT_TRUE(within(pine(100).volume, 250.0f, 350.0f));
    EXPECT_TRUE(within(pine(120).volume, 250.0f, 350.0f));
    EXPECT_TRUE(within(culminationAge(pine), 70, 110));
    EXPECT_TRUE(
        within(firstAge(pine, [](const CurvePoint& p) { return p.diameter >= 15.0f; }), 40, 60));

    // Gentle break-up after 150 years: no loss before, 5 to 20% lost by 300.
    EXPECT_GE(pine(150).volume, pine(140).volume);
    EXPECT_LT(pine(300).volume, pine(200).volume);
    EXPECT_TRUE(within(pine(300).volume / pine(150).volume, 0.8f, 0.95f));
}

TEST(GrowthModel, ManagedLodgepolePineExample) {
    const Curve pine = managed(kManagedPine);
    EXPECT_TRUE(within(culminationAge(pine), 50, 80));
    EXPECT_GE(pine(80).volume, 300.0f);
    for (float v : pine(80).speciesVolume) EXPECT_EQ(v, 0.0f);
}

TEST(GrowthModel, MaiIsVolumeOverAgeAndNothingGrowsWithoutAgeSiteOrSpecies) {
    for (const Curve& curve : {natural(kNaturalPine), managed(kManagedPine)})
        EXPECT_NEAR(curve(90).mai, curve(90).volume / 90.0f, 1e-4f);

    StandInputs noSite = kNaturalPine, noSpecies = kNaturalPine;
    noSite.siteIndex = 0.0f;
    noSpecies.species.clear();
    for (const CurvePoint& p :
         {naturalStandAt(kNaturalPine, 0), managedStandAt(kManagedPine, 0),
          naturalStandAt(kNaturalPine, -5), managedStandAt(kManagedPine, -1),
          naturalStandAt(noSite, 80), managedStandAt(noSite, 80), naturalStandAt(noSpecies, 80)})
        EXPECT_EQ(std::tie(p.height, p.diameter, p.volume, p.mai),
                  std::make_tuple(0.0f, 0.0f, 0.0f, 0.0f));
}

TEST(GrowthModel, NoMerchantableVolumeUntilTheMeanDiameterPassesUtilisation) {
    const StandInputs& stand = kNaturalPine;
    for (int age = 0; age <= 200; ++age) {
        const CurvePoint p = naturalStandAt(stand, age);
        if (p.diameter <= stand.utilisation) {
            EXPECT_EQ(p.volume, 0.0f) << "age " << age;
        } else {
            EXPECT_GT(p.volume, 0.0f) << "age " << age;
        }
    }
    StandInputs close = stand, loose = stand;
    close.utilisation = 7.5f;
    loose.utilisation = 17.5f;
    EXPECT_GT(naturalStandAt(close, 60).volume, naturalStandAt(stand, 60).volume);
    EXPECT_LT(naturalStandAt(loose, 60).volume, naturalStandAt(stand, 60).volume);
}

TEST(GrowthModel, StockingRaisesVolume) {
    StandInputs open = kNaturalPine, closed = kNaturalPine;
    open.crownClosure = 30;
    closed.crownClosure = 70;
    EXPECT_LT(naturalStandAt(open, 100).volume, naturalStandAt(closed, 100).volume);

    StandInputs sparse = kManagedPine, dense = kManagedPine;
    sparse.density = 800;
    dense.density = 3000;
    EXPECT_LT(managedStandAt(sparse, 80).volume, managedStandAt(dense, 80).volume);
    // More stems share the site, so each is smaller.
    EXPECT_GT(managedStandAt(sparse, 80).diameter, managedStandAt(dense, 80).diameter);
}

TEST(GrowthModel, OperationalAdjustmentFactors) {
    StandInputs gross = kManagedPine;
    gross.oaf1 = gross.oaf2 = 0.0f;
    StandInputs onlyOaf1 = gross, onlyOaf2 = gross;
    onlyOaf1.oaf1 = 20.0f;
    onlyOaf2.oaf2 = 10.0f;
    const auto ratio = [&](const StandInputs& s, int age) {
        return managedStandAt(s, age).volume / managedStandAt(gross, age).volume;
    };
    // OAF2 has half its effect at 50 years and all of it from 100.
    for (auto [stand, age, expected] : {std::tuple{&onlyOaf1, 40, 0.8f},
                                        {&onlyOaf1, 200, 0.8f},
                                        {&onlyOaf2, 50, 0.95f},
                                        {&onlyOaf2, 100, 0.9f},
                                        {&onlyOaf2, 250, 0.9f}})
        EXPECT_NEAR(ratio(*stand, age), expected, 1e-5f) << age;
}

TEST(GrowthModel, MixedStandSharesVolumeBySpecies) {
    StandInputs mixed = kNaturalPine;
    mixed.species = {{"PL", 60, false}, {"SX", 30, false}, {"AT", 10, true}};
    const StandInputs& pine = kNaturalPine;
    for (int age : {60, 80, 150, 250}) {
        SCOPED_TRACE(age);
        const CurvePoint p = naturalStandAt(mixed, age);
        float sum = 0.0f;
        for (float v : p.speciesVolume) sum += v;
        EXPECT_NEAR(sum, p.volume, 1e-3f);
        EXPECT_GT(p.speciesVolume[0], p.speciesVolume[1]);
        EXPECT_GT(p.speciesVolume[1], p.speciesVolume[2]);
        EXPECT_EQ(p.speciesVolume[3], 0.0f);
        // Height and diameter are those of the leading species.
        EXPECT_EQ(p.height, naturalStandAt(pine, age).height);
        EXPECT_EQ(p.diameter, naturalStandAt(pine, age).diameter);
        EXPECT_NE(p.volume, naturalStandAt(pine, age).volume);
    }
    // A pure stand holds all its volume in its one slot.
    EXPECT_EQ(naturalStandAt(pine, 90).speciesVolume[0], naturalStandAt(pine, 90).volume);
}

TEST(GrowthModel, CommercialThinDropsVolumeThenRecovers) {
    const StandInputs& stand = kManagedPine;
    const CommercialThin thin{43, 0.3f};
    const ThinRecord record = thinRecord(stand, thin);
    const CurvePoint atThin = managedStandAt(stand, 43);

    EXPECT_EQ(record.age, 43);
    EXPECT_EQ(std::tie(record.volBefore, record.diaBefore, record.htBefore, record.htAfter),
              std::tie(atThin.volume, atThin.diameter, atThin.height, atThin.height));
    EXPECT_NEAR(record.volAfter, record.volBefore * 0.7f, 1e-3f);
    EXPECT_NEAR(record.volCut, record.volBefore - record.volAfter, 1e-3f);
    EXPECT_GT(record.diaAfter, record.diaBefore);
    EXPECT_LT(record.diaAfter, record.diaBefore * 1.2f);

    // Before the thin the stand is the unthinned one; at the thin age it stands after the thin.
    const CurvePoint justBefore = thinnedStandAt(stand, thin, 42);
    EXPECT_EQ(justBefore.volume, managedStandAt(stand, 42).volume);
    EXPECT_EQ(justBefore.diameter, managedStandAt(stand, 42).diameter);
    const CurvePoint after = thinnedStandAt(stand, thin, 43);
    EXPECT_NEAR(after.volume, record.volAfter, 1e-3f);
    EXPECT_NEAR(after.diameter, record.diaAfter, 1e-3f);
    EXPECT_EQ(after.height, record.htAfter);

    // Recovery: volume grows again, and the gap to the unthinned stand narrows without closing.
    float previousGap = record.volCut;
    CurvePoint previous = after;
    for (int age = 44; age <= 300; ++age) {
        const CurvePoint p = thinnedStandAt(stand, thin, age);
        const CurvePoint unthinned = managedStandAt(stand, age);
        const float gap = unthinned.volume - p.volume;
        ASSERT_GE(p.volume, previous.volume) << "age " << age;
        ASSERT_GE(p.diameter, previous.diameter) << "age " << age;
        ASSERT_EQ(p.height, unthinned.height) << "age " << age;
        ASSERT_TRUE(gap > 0.0f && gap <= previousGap) << "age " << age;
        previousGap = gap;
        previous = p;
    }
    const auto gapAt = [&](int age) {
        return managedStandAt(stand, age).volume - thinnedStandAt(stand, thin, age).volume;
    };
    EXPECT_LT(gapAt(60), gapAt(44));
    EXPECT_LT(gapAt(300), 0.6f * record.volCut);
}

TEST(GrowthModel, NoThinLeavesTheManagedStandAndTheSameInputsGiveTheSameCurve) {
    for (const CommercialThin& thin : {CommercialThin{0, 0.3f}, CommercialThin{43, 0.0f}}) {
        for (int age : {20, 43, 80}) {
            const CurvePoint a = thinnedStandAt(kManagedPine, thin, age);
            const CurvePoint b = managedStandAt(kManagedPine, age);
            EXPECT_EQ(std::tie(a.volume, a.diameter), std::tie(b.volume, b.diameter));
        }
    }
    StandInputs mixed = kManagedPine;
    mixed.species = {{"FD", 70, false}, {"PL", 30, false}};
    const CommercialThin thin{50, 0.25f};
    for (int age = 0; age <= 300; age += 7) {
        const CurvePoint a = naturalStandAt(mixed, age), b = naturalStandAt(mixed, age);
        EXPECT_EQ(std::memcmp(&a, &b, sizeof a), 0);
        const CurvePoint c = thinnedStandAt(mixed, thin, age), d = thinnedStandAt(mixed, thin, age);
        EXPECT_EQ(std::memcmp(&c, &d, sizeof c), 0);
    }
}

}  // namespace
}  // namespace arborex::growth
