// The user's mapping of unmatched fields, remembered per header.

#include "exchange/field_mapping.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdio>

#include "base/text.hpp"
#include "exchange/text_import.hpp"

namespace arborex {

namespace {

constexpr const char* kMappingSection = "ImportMap";
constexpr const char* kNameColumns[] = {kMapToMapsheet, kMapToPolygon, kMapToMapstand};

std::string fieldKey(const std::string& field) {
    return toUpper(trim(field));
}

// Clears every role the field had: a variable's column or one of the name columns.
void forgetColumn(ColumnMatch& match, int16_t column) {
    for (int16_t& of : match.ColumnOf)
        if (of == column) of = -1;
    for (int16_t* name : {&match.MapColumn, &match.PolyColumn, &match.StandColumn})
        if (*name == column) *name = -1;
}

}  // namespace

std::vector<std::string> mappingChoices() {
    std::vector<std::string> choices{""};
    for (const Variable& variable : SetupVars()) choices.emplace_back(variable.VarKey);
    choices.insert(choices.end(), std::begin(kNameColumns), std::end(kNameColumns));
    return choices;
}

bool isMappingKey(const std::string& key) {
    if (findVariable(key) >= 0) return true;
    return std::any_of(std::begin(kNameColumns), std::end(kNameColumns),
                       [&](const char* name) { return equalsNoCase(trim(key), name); });
}

void applyFieldMapping(ColumnMatch& match, const FieldMapping& mapping) {
    for (std::size_t i = 0; i < match.fields.size(); ++i) {
        const auto chosen = mapping.keyOfField.find(fieldKey(match.fields[i]));
        if (chosen == mapping.keyOfField.end() || !isMappingKey(chosen->second)) continue;
        const auto column = static_cast<int16_t>(i);
        const std::string key = toUpper(trim(chosen->second));
        forgetColumn(match, column);
        if (key == kMapToMapsheet)
            match.MapColumn = column;
        else if (key == kMapToPolygon)
            match.PolyColumn = column;
        else if (key == kMapToMapstand)
            match.StandColumn = column;
        else
            match.ColumnOf[static_cast<std::size_t>(findVariable(key))] = column;
        auto& unmatched = match.UnmatchedFields;
        const auto at = std::find(unmatched.begin(), unmatched.end(), match.fields[i]);
        if (at != unmatched.end()) unmatched.erase(at);
    }
}

std::string headerKey(const std::vector<std::string>& header) {
    // FNV-1a: the same header gives the same key in every run and on every platform.
    uint64_t hash = 14695981039346656037ull;
    for (std::size_t i = 0; i < header.size(); ++i) {
        const std::string field = (i > 0 ? "\t" : "") + fieldKey(header[i]);
        for (unsigned char c : field) hash = (hash ^ c) * 1099511628211ull;
    }
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
    return text;
}

FieldMapping loadFieldMapping(SettingsStore& store, const std::vector<std::string>& header) {
    FieldMapping mapping;
    const std::string stored =
        getRegistryStr(store, kMappingSection, headerKey(header), /*machine=*/false);
    for (const std::string& pair : splitOn(stored, "\t")) {
        const std::size_t equals = pair.rfind('=');
        if (equals == std::string::npos) continue;
        const std::string field = fieldKey(pair.substr(0, equals));
        const std::string key = trim(pair.substr(equals + 1));
        const bool inHeader = std::any_of(header.begin(), header.end(),
                                          [&](const auto& f) { return fieldKey(f) == field; });
        if (inHeader && isMappingKey(key)) mapping.keyOfField[field] = key;
    }
    return mapping;
}

void saveFieldMapping(SettingsStore& store, const std::vector<std::string>& header,
                      const FieldMapping& mapping) {
    std::string stored;
    for (const auto& [field, key] : mapping.keyOfField) {
        if (!isMappingKey(key)) continue;
        if (!stored.empty()) stored += "\t";
        stored += fieldKey(field) + "=" + trim(key);
    }
    PutRegistryStr(store, kMappingSection, headerKey(header), stored, /*machine=*/false);
}

}  // namespace arborex
