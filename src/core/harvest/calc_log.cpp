#include "harvest/calc_log.hpp"

#include "frame/errors.hpp"

namespace arborex {

void openCalcLog(CalcSession& /*s*/) {
    throw ArborexError(ErrInternal, "openCalcLog is not built yet");
}

void addtolog(CalcSession& /*s*/, int16_t /*year*/, int16_t /*block*/) {
    throw ArborexError(ErrInternal, "addtolog is not built yet");
}

void closeCalcLog(CalcSession& /*s*/) {
    throw ArborexError(ErrInternal, "closeCalcLog is not built yet");
}

}  // namespace arborex
