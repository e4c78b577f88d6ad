#pragma once
// A small land base for tests of the simulation: polygons with straight-line curves that are
// easy to reason about, the calculation screen at its defaults with every ownership ticked, and
// a session over them with a scripted prompt and a recording observer.

#include <string>
#include <vector>

#include "harvest/calc_session.hpp"
#include "support/fake_host.hpp"

namespace arborex::test {

class RecordingCalcObserver final : public CalcObserver {
public:
    std::vector<std::string> statusTexts, searchLines, trialRows, ratesShown;
    std::string hanzlikLine;
    int finalRuns = 0;
    bool dirty = false;
    void statusText(const std::string& text) override { statusTexts.push_back(text); }
    void searchOpened(const std::string& line) override { hanzlikLine = line; }
    void searchStatus(const std::string& line) override { searchLines.push_back(line); }
    void trialRow(const std::string& row) override { trialRows.push_back(row); }
    void rateShown(const std::string& text) override { ratesShown.push_back(text); }
    void rateDirtyChanged(bool isDirty) override { dirty = isDirty; }
    void finalRunEnded() override { ++finalRuns; }
};

// What a test polygon is: area (ha), age, existing and future management, and the volume per
// hectare its curves gain each year (both models; VDYP volume all in species slot 0, a conifer).
struct TestStand {
    std::string name;
    float area = 10.0f;
    int16_t age = 0;
    int16_t existing = 0;
    int16_t future = 0;
    float volumePerYear = 2.0f;  // m3/ha/yr, up to the top of each grid
    int16_t harvestAge = 80;     // HAR1 and HAR2
};

class CalcFixture {
public:
    // Default grids, settings at the program's defaults, StartYear fixed at 2030, every
    // ownership ticked, no net-down, and the rows of the included list in polygon order.
    explicit CalcFixture(const std::vector<TestStand>& stands);

    // ExpandYields and the included list from the polygons, as the screen does on opening.
    void prepare();

    Model m;
    CalcScreen screen;
    CalcRun run;
    FakeHost host;
    RecordingCalcObserver observer;
    CalcSession session{m, screen, run, host.prompt, observer};
};

}  // namespace arborex::test
