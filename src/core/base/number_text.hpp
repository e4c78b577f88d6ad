#pragma once
// Numbers read from text. Every reader here is locale-independent: the decimal point is always
// ".", whatever the process locale says, because project and exchange files are written that way.
//
// Grammar of a number: optional sign, digits, optional "." and fraction digits (at least one
// digit in all), optional exponent "E" or "e" with optional sign and digits.

#include <optional>
#include <string>
#include <string_view>

namespace arborex {

// The leading number of `text` after leading blanks (spaces, tabs, line ends); 0 when the text
// does not start with one. Trailing characters are ignored: "12abc" -> 12, "1e" -> 1.
// A number too large for a double throws ArborexError(ErrOverflow); one too small gives 0.
double tolerantNumber(std::string_view text);

// The number when the trimmed text is exactly a number, nullopt for anything else (empty text,
// "12a", "1,2", "1e", a value out of the range of a double).
std::optional<double> strictNumber(std::string_view text);

// What the cell reader sees of a grid or table cell: the trimmed text with "+" turned into "."
// and every "$", ",", "%" and blank removed.
std::string cleanCell(std::string_view cell);

// strictNumber(cleanCell(cell)): "$1,234" -> 1234, "45%" -> 45, "n/a" -> nullopt.
std::optional<double> cellNumber(std::string_view cell);

}  // namespace arborex
