#pragma once
// The state of the calculation screen as the simulation sees it: the screen's fields (kept as
// the text the user typed, read the way the screen reads them), the state of a run, and the
// observer through which a run shows its progress. A CalcSession ties them to the project and to
// the prompt; every routine of the simulation takes it by reference.
//
// The tables a run leaves (BlockList, RoadList, CutList, YearTable and their counters) live in
// Model::Calc, because the project file keeps them.

#include <algorithm>
#include <array>
#include <cstdint>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "base/prompt.hpp"
#include "harvest/expansion.hpp"
#include "model/model.hpp"

namespace arborex {

// Harvest methods, as blocks, entries and reports number them.
inline constexpr int16_t kMethodClearcut = 1;
inline constexpr int16_t kMethodFirstPartial = 2;
inline constexpr int16_t kMethodNextPartial = 3;
inline constexpr int16_t kMethodThin = 4;
inline constexpr int16_t kMethodRoad = 5;
inline constexpr int16_t kMethodNSR = 6;
inline constexpr int16_t kMethodNC = 7;

// A block's Status while it waits; every step that finishes a block adds kFinishedStep.
inline constexpr int16_t kStatusWaiting = 1;
inline constexpr int16_t kStatusReentry = 2;
inline constexpr int16_t kStatusQueued = 3;
inline constexpr int16_t kStatusRelaxed = 4;
inline constexpr int16_t kStatusNSR = 6;
inline constexpr int16_t kStatusLaterNC = 7;
inline constexpr int16_t kFinishedStep = 16;

// One row of a harvest order list: its text and the polygon it stands for (its item data).
struct OrderRow {
    std::string text;
    int16_t polygon = 0;
};

enum OrderList : int { ExcludedList = 0, IncludedList = 1 };

// The calculation screen's fields, named after their controls, with their design defaults.
struct CalcScreen {
    std::string txtVolToCut = "1000";
    std::string txtPeriod = "1";
    std::string txtRelax = "0";
    std::string txtStartIn = "0";
    bool chkArea = false;
    bool chkConifer = false;
    bool chkDisPC = false;
    std::array<bool, 4> chkCut{};
    bool chkCalcYears = false;
    bool chkCalcRate = false;
    bool chkConAge = false;
    std::string txtAge = "0";
    std::string txtAgePerc = "0";
    bool chkConHeight = false;
    std::string txtHeight = "0";
    std::string txtHeightPerc = "0";
    bool chkConNetDown = false;
    std::string txtNetDown = "15";
    // Hidden and disabled; carried through the project file only.
    std::string txtNoHarv = "0";
    std::string txtHarvGap = "0";
    std::string txtWithin = "0";
    // lstCutOrder(0), the excluded polygons, and lstCutOrder(1), the included ones, top first.
    std::array<std::vector<OrderRow>, 2> lstCutOrder;
};

// Volume cut by species and year: [species row][year offset + 1], column 0 the whole run.
struct SpeciesTally {
    static constexpr int kLastOffset = 250;
    std::vector<std::array<double, kLastOffset + 2>> rows;
    // Zeroed, rows 0..lastSpecies.
    void allocate(int lastSpecies) { rows.assign(static_cast<std::size_t>(lastSpecies + 1), {}); }
    // Adds to one cell (offset -1 is the total); an offset outside -1..250, the tally's hard
    // limit, or a species outside the rows throws ErrSubscript.
    void add(int species, int offset, double value);
};

// What the periodic delimited table gathers between its rows, one element per polygon.
struct PeriodAccumulators {
    std::vector<double> ReportVolAcc;
    std::vector<double> ReportAreaAcc;
    std::vector<double> ReportCceAcc;
    std::vector<int16_t> ReportFlag;  // bit n set: method n was used
    int16_t ReportMinAge = 999;
    int16_t ReportMaxAge = 0;
    double ReportSum1 = 0.0;  // age x clearcut-equivalent area
    double ReportSum2 = 0.0;  // age x volume
    // Zeroed for `polygons` polygons, ages back to 999 and 0.
    void clear(int polygons);
};

// The state of a run, rebuilt by each AVAC, and what the screen keeps between runs.
struct CalcRun {
    bool AreaRun = false;  // the rate is in ha/yr
    int16_t ReportEvery = 0;
    double HarvestRate = 0.0;
    int16_t Period = 1;
    int16_t Relax = 0;
    int16_t CurYear = 0;
    int16_t EndYear = 0;
    int16_t StartYear = 0;
    int16_t DelayYears = 0;
    int16_t FirstCutYear = 0;
    int32_t VolLeft = 0;
    float AreaLeft = 0.0f;
    bool ConstraintBroken = false;
    std::string LastError;  // "Nothing Harvestable" or "Constraints"
    bool FirstSetup = false;
    std::vector<uint16_t> CutQueue;  // 65535 marks an entry taken
    int16_t QueueLast = -1;

