#include "harvest/rate_search.hpp"

#include <cmath>
#include <string>

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/messages.hpp"
#include "base/numeric.hpp"
#include "harvest/simulation.hpp"

namespace arborex {

namespace {

constexpr int16_t kTryLimit = 100;

// A trial row's rate column: right-aligned in seven characters (never cut).
std::string rateColumn(const std::string& rate) {
    return rate.size() >= 7 ? rate : std::string(7 - rate.size(), ' ') + rate;
}

void showRate(CalcSession& s, const std::string& text) {
    s.screen.txtVolToCut = text;
    s.observer.rateShown(text);
}

}  // namespace

void Auto(CalcSession& s) {
    CalcRun& run = s.run;
    CalcObserver& view = s.observer;
    const bool area = run.AreaRun;
    const char* format = area ? "0.000" : "0";
    const std::string unit = area ? " ha/yr" : " m\xb3/yr";
    const double precision = area ? 0.001 : 1.0;

    double rate = 0.0;
    std::string startLine;
    if (area) {
        rate = 5.0;
        startLine = formatNumber(rate, format) + unit + " STARTING RATE";
    } else {
        rate = std::floor(static_cast<double>(run.HanzlikRate));
        startLine = formatNumber(rate, format) + unit + " HANZLIK - STARTING RATE";
    }
    double step = rate;
    view.searchOpened(startLine);
    view.trialRow("  Rate   Year   Error Message");
    view.trialRow("====================================");

    double best = 0.0;
    int16_t tries = 0;
    int16_t failed = 0;
    // The climb keeps to whole rates, also in an area-based run.
    run.HarvestRate = roundHalfEven(rate);
    for (;;) {
        AVAC(s, kTrialRun, failed);
        if (failed != 0 || tries >= kTryLimit) break;
        ++tries;
        view.trialRow(rateColumn(formatNumber(rate, format)));
        best = rate;
        rate += step;
        run.HarvestRate = roundHalfEven(rate);
    }
    view.trialRow(rateColumn(formatNumber(rate, format)) + "  " + run.LastError);

    step /= 2.0;
    rate -= step;
    while (step >= precision && tries < kTryLimit) {
        showRate(s, formatNumber(rate, format));
        view.searchStatus("Calculating with " + formatNumber(rate, format));
        view.statusText("Within " + formatNumber(step / 2.0, format) + unit + " of harvest rate");
        step /= 2.0;
        ++tries;
        run.HarvestRate = static_cast<float>(rate);
        AVAC(s, kTrialRun, failed);
        if (failed == 0) {
            view.trialRow(rateColumn(formatNumber(rate, format)));
            best = rate;
            rate += step;
        } else {
            view.trialRow(rateColumn(formatNumber(rate, format)) + "  " + run.LastError);
            rate -= step;
        }
        run.HarvestRate = static_cast<float>(rate);
    }

    view.statusText("");
    showRate(s, formatNumber(best, format));
    view.searchStatus(formatNumber(best, format) + "  HARVEST RATE");
    view.searchEnded();

    if (tries >= kTryLimit) {
        s.prompt.tell(kProgramTitle, GetMessage(s.m.Messages, "&NORATE"));
        return;
    }
    run.HarvestRate = static_cast<float>(best);
    AVAC(s, kFinalRun, failed);
}

void ReCalc(CalcSession& s, int16_t flag) {
    // Only a change repaints; marking twice is the same as marking once.
    const bool dirty = flag != 0;
    if (dirty == s.run.RateDirty) return;
    s.run.RateDirty = dirty;
    s.observer.rateDirtyChanged(dirty);
}

}  // namespace arborex
