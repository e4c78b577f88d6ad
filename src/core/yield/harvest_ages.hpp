#pragma once
// Calculated harvest ages: a stand is cut no sooner than its minimum age, the first ages with
// the minimum diameter and volume, and the culmination of its MAI, whichever comes last. The
// project's criteria (MINAGE, MINVOL, MINDIA) apply wherever a polygon's own value is -1 or
// exactly -1.0, taken at the moment of use. An age of 999 (never) flows through unfiltered.

#include <cstdint>
#include <string>

#include "model/model.hpp"

namespace arborex {

// VolAge, DiaAge, ConstraintAge and HarvestAge of HarvAge(polygon, model) from the stored
// MaiAge, which a calcAllCutAges (or the caller) must have set.
void CalcCutAge(Model& m, int16_t polygon, int16_t model);
// Every field of HarvAge(p, model) for every polygon that is not deleted, whether or not it
// uses that model.
void calcAllCutAges(Model& m, int16_t model);
// After a change of the criteria: both models' ages, then YIELDSTATE 3 for every live curve of
// state 2 or more that has volume at the top of its grid.
void UpdateYields(Model& m);

// The age a stand is planned to be cut at under its existing (0) or future (1) management: HAR1
// or HAR2, or the calculated HarvestAge of that management's curve model when it is -1. A
// management other than VDYP or TIPSY has no calculated age: ErrSubscript.
int16_t targetHarvestAge(const Model& m, int polygon, int management);

}  // namespace arborex
