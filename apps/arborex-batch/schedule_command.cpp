#include "schedule_command.hpp"

#include <array>
#include <ostream>
#include <string_view>

#include "base/number_text.hpp"
#include "base/text.hpp"
#include "batch_args.hpp"
#include "batch_commands.hpp"
#include "batch_host.hpp"
#include "batch_project.hpp"
#include "calc_command.hpp"
#include "report/calc_report.hpp"

namespace arborex::batch {

namespace {

constexpr const char* kForm =
    "schedule PROJECT OUT [--delimiter tab|comma] [--increment N] [--polygons yes|no] "
    "[--blank-rows yes|no] [--totals yes|no] [--averages yes|no] [calculation flags]";

constexpr std::array<std::string_view, 6> kReportFlags = {
    "--delimiter", "--increment", "--polygons", "--blank-rows", "--totals", "--averages"};

using Flag = std::pair<std::string, std::string>;

// The report's own flags, each with its value ("--flag value" or "--flag=value"), taken out of
// `args`; what remains is a calc command line.
std::vector<Flag> takeReportFlags(std::vector<std::string>& args) {
    std::vector<Flag> flags;
    std::vector<std::string> rest;
    for (std::size_t i = 0; i < args.size(); ++i) {
        const std::string& word = args[i];
        if (word == "--") {
            rest.insert(rest.end(), args.begin() + static_cast<long>(i), args.end());
            break;
        }
        const std::size_t equals = word.find('=');
        const std::string name = word.substr(0, equals);
        bool ours = false;
        for (const std::string_view flag : kReportFlags) ours = ours || name == flag;
        if (!ours) {
            rest.push_back(word);
            continue;
        }
        if (equals != std::string::npos) {
            flags.emplace_back(name, word.substr(equals + 1));
        } else {
            if (i + 1 >= args.size()) throw UsageError(name + " needs a value");
            flags.emplace_back(name, args[++i]);
        }
    }
    args = rest;
    return flags;
}

int16_t yesNo(const Flag& flag) {
    if (flag.second == "yes") return -1;
    if (flag.second == "no") return 0;
    throw UsageError(flag.first + " takes yes or no, not '" + flag.second + "'");
}

// The project's report settings with the flags over them; the delimiter comes back in `tab`.
void applyReportFlags(ReportOptions& o, const std::vector<Flag>& flags, bool& tab) {
    for (const Flag& f : flags) {
        if (f.first == "--delimiter") {
            if (f.second != "tab" && f.second != "comma")
                throw UsageError("--delimiter takes tab or comma, not '" + f.second + "'");
            tab = f.second == "tab";
        } else if (f.first == "--increment") {
            const auto years = strictNumber(f.second);
            if (!years || *years < 1.0 || *years > 32767.0 || *years != static_cast<int>(*years))
                throw UsageError("--increment needs a whole number of years from 1, not '" +
                                 f.second + "'");
            o.RptIncrement = static_cast<int16_t>(*years);
        } else if (f.first == "--polygons") {
            o.RptShowPoly = yesNo(f);
        } else if (f.first == "--blank-rows") {
            o.RptAddRow = yesNo(f);
        } else if (f.first == "--totals") {
            o.RptTotal = yesNo(f);
        } else if (f.first == "--averages") {
            o.RptIncAvg = yesNo(f);
        }
    }
}

}  // namespace

std::string scheduleUsage() {
    return "  schedule PROJECT OUT [--delimiter tab|comma] [--increment N] [--polygons yes|no]\n"
           "       [--blank-rows yes|no] [--totals yes|no] [--averages yes|no]\n"
           "       [calculation flags of calc, without --json and --save]\n"
           "      Write the calculation report (Create Calculation Report) to OUT: one run at\n"
           "      the entered rate, a row per polygon and a total row every N years. The\n"
           "      settings are the project's report settings unless given; the delimiter\n"
           "      follows OUT's extension (.csv comma, otherwise tab) unless given. Exit\n"
           "      status 3, and nothing written: the calculation was refused, with its reason.\n";
}

int runSchedule(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    std::vector<std::string> calcArgs = args;
    const std::vector<Flag> reportFlags = takeReportFlags(calcArgs);
    const BatchOptions options = parseCalcOptions(calcArgs);
    if (options.json || ownFlagValues(options, "--save"))
        throw UsageError("schedule writes the report only (no --json or --save)");
    requireOperands(options, 2, kForm);
    const std::string& path = options.operands[0];
    const std::string& target = options.operands[1];
    bool tab = !(target.size() >= 4 && equalsNoCase(target.substr(target.size() - 4), ".csv"));

    BatchHost batch(options.removeMapsheet);
    auto m = newModel(batch, options);
    if (!loadProject(*m, batch, path, err)) return ExitFailed;
    if (!options.quiet) batch.prompt().writeNotes(err);
    applyReportFlags(m->Report, reportFlags, tab);

    CalcScreen screen;
    CalcRun run;
    CalcObserver quiet;
    CalcSession s{*m, screen, run, batch.prompt(), quiet};
    openCalculation(s, options, batch.host().status);
    const std::size_t before = batch.prompt().shown().size();
    if (!runCalcReport(s, target, tab)) {
        const auto& shown = batch.prompt().shown();
        const std::string reason =
            shown.size() > before ? shown.back().text : std::string("the calculation was refused");
        err << kProgram << ": " << reason << '\n';
        return ExitRefused;
    }
    out << "Wrote " << target << (tab ? " (tab delimited)" : " (comma separated)") << '\n';
    return ExitOk;
}

}  // namespace arborex::batch
