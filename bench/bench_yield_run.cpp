// A yield run of 999 polygons, the most the exchange files number, through the bundled
// stand-ins vdypbat and btipsy: runYieldTables with "recalculate all" does the exports, runs
// both programs, reads their outputs and error files and confirms the curves (CalculateYield).
// Every polygon is natural now (VDYP, 301 rows a curve on the default grid) and planted after
// harvest (TIPSY, 36 rows), with a valid inventory from the installed species and PSYU tables,
// so the models reject nothing and the run posts no message. (The synthetic project of the
// other benchmarks has species tables of its own and curves already filled: not a model input.)
//
// The screen waits 500 ms after each model before it trusts the output's length (two readings
// that agree): screen_wait:0 leaves the wait out, so the figure is the work alone;
// screen_wait:1 sleeps as the screen does. The parts on their own: CreateFormatV + ExportVDYP,
// the batch file + ExportTIPSY, each stand-in run alone on the exported files, each import of
// a finished output, and CalculateYield of both models.
//
// Figures (Release, 2 x AMD EPYC 2.6 GHz, GCC 12, /tmp on ext4; 24 Nov 2026, load about 3 with
// a fuzz campaign beside it; medians of 3 repetitions, wall time):
//   BM_YieldRun/screen_wait:0       673 ms  (817 ms while vdypbat formatted with snprintf)
//   BM_YieldRun/screen_wait:1     1,661 ms
//   BM_StandIn/vdypbat              477 ms  35.2 MB of vdypout.dat (300,699 rows)
//   BM_Import/ImportVDYP             83 ms  441 MB/s
//   BM_StandIn/btipsy                77 ms  2.0 MB of TIPSYout.dat
//   BM_Import/ImportTIPSY2          5.7 ms
//   BM_CalculateYield               3.9 ms  both models
//   BM_Export/ExportTIPSY           2.6 ms  with the batch file
//   BM_Export/ExportVDYP            2.1 ms  with linedef.txt
// vdypbat is still most of the run: pow and exp of the growth model lead its profile now,
// then the columns of its lines.

#include <benchmark/benchmark.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <string>
#include <thread>

#include "frame/startup.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/species_binding.hpp"
#include "posix_process_runner.hpp"
#include "support/temp_dir.hpp"
#include "synthetic_project.hpp"
#include "yield/tipsy_exchange.hpp"
#include "yield/vdyp_exchange.hpp"
#include "yield/work_files.hpp"
#include "yield/yield_run.hpp"

