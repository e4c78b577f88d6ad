#include "curve_commands.hpp"

#include <ostream>

#include "batch_args.hpp"
#include "batch_commands.hpp"
#include "batch_host.hpp"
#include "batch_project.hpp"
#include "curve_tables.hpp"

namespace arborex::batch {

namespace {

// The model of the existing management, or of the future one when the stand is NC or NSR now.
int16_t managementModel(const Model& m, int16_t p) {
    const PolyData& poly = m.Poly.at(static_cast<std::size_t>(p));
    for (int16_t mgnt : poly.MGNT)
        if (mgnt == 0 || mgnt == 1) return mgnt;
    throw UsageError("polygon " + std::to_string(p) + " has no curve model in its management (" +
                     std::to_string(poly.MGNT[0]) + ", " + std::to_string(poly.MGNT[1]) +
                     "): give --model 0 or 1");
}

}  // namespace

int runAges(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const BatchOptions options = parseOptions(args, {"--json", "--quiet", "--data"});
    requireOperands(options, 1, "ages PROJECT [--json] [--quiet] [--data DIR]");
    const std::string& path = options.operands[0];

    BatchHost batch;
    auto m = newModel(batch, options);
    if (!loadProject(*m, batch, path, err)) return ExitFailed;
    if (!options.quiet) batch.prompt().writeNotes(err);
    if (options.json)
        writeAgesJson(*m, out);
    else
        writeAgesText(*m, out);
    return ExitOk;
}

int runCurve(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const BatchOptions options = parseOptions(args, {"--model", "--json", "--quiet", "--data"});
    requireOperands(options, 2,
                    "curve PROJECT POLYGON [--model 0|1] [--json] [--quiet] [--data DIR]");
    const std::string& path = options.operands[0];

    BatchHost batch;
    auto m = newModel(batch, options);
    if (!loadProject(*m, batch, path, err)) return ExitFailed;
    const int16_t p = polygonOperand(*m, options.operands[1], path);
    const int16_t model = options.model ? *options.model : managementModel(*m, p);
    const int16_t step = m->Settings.YieldIncAge[static_cast<std::size_t>(model)];
    if (step <= 0) {
        err << kProgram << ": the " << curveModelName(model) << " age grid of " << path
            << " has a step of " << step << " years\n";
        return ExitFailed;
    }
    // Read before anything is written, so that a failing query leaves `out` empty.
    const CurveTable curve = readCurve(*m, p, model);
    if (!options.quiet) batch.prompt().writeNotes(err);
    if (options.json)
        writeCurveJson(*m, curve, out);
    else
        writeCurveText(*m, curve, out);
    return ExitOk;
}

}  // namespace arborex::batch
