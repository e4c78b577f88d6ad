#include "chart_app.hpp"

#include <QFileInfo>
#include <QWidget>
#include <fstream>
#include <ostream>
#include <sstream>

#include "chart_builder.hpp"
#include "chart_output.hpp"
#include "chart_style.hpp"

namespace arborex::chart {

namespace {

constexpr const char* kUsage =
    "usage: arborex-chart FILE [--png OUT] [--svg OUT] [--pdf OUT] [--size WxH]";

struct ChartOptions {
    QString file, png, svg, pdf;
    QSize size;  // invalid: the page's size
};

// Throws the message of a wrong command line.
ChartOptions parse(const QStringList& arguments) {
    ChartOptions options;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& word = arguments[i];
        QString* target = word == "--png"   ? &options.png
                          : word == "--svg" ? &options.svg
                          : word == "--pdf" ? &options.pdf
                                            : nullptr;
        if (target || word == "--size") {
            if (i + 1 >= arguments.size()) throw std::string(kUsage);
            const QString value = arguments[++i];
            if (target) {
                *target = value;
                continue;
            }
            const QStringList parts = value.toLower().split('x');
            bool wide = false, high = false;
            const int w = parts.size() == 2 ? parts[0].toInt(&wide) : 0;
            const int h = parts.size() == 2 ? parts[1].toInt(&high) : 0;
            if (!wide || !high || w < 100 || h < 100 || w > 10000 || h > 10000)
                throw "--size needs WIDTHxHEIGHT in pixels (100 to 10000), not '" +
                    value.toStdString() + "'";
            options.size = QSize(w, h);
        } else if (word.startsWith("--") || !options.file.isEmpty()) {
            throw std::string(kUsage);
        } else {
            options.file = word;
        }
    }
    if (options.file.isEmpty()) throw std::string(kUsage);
    return options;
}

std::string readWhole(const QString& path) {
    std::ifstream in(path.toStdString(), std::ios::binary);
    if (!in) throw path.toStdString() + ": cannot be read";
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

}  // namespace

int runChart(const QStringList& arguments, std::ostream& err) {
    ChartOptions options;
    try {
        options = parse(arguments);
    } catch (const std::string& message) {
        err << "arborex-chart: " << message << "\n";
        return kChartUsage;
    }
    const std::string name = options.file.toStdString();
    GraphControl control;
    try {
        const std::string text = readWhole(options.file);
        control = readGraphControl(text);
        // A file that cannot be drawn gets its one line, not the reader's warnings as well.
        if (const std::string reason = undrawableReason(control, text); !reason.empty())
            throw name + ": " + reason;
        for (const std::string& warning : control.warnings)
            err << "arborex-chart: " << name << ": " << warning << "\n";
    } catch (const std::string& message) {
        err << "arborex-chart: " << message << "\n";
        return kChartFailed;
    }
    const QSize size = options.size.isValid() ? options.size : pageSize(control);
    const std::pair<const QString*, bool (*)(const GraphControl&, QSize, const QString&)>
        outputs[] = {{&options.png, savePng}, {&options.svg, saveSvg}, {&options.pdf, savePdf}};
    bool drawn = false;
    for (const auto& [path, save] : outputs) {
        if (path->isEmpty()) continue;
        drawn = true;
        if (!save(control, size, *path)) {
            err << "arborex-chart: " << path->toStdString() << ": cannot be written\n";
            return kChartFailed;
        }
    }
    if (drawn) return 0;
    // The window lives as long as the program.
    chartWindow(control, size, QFileInfo(options.file).fileName() + " - arborex-chart")
        .release()
        ->show();
    return -1;
}

}  // namespace arborex::chart
