#pragma once
// The written report of a project: six numbered sections with tables, as Rich Text for a word
// processor or as tab-separated plain text, from the project, its curves and the tables of the
// last calculation.

#include <string>

namespace arborex {

struct Model;

enum class ReportFormat { RTF, TXT };

// What the report takes from outside the project.
struct ReportContext {
    double today = 0.0;        // day count of the report's date; 0 takes the clock
    float hanzlikRate = 0.0f;  // the session's Hanzlik rate, m3/yr (not kept in the project)
};

// The program's own version text, as the report's version line shows it.
inline constexpr const char* kReportProgramVersion = "3.2.26";

// Writes the report to `path`, through a temporary file renamed into place, so that a failure
// leaves a former file as it was. Failures throw ArborexError.
void createReport(const Model& m, ReportFormat format, const std::string& path,
                  const ReportContext& context = {});

// The project's path as report text: backslashes doubled for Rich Text, trimmed either way.
std::string FixSlash(const std::string& path, ReportFormat format);

}  // namespace arborex
