// The checks before a yield run. They advise: nothing here stops the user from running the
// models, so every test that fires adds its line and testing goes on.

#include <cstddef>
#include <string>

#include "base/display_format.hpp"
#include "base/text.hpp"
#include "yield/yield_run.hpp"

namespace arborex {

namespace {

constexpr const char* kNoPolygonsLabel = "(0 of 0)";

// addwar and adderr: a project-level line is marked as the program's own.
void addLine(std::vector<PostItem>& list, const Model& m, int polygon, const std::string& text) {
    if (polygon == -1) {
        list.push_back({"ARBOREX - \t\t" + text, -1});
        return;
    }
    const std::string name = m.Poly.at(static_cast<std::size_t>(polygon)).NAME.str();
    list.push_back({name + "\t" + text, polygon});
}

bool usesModel(const PolyData& poly, int16_t model) {
    return poly.MGNT[0] == model || poly.MGNT[1] == model;
}

bool isLive(const Model& m, int polygon) {
    return m.PolyC.at(static_cast<std::size_t>(polygon)).DELETE == 0;
}

std::string amountLabel(int16_t due, int16_t used) {
    return "(" + formatNumber(int{due}, "0") + " of " + formatNumber(int{used}, "0") +
           " to calculate)";
}

// The species tests of one model: a share without a species is an error, a species without a
// share a warning, and the shares must make 100.
template <std::size_t N>
void checkSpecies(const Model& m, int polygon, const std::array<int16_t, N>& percents,
                  const std::array<int16_t, N>& species, const std::string& letter,
                  const std::string& modelName, PreCalcResult& into) {
    int total = 0;
    for (std::size_t s = 0; s < N; ++s) {
        const std::string n = letter + formatNumber(static_cast<int>(s), "0");
        if (percents[s] >= 1 && species[s] <= 0)
            addLine(into.errors, m, polygon,
                    n + " Species must be specified with a > 0% composition");
        if (percents[s] <= 0 && species[s] > 0)
            addLine(into.warnings, m, polygon, n + " Species was specified with a 0% composition");
        total += percents[s];
    }
    if (total != 100)
        addLine(into.errors, m, polygon,
                "The percent of all " + modelName + " species should equal 100%");
}

}  // namespace

void CheckInput(Model& m, int polygon, PreCalcResult& into) {
    PolyData& poly = m.Poly.at(static_cast<std::size_t>(polygon));
    // An area of exactly 0 passes, whatever the text says.
    if (poly.AREA < 0.0f) addLine(into.errors, m, polygon, "The AREA must be greater than 0 ha.");
    if (poly.AGE < 0) addLine(into.warnings, m, polygon, "The AGE under 0 years old.");

    if (usesModel(poly, 0)) {
        if (poly.VSITEINDEX < 1.0f && poly.VAGETOTAL < 30)
            addLine(into.errors, m, polygon,
                    "A polygon must contain a valid site index or a valid AgeIn SiteIn");
        if (poly.CLOSURE > 0 && poly.CLOSURE < 10)
            addLine(into.warnings, m, polygon, "The CROWN CLOSURE is less than 10% for VDYP");
        if (poly.VAF != 1.0f) addLine(into.warnings, m, polygon, "The VAF is NOT equal to 1.00");
        if (poly.VAF > 10.0f)
            addLine(
                into.errors, m, polygon,
                "The VAF is " + formatNumber(poly.VAF, "0.000") + " which is greater then 10.0");
        if (poly.PSYU < 1) addLine(into.errors, m, polygon, "A PSYU must be selected");
        if (m.Settings.VDYPPSYUB == 1) {
            // VDYP reads the block letter as it is stored, so it is stored upper-cased.
            poly.PSYUBLOCK = toUpper(poly.PSYUBLOCK.raw());
            const char first = poly.PSYUBLOCK.raw()[0];
            if (first < '0' || first > '9')
                addLine(into.errors, m, polygon, "The PSYU BLOCK must between 0 and 9.");
        }
        checkSpecies(m, polygon, poly.VP, poly.VSIDX, "V", "VDYP", into);
    }
    if (usesModel(poly, 1)) checkSpecies(m, polygon, poly.TP, poly.TSIDX, "T", "TIPSY", into);
}

PreCalcResult PreCalcCheck(Model& m) {
    PreCalcResult r;
    r.lblAmt = {kNoPolygonsLabel, kNoPolygonsLabel};
    if (m.LastPoly == -1) return r;

    int closureSum = 0;
    int closureCount = 0;
    float vafSum = 0.0f;
    for (int p = 0; p <= m.LastPoly; ++p) {
        if (!isLive(m, p)) continue;
        const PolyData& poly = m.Poly.at(static_cast<std::size_t>(p));
        closureSum += poly.CLOSURE;
        if (poly.CLOSURE > 0) ++closureCount;
        vafSum = vafSum + poly.VAF;
    }
    if (closureCount > 0 &&
        static_cast<float>(closureSum) / static_cast<float>(closureCount) < 10.0f)
        addLine(r.warnings, m, -1, "The average Crown Closure is under 10%");
    // The average VAF divides by every polygon, deleted ones included, though only the live
    // ones were summed: deleting polygons lowers it. Kept as users know it.
    const float vafAverage = vafSum / static_cast<float>(m.LastPoly + 1);
    if (0.5f > vafAverage) addLine(r.warnings, m, -1, "The average VAF is under 50%");

    for (int p = 0; p <= m.LastPoly; ++p) {
        if (!isLive(m, p)) continue;
        const PolyData& poly = m.Poly.at(static_cast<std::size_t>(p));
        const bool vdyp = usesModel(poly, 0);
        const bool tipsy = usesModel(poly, 1);
        if (vdyp) ++r.VDYPUsed;
        if (tipsy) ++r.TIPSYUsed;
        if (vdyp && poly.YIELDSTATE[0] < 3) ++r.VDYPDue;
        if (tipsy && poly.YIELDSTATE[1] < 3) ++r.TIPSYDue;
        CheckInput(m, p, r);
        r.lblAmt[0] = amountLabel(r.VDYPDue, r.VDYPUsed);
        r.lblAmt[1] = amountLabel(r.TIPSYDue, r.TIPSYUsed);
    }
    r.lblStatus = "Caution - " + formatNumber(static_cast<int>(r.errors.size()), "0") +
                  " Error(s) / " + formatNumber(static_cast<int>(r.warnings.size()), "0") +
                  " Warnings(s)";
    return r;
}

}  // namespace arborex
