#include "frame/project_info_settings.hpp"

namespace arborex {

void SaveRegProjectInfo(const Model& m, SettingsStore& settings) {
    settings.write(SettingsRoot::User, "USER", "USER", m.Header.User.str());
    settings.write(SettingsRoot::User, "USER", "COMPANY", m.Header.Company.str());
    settings.write(SettingsRoot::User, "USER", "ARBOREX", m.Header.Licence.str());
    settings.write(SettingsRoot::User, "USER", "DISTRICT", m.Header.District.str());
}

}  // namespace arborex
