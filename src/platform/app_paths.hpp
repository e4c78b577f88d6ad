#pragma once
// Where the program finds its reference data. The folder is returned with a trailing "/", so
// that names join to it directly.

#include <QString>
#include <string>

namespace arborex {

// The folder of the reference data: the program's own folder when the species table lies
// beside the executable, else "../share/arborex/" next to it when that exists (the installed
// and the build tree's layout), else the program's folder.
std::string programDataFolder(const QString& executableFolder);

}  // namespace arborex
