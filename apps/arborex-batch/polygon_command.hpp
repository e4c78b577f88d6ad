#pragma once
// The polygon command: the polygon menu of the polygon screen without the screen. It lists a
// project's polygons, or adds, deletes, undeletes, renames, splits, reorders, purges or edits
// them through the same core routines, and writes the project back (in place, keeping the
// former file as .bak, or to --save OUT).
//
// list JSON (keys in this order): project, polygons (LastPoly + 1), polygonList (per polygon:
// index, NAME, DELETE, AREA, EXISTINGMGNT, FUTUREMGNT, YIELDSTATE [VDYP, TIPSY]).
// Action JSON: project, action, saved (the file written), polygons, changed (the polygons the
// action made or changed, as in polygonList), changes (the labels of the fields that set
// changed), marks ("VDYP", "TIPSY": the curves that set made stale), removed (purge), warnings
// (the boxes the action showed).

#include <iosfwd>
#include <string>
#include <vector>

namespace arborex::batch {

// polygon PROJECT ACTION ... [--save OUT] [--json] [--quiet] [--data DIR]
// A wrong command line, an unknown polygon, an unknown KEY or a value out of a list's range
// is a usage error (2); a blank or duplicate name is refused with the program's text (3). Either
// way nothing is written.
int runPolygon(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// The polygon command's part of --help.
std::string polygonUsage();

}  // namespace arborex::batch
