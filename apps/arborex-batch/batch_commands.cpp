#include "batch_commands.hpp"

#include <exception>
#include <memory>
#include <ostream>

#include "batch_args.hpp"
#include "batch_host.hpp"
#include "frame/error_handler.hpp"
#include "frame/errors.hpp"
#include "frame/file_locations.hpp"
#include "frame/file_names.hpp"
#include "frame/startup.hpp"
#include "model/project_file.hpp"
#include "project_summary.hpp"

namespace arborex::batch {

namespace {

constexpr const char* kProgram = "arborex-batch";

void requireOperands(const BatchOptions& options, std::size_t count, const std::string& form) {
    if (options.operands.size() != count)
        throw UsageError("usage: " + std::string(kProgram) + " " + form);
    for (const std::string& operand : options.operands)
        if (operand.empty()) throw UsageError("an empty file name in: " + form);
}

// A fresh model with the program's defaults and the reference data, as the desktop program has
// it before a load. Without the species table of TIPSY the program does not run.
std::unique_ptr<Model> newModel(BatchHost& batch, const BatchOptions& options) {
    auto m = std::make_unique<Model>();
    setProgramDefaults(*m);
    const std::string folder =
        options.dataFolder.empty() ? installedDataFolder() : withTrailingSlash(options.dataFolder);
    if (findFileNoCase(folder, "speciest.dat").empty())
        throw ArborexError(ErrFileNotFound,
                           folder + "speciest.dat (give the reference data's folder with --data)");
    m->Paths[ArborexFolder] = folder;
    LoadReferenceData(*m, batch.host());
    return m;
}

// LoadARX through the batch host; on failure writes the one error line, built from the box
// that the failed load showed.
bool loadProject(Model& m, BatchHost& batch, const std::string& path, std::ostream& err) {
    if (LoadARX(m, batch.host(), path)) return true;
    std::string reason = batch.prompt().lastMessage();
    if (reason.empty()) reason = "not a project";
    err << kProgram << ": cannot load " << path << ": " << reason << '\n';
    return false;
}

// The reason of a failure: its text, and its detail unless that only names `path` (or the
// temporary file a save writes beside it), which the line names already.
std::string failureReason(const std::exception_ptr& failure, const std::string& path) {
    std::string detail;
    const int number = failureNumberOf(failure, detail);
    std::string reason = errorText(number);
    const bool namesPath = !path.empty() && detail.rfind(path, 0) == 0;
    if (!detail.empty() && !namesPath) reason += ": " + detail;
    return reason;
}

}  // namespace

std::string usageText() {
    return "Usage: arborex-batch COMMAND ARGUMENTS [OPTIONS]\n"
           "\n"
           "Commands:\n"
           "  info PROJECT [--json] [--remove-mapsheet yes|no] [--quiet] [--data DIR]\n"
           "      Show the project's header, settings, polygons and saved calculation.\n"
           "  convert IN OUT [--version 3226|200|111] [--remove-mapsheet yes|no] [--quiet]\n"
           "          [--data DIR]\n"
           "      Load the project IN and write it to OUT in the given file version\n"
           "      (default 3226). OUT's former file is kept as OUT with the extension .bak.\n"
           "  --help\n"
           "      Show this text.\n"
           "\n"
           "Options:\n"
           "  --json                     info as JSON instead of text\n"
           "  --remove-mapsheet yes|no   the answer to \"Remove mapsheet identifier?\", asked "
           "when\n"
           "                             a file older than version 3001 loads (default no)\n"
           "  --version 3226|200|111     the file version convert writes\n"
           "  --quiet                    leave out the notes that loading shows\n"
           "  --data DIR                 the folder of the reference data (species tables,\n"
           "                             messages); by default the installed one\n"
           "\n"
           "Exit status: 0 done, 1 a project could not be loaded or saved, 2 a wrong command "
           "line.\n";
}

int runInfo(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const BatchOptions options =
        parseOptions(args, {"--json", "--remove-mapsheet", "--quiet", "--data"});
    requireOperands(options, 1,
                    "info PROJECT [--json] [--remove-mapsheet yes|no] [--quiet] [--data DIR]");
    const std::string& path = options.operands[0];

    BatchHost batch(options.removeMapsheet);
    auto m = newModel(batch, options);
    if (!loadProject(*m, batch, path, err)) return ExitFailed;
    if (!options.quiet) batch.prompt().writeNotes(err);
    if (options.json)
        writeProjectJson(*m, out);
    else
        writeProjectText(*m, out);
    return ExitOk;
}

int runConvert(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const BatchOptions options =
        parseOptions(args, {"--version", "--remove-mapsheet", "--quiet", "--data"});
    requireOperands(options, 2,
                    "convert IN OUT [--version 3226|200|111] [--remove-mapsheet yes|no] "
                    "[--quiet] [--data DIR]");
    const std::string& in = options.operands[0];
    const std::string& target = options.operands[1];

    BatchHost batch(options.removeMapsheet);
    auto m = newModel(batch, options);
    if (!loadProject(*m, batch, in, err)) return ExitFailed;
    try {
        // Below 3001 the save shortens the names in memory too; this model is thrown away.
        SaveArx(*m, batch.host(), target, options.version, false);
    } catch (...) {
        err << kProgram << ": cannot save " << target << ": "
            << failureReason(std::current_exception(), target) << '\n';
        return ExitFailed;
    }
    if (!options.quiet) batch.prompt().writeNotes(err);
    out << "Wrote " << target << " as version " << options.version << " (" << m->LastPoly + 1
        << " polygons)\n";
    return ExitOk;
}

int runBatch(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    if (args.empty()) {
        out << usageText();
        return ExitUsage;
    }
    const std::string& command = args.front();
    const std::vector<std::string> rest(args.begin() + 1, args.end());
    try {
        if (command == "--help" || command == "-h" || command == "help") {
            out << usageText();
            return ExitOk;
        }
        if (command == "info") return runInfo(rest, out, err);
        if (command == "convert") return runConvert(rest, out, err);
        throw UsageError("unknown command '" + command + "'");
    } catch (const UsageError& e) {
        err << kProgram << ": " << e.what() << " (see " << kProgram << " --help)\n";
        return ExitUsage;
    } catch (...) {
        err << kProgram << ": " << failureReason(std::current_exception(), {}) << '\n';
        return ExitFailed;
    }
}

}  // namespace arborex::batch
