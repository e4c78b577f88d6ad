#pragma once
// Spending the step's allowance on a block, or on a block's road.

#include <cstddef>

#include "harvest/calc_session.hpp"

namespace arborex {

// One step on block b: whole-stand (methods 1, 7) or partial (2, 3), volume- or area-based.
// Moves CutFraction of the block and, as its mirror, of its NextBlock.
void CutBlock(CalcSession& s, int16_t block, int16_t mode);
// Opens road r (an index into RoadList) once, with the first entry of its block.
void CutRoad(CalcSession& s, int16_t road);

// Helpers shared with the regrowth routines.

// An age as an index into an expanded curve; outside 0..350 throws ErrSubscript. Callers that
// read an old stand at the top of the table cap the age first.
std::size_t curveAge(int age);

}  // namespace arborex
