#pragma once
// The classic delimited format of polygon data: a fixed column list written by ExportCSV and
// read, with the older titles it once had, by ImportOldCSV.
//
// The writer separates comma cells by ", " while the reader splits at "," alone and trims each
// field; both sides of that asymmetry are kept, since files in circulation have it.

#include <string>
#include <string_view>
#include <vector>

#include "base/host.hpp"
#include "exchange/polygon_import.hpp"
#include "model/model.hpp"

namespace arborex {

inline constexpr const char* kClassicTabDelimiter = "\t";
inline constexpr const char* kClassicCommaWriter = ", ";
inline constexpr char kClassicCommaReader = ',';

// The titles ExportCSV writes, in order.
const std::vector<std::string>& classicColumns();

// The whole file ExportCSV writes: the titles, then a line per polygon, each value followed by
// `delimiter` but the last; lines end with CR LF.
std::string classicCsvText(const Model& m, std::string_view delimiter);
// Writes classicCsvText to `path`, replacing it. Throws ArborexError when it cannot.
void ExportCSV(const Model& m, const std::string& path, std::string_view delimiter);

// ImportOldCSV on a file's text (`path` only names it in messages). A first line of fewer
// than 3 titles, or without NAME and without MAPSHEET or POLYGON, stops before anything
// changes. Each following line of more than 3 fields is a polygon, named by its NAME, or its
// map sheet, a blank and its polygon number; a blank name is counted and skipped; duplicates
// follow the run's DupMode (asked once). Values go through ImportItem by title; "UTILIZ" sets
// both utilisation levels, "PC" makes a partial cut; other titles are listed once. Ends with
// finishImport. Returns false when the title line was refused.
bool importOldCsvText(Model& m, Host& host, std::string_view text, char delimiter,
                      const std::string& path, PolygonImport& run);
// The same on a file; false also when it cannot be opened (the user told).
bool ImportOldCSV(Model& m, Host& host, const std::string& path, char delimiter,
                  PolygonImport& run);

}  // namespace arborex
