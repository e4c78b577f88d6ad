// The polygon command in-process on a three-polygon project: each action, what it writes, and
// that a refused or read-only run leaves the file as it was, byte for byte.

#include "polygon_command.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "batch_commands.hpp"
#include "batch_run.hpp"
#include "calc_command.hpp"
#include "json_check.hpp"
#include "model/project_file.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex::batch {
namespace {

using test::has;
using test::JsonCheck;
using test::JsonValue;
using test::RunResult;
using Strings = std::vector<std::string>;

// 0 "Alpha", 50 ha, VDYP now and TIPSY later, both curves current, a VDYP curve whose MAI
// culminates at 80, species PL 30 % and FD 70 %; 1 "Beta", 10 ha; 2 "Old", deleted.
void writeProject(const std::string& path) {
    Model m;
    programDefaults(m);
    ResizePolygonArrays(m, 3);
    m.LastPoly = 2;
    m.Header.TIPSYVersion = "3.2m";
    for (int p = 0; p <= 2; ++p) {
        m.Poly[p].MGNT = {0, 1};
        m.Poly[p].YIELDSTATE = {3, 3};
        m.Poly[p].HAR = {-1, -1};
        m.PolyC[p].REGENDELAY = 4;
        m.PolyC[p].MINCUTAGE = {-1, -1};
        m.PolyC[p].MINCUTVOL = m.PolyC[p].MINCUTDBH = {-1.0f, -1.0f};
    }
    m.Poly[0].NAME = "Alpha";
    m.Poly[0].AREA = 50.0f;
    m.Poly[0].VS = {Code2("PL"), Code2("FD"), Code2(""), Code2(""), Code2(""), Code2("")};
    m.Poly[0].VP = {30, 70, 0, 0, 0, 0};
    for (int age = 0; age <= 300; ++age) {
        YieldRow& row = m.VYield(0, age);
        row.Vol = static_cast<int16_t>(age * 30);
        row.Dia = static_cast<int16_t>(age * 5);
        row.Mai = age <= 80 ? 3.0f * static_cast<float>(age) / 80.0f
                            : 3.0f - 0.005f * static_cast<float>(age - 80);
    }
    m.Poly[1].NAME = "Beta";
    m.Poly[1].AREA = 10.0f;
    m.Poly[2].NAME = "Old";
    m.Poly[2].AREA = 5.0f;
    m.PolyC[2].DELETE = 1;
    test::FakeHost host;
    SaveArx(m, host, path, kCurrentFileVersion, false);
}

std::string bytesOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

class PolygonCommand : public ::testing::Test {
protected:
    void SetUp() override { writeProject(project); }
    RunResult polygon(Strings words) {
        words.insert(words.begin(), {"polygon", project});
        words.insert(words.end(), {"--data", std::string(ARBOREX_SOURCE_DIR) + "/data"});
        return test::run(words);
    }
    JsonValue json(Strings words) {
        words.push_back("--json");
        const RunResult r = polygon(words);
        EXPECT_EQ(r.code, ExitOk) << r.err;
        JsonCheck check(r.out);
        EXPECT_TRUE(check.valid()) << check.error() << "\n" << r.out;
        return check.root();
    }
    test::TempDir dir;
    std::string project = dir.file("woodlot.arx");
};

TEST_F(PolygonCommand, ListShowsEveryPolygonAndWritesNothing) {
    const std::string before = bytesOf(project);
    const RunResult text = polygon({"list"});
    ASSERT_EQ(text.code, ExitOk) << text.err;
    EXPECT_EQ(text.out,
              "Polygons: 3\n"
              "  index NAME         DELETE    AREA EXISTINGMGNT FUTUREMGNT YIELDSTATE\n"
              "      0 Alpha             0    50.0            0          1 3, 3\n"
              "      1 Beta              0    10.0            0          1 3, 3\n"
              "      2 Old               1     5.0            0          1 3, 3\n");
    const JsonValue list = json({"list"});
    EXPECT_EQ(list.keys(), (Strings{"project", "polygons", "polygonList"}));
    const JsonValue& old = list.at("polygonList").items.at(2);
    EXPECT_EQ(old.keys(), (Strings{"index", "NAME", "DELETE", "AREA", "EXISTINGMGNT", "FUTUREMGNT",
                                   "YIELDSTATE"}));
    EXPECT_EQ(old.at("NAME").text, "Old");
    EXPECT_EQ(old.at("DELETE").text, "1");
    EXPECT_EQ(bytesOf(project), before);
    EXPECT_FALSE(std::filesystem::exists(dir.file("woodlot.bak")));
}

TEST_F(PolygonCommand, AddFromTheDefaultPolygonAndAsACopy) {
    RunResult r = polygon({"add", "  P12 "});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_TRUE(has(r.out, "Added \"P12\" as polygon 3\n"));
    EXPECT_TRUE(has(r.out, "Wrote " + project + " (4 polygons)\n"));
    EXPECT_TRUE(std::filesystem::exists(dir.file("woodlot.bak")));

    const JsonValue copy = json({"add", "Alpha 2", "--copy-of", "alpha"});
    EXPECT_EQ(copy.at("action").text, "add");
    EXPECT_EQ(copy.at("polygons").text, "5");
    EXPECT_EQ(copy.at("changed").items.at(0).at("index").text, "4");
    const Model m = test::savedProject(project);
    EXPECT_EQ(m.Poly[3].NAME.str(), "P12");
    EXPECT_EQ(m.Poly[4].NAME.str(), "Alpha 2");
    EXPECT_EQ(m.Poly[4].AREA, 50.0f);
    EXPECT_EQ(m.VYield(4, 100).Vol, 3000);  // the curve comes along
}

TEST_F(PolygonCommand, RefusalsAndWrongLinesLeaveTheFileAsItWas) {
    const std::string before = bytesOf(project);
    struct Case {
        Strings words;
        int code;
        std::string err;
    };
    const std::vector<Case> cases = {
        {{"add", "alpha "}, ExitRefused, "A polygon with this name already exists"},
        {{"add", "   "}, ExitRefused, "A polygon needs a name."},
        {{"rename", "Beta", "OLD"}, ExitRefused, "Another polygon already has this name"},
        {{"delete", "Zeta"}, ExitUsage, "no polygon 'Zeta'"},
        {{"set", "0", "AREA=5", "FOO=1"}, ExitUsage, "no polygon field 'FOO'"},
        {{"set", "0", "AREA"}, ExitUsage, "KEY=VALUE"},
        {{"split", "--max", "twenty", "--size", "5"}, ExitUsage, "--max needs a number"},
        {{"split", "--max", "20"}, ExitUsage, "split needs --max HA and --size HA"},
        {{"list", "--save", dir.file("out.arx")}, ExitUsage, "--save does not go with"},
        {{"tidy"}, ExitUsage, "no polygon action 'tidy'"}};
    for (const Case& c : cases) {
        SCOPED_TRACE(c.words.front());
        const RunResult r = polygon(c.words);
        EXPECT_EQ(r.code, c.code);
        EXPECT_EQ(r.out, "");
        EXPECT_EQ(r.err.rfind("arborex-batch: ", 0), 0u) << r.err;
        EXPECT_TRUE(has(r.err, c.err));
        EXPECT_EQ(test::lineCount(r.err), 1) << r.err;
    }
    EXPECT_EQ(bytesOf(project), before);
    EXPECT_FALSE(std::filesystem::exists(dir.file("woodlot.bak")));
    EXPECT_FALSE(std::filesystem::exists(dir.file("out.arx")));
}

TEST_F(PolygonCommand, DeleteUndeleteRenameAndPurge) {
    EXPECT_TRUE(has(polygon({"delete", "beta"}).out, "Deleted polygon 1 \"Beta\"\n"));
    EXPECT_TRUE(has(polygon({"undelete", "2"}).out, "Undeleted polygon 2 \"Old\"\n"));
    EXPECT_TRUE(has(polygon({"rename", "Old", " New one "}).out,
                    "Renamed polygon 2 \"Old\" to \"New one\"\n"));
    EXPECT_TRUE(has(polygon({"rename", "0", ""}).out, "Polygon 0 keeps its name \"Alpha\"\n"));
    Model m = test::savedProject(project);
    EXPECT_EQ(m.PolyC[1].DELETE, 1);
    EXPECT_EQ(m.PolyC[2].DELETE, 0);
    EXPECT_EQ(m.Poly[2].NAME.str(), "New one");

    const JsonValue purge = json({"purge"});
    EXPECT_EQ(purge.at("removed").text, "1");
    m = test::savedProject(project);
    ASSERT_EQ(m.LastPoly, 1);
    EXPECT_EQ(m.Poly[1].NAME.str(), "New one");
}

TEST_F(PolygonCommand, SplitAndReorder) {
    // 50 ha over a maximum of 20 in pieces of 15: pieces a and b, the source left at 20.
    const RunResult r = polygon({"split", "--max", "20", "--size", "15"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_TRUE(has(r.out, "Split added 2 polygons\n"));
    EXPECT_TRUE(has(r.out, "      3 Alphaa            0    15.0"));
    ASSERT_EQ(polygon({"reorder"}).code, ExitOk);
    const Model m = test::savedProject(project);
    ASSERT_EQ(m.LastPoly, 4);
    EXPECT_EQ(m.Poly[0].AREA, 20.0f);
    EXPECT_EQ(m.Poly[4].NAME.str(), "Alphab");
    EXPECT_EQ(m.Poly[0].VS[0].str(), "FD");
    EXPECT_EQ(m.Poly[0].VP[0], 70);
    EXPECT_EQ(polygon({"split", "--max", "0", "--size", "15"}).out.find("Split added 0"), 0u);
}

TEST_F(PolygonCommand, SetCommitsLikeTheScreenAndMarksStaleCurves) {
    // AREA stales nothing: the curves and their harvest age stand.
    RunResult r = polygon({"set", "Alpha", "AREA=99999", "regendelay=[20]"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_TRUE(has(r.out,
                    "Changed polygon 0 \"Alpha\":\n"
                    "The Following variables have been changed:\n"
                    "  Area\n"
                    "  Regen Delay\n"));
    Model m = test::savedProject(project);
    EXPECT_EQ(m.Poly[0].AREA, 9999.9f);  // clamped to the field's high
    EXPECT_EQ(m.PolyC[0].REGENDELAY, -1);
    EXPECT_EQ(m.Poly[0].YIELDSTATE[0], 3);
    EXPECT_GT(m.HarvAge[0][0].HarvestAge, 0);

    const JsonValue set = json({"set", "0", "VSITEINDEX=21.44"});
    EXPECT_EQ(set.at("changes").items.size(), 1u);
    EXPECT_EQ(set.at("changes").items.at(0).text, "Site Index");
    EXPECT_EQ(set.at("marks").items.size(), 1u);
    EXPECT_EQ(set.at("marks").items.at(0).text, "VDYP");
    EXPECT_EQ(set.at("changed").items.at(0).at("YIELDSTATE").items.at(0).text, "1");
    m = test::savedProject(project);
    EXPECT_EQ(m.Poly[0].VSITEINDEX, 21.4f);
    EXPECT_EQ(m.Poly[0].YIELDSTATE[0], 1);
    EXPECT_EQ(m.Poly[0].YIELDSTATE[1], 3);
    EXPECT_EQ(m.HarvAge[0][0].HarvestAge, 0);

    r = polygon({"set", "0", "VSITEINDEX=21.4"});
    EXPECT_TRUE(has(r.out, "No change to polygon 0 \"Alpha\"\n"));
}

TEST_F(PolygonCommand, SaveWritesOutAndLeavesTheProject) {
    const std::string before = bytesOf(project);
    const std::string out = dir.file("edited.arx");
    const RunResult r = polygon({"set", "Beta", "FIZ=C", "--save", out, "--quiet"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_TRUE(has(r.out, "TIPSY must be recalculated\nVDYP must be recalculated\n"));
    EXPECT_EQ(bytesOf(project), before);
    const Model m = test::savedProject(out);
    EXPECT_EQ(m.Poly[1].FIZ.str(), "C");
    EXPECT_EQ(m.Poly[1].YIELDSTATE[0], 1);
    EXPECT_EQ(m.Poly[1].YIELDSTATE[1], 1);
}

}  // namespace
}  // namespace arborex::batch
