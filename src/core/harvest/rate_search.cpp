#include "harvest/rate_search.hpp"

#include "frame/errors.hpp"

namespace arborex {

void Auto(CalcSession& /*s*/) {
    throw ArborexError(ErrInternal, "Auto is not built yet");
}

void ReCalc(CalcSession& /*s*/, int16_t /*flag*/) {
    throw ArborexError(ErrInternal, "ReCalc is not built yet");
}

}  // namespace arborex
