#pragma once
// "Calculate Yield Tables": checks every polygon and lists what is wrong, shows how many curves
// are out of date, runs VDYP and then TIPSY over the polygons that are due, and ends with the
// messages the models wrote. Opened from the polygon screen: a click on a message brings that
// polygon up there, and closing shows the polygon screen's list and polygon again, with the
// curves' new states and harvest ages.
//
// While a run goes on the screen stays painted; Calculate Yield and Refresh are off so that a
// second run cannot start, and Cancel or Close end the screen once the model that runs has
// finished (a running model cannot be interrupted).

#include <QDialog>
#include <QPointer>
#include <array>

#include "base/host.hpp"
#include "base/process.hpp"
#include "model/model.hpp"
#include "yield/post_list.hpp"

class QCheckBox;
class QLabel;
class QListWidget;
class QPushButton;
class QTabWidget;
class QTimer;

namespace arborex {

class frmPolygon;

class frmCalcYield final : public QDialog {
    Q_OBJECT
public:
    // Form_Load: PreCalcCheck, the first tab. `processes` runs the models; `polygons` is the
    // screen it was opened from (none in a test of this screen alone).
    frmCalcYield(Model& m, Host& host, ProcessRunner& processes, frmPolygon* polygons,
                 QWidget* parent = nullptr);

    // Fills the two lists of the checks, the counts beside the boxes and the status line.
    void PreCalcCheck();
    // Starts a run with the boxes as ticked; ends in CalcDone unless neither box is ticked or
    // the run failed.
    void cmdOk_Click();
    // Shows the models' messages, or closes the screen when they wrote none.
    void CalcDone();
    bool running() const { return running_; }

    // Called by the run as it goes.
    void showStat(int label, const std::string& text);
    void addPost(const PostItem& item);
    bool cancelled() const { return cancelled_; }

public slots:
    // Cancel, Close and the window's own close: during a run they take effect when it returns;
    // otherwise Form_Unload shows the polygon screen's polygon again.
    void done(int result) override;

private:
    // Building the screen (frm_calc_yield_layout.cpp).
    QWidget* buildChecksTab();
    QWidget* buildCalculationTab();
    QWidget* buildPostTab();
    QWidget* buildControls();
    QListWidget* messageList(const char* name);
    QPushButton* button(const char* name, const QString& caption);

    void fillList(QListWidget* list, const std::vector<PostItem>& items);
    void listClick(QListWidget* list);
    void setRunning(bool running);
    void timBringToFront_Timer();

    Model& m_;
    Host& host_;
    ProcessRunner& processes_;
    QPointer<frmPolygon> polygons_;
    bool running_ = false;
    bool cancelled_ = false;

    QTabWidget* ts_ = nullptr;
    QListWidget* lstErrors_ = nullptr;
    QListWidget* lstWarn_ = nullptr;
    QListWidget* lstPost_ = nullptr;
    QLabel* lblStatus_ = nullptr;
    std::array<QLabel*, 2> lblAmt_{};
    std::array<QCheckBox*, 2> chkToCalc_{};
    QCheckBox* chkRecalcAll_ = nullptr;
    std::array<QLabel*, 8> lblStat_{};
    QPushButton* cmdOk_ = nullptr;
    QPushButton* cmdRefresh_ = nullptr;
    QPushButton* cmdCancel_ = nullptr;
    QPushButton* cmdClose_ = nullptr;
    QTimer* timBringToFront_ = nullptr;
};

}  // namespace arborex
