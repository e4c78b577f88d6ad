#include "model/polygon_fields.hpp"

#include <cstddef>
#include <variant>

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/min_max.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "base/text.hpp"

namespace arborex {

namespace {

struct FieldRule {
    float low;
    float high;  // ROADAREA and THINNED take theirs from the polygon
    int16_t decimals;
    // -1 means the project's setting (or, for a target age, the calculated one). For the other
    // fields minMax already gives the right answer to text that is no number: 0 counts as 0,
    // and where 0 is below the range it clamps to the low end.
    bool hasDefault;
};

// In the order of PolyField.
constexpr FieldRule kRules[] = {
    {0.1f, 9999.9f, 1, false},  // AREA
    {-999, 999, 0, false},      // AGE
    {0, 0, 1, false},           // ROADAREA, up to AREA
    {0, 999, 0, true},          // REGENDELAY
    {0, 99.9f, 1, false},       // VSITEINDEX
    {0, 999, 0, false},         // VAGETOTAL
    {0, 100, 0, false},         // VHEIGHTTOTAL
    {0, 100, 0, false},         // CLOSURE
    {0.01f, 9.99f, 2, false},   // VAF
    {331, 10000, 0, false},     // DENSITY
    {400, 0, 0, false},         // THINNED, up to DENSITY - 1
    {0, 999, 0, false},         // TAGETOTAL
    {0, 100, 0, true},          // OAF1
    {0, 100, 0, true},          // OAF2
    {0, 999, 0, false},         // NCRESTOCKIN
    {0, 32000, 0, false},       // NCVOLHA
    {0, 100, 0, false},         // NCDECIDUOUS
    {0, 100, 0, false},         // NCHEIGHT
    {0, 999, 0, false},         // NSRRESTOCKIN
    {1, 50, 0, true},           // PCPERC
    {10, 999, 0, true},         // PCNEXT
    {0, 999, 0, true},          // HAR1
    {0, 999, 0, true},          // HAR2
    {0, 30, 0, false},          // TG
    {0, 100, 0, false},         // TH
    {0, 50, 0, false},          // TI
    {0, 100, 0, false},         // VP
    {0, 100, 0, false},         // TP
};
static_assert(std::size(kRules) == static_cast<std::size_t>(PolyField::TP) + 1);

const FieldRule& ruleOf(PolyField field) {
    return kRules[static_cast<std::size_t>(field)];
}

using FieldPtr = std::variant<float*, int16_t*, int32_t*>;

template <typename T, std::size_t N>
T* slotOf(std::array<T, N>& values, int slot) {
    if (slot < 0 || static_cast<std::size_t>(slot) >= N) throw ArborexError(ErrSubscript);
    return &values[static_cast<std::size_t>(slot)];
}

FieldPtr fieldOf(Model& m, int polygon, FieldRef ref) {
    if (polygon < 0 || polygon > m.LastPoly) throw ArborexError(ErrSubscript);
    const auto p = static_cast<std::size_t>(polygon);
    PolyData& d = m.Poly.at(p);
    PolyCalc& c = m.PolyC.at(p);
    PolyMgmt& g = m.PolyM.at(p);
    switch (ref.field) {
        case PolyField::AREA:
            return &d.AREA;
        case PolyField::AGE:
            return &d.AGE;
        case PolyField::ROADAREA:
            return &g.ROADAREA;
        case PolyField::REGENDELAY:
            return &c.REGENDELAY;
        case PolyField::VSITEINDEX:
            return &d.VSITEINDEX;
        case PolyField::VAGETOTAL:
            return &d.VAGETOTAL;
        case PolyField::VHEIGHTTOTAL:
            return &d.VHEIGHTTOTAL;
        case PolyField::CLOSURE:
            return &d.CLOSURE;
        case PolyField::VAF:
            return &d.VAF;
        case PolyField::DENSITY:
            return &d.DENSITY;
        case PolyField::THINNED:
            return &d.THINNED;
        case PolyField::TAGETOTAL:
            return &d.TAGETOTAL;
        case PolyField::OAF1:
            return &d.OAF1;
        case PolyField::OAF2:
            return &d.OAF2;
        case PolyField::NCRESTOCKIN:
            return &g.NCRESTOCKIN;
        case PolyField::NCVOLHA:
            return &g.NCVOLHA;
        case PolyField::NCDECIDUOUS:
            return &g.NCDECIDUOUS;
        case PolyField::NCHEIGHT:
            return &g.NCHEIGHT;
        case PolyField::NSRRESTOCKIN:
            return &g.NSRRESTOCKIN;
        case PolyField::PCPERC:
            return &d.PCPERC;
        case PolyField::PCNEXT:
            return &d.PCNEXT;
        case PolyField::HAR1:
            return &d.HAR[0];
        case PolyField::HAR2:
            return &d.HAR[1];
        case PolyField::TG:
            return slotOf(g.TG, ref.slot);
        case PolyField::TH:
            return slotOf(d.TH, ref.slot);
        case PolyField::TI:
            return slotOf(d.TI, ref.slot);
        case PolyField::VP:
            return slotOf(d.VP, ref.slot);
        case PolyField::TP:
            return slotOf(d.TP, ref.slot);
    }
    throw ArborexError(ErrSubscript);
}

// Only read through: the field table is shared with the commit.
FieldPtr readOnly(const Model& m, int polygon, FieldRef ref) {
    return fieldOf(const_cast<Model&>(m), polygon, ref);
}

double valueOf(const Model& m, int polygon, FieldRef ref) {
    return std::visit([](auto* value) { return static_cast<double>(*value); },
                      readOnly(m, polygon, ref));
}

// A float shows as its own digits (1.05f as "1.1" in "0.0"), not as its widened double.
std::string shown(FieldPtr field, const std::string& format) {
    if (auto* f = std::get_if<float*>(&field)) return formatNumber(**f, format);
    if (auto* i = std::get_if<int16_t*>(&field)) return formatNumber(static_cast<int>(**i), format);
    return formatNumber(static_cast<int>(*std::get<int32_t*>(field)), format);
}

void store(FieldPtr field, double value) {
    if (auto* f = std::get_if<float*>(&field)) **f = toF4(value);
    if (auto* i = std::get_if<int16_t*>(&field)) **i = toI2(value);
    if (auto* l = std::get_if<int32_t*>(&field)) **l = toI4(value);
}

std::string pattern(int16_t decimals) {
    return decimals == 0 ? "0" : "0." + std::string(static_cast<std::size_t>(decimals), '0');
}

std::string bracketed(const std::string& text) {
    return "[" + text + "]";
}

// What a -1 stands for in a field with a default, bracketed.
std::string defaultText(const Model& m, int polygon, PolyField field) {
    const ProjectSettings& s = m.Settings;
    switch (field) {
        case PolyField::REGENDELAY:
            return bracketed(formatNumber(s.REGENDELAY, "0"));
        case PolyField::OAF1:
            return bracketed(formatNumber(s.OAF1, "0"));
        case PolyField::OAF2:
            return bracketed(formatNumber(s.OAF2, "0"));
        case PolyField::PCPERC:
            return bracketed(formatNumber(s.PCperc, "0"));
        case PolyField::PCNEXT:
            return bracketed(formatNumber(s.PCnext, "0"));
        default:
            break;
    }
    // A target harvest age of -1 is the age worked out from the management's curve.
    const auto p = static_cast<std::size_t>(polygon);
    const int16_t model = m.Poly.at(p).MGNT[field == PolyField::HAR1 ? 0 : 1];
    if (model == 0 || model == 1) {
        const int16_t age = m.HarvAge.at(p)[static_cast<std::size_t>(model)].HarvestAge;
        if (age > 0) return bracketed(formatNumber(age, "0"));
    }
    return "[TBA]";
}

}  // namespace

std::string vsiText(const Model& m, int polygon) {
    const PolyData& d = m.Poly.at(static_cast<std::size_t>(polygon));
    if (d.VSITEINDEX > 0.0f) return formatNumber(d.VSITEINDEX, "0.0");
    if (d.VSICALC > 0.0f) return bracketed(formatNumber(d.VSICALC, "0.00"));
    return "[TBA]";
}

std::string vccText(const Model& m, int polygon) {
    const auto p = static_cast<std::size_t>(polygon);
    const int16_t closure = m.Poly.at(p).CLOSURE;
    if (closure > 0) return formatNumber(closure, "0");
    const float calculated = m.PolyC.at(p).VCCCALC;
    if (calculated > 0.0f) return bracketed(formatNumber(calculated, "0"));
    return "[TBA]";
}

std::string polygonFieldText(const Model& m, int polygon, FieldRef field) {
    if (field.field == PolyField::VSITEINDEX) return vsiText(m, polygon);
    if (field.field == PolyField::CLOSURE) return vccText(m, polygon);
    const FieldRule& rule = ruleOf(field.field);
    if (rule.hasDefault && valueOf(m, polygon, field) == -1.0)
        return defaultText(m, polygon, field.field);
    return shown(readOnly(m, polygon, field), pattern(rule.decimals));
}

std::string commitPolygonField(Model& m, Prompt& prompt, int polygon, FieldRef field,
                               const std::string& text) {
    const FieldPtr target = fieldOf(m, polygon, field);
    const FieldRule& rule = ruleOf(field.field);
    const std::string typed = trim(text);
    if (rule.hasDefault && (typed.rfind('[', 0) == 0 || !strictNumber(typed))) {
        store(target, -1.0);
    } else {
        float high = rule.high;
        const auto p = static_cast<std::size_t>(polygon);
        if (field.field == PolyField::ROADAREA) high = m.Poly[p].AREA;
        if (field.field == PolyField::THINNED) high = static_cast<float>(m.Poly[p].DENSITY - 1);
        std::string clamped = text;
        minMax(clamped, rule.low, high, rule.decimals);
        store(target, tolerantNumber(clamped));
    }
    if (field.field == PolyField::TI && valueOf(m, polygon, field) == 0.0)
        prompt.tell(kProgramTitle,
                    "Warning: if SI = 0 you must enter a valid SIHeight and SIAge combination.  "
                    "This will cause TIPSY to calculate an SI for you!");
    return polygonFieldText(m, polygon, field);
}

}  // namespace arborex
