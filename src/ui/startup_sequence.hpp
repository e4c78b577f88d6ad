#pragma once
// The main screen's start-up, step by step: run id, defaults and user settings, reference data,
// command line, second-copy check, first project, caption. The program's entry gathers what only
// the platform knows into a StartupEnvironment; tests give their own.

#include <functional>
#include <string>

#include "frame/host.hpp"
#include "model/model.hpp"

namespace arborex {

class frmArbo;

struct StartupEnvironment {
    std::string commandLine;      // the arguments joined (joinArguments)
    std::string programFolder;    // where the reference data lies, with a trailing "/"
    std::string tempFolder;       // for the models' exchange files, with a trailing "/"
    std::string documentsFolder;  // the user's projects, with a trailing "/"
    // True when another copy of the program is running; absent, none is.
    std::function<bool()> anotherCopyRunning;
};

// Runs start-up and shows the main screen. Returns false when the user chose not to start a
// second copy: the program then ends without showing anything.
bool runStartup(Model& m, Host& host, frmArbo& main, const StartupEnvironment& env);

// The steps that set program defaults and then read the user's settings over them. Also used
// when a new project is made.
namespace startup {
// The program's folder.
void GetAppPath(Model& m, const StartupEnvironment& env);
// The temporary and documents folders, and the program files beside the program.
void DefaultPaths(Model& m, const StartupEnvironment& env);
// The user's settings over the defaults (for now the recent list).
void LoadRegistry(Model& m, Host& host);
// Makes the temporary and documents folders.
void CheckPaths(Model& m);
}  // namespace startup

}  // namespace arborex
