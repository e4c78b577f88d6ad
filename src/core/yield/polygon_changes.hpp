#pragma once
// What leaving a polygon does with the user's changes: lists them, asks whether to keep them,
// and marks the curves that the change makes stale. The import runs the same comparison with
// narrower marks.

#include <string>

#include "base/prompt.hpp"
#include "model/model.hpp"

namespace arborex {

enum StaleMark : int { StaleNone = 0, StaleVDYP = 1, StaleTIPSY = 2, StaleBoth = 3 };
struct PolygonChanges {
    std::string labels;     // one label + "\r\n" a difference, in the screen's order
    int marks = StaleNone;  // bit or of StaleVDYP / StaleTIPSY
    bool vxChanged = false;
    bool any() const { return !labels.empty(); }
};
// The field-by-field comparison. `importRules` false: polychanged's marks; true:
// DoYieldsNeedToBeUpdated's narrower marks (VAF and the treatments stale nothing).
PolygonChanges comparePolygon(const PolyData& before, const PolyCalc& beforeC,
                              const PolyMgmt& beforeM, const PolyData& after,
                              const PolyCalc& afterC, const PolyMgmt& afterM, bool importRules);
// "The Following variables have been changed:\r\n" then "TIPSY must be recalculated\r\n"
// and/or "VDYP must be recalculated\r\n".
std::string changesHeading(const PolygonChanges& changes);
// VDYP mark: VCCCALC, VSICALC, HarvAge[p][0].HarvestAge to 0, YIELDSTATE[0] = 1;
// TIPSY mark: HarvAge[p][1].HarvestAge 0, YIELDSTATE[1] = 1.
void applyStaleMarks(Model& m, int polygon, int marks);
// updateVDYPmix: rebuilds VYield Vol of the polygon from VMix's included species (VX).
void updateVDYPmix(Model& m, int polygon);

// Snapshot of CurPoly into OldPoly* (ShowPolygonData's copy). Nothing when CurPoly is -1.
void takePolygonSnapshot(Model& m);
enum class ChangeOutcome { NoChange, Kept, Restored };
// polychanged for m.CurPoly against OldPoly*: with USERLEVEL 1 asks through nmsgbox, titled
// "Keep Changes?", heading + "Do you want to keep these changes?", the labels as the list,
// mask 12, Yes default (index 2); No copies OldPoly* back (Restored). Kept: snapshot taken,
// marks applied, updateVDYPmix on a VX change. The caller refreshes the screen and the row.
ChangeOutcome polychanged(Model& m, Prompt& prompt);
// DoYieldsNeedToBeUpdated(p): NewPoly* against polygon p with the import rules; copies
// NewPoly* over polygon p, then applies the marks and updateVDYPmix (with the new VX) on a VX
// change, so that the stored polygon carries them.
void DoYieldsNeedToBeUpdated(Model& m, int polygon);

}  // namespace arborex
