#include "calc_command.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <ostream>
#include <string_view>

#include "base/display_format.hpp"
#include "base/min_max.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "base/text.hpp"
#include "batch_args.hpp"
#include "batch_commands.hpp"
#include "batch_host.hpp"
#include "batch_project.hpp"
#include "calc_output.hpp"
#include "frame/file_locations.hpp"
#include "harvest/calc_data.hpp"
#include "harvest/calculate.hpp"
#include "harvest/expansion.hpp"
#include "harvest/queue_order.hpp"
#include "model/project_file.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex::batch {

namespace {

constexpr const char* kForm =
    "calc PROJECT [--rate N | --search] [--area] [--period N] [--relax N] "
    "[--delay N | --auto-delay] [--conifer-only] [--no-partial-cut] [--owners LIST] "
    "[--age-constraint AGE PCT] [--height-constraint HEIGHT PCT] [--netdown PCT] [--sort NAME] "
    "[--log] [--start-year YYYY] [--json] [--save OUT] [--quiet] [--data DIR]";

using Flag = std::pair<std::string, std::vector<std::string>>;

// The sort entries by the names the command line gives them, in menu order.
constexpr std::array<std::string_view, 7> kSortNames = {
    "oldest", "closest", "random", "youngest", "mai", "si", "lead-species"};

// What the search shows, kept for the output.
class SearchRecorder final : public CalcObserver {
public:
    explicit SearchRecorder(SearchTrace& trace, int& finalRuns)
        : trace_(trace), finalRuns_(finalRuns) {}
    void searchOpened(const std::string& hanzlikLine) override {
        trace_ = SearchTrace{};
        trace_.opened = true;
        trace_.startLine = hanzlikLine;
    }
    void searchStatus(const std::string& line) override { trace_.lastStatus = line; }
    void trialRow(const std::string& row) override { trace_.trials.push_back(row); }
    void finalRunEnded() override { ++finalRuns_; }

private:
    SearchTrace& trace_;
    int& finalRuns_;
};

double numberOf(const Flag& flag, std::size_t index = 0) {
    const std::string& text = flag.second.at(index);
    const auto number = strictNumber(text);
    if (!number) throw UsageError(flag.first + " needs a number, not '" + text + "'");
    if (*number < 0.0) throw UsageError(flag.first + " cannot be negative ('" + text + "')");
    return *number;
}

// A switch given alone, or as "=yes" or "=no".
bool switchOf(const Flag& flag) {
    if (flag.second.empty() || flag.second[0] == "yes") return true;
    if (flag.second[0] == "no") return false;
    throw UsageError(flag.first + " takes yes or no, not '" + flag.second[0] + "'");
}

// A number put into a field as typed, then kept within the field's limits as leaving the field
// would keep it.
void setField(std::string& field, const Flag& flag, std::size_t index, float low, float high,
              int16_t decimals) {
    numberOf(flag, index);
    field = flag.second[index];
    minMax(field, low, high, decimals);
}

// Ownerships as indices 0-3, their one-letter codes or their names, separated by commas; "all"
// for every ownership that has a name.
std::array<bool, 4> ownershipsOf(const Model& m, const Flag& flag) {
    std::array<bool, 4> ticked{};
    const std::string& list = flag.second.at(0);
    for (std::size_t from = 0; from <= list.size();) {
        std::size_t comma = list.find(',', from);
        if (comma == std::string::npos) comma = list.size();
        const std::string wanted = trim(list.substr(from, comma - from));
        from = comma + 1;
        bool found = false;
        for (std::size_t o = 0; o < ticked.size(); ++o) {
            const std::string name = trim(m.Ref.OwnershipNames[o]);
            const bool named = !name.empty();
            // "P - Private" answers to "Private" too.
            const std::size_t dash = name.find(" - ");
            const std::string bare = dash == std::string::npos ? name : trim(name.substr(dash + 3));
            const bool match =
                wanted == std::to_string(o) || (named && equalsNoCase(wanted, "all")) ||
                (named && equalsNoCase(wanted, name)) || (named && equalsNoCase(wanted, bare)) ||
                (wanted.size() == 1 && m.Ref.OwnershipCodes[o] != ' ' &&
                 equalsNoCase(wanted, std::string(1, m.Ref.OwnershipCodes[o])));
            if (match) ticked[o] = found = true;
        }
        if (!found)
            throw UsageError("--owners: no ownership '" + wanted +
                             "' (give 0-3, an ownership's code or name, or all)");
    }
    return ticked;
}

// The sort entries, as the menu applies them; "custom" keeps the saved order as it is. The
// lead species ranking is the one proposed, as a user who accepts it would leave it.
void applySort(CalcSession& s, const Flag& flag) {
    const std::string name = toLower(trim(flag.second.at(0)));
    if (name == "custom") return;
    if (name == "default") {
        mniSortDefault_Click(s);
        return;
    }
    for (std::size_t i = 0; i < kSortNames.size(); ++i) {
        if (name != kSortNames[i]) continue;
        mniSort_Click(s, static_cast<int16_t>(i),
                      [](const std::vector<std::string>& proposed) { return proposed; });
        return;
    }
    throw UsageError("--sort: no sort '" + flag.second.at(0) +
                     "' (default, custom, oldest, closest, random, youngest, mai, si or "
                     "lead-species)");
}

const Flag* find(const BatchOptions& options, std::string_view name) {
    const Flag* last = nullptr;
    for (const Flag& flag : options.own)
        if (flag.first == name) last = &flag;
    return last;
}

// Flags that contradict each other are refused before anything is loaded.
void checkExclusive(const BatchOptions& options) {
    const Flag* search = find(options, "--search");
    if (find(options, "--rate") && search && switchOf(*search))
        throw UsageError("--rate and --search exclude each other");
    const Flag* autoDelay = find(options, "--auto-delay");
    if (find(options, "--delay") && autoDelay && switchOf(*autoDelay))
        throw UsageError("--delay and --auto-delay exclude each other");
}

// The flags over the fields that LoadCalcData filled. The unit comes first, because switching
// it shows the saved rate of that unit, which a --rate then replaces.
void applyFlags(CalcSession& s, const BatchOptions& options) {
    CalcScreen& screen = s.screen;
    if (const Flag* f = find(options, "--area")) {
        screen.chkArea = switchOf(*f);
        chkArea_Click(s);
    }
    for (const Flag& f : options.own) {
        const std::string& name = f.first;
        if (name == "--rate") {
            numberOf(f);
            screen.txtVolToCut = f.second[0];
            screen.chkCalcRate = false;
        } else if (name == "--search") {
            screen.chkCalcRate = switchOf(f);
        } else if (name == "--period") {
            setField(screen.txtPeriod, f, 0, 1.0f, 10.0f, 0);
        } else if (name == "--relax") {
            setField(screen.txtRelax, f, 0, 0.0f, 5.0f, 0);
        } else if (name == "--delay") {
            const double years = std::min(roundHalfEven(numberOf(f)), 32767.0);
            screen.txtStartIn = formatNumber(years, "0");
            screen.chkCalcYears = false;
        } else if (name == "--auto-delay") {
            screen.chkCalcYears = switchOf(f);
        } else if (name == "--conifer-only") {
            screen.chkConifer = switchOf(f);
        } else if (name == "--no-partial-cut") {
            screen.chkDisPC = switchOf(f);
        } else if (name == "--owners") {
            screen.chkCut = ownershipsOf(s.m, f);
        } else if (name == "--age-constraint") {
            screen.chkConAge = true;
            setField(screen.txtAge, f, 0, 0.0f, 350.0f, 0);
            setField(screen.txtAgePerc, f, 1, 0.0f, 100.0f, 0);
        } else if (name == "--height-constraint") {
            screen.chkConHeight = true;
            setField(screen.txtHeight, f, 0, 0.0f, 99.0f, 1);
            setField(screen.txtHeightPerc, f, 1, 0.0f, 100.0f, 0);
        } else if (name == "--netdown") {
            screen.chkConNetDown = true;
            setField(screen.txtNetDown, f, 0, 0.0f, 99.0f, 0);
        } else if (name == "--sort") {
            applySort(s, f);
        }
    }
}

int16_t startYearOf(const Flag& flag) {
    const double year = numberOf(flag);
    if (year != std::floor(year) || year < 1.0 || year > 9999.0)
        throw UsageError("--start-year needs a year from 1 to 9999, not '" + flag.second[0] + "'");
    return static_cast<int16_t>(year);
}

}  // namespace

