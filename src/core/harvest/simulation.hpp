#pragma once
// One run of the simulation, from this calendar year to the end of the planning horizon.

#include "harvest/calc_session.hpp"

namespace arborex {

inline constexpr int16_t kFinalRun = 0;
inline constexpr int16_t kTrialRun = 1;
inline constexpr uint16_t kQueueTaken = 65535;

// A final run (mode 0) fills every table; a trial (mode 1) stops at the first sign that the
// rate cannot be held, with `failed` -1 and run.LastError saying why.
void AVAC(CalcSession& s, int16_t mode, int16_t& failed);
// The blocks of the included polygons, split at SPLIT, with their roads.
void SetupCut(CalcSession& s);
// The next block to cut, -1 for none.
int16_t ChooseBlock(CalcSession& s);
// Opens the entries of block b: its road on the first entry of the first rotation, then b.
void PreCut(CalcSession& s, int16_t block, int16_t method, int16_t mode);
// Closes a step: inventory, constraints, the next allowance, the clock (unless `first`).
void IncrementYear(CalcSession& s, int16_t first);

}  // namespace arborex
