#include "exchange_commands.hpp"

#include <exception>
#include <filesystem>
#include <memory>
#include <ostream>

#include "base/text.hpp"
#include "batch_args.hpp"
#include "batch_commands.hpp"
#include "batch_host.hpp"
#include "batch_project.hpp"
#include "calc_command.hpp"
#include "exchange/classic_csv.hpp"
#include "exchange/database_import.hpp"
#include "exchange/field_mapping.hpp"
#include "exchange/grid_export.hpp"
#include "exchange/polygon_import.hpp"
#include "exchange/text_import.hpp"
#include "exchange/variable_catalogue.hpp"
#include "exchange_import.hpp"
#include "json_writer.hpp"
#include "model/default_polygon.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/project_file.hpp"
#include "platform/gdal/gdal_table_reader.hpp"
#include "project_summary.hpp"

namespace arborex::batch {

namespace {

constexpr const char* kImportForm =
    "import PROJECT FILE [--table NAME] [--duplicates skip|update] [--map FIELD=KEY]... "
    "[--where FIELD=VALUE]... [--save OUT] [--json] [--quiet] [--data DIR]";
constexpr const char* kExportForm =
    "export PROJECT OUT [--classic] [--advanced] [--quiet] [--data DIR]";
constexpr const char* kTablesForm = "tables FILE [--json]";

std::string lowerExtension(const std::string& path) {
    std::string extension = std::filesystem::path(path).extension().string();
    if (!extension.empty()) extension.erase(0, 1);
    return toLower(extension);
}

// --where FIELD=VALUE: the field in capitals, the value as written (trimmed).
std::pair<std::string, std::string> fieldValue(const std::string& word) {
    const std::size_t equals = word.find('=');
    const std::string field =
        equals == std::string::npos ? "" : toUpper(trim(word.substr(0, equals)));
    if (field.empty()) throw UsageError("--where takes FIELD=VALUE, not '" + word + "'");
    return {field, trim(word.substr(equals + 1))};
}

std::pair<std::string, std::string> fieldMapping(const std::string& word) {
    const std::size_t equals = word.find('=');
    const std::string field =
        equals == std::string::npos ? "" : toUpper(trim(word.substr(0, equals)));
    const std::string key =
        equals == std::string::npos ? "" : toUpper(trim(word.substr(equals + 1)));
    if (field.empty() || key.empty()) throw UsageError("--map takes FIELD=KEY, not '" + word + "'");
    if (!isMappingKey(key))
        throw UsageError("--map " + word + ": no variable '" + key +
                         "' (a catalogue key, MAPSHEET, POLYGON or MAPSTAND)");
    return {field, key};
}

ImportRequest importRequest(const BatchOptions& options) {
    requireOperands(options, 2, kImportForm);
    ImportRequest request;
    request.project = options.operands[0];
    request.file = options.operands[1];
    request.saveTo = request.project;
    for (const auto& [flag, values] : options.own) {
        if (flag == "--save") request.saveTo = values.at(0);
        if (flag == "--table") request.table = values.at(0);
        if (flag == "--map") request.mapping.push_back(fieldMapping(values.at(0)));
        if (flag == "--where") request.where.push_back(fieldValue(values.at(0)));
        if (flag != "--duplicates") continue;
        if (values.at(0) != "skip" && values.at(0) != "update")
            throw UsageError("--duplicates takes skip or update, not '" + values.at(0) + "'");
        request.dupMode = values.at(0) == "update" ? 1 : 0;
    }
    // Text goes through TxtToColumns as the grid's Import Data sends it; every other kind, and a
    // text file for which a table or a mapping is asked, through the database route.
    request.database = readsAsDatabase(importKindOf(request.file)) || request.table ||
                       !request.mapping.empty() || !request.where.empty();
    return request;
}

// Every column the grid shows before "Advanced Columns" is ticked.
GridCells withoutAdvancedColumns(const GridCells& cells) {
    GridCells shown;
    const auto& catalogue = SetupVars();
    for (const auto& row : cells) {
        auto& kept = shown.emplace_back();
        for (std::size_t c = 0; c < row.size() && c < catalogue.size(); ++c)
            if (catalogue[c].VarShow == 0) kept.push_back(row[c]);
    }
    return shown;
}

}  // namespace

std::string exchangeUsage() {
    return "  import PROJECT FILE [--table NAME] [--duplicates skip|update] [--map FIELD=KEY]...\n"
           "         [--where FIELD=VALUE]... [--save OUT] [--json] [--quiet] [--data DIR]\n"
           "      Import polygons as the data grid's Import Data does: a .txt, .csv or .dat file\n"
           "      by its header line of catalogue keys, any other kind (.xls, .xlsx, .ods, .dbf,\n"
           "      .mdb, .accdb, .gpkg, .shp, .gdb, .geojson) through the database route, which\n"
           "      matches its fields by key and alternate key and prints the matching; a text\n"
           "      file goes that route too when --table, --map or --where is given. --table\n"
           "      names the table (default the first); --map FIELD=KEY (repeatable) gives an\n"
           "      unmatched field a catalogue key or MAPSHEET, POLYGON or MAPSTAND; --where\n"
           "      FIELD=VALUE (repeatable) reads only the records whose field holds VALUE;\n"
           "      --duplicates answers \"Update polygons?\" (default skip). Prints the counts\n"
           "      and the values refused. PROJECT is written in place (the former file kept as\n"
           "      .bak) or to --save OUT; a PROJECT that does not exist is made from the default\n"
           "      polygon and the program's settings. Exit status 3: the file was refused;\n"
           "      nothing is written.\n"
           "  export PROJECT OUT [--classic] [--advanced] [--quiet] [--data DIR]\n"
           "      Write the polygons as the data grid's Export Data does: a tab delimited key\n"
           "      row and a row per polygon, with the columns the grid shows, or all catalogue\n"
           "      columns with --advanced. --classic writes the classic format instead, its\n"
           "      fixed columns separated by \", \" for a .csv OUT, else by tabs.\n"
           "  tables FILE [--json]\n"
           "      List the tables of a database, spreadsheet or GIS file and their fields, as\n"
           "      the import's database route sees them.\n";
}

int runImport(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const BatchOptions options = parseOptions(
        args, {"--json", "--quiet", "--data"},
        {{"--table", 1}, {"--duplicates", 1}, {"--map", 1}, {"--where", 1}, {"--save", 1}});
    const ImportRequest request = importRequest(options);
    std::error_code ec;
    if (!std::filesystem::exists(request.file, ec)) {
        err << kProgram << ": cannot read " << request.file << ": File Not Found\n";
        return ExitFailed;
    }

    BatchHost batch;
    auto m = newModel(batch, options);
    const bool created = !std::filesystem::exists(request.project, ec);
    if (created)
        EmptyArrays(*m);
    else if (!loadProject(*m, batch, request.project, err))
        return ExitFailed;
    useInstalledDefaultPolygon(*m, batch.host());
    if (!options.quiet) batch.prompt().writeNotes(err);

    const std::size_t loadBoxes = batch.prompt().shown().size();
    PolygonImport run;
    run.DupMode = request.dupMode;
    ImportReport report;
    if (request.database)
        importDatabase(*m, batch, request, run, report);
    else
        importText(*m, batch, request, run, report);
    if (!report.refusal.empty()) {
        err << kProgram << ": " << request.file << ": " << latin1ToUtf8(report.refusal) << '\n';
        return report.route.empty() ? ExitFailed : ExitRefused;
    }
    for (const std::string& note : importNotes(batch.prompt(), loadBoxes, report.messages))
        report.notes.push_back(note);
    if (!saveProject(*m, batch, request.saveTo, kCurrentFileVersion, err)) return ExitFailed;
    if (options.json)
        writeImportJson(*m, request, created, run, report, out);
    else
        writeImportText(*m, request, run, report, out);
    return ExitOk;
}

int runExport(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const BatchOptions options =
        parseOptions(args, {"--quiet", "--data"}, {{"--classic", 0}, {"--advanced", 0}});
    requireOperands(options, 2, kExportForm);
    const bool classic = switchGiven(options, "--classic");
    const bool advanced = switchGiven(options, "--advanced");
    if (classic && advanced)
        throw UsageError("--advanced goes with the grid's format; the classic one is fixed");
    const std::string& path = options.operands[0];
    const std::string& target = options.operands[1];

    BatchHost batch;
    auto m = newModel(batch, options);
    if (!loadProject(*m, batch, path, err)) return ExitFailed;
    if (!options.quiet) batch.prompt().writeNotes(err);
    std::string text;
    std::size_t columns = classicColumns().size();
    if (classic) {
        text = classicCsvText(
            *m, lowerExtension(target) == "csv" ? kClassicCommaWriter : kClassicTabDelimiter);
    } else {
        const GridCells cells = advanced ? gridCells(*m) : withoutAdvancedColumns(gridCells(*m));
        columns = cells.front().size();
        text = gridExportText(cells);
    }
    try {
        writeExportFile(target, text);
    } catch (...) {
        err << kProgram << ": cannot write " << target << ": "
            << failureReason(std::current_exception(), target) << '\n';
        return ExitFailed;
    }
    out << "Wrote " << target << " (" << m->LastPoly + 1 << " polygons, " << columns << " columns, "
        << (classic ? "classic" : "grid") << " format)\n";
    return ExitOk;
}

int runTables(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const BatchOptions options = parseOptions(args, {"--json"});
    requireOperands(options, 1, kTablesForm);
    const std::string& path = options.operands[0];
    std::error_code ec;
    if (!std::filesystem::exists(path, ec)) {
        err << kProgram << ": cannot read " << path << ": File Not Found\n";
        return ExitFailed;
    }
    std::vector<std::pair<std::string, std::vector<std::string>>> tables;
    try {
        const std::unique_ptr<TableReader> reader = makeTableReader();
        for (const std::string& table : reader->tables(path))
            tables.emplace_back(table, reader->fields(path, table));
    } catch (const TableReadError& e) {
        err << kProgram << ": cannot read " << path << ": " << e.what() << '\n';
        return ExitFailed;
    }
    if (!options.json) {
        for (const auto& [table, fields] : tables) {
            out << table << " (" << fields.size() << " fields)\n";
            for (const std::string& field : fields) out << "  " << field << '\n';
        }
        if (tables.empty()) out << "No Sheets Found\n";
        return ExitOk;
    }
    // The reader's names are UTF-8; the writer takes the core's Latin-1.
    JsonWriter json(out);
    json.beginObject();
    json.member("file", latin1FileText(path));
    json.key("tables");
    json.beginArray();
    for (const auto& [table, fields] : tables) {
        json.beginObject(Layout::Inline);
        json.member("name", latin1FileText(table));
        std::vector<std::string> names;
        for (const std::string& field : fields) names.push_back(latin1FileText(field));
        json.arrayMember("fields", names);
        json.endObject();
    }
    json.endArray();
    json.endObject();
    json.finish();
    return ExitOk;
}

}  // namespace arborex::batch
