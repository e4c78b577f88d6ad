#pragma once
// Wiping one polygon's curves. These touch only model arrays, so the model layer's own
// routines (adding a polygon from the default) can use them as well as the yield runs.

#include <cstdint>

#include "model/model.hpp"

namespace arborex {

// Zero the polygon's VDYP curve (and its species volumes while YIELDMODE is on), VCCCALC,
// VSICALC and YIELDSTATE[0]. A polygon outside 0..LastPoly throws ErrSubscript.
void clearVYield(Model& m, int16_t polygon);
// Zero the polygon's TIPSY curve, TSICALC and YIELDSTATE[1]. The thin block is left alone.
void ClearTYield(Model& m, int16_t polygon);

}  // namespace arborex
