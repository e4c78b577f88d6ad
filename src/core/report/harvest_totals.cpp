#include "report/harvest_totals.hpp"

#include "base/display_format.hpp"

namespace arborex {

void addYear(HarvestTotals& totals, const YearRec& year) {
    totals.volume += static_cast<double>(year.VolConifer) + static_cast<double>(year.VolDeciduous);
    totals.area += static_cast<double>(year.AreaCC) + static_cast<double>(year.AreaPC) +
                   static_cast<double>(year.AreaCT) + static_cast<double>(year.AreaRoad);
    ++totals.count;
}

void addEntry(HarvestTotals& totals, const CutRec& entry) {
    totals.volume += entry.CutVolume;
    totals.area += entry.CutArea;
    ++totals.count;
}

HarvestTotals yearTotals(const CalcState& calc, int first, int last) {
    HarvestTotals totals;
    for (int y = first; y <= last; ++y) addYear(totals, calc.YearTable[y]);
    return totals;
}

std::string selectionSummary(const HarvestTotals& totals, bool annual) {
    const std::string count = std::to_string(totals.count);
    const std::string volume = formatNumber(totals.volume, "#,##0");
    const std::string area = formatNumber(totals.area, "#,##0.0");
    const std::string ratio = formatNumber(totals.perHectare(), "#,##0.0");
    // The entries' line has two blanks before its slash; both lines have always read so.
    return annual
               ? count + " years: " + volume + "m\xb3 / " + area + "ha  = " + ratio + "m\xb3/ha"
               : count + " entries: " + volume + "m\xb3  / " + area + "ha  = " + ratio + "m\xb3/ha";
}

}  // namespace arborex
