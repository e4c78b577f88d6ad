#pragma once
// The polygon screen's entry fields as the model sees them: how a typed text is clamped and
// stored, and how a stored value shows. The batch sets fields through the same rules.

#include <string>
#include <string_view>
#include <vector>

#include "base/prompt.hpp"
#include "model/model.hpp"

namespace arborex {

// The numeric entry fields of the polygon screen.
// clang-format off
enum class PolyField {
    AREA, AGE, ROADAREA, REGENDELAY,                    // txtPData(0..3)
    VSITEINDEX, VAGETOTAL, VHEIGHTTOTAL, CLOSURE, VAF,  // txtVData(0..3), (6)
    DENSITY, THINNED, TAGETOTAL, OAF1, OAF2,            // txtTData(0..4)
    NCRESTOCKIN, NCVOLHA, NCDECIDUOUS, NCHEIGHT,        // txtNC(1..4)
    NSRRESTOCKIN,                                       // txtNSR
    PCPERC, PCNEXT,                                     // txtPC(0..1)
    HAR1, HAR2,                                         // txtHar(0..1)
    TG, TH, TI,  // txtTGW, txtTHeight, txtTSite (slot 0..4)
    VP, TP       // txtVPer (slot 0..5), txtTPer (0..4)
};
// clang-format on
struct FieldRef {
    PolyField field;
    int slot = 0;
};

// The commit of one field as its LostFocus does: the text clamped through minMax with the
// field's low, high (ROADAREA's high is the polygon's AREA, THINNED's DENSITY - 1) and
// decimals; text that is no number clamps to low, stores 0, or stores -1 for the fields with a
// project default, which also take -1 for text beginning with "["; stored as the field's type
// (float to i2 by rounding half to even, through the checked stores). TI of 0 tells the user
// "Warning: if SI = 0 you must enter a valid SIHeight and SIAge combination.  This will cause
// TIPSY to calculate an SI for you!". Returns the text the field shows now
// (polygonFieldText). VP/TP: whole percents 0..100.
std::string commitPolygonField(Model& m, Prompt& prompt, int polygon, FieldRef field,
                               const std::string& text);
// What the field shows for the polygon: the value in the field's decimals, or for a -1 in a
// field with a project default "[" + the setting + "]" (REGENDELAY, OAF1, OAF2, PCPERC,
// PCNEXT), or for HAR1/HAR2 at -1 the calculated harvest age in brackets when it exists, else
// "[TBA]".
std::string polygonFieldText(const Model& m, int polygon, FieldRef field);
// updateVSI / updateVCC: VSITEINDEX > 0 in "0.0", else "[" VSICALC "0.00" "]" when > 0, else
// "[TBA]"; CLOSURE and VCCCALC likewise with "0".
std::string vsiText(const Model& m, int polygon);
std::string vccText(const Model& m, int polygon);

// The batch's setter. KEY is the record field's name in capitals as in the variable
// catalogue: the commit fields above (AREA, ROADAREA, VSITEINDEX, HAR1, HAR2, TG1..TG5,
// TH1..5, TI1..5, VP1..6, TP1..5, ...) commit through commitPolygonField; the list and text
// fields (FIZ, OWNERSHIP, VUTILIZ, STOCKING, TUTILIZ, REGEN, EXISTINGMGNT, FUTUREMGNT, SILVI,
// THIN, PSYU, PSYUBLOCK, REGION, COMP, COMPL, NCDESC, VS1..6 with VSIDX bound through
// FindVSpecIdx, TS1..5 with TSIDX, VX1..6, COMTHIN, FERT ...) store as their type with their
// list's range (EXISTINGMGNT 0..3, FUTUREMGNT 0..1, SILVI/THIN/VX 0..1, OWNERSHIP within the
// ownership list). Returns false for an unknown key; a value out of a list's range throws
// ArborexError(ErrOverflow) before storing anything.
bool setPolygonValue(Model& m, Prompt& prompt, int polygon, std::string_view key,
                     const std::string& text);
// Every key setPolygonValue takes, for the batch's usage and errors.
std::vector<std::string> polygonValueKeys();

}  // namespace arborex
