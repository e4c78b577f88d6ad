#pragma once
// The summary screen's batch updates of a selection: harvest ages and silviculture system.

#include <ostream>
#include <string>
#include <vector>

namespace arborex::batch {

std::string standUpdateUsage();
int runHarvestAge(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);
int runSilviculture(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

}  // namespace arborex::batch
