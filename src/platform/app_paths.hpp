#pragma once
// Where the program finds its data and keeps its files on this system. Every folder is returned
// with a trailing "/", so that names join to it directly.

#include <QString>
#include <string>

namespace arborex {

// The folder of the reference data: the program's own folder when the data lies beside the
// executable, else "../share/arborex/" next to it when that exists (an installed layout), else
// the program's folder.
std::string programDataFolder(const QString& executableFolder);
// The folder of the models' exchange files: <application local data>/temp/.
std::string userTempFolder();
// The user's project folder: <documents>/Arborex for Windows/.
std::string userDocumentsFolder();
// Creates a folder with its parents; false when it cannot be made.
bool makeFolder(const std::string& folder);

}  // namespace arborex
