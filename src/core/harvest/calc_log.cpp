#include "harvest/calc_log.hpp"

#include <algorithm>
#include <string>

#include "base/dates.hpp"
#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/file_names.hpp"

namespace arborex {

namespace {

constexpr const char* kLogName = "log.txt";
constexpr const char* kRule = "--------------------------";
// Every line of the log ends the same way; kept in one place.
constexpr const char* kLineEnd = "\n";

void writeLine(std::ofstream& out, const std::string& line) {
    out << line << kLineEnd;
    if (!out) throw ArborexError(ErrPathFileAccess, kLogName);
}

// A stand's age for the log, held to the curve table's ages.
int loggedAge(int16_t year, const Block& block) {
    return std::clamp(static_cast<int>(year) - block.StandYear, 0, kExpandedTopAge);
}

float volumePerHa(const CalcSession& s, const Block& block, int age) {
    const CurveAge& row = curveAt(s.run.Yields, block.Curve).Age[static_cast<std::size_t>(age)];
    return row.ConVol + row.DecVol;
}

float areaLeft(const Block& block) {
    const float uncut = 1.0f - block.CutFraction;
    return uncut * block.Area;
}

}  // namespace

void openCalcLog(CalcSession& s) {
    if (!s.m.LogMode) return;
    const std::string& folder = s.m.Paths[UserDocuments];
    // An older log is replaced, whatever the case of its name.
    std::string path = findFileNoCase(folder, kLogName);
    if (path.empty()) path = folder + kLogName;
    auto file = std::make_unique<std::ofstream>(path, std::ios::binary | std::ios::trunc);
    if (!file->is_open()) throw ArborexError(ErrPathFileAccess, path);
    const double now = dateNow();
    writeLine(*file, "ARBOREX CALCULATION LOG File");
    writeLine(*file, s.m.Files[FileDisplayName]);
    writeLine(*file, formatDate(now, "Long Date") + " - " + formatDate(now, "Long Time"));
    writeLine(*file, kRule);
    s.run.LogFile = std::move(file);
}

void addtolog(CalcSession& s, int16_t year, int16_t block) {
    if (!s.run.LogFile || !s.run.LogFile->is_open()) return;
    const auto& blocks = s.m.Calc.BlockList;
    const Block& b = blocks[block];
    const Block& n = blocks[b.NextBlock];
    if (b.Polygon < 0 || static_cast<std::size_t>(b.Polygon) >= s.m.Poly.size())
        throw ArborexError(ErrSubscript, "Poly");
    const int ageB = loggedAge(year, b);
    const int ageN = loggedAge(year, n);
    std::string line = std::to_string(year);
    line += "," + s.m.Poly[static_cast<std::size_t>(b.Polygon)].NAME.str();
    line += "," + formatNumber(areaLeft(b), "0.000");
    line += "," + formatNumber(areaLeft(n), "0.000");
    line += "," + formatNumber(volumePerHa(s, b, ageB), "0.0");
    line += "," + formatNumber(volumePerHa(s, n, ageN), "0.0");
    line += "," + formatNumber(ageB, "0");
    line += "," + formatNumber(ageN, "0");
    writeLine(*s.run.LogFile, line);
}

void closeCalcLog(CalcSession& s) {
    if (!s.m.LogMode || !s.run.LogFile) return;
    // Taken out first, so that the log counts as closed even when a write fails.
    const std::unique_ptr<std::ofstream> file = std::move(s.run.LogFile);
    writeLine(*file, kRule);
    writeLine(*file, "EOF");
    file->close();
}

}  // namespace arborex
