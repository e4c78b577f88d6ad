#pragma once
// The polygon and project records. Field names follow the variable catalogue's keys; widths
// are those of the project file: int16_t for i2, int32_t for i4, float for f4, double for f8.
// Every -1 sentinel means "the project setting applies, taken at the moment of use".

#include <array>
#include <cstdint>

#include "base/text.hpp"

namespace arborex {

using Code2 = FixedString<2>;

// One polygon's inventory and management choices.
struct PolyData {
    FixedString<12> NAME;
    float AREA = 0.0f;
    int16_t AGE = 0;
    float VUTILIZ = 0.0f;
    FixedString<1> FIZ;
    float VSITEINDEX = 0.0f;
    int16_t VAGETOTAL = 0;
    int16_t VHEIGHTTOTAL = 0;
    int16_t CLOSURE = 0;
    int16_t PSYU = 0;
    FixedString<1> PSYUBLOCK;
    float VAF = 0.0f;
    FixedString<1> STOCKING;
    std::array<Code2, 6> VS{};
    std::array<int16_t, 6> VSIDX{};
    std::array<int16_t, 6> VP{};
    float VSICALC = 0.0f;
    float TSICALC = 0.0f;
    FixedString<2> REGION;
    FixedString<3> COMP;
    FixedString<1> COMPL;
    int32_t DENSITY = 0;
    int32_t THINNED = 0;
    int16_t THIN = 0;
    int16_t TAGETOTAL = 0;
    int16_t REGEN = 0;
    int16_t OAF1 = 0;
    int16_t OAF2 = 0;
    std::array<Code2, 5> TS{};
    std::array<int16_t, 5> TP{};
    std::array<int16_t, 5> TSIDX{};
    std::array<int16_t, 5> TH{};
    std::array<int16_t, 5> TI{};
    int16_t SILVI = 0;
    int16_t PCPERC = 0;
    int16_t PCNEXT = 0;
    std::array<int16_t, 2> HAR{};         // [0] existing (HAR1), [1] future (HAR2); -1 = calculate
    std::array<int16_t, 2> MGNT{};        // [0] EXISTINGMGNT 0..3, [1] FUTUREMGNT 0..1
    std::array<int16_t, 2> YIELDSTATE{};  // by curve model: 0 cleared .. 3 current
};

// Calculation flags and per-polygon harvest criteria.
struct PolyCalc {
    int16_t SORT = 0;
    int16_t LISTROW = 0;
    int16_t EXCLUDE = 0;
    int16_t DELETE = 0;
    int16_t CALCFLAG = 0;
    int16_t OWNERSHIP = 0;
    int16_t REGENDELAY = 0;
    std::array<int16_t, 6> VX{};
    float VCCCALC = 0.0f;
    int16_t CALCA = 0;
    int16_t CALCB = 0;
    std::array<float, 2> MINCUTVOL{};
    std::array<float, 2> MINCUTDBH{};
    std::array<int16_t, 2> MINCUTAGE{};
};

// Future management: roads, NC and NSR restocking, TIPSY treatments.
struct PolyMgmt {
    float ROADAREA = 0.0f;
    float TUTILIZ = 0.0f;
    int16_t NSRRESTOCKIN = 0;
    int16_t NCRESTOCKIN = 0;
    FixedString<32> NCDESC;
    float NCVOLHA = 0.0f;
    int16_t NCDECIDUOUS = 0;
    int16_t NCHEIGHT = 0;
    std::array<int16_t, 5> TG{};
    int16_t COMTHIN = 0;
    int16_t CTSTEMHA = 0;
    float CTHEIGHT = 0.0f;
    // ThinAge, ThinVolCut, ThinVolBefore, ThinVolAfter, ThinDiaBefore, ThinDiaAfter,
    // ThinHtBefore, ThinHtAfter, as found in the TIPSY table.
    std::array<int16_t, 8> TIPSYCACHE{};
    int16_t FERT = 0;
    float FINCREASE = 0.0f;
    int16_t FINCTYPE = 0;
    int16_t FSTARTYEAR = 0;
};

// One row of a yield curve: diameter, volume and height in tenths, MAI in m3/ha/yr.
struct YieldRow {
    int16_t Dia = 0;
    int16_t Vol = 0;
    int16_t Ht = 0;
    float Mai = 0.0f;
};

// Shares of the polygon's six VDYP species at one row of the VDYP curve.
using MixRow = std::array<int16_t, 6>;

// Harvest age of one polygon under one curve model (0 VDYP, 1 TIPSY).
struct HarvAgeRec {
    int16_t MaiAge = 0;
    int16_t VolAge = 0;
    int16_t DiaAge = 0;
    int16_t ConstraintAge = 0;
    int16_t HarvestAge = 0;
    float MaxMAI = 0.0f;
};

struct ProjectHeader {
    FixedString<32> FileStamp;
    FixedString<32> Licence;
    FixedString<32> District;
    FixedString<32> Company;
    FixedString<32> User;
    FixedString<32> Scenario;
    FixedString<16> VDYPVersion;
    FixedString<16> TIPSYVersion;
    double StartDate = 0.0;  // day count from 30 December 1899
    double LastDate = 0.0;
    int16_t FileVersion = 0;
};

// Colours of screens and graphs, in the order of the COLORS settings keys.
enum ColourKey : int {
    ColAGE,
    ColDIA,
    ColVOL,
    ColMAI,
    ColMATURE,
    ColIMATURE,
    ColAMATURE,
    ColAIMATURE,
    ColHMATURE,
    ColHIMATURE,
    ColNMATURE,
    ColNIMATURE,
    ColMATURED,
    ColIMATURED,
    ColAMATURED,
    ColAIMATURED,
    ColHMATURED,
    ColHIMATURED,
    ColNMATURED,
    ColNIMATURED,
    ColourCount
};

struct ProjectSettings {
    int16_t REGENDELAY = 0;
    int16_t PCNETDOWN = 0;
    int16_t PLANHORZ = 0;
    float MINVOL = 0.0f;
    float MINDIA = 0.0f;
    int16_t MINAGE = 0;
    int16_t OAF1 = 0;
    int16_t OAF2 = 0;
    int16_t PCperc = 0;
    int16_t PCnext = 0;
    float PCADJUSTFACT = 0.0f;
    int16_t PCADJUSTHARVAGE = 0;
    float SPLIT = 0.0f;
    int16_t VDYPPSYUB = 0;
    int16_t TIPSYSITE = 0;
    int16_t TIPSYHEIGHT = 0;
    int16_t NETMAI = 0;
    int16_t USERLEVEL = 0;
    int16_t YIELDMODE = 0;
    std::array<int16_t, 2> YieldMaxAge{};  // by curve model
    std::array<int16_t, 2> YieldMinAge{};
    std::array<int16_t, 2> YieldIncAge{};
    std::array<int16_t, 2> YieldRows{};  // highest row index, from SetAgeInc
    int16_t YIELDINC = 0;
    std::array<double, 10> OldColors{};  // colours as older files keep them
    int16_t ALTWBS = 0;
    std::array<int32_t, ColourCount> COLORS{};
    // Bytes the file reserves between fields; kept so that a round trip changes nothing.
    std::array<int16_t, 3> reserved1{};  // settings block offsets 30, 38, 48
    std::array<int16_t, 3> reserved2{};  // second block offsets 0, 4, 86
};

// The periodic report's settings; booleans are -1 for true.
struct ReportOptions {
    int16_t RptIncrement = 1;
    int16_t RptShowPoly = -1;
    int16_t RptAddRow = 0;
    int16_t RptTotal = 0;
    int16_t RptIncAvg = 0;
    int16_t RptExcel = -1;
    int16_t RptPrompt = -1;
};

}  // namespace arborex
