#pragma once
// One variable of the catalogue set from a text, on the scratch polygon (NewPoly, NewPolyC,
// NewPolyM). Every import, pasted cell and grid edit goes through here, so a file, the
// clipboard and the keyboard obey the same rules.

#include <optional>
#include <string>
#include <string_view>

#include "model/model.hpp"

namespace arborex {

// Sets the variable `key` (trimmed, without regard to case) from `value` (trimmed) on the
// scratch polygon. A bad value puts a text in `message` ("FIZ not found: X", "Variable not
// found: KEY", a species code the loaded table does not know, a number beyond its field's
// width) and leaves the field as it was; otherwise `message` is emptied. When the field
// changed, the variable's tag marks the scratch polygon's curves out of date (YIELDSTATE 1).
//
// Numbers are read by the cell reader: "+" becomes ".", "$", ",", "%" and blanks go, an empty
// result is 0, otherwise the leading number counts ("$1,234.5" is 1234.5, "+3" is 0.3).
void ImportItem(Model& m, std::string_view key, std::string_view value, std::string& message);

// The cell reader's number: 0 for an empty cell, else the leading number of the cleaned text.
double importNumber(std::string_view value);
// The number when the cleaned cell is exactly one, as the "numeric" rules test it.
std::optional<double> importNumeric(std::string_view value);

// The present calendar year, from which an AGE of four or more characters (a year) counts.
int importCurrentYear();

}  // namespace arborex
