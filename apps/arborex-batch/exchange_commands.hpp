#pragma once
// Polygon data in and out without the data grid: import of a delimited, spreadsheet, database
// or GIS file into a project (made when it does not exist yet), export as the grid or the
// classic format writes it, and the tables and fields that a file shows the import.
//
// import JSON (keys in this order): project, file, route ("text" or "database"), table (the
// table read, database route only), columns (database route: per catalogue variable matched,
// {field, key}; then unmatched, the fields that name none), saved, created (true when the
// project was made by the import), polygons (LastPoly + 1 after it), counts (ImpAdded,
// ImpUpdated, ImpSkipped, ImpBlank, ImpNoName), messages (each refused value's message with
// how many times it came, most frequent first), notes (the other boxes, one line each).
// tables JSON: file, tables (per table: name, fields).

#include <iosfwd>
#include <string>
#include <vector>

namespace arborex::batch {

// import PROJECT FILE [--table NAME] [--duplicates skip|update] [--map FIELD=KEY]...
//        [--where FIELD=VALUE]... [--save OUT] [--json] [--quiet] [--data DIR]
// A wrong command line is a usage error (2); a FILE that cannot be read, or a PROJECT that
// cannot be loaded or saved, fails (1); a file the import refuses as a whole ("No Headerline
// found", "No Name field exists, can't import", ...) is refused (3) and nothing is written.
int runImport(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// export PROJECT OUT [--classic] [--advanced] [--quiet] [--data DIR]
int runExport(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// tables FILE [--json]: 1 when the file cannot be read.
int runTables(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// The three commands' part of --help.
std::string exchangeUsage();

}  // namespace arborex::batch
