#pragma once
// The graph command: a control file of the graphing program from a project's saved
// calculation, as the calculation screen's Graph menu and the age distribution screen write it.

#include <iosfwd>
#include <string>
#include <vector>

namespace arborex::batch {

// graph PROJECT KIND OUT [--years Y1,Y2,...] [--quiet] [--data DIR]
int runGraph(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// The name of a result graph on the command line: its menu text in lower case, words joined by
// dashes ("Growth / Year Graph" -> "growth-year-graph").
std::string graphKindName(const std::string& caption);

// The graph command's part of --help.
std::string graphUsage();

}  // namespace arborex::batch
