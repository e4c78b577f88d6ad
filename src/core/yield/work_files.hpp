#pragma once
// The files the growth models are driven through, all in the user's temporary folder
// (Paths[1]). The system writes and reads these names; readers of the models' outputs also
// find another case of the same name.

#include "model/model.hpp"

namespace arborex {

inline constexpr const char* kLineDefFile = "linedef.txt";
inline constexpr const char* kVdypInFile = "vdypin.dat";
inline constexpr const char* kVdypOutFile = "vdypout.dat";
inline constexpr const char* kVdypErrorFile = "ERROR.TXT";
inline constexpr const char* kAltWbsFile = "ALTWBS.DAT";
inline constexpr const char* kBtpFile = "arborex2.btp";
inline constexpr const char* kTipsyInFile = "TIPSYin.dat";
inline constexpr const char* kTipsyOutFile = "TIPSYout.dat";
inline constexpr const char* kTipsyErrorFile = "TIPSYout.err";
inline constexpr const char* kTipsyIniFile = "btipsy.ini";

// Deletes the models' and the graphs' work files from Paths[1], in any case of their names:
// before a yield run, and at the program's end. Nothing when Paths[1] is empty.
void deleteWorkFiles(const Model& m);

}  // namespace arborex
