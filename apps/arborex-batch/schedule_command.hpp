#pragma once
// The schedule command: the delimited calculation report of a project, written as the
// calculation screen's "Create Calculation Report" writes it, from the saved calculation, the
// project's report settings and the flags.

#include <iosfwd>
#include <string>
#include <vector>

namespace arborex::batch {

// schedule PROJECT OUT [--delimiter tab|comma] [--increment N] [--polygons yes|no]
//          [--blank-rows yes|no] [--totals yes|no] [--averages yes|no] [calculation flags]
int runSchedule(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// The schedule command's part of --help.
std::string scheduleUsage();

}  // namespace arborex::batch
