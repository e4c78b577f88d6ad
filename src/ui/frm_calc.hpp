#pragma once
// "Calculations": the harvest order lists, the calculation's parameters and constraints, the
// harvest schedule with its issue line, and the graph of standing volume. The screen is a thin
// face over the simulation: it keeps its fields in a CalcScreen, copies the widgets into it
// before every core call and back afterwards (a run may change the rate, the delay and the
// lists), and shows what the run leaves in Model::Calc.
//
// The run state (CalcRun) belongs to the caller and outlives the screen, so that reopening the
// screen expands the curves into memory already held and shows the last run without running
// again. Use it modal (exec) or modeless (show); closing it by any road saves the fields into
// the project's calculation data. With run.RecalcOnOpen set, the screen calculates as soon as
// it first shows.

#include <QDialog>
#include <QPointer>
#include <array>
#include <functional>
#include <string>
#include <vector>

#include "base/document_launcher.hpp"
#include "base/host.hpp"
#include "harvest/calc_session.hpp"
#include "model/model.hpp"
#include "report/schedule_table.hpp"
#include "ui/busy_cursor.hpp"

class QAction;
class QCheckBox;
class QLabel;
class QLineEdit;
class QMenu;
class QListWidget;
class QMenuBar;
class QPushButton;
class QRadioButton;
class QStatusBar;
class QTreeWidget;

namespace arborex {

class frmCalcStatus;
class frmGraph;
class StandingGraph;

class frmCalc final : public QDialog, public CalcObserver {
    Q_OBJECT
public:
    frmCalc(Model& m, Host& host, CalcRun& run, QWidget* parent = nullptr);
    ~frmCalc() override;

    // The single entry to a calculation: the button, the menu's "Harvest Rate" and Enter in
    // the rate field. Refused while a calculation runs.
    void cmdCalculate_Click();

    // The three views of the last run, from the tables in Model::Calc.
    void ShowSchedule();
    void ShowIssues();
    void DrawStandingGraph();
    // The sums of the selected schedule rows, in the status line.
    void ShowSelected();

    // Where written reports are opened; the desktop's unless a caller hands in another.
    void setDocumentLauncher(DocumentLauncher& launcher) { launcher_ = &launcher; }

    // CalcObserver: how a run shows its progress on this screen.
    void statusText(const std::string& text) override;
    void searchOpened(const std::string& hanzlikLine) override;
    void searchStatus(const std::string& line) override;
    void trialRow(const std::string& row) override;
    void searchEnded() override;
    void rateShown(const std::string& text) override;
    void rateDirtyChanged(bool dirty) override;

public slots:
    // Closing saves the calculation data (Form_Unload); refused while a calculation runs.
    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    static constexpr int kPolygonRole = Qt::UserRole + 1;  // an order row's polygon

    // One text field: its widget, its CalcScreen member, and the clamp of its lost focus.
    struct TextField {
        QLineEdit* edit;
        std::string CalcScreen::*field;
        float low, high;
        int16_t decimals;
        bool clamped;
    };
    struct BoxField {
        QCheckBox* box;
        bool CalcScreen::*field;
    };

    // Building the screen.
    void buildMenus(QMenuBar* bar);
    QWidget* buildOrderPanel();
    QWidget* buildParameterPanel();
    QWidget* buildConstraintPanel();
    QWidget* buildGraphPanel();
    QWidget* buildSchedulePanel();
    QLineEdit* addTextField(const char* name, std::string CalcScreen::*field, float low, float high,
                            int16_t decimals, bool clamped);
    QCheckBox* addBox(const char* name, const char* caption, bool CalcScreen::*field);
    QAction* addMenuAction(QMenu* menu, const char* name, const QString& caption,
                           const std::function<void()>& handler);

    // Form_Load without the calculation that RecalcOnOpen asks for.
    void Form_Load();
    void recalcOnOpen();
    // Form_Unload.
    void Form_Unload();

