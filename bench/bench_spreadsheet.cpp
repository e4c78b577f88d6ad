// The data grid on 5,000 polygons, offscreen: opening it (every cell's text through MakeVarStr,
// then the first paint), and going to the last row and column with a paint there. The cell
// texts alone are measured too, since they are most of the opening.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QScrollBar>
#include <QTableView>

#include "exchange/grid_export.hpp"
#include "synthetic_project.hpp"
#include "ui/frm_spreadsheet.hpp"

namespace {

using namespace arborex;

constexpr int kPolygons = 5000;

Model& project() {
    static Model m = bench::syntheticProject(kPolygons, bench::Managements::MixedForest);
    return m;
}

void BM_gridCells(benchmark::State& state) {
    const Model& m = project();
    for (auto _ : state) benchmark::DoNotOptimize(gridCells(m).size());
    state.SetItemsProcessed(state.iterations() * kPolygons);
}
BENCHMARK(BM_gridCells)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_OpenGrid(benchmark::State& state) {
    bench::QuietHost quiet;
    Model& m = project();
    for (auto _ : state) {
        frmSpreadsheet grid(m, quiet.host);
        grid.show();
        grid.findChild<QTableView*>("grd")->viewport()->repaint();
        QApplication::processEvents();
    }
    state.SetItemsProcessed(state.iterations() * kPolygons);
}
BENCHMARK(BM_OpenGrid)->Unit(benchmark::kMillisecond)->Iterations(5);

void BM_ScrollToEnd(benchmark::State& state) {
    bench::QuietHost quiet;
    frmSpreadsheet grid(project(), quiet.host);
    grid.show();
    QApplication::processEvents();
    auto* grd = grid.findChild<QTableView*>("grd");
    for (auto _ : state) {
        grd->scrollToBottom();
        grd->horizontalScrollBar()->setValue(grd->horizontalScrollBar()->maximum());
        grd->viewport()->repaint();
        state.PauseTiming();
        grd->scrollToTop();
        grd->horizontalScrollBar()->setValue(0);
        grd->viewport()->repaint();
        state.ResumeTiming();
    }
}
BENCHMARK(BM_ScrollToEnd)->Unit(benchmark::kMillisecond)->Iterations(20);

}  // namespace

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
