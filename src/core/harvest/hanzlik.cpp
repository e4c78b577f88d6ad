#include "harvest/hanzlik.hpp"

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "harvest/queue_order.hpp"
#include "yield/curves.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex {

namespace {

constexpr const char* kCubicPerYear = "m\xb3/year";

// Volume over rotation (S, m3/yr) and volume (T, m3) summed over stands.
struct HanzlikSums {
    float rate = 0.0f;
    float volume = 0.0f;

    // A stand of `area` ha counted with curve `model` at age `age`. An age of 0 is a division
    // by zero, a failure rather than a stand that counts for nothing.
    void add(const Model& m, int16_t model, int16_t age, int16_t p) {
        if (age == 0) throw ArborexError(ErrDivisionByZero, "Hanzlik age");
        const float perHa = FindVol(m, model, age, p);
        const float standing = perHa * m.Poly.at(static_cast<std::size_t>(p)).AREA;
        const float perYear = standing / static_cast<float>(age);
        rate += perYear;
        volume += standing;
    }
    float rotation() const {
        if (rate == 0.0f) throw ArborexError(ErrDivisionByZero, "Hanzlik rotation");
        return volume / rate;
    }
};

bool isGrown(int16_t management) {
    return management == 0 || management == 1;
}

int16_t computedHarvestAge(const Model& m, int16_t model, int16_t p) {
    if (!isGrown(model)) throw ArborexError(ErrSubscript, "curve model " + std::to_string(model));
    return m.HarvAge.at(static_cast<std::size_t>(p))[static_cast<std::size_t>(model)].HarvestAge;
}

// The Hanzlik sums over IncludedPoly; NC and NSR stands take no part. A stand older than its
// rotation counts at its own age, since that is when it will be cut.
HanzlikSums hanzlikSums(const CalcSession& s) {
    HanzlikSums sums;
    for (int i = 0; i <= s.run.IncludedLast; ++i) {
        const int16_t p = s.run.IncludedPoly.at(static_cast<std::size_t>(i));
        const int16_t model = s.m.Poly.at(static_cast<std::size_t>(p)).MGNT[0];
        if (model == 2 || model == 3) continue;
        const int16_t rotation = targetHarvestAge(s.m, p, 0);
        const int16_t age = s.m.Poly.at(static_cast<std::size_t>(p)).AGE;
        sums.add(s.m, model, rotation >= age ? rotation : age, p);
    }
    return sums;
}

std::string rateLine(const std::string& label, const HanzlikSums& sums) {
    return label + formatNumber(static_cast<double>(sums.rate), "#,##0") + kCubicPerYear + "\t" +
           "with a rotation of " + formatNumber(static_cast<double>(sums.rotation()), "0.0") +
           " years." + "\n";
}

}  // namespace

void CalcHanzlik(CalcSession& s, float& rate) {
    if (s.run.IncludedLast == -1) {
        s.prompt.tell(kProgramTitle, "No Polygons selected");
        rate = 0.0f;
        return;
    }
    const HanzlikSums sums = hanzlikSums(s);
    s.run.HanzlikRotation = sums.rate == 0.0f ? 0.0f : sums.rotation();
    rate = sums.rate;
}

void mniHanzlik_Click(CalcSession& s) {
    SetCutOrder(s);
    if (s.m.CutOrderLast == -1) {
        s.prompt.tell(kProgramTitle, "No Polygons selected");
        return;
    }
    float rate = 0.0f;
    CalcHanzlik(s, rate);
    s.run.HanzlikRate = rate;
    const std::string question =
        "The rate calculated using the Hanzlik formula is " +
        formatNumber(static_cast<double>(rate), "#,##0") + kCubicPerYear + "\n" +
        "with a rotation of " + formatNumber(static_cast<double>(s.run.HanzlikRotation), "0.0") +
        " years." + "\n\n" + "Would you like to use the Hanzlik rate for the current harvest rate?";
    if (s.prompt.ask("Hanzlik Caclulation", question, Buttons::YesNo, Answer::Yes,
                     Icon::Question) != Answer::Yes)
        return;
    s.screen.txtVolToCut = formatNumber(static_cast<double>(rate), "0");
    s.observer.rateShown(s.screen.txtVolToCut);
}

void mniCFHanz_Click(CalcSession& s) {
    SetCutOrder(s);
    if (s.run.IncludedLast == -1) {
        s.prompt.tell(kProgramTitle, "No Polygons selected");
        return;
    }
    const HanzlikSums hanzlik = hanzlikSums(s);
    // Both managements at their computed harvest ages: the targets typed by the user and the
    // stands' present ages play no part here.
    HanzlikSums future, existing;
    for (int i = 0; i <= s.run.IncludedLast; ++i) {
        const int16_t p = s.run.IncludedPoly.at(static_cast<std::size_t>(i));
        const int16_t model = s.m.Poly.at(static_cast<std::size_t>(p)).MGNT[1];
        future.add(s.m, model, computedHarvestAge(s.m, model, p), p);
    }
    for (int i = 0; i <= s.run.IncludedLast; ++i) {
        const int16_t p = s.run.IncludedPoly.at(static_cast<std::size_t>(i));
        const int16_t model = s.m.Poly.at(static_cast<std::size_t>(p)).MGNT[0];
        if (isGrown(model)) existing.add(s.m, model, computedHarvestAge(s.m, model, p), p);
    }
    s.prompt.tell(kProgramTitle, rateLine("Future :", future) + rateLine("Existing :", existing) +
                                     rateLine("Hanzlik :", hanzlik));
}

}  // namespace arborex
