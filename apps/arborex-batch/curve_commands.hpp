#pragma once
// The batch commands over a project's yield curves: the calculated harvest ages of every
// polygon, and one polygon's curve on its model's age grid. Like the other commands they write
// their result to `out` and to `err` the notes of loading (unless --quiet) or one failure line,
// and return an ExitCode.

#include <iosfwd>
#include <string>
#include <vector>

namespace arborex::batch {

// ages PROJECT [--json] [--quiet] [--data DIR]
// Every polygon, deleted ones too, with its HarvAge record under both curve models, below the
// project's criteria.
int runAges(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// curve PROJECT POLYGON [--model 0|1] [--json] [--quiet] [--data DIR]
// POLYGON is the first polygon whose trimmed name equals it without regard to case, else its
// index 0..LastPoly; anything else is a usage error. The model is --model, else the first of
// EXISTINGMGNT and FUTUREMGNT that is 0 or 1 (a usage error when neither is). An age grid with
// a step of 0 or less fails (exit 1) with nothing written to `out`.
int runCurve(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace arborex::batch
