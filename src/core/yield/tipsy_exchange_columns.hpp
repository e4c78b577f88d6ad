#pragma once
// Reading TIPSY's printed files by column. Columns count from 1, as the report's layout is
// described; a line shorter than a field yields what it has of it.

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/number_text.hpp"
#include "base/numeric.hpp"

namespace arborex::tipsy {

// Columns `first` to `last`, inclusive.
inline std::string_view columns(std::string_view line, std::size_t first, std::size_t last) {
    if (first > line.size()) return {};
    return line.substr(first - 1, last - first + 1);
}
// Column `first` to the end of the line.
inline std::string_view fromColumn(std::string_view line, std::size_t first) {
    return first > line.size() ? std::string_view{} : line.substr(first - 1);
}
inline bool holds(std::string_view line, std::string_view marker) {
    return line.find(marker) != std::string_view::npos;
}
// A polygon number as the files print it, from 1, turned into an index: -1 for a line about
// no polygon. Out of the i2 range it is an overflow.
inline int16_t polygonIndex(std::string_view field) {
    return toI2(tolerantNumber(field) - 1.0);
}

}  // namespace arborex::tipsy
