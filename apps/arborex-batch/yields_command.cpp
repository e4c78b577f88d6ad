#include "yields_command.hpp"

#include <array>
#include <chrono>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <thread>

#include "base/errors.hpp"
#include "batch_args.hpp"
#include "batch_commands.hpp"
#include "batch_host.hpp"
#include "batch_project.hpp"
#include "calc_command.hpp"
#include "curve_tables.hpp"
#include "json_writer.hpp"
#include "model/project_file.hpp"
#include "posix_process_runner.hpp"
#include "project_summary.hpp"
#include "work_folder.hpp"
#include "yield/yield_run.hpp"

namespace arborex::batch {

namespace {

constexpr const char* kForm =
    "yields PROJECT [--all] [--vdyp-only | --tipsy-only] [--vdyp-program PATH] "
    "[--tipsy-program PATH] [--save OUT] [--json] [--quiet] [--data DIR]";

// The labels as the run leaves them; the pause is a real one, as the screen's timer is.
class LabelRecorder final : public YieldRunObserver {
public:
    std::array<std::string, 8> labels;
    void stat(int label, const std::string& text) override {
        labels.at(static_cast<std::size_t>(label)) = text;
    }
    void postAdded(const PostItem&) override {}
    void pause(int milliseconds) override {
        std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }
};

struct PolygonBefore {
    std::array<int16_t, 2> states{};
};

struct YieldsOutcome {
    std::string project;
    std::optional<std::string> saved;
    std::optional<std::string> refusal;
    PreCalcResult check;
    YieldRunResult run;
    std::array<std::string, 8> labels;
    std::vector<std::string> boxes;
    std::vector<PolygonBefore> before;
};

std::string programOf(const BatchOptions& options, const char* flag, const std::string& fallback) {
    const auto* values = ownFlagValues(options, flag);
    return values ? values->at(0) : fallback;
}

std::string refusalOf(const PreCalcResult& check, const YieldRunRequest& request) {
    const int used =
        (request.updateVDYP ? check.VDYPUsed : 0) + (request.updateTIPSY ? check.TIPSYUsed : 0);
    if (used == 0) return "nothing to calculate: no polygon uses the models chosen";
    return "nothing to calculate: every yield curve is current (--all recalculates them)";
}

void writeItemsText(const char* kind, const std::vector<PostItem>& items, std::ostream& out) {
    for (const PostItem& item : items) out << "  " << kind << latin1ToUtf8(item.text) << '\n';
}

std::string pairText(int a, int b) {
    return std::to_string(a) + ", " + std::to_string(b);
}

std::string legText(const YieldsOutcome& o, int model) {
    std::string text;
    bool any = false;
    for (int i = 0; i < 4; ++i) {
        const std::string& label = o.labels[static_cast<std::size_t>(model * 4 + i)];
        any = any || !label.empty();
        text += (i == 0 ? "" : " | ") + label;
    }
    return any ? text : "nothing due";
}

void writeText(const Model& m, const YieldsOutcome& o, std::ostream& out) {
    out << "Project: " << o.project << '\n';
    out << "Pre-calculation: " << o.check.lblStatus << '\n';
    writeItemsText("Error:   ", o.check.errors, out);
    writeItemsText("Warning: ", o.check.warnings, out);
    out << "VDYP:  " << o.check.lblAmt[0] << '\n' << "TIPSY: " << o.check.lblAmt[1] << '\n';
    if (o.refusal) return;
    out << "VDYP run:  " << legText(o, 0) << '\n' << "TIPSY run: " << legText(o, 1) << '\n';
    out << "Post calculation: " << o.run.post.size()
        << (o.run.post.size() == 1 ? " line" : " lines") << '\n';
    writeItemsText("", o.run.post, out);
    for (const std::string& box : o.boxes) out << "  Box: " << latin1ToUtf8(oneLine(box)) << '\n';
    out << padded("index", 6, true) << "  " << padded("NAME", 12, false) << "  "
        << padded("YIELDSTATE", 16, false) << "  HarvestAge (VDYP, TIPSY)\n";
    for (int p = 0; p <= m.LastPoly; ++p) {
        const auto i = static_cast<std::size_t>(p);
        const auto& before = o.before[i].states;
        const auto& after = m.Poly[i].YIELDSTATE;
        out << padded(std::to_string(p), 6, true) << "  " << padded(m.Poly[i].NAME.str(), 12, false)
            << "  "
            << padded(pairText(before[0], before[1]) + " -> " + pairText(after[0], after[1]), 16,
                      false)
            << "  " << pairText(m.HarvAge[i][0].HarvestAge, m.HarvAge[i][1].HarvestAge)
            << (m.PolyC[i].DELETE != 0 ? "  (deleted)" : "") << '\n';
    }
    if (o.saved) out << "Wrote " << *o.saved << " (" << m.LastPoly + 1 << " polygons)\n";
}

void writeItemsJson(const char* name, const std::vector<PostItem>& items, JsonWriter& json) {
    json.key(name);
    json.beginArray();
    for (const PostItem& item : items) {
        json.beginObject(Layout::Inline);
        json.member("text", item.text);
        json.member("polygon", item.polygon);
        json.endObject();
    }
    json.endArray();
}

void writeOptional(const char* name, const std::optional<std::string>& text, JsonWriter& json) {
    json.key(name);
    if (text)
        json.value(*text);
    else
        json.null();
}

void writePolygonsJson(const Model& m, const YieldsOutcome& o, JsonWriter& json) {
    json.key("polygonList");
    json.beginArray();
    for (int p = 0; p <= m.LastPoly; ++p) {
        const auto i = static_cast<std::size_t>(p);
        json.beginObject();
        json.member("index", p);
        json.member("NAME", m.Poly[i].NAME.str());
        json.member("DELETE", m.PolyC[i].DELETE);
        json.arrayMember("YIELDSTATEBefore", o.before[i].states);
        json.arrayMember("YIELDSTATE", m.Poly[i].YIELDSTATE);
        json.key("HarvAge");
        json.beginArray();
        for (const HarvAgeRec& ages : m.HarvAge[i]) writeHarvAgeJson(json, ages);
        json.endArray();
        json.endObject();
    }
    json.endArray();
}

void writeJson(const Model& m, const YieldsOutcome& o, std::ostream& out) {
    JsonWriter json(out);
    json.beginObject();
    json.member("project", o.project);
    writeOptional("saved", o.saved, json);
    writeOptional("refusal", o.refusal, json);
    writeItemsJson("errors", o.check.errors, json);
    writeItemsJson("warnings", o.check.warnings, json);
    json.member("VDYPDue", o.check.VDYPDue);
    json.member("TIPSYDue", o.check.TIPSYDue);
    json.member("VDYPUsed", o.check.VDYPUsed);
    json.member("TIPSYUsed", o.check.TIPSYUsed);
    json.arrayMember("lblAmt", o.check.lblAmt);
    json.member("lblStatus", o.check.lblStatus);
    json.arrayMember("ran", o.run.ran);
    json.key("counts");
    json.beginArray(Layout::Inline);
    for (const ErrorCounts& counts : o.run.counts) {
        json.beginObject();
        json.member("warnings", counts.warnings);
        json.member("errors", counts.errors);
        json.endObject();
    }
    json.endArray();
    json.arrayMember("lblStat", o.labels);
    writeItemsJson("post", o.run.post, json);
    json.arrayMember("boxes", o.boxes);
    writePolygonsJson(m, o, json);
    json.endObject();
    json.finish();
}

}  // namespace

std::string yieldsUsage() {
    return "  yields PROJECT [--all] [--vdyp-only | --tipsy-only] [--vdyp-program PATH]\n"
           "         [--tipsy-program PATH] [--save OUT] [--json] [--quiet] [--data DIR]\n"
           "      Calculate yield tables as the Calculate Yield Tables screen does: check every\n"
           "      polygon, run VDYP and TIPSY on the polygons whose curves are out of date\n"
           "      (--all: on every polygon that uses them), read the curves back and work out\n"
           "      the harvest ages. The programs and the TIPSY template come from the data\n"
           "      folder's VDYP/ and TIPSY/ unless named. A model that cannot run is reported\n"
           "      and its curves stay cleared. PROJECT is written in place (the former file\n"
           "      kept as .bak) unless --save OUT names another file. Exit status 3: nothing\n"
           "      to calculate; nothing is written.\n";
}

int runYields(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const BatchOptions options = parseOptions(args, {"--json", "--quiet", "--data"},
                                              {{"--all", 0},
                                               {"--vdyp-only", 0},
                                               {"--tipsy-only", 0},
                                               {"--vdyp-program", 1},
                                               {"--tipsy-program", 1},
                                               {"--save", 1}});
    requireOperands(options, 1, kForm);
    YieldRunRequest request;
    request.recalcAll = switchGiven(options, "--all");
    const bool vdypOnly = switchGiven(options, "--vdyp-only");
    const bool tipsyOnly = switchGiven(options, "--tipsy-only");
    if (vdypOnly && tipsyOnly) throw UsageError("--vdyp-only and --tipsy-only exclude each other");
    request.updateVDYP = !tipsyOnly;
    request.updateTIPSY = !vdypOnly;

    YieldsOutcome o;
    o.project = options.operands[0];
    BatchHost batch;
    auto m = newModel(batch, options);
    if (!loadProject(*m, batch, o.project, err)) return ExitFailed;
    if (!options.quiet) batch.prompt().writeNotes(err);
    const std::size_t loadBoxes = batch.prompt().shown().size();

    const WorkFolder work("arborex-yields");
    const std::string data = m->Paths[ArborexFolder];
    m->Paths[UserTemp] = work.path();
    m->Files[FileVDYPexe] = programOf(options, "--vdyp-program", data + "VDYP/vdypbat");
    m->Files[FileTIPSYexe] = programOf(options, "--tipsy-program", data + "TIPSY/btipsy");
    m->Files[FileBTP] = data + "TIPSY/arborex2.btp";
    for (int p = 0; p <= m->LastPoly; ++p)
        o.before.push_back({m->Poly[static_cast<std::size_t>(p)].YIELDSTATE});

    o.check = PreCalcCheck(*m);
    if (!yieldLegRuns(o.check, request, 0) && !yieldLegRuns(o.check, request, 1)) {
        o.refusal = refusalOf(o.check, request);
        options.json ? writeJson(*m, o, out) : writeText(*m, o, out);
        err << kProgram << ": " << *o.refusal << '\n';
        return ExitRefused;
    }

    LabelRecorder recorder;
    PosixProcessRunner runner;
    o.run = runYieldTables(*m, batch.host(), runner, request, recorder);
    o.labels = recorder.labels;
    for (std::size_t i = loadBoxes; i < batch.prompt().shown().size(); ++i)
        o.boxes.push_back(batch.prompt().shown()[i].text);

    const auto* saveTo = ownFlagValues(options, "--save");
    o.saved = saveTo ? saveTo->at(0) : o.project;
    if (!saveProject(*m, batch, *o.saved, kCurrentFileVersion, err)) return ExitFailed;
    options.json ? writeJson(*m, o, out) : writeText(*m, o, out);
    return ExitOk;
}

}  // namespace arborex::batch
