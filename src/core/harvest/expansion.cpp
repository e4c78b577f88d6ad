#include "harvest/expansion.hpp"

#include <algorithm>
#include <string>

#include "base/errors.hpp"
#include "base/messages.hpp"

namespace arborex {

namespace {

constexpr int kMaxCurves = 32767;

// The four values of a curve at one grid step, already in m3/ha, m and cm.
struct StepValues {
    float con = 0.0f;
    float dec = 0.0f;
    float height = 0.0f;
    float dbh = 0.0f;
};

int curvesNeeded(const Model& m) {
    int count = 0;
    for (int p = 0; p <= m.LastPoly; ++p) {
        const PolyData& poly = m.Poly[static_cast<std::size_t>(p)];
        for (int t = 0; t <= 1; ++t)
            if (poly.MGNT[0] == t || poly.MGNT[1] == t) ++count;
    }
    return count;
}

// Per species table row: 1 when VDYP marks the species deciduous. A row the table does not have
// counts as conifer.
std::vector<char> deciduousFlags(const Model& m) {
    std::vector<char> flags(m.Ref.SpeciesV.size(), 0);
    for (std::size_t i = 0; i < flags.size(); ++i) flags[i] = m.Ref.SpeciesV[i].Deciduous != 0;
    return flags;
}

void tipsySteps(const Model& m, int p, std::vector<StepValues>& steps) {
    const YieldRow* rows = m.TYield.rowsOf(p);
    for (std::size_t k = 0; k < steps.size(); ++k) {
        steps[k].con = static_cast<float>(rows[k].Vol) / 10.0f;
        steps[k].dec = 0.0f;
        steps[k].height = static_cast<float>(rows[k].Ht) / 10.0f;
        steps[k].dbh = static_cast<float>(rows[k].Dia) / 10.0f;
    }
}

// Volume from the species split, so that an excluded species does not exist for the simulation.
void vdypSteps(const Model& m, int p, const std::vector<char>& deciduous,
               std::vector<StepValues>& steps) {
    const YieldRow* rows = m.VYield.rowsOf(p);
    const MixRow* mix = m.VMix.rowsOf(p);
    const PolyData& poly = m.Poly[static_cast<std::size_t>(p)];
    const PolyCalc& calc = m.PolyC[static_cast<std::size_t>(p)];
    for (std::size_t k = 0; k < steps.size(); ++k) {
        float con = 0.0f;
        float dec = 0.0f;
        for (std::size_t s = 0; s < 6; ++s) {
            if (calc.VX[s] == 0) continue;
            const float slot = static_cast<float>(mix[k][s]) / 10.0f;
            const auto species = static_cast<std::size_t>(poly.VSIDX[s]);
            if (species < deciduous.size() && deciduous[species])
                dec += slot;
            else
                con += slot;
        }
        steps[k] = {con, dec, static_cast<float>(rows[k].Ht) / 10.0f,
                    static_cast<float>(rows[k].Dia) / 10.0f};
    }
}

// A grid step past the curve's last row: the grid's range is not a multiple of its step.
const StepValues& stepAt(const std::vector<StepValues>& steps, std::size_t k) {
    if (k >= steps.size()) throw ArborexError(ErrSubscript, "yield curve grid step");
    return steps[k];
}

float between(float frac, float low, float high) {
    const float lowPart = (1.0f - frac) * low;
    const float highPart = frac * high;
    return lowPart + highPart;
}

void setAge(ExpandedCurve& curve, int age, const StepValues& values) {
    const auto i = static_cast<std::size_t>(age);
    curve.Age[i] = {values.con, values.dec, values.height, values.dbh};
}

// The grid of one model, and the fraction of the way from one grid age to the next of each
// year in between, worked out once for every curve.
struct AgeGrid {
    int minAge = 0;
    int maxAge = 0;
    int step = 1;
    std::size_t lastRow = 0;
    std::vector<float> fractions;

