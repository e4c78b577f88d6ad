// The calculation screen's commands: the order lists and their sorts, the fields' handlers,
// the calculation and the menus. Each reads the fields, calls the core and shows the fields.

#include <QCheckBox>
#include <QClipboard>
#include <QEvent>
#include <QGuiApplication>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QMouseEvent>
#include <QPushButton>
#include <algorithm>

#include "base/dates.hpp"
#include "base/display_format.hpp"
#include "base/min_max.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "harvest/calc_data.hpp"
#include "harvest/calculate.hpp"
#include "harvest/hanzlik.hpp"
#include "harvest/queue_order.hpp"
#include "harvest/rate_search.hpp"
#include "ui/frm_calc.hpp"
#include "ui/frm_calc_sort_ls.hpp"
#include "ui/frm_harv_param.hpp"
#include "ui/print_screen.hpp"
#include "ui/ui_helpers.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex {

namespace {

constexpr int16_t kRightButton = 2;

int selectedRow(const QListWidget* list) {
    const QList<QListWidgetItem*> selected = list->selectedItems();
    return selected.isEmpty() ? -1 : list->row(selected.front());
}

}  // namespace

// ---- The harvest order --------------------------------------------------------------------------

void frmCalc::mniSort_Click(int index) {
    act("mniSort_Click", [this, index] {
        arborex::mniSort_Click(session_, static_cast<int16_t>(index),
                               [this](const std::vector<std::string>& proposed) {
                                   return frmCalcSortLS::rank(proposed, this);
                               });
    });
}

void frmCalc::mniSortDefault_Click() {
    act("mniSortDefault_Click", [this] { arborex::mniSortDefault_Click(session_); });
}

void frmCalc::mniSortCustom_Click() {
    // Only a hint; the tick stays where the sort method puts it.
    act("mniSortCustom_Click", [this] { arborex::mniSortCustom_Click(session_); });
}

void frmCalc::mnuInclude_Click(int index) {
    act("mnuInclude_Click",
        [this, index] { arborex::mnuInclude_Click(session_, static_cast<int16_t>(index)); });
}

void frmCalc::cmdMove_Click(int index) {
    const int row = selectedRow(lstCutOrder_[IncludedList]);
    int moved = row;
    act("cmdMove_Click", [this, index, row, &moved] {
        moved = arborex::cmdMove_Click(session_, static_cast<int16_t>(index), row);
    });
    showOrderList(IncludedList, moved);
}

void frmCalc::lstCutOrder_DblClick(int index) {
    const int row = selectedRow(lstCutOrder_[static_cast<std::size_t>(index)]);
    act("lstCutOrder_DblClick", [this, index, row] {
        arborex::lstCutOrder_DblClick(session_, static_cast<int16_t>(index), row);
    });
}

void frmCalc::lstCutOrder_MouseUp(int index) {
    act("lstCutOrder_MouseUp", [this, index] {
        arborex::lstCutOrder_MouseUp(session_, static_cast<int16_t>(index), kRightButton);
    });
}

// ---- Fields -------------------------------------------------------------------------------------

void frmCalc::markOutOfDate() {
    act("ReCalc", [this] { ReCalc(session_, -1); });
}

void frmCalc::chkArea_Click() {
    act("chkArea_Click", [this] { arborex::chkArea_Click(session_); });
}

void frmCalc::chkConstraint_Click() {
    readFields();
    showFields();
    refreshViews();
}

void frmCalc::chkConNetDown_Click() {
    readFields();
    showFields();
}

void frmCalc::field_LostFocus(QLineEdit* edit) {
    const auto field = std::find_if(textFields_.begin(), textFields_.end(),
                                    [edit](const TextField& f) { return f.edit == edit; });
    if (field == textFields_.end()) return;
    std::string text = ls(edit->text());
    if (field->clamped) {
        minMax(text, field->low, field->high, field->decimals);
    } else if (edit == txtStartIn_) {
        const double years = std::min(roundHalfEven(tolerantNumber(text)), 32767.0);
        text = formatNumber(years, "0");
    } else {
        return;
    }
    if (edit->text() != lq(text)) edit->setText(lq(text));
    readFields();
    if (edit == txtAgePerc_ || edit == txtHeightPerc_) refreshViews();
}

bool frmCalc::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut) {
        if (auto* edit = qobject_cast<QLineEdit*>(watched)) field_LostFocus(edit);
    } else if (event->type() == QEvent::MouseButtonRelease) {
        const auto* mouse = static_cast<QMouseEvent*>(event);
        for (int i = 0; i < 2; ++i) {
            if (watched == lstCutOrder_[static_cast<std::size_t>(i)]->viewport() &&
                mouse->button() == Qt::RightButton)
                lstCutOrder_MouseUp(i);
        }
    }
    return QDialog::eventFilter(watched, event);
}

// ---- Calculating --------------------------------------------------------------------------------

void frmCalc::cmdCalculate_Click() {
    if (calculating_) return;
    // A menu shortcut takes the focus from no field: the field being typed in gets its limits
    // before the calculation reads it.
    if (auto* edit = qobject_cast<QLineEdit*>(focusWidget())) field_LostFocus(edit);
    // The search pumps events between trials: nothing on this screen may start meanwhile.
    calculating_ = true;
    content_->setEnabled(false);
    menuBar_->setEnabled(false);
    bool calculated = false;
    act("cmdCalculate_Click", [this, &calculated] {
        BusyCursor busy;
        calculated = cmdCalculate(session_);
    });
    content_->setEnabled(true);
    menuBar_->setEnabled(true);
    calculating_ = false;
    statusText("");
    if (calculated) refreshViews();
}

void frmCalc::mniHanzlik_Click() {
    act("mniHanzlik_Click", [this] { arborex::mniHanzlik_Click(session_); });
}

void frmCalc::mniCFHanz_Click() {
    act("mniCFHanz_Click", [this] { arborex::mniCFHanz_Click(session_); });
}

void frmCalc::mniHarvParam_Click() {
    {
        frmHarvParam parameters(m_, host_, this);
        parameters.exec();
    }
    // The harvest ages in the lists may have changed with the parameters.
    act("mniHarvParam_Click", [this] {
        UpdateYields(m_);
        ShowPolygonOrder(session_, -1);
    });
}

// ---- Output -------------------------------------------------------------------------------------

void frmCalc::mnuCopyTable_Click() {
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(lq(scheduleClipboardText(table_, m_.Files[FileProject], dateNow())));
}

void frmCalc::mnuPrintScreen_Click() {
    if (!printScreen(*this)) host_.prompt.tell(kProgramTitle, "The form can't be printed.");
}

}  // namespace arborex
