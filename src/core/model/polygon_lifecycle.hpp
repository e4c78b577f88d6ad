#pragma once
// How polygons leave a project for good.

#include "base/host.hpp"
#include "model/model.hpp"

namespace arborex {

// Removes every polygon whose DELETE is 1, moving the others down so that every array stays
// in step; renumbers the harvest order and drops deleted polygons from it. When the order
// lost a position the saved run no longer fits, and its result counters are cleared.
// CurPoly follows its polygon, or the nearest kept one when its own went.
void PurgeDeletedPolygons(Model& m, Host& host);

}  // namespace arborex
