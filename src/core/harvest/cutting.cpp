#include "harvest/cutting.hpp"

#include "frame/errors.hpp"

namespace arborex {

void CutBlock(CalcSession& /*s*/, int16_t /*block*/, int16_t /*mode*/) {
    throw ArborexError(ErrInternal, "CutBlock is not built yet");
}

void CutRoad(CalcSession& /*s*/, int16_t /*road*/) {
    throw ArborexError(ErrInternal, "CutRoad is not built yet");
}

}  // namespace arborex
