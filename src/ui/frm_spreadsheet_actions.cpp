// The grid's menu actions on cells: copy, paste, fill down, the whole table to the clipboard and
// back, and the export of the grid as text.

#include <QClipboard>
#include <QGuiApplication>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QTableView>
#include <limits>

#include "base/file_names.hpp"
#include "base/text.hpp"
#include "ui/busy_cursor.hpp"
#include "ui/frm_spreadsheet.hpp"
#include "ui/frm_spreadsheet_model.hpp"
#include "ui/ui_helpers.hpp"
#include "yield/polygon_changes.hpp"

namespace arborex {

bool frmSpreadsheet::selectedBlock(int& row1, int& col1, int& row2, int& col2) const {
    const QItemSelection selection = grd_->selectionModel()->selection();
    if (selection.isEmpty()) {
        const QModelIndex current = grd_->currentIndex();
        if (!current.isValid()) return false;
        row1 = row2 = current.row() + 1;
        col1 = col2 = current.column();
    } else {
        row1 = col1 = std::numeric_limits<int>::max();
        row2 = col2 = -1;
        for (const QItemSelectionRange& range : selection) {
            row1 = std::min(row1, range.top() + 1);
            row2 = std::max(row2, range.bottom() + 1);
            col1 = std::min(col1, range.left());
            col2 = std::max(col2, range.right());
        }
    }
    // A whole row chosen by its name takes in the hidden name column: the cells start after it.
    col1 = std::max(col1, 1);
    return row1 >= 1 && col2 >= col1;
}

void frmSpreadsheet::showChanges(const std::vector<GridChange>& changes) {
    ArrowCursorPrompt arrow(host_.prompt);
    bool currentPolygon = false;
    for (const GridChange& change : changes) {
        model_->setCell(change.row, change.column, change.text);
        if (!change.message.empty()) arrow.tell(kProgramTitle, change.message);
        currentPolygon = currentPolygon || change.row - 1 == m_.CurPoly;
    }
    // The polygon screen shows what the grid stored, as the polygon's confirmed state.
    if (currentPolygon && host_.views.polygonScreenOpen()) {
        takePolygonSnapshot(m_);
        host_.views.redisplayPolygons(m_.CurPoly);
    }
}

void frmSpreadsheet::afterImport() {
    ShowPolygons();
    // What the import stored is the polygon's confirmed state: the polygon screen lists the
    // polygons again and shows its own without asking about changes it did not make.
    if (m_.CurPoly >= 0 && m_.CurPoly <= m_.LastPoly) takePolygonSnapshot(m_);
    host_.views.redisplayPolygons(m_.CurPoly);
    emit polygonsChanged();
}

void frmSpreadsheet::mnuCopy_Click() {
    closeEditor();
    int row1 = 0, col1 = 0, row2 = 0, col2 = 0;
    if (!selectedBlock(row1, col1, row2, col2)) return;
    QGuiApplication::clipboard()->setText(
        lq(copyCellsText(model_->cells(), row1, col1, row2, col2)));
}

void frmSpreadsheet::mnuPaste_Click() {
    closeEditor();
    if (gridIsStale()) return;
    const QModelIndex current = grd_->currentIndex();
    if (!current.isValid()) return;
    const std::string text = ls(QGuiApplication::clipboard()->text());
    BusyCursor busy;
    std::vector<GridChange> changes;
    guarded("mnuPaste_Click",
            [&] { changes = pasteGridText(m_, current.row() + 1, current.column(), text); });
    showChanges(changes);
}

void frmSpreadsheet::mnuFillDown_Click() {
    closeEditor();
    if (gridIsStale()) return;
    int row1 = 0, col1 = 0, row2 = 0, col2 = 0;
    if (!selectedBlock(row1, col1, row2, col2)) return;
    BusyCursor busy;
    std::vector<GridChange> changes;
    guarded("mnuFillDown_Click", [&] { changes = fillDown(m_, row1, col1, row2, col2); });
    showChanges(changes);
}

void frmSpreadsheet::mnuCopyTable_Click() {
    closeEditor();
    QGuiApplication::clipboard()->setText(lq(copyTableText(model_->cells())));
}

void frmSpreadsheet::mnuPasteTable_Click() {
    closeEditor();
    runTextImport(ls(QGuiApplication::clipboard()->text()), "mnuPasteTable_Click");
}

void frmSpreadsheet::mnuExport_Click() {
    closeEditor();
    gridIsStale();
    FileRequest request;
    request.title = "Export as Text File";
    request.filter = "Text File (*.txt)|*.txt";
    request.folder = m_.Paths[UserDocuments];
    request.proposedName = m_.Files[FileDisplayName] + ".txt";
    const std::optional<FileChoice> choice = host_.prompt.saveFile(request);
    if (!choice || trim(choice->path).empty()) return;
    const std::string path = choice->path;
    if (fileExists(path) &&
        host_.prompt.ask("Overwrite", "Overwrite existing file?", Buttons::YesNo, Answer::No,
                         Icon::Question) != Answer::Yes)
        return;
    BusyCursor busy;
    guarded("mnuExport_Click", [&] { writeExportFile(path, gridExportText(model_->cells())); });
}

}  // namespace arborex
