// harvest-age and silviculture in-process on a copy of the bundled sample: what they write, what
// they say, and that a wrong line or an empty selection leaves the file as it was.

#include "stand_update_commands.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "batch_commands.hpp"
#include "batch_run.hpp"
#include "calc_command.hpp"
#include "model/project_file.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex::batch {
namespace {

using test::has;
using test::RunResult;
using Strings = std::vector<std::string>;
using Pair = std::array<int16_t, 2>;

std::string bytesOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

// In the sample, polygon 0 "93B045 101" has VDYP then TIPSY, culminating at 84 and 60, criteria
// ages 63 and 48; 2 "93B045 103" is like it; 3 "93B045 104" has both managements on TIPSY
// (culmination 60) and no VDYP curve.
class StandUpdateCommands : public ::testing::Test {
protected:
    void SetUp() override {
        std::filesystem::copy_file(std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx",
                                   project);
    }
    RunResult run(const std::string& command, Strings words) {
        words.insert(words.begin(), {command, project});
        words.insert(words.end(), {"--data", std::string(ARBOREX_SOURCE_DIR) + "/data"});
        return test::run(words);
    }
    test::TempDir dir;
    std::string project = dir.file("sample.arx");
};

TEST_F(StandUpdateCommands, HarvestAgeMovesTheTargetsOfTheListedPolygons) {
    const RunResult r =
        run("harvest-age", {"--polygons", "0, 93b045 104", "--method", "1", "--amount", "10",
                            "--update-1st-harvest-age", "--update-future-harvest-age"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_EQ(r.out,
              "Harvest ages by \"Years above culmination\", amount 10: 2 polygons changed\n"
              "  polygon 0 \"93B045 101\": HAR1 -1 -> 94, HAR2 -1 -> 70\n"
              "  polygon 3 \"93B045 104\": HAR1 -1 -> 70, HAR2 -1 -> 70\n"
              "Wrote " +
                  project + " (15 polygons)\n");
    EXPECT_TRUE(std::filesystem::exists(dir.file("sample.bak")));
    Model m = test::savedProject(project);
    EXPECT_EQ(m.Poly[0].HAR, (Pair{94, 70}));
    EXPECT_EQ(m.Poly[3].HAR, (Pair{70, 70}));
    EXPECT_EQ(m.Poly[1].HAR, (Pair{-1, -1}));

    // This age, on VDYP targets only: held to the criteria unless they are ignored.
    ASSERT_EQ(run("harvest-age", {"--polygons", "0", "--method", "7", "--amount", "20",
                                  "--update-1st-harvest-age"})
                  .code,
              ExitOk);
    EXPECT_EQ(test::savedProject(project).Poly[0].HAR, (Pair{63, 70}));
    ASSERT_EQ(run("harvest-age", {"--polygons", "0", "--method", "7", "--amount", "20",
                                  "--update-1st-harvest-age", "--ignore-harvest-parameters"})
                  .code,
              ExitOk);
    EXPECT_EQ(test::savedProject(project).Poly[0].HAR, (Pair{20, 70}));
}

TEST_F(StandUpdateCommands, PartialCutIsRefusedWithoutACurrentVdypCurve) {
    const std::string before = bytesOf(project);
    const std::string out = dir.file("out.arx");
    const RunResult r = run("silviculture", {"--polygons", "2,3", "--partial-cut", "--pc-percent",
                                             "abc", "--pc-reentry", "5", "--save", out});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_TRUE(has(r.out,
                    "Silviculture partial cut, [20] % every 10 years: 1 polygon changed\n"
                    "  polygon 2 \"93B045 103\": SILVI 0 -> 1, PCNEXT -1 -> 10, "
                    "FUTUREMGNT 1 -> 0\n"));
    EXPECT_EQ(r.err,
              "note: No VDYP Avaliable?: Partial cut will not be used on these polygons because "
              "they do not contain a current VDYP yield curve.; 93B045 104\n");
    EXPECT_EQ(bytesOf(project), before);
    Model m = test::savedProject(out);
    EXPECT_EQ(m.Poly[2].SILVI, 1);
    EXPECT_EQ(m.Poly[2].PCPERC, -1);
    EXPECT_EQ(m.Poly[2].PCNEXT, 10);
    EXPECT_EQ(m.Poly[2].MGNT, (Pair{0, 0}));
    EXPECT_EQ(m.Poly[3].SILVI, 0);
    EXPECT_EQ(m.Poly[3].MGNT, (Pair{1, 1}));

    project = out;
    ASSERT_EQ(run("silviculture", {"--polygons", "2", "--clearcut"}).code, ExitOk);
    EXPECT_EQ(test::savedProject(out).Poly[2].SILVI, 0);
}

TEST_F(StandUpdateCommands, EmptySelectionsAndWrongLinesWriteNothing) {
    const std::string before = bytesOf(project);
    RunResult r = run("harvest-age", {"--polygons", "", "--method", "0", "--amount", "5"});
    EXPECT_EQ(r.code, ExitOk);
    EXPECT_EQ(r.out, "No polygons are selected: nothing changed, nothing written\n");
    r = run("silviculture", {"--polygons", ",", "--clearcut"});
    EXPECT_EQ(r.code, ExitOk);
    EXPECT_EQ(r.out, "No polygons are selected: nothing changed, nothing written\n");

    const std::vector<std::pair<Strings, std::string>> wrong = {
        {{"--polygons", "0", "--method", "11", "--amount", "5"}, "--method takes 0 to 10"},
        {{"--polygons", "0", "--method", "1"}, "usage: arborex-batch harvest-age"},
        {{"--polygons", "0", "--method", "1", "--amount", "ten"}, "--amount needs a whole"},
        {{"--polygons", "Zeta", "--method", "1", "--amount", "1"}, "no polygon 'Zeta'"}};
    for (const auto& [words, message] : wrong) {
        r = run("harvest-age", words);
        EXPECT_EQ(r.code, ExitUsage);
        EXPECT_TRUE(has(r.err, message));
    }
    r = run("silviculture", {"--polygons", "0", "--clearcut", "--partial-cut"});
    EXPECT_TRUE(has(r.err, "give one of --clearcut and --partial-cut"));
    r = run("silviculture", {"--polygons", "0", "--clearcut", "--pc-percent", "20"});
    EXPECT_TRUE(has(r.err, "go with --partial-cut"));
    EXPECT_EQ(r.code, ExitUsage);
    EXPECT_EQ(bytesOf(project), before);
    EXPECT_FALSE(std::filesystem::exists(dir.file("sample.bak")));
}

}  // namespace
}  // namespace arborex::batch
