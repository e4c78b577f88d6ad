#include "summary_command.hpp"

#include "batch_args.hpp"

namespace arborex::batch {

std::string summaryUsage() {
    return {};
}

int runSummary(const std::vector<std::string>&, std::ostream&, std::ostream&) {
    throw UsageError("summary is not built yet");
}

}  // namespace arborex::batch
