#pragma once
// The single entry to a calculation: the checks, then the search or one final run.

#include "harvest/calc_session.hpp"

namespace arborex {

// cmdCalculate_Click: refusals and warnings through the prompt, the first harvestable year,
// the delay, then Auto or AVAC(0). Returns false when the calculation was refused.
bool cmdCalculate(CalcSession& s);

}  // namespace arborex
