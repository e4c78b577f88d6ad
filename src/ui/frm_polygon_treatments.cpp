#include "ui/frm_polygon.hpp"

namespace arborex {

void frmPolygon::cmdCT_Click() {}

void frmPolygon::cmdFert_Click() {}

}  // namespace arborex
