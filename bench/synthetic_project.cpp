#include "synthetic_project.hpp"

#include <array>
#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "base/numeric.hpp"
#include "growth/growth_model.hpp"
#include "model/polygon_lifecycle.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex::bench {

namespace {

int16_t i2(int value) {
    return static_cast<int16_t>(value % 32000);
}

// The mixed forest.

enum class StandKind {
    Natural,           // VDYP now, TIPSY after harvest
    NaturalThinLater,  // the same, with a commercial thin on the TIPSY curve
    PartialCut,        // VDYP now, partial cut entries for ever
    Managed,           // TIPSY now and later
    ManagedThinned,    // the same, thinned in every rotation
    NotCommercial,
    NotRestocked,
};

// The mix out of every 20 polygons, in the order of polygon numbers.
StandKind kindOf(int p) {
    const int slot = p % 20;
    if (slot < 9) return StandKind::Natural;
    if (slot < 11) return StandKind::NaturalThinLater;
    if (slot < 13) return StandKind::PartialCut;
    if (slot < 16) return StandKind::Managed;
    if (slot < 18) return StandKind::ManagedThinned;
    if (slot < 19) return StandKind::NotCommercial;
    return StandKind::NotRestocked;
}

bool isManaged(StandKind kind) {
    return kind == StandKind::Managed || kind == StandKind::ManagedThinned;
}
bool isThinned(StandKind kind) {
    return kind == StandKind::NaturalThinLater || kind == StandKind::ManagedThinned;
}

// A fixed scramble of the polygon number, so that area, age and site do not move in step with
// the mix or with each other.
unsigned scramble(int p, unsigned salt) {
    unsigned x = static_cast<unsigned>(p) * 2654435761u + salt * 40503u;
    x ^= x >> 15;
    x *= 2246822519u;
    x ^= x >> 13;
    return x;
}

struct SpeciesPart {
    const char* code;
    int16_t percent;
};

// The species of a stand in the VDYP and the TIPSY table, with its crown closure.
struct Composition {
    std::array<SpeciesPart, 3> vdyp;
    std::array<SpeciesPart, 2> tipsy;
    int16_t closure;
};

// Pine on the plateau, Douglas-fir on the dry slopes, spruce and fir in the wet draws, with
// aspen mixed in.
constexpr std::array<Composition, 4> kCompositions = {{
    {{{{"PL", 80}, {"SX", 20}, {"", 0}}}, {{{"PL", 80}, {"SX", 20}}}, 50},
    {{{{"FD", 60}, {"PL", 30}, {"AT", 10}}}, {{{"FD", 70}, {"PL", 30}}}, 45},
    {{{{"SX", 50}, {"BL", 40}, {"PL", 10}}}, {{{"SX", 70}, {"PL", 30}}}, 55},
    {{{{"PL", 60}, {"SX", 25}, {"AT", 15}}}, {{{"PL", 70}, {"SX", 30}}}, 50},
}};

// Species table rows: VDYP 1 PL, 2 SX, 3 FD, 4 BL, 5 AT (deciduous); TIPSY 1 PL, 2 SX, 3 FD.
constexpr std::array<const char*, 5> kVdypCodes = {"PL", "SX", "FD", "BL", "AT"};
constexpr std::array<const char*, 3> kTipsyCodes = {"PL", "SX", "FD"};

int16_t tableRow(const char* code, const char* const* codes, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i)
        if (std::string(codes[i]) == code) return static_cast<int16_t>(i + 1);
    return 0;
}

void addSpeciesTables(ReferenceTables& ref) {
    for (const char* code : kVdypCodes) {
        SpeciesRec rec;
        rec.Code = code;
        rec.Deciduous = std::string(code) == "AT" ? 1 : 0;
        ref.SpeciesV.push_back(rec);
    }
    for (const char* code : kTipsyCodes) {
        SpeciesRec rec;
        rec.Code = code;
        ref.SpeciesT.push_back(rec);
    }
    ref.SpeciesVCount = static_cast<int16_t>(kVdypCodes.size());
    ref.SpeciesTCount = static_cast<int16_t>(kTipsyCodes.size());
}

constexpr float kUtilisation = 12.5f;  // cm
constexpr int kPlantingDensity = 1600;
constexpr int kThinAge = 40;  // on the TIPSY grid, where the import sees two rows of one age
constexpr float kThinRemoved = 0.3f;

