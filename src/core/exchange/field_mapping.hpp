#pragma once
// The user's own matching of fields the catalogue does not know (an inventory's
// "POLYGON_NUMBER" taken as the polygon number, "EST_AGE_SPP1" as AGE), remembered for every
// file with the same header.

#include <map>
#include <string>
#include <vector>

#include "base/settings_store.hpp"
#include "exchange/database_import.hpp"

namespace arborex {

// The name columns a field may be mapped to besides the catalogue's keys.
inline constexpr const char* kMapToMapsheet = "MAPSHEET";
inline constexpr const char* kMapToPolygon = "POLYGON";
inline constexpr const char* kMapToMapstand = "MAPSTAND";

struct FieldMapping {
    // Field name in capitals -> catalogue key, or MAPSHEET, POLYGON, MAPSTAND.
    std::map<std::string, std::string> keyOfField;
};

// The keys a field may be mapped to, as a chooser lists them: "" (none), the catalogue's keys
// in order, then MAPSHEET, POLYGON, MAPSTAND.
std::vector<std::string> mappingChoices();

// True when `key` is a catalogue key (without regard to case) or one of the name columns.
bool isMappingKey(const std::string& key);

// Takes every field the mapping names as its chosen variable or name column, in place of what
// it matched before; it leaves UnmatchedFields. Unknown keys and fields are ignored.
void applyFieldMapping(ColumnMatch& match, const FieldMapping& mapping);

// The key under which a header's mapping is remembered: a stable hash of its field names in
// capitals, joined by tabs.
std::string headerKey(const std::vector<std::string>& header);

// The mapping remembered for this header (user root, section "ImportMap"); empty when none.
FieldMapping loadFieldMapping(SettingsStore& store, const std::vector<std::string>& header);
// Remembers the mapping for this header, replacing what was there.
void saveFieldMapping(SettingsStore& store, const std::vector<std::string>& header,
                      const FieldMapping& mapping);

}  // namespace arborex
