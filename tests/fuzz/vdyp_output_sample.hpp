#pragma once
// VDYP output lines as the model lays them out (right-aligned numbers at the columns of the
// output definition), and a small project to read them into.

#include <cstdio>
#include <string>
#include <vector>

#include "support/small_project.hpp"

namespace arborex::test {

// One table row: map sheet, polygon number, age, crown closure 55, site index 18.25, diameter
// age / 2, species volumes age + slot / 10, height age / 4, MAI 1.234 and `volume`.
inline std::string vdypRow(int polygonNumber, int age, double volume,
                           const char* mapSheet = "Arborex") {
    char line[160];
    const double a = age;
    std::snprintf(line, sizeof line,
                  "%-7s %3d  %3d %3d  %5.2f   %7.1f  %7.1f  %7.1f  %7.1f  %7.1f  %7.1f  %7.1f  "
                  "%4.1f  %7.3f  %7.1f",
                  mapSheet, polygonNumber, age, 55, 18.25, a / 2, a, a + 0.1, a + 0.2, a + 0.3,
                  a + 0.4, a + 0.5, a / 4, 1.234, volume);
    return line;
}

// `text` laid over columns first .. first + width - 1 of `line`, right-aligned.
inline std::string withField(std::string line, std::size_t first, std::size_t width,
                             const std::string& text) {
    const std::string field =
        std::string(width > text.size() ? width - text.size() : 0, ' ') + text.substr(0, width);
    line.replace(first - 1, width, field);
    return line;
}

// The rows of `polygonNumber` for ages from..to, volume twice the age.
inline std::vector<std::string> vdypTable(int polygonNumber, int from, int to) {
    std::vector<std::string> rows;
    for (int age = from; age <= to; ++age) rows.push_back(vdypRow(polygonNumber, age, 2.0 * age));
    return rows;
}

// A whole output file: version line, markers and the tables of polygons 1 to 3 on the
// 0..4 grid of vdypProject, lines ending in CR LF.
inline std::string vdypOutput() {
    std::string text = "VDYP7 Console Version: 7.17a\r\n";
    for (int polygon = 1; polygon <= 3; ++polygon) {
        text += "^^^^^^\r\n";
        for (const std::string& row : vdypTable(polygon, 0, 4)) text += row + "\r\n";
        text += "VVVVVV\r\n";
    }
    return text;
}

// Appends a polygon that follows the project's settings, its curves current.
inline void appendNamed(Model& m, const std::string& name) {
    PolyData data;
    PolyCalc calc;
    PolyMgmt mgmt;
    projectFollowingPolygon(data, calc, mgmt);
    data.NAME = name;
    data.YIELDSTATE = {3, 3};
    appendPolygon(m, data, calc, mgmt);
}

// Polygons "P1", "P2", "P3" on a VDYP grid of ages 0 to 4 (five rows), curves cleared as the
// export leaves them.
inline Model vdypProject() {
    Model m = smallProject({"P1", "P2", "P3"});
    for (PolyData& d : m.Poly) d.YIELDSTATE[0] = 0;
    return m;
}

}  // namespace arborex::test
