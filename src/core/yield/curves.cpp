#include "yield/curves.hpp"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "base/errors.hpp"
#include "base/numeric.hpp"

namespace arborex {
namespace {

constexpr int16_t kNeverAge = 999;
constexpr int kThinAge = 0;
constexpr int kThinVolBefore = 2;
constexpr int kThinVolAfter = 3;

bool isCurveModel(int16_t yieldType) {
    return yieldType == 0 || yieldType == 1;
}

// The age walks index the per-model settings directly, so a bad model is a bad subscript.
void requireCurveModel(int16_t yieldType) {
    if (!isCurveModel(yieldType)) throw ArborexError(ErrSubscript);
}

int16_t checkedPolygon(const Model& m, int16_t polygon) {
    const auto p = static_cast<std::size_t>(polygon);
    if (polygon < 0 || polygon > m.LastPoly || p >= m.Poly.size() || p >= m.PolyC.size() ||
        p >= m.PolyM.size())
        throw ArborexError(ErrSubscript);
    return polygon;
}

// One polygon's rows of a curve, readable up to the model's last grid step.
template <typename Row>
class PolygonRows {
public:
    PolygonRows(const YieldGrid<Row>& grid, const Model& m, int16_t polygon, int16_t lastStep)
        : rows_(grid.rowsOf(checkedPolygon(m, polygon))),
          last_(std::min<int>(lastStep, grid.rowCount() - 1)) {}

