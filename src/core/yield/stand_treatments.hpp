#pragma once
// The TIPSY treatments of one polygon: commercial thinning and fertilization. Both are inputs
// that travel to TIPSY with the polygon; neither touches a curve. A thin also makes the stand
// pure, since TIPSY thins only one species, chosen by the forest inventory zone.

#include <array>
#include <cstdint>
#include <string>

#include "base/prompt.hpp"
#include "model/model.hpp"

namespace arborex {

// What TIPSY offers a commercial thin in one region of the province.
struct ThinZone {
    const char* species;                 // the pure species the stand becomes
    std::array<const char*, 3> heights;  // the heights at which the thin may start, m
    const char* information;             // why only that species
};

// FIZ "A", "B" or "C", in either case, is on the coast; every other zone is in the interior.
bool isCoastZone(const std::string& fiz);
const ThinZone& thinZone(const std::string& fiz);

// The commercial thin screen's fields.
struct CommThinFields {
    bool enabled = false;
    std::string density;  // txtDensity's text
    int height = 0;       // the selected item of the zone's heights
};

// Form_Load: upper-cases the polygon's FIZ and stores it back, then gives the fields as the
// polygon holds them. A height the zone does not offer selects the first one.
CommThinFields loadCommThin(Model& m, int polygon);
// txtDensity_LostFocus: 331 to 816 stems/ha, whole; text that is no number is 331.
std::string commThinDensityText(const std::string& typed);

enum class ThinResult { Off, Applied, Refused };
// cmdApply_Click. Unticked: COMTHIN 0, species kept. Ticked: COMTHIN 1, the density (clamped)
// and height stored, and the TIPSY species become 100% of the zone's pure species with rows
// 1..4 empty. When the species table lacks that species the zone's information text is shown
// through the prompt and the polygon is left as it was (Refused).
ThinResult applyCommThin(Model& m, Prompt& prompt, int polygon, const CommThinFields& fields);

// The fertilization screen's fields. `method` and `increase` are shown only; the stand gets
// the standard response, so Apply never stores them.
struct FertFields {
    bool enabled = false;
    int16_t method = 0;     // FINCTYPE: optMethod's index
    std::string increase;   // txtIncrease's text
    std::string startYear;  // txtStartYear's text
};

// Form_Load, txtIncrease's clamp included.
FertFields loadFert(const Model& m, int polygon);
// lblUnit for optMethod's index: "%", "m³/ha" or "m" (Latin-1); empty for any other index.
std::string fertUnit(int16_t method);
// txtIncrease_LostFocus: whole 1 to 50 for a percent, 1 to 15 for the other methods.
std::string fertIncreaseText(const std::string& typed, int16_t method);
// txtStartYear_LostFocus: whole 0 to 340.
std::string fertStartYearText(const std::string& typed);
// cmdApply_Click: FERT, and with fertilization on FSTARTYEAR (clamped); nothing else.
void applyFert(Model& m, int polygon, const FertFields& fields);

// After a treatment screen: when the thin, the fertilization or the TIPSY species differ from
// `before`, the TIPSY curve is out of date (polychanged's TIPSY mark) and true is returned.
// FIZ's upper-casing by the screen is no change of the stand here.
bool markTreatmentChange(Model& m, int polygon, PolyData before, const PolyMgmt& beforeM);

}  // namespace arborex
