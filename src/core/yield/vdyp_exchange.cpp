#include "yield/vdyp_exchange.hpp"

#include <algorithm>
#include <filesystem>

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/file_names.hpp"
#include "base/input_file.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "model/curve_clear.hpp"
#include "yield/vdyp_exchange_columns.hpp"
#include "yield/work_files.hpp"

namespace arborex {

namespace vdyp {

std::ofstream createWorkFile(const std::string& path) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out.is_open()) throw ArborexError(ErrPathFileAccess, path);
    return out;
}

std::string findOutput(const std::string& path) {
    const std::filesystem::path p(path);
    std::string folder = p.parent_path().string();
    if (!folder.empty()) folder += '/';
    return findFileNoCase(folder, p.filename().string());
}

}  // namespace vdyp

namespace {

void writeLine(std::ofstream& out, const std::string& line) {
    out << line << "\r\n";
}

// The model finds each input field by the column and width given here, and writes its output
// where the second block says; the two blocks differ in PolygonNumber's column, and the model
// expects exactly that.
void writeInputDefinition(std::ofstream& out, const ProjectSettings& s) {
    static const char* const kFields[] = {
        "       MapSheet             Character            1     7",
        "       PolygonNumber        Integer              10    3",
        "       Age                  Integer              14    3",
        "       Height               Float                18    2   0",
        "       SiteIndex            Float                21    4   1",
        "       Species1             Character            26    2",
        "       Species1Percent      Float                29    3   0",
        "       Species2             Character            33    2",
        "       Species2Percent      Float                36    3   0",
        "       Species3             Character            40    2",
        "       Species3Percent      Float                43    3   0",
        "       Species4             Character            47    2",
        "       Species4Percent      Float                50    3   0",
        "       Species5             Character            54    2",
        "       Species5Percent      Float                57    3   0",
        "       Species6             Character            61    2",
        "       Species6Percent      Float                64    3   0",
        "       CrownClosure         Float                68    3   0",
        "       Fiz                  Character            72    1",
        "       STOCKINGCLASS        Character            74    1",
        "       PSYU                 Integer              76    4",
    };
    writeLine(out, "InLineDef");
    for (const char* field : kFields) writeLine(out, field);
    if (s.VDYPPSYUB == 1) {
        writeLine(out, "       PSYUBLOCK            Character            81    1");
        writeLine(out, "       Utilizationlevel     Float                83    4   1");
        writeLine(out, "       VolumeAdjustmentFactor  Float             88    4   2");
    } else {
        writeLine(out, "       Utilizationlevel     Float                81    4   1");
        writeLine(out, "       VolumeAdjustmentFactor  Float             86    4   2");
    }
    // The age grid travels with every run, so the model's rows fall on the curve's steps.
    writeLine(out, "       StartAge             ConstantInteger      " +
                       formatNumber(s.YieldMinAge[0], "0"));
    writeLine(out, "       FinishAge            ConstantInteger      " +
                       formatNumber(s.YieldMaxAge[0], "0"));
    writeLine(out, "       AgeIncrement         ConstantInteger      " +
                       formatNumber(s.YieldIncAge[0], "0"));
    writeLine(out, "EndLineDef");
    writeLine(out, "");
    writeLine(out, "");
}

void writeOutputDefinition(std::ofstream& out, const ProjectSettings& s) {
    writeLine(out, "OutLineDef");
    writeLine(out, "       MapSheet             Character            1     7");
    writeLine(out, "       PolygonNumber        Integer              9     3");
    writeLine(out, "       CurrentAge           Integer              14    3");
    writeLine(out, "       CrownClosure         Float                18    3    0");
    writeLine(out, "       SiteIndex            Float                23    5    2");
    writeLine(out, "       AirDiameter          Float                31    7    1");
    if (s.YIELDMODE != 0) {
        for (int slot = 0; slot < 6; ++slot)
            writeLine(out, "       NetAirVolSpc" + std::to_string(slot + 1) +
                               "        Float                " + std::to_string(40 + 9 * slot) +
                               "    7    1");
    }
    writeLine(out, "       Height               Float                94    4    1");
    writeLine(out, "       MAI                  Float                100   7    3");
    writeLine(out, "       NetAirVolume         Float                109   7    1");
    writeLine(out, "EndLineDef");
    writeLine(out, "");
    writeLine(out, "");
}

void writeErrorDefinition(std::ofstream& out) {
    writeLine(out, "ErrorLineDef");
    writeLine(out, "       ErrorMsgType         Character            1     -11");
    writeLine(out, "       MapSheet             Character            14      7");
    writeLine(out, "       PolygonNumber        Integer              23      3");
    writeLine(out, "       LrecordNumber        Integer              29      3");
    writeLine(out, "       ErrorMsg             Character            34   -150");
    // The model takes the block's opening word, not "EndLineDef", as the end of this one.
    writeLine(out, "ErrorLineDef");
}

// Lays `text` over `record` from 1-based `column`, cut to `width` and to the record's end.
void lay(std::string& record, std::size_t column, std::size_t width, std::string_view text) {
    const std::size_t at = column - 1;
    if (at >= record.size()) return;
    const std::size_t count = std::min({width, text.size(), record.size() - at});
    record.replace(at, count, text.substr(0, count));
}

// One input record. The record is 90 columns and stays so: in the PSYU block layout VAF starts
// at column 88 and keeps its first three characters.
std::string inputRecord(const Model& m, int polygon) {
    const PolyData& d = m.Poly.at(static_cast<std::size_t>(polygon));
    std::string record(90, ' ');
    lay(record, 1, 8, "Arborex");
    // Three columns: past polygon 999 the number loses its last digits.
    lay(record, 10, 3, formatNumber(polygon + 1, "0"));
    lay(record, 14, 3, formatNumber(d.VAGETOTAL, "0"));
    lay(record, 18, 2, formatNumber(d.VHEIGHTTOTAL, "0"));
    lay(record, 21, 4, formatNumber(d.VSITEINDEX, "0.0"));
    for (std::size_t s = 0; s < 6; ++s) {
        const std::size_t column = 26 + 7 * s;
        if (d.VP[s] != 0) lay(record, column, 2, d.VS[s].raw());
        lay(record, column + 3, 3, formatNumber(d.VP[s], "0"));
    }
    lay(record, 68, 3, formatNumber(d.CLOSURE, "0"));
    lay(record, 72, 1, d.FIZ.raw());
    lay(record, 74, 1, d.STOCKING.raw());
    lay(record, 76, 4, formatNumber(d.PSYU, "0"));
    if (m.Settings.VDYPPSYUB == 1) {
        lay(record, 81, 1, d.PSYUBLOCK.raw());
        lay(record, 83, 4, formatNumber(d.VUTILIZ, "0.0"));
        lay(record, 88, 4, formatNumber(d.VAF, "0.00"));
    } else {
        lay(record, 81, 4, formatNumber(d.VUTILIZ, "0.0"));
        lay(record, 86, 4, formatNumber(d.VAF, "0.00"));
    }
    // Codes read from older files may hold NULs, which the model must not see.
    std::replace(record.begin(), record.end(), '\0', ' ');
    return record;
}

}  // namespace

