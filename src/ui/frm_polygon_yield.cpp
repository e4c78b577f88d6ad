#include "ui/frm_polygon.hpp"

namespace arborex {

void frmPolygon::cmdYield_Click(int) {}

void frmPolygon::mniYield_Click() {}

void frmPolygon::refreshTargetAges() {}

}  // namespace arborex
