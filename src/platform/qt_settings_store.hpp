#pragma once
// The settings store over QSettings in INI format, organisation "Arborex": the user root in
// the user's configuration folder, the machine root in the system-wide one.

#include <QString>
#include <memory>

#include "base/settings_store.hpp"

class QSettings;

namespace arborex {

class QtSettingsStore final : public SettingsStore {
public:
    // The real store of this user and machine.
    QtSettingsStore();
    // A store over two given INI files (tests, portable installs).
    QtSettingsStore(const QString& userFile, const QString& machineFile);
    ~QtSettingsStore() override;

    std::optional<std::string> read(SettingsRoot root, const std::string& section,
                                    const std::string& key) override;
    void write(SettingsRoot root, const std::string& section, const std::string& key,
               const std::string& value) override;

private:
    QSettings& rootOf(SettingsRoot root);
    std::unique_ptr<QSettings> user_;
    std::unique_ptr<QSettings> machine_;
};

}  // namespace arborex
