// The grid's imports: a data file of any kind (text through TxtToColumns, tables of other kinds
// through the database importer) and the classic format; and the classic export.

#include <QTableView>

#include "base/file_names.hpp"
#include "base/text.hpp"
#include "exchange/database_import.hpp"
#include "exchange/text_import.hpp"
#include "platform/gdal/gdal_table_reader.hpp"
#include "ui/busy_cursor.hpp"
#include "ui/frm_database.hpp"
#include "ui/frm_spreadsheet.hpp"
#include "ui/frm_spreadsheet_classic.hpp"

namespace arborex {

namespace {

constexpr const char* kImportTitle = "Import Data File";
// The older kinds first, as users know them; the kinds the table reader added follow.
constexpr const char* kImportFilter =
    "All Formats|*.xls;*.csv;*.txt;*.mdb;*.dbf;*.xlsx;*.ods;*.accdb;*.gpkg;*.shp"
    "|Excel (*.xls)|*.xls|Tab Delimited Text File (*.txt)|*.txt|Comma Delimited (*.csv)|*.csv"
    "|Access Database (*.mdb)|*.mdb|Database (*.dbf)|*.dbf"
    "|Excel 2007+ (*.xlsx)|*.xlsx|OpenDocument (*.ods)|*.ods|Access 2007+ (*.accdb)|*.accdb"
    "|GeoPackage (*.gpkg)|*.gpkg|Shapefile (*.shp)|*.shp";

}  // namespace

void frmSpreadsheet::mnuImport_Click() {
    closeEditor();
    FileRequest request;
    request.title = kImportTitle;
    request.filter = kImportFilter;
    request.folder = m_.Paths[UserDocuments];
    const std::optional<FileChoice> choice = host_.prompt.openFile(request);
    if (!choice || trim(choice->path).empty()) return;
    const std::string path = choice->path;
    if (!fileExists(path)) {
        host_.prompt.tell(kProgramTitle, "File Not Found");
        return;
    }
    const std::string dbfProblem = dbfNameProblem(path);
    if (!dbfProblem.empty()) {
        host_.prompt.tell(kProgramTitle, dbfProblem);
        return;
    }
    if (readsAsDatabase(importKindOf(path)))
        importDatabaseFile(path);
    else
        importTextFile(path);
}

void frmSpreadsheet::importTextFile(const std::string& path) {
    std::string TextBuffer;
    if (readImportFile(host_, path, kImportTitle, TextBuffer))
        runTextImport(TextBuffer, "TxtToColumns");
}

void frmSpreadsheet::runTextImport(const std::string& TextBuffer, const char* routine) {
    PolygonImport run;
    DupMode = run.DupMode = -1;
    {
        BusyCursor busy;
        ArrowCursorPrompt arrow(host_.prompt);
        Host host{arrow, host_.status, host_.settings, host_.views, host_.system};
        if (!guarded(routine, [&] { TxtToColumns(m_, host, TextBuffer, run); })) return;
    }
    DupMode = run.DupMode;
    afterImport();
}

void frmSpreadsheet::importDatabaseFile(const std::string& path) {
    std::unique_ptr<TableReader> reader = makeTableReader();
    bool imported = false;
    guarded("mnuImport_Click", [&] {
        frmDatabase importer(m_, host_, *reader, path, this);
        if (!importer.opened()) return;
        imported = importer.exec() == QDialog::Accepted;
    });
    if (imported) afterImport();
}

void frmSpreadsheet::mnuImportOld_Click() {
    closeEditor();
    if (importClassicFile(m_, host_)) afterImport();
}

void frmSpreadsheet::mnuExportOld_Click() {
    closeEditor();
    exportClassicFile(m_, host_);
}

}  // namespace arborex
