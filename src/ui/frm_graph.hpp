#pragma once
// "Graph": the window in which the program draws a graph itself (the time volume graph, a
// yield curve, the age distribution). The picture is painted from the core's GraphPicture, and
// can be copied to the clipboard or saved as a bitmap or PNG image.

#include <QColor>
#include <QDialog>
#include <QImage>
#include <QWidget>

#include "base/host.hpp"
#include "model/model.hpp"
#include "report/graph_data.hpp"

namespace arborex {

// A colour as COLORS stores it (red + 256 green + 65536 blue).
QColor storedColour(int32_t stored);

// Draws a picture into `area`: white ground, title, axes with their ticks and titles, boxes,
// curves and the legend. Text in Arial at 8 points.
void paintGraph(QPainter& painter, const QRect& area, const GraphPicture& picture);

// The picture control of the graph window.
class GraphView final : public QWidget {
    Q_OBJECT
public:
    explicit GraphView(QWidget* parent = nullptr);
    void setPicture(GraphPicture picture);
    const GraphPicture& picture() const { return picture_; }
    // The picture at the control's size.
    QImage image() const;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    GraphPicture picture_;
};

class frmGraph final : public QDialog {
    Q_OBJECT
public:
    frmGraph(Model& m, Host& host, QWidget* parent = nullptr);

    // GraphScreen: shows `picture`, cleared and scaled afresh.
    void GraphScreen(GraphPicture picture);
    QImage image() const { return picGraph_->image(); }

    void mnuCopyImage_Click();
    void mnuSaveImage_Click();

private:
    Model& m_;
    Host& host_;
    GraphView* picGraph_ = nullptr;
};

}  // namespace arborex
