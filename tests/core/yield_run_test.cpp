// The checks before a yield run and the run itself over fake models that write a small table
// for every polygon they were given: which polygons run, the labels in their order, the curves
// and states afterwards, and what a model that fails leaves behind.

#include "yield/yield_run.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"
#include "yield/curves.hpp"
#include "yield/work_files.hpp"

namespace arborex {
namespace {

using Lines = std::vector<std::string>;

constexpr const char* kVdypProgram = "/models/vdyp";
constexpr const char* kTipsyProgram = "/models/tipsy";

// Text laid at 1-based columns of a blank line, as the exchange files are written.
struct Record {
    std::string text = std::string(120, ' ');
    Record& at(std::size_t column, const std::string& value) {
        text.replace(column - 1, value.size(), value);
        return *this;
    }
};

Lines linesOf(const std::string& path) {
    Lines lines;
    std::ifstream in(path);
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

// The models: each reads the polygon numbers of its input file and writes a table of volume
// age * 3 (VDYP) or age * 4 (TIPSY) on ages 0 to 100 by 10 for each; or fails as told.
class FakeModels final : public ProcessRunner {
public:
    std::vector<ProcessRequest> requests;
    std::map<std::string, ProcessResult> failures;  // by program
    bool writeOutput = true;
    Lines vdypErrors;  // ERROR.TXT, when not empty
    std::vector<int> exported[2];

    ProcessResult run(const ProcessRequest& request) override {
        requests.push_back(request);
        if (auto f = failures.find(request.program); f != failures.end()) return f->second;
        const bool vdyp = request.program == kVdypProgram;
        const std::string folder = request.workingFolder;
        auto& polygons = exported[vdyp ? 0 : 1];
        for (const std::string& line : linesOf(folder + (vdyp ? kVdypInFile : kTipsyInFile)))
            polygons.push_back(std::stoi(vdyp ? line.substr(9, 3) : line.substr(0, 3)));
        if (!writeOutput) return {};
        std::ofstream out(folder + (vdyp ? kVdypOutFile : kTipsyOutFile), std::ios::binary);
        vdyp ? writeVdyp(out, polygons) : writeTipsy(out, polygons);
        if (vdyp && !vdypErrors.empty()) {
            std::ofstream errors(folder + kVdypErrorFile, std::ios::binary);
            for (const std::string& line : vdypErrors) errors << line << "\r\n";
        }
        return {};
    }

private:
    static void writeVdyp(std::ostream& out, const std::vector<int>& polygons) {
        out << "VDYP batch output version: 7.0\r\n";
        for (int number : polygons)
            for (int age = 0; age <= 100; age += 10) {
                const std::string volume = std::to_string(age * 3) + ".0";
                Record r;
                r.at(1, "Arborex").at(9, std::to_string(number)).at(14, std::to_string(age));
                r.at(18, "55").at(23, "21.50").at(31, "20.0").at(40, volume);
                for (std::size_t slot = 1; slot < 6; ++slot) r.at(40 + 9 * slot, "0.0");
                r.at(94, "25.0").at(100, "1.000").at(109, volume);
                out << r.text << "\r\n";
            }
    }
    static void writeTipsy(std::ostream& out, const std::vector<int>& polygons) {
        out << "TIPSY batch report\r\n\r\n" << Record().at(64, "4.1").text << "\r\n\r\n";
        for (int number : polygons) {
            out << "SITE INDEX = 23.0\r\n"
                << Record().at(1, "TABLE   :").at(55, std::to_string(number)).text << "\r\n"
                << "----------\r\n";
            for (int age = 0; age <= 100; age += 10)
                out << Record()
                           .at(1, std::to_string(age))
                           .at(7, std::to_string(age * 4) + ".0")
                           .at(15, "18.0")
                           .at(23, "22.0")
                           .text
                    << "\r\n";
            out << "----------\r\n";
        }
    }
};

class RecordingRun final : public YieldRunObserver {
public:
    Lines stats;  // "label:text", percentages past "0%" left out
    std::vector<PostItem> posted;
    std::function<void()> onPause;
    std::function<bool()> onCancelled;

    void stat(int label, const std::string& text) override {
        const bool percent = !text.empty() && text.back() == '%' && text != "0%";
        if (!percent) stats.push_back(std::to_string(label) + ":" + text);
    }
    void postAdded(const PostItem& item) override { posted.push_back(item); }
    void pause(int milliseconds) override {
        EXPECT_EQ(milliseconds, 500);
        if (onPause) onPause();
    }
    bool cancelled() override { return onCancelled && onCancelled(); }
};

// Three live polygons of VDYP now and TIPSY later, each curve current, on grids of 0 to 100 by
// 10, and a deleted fourth; the work folder a fresh temporary one.
class YieldRun : public ::testing::Test {
protected:
    void SetUp() override {
        programDefaults(m);
        m.Settings.YieldMaxAge = {100, 100};
        m.Settings.YieldIncAge = {10, 10};
        SetAgeInc(m);
        ResizePolygonArrays(m, 4);
        m.LastPoly = 3;
        for (int p = 0; p <= 3; ++p) {
            PolyData& poly = m.Poly[p];
            poly.NAME = std::string("Stand ") + char('A' + p);
            poly.AREA = 10.0f;
            poly.MGNT = {0, 1};
            poly.YIELDSTATE = {3, 3};
            poly.VSITEINDEX = 20.0f;
            poly.CLOSURE = 50;
            poly.PSYU = 1;
            poly.VAF = 1.0f;
            poly.VS[0] = "PL";
            poly.VP[0] = poly.TP[0] = 100;
            poly.VSIDX[0] = poly.TSIDX[0] = 1;
            m.PolyC[p].VX = {1, 1, 1, 1, 1, 1};
            m.PolyC[p].MINCUTAGE = {-1, -1};
            m.PolyC[p].MINCUTVOL = m.PolyC[p].MINCUTDBH = {-1.0f, -1.0f};
        }
        m.PolyC[3].DELETE = 1;
        m.Paths[UserTemp] = dir.path() + "/";
        m.Files[FileVDYPexe] = kVdypProgram;
        m.Files[FileTIPSYexe] = kTipsyProgram;
        m.Files[FileBTP] = dir.file("template.btp");
        std::ofstream(m.Files[FileBTP], std::ios::binary) << std::string(1056 + 40, '\0');
    }
    YieldRunResult runAll(YieldRunRequest request = {}) {
        return runYieldTables(m, host, models, request, observer);
    }

    test::TempDir dir;
    Model m;
    test::FakeHost host;
    FakeModels models;
    RecordingRun observer;
};

TEST_F(YieldRun, AnEmptyProjectKeepsTheScreensCaptions) {
    Model empty;
    programDefaults(empty);
    const PreCalcResult r = PreCalcCheck(empty);
    EXPECT_EQ(r.lblAmt[0], "(0 of 0)");
    EXPECT_EQ(r.lblAmt[1], "(0 of 0)");
    EXPECT_EQ(r.lblStatus, "");
    EXPECT_TRUE(r.errors.empty() && r.warnings.empty());
}

TEST_F(YieldRun, CountsUseAndDueAndLabelsTheCheck) {
    m.Poly[1].YIELDSTATE = {1, 2};
    m.Poly[2].MGNT = {2, 0};        // no cover now, VDYP later: a VDYP polygon
    m.Poly[3].YIELDSTATE = {0, 0};  // deleted: not counted
    const PreCalcResult r = PreCalcCheck(m);
    EXPECT_EQ(r.VDYPUsed, 3);
    EXPECT_EQ(r.VDYPDue, 1);
    EXPECT_EQ(r.TIPSYUsed, 2);
    EXPECT_EQ(r.TIPSYDue, 1);
    EXPECT_EQ(r.lblAmt[0], "(1 of 3 to calculate)");
    EXPECT_EQ(r.lblAmt[1], "(1 of 2 to calculate)");
    EXPECT_EQ(r.lblStatus, "Caution - 0 Error(s) / 0 Warnings(s)");
}

// The average VAF divides by every polygon, the deleted one too: 3 x 0.6 / 4 is under 0.5.
TEST_F(YieldRun, ProjectWarningsCountDeletedPolygonsInTheVafAverage) {
    for (int p = 0; p <= 3; ++p) m.Poly[p].VAF = 0.6f;
    m.Poly[0].CLOSURE = m.Poly[1].CLOSURE = 5;
    m.Poly[2].CLOSURE = 0;  // not in the closure average
    const PreCalcResult r = PreCalcCheck(m);
    ASSERT_GE(r.warnings.size(), 2u);
    EXPECT_EQ(r.warnings[0],
              (PostItem{"ARBOREX - \t\tThe average Crown Closure is under 10%", -1}));
    EXPECT_EQ(r.warnings[1], (PostItem{"ARBOREX - \t\tThe average VAF is under 50%", -1}));
    m.PolyC[3].DELETE = 0;  // now 4 x 0.6 / 4, and closures of 5, 5 and 50
    for (const PostItem& item : PreCalcCheck(m).warnings) EXPECT_NE(item.polygon, -1);
}

struct InputCase {
    const char* what;
    std::function<void(Model&, PolyData&)> change;
    Lines errors, warnings;
};

TEST_F(YieldRun, CheckInputGivesEachMessageAsWritten) {
    const std::vector<InputCase> cases = {
        {"fine", [](Model&, PolyData&) {}, {}, {}},
        {"area 0 passes", [](Model&, PolyData& p) { p.AREA = 0.0f; }, {}, {}},
        {"negative area and age",
         [](Model&, PolyData& p) { p.AREA = -1.0f, p.AGE = -1; },
         {"The AREA must be greater than 0 ha."},
         {"The AGE under 0 years old."}},
        {"site index from age 30",
         [](Model&, PolyData& p) { p.VSITEINDEX = 0.0f, p.VAGETOTAL = 30; },
         {},
         {}},
        {"no site",
         [](Model&, PolyData& p) { p.VSITEINDEX = 0.9f, p.VAGETOTAL = 29; },
         {"A polygon must contain a valid site index or a valid AgeIn SiteIn"},
         {}},
        {"NC now, VDYP later is checked for VDYP",
         [](Model&, PolyData& p) {
             p.MGNT = {2, 0}, p.PSYU = 0, p.CLOSURE = 9;
         },
         {"A PSYU must be selected"},
         {"The CROWN CLOSURE is less than 10% for VDYP"}},
        {"VAF 1.5",
         [](Model&, PolyData& p) { p.VAF = 1.5f; },
         {},
         {"The VAF is NOT equal to 1.00"}},
        {"VAF 12",
         [](Model&, PolyData& p) { p.VAF = 12.0f; },
         {"The VAF is 12.000 which is greater then 10.0"},
         {"The VAF is NOT equal to 1.00"}},
        {"PSYU block letter",
         [](Model& m, PolyData& p) { m.Settings.VDYPPSYUB = 1, p.PSYUBLOCK = "a"; },
         {"The PSYU BLOCK must between 0 and 9."},
         {}},
        {"PSYU block digit",
         [](Model& m, PolyData& p) { m.Settings.VDYPPSYUB = 1, p.PSYUBLOCK = "7"; },
         {},
         {}},
        {"species counted from 0",
         [](Model&, PolyData& p) { p.VP = {60, 40, 0, 0, 0, 0}, p.VSIDX = {1, 0, 0, 3, 0, 0}; },
         {"V1 Species must be specified with a > 0% composition"},
         {"V3 Species was specified with a 0% composition"}},
        {"TIPSY shares",
         [](Model&, PolyData& p) {
             p.TP = {90, 0, 0, 0, 0}, p.TSIDX = {1, 0, 0, 0, 2};
         },
         {"The percent of all TIPSY species should equal 100%"},
         {"T4 Species was specified with a 0% composition"}},
        {"VDYP shares, no TIPSY",
         [](Model&, PolyData& p) {
             p.MGNT = {0, 0}, p.VP[0] = 99, p.TP[0] = 0;
         },
         {"The percent of all VDYP species should equal 100%"},
         {}},
    };
    for (const InputCase& c : cases) {
        SCOPED_TRACE(c.what);
        Model local = m;
        c.change(local, local.Poly[1]);
        PreCalcResult r;
        CheckInput(local, 1, r);
        Lines errors, warnings;
        for (const PostItem& item : r.errors) errors.push_back(item.text.substr(8));
        for (const PostItem& item : r.warnings) warnings.push_back(item.text.substr(8));
        EXPECT_EQ(errors, c.errors);
        EXPECT_EQ(warnings, c.warnings);
        for (const PostItem& item : r.errors) EXPECT_EQ(item.text.substr(0, 8), "Stand B\t");
        for (const PostItem& item : r.errors) EXPECT_EQ(item.polygon, 1);
    }
}

TEST_F(YieldRun, ThePsyuBlockIsStoredUpperCased) {
    m.Settings.VDYPPSYUB = 1;
    m.Poly[0].PSYUBLOCK = "b";
    PreCalcCheck(m);
    EXPECT_EQ(m.Poly[0].PSYUBLOCK.raw(), "B");
}

// A curve that is 0 at the top of its grid but grew before is current; one of no volume at all
// stays at 2 and is due again.
TEST_F(YieldRun, CalculateYieldConfirmsOnlyCurvesWithVolume) {
    m.Poly[0].YIELDSTATE[0] = m.Poly[1].YIELDSTATE[0] = m.Poly[2].YIELDSTATE[0] = 2;
    for (int row = 0; row <= 10; ++row) m.VYield(0, row).Vol = 100;
    m.VYield(1, 4).Vol = 50;
    m.HarvAge[2][0].HarvestAge = -5;
    CalculateYield(m, 0);
    EXPECT_EQ(m.Poly[0].YIELDSTATE[0], 3);
    EXPECT_EQ(m.Poly[1].YIELDSTATE[0], 3);
    EXPECT_EQ(m.Poly[2].YIELDSTATE[0], 2);
    EXPECT_EQ(m.HarvAge[2][0].HarvestAge, 999);
    EXPECT_EQ(PreCalcCheck(m).VDYPDue, 1);
}

TEST_F(YieldRun, NeitherBoxTickedSkipsEveryLabelAndRunsNothing) {
    const YieldRunResult r = runAll({false, false, true});
    EXPECT_EQ(observer.stats, (Lines{"0:Skip", "1:Skip", "2:Skip", "3:Skip", "4:Skip", "5:Skip",
                                     "6:Skip", "7:Skip"}));
    EXPECT_TRUE(models.requests.empty());
    EXPECT_TRUE(r.post.empty());
    EXPECT_EQ(r.ran, (std::array<bool, 2>{false, false}));
}

TEST_F(YieldRun, RecalculateAllRunsVdypOnEveryLivePolygonThoughNoneIsDue) {
    runAll({true, false, true});
    ASSERT_EQ(models.requests.size(), 1u);
    EXPECT_EQ(models.exported[0], (std::vector<int>{1, 2, 3}));
    for (int p = 0; p <= 2; ++p) {
        EXPECT_EQ(m.Poly[p].YIELDSTATE[0], 3) << p;
        EXPECT_FLOAT_EQ(FindVol(m, 0, 100, static_cast<int16_t>(p)), 300.0f) << p;
    }
}

TEST_F(YieldRun, ARunGoesThroughItsLabelsInOrder) {
    m.Poly[0].YIELDSTATE = {1, 1};
    m.Poly[2].YIELDSTATE = {3, 0};
    models.vdypErrors = {Record()
                             .at(1, "WARNING")
                             .at(14, "Arborex")
                             .at(23, "1")
                             .at(29, "1")
                             .at(34, "Site index estimated")
                             .text};
    // The output grows once between two readings: the label shows its length.
    int pauses = 0;
    observer.onPause = [&] {
        if (pauses++ == 0) std::ofstream(dir.file(kVdypOutFile), std::ios::app) << "\r\n\r\n";
    };
    const YieldRunResult r = runAll();
    const std::string grown = formatNumber(
        static_cast<double>(std::filesystem::file_size(dir.file(kVdypOutFile))), "#,##0");
    EXPECT_EQ(observer.stats, (Lines{"0:",
                                     "1:",
                                     "2:",
                                     "3:",
                                     "4:",
                                     "5:",
                                     "6:",
                                     "7:",
                                     "0:Working",
                                     "0:Done",
                                     "1:Waiting for VDYP",
                                     "1:Closing File",
                                     "1:" + grown,
                                     "1:Done",
                                     "2:0%",
                                     "2:Done",
                                     "3:Processing Error File",
                                     "3:1 Warnings / 0 Errors",
                                     "4:Working",
                                     "4:Done",
                                     "5:Waiting for TIPSY",
                                     "5:Closing File",
                                     "5:Done",
                                     "6:Importing",
                                     "6:Done",
                                     "7:Processing Error File",
                                     "7:0 Warnings / 0 Errors"}));
    EXPECT_EQ(r.post, (std::vector<PostItem>{{"Stand A\tSite index estimated", 0}}));
    EXPECT_EQ(observer.posted, r.post);
    EXPECT_EQ(models.exported[0], (std::vector<int>{1}));
    EXPECT_EQ(models.exported[1], (std::vector<int>{1, 3}));
    ASSERT_EQ(models.requests.size(), 2u);
    EXPECT_EQ(models.requests[0].program, kVdypProgram);
    EXPECT_EQ(models.requests[0].workingFolder, m.Paths[UserTemp]);
    EXPECT_EQ(models.requests[1].program, kTipsyProgram);
    EXPECT_EQ(m.Poly[0].YIELDSTATE, (std::array<int16_t, 2>{3, 3}));
    EXPECT_EQ(m.Poly[2].YIELDSTATE, (std::array<int16_t, 2>{3, 3}));
    EXPECT_FLOAT_EQ(FindVol(m, 1, 100, 2), 400.0f);
    EXPECT_EQ(r.ran, (std::array<bool, 2>{true, true}));
}

// A model that cannot run leaves its exported curves cleared, one line in the list, and the
// other model still runs.
TEST_F(YieldRun, AFailedProgramPostsItsMessageAndTheRunGoesOn) {
    for (ProcessStatus status : {ProcessStatus::NotFound, ProcessStatus::FailedToStart,
                                 ProcessStatus::Crashed, ProcessStatus::TimedOut}) {
        SetUp();
        models = FakeModels();
        m.Poly[1].YIELDSTATE = {1, 1};
        m.VYield(1, 10).Vol = 777;
        models.failures[kVdypProgram] = {status, 0, "VDYP failed."};
        const YieldRunResult r = runAll();
        EXPECT_EQ(r.post, (std::vector<PostItem>{{"Arborex\t\tVDYP failed.", -1}}));
        EXPECT_EQ(m.Poly[1].YIELDSTATE, (std::array<int16_t, 2>{0, 3}));
        EXPECT_EQ(FindVol(m, 0, 100, 1), 0.0f);
        EXPECT_EQ(models.requests.size(), 2u);
    }
}

TEST_F(YieldRun, AProgramThatWritesNothingIsAFileNotFound) {
    m.Poly[0].YIELDSTATE[0] = 1;
    models.writeOutput = false;
    try {
        runAll();
        FAIL() << "no failure";
    } catch (const ArborexError& e) {
        EXPECT_EQ(e.number(), ErrFileNotFound);
        EXPECT_EQ(e.detail(), m.Paths[UserTemp] + kVdypOutFile);
    }
}

TEST_F(YieldRun, AMissingWorkFolderRunsNothing) {
    m.Poly[0].YIELDSTATE[0] = 1;
    m.Paths[UserTemp] = dir.file("gone/");
    const YieldRunResult r = runAll();
    ASSERT_EQ(r.post.size(), 1u);
    EXPECT_EQ(r.post[0].text.rfind("Arborex\t\tThe temporary folder", 0), 0u);
    EXPECT_TRUE(models.requests.empty());
}

TEST_F(YieldRun, ACancelStopsBeforeTheNextModel) {
    m.Poly[0].YIELDSTATE = {1, 1};
    bool vdypDone = false;
    observer.onPause = [&] { vdypDone = true; };
    observer.onCancelled = [&] { return vdypDone; };
    const YieldRunResult r = runAll();
    EXPECT_EQ(r.ran, (std::array<bool, 2>{true, false}));
    EXPECT_EQ(m.Poly[0].YIELDSTATE, (std::array<int16_t, 2>{3, 1}));
}

}  // namespace
}  // namespace arborex
