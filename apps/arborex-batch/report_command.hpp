#pragma once
// The report command: the written report of a project's saved calculation, as the main screen's
// "Report" view writes it, without the screen.

#include <iosfwd>
#include <string>
#include <vector>

namespace arborex::batch {

// report PROJECT OUT.rtf|OUT.txt [--quiet] [--data DIR]
// The form follows OUT's extension (.rtf Rich Text, anything else plain text). A project without
// a saved calculation is refused (3) with one line, and nothing is written.
int runReport(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// The report command's part of --help.
std::string reportUsage();

}  // namespace arborex::batch
