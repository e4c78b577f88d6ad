// The polygon screen's way into the yield table view: one view per polygon screen, brought up
// again with the management asked for, whose target age edits show in txtHar at once.

#include <QLineEdit>

#include "ui/frm_polygon.hpp"
#include "ui/frm_yield.hpp"

namespace arborex {

void frmPolygon::cmdYield_Click(int index) {
    LoseLastFocus();
    if (m_.CurPoly < 0 || index < 0 || index > 1) return;
    const int16_t model =
        m_.Poly[static_cast<std::size_t>(m_.CurPoly)].MGNT[static_cast<std::size_t>(index)];
    // An NC or NSR stand has no curve to view.
    if (model != 0 && model != 1) return;
    auto* view = findChild<frmYield*>(QString(), Qt::FindDirectChildrenOnly);
    if (!view) {
        view = new frmYield(m_, host_, this);
        view->setTargetAgeChanged([this] { refreshTargetAges(); });
    }
    view->show();
    view->raise();
    view->activateWindow();
    view->showManagement(m_.CurPoly, static_cast<int16_t>(index));
}

void frmPolygon::mniYield_Click() {
    cmdYield_Click(0);
}

void frmPolygon::refreshTargetAges() {
    if (m_.CurPoly < 0) return;
    quiet_ = true;
    for (const char* name : {"txtHar_0", "txtHar_1"})
        if (const EntryField* field = entryOf(findChild<QLineEdit*>(name))) showEntry(*field);
    quiet_ = false;
}

}  // namespace arborex
