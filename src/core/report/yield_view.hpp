#pragma once
// The yield table view without its drawing: one polygon's curve of one model as table rows, the
// three lines and the age markers of its picture, the labels of its harvest criteria, and the
// commits of the fields in which the user sets the polygon's criteria and target age.
//
// The picture's units: x counts grid steps from YieldMinAge (one unit per YieldIncAge years),
// y runs from 0 at the top to 100 at the bottom, and each line uses 95 of it, scaled by its own
// maximum. Colours are as COLORS stores them (red + 256 green + 65536 blue).

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/prompt.hpp"
#include "model/model.hpp"

namespace arborex {

// What the view shows: the polygon (-1 none), its curve model t (0 VDYP, 1 TIPSY), and the
// management r whose target age HAR[r] it edits (-1 when it edits none: the target is then the
// calculated age).
struct YieldView {
    int16_t YieldPoly = -1;
    int16_t YieldModel = 0;
    int16_t YieldMgnt = 0;
};

// The view of management r of a polygon: its model MGNT[r]. Only managements 0 (VDYP) and
// 1 (TIPSY) have a curve; any other throws ErrSubscript.
YieldView yieldViewOf(const Model& m, int16_t polygon, int16_t management);
// The first management whose model is t, or -1 when neither management uses it.
int16_t managementOfModel(const Model& m, int16_t polygon, int16_t t);

inline constexpr const char* kYieldNotCalculated = "YIELD Not Calculated yet for this polygon";
inline constexpr const char* kNotAvailable = "N/A";
// The palette's yellow, the target age's marker.
inline constexpr int32_t kTargetMarkerColour = 255 + 256 * 255;

// What is on view, above the graph: "Polygon " + trimmed NAME + " - VDYP curve, existing
// management" (or TIPSY, future); empty without a polygon.
std::string yieldViewTitle(const Model& m, const YieldView& view);

// A polygon is on view and its curve of the model was calculated (YIELDSTATE 1 or more).
bool yieldCalculated(const Model& m, const YieldView& view);

// ---- The table -------------------------------------------------------------------------------

struct YieldTable {
    std::vector<std::string> heads;
    std::vector<std::vector<std::string>> rows;
};
// "Age", "DBH", "Height", "Vol/Ha", "MAI", and "Vol(1)".."Vol(6)" when MGNT[t] is 0 and
// YIELDMODE is set; one row per grid age that is a multiple of YIELDINC. No rows without a
// polygon. YIELDINC 0 fails as the division does.
YieldTable yieldTable(const Model& m, const YieldView& view);
// mnuCopyTable and mnuExportCSV: heads and rows, cells joined by `separator` (tab, or ", "),
// each line ended by CR LF.
std::string yieldTableText(const YieldTable& table, std::string_view separator);

// ---- The picture -----------------------------------------------------------------------------

struct YieldLine {
    int32_t colour = 0;
    std::vector<std::pair<double, double>> points;  // picture units
};
struct YieldMarker {
    double x = 0.0;
    int32_t colour = 0;
};
struct YieldTick {
    double x = 0.0;
    std::string label;  // the age
};
struct YieldPicture {
    double width = 1.0;            // grid steps from YieldMinAge to YieldMaxAge (at least 1)
    std::string message;           // kYieldNotCalculated when nothing is drawn
    std::vector<YieldLine> lines;  // volume, diameter, MAI, those whose maximum is above 0
    std::string caution;           // "VOLUME,", "DIAMETER,", "MAI," of the lines left out
    std::vector<YieldTick> ticks;  // ages along the bottom
};
YieldPicture yieldPicture(const Model& m, const YieldView& view);
// "Caution " + list + " = 0 "; shown through the prompt when the list is not empty.
std::string cautionText(const std::string& list);
void showCaution(Prompt& prompt, const std::string& list);

// updateGraph's vertical markers, in drawing order: the target (palette yellow), DiaAge (DIA),
// VolAge (VOL), the minimum age of the criteria (AGE) and MaiAge (MAI). None when the curve is
// not calculated. An age the curve never meets (999) lies beyond the picture's right edge.
std::vector<YieldMarker> yieldMarkers(const Model& m, const YieldView& view);

// picGraph_MouseDown's age at picture x: YieldIncAge * x + YieldMinAge, rounded half to even.
int16_t yieldAgeAt(const Model& m, int16_t t, double x);

// ---- The labels ------------------------------------------------------------------------------

// The numbers behind the labels (also the batch's curve fields).
struct YieldFigures {
    float siteIndex = 0.0f;  // VSICALC for VDYP, TSICALC for TIPSY
    HarvAgeRec ages;         // HarvAge(p, t)
    int16_t minimumAge = 0;  // MINCUTAGE[t], or MINAGE at -1
    int16_t targetAge = 0;   // HAR[r], or HarvestAge at -1
    float targetDbh = 0.0f;  // FindDia and FindVol at the target age
    float targetVol = 0.0f;
    bool thinned = false;  // a commercial thin is in the TIPSY curve (COMTHIN 1, ThinAge > 0)
    int16_t thinAge = 0;
    float thinVolBefore = 0.0f;  // m3/ha
    float thinVolAfter = 0.0f;
};
YieldFigures yieldFigures(const Model& m, const YieldView& view);

// The label texts: site index "0.0", MAI at culmination "0.00", ages "0", dbh and volume at the
// target and the thin's volumes "0.0". All "N/A" when the curve is not calculated; the thin's
// also when there is none.
struct YieldLabels {
    std::string siteIndex, maiAge, maxMai, diaAge, volAge, constraintAge, harvestAge;
    std::string targetDbh, targetVol;
    std::string thinAge, thinVolBefore, thinVolAfter;
};
YieldLabels yieldLabels(const Model& m, const YieldView& view);

// ---- The fields ------------------------------------------------------------------------------

// txtFindAge(index): 0 MINCUTDBH[t], 1 MINCUTVOL[t], 2 MINCUTAGE[t]; the polygon's value, or
// the project's in brackets when it is -1.
std::string findAgeText(const Model& m, const YieldView& view, int index);
// txtHarvestRate: HAR[r] in "0", or HarvestAge in brackets at -1.
std::string harvestRateText(const Model& m, const YieldView& view);

// The commits; each returns what its field shows afterwards. A text that is a number and does
// not start with "[" is the polygon's own value; anything else returns to -1 (the project's
// value, or the calculated age). Without a polygon on view nothing changes.
// txtFindAge_LostFocus also runs CalcCutAge; the curve stays valid (YIELDSTATE untouched).
std::string txtFindAge_LostFocus(Model& m, const YieldView& view, int index, std::string_view text);
std::string txtHarvestRate_LostFocus(Model& m, const YieldView& view, std::string_view text);
// updnHarvestAge_UpClick (+1) and _DownClick (-1): a target of -1 first becomes the calculated
// age as it stands, with no step; a fixed target moves by the step.
std::string updnHarvestAge_Click(Model& m, const YieldView& view, int16_t step);
// picGraph_MouseDown: the target becomes the age at x. Returns that age, or nothing without a
// polygon on view.
std::optional<int16_t> picGraph_MouseDown(Model& m, const YieldView& view, double x);

}  // namespace arborex
