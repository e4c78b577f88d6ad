// The polygon screen's way to the project's data as a whole: the classic delimited format in
// and out, and the data grid.

#include <QListWidget>

#include "ui/frm_arbo.hpp"
#include "ui/frm_polygon.hpp"
#include "ui/frm_spreadsheet.hpp"
#include "ui/frm_spreadsheet_classic.hpp"

namespace arborex {

void frmPolygon::mnuExpCSV_Click() {
    leavePolygon();
    exportClassicFile(m_, host_);
}

void frmPolygon::mnuImpCSV_Click() {
    leavePolygon();
    if (!importClassicFile(m_, host_)) return;
    DisplayPoly(m_.CurPoly, lstMapPoly_->currentRow());
    emit polygonsChanged();
}

void frmPolygon::mnuDataGrid_Click() {
    leavePolygon();
    // The main screen keeps one grid for the whole program and brings it up again.
    if (auto* hub = qobject_cast<frmArbo*>(parentWidget())) {
        hub->view(5);
        return;
    }
    auto* grid = findChild<frmSpreadsheet*>(QString(), Qt::FindDirectChildrenOnly);
    if (!grid) {
        grid = new frmSpreadsheet(m_, host_, this);
        grid->setAttribute(Qt::WA_DeleteOnClose);
        connect(grid, &frmSpreadsheet::polygonsChanged, this,
                [this] { redisplayPolygons(m_.CurPoly); });
    } else {
        grid->refresh();
    }
    grid->show();
    grid->raise();
    grid->activateWindow();
}

}  // namespace arborex
