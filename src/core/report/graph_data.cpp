#include "report/graph_data.hpp"

#include <algorithm>
#include <cmath>

#include "base/display_format.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "base/text.hpp"
#include "report/standing_volume.hpp"
#include "yield/curves.hpp"

namespace arborex {

const std::array<const char*, FillStyleCount> kFillStyleNames = {
    "Solid",           "Transparent",       "Horizontal Line", "Vertical Line",
    "Upward Diagonal", "Downward Diagonal", "Cross",           "Diagonal Cross"};

namespace {

constexpr int kMostTicks = 10;

// The top of a value axis: the largest value raised to the next tick, so the top is labelled;
// 1 when there is nothing to show, so the scale never divides by zero.
double valueAxisTop(double largest) {
    if (!(largest > 0.0)) return 1.0;
    const double step = tickStep(0.0, largest, kMostTicks);
    return std::ceil(largest / step - 1e-9) * step;
}

void valueAxis(GraphAxis& axis, double largest, std::string title, std::string unit) {
    axis.low = 0.0;
    axis.high = valueAxisTop(largest);
    axis.title = std::move(title);
    axis.unit = std::move(unit);
    axis.ticks = axisTicks(axis.low, axis.high, kMostTicks, "#,##0");
}

void yearAxis(GraphAxis& axis, double low, double high) {
    axis.low = low;
    axis.high = high > low ? high : low + 1.0;
    axis.title = "Year";
    axis.ticks = axisTicks(axis.low, axis.high, kMostTicks, "0");
}

// The colour tests of the standing graph, in the order its legend names them.
struct ColourTest {
    const char* suffix;
    ColourKey matureDec, matureCon, youngDec, youngCon;
};
constexpr ColourTest kColourTests[] = {
    {"", ColMATURED, ColMATURE, ColIMATURED, ColIMATURE},
    {" - Age Error", ColAMATURED, ColAMATURE, ColAIMATURED, ColAIMATURE},
    {" - Height Error", ColHMATURED, ColHMATURE, ColHIMATURED, ColHIMATURE},
    {" - No Volume", ColNMATURED, ColNMATURE, ColNIMATURED, ColNIMATURE},
};

// Which test gave a column its colours; the plain one when colours of two tests coincide.
std::size_t testOf(const Model& m, const StandingColumn& column) {
    const auto& c = m.Settings.COLORS;
    for (std::size_t i = 0; i < std::size(kColourTests); ++i) {
        const ColourTest& test = kColourTests[i];
        const std::array<int32_t, 4> colours = {c[test.matureDec], c[test.matureCon],
                                                c[test.youngDec], c[test.youngCon]};
        if (colours == column.colours) return i;
    }
    return 0;
}

}  // namespace

double tickStep(double low, double high, int most) {
    const double range = high - low;
    if (!(range > 0.0) || most < 1) return 1.0;
    double power = std::pow(10.0, std::floor(std::log10(range / most)));
    for (;;) {
        for (double factor : {1.0, 2.0, 5.0})
            if (range / (factor * power) <= most + 1e-9) return factor * power;
        power *= 10.0;
    }
}

std::vector<GraphTick> axisTicks(double low, double high, int most, std::string_view format) {
    std::vector<GraphTick> ticks;
    const double step = tickStep(low, high, most);
    const double slack = step * 1e-9;
    for (double n = std::ceil(low / step - 1e-9);; n += 1.0) {
        const double value = n * step;
        if (value > high + slack) break;
        ticks.push_back({value, formatNumber(value, format)});
    }
    return ticks;
}

GraphPicture GraphTimeVolume(const Model& m, const CalcScreen& screen, int firstYear) {
    GraphPicture picture;
    picture.title = "Standing Volume / Year";
    const StandingGraphData standing = standingGraph(m, screen);
    yearAxis(picture.x, firstYear, firstYear + standing.horizon + 1);
    valueAxis(picture.y, standing.top, "Volume", "(m\xb3)");

    std::array<bool, std::size(kColourTests)> used{};
    for (const StandingColumn& column : standing.columns) {
        used[testOf(m, column)] = true;
        const double left = firstYear + column.offset;
        double base = 0.0;
        for (std::size_t part = 0; part < column.volumes.size(); ++part) {
            if (!(column.volumes[part] > 0.0f)) continue;
            const double top = base + column.volumes[part];
            picture.boxes.push_back({left, left + 1.0, base, top, column.colours[part]});
            base = top;
        }
    }
    const auto& c = m.Settings.COLORS;
    for (std::size_t i = 0; i < used.size(); ++i)
        if (used[i])
            picture.legend.push_back({std::string("Harvestable") + kColourTests[i].suffix,
                                      c[kColourTests[i].matureCon]});
    if (!standing.empty()) picture.legend.push_back({"Immature", c[ColIMATURE]});
    return picture;
}

GraphPicture GraphYieldCurve(const Model& m, int16_t polygon, int16_t t) {
    GraphPicture picture;
    const auto model = static_cast<std::size_t>(t);
    const ProjectSettings& s = m.Settings;
    const int16_t low = s.YieldMinAge[model], high = s.YieldMaxAge[model];
    const int step = std::max<int>(1, s.YieldIncAge[model]);
    const bool known = polygon >= 0 && polygon <= m.LastPoly;
    picture.title =
        "Yield Table - " + (known ? m.Poly[static_cast<std::size_t>(polygon)].NAME.str() : "");
    yearAxis(picture.x, low, high);

    const auto& c = s.COLORS;
    GraphCurve volume{c[ColVOL], {}}, mai{c[ColMAI], {}}, diameter{c[ColDIA], {}};
    double largest = 0.0;
    for (int age = low; known && age <= high; age += step) {
        const auto a = static_cast<int16_t>(age);
        volume.points.emplace_back(age, FindVol(m, t, a, polygon));
        mai.points.emplace_back(age, findMai(m, t, a, polygon));
        diameter.points.emplace_back(age, FindDia(m, t, a, polygon));
        for (const GraphCurve* curve : {&volume, &mai, &diameter})
            largest = std::max(largest, curve->points.back().second);
    }
    valueAxis(picture.y, largest, "Volume / Ha", "(m\xb3/Ha)");
    if (volume.points.empty()) return picture;
    picture.curves = {volume, mai, diameter};
    picture.legend = {{"Vol/ha", c[ColVOL], FillSolid, true},
                      {"MAI", c[ColMAI], FillSolid, true},
                      {"dbh", c[ColDIA], FillSolid, true}};
    return picture;
}

GraphPicture ageDistributionGraph(const Model& m, const AgeGraphRequest& request, int firstYear) {
    GraphPicture picture;
    picture.title = "Age Class Distribution by Area";
    picture.x = {0.0, static_cast<double>(kAgeClassLabels.size()), "Age Class", "", {}};
    for (std::size_t k = 0; k < kAgeClassLabels.size(); ++k)
        picture.x.ticks.push_back({k + 0.5, kAgeClassLabels[k]});

    std::vector<std::size_t> series;
    for (std::size_t s = 0; s < request.years.size(); ++s)
        if (request.years[s] != 0) series.push_back(s);
    const CalcState& calc = m.Calc;
    const double width = series.empty() ? 0.0 : 0.8 / static_cast<double>(series.size());
    double largest = 0.0;
    for (std::size_t n = 0; n < series.size(); ++n) {
        const std::size_t s = series[n];
        const int16_t fill = request.fillType == 1 ? int16_t{FillSolid} : request.patterns[s];
        const int32_t colour = request.fillType == 2 ? 0 : request.colours[s];
        const int index = request.years[s] - firstYear;
        const bool inTable = index >= 0 && index <= calc.YearTable.upperBound();
        for (std::size_t k = 0; k < kAgeClassLabels.size(); ++k) {
            const float area = inTable ? calc.YearTable[index].AgeClassArea[k] : 0.0f;
            largest = std::max(largest, static_cast<double>(area));
            const double left = k + 0.1 + n * width;
            if (area > 0.0f)
                picture.boxes.push_back({left, left + width, 0.0, area, colour, fill, true});
        }
        picture.legend.push_back(
            {formatNumber(static_cast<int>(request.years[s]), "0000"), colour, fill});
    }
    valueAxis(picture.y, largest, "Area", "(ha)");
    return picture;
}

int16_t ageGraphYear(std::string_view text) {
    return toI2(roundHalfEven(clamp32767(tolerantNumber(trim(text)))));
}

}  // namespace arborex
