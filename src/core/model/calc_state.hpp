#pragma once
// What a calculation leaves behind in a project: the calculation screen's inputs and the
// tables of the last run, so that a reopened project shows its last calculation.

#include <array>
#include <cstdint>

#include "base/text.hpp"
#include "model/bounded_array.hpp"

namespace arborex {

// The calculation screen's inputs as saved (record A, the ten flags and record B).
struct CalcInputs {
    // Record A.
    int16_t reservedA = 0;
    int16_t ConstraintBits = 0;  // bit 0 net-down, bit 1 height, bit 2 age constraint
    int16_t SavedNetDown = 0;
    int16_t SavedHeight = 0;
    int16_t SavedAge = 0;
    int16_t SavedHeightPerc = 0;
    int16_t SavedAgePerc = 0;
    int32_t SavedVolRate = 0;  // m3/yr of the last final volume-based run
    int32_t SavedStartIn = 0;
    int16_t SavedCalcYears = 0;
    int16_t SavedCalcRate = 0;
    // The ten calculation flags.
    std::array<int16_t, 4> SavedCut{};
    int16_t reservedFlag4 = 0;
    int16_t SavedDisPC = 0;
    int16_t reservedFlag6 = 0;
    int16_t SavedHarvGap = 0;
    int16_t SavedNoHarv = 0;
    int16_t SavedWithin = 0;
    // Record B.
    int16_t AreaRunSaved = 0;
    std::array<int16_t, 4> reservedB{};
    int16_t SavedConifer = 0;
    double SavedAreaRate = 0.0;  // ha/yr of the last final area-based run
    int16_t OrderColumn = 0;
    int16_t SortMethod = -3;  // -3 unknown, -2 custom, -1 default, 0..6 a sort entry
    FixedString<122> Text1;
    FixedString<128> Text2;
    FixedString<128> Text3;
};

// One cutting unit in one rotation.
struct Block {
    int16_t Polygon = 0;
    int16_t Status = 0;
    int16_t Road = 0;
    float CutFraction = 0.0f;
    int32_t reserved = 0;
    int16_t Curve = 0;
    int16_t NextCurve = 0;
    float Area = 0.0f;
    int16_t DueYear = 0;
    int16_t HarvestAge = 0;
    int16_t StandYear = 0;
    int16_t Method = 0;
    int16_t ThinVol = 0;
    int16_t ThinYear = 0;
    int16_t ResidualAge = 0;
    int16_t PrevBlock = 0;
    int16_t NextBlock = 0;
    int16_t Rotation = 0;
};

struct RoadRec {
    int16_t RoadBlock = 0;
    float RoadArea = 0.0f;
    int16_t RoadYear = 0;
    int16_t RoadCurve = 0;
    float RoadCut = 0.0f;
};

// One harvest entry of a run.
struct CutRec {
    int16_t BlockIdx = 0;
    int16_t YearsFromDue = 0;
    int16_t CutAge = 0;
    float CutDbh = 0.0f;
    float CutVolHa = 0.0f;
    float CutArea = 0.0f;
    float CutAreaCCE = 0.0f;
    int16_t CutMethod = 0;
    int16_t StartYr = 0;
    int16_t EndYr = 0;
    float CutYears = 0.0f;
    float CutVolume = 0.0f;
    float CutConifer = 0.0f;
    float CutPotential = 0.0f;
};

// One simulated year of a run.
struct YearRec {
    int16_t NumPolygons = 0;
    FixedString<128> BlockNames;
    float AreaCCE = 0.0f;
    float AreaRoad = 0.0f;
    float AreaPC = 0.0f;
    float reserved = 0.0f;
    float AreaCC = 0.0f;
    float AreaCT = 0.0f;
    float AreaNC = 0.0f;
    float AreaNSR = 0.0f;
    float VolCC = 0.0f;
    float VolPC = 0.0f;
    float VolCT = 0.0f;
    float VolRoad = 0.0f;
    float VolConifer = 0.0f;
    float VolDeciduous = 0.0f;
    float MatureCon = 0.0f;
    float MatureDec = 0.0f;
    float ImmatureCon = 0.0f;
    float ImmatureDec = 0.0f;
    float InvVolume = 0.0f;
    float InvArea = 0.0f;
    float InvAreaHeight = 0.0f;
    float InvAreaAge = 0.0f;
    std::array<float, 10> AgeClassArea{};
};

// The calculation state that a project keeps.
struct CalcState {
    CalcInputs inputs;
    BoundedArray<Block, 0> BlockList;
    int16_t BlockLast = -1;
    BoundedArray<RoadRec, 1> RoadList;
    int16_t RoadLast = 0;
    BoundedArray<CutRec, 1> CutList;
    int16_t CutCount = 0;
    BoundedArray<YearRec, 0> YearTable;
    int16_t CalcHorizon = 0;
    float NetArea = 0.0f;
};

}  // namespace arborex
