// ImportItem's rules, key by key. A rule reads the value and stores through `store`, which
// notes whether the field changed so that only a real change marks the curves.

#include "exchange/import_item.hpp"

#include <cctype>
#include <functional>
#include <unordered_map>

#include "base/dates.hpp"
#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "base/text.hpp"
#include "exchange/variable_catalogue.hpp"

namespace arborex {

namespace {

struct Target {
    Model& m;
    PolyData& d;
    PolyCalc& c;
    PolyMgmt& g;
    const std::string& value;
    std::string& message;
    std::size_t slot;
    bool changed = false;

    template <typename Field, typename Value>
    void store(Field& field, const Value& v) {
        const Field next(v);
        if (!(field == next)) changed = true;
        field = next;
    }
    // The value's first character in capitals, NUL for an empty value.
    char first() const {
        return value.empty()
                   ? '\0'
                   : static_cast<char>(std::toupper(static_cast<unsigned char>(value[0])));
    }
    float real() const { return toF4(importNumber(value)); }
    int16_t whole() const { return toI2(importNumber(value)); }
    std::optional<double> numeric() const { return importNumeric(value); }
};
using Rule = std::function<void(Target&)>;
using RuleTable = std::unordered_map<std::string, Rule>;

// A number when the cell is one, otherwise the use-the-setting value -1.
int16_t wholeOrDefault(const Target& t) {
    const std::optional<double> v = t.numeric();
    return v ? toI2(*v) : int16_t{-1};
}
float realOrDefault(const Target& t) {
    const std::optional<double> v = t.numeric();
    return v ? toF4(*v) : -1.0f;
}
// A number held to low..high, or -1 when the cell is no number.
int16_t heldOrDefault(const Target& t, double low, double high) {
    std::optional<double> v = t.numeric();
    if (!v) return -1;
    if (*v < low) *v = low;
    if (*v > high) *v = high;
    return toI2(*v);
}

int16_t ownershipIndex(const ReferenceTables& ref, char code) {
    static constexpr std::array<char, 4> installed{'C', 'P', 'T', 'O'};
    const bool loaded = ref.OwnershipCount >= 0;
    const int last = loaded ? ref.OwnershipCount : 3;
    for (int i = 0; i <= last; ++i)
        if ((loaded ? ref.OwnershipCodes : installed)[static_cast<std::size_t>(i)] == code)
            return static_cast<int16_t>(i);
    return 0;
}

// A species code bound to its table row. Without a loaded table the code is kept as given and
// the row stays as it was, as binding on load does.
void setSpecies(Target& t, bool tipsy) {
    const ReferenceTables& ref = t.m.Ref;
    const std::string code = toUpper(t.value);
    Code2& field = tipsy ? t.d.TS.at(t.slot) : t.d.VS.at(t.slot);
    int16_t& row = tipsy ? t.d.TSIDX.at(t.slot) : t.d.VSIDX.at(t.slot);
    const bool loaded = (tipsy ? ref.SpeciesTCount : ref.SpeciesVCount) > 0;
    if (code.empty() || !loaded) {
        t.store(field, code.substr(0, 2));
        if (code.empty()) t.store(row, int16_t{0});
        return;
    }
    auto find = [&](const std::string& c) {
        return tipsy ? FindTSpecIdx(ref, c) : FindVSpecIdx(ref, c);
    };
    int16_t found = find(code);  // a long inventory code ("PLI") finds its entry by alias
    if (found == 0) found = find(code.substr(0, 2));
    if (found == 0) {
        t.message = std::string(tipsy ? "TIPSY" : "VDYP") + " Species not found: " + t.value;
        return;
    }
    const auto& table = tipsy ? ref.SpeciesT : ref.SpeciesV;
    t.store(field, table.at(static_cast<std::size_t>(found)).Code.str());
    t.store(row, found);
}

int16_t managementCode(const std::string& value, int groups) {
    const std::string v = toUpper(value);
    if (v == "VDYP" || v == "0" || v == "V") return 0;
    if (v == "TIPSY" || v == "1" || v == "T") return 1;
    if (groups > 2 && (v == "NC" || v == "2")) return 2;
    if (groups > 2 && (v == "NSR" || v == "3")) return 3;
    return -1;
}

// MGNT[which] from its word or number; `groups` 2 takes only VDYP and TIPSY.
void setManagement(Target& t, std::size_t which, int groups, const char* refusal) {
    const int16_t code = managementCode(t.value, groups);
    if (code < 0)
        t.message = refusal + t.value;
    else
        t.store(t.d.MGNT[which], code);
}

// "Y" (or "P" for REGEN) first, or the number 1.
int16_t yesFlag(const Target& t, char yes) {
    const std::optional<double> v = t.numeric();
    return (t.first() == yes || (v && *v == 1.0)) ? 1 : 0;
}

void addReal(RuleTable& r, const std::string& key, float& (*field)(Target&)) {
    r[key] = [field](Target& t) { t.store(field(t), t.real()); };
}
void addWhole(RuleTable& r, const std::string& key, int16_t& (*field)(Target&)) {
    r[key] = [field](Target& t) { t.store(field(t), t.whole()); };
}

void addSpeciesRules(RuleTable& r) {
    for (int s = 1; s <= 6; ++s) {
        const std::string n = std::to_string(s);
        r["VS" + n] = [](Target& t) { setSpecies(t, false); };
        r["VP" + n] = [](Target& t) { t.store(t.d.VP.at(t.slot), t.whole()); };
        r["VX" + n] = [](Target& t) {
            t.store(t.c.VX.at(t.slot), int16_t(t.first() == 'E' || t.first() == '0' ? 0 : 1));
        };
    }
    for (int s = 1; s <= 5; ++s) {
        const std::string n = std::to_string(s);
        r["TS" + n] = [](Target& t) { setSpecies(t, true); };
        r["TP" + n] = [](Target& t) { t.store(t.d.TP.at(t.slot), t.whole()); };
        r["TH" + n] = [](Target& t) { t.store(t.d.TH.at(t.slot), t.whole()); };
        r["TI" + n] = [](Target& t) { t.store(t.d.TI.at(t.slot), t.whole()); };
        r["TG" + n] = [](Target& t) { t.store(t.g.TG.at(t.slot), t.whole()); };
    }
}

void addNumberRules(RuleTable& r) {
    addReal(r, "AREA", [](Target& t) -> float& { return t.d.AREA; });
    addReal(r, "ROADAREA", [](Target& t) -> float& { return t.g.ROADAREA; });
    addReal(r, "VAF", [](Target& t) -> float& { return t.d.VAF; });
    addReal(r, "VUTILIZ", [](Target& t) -> float& { return t.d.VUTILIZ; });
    addReal(r, "VSITEINDEX", [](Target& t) -> float& { return t.d.VSITEINDEX; });
    addReal(r, "TUTILIZ", [](Target& t) -> float& { return t.g.TUTILIZ; });
    addReal(r, "NCVOLHA", [](Target& t) -> float& { return t.g.NCVOLHA; });
    addReal(r, "CTHEIGHT", [](Target& t) -> float& { return t.g.CTHEIGHT; });
    addReal(r, "FINCREASE", [](Target& t) -> float& { return t.g.FINCREASE; });
    addWhole(r, "SORT", [](Target& t) -> int16_t& { return t.c.SORT; });
    addWhole(r, "NSRRESTOCKIN", [](Target& t) -> int16_t& { return t.g.NSRRESTOCKIN; });
    addWhole(r, "NCRESTOCKIN", [](Target& t) -> int16_t& { return t.g.NCRESTOCKIN; });
    addWhole(r, "NCDECIDUOUS", [](Target& t) -> int16_t& { return t.g.NCDECIDUOUS; });
    addWhole(r, "NCHEIGHT", [](Target& t) -> int16_t& { return t.g.NCHEIGHT; });
    addWhole(r, "VAGETOTAL", [](Target& t) -> int16_t& { return t.d.VAGETOTAL; });
    addWhole(r, "VHEIGHTTOTAL", [](Target& t) -> int16_t& { return t.d.VHEIGHTTOTAL; });
    addWhole(r, "PSYU", [](Target& t) -> int16_t& { return t.d.PSYU; });
    addWhole(r, "TAGETOTAL", [](Target& t) -> int16_t& { return t.d.TAGETOTAL; });
    addWhole(r, "CTSTEMHA", [](Target& t) -> int16_t& { return t.g.CTSTEMHA; });
    addWhole(r, "FSTARTYEAR", [](Target& t) -> int16_t& { return t.g.FSTARTYEAR; });
    r["DENSITY"] = [](Target& t) { t.store(t.d.DENSITY, toI4(importNumber(t.value))); };
    r["THINNED"] = [](Target& t) { t.store(t.d.THINNED, toI4(importNumber(t.value))); };
    r["AGE"] = [](Target& t) {
        if (t.value.size() < 4) return t.store(t.d.AGE, t.whole());
        const double year = importNumber(std::string_view(t.value).substr(0, 4));
        t.store(t.d.AGE, toI2(static_cast<double>(importCurrentYear()) - year));
    };
}

// The fields whose -1 means "the project setting applies".
void addSettingRules(RuleTable& r) {
    r["PCPERC"] = [](Target& t) { t.store(t.d.PCPERC, heldOrDefault(t, 1, 50)); };
    r["PCNEXT"] = [](Target& t) { t.store(t.d.PCNEXT, heldOrDefault(t, 10, 999)); };
    r["REGENDELAY"] = [](Target& t) {
        std::optional<double> v = t.numeric();
        if (v && *v < 0) v = -1;
        if (v && *v > 999) v = 999;
        t.store(t.c.REGENDELAY, v ? toI2(*v) : int16_t{-1});
    };
    r["VMINCUTAGE"] = [](Target& t) { t.store(t.c.MINCUTAGE[0], wholeOrDefault(t)); };
    r["TMINCUTAGE"] = [](Target& t) { t.store(t.c.MINCUTAGE[1], wholeOrDefault(t)); };
    r["HAR1"] = [](Target& t) { t.store(t.d.HAR[0], wholeOrDefault(t)); };
    r["HAR2"] = [](Target& t) { t.store(t.d.HAR[1], wholeOrDefault(t)); };
    r["VMINCUTDBH"] = [](Target& t) { t.store(t.c.MINCUTDBH[0], realOrDefault(t)); };
    r["TMINCUTDBH"] = [](Target& t) { t.store(t.c.MINCUTDBH[1], realOrDefault(t)); };
    r["VMINCUTVOL"] = [](Target& t) { t.store(t.c.MINCUTVOL[0], realOrDefault(t)); };
    r["TMINCUTVOL"] = [](Target& t) { t.store(t.c.MINCUTVOL[1], realOrDefault(t)); };
    r["OAF1"] = [](Target& t) { t.store(t.d.OAF1, wholeOrDefault(t)); };
    r["OAF2"] = [](Target& t) { t.store(t.d.OAF2, wholeOrDefault(t)); };
    r["CLOSURE"] = [](Target& t) { t.store(t.d.CLOSURE, wholeOrDefault(t)); };
}

void addCodeRules(RuleTable& r) {
    r["NAME"] = [](Target& t) { t.store(t.d.NAME, t.value); };
    r["NCDESC"] = [](Target& t) { t.store(t.g.NCDESC, t.value); };
    r["PSYUBLOCK"] = [](Target& t) { t.store(t.d.PSYUBLOCK, t.value); };
    r["REGION"] = [](Target& t) { t.store(t.d.REGION, t.value); };
    r["COMP"] = [](Target& t) { t.store(t.d.COMP, t.value); };
    r["COMPL"] = [](Target& t) { t.store(t.d.COMPL, t.value); };
    r["VSICALC"] = [](Target&) {};  // output only
    r["VCCCALC"] = [](Target&) {};
    r["DELETE"] = [](Target& t) {
        t.store(t.c.DELETE, int16_t(t.first() == 'Y' || t.first() == '1' ? 1 : 0));
    };
    r["EXCLUDE"] = [](Target& t) {
        t.store(t.c.EXCLUDE, int16_t(t.first() == 'Y' || t.first() == '1' ? 1 : 0));
    };
    r["OWNERSHIP"] = [](Target& t) { t.store(t.c.OWNERSHIP, ownershipIndex(t.m.Ref, t.first())); };
    r["FIZ"] = [](Target& t) {
        if (t.first() >= 'A' && t.first() <= 'L')
            return t.store(t.d.FIZ, std::string(1, t.first()));
        t.message = "FIZ not found: " + t.value;
    };
    // Only a text of two or more characters is looked at, so "PC" is a partial cut while "P"
    // and "1" are a clearcut, whatever the description says; files in use depend on it.
    r["SILVI"] = [](Target& t) {
        t.store(t.d.SILVI, int16_t(t.value.size() > 1 && t.first() == 'P' ? 1 : 0));
    };
    r["EXISTINGMGNT"] = [](Target& t) {
        if (!t.value.empty()) setManagement(t, 0, 4, "Existing Management not found: ");
    };
    r["FUTUREMGNT"] = [](Target& t) { setManagement(t, 1, 2, "Future Management not found: "); };
    r["STOCKING"] = [](Target& t) {
        t.store(t.d.STOCKING,
                t.first() == 'R' ? std::string("R") : formatNumber(importNumber(t.value), "0"));
    };
    r["THIN"] = [](Target& t) { t.store(t.d.THIN, yesFlag(t, 'Y')); };
    r["COMTHIN"] = [](Target& t) { t.store(t.g.COMTHIN, yesFlag(t, 'Y')); };
    r["FERT"] = [](Target& t) { t.store(t.g.FERT, yesFlag(t, 'Y')); };
    r["REGEN"] = [](Target& t) { t.store(t.d.REGEN, yesFlag(t, 'P')); };
    r["FINCTYPE"] = [](Target& t) {
        const char c = t.first();
        t.store(t.g.FINCTYPE, int16_t(c == 'H' || c == '2' ? 2 : (c == 'V' || c == '1' ? 1 : 0)));
    };
}

const RuleTable& rules() {
    static const RuleTable table = [] {
        RuleTable r;
        addNumberRules(r);
        addSettingRules(r);
        addCodeRules(r);
        addSpeciesRules(r);
        return r;
    }();
    return table;
}

void markCurves(PolyData& d, ModelTag tag) {
    if (tag == ModelTag::VDYP || tag == ModelTag::Both) d.YIELDSTATE[0] = 1;
    if (tag == ModelTag::TIPSY || tag == ModelTag::Both) d.YIELDSTATE[1] = 1;
}

}  // namespace

double importNumber(std::string_view value) {
    const std::string cleaned = cleanCell(value);
    return cleaned.empty() ? 0.0 : tolerantNumber(cleaned);
}

std::optional<double> importNumeric(std::string_view value) {
    return cellNumber(value);
}

int importCurrentYear() {
    return partsFromDayCount(dateNow()).year;
}

void ImportItem(Model& m, std::string_view key, std::string_view value, std::string& message) {
    message.clear();
    const std::string k = toUpper(trim(key));
    const auto rule = rules().find(k);
    if (rule == rules().end()) {
        message = "Variable not found: " + k;
        return;
    }
    const std::string v = trim(value);
    const int slot =
        k.size() > 2 && std::isdigit(static_cast<unsigned char>(k[2])) ? speciesSlot(k) : 0;
    Target t{m, m.NewPoly, m.NewPolyC, m.NewPolyM, v, message, static_cast<std::size_t>(slot)};
    try {
        rule->second(t);
    } catch (const ArborexError& e) {
        // A number beyond its field's width: the rule stopped before storing.
        if (e.number() != ErrOverflow) throw;
        message = "Value out of range for " + k + ": " + v;
        return;
    }
    if (t.changed) markCurves(m.NewPoly, variableTag(k));
}

}  // namespace arborex
