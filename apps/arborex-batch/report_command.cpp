#include "report_command.hpp"

#include <ostream>

#include "base/text.hpp"
#include "batch_args.hpp"
#include "batch_commands.hpp"
#include "batch_host.hpp"
#include "batch_project.hpp"
#include "calc_command.hpp"
#include "harvest/hanzlik.hpp"
#include "harvest/queue_order.hpp"
#include "model/model.hpp"
#include "report/document_report.hpp"

namespace arborex::batch {

namespace {

// A calculation leaves its blocks, even one that cut nothing; a project never calculated has
// none.
bool hasCalculation(const Model& m) {
    return m.Calc.BlockLast >= 0 || m.Calc.CutCount > 0;
}

ReportFormat formatOf(const std::string& path) {
    const std::size_t dot = path.find_last_of('.');
    const bool rtf = dot != std::string::npos && equalsNoCase(path.substr(dot), ".rtf");
    return rtf ? ReportFormat::RTF : ReportFormat::TXT;
}

// The Hanzlik rate belongs to the calculation screen's session, not to the project: worked out
// as the screen does on opening and calculating, over its saved order and ownerships.
float sessionHanzlikRate(Model& m, BatchHost& batch, const BatchOptions& options) {
    CalcScreen screen;
    CalcRun run;
    CalcObserver quiet;
    CalcSession s{m, screen, run, batch.prompt(), quiet};
    openCalculation(s, options, batch.host().status);
    SetCutOrder(s);
    float rate = 0.0f;
    CalcHanzlik(s, rate);
    return rate;
}

}  // namespace

std::string reportUsage() {
    return "  report PROJECT OUT.rtf|OUT.txt [--quiet] [--data DIR]\n"
           "      Write the written report of the project's saved calculation, as Rich Text\n"
           "      for OUT.rtf or as plain text otherwise. A project without a calculation\n"
           "      is refused and nothing is written.\n";
}

int runReport(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const BatchOptions options = parseOptions(args, {"--quiet", "--data"});
    requireOperands(options, 2, "report PROJECT OUT.rtf|OUT.txt [--quiet] [--data DIR]");
    const std::string& path = options.operands[0];
    const std::string& target = options.operands[1];

    BatchHost batch(options.removeMapsheet);
    auto m = newModel(batch, options);
    if (!loadProject(*m, batch, path, err)) return ExitFailed;
    if (!options.quiet) batch.prompt().writeNotes(err);
    if (!hasCalculation(*m)) {
        err << kProgram << ": " << path << " has no saved calculation to report\n";
        return ExitRefused;
    }
    try {
        const float hanzlik = sessionHanzlikRate(*m, batch, options);
        createReport(*m, formatOf(target), target, {0.0, hanzlik});
    } catch (...) {
        err << kProgram << ": cannot write " << target << ": "
            << failureReason(std::current_exception(), target) << '\n';
        return ExitFailed;
    }
    out << "Wrote " << target << '\n';
    return ExitOk;
}

}  // namespace arborex::batch
