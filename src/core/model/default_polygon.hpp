#pragma once
// The default polygon, "DEFAULT.DEF": what a new polygon starts from. The file holds the three
// records of one polygon in the project file's layouts and nothing else; each user keeps a
// copy in the documents folder, first copied from the installation.

#include <string>

#include "base/host.hpp"

namespace arborex {

struct Model;

inline constexpr const char* kDefaultPolygonFile = "DEFAULT.DEF";

// Writes DefaultPoly, DefaultPolyC and DefaultPolyM to `path`. Throws ArborexError when the
// file cannot be written.
void SaveDefaultPolygon(const Model& m, const std::string& path);

// Reads Paths[2] + "DEFAULT.DEF", copying it there from Paths[0] when the user has none. With
// no file at all the box "Default polygon is missing." is shown and the default polygon stays
// as it was. The location and per-polygon harvest criteria of the file are not taken: they
// belong to one polygon, not to every new one. Returns false when nothing was read. A file too
// short for the records throws ArborexError.
bool LoadDefaults(Model& m, Host& host);

}  // namespace arborex
