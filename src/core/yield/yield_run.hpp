#pragma once
// The yield run: the checks of every polygon before the growth models run, the run of VDYP and
// then TIPSY over the polygons that are due, and the confirmation of the curves they return.
// The screen that calls this shows the lists and labels; the batch prints them.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/host.hpp"
#include "base/process.hpp"
#include "model/model.hpp"
#include "yield/post_list.hpp"

namespace arborex {

// What the checks before a run found: the two lists, the four counters and the labels.
struct PreCalcResult {
    // lstErrors and lstWarn: "ARBOREX - \t\t" + text for a project-level line (polygon -1),
    // trimmed NAME + "\t" + text for a polygon's.
    std::vector<PostItem> errors, warnings;
    int16_t VDYPDue = 0, TIPSYDue = 0, VDYPUsed = 0, TIPSYUsed = 0;
    // lblAmt(0), lblAmt(1): "(1 of 3 to calculate)" once a live polygon was checked; "(0 of 0)",
    // the screen's own caption, when there was none.
    std::array<std::string, 2> lblAmt;
    // "Caution - 2 Error(s) / 1 Warnings(s)"; empty for an empty project, whose check ends at
    // once.
    std::string lblStatus;
};

// PreCalcCheck: the project-level warnings (crown closure, VAF), then, polygon by polygon in
// index order and skipping deleted ones, the counters and CheckInput. Errors are advice: a run
// is not blocked by them. Upper-cases PSYUBLOCK as CheckInput does.
PreCalcResult PreCalcCheck(Model& m);
// Every check of one polygon, each failing one adding its line to `into`. With VDYPPSYUB 1 a
// VDYP polygon's PSYUBLOCK is stored back upper-cased.
void CheckInput(Model& m, int polygon, PreCalcResult& into);
// After model `model` (0 VDYP, 1 TIPSY) was imported: its harvest ages anew, then state 2 -> 3
// for each live curve that has volume at the top of its grid or at some grid age. A curve of
// no volume at all stays at 2, so the next run tries it again.
void CalculateYield(Model& m, int16_t model);

// What the screen shows while a run goes on.
class YieldRunObserver {
public:
    virtual ~YieldRunObserver() = default;
    // lblStat(0..3) VDYP, lblStat(4..7) TIPSY: export, model, import, error file. Shown at once.
    virtual void stat(int label, const std::string& text) = 0;
    virtual void postAdded(const PostItem& item) = 0;  // a line of lstPost
    // Waits `milliseconds` while the program stays responsive: the pause between two readings
    // of a model's output length.
    virtual void pause(int milliseconds) = 0;
    // True once the user cancelled; looked at before each model's part of the run, since a
    // model that runs cannot be interrupted.
    virtual bool cancelled() { return false; }
};

struct YieldRunRequest {
    bool updateVDYP = true;   // chkToCalc(0)
    bool updateTIPSY = true;  // chkToCalc(1)
    bool recalcAll = false;   // chkRecalcAll
};

struct YieldRunResult {
    std::vector<PostItem> post;           // lstPost, in order
    std::array<bool, 2> ran{};            // VDYP, TIPSY: the part exported and called its program
    std::array<ErrorCounts, 2> counts{};  // of the models' error files
};

// Whether the part of `model` (0 VDYP, 1 TIPSY) runs its program: ticked, and either recalcAll
// with a polygon that uses the model, or a polygon due for it. Neither part running, the button
// does nothing beyond its labels.
bool yieldLegRuns(const PreCalcResult& counts, const YieldRunRequest& request, int model);

// The run as the "Calculate Yield" button starts it, to its end:
//  1. lblStat(0..3) empty when updateVDYP, else "Skip"; lblStat(4..7) the same by updateTIPSY.
//  2. The work files in Paths[1] deleted.
//  3. When neither part has anything to do, that is all. Otherwise Paths[1] must be a folder
//     that can be written: if it is not, one project-level post line says so and nothing runs.
//  4. VDYP, when ticked and (recalcAll and a polygon uses VDYP, or one is due): linedef.txt,
//     vdypin.dat (the exported curves cleared), the program Files[0] in Paths[1], the output's
//     length read every 500 ms until two readings agree, the import, ERROR.TXT, updateVDYPmix
//     for every polygon while YIELDMODE, CalculateYield(0).
//  5. TIPSY likewise: the batch file from the template Files[6] with the run's paths, TIPSYin.dat,
//     the program Files[1], the poll, the import, CalculateYield(1), TIPSYout.err.
// A program that is missing, cannot start, crashes or times out adds the project-level post
// line "Arborex\t\t" + the runner's message, and its part ends there: nothing is imported, the
// exported curves stay cleared (state 0) and the harvest ages are not recomputed; the run goes
// on with the next part. A program that ended without writing its output file throws
// ArborexError(ErrFileNotFound, the output's path) for the caller's error boundary. A cancel
// takes effect before the next part. Curves of polygons not exported never change.
YieldRunResult runYieldTables(Model& m, Host& host, ProcessRunner& processes,
                              const YieldRunRequest& request, YieldRunObserver& observer);

}  // namespace arborex
