// Resetting and sizing the project model.

#include <gtest/gtest.h>

#include "base/errors.hpp"
#include "model/model.hpp"

namespace arborex {
namespace {

TEST(Model, ResetVarsLeavesAnEmptyProjectWithAFreshHeader) {
    Model m;
    m.LastPoly = 9;
    m.CurPoly = 3;
    m.CutOrderLast = 4;
    m.Header.Licence = "A1";
    m.Calc.BlockLast = 12;
    m.Calc.inputs.SortMethod = 2;
    ResetVars(m);
    EXPECT_EQ(m.LastPoly, -1);
    EXPECT_EQ(m.CurPoly, -1);
    EXPECT_EQ(m.CutOrderLast, -1);
    EXPECT_EQ(m.Header.FileStamp.str(), "March 29, 2007 - 3.226Release");
    EXPECT_EQ(m.Header.FileVersion, 3226);
    EXPECT_EQ(m.Header.Licence.str(), "");
    EXPECT_GT(m.Header.StartDate, 45000.0);
    EXPECT_EQ(m.Calc.BlockLast, -1);
    EXPECT_EQ(m.Calc.inputs.SortMethod, -3);
    EXPECT_EQ(m.DefaultPoly.VS[0].raw(), "  ");
    EXPECT_EQ(m.DefaultPolyC.VX, (std::array<int16_t, 6>{1, 1, 1, 1, 1, 1}));
}

TEST(Model, DefaultsGiveCurvesOf301And36Rows) {
    Model m;
    SetDefaults(m);
    EXPECT_EQ(m.Settings.YieldRows, (std::array<int16_t, 2>{300, 35}));
    EXPECT_EQ(m.Settings.PLANHORZ, 250);
    EXPECT_FLOAT_EQ(m.Settings.PCADJUSTFACT, 0.8f);
    EXPECT_EQ(m.Report.RptShowPoly, -1);
    EXPECT_EQ(m.Report.RptAddRow, 0);
    EmptyArrays(m);
    EXPECT_EQ(m.VYield.rowCount(), 301);
    EXPECT_EQ(m.VMix.rowCount(), 301);
    EXPECT_EQ(m.TYield.rowCount(), 36);
    EXPECT_EQ(m.VYield.polygonCount(), 1);
}

TEST(Model, SetAgeIncDividesWholeNumbersAndRefusesAZeroStep) {
    Model m;
    m.Settings.YieldMaxAge = {305, 355};
    m.Settings.YieldMinAge = {0, 5};
    m.Settings.YieldIncAge = {2, 10};
    SetAgeInc(m);
    EXPECT_EQ(m.Settings.YieldRows, (std::array<int16_t, 2>{152, 35}));
    m.Settings.YieldIncAge[1] = 0;
    EXPECT_THROW(SetAgeInc(m), ArborexError);
}

TEST(Model, ResizingKeepsEveryPolygonsRows) {
    Model m;
    SetDefaults(m);
    ResizePolygonArrays(m, 2);
    m.VYield(1, 300).Vol = 77;
    m.TYield(1, 35).Ht = 5;
    ResizePolygonArrays(m, 4);
    EXPECT_EQ(m.VYield(1, 300).Vol, 77);
    EXPECT_EQ(m.TYield(1, 35).Ht, 5);
    EXPECT_EQ(m.VYield(3, 300).Vol, 0);
    EXPECT_THROW(m.VYield(4, 0), ArborexError);
    EXPECT_THROW(m.TYield(0, 36), ArborexError);
}

}  // namespace
}  // namespace arborex
