#include "ui/frm_calc.hpp"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QSplitter>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

#include "base/text.hpp"
#include "frame/error_handler.hpp"
#include "harvest/calc_data.hpp"
#include "harvest/expansion.hpp"
#include "harvest/queue_order.hpp"
#include "harvest/rate_search.hpp"
#include "ui/frm_calc_status.hpp"
#include "ui/standing_graph.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmCalc";
constexpr const char* kRed = "background-color: rgb(255, 0, 0);";

// An order row as the fixed-pitch list shows it: the row's tab-separated fields laid at the
// columns of the caption above the list (lblTitle), as the tab stops of the rows always did.
QString orderRowDisplay(const std::string& text) {
    constexpr std::array<std::size_t, 3> kStops = {24, 33, 46};
    std::string shown;
    std::size_t field = 0;
    for (const char c : text) {
        if (c != '\t') {
            shown += c;
            continue;
        }
        const std::size_t stop = field < kStops.size() ? kStops[field] : shown.size() + 1;
        shown.append(stop > shown.size() ? stop - shown.size() : 1, ' ');
        ++field;
    }
    return lq(shown);
}

bool sameRows(const std::vector<OrderRow>& a, const std::vector<OrderRow>& b) {
    if (a.size() != b.size()) return false;
    for (std::size_t i = 0; i < a.size(); ++i)
        if (a[i].text != b[i].text || a[i].polygon != b[i].polygon) return false;
    return true;
}

}  // namespace

frmCalc::frmCalc(Model& m, Host& host, CalcRun& run, QWidget* parent)
    : QDialog(parent),
      m_(m),
      host_(host),
      run_(run),
      prompt_(host.prompt),
      session_{m, screen_, run, prompt_, *this} {
    setObjectName("frmCalc");
    setSizeGripEnabled(true);

    menuBar_ = new QMenuBar(this);
    menuBar_->setObjectName("mnuBar");
    buildMenus(menuBar_);

    content_ = new QWidget(this);
    auto* top = new QWidget(content_);
    auto* parameters = new QVBoxLayout;
    parameters->addWidget(buildParameterPanel());
    parameters->addStretch();
    auto* constraintsAndGraph = new QVBoxLayout;
    constraintsAndGraph->addWidget(buildConstraintPanel());
    constraintsAndGraph->addWidget(buildGraphPanel(), 1);
    auto* topLayout = new QHBoxLayout(top);
    topLayout->setContentsMargins(0, 0, 0, 0);
    topLayout->addWidget(buildOrderPanel(), 3);
    topLayout->addLayout(parameters, 0);
    topLayout->addLayout(constraintsAndGraph, 2);

    // The user shares the height between the order lists and the schedule.
    auto* splitter = new QSplitter(Qt::Vertical, content_);
    splitter->addWidget(top);
    splitter->addWidget(buildSchedulePanel());
    splitter->setStretchFactor(0, 0);
    splitter->setStretchFactor(1, 1);
    splitter->setChildrenCollapsible(false);
    splitter->setSizes({320, 400});
    auto* contentLayout = new QVBoxLayout(content_);
    contentLayout->setContentsMargins(0, 0, 0, 0);
    contentLayout->addWidget(splitter);

    sbStatus_ = new QStatusBar(this);
    sbStatus_->setObjectName("sbStatus");
    sbStatus_->setSizeGripEnabled(false);

    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(menuBar_);
    layout->setContentsMargins(8, 4, 8, 0);
    layout->addWidget(content_, 1);
    layout->addWidget(sbStatus_);
    resizeWithin(*this, QSize(1240, 760));

    showFields();  // the design defaults, which LoadCalcData leaves in place for some fields
    Form_Load();
}

frmCalc::~frmCalc() {
    // The children outlive this part of the screen by a moment: nothing of theirs may call
    // back into it while they go.
    for (QObject* child : findChildren<QObject*>()) {
        child->removeEventFilter(this);
        child->disconnect(this);
    }
}

// ---- Opening and closing ----------------------------------------------------------------------

void frmCalc::Form_Load() {
    run_.LogFile.reset();
    act("Form_Load", [this] {
        ReCalc(session_, -1);
        UpdateCaption(*this, m_, "Calculations");
        for (std::size_t i = 0; i < chkCut_.size(); ++i)
            chkCut_[i]->setText(lq("Harvest " + trim(m_.Ref.OwnershipNames[i])));
        LoadCalcData(session_);
        ShowPolygonOrder(session_, -1);
        ExpandYields(m_, host_.status, run_.Yields);
        CheckYields(m_, prompt_, run_.Yields, m_.MsgResult);
    });
    // The paint follows the state also when the state did not change on this opening.
    paintRateDirty(run_.RateDirty);
    if (run_.RecalcOnOpen) {
        recalcPending_ = true;
        return;
    }
    // The start year is not kept in the project: a run read from the file is shown from this
    // year on.
    if (run_.StartYear == 0) run_.StartYear = calendarYear(run_);
    refreshViews();
}

void frmCalc::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!recalcPending_) return;
    recalcPending_ = false;
    // After the screen has painted, so the user sees what is being calculated.
    QTimer::singleShot(0, this, &frmCalc::recalcOnOpen);
}

