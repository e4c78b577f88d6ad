#pragma once
// What a run records: the harvest entries of CutList, the cut side of YearTable, the period
// accumulators of the delimited table and the species tallies of the graphs.

#include "harvest/calc_session.hpp"

namespace arborex {

// The age class of a stand: 0 at age 0, twenty-year classes 1..7 to 140, 8 to 250, 9 beyond.
int ageClass(int age);
// Opens a harvest entry for block b with method `method` (1..7).
void AddReportCut(CalcSession& s, int16_t block, int16_t method);
// Adds one cutting step to the year's record, the open entry and the tallies.
void UpdateReports(CalcSession& s, float conVol, float decVol, float area, float areaCCE,
                   int16_t method, int16_t block, float potential);
// ExistingIdx and FutureIdx: the blocks standing now and next on each included polygon.
void BuildReportIndex(CalcSession& s);

}  // namespace arborex
