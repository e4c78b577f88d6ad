#include "harvest/cutting.hpp"

#include <algorithm>

#include "base/errors.hpp"
#include "base/numeric.hpp"
#include "harvest/calc_log.hpp"
#include "harvest/results.hpp"

namespace arborex {

namespace {

// Volume per hectare of a stand now: G, and its conifer (GC) and deciduous (GD) parts.
struct StandVolume {
    float total = 0.0f;
    float conifer = 0.0f;
    float deciduous = 0.0f;
};

// What one step took: its volume and the area it passed over.
struct Step {
    float volume = 0.0f;
    float area = 0.0f;
};

// An NC stand carries the polygon's NCVOLHA. Under conifer-only utilisation only the reported
// deciduous share goes: the total keeps it, so the allowance is still spent on all of it.
StandVolume ncVolume(const CalcSession& s, int16_t polygon) {
    if (polygon < 0 || static_cast<std::size_t>(polygon) >= s.m.PolyM.size())
        throw ArborexError(ErrSubscript, "polygon");
    const PolyMgmt& pm = s.m.PolyM[static_cast<std::size_t>(polygon)];
    StandVolume v;
    v.total = pm.NCVOLHA;
    const float coniferPart = v.total * static_cast<float>(100 - pm.NCDECIDUOUS);
    v.conifer = coniferPart / 100.0f;
    if (!s.screen.chkConifer) {
        const float deciduousPart = v.total * static_cast<float>(pm.NCDECIDUOUS);
        v.deciduous = deciduousPart / 100.0f;
    }
    return v;
}

StandVolume curveVolume(const CalcSession& s, int16_t curve, std::size_t age) {
    const ExpandedCurve& c = curveAt(s.run.Yields, curve);
    StandVolume v;
    v.conifer = c.Age[age].ConVol;
    v.deciduous = s.screen.chkConifer ? 0.0f : c.Age[age].DecVol;
    v.total = v.conifer + v.deciduous;
    return v;
}

// Reads the curve at the stand's age; a stand past the top of the table reads the top.
std::size_t cappedAge(int age) {
    return curveAge(std::min(age, kExpandedTopAge));
}

// The conifer and deciduous parts of a step's volume; none when the stand has no volume.
void shares(float volume, const StandVolume& g, float& conifer, float& deciduous) {
    conifer = 0.0f;
    deciduous = 0.0f;
    if (g.total == 0.0f) return;
    const float coniferProduct = volume * g.conifer;
    conifer = coniferProduct / g.total;
    const float deciduousProduct = volume * g.deciduous;
    deciduous = deciduousProduct / g.total;
}

// Volumes are compared and subtracted in the wide type, as the whole-number allowance meets
// a float volume; the rest is rounded back to a whole number.
bool fitsVolume(float volume, int32_t left) {
    return static_cast<double>(volume) <= static_cast<double>(left);
}
// The difference is stored to a float before it is rounded, as every step of the run is: a
// double would keep fractions the float drops and round some halves the other way.
int32_t volumeAfter(int32_t left, float volume) {
    const float rest = static_cast<float>(left) - volume;
    return toI4(static_cast<double>(rest));
}

// The block is done; its successor now stands on all of its ground.
void finish(Block& blk, Block& next) {
    blk.CutFraction = 1.0f;
    next.CutFraction = 0.0f;
    blk.Status = toI2(blk.Status + kFinishedStep);
}

// Part of the block is cut; the successor's fraction mirrors what is left.
void advance(Block& blk, Block& next, float fraction) {
    blk.CutFraction += fraction;
    next.CutFraction = 1.0f - blk.CutFraction;
}

Step wholeStandStep(CalcRun& run, Block& blk, Block& next, const StandVolume& g) {
    Step step;
    const float uncut = 1.0f - blk.CutFraction;
    const float u = uncut * blk.Area;
    if (run.AreaRun) {
        if (u <= run.AreaLeft) {
            step.volume = u * g.total;
            step.area = u;
            finish(blk, next);
            run.AreaLeft -= u;
        } else {
            const float fraction = quotient(run.AreaLeft, blk.Area);
            step.area = fraction * blk.Area;
            step.volume = g.total * run.AreaLeft;
            advance(blk, next, fraction);
            run.AreaLeft = 0.0f;
        }
        return step;
    }
    const float whole = blk.Area * g.total;
    const float rest = u * g.total;
    if (fitsVolume(rest, run.VolLeft)) {
        step.volume = rest;
        if (whole == 0.0f) {
            step.area = u;
        } else {
            const float part = quotient(rest, whole);
            step.area = part * blk.Area;
        }
        finish(blk, next);
        run.VolLeft = volumeAfter(run.VolLeft, rest);
    } else {
        step.volume = static_cast<float>(run.VolLeft);
        const float fraction = quotient(run.VolLeft, whole);
        step.area = blk.Area * fraction;
        advance(blk, next, fraction);
        run.VolLeft = 0;
    }
    return step;
}

// `removed` is G - R per hectare and `share` is S; the step is charged at its clearcut
// equivalent in an area-based run.
Step partialStep(CalcRun& run, Block& blk, Block& next, float removed, float share) {
    Step step;
    const float uncut = 1.0f - blk.CutFraction;
    const float u = uncut * blk.Area;
    if (run.AreaRun) {
        const float equivalent = u * share;
        if (equivalent <= run.AreaLeft) {
            step.area = u;
            step.volume = removed * u;
            finish(blk, next);
            run.AreaLeft -= equivalent;
        } else {
            const float perShare = quotient(run.AreaLeft, share);
            const float fraction = quotient(perShare, blk.Area);
            step.area = quotient(run.AreaLeft, share);
            step.volume = removed * step.area;
            advance(blk, next, fraction);
            run.AreaLeft = 0.0f;
        }
        return step;
    }
    const float rest = removed * u;
    if (!fitsVolume(rest, run.VolLeft)) {
        step.volume = static_cast<float>(run.VolLeft);
        const float part = quotient(run.VolLeft, rest);
        const float uncutShare = quotient(u, blk.Area);
        const float fraction = part * uncutShare;
        step.area = blk.Area * fraction;
        advance(blk, next, fraction);
        run.VolLeft = 0;
    } else {
        step.volume = rest;
        float fraction = 0.0f;
        if (rest != 0.0f) {
            // W / W is kept: it is 1, but it is how the fraction has always been worked out.
            const float part = quotient(rest, rest);
            const float uncutShare = quotient(u, blk.Area);
            fraction = part * uncutShare;
        }
        step.area = blk.Area * fraction;
        finish(blk, next);
        run.VolLeft = volumeAfter(run.VolLeft, rest);
    }
    return step;
}

}  // namespace

std::size_t curveAge(int age) {
    if (age < 0 || age > kExpandedTopAge) throw ArborexError(ErrSubscript, "stand age");
    return static_cast<std::size_t>(age);
}

void CutBlock(CalcSession& s, int16_t block, int16_t mode) {
    auto& list = s.m.Calc.BlockList;
    Block& blk = list[block];
    const int16_t method = blk.Method;
    StandVolume g;
    if (method == kMethodNC)
        g = ncVolume(s, blk.Polygon);
    else
        g = curveVolume(s, blk.Curve, cappedAge(s.run.CurYear - blk.StandYear));
    Block& next = list[blk.NextBlock];

    Step step;
    float equivalent = 0.0f;
    float potential = 0.0f;
    if (method == kMethodClearcut || method == kMethodNC) {
        step = wholeStandStep(s.run, blk, next, g);
        equivalent = step.area;
    } else if (method == kMethodFirstPartial || method == kMethodNextPartial) {
        // The residual is read where the successor stands: PlantBlock set it back to the
        // ResidualAge. Past the top of the table is a failure, not a cap.
        const std::size_t residualAge = curveAge(s.run.CurYear - next.StandYear);
        const ExpandedCurve& c = curveAt(s.run.Yields, blk.Curve);
        float residual = c.Age[residualAge].ConVol;
        if (!s.screen.chkConifer) residual = residual + c.Age[residualAge].DecVol;
        if (method == kMethodNextPartial) {
            const float factor = s.m.Settings.PCADJUSTFACT;
            g.total = g.total * factor;
            g.conifer = g.conifer * factor;
            g.deciduous = g.deciduous * factor;
            residual = residual * factor;
        }
        const float removed = g.total - residual;
        const float share = g.total == 0.0f ? 1.0f : quotient(removed, g.total);
        step = partialStep(s.run, blk, next, removed, share);
        equivalent = step.area * share;
        potential = step.area * g.total;
    } else {
        // ChooseBlock hands over only methods 1, 2, 3 and 7; anything else takes no step.
        return;
    }

    float conifer = 0.0f;
    float deciduous = 0.0f;
    shares(step.volume, g, conifer, deciduous);
    if (method == kMethodClearcut || method == kMethodNC) potential = conifer + deciduous;
    UpdateReports(s, conifer, deciduous, step.area, equivalent, method, block, potential);
    if (mode == 0 && s.run.LogFile && s.run.LogFile->is_open()) addtolog(s, s.run.CurYear, block);
}

void CutRoad(CalcSession& s, int16_t road) {
    RoadRec& rd = s.m.Calc.RoadList[road];
    const int16_t block = rd.RoadBlock;
    const Block& blk = s.m.Calc.BlockList[block];
    float conifer = 0.0f;
    float deciduous = 0.0f;
    float area = 0.0f;
    float equivalent = 0.0f;
    if (blk.Method == kMethodNSR) {
        // Nothing stands on NSR ground: the road takes its area and no allowance.
        area = rd.RoadArea;
        rd.RoadCut = 1.0f;
    } else {
        const StandVolume g =
            blk.Method == kMethodNC
                ? ncVolume(s, blk.Polygon)
                : curveVolume(s, rd.RoadCurve, cappedAge(s.run.CurYear - rd.RoadYear));
        const float uncut = 1.0f - rd.RoadCut;
        const float v = uncut * rd.RoadArea;
        const float rest = v * g.total;
        float volume = 0.0f;
        CalcRun& run = s.run;
        if (!run.AreaRun) {
            if (fitsVolume(rest, run.VolLeft)) {
                volume = rest;
                area = v;
                rd.RoadCut = 1.0f;
                run.VolLeft = volumeAfter(run.VolLeft, rest);
            } else {
                volume = static_cast<float>(run.VolLeft);
                area = quotient(run.VolLeft, g.total);
                const float part = quotient(area, rd.RoadArea);
                rd.RoadCut += part;
                run.VolLeft = 0;
            }
        } else if (v <= run.AreaLeft) {
            volume = v * g.total;
            area = v;
            rd.RoadCut = 1.0f;
            run.AreaLeft -= v;
        } else {
            area = run.AreaLeft;
            volume = g.total * run.AreaLeft;
            const float part = quotient(run.AreaLeft, rd.RoadArea);
            rd.RoadCut += part;
            run.AreaLeft = 0.0f;
        }
        equivalent = area;
        shares(volume, g, conifer, deciduous);
    }
    UpdateReports(s, conifer, deciduous, area, equivalent, kMethodRoad, block, conifer + deciduous);
}

}  // namespace arborex
