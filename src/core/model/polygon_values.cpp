// The batch's setter: every field of the polygon screen and its treatment screens by the
// variable catalogue's key. Entry fields commit as the screen does; the lists take only what
// the screen's lists offer.

#include <cstddef>
#include <functional>
#include <optional>
#include <utility>

#include "base/errors.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "base/text.hpp"
#include "model/polygon_fields.hpp"

namespace arborex {

namespace {

struct Target {
    Model& m;
    Prompt& prompt;
    int polygon;
    PolyData& data;
    PolyCalc& calc;
    PolyMgmt& mgmt;
};
using Setter = std::function<void(Target&, const std::string&)>;
using KeyTable = std::vector<std::pair<std::string, Setter>>;

double numberIn(const std::string& text) {
    const std::optional<double> value = strictNumber(text);
    if (!value) throw ArborexError(ErrTypeMismatch, text);
    return *value;
}

int16_t wholeIn(const std::string& text, int low, int high) {
    const int16_t value = toI2(numberIn(text));
    if (value < low || value > high) throw ArborexError(ErrOverflow, text);
    return value;
}

// The entry of `list` (the screen's list when loaded, else the installed one) that the text
// names, without regard to case; ErrOverflow when it names none.
std::string choiceIn(const std::string& text, const std::vector<std::string>& list,
                     std::initializer_list<const char*> installed) {
    std::vector<std::string> entries = list;
    if (entries.empty()) entries.assign(installed.begin(), installed.end());
    for (const std::string& entry : entries)
        if (equalsNoCase(entry, text)) return toUpper(entry);
    throw ArborexError(ErrOverflow, text);
}

// A utilisation level: one of the list's numbers.
float levelIn(const std::string& text, const std::vector<std::string>& list) {
    const float value = toF4(numberIn(text));
    std::vector<std::string> entries = list;
    if (entries.empty()) entries = {"7.5", "12.5", "17.5", "22.5"};
    for (const std::string& entry : entries)
        if (strictNumber(entry) && toF4(*strictNumber(entry)) == value) return value;
    throw ArborexError(ErrOverflow, text);
}

int16_t ownershipIn(const ReferenceTables& ref, const std::string& text) {
    const int last = ref.OwnershipCount >= 0 ? ref.OwnershipCount : 3;
    if (strictNumber(text)) return wholeIn(text, 0, last);
    const std::array<char, 4> installed{'C', 'P', 'T', 'O'};
    const std::array<char, 4>& codes = ref.OwnershipCount >= 0 ? ref.OwnershipCodes : installed;
    if (text.size() == 1)
        for (int i = 0; i <= last; ++i)
            if (codes[static_cast<std::size_t>(i)] == toUpper(text)[0]) return toI2(i);
    throw ArborexError(ErrOverflow, text);
}

// A species code bound to its table row (VDYP or TIPSY); a code the loaded table does not know
// is out of range. Without a table the code is kept as typed.
void setSpecies(Target& t, const std::string& text, bool tipsy, std::size_t slot) {
    const ReferenceTables& ref = t.m.Ref;
    const std::string code = toUpper(text);
    int16_t row = 0;
    Code2 stored(code);
    if (!code.empty() && (tipsy ? ref.SpeciesTCount : ref.SpeciesVCount) > 0) {
        row = tipsy ? FindTSpecIdx(ref, code) : FindVSpecIdx(ref, code);
        if (row == 0) throw ArborexError(ErrOverflow, text);
        stored = (tipsy ? ref.SpeciesT : ref.SpeciesV).at(static_cast<std::size_t>(row)).Code;
    }
    if (tipsy) {
        t.data.TS.at(slot) = stored;
        t.data.TSIDX.at(slot) = row;
    } else {
        t.data.VS.at(slot) = stored;
        t.data.VSIDX.at(slot) = row;
    }
}

void addSpecies(KeyTable& keys, const std::string& key, bool tipsy, std::size_t slot) {
    keys.emplace_back(key, [tipsy, slot](Target& t, const std::string& text) {
        setSpecies(t, text, tipsy, slot);
    });
}

void addCommit(KeyTable& keys, const std::string& key, PolyField field, int slot = 0) {
    keys.emplace_back(key, [field, slot](Target& t, const std::string& text) {
        commitPolygonField(t.m, t.prompt, t.polygon, {field, slot}, text);
    });
}

template <typename Field>
void addWhole(KeyTable& keys, const std::string& key, Field field, int low, int high) {
    keys.emplace_back(key, [field, low, high](Target& t, const std::string& text) {
        *field(t) = wholeIn(text, low, high);
    });
}

template <std::size_t N, typename Record>
void addText(KeyTable& keys, const std::string& key, FixedString<N> Record::*member) {
    keys.emplace_back(key, [member](Target& t, const std::string& text) {
        if constexpr (std::is_same_v<Record, PolyData>)
            t.data.*member = text;
        else
            t.mgmt.*member = text;
    });
}

void addVdypSpecies(KeyTable& keys) {
    for (int s = 0; s < 6; ++s) {
        const std::string n = std::to_string(s + 1);
        const auto slot = static_cast<std::size_t>(s);
        addSpecies(keys, "VS" + n, false, slot);
        addCommit(keys, "VP" + n, PolyField::VP, s);
        addWhole(
            keys, "VX" + n, [slot](Target& t) { return &t.calc.VX[slot]; }, 0, 1);
    }
}

void addTipsySpecies(KeyTable& keys) {
    for (int s = 0; s < 5; ++s) {
        const std::string n = std::to_string(s + 1);
        const auto slot = static_cast<std::size_t>(s);
        addSpecies(keys, "TS" + n, true, slot);
        addCommit(keys, "TP" + n, PolyField::TP, s);
        addCommit(keys, "TH" + n, PolyField::TH, s);
        addCommit(keys, "TI" + n, PolyField::TI, s);
        addCommit(keys, "TG" + n, PolyField::TG, s);
    }
}

// In the variable catalogue's order.
KeyTable buildKeys() {
    KeyTable k;
    addCommit(k, "AREA", PolyField::AREA);
    k.emplace_back("OWNERSHIP", [](Target& t, const std::string& text) {
        t.calc.OWNERSHIP = ownershipIn(t.m.Ref, text);
    });
    addCommit(k, "ROADAREA", PolyField::ROADAREA);
    addCommit(k, "AGE", PolyField::AGE);
    k.emplace_back("FIZ", [](Target& t, const std::string& text) {
        t.data.FIZ = choiceIn(text, t.m.Ref.Choices.FIZ,
                              {"A", "B", "C", "D", "E", "F", "G", "H", "I", "J", "K", "L"});
    });
    addWhole(
        k, "SILVI", [](Target& t) { return &t.data.SILVI; }, 0, 1);
    addCommit(k, "PCPERC", PolyField::PCPERC);
    addCommit(k, "PCNEXT", PolyField::PCNEXT);
    addCommit(k, "REGENDELAY", PolyField::REGENDELAY);
    addWhole(
        k, "EXISTINGMGNT", [](Target& t) { return &t.data.MGNT[0]; }, 0, 3);
    addWhole(
        k, "FUTUREMGNT", [](Target& t) { return &t.data.MGNT[1]; }, 0, 1);
    addCommit(k, "HAR1", PolyField::HAR1);
    addCommit(k, "HAR2", PolyField::HAR2);
    addCommit(k, "NSRRESTOCKIN", PolyField::NSRRESTOCKIN);
    addCommit(k, "NCRESTOCKIN", PolyField::NCRESTOCKIN);
    addText(k, "NCDESC", &PolyMgmt::NCDESC);
    addCommit(k, "NCVOLHA", PolyField::NCVOLHA);
    addCommit(k, "NCDECIDUOUS", PolyField::NCDECIDUOUS);
    addCommit(k, "NCHEIGHT", PolyField::NCHEIGHT);
    k.emplace_back("VUTILIZ", [](Target& t, const std::string& text) {
        t.data.VUTILIZ = levelIn(text, t.m.Ref.Choices.VUTILIZ);
    });
    addCommit(k, "VAGETOTAL", PolyField::VAGETOTAL);
    addCommit(k, "VHEIGHTTOTAL", PolyField::VHEIGHTTOTAL);
    addCommit(k, "VSITEINDEX", PolyField::VSITEINDEX);
    addCommit(k, "CLOSURE", PolyField::CLOSURE);
    k.emplace_back("STOCKING", [](Target& t, const std::string& text) {
        t.data.STOCKING = choiceIn(text, t.m.Ref.Choices.STOCKING, {"R", "0", "1", "2", "3", "4"});
    });
    k.emplace_back("PSYU",
                   [](Target& t, const std::string& text) { t.data.PSYU = toI2(numberIn(text)); });
    addText(k, "PSYUBLOCK", &PolyData::PSYUBLOCK);
    addText(k, "REGION", &PolyData::REGION);
    addText(k, "COMP", &PolyData::COMP);
    addText(k, "COMPL", &PolyData::COMPL);
    addCommit(k, "VAF", PolyField::VAF);
    addVdypSpecies(k);
    k.emplace_back("TUTILIZ", [](Target& t, const std::string& text) {
        t.mgmt.TUTILIZ = levelIn(text, t.m.Ref.Choices.TUTILIZ);
    });
    addCommit(k, "TAGETOTAL", PolyField::TAGETOTAL);
    addCommit(k, "DENSITY", PolyField::DENSITY);
    addCommit(k, "THINNED", PolyField::THINNED);
    addWhole(
        k, "THIN", [](Target& t) { return &t.data.THIN; }, 0, 1);
    addWhole(
        k, "REGEN", [](Target& t) { return &t.data.REGEN; }, 0, 1);
    addCommit(k, "OAF1", PolyField::OAF1);
    addCommit(k, "OAF2", PolyField::OAF2);
    addTipsySpecies(k);
    addWhole(
        k, "COMTHIN", [](Target& t) { return &t.mgmt.COMTHIN; }, 0, 1);
    k.emplace_back("CTSTEMHA", [](Target& t, const std::string& text) {
        t.mgmt.CTSTEMHA = toI2(numberIn(text));
    });
    k.emplace_back("CTHEIGHT", [](Target& t, const std::string& text) {
        t.mgmt.CTHEIGHT = toF4(numberIn(text));
    });
    addWhole(
        k, "FERT", [](Target& t) { return &t.mgmt.FERT; }, 0, 1);
    k.emplace_back("FINCREASE", [](Target& t, const std::string& text) {
        t.mgmt.FINCREASE = toF4(numberIn(text));
    });
    addWhole(
        k, "FINCTYPE", [](Target& t) { return &t.mgmt.FINCTYPE; }, 0, 2);
    k.emplace_back("FSTARTYEAR", [](Target& t, const std::string& text) {
        t.mgmt.FSTARTYEAR = toI2(numberIn(text));
    });
    return k;
}

const KeyTable& keyTable() {
    static const KeyTable table = buildKeys();
    return table;
}

}  // namespace

bool setPolygonValue(Model& m, Prompt& prompt, int polygon, std::string_view key,
                     const std::string& text) {
    const std::string wanted = toUpper(trim(key));
    for (const auto& [name, set] : keyTable()) {
        if (name != wanted) continue;
        if (polygon < 0 || polygon > m.LastPoly) throw ArborexError(ErrSubscript);
        const auto p = static_cast<std::size_t>(polygon);
        Target target{m, prompt, polygon, m.Poly.at(p), m.PolyC.at(p), m.PolyM.at(p)};
        set(target, trim(text));
        return true;
    }
    return false;
}

std::vector<std::string> polygonValueKeys() {
    std::vector<std::string> keys;
    for (const auto& entry : keyTable()) keys.push_back(entry.first);
    return keys;
}

}  // namespace arborex
