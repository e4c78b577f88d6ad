#include "chart_builder.hpp"

#include <QAreaSeries>
#include <QBarCategoryAxis>
#include <QBarSeries>
#include <QBarSet>
#include <QCategoryAxis>
#include <QChart>
#include <QLegendMarker>
#include <QLineSeries>
#include <QStackedBarSeries>
#include <QValueAxis>
#include <algorithm>
#include <cmath>

#include "base/number_text.hpp"
#include "base/text.hpp"
#include "chart_style.hpp"

namespace arborex::chart {

namespace {

double valueOrZero(double value) {
    return std::isnan(value) ? 0.0 : value;
}

// A series' colour: its "FColor", else the palette's colour after its place.
QColor seriesColour(const ControlSeries& s, std::size_t index) {
    return controlColour(s.fillColour, controlColour(std::to_string(index % 15 + 1), Qt::blue));
}

ControlFont headerFont(const GraphControl& control, const char* key, int size, bool bold) {
    ControlFont fallback;
    fallback.font = QFont("Arial", size);
    fallback.font.setBold(bold);
    return controlFont(control.headerSetting(key), fallback);
}

QString htmlTitle(const GraphControl& control, const ControlGraph& g) {
    auto line = [](const ControlFont& f, const std::string& text) {
        return QString(
                   "<div style='font-family:%1; font-size:%2pt; font-weight:%3; "
                   "font-style:%4; color:%5'>%6</div>")
            .arg(f.font.family())
            .arg(f.font.pointSize())
            .arg(f.font.bold() ? "bold" : "normal", f.font.italic() ? "italic" : "normal",
                 f.colour.name(), latin1(trim(text)).toHtmlEscaped());
    };
    QString html = line(headerFont(control, "Title1Font", 16, true), g.title1);
    if (!trim(g.title2).empty())
        html += line(headerFont(control, "Title2Font", 12, true), g.title2);
    return html;
}

void styleAxis(QAbstractAxis& axis, const ControlFont& labels, const ControlFont& title,
               const std::string& titleText, const std::string& gridStatement) {
    axis.setLabelsFont(labels.font);
    axis.setLabelsColor(labels.colour);
    axis.setLabelsAngle(-labels.angle);
    axis.setTitleFont(title.font);
    axis.setTitleBrush(title.colour);
    axis.setTitleText(latin1(trim(titleText)));
    const ControlLine grid = controlLine(gridStatement.empty() ? "0" : gridStatement);
    axis.setGridLineVisible(grid.visible);
    axis.setGridLinePen(grid.pen);
    axis.setLinePen(QPen(Qt::black));
}

// The yearly axis: a tick with its label at each labelled row. The bare ticks of "*tic" rows
// are left out: a category axis gives every tick a label, and rotated labels, even empty ones,
// take the height of a line across the axis, which hides the years beside them on a long
// horizon.
QCategoryAxis* rowAxis(const ControlGraph& g) {
    auto* axis = new QCategoryAxis;
    axis->setLabelsPosition(QCategoryAxis::AxisLabelsPositionOnValue);
    axis->setStartValue(-1);
    for (std::size_t i = 0; i < g.xLabels.size(); ++i) {
        const std::string label = trim(g.xLabels[i]);
        if (label.empty() || label == "*tic") continue;
        axis->append(latin1(label), static_cast<double>(i));
    }
    axis->setRange(0, std::max<double>(1, static_cast<double>(g.xLabels.size()) - 1));
    return axis;
}

QBarCategoryAxis* classAxis(const ControlGraph& g) {
    auto* axis = new QBarCategoryAxis;
    QStringList labels;
    for (const std::string& x : g.xLabels) {
        QString label = latin1(trim(x) == "*tic" ? std::string() : trim(x));
        while (labels.contains(label)) label += ' ';
        labels << label;
    }
    axis->append(labels);
    return axis;
}

bool stacked(const ControlGraph& g) {
    return equalsNoCase(trim(g.yAxisColumns), "stack");
}

void addBars(QChart& chart, const ControlGraph& g) {
    QAbstractBarSeries* bars =
        stacked(g) ? static_cast<QAbstractBarSeries*>(new QStackedBarSeries) : new QBarSeries;
    for (std::size_t s = 0; s < g.series.size(); ++s) {
        const ControlSeries& series = g.series[s];
        auto* set = new QBarSet(latin1(series.title));
        for (double v : series.values) set->append(valueOrZero(v));
        set->setBrush(patternBrush(series.pattern, seriesColour(series, s)));
        set->setPen(QPen(Qt::black, 1));
        bars->append(set);
    }
    chart.addSeries(bars);
}

void addLines(QChart& chart, const ControlGraph& g) {
    const bool fill = equalsNoCase(trim(g.type), "LineFill");
    std::vector<double> base(g.xLabels.size(), 0.0);
    for (std::size_t s = 0; s < g.series.size(); ++s) {
        const ControlSeries& series = g.series[s];
        const QColor colour = seriesColour(series, s);
        auto* upper = new QLineSeries;
        auto* lower = new QLineSeries;
        for (std::size_t i = 0; i < series.values.size(); ++i) {
            const double from = stacked(g) && fill ? base[i] : 0.0;
            lower->append(static_cast<double>(i), from);
            upper->append(static_cast<double>(i), from + valueOrZero(series.values[i]));
            base[i] = from + valueOrZero(series.values[i]);
        }
        if (fill) {
            auto* area = new QAreaSeries(upper, lower);
            area->setName(latin1(series.title));
            area->setBrush(patternBrush(series.pattern, colour));
            area->setPen(QPen(colour.darker(140), 1));
            chart.addSeries(area);
        } else {
            delete lower;
            upper->setName(latin1(series.title));
            upper->setPen(QPen(colour, std::clamp(series.width, 1, 8)));
            chart.addSeries(upper);
        }
    }
}

// The highest point drawn: the top of the stack where series stand on each other.
double dataTop(const ControlGraph& g) {
    double top = 0.0;
    for (std::size_t i = 0; i < g.xLabels.size(); ++i) {
        double sum = 0.0;
        for (const ControlSeries& s : g.series) {
            const double v = valueOrZero(s.values[i]);
            sum = stacked(g) ? sum + v : std::max(sum, v);
        }
        top = std::max(top, sum);
    }
    return top;
}

double dataBottom(const ControlGraph& g) {
    double bottom = 0.0;
    for (const ControlSeries& s : g.series)
        for (double v : s.values) bottom = std::min(bottom, valueOrZero(v));
    return bottom;
}

QValueAxis* valueAxis(const ControlGraph& g) {
    auto* axis = new QValueAxis;
    const double low = std::isnan(g.yMin) ? dataBottom(g) : g.yMin;
    double high = std::isnan(g.yMax) ? dataTop(g) : g.yMax;
    if (!(high > low)) high = low + 1.0;
    axis->setRange(low, high);
    if (std::isnan(g.yMax)) axis->applyNiceNumbers();
    const double step = (axis->max() - axis->min()) / std::max(1, axis->tickCount() - 1);
    axis->setLabelFormat(step >= 1.0 ? "%.0f" : step >= 0.1 ? "%.1f" : "%.2f");
    return axis;
}

// The legend's title, as a first entry without a mark.
void addLegendTitle(QChart& chart, const ControlGraph& g, const ControlFont& font) {
    if (trim(g.legendTitle).empty()) return;
    auto* title = new QLineSeries;
    title->setName(latin1(trim(g.legendTitle)));
    title->setPen(QPen(Qt::transparent));
    chart.addSeries(title);
    for (QLegendMarker* marker : chart.legend()->markers(title)) {
        marker->setShape(QLegend::MarkerShapeFromSeries);  // a line, drawn with no pen
        marker->setBrush(Qt::NoBrush);
        marker->setPen(Qt::NoPen);
        marker->setFont(font.font);
        marker->setLabelBrush(font.colour);
    }
}

}  // namespace

std::string undrawableReason(const GraphControl& control, std::string_view text) {
    if (control.graphs.empty()) return "no graph in this file";
    for (const ControlGraph& g : control.graphs)
        if (g.series.empty() || g.xLabels.empty()) return "a graph without a table of values";
    std::size_t end = text.size();
    while (end > 0 && std::isspace(static_cast<unsigned char>(text[end - 1]))) --end;
    std::size_t start = text.find_last_of('\n', end == 0 ? 0 : end - 1);
    start = start == std::string_view::npos ? 0 : start + 1;
    if (!equalsNoCase(trim(text.substr(start, end - start)), "*endof"))
        return "the file is cut short (no *endof after the last table)";
    return {};
}

QSize pageSize(const GraphControl& control) {
    const std::string page = control.headerSetting("Page");
    const std::size_t comma = page.find(',');
    const auto width = strictNumber(page.substr(0, comma));
    const auto height =
        comma == std::string::npos
            ? std::optional<double>()
            : strictNumber(page.substr(comma + 1, page.find(',', comma + 1) - comma - 1));
    if (!width || !height || *width < 1000 || *height < 1000 || *width > 100000 || *height > 100000)
        return {1100, 850};
    return {static_cast<int>(*width / 10), static_cast<int>(*height / 10)};
}

std::unique_ptr<QChart> buildChart(const GraphControl& control, const ControlGraph& g) {
    auto chart = std::make_unique<QChart>();
    chart->setTitle(htmlTitle(control, g));
    chart->setBackgroundRoundness(0);
    const ControlFont legendFont = headerFont(control, "LegendFont", 8, false);
    chart->legend()->setAlignment(Qt::AlignRight);
    chart->legend()->setFont(legendFont.font);
    chart->legend()->setLabelColor(legendFont.colour);
    addLegendTitle(*chart, g, headerFont(control, "LegendTitleFont", 10, true));

    const bool bars = equalsNoCase(trim(g.type), "Bar");
    if (bars)
        addBars(*chart, g);
    else
        addLines(*chart, g);

    QAbstractAxis* x = bars ? static_cast<QAbstractAxis*>(classAxis(g)) : rowAxis(g);
    QValueAxis* y = valueAxis(g);
    styleAxis(*x, headerFont(control, "XAxisFont", 8, false),
              headerFont(control, "XTitleFont", 10, true), g.xAxisLabel, g.setting("XGridLine"));
    styleAxis(*y, headerFont(control, "Y1AxisFont", 8, false),
              headerFont(control, "Y1TitleFont", 10, true), g.yAxisLabel, g.setting("Y1GridLine"));
    chart->addAxis(x, Qt::AlignBottom);
    chart->addAxis(y, Qt::AlignLeft);
    for (QAbstractSeries* series : chart->series()) {
        series->attachAxis(x);
        series->attachAxis(y);
    }
    return chart;
}

}  // namespace arborex::chart
