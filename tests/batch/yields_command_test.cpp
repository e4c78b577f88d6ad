// The yields command in-process on a two-polygon project, with a small VDYP of a shell script
// whose volumes follow the site index it is given; the process runner on its own; and, where the
// build has them, the stand-in models end to end.

#include "yields_command.hpp"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "batch_run.hpp"
#include "json_check.hpp"
#include "model/project_file.hpp"
#include "posix_process_runner.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"
#include "yield/curves.hpp"

namespace arborex::batch {
namespace {

using test::has;
using test::JsonValue;
using test::RunResult;
using Strings = std::vector<std::string>;

// VDYP's output for each polygon of vdypin.dat: volume age * site index / 10 on ages 0 to 100
// by 10, in VDYP's columns, after a heading line.
constexpr const char* kFakeVdyp = R"(#!/bin/sh
awk 'BEGIN { printf "VDYP test model: 1.0\r\n" }
{ n = substr($0, 10, 3) + 0; si = substr($0, 21, 4) + 0
  for (a = 0; a <= 100; a += 10) { v = a * si / 10
    printf "%-8s%-5d%-4d%-5s%-8s%-9s%-9.1f", "Arborex", n, a, "55", "21.50", "20.0", v
    for (s = 1; s < 6; s++) printf "%-9s", "0.0"
    printf "%-6s%-9s%-7.1f\r\n", "25.0", "1.000", v } }' vdypin.dat > vdypout.dat
)";

std::string script(const test::TempDir& dir, const std::string& name, const std::string& text) {
    const std::string path = dir.file(name);
    std::ofstream(path) << text;
    chmod(path.c_str(), 0755);
    return path;
}

std::string bytesOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// 0 "Alpha" VDYP now and later, site index 20 and its curve (volume 2 m3/ha a year); 1 "Beta"
// TIPSY; grids 0 to 100 by 10, both curves current.
void writeProject(const std::string& path, int16_t alphaVdypState) {
    Model m;
    programDefaults(m);
    m.Settings.YieldMaxAge = {100, 100};
    m.Settings.YieldIncAge = {10, 10};
    SetAgeInc(m);
    ResizePolygonArrays(m, 2);
    m.LastPoly = 1;
    m.Header.TIPSYVersion = "3.2m";  // curves of another TIPSY version would load out of date
    for (int p = 0; p <= 1; ++p) {
        PolyData& poly = m.Poly[p];
        poly.AREA = 10.0f;
        poly.PSYU = 1;
        poly.VAF = 1.0f;
        poly.CLOSURE = 50;
        poly.VS[0] = "PL";
        poly.TS[0] = "PL";
        poly.VP[0] = poly.TP[0] = 100;
        poly.TI[0] = 20;
        poly.VUTILIZ = m.PolyM[p].TUTILIZ = 12.5f;
        poly.DENSITY = 1600;
        poly.YIELDSTATE = {3, 3};
        poly.HAR = {-1, -1};
        m.PolyC[p].VX = {1, 1, 1, 1, 1, 1};
        m.PolyC[p].MINCUTAGE = {-1, -1};
        m.PolyC[p].MINCUTVOL = m.PolyC[p].MINCUTDBH = {-1.0f, -1.0f};
    }
    m.Poly[0].NAME = "Alpha";
    m.Poly[0].MGNT = {0, 0};
    m.Poly[0].VSITEINDEX = 20.0f;
    m.Poly[0].YIELDSTATE[0] = alphaVdypState;
    for (int row = 0; row <= 10; ++row) {
        YieldRow& r = m.VYield(0, row);
        r.Vol = m.VMix(0, row)[0] = static_cast<int16_t>(200 * row);
        r.Dia = 200;
        r.Mai = row == 0 ? 0.0f : 2.0f;
    }
    m.Poly[1].NAME = "Beta";
    m.Poly[1].MGNT = {1, 1};
    test::FakeHost host;
    SaveArx(m, host, path, kCurrentFileVersion, false);
}

class YieldsCommand : public ::testing::Test {
protected:
    RunResult yields(Strings words) {
        words.insert(words.begin(), {"yields", project});
        words.insert(words.end(), {"--data", std::string(ARBOREX_SOURCE_DIR) + "/data"});
        return test::run(words);
    }
    JsonValue json(const RunResult& r) {
        test::JsonCheck check(r.out);
        EXPECT_TRUE(check.valid()) << check.error() << "\n" << r.out;
        return check.root();
    }
    Model reload() {
        Model m;
        programDefaults(m);
        test::FakeHost host;
        EXPECT_TRUE(ReadArx(m, host, project));
        return m;
    }

