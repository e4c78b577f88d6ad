#pragma once
// The user's default project information: who they are, kept in the user root so that every new
// project starts with it.

#include "frame/settings_store.hpp"
#include "model/model.hpp"

namespace arborex {

// Writes User, Company, Licence and District of the header to section USER of the user root,
// under the keys USER, COMPANY, ARBOREX and DISTRICT.
void SaveRegProjectInfo(const Model& m, SettingsStore& settings);

}  // namespace arborex
