// The full harvest rate search, as the calculation screen runs it: cmdCalculate with the rate
// search ticked climbs from the Hanzlik rate, bisects, and ends with a final run of the rate
// found. The land base is the mixed forest of the synthetic project, from the calendar year
// 2030 (fixed, so that every run repeats), over 250 years and, at four sizes, over 100.
//
// Opening the screen (the harvest order lists and ExpandYields) is done before the timed loop;
// BM_OpenCalcScreen times it on its own.
//
// The size of a land base is bounded by the simulation's 16-bit tables. A 250-year run of this
// mix makes about 4.8 blocks (BlockLast) and 4.7 harvest entries (CutCount) per polygon, so
// 6,770 polygons is the most that a search completes: from 6,771 on, a full-length trial of the
// bisection overflows BlockLast, and 10,000 polygons overflow it in year 214 of the very first
// trial (BM_RateSearch at 10000/250 reports the error rather than hiding it). Over 100 years a
// polygon makes about 2.6 blocks and 12,574 polygons fit.
//
// Counters: trials (trial runs of the search), runs (trials and the final run), ms_per_run,
// and of the final run blocks (BlockLast + 1), cuts (CutCount) and rate (m3/yr found). The
// counters of a size do not change from build to build unless the simulation's results do.

#include <benchmark/benchmark.h>

#include <chrono>
#include <memory>
#include <string>

#include "base/errors.hpp"
#include "harvest/calculate.hpp"
#include "harvest/expansion.hpp"
#include "harvest/queue_order.hpp"
#include "synthetic_project.hpp"

namespace {

using namespace arborex;
using bench::Managements;

constexpr int16_t kFixedStartYear = 2030;
// Found by trial: one polygon more and a run of the search overflows BlockLast.
constexpr int kLargestOver250Years = 6770;
constexpr int kLargestOver100Years = 12574;

// The search's trial list: two heading rows, then one row per trial.
class TrialCounter final : public CalcObserver {
public:
    void trialRow(const std::string&) override { ++rows_; }
    void reset() { rows_ = 0; }
    int trials() const { return rows_ - 2; }

private:
    int rows_ = 0;
};

// The calculation screen on a project: the fields at their defaults with every ownership and
// the rate search ticked; open() fills the default harvest order and expands the curves.
struct CalcScreenSession {
    CalcScreenSession(Model project, int16_t horizon) : m(std::move(project)) {
        m.Settings.PLANHORZ = horizon;
        screen.chkCut = {true, true, true, true};
        screen.chkCalcRate = true;
        run.FixedStartYear = kFixedStartYear;
    }
    void open() {
        ShowPolygonOrder(session, 0);
        ExpandYields(m, status, run.Yields);
    }

    Model m;
    CalcScreen screen;
    CalcRun run;
    bench::DefaultPrompt prompt;
    SilentStatus status;
    TrialCounter observer;
    CalcSession session{m, screen, run, prompt, observer};
};

std::string overflowText(const ArborexError& e, const CalcState& c) {
    return "error " + std::to_string(e.number()) + " at BlockLast " + std::to_string(c.BlockLast) +
           ", CutCount " + std::to_string(c.CutCount) + ", RoadLast " + std::to_string(c.RoadLast);
}

void BM_RateSearch(benchmark::State& state) {
    const auto polygons = static_cast<int>(state.range(0));
    const auto horizon = static_cast<int16_t>(state.range(1));
    CalcScreenSession calc(bench::syntheticProject(polygons, Managements::MixedForest), horizon);
    calc.open();

    int trials = 0;
    double seconds = 0.0;
    for (auto _ : state) {
        calc.observer.reset();
        const auto start = std::chrono::steady_clock::now();
        try {
            if (!cmdCalculate(calc.session)) {
                state.SkipWithError("the calculation was refused");
                return;
            }
        } catch (const ArborexError& e) {
            // The 16-bit block, entry and road counters overflow rather than wrap.
            state.SkipWithError(overflowText(e, calc.m.Calc).c_str());
            return;
        }
        seconds += std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
        trials = calc.observer.trials();
    }
    const int runs = trials + 1;
    state.counters["trials"] = trials;
    state.counters["runs"] = runs;
    state.counters["ms_per_run"] =
        1000.0 * seconds / static_cast<double>(state.iterations()) / runs;
    state.counters["blocks"] = calc.m.Calc.BlockLast + 1;
    state.counters["cuts"] = calc.m.Calc.CutCount;
    state.counters["rate"] = calc.run.HarvestRate;
}
BENCHMARK(BM_RateSearch)
    ->ArgNames({"polygons", "horizon"})
    ->Args({1000, 100})
    ->Args({1000, 250})
    ->Args({2000, 250})
    ->Args({4000, 250})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);
// The largest land bases that fit over 250 and 100 years, and 10,000 polygons, which fit over
// 100 years but not over 250.
BENCHMARK(BM_RateSearch)
    ->ArgNames({"polygons", "horizon"})
    ->Args({kLargestOver250Years, 100})
    ->Args({kLargestOver250Years, 250})
    ->Args({10000, 100})
    ->Args({10000, 250})
    ->Args({kLargestOver100Years, 100})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);

// Opening the screen: the harvest order lists and the expansion of every curve in use, into
// fresh memory. The copy of the project and the closing are not timed.
void BM_OpenCalcScreen(benchmark::State& state) {
    const auto polygons = static_cast<int>(state.range(0));
    const Model project = bench::syntheticProject(polygons, Managements::MixedForest);
    int curves = 0;
    for (auto _ : state) {
        state.PauseTiming();
        auto calc = std::make_unique<CalcScreenSession>(project, 250);
        state.ResumeTiming();
        calc->open();
        benchmark::DoNotOptimize(calc->run.Yields.CurveTable.data());
        state.PauseTiming();
        curves = calc->run.Yields.CurveCount;
        calc.reset();
        state.ResumeTiming();
    }
    state.counters["curves"] = curves;
}
BENCHMARK(BM_OpenCalcScreen)
    ->ArgName("polygons")
    ->Arg(1000)
    ->Arg(kLargestOver250Years)
    ->Arg(kLargestOver100Years)
    ->Unit(benchmark::kMillisecond)
    ->Iterations(3);

}  // namespace

BENCHMARK_MAIN();
