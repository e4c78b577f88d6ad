#include "platform/qt_settings_store.hpp"

#include <QSettings>

namespace arborex {

QtSettingsStore::QtSettingsStore()
    : user_(std::make_unique<QSettings>(QSettings::IniFormat, QSettings::UserScope, "Arborex",
                                        "Arborex")),
      machine_(std::make_unique<QSettings>(QSettings::IniFormat, QSettings::SystemScope, "Arborex",
                                           "Arborex")) {}

QtSettingsStore::QtSettingsStore(const QString& userFile, const QString& machineFile)
    : user_(std::make_unique<QSettings>(userFile, QSettings::IniFormat)),
      machine_(std::make_unique<QSettings>(machineFile, QSettings::IniFormat)) {}

QtSettingsStore::~QtSettingsStore() = default;

QSettings& QtSettingsStore::rootOf(SettingsRoot root) {
    return root == SettingsRoot::User ? *user_ : *machine_;
}

// INI keys are case-sensitive in QSettings; the store's keys are not, so they are kept upper.
static QString keyPath(const std::string& section, const std::string& key) {
    QString k = QString::fromStdString(key).toUpper();
    if (section.empty()) return "General/" + k;
    return QString::fromStdString(section).toUpper() + "/" + k;
}

std::optional<std::string> QtSettingsStore::read(SettingsRoot root, const std::string& section,
                                                 const std::string& key) {
    QVariant v = rootOf(root).value(keyPath(section, key));
    if (!v.isValid()) return std::nullopt;
    return v.toString().toStdString();
}

void QtSettingsStore::write(SettingsRoot root, const std::string& section, const std::string& key,
                            const std::string& value) {
    QSettings& store = rootOf(root);
    // Without the right to write the file (the machine root, for most users) nothing changes,
    // as the store reads back.
    if (!store.isWritable()) return;
    store.setValue(keyPath(section, key), QString::fromStdString(value));
    store.sync();
}

}  // namespace arborex
