#pragma once
// The simulation's view of the yield curves: every curve that a polygon's existing or future
// management needs, turned once into a table by single year of age (0 to 350), so that a block
// reads its stand's volume, height and diameter with one index and no interpolation.
//
// The table is read from the stored grid values directly. A commercial thin that FindVol shows as
// a drop is therefore a plain straight line between two grid values here, and VDYP volume is the
// sum of the species slots that are not excluded (VX), split into conifer and deciduous.

#include <array>
#include <cstdint>
#include <vector>

#include "base/host.hpp"
#include "model/model.hpp"

namespace arborex {

inline constexpr int kExpandedTopAge = 350;

// One age of a curve. The four values sit together because the simulation reads them together,
// block after block over thousands of curves: one cache line a read instead of three.
struct CurveAge {
    float ConVol = 0.0f;  // m3/ha; all of a TIPSY curve's volume
    float DecVol = 0.0f;  // m3/ha; 0 for TIPSY
    float Height = 0.0f;  // m
    float Dbh = 0.0f;     // cm
};

struct ExpandedCurve {
    int16_t CurvePoly = 0;
    int16_t CurveModel = 0;  // 0 VDYP, 1 TIPSY
    std::array<CurveAge, kExpandedTopAge + 1> Age{};
};

// Lives as long as the calculation screen; never saved.
struct ExpandedYields {
    // Index 0 is an all-zero curve, so that a curve index of 0 ("none") reads as no volume.
    std::vector<ExpandedCurve> CurveTable;
    int16_t CurveCount = 0;
    // The CurveTable index serving each polygon's EXISTINGMGNT and FUTUREMGNT; 0 for none.
    std::vector<int16_t> PolyCurveExisting;
    std::vector<int16_t> PolyCurveFuture;
};

// Rebuilds `yields` for polygons 0..LastPoly (deleted and excluded ones too), VDYP before TIPSY
// for each polygon, showing "Expanding Yield Curves" and progress on the status screen. A
// polygon whose two managements use one model gets one curve, pointed to twice. Curve indices are
// 16-bit: a project needing more than 32,767 curves throws ErrOverflow.
void ExpandYields(const Model& m, StatusScreen& status, ExpandedYields& yields);

// The curve of index `curve`; an index outside the table throws ErrSubscript.
const ExpandedCurve& curveAt(const ExpandedYields& yields, int curve);

// Names every live polygon's curve that has no volume at any age in one "Yield Errors" box.
// Only warns; such polygons simply yield nothing.
void CheckYields(const Model& m, Prompt& prompt, const ExpandedYields& yields, int16_t& msgResult);

// The age to which a partial cut sets a stand back: the first age whose total volume (conifer
// and deciduous, whatever the run's utilisation) is above what the cut leaves standing at the
// block's HarvestAge (capped at 350). Writes the block's ResidualAge; 0 when no age passes.
void SetPC(const Model& m, const ExpandedYields& yields, Block& block);

}  // namespace arborex