    // Widgets to the CalcScreen, and back.
    void readFields();
    void showFields();
    void showOrderList(int index, int selectRow);
    void showSortTicks();
    void paintRateDirty(bool dirty);
    // Runs a core step on fresh fields at the operation boundary, then shows the fields again.
    bool act(const char* routine, const std::function<void()>& step);
    // Graph, issue line and schedule, without a run.
    void refreshViews();

    // The user's actions.
    void mniSort_Click(int index);
    void mniSortDefault_Click();
    void mniSortCustom_Click();
    void mnuInclude_Click(int index);
    void cmdMove_Click(int index);
    void lstCutOrder_DblClick(int index);
    void lstCutOrder_MouseUp(int index);
    void lstCutOrder_Click(int index);
    void markOutOfDate();
    void chkArea_Click();
    void chkConstraint_Click();
    void chkConNetDown_Click();
    void field_LostFocus(QLineEdit* edit);
    void mniHanzlik_Click();
    void mniCFHanz_Click();
    void mniHarvParam_Click();
    void mnuCopyTable_Click();
    void mnuPrintScreen_Click();
    // The delimited calculation report and its settings (frm_calc_report_actions.cpp).
    void mnuReport_Click();
    void mnuRepSet_Click();
    // The Graph menu (frm_calc_graphs.cpp): the result graphs 0-6 and the time volume graph.
    void mnuGraph_Click(int index);
    void mniTimeVol_Click(int index);
    // Hands a written control file to the graphing program; nothing for an empty path.
    void openGraph(const std::string& path);
    // The graphs drawn in the graph window (frm_calc_pictures.cpp): the standing volume by
    // year, and the age distribution screen, which first closes that window.
    void GraphTimeVolume();
    void mniAgeDist_Click();
    void picCalc_MouseDown(Qt::MouseButton button, double x);
    // Selects the schedule rows of `rows` (row indices), clearing the others.
    void selectScheduleRows(const std::vector<int>& rows);
    // Sizes the schedule's columns to their contents, none wider than kWidestColumn.
    void fitScheduleColumns();
    bool polygonView() const;

    Model& m_;
    Host& host_;
    CalcRun& run_;
    CalcScreen screen_;
    ArrowCursorPrompt prompt_;
    CalcSession session_;

    std::vector<TextField> textFields_;
    std::vector<BoxField> boxFields_;
    QLineEdit* txtVolToCut_ = nullptr;
    QLineEdit* txtStartIn_ = nullptr;
    QLineEdit* txtAgePerc_ = nullptr;
    QLineEdit* txtHeightPerc_ = nullptr;
    QLineEdit* txtNetDown_ = nullptr;
    QCheckBox* chkConAge_ = nullptr;
    QCheckBox* chkConHeight_ = nullptr;
    QCheckBox* chkConNetDown_ = nullptr;
    QCheckBox* chkCalcRate_ = nullptr;
    std::array<QCheckBox*, 4> chkCut_{};
    QLabel* lbl0_ = nullptr;
    QLabel* lblTitle_ = nullptr;
    QLabel* lblError_ = nullptr;
    std::array<QLabel*, 3> lblYieldYAxis_{};
    std::array<QListWidget*, 2> lstCutOrder_{};
    QPushButton* cmdCalculate_ = nullptr;
    std::array<QRadioButton*, 2> optReport_{};
    QCheckBox* chkAdvanced_ = nullptr;
    QTreeWidget* lsvCalc_ = nullptr;
    StandingGraph* picCalc_ = nullptr;
    QStatusBar* sbStatus_ = nullptr;
    QMenuBar* menuBar_ = nullptr;
    QWidget* content_ = nullptr;
    QAction* mniSortDefault_ = nullptr;
    std::array<QAction*, 7> mniSort_{};
    QAction* mniSortCustom_ = nullptr;
    QPointer<frmCalcStatus> status_;
    DocumentLauncher* launcher_ = nullptr;
    QPointer<frmGraph> graph_;

    ScheduleTable table_;  // the schedule as shown, for the clipboard copy
    std::array<std::vector<OrderRow>, 2> shownLists_;
    bool calculating_ = false;
    bool recalcPending_ = false;
    bool quiet_ = false;  // selection signals of the screen's own making
};

}  // namespace arborex
