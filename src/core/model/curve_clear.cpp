#include "model/curve_clear.hpp"

#include <algorithm>
#include <cstddef>

#include "base/errors.hpp"

namespace arborex {
namespace {

std::size_t checkedPolygon(const Model& m, int16_t polygon) {
    const auto p = static_cast<std::size_t>(polygon);
    if (polygon < 0 || polygon > m.LastPoly || p >= m.Poly.size() || p >= m.PolyC.size() ||
        p >= m.PolyM.size())
        throw ArborexError(ErrSubscript);
    return p;
}

template <typename Row>
void zeroRows(YieldGrid<Row>& grid, int16_t polygon, int16_t lastStep) {
    if (lastStep < 0) return;
    if (lastStep >= grid.rowCount()) throw ArborexError(ErrSubscript);
    Row* rows = grid.rowsOf(polygon);
    std::fill(rows, rows + lastStep + 1, Row{});
}

}  // namespace

void clearVYield(Model& m, int16_t polygon) {
    const std::size_t p = checkedPolygon(m, polygon);
    const int16_t lastStep = m.Settings.YieldRows[0];
    const bool withMix = m.Settings.YIELDMODE != 0;
    // Both tables are checked first so that a fault leaves the curve whole, not half wiped.
    if (withMix && lastStep >= m.VMix.rowCount()) throw ArborexError(ErrSubscript);
    zeroRows(m.VYield, polygon, lastStep);
    if (withMix) zeroRows(m.VMix, polygon, lastStep);
    m.PolyC[p].VCCCALC = 0.0f;
    m.Poly[p].VSICALC = 0.0f;
    m.Poly[p].YIELDSTATE[0] = 0;
}

void ClearTYield(Model& m, int16_t polygon) {
    const std::size_t p = checkedPolygon(m, polygon);
    zeroRows(m.TYield, polygon, m.Settings.YieldRows[1]);
    m.Poly[p].TSICALC = 0.0f;
    m.Poly[p].YIELDSTATE[1] = 0;
}

}  // namespace arborex
