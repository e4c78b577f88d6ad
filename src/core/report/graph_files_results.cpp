// graph.txt: the seven result graphs of the calculation screen's Graph menu.

#include <functional>
#include <string_view>

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/numeric.hpp"
#include "report/graph_files.hpp"
#include "report/graph_files_text.hpp"

namespace arborex {

const std::array<const char*, kResultGraphCount> kResultGraphCaptions = {
    "Volume Harvested Graph",
    "Area Harvested Graph",
    "Average Volume/Ha Graph",
    "Age Class Distribution Graph",
    "Harvested Volume by Species Graph",
    "Growth / Year Graph",
    "Harvest Forecast"};

namespace {

using graphtext::ControlText;
using Cells = std::vector<std::string>;

// The lines that set each result graph apart: its kind, title, value axis and legend title.
struct ResultGraphLines {
    const char* type;
    const char* title1;
    const char* yLabel;
    const char* yUnit;
    const char* legendTitle;
};

constexpr ResultGraphLines kResultGraphLines[kResultGraphCount] = {
    {"Type=LineFill", "Title1= Volume Harvested over Time", "Y1AxisLabel = Volume (m\xb3)",
     "Y1AxisUnit = m\xb3", "LegendTitle=Timber Type"},
    {"Type=Line", "Title1= Area Harvested over Time", "Y1AxisLabel = Area (ha)", "Y1AxisUnit = ha",
     "LegendTitle=Area"},
    {"Type=Line", "Title1= Volume / Hectare over Time", "Y1AxisLabel = Volume (m\xb3/ha)",
     "Y1AxisUnit = m\xb3/ha", "LegendTitle=Volume / Ha"},
    {"Type=LineFill", "Title1= Standing Area by Age Class over Time", "Y1AxisLabel = Area (ha)",
     "Y1AxisUnit = ha", "LegendTitle=Age Class"},
    {"Type=LineFill", "Title1= Harvested Volume by Species over Time",
     "Y1AxisLabel = Volume (m\xb3)", "Y1AxisUnit = m\xb3", "LegendTitle=Species"},
    {"Type=Line", "Title1= Ingrowth per year", "Y1AxisLabel = Volume (m\xb3)", "Y1AxisUnit = m\xb3",
     "LegendTitle=Volume"},
    {"Type=Line", "Title1= Harvest Forecast", "Y1AxisLabel = Harvest Volume (m\xb3/yr)",
     "Y1AxisUnit = m\xb3/yr", "LegendTitle=Legend"},
};

// The heads of the graphs drawn in the palette: two series 1 and 2, or one series 3.
void paletteHeads(ControlText& t, bool twoSeries) {
    t.row("FColor", twoSeries ? Cells{"1", "2"} : Cells{"3"});
    t.row("BColor", twoSeries ? Cells{"1", "2"} : Cells{"3"});
    t.row("Style", twoSeries ? Cells{"1", "2"} : Cells{"1"});
    t.row("Width", twoSeries ? Cells{"2", "2"} : Cells{"2"});
    t.row("Pattern", twoSeries ? Cells{"0", "0"} : Cells{"0"});
}

float volumeCut(const YearRec& y) {
    return y.VolConifer + y.VolDeciduous;
}

// The growth of each year: the standing volume gained over the year before, the year's cut
// added back. The first year has no year before it and shows none.
std::vector<float> yearlyGrowth(const CalcState& calc, int years) {
    std::vector<float> growth(static_cast<std::size_t>(std::max(years, 0)), 0.0f);
    for (int i = 1; i < years; ++i) {
        const float gained = calc.YearTable[i].InvVolume - calc.YearTable[i - 1].InvVolume;
        growth[static_cast<std::size_t>(i)] = gained + volumeCut(calc.YearTable[i]);
    }
    return growth;
}

// The 25-year means in blocks of years 1-25, 26-50, ...: each block's growth over 25.0, the
// last block too however short, stored for every year of the block.
std::vector<float> blockMeans(const std::vector<float>& growth) {
    std::vector<float> means(growth.size(), 0.0f);
    for (std::size_t start = 1; start < growth.size(); start += 25) {
        const std::size_t end = std::min(growth.size(), start + 25);
        float sum = 0.0f;
        for (std::size_t i = start; i < end; ++i) sum += growth[i];
        const float mean = sum / 25.0f;
        for (std::size_t i = start; i < end; ++i) means[i] = mean;
    }
    return means;
}

// One series of the species graph: its title and its tally rows in both models' tables.
struct SpeciesSeries {
    std::string title;
    int vdyp = -1;
    int tipsy = -1;
};

double tallyAt(const SpeciesTally& tally, int row, int offset) {
    if (row < 0 || row >= static_cast<int>(tally.rows.size())) return 0.0;
    return tally.rows[static_cast<std::size_t>(row)].at(static_cast<std::size_t>(offset + 1));
}

std::string speciesTitle(const std::vector<SpeciesRec>& table, int row) {
    if (row < 0 || row >= static_cast<int>(table.size())) return "Species " + std::to_string(row);
    const std::string desc = table[static_cast<std::size_t>(row)].Desc.str();
    return desc.empty() ? table[static_cast<std::size_t>(row)].Code.str() : desc;
}

// Every species with a volume cut over the run, VDYP's table first; a TIPSY species with the
// same code is the same series, its tally added.
std::vector<SpeciesSeries> harvestedSpecies(const Model& m, const CalcRun& run) {
    const std::vector<SpeciesRec>& vTable = m.Ref.SpeciesV;
    const std::vector<SpeciesRec>& tTable = m.Ref.SpeciesT;
    auto tipsyRowOf = [&](int vRow) {
        if (vRow < 0 || vRow >= static_cast<int>(vTable.size())) return -1;
        const std::string code = vTable[static_cast<std::size_t>(vRow)].Code.str();
        for (std::size_t t = 0; t < tTable.size(); ++t)
            if (!code.empty() && tTable[t].Code.str() == code) return static_cast<int>(t);
        return -1;
    };
    std::vector<SpeciesSeries> series;
    std::vector<bool> tipsyTaken(run.SpeciesVolT.rows.size(), false);
    for (int v = 0; v < static_cast<int>(run.SpeciesVolV.rows.size()); ++v) {
        int t = tipsyRowOf(v);
        if (t >= static_cast<int>(tipsyTaken.size())) t = -1;
        if (t >= 0) tipsyTaken[static_cast<std::size_t>(t)] = true;
        if (tallyAt(run.SpeciesVolV, v, -1) + tallyAt(run.SpeciesVolT, t, -1) > 0.0)
            series.push_back({speciesTitle(vTable, v), v, t});
    }
    for (int t = 0; t < static_cast<int>(tipsyTaken.size()); ++t)
        if (!tipsyTaken[static_cast<std::size_t>(t)] && tallyAt(run.SpeciesVolT, t, -1) > 0.0)
            series.push_back({speciesTitle(tTable, t), -1, t});
    return series;
}

}  // namespace

std::string resultGraphText(const Model& m, const CalcRun& run, int index, double now) {
    if (index < 0 || index >= kResultGraphCount) throw ArborexError(ErrSubscript, "graph index");
    const ResultGraphLines& lines = kResultGraphLines[index];
    const CalcState& calc = m.Calc;
    const int years = m.Settings.PLANHORZ;
    ControlText t;
    graphtext::openGraph(t, m, now, lines.type, lines.title1);
    graphtext::commonLines(t, m);
    graphtext::yearlyLines(t);
    graphtext::axisLines(t, lines.yLabel, lines.yUnit, lines.legendTitle);
    const int32_t rate = calc.inputs.SavedVolRate;
    if (index == 6) t.line("Y1max = " + std::to_string(2LL * rate));
    t.line("*table");

    std::vector<SpeciesSeries> species;
    std::vector<float> growth, means;
    switch (index) {
        case 0:
            t.row("Title", {"Conifer Volume", "Deciduous Volume"});
            paletteHeads(t, true);
            break;
        case 1:
        case 2:
            t.row("Title", {"Area CCE"});
            paletteHeads(t, false);
            break;
        case 3:
            t.row("Title", Cells(kAgeClassLabels.begin(), kAgeClassLabels.end()));
            break;
        case 4: {
            species = harvestedSpecies(m, run);
            Cells titles;
            for (const SpeciesSeries& s : species) titles.push_back(s.title);
            t.row("Title", titles);
            break;
        }
        case 5:
            t.row("Title", {"Growth", "25 year average growth"});
            paletteHeads(t, true);
            growth = yearlyGrowth(calc, years);
            means = blockMeans(growth);
            break;
        default:
            t.row("Title", {"Harvest Rate (=" + formatNumber(static_cast<double>(rate), "#,##0") +
                            "m\xb3/yr)"});
            break;
    }

    const int first = graphtext::calendarYearOf(now);
    for (int i = 0; i < years; ++i) {
        const YearRec& y = calc.YearTable[i];
        Cells cells;
        switch (index) {
            case 0:
                cells = {formatNumber(y.VolConifer, "0.0"), formatNumber(y.VolDeciduous, "0.0")};
                break;
            case 1:
                cells = {formatNumber(y.AreaCCE, "0.000")};
                break;
            case 2:
                cells = {formatNumber(quotient(volumeCut(y), y.AreaCCE), "0.000")};
                break;
            case 3:
                for (float area : y.AgeClassArea) cells.push_back(formatNumber(area, "0"));
                break;
            case 4:
                for (const SpeciesSeries& s : species)
                    cells.push_back(formatNumber(
                        tallyAt(run.SpeciesVolV, s.vdyp, i) + tallyAt(run.SpeciesVolT, s.tipsy, i),
                        "0"));
                break;
            case 5:
                cells = {formatNumber(growth[static_cast<std::size_t>(i)], "0.0"),
                         formatNumber(means[static_cast<std::size_t>(i)], "0.0")};
                break;
            default:
                cells = {formatNumber(volumeCut(y), "0.0")};
                break;
        }
        t.row(yearLabel(i, first), cells);
    }
    t.line("*endof");
    return std::move(t.text());
}

}  // namespace arborex
