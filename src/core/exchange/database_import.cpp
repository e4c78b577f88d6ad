// The database route of the import.

#include "exchange/database_import.hpp"

#include <algorithm>
#include <optional>

#include "base/text.hpp"
#include "exchange/text_import.hpp"

namespace arborex {

namespace {

struct KindOfExtension {
    const char* extension;
    ImportKind kind;
};

constexpr KindOfExtension kKinds[] = {
    {"csv", ImportKind::Text},         {"txt", ImportKind::Text},
    {"dat", ImportKind::Text},         {"mdb", ImportKind::Access},
    {"accdb", ImportKind::Access},     {"dbf", ImportKind::DBase},
    {"xls", ImportKind::Excel},        {"xlsx", ImportKind::Excel},
    {"ods", ImportKind::OpenDocument}, {"gpkg", ImportKind::GeoPackage},
    {"shp", ImportKind::Shapefile},    {"gdb", ImportKind::FileGeodatabase},
    {"geojson", ImportKind::GeoJSON},
};

// A File Geodatabase is a folder, often chosen with its separator at the end.
std::string withoutTrailingSeparators(std::string path) {
    while (path.size() > 1 && (path.back() == '/' || path.back() == '\\')) path.pop_back();
    return path;
}

bool matchesKey(std::string_view field, std::string_view key) {
    return !key.empty() && equalsNoCase(field, key);
}

int variableOfField(const std::string& field) {
    const auto& catalogue = SetupVars();
    for (auto keyOf : {&Variable::VarKey, &Variable::VarAlt1, &Variable::VarAlt2})
        for (int v = 0; v < kVariableCount; ++v)
            if (matchesKey(field, catalogue[static_cast<std::size_t>(v)].*keyOf)) return v;
    return -1;
}

using Cell = std::optional<std::string>;

const Cell& cellAt(const TableReader::Record& record, int column) {
    static const Cell none;
    if (column < 0 || static_cast<std::size_t>(column) >= record.size()) return none;
    return record[static_cast<std::size_t>(column)];
}

// The record's name: NAME when not null, else map sheet and polygon number when both columns
// exist, else the map stand, else empty.
std::string recordName(const ColumnMatch& match, const TableReader::Record& record) {
    if (const Cell& name = cellAt(record, match.ColumnOf[kNameVariable])) return *name;
    if (match.MapColumn >= 0 && match.PolyColumn >= 0)
        return mapsheetPolygonName(cellAt(record, match.MapColumn).value_or(""),
                                   cellAt(record, match.PolyColumn).value_or(""));
    if (match.StandColumn >= 0) return cellAt(record, match.StandColumn).value_or("");
    return {};
}

struct ReadRecord {
    TableReader::Record cells;  // Latin-1
    int percent = 0;
};

// The whole table first, so that a file failing halfway changes nothing.
std::vector<ReadRecord> readTable(TableReader& reader, const DatabaseImport& db) {
    std::vector<ReadRecord> records;
    reader.readRecords(db.path, db.ImportTable,
                       [&](const TableReader::Record& record, double done) {
                           ReadRecord read;
                           read.percent = static_cast<int>(std::clamp(done, 0.0, 1.0) * 100.0);
                           for (const Cell& cell : record)
                               read.cells.push_back(cell ? Cell(latin1FileText(*cell)) : Cell());
                           records.push_back(std::move(read));
                           return true;
                       });
    return records;
}

bool allNull(const TableReader::Record& record) {
    return std::none_of(record.begin(), record.end(), [](const Cell& c) { return c.has_value(); });
}

}  // namespace

void PathFileExt(const std::string& path, std::string& folder, std::string& name,
                 std::string& extension) {
    const std::size_t slash = path.find_last_of("/\\");
    folder = slash == std::string::npos ? std::string() : path.substr(0, slash);
    const std::string file = slash == std::string::npos ? path : path.substr(slash + 1);
    const std::size_t point = file.rfind('.');
    name = point == std::string::npos ? file : file.substr(0, point);
    extension = point == std::string::npos ? std::string() : file.substr(point + 1);
}

ImportKind importKindOf(const std::string& path) {
    std::string folder, name, extension;
    PathFileExt(withoutTrailingSeparators(path), folder, name, extension);
    for (const auto& [known, kind] : kKinds)
        if (equalsNoCase(extension, known)) return kind;
    return ImportKind::Unknown;
}

bool readsAsDatabase(ImportKind kind) {
    return kind != ImportKind::Unknown && kind != ImportKind::Text;
}

std::string dbfNameProblem(const std::string& path) {
    std::string folder, name, extension;
    PathFileExt(path, folder, name, extension);
    if (!equalsNoCase(extension, "dbf")) return {};
    if (name.size() >= 9) return "DBF filenames must be shorter then 8 chars";
    if (name.find(' ') != std::string::npos) return "DBF filenames can't contain spaces";
    return {};
}

ColumnMatch matchColumns(const std::vector<std::string>& fields) {
    ColumnMatch match;
    match.fields = fields;
    match.ColumnOf.fill(-1);
    for (std::size_t i = 0; i < fields.size(); ++i) {
        const auto column = static_cast<int16_t>(i);
        const std::string field = trim(fields[i]);
        if (equalsNoCase(field, "MAPSHEET") || equalsNoCase(field, "MAP_ID"))
            match.MapColumn = column;
        else if (equalsNoCase(field, "MAPSTAND"))
            match.StandColumn = column;
        else if (equalsNoCase(field, "POLYGON") || equalsNoCase(field, "POLYGON_ID"))
            match.PolyColumn = column;
        const int variable = variableOfField(field);
        if (variable >= 0)
            match.ColumnOf[static_cast<std::size_t>(variable)] = column;
        else
            match.UnmatchedFields.push_back(fields[i]);
    }
    return match;
}

std::string tableDisplayName(const std::string& table) {
    std::string name = latin1FileText(table);
    name.erase(std::remove(name.begin(), name.end(), '$'), name.end());
    return name;
}

bool GetColumnHeader(TableReader& reader, Prompt& prompt, const std::string& path,
                     const TableChooser& choose, DatabaseImport& db) {
    db = DatabaseImport{};
    db.path = path;
    if (importKindOf(path) == ImportKind::Unknown) {
        std::string folder, name, extension;
        PathFileExt(path, folder, name, extension);
        prompt.tell(kProgramTitle,
                    name + (extension.empty() ? "" : "." + extension) + " - Type not recognized");
        return false;
    }
    try {
        const std::vector<std::string> tables = reader.tables(path);
        if (tables.empty()) {
            prompt.tell(kProgramTitle, "No Sheets Found");
            return false;
        }
        int chosen = 0;
        if (tables.size() > 1 && choose) {
            std::vector<std::string> names;
            for (const std::string& table : tables) names.push_back(tableDisplayName(table));
            chosen = choose(names);
            if (chosen < 0 || static_cast<std::size_t>(chosen) >= tables.size()) return false;
        }
        db.ImportTable = tables[static_cast<std::size_t>(chosen)];
        std::vector<std::string> fields = reader.fields(path, db.ImportTable);
        for (std::string& field : fields) field = latin1FileText(field);
        db.match = matchColumns(fields);
    } catch (const TableReadError& failure) {
        prompt.tell(kProgramTitle, latin1FileText(failure.what()));
        return false;
    }
    return true;
}

std::vector<ColumnRow> columnRows(const ColumnMatch& match, bool showAdvanced) {
    std::vector<ColumnRow> rows;
    const auto& catalogue = SetupVars();
    for (int v = 0; v < kVariableCount; ++v) {
        const int field = match.ColumnOf[static_cast<std::size_t>(v)];
        if (field < 0 && !showAdvanced) continue;
        const Variable& variable = catalogue[static_cast<std::size_t>(v)];
        rows.push_back({std::string(variable.VarKey),
                        field < 0 ? std::string() : match.fields[static_cast<std::size_t>(field)],
                        std::string(variable.VarDesc), v, field});
    }
    for (const std::string& unmatched : match.UnmatchedFields) {
        const auto at = std::find(match.fields.begin(), match.fields.end(), unmatched);
        rows.push_back({{},
                        unmatched,
                        kNoMatchingVariable,
                        -1,
                        static_cast<int>(std::distance(match.fields.begin(), at))});
    }
    return rows;
}

bool ImportData(Model& m, Host& host, TableReader& reader, const DatabaseImport& db,
                PolygonImport& run, const std::function<void(int percent)>& progress) {
    const ColumnMatch& match = db.match;
    if (match.ColumnOf[kNameVariable] < 0 && match.StandColumn < 0 &&
        (match.MapColumn < 0 || match.PolyColumn < 0)) {
        host.prompt.tell(kProgramTitle, "No Name field exists, can't import");
        return false;
    }
    std::vector<ReadRecord> records;
    try {
        records = readTable(reader, db);
    } catch (const TableReadError& failure) {
        host.prompt.tell(kProgramTitle, latin1FileText(failure.what()));
        return false;
    }
    run.counts = {};
    run.messages.clear();
    const auto& catalogue = SetupVars();
    if (progress) progress(0);
    for (const ReadRecord& record : records) {
        const std::string name = trim(recordName(match, record.cells));
        if (allNull(record.cells) || name.empty()) {
            ++run.counts.ImpBlank;
        } else {
            importRecord(m, host.prompt, run, name, [&] {
                // The name is already set; the other matched variables follow in catalogue order.
                for (int v = kNameVariable + 1; v < kVariableCount; ++v) {
                    const Cell& cell = cellAt(record.cells, match.ColumnOf[std::size_t(v)]);
                    if (cell) importCell(m, run, catalogue[std::size_t(v)].VarKey, *cell);
                }
            });
            if (!run.messages.empty()) {
                host.prompt.tell(kProgramTitle, run.messages);
                run.messages.clear();
            }
        }
        if (progress) progress(record.percent);
    }
    if (progress) progress(100);
    finishImport(m, host, run);
    return true;
}

}  // namespace arborex
