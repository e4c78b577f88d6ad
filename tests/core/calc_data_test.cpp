// The calculation screen's inputs through the project's saved fields and back.

#include <gtest/gtest.h>

#include "harvest/calc_data.hpp"
#include "support/calc_fixture.hpp"

namespace arborex {
namespace {

using test::CalcFixture;

TEST(CalcData, SaveRoundsNumbersAndKeepsTheBoxes) {
    CalcFixture f({});
    f.screen.txtHeight = "12.5";
    f.screen.txtAge = "abc";
    f.screen.txtNetDown = "13.5";
    f.screen.txtStartIn = "40000";
    f.screen.txtWithin = "-3";
    f.screen.chkConAge = true;
    f.screen.chkConNetDown = true;
    f.screen.chkCut = {true, false, false, true};
    f.screen.chkCalcRate = f.screen.chkConifer = true;
    f.m.Calc.inputs.SavedVolRate = 777;
    SaveCalcData(f.session);

    const CalcInputs& in = f.m.Calc.inputs;
    EXPECT_EQ(in.SavedHeight, 12);
    EXPECT_EQ(in.SavedAge, 0);
    EXPECT_EQ(in.SavedNetDown, 14);
    EXPECT_EQ(in.SavedStartIn, 40000);
    EXPECT_EQ(in.SavedWithin, -3);
    EXPECT_EQ(in.ConstraintBits, 5);
    EXPECT_EQ(in.SavedCut, (std::array<int16_t, 4>{1, 0, 0, 1}));
    EXPECT_EQ(in.SavedCalcRate, 1);
    EXPECT_EQ(in.SavedCalcYears, 0);
    EXPECT_EQ(in.SavedConifer, 1);
    EXPECT_EQ(in.SavedVolRate, 777);  // the rate of a run, not of the field

    // Into a fresh screen: the numbers come back whole, the set bits tick their boxes.
    CalcFixture g({});
    g.m.Calc.inputs = in;
    g.screen.chkCut = {};
    LoadCalcData(g.session);
    EXPECT_EQ(g.screen.txtHeight, "12");
    EXPECT_EQ(g.screen.txtAge, "0");
    EXPECT_EQ(g.screen.txtStartIn, "40000");
    EXPECT_EQ(g.screen.txtWithin, "-3");
    EXPECT_TRUE(g.screen.chkConAge);
    EXPECT_TRUE(g.screen.chkConNetDown);
    EXPECT_FALSE(g.screen.chkConHeight);
    EXPECT_EQ(g.screen.chkCut, (std::array<bool, 4>{true, false, false, true}));
    EXPECT_TRUE(g.screen.chkCalcRate);
    EXPECT_TRUE(g.screen.chkConifer);
    EXPECT_EQ(g.screen.txtVolToCut, "777");
}

TEST(CalcData, UnsetBitsLeaveBoxesAsTheyAre) {
    CalcFixture f({});
    f.m.Calc.inputs.ConstraintBits = 0;
    f.screen.chkConHeight = true;
    LoadCalcData(f.session);
    EXPECT_TRUE(f.screen.chkConHeight);
    EXPECT_FALSE(f.screen.chkConAge);
}

TEST(CalcData, LoadRestoresSortMethodAndTheRateOfTheSavedKind) {
    CalcFixture f({});
    CalcInputs& in = f.m.Calc.inputs;
    in.SortMethod = 4;
    in.AreaRunSaved = 1;
    in.SavedAreaRate = 12.3456;
    in.SavedVolRate = 2500;
    LoadCalcData(f.session);
    EXPECT_EQ(in.SortMethod, 4);
    EXPECT_TRUE(f.screen.chkArea);
    EXPECT_TRUE(f.run.AreaRun);
    EXPECT_EQ(f.screen.txtVolToCut, "12.346");

    f.screen.chkArea = false;
    chkArea_Click(f.session);
    EXPECT_FALSE(f.run.AreaRun);
    EXPECT_EQ(f.screen.txtVolToCut, "2500");
    f.screen.chkArea = true;
    chkArea_Click(f.session);
    EXPECT_EQ(f.screen.txtVolToCut, "12.346");
    EXPECT_EQ(f.observer.ratesShown.back(), "12.346");
    EXPECT_EQ(rateUnit(true), "ha/yr");
    EXPECT_EQ(rateUnit(false), "m\xb3/yr");
}

}  // namespace
}  // namespace arborex
