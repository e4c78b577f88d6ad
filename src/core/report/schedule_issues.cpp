#include "report/schedule_issues.hpp"

#include <algorithm>
#include <string>

namespace arborex {

namespace {

// The percentage of the year's inventory area meeting a constraint, below the percent wanted.
bool belowPercent(float metArea, float inventoryArea, float percent) {
    const float scaled = 100.0f * metArea;
    const float share = scaled / inventoryArea;
    return share < percent;
}

// Entries past BlockLast belong to no block of the run; the schedule stops at the first one.
int lastEntryWithBlock(const Model& m) {
    const CalcState& calc = m.Calc;
    for (int c = 1; c <= calc.CutCount; ++c)
        if (calc.CutList[c].BlockIdx > calc.BlockLast) return c - 1;
    return calc.CutCount;
}

}  // namespace

YearIssues yearIssues(const YearRec& year, const IssueLimits& limits) {
    YearIssues issues;
    const double rate98 = 0.98 * limits.rate;
    const float harvest = limits.areaRun ? year.AreaCCE : year.VolConifer + year.VolDeciduous;
    if (harvest == 0.0f)
        issues.noHarvest = true;
    else if (rate98 > static_cast<double>(harvest))
        issues.lowHarvest = true;
    if (year.InvArea > 0.0f) {
        issues.belowAge = belowPercent(year.InvAreaAge, year.InvArea, limits.agePercent);
        issues.belowHeight = belowPercent(year.InvAreaHeight, year.InvArea, limits.heightPercent);
    }
    return issues;
}

std::string yearIssueText(const YearIssues& issues) {
    std::string text;
    if (issues.noHarvest) text = "No Harvest. ";
    if (issues.lowHarvest) text = "Low Harvest. ";
    std::string constraints;
    if (issues.belowAge) constraints = "Age & " + constraints;
    if (issues.belowHeight) constraints = "Height & " + constraints;
    if (constraints.empty()) return text;
    // Only "& " goes, so the cell has always shown two blanks before "cons.".
    constraints.resize(constraints.size() - 2);
    return text + constraints + " cons. not met";
}

std::string entryIssueText(const Model& m, int entry) {
    const CalcState& calc = m.Calc;
    const CutRec& cut = calc.CutList[entry];
    const Block& block = calc.BlockList[cut.BlockIdx];
    const auto p = static_cast<std::size_t>(block.Polygon);
    const int16_t mgnt = m.Poly.at(p).MGNT[block.Rotation == 1 ? 0 : 1];
    if (mgnt != 0 && mgnt != 1) return {};
    const auto t = static_cast<std::size_t>(mgnt);
    const PolyCalc& criteria = m.PolyC.at(p);
    const float minDbh = criteria.MINCUTDBH[t] == -1.0f ? m.Settings.MINDIA : criteria.MINCUTDBH[t];
    const float minVol = criteria.MINCUTVOL[t] == -1.0f ? m.Settings.MINVOL : criteria.MINCUTVOL[t];
    const int16_t minAge = criteria.MINCUTAGE[t] == -1 ? m.Settings.MINAGE : criteria.MINCUTAGE[t];
    std::string missed;
    if (cut.CutDbh < minDbh) missed += "DBH, ";
    if (cut.CutVolHa < minVol) missed += "Volume, ";
    if (cut.CutAge < minAge) missed += "Age, ";
    if (missed.empty()) return {};
    missed.resize(missed.size() - 2);
    return "Minimum " + missed + " not met";
}

std::string issueLine(const Model& m, const IssueLimits& limits, bool& any) {
    int entries = 0;
    const int lastEntry = lastEntryWithBlock(m);
    for (int c = 1; c <= lastEntry; ++c)
        if (!entryIssueText(m, c).empty()) ++entries;

    int noHarvest = 0, lowHarvest = 0, age = 0, height = 0;
    // Before any run there is no schedule to judge; a refused run may have set the horizon
    // without filling its years.
    const int lastYear = m.Calc.CalcHorizon < 1 ? -1
                                                : std::min(static_cast<int>(m.Calc.CalcHorizon),
                                                           m.Calc.YearTable.upperBound());
    for (int y = 0; y <= lastYear; ++y) {
        const YearIssues issues = yearIssues(m.Calc.YearTable[y], limits);
        noHarvest += issues.noHarvest ? 1 : 0;
        lowHarvest += issues.lowHarvest ? 1 : 0;
        age += issues.belowAge ? 1 : 0;
        height += issues.belowHeight ? 1 : 0;
    }

    const int annual = noHarvest + lowHarvest + age + height;
    any = entries > 0 || annual > 0;
    if (!any) return "No Harvesting Issues";
    std::string line = "Harvesting Issues (Polygon=" + std::to_string(entries) +
                       ", Annual=" + std::to_string(annual) + "): ";
    if (age > 0) line += "Age Constraints: " + std::to_string(age) + "   ";
    if (height > 0) line += "Height Constraints: " + std::to_string(height) + "   ";
    if (noHarvest > 0) line += "No Harvest for " + std::to_string(noHarvest) + " years   ";
    if (lowHarvest > 0) line += "Low Harvest for " + std::to_string(lowHarvest) + " years   ";
    if (entries > 0) line += "Min Parameters not met for " + std::to_string(entries) + " entries";
    return line;
}

}  // namespace arborex
