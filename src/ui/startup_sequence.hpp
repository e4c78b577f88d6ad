#pragma once
// The main screen's start-up, step by step: run id, defaults and user settings, reference data,
// command line, second-copy check, first project, caption. The program's entry gathers what only
// the platform knows into a StartupEnvironment; tests give their own.

#include <functional>
#include <string>

#include "base/host.hpp"
#include "model/model.hpp"

namespace arborex {

class frmArbo;

struct StartupEnvironment {
    std::string commandLine;    // the arguments joined (joinArguments)
    std::string programFolder;  // where the reference data lies, with a trailing "/"
    // True when another copy of the program is running; absent, none is.
    std::function<bool()> anotherCopyRunning;
};

// Runs start-up and shows the main screen. Returns false when the program must end without
// showing anything: the user chose not to start a second copy, or gave no installation folder.
bool runStartup(Model& m, Host& host, frmArbo& main, const StartupEnvironment& env);

}  // namespace arborex
