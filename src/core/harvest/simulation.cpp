#include "harvest/simulation.hpp"

#include <algorithm>
#include <string>

#include "base/errors.hpp"
#include "base/messages.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "harvest/cutting.hpp"
#include "harvest/regeneration.hpp"
#include "harvest/results.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex {

namespace {

int16_t curveIndexOf(const std::vector<int16_t>& perPolygon, int polygon) {
    if (polygon < 0 || static_cast<std::size_t>(polygon) >= perPolygon.size())
        throw ArborexError(ErrSubscript, "PolyCurve");
    return perPolygon[static_cast<std::size_t>(polygon)];
}

bool allowanceSpent(const CalcRun& run) {
    return run.AreaRun ? run.AreaLeft == 0.0f : run.VolLeft == 0;
}

// The reasons why polygon p cannot be cut, one line each; empty when it can.
std::string skipReasons(const CalcSession& s, int p) {
    const PolyData& poly = s.m.Poly.at(static_cast<std::size_t>(p));
    const int16_t existing = poly.MGNT[0];
    const int16_t future = poly.MGNT[1];
    std::string reasons;
    if (s.run.FirstSetup && poly.AREA <= 0.0f) reasons += "    Area is <= 0 ha\r\n";
    if (poly.HAR[0] == 0) reasons += "    Harvest Age = 0\r\n";
    if (poly.YIELDSTATE[0] < 3 && !(existing != 0 && future != 0))
        reasons += "    VDYP Yield information missing\r\n";
    if (poly.YIELDSTATE[1] < 3 && (existing == 1 || future == 1))
        reasons += "    TIPSY Yield information missing\r\n";
    return reasons;
}

// One first-rotation block on a piece of polygon p: `piece` ha net of the net-down, `road` ha
// of it road.
void addBlock(CalcSession& s, int p, float piece, float road) {
    Model& m = s.m;
    CalcRun& run = s.run;
    CalcState& calc = m.Calc;
    const PolyData& poly = m.Poly.at(static_cast<std::size_t>(p));
    const PolyMgmt& mgmt = m.PolyM.at(static_cast<std::size_t>(p));

    calc.BlockLast = toI2(calc.BlockLast + 1);
    calc.BlockList.resize(calc.BlockLast);
    Block& block = calc.BlockList[calc.BlockLast];
    block = Block{};
    block.Status = kStatusWaiting;
    block.Polygon = static_cast<int16_t>(p);
    block.Curve = curveIndexOf(run.Yields.PolyCurveExisting, p);
    block.NextCurve = curveIndexOf(run.Yields.PolyCurveFuture, p);
    block.Rotation = 1;

    const int16_t standYear = toI2(run.StartYear - poly.AGE);
    block.StandYear = standYear;
    bool partial = false;
    switch (poly.MGNT[0]) {
        case 2:  // NC waits with the ordinary blocks, to restock when its time comes
            block.Method = kMethodNC;
            block.DueYear = toI2(run.StartYear + mgmt.NCRESTOCKIN);
            break;
        case 3:
            block.Status = kStatusNSR;
            block.Method = kMethodNSR;
            block.DueYear = toI2(run.StartYear + mgmt.NSRRESTOCKIN);
            break;
        default:
            partial = poly.SILVI != 0 && !s.screen.chkDisPC;
            block.Method = partial ? kMethodFirstPartial : kMethodClearcut;
            block.HarvestAge = targetHarvestAge(m, p, 0);
            block.DueYear = toI2(standYear + block.HarvestAge);
            break;
    }

    if (poly.MGNT[0] == 1 && mgmt.COMTHIN == 1) {
        const int16_t thinAge = mgmt.TIPSYCACHE[0];
        const int16_t thinVolCut = mgmt.TIPSYCACHE[1];
        const float netPiece = piece - road;
        const float thinVolume = netPiece * static_cast<float>(thinVolCut);
        block.ThinVol = toI2(thinVolume);
        block.ThinYear = toI2(standYear + thinAge);
    }

    if (mgmt.ROADAREA <= 0.0f) {
        block.Area = piece;
    } else {
        calc.RoadLast = toI2(calc.RoadLast + 1);
        calc.RoadList.resize(calc.RoadLast);
        RoadRec& rec = calc.RoadList[calc.RoadLast];
        rec = RoadRec{};
        rec.RoadArea = road;
        rec.RoadBlock = calc.BlockLast;
        rec.RoadCurve = block.Curve;
        rec.RoadYear = block.StandYear;
        block.Road = calc.RoadLast;
        block.Area = piece - road;
    }
    if (partial) SetPC(m, run.Yields, block);
    run.Walks.track(calc.BlockLast, block);
}

// Splits polygon p at SPLIT hectares: pieces of SPLIT, then the remainder.
void splitPolygon(CalcSession& s, int p, float netFactor) {
    const float area = s.m.Poly.at(static_cast<std::size_t>(p)).AREA;
    const float roadArea = s.m.PolyM.at(static_cast<std::size_t>(p)).ROADAREA;
    const float largest = s.m.Settings.SPLIT;
    float rest = area;
    while (rest > 0.0f) {
        float piece;
        if (rest < largest) {
            piece = rest;
            rest = 0.0f;
        } else {
            piece = largest;
            rest = rest - largest;
        }
        const float share = piece / area;
        const float roadShare = share * roadArea;
        const float road = roadShare * netFactor;
        const float netPiece = piece * netFactor;
        addBlock(s, p, netPiece, road);
    }
}

// Takes the block of the smallest positive wait below Relax + 1, if any.
int16_t relaxedBlock(CalcSession& s) {
    const CalcState& calc = s.m.Calc;
    int found = -1;
    int best = 0;
    for (int b = 0; b <= calc.BlockLast; ++b) {
        const Block& block = calc.BlockList[b];
        if (block.Status != kStatusWaiting && block.Status != kStatusQueued) continue;
        const int wait = block.DueYear - s.run.CurYear;
        if (wait < s.run.Relax + 1 && (found == -1 || wait < best)) {
            found = b;
            best = wait;
        }
    }
    return static_cast<int16_t>(found);
}

int16_t findBlock(CalcSession& s) {
    CalcRun& run = s.run;
    CalcState& calc = s.m.Calc;

    // Partial cut re-entries first; among them the one that fell due last.
    int found = -1;
    int largest = 0;
    if (run.Walks.nextReentryYear <= run.CurYear) {
        std::vector<int>& list = run.Walks.reentry;
        std::size_t kept = 0;
        int next = 32767;
        for (const int b : list) {
            const Block& block = calc.BlockList[b];
            if (block.Status != kStatusReentry) continue;  // finished: never a re-entry again
            list[kept++] = b;
            next = std::min<int>(next, block.DueYear);
            if (block.DueYear > run.CurYear) continue;
            const int since = block.DueYear - run.CurYear;
            if (found == -1 || since > largest) {
                found = b;
                largest = since;
            }
        }
        list.resize(kept);
        run.Walks.nextReentryYear = next;
    }
    if (found != -1) return static_cast<int16_t>(found);

    // A queued block's due year never changes, so a walk that found nothing knows the earliest
    // year in which the next one can.
    if (run.Walks.nextQueueYear <= run.CurYear) {
        int next = 32767;
        for (int i = run.Walks.queueHead; i <= run.QueueLast; ++i) {
            uint16_t& entry = run.CutQueue.at(static_cast<std::size_t>(i));
            if (entry == kQueueTaken) {
                if (i == run.Walks.queueHead) ++run.Walks.queueHead;
                continue;
            }
            const int due = calc.BlockList[entry].DueYear;
            if (due <= run.CurYear) {
                const auto b = static_cast<int16_t>(entry);
                entry = kQueueTaken;
                if (i == run.Walks.queueHead) ++run.Walks.queueHead;
                return b;
            }
            next = std::min(next, due);
        }
        run.Walks.nextQueueYear = next;
    }

    // Every block the walk passes over joins the queue, in harvest order.
    {
        std::vector<int>& list = run.Walks.waiting;
        std::size_t kept = 0;
        for (std::size_t r = 0; r < list.size(); ++r) {
            const int b = list[r];
            Block& block = calc.BlockList[b];
            if (block.Status != kStatusWaiting) continue;  // never waits again
            if (block.DueYear <= run.CurYear) {
                list.erase(list.begin() + static_cast<std::ptrdiff_t>(kept),
                           list.begin() + static_cast<std::ptrdiff_t>(r));
                return static_cast<int16_t>(b);
            }
            run.QueueLast = toI2(run.QueueLast + 1);
            run.CutQueue.resize(static_cast<std::size_t>(run.QueueLast) + 1);
            run.CutQueue[static_cast<std::size_t>(run.QueueLast)] = static_cast<uint16_t>(b);
            run.Walks.nextQueueYear = std::min<int>(run.Walks.nextQueueYear, block.DueYear);
            block.Status = kStatusQueued;
        }
        list.clear();
    }

    const int16_t relaxed = relaxedBlock(s);
    if (relaxed == -1) return -1;
    calc.BlockList[relaxed].Status = kStatusRelaxed;
    for (int i = 0; i <= run.QueueLast; ++i) {
        uint16_t& entry = run.CutQueue.at(static_cast<std::size_t>(i));
        if (entry == static_cast<uint16_t>(relaxed)) {
            entry = kQueueTaken;
            break;
        }
    }
    return relaxed;
}

// Standing volume, height and age of one block for the inventory.
struct Standing {
    int age = 0;
    float height = 0.0f;
    float conifer = 0.0f;
    float deciduous = 0.0f;
};

Standing standingOn(const CalcSession& s, const Block& block, float area) {
    Standing st;
    st.age = s.run.CurYear - block.StandYear;
    switch (block.Method) {
        case kMethodClearcut:
        case kMethodFirstPartial:
        case kMethodNextPartial: {
            st.age = std::clamp(st.age, 0, kExpandedTopAge);
            const ExpandedCurve& curve = curveAt(s.run.Yields, block.Curve);
            const CurveAge& row = curve.Age[static_cast<std::size_t>(st.age)];
            st.height = row.Height;
            st.conifer = area * row.ConVol;
            st.deciduous = area * row.DecVol;
            break;
        }
        case kMethodNC: {
            const PolyMgmt& mgmt = s.m.PolyM.at(static_cast<std::size_t>(block.Polygon));
            st.height = mgmt.NCHEIGHT;
            const float volume = area * mgmt.NCVOLHA;
            const float decShare = static_cast<float>(mgmt.NCDECIDUOUS) / 100.0f;
            const float conShare = 1.0f - decShare;
            st.conifer = volume * conShare;
            const float decScaled = volume * static_cast<float>(mgmt.NCDECIDUOUS);
            st.deciduous = decScaled / 100.0f;
            break;
        }
        default:  // NSR ground stands bare
            break;
    }
    return st;
}

void takeInventory(CalcSession& s, YearRec& year, int ageLimit, float heightLimit) {
    const CalcState& calc = s.m.Calc;
    std::vector<int>& list = s.run.Walks.standing;
    std::size_t kept = 0;
    // Summed in locals, in the same order, so that the compiler need not store each sum back
    // to the year's record on every block.
    float invVolume = year.InvVolume, invArea = year.InvArea;
    float invAreaAge = year.InvAreaAge, invAreaHeight = year.InvAreaHeight;
    float matureCon = year.MatureCon, matureDec = year.MatureDec;
    float immatureCon = year.ImmatureCon, immatureDec = year.ImmatureDec;
    std::array<float, 10> ageClassArea = year.AgeClassArea;
    for (const int b : list) {
        const Block& block = calc.BlockList[b];
        // A finished block stays cut for the rest of the run: its parent was done before it
        // could be chosen, and a second visit to it cuts nothing.
        if (block.CutFraction == 1.0f && block.Status >= kFinishedStep) continue;
        list[kept++] = b;
        if (block.CutFraction == 1.0f) continue;
        const float uncut = 1.0f - block.CutFraction;
        float area = uncut * block.Area;
        if (block.Road != 0) {
            const RoadRec& road = calc.RoadList[block.Road];
            const float roadUncut = 1.0f - road.RoadCut;
            const float roadLeft = roadUncut * road.RoadArea;
            area = area + roadLeft;
        }
        const Standing st = standingOn(s, block, area);
        invVolume += st.conifer + st.deciduous;
        if (st.age >= ageLimit) invAreaAge += area;
        if (st.height >= heightLimit) invAreaHeight += area;
        invArea += area;
        // NC and NSR blocks of the first rotation have HarvestAge 0 and so count as mature.
        if (st.age >= block.HarvestAge) {
            matureCon += st.conifer;
            matureDec += st.deciduous;
        } else {
            immatureCon += st.conifer;
            immatureDec += st.deciduous;
        }
        ageClassArea.at(static_cast<std::size_t>(ageClass(st.age))) += area;
    }
    list.resize(kept);
    year.InvVolume = invVolume;
    year.InvArea = invArea;
    year.InvAreaAge = invAreaAge;
    year.InvAreaHeight = invAreaHeight;
    year.MatureCon = matureCon;
    year.MatureDec = matureDec;
    year.ImmatureCon = immatureCon;
    year.ImmatureDec = immatureDec;
    year.AgeClassArea = ageClassArea;
}

}  // namespace

