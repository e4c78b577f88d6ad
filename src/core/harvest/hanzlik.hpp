#pragma once
// The Hanzlik estimate of the sustainable harvest: each stand's volume at rotation over the
// rotation, summed over the included polygons.

#include "harvest/calc_session.hpp"

namespace arborex {

// Sets run.HanzlikRotation and gives the rate (m3/yr); "No Polygons selected" and 0 when no
// polygon is included.
void CalcHanzlik(CalcSession& s, float& rate);
// The menu's "Hanzlik Rate": offers the rate as the harvest rate.
void mniHanzlik_Click(CalcSession& s);
// The menu's "Current/Future Hanzlik at Harvest".
void mniCFHanz_Click(CalcSession& s);

}  // namespace arborex
