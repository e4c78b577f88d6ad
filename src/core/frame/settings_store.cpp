#include "frame/settings_store.hpp"

#include <cctype>

namespace arborex {

static std::string memoryKey(SettingsRoot root, const std::string& section,
                             const std::string& key) {
    std::string k = (root == SettingsRoot::User ? "U\\" : "M\\") + section + "\\" + key;
    for (char& c : k) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return k;
}

std::optional<std::string> MemorySettings::read(SettingsRoot root, const std::string& section,
                                                const std::string& key) {
    auto it = values_.find(memoryKey(root, section, key));
    if (it == values_.end()) return std::nullopt;
    return it->second;
}

void MemorySettings::write(SettingsRoot root, const std::string& section, const std::string& key,
                           const std::string& value) {
    values_[memoryKey(root, section, key)] = value;
}

}  // namespace arborex
