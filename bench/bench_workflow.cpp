// A forester's whole workflow on 999 polygons, the most the exchange files number, step by step:
//   BM_ImportGridText   the synthetic mixed forest's grid export read into an empty project
//                       through TxtToColumns (the data grid's Import Data of a text file)
//   BM_ImportBcLayers   the BC inventory's layers table through the database route with the
//                       mapping and the primary-layer filter of the README's worked example
//                       (skipped when ../shared/data/bc-vri-sample is absent)
//   BM_RateSearch       cmdCalculate with the rate search ticked, over 250 years
//   BM_ScheduleFile     the calculation report file (runCalcReport) after the search
//   BM_WrittenReport    the written report (createReport, plain text and Rich Text)
//   BM_SaveArx          the project with its calculation saved
//   BM_LoadARX          and loaded back
// The yield run of 999 polygons through the stand-ins is bench_yield_run's BM_YieldRun (673 ms
// without the screen's polling waits, 1,661 ms with them, on the machine of its figures).
//
// The screen is opened (harvest order, ExpandYields) before the timed search, as bench_calc
// does. Targets: import < 1 s, yield run < 2 s, search < 0.5 s, each report < 0.5 s, save and
// load < 0.2 s each.

#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "batch_project.hpp"
#include "exchange/grid_export.hpp"
#include "exchange/text_import.hpp"
#include "exchange_import.hpp"
#include "frame/project_open.hpp"
#include "frame/startup.hpp"
#include "harvest/calculate.hpp"
#include "harvest/expansion.hpp"
#include "harvest/queue_order.hpp"
#include "model/project_file.hpp"
#include "report/calc_report.hpp"
#include "report/document_report.hpp"
#include "support/temp_dir.hpp"
#include "synthetic_project.hpp"

namespace {

using namespace arborex;

constexpr int kPolygons = 999;
constexpr int16_t kFixedStartYear = 2030;
const std::string kBcLayers =
    std::string(ARBOREX_SHARED_DATA_DIR) + "/bc-vri-sample/vri_layers.csv";

const Model& forest() {
    static const Model m = bench::syntheticProject(kPolygons, bench::Managements::MixedForest);
    return m;
}

test::TempDir& folder() {
    static test::TempDir d;
    return d;
}
std::string workFile(const char* name) {
    return folder().path() + "/" + name;
}

std::uintmax_t sizeOf(const std::string& path) {
    std::error_code failed;
    const auto size = std::filesystem::file_size(path, failed);
    return failed ? 0 : size;
}

// A project with no polygon that knows the forest's species tables, as a new project would.
Model emptyProject(const Model& like) {
    Model m;
    ResetVars(m);
    SetDefaults(m);
    EmptyArrays(m);
    m.Ref = like.Ref;
    return m;
}

void BM_ImportGridText(benchmark::State& state) {
    bench::QuietHost quiet;
    const std::string text = gridExportText(gridCells(forest()));
    const Model empty = emptyProject(forest());
    Model m;
    PolygonImport run;
    for (auto _ : state) {
        state.PauseTiming();
        m = empty;
        run = PolygonImport{};
        run.DupMode = 0;
        state.ResumeTiming();
        if (!TxtToColumns(m, quiet.host, text, run))
            return state.SkipWithError("the grid's export was refused");
    }
    state.counters["polygons"] = m.LastPoly + 1;
    state.counters["added"] = run.counts.ImpAdded;
    state.counters["text_kB"] = static_cast<double>(text.size()) / 1e3;
}
BENCHMARK(BM_ImportGridText)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_ImportBcLayers(benchmark::State& state) {
    if (!std::filesystem::exists(kBcLayers))
        return state.SkipWithError("no BC inventory extract in ../shared/data");
    batch::BatchHost batch;
    Model installed;
    programDefaults(installed);
    installed.Paths[ArborexFolder] = ARBOREX_BENCH_SHARE;
    LoadReferenceData(installed, batch.host());
    EmptyArrays(installed);
    batch::useInstalledDefaultPolygon(installed, batch.host());

    batch::ImportRequest request;
    request.file = kBcLayers;
    request.database = true;
    request.where = {{"VDYP7_LAYER_CD", "P"}};
    request.mapping = {{"POLYGON_NUMBER", "POLYGON"},
                       {"ESTIMATED_SITE_INDEX", "VSITEINDEX"},
                       {"EST_AGE_SPP1", "AGE"},
                       {"EST_HEIGHT_SPP1", "VHEIGHTTOTAL"}};
    Model m;
    PolygonImport run;
    batch::ImportReport report;
    for (auto _ : state) {
        state.PauseTiming();
        m = installed;
        run = PolygonImport{};
        run.DupMode = 0;
        report = batch::ImportReport{};
        state.ResumeTiming();
        batch::importDatabase(m, batch, request, run, report);
        if (!report.refusal.empty()) return state.SkipWithError(report.refusal.c_str());
    }
    state.counters["polygons"] = m.LastPoly + 1;
    state.counters["skipped"] = run.counts.ImpSkipped;
}
BENCHMARK(BM_ImportBcLayers)->Unit(benchmark::kMillisecond)->Iterations(5);

// The calculation screen on the forest, its fields at their defaults with every ownership and
// the rate search ticked, over 250 years from a fixed year.
struct Calculation {
    Calculation() : m(forest()) {
        m.Settings.PLANHORZ = 250;
        screen.chkCut = {true, true, true, true};
        screen.chkCalcRate = true;
        run.FixedStartYear = kFixedStartYear;
        ShowPolygonOrder(session, 0);
        ExpandYields(m, status, run.Yields);
    }
    bool search() { return cmdCalculate(session); }

