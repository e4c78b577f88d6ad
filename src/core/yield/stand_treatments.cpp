#include "yield/stand_treatments.hpp"

#include "base/display_format.hpp"
#include "base/min_max.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "base/text.hpp"
#include "yield/polygon_changes.hpp"

namespace arborex {

namespace {

constexpr ThinZone kCoast{
    "FD", {"21", "27", "33"}, "Commercial Thin is only available with pure FD stands on the coast"};
constexpr ThinZone kInterior{
    "PL",
    {"16", "18", "22"},
    "Commercial Thin is only available with pure PL stands in the interior"};

constexpr int kPercentMethod = 0;

// The zone is kept in capitals, so that every later comparison finds it.
const ThinZone& upperCaseZone(PolyData& poly) {
    poly.FIZ = toUpper(poly.FIZ.str());
    return thinZone(poly.FIZ.str());
}

// The field's text as its clamp leaves it, read as a whole number.
int16_t wholeNumber(const std::string& clamped) {
    return toI2(tolerantNumber(clamped));
}

}  // namespace

bool isCoastZone(const std::string& fiz) {
    const std::string zone = toUpper(trim(fiz));
    return zone == "A" || zone == "B" || zone == "C";
}

const ThinZone& thinZone(const std::string& fiz) {
    return isCoastZone(fiz) ? kCoast : kInterior;
}

CommThinFields loadCommThin(Model& m, int polygon) {
    const std::size_t p = static_cast<std::size_t>(polygon);
    const ThinZone& zone = upperCaseZone(m.Poly.at(p));
    const PolyMgmt& mgmt = m.PolyM.at(p);
    CommThinFields fields;
    fields.enabled = mgmt.COMTHIN == 1;
    fields.density = formatNumber(static_cast<int>(mgmt.CTSTEMHA), "0");
    for (std::size_t i = 0; i < zone.heights.size(); ++i)
        if (tolerantNumber(zone.heights[i]) == static_cast<double>(mgmt.CTHEIGHT))
            fields.height = static_cast<int>(i);
    return fields;
}

std::string commThinDensityText(const std::string& typed) {
    std::string text = typed;
    minMax(text, 331.0f, 816.0f, 0);
    return text;
}

ThinResult applyCommThin(Model& m, Prompt& prompt, int polygon, const CommThinFields& fields) {
    const std::size_t p = static_cast<std::size_t>(polygon);
    PolyData& poly = m.Poly.at(p);
    PolyMgmt& mgmt = m.PolyM.at(p);
    if (!fields.enabled) {
        mgmt.COMTHIN = 0;
        return ThinResult::Off;
    }
    const ReferenceTables& ref = m.Ref;
    const ThinZone& zone = thinZone(poly.FIZ.str());
    const int16_t pure = FindTSpecIdx(ref, zone.species);
    if (pure <= 0) {
        prompt.tell("Commercial Thin", zone.information, Icon::Information);
        return ThinResult::Refused;
    }
    mgmt.COMTHIN = 1;
    upperCaseZone(poly);
    poly.TS[0] = ref.SpeciesT.at(static_cast<std::size_t>(pure)).Code;
    poly.TSIDX[0] = pure;
    poly.TP[0] = 100;
    for (std::size_t s = 1; s < poly.TS.size(); ++s) {
        const int16_t none = FindTSpecIdx(ref, "");
        poly.TS[s] = ref.SpeciesT.at(static_cast<std::size_t>(none)).Code;
        poly.TSIDX[s] = none;
        poly.TP[s] = 0;
    }
    mgmt.CTSTEMHA = wholeNumber(commThinDensityText(fields.density));
    const int height = fields.height >= 0 && fields.height < static_cast<int>(zone.heights.size())
                           ? fields.height
                           : 0;
    mgmt.CTHEIGHT = toF4(tolerantNumber(zone.heights[static_cast<std::size_t>(height)]));
    return ThinResult::Applied;
}

FertFields loadFert(const Model& m, int polygon) {
    const PolyMgmt& mgmt = m.PolyM.at(static_cast<std::size_t>(polygon));
    FertFields fields;
    fields.enabled = mgmt.FERT == 1;
    fields.method = mgmt.FINCTYPE;
    fields.increase = fertIncreaseText(formatNumber(mgmt.FINCREASE, "0"), mgmt.FINCTYPE);
    fields.startYear = formatNumber(static_cast<int>(mgmt.FSTARTYEAR), "0");
    return fields;
}

std::string fertUnit(int16_t method) {
    switch (method) {
        case 0:
            return "%";
        case 1:
            return "m\xb3/ha";
        case 2:
            return "m";
        default:
            return {};
    }
}

std::string fertIncreaseText(const std::string& typed, int16_t method) {
    std::string text = typed;
    minMax(text, 1.0f, method == kPercentMethod ? 50.0f : 15.0f, 0);
    return text;
}

std::string fertStartYearText(const std::string& typed) {
    std::string text = typed;
    minMax(text, 0.0f, 340.0f, 0);
    return text;
}

void applyFert(Model& m, int polygon, const FertFields& fields) {
    PolyMgmt& mgmt = m.PolyM.at(static_cast<std::size_t>(polygon));
    if (!fields.enabled) {
        mgmt.FERT = 0;
        return;
    }
    mgmt.FERT = 1;
    mgmt.FSTARTYEAR = wholeNumber(fertStartYearText(fields.startYear));
}

bool markTreatmentChange(Model& m, int polygon, PolyData before, const PolyMgmt& beforeM) {
    const std::size_t p = static_cast<std::size_t>(polygon);
    const PolyData& after = m.Poly.at(p);
    before.FIZ = after.FIZ;
    const PolyCalc& calc = m.PolyC.at(p);
    const PolygonChanges changes =
        comparePolygon(before, calc, beforeM, after, calc, m.PolyM.at(p), false);
    if ((changes.marks & StaleTIPSY) == 0) return false;
    applyStaleMarks(m, polygon, StaleTIPSY);
    return true;
}

}  // namespace arborex
