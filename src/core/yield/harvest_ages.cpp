#include "yield/harvest_ages.hpp"

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/number_text.hpp"
#include "yield/curves.hpp"

namespace arborex {

namespace {

constexpr float kProjectValue = -1.0f;

bool isDeleted(const Model& m, int16_t polygon) {
    return m.PolyC.at(static_cast<std::size_t>(polygon)).DELETE != 0;
}

}  // namespace

void CalcCutAge(Model& m, int16_t polygon, int16_t model) {
    const auto p = static_cast<std::size_t>(polygon);
    const auto t = static_cast<std::size_t>(model);
    const PolyCalc& calc = m.PolyC.at(p);
    HarvAgeRec& ages = m.HarvAge.at(p).at(t);

    const int16_t minAge = calc.MINCUTAGE[t] == -1 ? m.Settings.MINAGE : calc.MINCUTAGE[t];
    const float minVol = calc.MINCUTVOL[t] == kProjectValue ? m.Settings.MINVOL : calc.MINCUTVOL[t];
    const float minDia = calc.MINCUTDBH[t] == kProjectValue ? m.Settings.MINDIA : calc.MINCUTDBH[t];
    ages.ConstraintAge = minAge;
    ages.VolAge = FindAgeVol(m, model, minVol, polygon);
    ages.DiaAge = FindAgeDia(m, model, minDia, polygon);
    if (ages.ConstraintAge < ages.DiaAge) ages.ConstraintAge = ages.DiaAge;
    if (ages.ConstraintAge < ages.VolAge) ages.ConstraintAge = ages.VolAge;
    ages.HarvestAge = ages.ConstraintAge;
    if (ages.HarvestAge < ages.MaiAge) ages.HarvestAge = ages.MaiAge;
}

void calcAllCutAges(Model& m, int16_t model) {
    const auto t = static_cast<std::size_t>(model);
    // An int counter: a 16-bit one would wrap after polygon 32767, the last there can be.
    for (int p = 0; p <= m.LastPoly; ++p) {
        const auto polygon = static_cast<int16_t>(p);
        if (isDeleted(m, polygon)) continue;
        HarvAgeRec& ages = m.HarvAge.at(static_cast<std::size_t>(p)).at(t);
        ages.MaiAge = FindMAIMax(m, model, polygon);
        ages.MaxMAI = findMai(m, model, ages.MaiAge, polygon);
        CalcCutAge(m, polygon, model);
    }
}

void UpdateYields(Model& m) {
    for (int16_t t = 0; t <= 1; ++t) {
        calcAllCutAges(m, t);
        const int16_t top = m.Settings.YieldMaxAge[static_cast<std::size_t>(t)];
        for (int p = 0; p <= m.LastPoly; ++p) {
            const auto polygon = static_cast<int16_t>(p);
            if (isDeleted(m, polygon)) continue;
            int16_t& state =
                m.Poly.at(static_cast<std::size_t>(p)).YIELDSTATE[static_cast<std::size_t>(t)];
            if (state >= 2 && FindVol(m, t, top, polygon) != 0.0f) state = 3;
        }
    }
}

int16_t targetHarvestAge(const Model& m, int polygon, int management) {
    const PolyData& poly = m.Poly.at(static_cast<std::size_t>(polygon));
    const auto slot = static_cast<std::size_t>(management);
    if (poly.HAR.at(slot) != -1) return poly.HAR[slot];
    const int16_t model = poly.MGNT[slot];
    if (model < 0 || model > 1) throw ArborexError(ErrSubscript, "HarvAge");
    return m.HarvAge.at(static_cast<std::size_t>(polygon))[static_cast<std::size_t>(model)]
        .HarvestAge;
}

}  // namespace arborex
