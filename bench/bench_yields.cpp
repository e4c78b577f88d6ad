// Harvest ages and the simulation's expanded curves on the largest projects they can serve.
// calcAllCutAges runs on 32,768 polygons. A calculation numbers its curves in 16 bits, so the
// expansion runs on the most curves that fit: 32,767 polygons with one curve each (VDYP and
// TIPSY by turns), and 16,383 polygons with a VDYP curve now and a TIPSY curve later. Such a
// table is 184 MB: into fresh memory most of the time goes to the system mapping its pages, so
// the expansion is also measured into a table that keeps its memory from an earlier expansion,
// as the calculation screen's does when it is opened again.

#include <benchmark/benchmark.h>

#include "harvest/expansion.hpp"
#include "synthetic_project.hpp"
#include "yield/harvest_ages.hpp"

namespace {

using namespace arborex;
using bench::Managements;

void BM_calcAllCutAges(benchmark::State& state) {
    static Model m = bench::syntheticProject(32768, Managements::NaturalThenManaged);
    for (auto _ : state) {
        calcAllCutAges(m, 0);
        calcAllCutAges(m, 1);
    }
    state.SetItemsProcessed(state.iterations() * 32768 * 2);
}
BENCHMARK(BM_calcAllCutAges)->Unit(benchmark::kMillisecond)->Iterations(3);

void expand(benchmark::State& state, const Model& m) {
    SilentStatus status;
    int curves = 0;
    for (auto _ : state) {
        ExpandedYields yields;
        ExpandYields(m, status, yields);
        benchmark::DoNotOptimize(yields.CurveTable.data());
        curves = yields.CurveCount;
    }
    state.SetItemsProcessed(state.iterations() * curves);
}

void BM_ExpandYields_OneCurveEach(benchmark::State& state) {
    static const Model m = bench::syntheticProject(32767, Managements::Alternating);
    expand(state, m);
}
BENCHMARK(BM_ExpandYields_OneCurveEach)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_ExpandYields_OneCurveEachReused(benchmark::State& state) {
    static const Model m = bench::syntheticProject(32767, Managements::Alternating);
    SilentStatus status;
    ExpandedYields yields;
    ExpandYields(m, status, yields);
    for (auto _ : state) {
        ExpandYields(m, status, yields);
        benchmark::DoNotOptimize(yields.CurveTable.data());
    }
    state.SetItemsProcessed(state.iterations() * yields.CurveCount);
}
BENCHMARK(BM_ExpandYields_OneCurveEachReused)->Unit(benchmark::kMillisecond)->Iterations(3);

void BM_ExpandYields_TwoCurvesEach(benchmark::State& state) {
    static const Model m = bench::syntheticProject(16383, Managements::NaturalThenManaged);
    expand(state, m);
}
BENCHMARK(BM_ExpandYields_TwoCurvesEach)->Unit(benchmark::kMillisecond)->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
