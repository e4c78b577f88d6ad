// make_sample: writes the bundled sample project, a woodlot of fifteen stands in the Cariboo
// with their inventory and current yield curves from the growth generator, so that every
// build produces the same bytes. The VDYP species table gives the deciduous species.
//
//   make_sample [OUT [DATA]]   OUT defaults to samples/sample.arx, DATA to data

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/dates.hpp"
#include "base/errors.hpp"
#include "base/numeric.hpp"
#include "base/unattended_host.hpp"
#include "growth/growth_model.hpp"
#include "model/model.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/project_file.hpp"
#include "model/reference_tables.hpp"
#include "yield/harvest_ages.hpp"

namespace {

using namespace arborex;

struct Species {
    const char* code;
    int16_t percent;
};

// Management of the existing stand: natural (VDYP), managed (TIPSY), not commercial, or not
// satisfactorily restocked.
enum Management : int16_t { Natural = 0, Managed = 1, NotCommercial = 2, NotRestocked = 3 };

struct Stand {
    const char* name;
    float area;  // ha
    int16_t age;
    float siteIndex;
    int16_t height;   // m
    int16_t closure;  // %
    const char* fiz;
    const char* stocking;
    int16_t existing;
    int16_t silviculture;       // 0 clearcut, 1 partial cut
    float roadArea;             // ha
    std::vector<Species> vdyp;  // sums to 100
    std::vector<Species> tipsy;
    float thinned = 0.0f;  // share of the volume a commercial thin at kThinAge takes, 0 for none
};

// Lodgepole pine on the plateau, Douglas-fir on the dry slopes, spruce and subalpine fir in the
// wet draws, with aspen and birch mixed in.
const std::vector<Stand>& stands() {
    // clang-format off
    static const std::vector<Stand> list = {
        // name, area (ha), age, site index, height (m), crown closure (%), FIZ, stocking,
        // existing management, silviculture, road area (ha); then VDYP and TIPSY species.
        {"93B045 101", 24.6f,  85, 18.5f, 22, 45, "I", "0", Natural,       0, 0.4f,
         {{"PL", 70}, {"SX", 20}, {"AT", 10}},    {{"PL", 80}, {"SX", 20}}},
        {"93B045 102", 12.3f, 120, 16.0f, 24, 40, "I", "0", Natural,       1, 0.0f,
         {{"FD", 60}, {"PL", 30}, {"AT", 10}},    {{"FD", 70}, {"PL", 30}}},
        {"93B045 103", 38.9f,  65, 20.0f, 20, 55, "I", "0", Natural,       0, 0.8f,
         {{"PL", 85}, {"SX", 15}},                {{"PL", 85}, {"SX", 15}}},
        {"93B045 104",  8.4f,  25, 21.5f,  8, 30, "I", "1", Managed,       0, 0.0f,
         {{"PL", 100}},                           {{"PL", 100}}},
        {"93B045 105", 52.7f, 140, 15.5f, 27, 50, "H", "0", Natural,       0, 1.1f,
         {{"SX", 50}, {"BL", 40}, {"PL", 10}},    {{"SX", 70}, {"PL", 30}}},
        {"93B045 106", 17.1f,  95, 19.0f, 24, 45, "I", "0", Natural,       0, 0.3f,
         {{"PL", 60}, {"FD", 25}, {"AT", 15}},    {{"PL", 60}, {"FD", 40}}},
        {"93B045 107",  6.2f, 180, 12.0f, 14, 20, "I", "0", NotCommercial, 0, 0.0f,
         {{"FD", 70}, {"PL", 30}},                {{"FD", 70}, {"PL", 30}}},
        {"93B045 108", 14.8f,  10, 22.0f,  2, 10, "I", "1", NotRestocked,  0, 0.0f,
         {{"PL", 100}},                           {{"PL", 100}}},
        {"93B046 011", 29.5f,  75, 17.5f, 19, 50, "I", "0", Natural,       0, 0.5f,
         {{"PL", 75}, {"SX", 15}, {"EP", 10}},    {{"PL", 80}, {"SX", 20}}},
        {"93B046 012", 44.0f, 110, 16.5f, 25, 55, "H", "0", Natural,       0, 0.9f,
         {{"SX", 40}, {"PL", 40}, {"BL", 20}},    {{"SX", 60}, {"PL", 40}}},
        {"93B046 013",  9.6f,  35, 23.0f, 12, 35, "I", "1", Managed,       0, 0.0f,
         {{"PL", 90}, {"SX", 10}},                {{"PL", 90}, {"SX", 10}}, 0.3f},
        {"93B046 014", 21.3f, 160, 13.5f, 23, 40, "I", "0", Natural,       0, 0.2f,
         {{"FD", 80}, {"PL", 20}},                {{"FD", 80}, {"PL", 20}}},
        {"93B046 015", 33.2f,  55, 24.0f, 21, 60, "I", "0", Natural,       0, 0.6f,
         {{"AT", 60}, {"PL", 30}, {"SX", 10}},    {{"PL", 70}, {"SX", 30}}},
        {"93B046 016",  4.1f,  45, 19.5f, 15, 45, "I", "1", Managed,       0, 0.0f,
         {{"PL", 80}, {"FD", 20}},                {{"PL", 80}, {"FD", 20}}},
        {"93B046 017", 58.8f, 130, 14.5f, 24, 45, "H", "0", Natural,       0, 1.3f,
         {{"PL", 65}, {"SX", 25}, {"BL", 10}},    {{"PL", 70}, {"SX", 30}}},
    };
    // clang-format on
    return list;
}

constexpr float kUtilisation = 12.5f;  // cm, the interior's close utilisation level
constexpr int32_t kPlantingDensity = 1600;
constexpr int kThinAge = 43;

// Fixed dates, so that the file does not change from one run to the next. Functions, not
// globals: the date conversion must not run before its own statics are set up.
double startDate() {
    return dayCountFromParts({2024, 4, 15, 9, 30, 0});
}
double lastDate() {
    return dayCountFromParts({2024, 5, 2, 16, 45, 0});
}
constexpr std::streamoff kLastDateOffset = 232;

// Adds the stand as the project's next polygon; returns its index.
int addStand(Model& m, const Stand& stand) {
    PolyData poly;
    PolyCalc calc;
    PolyMgmt mgmt;
    projectFollowingPolygon(poly, calc, mgmt);
    poly.NAME = stand.name;
    poly.AREA = stand.area;
    poly.AGE = stand.age;
    poly.VUTILIZ = kUtilisation;
    poly.FIZ = stand.fiz;
    poly.VSITEINDEX = stand.siteIndex;
    poly.VAGETOTAL = stand.age;
    poly.VHEIGHTTOTAL = stand.height;
    poly.CLOSURE = stand.closure;
    poly.VAF = 1.0f;
    poly.STOCKING = stand.stocking;
    for (std::size_t s = 0; s < stand.vdyp.size(); ++s) {
        poly.VS[s] = stand.vdyp[s].code;
        poly.VP[s] = stand.vdyp[s].percent;
    }
    poly.DENSITY = kPlantingDensity;
    poly.TAGETOTAL = stand.age;
    poly.REGEN = 1;
    // The leading species carries the stand's site index; the others grow a little worse.
    const auto siteIndex = static_cast<int16_t>(stand.siteIndex);
    for (std::size_t s = 0; s < stand.tipsy.size(); ++s) {
        poly.TS[s] = stand.tipsy[s].code;
        poly.TP[s] = stand.tipsy[s].percent;
        poly.TI[s] = static_cast<int16_t>(s == 0 ? siteIndex : siteIndex - 2);
    }
    poly.SILVI = stand.silviculture;
    poly.MGNT = {stand.existing, Managed};
    mgmt.ROADAREA = stand.roadArea;
    mgmt.TUTILIZ = kUtilisation;
    if (stand.existing == NotRestocked) mgmt.NSRRESTOCKIN = 2;
    if (stand.existing == NotCommercial) {
        mgmt.NCRESTOCKIN = 10;
        mgmt.NCDESC = "Open Fd on rock outcrop";
        mgmt.NCHEIGHT = stand.height;
    }
    const int p = appendPolygon(m, poly, calc, mgmt);
    // The calculation takes the stands in the order they are listed.
    PolyCalc& added = m.PolyC[static_cast<std::size_t>(p)];
    added.SORT = added.LISTROW = toI2(p);
    return p;
}

// Tenths, as the curve store keeps them; a value past its top is held there.
int16_t tenths(float value) {
    return toI2(clamp32767(roundHalfEven(static_cast<double>(value) * 10.0)));
}

YieldRow yieldRow(const growth::CurvePoint& point) {
    return {tenths(point.diameter), tenths(point.volume), tenths(point.height), point.mai};
}

std::vector<growth::SpeciesShare> shares(const Model& m, const std::vector<Species>& list,
                                         bool tipsy) {
    std::vector<growth::SpeciesShare> result;
    for (const Species& species : list) {
        const auto row = static_cast<std::size_t>(tipsy ? FindTSpecIdx(m.Ref, species.code)
                                                        : FindVSpecIdx(m.Ref, species.code));
        const SpeciesRec& rec = tipsy ? m.Ref.SpeciesT.at(row) : m.Ref.SpeciesV.at(row);
        result.push_back({species.code, species.percent, rec.Deciduous != 0});
    }
    return result;
}

// The natural stand's curve on the VDYP grid, with its species split.
void fillVdypCurve(Model& m, int p, const Stand& stand) {
    growth::StandInputs inputs;
    inputs.siteIndex = stand.siteIndex;
    inputs.species = shares(m, stand.vdyp, false);
    inputs.utilisation = kUtilisation;
    inputs.crownClosure = stand.closure;
    const ProjectSettings& s = m.Settings;
    for (int k = 0; k <= s.YieldRows[0]; ++k) {
        const growth::CurvePoint point =
            growth::naturalStandAt(inputs, s.YieldMinAge[0] + k * s.YieldIncAge[0]);
        m.VYield(p, k) = yieldRow(point);
        for (std::size_t slot = 0; slot < 6; ++slot)
            m.VMix(p, k)[slot] = tenths(point.speciesVolume[slot]);
    }
}

// The planted stand's curve on the TIPSY grid, thinned where the stand says so.
void fillTipsyCurve(Model& m, int p, const Stand& stand) {
    const PolyData& poly = m.Poly[static_cast<std::size_t>(p)];
    growth::StandInputs inputs;
    inputs.siteIndex = poly.TI[0];
    inputs.species = shares(m, stand.tipsy, true);
    inputs.utilisation = kUtilisation;
    inputs.density = kPlantingDensity;
    inputs.oaf1 = m.Settings.OAF1;
    inputs.oaf2 = m.Settings.OAF2;
    const growth::CommercialThin thin{kThinAge, stand.thinned};
    const ProjectSettings& s = m.Settings;
    for (int k = 0; k <= s.YieldRows[1]; ++k) {
        const int age = s.YieldMinAge[1] + k * s.YieldIncAge[1];
        m.TYield(p, k) = yieldRow(stand.thinned > 0.0f ? growth::thinnedStandAt(inputs, thin, age)
                                                       : growth::managedStandAt(inputs, age));
    }
    if (stand.thinned <= 0.0f) return;
    const growth::ThinRecord record = growth::thinRecord(inputs, thin);
    PolyMgmt& mgmt = m.PolyM[static_cast<std::size_t>(p)];
    mgmt.COMTHIN = 1;
    // The volume cut is whole m3/ha, from the stored tenths, as the TIPSY import works it out.
    const int16_t before = tenths(record.volBefore);
    const int16_t after = tenths(record.volAfter);
    const auto volCut = toI2(roundHalfEven((before - after) / 10.0));
    mgmt.TIPSYCACHE = {static_cast<int16_t>(record.age),
                       volCut,
                       before,
                       after,
                       tenths(record.diaBefore),
                       tenths(record.diaAfter),
                       tenths(record.htBefore),
                       tenths(record.htAfter)};
}

// The curves that the stand's managements use, as the yield run would leave them: every stand
// is planted after harvest (TIPSY), only the natural ones have a VDYP curve for now.
void fillCurves(Model& m, int p, const Stand& stand) {
    PolyData& poly = m.Poly[static_cast<std::size_t>(p)];
    if (stand.existing == Natural) {
        fillVdypCurve(m, p, stand);
        poly.VSICALC = stand.siteIndex;
        m.PolyC[static_cast<std::size_t>(p)].VCCCALC = static_cast<float>(stand.closure);
        poly.YIELDSTATE[0] = 2;
    }
    fillTipsyCurve(m, p, stand);
    poly.TSICALC = poly.TI[0];
    poly.YIELDSTATE[1] = 2;
}

void buildSample(Model& m) {
    programDefaults(m);
    for (const Stand& stand : stands()) fillCurves(m, addStand(m, stand), stand);
    UpdateYields(m);  // confirms the curves and works out their harvest ages

    // The calculation opens ready for a search over the Crown and private land.
    CalcInputs& calc = m.Calc.inputs;
    calc.SavedCut = {1, 1, 0, 0};
    calc.SavedCalcRate = 1;
    calc.SavedVolRate = 1000;
    calc.SortMethod = -1;

    ProjectHeader& h = m.Header;
    h.Licence = "A12345";
    h.District = "Cariboo-Chilcotin";
    h.Company = "Sample Woodlot Ltd.";
    h.User = "Sample";
    h.Scenario = "Base case";
    h.VDYPVersion = "7.33";
    h.TIPSYVersion = "3.2m";
    h.StartDate = startDate();
    h.LastDate = lastDate();
}

// A save stamps the moment it was made; the sample keeps its fixed date instead.
void restoreLastDate(const std::string& path) {
    const double date = lastDate();
    std::uint64_t bits = 0;
    std::memcpy(&bits, &date, sizeof bits);
    std::array<char, 8> bytes{};
    for (std::size_t b = 0; b < bytes.size(); ++b)
        bytes[b] = static_cast<char>((bits >> (8 * b)) & 0xff);
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(kLastDateOffset);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file) throw ArborexError(ErrPathFileAccess, path);
}

}  // namespace

int main(int argc, char** argv) {
    const std::string path = argc > 1 ? argv[1] : "samples/sample.arx";
    const std::string data = argc > 2 ? argv[2] : "data";
    try {
        UnattendedHost unattended("make_sample", std::cerr);
        Host& host = unattended.host;
        auto m = std::make_unique<Model>();
        LoadSpeciesV(m->Ref, host, data + "/SPECIESV.DAT");
        LoadSpeciesT(m->Ref, host, data + "/SPECIEST.DAT");
        if (m->Ref.SpeciesVCount == 0 || m->Ref.SpeciesTCount == 0)
            throw ArborexError(ErrFileNotFound, data + ": no species tables");
        buildSample(*m);
        // A former sample would be kept as a .bak beside the new one; it is not wanted.
        std::filesystem::remove(path);
        SaveArx(*m, host, path, kCurrentFileVersion, false);
        restoreLastDate(path);
    } catch (const std::exception& e) {
        std::cerr << "make_sample: cannot write " << path << ": " << e.what() << '\n';
        return 1;
    }
    std::cout << "Wrote " << path << '\n';
    return 0;
}
