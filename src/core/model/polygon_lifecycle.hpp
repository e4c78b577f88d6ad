#pragma once
// How polygons come into a project, change name, are split, hidden, reordered and removed, and
// how the polygon list mirrors them. Every routine keeps all per-polygon arrays in step.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/host.hpp"
#include "model/model.hpp"

namespace arborex {

enum class PolygonRefusal { None, BlankName, Duplicate };
// The system's text for a refusal: GetMessage of "&BLANKPOLYGON", "&DUPLICATE" or "&RENDUP".
std::string refusalText(const Model& m, PolygonRefusal refusal, bool rename);

// A polygon that follows the project wherever it can: REGENDELAY, OAF1, OAF2, PCPERC, PCNEXT,
// HAR[0..1] at -1, MINCUTAGE {-1,-1}, MINCUTVOL/MINCUTDBH {-1.0f,-1.0f}; every VX at 1 (each
// species counts toward the cut, as in an empty project's default polygon); everything else
// zero or blank. The one routine that makes a new polygon's records for programs without the
// default polygon (make_sample, tests/support/calc_fixture, the BC trial, make_default_def,
// bench, the batch).
void projectFollowingPolygon(PolyData& data, PolyCalc& calc, PolyMgmt& mgmt);

// Index of the polygon whose trimmed, upper-cased name equals `name`'s; deleted polygons
// count; `except` is skipped (rename). -1 when none.
int findPolygonName(const Model& m, std::string_view name, int except = -1);

// Appends the three records as polygon LastPoly + 1: every per-polygon array grows by one
// with contents kept, the new curve rows and HarvAge zeroed, SORT set to 0. Returns the index.
// Past 32,767 polygons: ArborexError(ErrOverflow), nothing changed.
int appendPolygon(Model& m, const PolyData& data, const PolyCalc& calc, const PolyMgmt& mgmt);

struct AddOutcome {
    PolygonRefusal refusal = PolygonRefusal::None;
    int polygon = -1;  // the new polygon, or the one that holds the name (Duplicate)
};
// frmAdd's cmdAdd. `source` -1 takes DefaultPoly* (then clearVYield/ClearTYield on the new
// index); otherwise polygon `source`'s three records, VYield, VMix, TYield rows and both
// HarvAge records are copied. NAME is the trimmed name (cut to 12). Refusals change nothing.
AddOutcome addPolygon(Model& m, const std::string& name, int source);

// mniDelPoly / frmUndelete's cmdUndelete: DELETE to 1 / 0. Nothing else moves, except that
// deleting the last live polygon leaves no polygon on screen: CurPoly -1.
void deletePolygon(Model& m, int polygon);
void undeletePolygon(Model& m, int polygon);

// mniRenPoly after its input box. An empty (trimmed) answer keeps the name: None, nothing
// changed. A name that another polygon holds: Duplicate, nothing changed. Otherwise the
// trimmed name is stored cut to 12 characters.
PolygonRefusal renamePolygon(Model& m, int polygon, const std::string& answer);

// mnuSplit after its two questions. Zero (or less) for either: nothing. size > maximum is
// lowered to maximum. For each live polygon with AREA > maximum (polygons that exist before
// the split only): while AREA > maximum, append a full copy (records, curve rows, HarvAge)
// named trimmed name + "a", "b", ... with AREA = size, and reduce the source by size (a float
// store each step). Returns the number of polygons added.
int splitPolygons(Model& m, float maximum, float size);

// mnuReorder on every polygon, then OldPoly/OldPolyC refreshed from CurPoly when it is >= 0.
void reorderSpecies(Model& m);
// The same for one polygon (VDYP then TIPSY), for tests and the batch.
void reorderPolygonSpecies(Model& m, int polygon);

// True when a curve the polygon uses is not ready: YIELDSTATE[0] < 3 while either MGNT entry is
// 0, or YIELDSTATE[1] < 3 while either entry is 1.
bool curvesNotReady(const PolyData& data);
// The polygon's row in lstMapPoly: "*" + trimmed name when curvesNotReady, else the name.
std::string polygonRowText(const Model& m, int polygon);

struct PolygonRow {
    std::string text;
    int polygon;
};
// DisplayPoly's rows: the live polygons in index order; stores each one's row number in
// PolyC.LISTROW. With no row CurPoly becomes -1.
std::vector<PolygonRow> DisplayPoly(Model& m);
// The row DisplayPoly selects: `lastSelection`, or the last row when that is past the end;
// -1 when there are no rows.
int displaySelection(int lastSelection, int rowCount);

// mniSaveDefault: polygon's records into DefaultPoly*, written to Paths[2] + "DEFAULT.DEF"
// (SaveDefaultPolygon). Throws ArborexError when it cannot be written.
void saveAsDefaultPolygon(Model& m, int polygon);

// Removes every polygon whose DELETE is 1, moving the others down so that every array stays
// in step; renumbers the harvest order and drops deleted polygons from it. When the order
// lost a position the saved run no longer fits, and its result counters are cleared.
// CurPoly follows its polygon, or the nearest kept one when its own went.
void PurgeDeletedPolygons(Model& m, Host& host);

}  // namespace arborex
