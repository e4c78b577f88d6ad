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
    // Gives each field, and each element of an array, a fresh value of its width in turn; a
    // fixed string gets a code cut to its size.
    template <typename... T>
    void fill(T&... fields) {
        (set(fields), ...);
    }

private:
    void set(int16_t& v) { v = i2(); }
    void set(int32_t& v) { v = i4(); }
    void set(float& v) { v = f4(); }
    void set(double& v) { v = f8(); }
    template <std::size_t N>
    void set(FixedString<N>& text) {
        text = code();
    }
    template <typename T, std::size_t N>
    void set(std::array<T, N>& values) {
        for (T& v : values) set(v);
    }

    int n_ = 0;
};

void fillPolygon(Model& m, int p, Distinct& d) {
    const auto i = static_cast<std::size_t>(p);
    PolyData& a = m.Poly[i];
    d.fill(a.AREA, a.AGE, a.VUTILIZ, a.FIZ, a.VSITEINDEX, a.VAGETOTAL, a.VHEIGHTTOTAL, a.CLOSURE,
           a.PSYU, a.PSYUBLOCK, a.VAF, a.STOCKING, a.VS, a.VSIDX, a.VP, a.VSICALC, a.TSICALC,
           a.REGION);
    a.COMP = d.code() + "7";
    d.fill(a.COMPL, a.DENSITY, a.THINNED, a.THIN, a.TAGETOTAL, a.REGEN, a.OAF1, a.OAF2, a.TS, a.TP,
           a.TSIDX, a.TH, a.TI, a.SILVI, a.PCPERC, a.PCNEXT, a.HAR);

    PolyCalc& c = m.PolyC[i];
    d.fill(c.SORT, c.LISTROW, c.EXCLUDE, c.DELETE, c.CALCFLAG, c.OWNERSHIP, c.REGENDELAY, c.VX,
           c.VCCCALC, c.CALCA, c.CALCB, c.MINCUTVOL, c.MINCUTDBH, c.MINCUTAGE);

    PolyMgmt& g = m.PolyM[i];
    d.fill(g.ROADAREA, g.TUTILIZ, g.NSRRESTOCKIN, g.NCRESTOCKIN);
    g.NCDESC = "NC stand " + d.code() + " of polygon " + std::to_string(p);
    d.fill(g.NCVOLHA, g.NCDECIDUOUS, g.NCHEIGHT, g.TG, g.COMTHIN, g.CTSTEMHA, g.CTHEIGHT,
           g.TIPSYCACHE, g.FERT, g.FINCREASE, g.FINCTYPE, g.FSTARTYEAR);

    for (HarvAgeRec& h : m.HarvAge[i])
        d.fill(h.MaiAge, h.VolAge, h.DiaAge, h.ConstraintAge, h.HarvestAge, h.MaxMAI);
    for (int r = 0; r < m.VYield.rowCount(); ++r) {
        YieldRow& row = m.VYield(p, r);
        d.fill(row.Dia, row.Vol, row.Ht, row.Mai, m.VMix(p, r));
    }
    for (int r = 0; r < m.TYield.rowCount(); ++r) {
        YieldRow& row = m.TYield(p, r);
        d.fill(row.Dia, row.Vol, row.Ht, row.Mai);
    }
}

void fillSettings(ProjectSettings& s, Distinct& d) {
    d.fill(s.REGENDELAY, s.PCNETDOWN, s.PLANHORZ, s.MINVOL, s.MINDIA, s.MINAGE, s.OAF1, s.OAF2,
           s.PCperc, s.PCnext, s.PCADJUSTFACT, s.SPLIT, s.VDYPPSYUB, s.TIPSYSITE, s.TIPSYHEIGHT,
           s.NETMAI, s.USERLEVEL, s.YIELDINC, s.OldColors, s.ALTWBS, s.COLORS, s.reserved1,
           s.reserved2);
    s.PCADJUSTHARVAGE = 1;
    s.YIELDMODE = 1;
}

void fillCalc(CalcState& c, Distinct& d) {
    CalcInputs& in = c.inputs;
    d.fill(in.reservedA, in.SavedNetDown, in.SavedHeight, in.SavedAge, in.SavedHeightPerc,
           in.SavedAgePerc, in.SavedVolRate, in.SavedStartIn, in.SavedCalcYears, in.SavedCalcRate,
           in.SavedCut, in.reservedFlag4, in.SavedDisPC, in.reservedFlag6, in.SavedHarvGap,
           in.SavedNoHarv, in.SavedWithin, in.reservedB, in.SavedConifer, in.SavedAreaRate,
           in.OrderColumn);
    in.ConstraintBits = 5;
    in.AreaRunSaved = 1;
    in.SortMethod = 4;
    in.Text1 = "first text field";
    in.Text2 = "second text field";
    in.Text3 = "third text field";

    c.BlockLast = 2;
    c.BlockList.resize(2);
    for (Block& b : c.BlockList)
        d.fill(b.Polygon, b.Status, b.Road, b.CutFraction, b.reserved, b.Curve, b.NextCurve, b.Area,
               b.DueYear, b.HarvestAge, b.StandYear, b.Method, b.ThinVol, b.ThinYear, b.ResidualAge,
               b.PrevBlock, b.NextBlock, b.Rotation);
    c.RoadLast = 3;
    c.RoadList.resize(3);
    for (RoadRec& r : c.RoadList)
        d.fill(r.RoadBlock, r.RoadArea, r.RoadYear, r.RoadCurve, r.RoadCut);
    c.CutCount = 2;
    c.CutList.resize(2);
    for (CutRec& x : c.CutList)
        d.fill(x.BlockIdx, x.YearsFromDue, x.CutAge, x.CutDbh, x.CutVolHa, x.CutArea, x.CutAreaCCE,
               x.CutMethod, x.StartYr, x.EndYr, x.CutYears, x.CutVolume, x.CutConifer,
               x.CutPotential);
    c.CalcHorizon = 2;
    c.YearTable.resize(2);
    int year = 0;
    for (YearRec& y : c.YearTable) {
        y.BlockNames = "blocks of year " + std::to_string(year++);
        d.fill(y.NumPolygons, y.AreaCCE, y.AreaRoad, y.AreaPC, y.reserved, y.AreaCC, y.AreaCT,
               y.AreaNC, y.AreaNSR, y.VolCC, y.VolPC, y.VolCT, y.VolRoad, y.VolConifer,
               y.VolDeciduous, y.MatureCon, y.MatureDec, y.ImmatureCon, y.ImmatureDec, y.InvVolume,
               y.InvArea, y.InvAreaHeight, y.InvAreaAge, y.AgeClassArea);
    }
    d.fill(c.NetArea);
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
void setOldFormNames(Model& m) {
    m.Poly[0].NAME = "093G045 1234";
    m.Poly[1].NAME = "ABC     12  ";
    m.Poly[2].NAME = "ABCDEFG HIJ ";
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
