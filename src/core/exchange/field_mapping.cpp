// The user's mapping of unmatched fields.

#include "exchange/field_mapping.hpp"

namespace arborex {

std::vector<std::string> mappingChoices() {
    return {};
}
bool isMappingKey(const std::string&) {
    return false;
}
void applyFieldMapping(ColumnMatch&, const FieldMapping&) {}
std::string headerKey(const std::vector<std::string>&) {
    return {};
}
FieldMapping loadFieldMapping(SettingsStore&, const std::vector<std::string>&) {
    return {};
}
void saveFieldMapping(SettingsStore&, const std::vector<std::string>&, const FieldMapping&) {}

}  // namespace arborex
