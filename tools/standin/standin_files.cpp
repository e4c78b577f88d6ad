#include "standin/standin_files.hpp"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "base/file_names.hpp"
#include "base/number_text.hpp"
#include "base/text.hpp"

namespace arborex::standin {

namespace fs = std::filesystem;

std::string findInput(const std::string& given) {
    if (fileExists(given)) return given;
    const fs::path path(given);
    return findFileNoCase(path.parent_path().string(), path.filename().string());
}

std::optional<std::vector<std::string>> readLines(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) return std::nullopt;
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(std::move(line));
    }
    return lines;
}

bool writeLines(const std::string& path, const std::vector<std::string>& lines) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    for (const std::string& line : lines) out << line << "\r\n";
    out.close();
    return static_cast<bool>(out);
}

std::string columns(const std::string& line, int column, int width) {
    const std::size_t from = static_cast<std::size_t>(column > 0 ? column - 1 : 0);
    if (from >= line.size() || width <= 0) return {};
    return line.substr(from, static_cast<std::size_t>(width));
}

void put(std::string& line, int column, int width, std::string_view text, bool pad) {
    if (column < 1 || width <= 0) return;
    const std::size_t from = static_cast<std::size_t>(column - 1);
    std::string field(text.substr(0, static_cast<std::size_t>(width)));
    if (pad) field.resize(static_cast<std::size_t>(width), ' ');
    if (line.size() < from + field.size()) line.resize(from + field.size(), ' ');
    line.replace(from, field.size(), field);
}

namespace {

// `value` with `places` decimals as printf's "%.*f" writes it (to_chars is exact in the same
// way, and several times faster over the hundreds of thousands of numbers of a large run).
std::string_view fixedText(char (&buffer)[400], double value, int places) {
    const auto [end, failed] =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, places);
    if (failed != std::errc{}) return {};
    return {buffer, static_cast<std::size_t>(end - buffer)};
}

std::string rightAligned(std::string_view text, int width) {
    std::string out;
    if (static_cast<int>(text.size()) < width)
        out.assign(static_cast<std::size_t>(width) - text.size(), ' ');
    out.append(text);
    return out;
}

}  // namespace

std::string fixedNumber(double value, int width, int decimals) {
    char buffer[400];
    for (int places = std::max(decimals, 0); places >= 0; --places) {
        const std::string_view text = fixedText(buffer, value, places);
        if (!text.empty() && static_cast<int>(text.size()) <= width)
            return rightAligned(text, width);
    }
    // Not even the whole number fits: the largest (or smallest) one that does.
    const int digits = std::clamp(value < 0 ? width - 1 : width, 1, 18);
    const double largest = std::pow(10.0, digits) - 1.0;
    return rightAligned(fixedText(buffer, value < 0 ? -largest : largest, 0), width);
}

std::string decimalText(double value, int decimals) {
    char buffer[400];
    return std::string(fixedText(buffer, value, std::max(decimals, 0)));
}

NumberField numberAt(const std::string& line, int column, int width) {
    const std::string text = trim(columns(line, column, width));
    NumberField field;
    if (text.empty()) return field;
    field.value = strictNumber(text);
    field.malformed = !field.value;
    return field;
}

std::string findReferenceFile(const std::string& name) {
    std::vector<std::string> folders;
    if (const char* data = std::getenv("ARBOREX_DATA"); data && *data) folders.push_back(data);
    std::error_code ec;
    const fs::path program = fs::read_symlink("/proc/self/exe", ec);
    if (!ec) {
        folders.push_back(program.parent_path().string());
        folders.push_back(program.parent_path().parent_path().string());
    }
    for (const std::string& folder : folders) {
        const std::string found = findFileNoCase(folder, name);
        if (!found.empty()) return found;
    }
    return {};
}

}  // namespace arborex::standin
