#pragma once
// A graph of a control file as a Qt chart: lines, areas stacked on each other, or bars
// clustered or stacked, as its "Type" and "Y1AxisCol" say; its two titles, the axis titles and
// tick labels ("*tic" a tick without a label, an empty label no tick), the legend with its
// title, and the series' colours and fill patterns; fonts and grid lines from the page header.

#include <QSize>
#include <memory>
#include <string>
#include <string_view>

#include "report/graph_control_reader.hpp"

class QChart;

namespace arborex::chart {

// Why the file cannot be drawn, in a few words; empty when every graph has a table with
// series and rows and the file ends with "*endof" (a file cut short does not).
std::string undrawableReason(const GraphControl& control, std::string_view text);

// The page size the header gives ("Page=11000,8500,..." in thousandths of an inch) at 100
// pixels an inch; 1100 x 850 when it gives none.
QSize pageSize(const GraphControl& control);

std::unique_ptr<QChart> buildChart(const GraphControl& control, const ControlGraph& graph);

}  // namespace arborex::chart
