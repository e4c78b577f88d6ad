#pragma once
// TIPSYout.dat, the printed report of yield tables, and TIPSYout.err, its error report.
//
// The report: three title lines (the third with the version from column 64), a rule, then per
// polygon a header block ending in a rule of hyphens, the table rows and a closing rule. In the
// block, "TABLE   :" carries the polygon number from column 55 and "SITE INDEX =" the site
// index. A row holds the age in columns 1-6, volume 7-13, diameter 15-21, height 23-29 and MAI
// 31-37. A reader looks for these words and columns, so no other line of a block may hold them.
//
// The error report: five title lines, then one line per message with the record in columns
// 1-16, the polygon number in columns 28-33 and from column 43 the kind ("ERROR:" or
// "WARNING") and text. A message too long for one line goes on in one continuation line, blank
// in columns 1-40. Every message line is longer than 50 characters.

#include <string>
#include <vector>

#include "btipsy/tipsy_record.hpp"
#include "btipsy/tipsy_table.hpp"

namespace arborex::btipsy {

// The batch interface answered is that of TIPSY 3.2m, the version whose curves a project keeps
// on loading; another version would mark every TIPSY curve out of date when the project opens.
inline constexpr const char* kVersion = "3.2m";

std::vector<std::string> reportTitle(const std::string& inputName);
std::vector<std::string> tableBlock(const ManagedStand& stand, const YieldTable& table);

std::vector<std::string> errorTitle(const std::string& inputName);
std::vector<std::string> errorLines(const Message& message);

}  // namespace arborex::btipsy
