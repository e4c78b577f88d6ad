#pragma once
// Drawing a control file's graphs: into a PNG, SVG or PDF file without a window (one graph
// under the other in a picture, one a page in a PDF), or into a window with a tab a graph.

#include <QSize>
#include <QString>
#include <memory>

#include "report/graph_control_reader.hpp"

class QImage;
class QWidget;

namespace arborex::chart {

// Every graph at `size`, the one under the other, on the page's white.
QImage renderImage(const GraphControl& control, QSize size);

// Each writes `path`; false when it cannot be written.
bool savePng(const GraphControl& control, QSize size, const QString& path);
bool saveSvg(const GraphControl& control, QSize size, const QString& path);
bool savePdf(const GraphControl& control, QSize size, const QString& path);

// The window: the graph itself, or a tab a graph when the file holds several.
std::unique_ptr<QWidget> chartWindow(const GraphControl& control, QSize size, const QString& title);

}  // namespace arborex::chart
