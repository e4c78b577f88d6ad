#include "standin/species_codes.hpp"

#include <algorithm>
#include <cctype>
#include <vector>

#include "base/text.hpp"
#include "standin/standin_files.hpp"

namespace arborex::standin {
namespace {

std::vector<std::string> splitTabs(const std::string& line) {
    std::vector<std::string> fields(1);
    for (char c : line) {
        if (c == '\t')
            fields.emplace_back();
        else
            fields.back() += c;
    }
    return fields;
}

// The texts between pairs of quotation marks; an unclosed last one runs to the line's end.
std::vector<std::string> quotedFields(const std::string& line) {
    std::vector<std::string> fields;
    std::size_t at = line.find('"');
    while (at != std::string::npos) {
        const std::size_t close = line.find('"', at + 1);
        fields.push_back(
            line.substr(at + 1, close == std::string::npos ? std::string::npos : close - at - 1));
        if (close == std::string::npos) break;
        at = line.find('"', close + 1);
    }
    return fields;
}

void accept(SpeciesTable& table, const std::string& code, const std::string& tableCode) {
    const std::string key = toUpper(trim(code));
    if (!key.empty()) table.codes.emplace(key, tableCode);
}

}  // namespace

std::optional<std::string> SpeciesTable::resolve(std::string_view code) const {
    const std::string key = toUpper(trim(code));
    if (loaded) {
        const auto found = codes.find(key);
        if (found == codes.end()) return std::nullopt;
        return found->second;
    }
    if (key.empty() || key.size() > 2) return std::nullopt;
    for (char c : key)
        if (!std::isalpha(static_cast<unsigned char>(c))) return std::nullopt;
    return key;
}

SpeciesTable loadSpeciesV(const std::string& path) {
    SpeciesTable table;
    const auto lines = readLines(path);
    if (!lines) return table;
    table.loaded = true;
    for (const std::string& line : *lines) {
        const std::vector<std::string> fields = splitTabs(line);
        if (fields.size() < 2 || trim(fields[1]).empty()) continue;
        const std::string code = toUpper(trim(fields[0]));
        accept(table, code, code);
        if (toUpper(trim(fields[1])) == "D") table.deciduous.insert(code);
        for (std::size_t alias = 4; alias < fields.size(); ++alias)
            accept(table, fields[alias], code);
    }
    return table;
}

SpeciesTable loadSpeciesT(const std::string& path) {
    SpeciesTable table;
    const auto lines = readLines(path);
    if (!lines) return table;
    table.loaded = true;
    for (const std::string& line : *lines) {
        if (std::count(line.begin(), line.end(), '"') < 4) continue;
        const std::vector<std::string> fields = quotedFields(line);
        const std::string code = toUpper(trim(fields[0]));
        accept(table, fields[1], code);
        accept(table, code, code);
    }
    return table;
}

}  // namespace arborex::standin