    test::TempDir dir;
    std::string project = dir.file("woodlot.arx");
};

TEST_F(YieldsCommand, AnEditedPolygonGetsItsNewCurveAndHarvestAge) {
    writeProject(project, 3);
    ASSERT_EQ(test::run({"polygon", project, "set", "Alpha", "VSITEINDEX=30", "--data",
                         std::string(ARBOREX_SOURCE_DIR) + "/data"})
                  .code,
              0);
    const RunResult r =
        yields({"--vdyp-only", "--vdyp-program", script(dir, "vdyp.sh", kFakeVdyp), "--json"});
    ASSERT_EQ(r.code, 0) << r.err;
    const JsonValue root = json(r);
    EXPECT_EQ(root.at("VDYPDue").text, "1");
    EXPECT_EQ(root.at("ran").items[0].text, "true");
    EXPECT_EQ(root.at("ran").items[1].text, "false");
    Strings labels;
    for (const JsonValue& label : root.at("lblStat").items) labels.push_back(label.text);
    EXPECT_EQ(labels, (Strings{"Done", "Done", "Done", "0 Warnings / 0 Errors", "Skip", "Skip",
                               "Skip", "Skip"}));
    const JsonValue& alpha = root.at("polygonList").items.at(0);
    EXPECT_EQ(alpha.at("YIELDSTATEBefore").items[0].text, "1");
    EXPECT_EQ(alpha.at("YIELDSTATE").items[0].text, "3");
    // 150 m3/ha, the least volume cut, is reached at 50 where it was 75.
    EXPECT_EQ(alpha.at("HarvAge").items[0].at("HarvestAge").text, "50");

    const Model m = reload();
    EXPECT_FLOAT_EQ(FindVol(m, 0, 100, 0), 300.0f);
    EXPECT_EQ(m.Poly[1].YIELDSTATE, (std::array<int16_t, 2>{3, 3}));
    EXPECT_TRUE(std::filesystem::exists(dir.file("woodlot.bak")));
}

TEST_F(YieldsCommand, AMissingProgramIsReportedAndLeavesItsCurvesCleared) {
    writeProject(project, 1);
    const std::string missing = dir.file("no-such-vdyp");
    const RunResult r =
        yields({"--vdyp-only", "--vdyp-program", missing, "--save", dir.file("out.arx")});
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_TRUE(
        has(r.out, "Arborex\t\tThe program \"" + missing + "\" was not found or cannot be run."));
    EXPECT_TRUE(has(r.out, "1, 3 -> 0, 3"));
    project = dir.file("out.arx");
    EXPECT_EQ(FindVol(reload(), 0, 100, 0), 0.0f);
}

TEST_F(YieldsCommand, NothingDueIsRefusedAndNothingWritten) {
    writeProject(project, 3);
    const std::string before = bytesOf(project);
    const RunResult r = yields({"--vdyp-program", dir.file("unused")});
    EXPECT_EQ(r.code, 3);
    EXPECT_EQ(r.err,
              "arborex-batch: nothing to calculate: every yield curve is current (--all "
              "recalculates them)\n");
    EXPECT_TRUE(has(r.out, "VDYP:  (0 of 1 to calculate)"));
    EXPECT_TRUE(bytesOf(project) == before);
    EXPECT_FALSE(std::filesystem::exists(dir.file("woodlot.bak")));
    EXPECT_EQ(yields({"--vdyp-only", "--tipsy-only"}).code, 2);
}

TEST(PosixProcessRunner, RunsInTheFolderAndTellsHowTheProgramEnded) {
    test::TempDir dir;
    PosixProcessRunner runner;
    ProcessRequest request;
    request.workingFolder = dir.path();
    request.program =
        script(dir, "ok.sh", "#!/bin/sh\npwd > where.txt\necho \"$1\" >> where.txt\nexit 4\n");
    request.arguments = {"two words"};
    ProcessResult r = runner.run(request);
    EXPECT_EQ(r.status, ProcessStatus::Finished);
    EXPECT_EQ(r.exitCode, 4);
    EXPECT_EQ(bytesOf(dir.file("where.txt")),
              std::filesystem::canonical(dir.path()).string() + "\ntwo words\n");

    request.program = dir.file("missing");
    EXPECT_EQ(runner.run(request).status, ProcessStatus::NotFound);
    std::ofstream(dir.file("plain.txt")) << "not a program";
    request.program = dir.file("plain.txt");
    EXPECT_EQ(runner.run(request).status, ProcessStatus::NotFound);

    request.program = script(dir, "crash.sh", "#!/bin/sh\nkill -SEGV $$\n");
    r = runner.run(request);
    EXPECT_EQ(r.status, ProcessStatus::Crashed);
    EXPECT_TRUE(has(r.message, "ended abnormally (signal 11)"));

    request.program = script(dir, "hang.sh", "#!/bin/sh\nexec sleep 30\n");
    request.timeoutSeconds = 1;
    r = runner.run(request);
    EXPECT_EQ(r.status, ProcessStatus::TimedOut);
    EXPECT_TRUE(has(r.message, "did not finish within 1 seconds"));
}

#if defined(ARBOREX_VDYPBAT) && defined(ARBOREX_BTIPSY)
// The stand-in models, as an installation runs them: both curves of an edited project anew.
TEST_F(YieldsCommand, TheStandInModelsRecalculateBothCurves) {
    writeProject(project, 3);
    const std::string data = std::string(ARBOREX_SOURCE_DIR) + "/data";
    ASSERT_EQ(test::run({"polygon", project, "set", "Alpha", "VSITEINDEX=30", "--data", data}).code,
              0);
    const RunResult r = yields(
        {"--all", "--vdyp-program", ARBOREX_VDYPBAT, "--tipsy-program", ARBOREX_BTIPSY, "--json"});
    ASSERT_EQ(r.code, 0) << r.err << r.out;
    const JsonValue root = json(r);
    EXPECT_EQ(root.at("ran").items[0].text, "true");
    EXPECT_EQ(root.at("ran").items[1].text, "true");
    EXPECT_TRUE(root.at("post").items.empty()) << r.out;
    const JsonValue& polygons = root.at("polygonList");
    EXPECT_EQ(polygons.items.at(0).at("YIELDSTATE").items[0].text, "3");
    EXPECT_EQ(polygons.items.at(1).at("YIELDSTATE").items[1].text, "3");
    const Model m = reload();
    EXPECT_GT(FindVol(m, 0, 100, 0), 0.0f);
    EXPECT_NE(FindVol(m, 0, 100, 0), 200.0f);  // no longer the curve of site index 20
    EXPECT_GT(FindVol(m, 1, 100, 1), 0.0f);
    EXPECT_EQ(m.Poly[1].YIELDSTATE[1], 3);  // the stand-in answers as the TIPSY curves are kept
}
#endif

}  // namespace
}  // namespace arborex::batch
