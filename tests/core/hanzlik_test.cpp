// The Hanzlik estimate on stands whose volume grows by 2 m3/ha a year, so that a stand of
// 10 ha counts 20 m3/yr at any age it is taken at.

#include <gtest/gtest.h>

#include "base/errors.hpp"
#include "harvest/hanzlik.hpp"
#include "harvest/queue_order.hpp"
#include "support/calc_fixture.hpp"

namespace arborex {
namespace {

// VDYP stands (or the management `existing`) of 10 ha due at 80 unless told otherwise.
struct Prepared : test::CalcFixture {
    explicit Prepared(const std::vector<test::TestStand>& stands) : CalcFixture(stands) {
        prepare();
        SetCutOrder(session);
    }
    float rate() {
        float value = -1.0f;
        CalcHanzlik(session, value);
        return value;
    }
};

test::TestStand stand(int16_t age, int16_t existing = 0, int16_t harvestAge = 80,
                      float area = 10.0f) {
    return {"", area, age, existing, 0, 2.0f, harvestAge};
}

TEST(Hanzlik, OldStandsCountAtTheirAgeYoungOnesAtRotation) {
    // 90 years at rotation 80: 180 m3/ha over 90 years; 10 years: 160 m3/ha over 80.
    Prepared p({stand(90), stand(10), stand(200, 2), stand(0, 3)});
    EXPECT_FLOAT_EQ(p.rate(), 40.0f);
    EXPECT_FLOAT_EQ(p.run.HanzlikRotation, 85.0f);  // (1800 + 1600) / 40
    EXPECT_TRUE(p.host.prompt.shown.empty());

    // Restocking stands alone give nothing.
    Prepared restocking({stand(0, 2), stand(0, 3)});
    restocking.run.HanzlikRotation = 99.0f;
    EXPECT_EQ(restocking.rate(), 0.0f);
    EXPECT_EQ(restocking.run.HanzlikRotation, 0.0f);
}

TEST(Hanzlik, ZeroAgesFailAndAnEmptySelectionIsRefused) {
    Prepared p({stand(0, 0, 0)});
    EXPECT_THROW(p.rate(), ArborexError);
    p.screen.chkCut = {};
    SetCutOrder(p.session);
    EXPECT_EQ(p.rate(), 0.0f);
    EXPECT_TRUE(p.host.prompt.showed("No Polygons selected"));
}

TEST(Hanzlik, MenuOffersTheRateWithSeparatorAndFieldWithout) {
    Prepared p({stand(90, 0, 80, 1000.0f), stand(10, 0, 80, 1000.0f)});
    p.host.prompt.answers = {Answer::No, Answer::Yes};
    mniHanzlik_Click(p.session);
    EXPECT_EQ(p.run.HanzlikRate, 4000.0f);
    EXPECT_EQ(p.screen.txtVolToCut, "1000");
    mniHanzlik_Click(p.session);
    ASSERT_EQ(p.host.prompt.shown.size(), 2u);
    const auto& box = p.host.prompt.shown[1];
    EXPECT_EQ(box.title, "Hanzlik Caclulation");
    EXPECT_EQ(box.buttons, Buttons::YesNo);
    EXPECT_EQ(box.text,
              "The rate calculated using the Hanzlik formula is 4,000m\xb3/year\n"
              "with a rotation of 85.0 years.\n\n"
              "Would you like to use the Hanzlik rate for the current harvest rate?");
    EXPECT_EQ(p.screen.txtVolToCut, "4000");
    EXPECT_EQ(p.observer.ratesShown, (std::vector<std::string>{"4000"}));

    p.screen.lstCutOrder = {};
    mniHanzlik_Click(p.session);
    EXPECT_TRUE(p.host.prompt.showed("No Polygons selected"));
}

TEST(Hanzlik, CurrentAndFutureUseComputedHarvestAges) {
    // HAR1 of 50 moves only the Hanzlik line: 100 m3/ha over 50 years for the young stand.
    Prepared p({stand(90), stand(10, 0, 50)});
    p.m.HarvAge[1] = p.m.HarvAge[0];
    mniCFHanz_Click(p.session);
    ASSERT_EQ(p.host.prompt.shown.size(), 1u);
    EXPECT_EQ(p.host.prompt.shown[0].text,
              "Future :40m\xb3/year\twith a rotation of 80.0 years.\n"
              "Existing :40m\xb3/year\twith a rotation of 80.0 years.\n"
              "Hanzlik :40m\xb3/year\twith a rotation of 70.0 years.\n");

    // Without existing volume there is no rotation to show.
    Prepared bare({stand(0, 2)});
    try {
        mniCFHanz_Click(bare.session);
        FAIL() << "no failure";
    } catch (const ArborexError& e) {
        EXPECT_EQ(e.number(), ErrDivisionByZero);
    }
}

}  // namespace
}  // namespace arborex
