#pragma once
// The calc command: a harvest calculation on a project, as the calculation screen runs it, with
// the screen's fields taken from the project's saved calculation data and then from the flags.

#include <iosfwd>
#include <string>
#include <vector>

namespace arborex::batch {

// A calculation that the program refused to start (no ownership ticked, nothing harvestable):
// the refusal is reported and nothing is saved.
inline constexpr int ExitRefused = 3;

// calc PROJECT [calculation flags] [--json] [--save OUT] [--quiet] [--data DIR]
int runCalc(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// The calc command's part of --help.
std::string calcUsage();

}  // namespace arborex::batch
