#include "harvest/queue_order.hpp"

#include "frame/errors.hpp"

namespace arborex {

void SetCutOrder(CalcSession& /*s*/) {
    throw ArborexError(ErrInternal, "SetCutOrder is not built yet");
}

void ShowPolygonOrder(CalcSession& /*s*/, int16_t /*warn*/) {
    throw ArborexError(ErrInternal, "ShowPolygonOrder is not built yet");
}

void AddPolyToSort(CalcSession& /*s*/, int16_t /*polygon*/, int16_t& /*list*/,
                   std::string& /*errors*/) {
    throw ArborexError(ErrInternal, "AddPolyToSort is not built yet");
}

void setSortMethod(CalcSession& /*s*/, int16_t /*method*/) {
    throw ArborexError(ErrInternal, "setSortMethod is not built yet");
}

std::string leadSpecies(const Model& /*m*/, int16_t /*polygon*/) {
    throw ArborexError(ErrInternal, "leadSpecies is not built yet");
}

void sortCutOrder(Model& /*m*/) {
    throw ArborexError(ErrInternal, "sortCutOrder is not built yet");
}

void mniSort_Click(CalcSession& /*s*/, int16_t /*index*/, const SpeciesRanking& /*rankSpecies*/) {
    throw ArborexError(ErrInternal, "mniSort_Click is not built yet");
}

void mniSortDefault_Click(CalcSession& /*s*/) {
    throw ArborexError(ErrInternal, "mniSortDefault_Click is not built yet");
}

void mniSortCustom_Click(CalcSession& /*s*/) {
    throw ArborexError(ErrInternal, "mniSortCustom_Click is not built yet");
}

int cmdMove_Click(CalcSession& /*s*/, int16_t /*index*/, int /*selectedRow*/) {
    throw ArborexError(ErrInternal, "cmdMove_Click is not built yet");
}

void lstCutOrder_DblClick(CalcSession& /*s*/, int16_t /*index*/, int /*row*/) {
    throw ArborexError(ErrInternal, "lstCutOrder_DblClick is not built yet");
}

void lstCutOrder_MouseUp(CalcSession& /*s*/, int16_t /*index*/, int16_t /*button*/) {
    throw ArborexError(ErrInternal, "lstCutOrder_MouseUp is not built yet");
}

void mnuInclude_Click(CalcSession& /*s*/, int16_t /*index*/) {
    throw ArborexError(ErrInternal, "mnuInclude_Click is not built yet");
}

}  // namespace arborex
