#pragma once
// Reading TIPSY's files: found in any case of their names, and read by column. Columns count
// from 1, as the layouts are described; a line shorter than a field yields what it has of it.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

#include "base/file_names.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"

namespace arborex::tipsy {

// `path` as it is spelled on disk, its name matched without regard to case; `path` itself when
// no such file exists. Files copied from another system may differ in case.
inline std::string onDisk(const std::string& path) {
    const std::filesystem::path p(path);
    const std::string folder = p.parent_path().string();
    const std::string found =
        findFileNoCase(folder.empty() ? "./" : folder + "/", p.filename().string());
    return found.empty() ? path : found;
}

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
