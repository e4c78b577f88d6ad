#include "yield/stand_updates.hpp"

#include <cstdlib>

#include "base/display_format.hpp"
#include "base/min_max.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "base/text.hpp"
#include "yield/curves.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex {

namespace {

constexpr const char* kRowKeyPrefix = "PG";

// 1 + amount / 100, as the percent methods scale by it.
float percentFactor(int16_t amount) {
    const float share = static_cast<float>(amount) / 100.0f;
    return 1.0f + share;
}

// The new target age of a management now at `current`, with the curve's culmination at `mai`.
int16_t newTargetAge(const Model& m, int16_t t, int16_t p, int16_t current, int16_t mai,
                     int16_t amount, int16_t method) {
    switch (method) {
        case 0:
            return toI2(current + amount);
        case 1:
            return toI2(mai + amount);
        case 2: {
            const float age = percentFactor(amount) * static_cast<float>(mai);
            return toI2(static_cast<double>(age));
        }
        case 3:
        case 4:
        case 5:
        case 6: {
            // Volume above the current target (3, 4) or the culmination (5, 6), by an amount
            // (3, 5) or a percentage (4, 6).
            const int16_t from = method <= 4 ? current : mai;
            const float volume = FindVol(m, t, from, p);
            const float target = method == 3 || method == 5 ? volume + static_cast<float>(amount)
                                                            : volume * percentFactor(amount);
            return FindAgeVol(m, t, target, p);
        }
        case 7:
            return amount;
        case kMethodDefaultAge:
            return -1;
        case 9:
            return toI2(m.Poly.at(static_cast<std::size_t>(p)).AGE + amount);
        case 10: {
            // Always below the culmination, whichever sign the amount was given with.
            const float share = static_cast<float>(std::abs(static_cast<int>(amount))) / 100.0f;
            const float factor = 1.0f - share;
            const float target = findMai(m, t, mai, p) * factor;
            return FindAgeMAI(m, t, target, p);
        }
        default:
            return current;
    }
}

}  // namespace

std::string summaryRowKey(int polygon) {
    return kRowKeyPrefix + std::to_string(polygon);
}

std::vector<int16_t> selectedPolygons(const std::vector<std::pair<std::string, bool>>& rows) {
    std::vector<int16_t> polygons;
    for (const auto& [key, selected] : rows) {
        if (!selected || key.size() < 3 || key.rfind(kRowKeyPrefix, 0) != 0) continue;
        polygons.push_back(toI2(tolerantNumber(std::string_view(key).substr(2))));
    }
    return polygons;
}

std::string selectionStatus(const Model& m, const std::vector<int16_t>& selection,
                            const std::string& settingsName) {
    const std::string ending = " will be updated with the current " + settingsName + " Settings";
    if (selection.empty())
        return "No polygons are selected\r\nPlease select one or more polygons and try again";
    if (selection.size() == 1)
        return "Polygon '" + m.Poly.at(static_cast<std::size_t>(selection[0])).NAME.str() + "'" +
               ending;
    return formatNumber(static_cast<int>(selection.size()), "0") + " Polygons" + ending;
}

const std::array<const char*, 11> kHarvestAgeMethods = {
    "Years above current harvest age",
    "Years above culmination",
    "% older than culmination",
    "Volume above current harvest volume",
    "% volume above current harvest volume",
    "Volume above culmination",
    "% Volume above culmination",
    "This Age",
    "Default Age",
    "Years from now",
    "% below culmination mai (m\xb3/ha/yr) (before culmination)"};

void AdjustHarvest(Model& m, int16_t t, int16_t p, int16_t amount, int16_t method,
                   bool ignoreCriteria) {
    PolyData& poly = m.Poly.at(static_cast<std::size_t>(p));
    const auto model = static_cast<std::size_t>(t);
    if (poly.YIELDSTATE.at(model) < 2) return;
    if (FindVol(m, t, m.Settings.YieldMaxAge.at(model), p) == 0.0f) return;
    poly.YIELDSTATE[model] = 3;

    const HarvAgeRec& ages = m.HarvAge.at(static_cast<std::size_t>(p)).at(model);
    for (std::size_t r = 0; r < 2; ++r) {
        if (poly.MGNT[r] != t) continue;
        const int16_t current = poly.HAR[r] == -1 ? ages.HarvestAge : poly.HAR[r];
        const int16_t age = newTargetAge(m, t, p, current, ages.MaiAge, amount, method);
        poly.HAR[r] =
            method != kMethodDefaultAge && !ignoreCriteria ? FindMax(ages.ConstraintAge, age) : age;
    }
}

void updateHarvestAges(Model& m, const std::vector<int16_t>& selection,
                       const HarvestAgeUpdate& update) {
    if (selection.empty()) return;
    calcAllCutAges(m, 0);
    calcAllCutAges(m, 1);
    for (const int16_t p : selection) {
        if (update.updateVdyp)
            AdjustHarvest(m, 0, p, update.amount, update.method, update.ignoreCriteria);
        if (update.updateTipsy)
            AdjustHarvest(m, 1, p, update.amount, update.method, update.ignoreCriteria);
    }
}

SilviUpdate silviculturePreset(const Model& m, const std::vector<int16_t>& selection) {
    SilviUpdate preset;
    if (selection.empty()) return preset;
    const PolyData& first = m.Poly.at(static_cast<std::size_t>(selection[0]));
    preset.partialCut = first.SILVI != 0;
    preset.SetPCPerc = first.PCPERC;
    preset.SetPCNext = first.PCNEXT;
    return preset;
}

int16_t partialCutFieldValue(int index, std::string_view text) {
    const std::string typed = trim(text);
    if (typed.rfind('[', 0) == 0 || !strictNumber(typed)) return -1;
    std::string clamped = typed;
    if (index == 0)
        minMax(clamped, 1.0f, 50.0f, 0);
    else
        minMax(clamped, 10.0f, 999.0f, 0);
    return toI2(tolerantNumber(clamped));
}

std::string partialCutFieldText(const Model& m, int index, int16_t value) {
    if (value != -1) return formatNumber(static_cast<int>(value), "0");
    const int16_t project = index == 0 ? m.Settings.PCperc : m.Settings.PCnext;
    return "[" + formatNumber(static_cast<int>(project), "0") + "]";
}

std::string updateSilviculture(Model& m, const std::vector<int16_t>& selection,
                               const SilviUpdate& update) {
    std::string refused;
    for (const int16_t p : selection) {
        PolyData& poly = m.Poly.at(static_cast<std::size_t>(p));
        if (!update.partialCut) {
            poly.SILVI = 0;
        } else if (poly.YIELDSTATE[0] < 3) {
            refused += poly.NAME.str() + "\r\n";
        } else {
            poly.SILVI = 1;
            poly.PCPERC = update.SetPCPerc;
            poly.PCNEXT = update.SetPCNext;
            poly.MGNT = {0, 0};
        }
    }
    return refused;
}

void tellPartialCutRefused(Prompt& prompt, const std::string& refused) {
    if (refused.empty()) return;
    prompt.messageScreen(kNoVdypTitle, kNoVdypText, refused, MsgOk, 0);
}

}  // namespace arborex