void AVAC(CalcSession& s, int16_t mode, int16_t& failed) {
    Model& m = s.m;
    CalcRun& run = s.run;
    CalcState& calc = m.Calc;
    const bool trial = mode != kFinalRun;
    failed = 0;

    if (!trial) {
        run.SpeciesVolT.allocate(m.Ref.SpeciesTCount);
        run.SpeciesVolV.allocate(m.Ref.SpeciesVCount);
        run.ResultsValid = 1;
        if (run.AreaRun)
            calc.inputs.SavedAreaRate = run.HarvestRate;
        else
            calc.inputs.SavedVolRate = toI4(run.HarvestRate);
    }

    SetupCut(s);
    run.ConstraintBroken = false;
    calc.CutCount = 0;
    calc.CutList.reset();

    run.EndYear = toI2(run.StartYear + calc.CalcHorizon);
    calc.YearTable.reset();
    calc.YearTable.resize(calc.CalcHorizon);
    run.CurYear = run.StartYear;

    IncrementYear(s, -1);
    const auto stopped = [&] { return trial && run.ConstraintBroken; };
    if (!stopped()) {
        while (run.CurYear <= run.EndYear) {
            NSR(s, mode);
            CommercialThin(s, mode);
            const int16_t b = run.CurYear >= run.FirstCutYear ? ChooseBlock(s) : int16_t{-1};
            if (b == -1) {
                if (trial && run.CurYear >= run.FirstCutYear) {
                    run.LastError = "Nothing Harvestable";
                    failed = -1;
                    return;
                }
                IncrementYear(s, 0);
                if (stopped()) break;
                continue;
            }
            PreCut(s, b, calc.BlockList[b].Method, mode);
            if (stopped() || run.CurYear > run.EndYear) break;
            CutBlock(s, b, mode);
            // A block finished exactly as the allowance runs out is visited once more in the
            // next step with nothing left to cut; that empty step is reported and kept.
            bool ended = false;
            while (allowanceSpent(run)) {
                IncrementYear(s, 0);
                if (run.CurYear > run.EndYear || stopped()) {
                    ended = true;
                    break;
                }
                CutBlock(s, b, mode);
            }
            if (ended) break;
        }
    }

    if (stopped()) {
        run.LastError = "Constraints";
        failed = -1;
        return;
    }
    if (!trial) s.observer.finalRunEnded();
}