// Tenths, as the curve store keeps them; a value past its top is held there.
int16_t tenths(float value) {
    return toI2(clamp32767(roundHalfEven(static_cast<double>(value) * 10.0)));
}

// A stand's curve rows on its grid, computed once per composition and site index and copied to
// every polygon that shares them.
struct CurveRows {
    std::vector<YieldRow> rows;
    std::vector<MixRow> mix;             // VDYP only
    std::array<int16_t, 8> thinCache{};  // TIPSYCACHE of a thinned curve
};

growth::StandInputs standInputs(const Model& m, const Composition& c, int siteIndex, bool tipsy) {
    growth::StandInputs in;
    in.siteIndex = static_cast<float>(siteIndex);
    in.utilisation = kUtilisation;
    in.crownClosure = c.closure;
    in.density = kPlantingDensity;
    in.oaf1 = m.Settings.OAF1;
    in.oaf2 = m.Settings.OAF2;
    if (tipsy) {
        for (const SpeciesPart& part : c.tipsy)
            in.species.push_back({part.code, part.percent, false});
    } else {
        for (const SpeciesPart& part : c.vdyp)
            if (part.percent > 0)
                in.species.push_back({part.code, part.percent, std::string(part.code) == "AT"});
    }
    return in;
}

CurveRows vdypRows(const Model& m, const Composition& c, int siteIndex) {
    const growth::StandInputs in = standInputs(m, c, siteIndex, false);
    const ProjectSettings& s = m.Settings;
    CurveRows curve;
    for (int k = 0; k <= s.YieldRows[0]; ++k) {
        const growth::CurvePoint point =
            growth::naturalStandAt(in, s.YieldMinAge[0] + k * s.YieldIncAge[0]);
        curve.rows.push_back(
            {tenths(point.diameter), tenths(point.volume), tenths(point.height), point.mai});
        MixRow mix{};
        for (std::size_t slot = 0; slot < mix.size(); ++slot)
            mix[slot] = tenths(point.speciesVolume[slot]);
        curve.mix.push_back(mix);
    }
    return curve;
}

// The TIPSY table as the import stores it. For a thinned stand the row at the thin age is the
// stand after the thin, and MAI from there on counts the removed volume over the thin age.
CurveRows tipsyRows(const Model& m, const Composition& c, int siteIndex, bool thinned) {
    const growth::StandInputs in = standInputs(m, c, siteIndex, true);
    const growth::CommercialThin thin{kThinAge, kThinRemoved};
    const ProjectSettings& s = m.Settings;
    CurveRows curve;
    float maiAdd = 0.0f;
    if (thinned) {
        const growth::ThinRecord r = growth::thinRecord(in, thin);
        const int16_t before = tenths(r.volBefore);
        const int16_t after = tenths(r.volAfter);
        const double cut = (before - after) / 10.0;
        curve.thinCache = {static_cast<int16_t>(kThinAge),
                           toI2(roundHalfEven(cut)),
                           before,
                           after,
                           tenths(r.diaBefore),
                           tenths(r.diaAfter),
                           tenths(r.htBefore),
                           tenths(r.htAfter)};
        maiAdd = static_cast<float>(cut / kThinAge);
    }
    for (int k = 0; k <= s.YieldRows[1]; ++k) {
        const int age = s.YieldMinAge[1] + k * s.YieldIncAge[1];
        const growth::CurvePoint point =
            thinned ? growth::thinnedStandAt(in, thin, age) : growth::managedStandAt(in, age);
        YieldRow row{tenths(point.diameter), tenths(point.volume), tenths(point.height), 0.0f};
        if (age != 0)
            row.Mai = row.Vol / 10.0f / static_cast<float>(age) + (age >= kThinAge ? maiAdd : 0.0f);
        curve.rows.push_back(row);
    }
    return curve;
}

using CurveKey = std::tuple<int, int, bool>;  // composition, site index, thinned

const CurveRows& cachedRows(std::map<CurveKey, CurveRows>& cache, const Model& m, int composition,
                            int siteIndex, bool tipsy, bool thinned) {
    const CurveKey key{composition, siteIndex, thinned};
    auto it = cache.find(key);
    if (it == cache.end()) {
        const Composition& c = kCompositions[static_cast<std::size_t>(composition)];
        it = cache
                 .emplace(key,
                          tipsy ? tipsyRows(m, c, siteIndex, thinned) : vdypRows(m, c, siteIndex))
                 .first;
    }
    return it->second;
}

