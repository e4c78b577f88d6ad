#include "yield/polygon_changes.hpp"

#include <cstddef>

#include "base/errors.hpp"
#include "base/messages.hpp"
#include "base/numeric.hpp"

namespace arborex {

namespace {

// Which curve a difference makes stale: `always` under both rules, `screenOnly` only when the
// user changed it on screen (an import of a VAF or a treatment leaves the curve as it is).
struct Mark {
    int always = StaleNone;
    int screenOnly = StaleNone;
};
constexpr Mark kNone{};
constexpr Mark kVdyp{StaleVDYP};
constexpr Mark kTipsy{StaleTIPSY};
constexpr Mark kBoth{StaleBoth};
constexpr Mark kVdypOnScreen{StaleNone, StaleVDYP};
constexpr Mark kTipsyOnScreen{StaleNone, StaleTIPSY};

template <std::size_t N>
bool differ(const FixedString<N>& a, const FixedString<N>& b) {
    return a.str() != b.str();
}
template <std::size_t N>
bool differ(const std::array<Code2, N>& a, const std::array<Code2, N>& b) {
    for (std::size_t s = 0; s < N; ++s)
        if (a[s].str() != b[s].str()) return true;
    return false;
}
template <typename T>
bool differ(const T& a, const T& b) {
    return a != b;
}

class Comparison {
public:
    explicit Comparison(bool importRules) : importRules_(importRules) {}

    template <typename T>
    void check(const char* label, const T& before, const T& after, Mark mark) {
        if (!differ(before, after)) return;
        result.labels += label;
        result.labels += "\r\n";
        result.marks |= mark.always;
        if (!importRules_) result.marks |= mark.screenOnly;
    }

