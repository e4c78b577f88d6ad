#include "golden/arx_sample_model.hpp"

namespace arborex::test {

namespace {

// Hands out values that differ from each other in both of their low bytes, so that a field
// read from a neighbour's place, or with its bytes swapped, never passes for itself.
class Distinct {
public:
    int16_t i2() { return static_cast<int16_t>(300 + (++n_ * 263) % 32000); }
    int32_t i4() { return 70001 + 1031 * ++n_; }
    float f4() { return 0.5f + static_cast<float>(++n_) * 1.25f; }
    double f8() { return 1000.125 + static_cast<double>(++n_) * 3.5; }
    std::string code() {
        ++n_;
        return {static_cast<char>('A' + n_ % 26), static_cast<char>('A' + (n_ / 26) % 26)};
    }
    template <std::size_t N>
    void fill(std::array<int16_t, N>& values) {
        for (auto& v : values) v = i2();
    }

private:
    int n_ = 0;
};

void fillPolygon(Model& m, int p, Distinct& d) {
    const auto i = static_cast<std::size_t>(p);
    PolyData& poly = m.Poly[i];
    poly.AREA = d.f4();
    poly.AGE = d.i2();
    poly.VUTILIZ = d.f4();
    poly.FIZ = d.code().substr(0, 1);
    poly.VSITEINDEX = d.f4();
    poly.VAGETOTAL = d.i2();
    poly.VHEIGHTTOTAL = d.i2();
    poly.CLOSURE = d.i2();
    poly.PSYU = d.i2();
    poly.PSYUBLOCK = d.code().substr(0, 1);
    poly.VAF = d.f4();
    poly.STOCKING = d.code().substr(0, 1);
    for (auto& code : poly.VS) code = d.code();
    d.fill(poly.VSIDX);
    d.fill(poly.VP);
    poly.VSICALC = d.f4();
    poly.TSICALC = d.f4();
    poly.REGION = d.code();
    poly.COMP = d.code() + "7";
    poly.COMPL = d.code().substr(0, 1);
    poly.DENSITY = d.i4();
    poly.THINNED = d.i4();
    poly.THIN = d.i2();
    poly.TAGETOTAL = d.i2();
    poly.REGEN = d.i2();
    poly.OAF1 = d.i2();
    poly.OAF2 = d.i2();
    for (auto& code : poly.TS) code = d.code();
    d.fill(poly.TP);
    d.fill(poly.TSIDX);
    d.fill(poly.TH);
    d.fill(poly.TI);
    poly.SILVI = d.i2();
    poly.PCPERC = d.i2();
    poly.PCNEXT = d.i2();
    d.fill(poly.HAR);

    PolyCalc& calc = m.PolyC[i];
    calc.SORT = d.i2();
    calc.LISTROW = d.i2();
    calc.EXCLUDE = d.i2();
    calc.DELETE = d.i2();
    calc.CALCFLAG = d.i2();
    calc.OWNERSHIP = d.i2();
    calc.REGENDELAY = d.i2();
    d.fill(calc.VX);
    calc.VCCCALC = d.f4();
    calc.CALCA = d.i2();
    calc.CALCB = d.i2();
    calc.MINCUTVOL = {d.f4(), d.f4()};
    calc.MINCUTDBH = {d.f4(), d.f4()};
    d.fill(calc.MINCUTAGE);

    PolyMgmt& g = m.PolyM[i];
    g.ROADAREA = d.f4();
    g.TUTILIZ = d.f4();
    g.NSRRESTOCKIN = d.i2();
    g.NCRESTOCKIN = d.i2();
    g.NCDESC = "NC stand " + d.code() + " of polygon " + std::to_string(p);
    g.NCVOLHA = d.f4();
    g.NCDECIDUOUS = d.i2();
    g.NCHEIGHT = d.i2();
    d.fill(g.TG);
    g.COMTHIN = d.i2();
    g.CTSTEMHA = d.i2();
    g.CTHEIGHT = d.f4();
    d.fill(g.TIPSYCACHE);
    g.FERT = d.i2();
    g.FINCREASE = d.f4();
    g.FINCTYPE = d.i2();
    g.FSTARTYEAR = d.i2();

    for (HarvAgeRec& h : m.HarvAge[i]) {
        h.MaiAge = d.i2();
        h.VolAge = d.i2();
        h.DiaAge = d.i2();
        h.ConstraintAge = d.i2();
        h.HarvestAge = d.i2();
        h.MaxMAI = d.f4();
    }
    for (int r = 0; r < m.VYield.rowCount(); ++r) {
        m.VYield(p, r) = {d.i2(), d.i2(), d.i2(), d.f4()};
        for (auto& share : m.VMix(p, r)) share = d.i2();
    }
    for (int r = 0; r < m.TYield.rowCount(); ++r) m.TYield(p, r) = {d.i2(), d.i2(), d.i2(), d.f4()};
}

void fillSettings(ProjectSettings& s, Distinct& d) {
    s.REGENDELAY = d.i2();
    s.PCNETDOWN = d.i2();
    s.PLANHORZ = d.i2();
    s.MINVOL = d.f4();
    s.MINDIA = d.f4();
    s.MINAGE = d.i2();
    s.OAF1 = d.i2();
    s.OAF2 = d.i2();
    s.PCperc = d.i2();
    s.PCnext = d.i2();
    s.PCADJUSTFACT = d.f4();
    s.PCADJUSTHARVAGE = 1;
    s.SPLIT = d.f4();
    s.VDYPPSYUB = d.i2();
    s.TIPSYSITE = d.i2();
    s.TIPSYHEIGHT = d.i2();
    s.NETMAI = d.i2();
    s.USERLEVEL = d.i2();
    s.YIELDMODE = 1;
    s.YIELDINC = d.i2();
    for (auto& colour : s.OldColors) colour = d.f8();
    s.ALTWBS = d.i2();
    for (auto& colour : s.COLORS) colour = d.i4();
    d.fill(s.reserved1);
    d.fill(s.reserved2);
}

void fillCalc(CalcState& c, Distinct& d) {
    CalcInputs& in = c.inputs;
    in.reservedA = d.i2();
    in.ConstraintBits = 5;
    in.SavedNetDown = d.i2();
    in.SavedHeight = d.i2();
    in.SavedAge = d.i2();
    in.SavedHeightPerc = d.i2();
    in.SavedAgePerc = d.i2();
    in.SavedVolRate = d.i4();
    in.SavedStartIn = d.i4();
    in.SavedCalcYears = d.i2();
    in.SavedCalcRate = d.i2();
    d.fill(in.SavedCut);
    in.reservedFlag4 = d.i2();
    in.SavedDisPC = d.i2();
    in.reservedFlag6 = d.i2();
    in.SavedHarvGap = d.i2();
    in.SavedNoHarv = d.i2();
    in.SavedWithin = d.i2();
    in.AreaRunSaved = 1;
    d.fill(in.reservedB);
    in.SavedConifer = d.i2();
    in.SavedAreaRate = d.f8();
    in.OrderColumn = d.i2();
    in.SortMethod = 4;
    in.Text1 = "first text field";
    in.Text2 = "second text field";
    in.Text3 = "third text field";

    c.BlockLast = 2;
    c.BlockList.resize(2);
    for (Block& b : c.BlockList)
        b = {d.i2(), d.i2(), d.i2(), d.f4(), d.i4(), d.i2(), d.i2(), d.f4(), d.i2(),
             d.i2(), d.i2(), d.i2(), d.i2(), d.i2(), d.i2(), d.i2(), d.i2(), d.i2()};
    c.RoadLast = 3;
    c.RoadList.resize(3);
    for (RoadRec& r : c.RoadList) r = {d.i2(), d.f4(), d.i2(), d.i2(), d.f4()};
    c.CutCount = 2;
    c.CutList.resize(2);
    for (CutRec& x : c.CutList)
        x = {d.i2(), d.i2(), d.i2(), d.f4(), d.f4(), d.f4(), d.f4(),
             d.i2(), d.i2(), d.i2(), d.f4(), d.f4(), d.f4(), d.f4()};
    c.CalcHorizon = 2;
    c.YearTable.resize(2);
    int year = 0;
    for (YearRec& y : c.YearTable) {
        y.NumPolygons = d.i2();
        y.BlockNames = "blocks of year " + std::to_string(year++);
        for (float* v :
             {&y.AreaCCE,       &y.AreaRoad,    &y.AreaPC,      &y.reserved,     &y.AreaCC,
              &y.AreaCT,        &y.AreaNC,      &y.AreaNSR,     &y.VolCC,        &y.VolPC,
              &y.VolCT,         &y.VolRoad,     &y.VolConifer,  &y.VolDeciduous, &y.MatureCon,
              &y.MatureDec,     &y.ImmatureCon, &y.ImmatureDec, &y.InvVolume,    &y.InvArea,
              &y.InvAreaHeight, &y.InvAreaAge})
            *v = d.f4();
        for (float& area : y.AgeClassArea) area = d.f4();
    }
    c.NetArea = d.f4();
}

}  // namespace

Model distinctModel() {
    Model m;
    ResetVars(m);
    SetDefaults(m);
    ProjectSettings& s = m.Settings;
    Distinct d;
    fillSettings(s, d);
    s.YieldMaxAge = {6, 25};
    s.YieldMinAge = {2, 5};
    s.YieldIncAge = {1, 10};
    SetAgeInc(m);
    ResizePolygonArrays(m, 3);
    m.LastPoly = 2;

    ProjectHeader& h = m.Header;
    h.FileStamp = "March 29, 2007 - 3.226Release";
    h.Licence = "A12345";
    h.District = "Kamloops Forest District";
    h.Company = "Tenure Holder Ltd.";
    h.User = "J. Forester";
    h.Scenario = "Scenario 7";
    h.VDYPVersion = "6.6d";
    h.TIPSYVersion = "3.2m";
    h.StartDate = 39170.25;
    h.LastDate = 39171.75;
    h.FileVersion = 3226;

    const char* names[] = {"093G045 1234", "ABC_12", "ABCDEFGHIJ"};
    const std::array<int16_t, 2> managements[] = {{0, 1}, {1, 0}, {1, 1}};
    const std::array<int16_t, 2> states[] = {{3, 2}, {2, 3}, {1, 3}};
    for (int p = 0; p < 3; ++p) {
        fillPolygon(m, p, d);
        const auto i = static_cast<std::size_t>(p);
        m.Poly[i].NAME = names[i];
        m.Poly[i].MGNT = managements[i];
        m.Poly[i].YIELDSTATE = states[i];
    }

    m.CutOrderLast = 2;
    m.CutOrder = {2, 0, 1};
    m.CutOrderKey = {30, 10, 20};
    fillCalc(m.Calc, d);
    m.Report = {5, 0, -1, -1, -1, 0, 0};
    return m;
}

std::string polygonArrayMismatch(const Model& m) {
    const std::size_t count = m.Poly.size();
    const std::size_t needed = m.LastPoly >= 0 ? static_cast<std::size_t>(m.LastPoly) + 1 : 1;
    if (m.LastPoly < -1) return "LastPoly below -1";
    if (count != needed)
        return "Poly holds " + std::to_string(count) + " for LastPoly " +
               std::to_string(m.LastPoly);
    if (m.PolyC.size() != count || m.PolyM.size() != count || m.HarvAge.size() != count)
        return "polygon arrays differ in size";
    const int n = static_cast<int>(count);
    if (m.VYield.polygonCount() != n || m.VMix.polygonCount() != n || m.TYield.polygonCount() != n)
        return "curve grids hold another polygon count";
    if (m.VYield.rowCount() != m.Settings.YieldRows[0] + 1 ||
        m.VMix.rowCount() != m.Settings.YieldRows[0] + 1)
        return "VDYP rows differ from YieldRows[0]";
    if (m.TYield.rowCount() != m.Settings.YieldRows[1] + 1)
        return "TIPSY rows differ from YieldRows[1]";
    if (m.CutOrderLast < -1 || m.CutOrder.size() < static_cast<std::size_t>(m.CutOrderLast + 1))
        return "CutOrder shorter than CutOrderLast";
    return {};
}

}  // namespace arborex::test
