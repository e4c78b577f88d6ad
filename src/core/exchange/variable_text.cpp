// MakeVarStr's display rules, key by key.

#include "exchange/variable_text.hpp"

#include <cctype>
#include <functional>
#include <unordered_map>

#include "base/display_format.hpp"
#include "base/text.hpp"
#include "exchange/variable_catalogue.hpp"

namespace arborex {

namespace {

struct Source {
    const Model& m;
    int polygon;
    const PolyData& d;
    const PolyCalc& c;
    const PolyMgmt& g;
    std::size_t slot;
};
using Shower = std::function<std::string(const Source&)>;
using ShowTable = std::unordered_map<std::string, Shower>;

std::string bracketed(const std::string& text) {
    return "[" + text + "]";
}

// The value as "0", or the project's setting in brackets when the polygon follows it.
template <typename Value, typename Setting>
std::string orSetting(Value value, Setting setting) {
    if (value == Value(-1)) return bracketed(formatNumber(setting, "0"));
    return formatNumber(value, "0");
}

template <typename Value>
std::string blankWhenZero(Value value, const char* pattern) {
    return value == Value(0) ? std::string() : formatNumber(value, pattern);
}

std::string harvestAge(const Source& s, std::size_t which) {
    const int16_t age = s.d.HAR[which];
    if (age != -1) return formatNumber(age, "0");
    const int16_t model = s.d.MGNT[which];
    if (model >= 2) return bracketed("NA");
    const auto p = static_cast<std::size_t>(s.polygon);
    const int16_t calculated =
        p < s.m.HarvAge.size() ? s.m.HarvAge[p][static_cast<std::size_t>(model)].HarvestAge : 0;
    return bracketed(formatNumber(calculated, "0"));
}

void addText(ShowTable& t) {
    t["NAME"] = [](const Source& s) { return s.d.NAME.str(); };
    t["OWNERSHIP"] = [](const Source& s) {
        return std::string(1, ownershipLetter(s.m.Ref, s.c.OWNERSHIP));
    };
    t["FIZ"] = [](const Source& s) { return s.d.FIZ.str(); };
    t["STOCKING"] = [](const Source& s) { return s.d.STOCKING.str(); };
    t["PSYU"] = [](const Source& s) { return formatNumber(s.d.PSYU, "0"); };
    t["PSYUBLOCK"] = [](const Source& s) { return s.d.PSYUBLOCK.str(); };
    t["REGION"] = [](const Source& s) { return s.d.REGION.str(); };
    t["COMP"] = [](const Source& s) { return s.d.COMP.str(); };
    t["COMPL"] = [](const Source& s) { return s.d.COMPL.str(); };
    t["NCDESC"] = [](const Source& s) { return s.g.NCDESC.str(); };
    t["DELETE"] = [](const Source& s) { return std::string(s.c.DELETE == 1 ? "Yes" : ""); };
    t["EXCLUDE"] = [](const Source& s) { return std::string(s.c.EXCLUDE == 1 ? "Yes" : ""); };
    t["SILVI"] = [](const Source& s) { return std::string(s.d.SILVI == 1 ? "PC" : "CC"); };
    t["EXISTINGMGNT"] = [](const Source& s) { return managementWord(s.d.MGNT[0]); };
    t["FUTUREMGNT"] = [](const Source& s) {
        return s.d.MGNT[1] <= 1 ? managementWord(s.d.MGNT[1]) : std::string("?");
    };
    t["THIN"] = [](const Source& s) { return std::string(s.d.THIN == 1 ? "Yes" : "No"); };
    t["COMTHIN"] = [](const Source& s) { return std::string(s.g.COMTHIN == 1 ? "Yes" : "No"); };
    t["FERT"] = [](const Source& s) { return std::string(s.g.FERT == 1 ? "Yes" : "No"); };
    t["REGEN"] = [](const Source& s) {
        return std::string(s.d.REGEN == 1 ? "Planted" : "Natural");
    };
    t["FINCTYPE"] = [](const Source& s) {
        return std::string(s.g.FINCTYPE == 1 ? "Volume"
                                             : (s.g.FINCTYPE == 2 ? "Height" : "Percent"));
    };
}

void addNumbers(ShowTable& t) {
    t["AREA"] = [](const Source& s) { return formatNumber(s.d.AREA, "0.0"); };
    t["ROADAREA"] = [](const Source& s) { return formatNumber(s.g.ROADAREA, "0.0"); };
    t["NCVOLHA"] = [](const Source& s) { return formatNumber(s.g.NCVOLHA, "0.0"); };
    t["TUTILIZ"] = [](const Source& s) { return formatNumber(s.g.TUTILIZ, "0.0"); };
    // The levels are 7.5 to 22.5: shown as TUTILIZ is, so that they read back unchanged.
    t["VUTILIZ"] = [](const Source& s) { return formatNumber(s.d.VUTILIZ, "0.0"); };
    t["VAF"] = [](const Source& s) { return formatNumber(s.d.VAF, "0.000"); };
    t["SORT"] = [](const Source& s) { return formatNumber(s.c.SORT, "0"); };
    t["AGE"] = [](const Source& s) { return formatNumber(s.d.AGE, "0"); };
    t["TAGETOTAL"] = [](const Source& s) { return formatNumber(s.d.TAGETOTAL, "0"); };
    t["DENSITY"] = [](const Source& s) { return formatNumber(s.d.DENSITY, "0"); };
    t["THINNED"] = [](const Source& s) { return formatNumber(s.d.THINNED, "0"); };
    t["NSRRESTOCKIN"] = [](const Source& s) { return formatNumber(s.g.NSRRESTOCKIN, "0"); };
    t["NCRESTOCKIN"] = [](const Source& s) { return formatNumber(s.g.NCRESTOCKIN, "0"); };
    t["NCDECIDUOUS"] = [](const Source& s) { return formatNumber(s.g.NCDECIDUOUS, "0"); };
    t["NCHEIGHT"] = [](const Source& s) { return formatNumber(s.g.NCHEIGHT, "0"); };
    t["CTSTEMHA"] = [](const Source& s) { return formatNumber(s.g.CTSTEMHA, "0"); };
    t["FSTARTYEAR"] = [](const Source& s) { return formatNumber(s.g.FSTARTYEAR, "0"); };
    // Free numbers with no pattern of their own show all their digits.
    t["CTHEIGHT"] = [](const Source& s) { return formatNumber(s.g.CTHEIGHT, ""); };
    t["FINCREASE"] = [](const Source& s) { return formatNumber(s.g.FINCREASE, ""); };
    t["VAGETOTAL"] = [](const Source& s) { return blankWhenZero(s.d.VAGETOTAL, "0"); };
    t["VHEIGHTTOTAL"] = [](const Source& s) { return blankWhenZero(s.d.VHEIGHTTOTAL, "0"); };
    t["VSITEINDEX"] = [](const Source& s) { return blankWhenZero(s.d.VSITEINDEX, ""); };
    t["VSICALC"] = [](const Source& s) { return blankWhenZero(s.d.VSICALC, ""); };
    t["VCCCALC"] = [](const Source& s) { return blankWhenZero(s.c.VCCCALC, ""); };
    t["CLOSURE"] = [](const Source& s) {
        if (s.d.CLOSURE != -1) return formatNumber(s.d.CLOSURE, "0");
        if (s.c.VCCCALC == 0.0f) return bracketed("TBA");
        return bracketed(formatNumber(s.c.VCCCALC, "0"));
    };
}

void addSettings(ShowTable& t) {
    t["PCPERC"] = [](const Source& s) { return orSetting(s.d.PCPERC, s.m.Settings.PCperc); };
    t["PCNEXT"] = [](const Source& s) { return orSetting(s.d.PCNEXT, s.m.Settings.PCnext); };
    t["REGENDELAY"] = [](const Source& s) {
        return orSetting(s.c.REGENDELAY, s.m.Settings.REGENDELAY);
    };
    t["OAF1"] = [](const Source& s) { return orSetting(s.d.OAF1, s.m.Settings.OAF1); };
    t["OAF2"] = [](const Source& s) { return orSetting(s.d.OAF2, s.m.Settings.OAF2); };
    t["VMINCUTAGE"] = [](const Source& s) {
        return orSetting(s.c.MINCUTAGE[0], s.m.Settings.MINAGE);
    };
    t["TMINCUTAGE"] = [](const Source& s) {
        return orSetting(s.c.MINCUTAGE[1], s.m.Settings.MINAGE);
    };
    t["VMINCUTDBH"] = [](const Source& s) {
        return orSetting(s.c.MINCUTDBH[0], s.m.Settings.MINDIA);
    };
    t["TMINCUTDBH"] = [](const Source& s) {
        return orSetting(s.c.MINCUTDBH[1], s.m.Settings.MINDIA);
    };
    t["VMINCUTVOL"] = [](const Source& s) {
        return orSetting(s.c.MINCUTVOL[0], s.m.Settings.MINVOL);
    };
    t["TMINCUTVOL"] = [](const Source& s) {
        return orSetting(s.c.MINCUTVOL[1], s.m.Settings.MINVOL);
    };
    t["HAR1"] = [](const Source& s) { return harvestAge(s, 0); };
    t["HAR2"] = [](const Source& s) { return harvestAge(s, 1); };
}

void addSpecies(ShowTable& t) {
    for (int n = 1; n <= 6; ++n) {
        const std::string k = std::to_string(n);
        t["VS" + k] = [](const Source& s) { return s.d.VS.at(s.slot).str(); };
        t["VP" + k] = [](const Source& s) { return blankWhenZero(s.d.VP.at(s.slot), "0"); };
        t["VX" + k] = [](const Source& s) {
            return std::string(s.c.VX.at(s.slot) == 0 ? "E" : "");
        };
    }
    for (int n = 1; n <= 5; ++n) {
        const std::string k = std::to_string(n);
        t["TS" + k] = [](const Source& s) { return s.d.TS.at(s.slot).str(); };
        t["TP" + k] = [](const Source& s) { return blankWhenZero(s.d.TP.at(s.slot), "0"); };
        t["TH" + k] = [](const Source& s) { return blankWhenZero(s.d.TH.at(s.slot), "0"); };
        t["TI" + k] = [](const Source& s) { return blankWhenZero(s.d.TI.at(s.slot), "0"); };
        t["TG" + k] = [](const Source& s) { return blankWhenZero(s.g.TG.at(s.slot), "0"); };
    }
}

const ShowTable& showTable() {
    static const ShowTable table = [] {
        ShowTable t;
        addText(t);
        addNumbers(t);
        addSettings(t);
        addSpecies(t);
        return t;
    }();
    return table;
}

}  // namespace

char ownershipLetter(const ReferenceTables& ref, int16_t index) {
    static constexpr std::array<char, 4> installed{'C', 'P', 'T', 'O'};
    if (index < 0 || index > 3) return ' ';
    const auto i = static_cast<std::size_t>(index);
    return ref.OwnershipCount >= index ? ref.OwnershipCodes[i] : installed[i];
}

std::string managementWord(int16_t code) {
    static constexpr std::array<const char*, 4> words{"VDYP", "TIPSY", "NC", "NSR"};
    return code >= 0 && code <= 3 ? words[static_cast<std::size_t>(code)] : "?";
}

std::string MakeVarStr(const Model& m, std::string_view key, int polygon, std::string& message) {
    message.clear();
    const std::string k = toUpper(trim(key));
    const auto shower = showTable().find(k);
    if (shower == showTable().end()) {
        message = "Variable not found: " + k;
        return {};
    }
    const int slot =
        k.size() > 2 && std::isdigit(static_cast<unsigned char>(k[2])) ? speciesSlot(k) : 0;
    const auto p = static_cast<std::size_t>(polygon);
    const Source s{
        m, polygon, m.Poly.at(p), m.PolyC.at(p), m.PolyM.at(p), static_cast<std::size_t>(slot)};
    return shower->second(s);
}

}  // namespace arborex
