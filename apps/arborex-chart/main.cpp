// arborex-chart: the viewer of the graphing program's control files (graph.txt, tvgraph.txt,
// areagraph.txt). See chart_app.hpp for its command line.

#include <QApplication>
#include <iostream>

#include "chart_app.hpp"

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName("arborex-chart");
    const int code = arborex::chart::runChart(QApplication::arguments().mid(1), std::cerr);
    return code >= 0 ? code : QApplication::exec();
}
