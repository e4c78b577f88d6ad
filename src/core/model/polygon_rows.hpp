#pragma once
// Copying one polygon's curve rows and harvest ages onto another index, for the routines that
// add, split and purge polygons.

#include "model/model.hpp"

namespace arborex {

// Polygon `from`'s VYield, VMix and TYield rows and both HarvAge records onto `to`.
void copyPolygonCurves(Model& m, int from, int to);

}  // namespace arborex
