#pragma once
// The summary screen's rows from the command line.

#include <ostream>
#include <string>
#include <vector>

namespace arborex::batch {

std::string summaryUsage();
int runSummary(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace arborex::batch
