#include "report/standing_volume.hpp"

#include <algorithm>

#include "base/number_text.hpp"
#include "base/numeric.hpp"

namespace arborex {

namespace {

// The four colours of a column, from the base up, by the first rule the year meets.
std::array<int32_t, 4> columnColours(const Model& m, const YearRec& year, double agePercent,
                                     double heightPercent, double rate) {
    const auto& c = m.Settings.COLORS;
    const auto set = [&](ColourKey matureDec, ColourKey matureCon, ColourKey youngDec,
                         ColourKey youngCon) {
        return std::array<int32_t, 4>{c[matureDec], c[matureCon], c[youngDec], c[youngCon]};
    };
    const double area = year.InvArea;
    if (100.0 * year.InvAreaAge / area < agePercent)
        return set(ColAMATURED, ColAMATURE, ColAIMATURED, ColAIMATURE);
    if (100.0 * year.InvAreaHeight / area < heightPercent)
        return set(ColHMATURED, ColHMATURE, ColHIMATURED, ColHIMATURE);
    // Volume also in an area-based run, whose rate is in hectares: such a run nearly always
    // shows the plain colours, as it always has.
    if (year.VolConifer + year.VolDeciduous < 0.98 * rate)
        return set(ColNMATURED, ColNMATURE, ColNIMATURED, ColNIMATURE);
    return set(ColMATURED, ColMATURE, ColIMATURED, ColIMATURE);
}

}  // namespace

StandingGraphData standingGraph(const Model& m, const CalcScreen& screen) {
    StandingGraphData graph;
    const CalcState& calc = m.Calc;
    if (calc.CalcHorizon < 1) return graph;
    const int last = std::min(static_cast<int>(calc.CalcHorizon), calc.YearTable.upperBound());
    double largest = 0.0;
    for (int y = 0; y <= last; ++y) {
        const YearRec& year = calc.YearTable[y];
        const double standing = static_cast<double>(year.MatureCon) + year.MatureDec +
                                year.ImmatureCon + year.ImmatureDec;
        largest = std::max(largest, standing);
    }
    graph.top = roundHalfEven(largest);
    if (graph.top == 0.0) return graph;
    graph.horizon = calc.CalcHorizon;

    const double agePercent = screen.chkConAge ? tolerantNumber(screen.txtAgePerc) : 0.0;
    const double heightPercent = screen.chkConHeight ? tolerantNumber(screen.txtHeightPerc) : 0.0;
    const double rate = tolerantNumber(screen.txtVolToCut);
    for (int y = 0; y <= last; ++y) {
        const YearRec& year = calc.YearTable[y];
        if (!(year.InvArea > 0.0f)) continue;
        StandingColumn column;
        column.offset = y;
        column.volumes = {year.MatureDec, year.MatureCon, year.ImmatureDec, year.ImmatureCon};
        column.colours = columnColours(m, year, agePercent, heightPercent, rate);
        graph.columns.push_back(column);
    }
    return graph;
}

}  // namespace arborex
