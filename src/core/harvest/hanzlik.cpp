#include "harvest/hanzlik.hpp"

#include "frame/errors.hpp"

namespace arborex {

void CalcHanzlik(CalcSession& /*s*/, float& /*rate*/) {
    throw ArborexError(ErrInternal, "CalcHanzlik is not built yet");
}

void mniHanzlik_Click(CalcSession& /*s*/) {
    throw ArborexError(ErrInternal, "mniHanzlik_Click is not built yet");
}

void mniCFHanz_Click(CalcSession& /*s*/) {
    throw ArborexError(ErrInternal, "mniCFHanz_Click is not built yet");
}

}  // namespace arborex
