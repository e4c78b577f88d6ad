// The database route of the import.

#include "exchange/database_import.hpp"

namespace arborex {

void PathFileExt(const std::string& path, std::string& folder, std::string& name,
                 std::string& extension) {
    folder = name = extension = {};
    name = path;
}

ImportKind importKindOf(const std::string&) {
    return ImportKind::Unknown;
}
bool readsAsDatabase(ImportKind) {
    return false;
}
std::string dbfNameProblem(const std::string&) {
    return {};
}
ColumnMatch matchColumns(const std::vector<std::string>& fields) {
    ColumnMatch match;
    match.fields = fields;
    match.ColumnOf.fill(-1);
    return match;
}
std::string tableDisplayName(const std::string& table) {
    return table;
}
bool GetColumnHeader(TableReader&, Prompt&, const std::string&, const TableChooser&,
                     DatabaseImport&) {
    return false;
}
std::vector<ColumnRow> columnRows(const ColumnMatch&, bool) {
    return {};
}
bool ImportData(Model&, Host&, TableReader&, const DatabaseImport&, PolygonImport&,
                const std::function<void(int)>&) {
    return false;
}

}  // namespace arborex
