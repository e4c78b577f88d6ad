// The run of the growth models, VDYP then TIPSY, and the confirmation of the curves they return.

#include "yield/yield_run.hpp"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/file_names.hpp"
#include "base/numeric.hpp"
#include "yield/curves.hpp"
#include "yield/harvest_ages.hpp"
#include "yield/polygon_changes.hpp"
#include "yield/tipsy_exchange.hpp"
#include "yield/vdyp_exchange.hpp"
#include "yield/work_files.hpp"

namespace arborex {

namespace {

constexpr int kPollMilliseconds = 500;
// lblStat index of each step, the TIPSY labels four further on.
constexpr int kExportLabel = 0;
constexpr int kModelLabel = 1;
constexpr int kImportLabel = 2;
constexpr int kErrorFileLabel = 3;
constexpr int kTipsyLabels = 4;

// The run's state as the screen's form-level variables held it.
struct Run {
    Model& m;
    Host& host;
    ProcessRunner& processes;
    const YieldRunRequest& request;
    YieldRunObserver& observer;
    YieldRunResult result;

    void stat(int model, int label, const std::string& text) {
        observer.stat(model * kTipsyLabels + label, text);
    }
    // The lines an error-file reader appended, shown as they came.
    void showPostFrom(std::size_t first) {
        for (std::size_t i = first; i < result.post.size(); ++i) observer.postAdded(result.post[i]);
    }
    void post(const std::string& text) {
        result.post.push_back({"Arborex\t\t" + text, -1});
        observer.postAdded(result.post.back());
    }
    std::string workFile(const char* name) const { return m.Paths[UserTemp] + name; }
};

// A model's output file as it is spelled on disk, in any case of its name.
std::string outputPath(const Model& m, const char* name) {
    const std::string found = findFileNoCase(m.Paths[UserTemp], name);
    if (found.empty()) throw ArborexError(ErrFileNotFound, m.Paths[UserTemp] + name);
    return found;
}

std::uintmax_t lengthOf(const std::string& path) {
    std::error_code failed;
    const std::uintmax_t length = std::filesystem::file_size(path, failed);
    if (failed) throw ArborexError(ErrFileNotFound, path);
    return length;
}

// The model has ended when this is called; two readings 500 ms apart that agree cover a file
// system that is still catching up. Returns the output's path.
std::string waitForOutput(Run& run, int model, const char* name) {
    const std::string path = outputPath(run.m, name);
    std::uintmax_t last = lengthOf(path);
    for (;;) {
        run.observer.pause(kPollMilliseconds);
        const std::uintmax_t length = lengthOf(path);
        if (length == last) return path;
        last = length;
        run.stat(model, kModelLabel, formatNumber(static_cast<double>(length), "#,##0"));
    }
}

// The model's program in Paths[1], then the wait for its output, whose path is returned; none,
// with the runner's message posted, when the program did not run to its end.
std::optional<std::string> runModel(Run& run, int model, const std::string& program,
                                    const std::vector<std::string>& arguments, const char* output) {
    run.stat(model, kModelLabel, model == 0 ? "Waiting for VDYP" : "Waiting for TIPSY");
    ProcessRequest request;
    request.program = program;
    request.arguments = arguments;
    request.workingFolder = run.m.Paths[UserTemp];
    run.result.ran[static_cast<std::size_t>(model)] = true;
    const ProcessResult outcome = run.processes.run(request);
    if (outcome.status != ProcessStatus::Finished) {
        run.post(outcome.message);
        return std::nullopt;
    }
    run.stat(model, kModelLabel, "Closing File");
    std::string path = waitForOutput(run, model, output);
    run.stat(model, kModelLabel, "Done");
    return path;
}

ImportProgress progressOn(Run& run, int model, int label) {
    return [&run, model, label](const std::string& text) { run.stat(model, label, text); };
}

// The model's error file into the post list; a missing file holds no messages.
template <typename Reader>
void readErrorFile(Run& run, int model, const char* name, const Reader& read) {
    run.stat(model, kErrorFileLabel, "Processing Error File");
    const std::size_t first = run.result.post.size();
    std::string path = findFileNoCase(run.m.Paths[UserTemp], name);
    if (path.empty()) path = run.workFile(name);
    const ErrorCounts& counts = run.result.counts[static_cast<std::size_t>(model)] = read(path);
    run.showPostFrom(first);
    run.stat(model, kErrorFileLabel, counts.label());
}

void runVDYP(Run& run) {
    Model& m = run.m;
    run.stat(0, kExportLabel, "Working");
    CreateFormatV(m, run.workFile(kLineDefFile));
    ExportVDYP(m, run.workFile(kVdypInFile), run.request.recalcAll);
    run.stat(0, kExportLabel, "Done");
    const auto output = runModel(run, 0, m.Files[FileVDYPexe], vdypArguments(m), kVdypOutFile);
    if (!output) return;

    run.stat(0, kImportLabel, "0%");
    ImportVDYP(m, run.host, *output, progressOn(run, 0, kImportLabel));
    run.stat(0, kImportLabel, "Done");
    readErrorFile(run, 0, kVdypErrorFile,
                  [&](const std::string& path) { return LoadVDYPError(m, path, run.result.post); });
    // Deleted polygons too: their species volumes were kept.
    if (m.Settings.YIELDMODE != 0)
        for (int p = 0; p <= m.LastPoly; ++p) updateVDYPmix(m, p);
    CalculateYield(m, 0);
}

void runTIPSY(Run& run) {
    Model& m = run.m;
    run.stat(1, kExportLabel, "Working");
    BtpFile btp = LoadBTPDefaults(m.Files[FileBTP]);
    btp.paths = {"", run.workFile(kTipsyInFile), run.workFile(kTipsyOutFile),
                 run.workFile(kTipsyErrorFile)};
    CreateBTPfile(btp, run.workFile(kBtpFile));
    ExportTIPSY(m, run.workFile(kTipsyInFile), run.request.recalcAll);
    run.stat(1, kExportLabel, "Done");
    const auto output = runModel(run, 1, m.Files[FileTIPSYexe], tipsyArguments(m), kTipsyOutFile);
    if (!output) return;

    run.stat(1, kImportLabel, "Importing");
    ImportTIPSY2(m, run.host, *output, progressOn(run, 1, kImportLabel));
    run.stat(1, kImportLabel, "Done");
    CalculateYield(m, 1);
    readErrorFile(run, 1, kTipsyErrorFile, [&](const std::string& path) {
        return LoadTIPSYError(m, run.host.prompt, path, run.result.post);
    });
}

// A scratch file made and removed: the models cannot write where the program cannot.
bool folderWritable(const std::string& folder) {
    std::error_code failed;
    if (folder.empty() || !std::filesystem::is_directory(folder, failed)) return false;
    const std::string probe = folder + "arborex-write-test.tmp";
    bool written = static_cast<bool>(std::ofstream(probe) << "x");
    written = std::filesystem::remove(probe, failed) && written;
    return written;
}

}  // namespace

void CalculateYield(Model& m, int16_t model) {
    calcAllCutAges(m, model);
    const auto t = static_cast<std::size_t>(model);
    const int16_t top = m.Settings.YieldMaxAge[t];
    const int16_t bottom = m.Settings.YieldMinAge[t];
    const int16_t step = m.Settings.YieldIncAge[t];
    for (int p = 0; p <= m.LastPoly; ++p) {
        if (m.PolyC.at(static_cast<std::size_t>(p)).DELETE != 0) continue;
        int16_t& state = m.Poly.at(static_cast<std::size_t>(p)).YIELDSTATE[t];
        if (state != 2) continue;
        const auto polygon = static_cast<int16_t>(p);
        if (FindVol(m, model, top, polygon) != 0.0f) {
            state = 3;
            continue;
        }
        // A curve whose volume ends at 0 may still have grown before: the top of the grid is
        // not the whole story.
        if (step <= 0) throw ArborexError(ErrDivisionByZero, "YieldIncAge");
        for (int age = bottom; age <= top; age += step) {
            if (FindVol(m, model, toI2(age), polygon) != 0.0f) {
                state = 3;
                break;
            }
        }
    }
}

bool yieldLegRuns(const PreCalcResult& counts, const YieldRunRequest& request, int model) {
    const bool ticked = model == 0 ? request.updateVDYP : request.updateTIPSY;
    const int16_t due = model == 0 ? counts.VDYPDue : counts.TIPSYDue;
    const int16_t used = model == 0 ? counts.VDYPUsed : counts.TIPSYUsed;
    return ticked && ((request.recalcAll && used > 0) || due > 0);
}

YieldRunResult runYieldTables(Model& m, Host& host, ProcessRunner& processes,
                              const YieldRunRequest& request, YieldRunObserver& observer) {
    Run run{m, host, processes, request, observer, {}};
    for (int i = 0; i < 4; ++i) run.stat(0, i, request.updateVDYP ? "" : "Skip");
    for (int i = 0; i < 4; ++i) run.stat(1, i, request.updateTIPSY ? "" : "Skip");
    deleteWorkFiles(m);

    const PreCalcResult counts = PreCalcCheck(m);
    const bool vdyp = yieldLegRuns(counts, request, 0);
    const bool tipsy = yieldLegRuns(counts, request, 1);
    if (!vdyp && !tipsy) return run.result;
    if (!folderWritable(m.Paths[UserTemp])) {
        run.post("The temporary folder \"" + m.Paths[UserTemp] +
                 "\" does not exist or cannot be written: the models were not run.");
        return run.result;
    }
    if (vdyp && !observer.cancelled()) runVDYP(run);
    if (tipsy && !observer.cancelled()) runTIPSY(run);
    return run.result;
}

}  // namespace arborex
