#pragma once
// Questions asked of a polygon's yield curves: value at an age, first age meeting a target and
// age of MAI culmination; wiping a curve lives in model/curve_clear.hpp. Curve model 0 is VDYP, 1
// TIPSY. Curves are stored on the model's age grid; values between grid ages are interpolated
// linearly in 32-bit floats, below the grid they are 0 and at or above YieldMaxAge they hold the
// last step.
//
// These run inside the simulation's innermost loops: they allocate nothing and do not validate
// beyond what reading the curve needs. Failures throw ArborexError: ErrDivisionByZero for a
// YieldIncAge of 0, ErrOverflow when age arithmetic leaves the 16-bit range, ErrSubscript for a
// polygon outside 0..LastPoly or a grid step past the polygon's last row (a grid range that is
// not a multiple of its step). A polygon is only looked at when a curve row is read.

#include <cstdint>

#include "model/curve_clear.hpp"
#include "model/model.hpp"

namespace arborex {

// Diameter (cm), height (m), volume (m3/ha) and MAI (m3/ha/yr) at a whole age. A model index
// other than 0 or 1 gives 0. FindVol on a TIPSY curve with a commercial thin (COMTHIN 1) splits
// the grid interval holding ThinAge: the value at ThinAge is the volume before the thin, later
// ages in the interval lie on the line from the volume after the thin to the next step.
float FindDia(const Model& m, int16_t yieldType, int16_t age, int16_t polygon);
float FindHt(const Model& m, int16_t yieldType, int16_t age, int16_t polygon);
float FindVol(const Model& m, int16_t yieldType, int16_t age, int16_t polygon);
float findMai(const Model& m, int16_t yieldType, int16_t age, int16_t polygon);
// Volume (m3/ha) of VDYP species slot 0..5 at a whole age, always on the VDYP grid.
float FindVolSpec(const Model& m, int16_t age, int16_t polygon, int16_t slot);

// First whole age from YieldMinAge to YieldMaxAge at which target <= the curve's value, or 999
// when none does. A model index other than 0 or 1 throws ErrSubscript.
int16_t FindAgeDia(const Model& m, int16_t yieldType, float target, int16_t polygon);
int16_t FindAgeVol(const Model& m, int16_t yieldType, float target, int16_t polygon);
int16_t FindAgeMAI(const Model& m, int16_t yieldType, float target, int16_t polygon);
// Grid age of the highest MAI, the youngest on ties; YieldMinAge for an all-zero curve.
int16_t FindMAIMax(const Model& m, int16_t yieldType, int16_t polygon);

// The larger of two ages; on a tie the second.
inline int16_t FindMax(int16_t a, int16_t b) {
    return a > b ? a : b;
}

}  // namespace arborex
