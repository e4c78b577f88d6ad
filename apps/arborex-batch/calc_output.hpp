#pragma once
// What the calc command prints: every table of the run as JSON, or a short summary for people.

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

#include "batch_host.hpp"
#include "harvest/calc_session.hpp"

namespace arborex::batch {

// What the rate search showed in its window.
struct SearchTrace {
    bool opened = false;
    std::string startLine;            // lblHanzlik
    std::vector<std::string> trials;  // lstCalcStatus, its two heading rows included
    std::string lastStatus;           // lblStatus at the end
};

struct CalcOutcome {
    std::string project;
    std::optional<std::string> refusal;  // the box that stopped the calculation
    std::vector<ShownBox> warnings;      // every other box the calculation showed
    SearchTrace search;
    int finalRuns = 0;  // 0 when the search ended without a rate
};

void writeCalcJson(const CalcSession& s, const CalcOutcome& outcome, std::ostream& out);
void writeCalcText(const CalcSession& s, const CalcOutcome& outcome, std::ostream& out);

}  // namespace arborex::batch
