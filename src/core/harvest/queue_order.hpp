#pragma once
// The harvest order: the included and excluded lists of the calculation screen, the sort
// methods that arrange the included list, and SetCutOrder, which turns the list on screen into
// CutOrder and IncludedPoly. The list on screen is the master: every calculation reads it back.

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "harvest/calc_session.hpp"

namespace arborex {

// CutOrder, CutOrderKey and CutOrderLast from the included list; IncludedPoly from the rows
// whose polygon's ownership is ticked in chkCut.
void SetCutOrder(CalcSession& s);
// Rebuilds both lists from CutOrder (the default order when CutOrderLast is -1). With `warn`
// not 0, polygons refused for missing yields are shown in one "Missing Yield Data...." box.
void ShowPolygonOrder(CalcSession& s, int16_t warn);
// Adds polygon p's row to list `list`; a polygon with an error goes to the excluded list with
// "*" in front, `list` becomes 0 and the reasons are appended to `errors`. Deleted: nothing.
void AddPolyToSort(CalcSession& s, int16_t polygon, int16_t& list, std::string& errors);
// SortMethod: -2 custom, -1 default, 0..6 a sort entry.
void setSortMethod(CalcSession& s, int16_t method);

// The caption over the order lists (lblTitle) for OrderColumn 0 age, 1 MAI, 2 site index,
// 3 lead species; empty for any other value.
std::string orderTitle(int16_t orderColumn);
// The lead species as the order list shows it: the first two characters of VS or TS slot 0
// (blanks kept), "NC" or "NSR"; empty for an unknown management.
std::string leadSpecies(const Model& m, int16_t polygon);
// Stable descending bubble sort of CutOrder by CutOrderKey, rows 0..CutOrderLast.
void sortCutOrder(Model& m);

// The lead species ranking dialog: given the ranking proposed (species in order of first
// appearance in CutOrder), gives the user's ranking, or nothing on Cancel.
using SpeciesRanking =
    std::function<std::optional<std::vector<std::string>>(const std::vector<std::string>&)>;

// The user's actions on the order lists.
void mniSort_Click(CalcSession& s, int16_t index, const SpeciesRanking& rankSpecies);
void mniSortDefault_Click(CalcSession& s);
void mniSortCustom_Click(CalcSession& s);
// Index 0 Top, 1 Up, 2 Down, 3 Bottom, on the included list's `selectedRow` (-1 for none).
// Returns the row selected afterwards.
int cmdMove_Click(CalcSession& s, int16_t index, int selectedRow);
// Moves row `row` of list `index` to the end of the other list.
void lstCutOrder_DblClick(CalcSession& s, int16_t index, int row);
// The right button on list `index`: every row without "*" goes to the other list.
void lstCutOrder_MouseUp(CalcSession& s, int16_t index, int16_t button);
void mnuInclude_Click(CalcSession& s, int16_t index);

}  // namespace arborex
