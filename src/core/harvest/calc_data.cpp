#include "harvest/calc_data.hpp"

#include "frame/errors.hpp"

namespace arborex {

void SaveCalcData(CalcSession& /*s*/) {
    throw ArborexError(ErrInternal, "SaveCalcData is not built yet");
}

void LoadCalcData(CalcSession& /*s*/) {
    throw ArborexError(ErrInternal, "LoadCalcData is not built yet");
}

void chkArea_Click(CalcSession& /*s*/) {
    throw ArborexError(ErrInternal, "chkArea_Click is not built yet");
}

}  // namespace arborex
