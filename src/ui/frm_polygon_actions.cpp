// The polygon screen's list and its commands: selecting, adding, deleting, bringing back,
// renaming, splitting, reordering the species, the default polygon, the PSYU choosers and the
// printed screen. Each one that leaves the polygon confirms it first.

#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <algorithm>

#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "model/polygon_lifecycle.hpp"
#include "platform/qt_process_runner.hpp"
#include "ui/frm_add.hpp"
#include "ui/frm_calc_yield.hpp"
#include "ui/frm_polygon.hpp"
#include "ui/frm_psyu.hpp"
#include "ui/frm_psyu_lookup.hpp"
#include "ui/frm_undelete.hpp"
#include "ui/print_screen.hpp"
#include "ui/ui_helpers.hpp"
#include "yield/polygon_changes.hpp"

namespace arborex {

// ---- The list --------------------------------------------------------------------------------

void frmPolygon::lstMapPoly_Click() {
    if (quiet_) return;
    const QListWidgetItem* item = lstMapPoly_->currentItem();
    leavePolygon();
    m_.CurPoly = static_cast<int16_t>(item ? item->data(Qt::UserRole).toInt() : -1);
    ShowPolygonData();
}

int frmPolygon::rowOf(int polygon) const {
    for (int row = 0; row < lstMapPoly_->count(); ++row)
        if (lstMapPoly_->item(row)->data(Qt::UserRole).toInt() == polygon) return row;
    return -1;
}

void frmPolygon::selectPolygonRow(int polygon) {
    const int row = rowOf(polygon);
    if (row >= 0) lstMapPoly_->setCurrentRow(row);
}

void frmPolygon::refreshRow(int polygon) {
    const int row = rowOf(polygon);
    if (row >= 0) lstMapPoly_->item(row)->setText(lq(polygonRowText(m_, polygon)));
}

// ---- Polygon commands ------------------------------------------------------------------------

void frmPolygon::mniAddPoly_Click() {
    leavePolygon();
    frmAdd add(m_, host_, this);
    // A name that is taken shows the polygon that holds it.
    connect(&add, &frmAdd::duplicateFound, this,
            [this](int polygon) { selectPolygonRow(polygon); });
    if (add.exec() != QDialog::Accepted || add.addedPolygon() < 0) return;
    const int polygon = add.addedPolygon();
    quiet_ = true;
    auto* item = new QListWidgetItem(lq(polygonRowText(m_, polygon)), lstMapPoly_);
    item->setData(Qt::UserRole, polygon);
    lstMapPoly_->setCurrentItem(item);
    quiet_ = false;
    m_.CurPoly = static_cast<int16_t>(polygon);
    ShowPolygonData();
    emit polygonsChanged();
}

void frmPolygon::mniDelPoly_Click() {
    const int row = lstMapPoly_->currentRow();
    if (row < 0 || m_.CurPoly < 0) return;
    leavePolygon();
    if (!act("mniDelPoly_Click", [this] { deletePolygon(m_, m_.CurPoly); })) return;
    quiet_ = true;
    delete lstMapPoly_->takeItem(row);
    const int next = std::min(row, lstMapPoly_->count() - 1);
    lstMapPoly_->setCurrentRow(next);
    quiet_ = false;
    m_.CurPoly =
        static_cast<int16_t>(next < 0 ? -1 : lstMapPoly_->item(next)->data(Qt::UserRole).toInt());
    ShowPolygonData();
    emit polygonsChanged();
}

void frmPolygon::mniUndelete_Click() {
    leavePolygon();
    frmUndelete undelete(m_, host_, this);
    undelete.exec();
    DisplayPoly(m_.CurPoly, lstMapPoly_->currentRow());
    emit polygonsChanged();
}

void frmPolygon::mniRenPoly_Click() {
    if (m_.CurPoly < 0) return;
    leavePolygon();
    const int polygon = m_.CurPoly;
    const auto answer = host_.prompt.input(
        "Rename Polygon",
        "Please Enter the new POLYGON NAME or Press the <ENTER> key to keep it the same.",
        m_.Poly[static_cast<std::size_t>(polygon)].NAME.str());
    if (!answer) return;
    PolygonRefusal refusal = PolygonRefusal::None;
    act("mniRenPoly_Click", [&] { refusal = renamePolygon(m_, polygon, *answer); });
    if (refusal != PolygonRefusal::None) {
        host_.prompt.tell(kProgramTitle, refusalText(m_, refusal, true), Icon::Exclamation);
        return;
    }
    refreshRow(polygon);
    // The name is no change to confirm: a later refusal must not take it back.
    takePolygonSnapshot(m_);
}

void frmPolygon::mnuSplit_Click() {
    leavePolygon();
    Prompt& prompt = host_.prompt;
    if (prompt.ask("Press CANCEL and use new feature",
                   "It is recommended that you hit CANCEL now.  A new feature in allows polygons "
                   "to be automatically split during the calculation.",
                   Buttons::OkCancel, Answer::Ok, Icon::Exclamation) != Answer::Ok)
        return;
    const auto maximum = prompt.input("Maximum",
                                      "Enter the maximum size of polygons.  Any polygons bigger "
                                      "than this size will be split into the size that you "
                                      "specify next.",
                                      "20");
    if (!maximum) return;
    const auto size = prompt.input("Size", "Enter the size to split large polygons into.", "15");
    if (!size) return;
    int added = 0;
    act("mnuSplit_Click", [&] {
        added = splitPolygons(m_, toF4(tolerantNumber(*maximum)), toF4(tolerantNumber(*size)));
    });
    if (added == 0) return;
    DisplayPoly(m_.CurPoly, lstMapPoly_->currentRow());
    emit polygonsChanged();
}

void frmPolygon::mnuReorder_Click() {
    leavePolygon();
    act("mnuReorder_Click", [this] { reorderSpecies(m_); });
    DisplayPoly(m_.CurPoly, lstMapPoly_->currentRow());
}

void frmPolygon::mniSaveDefault_Click() {
    if (m_.CurPoly < 0) return;
    LoseLastFocus();
    if (act("mniSaveDefault_Click", [this] { saveAsDefaultPolygon(m_, m_.CurPoly); }))
        txtHelp_->setPlainText("Current polygon saved as default");
}

void frmPolygon::mnuPrintScreen_Click() {
    // The note about confirming changes is for the screen, not the paper.
    if (!printScreen(*this, lblNoChange_))
        host_.prompt.tell(kProgramTitle, "The form can't be printed.");
}

void frmPolygon::mnuCalcYield_Click() {
    leavePolygon();
    QtProcessRunner models;
    frmCalcYield calcYield(m_, host_, models, this);
    calcYield.exec();
}

// ---- PSYU --------------------------------------------------------------------------------------

void frmPolygon::openPsyuLookup() {
    if (m_.CurPoly < 0) return;
    LoseLastFocus();
    frmPSYULookup lookup(m_, this);
    if (lookup.exec() != QDialog::Accepted) return;
    commitValue("cmdPSYULookup_Click", "PSYU", std::to_string(lookup.selectedNumber()));
}

void frmPolygon::openPsyuFinder() {
    if (m_.CurPoly < 0) return;
    LoseLastFocus();
    frmPSYU finder(m_, host_, this);
    if (finder.exec() == QDialog::Accepted) showFields();
}

}  // namespace arborex
