#include "ui/standing_graph.hpp"

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "base/number_text.hpp"
#include "base/numeric.hpp"

namespace arborex {

namespace {

QColor colourOf(int32_t stored) {
    return QColor(stored & 0xff, (stored >> 8) & 0xff, (stored >> 16) & 0xff);
}

// The four colours of a column, from the base up, by the first rule the year meets.
std::array<QColor, 4> columnColours(const Model& m, const YearRec& year, double agePercent,
                                    double heightPercent, double rate) {
    const auto& c = m.Settings.COLORS;
    const auto set = [&](ColourKey matureDec, ColourKey matureCon, ColourKey youngDec,
                         ColourKey youngCon) {
        return std::array<QColor, 4>{colourOf(c[matureDec]), colourOf(c[matureCon]),
                                     colourOf(c[youngDec]), colourOf(c[youngCon])};
    };
    const double area = year.InvArea;
    if (100.0 * year.InvAreaAge / area < agePercent)
        return set(ColAMATURED, ColAMATURE, ColAIMATURED, ColAIMATURE);
    if (100.0 * year.InvAreaHeight / area < heightPercent)
        return set(ColHMATURED, ColHMATURE, ColHIMATURED, ColHIMATURE);
    // Volume also in an area-based run, whose rate is in hectares: such a run nearly always
    // shows the plain colours, as it always has.
    if (year.VolConifer + year.VolDeciduous < 0.98 * rate)
        return set(ColNMATURED, ColNMATURE, ColNIMATURED, ColNIMATURE);
    return set(ColMATURED, ColMATURE, ColIMATURED, ColIMATURE);
}

}  // namespace

StandingGraphData standingGraph(const Model& m, const CalcScreen& screen) {
    StandingGraphData graph;
    const CalcState& calc = m.Calc;
    if (calc.CalcHorizon < 1) return graph;
    const int last = std::min(static_cast<int>(calc.CalcHorizon), calc.YearTable.upperBound());
    double largest = 0.0;
    for (int y = 0; y <= last; ++y) {
        const YearRec& year = calc.YearTable[y];
        const double standing = static_cast<double>(year.MatureCon) + year.MatureDec +
                                year.ImmatureCon + year.ImmatureDec;
        largest = std::max(largest, standing);
    }
    graph.top = roundHalfEven(largest);
    if (graph.top == 0.0) return graph;
    graph.horizon = calc.CalcHorizon;

    const double agePercent = screen.chkConAge ? tolerantNumber(screen.txtAgePerc) : 0.0;
    const double heightPercent = screen.chkConHeight ? tolerantNumber(screen.txtHeightPerc) : 0.0;
    const double rate = tolerantNumber(screen.txtVolToCut);
    for (int y = 0; y <= last; ++y) {
        const YearRec& year = calc.YearTable[y];
        if (!(year.InvArea > 0.0f)) continue;
        StandingColumn column;
        column.offset = y;
        column.volumes = {year.MatureDec, year.MatureCon, year.ImmatureDec, year.ImmatureCon};
        column.colours = columnColours(m, year, agePercent, heightPercent, rate);
        graph.columns.push_back(column);
    }
    return graph;
}

StandingGraph::StandingGraph(QWidget* parent) : QWidget(parent) {
    setObjectName("picCalc");
    setMinimumSize(200, 100);
    setAutoFillBackground(true);
    QPalette white = palette();
    white.setColor(QPalette::Window, Qt::white);
    setPalette(white);
}

void StandingGraph::setData(StandingGraphData data) {
    data_ = std::move(data);
    update();
}

double StandingGraph::yearAt(double x) const {
    if (width() <= 0) return 0.0;
    return x * (data_.horizon + 1) / width();
}

void StandingGraph::paintEvent(QPaintEvent*) {
    if (data_.empty()) return;
    QPainter painter(this);
    const double unitWidth = static_cast<double>(width()) / (data_.horizon + 1);
    const double unitHeight = static_cast<double>(height()) / data_.top;
    for (const StandingColumn& column : data_.columns) {
        const double left = column.offset * unitWidth;
        double base = height();
        for (std::size_t part = 0; part < column.volumes.size(); ++part) {
            const double size = column.volumes[part] * unitHeight;
            if (size <= 0.0) continue;
            painter.fillRect(QRectF(left, base - size, unitWidth, size), column.colours[part]);
            base -= size;
        }
    }
}

void StandingGraph::mousePressEvent(QMouseEvent* event) {
    emit pressed(event->button(), yearAt(event->position().x()));
    QWidget::mousePressEvent(event);
}

}  // namespace arborex
