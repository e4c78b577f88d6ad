#include "model/polygon_lifecycle.hpp"

#include <cstddef>
#include <limits>

#include "base/errors.hpp"
#include "base/file_names.hpp"
#include "base/messages.hpp"
#include "base/numeric.hpp"
#include "base/text.hpp"
#include "model/curve_clear.hpp"
#include "model/default_polygon.hpp"
#include "model/polygon_rows.hpp"

namespace arborex {

namespace {

std::size_t checkedIndex(const Model& m, int polygon) {
    if (polygon < 0 || polygon > m.LastPoly || static_cast<std::size_t>(polygon) >= m.Poly.size())
        throw ArborexError(ErrSubscript);
    return static_cast<std::size_t>(polygon);
}

template <typename Row>
void copyRows(YieldGrid<Row>& grid, int from, int to) {
    const Row* source = grid.rowsOf(from);
    Row* target = grid.rowsOf(to);
    for (int r = 0; r < grid.rowCount(); ++r) target[r] = source[r];
}

template <typename Row>
void zeroRows(YieldGrid<Row>& grid, int polygon) {
    Row* rows = grid.rowsOf(polygon);
    for (int r = 0; r < grid.rowCount(); ++r) rows[r] = Row{};
}

// A name as the polygon would hold it: trimmed, then cut to the field.
std::string storedName(const std::string& name) {
    return FixedString<12>(trim(name)).str();
}

}  // namespace

void copyPolygonCurves(Model& m, int from, int to) {
    copyRows(m.VYield, from, to);
    copyRows(m.VMix, from, to);
    copyRows(m.TYield, from, to);
    m.HarvAge.at(static_cast<std::size_t>(to)) = m.HarvAge.at(static_cast<std::size_t>(from));
}

std::string refusalText(const Model& m, PolygonRefusal refusal, bool rename) {
    switch (refusal) {
        case PolygonRefusal::BlankName:
            return GetMessage(m.Messages, "&BLANKPOLYGON");
        case PolygonRefusal::Duplicate:
            return GetMessage(m.Messages, rename ? "&RENDUP" : "&DUPLICATE");
        case PolygonRefusal::None:
            break;
    }
    return {};
}

void projectFollowingPolygon(PolyData& data, PolyCalc& calc, PolyMgmt& mgmt) {
    data = PolyData{};
    calc = PolyCalc{};
    mgmt = PolyMgmt{};
    data.OAF1 = data.OAF2 = -1;
    data.PCPERC = data.PCNEXT = -1;
    data.HAR = {-1, -1};
    calc.REGENDELAY = -1;
    calc.VX.fill(1);
    calc.MINCUTAGE = {-1, -1};
    calc.MINCUTVOL = {-1.0f, -1.0f};
    calc.MINCUTDBH = {-1.0f, -1.0f};
}

int findPolygonName(const Model& m, std::string_view name, int except) {
    const std::string wanted = toUpper(trim(name));
    for (int p = 0; p <= m.LastPoly; ++p) {
        if (p == except) continue;
        if (toUpper(m.Poly.at(static_cast<std::size_t>(p)).NAME.str()) == wanted) return p;
    }
    return -1;
}

int appendPolygon(Model& m, const PolyData& data, const PolyCalc& calc, const PolyMgmt& mgmt) {
    if (m.LastPoly == std::numeric_limits<int16_t>::max()) throw ArborexError(ErrOverflow);
    const int p = m.LastPoly + 1;
    // Arrays may hold more elements than LastPoly says (an empty project keeps one), so the
    // new polygon's curves are zeroed rather than taken as they lie.
    ResizePolygonArrays(m, p + 1);
    m.LastPoly = static_cast<int16_t>(p);
    const auto i = static_cast<std::size_t>(p);
    m.Poly[i] = data;
    m.PolyC[i] = calc;
    m.PolyM[i] = mgmt;
    m.PolyC[i].SORT = 0;
    zeroRows(m.VYield, p);
    zeroRows(m.VMix, p);
    zeroRows(m.TYield, p);
    m.HarvAge[i] = {};
    return p;
}

AddOutcome addPolygon(Model& m, const std::string& name, int source) {
    const std::string stored = storedName(name);
    if (stored.empty()) return {PolygonRefusal::BlankName, -1};
    const int holder = findPolygonName(m, stored);
    if (holder >= 0) return {PolygonRefusal::Duplicate, holder};

    PolyData data = m.DefaultPoly;
    PolyCalc calc = m.DefaultPolyC;
    PolyMgmt mgmt = m.DefaultPolyM;
    if (source >= 0) {
        const std::size_t s = checkedIndex(m, source);
        data = m.Poly[s];
        calc = m.PolyC[s];
        mgmt = m.PolyM[s];
    }
    data.NAME = stored;
    const int p = appendPolygon(m, data, calc, mgmt);
    if (source >= 0) {
        copyPolygonCurves(m, source, p);
    } else {
        clearVYield(m, static_cast<int16_t>(p));
        ClearTYield(m, static_cast<int16_t>(p));
    }
    return {PolygonRefusal::None, p};
}

void deletePolygon(Model& m, int polygon) {
    m.PolyC[checkedIndex(m, polygon)].DELETE = 1;
    // With no live polygon left no row can be selected, so none is on screen.
    for (int p = 0; p <= m.LastPoly; ++p)
        if (m.PolyC[static_cast<std::size_t>(p)].DELETE == 0) return;
    m.CurPoly = -1;
}

void undeletePolygon(Model& m, int polygon) {
    m.PolyC[checkedIndex(m, polygon)].DELETE = 0;
}

PolygonRefusal renamePolygon(Model& m, int polygon, const std::string& answer) {
    const std::size_t p = checkedIndex(m, polygon);
    const std::string stored = storedName(answer);
    if (stored.empty()) return PolygonRefusal::None;
    if (findPolygonName(m, stored, polygon) >= 0) return PolygonRefusal::Duplicate;
    m.Poly[p].NAME = stored;
    return PolygonRefusal::None;
}

bool curvesNotReady(const PolyData& data) {
    const auto uses = [&data](int model) { return data.MGNT[0] == model || data.MGNT[1] == model; };
    return (data.YIELDSTATE[0] < 3 && uses(0)) || (data.YIELDSTATE[1] < 3 && uses(1));
}

std::string polygonRowText(const Model& m, int polygon) {
    const PolyData& data = m.Poly[checkedIndex(m, polygon)];
    return curvesNotReady(data) ? "*" + data.NAME.str() : data.NAME.str();
}

std::vector<PolygonRow> DisplayPoly(Model& m) {
    std::vector<PolygonRow> rows;
    for (int p = 0; p <= m.LastPoly; ++p) {
        PolyCalc& calc = m.PolyC.at(static_cast<std::size_t>(p));
        if (calc.DELETE != 0) continue;
        calc.LISTROW = toI2(static_cast<int>(rows.size()));
        rows.push_back({polygonRowText(m, p), p});
    }
    if (rows.empty()) m.CurPoly = -1;
    return rows;
}

int displaySelection(int lastSelection, int rowCount) {
    if (rowCount <= 0 || lastSelection < 0) return -1;
    return lastSelection < rowCount ? lastSelection : rowCount - 1;
}

void saveAsDefaultPolygon(Model& m, int polygon) {
    const std::size_t p = checkedIndex(m, polygon);
    m.DefaultPoly = m.Poly[p];
    m.DefaultPolyC = m.PolyC[p];
    m.DefaultPolyM = m.PolyM[p];
    // The user's own copy is replaced, however its name is spelled on disk.
    std::string path = findFileNoCase(m.Paths[UserDocuments], kDefaultPolygonFile);
    if (path.empty()) path = m.Paths[UserDocuments] + kDefaultPolygonFile;
    SaveDefaultPolygon(m, path);
}

}  // namespace arborex
