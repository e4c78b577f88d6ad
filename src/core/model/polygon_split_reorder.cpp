#include <array>
#include <cstddef>
#include <string>
#include <utility>

#include "base/errors.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/polygon_rows.hpp"

namespace arborex {

namespace {

// Name of a split piece: the source's trimmed name and a letter, "a" for the first piece.
std::string pieceName(const std::string& name, int piece) {
    const int code = 'a' + piece;
    if (code > 255) throw ArborexError(ErrOverflow);
    return name + static_cast<char>(code);
}

// Puts the species of one model in descending order of percent, moving every field of a slot
// together. A selection sort whose search keeps the first of equal percents; the swap may still
// carry a slot past its equal, as the program has always ordered them.
template <std::size_t N, typename Swap>
void sortByPercent(std::array<Code2, N>& codes, const std::array<int16_t, N>& percents,
                   Swap swapSlots) {
    int sum = 0;
    for (int16_t percent : percents) sum += percent;
    // A complete composition has no room for a species without a share.
    if (sum == 100)
        for (std::size_t s = 0; s < N; ++s)
            if (percents[s] == 0) codes[s] = "  ";
    for (std::size_t i = 0; i + 1 < N; ++i) {
        std::size_t largest = i;
        for (std::size_t j = i + 1; j < N; ++j)
            if (percents[j] > percents[largest]) largest = j;
        if (largest != i) swapSlots(i, largest);
    }
}

}  // namespace

int splitPolygons(Model& m, float maximum, float size) {
    if (maximum <= 0.0f || size <= 0.0f) return 0;
    if (size > maximum) size = maximum;
    const int existing = m.LastPoly;
    int added = 0;
    for (int p = 0; p <= existing; ++p) {
        const auto source = static_cast<std::size_t>(p);
        if (m.PolyC.at(source).DELETE != 0) continue;
        const std::string name = m.Poly[source].NAME.str();
        for (int piece = 0; m.Poly[source].AREA > maximum; ++piece) {
            // Copies first: appending moves the arrays the source lives in.
            PolyData data = m.Poly[source];
            const PolyCalc calc = m.PolyC[source];
            const PolyMgmt mgmt = m.PolyM[source];
            data.NAME = pieceName(name, piece);
            data.AREA = size;
            const int copy = appendPolygon(m, data, calc, mgmt);
            // A piece is a full copy, its place in the sort order included.
            m.PolyC[static_cast<std::size_t>(copy)].SORT = calc.SORT;
            copyPolygonCurves(m, p, copy);
            m.Poly[source].AREA = m.Poly[source].AREA - size;
            ++added;
        }
    }
    return added;
}

void reorderPolygonSpecies(Model& m, int polygon) {
    if (polygon < 0 || polygon > m.LastPoly) throw ArborexError(ErrSubscript);
    const auto p = static_cast<std::size_t>(polygon);
    PolyData& data = m.Poly.at(p);
    PolyCalc& calc = m.PolyC.at(p);
    PolyMgmt& mgmt = m.PolyM.at(p);
    sortByPercent(data.VS, data.VP, [&](std::size_t a, std::size_t b) {
        std::swap(data.VS[a], data.VS[b]);
        std::swap(data.VSIDX[a], data.VSIDX[b]);
        std::swap(data.VP[a], data.VP[b]);
        std::swap(calc.VX[a], calc.VX[b]);
    });
    sortByPercent(data.TS, data.TP, [&](std::size_t a, std::size_t b) {
        std::swap(data.TS[a], data.TS[b]);
        std::swap(data.TSIDX[a], data.TSIDX[b]);
        std::swap(data.TP[a], data.TP[b]);
        std::swap(data.TH[a], data.TH[b]);
        std::swap(data.TI[a], data.TI[b]);
        std::swap(mgmt.TG[a], mgmt.TG[b]);
    });
}

void reorderSpecies(Model& m) {
    for (int p = 0; p <= m.LastPoly; ++p) reorderPolygonSpecies(m, p);
    if (m.CurPoly < 0) return;
    const auto current = static_cast<std::size_t>(m.CurPoly);
    m.OldPoly = m.Poly.at(current);
    m.OldPolyC = m.PolyC.at(current);
}

}  // namespace arborex
