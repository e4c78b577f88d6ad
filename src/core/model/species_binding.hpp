#pragma once
// Binding of polygons' species codes to the loaded species tables.

#include "model/model.hpp"

namespace arborex {

// Fills VSIDX and TSIDX of every polygon from its codes. Until species tables are loaded
// there is nothing to bind to, and the indexes stored with the project stand.
void findSpecIDX(Model& m);

}  // namespace arborex
