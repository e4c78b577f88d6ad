#pragma once
// The calculation screen's small graph of standing volume over the horizon, as data: one
// stacked column a year, coloured by whether the year met its constraints and its rate.

#include <array>
#include <cstdint>
#include <vector>

#include "harvest/calc_session.hpp"

namespace arborex {

// One year's column, from the base up: mature deciduous, mature conifer, immature deciduous,
// immature conifer; each colour as COLORS stores it (red + 256 green + 65536 blue).
struct StandingColumn {
    int offset = 0;  // years from the start
    std::array<float, 4> volumes{};
    std::array<int32_t, 4> colours{};
};

struct StandingGraphData {
    int horizon = 0;   // the last year offset; columns are one unit wide from 0 to horizon + 1
    double top = 0.0;  // the largest yearly standing volume, as a whole number
    std::vector<StandingColumn> columns;
    bool empty() const { return columns.empty(); }
};

// The graph of the last run's YearTable. Nothing to draw while CalcHorizon is below 1 or when
// no year has standing volume. Years without inventory area get no column. The colours come
// from COLORS: below the age percent (of a ticked age constraint) first, then below the height
// percent, then a harvest below 98% of the rate in the rate field, else the plain colours.
StandingGraphData standingGraph(const Model& m, const CalcScreen& screen);

}  // namespace arborex
