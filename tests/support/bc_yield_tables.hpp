#pragma once
// The VDYP7 projected yield tables of the British Columbia inventory sample in the shared data
// folder (public data, read at test time and never copied into the repository), read with the
// program's own CSV splitter and tolerant number reader. Tests that use them must skip when
// bcYieldTableFile() does not exist.

#include <algorithm>
#include <array>
#include <cstddef>
#include <fstream>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "base/host.hpp"
#include "base/input_file.hpp"
#include "base/number_text.hpp"
#include "base/split_csv.hpp"

namespace arborex::test {

inline std::string bcYieldTableFile() {
    return std::string(ARBOREX_SHARED_DATA_DIR) + "/bc-vri-sample/vdyp7_yield_tables_a.csv";
}

// What a row holds, by column: net merchantable volume (m3/ha), the six species volumes, the
// quadratic mean diameter (cm) and the dominant height (m), the one height given at every age.
inline const std::array<std::string, 9> kValueColumns = {
    "PRJ_VOL_DWB",     "PRJ_SP1_VOL_DWB", "PRJ_SP2_VOL_DWB", "PRJ_SP3_VOL_DWB", "PRJ_SP4_VOL_DWB",
    "PRJ_SP5_VOL_DWB", "PRJ_SP6_VOL_DWB", "PRJ_DIAMETER",    "PRJ_DOM_HT"};
enum TableValue : std::size_t { Volume = 0, FirstSpecies = 1, Diameter = 7, Height = 8 };

struct TableRow {
    int age = 0;
    std::array<double, 9> value{};
};

struct YieldTable {
    std::string name;                                     // FEATURE_ID and layer
    int currentAge = 0;                                   // of the row in mode "Crnt"
    std::vector<std::pair<std::string, double>> species;  // inventory code and percent
    std::vector<TableRow> rows;                           // by age, as in the file
};

// One table per FEATURE_ID and layer, in file order; empty when the file cannot be opened (the
// host has shown why). Blank cells read 0: back-projected rows carry no volume at all.
inline std::vector<YieldTable> readBcYieldTables(Host& host) {
    std::vector<YieldTable> tables;
    std::ifstream in;
    std::string line;
    if (OpenInputFile(host, bcYieldTableFile(), "VDYP7 yield tables", in) < 0 ||
        !readTextLine(in, line))
        return tables;
    std::vector<std::string> f;
    std::map<std::string, std::size_t> column;
    for (int i = SplitCSV(line, ',', f); i >= 1; --i) column[f[static_cast<std::size_t>(i)]] = i;
    const auto text = [&](const std::string& key) { return f.at(column.at(key)); };
    const auto number = [&](const std::string& key) { return tolerantNumber(text(key)); };
    while (readTextLine(in, line)) {
        if (SplitCSV(line, ',', f) == 0) continue;
        const std::string name = text("FEATURE_ID") + " L" + text("LAYER_ID");
        if (tables.empty() || tables.back().name != name) {
            YieldTable& t = tables.emplace_back();
            t.name = name;
            for (int s = 1; s <= 6; ++s) {
                const std::string code = text("SPECIES_" + std::to_string(s) + "_CODE");
                if (!code.empty())
                    t.species.emplace_back(code, number("SPECIES_" + std::to_string(s) + "_PCNT"));
            }
        }
        TableRow& row = tables.back().rows.emplace_back();
        row.age = static_cast<int>(number("PRJ_TOTAL_AGE"));
        for (std::size_t v = 0; v < kValueColumns.size(); ++v)
            row.value[v] = number(kValueColumns[v]);
        if (text("PRJ_MODE") == "Crnt") tables.back().currentAge = row.age;
    }
    return tables;
}

// A table's value at a grid age: its own row where it has one, the straight line between the
// rows either side where it has none, and the last row's value past its end.
inline double valueAt(const YieldTable& t, int age, std::size_t v) {
    const auto high = std::find_if(t.rows.begin(), t.rows.end(),
                                   [age](const TableRow& r) { return r.age >= age; });
    if (high == t.rows.end()) return t.rows.back().value[v];
    if (high->age == age || high == t.rows.begin()) return high->value[v];
    const TableRow& low = *(high - 1);
    const double f = static_cast<double>(age - low.age) / (high->age - low.age);
    return low.value[v] + f * (high->value[v] - low.value[v]);
}

}  // namespace arborex::test
