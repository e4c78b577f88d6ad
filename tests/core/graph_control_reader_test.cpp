// The control file reader: every file the writers make reads back into the graph it describes,
// and what is unknown or damaged is skipped or left as a gap.

#include <gtest/gtest.h>

#include <cmath>
#include <sstream>

#include "base/dates.hpp"
#include "base/display_format.hpp"
#include "harvest/calculate.hpp"
#include "model/colours.hpp"
#include "report/graph_control_reader.hpp"
#include "report/graph_files.hpp"
#include "support/calc_fixture.hpp"

namespace arborex {
namespace {

struct WrittenGraph {
    std::string text;
    std::size_t series;
    std::string title1;
};

TEST(GraphControlReader, EveryWrittenFileReadsBackWithItsSeriesAndValues) {
    test::CalcFixture f({{"A", 10.0f, 85}, {"B", 4.0f, 95, 1, 1, 3.0f}, {"C", 6.0f, 60}});
    setColours(f.m);
    f.m.Settings.PLANHORZ = 12;
    f.m.Header.Licence = "L1";
    f.m.Header.Scenario = "S1";
    f.screen.txtVolToCut = "250";
    f.prepare();
    ASSERT_TRUE(cmdCalculate(f.session));
    const double now = dayCountFromParts({2030, 1, 2, 9, 30, 0});
    AgeGraphRequest ages;
    ages.years = {2030, 2031, 2033, 2036, 2040, 2041};

    std::vector<WrittenGraph> written;
    const std::size_t seriesOf[] = {2, 1, 1, 10, 1, 2, 1};
    for (int i = 0; i < kResultGraphCount; ++i)
        written.push_back({resultGraphText(f.m, f.run, i, now), seriesOf[i], ""});
    written.push_back({timeVolumeGraphText(f.m, now), 4, "Time Volume"});
    written.push_back({ageGraphText(f.m, ages, now), 6, "Age Class Distribution by Area"});

    for (const WrittenGraph& w : written) {
        const GraphControl control = readGraphControl(w.text);
        SCOPED_TRACE(w.text.substr(w.text.find("Title1=")));
        EXPECT_TRUE(control.warnings.empty());
        EXPECT_EQ(control.headerSetting("Paper"), "letter");
        EXPECT_EQ(control.headerSetting("CreatedDate"), "January 2, 2030");
        ASSERT_EQ(control.graphs.size(), 1u);
        const ControlGraph& g = control.graphs[0];
        EXPECT_EQ(g.name, "1,Sample 1");
        EXPECT_EQ(g.title2, "L1 - S1");
        EXPECT_EQ(g.yMin, 0.0);
        if (!w.title1.empty()) {
            EXPECT_EQ(g.title1, w.title1);
        }
        ASSERT_EQ(g.series.size(), w.series);
        EXPECT_EQ(g.xLabels.size(), w.series == 6 ? 10u : 12u);
        // Each value is the number its cell shows.
        for (const ControlSeries& s : g.series) {
            ASSERT_EQ(s.values.size(), g.xLabels.size());
            for (double v : s.values) EXPECT_FALSE(std::isnan(v));
        }
        // The first data row's cells, as written, are its values.
        const std::size_t firstRow = w.text.find("\r\n" + g.xLabels[0] + "\t") + 2;
        std::istringstream row(w.text.substr(firstRow, w.text.find("\r\n", firstRow) - firstRow));
        std::string cell;
        std::getline(row, cell, '\t');
        for (const ControlSeries& s : g.series) {
            ASSERT_TRUE(std::getline(row, cell, '\t'));
            EXPECT_DOUBLE_EQ(s.values[0], std::stod(cell));
        }
    }

    const ControlGraph forecast = readGraphControl(written[6].text).graphs[0];
    EXPECT_EQ(forecast.yMax, 2.0 * f.m.Calc.inputs.SavedVolRate);
    EXPECT_EQ(forecast.type, "Line");
    EXPECT_EQ(forecast.xAxisLabel, "Year");
    EXPECT_EQ(forecast.yAxisUnit, "m\xb3/yr");
    EXPECT_EQ(forecast.xLabels[0], "2030");
    EXPECT_EQ(forecast.xLabels[5], "*tic");
    EXPECT_EQ(forecast.xLabels[1], "");
    const ControlGraph standing = readGraphControl(written[7].text).graphs[0];
    EXPECT_EQ(standing.series[1].title, "Mature Conifer");
    EXPECT_EQ(standing.series[1].fillColour, "#" + std::to_string(f.m.Settings.COLORS[ColMATURE]));
    EXPECT_EQ(standing.series[3].style, 4);
    EXPECT_EQ(standing.series[3].width, 2);
    const ControlGraph ageGraph = readGraphControl(written[8].text).graphs[0];
    EXPECT_EQ(ageGraph.series[2].title, "2033");
    EXPECT_EQ(ageGraph.xLabels.back(), "251+");
    EXPECT_EQ(ageGraph.yAxisColumns, "cluster");
}

TEST(GraphControlReader, SkipsWhatItDoesNotKnowAndLeavesGapsForMissingCells) {
    const GraphControl control = readGraphControl(
        "Paper = letter\n"
        "Nonsense line\n"
        "*graph=1,First\n"
        "Type=Line\n"
        "*bogus\n"
        "*table\n"
        "Title\tA\tB\n"
        "Style\t1\tx\n"
        "2030\t1.5\n"
        "\t2\tn/a\t7\n"
        "*endof\n"
        "Late=1\n"
        "*graph=2\n"
        "*table\n"
        "x\t4\n");
    ASSERT_EQ(control.warnings.size(), 3u);
    EXPECT_EQ(control.warnings[0], "line 2: unknown statement 'Nonsense line' skipped");
    EXPECT_EQ(control.warnings[1], "line 5: unknown statement '*bogus' skipped");
    EXPECT_EQ(control.warnings[2], "line 12: unknown statement 'Late=1' skipped");
    ASSERT_EQ(control.graphs.size(), 2u);
    const ControlGraph& g = control.graphs[0];
    EXPECT_EQ(g.type, "Line");
    EXPECT_TRUE(std::isnan(g.yMin));
    ASSERT_EQ(g.series.size(), 3u);  // the third cell of the last row adds an untitled series
    EXPECT_EQ(g.series[1].style, 0);
    EXPECT_EQ(g.xLabels, (std::vector<std::string>{"2030", ""}));
    EXPECT_EQ(g.series[0].values, (std::vector<double>{1.5, 2.0}));
    EXPECT_TRUE(std::isnan(g.series[1].values[0]) && std::isnan(g.series[1].values[1]));
    EXPECT_TRUE(std::isnan(g.series[2].values[0]));
    EXPECT_EQ(g.series[2].values[1], 7.0);
    EXPECT_EQ(control.graphs[1].series.size(), 1u);
    EXPECT_EQ(control.graphs[1].series[0].values, std::vector<double>{4.0});
}

}  // namespace
}  // namespace arborex
