#include "stand_update_commands.hpp"

#include "batch_args.hpp"

namespace arborex::batch {

std::string standUpdateUsage() {
    return {};
}

int runHarvestAge(const std::vector<std::string>&, std::ostream&, std::ostream&) {
    throw UsageError("harvest-age is not built yet");
}

int runSilviculture(const std::vector<std::string>&, std::ostream&, std::ostream&) {
    throw UsageError("silviculture is not built yet");
}

}  // namespace arborex::batch
