#include "ui/frm_calc_yield.hpp"

#include <QCheckBox>
#include <QEventLoop>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

#include "frame/error_handler.hpp"
#include "ui/frm_polygon.hpp"
#include "ui/ui_helpers.hpp"
#include "yield/yield_run.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmCalcYield";
constexpr int kChecksTab = 0;
constexpr int kCalculationTab = 1;
constexpr int kPostTab = 2;

// The run's progress straight onto the screen: each label painted as it changes, since the
// next step may be a model that runs for minutes.
class ScreenObserver final : public YieldRunObserver {
public:
    explicit ScreenObserver(frmCalcYield& screen) : screen_(screen) {}
    void stat(int label, const std::string& text) override { screen_.showStat(label, text); }
    void postAdded(const PostItem& item) override { screen_.addPost(item); }
    void pause(int milliseconds) override {
        // Cancel stays clickable while the output file settles.
        QEventLoop loop;
        QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
        loop.exec();
    }
    bool cancelled() override { return screen_.cancelled(); }

private:
    frmCalcYield& screen_;
};

}  // namespace

frmCalcYield::frmCalcYield(Model& m, Host& host, ProcessRunner& processes, frmPolygon* polygons,
                           QWidget* parent)
    : QDialog(parent ? parent : polygons),
      m_(m),
      host_(host),
      processes_(processes),
      polygons_(polygons) {
    setObjectName("frmCalcYield");
    setWindowTitle("Calculate Yield Tables");

    ts_ = new QTabWidget(this);
    ts_->setObjectName("ts");
    ts_->addTab(buildChecksTab(), "Pre-calculation");
    ts_->addTab(buildCalculationTab(), "Calculation");
    ts_->addTab(buildPostTab(), "Post Calculation");
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(ts_, 1);
    layout->addWidget(buildControls());

    // A model's own window may have covered this screen by the time the run ends.
    timBringToFront_ = new QTimer(this);
    timBringToFront_->setObjectName("timBringToFront");
    timBringToFront_->setSingleShot(true);
    timBringToFront_->setInterval(200);
    connect(timBringToFront_, &QTimer::timeout, this, &frmCalcYield::timBringToFront_Timer);

    resize(700, 480);
    centerme(*this);
    PreCalcCheck();
    ts_->setCurrentIndex(kChecksTab);
}

// ---- Checking ----------------------------------------------------------------------------------

void frmCalcYield::PreCalcCheck() {
    PreCalcResult checked;
    runGuarded(m_, host_, "PreCalcCheck", kModule, [&] { checked = arborex::PreCalcCheck(m_); });
    fillList(lstErrors_, checked.errors);
    fillList(lstWarn_, checked.warnings);
    for (std::size_t i = 0; i < lblAmt_.size(); ++i) lblAmt_[i]->setText(lq(checked.lblAmt[i]));
    // An empty project ends the check before the status line.
    if (!checked.lblStatus.empty()) lblStatus_->setText(lq(checked.lblStatus));
}

void frmCalcYield::fillList(QListWidget* list, const std::vector<PostItem>& items) {
    const QSignalBlocker quiet(list);
    list->clear();
    for (const PostItem& item : items) {
        auto* row = new QListWidgetItem(lq(item.text), list);
        row->setData(Qt::UserRole, item.polygon);
    }
}

void frmCalcYield::listClick(QListWidget* list) {
    // The polygon screen is left alone while the models' results come in.
    const QListWidgetItem* item = list->currentItem();
    if (running_ || !item || !polygons_) return;
    const int polygon = item->data(Qt::UserRole).toInt();
    if (polygon >= 0) polygons_->selectPolygonRow(polygon);
}

// ---- The run -----------------------------------------------------------------------------------

void frmCalcYield::cmdOk_Click() {
    if (running_) return;
    YieldRunRequest request;
    request.updateVDYP = chkToCalc_[0]->isChecked();
    request.updateTIPSY = chkToCalc_[1]->isChecked();
    request.recalcAll = chkRecalcAll_->isChecked();
    lstPost_->clear();
    ts_->setCurrentIndex(kCalculationTab);

    cancelled_ = false;
    setRunning(true);
    ScreenObserver observer(*this);
    const bool finished = runGuarded(m_, host_, "cmdOk_Click", kModule, [&] {
        lstPost_->clear();
        runYieldTables(m_, host_, processes_, request, observer);
    });
    setRunning(false);
    if (cancelled_) {
        done(QDialog::Rejected);
        return;
    }
    // With neither box ticked the screen stays on its tab, every label "Skip".
    if (finished && (request.updateVDYP || request.updateTIPSY)) CalcDone();
}

void frmCalcYield::setRunning(bool running) {
    running_ = running;
    cmdOk_->setEnabled(!running);
    cmdRefresh_->setEnabled(!running);
}

void frmCalcYield::showStat(int label, const std::string& text) {
    QLabel* shown = lblStat_.at(static_cast<std::size_t>(label));
    shown->setText(lq(text));
    shown->repaint();
}

void frmCalcYield::addPost(const PostItem& item) {
    auto* row = new QListWidgetItem(lq(item.text), lstPost_);
    row->setData(Qt::UserRole, item.polygon);
}

void frmCalcYield::CalcDone() {
    if (lstPost_->count() == 0) {
        done(QDialog::Accepted);
        return;
    }
    ts_->setCurrentIndex(kPostTab);
    timBringToFront_->start();
}

void frmCalcYield::timBringToFront_Timer() {
    raise();
    activateWindow();
}

// ---- Closing -----------------------------------------------------------------------------------

void frmCalcYield::done(int result) {
    if (running_) {
        cancelled_ = true;
        return;
    }
    timBringToFront_->stop();
    // Form_Unload: the polygon screen lists the polygons with their new states and shows the
    // polygon on screen (perhaps one a message brought up) with its new harvest ages.
    if (polygons_) polygons_->DisplayPoly(m_.CurPoly, 0);
    QDialog::done(result);
}

}  // namespace arborex
