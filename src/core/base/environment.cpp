#include "base/environment.hpp"

#include <cstdlib>

#include "base/text.hpp"

namespace arborex {

static std::string getVariable(const char* name) {
    const char* value = std::getenv(name);
    return value ? std::string(value) : std::string();
}

std::string ProcessEnvironment::variable(const std::string& name) {
    const std::string key = toUpper(name);
    if (key == "APPDATA") {
        std::string data = getVariable("XDG_DATA_HOME");
        if (!data.empty()) return data;
        const std::string home = getVariable("HOME");
        return home.empty() ? std::string() : home + "/.local/share";
    }
    if (key == "USERNAME") {
        std::string user = getVariable("USER");
        return user.empty() ? getVariable("LOGNAME") : user;
    }
    if (key == "USERPROFILE") return getVariable("HOME");
    return getVariable(name.c_str());
}

std::string ProcessEnvironment::documentsFolder() {
    std::string documents = getVariable("XDG_DOCUMENTS_DIR");
    if (!documents.empty()) return documents;
    const std::string home = getVariable("HOME");
    return home.empty() ? std::string() : home + "/Documents";
}

std::string FixedEnvironment::variable(const std::string& name) {
    auto it = variables.find(toUpper(name));
    return it == variables.end() ? std::string() : it->second;
}

std::string FixedEnvironment::applicationFor(const std::string& path) {
    const auto dot = path.rfind('.');
    if (dot == std::string::npos) return {};
    auto it = applications.find(toLower(path.substr(dot)));
    return it == applications.end() ? std::string() : it->second;
}

}  // namespace arborex
