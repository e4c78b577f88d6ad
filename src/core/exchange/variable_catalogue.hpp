#pragma once
// The variable catalogue: every polygon field as the outside world sees it. The key heads a
// column of a data file and of the data grid; the index is part of the exchange format (grid
// columns, column maps and show flags all use it), so the table's order never changes.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace arborex {

struct Variable {
    std::string_view VarKey;
    std::string_view VarDesc;
    int16_t VarShow;           // 0 always shown, 1 only with "Advanced Columns", -1 never
    std::string_view VarAlt1;  // public inventory column names, empty when none
    std::string_view VarAlt2;
};

inline constexpr int kVariableCount = 101;
inline constexpr int kNameVariable = 0;  // the key column of every exchange

// The catalogue, indexed 0 to 100. Constant: calling it again gives the same table.
const std::array<Variable, kVariableCount>& SetupVars();

// Index of the variable whose VarKey equals `key` without regard to case (the key trimmed);
// -1 when none.
int findVariable(std::string_view key);

// Which curves a change of the variable touches.
enum class ModelTag { None, VDYP, TIPSY, Both };
// "FIZ" both; "VUTILIZ" to "VX6" VDYP, less the output-only "VSICALC" and "VCCCALC";
// "TUTILIZ" to "FStartYear" TIPSY; the keys before "VUTILIZ" none. Unknown keys: None.
ModelTag variableTag(std::string_view key);

// The species slot (0-based) of "VS1".."VX6" and "TS1".."TG5": the number from the third
// character on, less 1.
int speciesSlot(std::string_view key);

// The "Variable Names" help: each key, a tab, its description, one line each.
inline constexpr const char* kVariableNamesTitle = "Variable Names";
std::string variableNamesText();

}  // namespace arborex
