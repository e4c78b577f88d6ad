#pragma once
// The graphs the program draws itself, in the graph window or the yield view, as plain data:
// a title, two axes with their tick marks, filled boxes (columns and bars), curves and a legend,
// all in the axes' own units. A screen only maps the units to pixels and paints.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "harvest/calc_session.hpp"
#include "report/graph_files.hpp"

namespace arborex {

// The fill styles of a box, in the order the age distribution screen offers them.
enum GraphFill : int16_t {
    FillSolid,
    FillTransparent,
    FillHorizontal,
    FillVertical,
    FillUpwardDiagonal,
    FillDownwardDiagonal,
    FillCross,
    FillDiagonalCross,
    FillStyleCount
};
extern const std::array<const char*, FillStyleCount> kFillStyleNames;

struct GraphTick {
    double value = 0.0;
    std::string label;
};

struct GraphAxis {
    double low = 0.0;
    double high = 1.0;
    std::string title;  // "Year", "Volume"
    std::string unit;   // "(m\xb3)", or empty
    std::vector<GraphTick> ticks;
};

// A filled rectangle: a column, a part of a stacked column, or a bar of a cluster.
struct GraphBox {
    double left = 0.0, right = 0.0, bottom = 0.0, top = 0.0;
    int32_t colour = 0;  // as COLORS stores colours: red + 256 green + 65536 blue
    int16_t fill = FillSolid;
    bool outlined = false;
};

struct GraphCurve {
    int32_t colour = 0;
    std::vector<std::pair<double, double>> points;
};

struct GraphKey {
    std::string name;
    int32_t colour = 0;
    int16_t fill = FillSolid;
    bool line = false;  // the key of a curve rather than of a box
};

struct GraphPicture {
    std::string title;
    GraphAxis x, y;
    std::vector<GraphBox> boxes;
    std::vector<GraphCurve> curves;
    std::vector<GraphKey> legend;
    bool empty() const { return boxes.empty() && curves.empty(); }
};

// The tick rule of GraphXtic and GraphYtic: the step is 1, 2 or 5 times a power of ten, the
// smallest that cuts low..high into at most `most` intervals; a tick stands on every multiple of
// the step within the range, its label the value in `format`.
double tickStep(double low, double high, int most);
std::vector<GraphTick> axisTicks(double low, double high, int most, std::string_view format);

// "Standing Volume / Year": the calculation screen's stacked columns of standing volume, one a
// year from `firstYear`, in the colours of their year's test, with a legend of the tests that
// occur. Empty when the calculation screen's graph would be.
GraphPicture GraphTimeVolume(const Model& m, const CalcScreen& screen, int firstYear);

// "Yield Table - " and the polygon's name: volume, MAI and diameter of curve model `t` at every
// age step from YieldMinAge to YieldMaxAge, on one scale, in the colours VOL, MAI and DIA.
GraphPicture GraphYieldCurve(const Model& m, int16_t polygon, int16_t t);

// The age distribution screen's picture: per age class a cluster of bars, one per year asked
// for (blank years left out), each the standing area of that class in that year, filled as the
// request's fill type says.
GraphPicture ageDistributionGraph(const Model& m, const AgeGraphRequest& request, int firstYear);

// A year field of the age distribution screen: trimmed, read tolerantly, above 32767 clamped.
int16_t ageGraphYear(std::string_view text);

}  // namespace arborex