void fillMixedStand(Model& m, int p, std::map<CurveKey, CurveRows>& vdypCache,
                    std::map<CurveKey, CurveRows>& tipsyCache) {
    const auto i = static_cast<std::size_t>(p);
    const StandKind kind = kindOf(p);
    const int composition = static_cast<int>(scramble(p, 1) % kCompositions.size());
    const Composition& c = kCompositions[static_cast<std::size_t>(composition)];
    const int siteIndex = 16 + static_cast<int>(scramble(p, 2) % 9);

    PolyData& poly = m.Poly[i];
    PolyCalc& calc = m.PolyC[i];
    PolyMgmt& mgmt = m.PolyM[i];
    projectFollowingPolygon(poly, calc, mgmt);
    poly.NAME = "MX" + std::to_string(p);
    poly.AREA = 2.0f + static_cast<float>(scramble(p, 3) % 581) / 10.0f;
    const unsigned ageDraw = scramble(p, 4);
    switch (kind) {
        case StandKind::Managed:
            poly.AGE = static_cast<int16_t>(1 + ageDraw % 60);
            break;
        case StandKind::ManagedThinned:  // the thin of this rotation is still to come
            poly.AGE = static_cast<int16_t>(1 + ageDraw % (kThinAge - 1));
            break;
        case StandKind::NotCommercial:
            poly.AGE = 120;
            break;
        case StandKind::NotRestocked:
            poly.AGE = 2;
            break;
        default:
            poly.AGE = static_cast<int16_t>(1 + ageDraw % 200);
            break;
    }
    poly.VUTILIZ = kUtilisation;
    poly.VSITEINDEX = static_cast<float>(siteIndex);
    poly.CLOSURE = c.closure;
    for (std::size_t k = 0; k < c.vdyp.size(); ++k) {
        if (c.vdyp[k].percent == 0) continue;
        poly.VS[k] = c.vdyp[k].code;
        poly.VSIDX[k] = tableRow(c.vdyp[k].code, kVdypCodes.data(), kVdypCodes.size());
        poly.VP[k] = c.vdyp[k].percent;
    }
    poly.DENSITY = kPlantingDensity;
    for (std::size_t k = 0; k < c.tipsy.size(); ++k) {
        poly.TS[k] = c.tipsy[k].code;
        poly.TSIDX[k] = tableRow(c.tipsy[k].code, kTipsyCodes.data(), kTipsyCodes.size());
        poly.TP[k] = c.tipsy[k].percent;
        poly.TI[k] = static_cast<int16_t>(k == 0 ? siteIndex : siteIndex - 2);
    }
    if (kind == StandKind::PartialCut) {
        poly.SILVI = 1;
        poly.PCPERC = 40;
        poly.PCNEXT = 30;
    }
    switch (kind) {
        case StandKind::Managed:
        case StandKind::ManagedThinned:
            poly.MGNT = {1, 1};
            break;
        case StandKind::NotCommercial:
            poly.MGNT = {2, 1};
            break;
        case StandKind::NotRestocked:
            poly.MGNT = {3, 1};
            break;
        default:
            poly.MGNT = {0, 1};
            break;
    }

    calc.SORT = calc.LISTROW = i2(p);

    mgmt.TUTILIZ = kUtilisation;
    const bool roadBuilt = !isManaged(kind) && kind != StandKind::NotRestocked;
    if (roadBuilt && scramble(p, 5) % 3 == 0)
        mgmt.ROADAREA = static_cast<float>(roundHalfEven(poly.AREA * 0.3)) / 10.0f;
    if (kind == StandKind::NotCommercial) {
        mgmt.NCRESTOCKIN = static_cast<int16_t>(1 + scramble(p, 6) % 15);
        mgmt.NCVOLHA = static_cast<float>(20 + scramble(p, 7) % 40);
        mgmt.NCDECIDUOUS = 30;
        mgmt.NCHEIGHT = 12;
        mgmt.NCDESC = "Open Fd on rock outcrop";
    }
    if (kind == StandKind::NotRestocked)
        mgmt.NSRRESTOCKIN = static_cast<int16_t>(1 + scramble(p, 8) % 5);

    // Curves of the models in use, as a yield run leaves them before their volume is confirmed.
    poly.YIELDSTATE = {0, 0};
    if (poly.MGNT[0] == 0) {
        const CurveRows& v = cachedRows(vdypCache, m, composition, siteIndex, false, false);
        for (int k = 0; k < m.VYield.rowCount(); ++k) {
            m.VYield(p, k) = v.rows[static_cast<std::size_t>(k)];
            m.VMix(p, k) = v.mix[static_cast<std::size_t>(k)];
        }
        poly.VSICALC = static_cast<float>(siteIndex);
        poly.YIELDSTATE[0] = 2;
    }
    const bool thinned = isThinned(kind);
    const CurveRows& t = cachedRows(tipsyCache, m, composition, siteIndex, true, thinned);
    for (int k = 0; k < m.TYield.rowCount(); ++k)
        m.TYield(p, k) = t.rows[static_cast<std::size_t>(k)];
    if (thinned) {
        mgmt.COMTHIN = 1;
        mgmt.TIPSYCACHE = t.thinCache;
    }
    poly.TSICALC = static_cast<float>(siteIndex);
    poly.YIELDSTATE[1] = 2;
}

