#pragma once
// The one process-wide model: the open project and the frame's own state. Routines take it by
// reference; a polygon is one index, valid in every per-polygon array at once.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/messages.hpp"
#include "model/calc_state.hpp"
#include "model/records.hpp"
#include "model/reference_tables.hpp"
#include "model/yield_grid.hpp"

namespace arborex {

inline constexpr const char* kReleaseDate = "March 29, 2007";
inline constexpr const char* kReleaseNumber = "3.226";
// kReleaseDate, " - ", kReleaseNumber, "Release", joined.
inline constexpr const char* kProgramStamp = "March 29, 2007 - 3.226Release";
inline constexpr int16_t kCurrentFileVersion = 3226;
inline constexpr const char* kProgramTitle = "Arborex for Windows";

enum PathIndex : int {
    ArborexFolder = 0,
    UserTemp = 1,
    UserDocuments = 2,
    DefaultUserDocuments = 3
};

enum FileIndex : int {
    FileVDYPexe = 0,
    FileTIPSYexe,
    FileVDYPhelp,
    FileTIPSYhelp,
    FileManual,
    FileChartex,
    FileBTP,
    FileEditorWord,
    FileEditorExcel,
    FileEditorText,
    FileEditorImage,
    FileWebPage,
    FileProject,
    FileLastReport,
    FileDisplayName,
    FileCount
};

struct Model {
    // The project.
    ProjectHeader Header;
    ProjectSettings Settings;
    ReportOptions Report;
    int16_t LastPoly = -1;  // highest polygon index, -1 for none
    int16_t CurPoly = -1;   // polygon on screen, -1 for none
    std::vector<PolyData> Poly;
    std::vector<PolyCalc> PolyC;
    std::vector<PolyMgmt> PolyM;
    YieldGrid<YieldRow> VYield;
    YieldGrid<MixRow> VMix;
    YieldGrid<YieldRow> TYield;
    std::vector<std::array<HarvAgeRec, 2>> HarvAge;  // by polygon, then curve model
    std::vector<int16_t> CutOrder;
    std::vector<int16_t> CutOrderKey;
    int16_t CutOrderLast = -1;
    CalcState Calc;

    // Scratch and default polygons. OldPoly* hold the polygon on screen as it was when shown
    // (or last confirmed), so that leaving it can tell what the user changed.
    PolyData NewPoly, DefaultPoly, OldPoly;
    PolyCalc NewPolyC, DefaultPolyC, OldPolyC;
    PolyMgmt NewPolyM, DefaultPolyM, OldPolyM;

    // Where things are.
    std::array<std::string, 4> Paths;
    std::array<std::string, FileCount> Files;

    // What the last load found.
    bool OldFormat = false;   // the file predates the current layout: curves need recalculating
    bool NewTIPSY = false;    // the TIPSY curves came from another TIPSY version
    bool OldVersion = false;  // the file was written by another program version
    bool LoadGood = false;

    // The frame.
    MessageCatalogue Messages;
    ReferenceTables Ref;
    int16_t MsgResult = 0;     // the button last pressed on the message screen (MsgButton)
    std::string HelpTag;       // the polygon screen's current help tag
    int16_t SHOWUI = 0;        // 1 shows TIPSY's own screens during batch runs
    int16_t LaunchEditor = 1;  // 1 opens a written report in its editor
    std::string RunId;
    bool LogMode = false;
    std::array<std::string, 4> LastFiles;  // recent projects, 0 the newest
};

// Back to an empty project: no polygon, fresh header, empty calculation state.
void ResetVars(Model& m);
// One empty element in every polygon and yield array, yield rows sized from YieldRows.
void EmptyArrays(Model& m);
// ProjectSettings and report options to the program's defaults; also SetAgeInc.
void SetDefaults(Model& m);
// ResetVars, SetDefaults and the default colours: the model as the program holds it before
// any user setting, reference table or project is read. For front ends without the start-up.
void programDefaults(Model& m);
// YieldRows from the curve bounds (integer division). Throws on a zero step or overflow.
void SetAgeInc(Model& m);
// All per-polygon and yield arrays to `count` polygons, contents kept, new elements zeroed.
// Does not touch LastPoly.
void ResizePolygonArrays(Model& m, int count);
// The calculation state to its empty values.
void ResetCalcState(Model& m);

}  // namespace arborex
