// TIPSY's yield report. It is printed for people, not for programs, so each polygon's table is
// found by its marker words and read by column: rows on the curve's age grid become the TIPSY
// curve, and the first fall in volume is remembered as the commercial thin.

#include <array>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/input_file.hpp"
#include "base/messages.hpp"
#include "base/text.hpp"
#include "yield/tipsy_exchange.hpp"
#include "yield/tipsy_exchange_reading.hpp"

namespace arborex {

namespace {

using tipsy::columns;
using tipsy::fromColumn;
using tipsy::holds;

constexpr std::string_view kRule = "----------";

enum ThinField : std::size_t {
    ThinAge,
    ThinVolCut,
    ThinVolBefore,
    ThinVolAfter,
    ThinDiaBefore,
    ThinDiaAfter,
    ThinHtBefore,
    ThinHtAfter
};

// Lines of the report, with the end of the file known before the next read.
class ReportLines {
public:
    ReportLines(std::ifstream& in, const std::string& path) : in_(in), path_(path) {
        in_.seekg(0, std::ios::end);
        length_ = static_cast<double>(in_.tellg());
        in_.seekg(0, std::ios::beg);
    }
    bool atEnd() { return in_.peek() == std::ifstream::traits_type::eof(); }
    std::string next() {
        std::string line;
        if (!readTextLine(in_, line)) throw ArborexError(ErrInputPastEnd, path_);
        return line;
    }
    // How far through the file the reading is, counted in the 128-byte blocks of a sequential
    // file, as the screen has always shown it ("37%").
    std::string progressLabel() {
        const auto blocks = static_cast<double>(static_cast<long long>(in_.tellg()) / 128);
        return formatNumber(blocks * 12800.0 / length_, "0") + "%";
    }

private:
    std::ifstream& in_;
    const std::string& path_;
    double length_ = 0.0;
};

class TipsyReport {
public:
    TipsyReport(Model& m, ReportLines& lines) : m_(m), lines_(lines) {
        rowCounts_.assign(static_cast<std::size_t>(m.LastPoly + 1), 0);
    }

    void readVersion() {
        lines_.next();
        lines_.next();
        m_.Header.TIPSYVersion = trim(fromColumn(lines_.next(), 64));
        lines_.next();
    }

    // One header and, when it names a polygon, its table.
    void readBlock() {
        bool found = false;
        std::string line;
        while (!lines_.atEnd()) {
            line = lines_.next();
            scanHeaderLine(line, found);
            if (holds(line, kRule)) break;
        }
        if (lines_.atEnd() || poly_ == -1) return;
        line = lines_.next();
        mgmt().TIPSYCACHE[ThinAge] = 0;
        maiAdd_ = 0.0f;
        volNow_ = 0;
        while (!holds(line, kRule) && !lines_.atEnd()) {
            readRow(line);
            line = lines_.next();
        }
    }

    // Complete tables hold every grid age once, or the grid and two more rows; anything else
    // read for a polygon means the report stopped inside it.
    void reportIncomplete(Prompt& prompt) const {
        const int whole = m_.Settings.YieldRows[1] + 1;
        int complete = 0;
        int incomplete = -1;
        for (std::size_t p = 0; p < rowCounts_.size(); ++p) {
            const int count = rowCounts_[p];
            if (count == whole || count == whole + 2)
                ++complete;
            else if (count != 0)
                incomplete = static_cast<int>(p);
        }
        if (incomplete < 0) return;
        prompt.tell("ERROR Importing TIPSY",
                    "The TIPSY file ended unexpectedly.  Not all yield curves are upto date.\r\n"
                    "\r\n" +
                        formatNumber(complete, "0") +
                        " polygons completed successfully.\r\nError occurred while importing: " +
                        m_.Poly.at(static_cast<std::size_t>(incomplete)).NAME.str() + "\r\n\r\n" +
                        GetMessage(m_.Messages, "&TIPSYERR"),
                    Icon::Critical);
    }

private:
    void scanHeaderLine(const std::string& line, bool& found) {
        const std::string upper = toUpper(line);
        if (holds(upper, "SITE INDEX =") && !found) {
            si_ = toF4(tolerantNumber(trim(line.substr(line.find('=') + 1))));
            found = true;
        }
        if (holds(upper, "TOP HEIGHT") && !found) {
            // An actual top height is printed further right than a projected one.
            si_ = toF4(tolerantNumber(holds(line, "Actual") ? columns(line, 51, 57)
                                                            : columns(line, 38, 44)));
            found = true;
        }
        if (holds(line, "TABLE   :")) poly_ = tipsy::polygonIndex(fromColumn(line, 55));
    }

