#include <cstdlib>
#include <vector>

#include "base/numeric.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/polygon_rows.hpp"

namespace arborex {

namespace {

std::vector<int> newIndexes(const Model& m, int& kept) {
    std::vector<int> index(static_cast<std::size_t>(m.LastPoly + 1), -1);
    kept = 0;
    for (int p = 0; p <= m.LastPoly; ++p)
        if (m.PolyC.at(static_cast<std::size_t>(p)).DELETE != 1)
            index[static_cast<std::size_t>(p)] = kept++;
    return index;
}

void dropDeletedFromOrder(Model& m, const std::vector<int>& index) {
    int last = -1;
    for (int i = 0; i <= m.CutOrderLast; ++i) {
        const int16_t polygon = m.CutOrder.at(static_cast<std::size_t>(i));
        const bool valid = polygon >= 0 && polygon < static_cast<int>(index.size());
        if (valid && index[static_cast<std::size_t>(polygon)] < 0) continue;
        ++last;
        m.CutOrder[static_cast<std::size_t>(last)] = polygon;
        m.CutOrderKey.at(static_cast<std::size_t>(last)) =
            m.CutOrderKey.at(static_cast<std::size_t>(i));
    }
    if (last < m.CutOrderLast) {
        m.Calc.BlockLast = -1;
        m.Calc.CalcHorizon = 0;
    }
    m.CutOrderLast = toI2(last);
    if (last > -1) {
        m.CutOrder.resize(static_cast<std::size_t>(last + 1));
        m.CutOrderKey.resize(static_cast<std::size_t>(last + 1));
    }
}

void renumberOrder(Model& m, const std::vector<int>& index) {
    for (int i = 0; i <= m.CutOrderLast; ++i) {
        auto& polygon = m.CutOrder.at(static_cast<std::size_t>(i));
        if (polygon < 0 || polygon >= static_cast<int>(index.size())) continue;
        const int moved = index[static_cast<std::size_t>(polygon)];
        if (moved != polygon) {
            polygon = toI2(moved);
            m.CutOrderKey.at(static_cast<std::size_t>(i)) = 0;
        }
    }
}

int nearestKept(const std::vector<int>& index, int polygon) {
    for (int distance = 1; distance < static_cast<int>(index.size()); ++distance) {
        for (int candidate : {polygon - distance, polygon + distance})
            if (candidate >= 0 && candidate < static_cast<int>(index.size()) &&
                index[static_cast<std::size_t>(candidate)] >= 0)
                return index[static_cast<std::size_t>(candidate)];
    }
    return -1;
}

}  // namespace

void PurgeDeletedPolygons(Model& m, Host& host) {
    int kept = 0;
    const std::vector<int> index = newIndexes(m, kept);
    const int removed = m.LastPoly + 1 - kept;
    if (removed == 0) return;

    dropDeletedFromOrder(m, index);
    for (int p = 0; p <= m.LastPoly; ++p) {
        const int to = index[static_cast<std::size_t>(p)];
        if (to < 0 || to == p) continue;
        const auto from = static_cast<std::size_t>(p);
        const auto target = static_cast<std::size_t>(to);
        m.Poly[target] = m.Poly[from];
        m.PolyC[target] = m.PolyC[from];
        m.PolyM[target] = m.PolyM[from];
        copyPolygonCurves(m, p, to);
    }
    renumberOrder(m, index);

    if (m.CurPoly >= 0 && m.CurPoly <= m.LastPoly) {
        const int moved = index[static_cast<std::size_t>(m.CurPoly)];
        m.CurPoly = toI2(moved >= 0 ? moved : nearestKept(index, m.CurPoly));
    }
    m.LastPoly = toI2(m.LastPoly - removed);
    if (m.LastPoly >= 0)
        ResizePolygonArrays(m, m.LastPoly + 1);
    else
        EmptyArrays(m);
    if (host.views.polygonScreenOpen()) host.views.redisplayPolygons(m.CurPoly);
}

}  // namespace arborex
