#pragma once
// Fixed-column text as the VDYP files lay it out: columns count from 1, and a field that runs
// past the end of its line holds what the line has of it.

#include <cstddef>
#include <fstream>
#include <string>
#include <string_view>

namespace arborex::vdyp {

// Columns first .. first + width - 1 of `line`; shorter or empty past the line's end.
inline std::string_view columns(std::string_view line, std::size_t first, std::size_t width) {
    if (first == 0 || first > line.size()) return {};
    return line.substr(first - 1, width);
}
// Column `first` to the end of the line.
inline std::string_view columnsFrom(std::string_view line, std::size_t first) {
    return columns(line, first, std::string_view::npos);
}

// Opens a work file for writing, emptied; a folder that refuses it is a failure.
std::ofstream createWorkFile(const std::string& path);
// The path of an existing model output in any case of its name, empty when there is none.
std::string findOutput(const std::string& path);

}  // namespace arborex::vdyp
