#pragma once
// The calc command: a harvest calculation on a project, as the calculation screen runs it, with
// the screen's fields taken from the project's saved calculation data and then from the flags.

#include <iosfwd>
#include <string>
#include <vector>

#include "base/host.hpp"
#include "batch_args.hpp"
#include "harvest/calc_session.hpp"

namespace arborex::batch {

// A calculation that the program refused to start (no ownership ticked, nothing harvestable):
// the refusal is reported and nothing is saved.
inline constexpr int ExitRefused = 3;

// calc PROJECT [calculation flags] [--json] [--save OUT] [--quiet] [--data DIR]
int runCalc(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// The calculation flags of calc (and of the commands that run a calculation the same way), with
// --json, --quiet, --data, --remove-mapsheet and --save; contradictory flags throw UsageError.
BatchOptions parseCalcOptions(const std::vector<std::string>& args);

// The calculation screen as it opens on the loaded project (the saved fields, the order lists,
// the expanded curves), then the flags over its fields, --start-year and --log.
void openCalculation(CalcSession& s, const BatchOptions& options, StatusScreen& status);

// The calc command's part of --help.
std::string calcUsage();

}  // namespace arborex::batch
