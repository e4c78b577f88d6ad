// The calculation screen's inputs through the project's saved fields and back.

#include <gtest/gtest.h>

#include <tuple>

#include "harvest/calc_data.hpp"
#include "support/calc_fixture.hpp"

namespace arborex {
namespace {

using test::CalcFixture;

TEST(CalcData, SaveRoundsNumbersAndLoadTicksTheSetBoxesOnly) {
    CalcFixture f({});
    f.screen.txtHeight = "12.5";
    f.screen.txtAge = "abc";
    f.screen.txtNetDown = "13.5";
    f.screen.txtStartIn = "40000";
    f.screen.txtWithin = "-3";
    f.screen.chkConAge = f.screen.chkConNetDown = true;
    f.screen.chkCut = {true, false, false, true};
    f.screen.chkCalcRate = f.screen.chkConifer = true;
    f.m.Calc.inputs.SavedVolRate = 777;
    SaveCalcData(f.session);

    // Numbers are rounded half to even; what cannot be read is 0.
    const CalcInputs& in = f.m.Calc.inputs;
    EXPECT_EQ(
        std::tuple(in.SavedHeight, in.SavedAge, in.SavedNetDown, in.SavedStartIn, in.SavedWithin),
        std::tuple(12, 0, 14, 40000, -3));
    EXPECT_EQ(in.ConstraintBits, 5);
    EXPECT_EQ(in.SavedCut, (std::array<int16_t, 4>{1, 0, 0, 1}));
    EXPECT_EQ(std::tuple(in.SavedCalcRate, in.SavedCalcYears, in.SavedConifer),
              std::tuple(1, 0, 1));
    EXPECT_EQ(in.SavedVolRate, 777);  // the rate of a run, not of the field

    // Into a fresh screen: the numbers come back whole, the set bits tick their boxes and the
    // unset ones leave theirs as they were.
    CalcFixture g({});
    g.m.Calc.inputs = in;
    g.screen.chkCut = {};
    g.screen.chkConHeight = true;
    LoadCalcData(g.session);
    const CalcScreen& s = g.screen;
    EXPECT_EQ(std::tuple(s.txtHeight, s.txtAge, s.txtStartIn, s.txtWithin, s.txtVolToCut),
              std::tuple("12", "0", "40000", "-3", "777"));
    EXPECT_EQ(std::tuple(s.chkConAge, s.chkConNetDown, s.chkConHeight, s.chkCalcRate, s.chkConifer),
              std::tuple(true, true, true, true, true));
    EXPECT_EQ(s.chkCut, (std::array<bool, 4>{true, false, false, true}));

    CalcFixture none({});
    none.m.Calc.inputs.ConstraintBits = 0;
    LoadCalcData(none.session);
    EXPECT_FALSE(none.screen.chkConAge);
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