void frmCalc::recalcOnOpen() {
    // A saved rate is recalculated, not searched for anew.
    if (chkCalcRate_->isChecked()) {
        chkCalcRate_->setChecked(false);
        cmdCalculate_Click();
        chkCalcRate_->setChecked(true);
        readFields();
    } else {
        cmdCalculate_Click();
    }
    run_.RecalcOnOpen = false;
}

void frmCalc::Form_Unload() {
    act("Form_Unload", [this] {
        SetCutOrder(session_);
        SaveCalcData(session_);
    });
}

void frmCalc::done(int result) {
    if (calculating_) return;  // a search cannot be interrupted
    Form_Unload();
    QDialog::done(result);
}

void frmCalc::closeEvent(QCloseEvent* event) {
    if (calculating_) {
        event->ignore();
        return;
    }
    QDialog::closeEvent(event);
}

// ---- Fields -------------------------------------------------------------------------------------

void frmCalc::readFields() {
    for (const TextField& f : textFields_) screen_.*(f.field) = ls(f.edit->text());
    for (const BoxField& f : boxFields_) screen_.*(f.field) = f.box->isChecked();
    for (std::size_t i = 0; i < chkCut_.size(); ++i) screen_.chkCut[i] = chkCut_[i]->isChecked();
}

void frmCalc::showFields() {
    for (const TextField& f : textFields_) {
        const QString text = lq(screen_.*(f.field));
        if (f.edit->text() != text) f.edit->setText(text);
    }
    for (const BoxField& f : boxFields_) f.box->setChecked(screen_.*(f.field));
    for (std::size_t i = 0; i < chkCut_.size(); ++i) chkCut_[i]->setChecked(screen_.chkCut[i]);
    txtAgePerc_->setEnabled(screen_.chkConAge);
    txtHeightPerc_->setEnabled(screen_.chkConHeight);
    txtNetDown_->setEnabled(screen_.chkConNetDown);
    lbl0_->setText(lq(rateUnit(screen_.chkArea)));
    lblTitle_->setText(lq(orderTitle(m_.Calc.inputs.OrderColumn)));
    showOrderList(ExcludedList, -1);
    showOrderList(IncludedList, -1);
    showSortTicks();
}

// Rebuilds a list only when its rows changed, so that its selection and scrolling survive
// actions that leave it alone. `selectRow` is selected afterwards when it is a row.
void frmCalc::showOrderList(int index, int selectRow) {
    const auto i = static_cast<std::size_t>(index);
    QListWidget* list = lstCutOrder_[i];
    const std::vector<OrderRow>& rows = screen_.lstCutOrder[i];
    quiet_ = true;
    if (!sameRows(rows, shownLists_[i])) {
        list->clear();
        for (const OrderRow& row : rows) {
            auto* item = new QListWidgetItem(orderRowDisplay(row.text), list);
            item->setData(Qt::UserRole, lq(row.text));
            item->setData(kPolygonRole, static_cast<int>(row.polygon));
        }
        shownLists_[i] = rows;
    }
    if (selectRow >= 0 && selectRow < list->count()) {
        list->setCurrentRow(selectRow);
        list->scrollToItem(list->item(selectRow));
    }
    quiet_ = false;
}

void frmCalc::showSortTicks() {
    const int16_t method = m_.Calc.inputs.SortMethod;
    mniSortDefault_->setChecked(method == -1);
    mniSortCustom_->setChecked(method == -2);
    for (std::size_t i = 0; i < mniSort_.size(); ++i)
        mniSort_[i]->setChecked(method == static_cast<int16_t>(i));
}

void frmCalc::paintRateDirty(bool dirty) {
    txtVolToCut_->setStyleSheet(dirty ? kRed : "");
    cmdCalculate_->setStyleSheet(dirty ? kRed : "");
}

bool frmCalc::act(const char* routine, const std::function<void()>& step) {
    readFields();
    const bool completed = runGuarded(m_, host_, routine, kModule, step);
    showFields();
    return completed;
}

// ---- What a run shows ---------------------------------------------------------------------------

void frmCalc::statusText(const std::string& text) {
    if (text.empty())
        sbStatus_->clearMessage();
    else
        sbStatus_->showMessage(lq(text));
}

void frmCalc::searchOpened(const std::string& hanzlikLine) {
    if (!status_) status_ = new frmCalcStatus(this);
    status_->searchOpened(hanzlikLine);
    QCoreApplication::processEvents();
}

void frmCalc::searchStatus(const std::string& line) {
    if (status_) status_->searchStatus(line);
}

void frmCalc::trialRow(const std::string& row) {
    if (status_) status_->trialRow(row);
    // Between trials the screens repaint, so that a long search never looks frozen; the
    // screen's own controls are disabled meanwhile.
    QCoreApplication::processEvents();
}

void frmCalc::searchEnded() {
    if (status_) status_->searchEnded();
}

void frmCalc::rateShown(const std::string& text) {
    txtVolToCut_->setText(lq(text));
}

void frmCalc::rateDirtyChanged(bool dirty) {
    paintRateDirty(dirty);
}

}  // namespace arborex
