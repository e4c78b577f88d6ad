// The single entry to a calculation: its refusals, its warnings, the first harvestable year and
// the run it starts. Planning horizon 50 years.

#include <gtest/gtest.h>

#include "harvest/calculate.hpp"
#include "support/calc_fixture.hpp"

namespace arborex {
namespace {

struct Screen : test::CalcFixture {
    explicit Screen(const std::vector<test::TestStand>& stands) : CalcFixture(stands) {
        m.Settings.PLANHORZ = 50;
        prepare();
    }
    bool calculate() { return cmdCalculate(session); }
    // The box of a refused calculation; nothing may have run.
    std::string refusal() {
        EXPECT_FALSE(calculate());
        EXPECT_EQ(observer.finalRuns, 0);
        return host.prompt.shown.empty() ? "" : host.prompt.shown.back().text;
    }
};

TEST(cmdCalculate, RefusesWithoutOwnershipPolygonsOrAHarvestWithinTheHorizon) {
    Screen screen({{"A", 10.0f, 100}});
    screen.screen.chkCut = {false, false, false, false};
    EXPECT_EQ(screen.refusal(),
              "Please select which ownership(s) to harvest by placing checks in the harvest "
              "boxes.");
    screen.screen.chkCut = {false, true, false, false};  // the polygon's ownership is 0
    EXPECT_EQ(screen.refusal(), "No polygons to harvest with selected Harvest Ownership.");
    screen.screen.lstCutOrder[IncludedList].clear();
    EXPECT_EQ(screen.refusal(), "No Polygons selected");

    Screen young({{"YOUNG", 10.0f, 30}});  // ripe in 50 years
    EXPECT_EQ(young.refusal(),
              "Nothing will be harvestable durring the planning horizon of 50 years.");
    Screen ripe({{"RIPE", 10.0f, 100}});
    ripe.screen.txtStartIn = "50";
    EXPECT_EQ(ripe.refusal(),
              "The 'Delay Harvest For n Years' must be less that the planning horizon of 50 "
              "years.");
}

TEST(cmdCalculate, StartsAtTheFirstHarvestableYearWithTheFieldsOrTheSearchedRate) {
    Screen screen({{"AT80", 10.0f, 80}, {"AT60", 10.0f, 60}});
    screen.screen.chkCalcYears = true;
    screen.screen.txtStartIn = "7";
    screen.screen.txtVolToCut = "400.7";
    screen.screen.txtNetDown = "150";
    screen.m.Settings.PCnext = 0;
    EXPECT_TRUE(screen.calculate());
    EXPECT_EQ(screen.screen.txtStartIn, "0");
    EXPECT_EQ(screen.screen.txtNetDown, "99");
    EXPECT_EQ(screen.m.Calc.CalcHorizon, 50);
    EXPECT_FLOAT_EQ(static_cast<float>(screen.run.HarvestRate), 400.7f);
    EXPECT_EQ(screen.m.Calc.inputs.SavedVolRate, 401);
    EXPECT_EQ(screen.observer.finalRuns, 1);
    EXPECT_EQ(screen.m.Settings.PCnext, 20);
    EXPECT_TRUE(screen.host.prompt.shown.empty());

    // Both stands 20 years short of their harvest age: the delay is 20 years.
    screen.m.Poly[0].AGE = 50;
    EXPECT_TRUE(screen.calculate());
    EXPECT_EQ(screen.screen.txtStartIn, "20");
    EXPECT_EQ(screen.run.FirstCutYear, 2050);

    // The rate is searched for only when no report is to be written.
    screen.screen.chkCalcRate = true;
    EXPECT_TRUE(screen.calculate());
    EXPECT_FALSE(screen.observer.trialRows.empty());
    EXPECT_EQ(screen.screen.txtVolToCut, screen.observer.ratesShown.back());
    screen.observer.trialRows.clear();
    screen.run.ReportEvery = 5;
    screen.screen.txtVolToCut = "300";
    EXPECT_TRUE(screen.calculate());
    EXPECT_TRUE(screen.observer.trialRows.empty());
    EXPECT_EQ(screen.run.HarvestRate, 300.0);
}

TEST(cmdCalculate, WarnsOfMissingSecondHarvestsAndPartialCutParameters) {
    Screen screen({{"NOSECOND", 10.0f, 100}, {"PC", 10.0f, 100}});
    // A future curve without volume: NOSECOND is cut once only.
    screen.m.Poly[0].MGNT[1] = 1;
    for (int k = 0; k < screen.m.TYield.rowCount(); ++k) screen.m.TYield(0, k).Vol = 0;
    screen.prepare();
    screen.m.Poly[1].SILVI = 1;
    screen.m.Poly[1].PCPERC = 0;
    EXPECT_TRUE(screen.calculate());
    const auto& shown = screen.host.prompt.shown;
    ASSERT_EQ(shown.size(), 2u);
    EXPECT_EQ(shown[0].title, "Error");
    EXPECT_NE(shown[0].text.find("1 Polygon(s) have a 0m\xb3 volume at their subsequent "
                                 "harvest age.  They will only be harvested on the first "
                                 "rotation."),
              std::string::npos);
    EXPECT_NE(shown[0].text.find("NOSECOND  80\r\n"), std::string::npos);
    EXPECT_EQ(shown[1].text,
              "1 Polygon1(s) are missing Partial Cut Parameters.  These parameters will be run "
              "with the default PC settings as set in the Harvest Parameters box");

    screen.host.prompt.shown.clear();
    screen.screen.chkDisPC = true;
    EXPECT_TRUE(screen.calculate());
    EXPECT_TRUE(shown.empty());
}

}  // namespace
}  // namespace arborex
