#pragma once
// Reading a graphing program control file (graph.txt, tvgraph.txt, areagraph.txt, or one made
// by hand in the same language) into plain data for a viewer: the page header's settings, and
// per graph its settings, its series with their colours and styles, and its x labels.
//
// The reader never fails on content: an unknown statement is skipped with one warning, a
// missing or unreadable cell becomes a gap, and every series comes back with exactly one value
// per x label. Only a file that cannot be opened is an error.

#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace arborex {

// One "key = value" statement, key and value trimmed.
using ControlSetting = std::pair<std::string, std::string>;

struct ControlSeries {
    std::string title;
    // "FColor" and "BColor" as written: "#" and a colour number (red + 256 green + 65536
    // blue), a palette number ("1", "2", ...) or a name ("black"); empty when not given.
    std::string fillColour;
    std::string backColour;
    int style = 0;    // "Style": line or fill style, 0 when not given
    int width = 0;    // "Width": line width, 0 when not given
    int pattern = 0;  // "Pattern": fill pattern (0 solid)
    // One value per x label of the graph; NaN where the cell is missing or not a number.
    std::vector<double> values;
};

struct ControlGraph {
    std::string name;                      // what follows "*graph=" ("1,Sample 1")
    std::vector<ControlSetting> settings;  // every setting of the graph, in file order
    std::string type;                      // "Type": "Line", "LineFill", "Bar"
    std::string title1, title2;            // "Title1", "Title2"
    std::string xAxisLabel;                // "XAxisLabel"
    std::string yAxisLabel, yAxisUnit;     // "Y1AxisLabel", "Y1AxisUnit"
    std::string legendTitle;               // "LegendTitle"
    std::string yAxisColumns;              // "Y1AxisCol": "stack" or "cluster"
    double yMin = std::numeric_limits<double>::quiet_NaN();  // "Y1Min" (page or graph)
    double yMax = std::numeric_limits<double>::quiet_NaN();  // "Y1max"
    std::vector<ControlSeries> series;
    // The first cell of each data row: a year, "*tic" for a tick without a label, empty for
    // neither, or an age class.
    std::vector<std::string> xLabels;

    // The setting's value, keys compared without regard to case; empty when absent.
    std::string setting(std::string_view key) const;
};

struct GraphControl {
    std::vector<ControlSetting> header;  // the page settings before the first graph
    std::vector<ControlGraph> graphs;
    std::vector<std::string> warnings;  // "line 12: unknown statement 'xyz' skipped"

    // The header's value, keys compared without regard to case; empty when absent.
    std::string headerSetting(std::string_view key) const;
};

// Reads a control file's text (CR LF or LF line ends).
GraphControl readGraphControl(std::string_view text);
// Reads a control file; throws ArborexError ErrFileNotFound when it cannot be opened.
GraphControl readGraphControlFile(const std::string& path);

}  // namespace arborex