Model mixedForest(int polygons) {
    Model m;
    ResetVars(m);
    SetDefaults(m);
    EmptyArrays(m);
    addSpeciesTables(m.Ref);
    m.Settings.REGENDELAY = 2;
    ResizePolygonArrays(m, polygons);
    m.LastPoly = toI2(polygons - 1);
    std::map<CurveKey, CurveRows> vdypCache, tipsyCache;
    for (int p = 0; p < polygons; ++p) fillMixedStand(m, p, vdypCache, tipsyCache);
    UpdateYields(m);  // confirms the curves and works out the harvest ages
    return m;
}

}  // namespace

Model syntheticProject(int polygons, Managements managements) {
    if (managements == Managements::MixedForest) return mixedForest(polygons);
    Model m;
    ResetVars(m);
    SetDefaults(m);
    ResizePolygonArrays(m, polygons);
    m.LastPoly = static_cast<int16_t>(polygons - 1);
    for (int p = 0; p < polygons; ++p) {
        const auto i = static_cast<std::size_t>(p);
        m.Poly[i].NAME = "093G" + std::to_string(p);
        m.Poly[i].AREA = 1.5f + static_cast<float>(p % 97);
        m.Poly[i].AGE = i2(p % 250);
        m.Poly[i].VS[0] = "FD";
        m.Poly[i].VP[0] = 100;
        if (managements == Managements::NaturalThenManaged)
            m.Poly[i].MGNT = {0, 1};
        else
            m.Poly[i].MGNT =
                p % 2 == 0 ? std::array<int16_t, 2>{0, 0} : std::array<int16_t, 2>{1, 1};
        m.Poly[i].YIELDSTATE = {3, 3};
        m.PolyC[i].SORT = i2(p);
        m.PolyC[i].VX.fill(1);
        m.PolyC[i].MINCUTAGE = {-1, -1};
        m.PolyC[i].MINCUTVOL = {-1.0f, -1.0f};
        m.PolyC[i].MINCUTDBH = {-1.0f, -1.0f};
        m.PolyM[i].TUTILIZ = 12.5f;
        m.HarvAge[i][0].HarvestAge = i2(60 + p % 40);
        m.HarvAge[i][1].HarvestAge = i2(50 + p % 30);
        for (int r = 0; r < m.VYield.rowCount(); ++r) {
            m.VYield(p, r) = {i2(r * 3 + p % 7), i2(r * 20 + p % 11), i2(r * 2 + p % 5),
                              0.01f * static_cast<float>(r + p % 13)};
            m.VMix(p, r) = {i2(600 + r % 10), i2(200), i2(100), i2(p % 50), 0, 0};
        }
        for (int r = 0; r < m.TYield.rowCount(); ++r)
            m.TYield(p, r) = {i2(r * 30 + p % 7), i2(r * 150 + p % 11), i2(r * 20 + p % 5),
                              0.1f * static_cast<float>(r + p % 13)};
    }
    m.CutOrderLast = 99;
    m.CutOrder.assign(100, 0);
    m.CutOrderKey.assign(100, 0);
    for (int i = 0; i < 100; ++i) m.CutOrder[static_cast<std::size_t>(i)] = i2(i * 300);
    return m;
}

}  // namespace arborex::bench
