#include "chart_output.hpp"

#include <QChart>
#include <QChartView>
#include <QGraphicsLayout>
#include <QGraphicsScene>
#include <QImage>
#include <QPageLayout>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>
#include <QTabWidget>

#include "base/text.hpp"
#include "chart_builder.hpp"
#include "chart_style.hpp"

namespace arborex::chart {

namespace {

// Draws graph `index` into `target` of the painter's device.
void drawGraph(const GraphControl& control, std::size_t index, QSize size, QPainter& painter,
               const QRectF& target) {
    QGraphicsScene scene;
    std::unique_ptr<QChart> owned = buildChart(control, control.graphs[index]);
    QChart* chart = owned.release();  // the scene owns it from here
    scene.addItem(chart);
    chart->resize(size);
    chart->layout()->activate();
    scene.setSceneRect(0, 0, size.width(), size.height());
    scene.render(&painter, target, QRectF(QPointF(0, 0), size));
}

void drawAll(const GraphControl& control, QSize size, QPainter& painter) {
    for (std::size_t i = 0; i < control.graphs.size(); ++i)
        drawGraph(control, i, size, painter,
                  QRectF(0, static_cast<double>(i) * size.height(), size.width(), size.height()));
}

QSize stackSize(const GraphControl& control, QSize size) {
    return {size.width(), size.height() * static_cast<int>(control.graphs.size())};
}

QString graphName(const ControlGraph& g, std::size_t index) {
    const QString title = latin1(g.title1).trimmed();
    return title.isEmpty() ? QString("Graph %1").arg(index + 1) : title;
}

}  // namespace

QImage renderImage(const GraphControl& control, QSize size) {
    QImage image(stackSize(control, size), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    drawAll(control, size, painter);
    return image;
}

bool savePng(const GraphControl& control, QSize size, const QString& path) {
    return renderImage(control, size).save(path, "PNG");
}

bool saveSvg(const GraphControl& control, QSize size, const QString& path) {
    QSvgGenerator svg;
    svg.setFileName(path);
    svg.setSize(stackSize(control, size));
    svg.setViewBox(QRect(QPoint(0, 0), stackSize(control, size)));
    svg.setTitle(graphName(control.graphs.front(), 0));
    QPainter painter;
    if (!painter.begin(&svg)) return false;
    drawAll(control, size, painter);
    return painter.end();
}

bool savePdf(const GraphControl& control, QSize size, const QString& path) {
    QPdfWriter pdf(path);
    const bool portrait = equalsNoCase(control.headerSetting("Orientation"), "portrait");
    const bool a4 = equalsNoCase(control.headerSetting("Paper"), "a4");
    pdf.setPageLayout(QPageLayout(QPageSize(a4 ? QPageSize::A4 : QPageSize::Letter),
                                  portrait ? QPageLayout::Portrait : QPageLayout::Landscape,
                                  QMarginsF(10, 10, 10, 10), QPageLayout::Millimeter));
    QPainter painter;
    if (!painter.begin(&pdf)) return false;
    const QRect page = painter.viewport();
    // The graph keeps its proportions, as large as the page allows.
    const QSizeF fitted = QSizeF(size).scaled(page.size(), Qt::KeepAspectRatio);
    for (std::size_t i = 0; i < control.graphs.size(); ++i) {
        if (i > 0) pdf.newPage();
        drawGraph(control, i, size, painter, QRectF(QPointF(0, 0), fitted));
    }
    return painter.end();
}

std::unique_ptr<QWidget> chartWindow(const GraphControl& control, QSize size,
                                     const QString& title) {
    auto view = [&](std::size_t i) {
        auto* chartView = new QChartView(buildChart(control, control.graphs[i]).release());
        chartView->setRenderHint(QPainter::Antialiasing);
        return chartView;
    };
    std::unique_ptr<QWidget> window;
    if (control.graphs.size() == 1) {
        window.reset(view(0));
    } else {
        auto* tabs = new QTabWidget;
        for (std::size_t i = 0; i < control.graphs.size(); ++i)
            tabs->addTab(view(i), graphName(control.graphs[i], i));
        window.reset(tabs);
    }
    window->setWindowTitle(title);
    window->resize(size);
    return window;
}

}  // namespace arborex::chart
