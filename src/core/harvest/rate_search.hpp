#pragma once
// The search for the highest rate the land base sustains over the whole horizon.

#include "harvest/calc_session.hpp"

namespace arborex {

// Climbs from the Hanzlik rate (5 ha/yr in an area-based run) until a trial fails, then
// bisects; ends with a final run of the rate found, or "&NORATE" after 100 tries.
void Auto(CalcSession& s);
// A flag not 0 marks the results out of date (RateDirty); 0 marks them current.
void ReCalc(CalcSession& s, int16_t flag);

}  // namespace arborex
