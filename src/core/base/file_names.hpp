#pragma once
// File names. The program's own file names compare without regard to case, so lookups in a
// folder go through findFileNoCase.

#include <string>

namespace arborex {

// Replaces the extension of the last path element ("a/b.arx", ".bak" -> "a/b.bak"); adds it
// when there is none. `extension` includes its dot.
std::string changeExtension(const std::string& path, const std::string& extension);
// The last path element without its extension: the display name of a project.
std::string displayName(const std::string& path);
// The path of `name` in `folder` as it is spelled on disk, compared without regard to case;
// empty when no such file exists. An exact match wins over others.
std::string findFileNoCase(const std::string& folder, const std::string& name);
bool fileExists(const std::string& path);

}  // namespace arborex
