#pragma once
// Where the program and the user's files are: the installation folder, the temporary and
// documents folders, the outside programs and help files. Folders in Paths always end in "/".

#include <string>

#include "base/host.hpp"

namespace arborex {

struct Model;

// Paths[0], the installation folder: the stored ArborexFolder, else `programFolder`. A folder
// without "speciest.dat" (any case) is refused, and the user is asked for another until one
// holds it. Returns false when the user gives no folder: the program must end.
bool GetAppPath(Model& m, Host& host, const std::string& programFolder);

// The defaults of the temporary and documents folders and of the outside programs, before the
// user's settings are read: Paths[1] under the user's application data, Paths[3] the machine's
// DefaultUserDocuments with "%UserName%" and "%UserProfile%" expanded, Paths[2] that or the
// user's documents folder + "Arborex for Windows/", Files[0..6] and [11] beside Paths[0], but
// the graphing program Files[5] (arborex-chart) beside the program: PREFIX/bin/ when Paths[0]
// is PREFIX/share/arborex/; and there the manual Files[4] is the user's guide,
// PREFIX/share/doc/arborex/guide/index.html (index.md when the guide was not rendered).
void DefaultPaths(Model& m, Host& host);

// Makes the temporary and documents folders and checks that files can be written there; checks
// that the outside programs and help files exist. What is missing is shown in one box, and the
// program goes on. A folder that cannot be written goes to the error screen.
void CheckPaths(Model& m, Host& host);

// Creates every missing folder of `path`; false when that fails. A leading "//" names a network
// share whose first two levels are taken to exist.
bool MakePath(const std::string& path);
// Creates, writes and deletes a scratch file in the folder `path`; throws ArborexError when any
// step fails. Returns an empty string.
std::string checkPathRW(const std::string& path, const std::string& runId);
// Empty when the file exists; otherwise "File not found: " + path, or "File not found!" for an
// empty setting.
std::string checkFileExists(const std::string& path);

// The program that opens files of extension `ext` (with its dot), found by asking the desktop
// about a scratch file in the application data folder; empty when there is none.
std::string FindAssociatedApp(Host& host, const std::string& ext);

// "folder" with one trailing "/".
std::string withTrailingSlash(const std::string& folder);

}  // namespace arborex
