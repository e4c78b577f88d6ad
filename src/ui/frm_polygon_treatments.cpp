// The polygon screen's treatment buttons: the commercial thin and the fertilization of the
// polygon on screen, TIPSY inputs both.

#include "frame/error_handler.hpp"
#include "ui/frm_comm_thin.hpp"
#include "ui/frm_fert.hpp"
#include "ui/frm_polygon.hpp"
#include "yield/stand_treatments.hpp"

namespace arborex {

namespace {

// Runs a treatment screen on CurPoly. A changed treatment or species makes the TIPSY curve
// stale at once; the change stays in the list that leaving the polygon confirms. Returns
// whether the curve was marked.
template <typename Screen>
bool runTreatmentScreen(Model& m, Host& host, QWidget* parent) {
    const int polygon = m.CurPoly;
    const PolyData before = m.Poly.at(static_cast<std::size_t>(polygon));
    const PolyMgmt beforeM = m.PolyM.at(static_cast<std::size_t>(polygon));
    Screen screen(m, host, parent);
    screen.exec();
    return markTreatmentChange(m, polygon, before, beforeM);
}

}  // namespace

void frmPolygon::cmdCT_Click() {
    LoseLastFocus();
    if (m_.CurPoly < 0) return;
    bool marked = false;
    act("cmdCT_Click", [&] { marked = runTreatmentScreen<frmCommThin>(m_, host_, this); });
    showFields();
    if (marked) refreshRow(m_.CurPoly);
}

void frmPolygon::cmdFert_Click() {
    LoseLastFocus();
    if (m_.CurPoly < 0) return;
    bool marked = false;
    act("cmdFert_Click", [&] { marked = runTreatmentScreen<frmFert>(m_, host_, this); });
    showFields();
    if (marked) refreshRow(m_.CurPoly);
}

}  // namespace arborex