namespace {

using namespace arborex;

constexpr int kPolygons = 999;

struct Stand {
    std::array<const char*, 4> vdypCodes;
    std::array<int16_t, 4> vdypPercents;
    std::array<const char*, 3> tipsyCodes;
    std::array<int16_t, 3> tipsyPercents;
};

// Interior pine and spruce, dry Douglas-fir, wet spruce-fir and two coastal mixes, with codes
// of the installed species tables.
constexpr std::array<Stand, 5> kStands = {{
    {{"PL", "SX", "", ""}, {70, 30, 0, 0}, {"PL", "SX", ""}, {80, 20, 0}},
    {{"FD", "PL", "AT", ""}, {60, 30, 10, 0}, {"FD", "PL", ""}, {70, 30, 0}},
    {{"SX", "BL", "PL", ""}, {50, 40, 10, 0}, {"SX", "PL", ""}, {70, 30, 0}},
    {{"HW", "CW", "BA", ""}, {50, 30, 20, 0}, {"HW", "CW", ""}, {60, 40, 0}},
    {{"CW", "HW", "FD", "DR"}, {40, 30, 20, 10}, {"FD", "CW", "HW"}, {50, 30, 20}},
}};
constexpr std::array<int16_t, 6> kPsyus = {101, 102, 201, 305, 401, 403};

void fillPolygon(Model& m, int p) {
    const auto i = static_cast<std::size_t>(p);
    PolyData& d = m.Poly[i];
    PolyCalc& c = m.PolyC[i];
    PolyMgmt& g = m.PolyM[i];
    projectFollowingPolygon(d, c, g);
    const Stand& stand = kStands[i % kStands.size()];
    d.NAME = "YR" + std::to_string(p + 1);
    d.AREA = 2.0f + static_cast<float>(p % 37);
    d.AGE = static_cast<int16_t>(20 + p % 160);
    d.MGNT = {0, 1};
    d.YIELDSTATE = {3, 3};  // current: only "recalculate all" runs them
    d.VSITEINDEX = static_cast<float>(14 + p % 15);
    d.CLOSURE = static_cast<int16_t>(40 + p % 31);
    d.PSYU = kPsyus[i % kPsyus.size()];
    d.VUTILIZ = 12.5f;
    d.VAF = 1.0f;
    for (std::size_t s = 0; s < stand.vdypCodes.size(); ++s) {
        d.VS[s] = stand.vdypCodes[s];
        d.VP[s] = stand.vdypPercents[s];
    }
    for (std::size_t s = 0; s < stand.tipsyCodes.size(); ++s) {
        d.TS[s] = stand.tipsyCodes[s];
        d.TP[s] = stand.tipsyPercents[s];
    }
    d.TI[0] = static_cast<int16_t>(16 + p % 13);
    d.DENSITY = 1200 + 100 * (p % 9);
    d.REGEN = 1;
    d.OAF1 = 15;
    d.OAF2 = 5;
    g.TUTILIZ = 12.5f;
    if (p % 5 == 0) {  // a commercial thin, which the report prints as a fall in volume
        g.COMTHIN = 1;
        g.CTSTEMHA = 600;
        g.CTHEIGHT = 15.0f;
    }
    if (p % 7 == 0) {
        g.FERT = 1;
        g.FSTARTYEAR = 30;
        g.FINCREASE = 8.0f;
    }
    c.SORT = c.LISTROW = static_cast<int16_t>(p);
    c.VX = {1, 1, 1, 1, 1, 1};
}

// The project with the installation's reference data and the staged stand-ins, working in
// `work`.
Model yieldProject(Host& host, const std::string& work) {
    Model m;
    programDefaults(m);
    const std::string share = ARBOREX_BENCH_SHARE;
    m.Paths[ArborexFolder] = share;
    m.Paths[UserTemp] = work;
    m.Files[FileVDYPexe] = share + "VDYP/vdypbat";
    m.Files[FileTIPSYexe] = share + "TIPSY/btipsy";
    m.Files[FileBTP] = share + "TIPSY/arborex2.btp";
    LoadReferenceData(m, host);
    EmptyArrays(m);
    ResizePolygonArrays(m, kPolygons);
    m.LastPoly = kPolygons - 1;
    for (int p = 0; p < kPolygons; ++p) fillPolygon(m, p);
    findSpecIDX(m);
    return m;
}

// Labels and lists unseen; the output polls wait as long as the screen's timer only when
// `sleeps`.
class QuietRun final : public YieldRunObserver {
public:
    explicit QuietRun(bool sleeps = false) : sleeps_(sleeps) {}
    int pauses = 0;
    void stat(int, const std::string&) override {}
    void postAdded(const PostItem&) override {}
    void pause(int milliseconds) override {
        ++pauses;
        if (sleeps_) std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
    }

private:
    bool sleeps_;
};

// The project and its work folder, made once for every benchmark.
struct Bench {
    test::TempDir folder;
    std::string path = folder.path() + "/";
    bench::QuietHost quiet;
    Model project = yieldProject(quiet.host, path);
    batch::PosixProcessRunner runner;

    std::string work(const char* name) const { return path + name; }

