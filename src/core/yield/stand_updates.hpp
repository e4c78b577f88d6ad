#pragma once
// Updates of many polygons at once, on the polygons picked in the summary list: target harvest
// ages moved by one of the harvest age methods, and the silviculture system (clearcut or partial
// cut). The screens "Harvest Age" and "Silviculture System" and the batch share these routines;
// none of them recomputes the harvest ages afterwards, the caller runs UpdateYields.

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/prompt.hpp"
#include "model/model.hpp"

namespace arborex {

// The key of a polygon's row in the summary list: "PG" + the index.
std::string summaryRowKey(int polygon);

// The polygons of the selected rows, in row order. A row counts when it is selected, its key
// has at least 3 characters and starts with "PG"; the polygon is the number after "PG". Other
// rows (the total) are passed over.
std::vector<int16_t> selectedPolygons(const std::vector<std::pair<std::string, bool>>& rows);

// What lblStatus says of the selection: that none is selected, the one polygon's name, or the
// count. `settingsName` is "Harvest Age" or "Silviculture".
std::string selectionStatus(const Model& m, const std::vector<int16_t>& selection,
                            const std::string& settingsName);

// The ways of setting a new target harvest age, by cmbMethod's index.
extern const std::array<const char*, 11> kHarvestAgeMethods;
inline constexpr int16_t kMethodDefaultAge = 8;

// Moves the target harvest age of every management of polygon p served by curve model t (0
// VDYP, 1 TIPSY: the model, not the rotation) by `method` and `amount`. A polygon whose curve is
// not imported (YIELDSTATE below 2) or has no volume at the top of its grid is left alone;
// otherwise its curve counts as current (YIELDSTATE 3). Unless `ignoreCriteria`, no new target
// comes in below the harvest criteria (ConstraintAge); the default age (-1) is never raised.
// The HarvAge records must be current (calcAllCutAges). A target beyond 16 bits throws
// ArborexError(ErrOverflow).
void AdjustHarvest(Model& m, int16_t t, int16_t p, int16_t amount, int16_t method,
                   bool ignoreCriteria);

// The choices of the "Harvest Age" screen: updateVdyp is chkYld(0), updateTipsy chkYld(1).
struct HarvestAgeUpdate {
    int16_t method = 0;
    int16_t amount = 0;
    bool updateVdyp = false;
    bool updateTipsy = false;
    bool ignoreCriteria = false;
};

// The harvest ages of both models worked out afresh, then AdjustHarvest on each selected
// polygon for each model asked for. An empty selection changes nothing.
void updateHarvestAges(Model& m, const std::vector<int16_t>& selection,
                       const HarvestAgeUpdate& update);

// The choices of the "Silviculture System" screen; -1 in a field takes the project's value.
struct SilviUpdate {
    bool partialCut = false;
    int16_t SetPCPerc = -1;
    int16_t SetPCNext = -1;
};

// What the screen starts from: the first selected polygon's system and partial cut fields, or
// clearcut with the project's values when nothing is selected.
SilviUpdate silviculturePreset(const Model& m, const std::vector<int16_t>& selection);

// A typed partial cut field (index 0 the percent removed, 1 the re-entry period): a number not
// in brackets is clamped to 1..50 or 10..999 in whole units; anything else is -1, the project's
// value.
int16_t partialCutFieldValue(int index, std::string_view text);
// What the field shows for a value: the plain number, or for -1 the project's value in brackets.
std::string partialCutFieldText(const Model& m, int index, int16_t value);

// Sets the silviculture system of each selected polygon. A partial cut puts both managements on
// VDYP and needs a current VDYP curve: a polygon without one is left as it was. Returns the
// names of those left, trimmed, each followed by a line break; empty when none.
std::string updateSilviculture(Model& m, const std::vector<int16_t>& selection,
                               const SilviUpdate& update);

inline constexpr const char* kNoVdypTitle = "No VDYP Avaliable?";
inline constexpr const char* kNoVdypText =
    "Partial cut will not be used on these polygons because they do not contain a current VDYP "
    "yield curve.";
// Tells the user which polygons were refused a partial cut; nothing when `refused` is empty.
void tellPartialCutRefused(Prompt& prompt, const std::string& refused);

}  // namespace arborex