bool vdypDue(const Model& m, int polygon, bool recalcAll) {
    if (polygon < 0 || polygon > m.LastPoly) throw ArborexError(ErrSubscript);
    const PolyData& d = m.Poly.at(static_cast<std::size_t>(polygon));
    if (m.PolyC.at(static_cast<std::size_t>(polygon)).DELETE != 0) return false;
    if (d.MGNT[0] != 0 && d.MGNT[1] != 0) return false;
    return d.YIELDSTATE[0] < 3 || recalcAll;
}

void CreateFormatV(const Model& m, const std::string& path) {
    std::ofstream out = vdyp::createWorkFile(path);
    writeInputDefinition(out, m.Settings);
    writeOutputDefinition(out, m.Settings);
    writeErrorDefinition(out);
    if (!out) throw ArborexError(ErrPathFileAccess, path);
}

int ExportVDYP(Model& m, const std::string& path, bool recalcAll) {
    std::ofstream out = vdyp::createWorkFile(path);
    int written = 0;
    for (int p = 0; p <= m.LastPoly; ++p) {
        if (!vdypDue(m, p, recalcAll)) continue;
        // The old curve goes now, whether or not the model delivers a new one.
        clearVYield(m, static_cast<int16_t>(p));
        writeLine(out, inputRecord(m, p));
        ++written;
    }
    if (!out) throw ArborexError(ErrPathFileAccess, path);
    return written;
}

std::vector<std::string> vdypArguments(const Model& m) {
    std::vector<std::string> arguments = {"-I",         kVdypInFile, "-O",
                                          kVdypOutFile, "-E",        kVdypErrorFile};
    if (m.Settings.ALTWBS == 1) {
        const std::string& work = m.Paths[UserTemp];
        if (findFileNoCase(work, kAltWbsFile).empty()) {
            const std::string installed = m.Paths[ArborexFolder] + "VDYP/";
            std::string source = findFileNoCase(installed, kAltWbsFile);
            if (source.empty()) throw ArborexError(ErrFileNotFound, installed + kAltWbsFile);
            std::error_code ec;
            std::filesystem::copy_file(source, work + kAltWbsFile, ec);
            if (ec) throw ArborexError(ErrPathFileAccess, work + kAltWbsFile);
        }
        arguments.insert(arguments.end(), {"-WBS", kAltWbsFile});
    }
    arguments.insert(arguments.end(), {"-BATCHPROCESS", kLineDefFile});
    return arguments;
}

ErrorCounts LoadVDYPError(const Model& m, const std::string& path, std::vector<PostItem>& post) {
    ErrorCounts counts;
    const std::string found = vdyp::findOutput(path);
    if (found.empty()) return counts;
    std::ifstream in(found, std::ios::binary);
    if (!in.is_open()) throw ArborexError(ErrPermissionDenied, found);
    std::string line;
    while (readTextLine(in, line)) {
        if (line.size() < 34) continue;
        const std::string kind = toUpper(trim(vdyp::columns(line, 1, 8)));
        if (kind == "WARNING") {
            ++counts.warnings;
        } else if (kind == "ERROR") {
            ++counts.errors;
        } else {
            continue;
        }
        const double n = roundHalfEven(tolerantNumber(trim(vdyp::columns(line, 23, 4))) - 1.0);
        const std::string text = trim(vdyp::columnsFrom(line, 34));
        if (n == -1.0) {
            post.push_back({"Arborex\t\t" + text, -1});
            continue;
        }
        if (n < 0.0 || n > m.LastPoly) throw ArborexError(ErrSubscript, line);
        const int polygon = static_cast<int>(n);
        post.push_back(
            {m.Poly.at(static_cast<std::size_t>(polygon)).NAME.str() + "\t" + text, polygon});
    }
    return counts;
}

}  // namespace arborex
