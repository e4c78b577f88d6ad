#pragma once
// Sums of the harvest over chosen years or entries of the last run: what the schedule's
// selection line and the batch's ten-year table show.

#include <string>

#include "model/calc_state.hpp"

namespace arborex {

struct HarvestTotals {
    double volume = 0.0;  // m3, conifer and deciduous
    double area = 0.0;    // ha: clearcut, partial cut, commercial thin and road
    int count = 0;        // years or entries summed
    // Volume over area, 0 without area.
    double perHectare() const { return area == 0.0 ? 0.0 : volume / area; }
};

// Adds one year of YearTable, or one harvest entry of CutList (its CutVolume and CutArea).
void addYear(HarvestTotals& totals, const YearRec& year);
void addEntry(HarvestTotals& totals, const CutRec& entry);
// The years first..last (offsets from the start) of YearTable; throws ErrSubscript outside it.
HarvestTotals yearTotals(const CalcState& calc, int first, int last);

// The schedule's selection line: "3 years: 3,627m³ / 12.3ha  = 294.9m³/ha", or for entries
// "2 entries: 1,200m³  / 4.0ha  = 300.0m³/ha" (Latin-1 text).
std::string selectionSummary(const HarvestTotals& totals, bool annual);

}  // namespace arborex
