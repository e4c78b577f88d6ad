#include "model/model.hpp"

#include "base/dates.hpp"
#include "base/errors.hpp"
#include "base/numeric.hpp"
#include "model/colours.hpp"

namespace arborex {

void ResetCalcState(Model& m) {
    m.Calc = CalcState{};
}

void ResetVars(Model& m) {
    m.DefaultPoly.YIELDSTATE = {0, 0};
    for (auto& code : m.DefaultPoly.VS) code = "  ";
    for (auto& code : m.DefaultPoly.TS) code = "  ";
    m.DefaultPolyC.VX.fill(1);

    m.LastPoly = -1;
    m.CutOrderLast = -1;
    m.CurPoly = -1;
    // No polygon is on screen any more, so nothing is left to compare against.
    m.OldPoly = PolyData{};
    m.OldPolyC = PolyCalc{};
    m.OldPolyM = PolyMgmt{};
    m.CutOrder.assign(1, 0);
    m.CutOrderKey.assign(1, 0);

    m.Header.StartDate = dateNow();
    m.Header.FileStamp = kProgramStamp;
    m.Header.FileVersion = kCurrentFileVersion;
    m.Header.Scenario = "";
    m.Header.Licence = "";
    m.Header.District = "";
    m.Header.Company = "";
    m.Header.User = "";
    m.Header.LastDate = dateNow();
    m.Header.VDYPVersion = "";
    m.Header.TIPSYVersion = "";

    ResetCalcState(m);
    m.OldFormat = m.NewTIPSY = m.OldVersion = m.LoadGood = false;
}

void ResizePolygonArrays(Model& m, int count) {
    if (count < 0) throw ArborexError(ErrSubscript);
    const auto n = static_cast<std::size_t>(count);
    m.Poly.resize(n);
    m.PolyC.resize(n);
    m.PolyM.resize(n);
    m.HarvAge.resize(n);
    m.VYield.resize(count, m.Settings.YieldRows[0] + 1);
    m.VMix.resize(count, m.Settings.YieldRows[0] + 1);
    m.TYield.resize(count, m.Settings.YieldRows[1] + 1);
}

void EmptyArrays(Model& m) {
    m.Poly.assign(1, PolyData{});
    m.PolyC.assign(1, PolyCalc{});
    m.PolyM.assign(1, PolyMgmt{});
    m.HarvAge.assign(1, {});
    m.VYield.assign(1, m.Settings.YieldRows[0] + 1);
    m.VMix.assign(1, m.Settings.YieldRows[0] + 1);
    m.TYield.assign(1, m.Settings.YieldRows[1] + 1);
}

void SetAgeInc(Model& m) {
    auto& s = m.Settings;
    for (int model = 0; model < 2; ++model) {
        if (s.YieldIncAge[model] == 0) throw ArborexError(ErrDivisionByZero);
        int span = s.YieldMaxAge[model] - s.YieldMinAge[model];
        s.YieldRows[model] = toI2(span / s.YieldIncAge[model]);
    }
}

void SetDefaults(Model& m) {
    ProjectSettings& s = m.Settings;
    s.REGENDELAY = 0;
    s.PCNETDOWN = 20;
    s.PLANHORZ = 250;
    s.MINVOL = 150.0f;
    s.MINDIA = 15.0f;
    s.MINAGE = 40;
    s.OAF1 = 15;
    s.OAF2 = 5;
    s.PCperc = 20;
    s.PCnext = 20;
    s.PCADJUSTFACT = 0.8f;
    s.PCADJUSTHARVAGE = 0;
    s.SPLIT = 100.0f;
    s.VDYPPSYUB = 0;
    s.TIPSYSITE = 0;
    s.TIPSYHEIGHT = 0;
    s.NETMAI = 1;
    s.USERLEVEL = 1;
    s.YIELDMODE = 1;
    s.YieldMaxAge = {300, 350};
    s.YieldMinAge = {0, 0};
    s.YieldIncAge = {1, 10};
    s.YIELDINC = 10;
    SetAgeInc(m);
    m.Report = ReportOptions{};
}

void programDefaults(Model& m) {
    ResetVars(m);
    SetDefaults(m);
    setColours(m);
}

}  // namespace arborex
