#pragma once
// Binding of polygons' species codes to the loaded species tables.

#include "model/model.hpp"

namespace arborex {

// For every polygon 0..LastPoly, deleted ones too: looks up each VDYP code of VS in the VDYP
// table and each TIPSY code of TS in the TIPSY table (through the aliases), stores the row in
// VSIDX / TSIDX and replaces the code by the row's own code, so that "PLI" becomes "PL" and an
// unknown code becomes two blanks with row 0. A table that holds nothing beyond "- None -" has
// not been loaded: its codes and the indexes stored with the project are left as they are.
void findSpecIDX(Model& m);

}  // namespace arborex