void SetupCut(CalcSession& s) {
    Model& m = s.m;
    CalcRun& run = s.run;
    CalcState& calc = m.Calc;

    run.QueueLast = -1;
    run.CutQueue.clear();
    run.Walks.clear();
    calc.BlockLast = -1;
    calc.BlockList.reset();
    calc.RoadLast = 0;
    calc.RoadList.reset();
    calc.NetArea = 0.0f;

    float netFactor = 1.0f;
    if (s.screen.chkConNetDown) {
        const auto netDown = static_cast<float>(tolerantNumber(s.screen.txtNetDown) / 100.0);
        netFactor = 1.0f - netDown;
    }

    run.StartYear = calendarYear(run);
    run.FirstCutYear = toI2(run.StartYear + run.DelayYears);

    std::string skipped;
    for (int i = 0; i <= run.IncludedLast; ++i) {
        const int p = run.IncludedPoly.at(static_cast<std::size_t>(i));
        const std::string reasons = skipReasons(s, p);
        // A skipped polygon still counts toward the net area.
        const float netPolygon = m.Poly.at(static_cast<std::size_t>(p)).AREA * netFactor;
        calc.NetArea += netPolygon;
        if (!reasons.empty()) {
            skipped += m.Poly[static_cast<std::size_t>(p)].NAME.str() + "\r\n" + reasons + "\r\n";
            continue;
        }
        splitPolygon(s, p, netFactor);
    }

    // Only the first setup of a calculation tells; later trials run silently.
    if (run.FirstSetup) {
        run.FirstSetup = false;
        if (!skipped.empty())
            nmsgbox(m.Messages, s.prompt, "&PRECUTERR", skipped, "Skip Polygons", MsgOk, 0,
                    m.MsgResult);
    }

    if (run.ReportEvery > 0) {
        run.Report.clear(m.LastPoly + 1);
        s.observer.reportHeading();
    }
}

