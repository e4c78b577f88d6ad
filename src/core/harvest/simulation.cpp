#include "harvest/simulation.hpp"

#include "frame/errors.hpp"

namespace arborex {

void AVAC(CalcSession& /*s*/, int16_t /*mode*/, int16_t& /*failed*/) {
    throw ArborexError(ErrInternal, "AVAC is not built yet");
}

void SetupCut(CalcSession& /*s*/) {
    throw ArborexError(ErrInternal, "SetupCut is not built yet");
}

int16_t ChooseBlock(CalcSession& /*s*/) {
    throw ArborexError(ErrInternal, "ChooseBlock is not built yet");
}

void PreCut(CalcSession& /*s*/, int16_t /*block*/, int16_t /*method*/, int16_t /*mode*/) {
    throw ArborexError(ErrInternal, "PreCut is not built yet");
}

void IncrementYear(CalcSession& /*s*/, int16_t /*first*/) {
    throw ArborexError(ErrInternal, "IncrementYear is not built yet");
}

}  // namespace arborex
