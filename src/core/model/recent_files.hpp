#pragma once
// The recent-project list: four paths, index 0 the newest, kept in the settings store.

#include <string>

#include "base/host.hpp"
#include "model/model.hpp"

namespace arborex {

// Puts `path` at the top; a path already listed moves up instead of being added twice.
void AddLast(Model& m, Host& host, const std::string& path);
// Moves entry `index` to the top, shifting those above it down one.
void OrderLast(Model& m, Host& host, int index);
// Writes the list to the user root, keys FILE0..FILE3 of section FILES.
void SaveRegLast(const Model& m, SettingsStore& settings);
// Reads the list back; missing keys are filled with empty entries.
void LoadRegLast(Model& m, SettingsStore& settings);
// "&" + i + " " + path, or "&" + i + "   -empty-".
std::string recentCaption(const Model& m, int index);

}  // namespace arborex
