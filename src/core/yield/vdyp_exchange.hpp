#pragma once
// The exchange with VDYP, the growth model of natural stands: the line-definition and input
// files written for it, its output read into the VDYP curves, and its error file read into the
// run's message list. All files are fixed-column text with CR LF line ends.

#include <string>
#include <vector>

#include "base/host.hpp"
#include "model/model.hpp"
#include "yield/post_list.hpp"

namespace arborex {

// Due for VDYP: live, MGNT[0] or MGNT[1] is 0, and YIELDSTATE[0] < 3 or recalcAll.
bool vdypDue(const Model& m, int polygon, bool recalcAll);
void CreateFormatV(const Model& m, const std::string& path);        // linedef.txt
int ExportVDYP(Model& m, const std::string& path, bool recalcAll);  // returns records written
// "-I vdypin.dat -O vdypout.dat -E ERROR.TXT [-WBS ALTWBS.DAT] -BATCHPROCESS linedef.txt" as a
// list; with ALTWBS 1 also copies Paths[0] + "VDYP/ALTWBS.DAT" into Paths[1] when missing.
std::vector<std::string> vdypArguments(const Model& m);
void ImportVDYP(Model& m, Host& host, const std::string& path, const ImportProgress& progress);
ErrorCounts LoadVDYPError(const Model& m, const std::string& path, std::vector<PostItem>& post);
// updateVDYPmix lives in yield/polygon_changes.hpp already.

}  // namespace arborex
