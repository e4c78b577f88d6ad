#include "batch_commands.hpp"

#include <exception>
#include <ostream>

#include "base/errors.hpp"
#include "batch_args.hpp"
#include "batch_host.hpp"
#include "batch_project.hpp"
#include "calc_command.hpp"
#include "curve_commands.hpp"
#include "exchange_commands.hpp"
#include "frame/error_handler.hpp"
#include "graph_command.hpp"
#include "polygon_command.hpp"
#include "project_summary.hpp"
#include "report_command.hpp"
#include "schedule_command.hpp"
#include "stand_update_commands.hpp"
#include "summary_command.hpp"
#include "yields_command.hpp"

namespace arborex::batch {

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
           "  ages PROJECT [--json] [--quiet] [--data DIR]\n"
           "      Show every polygon's calculated harvest ages under both curve models\n"
           "      (VDYP and TIPSY), below the project's harvest criteria.\n"
           "  curve PROJECT POLYGON [--model 0|1] [--json] [--quiet] [--data DIR]\n"
           "      Show a polygon's yield curve at each age of its model's grid. POLYGON is\n"
           "      the polygon's name or, if no name matches, its index from 0.\n" +
           calcUsage() + polygonUsage() + yieldsUsage() + reportUsage() + graphUsage() +
           scheduleUsage() + summaryUsage() + standUpdateUsage() + exchangeUsage() +
           "  --help\n"
           "      Show this text.\n"
           "\n"
           "Options:\n"
           "  --json                     info, ages, curve, calc, polygon and yields as JSON\n"
           "                             instead of text\n"
           "  --remove-mapsheet yes|no   the answer to \"Remove mapsheet identifier?\", asked "
           "when\n"
           "                             a file older than version 3001 loads (default no)\n"
           "  --version 3226|200|111     the file version convert writes\n"
           "  --model 0|1                the curve model curve shows, 0 VDYP or 1 TIPSY\n"
           "                             (default the model of the polygon's management)\n"
           "  --quiet                    leave out the notes that loading shows\n"
           "  --data DIR                 the folder of the reference data (species tables,\n"
           "                             messages); by default the installed one\n"
           "\n"
           "Exit status: 0 done, 1 a project could not be loaded, saved or read, 2 a wrong\n"
           "command line, 3 a calculation, a polygon action, a yield run or a report refused.\n";
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
    // Below 3001 the save shortens the names in memory too; this model is thrown away.
    if (!saveProject(*m, batch, target, options.version, err)) return ExitFailed;
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
        if (command == "ages") return runAges(rest, out, err);
        if (command == "curve") return runCurve(rest, out, err);
        if (command == "calc") return runCalc(rest, out, err);
        if (command == "polygon") return runPolygon(rest, out, err);
        if (command == "yields") return runYields(rest, out, err);
        if (command == "report") return runReport(rest, out, err);
        if (command == "graph") return runGraph(rest, out, err);
        if (command == "schedule") return runSchedule(rest, out, err);
        if (command == "summary") return runSummary(rest, out, err);
        if (command == "harvest-age") return runHarvestAge(rest, out, err);
        if (command == "silviculture") return runSilviculture(rest, out, err);
        if (command == "import") return runImport(rest, out, err);
        if (command == "export") return runExport(rest, out, err);
        if (command == "tables") return runTables(rest, out, err);
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
