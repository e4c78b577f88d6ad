// make_sample: writes the bundled sample project, a woodlot of fifteen stands in the Cariboo,
// so that every build produces the same bytes. It enters the stands' inventory, then runs the
// yield run over them with the growth models' stand-ins, as a user would from the polygon
// screen: the file holds exactly the curves, thin and harvest ages that such a run gives. A
// check that fails, a model's message or a box during the run is an error: the sample is clean.
//
//   make_sample [OUT [DATA [SHARE]]]   OUT defaults to samples/sample.arx, DATA (the reference
//   tables) to data, SHARE (the staged VDYP/vdypbat, TIPSY/btipsy and TIPSY/arborex2.btp) to
//   the build tree's share/arborex

#include <array>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "base/dates.hpp"
#include "base/errors.hpp"
#include "base/numeric.hpp"
#include "base/unattended_host.hpp"
#include "model/model.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/project_file.hpp"
#include "model/reference_tables.hpp"
#include "model/species_binding.hpp"
#include "posix_process_runner.hpp"
#include "work_folder.hpp"
#include "yield/yield_run.hpp"

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
    bool commercialThin = false;  // asks TIPSY for the thin of kThinHeight and kThinStems
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
         {{"PL", 90}, {"SX", 10}},                {{"PL", 90}, {"SX", 10}}, true},
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
// A thin from below to 940 stems/ha once the planted stand reaches 20 m: TIPSY (and its
// stand-in) takes it in the first year the stand is that tall, 41 years on this site, and
// removes about 30% of the volume.
constexpr float kThinHeight = 20.0f;
constexpr int16_t kThinStems = 940;

// Public sustained yield units of the Cariboo from the PSYU table, by map sheet: the stands of
// 93B045 lie in the Narcosli unit, those of 93B046 across its line in Cottonwood.
int16_t psyuOf(const Stand& stand) {
    return std::string(stand.name).starts_with("93B045") ? 604 : 605;
}

// Fixed dates, so that the file does not change from one run to the next. Functions, not
// globals: the date conversion must not run before its own statics are set up.
double startDate() {
    return dayCountFromParts({2024, 4, 15, 9, 30, 0});
}
double lastDate() {
    return dayCountFromParts({2024, 5, 2, 16, 45, 0});
}
constexpr std::streamoff kLastDateOffset = 232;

// Adds the stand as the project's next polygon.
void addStand(Model& m, const Stand& stand) {
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
    poly.PSYU = psyuOf(stand);
    poly.MGNT = {stand.existing, Managed};
    // Every stand is planted after harvest (TIPSY); only the natural ones use VDYP now. The
    // curves they use are out of date until the yield run.
    poly.YIELDSTATE = {stand.existing == Natural ? int16_t{1} : int16_t{0}, 1};
    mgmt.ROADAREA = stand.roadArea;
    mgmt.TUTILIZ = kUtilisation;
    if (stand.existing == NotRestocked) mgmt.NSRRESTOCKIN = 2;
    if (stand.existing == NotCommercial) {
        mgmt.NCRESTOCKIN = 10;
        mgmt.NCDESC = "Open Fd on rock outcrop";
        mgmt.NCHEIGHT = stand.height;
    }
    if (stand.commercialThin) {
        mgmt.COMTHIN = 1;
        mgmt.CTHEIGHT = kThinHeight;
        mgmt.CTSTEMHA = kThinStems;
    }
    const int p = appendPolygon(m, poly, calc, mgmt);
    // The calculation takes the stands in the order they are listed.
    PolyCalc& added = m.PolyC[static_cast<std::size_t>(p)];
    added.SORT = added.LISTROW = toI2(p);
}

// The inventory as a user enters it, with the saved calculation and the project's header; the
// curves and the models' versions are the yield run's to fill.
void enterInventory(Model& m) {
    programDefaults(m);
    for (const Stand& stand : stands()) addStand(m, stand);
    findSpecIDX(m);

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
    h.StartDate = startDate();
    h.LastDate = lastDate();
}

// Every PSYU the stands name is in the reference table.
void checkPsyuNumbers(Model& m, std::vector<std::string>& problems) {
    for (const Stand& stand : stands())
        if (LookupPSYU(m.Ref, psyuOf(stand)) == "NOT FOUND")
            problems.push_back(std::string(stand.name) + ": PSYU " + std::to_string(psyuOf(stand)) +
                               " is not in PSYU.DAT");
}

