#include "ui/frm_spreadsheet_classic.hpp"

#include "base/file_names.hpp"
#include "base/text.hpp"
#include "exchange/classic_csv.hpp"
#include "frame/error_handler.hpp"
#include "ui/busy_cursor.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "modExport";

}  // namespace

void exportClassicFile(Model& m, Host& host) {
    FileRequest request;
    request.title = "Export File";
    request.filter = "Tab Delimited (*.txt)|*.txt|Comma Delimited (*.csv)|*.csv";
    request.folder = m.Paths[UserDocuments];
    request.proposedName = m.Files[FileDisplayName];
    request.overwritePrompt = true;
    const std::optional<FileChoice> choice = host.prompt.saveFile(request);
    if (!choice || trim(choice->path).empty()) return;
    const char* delimiter = choice->filterIndex == 2 ? kClassicCommaWriter : kClassicTabDelimiter;
    BusyCursor busy;
    runGuarded(m, host, "ExportCSV", kModule, [&] { ExportCSV(m, choice->path, delimiter); });
}

bool importClassicFile(Model& m, Host& host) {
    FileRequest request;
    request.title = "Import Data File";
    request.filter = "Tab Delimited file (*.txt)|*.txt|Comma Seperated Values (*.csv)|*.csv";
    request.folder = m.Paths[UserDocuments];
    const std::optional<FileChoice> choice = host.prompt.openFile(request);
    if (!choice || trim(choice->path).empty()) return false;
    if (!fileExists(choice->path)) {
        host.prompt.tell(kProgramTitle, "File Not Found");
        return false;
    }
    const char delimiter = choice->filterIndex == 2 ? kClassicCommaReader : '\t';
    BusyCursor busy;
    ArrowCursorPrompt arrow(host.prompt);
    Host quietCursor{arrow, host.status, host.settings, host.views, host.system};
    PolygonImport run;
    runGuarded(m, host, "ImportOldCSV", kModule,
               [&] { ImportOldCSV(m, quietCursor, choice->path, delimiter, run); });
    return true;
}

}  // namespace arborex
