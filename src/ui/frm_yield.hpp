#pragma once
// "Yield Table and Polygon Specific Harvest Parameters": one polygon's curve of one model as a
// table and a graph, beside the fields in which the user sets the polygon's harvest criteria and
// the target age of one management, each edit showing its effect on the graph at once.
//
// The screen is modeless; the polygon screen owns one and is told (targetAgeChanged) when the
// view changed a target or calculated age, so that its own target fields follow.

#include <QDialog>
#include <QPointer>
#include <QWidget>
#include <array>
#include <functional>

#include "base/host.hpp"
#include "model/model.hpp"
#include "report/yield_view.hpp"

class QLabel;
class QLineEdit;
class QTableWidget;
class QToolButton;

namespace arborex {

class frmGraph;

// picGraph: the three lines and the age markers in the view's picture units, with the ages
// along the bottom. A click reports the picture x under the mouse.
class YieldGraph final : public QWidget {
    Q_OBJECT
public:
    explicit YieldGraph(QWidget* parent = nullptr);
    void setPicture(YieldPicture picture);
    void setMarkers(std::vector<YieldMarker> markers);
    const YieldPicture& picture() const { return picture_; }
    const std::vector<YieldMarker>& markers() const { return markers_; }
    // The plotting area and the picture x of a point in it (clamped to the picture).
    QRectF plotArea() const;
    double pictureX(double pixelX) const;

signals:
    void clickedAt(double pictureX);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    YieldPicture picture_;
    std::vector<YieldMarker> markers_;
};

class frmYield final : public QDialog {
    Q_OBJECT
public:
    frmYield(Model& m, Host& host, QWidget* parent = nullptr);

    // Management r of a polygon: its model MGNT[r], target HAR[r].
    void showManagement(int16_t polygon, int16_t management);
    // Fills everything for the polygon and model; the caution box shows for a line left out.
    void showYield(int16_t polygon, int16_t t);
    // Whatever depends on the harvest criteria: the ages, the target and the markers.
    void updateGraph();

    int16_t YieldPoly() const { return view_.YieldPoly; }
    int16_t YieldModel() const { return view_.YieldModel; }
    int16_t YieldMgnt() const { return view_.YieldMgnt; }

    // Called after the view changed a target or calculated harvest age of the polygon.
    void setTargetAgeChanged(std::function<void()> changed) {
        targetAgeChanged_ = std::move(changed);
    }

    void txtFindAge_LostFocus(int index);
    void txtHarvestRate_LostFocus();
    void updnHarvestAge_UpClick();
    void updnHarvestAge_DownClick();
    void picGraph_MouseDown(double x);
    void mnuCopyTable_Click();
    void mnuExportCSV_Click();
    void mnuGraph_Click();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void buildMenus();
    QWidget* buildKey();
    QWidget* buildCriteria();
    QWidget* buildResults();
    QLineEdit* addField(const QString& name);
    QLabel* addValue(const QString& name);
    void fillTable();
    void showFields();
    void stepTarget(int16_t step);
    void targetChanged();
    bool act(const char* routine, const std::function<void()>& step);

    Model& m_;
    Host& host_;
    YieldView view_;
    std::function<void()> targetAgeChanged_;

    QTableWidget* grdYield_ = nullptr;
    YieldGraph* picGraph_ = nullptr;
    QLabel* lblYieldXAxis_ = nullptr;
    QLabel* lblYieldTitle_ = nullptr;
    std::array<QLineEdit*, 3> txtFindAge_{};
    QLineEdit* txtHarvestRate_ = nullptr;
    std::array<QLabel*, 9> lblYield_{};
    std::array<QLabel*, 3> lblCT_{};
    QPointer<frmGraph> graph_;
};

}  // namespace arborex
