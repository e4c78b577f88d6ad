#include "harvest/regeneration.hpp"

#include <algorithm>
#include <string>

#include "base/errors.hpp"
#include "base/numeric.hpp"
#include "harvest/cutting.hpp"
#include "harvest/results.hpp"
#include "harvest/simulation.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex {

namespace {

// Slots of the TIPSY table's thinning figures in TIPSYCACHE.
constexpr std::size_t kThinAgeSlot = 0;
constexpr std::size_t kThinVolCutSlot = 1;

template <typename Record>
const Record& ofPolygon(const std::vector<Record>& records, int16_t polygon) {
    if (polygon < 0 || static_cast<std::size_t>(polygon) >= records.size())
        throw ArborexError(ErrSubscript, "polygon");
    return records[static_cast<std::size_t>(polygon)];
}

bool isPartial(int16_t method) {
    return method == kMethodFirstPartial || method == kMethodNextPartial;
}

// Takes the commercial thin of block b, which PreCut has opened.
void thinBlock(CalcSession& s, int16_t b, int16_t mode) {
    auto& list = s.m.Calc.BlockList;
    const PolyMgmt& pm = ofPolygon(s.m.PolyM, list[b].Polygon);
    const auto cutPerHa = static_cast<float>(pm.TIPSYCACHE[kThinVolCutSlot]);
    const std::size_t age = curveAge(std::min<int>(list[b].HarvestAge, kExpandedTopAge));
    const float perHa = curveAt(s.run.Yields, list[b].Curve).Age[age].ConVol;
    const float standing = list[b].Area * perHa;

    // What this step's allowance pays for, in m3 of thin.
    const auto budget = [&]() -> float {
        if (!s.run.AreaRun) return static_cast<float>(s.run.VolLeft);
        const float thinVol = static_cast<float>(list[b].ThinVol);
        const float perThin = quotient(standing, thinVol);
        const float scaled = perThin * s.run.AreaLeft;
        const float perArea = quotient(scaled, list[b].Area);
        return perArea * thinVol;
    };
    // Reports `amount` of thin and returns its clearcut equivalent.
    const auto report = [&](float amount) -> float {
        const float area = quotient(amount, cutPerHa);
        const float product = area * cutPerHa;
        const float equivalent = quotient(product, perHa);
        UpdateReports(s, amount, 0.0f, area, equivalent, kMethodThin, b, 0.0f);
        return equivalent;
    };

    // A thin larger than the allowance holds the clock: it takes whole steps until it is done.
    float step = budget();
    while (static_cast<float>(list[b].ThinVol) > step) {
        const float rest = static_cast<float>(list[b].ThinVol) - step;
        list[b].ThinVol = toI2(rest);
        report(step);
        IncrementYear(s, 0);
        step = budget();
        if (s.run.CurYear > s.run.EndYear || (mode == kTrialRun && s.run.ConstraintBroken)) break;
    }
    const int16_t last = list[b].ThinVol;
    const float equivalent = report(static_cast<float>(last));
    if (s.run.AreaRun)
        s.run.AreaLeft -= equivalent;
    else
        s.run.VolLeft = toI4(static_cast<long long>(s.run.VolLeft) - last);
    list[b].ThinVol = 0;
}

}  // namespace

