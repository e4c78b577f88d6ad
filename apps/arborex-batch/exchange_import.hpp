#pragma once
// The import command's two routes and its report: a text file through TxtToColumns, any other
// kind through the database route with the command line's table and mapping, and what came in,
// what was refused and why, as text or JSON.

#include <cstdint>
#include <iosfwd>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "batch_host.hpp"
#include "exchange/polygon_import.hpp"
#include "model/model.hpp"

namespace arborex::batch {

// What the command line asks of an import, checked before anything is loaded.
struct ImportRequest {
    std::string project;
    std::string file;
    std::string saveTo;
    int16_t dupMode = 0;  // 0 skip, 1 update: the duplicate question's answer
    std::optional<std::string> table;
    std::vector<std::pair<std::string, std::string>> mapping;  // FIELD -> KEY, both in capitals
    std::vector<std::pair<std::string, std::string>> where;    // FIELD (capitals) = VALUE
    bool database = false;  // read through the table reader rather than TxtToColumns
};

// What an import did, beyond the counters of its run.
struct ImportReport {
    std::string route;
    std::string table;
    std::vector<std::pair<std::string, std::string>> matched;  // field, key
    std::vector<std::string> unmatched;
    std::vector<std::string> notes;
    std::string refusal;   // why the file was refused as a whole
    std::string messages;  // every refused value's message, each followed by a line end
};

// The boxes an import showed from box `from` on, one line each, less the gathered messages and
// the closing message, which the report gives from the run and its gathered `messages`.
std::vector<std::string> importNotes(const BatchPrompt& prompt, std::size_t from,
                                     const std::string& messages);

// readImportFile and TxtToColumns. A file that cannot be read or is refused as a whole leaves
// the reason in report.refusal.
void importText(Model& m, BatchHost& batch, const ImportRequest& request, PolygonImport& run,
                ImportReport& report);
// GetColumnHeader with --table as the chooser's answer (the first table without it, noted),
// --map over the matching, then ImportData of the records that --where keeps. Throws UsageError
// for a --map or --where field the table does not have.
void importDatabase(Model& m, BatchHost& batch, const ImportRequest& request, PolygonImport& run,
                    ImportReport& report);

void writeImportText(const Model& m, const ImportRequest& request, const PolygonImport& run,
                     const ImportReport& report, std::ostream& out);
void writeImportJson(const Model& m, const ImportRequest& request, bool created,
                     const PolygonImport& run, const ImportReport& report, std::ostream& out);

}  // namespace arborex::batch
