#pragma once
// The batch front end's commands, one function each, over core routines. Each writes its
// result to `out`, and to `err` either the notes that loading showed (unless --quiet) or, on a
// failure, exactly one line "arborex-batch: <reason>".

#include <iosfwd>
#include <string>
#include <vector>

namespace arborex::batch {

enum ExitCode : int { ExitOk = 0, ExitFailed = 1, ExitUsage = 2 };

// Runs the command line `args` (without the program name); returns the exit code: 0 done,
// 1 a project could not be loaded, saved or read, 2 the command line is wrong. With no arguments
// the usage goes to `out` and the result is 2; "--help" gives it with 0.
int runBatch(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// info PROJECT [--json] [--remove-mapsheet yes|no] [--quiet]
int runInfo(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
// convert IN OUT [--version 3226|200|111] [--remove-mapsheet yes|no] [--quiet]
int runConvert(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
// ages and curve: see curve_commands.hpp; calc: calc_command.hpp; polygon: polygon_command.hpp;
// yields: yields_command.hpp.

// The text of --help.
std::string usageText();

}  // namespace arborex::batch