void PlantBlock(CalcSession& s, int16_t block) {
    CalcState& calc = s.m.Calc;
    const int16_t n = toI2(calc.BlockLast + 1);
    calc.BlockLast = n;
    calc.BlockList.resize(n);
    calc.BlockList[block].NextBlock = n;
    Block child = calc.BlockList[block];
    const int16_t parentMethod = child.Method;
    const int16_t p = child.Polygon;
    const PolyData& poly = ofPolygon(s.m.Poly, p);
    const PolyMgmt& pm = ofPolygon(s.m.PolyM, p);
    const int16_t future = poly.MGNT[1];
    const int cur = s.run.CurYear;

    child.Status = kStatusWaiting;
    child.Rotation = toI2(child.Rotation + 1);
    int delay = 0;
    if (!isPartial(parentMethod)) {
        const int16_t own = ofPolygon(s.m.PolyC, p).REGENDELAY;
        delay = own == -1 ? s.m.Settings.REGENDELAY : own;
    }
    child.HarvestAge = targetHarvestAge(s.m, p, 1);
    if (isPartial(parentMethod)) {
        // The stand stays: it is set back to its residual age and comes back after the
        // re-entry period.
        const int16_t reentry = poly.PCNEXT == -1 ? s.m.Settings.PCnext : poly.PCNEXT;
        child.DueYear = toI2(cur + reentry + delay);
        child.StandYear = toI2(cur - child.ResidualAge + delay);
    } else {
        // Provisional for a clearcut: the end of the parent's cut moves them.
        child.DueYear = toI2(cur + child.HarvestAge);
        child.StandYear = toI2(cur + delay);
        if (child.Method == kMethodNSR) child.Method = kMethodClearcut;
    }
    child.CutFraction = 0.0f;
    child.Road = 0;
    child.Curve = child.NextCurve;
    child.PrevBlock = block;
    child.NextBlock = 0;
    if (future == 1 && pm.COMTHIN == 1) {
        // The thin is sized on the whole polygon, not on this piece of it; results have
        // always been worked out this way and are kept.
        const float net = poly.AREA - pm.ROADAREA;
        const float thin = net * static_cast<float>(pm.TIPSYCACHE[kThinVolCutSlot]);
        child.ThinVol = toI2(thin);
        child.ThinYear = toI2(cur + pm.TIPSYCACHE[kThinAgeSlot] + delay);
    } else {
        child.ThinVol = 0;
        child.ThinYear = 0;
    }

    bool unknownFuture = false;
    switch (future) {
        case 0:
        case 1:
            child.Status = isPartial(parentMethod) ? kStatusReentry : kStatusWaiting;
            child.Method = isPartial(parentMethod) ? kMethodNextPartial : kMethodClearcut;
            break;
        case 2:
            child.Status = kStatusLaterNC;
            child.Method = kMethodNC;
            break;
        case 3:
            child.Status = kStatusNSR;
            child.Method = kMethodNSR;
            break;
        default:
            unknownFuture = true;
            break;
    }
    calc.BlockList[n] = child;
    s.run.Walks.track(n, child);
    // No screen sets such a value; the block keeps what it copied and the value is shown.
    if (unknownFuture) s.prompt.tell(kProgramTitle, std::to_string(future));
}

void NSR(CalcSession& s, int16_t mode) {
    // The walk ends at the last block of its start: the successors it plants wait for the
    // next walk.
    const int last = s.m.Calc.BlockLast;
    std::vector<int>& list = s.run.Walks.nsr;
    const std::size_t count = list.size();  // blocks planted by this walk join behind
    std::size_t kept = 0;
    for (std::size_t r = 0; r < count; ++r) {
        const int b = list[r];
        const Block& blk = s.m.Calc.BlockList[b];
        if (blk.Status != kStatusNSR) continue;  // restocked for good
        list[kept++] = b;
        if (b > last || blk.DueYear > s.run.CurYear) continue;
        const auto block = static_cast<int16_t>(b);
        PreCut(s, block, kMethodNSR, mode);
        PlantBlock(s, block);
        Block& restocked = s.m.Calc.BlockList[b];  // PlantBlock has grown the list
        restocked.CutFraction = 1.0f;
        restocked.Status = toI2(restocked.Status + kFinishedStep);
        UpdateReports(s, 0.0f, 0.0f, restocked.Area, 0.0f, kMethodNSR, block, 0.0f);
    }
    list.erase(list.begin() + static_cast<std::ptrdiff_t>(kept),
               list.begin() + static_cast<std::ptrdiff_t>(count));
}

void CommercialThin(CalcSession& s, int16_t mode) {
    // The walk starts at block 1, so the first block of the list never thins; results have
    // always had that, and it is kept.
    const int last = s.m.Calc.BlockLast;
    auto& walks = s.run.Walks;
    if (walks.nextThinYear > s.run.CurYear) return;
    std::vector<int>& list = walks.thinning;
    std::size_t kept = 0;
    int next = 32767;
    for (std::size_t r = 0; r < list.size(); ++r) {
        const int b = list[r];
        const Block& blk = s.m.Calc.BlockList[b];
        if (blk.ThinVol <= 0) continue;  // thinned: nothing comes back
        if (b <= last && blk.ThinYear <= s.run.CurYear) {
            const auto block = static_cast<int16_t>(b);
            PreCut(s, block, kMethodThin, mode);
            thinBlock(s, block, mode);
        }
        const Block& after = s.m.Calc.BlockList[b];
        if (after.ThinVol <= 0) continue;
        list[kept++] = b;
        next = std::min<int>(next, after.ThinYear);
    }
    list.resize(kept);
    walks.nextThinYear = next;
}

}  // namespace arborex