    PolygonChanges result;

private:
    bool importRules_;
};

}  // namespace

PolygonChanges comparePolygon(const PolyData& b, const PolyCalc& bc, const PolyMgmt& bm,
                              const PolyData& a, const PolyCalc& ac, const PolyMgmt& am,
                              bool importRules) {
    Comparison c(importRules);
    c.check("Area", b.AREA, a.AREA, kNone);
    c.check("Age", b.AGE, a.AGE, kNone);
    c.check("Fiz", b.FIZ, a.FIZ, kBoth);
    c.check("Ownership", bc.OWNERSHIP, ac.OWNERSHIP, kNone);
    c.check("Road Area", bm.ROADAREA, am.ROADAREA, kNone);
    c.check("Regen Delay", bc.REGENDELAY, ac.REGENDELAY, kNone);
    c.check("NSR Restock In", bm.NSRRESTOCKIN, am.NSRRESTOCKIN, kNone);
    c.check("Non-Commercial Description", bm.NCDESC, am.NCDESC, kNone);
    c.check("Non-Commercial Restockin", bm.NCRESTOCKIN, am.NCRESTOCKIN, kNone);
    c.check("Non-Commercial Volume/Ha", bm.NCVOLHA, am.NCVOLHA, kNone);
    c.check("Non-Commercial Deciduous", bm.NCDECIDUOUS, am.NCDECIDUOUS, kNone);
    c.check("Non-Commercial Height", bm.NCHEIGHT, am.NCHEIGHT, kNone);
    c.check("VDYP Utilization", b.VUTILIZ, a.VUTILIZ, kVdyp);
    c.check("Site Index", b.VSITEINDEX, a.VSITEINDEX, kVdyp);
    c.check("Age In", b.VAGETOTAL, a.VAGETOTAL, kVdyp);
    c.check("Height In", b.VHEIGHTTOTAL, a.VHEIGHTTOTAL, kVdyp);
    c.check("Crown Closure", b.CLOSURE, a.CLOSURE, kVdyp);
    c.check("Stocking Class", b.STOCKING, a.STOCKING, kVdyp);
    c.check("PSYU", b.PSYU, a.PSYU, kVdyp);
    c.check("PSYU Block", b.PSYUBLOCK, a.PSYUBLOCK, kVdyp);
    c.check("Region", b.REGION, a.REGION, kVdyp);
    c.check("Compartment", b.COMP, a.COMP, kVdyp);
    c.check("Compartment Letter", b.COMPL, a.COMPL, kVdyp);
    c.check("VAF", b.VAF, a.VAF, kVdypOnScreen);
    c.check("VDYP Species Type", b.VS, a.VS, kVdyp);
    c.check("VDYP Species Composition", b.VP, a.VP, kVdyp);
    // Excluding a species only reshares the curve's volume; the curve itself stands.
    c.check("VDYP Include Species", bc.VX, ac.VX, kNone);
    c.result.vxChanged = bc.VX != ac.VX;
    c.check("TIPSY Species Type", b.TS, a.TS, kTipsy);
    c.check("TIPSY Species Composition", b.TP, a.TP, kTipsy);
    c.check("TIPSY Species Height", b.TH, a.TH, kTipsy);
    c.check("TIPSY Species Site Index", b.TI, a.TI, kTipsy);
    c.check("TIPSY Genetic Gain", bm.TG, am.TG, kTipsyOnScreen);
    c.check("TIPSY Total Age", b.TAGETOTAL, a.TAGETOTAL, kTipsyOnScreen);
    c.check("TIPSY Utilization", bm.TUTILIZ, am.TUTILIZ, kTipsy);
    c.check("Density (S/ha)", b.DENSITY, a.DENSITY, kTipsy);
    c.check("Thinned (S/ha)", b.THINNED, a.THINNED, kTipsy);
    c.check("Thin", b.THIN, a.THIN, kTipsy);
    c.check("Regeneration Type", b.REGEN, a.REGEN, kTipsy);
    c.check("OAF1", b.OAF1, a.OAF1, kTipsy);
    c.check("OAF2", b.OAF2, a.OAF2, kTipsy);
    c.check("Commercial Thin", bm.COMTHIN, am.COMTHIN, kTipsyOnScreen);
    c.check("Commerical Thin Height", bm.CTHEIGHT, am.CTHEIGHT, kTipsyOnScreen);
    c.check("Commerical Thin Stems / Ha", bm.CTSTEMHA, am.CTSTEMHA, kTipsyOnScreen);
    c.check("Fertilization", bm.FERT, am.FERT, kTipsyOnScreen);
    c.check("Fertilization Increase Amount", bm.FINCREASE, am.FINCREASE, kTipsyOnScreen);
    c.check("Fertilization Increase Type", bm.FINCTYPE, am.FINCTYPE, kTipsyOnScreen);
    c.check("Fertilization Start Year", bm.FSTARTYEAR, am.FSTARTYEAR, kTipsyOnScreen);
    // The two cut-method buttons: the one now chosen names the change.
    c.check(a.SILVI == 0 ? "Cut Type = Clear Cut" : "Cut Type = Partial Cut", b.SILVI, a.SILVI,
            kNone);
    c.check("Partial Cut Percent", b.PCPERC, a.PCPERC, kNone);
    c.check("Next Partial Cut In", b.PCNEXT, a.PCNEXT, kNone);
    c.check("Exisiting Management", b.MGNT[0], a.MGNT[0], kNone);
    c.check("Future Management", b.MGNT[1], a.MGNT[1], kNone);
    return c.result;
}

std::string changesHeading(const PolygonChanges& changes) {
    std::string heading = "The Following variables have been changed:\r\n";
    if (changes.marks & StaleTIPSY) heading += "TIPSY must be recalculated\r\n";
    if (changes.marks & StaleVDYP) heading += "VDYP must be recalculated\r\n";
    return heading;
}

void applyStaleMarks(Model& m, int polygon, int marks) {
    const auto p = static_cast<std::size_t>(polygon);
    PolyData& data = m.Poly.at(p);
    // A stale curve loses its harvest age at once, until the next calculation.
    if (marks & StaleVDYP) {
        m.PolyC.at(p).VCCCALC = 0.0f;
        data.VSICALC = 0.0f;
        m.HarvAge.at(p)[0].HarvestAge = 0;
        data.YIELDSTATE[0] = 1;
    }
    if (marks & StaleTIPSY) {
        m.HarvAge.at(p)[1].HarvestAge = 0;
        data.YIELDSTATE[1] = 1;
    }
}

void updateVDYPmix(Model& m, int polygon) {
    if (polygon < 0 || polygon > m.LastPoly) throw ArborexError(ErrSubscript);
    const ProjectSettings& s = m.Settings;
    const std::array<int16_t, 6>& include = m.PolyC.at(static_cast<std::size_t>(polygon)).VX;
    if (s.YieldIncAge[0] == 0) throw ArborexError(ErrDivisionByZero);
    for (int age = s.YieldMinAge[0]; age <= s.YieldMaxAge[0]; age += s.YieldIncAge[0]) {
        const int row = toI2(roundHalfEven(static_cast<double>(age - s.YieldMinAge[0]) /
                                           static_cast<double>(s.YieldIncAge[0])));
        const MixRow& mix = m.VMix(polygon, row);
        int32_t sum = 0;
        for (std::size_t slot = 0; slot < mix.size(); ++slot)
            if (include[slot] != 0) sum += mix[slot];
        m.VYield(polygon, row).Vol = toI2(clamp32767(sum));
    }
}

void takePolygonSnapshot(Model& m) {
    if (m.CurPoly < 0) return;
    const auto p = static_cast<std::size_t>(m.CurPoly);
    m.OldPoly = m.Poly.at(p);
    m.OldPolyC = m.PolyC.at(p);
    m.OldPolyM = m.PolyM.at(p);
}

ChangeOutcome polychanged(Model& m, Prompt& prompt) {
    if (m.CurPoly < 0) return ChangeOutcome::NoChange;
    const auto p = static_cast<std::size_t>(m.CurPoly);
    const PolygonChanges changes = comparePolygon(m.OldPoly, m.OldPolyC, m.OldPolyM, m.Poly.at(p),
                                                  m.PolyC.at(p), m.PolyM.at(p), false);
    if (!changes.any()) return ChangeOutcome::NoChange;
    if (m.Settings.USERLEVEL == 1) {
        const int16_t answer = nmsgbox(
            m.Messages, prompt, changesHeading(changes) + "Do you want to keep these changes?",
            changes.labels, "Keep Changes?", MsgYes | MsgNo, 2, m.MsgResult);
        if (answer == MsgNo) {
            m.Poly[p] = m.OldPoly;
            m.PolyC[p] = m.OldPolyC;
            m.PolyM[p] = m.OldPolyM;
            return ChangeOutcome::Restored;
        }
    }
    takePolygonSnapshot(m);
    applyStaleMarks(m, m.CurPoly, changes.marks);
    if (changes.vxChanged) updateVDYPmix(m, m.CurPoly);
    return ChangeOutcome::Kept;
}

void DoYieldsNeedToBeUpdated(Model& m, int polygon) {
    if (polygon < 0 || polygon > m.LastPoly) throw ArborexError(ErrSubscript);
    const auto p = static_cast<std::size_t>(polygon);
    const PolygonChanges changes = comparePolygon(m.Poly.at(p), m.PolyC.at(p), m.PolyM.at(p),
                                                  m.NewPoly, m.NewPolyC, m.NewPolyM, true);
    // The new records are stored first, so that the marks and the reshared volume stand on
    // what the polygon now holds.
    m.Poly[p] = m.NewPoly;
    m.PolyC[p] = m.NewPolyC;
    m.PolyM[p] = m.NewPolyM;
    applyStaleMarks(m, polygon, changes.marks);
    if (changes.vxChanged) updateVDYPmix(m, polygon);
}

}  // namespace arborex
