// The batch commands run in-process on projects written into a temporary folder.

#include "batch_commands.hpp"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "base/dates.hpp"
#include "batch_host.hpp"
#include "batch_run.hpp"
#include "json_check.hpp"
#include "model/project_file.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex::batch {
namespace {

using test::has;
using test::lineCount;
using test::run;
using test::RunResult;
using Strings = std::vector<std::string>;

// Three polygons; the first carries curves, the second a name with a quote and a Latin-1 byte.
void writeProject(const std::string& path) {
    Model m;
    programDefaults(m);
    ResizePolygonArrays(m, 3);
    m.LastPoly = 2;
    m.Header.Licence = "A12345";
    m.Header.Company = "Sample Woodlot Ltd.";
    m.Header.TIPSYVersion = "3.2m";
    m.Header.StartDate = dayCountFromParts({2020, 1, 2, 3, 4, 5});
    m.Settings.MINVOL = 0.1f;
    m.Settings.PCADJUSTFACT = 1.0f / 3.0f;

    m.Poly[0].NAME = "93B045 101";
    m.Poly[0].AREA = 24.6f;
    m.Poly[0].AGE = 85;
    m.Poly[0].MGNT = {0, 1};
    m.Poly[0].HAR = {-1, 90};
    m.Poly[0].YIELDSTATE = {3, 2};
    for (int row : {10, 11, 12}) m.VYield(0, row).Vol = 1234;
    for (int row : {4, 5}) m.TYield(0, row).Vol = 50;
    m.Poly[1].NAME = "Ch\xe9ne \"A\"";
    m.PolyC[1].DELETE = 1;
    m.Poly[2].NAME = "93B046 12";
    m.PolyC[2].EXCLUDE = 1;

    test::FakeHost host;
    SaveArx(m, host, path, kCurrentFileVersion, false);
}

class BatchCommands : public ::testing::Test {
protected:
    void SetUp() override { writeProject(project); }
    test::TempDir dir;
    std::string project = dir.file("woodlot.arx");
};

TEST_F(BatchCommands, InfoTextAlignsHeaderAndListsEveryPolygon) {
    const RunResult r = run({"info", project});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_EQ(r.err, "");
    for (const char* line :
         {"  Licence:      A12345\n", "  StartDate:    43832.12783564815 (2020-01-02 03:04:05)\n",
          "  FileVersion:  3226\n", "  YieldMaxAge:     300, 350\n", "Polygons: 3\n",
          "Ch\xc3\xa9ne \"A\"",  // the Latin-1 byte reaches a terminal as UTF-8
          "      0 93B045 101        24.6    85 0, 1   -1, 90     3, 2            0       0    "
          "    3         2\n",
          "  SortMethod:  -3\n"})
        EXPECT_TRUE(has(r.out, line));
}

TEST_F(BatchCommands, InfoJsonIsValidWithStableKeysAndExactFloats) {
    const RunResult r = run({"info", project, "--json"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    test::JsonCheck json(r.out);
    ASSERT_TRUE(json.valid()) << json.error() << "\n" << r.out;
    const test::JsonValue& root = json.root();
    EXPECT_EQ(root.keys(), (Strings{"header", "settings", "polygons", "polygonList", "CutOrderLast",
                                    "calculation"}));
    EXPECT_EQ(root.at("header").keys(),
              (Strings{"FileStamp", "Licence", "District", "Company", "User", "Scenario",
                       "VDYPVersion", "TIPSYVersion", "StartDate", "LastDate", "FileVersion"}));
    const Strings settings = root.at("settings").keys();
    ASSERT_EQ(settings.size(), 27u);
    EXPECT_EQ(settings.front(), "REGENDELAY");
    EXPECT_EQ(settings.back(), "COLORS");
    EXPECT_EQ(root.at("calculation").keys(), (Strings{"BlockLast", "RoadLast", "CutCount",
                                                      "CalcHorizon", "NetArea", "SortMethod"}));
    EXPECT_EQ(root.at("polygons").text, "3");
    ASSERT_EQ(root.at("polygonList").items.size(), 3u);
    EXPECT_EQ(root.at("polygonList").items[2].at("EXCLUDE").text, "1");
    for (const char* part :
         {"\"StartDate\": {\"days\": 43832.12783564815, \"date\": \"2020-01-02 03:04:05\"}",
          "\"YieldIncAge\": [1, 10]",
          "{\"index\": 0, \"NAME\": \"93B045 101\", \"AREA\": 24.6, \"AGE\": 85, \"MGNT\": [0, "
          "1], \"HAR\": [-1, 90], \"YIELDSTATE\": [3, 2], \"DELETE\": 0, \"EXCLUDE\": 0, "
          "\"VDYPRows\": 3, \"TIPSYRows\": 2}",
          "\"NAME\": \"Ch\\u00e9ne \\\"A\\\"\"", "\"DELETE\": 1", "\"MINVOL\": 0.1,"})
        EXPECT_TRUE(has(r.out, part));
    // A float that has no short decimal form still reads back to the same float.
    const std::string key = "\"PCADJUSTFACT\": ";
    ASSERT_TRUE(has(r.out, key));
    EXPECT_EQ(std::strtof(r.out.c_str() + r.out.find(key) + key.size(), nullptr), 1.0f / 3.0f);
}

TEST_F(BatchCommands, ConvertToOldVersionsAndBack) {
    for (const std::string version : {"200", "111"}) {
        SCOPED_TRACE(version);
        const std::string old = dir.file("old" + version + ".arx");
        RunResult r = run({"convert", project, old, "--version", version});
        ASSERT_EQ(r.code, ExitOk) << r.err;
        EXPECT_EQ(r.out, "Wrote " + old + " as version " + version + " (3 polygons)\n");

        r = run({"info", old, "--json", "--quiet"});
        ASSERT_EQ(r.code, ExitOk) << r.err;
        EXPECT_EQ(r.err, "");
        EXPECT_TRUE(has(r.out, "\"FileVersion\": " + version));
        EXPECT_TRUE(has(r.out, "\"polygons\": 3,"));

        const std::string back = dir.file("back" + version + ".arx");
        ASSERT_EQ(run({"convert", old, back, "--quiet"}).code, ExitOk);
        r = run({"info", back, "--json"});
        ASSERT_EQ(r.code, ExitOk) << r.err;
        EXPECT_TRUE(has(r.out, "\"FileVersion\": 3226"));
        EXPECT_TRUE(has(r.out, "\"NAME\": \"93B045 101\", \"AREA\": 24.6"));
    }
    // Loading the oldest version says so, unless quiet.
    EXPECT_TRUE(has(run({"info", dir.file("old111.arx")}).err,
                    "note: Arborex for Windows: All yield curves must be recalculated.\n"));
}

TEST_F(BatchCommands, RemoveMapsheetFlagAnswersTheQuestionOfAnOldFile) {
    const std::string old = dir.file("old200.arx");
    ASSERT_EQ(run({"convert", project, old, "--version", "200"}).code, ExitOk);
    const RunResult kept = run({"info", old, "--json", "--remove-mapsheet", "no"});
    const RunResult removed = run({"info", old, "--json", "--remove-mapsheet=yes"});
    ASSERT_EQ(kept.code, ExitOk);
    ASSERT_EQ(removed.code, ExitOk);
    EXPECT_TRUE(has(kept.out, "\"NAME\": \"93B045 101\""));
    EXPECT_TRUE(has(kept.out, "\"NAME\": \"93B046 12\""));
    EXPECT_EQ(run({"info", old, "--json"}).out, kept.out);  // "no" is the default
    EXPECT_TRUE(has(removed.out, "\"NAME\": \"101\""));
    EXPECT_TRUE(has(removed.out, "\"NAME\": \"12\""));

    // A current file asks nothing, so the flag changes nothing.
    EXPECT_EQ(run({"info", project, "--json", "--remove-mapsheet", "yes"}).out,
              run({"info", project, "--json"}).out);
}

// Failures to load, to find the reference data or to save: one line on err, exit 1.
TEST_F(BatchCommands, FailuresGiveOneLineAndExitOne) {
    const auto failure = [](const Strings& args) {
        const RunResult r = run(args);
        EXPECT_EQ(r.code, ExitFailed);
        EXPECT_EQ(r.out, "");
        EXPECT_EQ(lineCount(r.err), 1) << r.err;
        return r.err;
    };
    const std::string missing = dir.file("missing.arx");
    EXPECT_EQ(failure({"info", missing}),
              "arborex-batch: cannot load " + missing + ": File not found\n");
    failure({"convert", missing, dir.file("out.arx")});
    EXPECT_FALSE(std::filesystem::exists(dir.file("out.arx")));

    std::filesystem::create_directories(dir.file("empty"));
    EXPECT_TRUE(has(failure({"info", project, "--data", dir.file("empty")}),
                    dir.file("empty") + "/speciest.dat"));

    const std::string target = dir.file("no-such-folder/out.arx");
    const std::string unsaved = failure({"convert", project, target});
    EXPECT_EQ(unsaved.rfind("arborex-batch: cannot save " + target + ": ", 0), 0u) << unsaved;
    // The temporary file the save wrote under is no business of the user's.
    EXPECT_EQ(unsaved.find(".saving"), std::string::npos) << unsaved;

    // Cut the project short in its polygon records.
    std::filesystem::resize_file(project, 600);
    EXPECT_EQ(failure({"info", project, "--json"}),
              "arborex-batch: cannot load " + project + ": Input past end of file\n");
}

TEST(BatchUsage, HelpAndUsageErrors) {
    RunResult r = run({});
    EXPECT_EQ(r.code, ExitUsage);
    EXPECT_EQ(r.out, usageText());
    r = run({"--help"});
    EXPECT_EQ(r.code, ExitOk);
    EXPECT_EQ(r.out, usageText());
    EXPECT_EQ(r.err, "");

    const std::vector<Strings> wrong = {{"frobnicate"},
                                        {"info"},
                                        {"info", "a.arx", "b.arx"},
                                        {"info", "a.arx", "--version", "200"},
                                        {"info", "a.arx", "--remove-mapsheet", "maybe"},
                                        {"info", "a.arx", "--remove-mapsheet"},
                                        {"info", "a.arx", "--json=1"},
                                        {"convert", "a.arx"},
                                        {"convert", "a.arx", ""},
                                        {"convert", "a.arx", "b.arx", "--version", "300"},
                                        {"convert", "a.arx", "b.arx", "--json"}};
    for (const auto& args : wrong) {
        SCOPED_TRACE(args.front() + (args.size() > 1 ? " " + args.back() : ""));
        r = run(args);
        EXPECT_EQ(r.code, ExitUsage);
        EXPECT_EQ(r.out, "");
        EXPECT_EQ(lineCount(r.err), 1) << r.err;
        EXPECT_EQ(r.err.rfind("arborex-batch: ", 0), 0u);
    }
}

}  // namespace
}  // namespace arborex::batch