    Model m;
    CalcScreen screen;
    CalcRun run;
    bench::DefaultPrompt prompt;
    SilentStatus status;
    CalcObserver observer;
    CalcSession session{m, screen, run, prompt, observer};
};

// The forest after its search, for the reports and the project file.
Calculation& searched() {
    static Calculation c = [] {
        Calculation fresh;
        if (!fresh.search()) throw std::runtime_error("the rate search was refused");
        return fresh;
    }();
    return c;
}

void BM_RateSearch(benchmark::State& state) {
    Calculation c;
    for (auto _ : state)
        if (!c.search()) return state.SkipWithError("the calculation was refused");
    state.counters["rate"] = c.run.HarvestRate;
    state.counters["blocks"] = c.m.Calc.BlockLast + 1;
}
BENCHMARK(BM_RateSearch)->Unit(benchmark::kMillisecond)->Iterations(3);

// A run at the rate found, writing a row per polygon every report increment.
void BM_ScheduleFile(benchmark::State& state) {
    Calculation& c = searched();
    const std::string path = workFile("schedule.txt");
    for (auto _ : state)
        if (!runCalcReport(c.session, path, true))
            return state.SkipWithError("the calculation was refused");
    state.counters["rate"] = c.run.HarvestRate;
    state.counters["file_kB"] = static_cast<double>(sizeOf(path)) / 1e3;
}
BENCHMARK(BM_ScheduleFile)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_WrittenReport(benchmark::State& state, ReportFormat format) {
    Calculation& c = searched();
    const std::string path = workFile(format == ReportFormat::RTF ? "report.rtf" : "report.txt");
    const ReportContext context{0.0, c.run.HanzlikRate};
    for (auto _ : state) createReport(c.m, format, path, context);
    state.counters["file_kB"] = static_cast<double>(sizeOf(path)) / 1e3;
}
BENCHMARK_CAPTURE(BM_WrittenReport, txt, ReportFormat::TXT)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);
BENCHMARK_CAPTURE(BM_WrittenReport, rtf, ReportFormat::RTF)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

void BM_SaveArx(benchmark::State& state) {
    bench::QuietHost quiet;
    Calculation& c = searched();
    const std::string path = workFile("workflow.arx");
    for (auto _ : state) SaveArx(c.m, quiet.host, path, kCurrentFileVersion, false);
    state.counters["file_MB"] = static_cast<double>(sizeOf(path)) / 1e6;
}
BENCHMARK(BM_SaveArx)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_LoadARX(benchmark::State& state) {
    bench::QuietHost quiet;
    const std::string path = workFile("to_load.arx");
    SaveArx(searched().m, quiet.host, path, kCurrentFileVersion, false);
    Model m;
    SetDefaults(m);
    for (auto _ : state)
        if (!LoadARX(m, quiet.host, path)) return state.SkipWithError("the project did not load");
    state.counters["polygons"] = m.LastPoly + 1;
    state.counters["blocks"] = m.Calc.BlockLast + 1;
}
BENCHMARK(BM_LoadARX)->Unit(benchmark::kMillisecond)->Iterations(5);

}  // namespace

BENCHMARK_MAIN();
