#pragma once
// picCalc, the calculation screen's small graph of standing volume over the horizon: draws the
// columns that standingGraph works out.

#include <QWidget>

#include "report/standing_volume.hpp"

namespace arborex {

class StandingGraph final : public QWidget {
    Q_OBJECT
public:
    explicit StandingGraph(QWidget* parent = nullptr);

    void setData(StandingGraphData data);
    const StandingGraphData& data() const { return data_; }
    // The year offset under a horizontal position, in the graph's units (0 at the left edge).
    double yearAt(double x) const;

signals:
    // A mouse button went down at year offset `x`.
    void pressed(Qt::MouseButton button, double x);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    StandingGraphData data_;
};

}  // namespace arborex
