// picGraph of the yield table view: white ground, a light grid at the age ticks, the three
// lines, then the vertical age markers over them, and the ages below the plotting area.

#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

#include "ui/frm_graph.hpp"
#include "ui/frm_yield.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

constexpr double kPictureHeight = 100.0;
constexpr int kMargin = 8;

}  // namespace

YieldGraph::YieldGraph(QWidget* parent) : QWidget(parent) {
    setObjectName("picGraph");
    setMinimumSize(420, 240);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setCursor(Qt::CrossCursor);
    setToolTip("Click to set the target harvest age");
}

void YieldGraph::setPicture(YieldPicture picture) {
    picture_ = std::move(picture);
    update();
}

void YieldGraph::setMarkers(std::vector<YieldMarker> markers) {
    markers_ = std::move(markers);
    update();
}

QRectF YieldGraph::plotArea() const {
    const int labels = fontMetrics().height() + 4;
    return QRectF(rect()).adjusted(kMargin, kMargin, -kMargin, -(kMargin + labels));
}

double YieldGraph::pictureX(double pixelX) const {
    const QRectF plot = plotArea();
    const double x = (pixelX - plot.left()) / plot.width() * picture_.width;
    return std::clamp(x, 0.0, picture_.width);
}

void YieldGraph::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Qt::white);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF plot = plotArea();
    const auto px = [&](double x) { return plot.left() + x / picture_.width * plot.width(); };
    const auto py = [&](double y) { return plot.top() + y / kPictureHeight * plot.height(); };

    painter.setPen(QPen(QColor(215, 215, 215), 1, Qt::DotLine));
    for (const YieldTick& tick : picture_.ticks)
        painter.drawLine(QPointF(px(tick.x), plot.top()), QPointF(px(tick.x), plot.bottom()));
    painter.setPen(QColor(120, 120, 120));
    painter.drawRect(plot);
    painter.setPen(Qt::black);
    const QFontMetrics metrics = fontMetrics();
    for (const YieldTick& tick : picture_.ticks) {
        const QString label = lq(tick.label);
        const double half = metrics.horizontalAdvance(label) / 2.0;
        const double left = std::clamp(px(tick.x) - half, 0.0, width() - 2.0 * half);
        painter.drawText(QPointF(left, plot.bottom() + metrics.ascent() + 3), label);
    }

    if (!picture_.message.empty()) {
        painter.setPen(Qt::black);
        painter.drawText(plot, Qt::AlignCenter | Qt::TextWordWrap, lq(picture_.message));
        return;
    }
    for (const YieldLine& line : picture_.lines) {
        painter.setPen(QPen(storedColour(line.colour), 2));
        QPolygonF points;
        for (const auto& [x, y] : line.points) points << QPointF(px(x), py(y));
        painter.drawPolyline(points);
    }
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setClipRect(plot);
    for (const YieldMarker& marker : markers_) {
        painter.setPen(QPen(storedColour(marker.colour), 2));
        painter.drawLine(QPointF(px(marker.x), plot.top()), QPointF(px(marker.x), plot.bottom()));
    }
}

void YieldGraph::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) emit clickedAt(pictureX(event->position().x()));
}

}  // namespace arborex
