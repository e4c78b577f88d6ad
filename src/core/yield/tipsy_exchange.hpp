#pragma once
// The exchange with the TIPSY growth model: its batch file (.btp), the stand list it reads
// (TIPSYin.dat), the yield report it writes (TIPSYout.dat) and its error file (TIPSYout.err).

#include <array>
#include <string>
#include <vector>

#include "base/host.hpp"
#include "base/prompt.hpp"
#include "model/model.hpp"
#include "yield/post_list.hpp"

namespace arborex {

// A TIPSY batch file: a 32-byte header, four 256-byte path slots (NUL padded) and the rest of
// the file, which the system keeps byte for byte.
struct BtpFile {
    std::array<char, 32> header{};
    std::array<std::string, 4> paths;  // each as read: 256 characters, NULs included
    std::vector<char> tail;
};
BtpFile LoadBTPDefaults(const std::string& path);  // throws ArborexError (53, or 62 when short)
// Writes the header, each path trimmed of blanks and padded with NULs to 256 bytes, and the
// tail. Nothing is written when a path does not fit.
void CreateBTPfile(const BtpFile& btp, const std::string& path);  // > 256 chars: ArborexError
// Live, TIPSY serves the existing or the future management, and the curve is not current
// (YIELDSTATE[1] < 3) or recalcAll.
bool tipsyDue(const Model& m, int polygon, bool recalcAll);
// Clears the TIPSY curve of every polygon due and writes its 200-column record, lines ending
// in CR LF. Returns the records written.
int ExportTIPSY(Model& m, const std::string& path, bool recalcAll);
std::vector<std::string> tipsyArguments(const Model& m);  // {"Arborex2.btp"} + "/NO_UI" if SHOWUI 0
// Reads the yield report into TYield, TSICALC, YIELDSTATE[1] = 2 and the thin block
// (TIPSYCACHE), and Header.TIPSYVersion. A file that cannot be opened is told and nothing is
// read; a report that stops inside a table is told in a box, keeping what was read. A report
// shorter than its heading, a value beyond a 16-bit field or a polygon the project does not hold
// throws ArborexError. `progress` (may be empty) hears "37%" as the reading goes on.
void ImportTIPSY2(Model& m, Host& host, const std::string& path, const ImportProgress& progress);
// Appends the error file's messages to `post` and counts them; an absent file counts nothing.
// Lines of an unknown kind are shown in a box. A polygon number the project does not hold
// throws ArborexError.
ErrorCounts LoadTIPSYError(const Model& m, Prompt& prompt, const std::string& path,
                           std::vector<PostItem>& post);

}  // namespace arborex
