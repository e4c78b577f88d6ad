#pragma once
// What the program asks of the system it runs on, apart from files: the user's folders and
// name, and the desktop's program for a kind of document.

#include <map>
#include <string>

namespace arborex {

class SystemEnvironment {
public:
    virtual ~SystemEnvironment() = default;
    // The variables the settings defaults are built from, by their traditional names, with this
    // system's meanings: "APPDATA" the user's application data folder, "USERNAME" the login
    // name, "USERPROFILE" the home folder. Folders come without a trailing separator. Empty
    // when unknown.
    virtual std::string variable(const std::string& name) = 0;
    // The user's documents folder (what Windows calls "My Documents"), without a trailing
    // separator; empty when unknown.
    virtual std::string documentsFolder() = 0;
    // The program the desktop opens `path` with, by its type; empty when there is none.
    virtual std::string applicationFor(const std::string& path) = 0;
};

// The process environment read with the standard library: APPDATA is $XDG_DATA_HOME or
// $HOME/.local/share, USERNAME $USER or $LOGNAME, USERPROFILE $HOME. It knows no desktop
// programs. The batch front end's environment.
class ProcessEnvironment final : public SystemEnvironment {
public:
    std::string variable(const std::string& name) override;
    // $XDG_DOCUMENTS_DIR, else $HOME/Documents.
    std::string documentsFolder() override;
    std::string applicationFor(const std::string&) override { return {}; }
};

// Fixed answers, for tests.
class FixedEnvironment final : public SystemEnvironment {
public:
    std::map<std::string, std::string> variables;
    std::map<std::string, std::string> applications;  // by extension, with its dot
    std::string documents;
    std::string variable(const std::string& name) override;
    std::string documentsFolder() override { return documents; }
    std::string applicationFor(const std::string& path) override;
};

}  // namespace arborex