    AgeGrid(const Model& m, int t) {
        const auto tt = static_cast<std::size_t>(t);
        minAge = m.Settings.YieldMinAge[tt];
        maxAge = m.Settings.YieldMaxAge[tt];
        step = m.Settings.YieldIncAge[tt];
        if (step == 0) throw ArborexError(ErrDivisionByZero, "yield curve age step");
        if (step < 0 || m.Settings.YieldRows[tt] < 0)
            throw ArborexError(ErrSubscript, "yield curve age step");
        lastRow = static_cast<std::size_t>(m.Settings.YieldRows[tt]);
        fractions.resize(static_cast<std::size_t>(step));
        for (int j = 0; j < step; ++j)
            fractions[static_cast<std::size_t>(j)] =
                static_cast<float>(j) / static_cast<float>(step);
    }
};

// Below the grid 0, from its top age on the last step, in between the straight line from one
// grid step to the next. Walking the grid step by step gives every year its step and fraction
// without a division per year.
void fillByAge(const AgeGrid& grid, const std::vector<StepValues>& steps, ExpandedCurve& curve) {
    const StepValues zero;
    const int firstOnGrid = std::min(std::max(grid.minAge, 0), kExpandedTopAge + 1);
    for (int a = 0; a < firstOnGrid; ++a) setAge(curve, a, zero);
    std::size_t k = 0;
    for (int base = grid.minAge; base < grid.maxAge && base <= kExpandedTopAge;
         base += grid.step, ++k) {
        const StepValues& low = stepAt(steps, k);
        const StepValues& high = stepAt(steps, k + 1);
        for (int j = 0; j < grid.step; ++j) {
            const int a = base + j;
            if (a >= grid.maxAge || a > kExpandedTopAge) break;
            if (a < 0) continue;
            const float f = grid.fractions[static_cast<std::size_t>(j)];
            setAge(curve, a,
                   {between(f, low.con, high.con), between(f, low.dec, high.dec),
                    between(f, low.height, high.height), between(f, low.dbh, high.dbh)});
        }
    }
    const int firstAtTop = std::max({grid.maxAge, grid.minAge, 0});
    if (firstAtTop > kExpandedTopAge) return;
    const StepValues& top = stepAt(steps, grid.lastRow);
    for (int a = firstAtTop; a <= kExpandedTopAge; ++a) setAge(curve, a, top);
}

// Grid steps a curve of model t holds.
std::size_t stepCount(const Model& m, int t) {
    const int rows = t == 0 ? m.VYield.rowCount() : m.TYield.rowCount();
    return static_cast<std::size_t>(std::max(rows, 0));
}

}  // namespace

void ExpandYields(const Model& m, StatusScreen& status, ExpandedYields& yields) {
    const auto polygons = static_cast<std::size_t>(m.LastPoly + 1);
    yields.PolyCurveExisting.assign(polygons, 0);
    yields.PolyCurveFuture.assign(polygons, 0);
    yields.CurveCount = 0;
    const int needed = curvesNeeded(m);
    if (needed > kMaxCurves)
        throw ArborexError(ErrOverflow,
                           std::to_string(needed) + " yield curves; a calculation can hold 32,767");
    // Every age of every curve is written below, so a table of an earlier expansion is written
    // over rather than cleared first; only the unused curve 0 is zeroed.
    yields.CurveTable.resize(static_cast<std::size_t>(needed) + 1);
    yields.CurveTable[0] = ExpandedCurve{};
    status.show("Expanding Yield Curves");

    const std::vector<char> deciduous = deciduousFlags(m);
    const AgeGrid vdypGrid(m, 0);
    const AgeGrid tipsyGrid(m, 1);
    std::vector<StepValues> vdyp(stepCount(m, 0));
    std::vector<StepValues> tipsy(stepCount(m, 1));
    int lastPercent = -1;
    for (int p = 0; p <= m.LastPoly; ++p) {
        const int percent = static_cast<int>(static_cast<long long>(p) * 100 / (m.LastPoly + 1));
        if (percent != lastPercent) status.setPercent(percent);
        lastPercent = percent;
        const PolyData& poly = m.Poly[static_cast<std::size_t>(p)];
        for (int t = 0; t <= 1; ++t) {
            if (poly.MGNT[0] != t && poly.MGNT[1] != t) continue;
            const auto index = static_cast<int16_t>(++yields.CurveCount);
            ExpandedCurve& curve = yields.CurveTable[static_cast<std::size_t>(index)];
            curve.CurvePoly = static_cast<int16_t>(p);
            curve.CurveModel = static_cast<int16_t>(t);
            if (poly.MGNT[0] == t) yields.PolyCurveExisting[static_cast<std::size_t>(p)] = index;
            if (poly.MGNT[1] == t) yields.PolyCurveFuture[static_cast<std::size_t>(p)] = index;
            std::vector<StepValues>& steps = t == 0 ? vdyp : tipsy;
            if (t == 0)
                vdypSteps(m, p, deciduous, steps);
            else
                tipsySteps(m, p, steps);
            fillByAge(t == 0 ? vdypGrid : tipsyGrid, steps, curve);
        }
    }
    status.close();
}

const ExpandedCurve& curveAt(const ExpandedYields& yields, int curve) {
    if (curve < 0 || static_cast<std::size_t>(curve) >= yields.CurveTable.size())
        throw ArborexError(ErrSubscript, "CurveTable");
    return yields.CurveTable[static_cast<std::size_t>(curve)];
}

void CheckYields(const Model& m, Prompt& prompt, const ExpandedYields& yields, int16_t& msgResult) {
    std::string lines;
    for (int c = 1; c <= yields.CurveCount; ++c) {
        const ExpandedCurve& curve = curveAt(yields, c);
        const auto p = static_cast<std::size_t>(curve.CurvePoly);
        if (m.PolyC.at(p).DELETE != 0) continue;
        bool hasVolume = false;
        for (const CurveAge& row : curve.Age) {
            hasVolume = row.ConVol > 0.0f || row.DecVol > 0.0f;
            if (hasVolume) break;
        }
        if (hasVolume) continue;
        lines +=
            m.Poly.at(p).NAME.str() + " - " + (curve.CurveModel == 0 ? "VDYP" : "TIPSY") + "\n";
    }
    if (lines.empty()) return;
    nmsgbox(m.Messages, prompt,
            "The following polygons do not have any volume in thier yield curves.  Go back to "
            "the polyon data screen and recalculate all yields.",
            lines, "Yield Errors", MsgOk, 0, msgResult);
}

void SetPC(const Model& m, const ExpandedYields& yields, Block& block) {
    const int16_t own = m.Poly.at(static_cast<std::size_t>(block.Polygon)).PCPERC;
    const int16_t percent = own == -1 ? m.Settings.PCperc : own;
    const auto age = static_cast<std::size_t>(std::min<int>(block.HarvestAge, kExpandedTopAge));
    const ExpandedCurve& curve = curveAt(yields, block.Curve);
    const float standing = curve.Age.at(age).ConVol + curve.Age.at(age).DecVol;
    const float kept = standing * static_cast<float>(100 - percent);
    const float target = kept / 100.0f;
    block.ResidualAge = 0;
    for (int a = 0; a <= kExpandedTopAge; ++a) {
        const auto i = static_cast<std::size_t>(a);
        const float total = curve.Age[i].ConVol + curve.Age[i].DecVol;
        if (total > target) {
            block.ResidualAge = static_cast<int16_t>(a);
            return;
        }
    }
}

}  // namespace arborex