    void readRow(const std::string& line) {
        const int16_t age = toI2(tolerantNumber(columns(line, 1, 6)));
        const int16_t volPrev = volNow_, htPrev = htNow_, diaPrev = diaNow_;
        volNow_ = tenths(columns(line, 7, 13));
        htNow_ = tenths(columns(line, 23, 29));
        diaNow_ = tenths(columns(line, 15, 21));

        std::array<int16_t, 8>& thin = mgmt().TIPSYCACHE;
        if (volNow_ < volPrev && thin[ThinAge] == 0) {
            const int16_t removed = toI2(volPrev - volNow_);
            thin[ThinHtBefore] = htPrev;
            thin[ThinHtAfter] = htNow_;
            thin[ThinDiaBefore] = diaPrev;
            thin[ThinDiaAfter] = diaNow_;
            thin[ThinVolBefore] = volPrev;
            thin[ThinVolAfter] = volNow_;
            thin[ThinVolCut] = toI2(removed / 10.0);
            thin[ThinAge] = age;
            // The removed volume counts toward MAI at the rate of the thin's age for the rest
            // of the table, not spread over each later age.
            maiAdd_ = quotient(quotient(removed, 10.0), age);
        }

        const ProjectSettings& grid = m_.Settings;
        const int16_t offset = toI2(age - grid.YieldMinAge[1]);
        const int idx = static_cast<int>(roundHalfEven(quotient(offset, grid.YieldIncAge[1])));
        // Rows between grid ages serve the thin test only. A thin on a grid age prints that age
        // twice, and the later row, after the thin, is the one that stays.
        if (idx >= 0 && idx <= grid.YieldRows[1] && offset % grid.YieldIncAge[1] == 0) {
            ++rowCounts_.at(static_cast<std::size_t>(poly_));
            YieldRow& row = m_.TYield(poly_, idx);
            row.Vol = volNow_;
            row.Dia = diaNow_;
            row.Ht = htNow_;
            row.Mai = age != 0 ? quotient(quotient(row.Vol, 10.0), age) + maiAdd_ : 0.0f;
        }
        PolyData& poly = polygon();
        poly.TSICALC = si_;
        poly.YIELDSTATE[1] = 2;
    }

    static int16_t tenths(std::string_view field) { return toI2(tolerantNumber(field) * 10.0); }

    PolyData& polygon() { return m_.Poly.at(checkedPolygon()); }
    PolyMgmt& mgmt() { return m_.PolyM.at(checkedPolygon()); }
    // A report may name a polygon the project does not hold.
    std::size_t checkedPolygon() const {
        if (poly_ < 0 || poly_ > m_.LastPoly) throw ArborexError(ErrSubscript);
        return static_cast<std::size_t>(poly_);
    }

    Model& m_;
    ReportLines& lines_;
    std::vector<int> rowCounts_;
    int16_t poly_ = 0;
    float si_ = 0.0f;
    float maiAdd_ = 0.0f;
    int16_t volNow_ = 0, htNow_ = 0, diaNow_ = 0;
};

}  // namespace

void ImportTIPSY2(Model& m, Host& host, const std::string& path, const ImportProgress& progress) {
    std::ifstream in;
    if (OpenInputFile(host, path, "Importing TIPSY2 Data File", in) < 0) return;
    ReportLines lines(in, path);
    TipsyReport report(m, lines);
    report.readVersion();
    while (!lines.atEnd()) {
        if (progress) progress(lines.progressLabel());
        report.readBlock();
    }
    in.close();
    report.reportIncomplete(host.prompt);
}

}  // namespace arborex
