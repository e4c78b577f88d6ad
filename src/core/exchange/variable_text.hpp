#pragma once
// A polygon's variable as the data grid and its export show it. A value in square brackets is
// not the polygon's own but the project setting or calculated value it follows; importing the
// text again gives the polygon back unchanged.

#include <string>
#include <string_view>

#include "model/model.hpp"

namespace arborex {

// The text of the variable `key` (without regard to case) for `polygon`. An unknown key gives
// an empty text and "Variable not found: " with the key in `message`; otherwise `message` is
// emptied.
std::string MakeVarStr(const Model& m, std::string_view key, int polygon, std::string& message);

// An ownership index's one-letter code: the loaded list's, or the installed C, P, T, O.
char ownershipLetter(const ReferenceTables& ref, int16_t index);
// "VDYP", "TIPSY", "NC", "NSR" for 0..3, "?" for anything else.
std::string managementWord(int16_t code);

}  // namespace arborex
