#include "harvest/calculate.hpp"

#include "frame/errors.hpp"

namespace arborex {

bool cmdCalculate(CalcSession& /*s*/) {
    throw ArborexError(ErrInternal, "cmdCalculate is not built yet");
}

}  // namespace arborex
