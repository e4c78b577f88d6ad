#include "base/settings_store.hpp"

#include <cctype>

#include "base/number_text.hpp"
#include "base/numeric.hpp"

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
    if (machineReadOnly && root == SettingsRoot::Machine) return;
    values_[memoryKey(root, section, key)] = value;
}

static SettingsRoot rootOf(bool machine) {
    return machine ? SettingsRoot::Machine : SettingsRoot::User;
}

std::string getRegistryStr(SettingsStore& store, const std::string& section, const std::string& key,
                           bool machine) {
    return store.read(rootOf(machine), section, key).value_or(std::string());
}

void PutRegistryStr(SettingsStore& store, const std::string& section, const std::string& key,
                    const std::string& value, bool machine) {
    store.write(rootOf(machine), section, key, value);
}

std::string getRegStr(SettingsStore& store, const std::string& section, const std::string& key,
                      const std::function<std::string()>& fallback, bool machine) {
    std::string value = getRegistryStr(store, section, key, machine);
    if (!value.empty()) return value;
    value = fallback();
    PutRegistryStr(store, section, key, value, machine);
    return value;
}

std::string getRegStr(SettingsStore& store, const std::string& section, const std::string& key,
                      const std::string& fallback, bool machine) {
    return getRegStr(
        store, section, key, [&fallback] { return fallback; }, machine);
}

double getRegNum(SettingsStore& store, const std::string& section, const std::string& key,
                 const std::string& fallbackText, bool machine) {
    const double fallback = tolerantNumber(fallbackText);
    const auto stored = store.read(rootOf(machine), section, key);
    if (!stored) {
        PutRegistryStr(store, section, key, fallbackText, machine);
        return fallback;
    }
    return strictNumber(*stored).value_or(fallback);
}

int32_t getRegLng(SettingsStore& store, const std::string& section, const std::string& key,
                  int32_t fallback, bool machine) {
    const double value = getRegNum(store, section, key, std::to_string(fallback), machine);
    // A number too large for the field reads like any other text that is not a number.
    if (!(value >= -2147483648.0 && value <= 2147483647.0)) return fallback;
    return toI4(value);
}

}  // namespace arborex
