#pragma once
// An installation folder for tests: the reference data of data/ and empty stand-ins for the
// outside programs and help files, so that start-up finds everything it checks.

#include <string>

#include "base/environment.hpp"

namespace arborex::test {

// Fills `folder` (created when missing) as an installation.
void installProgramFolder(const std::string& folder);

// A user under `root`: APPDATA root/appdata, USERPROFILE root/home, documents root/documents,
// login name "pat".
void setUpUser(FixedEnvironment& system, const std::string& root);

}  // namespace arborex::test
