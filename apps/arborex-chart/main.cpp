// arborex-chart: the viewer of the graphing program's control files (graph.txt, tvgraph.txt,
// areagraph.txt). See chart_app.hpp for its command line.

#include <QApplication>
#include <algorithm>
#include <cstring>
#include <iostream>

#include "chart_app.hpp"

namespace {

// Drawing into files needs no screen: without one, the offscreen platform stands in, so that
// --png, --svg and --pdf work on a machine without a display.
void drawWithoutDisplayWhenWritingFiles(int argc, char* argv[]) {
    const bool writesFiles = std::any_of(argv + 1, argv + argc, [](const char* word) {
        return std::strcmp(word, "--png") == 0 || std::strcmp(word, "--svg") == 0 ||
               std::strcmp(word, "--pdf") == 0;
    });
    const bool display = qEnvironmentVariableIsSet("DISPLAY") ||
                         qEnvironmentVariableIsSet("WAYLAND_DISPLAY") ||
                         qEnvironmentVariableIsSet("QT_QPA_PLATFORM");
    if (writesFiles && !display) qputenv("QT_QPA_PLATFORM", "offscreen");
}

}  // namespace

int main(int argc, char* argv[]) {
    drawWithoutDisplayWhenWritingFiles(argc, argv);
    QApplication app(argc, argv);
    QApplication::setApplicationName("arborex-chart");
    const int code = arborex::chart::runChart(QApplication::arguments().mid(1), std::cerr);
    return code >= 0 ? code : QApplication::exec();
}