std::string calcUsage() {
    return "  calc PROJECT [--rate N | --search] [--area] [--period N] [--relax N]\n"
           "       [--delay N | --auto-delay] [--conifer-only] [--no-partial-cut]\n"
           "       [--owners LIST] [--age-constraint AGE PCT] [--height-constraint HEIGHT PCT]\n"
           "       [--netdown PCT] [--sort NAME] [--log] [--start-year YYYY] [--json]\n"
           "       [--save OUT] [--quiet] [--data DIR]\n"
           "      Run a harvest calculation as the Calculations screen does: the fields come\n"
           "      from the project's saved calculation, then from these flags. --rate runs one\n"
           "      plan at a rate (m3/yr, or ha/yr with --area); --search finds the highest\n"
           "      rate the land base sustains. --owners lists the ownerships cut, as 0-3, codes\n"
           "      or names separated by commas, or all. --sort is default, custom, oldest,\n"
           "      closest, random, youngest, mai, si or lead-species. --start-year fixes the\n"
           "      first year (default this year), so that a run can be repeated. --log writes\n"
           "      log.txt in the current folder. --save writes the project with the run's\n"
           "      tables to OUT. A switch also takes =yes or =no (--area=no). Exit status 3:\n"
           "      the calculation was refused, with its reason.\n";
}

