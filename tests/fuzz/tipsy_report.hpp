#pragma once
// Hand-made TIPSY files for tests: a yield report laid out as the import reads it (table rows
// by column, tables between rules of hyphens, "TABLE   :" naming the polygon) and an error
// file, and a small project on a ten-year TIPSY grid of 0 to 100 to import them into.

#include <cstdio>
#include <initializer_list>
#include <string>
#include <vector>

#include "model/model.hpp"
#include "support/small_project.hpp"

namespace arborex::test {

// `text` from column `column` (1-based) of a line that is blank before it.
inline std::string atColumn(int column, const std::string& text, std::string line = {}) {
    line.resize(static_cast<std::size_t>(column - 1), ' ');
    return line + text;
}

inline std::string tipsyRule() {
    return "  " + std::string(64, '-');
}
inline std::string tipsyTableLine(int number) {
    return atColumn(55, std::to_string(number), "  TABLE   : managed stand yield");
}
inline std::string tipsySiteIndexLine(const std::string& value) {
    return "  Site Index = " + value + " m (breast height age 50)";
}
// A top height printed where TIPSY prints it: projected heights stand further left than actual.
inline std::string tipsyTopHeightLine(const std::string& value, bool actual) {
    return actual ? atColumn(51, value, "  TOP HEIGHT (m)    Actual")
                  : atColumn(38, value, "  Top height (m) projected");
}

// A table row: age in columns 1-6, volume 7-13, diameter 15-21, height 23-29.
inline std::string tipsyRow(double age, double volume, double diameter, double height) {
    char text[80];
    std::snprintf(text, sizeof text, "%6.0f%7.1f %7.1f %7.1f   stems  1200", age, volume, diameter,
                  height);
    return text;
}

struct TipsyTable {
    std::vector<std::string> header;
    std::vector<std::string> rows;
    bool closed = true;  // false: the report stops after the last row
};

// Ages 0 to 100 in steps of 10; volume 3 m3/ha a year, diameter 0.3 cm, height 0.25 m.
inline std::vector<std::string> tipsyGridRows() {
    std::vector<std::string> rows;
    for (int age = 0; age <= 100; age += 10)
        rows.push_back(tipsyRow(age, age * 3.0, age * 0.3, age * 0.25));
    return rows;
}
inline TipsyTable tipsyGridTable(int number, const std::string& siteIndex = "21.5") {
    return {{"  Managed stand", tipsySiteIndexLine(siteIndex), tipsyTableLine(number)},
            tipsyGridRows()};
}

inline std::string tipsyReport(const std::vector<TipsyTable>& tables,
                               const std::string& eol = "\r\n") {
    std::string out =
        "TIPSY batch report" + eol + eol +
        atColumn(64, "4.1d Batch", "  Table Interpretation Program for Stand Yields") + eol + eol;
    for (const TipsyTable& table : tables) {
        for (const std::string& line : table.header) out += line + eol;
        out += tipsyRule() + eol;
        for (const std::string& row : table.rows) out += row + eol;
        if (table.closed) out += tipsyRule() + eol + eol;
    }
    return out;
}

// A line of the error file: the polygon number in columns 28-33, the message from column 43.
inline std::string tipsyErrorLine(int polygonNumber, const std::string& message) {
    char number[8];
    std::snprintf(number, sizeof number, "%6d", polygonNumber);
    return atColumn(43, message, atColumn(28, number, "  TIPSY batch   record"));
}
// The rest of a long message, indented to column 41.
inline std::string tipsyContinuationLine(const std::string& text) {
    return atColumn(41, text);
}
inline std::string tipsyErrorFile(const std::vector<std::string>& lines) {
    std::string out =
        "TIPSY ERROR REPORT\r\n\r\nRun of the batch file\r\n\r\n"
        "  Program         Polygon   Message\r\n";
    for (const std::string& line : lines) out += line + "\r\n";
    return out;
}

// Polygons named as given, each due for TIPSY on both managements, on the grid 0-100 by 10.
inline Model tipsyProject(std::initializer_list<const char*> names) {
    Model m = smallProject(names);
    m.Settings.YieldMaxAge[1] = 100;
    SetAgeInc(m);
    m.TYield.resize(m.LastPoly + 1, m.Settings.YieldRows[1] + 1);
    for (PolyData& poly : m.Poly) {
        poly.MGNT = {1, 1};
        poly.YIELDSTATE = {3, 1};
    }
    return m;
}

}  // namespace arborex::test
