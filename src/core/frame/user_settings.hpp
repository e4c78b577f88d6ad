#pragma once
// Everything that outlives a project, in one table: each setting's section, key, root, default
// and the model field it fills. Reads fill themselves: a missing value is written back with its
// default, so that after a first run the store shows every setting.

#include <string>
#include <vector>

#include "base/host.hpp"

namespace arborex {

struct Model;

enum class SettingKind {
    Text,      // a string, or a folder or program path
    Whole,     // a whole number, read by the numeric rule
    Fraction,  // a number with a fraction, written in `format`
};

struct SettingDef {
    const char* section;
    const char* key;
    bool machine;  // false: the user root
    SettingKind kind;
    // The default as text; nullptr: the value the model holds when the setting is read (the
    // program's defaults are in place by then).
    const char* fallback;
    const char* format;   // how a Fraction is written; nullptr for the shortest exact form
    const char* caption;  // what the settings screen calls it; nullptr when not shown there
    std::string (*getText)(const Model&);
    void (*setText)(Model&, const std::string&);
    double (*getNumber)(const Model&);
    void (*setNumber)(Model&, double);
    // For the editors: the default is the desktop's program for this extension.
    const char* associatedExt = nullptr;
    // False for the folders whose reading has rules of its own (LoadRegistry, DefaultPaths).
    bool readByLoadRegistry = true;
};

// The settings in the order they are read, without the folders and recent files that have
// rules of their own.
const std::vector<SettingDef>& settingsTable();

// Reads `def` from the store into the model, writing the default back when it is missing.
void readSetting(Model& m, Host& host, const SettingDef& def);
// Writes the model's value of `def` to the store.
void writeSetting(const Model& m, SettingsStore& settings, const SettingDef& def);

// Why `text` cannot be stored for `def` ("... must be a whole number from -32768 to 32767."),
// empty when it can.
std::string settingProblem(const SettingDef& def, const std::string& text);
// True for the settings a project carries a copy of (curve bounds and model options): changed
// on the settings screen, they apply from the next new project.
bool isProjectSetting(const SettingDef& def);

// Reads every setting over the program's defaults. A new user (no documents folder stored, or
// one an old installer left, holding "mkerr_b") gets the default folder, a "sample" folder in
// it and the installation's sample projects copied there.
void LoadRegistry(Model& m, Host& host);

// The "Save Default" buttons: section HARVEST but PCNETDOWN (which keeps its first value), and
// the user's name, company, licence and district.
void SaveRegHarvest(const Model& m, SettingsStore& settings);
void SaveRegProjectInfo(const Model& m, SettingsStore& settings);
// The settings screen's groups: folders, programs, curve bounds, display and colours of the
// user root, and of the machine root too when `machine`.
void SaveRegSettings(const Model& m, SettingsStore& settings, bool machine);

}  // namespace arborex
