#pragma once
// The two-rooted settings store: a machine root for what an administrator sets once and a
// user root for each user's defaults. Keys are compared without regard to case.

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>

namespace arborex {

enum class SettingsRoot { User, Machine };

class SettingsStore {
public:
    virtual ~SettingsStore() = default;
    // nullopt when the value is absent.
    virtual std::optional<std::string> read(SettingsRoot root, const std::string& section,
                                            const std::string& key) = 0;
    virtual void write(SettingsRoot root, const std::string& section, const std::string& key,
                       const std::string& value) = 0;
};

// An in-memory store: the batch front end's and the tests' store.
class MemorySettings final : public SettingsStore {
public:
    // Writes to the machine root are dropped, as for a user without administrator rights.
    bool machineReadOnly = false;

    std::optional<std::string> read(SettingsRoot root, const std::string& section,
                                    const std::string& key) override;
    void write(SettingsRoot root, const std::string& section, const std::string& key,
               const std::string& value) override;

private:
    std::map<std::string, std::string> values_;
};

// Raw read: an empty string when the value is absent.
std::string getRegistryStr(SettingsStore& store, const std::string& section, const std::string& key,
                           bool machine);
// Raw write.
void PutRegistryStr(SettingsStore& store, const std::string& section, const std::string& key,
                    const std::string& value, bool machine);
// Self-filling read: when the stored text is empty, `fallback` is written back and returned.
std::string getRegStr(SettingsStore& store, const std::string& section, const std::string& key,
                      const std::string& fallback, bool machine);
// The same, with a default that is worked out only when it is needed.
std::string getRegStr(SettingsStore& store, const std::string& section, const std::string& key,
                      const std::function<std::string()>& fallback, bool machine);
// Self-filling numeric read: an absent value writes `fallback` as text and returns it; a
// numeric value gives its number; any other text, or a number out of range, gives `fallback`
// and stays as it is. Whole numbers round half to even.
int32_t getRegLng(SettingsStore& store, const std::string& section, const std::string& key,
                  int32_t fallback, bool machine);
// The same rule for a value with a fraction; an absent value writes `fallbackText`.
double getRegNum(SettingsStore& store, const std::string& section, const std::string& key,
                 const std::string& fallbackText, bool machine);

}  // namespace arborex
