// The variable catalogue's table and lookups.

#include "exchange/variable_catalogue.hpp"

#include "base/text.hpp"

namespace arborex {

namespace {

// Key, description, show flag, alternate keys; in the fixed order of the exchange format.
// clang-format off
constexpr std::array<Variable, kVariableCount> kCatalogue{{
    {"NAME", "Polygon Name (12 characters)", 0, "", ""},  // 0
    {"AREA", "Net Polygon Area (#.# ha)", 0, "POLYGON_AREA", ""},  // 1
    {"DELETE", "Is this polygon deleted? (Y/N or 1/0)", 1, "", ""},  // 2
    {"SORT", "Calculation Sort Order (1 to n)", -1, "", ""},  // 3
    {"EXCLUDE", "Exclude this Polygon from the calculation? (Y/N or 1/0)", -1, "", ""},  // 4
    {"OWNERSHIP", "Ownership Letter? (C=Crown, P=Private, T=Top-up, or O=Other)", 0, "", ""},  // 5
    {"ROADAREA", "Net Area of future Roads on this block (#.# ha)", 0, "", ""},  // 6
    {"AGE", "Current Age of Stand (#)", 0, "YEAR_OF_ESTAB", ""},  // 7
    {"FIZ", "Forest Inventory Zone (A to L: 1 character)", 0, "FIZ_CD", ""},  // 8
    {"SILVI", "Silviculture System (C or 0 for Clearcut, P or 1 for Partial Cut)", 0, "", ""},  // 9
    {"PCPERC", "Partial Cut Percent to remove. (1 to 50)", 0, "", ""},  // 10
    {"PCNEXT", "Partial Cut years to reentry. (10 to 999)", 0, "", ""},  // 11
    {"REGENDELAY", "Regen Delay. (0 to 999, {non-numeric} = Use Settings)", 1, "", ""},  // 12
    {"EXISTINGMGNT", "Existing Management (VDYP or 0, TIPSY or 1, NC or 2, NSR or 3)", 0, "", ""},  // 13
    {"FUTUREMGNT", "Future Management (VDYP, or TIPSY)", 0, "", ""},  // 14
    {"VMINCUTAGE", "VDYP Minimum Harvest Age (# or {non-numeric} = Use Settings)", 1, "", ""},  // 15
    {"VMINCUTDBH", "VDYP Minimum Harvest DBH (# or {non-numeric} = Use Settings)", 1, "", ""},  // 16
    {"VMINCUTVOL", "VDYP Minimum Harvest Volume/ha (# or {non-numeric} = Use Settings)", 1, "", ""},  // 17
    {"TMINCUTAGE", "TIPSY Minimum Harvest Age (# or {non-numeric} = Use Settings)", 1, "", ""},  // 18
    {"TMINCUTDBH", "TIPSY Minimum Harvest DBH (# or {non-numeric} = Use Settings)", 1, "", ""},  // 19
    {"TMINCUTVOL", "TIPSY Minimum Harvest Volume/ha (# or {non-numeric} = Use Settings)", 1, "", ""},  // 20
    {"HAR1", "Existing Management Target Harvest Age (# or {non-numeric} = Calculate)", 0, "", ""},  // 21
    {"HAR2", "Future Management Target Harvest Age (# or {non-numeric} = Calculate)", 0, "", ""},  // 22
    {"NSRRestockIn", "NSR Number of years to plant trees (#)", 1, "", ""},  // 23
    {"NCRestockIn", "Non-Commercial, Number of years to plant trees (#)", 1, "", ""},  // 24
    {"NCDesc", "Non-Commercial, Polygon Description (32 characters)", 1, "", ""},  // 25
    {"NCVolHa", "Non-Commercial, volume/ha at harvest (#)", 1, "", ""},  // 26
    {"NCDeciduous", "Non-Commercial, Deciduous % at harvest (#)", 1, "", ""},  // 27
    {"NCHeight", "Non-Commercial, Stand Height - used for height constraints (#)", 1, "", ""},  // 28
    {"VUTILIZ", "VDYP, Utilization Level", 0, "", ""},  // 29
    {"VAGETOTAL", "VDYP, Total Age (#.# or {blank})", 0, "AGE", ""},  // 30
    {"VHEIGHTTOTAL", "VDYP, Total Height (#.# or {blank})", 0, "HEIGHT", ""},  // 31
    {"VSITEINDEX", "VDYP, Site Index (#.# or {blank})", 0, "SITE_INDEX", ""},  // 32
    {"VSICALC", "VDYP, Calculated Siteindex (output only)", 1, "", ""},  // 33
    {"VCCCALC", "VDYP, Calculated Crown Closure (output only)", 1, "", ""},  // 34
    {"CLOSURE", "VDYP, Crown Closure (# or {blank})", 0, "CROWN_CLOSURE", ""},  // 35
    {"STOCKING", "VDYP, Stocking Class (R, 0, 1, 2, 3, or 4)", 0, "STOCKING_CLASS_CD", ""},  // 36
    {"PSYU", "PSYU Number (#)", 0, "PSYU", ""},  // 37
    {"PSYUBLOCK", "VDYP PSYU Block (1 character, usually {blank})", 1, "", ""},  // 38
    {"REGION", "PSYU, Region (#)", 1, "REGION", ""},  // 39
    {"COMP", "PSYU, Compartment (#)", 1, "COMPART", ""},  // 40
    {"COMPL", "PSYU, Compartment Letter (1 character)", 1, "COMPLET", ""},  // 41
    {"VAF", "VDYP, Volume Adjustment Factor (#.###)", 0, "", ""},  // 42
    {"VS1", "VDYP Species 1 Code (4 characters)", 0, "SPECIES_CD_1", ""},  // 43
    {"VP1", "VDYP Species 1 Percent (#)", 0, "SPECIES_PCT_1", ""},  // 44
    {"VX1", "VDYP Exclude Species 1 from AAC (1 or {blank} = Keep, 0 or E = Exclude)", 1, "", ""},  // 45
    {"VS2", "VDYP Species 2 Code (4 characters)", 0, "SPECIES_CD_2", ""},  // 46
    {"VP2", "VDYP Species 2 Percent (#)", 0, "SPECIES_PCT_2", ""},  // 47
    {"VX2", "VDYP Exclude Species 2 from AAC (1 or {blank} = Keep, 0 or E = Exclude)", 1, "", ""},  // 48
    {"VS3", "VDYP Species 3 Code (4 characters)", 0, "SPECIES_CD_3", ""},  // 49
    {"VP3", "VDYP Species 3 Percent (#)", 0, "SPECIES_PCT_3", ""},  // 50
    {"VX3", "VDYP Exclude Species 3 from AAC (1 or {blank} = Keep, 0 or E = Exclude)", 1, "", ""},  // 51
    {"VS4", "VDYP Species 4 Code (4 characters)", 0, "SPECIES_CD_4", ""},  // 52
    {"VP4", "VDYP Species 4 Percent (#)", 0, "SPECIES_PCT_4", ""},  // 53
    {"VX4", "VDYP Exclude Species 4 from AAC (1 or {blank} = Keep, 0 or E = Exclude)", 1, "", ""},  // 54
    {"VS5", "VDYP Species 5 Code (4 characters)", 0, "SPECIES_CD_5", ""},  // 55
    {"VP5", "VDYP Species 5 Percent (#)", 0, "SPECIES_PCT_5", ""},  // 56
    {"VX5", "VDYP Exclude Species 5 from AAC (1 or {blank} = Keep, 0 or E = Exclude)", 1, "", ""},  // 57
    {"VS6", "VDYP Species 6 Code (4 characters)", 0, "SPECIES_CD_6", ""},  // 58
    {"VP6", "VDYP Species 6 Percent (#)", 0, "SPECIES_PCT_6", ""},  // 59
    {"VX6", "VDYP Exclude Species 6 from AAC (1 or {blank} = Keep, 0 or E = Exclude)", 1, "", ""},  // 60
    {"TUTILIZ", "TIPSY Utilization Level (#.#)", 0, "", ""},  // 61
    {"TAGETOTAL", "TIPSY Total Age (#)", 0, "", ""},  // 62
    {"DENSITY", "TIPSY Initial Density (# stems/ha)", 0, "", ""},  // 63
    {"THINNED", "TIPSY Thinned (# stems/ha)", 0, "", ""},  // 64
    {"THIN", "TIPSY Is the stand thinned? (0 or N for no, 1 or Y for yes)", 0, "", ""},  // 65
    {"REGEN", "TIPSY Regeneration Type? (0 or N for Natural, 1 or P for Planted)", 0, "", ""},  // 66
    {"OAF1", "TIPSY Operational Adjustment Factor 1 (0 to 100, or {non-numeric} = use default)", 1, "", ""},  // 67
    {"OAF2", "TIPSY Operational Adjustment Factor 2 (0 to 100, or {non-numeric} = use default)", 1, "", ""},  // 68
    {"TS1", "TIPSY Species 1 Code (4 characters)", 0, "", ""},  // 69
    {"TP1", "TIPSY Species 1 Percent (#)", 0, "", ""},  // 70
    {"TH1", "TIPSY Species 1 Height (#)", 1, "", ""},  // 71
    {"TI1", "TIPSY Species 1 Siteindex (#)", 0, "", ""},  // 72
    {"TG1", "TIPSY Species 1 Genetic Worth Percent(0 to 30)", 1, "", ""},  // 73
    {"TS2", "TIPSY Species 2 Code (4 characters)", 0, "", ""},  // 74
    {"TP2", "TIPSY Species 2 Percent (#)", 0, "", ""},  // 75
    {"TH2", "TIPSY Species 2 Height (#)", 1, "", ""},  // 76
    {"TI2", "TIPSY Species 2 Siteindex (#)", 1, "", ""},  // 77
    {"TG2", "TIPSY Species 2 Genetic Worth Percent(0 to 30)", 1, "", ""},  // 78
    {"TS3", "TIPSY Species 3 Code (4 characters)", 0, "", ""},  // 79
    {"TP3", "TIPSY Species 3 Percent (#)", 0, "", ""},  // 80
    {"TH3", "TIPSY Species 3 Height (#)", 1, "", ""},  // 81
    {"TI3", "TIPSY Species 3 Siteindex (#)", 1, "", ""},  // 82
    {"TG3", "TIPSY Species 3 Genetic Worth Percent(0 to 30)", 1, "", ""},  // 83
    {"TS4", "TIPSY Species 4 Code (4 characters)", 0, "", ""},  // 84
    {"TP4", "TIPSY Species 4 Percent (#)", 0, "", ""},  // 85
    {"TH4", "TIPSY Species 4 Height (#)", 1, "", ""},  // 86
    {"TI4", "TIPSY Species 4 Siteindex (#)", 1, "", ""},  // 87
    {"TG4", "TIPSY Species 4 Genetic Worth Percent(0 to 30)", 1, "", ""},  // 88
    {"TS5", "TIPSY Species 5 Code (4 characters)", 0, "", ""},  // 89
    {"TP5", "TIPSY Species 5 Percent (#)", 0, "", ""},  // 90
    {"TH5", "TIPSY Species 5 Height (#)", 1, "", ""},  // 91
    {"TI5", "TIPSY Species 5 Siteindex (#)", 1, "", ""},  // 92
    {"TG5", "TIPSY Species 5 Genetic Worth Percent(0 to 30)", 1, "", ""},  // 93
    {"ComThin", "TIPSY Commercial Thin Stand? (1 or Y = Yes, 0 or N = No)", 1, "", ""},  // 94
    {"CTStemha", "TIPSY Commercial Thin to Density (331-816 Stems/ha)", 1, "", ""},  // 95
    {"CTHeight", "TIPSY Commercial Thin to Height (PL = 16,18,22 / FDC = 21,27,33)", 1, "", ""},  // 96
    {"Fert", "TIPSY Ferterlize Stand? (1 or Y = Yes, 0 or N = No)", 1, "", ""},  // 97
    {"FIncrease", "TIPSY Volume Increase due to ferterlize (#)", 1, "", ""},  // 98
    {"FIncType", "TIPSY Volume Increase Type (Absolute Percent = 0-50%, FDc Volume Increase 0-50m\xb3" ", Other species Volume Increase 0-15m\xb3" ")", 1, "", ""},  // 99
    {"FStartYear", "TIPSY Years from establishment (#)", 1, "", ""},  // 100
}};
// clang-format on

constexpr int kFirstVdypTagged = 29;   // "VUTILIZ"
constexpr int kLastVdypTagged = 60;    // "VX6"
constexpr int kFirstTipsyTagged = 61;  // "TUTILIZ"
constexpr int kFizIndex = 8;
constexpr int kVsiCalcIndex = 33;
constexpr int kVccCalcIndex = 34;

}  // namespace

const std::array<Variable, kVariableCount>& SetupVars() {
    return kCatalogue;
}

int findVariable(std::string_view key) {
    const std::string wanted = trim(key);
    for (int i = 0; i < kVariableCount; ++i)
        if (equalsNoCase(kCatalogue[static_cast<std::size_t>(i)].VarKey, wanted)) return i;
    return -1;
}

ModelTag variableTag(std::string_view key) {
    const int index = findVariable(key);
    if (index == kFizIndex) return ModelTag::Both;
    if (index == kVsiCalcIndex || index == kVccCalcIndex) return ModelTag::None;
    if (index >= kFirstVdypTagged && index <= kLastVdypTagged) return ModelTag::VDYP;
    if (index >= kFirstTipsyTagged) return ModelTag::TIPSY;
    return ModelTag::None;
}

int speciesSlot(std::string_view key) {
    int number = 0;
    for (std::size_t i = 2; i < key.size() && key[i] >= '0' && key[i] <= '9'; ++i)
        number = number * 10 + (key[i] - '0');
    return number - 1;
}

std::string variableNamesText() {
    std::string text;
    for (const Variable& v : kCatalogue) {
        text += v.VarKey;
        text += '\t';
        text += v.VarDesc;
        text += "\r\n";
    }
    return text;
}

}  // namespace arborex
