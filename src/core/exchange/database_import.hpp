#pragma once
// The database route of the import: spreadsheets, dBase, Access, GIS layers and text tables
// read through a TableReader, their fields matched to the variable catalogue and shown before
// the import, then every record set on a polygon through ImportItem.

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "base/host.hpp"
#include "base/table_reader.hpp"
#include "exchange/polygon_import.hpp"
#include "exchange/variable_catalogue.hpp"
#include "model/model.hpp"

namespace arborex {

// Splits a path on its last '/' or '\\' and the last '.' after it: the folder (without the
// separator), the base name and the extension (without the point). A missing part is empty.
void PathFileExt(const std::string& path, std::string& folder, std::string& name,
                 std::string& extension);

// What a file is, by its extension without regard to case.
enum class ImportKind {
    Unknown,
    Text,             // csv, txt, dat
    Access,           // mdb, accdb
    DBase,            // dbf
    Excel,            // xls, xlsx
    OpenDocument,     // ods
    GeoPackage,       // gpkg
    Shapefile,        // shp
    FileGeodatabase,  // gdb (a folder)
    GeoJSON,          // geojson
};
ImportKind importKindOf(const std::string& path);
// True for the kinds the import reads through the database screen rather than as text: every
// known kind but Text (the text route's own reader handles those on the grid's menu, while the
// database route still reads a text table when asked to, as the batch does).
bool readsAsDatabase(ImportKind kind);

// The dBase rules on a file name: "DBF filenames must be shorter then 8 chars" when the base
// name has more than eight characters, "DBF filenames can't contain spaces" when it holds a
// blank; empty when the name is acceptable or the file is not a .dbf.
std::string dbfNameProblem(const std::string& path);

// The table's fields matched to the catalogue (members of the database screen).
struct ColumnMatch {
    std::vector<std::string> fields;                 // the table's field names in order (Latin-1)
    std::array<int16_t, kVariableCount> ColumnOf{};  // field number per variable, -1 unmatched
    int16_t MapColumn = -1;                          // "MAPSHEET" or "MAP_ID"
    int16_t PolyColumn = -1;                         // "POLYGON" or "POLYGON_ID"
    int16_t StandColumn = -1;                        // "MAPSTAND"
    std::vector<std::string> UnmatchedFields;        // fields that name no variable, in order
};

// Matches each field (trimmed, without regard to case) by the name columns, then by VarKey,
// then VarAlt1, then VarAlt2; the first variable matched takes the field.
ColumnMatch matchColumns(const std::vector<std::string>& fields);

// The file opened for the import: its path, the table chosen and the matching of its fields.
struct DatabaseImport {
    std::string path;
    std::string ImportTable;  // as the reader names it
    ColumnMatch match;
};

// Asked when a file holds several tables: the names for display ("$" removed, Latin-1); returns
// the chosen index, or -1 to stop.
using TableChooser = std::function<int(const std::vector<std::string>& names)>;

// A table name as the chooser shows it: every "$" removed, in the core's Latin-1.
std::string tableDisplayName(const std::string& table);

// GetColumnHeader: the file's kind by its extension (other kinds: the file name and
// " - Type not recognized"), its tables through the reader ("No Sheets Found" for none, the
// one taken, the chooser asked for several), the fields of the table matched. A file the
// reader refuses is told with the reader's sentence. False when the import cannot go on; the
// user has been told (a chooser's -1 tells nothing).
bool GetColumnHeader(TableReader& reader, Prompt& prompt, const std::string& path,
                     const TableChooser& choose, DatabaseImport& db);

// A line of the list that shows the matching (lsvColumns: "Arborex", "File", "Description").
struct ColumnRow {
    std::string arborex;      // the catalogue key; empty for an unmatched field
    std::string file;         // the field's name; empty for a variable no field matched
    std::string description;  // VarDesc, or "No Matching Arborex Variable found"
    int variable = -1;        // catalogue index, -1 for an unmatched field
    int field = -1;           // field number, -1 for a variable no field matched
};
inline constexpr const char* kNoMatchingVariable = "No Matching Arborex Variable found";
inline constexpr const char* kColumnHeaders[3] = {"Arborex", "File", "Description"};

// The rows: each matched variable in catalogue order, or with `showAdvanced` every variable;
// then one per unmatched field.
std::vector<ColumnRow> columnRows(const ColumnMatch& match, bool showAdvanced);

// ImportData: reads the whole table, then imports each record in order. "No Name field
// exists, can't import" (nothing changed) when there is no NAME field, no map stand and not
// both a map sheet and a polygon number. A record's name is its non-null NAME, else the map
// sheet (last six characters) and the polygon number, else the map stand; an empty name is
// counted blank. Each non-null cell of a matched variable goes through ImportItem (text
// converted from UTF-8 to Latin-1); a record's messages are shown after it. `progress` gets
// 0..100 by the record's position. Ends with finishImport. A file that fails to read is told
// with the reader's sentence and changes nothing. `run` is cleared first but keeps DupMode.
bool ImportData(Model& m, Host& host, TableReader& reader, const DatabaseImport& db,
                PolygonImport& run, const std::function<void(int percent)>& progress = {});

}  // namespace arborex
