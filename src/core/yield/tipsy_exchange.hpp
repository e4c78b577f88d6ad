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
void CreateBTPfile(const BtpFile& btp, const std::string& path);  // > 256 chars: ArborexError
bool tipsyDue(const Model& m, int polygon, bool recalcAll);
int ExportTIPSY(Model& m, const std::string& path, bool recalcAll);
std::vector<std::string> tipsyArguments(const Model& m);  // {"Arborex2.btp"} + "/NO_UI" if SHOWUI 0
void ImportTIPSY2(Model& m, Host& host, const std::string& path, const ImportProgress& progress);
ErrorCounts LoadTIPSYError(const Model& m, Prompt& prompt, const std::string& path,
                           std::vector<PostItem>& post);

}  // namespace arborex
