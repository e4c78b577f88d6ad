#include "harvest/results.hpp"

#include <algorithm>
#include <string>

#include "base/errors.hpp"
#include "base/numeric.hpp"

namespace arborex {

namespace {

template <typename Vector>
auto& checkedAt(Vector& items, int index, const char* what) {
    if (index < 0 || static_cast<std::size_t>(index) >= items.size())
        throw ArborexError(ErrSubscript, what);
    return items[static_cast<std::size_t>(index)];
}

const ExpandedCurve& curveOf(const CalcSession& s, const Block& block) {
    return curveAt(s.run.Yields, block.Curve);
}

// Curve lookups stop at the table's top age; a negative age is an unexpected failure.
std::size_t curveAge(int age) {
    if (age < 0) throw ArborexError(ErrSubscript, "curve age");
    return static_cast<std::size_t>(std::min(age, kExpandedTopAge));
}

int16_t standAge(const CalcSession& s, const Block& block) {
    return toI2(static_cast<int>(s.run.CurYear) - block.StandYear);
}

void addCutToYear(YearRec& year, float conVol, float decVol, float area, float areaCCE,
                  int16_t method) {
    year.VolConifer += conVol;
    year.VolDeciduous += decVol;
    year.AreaCCE += areaCCE;
    const float volume = conVol + decVol;
    switch (method) {
        case kMethodClearcut:
            year.AreaCC += area;
            year.VolCC += volume;
            break;
        case kMethodFirstPartial:
        case kMethodNextPartial:
            year.AreaPC += area;
            year.VolPC += volume;
            break;
        case kMethodThin:
            year.AreaCT += area;
            year.VolCT += volume;
            break;
        case kMethodRoad:
            year.AreaRoad += area;
            year.VolRoad += volume;
            break;
        case kMethodNSR:
            year.AreaNSR += area;
            break;
        case kMethodNC:
            // Non-commercial ground is cleared like a clearcut, so its volume counts there.
            year.AreaNC += area;
            year.VolCC += volume;
            break;
        default:
            break;
    }
}

void appendBlockName(YearRec& year, const std::string& name) {
    const std::string old = year.BlockNames.str();
    // FixedString cuts at 128 characters: a long list simply stops mid-name.
    year.BlockNames = old.empty() ? name : old + ", " + name;
}

void addToPeriod(CalcSession& s, const Block& block, float conVol, float decVol, float area,
                 float areaCCE, int16_t method) {
    PeriodAccumulators& acc = s.run.Report;
    const float volume = conVol + decVol;
    checkedAt(acc.ReportVolAcc, block.Polygon, "ReportVolAcc") += volume;
    checkedAt(acc.ReportAreaAcc, block.Polygon, "ReportAreaAcc") += area;
    checkedAt(acc.ReportCceAcc, block.Polygon, "ReportCceAcc") += areaCCE;
    const int16_t age = standAge(s, block);
    if (age < acc.ReportMinAge) acc.ReportMinAge = age;
    if (age > acc.ReportMaxAge) acc.ReportMaxAge = age;
    const float ageArea = static_cast<float>(age) * areaCCE;
    acc.ReportSum1 += ageArea;
    const float ageVolume = static_cast<float>(age) * volume;
    acc.ReportSum2 += ageVolume;
    int16_t& flag = checkedAt(acc.ReportFlag, block.Polygon, "ReportFlag");
    flag = static_cast<int16_t>(flag | (1 << method));
}

bool isDeciduousV(const Model& m, int species) {
    return species >= 0 && static_cast<std::size_t>(species) < m.Ref.SpeciesV.size() &&
           m.Ref.SpeciesV[static_cast<std::size_t>(species)].Deciduous != 0;
}

void tallyVdyp(CalcSession& s, int p, int offset, float conVol, float decVol) {
    const PolyData& poly = checkedAt(s.m.Poly, p, "Poly");
    const PolyCalc& calc = checkedAt(s.m.PolyC, p, "PolyC");
    int deciduousSum = 0;
    int coniferSum = 0;
    for (std::size_t k = 0; k < poly.VP.size(); ++k)
        (isDeciduousV(s.m, poly.VSIDX[k]) ? deciduousSum : coniferSum) += poly.VP[k];
    for (std::size_t k = 0; k < poly.VP.size(); ++k) {
        if (poly.VP[k] <= 0) continue;
        const bool deciduous = isDeciduousV(s.m, poly.VSIDX[k]);
        const float share = static_cast<float>(poly.VP[k]) /
                            static_cast<float>(deciduous ? deciduousSum : coniferSum);
        const float volume = share * (deciduous ? decVol : conVol);
        // An excluded species is walked like the others but tallies nothing.
        const float value = volume * static_cast<float>(calc.VX[k]);
        s.run.SpeciesVolV.add(poly.VSIDX[k], offset, value);
        s.run.SpeciesVolV.add(poly.VSIDX[k], -1, value);
    }
}

void tallyTipsy(CalcSession& s, int p, int offset, float conVol, float decVol) {
    const PolyData& poly = checkedAt(s.m.Poly, p, "Poly");
    const float volume = conVol + decVol;
    for (std::size_t k = 0; k < poly.TP.size(); ++k) {
        const float share = static_cast<float>(poly.TP[k]) / 100.0f;
        const float value = share * volume;
        s.run.SpeciesVolT.add(poly.TSIDX[k], offset, value);
        s.run.SpeciesVolT.add(poly.TSIDX[k], -1, value);
    }
}

void tallySpecies(CalcSession& s, const Block& block, int offset, float conVol, float decVol) {
    const PolyData& poly = checkedAt(s.m.Poly, block.Polygon, "Poly");
    const int16_t management = block.Rotation == 1 ? poly.MGNT[0] : poly.MGNT[1];
    if (management == 0)
        tallyVdyp(s, block.Polygon, offset, conVol, decVol);
    else if (management == 1)
        tallyTipsy(s, block.Polygon, offset, conVol, decVol);
}

// A clearcut entry regenerates from the middle of the years it took.
void setSuccessorDates(CalcSession& s, const Block& block, const CutRec& cut) {
    // A chosen block always has its successor; 0 means none and is never a successor's index.
    if (block.NextBlock == 0) return;
    Model& m = s.m;
    // The delay comes from the polygon of the newest block in the list, not from the block
    // that was cut; results have always been computed this way and are kept comparable.
    const Block& last = m.Calc.BlockList[m.Calc.BlockLast];
    int16_t delay = checkedAt(m.PolyC, last.Polygon, "PolyC").REGENDELAY;
    if (delay == -1) delay = m.Settings.REGENDELAY;
    Block& next = m.Calc.BlockList[block.NextBlock];
    const float halfSpan = static_cast<float>(cut.EndYr - cut.StartYr) / 2.0f;
    const float start = static_cast<float>(s.run.CurYear) - halfSpan;
    const float regenerated = start + static_cast<float>(delay);
    next.StandYear = toI2(static_cast<double>(regenerated));
    next.DueYear = toI2(static_cast<int>(next.StandYear) + next.HarvestAge);
}

// The entry's totals and its share of the annual harvest.
void addToEntry(const CalcRun& run, CutRec& cut, float conVol, float decVol, float area,
                float potential) {
    cut.CutPotential += potential;
    cut.CutConifer += conVol;
    const float volume = conVol + decVol;
    cut.CutVolume += volume;
    if (run.HarvestRate == 0.0) {
        // Also drops what earlier steps of the entry added.
        cut.CutYears = 0.0f;
        return;
    }
    const double share = (run.AreaRun ? area : volume) / run.HarvestRate;
    cut.CutYears = static_cast<float>(cut.CutYears + share);
}

}  // namespace

int ageClass(int age) {
    if (age <= 0) return 0;
    if (age <= 140) return (age - 1) / 20 + 1;
    if (age <= 250) return 8;
    return 9;
}

void AddReportCut(CalcSession& s, int16_t block, int16_t method) {
    CalcState& calc = s.m.Calc;
    calc.CutCount = toI2(static_cast<int>(calc.CutCount) + 1);
    calc.CutList.resize(calc.CutCount);
    CutRec& cut = calc.CutList[calc.CutCount];
    const Block& b = calc.BlockList[block];
    const int16_t year = s.run.CurYear;

    cut.CutArea = 0.0f;
    cut.CutAreaCCE = 0.0f;
    cut.CutMethod = method;
    cut.EndYr = year;
    cut.YearsFromDue =
        method == kMethodThin ? int16_t{0} : toI2(static_cast<int>(b.DueYear) - year);
    cut.BlockIdx = block;
    cut.StartYr = year;
    cut.CutAge = standAge(s, b);

    const ExpandedCurve& curve = curveOf(s, b);
    const std::size_t age = curveAge(cut.CutAge);
    const CurveAge& row = curve.Age[age];
    cut.CutVolHa = row.ConVol;
    if (!s.screen.chkConifer) cut.CutVolHa = row.ConVol + row.DecVol;
    cut.CutDbh = row.Dbh;

    cut.CutYears = 0.0f;
    cut.CutVolume = 0.0f;
    cut.CutConifer = 0.0f;
    cut.CutPotential = 0.0f;
}

void UpdateReports(CalcSession& s, float conVol, float decVol, float area, float areaCCE,
                   int16_t method, int16_t block, float potential) {
    CalcState& calc = s.m.Calc;
    const int offset = static_cast<int>(s.run.CurYear) - s.run.StartYear;
    // A step that runs past the horizon's last year is silently not recorded.
    if (offset > calc.CalcHorizon) return;
    const Block& b = calc.BlockList[block];

    YearRec& year = calc.YearTable[offset];
    addCutToYear(year, conVol, decVol, area, areaCCE, method);
    appendBlockName(year, checkedAt(s.m.Poly, b.Polygon, "Poly").NAME.str());
    year.NumPolygons = toI2(static_cast<int>(year.NumPolygons) + 1);

    if (s.run.ReportEvery > 0) addToPeriod(s, b, conVol, decVol, area, areaCCE, method);
    if (s.run.ResultsValid == 1) tallySpecies(s, b, offset, conVol, decVol);

    CutRec& cut = calc.CutList[calc.CutCount];
    cut.CutArea += area;
    cut.CutAreaCCE += areaCCE;
    cut.CutMethod = method;
    cut.EndYr = s.run.CurYear;
    if (method == kMethodClearcut) setSuccessorDates(s, b, cut);
    addToEntry(s.run, cut, conVol, decVol, area, potential);
}

void BuildReportIndex(CalcSession& s) {
    CalcRun& run = s.run;
    const CalcState& calc = s.m.Calc;
    const auto rows = static_cast<std::size_t>(run.IncludedLast + 1);
    run.ExistingIdx.assign(rows, 0);
    run.FutureIdx.assign(rows, 0);
    // The report rows of each polygon, so that a block finds its own rows without a walk over
    // all of them.
    std::vector<std::vector<int>> rowsOf;
    for (int i = 0; i <= run.IncludedLast; ++i) {
        const int polygon = checkedAt(run.IncludedPoly, i, "IncludedPoly");
        if (polygon < 0) continue;
        if (static_cast<std::size_t>(polygon) >= rowsOf.size())
            rowsOf.resize(static_cast<std::size_t>(polygon) + 1);
        rowsOf[static_cast<std::size_t>(polygon)].push_back(i);
    }
    for (int b = 0; b <= calc.BlockLast; ++b) {
        const Block& block = calc.BlockList[b];
        if (block.CutFraction == 1.0f) continue;
        const int16_t index = toI2(b + 1);
        const auto polygon = static_cast<std::size_t>(block.Polygon);
        if (block.Polygon < 0 || polygon >= rowsOf.size()) continue;
        // No early exit: the last block in list order wins for each polygon and side.
        for (const int i : rowsOf[polygon]) {
            if (block.DueYear > run.CurYear)
                run.FutureIdx[static_cast<std::size_t>(i)] = index;
            else
                run.ExistingIdx[static_cast<std::size_t>(i)] = index;
        }
    }
}

}  // namespace arborex
