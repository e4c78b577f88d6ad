#include "yield/polygon_changes.hpp"

namespace arborex {

PolygonChanges comparePolygon(const PolyData&, const PolyCalc&, const PolyMgmt&, const PolyData&,
                              const PolyCalc&, const PolyMgmt&, bool) {
    return {};
}

std::string changesHeading(const PolygonChanges&) {
    return {};
}

void applyStaleMarks(Model&, int, int) {}

void updateVDYPmix(Model&, int) {}

void takePolygonSnapshot(Model& m) {
    if (m.CurPoly < 0) return;
    m.OldPoly = m.Poly.at(static_cast<std::size_t>(m.CurPoly));
    m.OldPolyC = m.PolyC.at(static_cast<std::size_t>(m.CurPoly));
    m.OldPolyM = m.PolyM.at(static_cast<std::size_t>(m.CurPoly));
}

ChangeOutcome polychanged(Model&, Prompt&) {
    return ChangeOutcome::NoChange;
}

void DoYieldsNeedToBeUpdated(Model&, int) {}

}  // namespace arborex
