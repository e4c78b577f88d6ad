#include "ui/standing_graph.hpp"

#include <QMouseEvent>
#include <QPainter>

namespace arborex {

namespace {

QColor colourOf(int32_t stored) {
    return QColor(stored & 0xff, (stored >> 8) & 0xff, (stored >> 16) & 0xff);
}

}  // namespace

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
            painter.fillRect(QRectF(left, base - size, unitWidth, size),
                             colourOf(column.colours[part]));
            base -= size;
        }
    }
}

void StandingGraph::mousePressEvent(QMouseEvent* event) {
    emit pressed(event->button(), yearAt(event->position().x()));
    QWidget::mousePressEvent(event);
}

}  // namespace arborex
