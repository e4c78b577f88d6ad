#include "graph_command.hpp"

#include <cctype>
#include <ostream>

#include "base/atomic_file.hpp"
#include "base/dates.hpp"
#include "base/number_text.hpp"
#include "base/text.hpp"
#include "batch_args.hpp"
#include "batch_commands.hpp"
#include "batch_host.hpp"
#include "batch_project.hpp"
#include "calc_command.hpp"
#include "report/graph_files.hpp"

namespace arborex::batch {

namespace {

constexpr const char* kForm = "graph PROJECT KIND OUT [--years Y1,Y2,...] [--quiet] [--data DIR]";

// KIND as a menu index 0-6, -1 for the time volume graph, -2 for the age distribution.
constexpr int kTimeVolume = -1;
constexpr int kAgeDistribution = -2;

std::string kindList() {
    std::string list;
    for (const char* caption : kResultGraphCaptions) list += graphKindName(caption) + ", ";
    return list + "0-6, time-volume or age-distribution";
}

int kindOf(const std::string& operand) {
    const std::string kind = toLower(trim(operand));
    for (int i = 0; i < kResultGraphCount; ++i)
        if (kind == graphKindName(kResultGraphCaptions[static_cast<std::size_t>(i)]) ||
            kind == std::to_string(i))
            return i;
    if (kind == "time-volume") return kTimeVolume;
    if (kind == "age-distribution") return kAgeDistribution;
    throw UsageError("no graph '" + operand + "' (give " + kindList() + ")");
}

// --years: up to six years separated by commas; the columns not given stay blank.
AgeGraphRequest ageRequest(const BatchOptions& options, int firstYear) {
    AgeGraphRequest request = defaultAgeGraphRequest(firstYear);
    const std::vector<std::string>* given = ownFlagValues(options, "--years");
    if (!given) return request;
    request.years = {};
    const std::string& list = given->at(0);
    std::size_t column = 0;
    for (std::size_t from = 0; from <= list.size(); ++column) {
        std::size_t comma = list.find(',', from);
        if (comma == std::string::npos) comma = list.size();
        const std::string word = trim(list.substr(from, comma - from));
        from = comma + 1;
        const auto year = strictNumber(word);
        if (!year || *year < 0 || *year > 32767 || *year != static_cast<int>(*year))
            throw UsageError("--years needs whole years separated by commas, not '" + word + "'");
        if (column >= request.years.size()) throw UsageError("--years takes at most six years");
        request.years[column] = static_cast<int16_t>(*year);
    }
    return request;
}

}  // namespace

std::string graphKindName(const std::string& caption) {
    std::string name;
    bool gap = false;
    for (unsigned char c : caption) {
        if (std::isalnum(c)) {
            if (gap && !name.empty()) name += '-';
            name += static_cast<char>(std::tolower(c));
            gap = false;
        } else {
            gap = true;
        }
    }
    return name;
}

std::string graphUsage() {
    std::string kinds;
    for (const char* caption : kResultGraphCaptions)
        kinds += "          " + graphKindName(caption) + "\n";
    return "  graph PROJECT KIND OUT [--years Y1,Y2,...] [--quiet] [--data DIR]\n"
           "      Write the graphing program's control file of a graph of the project's\n"
           "      saved calculation to OUT. KIND is a result graph of the calculation\n"
           "      screen's Graph menu, by name or by its index 0-6:\n" +
           kinds +
           "      or time-volume (standing volume by maturity and type), or\n"
           "      age-distribution (standing area by age class in the years of --years,\n"
           "      up to six, by default this year and every ten years after it). The\n"
           "      species graph has series only after a calculation in the same session,\n"
           "      so here it comes out without any.\n";
}

int runGraph(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const BatchOptions options = parseOptions(args, {"--quiet", "--data"}, {{"--years", 1}});
    requireOperands(options, 3, kForm);
    const std::string& path = options.operands[0];
    const int kind = kindOf(options.operands[1]);
    const std::string& target = options.operands[2];
    if (kind != kAgeDistribution && ownFlagValues(options, "--years"))
        throw UsageError("--years belongs to the age-distribution graph");

    BatchHost batch(options.removeMapsheet);
    auto m = newModel(batch, options);
    if (!loadProject(*m, batch, path, err)) return ExitFailed;
    if (!options.quiet) batch.prompt().writeNotes(err);
    if (m->Calc.CutCount == 0) {
        err << kProgram << ": " << path << " holds no calculation to graph\n";
        return ExitRefused;
    }
    const double now = dateNow();
    std::string text;
    if (kind == kTimeVolume) {
        text = timeVolumeGraphText(*m, now);
    } else if (kind == kAgeDistribution) {
        text = ageGraphText(*m, ageRequest(options, partsFromDayCount(now).year), now);
    } else {
        const CalcRun noSessionRun;
        text = resultGraphText(*m, noSessionRun, kind, now);
    }
    writeFileAtomically(target, text);
    out << "Wrote " << target << '\n';
    return ExitOk;
}

}  // namespace arborex::batch
