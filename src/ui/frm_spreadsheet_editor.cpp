// The grid's floating editor: opened over a cell by a double click or a typed key, moved by the
// arrow, Enter and Tab keys, and stored through ImportItem when it leaves the cell.

#include <QFocusEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTableView>

#include "exchange/variable_catalogue.hpp"
#include "ui/frm_spreadsheet.hpp"
#include "ui/frm_spreadsheet_model.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

bool frmSpreadsheet::eventFilter(QObject* watched, QEvent* event) {
    if (watched == txtEdit_) {
        if (event->type() == QEvent::KeyPress) return editorKey(static_cast<QKeyEvent*>(event));
        if (event->type() == QEvent::FocusOut && EditState == 1 && !closing_) closeEditor();
        return false;
    }
    if (watched == grd_ && event->type() == QEvent::KeyPress) {
        // Typing on a cell opens the editor with the typed text.
        auto* key = static_cast<QKeyEvent*>(event);
        const QString text = key->text();
        const bool command = key->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
        if (!command && !text.isEmpty() && text.at(0).isPrint() && grd_->currentIndex().isValid()) {
            openEditor(grd_->currentIndex().row() + 1, grd_->currentIndex().column(), text);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}

void frmSpreadsheet::openEditor(int gridRow, int column, const QString& typed) {
    if (gridRow < 1 || gridRow > model_->polygonRows() || column < 1 || column >= kVariableCount ||
        grd_->isColumnHidden(column))
        return;
    if (EditState == 1) closeEditor();
    if (gridIsStale()) return;
    EditRow = static_cast<int16_t>(gridRow);
    EditCol = static_cast<int16_t>(column);
    EditPoly = static_cast<int16_t>(gridRow - 1);
    EditState = 1;
    const QModelIndex at = model_->index(gridRow - 1, column);
    grd_->setCurrentIndex(at);
    grd_->scrollTo(at);
    placeEditor();
    txtEdit_->setText(typed.isEmpty() ? lq(model_->cell(gridRow, column)) : typed);
    typing_ = true;
    txtEdit_->show();
    txtEdit_->setFocus();
}

void frmSpreadsheet::moveEditorTo(int gridRow, int column) {
    closeEditor();
    openEditor(gridRow, column);
    // Arrived by a move, the editor holds the cell's text whole: typing replaces it, and the
    // arrows go on moving until the user types.
    txtEdit_->selectAll();
    typing_ = false;
}

int frmSpreadsheet::visibleColumn(int from, int step) const {
    // Hidden columns are passed over; the move stops at the last shown column on either side.
    for (int c = from + step; c >= 1 && c < kVariableCount; c += step)
        if (!grd_->isColumnHidden(c)) return c;
    return from;
}

void frmSpreadsheet::moveEditor(int rows, int columns) {
    const int row = std::clamp(EditRow + rows, 1, std::max(1, model_->polygonRows()));
    const int column = columns == 0 ? EditCol : visibleColumn(EditCol, columns);
    moveEditorTo(row, column);
}

bool frmSpreadsheet::editorKey(QKeyEvent* key) {
    switch (key->key()) {
        case Qt::Key_Escape:
            txtEdit_->setText(lq(model_->cell(EditRow, EditCol)));
            return true;
        case Qt::Key_Up:
            moveEditor(-1, 0);
            return true;
        case Qt::Key_Down:
        case Qt::Key_Return:
        case Qt::Key_Enter:
            moveEditor(1, 0);
            return true;
        case Qt::Key_Tab:
            moveEditor(0, 1);
            return true;
        case Qt::Key_Backtab:
            moveEditor(0, -1);
            return true;
        case Qt::Key_Left:
        case Qt::Key_Right:
        case Qt::Key_Home:
        case Qt::Key_End:
            if (typing_) return false;  // within the text
            if (key->key() == Qt::Key_Left) moveEditor(0, -1);
            if (key->key() == Qt::Key_Right) moveEditor(0, 1);
            if (key->key() == Qt::Key_Home) moveEditorTo(1, visibleColumn(0, 1));
            if (key->key() == Qt::Key_End)
                moveEditorTo(model_->polygonRows(), visibleColumn(kVariableCount, -1));
            return true;
        default:
            return false;
    }
}

void frmSpreadsheet::placeEditor() {
    if (EditState != 1) return;
    txtEdit_->setGeometry(grd_->visualRect(model_->index(EditRow - 1, EditCol)));
}

void frmSpreadsheet::closeEditor() {
    if (EditState != 1 || closing_) return;
    closing_ = true;
    EditState = 0;
    commitEdit();
    txtEdit_->hide();
    closing_ = false;
    if (isActiveWindow()) grd_->setFocus();
}

void frmSpreadsheet::commitEdit() {
    const QString text = txtEdit_->text();
    if (text.compare(lq(model_->cell(EditRow, EditCol)), Qt::CaseInsensitive) == 0) return;
    // Another project came in meanwhile: the text belongs to none of its polygons.
    if (model_->polygonRows() != m_.LastPoly + 1 || shownProject_ != m_.Files[FileProject]) return;
    GridChange change{EditRow, EditCol, {}, {}};
    if (!guarded("txtEdit_LostFocus", [&] {
            change.text = commitGridCell(m_, EditPoly, EditCol, ls(text.trimmed()), change.message);
        }))
        return;
    showChanges({change});
    model_->setWarned(EditRow, EditCol);
    grd_->setCurrentIndex(model_->index(EditRow - 1, EditCol));
}

}  // namespace arborex
