#pragma once
// What `ages` and `curve` show of a loaded project: the calculated harvest ages of every
// polygon under both curve models, and one polygon's curve on its model's age grid. Two forms of
// each: aligned text for people, JSON for programs. Curve model 0 is VDYP, 1 TIPSY.
//
// A HarvAge record's keys, in this order: MaiAge, VolAge, DiaAge, ConstraintAge, HarvestAge,
// MaxMAI. A deleted polygon's record is the one the project file holds: loading recomputes the
// ages of live polygons only.
//
// ages JSON layout (keys in this order):
//   criteria  MINAGE, MINVOL, MINDIA
//   polygons  per polygon: index, NAME, DELETE, MGNT, HarvAge ([VDYP record, TIPSY record])
// curve JSON layout (keys in this order):
//   polygon, NAME, model, HarvAge (the record of that model), yieldView (the yield table
//   view's labels for the management of that model, -1 for none: management, calculated,
//   siteIndex, culmination {age, MAI}, criteria {minimumAge, DiaAge, VolAge, ConstraintAge,
//   HarvestAge}, target {age, dbh, vol} (HAR of the management, or HarvestAge), thin {age,
//   volBefore, volAfter} of a TIPSY curve's commercial thin, or null), species (the codes of the
//   VDYP species columns; empty for TIPSY), rows (per grid age: age, dia, ht, vol, mai, and
//   for VDYP speciesVol, one volume per species column)

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

#include "model/model.hpp"

namespace arborex::batch {

class JsonWriter;

// One HarvAge record as an inline JSON object, its keys in the order above.
void writeHarvAgeJson(JsonWriter& json, const HarvAgeRec& h);

// A VDYP species of the polygon that has a code: its slot 0..5 and the code.
struct SpeciesColumn {
    int16_t slot;
    std::string code;
};

// One grid age of a curve as the queries give it: cm, m, m3/ha, m3/ha/yr.
struct CurveRow {
    int16_t age = 0;
    float dia = 0.0f;
    float ht = 0.0f;
    float vol = 0.0f;
    float mai = 0.0f;
    std::vector<float> speciesVol;  // by species column; VDYP only
};

struct CurveTable {
    int16_t polygon = 0;
    int16_t model = 0;
    std::vector<SpeciesColumn> species;  // VDYP only
    std::vector<CurveRow> rows;
};

// "VDYP" or "TIPSY".
const char* curveModelName(int16_t model);

// Polygon `polygon`'s curve of `model` (0 or 1) at each grid age from YieldMinAge to
// YieldMaxAge in steps of YieldIncAge; no rows for a step of 0 or less. Throws ArborexError
// as the curve queries do.
CurveTable readCurve(const Model& m, int16_t polygon, int16_t model);

void writeAgesText(const Model& m, std::ostream& out);
void writeAgesJson(const Model& m, std::ostream& out);
void writeCurveText(const Model& m, const CurveTable& curve, std::ostream& out);
void writeCurveJson(const Model& m, const CurveTable& curve, std::ostream& out);

}  // namespace arborex::batch
