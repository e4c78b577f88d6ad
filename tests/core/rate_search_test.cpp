// The rate search on a land base whose sustainable rate is known: one 99.95 ha stand past the top
// of its curve, so its 150 m3/ha never changes, and a 14 year horizon (15 years of cutting).
// A trial passes while 15 whole allowances do not exceed the 14,992.5 m3 that stand, that is,
// up to 999 m3/yr.

#include <gtest/gtest.h>

#include "harvest/queue_order.hpp"
#include "harvest/rate_search.hpp"
#include "support/calc_fixture.hpp"

namespace arborex {
namespace {

using Lines = std::vector<std::string>;

struct KnownLand : test::CalcFixture {
    KnownLand() : CalcFixture({{"OLD", 99.95f, 320, 0, 0, 0.5f, 80}}) {
        m.Calc.CalcHorizon = 14;
        prepare();
        SetCutOrder(session);
    }
};

TEST(Auto, ClimbsFromHanzlikThenBisectsToTheSustainableRate) {
    KnownLand land;
    land.run.HanzlikRate = 700.9f;
    Auto(land.session);
    const test::RecordingCalcObserver& seen = land.observer;
    ASSERT_EQ(seen.trialRows.size(), 13u);  // nine bisections; the step then drops below 1
    EXPECT_EQ(
        Lines(seen.trialRows.begin(), seen.trialRows.begin() + 8),
        (Lines{"  Rate   Year   Error Message", "====================================", "    700",
               "   1400  Nothing Harvestable", "   1050  Nothing Harvestable", "    875",
               "    963",  // 962.5 shows rounded
               "   1006  Nothing Harvestable"}));
    EXPECT_EQ(seen.hanzlikLine, "700 m\xb3/yr HANZLIK - STARTING RATE");
    EXPECT_EQ(seen.searchLines.front(), "Calculating with 1050");
    EXPECT_EQ(seen.searchLines.back(), "999  HARVEST RATE");
    EXPECT_EQ(seen.statusTexts.front(), "Within 175 m\xb3/yr of harvest rate");
    EXPECT_EQ(land.screen.txtVolToCut, "999");
    // The final run is made at the best rate found.
    EXPECT_EQ(seen.finalRuns, 1);
    EXPECT_FLOAT_EQ(static_cast<float>(land.run.HarvestRate), 999.4140625f);
    EXPECT_EQ(land.m.Calc.inputs.SavedVolRate, 999);
    EXPECT_TRUE(land.host.prompt.shown.empty());
}

TEST(Auto, AreaRunsStartAtFiveHectares) {
    KnownLand land;
    land.run.AreaRun = true;
    Auto(land.session);
    EXPECT_EQ(land.observer.hanzlikLine, "5.000 ha/yr STARTING RATE");
    EXPECT_EQ(land.observer.trialRows[2], "  5.000");
    // 99.95 ha over 15 years: 6.663 ha/yr at the third decimal.
    EXPECT_EQ(land.screen.txtVolToCut.substr(0, 4), "6.66");
    EXPECT_EQ(land.observer.finalRuns, 1);
}

TEST(Auto, AHanzlikRateBelowOneEndsOnTheTryLimit) {
    KnownLand land;
    land.run.HanzlikRate = 0.9f;
    Auto(land.session);
    const auto& rows = land.observer.trialRows;
    ASSERT_EQ(rows.size(), 2u + 100u + 1u);
    EXPECT_EQ(rows[101], "      0");
    EXPECT_EQ(rows.back(), "      0  ");  // no trial ever failed
    EXPECT_TRUE(land.host.prompt.showed("&NORATE"));
    EXPECT_EQ(land.observer.finalRuns, 0);
    EXPECT_EQ(land.screen.txtVolToCut, "0");
}

// The rate field is repainted only when the mark changes.
TEST(ReCalc, RepaintsOnlyWhenTheMarkChanges) {
    struct PaintCounter final : CalcObserver {
        int paints = 0;
        void rateDirtyChanged(bool) override { ++paints; }
    } counter;
    test::CalcFixture f({});
    CalcSession s{f.m, f.screen, f.run, f.host.prompt, counter};
    ReCalc(s, 0);
    ReCalc(s, -1);
    ReCalc(s, 1);
    EXPECT_TRUE(f.run.RateDirty);
    ReCalc(s, 0);
    ReCalc(s, 0);
    EXPECT_FALSE(f.run.RateDirty);
    EXPECT_EQ(counter.paints, 2);
}

}  // namespace
}  // namespace arborex