BatchOptions parseCalcOptions(const std::vector<std::string>& args) {
    BatchOptions options = parseOptions(args, {"--json", "--quiet", "--data", "--remove-mapsheet"},
                                        {{"--rate", 1},
                                         {"--search", 0},
                                         {"--area", 0},
                                         {"--period", 1},
                                         {"--relax", 1},
                                         {"--delay", 1},
                                         {"--auto-delay", 0},
                                         {"--conifer-only", 0},
                                         {"--no-partial-cut", 0},
                                         {"--owners", 1},
                                         {"--age-constraint", 2},
                                         {"--height-constraint", 2},
                                         {"--netdown", 1},
                                         {"--sort", 1},
                                         {"--log", 0},
                                         {"--start-year", 1},
                                         {"--save", 1}});
    checkExclusive(options);
    return options;
}

void openCalculation(CalcSession& s, const BatchOptions& options, StatusScreen& status) {
    if (const Flag* f = find(options, "--start-year")) s.run.FixedStartYear = startYearOf(*f);
    if (const Flag* f = find(options, "--log"); f && switchOf(*f)) {
        s.m.LogMode = true;
        s.m.Paths[UserDocuments] = withTrailingSlash(std::filesystem::current_path().string());
    }
    // As the screen opens: the saved fields, the order lists, the expanded curves.
    LoadCalcData(s);
    ShowPolygonOrder(s, -1);
    ExpandYields(s.m, status, s.run.Yields);
    CheckYields(s.m, s.prompt, s.run.Yields, s.m.MsgResult);
    applyFlags(s, options);
}

int runCalc(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const BatchOptions options = parseCalcOptions(args);
    requireOperands(options, 1, kForm);
    const std::string& path = options.operands[0];

    BatchHost batch(options.removeMapsheet);
    auto m = newModel(batch, options);
    if (!loadProject(*m, batch, path, err)) return ExitFailed;
    if (!options.quiet) batch.prompt().writeNotes(err);
    const std::size_t loadBoxes = batch.prompt().shown().size();

    CalcOutcome outcome;
    outcome.project = path;
    CalcScreen screen;
    CalcRun run;
    SearchRecorder recorder(outcome.search, outcome.finalRuns);
    CalcSession s{*m, screen, run, batch.prompt(), recorder};
    openCalculation(s, options, batch.host().status);

    const bool calculated = cmdCalculate(s);
    std::vector<ShownBox> boxes(batch.prompt().shown().begin() + static_cast<long>(loadBoxes),
                                batch.prompt().shown().end());
    if (!calculated && !boxes.empty()) {
        outcome.refusal = boxes.back().text;
        boxes.pop_back();
    }
    outcome.warnings = std::move(boxes);

    if (const Flag* f = find(options, "--save"); f && calculated) {
        SaveCalcData(s);
        if (!saveProject(*m, batch, f->second.at(0), kCurrentFileVersion, err)) return ExitFailed;
    }
    if (options.json)
        writeCalcJson(s, outcome, out);
    else
        writeCalcText(s, outcome, out);
    return calculated ? ExitOk : ExitRefused;
}

}  // namespace arborex::batch