int16_t ChooseBlock(CalcSession& s) {
    const int16_t b = findBlock(s);
    if (b == -1) return -1;
    CalcRun& run = s.run;
    Block& block = s.m.Calc.BlockList[b];
    if (block.Method == kMethodFirstPartial && s.m.Settings.PCADJUSTHARVAGE == 1) {
        // The stand's true age replaces the plan.
        block.HarvestAge = toI2(run.CurYear - block.StandYear);
        block.DueYear = run.CurYear;
        SetPC(s.m, run.Yields, block);
    }
    // The successor exists before a single cubic metre is cut.
    PlantBlock(s, b);
    return b;
}

void PreCut(CalcSession& s, int16_t block, int16_t method, int16_t /*mode*/) {
    const Block& b = s.m.Calc.BlockList[block];
    // The road opens once, with the first entry of the first rotation, and is paid first.
    if (b.Rotation == 1 && b.Road != 0) {
        const int16_t road = b.Road;
        AddReportCut(s, block, 5);
        CutRoad(s, road);
    }
    AddReportCut(s, block, method);
}

void IncrementYear(CalcSession& s, int16_t first) {
    CalcRun& run = s.run;
    if (run.CurYear > run.EndYear) return;

    const CalcScreen& screen = s.screen;
    const int ageShare = screen.chkConAge ? fieldWhole(screen.txtAgePerc) : 0;
    // Read as floats, like the heights and ratios they are compared with: a stand of exactly
    // the constraint's height counts as reaching it.
    const float heightShare =
        screen.chkConHeight ? static_cast<float>(tolerantNumber(screen.txtHeightPerc)) : 0.0f;
    const auto heightLimit = static_cast<float>(tolerantNumber(screen.txtHeight));
    const int ageLimit = fieldWhole(screen.txtAge);

    // Written again when the year closes, so that a year's inventory is what its harvest left.
    const int offset = run.CurYear - run.StartYear;
    YearRec& year = s.m.Calc.YearTable[offset];
    year.MatureCon = year.MatureDec = year.ImmatureCon = year.ImmatureDec = 0.0f;
    year.AgeClassArea.fill(0.0f);
    year.InvVolume = year.InvArea = year.InvAreaHeight = year.InvAreaAge = 0.0f;
    takeInventory(s, year, ageLimit, heightLimit);

    if (run.ReportEvery > 0 && ((offset + 1) % run.ReportEvery == 0 || first != 0))
        s.observer.CreateReport(first);

    // The ratios are compared as stored floats; with nothing left standing they cannot be
    // formed at all.
    if (year.InvArea == 0.0f) throw ArborexError(ErrDivisionByZero, "IncrementYear");
    const float heightScaled = year.InvAreaHeight * 100.0f;
    const float heightRatio = heightScaled / year.InvArea;
    const float ageScaled = year.InvAreaAge * 100.0f;
    const float ageRatio = ageScaled / year.InvArea;
    run.ConstraintBroken = !(heightRatio >= heightShare && ageRatio >= ageShare);

    // What a step leaves unspent is gone: allowances never carry over.
    if (run.CurYear + 1 < run.FirstCutYear) {
        run.VolLeft = 0;
        run.AreaLeft = 0.0f;
    } else if (run.AreaRun) {
        run.AreaLeft = static_cast<float>(run.Period * run.HarvestRate);
    } else {
        run.AreaLeft = 0.0f;
        run.VolLeft = toI4(run.Period * run.HarvestRate);
    }

    if (first == 0) run.CurYear = toI2(run.CurYear + run.Period);
}

}  // namespace arborex
