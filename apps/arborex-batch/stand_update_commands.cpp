#include "stand_update_commands.hpp"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <ostream>
#include <string_view>

#include "base/errors.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "base/text.hpp"
#include "batch_args.hpp"
#include "batch_commands.hpp"
#include "batch_host.hpp"
#include "batch_project.hpp"
#include "calc_command.hpp"
#include "model/project_file.hpp"
#include "project_summary.hpp"
#include "yield/harvest_ages.hpp"
#include "yield/stand_updates.hpp"

namespace arborex::batch {

namespace {

constexpr const char* kHarvestAgeForm =
    "harvest-age PROJECT --polygons LIST|all --method N --amount N [--update-1st-harvest-age] "
    "[--update-future-harvest-age] [--ignore-harvest-parameters] [--save OUT]";
constexpr const char* kSilvicultureForm =
    "silviculture PROJECT --polygons LIST|all (--clearcut | --partial-cut) [--pc-percent TEXT] "
    "[--pc-reentry TEXT] [--save OUT]";

const std::string& required(const BatchOptions& options, const char* flag, const char* form) {
    const auto* values = ownFlagValues(options, flag);
    if (!values) throw UsageError("usage: " + std::string(kProgram) + " " + form);
    return values->at(0);
}

// A whole number of 16 bits as typed on the command line.
int16_t wholeNumber(const std::string& flag, const std::string& text) {
    const auto number = strictNumber(text);
    if (number && *number == std::trunc(*number) && *number >= -32768.0 && *number <= 32767.0)
        return toI2(*number);
    throw UsageError(flag + " needs a whole number, not '" + text + "'");
}

// LIST: polygon names or indices, comma separated, or "all" for every polygon not deleted. Each
// polygon counts once, in the order first given.
std::vector<int16_t> selection(const Model& m, const std::string& list, const std::string& path) {
    std::vector<int16_t> polygons;
    if (trim(list) == "all") {
        for (int p = 0; p <= m.LastPoly; ++p)
            if (m.PolyC[static_cast<std::size_t>(p)].DELETE == 0)
                polygons.push_back(static_cast<int16_t>(p));
        return polygons;
    }
    for (std::size_t from = 0; from <= list.size();) {
        const std::size_t comma = std::min(list.find(',', from), list.size());
        const std::string item = trim(std::string_view(list).substr(from, comma - from));
        from = comma + 1;
        if (item.empty()) continue;
        const int16_t p = polygonOperand(m, item, path);
        if (m.PolyC[static_cast<std::size_t>(p)].DELETE != 0)
            throw UsageError("polygon " + std::to_string(p) + " \"" +
                             latin1ToUtf8(m.Poly[static_cast<std::size_t>(p)].NAME.str()) +
                             "\" is deleted");
        if (std::find(polygons.begin(), polygons.end(), p) == polygons.end()) polygons.push_back(p);
    }
    return polygons;
}

// The fields these updates change, to tell what did.
struct StandFields {
    std::array<int16_t, 2> HAR{};
    std::array<int16_t, 2> YIELDSTATE{};
    int16_t SILVI = 0;
    int16_t PCPERC = 0;
    int16_t PCNEXT = 0;
    std::array<int16_t, 2> MGNT{};
};

StandFields fieldsOf(const Model& m, int16_t p) {
    const PolyData& d = m.Poly.at(static_cast<std::size_t>(p));
    return {d.HAR, d.YIELDSTATE, d.SILVI, d.PCPERC, d.PCNEXT, d.MGNT};
}

// "HAR1 -1 -> 94, ..." for the fields that changed; empty when none did.
std::string changeText(const StandFields& a, const StandFields& b) {
    std::string text;
    auto field = [&](const char* name, int16_t before, int16_t after) {
        if (before == after) return;
        text += (text.empty() ? "" : ", ") + std::string(name) + " " + std::to_string(before) +
                " -> " + std::to_string(after);
    };
    field("HAR1", a.HAR[0], b.HAR[0]);
    field("HAR2", a.HAR[1], b.HAR[1]);
    field("YIELDSTATE VDYP", a.YIELDSTATE[0], b.YIELDSTATE[0]);
    field("YIELDSTATE TIPSY", a.YIELDSTATE[1], b.YIELDSTATE[1]);
    field("SILVI", a.SILVI, b.SILVI);
    field("PCPERC", a.PCPERC, b.PCPERC);
    field("PCNEXT", a.PCNEXT, b.PCNEXT);
    field("EXISTINGMGNT", a.MGNT[0], b.MGNT[0]);
    field("FUTUREMGNT", a.MGNT[1], b.MGNT[1]);
    return text;
}

// Loads the project, runs `update` on the selection and UpdateYields after it, saves, and tells
// what changed: a heading from `heading` (given the count of polygons changed), then a line per
// polygon changed. Boxes the update showed go to `err` as notes.
int runOnSelection(const BatchOptions& options, std::ostream& out, std::ostream& err,
                   const std::function<void(Model&, Prompt&, const std::vector<int16_t>&)>& update,
                   const std::function<std::string(const Model&, std::size_t)>& heading) {
    const std::string& path = options.operands[0];
    BatchHost batch;
    auto m = newModel(batch, options);
    if (!loadProject(*m, batch, path, err)) return ExitFailed;
    if (!options.quiet) batch.prompt().writeNotes(err);
    const std::vector<int16_t> polygons =
        selection(*m, ownFlagValues(options, "--polygons")->at(0), path);
    if (polygons.empty()) {
        out << "No polygons are selected: nothing changed, nothing written\n";
        return ExitOk;
    }
    std::vector<StandFields> before;
    for (const int16_t p : polygons) before.push_back(fieldsOf(*m, p));
    const std::size_t loadBoxes = batch.prompt().shown().size();
    update(*m, batch.prompt(), polygons);
    UpdateYields(*m);
    for (std::size_t i = loadBoxes; i < batch.prompt().shown().size(); ++i) {
        const auto& box = batch.prompt().shown()[i];
        err << "note: " << box.title << ": " << latin1ToUtf8(oneLine(box.text)) << '\n';
    }
    const auto* saveTo = ownFlagValues(options, "--save");
    const std::string saved = saveTo ? saveTo->at(0) : path;
    if (!saveProject(*m, batch, saved, kCurrentFileVersion, err)) return ExitFailed;

    std::vector<std::string> lines;
    for (std::size_t i = 0; i < polygons.size(); ++i) {
        const std::string changes = changeText(before[i], fieldsOf(*m, polygons[i]));
        if (changes.empty()) continue;
        const auto p = static_cast<std::size_t>(polygons[i]);
        lines.push_back("  polygon " + std::to_string(p) + " \"" +
                        latin1ToUtf8(m->Poly[p].NAME.str()) + "\": " + changes);
    }
    out << heading(*m, lines.size()) << '\n';
    for (const std::string& line : lines) out << line << '\n';
    out << "Wrote " << saved << " (" << m->LastPoly + 1 << " polygons)\n";
    return ExitOk;
}

std::string countOf(std::size_t count, const char* what) {
    return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace

std::string standUpdateUsage() {
    std::string methods;
    for (std::size_t i = 0; i < kHarvestAgeMethods.size(); ++i)
        methods += std::string(i < 10 ? "         " : "        ") + std::to_string(i) + " " +
                   latin1ToUtf8(kHarvestAgeMethods[i]) + "\n";
    return "  harvest-age PROJECT --polygons LIST|all --method N --amount N\n"
           "         [--update-1st-harvest-age] [--update-future-harvest-age]\n"
           "         [--ignore-harvest-parameters] [--save OUT] [--quiet] [--data DIR]\n"
           "      Move the target harvest ages of the listed polygons as the Harvest Age\n"
           "      screen does, by the amount and the method N:\n" +
           methods +
           "      --update-1st-harvest-age moves every target on a VDYP curve,\n"
           "      --update-future-harvest-age every target on a TIPSY curve (the\n"
           "      curve model, not the rotation). Without --ignore-harvest-parameters\n"
           "      no target comes in below the harvest criteria.\n"
           "  silviculture PROJECT --polygons LIST|all (--clearcut | --partial-cut)\n"
           "         [--pc-percent TEXT] [--pc-reentry TEXT] [--save OUT] [--quiet]\n"
           "         [--data DIR]\n"
           "      Set the silviculture system of the listed polygons as the\n"
           "      Silviculture System screen does. A partial cut puts both managements\n"
           "      on VDYP and is refused on a polygon without a current VDYP curve\n"
           "      (listed in a note). --pc-percent (1-50) and --pc-reentry (10-999) are\n"
           "      taken as typed: a number is clamped, anything else (\"[..]\") takes\n"
           "      the project's value; left out, they keep what the screen shows first,\n"
           "      the first listed polygon's values.\n"
           "      LIST is polygon names or indices from 0, comma separated; all is every\n"
           "      polygon not deleted. Both work out the harvest ages again and write\n"
           "      PROJECT in place (the former file kept as .bak) unless --save OUT\n"
           "      names another file. An empty selection changes and writes nothing.\n";
}

int runHarvestAge(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const BatchOptions options = parseOptions(args, {"--quiet", "--data"},
                                              {{"--polygons", 1},
                                               {"--method", 1},
                                               {"--amount", 1},
                                               {"--update-1st-harvest-age", 0},
                                               {"--update-future-harvest-age", 0},
                                               {"--ignore-harvest-parameters", 0},
                                               {"--save", 1}});
    requireOperands(options, 1, kHarvestAgeForm);
    required(options, "--polygons", kHarvestAgeForm);
    HarvestAgeUpdate update;
    update.method = wholeNumber("--method", required(options, "--method", kHarvestAgeForm));
    if (update.method < 0 || update.method >= static_cast<int16_t>(kHarvestAgeMethods.size()))
        throw UsageError("--method takes 0 to 10, not " + std::to_string(update.method));
    update.amount = wholeNumber("--amount", required(options, "--amount", kHarvestAgeForm));
    update.updateVdyp = switchGiven(options, "--update-1st-harvest-age");
    update.updateTipsy = switchGiven(options, "--update-future-harvest-age");
    update.ignoreCriteria = switchGiven(options, "--ignore-harvest-parameters");

    return runOnSelection(
        options, out, err,
        [&](Model& m, Prompt&, const std::vector<int16_t>& polygons) {
            updateHarvestAges(m, polygons, update);
        },
        [&](const Model&, std::size_t changed) {
            return "Harvest ages by \"" + latin1ToUtf8(kHarvestAgeMethods[update.method]) +
                   "\", amount " + std::to_string(update.amount) + ": " +
                   countOf(changed, "polygon") + " changed";
        });
}

int runSilviculture(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const BatchOptions options = parseOptions(args, {"--quiet", "--data"},
                                              {{"--polygons", 1},
                                               {"--clearcut", 0},
                                               {"--partial-cut", 0},
                                               {"--pc-percent", 1},
                                               {"--pc-reentry", 1},
                                               {"--save", 1}});
    requireOperands(options, 1, kSilvicultureForm);
    required(options, "--polygons", kSilvicultureForm);
    const bool partialCut = switchGiven(options, "--partial-cut");
    if (partialCut == switchGiven(options, "--clearcut"))
        throw UsageError("give one of --clearcut and --partial-cut");
    const auto* percent = ownFlagValues(options, "--pc-percent");
    const auto* reentry = ownFlagValues(options, "--pc-reentry");
    if (!partialCut && (percent || reentry))
        throw UsageError("--pc-percent and --pc-reentry go with --partial-cut");

    SilviUpdate chosen;
    return runOnSelection(
        options, out, err,
        [&](Model& m, Prompt& prompt, const std::vector<int16_t>& polygons) {
            chosen = silviculturePreset(m, polygons);
            chosen.partialCut = partialCut;
            if (percent) chosen.SetPCPerc = partialCutFieldValue(0, percent->at(0));
            if (reentry) chosen.SetPCNext = partialCutFieldValue(1, reentry->at(0));
            tellPartialCutRefused(prompt, updateSilviculture(m, polygons, chosen));
        },
        [&](const Model& m, std::size_t changed) {
            const std::string system =
                partialCut
                    ? "partial cut, " + partialCutFieldText(m, 0, chosen.SetPCPerc) + " % every " +
                          partialCutFieldText(m, 1, chosen.SetPCNext) + " years"
                    : std::string("clearcut");
            return "Silviculture " + system + ": " + countOf(changed, "polygon") + " changed";
        });
}

}  // namespace arborex::batch