// Nobody watches the labels, and the stand-ins have closed their output when the runner
// returns: there is nothing to wait for between two readings of its length.
class UnwatchedRun final : public YieldRunObserver {
public:
    void stat(int, const std::string&) override {}
    void postAdded(const PostItem&) override {}
    void pause(int) override {}
};

bool usesModel(const PolyData& poly, int16_t model) {
    return poly.MGNT[0] == model || poly.MGNT[1] == model;
}

// The checks before the run and the run of both models over every polygon, as the Calculate
// Yield Tables screen makes them with "recalculate all" ticked. Adds to `problems` whatever
// keeps the sample from being clean.
void runYields(Model& m, Host& host, const std::string& share, std::vector<std::string>& problems) {
    const batch::WorkFolder work("make_sample");
    m.Paths[ArborexFolder] = share;
    m.Paths[UserTemp] = work.path();
    m.Files[FileVDYPexe] = share + "VDYP/vdypbat";
    m.Files[FileTIPSYexe] = share + "TIPSY/btipsy";
    m.Files[FileBTP] = share + "TIPSY/arborex2.btp";

    const PreCalcResult check = PreCalcCheck(m);
    for (const PostItem& item : check.errors) problems.push_back("error: " + item.text);
    for (const PostItem& item : check.warnings) problems.push_back("warning: " + item.text);

    batch::PosixProcessRunner runner;
    UnwatchedRun observer;
    const YieldRunResult run = runYieldTables(m, host, runner, {true, true, true}, observer);
    for (const PostItem& item : run.post) problems.push_back("message: " + item.text);
    const std::array<const char*, 2> models = {"VDYP", "TIPSY"};
    for (std::size_t t = 0; t < models.size(); ++t)
        if (!run.ran[t]) problems.push_back(std::string(models[t]) + " was not run");

    for (int p = 0; p <= m.LastPoly; ++p) {
        const PolyData& poly = m.Poly[static_cast<std::size_t>(p)];
        for (std::size_t t = 0; t < models.size(); ++t)
            if (usesModel(poly, static_cast<int16_t>(t)) && poly.YIELDSTATE[t] < 3)
                problems.push_back(poly.NAME.str() + ": the " + models[t] +
                                   " curve is left at YIELDSTATE " +
                                   std::to_string(poly.YIELDSTATE[t]));
    }
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

// The folder that holds the staged stand-ins, with its trailing "/".
std::string shareFolder(int argc, char** argv) {
    std::string folder = argc > 3 ? argv[3] : ARBOREX_SHARE_DIR;
    if (!folder.empty() && folder.back() != '/') folder += '/';
    return folder;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string path = argc > 1 ? argv[1] : "samples/sample.arx";
    const std::string data = argc > 2 ? argv[2] : "data";
    const std::string share = shareFolder(argc, argv);
    std::vector<std::string> problems;
    try {
        // A box shown on the way (a table cut off, a file not found) is a problem of its own.
        std::ostringstream boxes;
        UnattendedHost unattended("box", boxes);
        Host& host = unattended.host;
        auto m = std::make_unique<Model>();
        LoadSpeciesV(m->Ref, host, data + "/SPECIESV.DAT");
        LoadSpeciesT(m->Ref, host, data + "/SPECIEST.DAT");
        loadPSYU(m->Ref, host, data + "/PSYU.DAT");
        if (m->Ref.SpeciesVCount == 0 || m->Ref.SpeciesTCount == 0)
            throw ArborexError(ErrFileNotFound, data + ": no species tables");
        enterInventory(*m);
        checkPsyuNumbers(*m, problems);
        runYields(*m, host, share, problems);
        std::istringstream shown(boxes.str());
        for (std::string line; std::getline(shown, line);) problems.push_back(line);
        if (problems.empty()) {
            // A former sample would be kept as a .bak beside the new one; it is not wanted.
            std::filesystem::remove(path);
            SaveArx(*m, host, path, kCurrentFileVersion, false);
            restoreLastDate(path);
        }
    } catch (const std::exception& e) {
        problems.push_back(e.what());
    }
    if (!problems.empty()) {
        std::cerr << "make_sample: cannot write " << path << ":\n";
        for (const std::string& problem : problems) std::cerr << "  " << problem << '\n';
        return 1;
    }
    std::cout << "Wrote " << path << '\n';
    return 0;
}
