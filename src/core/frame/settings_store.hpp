#pragma once
// The two-rooted settings store: a machine root for what an administrator sets once and a
// user root for each user's defaults. Keys are compared without regard to case.

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
    std::optional<std::string> read(SettingsRoot root, const std::string& section,
                                    const std::string& key) override;
    void write(SettingsRoot root, const std::string& section, const std::string& key,
               const std::string& value) override;

private:
    std::map<std::string, std::string> values_;
};

}  // namespace arborex