    const Row& at(int step) const {
        if (step < 0 || step > last_) throw ArborexError(ErrSubscript);
        return rows_[step];
    }

private:
    const Row* rows_;
    int last_;
};

// Where an age inside the grid falls: the step below it and the fraction of the way on.
struct GridPoint {
    int16_t idx;
    float frac;
};

GridPoint gridPoint(const ProjectSettings& s, int16_t yieldType, int16_t age) {
    const int16_t inc = s.YieldIncAge[yieldType];
    if (inc == 0) throw ArborexError(ErrDivisionByZero);
    const int16_t offset = toI2(age - s.YieldMinAge[yieldType]);
    const int16_t idx = toI2(offset / inc);
    const float frac = static_cast<float>(offset % inc) / static_cast<float>(inc);
    return {idx, frac};
}

// Each step is stored to a float, in this order, so results match the stored tables' history.
float blend(float frac, float low, float high) {
    const float lowWeight = 1.0f - frac;
    const float lowPart = lowWeight * low;
    const float highPart = high * frac;
    return lowPart + highPart;
}

// The common interpolation of one field; read widens a row's field to float.
template <typename Row, typename Read>
float interpolate(const Model& m, const YieldGrid<Row>& grid, int16_t yieldType, int16_t age,
                  int16_t polygon, Read read) {
    const ProjectSettings& s = m.Settings;
    if (age < s.YieldMinAge[yieldType]) return 0.0f;
    const int16_t lastStep = s.YieldRows[yieldType];
    const PolygonRows<Row> rows(grid, m, polygon, lastStep);
    if (age >= s.YieldMaxAge[yieldType]) return read(rows.at(lastStep));
    const GridPoint g = gridPoint(s, yieldType, age);
    return blend(g.frac, read(rows.at(g.idx)), read(rows.at(g.idx + 1)));
}

template <typename Read>
float interpolateCurve(const Model& m, int16_t yieldType, int16_t age, int16_t polygon, Read read) {
    if (!isCurveModel(yieldType)) return 0.0f;
    const YieldGrid<YieldRow>& grid = yieldType == 0 ? m.VYield : m.TYield;
    return interpolate(m, grid, yieldType, age, polygon, read);
}

float dia(const YieldRow& r) {
    return static_cast<float>(r.Dia);
}
float vol(const YieldRow& r) {
    return static_cast<float>(r.Vol);
}
float ht(const YieldRow& r) {
    return static_cast<float>(r.Ht);
}
float mai(const YieldRow& r) {
    return r.Mai;
}

// TIPSY volume: a commercial thin strictly inside a grid interval puts a drop in the curve at
// the thin age, which plain interpolation would smear over the whole interval.
float tipsyVol(const Model& m, int16_t age, int16_t polygon) {
    const ProjectSettings& s = m.Settings;
    const int16_t minAge = s.YieldMinAge[1];
    if (age < minAge || age >= s.YieldMaxAge[1])
        return interpolate(m, m.TYield, 1, age, polygon, vol) / 10.0f;

    const int16_t inc = s.YieldIncAge[1];
    if (inc == 0) throw ArborexError(ErrDivisionByZero);
    const int16_t idx = toI2(toI2(age - minAge) / inc);
    const PolyMgmt& pm = m.PolyM[checkedPolygon(m, polygon)];
    if (pm.COMTHIN == 1) {
        const int16_t a0 = toI2(toI2(idx * inc) + minAge);
        const int16_t a1 = toI2(toI2(toI2(idx + 1) * inc) + minAge);
        const int16_t thinAge = pm.TIPSYCACHE[kThinAge];
        if (a0 < thinAge && thinAge < a1) {
            const float before = static_cast<float>(pm.TIPSYCACHE[kThinVolBefore]);
            if (age == thinAge) return before / 10.0f;
            const PolygonRows<YieldRow> rows(m.TYield, m, polygon, s.YieldRows[1]);
            if (a0 < age && age < thinAge) {
                const float w = static_cast<float>(toI2(thinAge - age)) /
                                static_cast<float>(toI2(thinAge - a0));
                const float gridPart = vol(rows.at(idx)) * w;
                const float beforeWeight = 1.0f - w;
                const float beforePart = beforeWeight * before;
                const float sum = gridPart + beforePart;
                return sum / 10.0f;
            }
            if (thinAge < age && age < a1) {
                const float after = static_cast<float>(pm.TIPSYCACHE[kThinVolAfter]);
                const float w =
                    static_cast<float>(toI2(a1 - age)) / static_cast<float>(toI2(a1 - thinAge));
                const float afterPart = after * w;
                const float gridWeight = 1.0f - w;
                const float gridPart = gridWeight * vol(rows.at(idx + 1));
                const float sum = afterPart + gridPart;
                return sum / 10.0f;
            }
        }
    }
    return interpolate(m, m.TYield, 1, age, polygon, vol) / 10.0f;
}

template <typename Query>
int16_t firstAgeMeeting(const Model& m, int16_t yieldType, float target, int16_t polygon,
                        Query value) {
    requireCurveModel(yieldType);
    const int16_t last = m.Settings.YieldMaxAge[yieldType];
    for (int16_t age = m.Settings.YieldMinAge[yieldType]; age <= last;) {
        if (target <= value(m, yieldType, age, polygon)) return age;
        // The walk's age is a 16-bit count: stepping past 32767 is an overflow, not a wrap.
        if (age == std::numeric_limits<int16_t>::max()) throw ArborexError(ErrOverflow);
        ++age;
    }
    return kNeverAge;
}

}  // namespace

float FindDia(const Model& m, int16_t yieldType, int16_t age, int16_t polygon) {
    return interpolateCurve(m, yieldType, age, polygon, dia) / 10.0f;
}

float FindHt(const Model& m, int16_t yieldType, int16_t age, int16_t polygon) {
    return interpolateCurve(m, yieldType, age, polygon, ht) / 10.0f;
}

float FindVol(const Model& m, int16_t yieldType, int16_t age, int16_t polygon) {
    if (yieldType == 1) return tipsyVol(m, age, polygon);
    return interpolateCurve(m, yieldType, age, polygon, vol) / 10.0f;
}

float findMai(const Model& m, int16_t yieldType, int16_t age, int16_t polygon) {
    return interpolateCurve(m, yieldType, age, polygon, mai);
}

float FindVolSpec(const Model& m, int16_t age, int16_t polygon, int16_t slot) {
    if (slot < 0 || slot >= static_cast<int16_t>(MixRow{}.size())) throw ArborexError(ErrSubscript);
    const auto share = [slot](const MixRow& r) {
        return static_cast<float>(r[static_cast<std::size_t>(slot)]);
    };
    return interpolate(m, m.VMix, 0, age, polygon, share) / 10.0f;
}

int16_t FindAgeDia(const Model& m, int16_t yieldType, float target, int16_t polygon) {
    return firstAgeMeeting(m, yieldType, target, polygon, FindDia);
}

int16_t FindAgeVol(const Model& m, int16_t yieldType, float target, int16_t polygon) {
    return firstAgeMeeting(m, yieldType, target, polygon, FindVol);
}

int16_t FindAgeMAI(const Model& m, int16_t yieldType, float target, int16_t polygon) {
    return firstAgeMeeting(m, yieldType, target, polygon, findMai);
}

int16_t FindMAIMax(const Model& m, int16_t yieldType, int16_t polygon) {
    requireCurveModel(yieldType);
    const ProjectSettings& s = m.Settings;
    const int16_t minAge = s.YieldMinAge[yieldType];
    int16_t bestAge = minAge;
    float bestMai = findMai(m, yieldType, minAge, polygon);
    for (int k = 1; k <= s.YieldRows[yieldType]; ++k) {
        const int16_t age = toI2(toI2(k * s.YieldIncAge[yieldType]) + minAge);
        const float value = findMai(m, yieldType, age, polygon);
        if (value > bestMai) {
            bestMai = value;
            bestAge = age;
        }
    }
    return bestAge;
}

}  // namespace arborex
