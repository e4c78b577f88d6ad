#include "harvest/results.hpp"

#include "frame/errors.hpp"

namespace arborex {

int ageClass(int /*age*/) {
    throw ArborexError(ErrInternal, "ageClass is not built yet");
}

void AddReportCut(CalcSession& /*s*/, int16_t /*block*/, int16_t /*method*/) {
    throw ArborexError(ErrInternal, "AddReportCut is not built yet");
}

void UpdateReports(CalcSession& /*s*/, float /*conVol*/, float /*decVol*/, float /*area*/,
                   float /*areaCCE*/, int16_t /*method*/, int16_t /*block*/, float /*potential*/) {
    throw ArborexError(ErrInternal, "UpdateReports is not built yet");
}

void BuildReportIndex(CalcSession& /*s*/) {
    throw ArborexError(ErrInternal, "BuildReportIndex is not built yet");
}

}  // namespace arborex
