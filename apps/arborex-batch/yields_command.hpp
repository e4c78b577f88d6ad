#pragma once
// The yields command: the "Calculate Yield Tables" screen without the screen. It checks every
// polygon, runs VDYP and TIPSY on the polygons that are due (or all with --all), reads their
// curves back, and writes the project (in place, keeping the former file as .bak, or to --save
// OUT).
//
// The models run in a fresh temporary folder of the command's own, removed afterwards; the
// programs and the TIPSY template come from the reference data's folder (VDYP/vdypbat,
// TIPSY/btipsy, TIPSY/arborex2.btp) unless --vdyp-program or --tipsy-program names another.
//
// Exit status 3, nothing written: nothing to calculate (no curve due and no --all, or no polygon
// that uses the models chosen). A model that is missing, crashes or times out is not a failure
// of the command: its message is a post line, its exported curves stay cleared (YIELDSTATE 0),
// the project is written and the status is 0. A model that ended without its output file is a
// failure (1), and nothing is written.
//
// JSON (keys in this order): project, saved (null when refused), refusal (null when not),
// errors, warnings (each {text, polygon}), VDYPDue, TIPSYDue, VDYPUsed, TIPSYUsed, lblAmt,
// lblStatus, ran [VDYP, TIPSY], counts [{warnings, errors} x 2], lblStat (the eight labels as the
// run left them), post ({text, polygon}), boxes (texts of the boxes the run showed), polygonList
// (per polygon: index, NAME, DELETE, YIELDSTATEBefore, YIELDSTATE, HarvAge [{MaiAge, VolAge,
// DiaAge, ConstraintAge, HarvestAge, MaxMAI} x 2]).

#include <iosfwd>
#include <string>
#include <vector>

namespace arborex::batch {

// yields PROJECT [--all] [--vdyp-only | --tipsy-only] [--vdyp-program PATH]
//        [--tipsy-program PATH] [--save OUT] [--json] [--quiet] [--data DIR]
int runYields(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// The yields command's part of --help.
std::string yieldsUsage();

}  // namespace arborex::batch
