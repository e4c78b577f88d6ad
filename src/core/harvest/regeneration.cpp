#include "harvest/regeneration.hpp"

#include "frame/errors.hpp"

namespace arborex {

void PlantBlock(CalcSession& /*s*/, int16_t /*block*/) {
    throw ArborexError(ErrInternal, "PlantBlock is not built yet");
}

void NSR(CalcSession& /*s*/, int16_t /*mode*/) {
    throw ArborexError(ErrInternal, "NSR is not built yet");
}

void CommercialThin(CalcSession& /*s*/, int16_t /*mode*/) {
    throw ArborexError(ErrInternal, "CommercialThin is not built yet");
}

}  // namespace arborex
