#pragma once
// Spending the step's allowance on a block, or on a block's road.

#include "harvest/calc_session.hpp"

namespace arborex {

// One step on block b: whole-stand (methods 1, 7) or partial (2, 3), volume- or area-based.
// Moves CutFraction of the block and, as its mirror, of its NextBlock.
void CutBlock(CalcSession& s, int16_t block, int16_t mode);
// Opens road r (an index into RoadList) once, with the first entry of its block.
void CutRoad(CalcSession& s, int16_t road);

}  // namespace arborex