    // The VDYP leg's inputs as the run writes them.
    void exportVdyp(Model& m) const {
        CreateFormatV(m, work(kLineDefFile));
        ExportVDYP(m, work(kVdypInFile), true);
    }
    void exportTipsy(Model& m) const {
        BtpFile btp = LoadBTPDefaults(m.Files[FileBTP]);
        btp.paths = {"", work(kTipsyInFile), work(kTipsyOutFile), work(kTipsyErrorFile)};
        CreateBTPfile(btp, work(kBtpFile));
        ExportTIPSY(m, work(kTipsyInFile), true);
    }
    void exportFor(Model& m, int model) const { model == 0 ? exportVdyp(m) : exportTipsy(m); }
    bool runModel(const Model& m, int model) {
        ProcessRequest request;
        request.program = m.Files[model == 0 ? FileVDYPexe : FileTIPSYexe];
        request.arguments = model == 0 ? vdypArguments(m) : tipsyArguments(m);
        request.workingFolder = path;
        const ProcessResult result = runner.run(request);
        return result.status == ProcessStatus::Finished && result.exitCode == 0;
    }
    std::uintmax_t sizeOf(const char* name) const {
        std::error_code failed;
        const auto size = std::filesystem::file_size(work(name), failed);
        return failed ? 0 : size;
    }
};

Bench& shared() {
    static Bench b;
    return b;
}

int confirmed(const Model& m, int model) {
    int count = 0;
    for (int p = 0; p <= m.LastPoly; ++p)
        if (m.Poly[static_cast<std::size_t>(p)].YIELDSTATE[static_cast<std::size_t>(model)] == 3)
            ++count;
    return count;
}

void BM_YieldRun(benchmark::State& state) {
    Bench& b = shared();
    YieldRunRequest request;
    request.recalcAll = true;
    YieldRunResult result;
    Model m;
    QuietRun observer(state.range(0) != 0);
    for (auto _ : state) {
        state.PauseTiming();
        m = b.project;
        observer.pauses = 0;
        state.ResumeTiming();
        result = runYieldTables(m, b.quiet.host, b.runner, request, observer);
    }
    if (!result.post.empty() || !result.ran[0] || !result.ran[1])
        return state.SkipWithError("the run posted messages or a model did not run");
    state.counters["vdyp_current"] = confirmed(m, 0);
    state.counters["tipsy_current"] = confirmed(m, 1);
    state.counters["poll_waits"] = observer.pauses;
    state.counters["vdypout_MB"] = static_cast<double>(b.sizeOf(kVdypOutFile)) / 1e6;
    state.counters["tipsyout_MB"] = static_cast<double>(b.sizeOf(kTipsyOutFile)) / 1e6;
}
// screen_wait:1 waits out the polls as the screen does.
BENCHMARK(BM_YieldRun)
    ->ArgName("screen_wait")
    ->Arg(0)
    ->Arg(1)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

const char* const kInputFile[2] = {kVdypInFile, kTipsyInFile};
const char* const kOutputFile[2] = {kVdypOutFile, kTipsyOutFile};

// CreateFormatV + ExportVDYP, or the batch file + ExportTIPSY.
void BM_Export(benchmark::State& state, int model) {
    Bench& b = shared();
    Model m = b.project;
    for (auto _ : state) b.exportFor(m, model);
    state.counters["input_kB"] = static_cast<double>(b.sizeOf(kInputFile[model])) / 1e3;
}
BENCHMARK_CAPTURE(BM_Export, ExportVDYP, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Export, ExportTIPSY, 1)->Unit(benchmark::kMillisecond);

// The program alone, started as the run starts it, on the exported files.
void BM_StandIn(benchmark::State& state, int model) {
    Bench& b = shared();
    b.exportFor(b.project, model);
    for (auto _ : state)
        if (!b.runModel(b.project, model)) return state.SkipWithError("the stand-in failed");
    state.counters["output_MB"] = static_cast<double>(b.sizeOf(kOutputFile[model])) / 1e6;
}
BENCHMARK_CAPTURE(BM_StandIn, vdypbat, 0)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK_CAPTURE(BM_StandIn, btipsy, 1)->Unit(benchmark::kMillisecond)->Iterations(3);

// The reader on the stand-in's finished output; the polygons' states put back between reads,
// as the VDYP reader takes the first line's values only from a polygon not yet read.
void BM_Import(benchmark::State& state, int model) {
    Bench& b = shared();
    Model m = b.project;
    b.exportFor(m, model);
    if (!b.runModel(m, model)) return state.SkipWithError("the stand-in failed");
    const std::string output = b.work(kOutputFile[model]);
    for (auto _ : state) {
        state.PauseTiming();
        for (PolyData& d : m.Poly) d.YIELDSTATE[static_cast<std::size_t>(model)] = 1;
        state.ResumeTiming();
        if (model == 0)
            ImportVDYP(m, b.quiet.host, output, {});
        else
            ImportTIPSY2(m, b.quiet.host, output, {});
    }
    state.counters["MB_per_s"] =
        benchmark::Counter(static_cast<double>(b.sizeOf(kOutputFile[model])) / 1e6 *
                               static_cast<double>(state.iterations()),
                           benchmark::Counter::kIsRate);
}
BENCHMARK_CAPTURE(BM_Import, ImportVDYP, 0)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(BM_Import, ImportTIPSY2, 1)->Unit(benchmark::kMillisecond);

// Both models' curves confirmed and their harvest ages worked out, from a finished run.
void BM_CalculateYield(benchmark::State& state) {
    Bench& b = shared();
    Model ran = b.project;
    QuietRun observer;
    YieldRunRequest request;
    request.recalcAll = true;
    runYieldTables(ran, b.quiet.host, b.runner, request, observer);
    Model m;
    for (auto _ : state) {
        state.PauseTiming();
        m = ran;
        for (PolyData& d : m.Poly) d.YIELDSTATE = {2, 2};
        state.ResumeTiming();
        CalculateYield(m, 0);
        CalculateYield(m, 1);
    }
    state.counters["current"] = confirmed(m, 0) + confirmed(m, 1);
}
BENCHMARK(BM_CalculateYield)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