    // The blocks that each walk of the loop may still find, in BlockList order. SetupCut clears
    // them, every new block joins those it may qualify for, and a walk drops the entries that
    // can no longer qualify, so that a walk costs what it can find rather than all blocks made.
    struct BlockWalks {
        std::vector<int> waiting;   // Status 1: the list pass of ChooseBlock
        std::vector<int> reentry;   // Status 2: partial cut re-entries
        std::vector<int> nsr;       // Status 6: restocking
        std::vector<int> thinning;  // ThinVol above 0, block 0 never
        std::vector<int> standing;  // all but finished blocks: the inventory
        int queueHead = 0;          // CutQueue entries before it are all taken
        // No entry of `thinning` is due before nextThinYear, none of `reentry` before
        // nextReentryYear, no untaken CutQueue entry before nextQueueYear, so that a walk that
        // cannot find anything is not made.
        int nextThinYear = 32767;
        int nextReentryYear = 32767;
        int nextQueueYear = 32767;
        void clear() {
            waiting.clear();
            reentry.clear();
            nsr.clear();
            thinning.clear();
            standing.clear();
            queueHead = 0;
            nextThinYear = nextReentryYear = nextQueueYear = 32767;
        }
        // A new block, at the end of BlockList.
        void track(int index, const Block& block) {
            if (block.Status == 1) waiting.push_back(index);
            if (block.Status == 2) {
                reentry.push_back(index);
                nextReentryYear = std::min<int>(nextReentryYear, block.DueYear);
            }
            if (block.Status == 6) nsr.push_back(index);
            if (block.ThinVol > 0 && index > 0) {
                thinning.push_back(index);
                nextThinYear = std::min<int>(nextThinYear, block.ThinYear);
            }
            standing.push_back(index);
        }
    } Walks;

    // The rows of CutOrder whose ownership is ticked, in order.
    std::vector<int16_t> IncludedPoly;
    int16_t IncludedLast = -1;

    ExpandedYields Yields;  // CurveTable, PolyCurveExisting, PolyCurveFuture

    float HanzlikRate = 0.0f;
    float HanzlikRotation = 0.0f;

    int16_t ResultsValid = 0;  // 1 from the first final run on
    SpeciesTally SpeciesVolT, SpeciesVolV;
    PeriodAccumulators Report;
    std::vector<int16_t> ExistingIdx, FutureIdx;  // block index + 1 per IncludedPoly row

    bool RateDirty = false;
    bool RecalcOnOpen = false;
    std::unique_ptr<std::ofstream> LogFile;  // null when no log is open

    // The calendar year a run starts in; 0 takes today's year, as the program does. Batch runs
    // set it so that a run can be repeated.
    int16_t FixedStartYear = 0;
};

// What a run shows while it works. Every call has a default that shows nothing.
class CalcObserver {
public:
    virtual ~CalcObserver() = default;
    // The shared status line; empty text clears it.
    virtual void statusText(const std::string& /*text*/) {}
    // The rate search's window: opened with its starting line (lblHanzlik), its line of the
    // moment (lblStatus), the rows of its trial list (lstCalcStatus), closed for the user.
    virtual void searchOpened(const std::string& /*hanzlikLine*/) {}
    virtual void searchStatus(const std::string& /*line*/) {}
    virtual void trialRow(const std::string& /*row*/) {}
    virtual void searchEnded() {}
    // txtVolToCut was given a new text by the search (the screen's field is updated too).
    virtual void rateShown(const std::string& /*text*/) {}
    // The rate field and the Calculate button turn red (true) or back (false).
    virtual void rateDirtyChanged(bool /*dirty*/) {}
    // A final run ended: the schedule, polygon view and graph are to be refreshed.
    virtual void finalRunEnded() {}
    // The periodic delimited table (written only while ReportEvery is above 0).
    virtual void reportHeading() {}
    virtual void CreateReport(int16_t /*initial*/) {}
};

struct CalcSession {
    Model& m;
    CalcScreen& screen;
    CalcRun& run;
    Prompt& prompt;
    CalcObserver& observer;
};

// StartYear of a run: FixedStartYear, or the year of today's date.
int16_t calendarYear(const CalcRun& run);

}  // namespace arborex

namespace arborex {

// A screen field read as a whole number: tolerant read, rounded half to even, checked to 16 bits.
int16_t fieldWhole(const std::string& text);

}  // namespace arborex
