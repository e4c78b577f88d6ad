// The ages and curve commands run in-process on a project with curves of known shape.

#include "curve_commands.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "batch_commands.hpp"
#include "batch_host.hpp"
#include "batch_run.hpp"
#include "json_check.hpp"
#include "model/project_file.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex::batch {
namespace {

using test::JsonCheck;
using test::JsonValue;
using test::lineCount;
using test::run;
using test::RunResult;

// On the 1-year VDYP grid: 150 m3/ha first at 62, 15 cm first at 48, MAI culminating at 80
// with 3.0. Species slot 0 (PL) holds 3/5 of the volume and slot 2 (FD) 2/5; slot 1 has
// volume but no code, so it is no column.
void setVdypCurve(Model& m, int p) {
    for (int age = 0; age <= 300; ++age) {
        YieldRow& row = m.VYield(p, age);
        row.Dia = static_cast<int16_t>(age * 150 / 48);
        row.Vol = static_cast<int16_t>(age * 1500 / 62);
        row.Ht = static_cast<int16_t>(age * 3);
        row.Mai = age <= 80 ? 3.0f * static_cast<float>(age) / 80.0f
                            : 3.0f - 0.005f * static_cast<float>(age - 80);
        MixRow& mix = m.VMix(p, age);
        mix[0] = static_cast<int16_t>(row.Vol * 3 / 5);
        mix[1] = 777;
        mix[2] = static_cast<int16_t>(row.Vol * 2 / 5);
    }
}

// On the 10-year TIPSY grid: 100 m3/ha at 40 and 200 at 50, so 150 is met at 45 only between
// grid ages; 4 cm a step, so 15 cm first at 38; MAI culminating at 90.
void setTipsyCurve(Model& m, int p) {
    for (int step = 0; step <= 35; ++step) {
        YieldRow& row = m.TYield(p, step);
        row.Vol = static_cast<int16_t>(step <= 4 ? step * 250 : 2000 + (step - 5) * 300);
        row.Dia = static_cast<int16_t>(step * 40);
        row.Ht = static_cast<int16_t>(step * 25);
        row.Mai = step <= 9 ? 0.5f * static_cast<float>(step) : 4.5f - 0.1f * (step - 9);
    }
}

// Four polygons: 0 with both curves, 1 deleted with a stored harvest age, 2 NC now and TIPSY
// later, 3 named "0", NSR now and VDYP later.
void writeProject(const std::string& path) {
    Model m;
    setProgramDefaults(m);
    ResizePolygonArrays(m, 4);
    m.LastPoly = 3;
    m.Header.TIPSYVersion = "3.2m";
    for (PolyCalc& calc : m.PolyC) {
        calc.MINCUTAGE = {-1, -1};
        calc.MINCUTVOL = {-1.0f, -1.0f};
        calc.MINCUTDBH = {-1.0f, -1.0f};
    }
    m.Poly[0].NAME = "93B045 101";
    m.Poly[0].MGNT = {0, 1};
    m.Poly[0].VS = {Code2("PL"), Code2(""), Code2("FD"), Code2(""), Code2(""), Code2("")};
    setVdypCurve(m, 0);
    setTipsyCurve(m, 0);
    m.Poly[1].NAME = "Ch\xe9ne";
    m.Poly[1].MGNT = {0, 1};
    m.PolyC[1].DELETE = 1;
    m.HarvAge[1][0].HarvestAge = 123;
    m.Poly[2].NAME = "93B046 12";
    m.Poly[2].MGNT = {2, 1};
    setTipsyCurve(m, 2);
    m.Poly[3].NAME = "0";
    m.Poly[3].MGNT = {3, 0};
    test::FakeHost host;
    SaveArx(m, host, path, kCurrentFileVersion, false);
}

const std::string kData = std::string(ARBOREX_SOURCE_DIR) + "/data";

class CurveCommands : public ::testing::Test {
protected:
    void SetUp() override { writeProject(project); }
    // The curve's JSON, checked to parse.
    JsonValue curveJson(std::vector<std::string> args) {
        args.insert(args.begin(), {"curve", project});
        args.push_back("--json");
        const RunResult r = run(args);
        EXPECT_EQ(r.code, ExitOk) << r.err;
        JsonCheck json(r.out);
        EXPECT_TRUE(json.valid()) << json.error() << "\n" << r.out;
        return json.root();
    }
    test::TempDir dir;
    std::string project = dir.file("woodlot.arx");
};

std::vector<std::string> texts(const JsonValue& array) {
    std::vector<std::string> result;
    for (const JsonValue& item : array.items) result.push_back(item.text);
    return result;
}

TEST_F(CurveCommands, AgesTextShowsCriteriaAndTheWorkedExample) {
    const RunResult r = run({"ages", project});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.out.rfind("Criteria: MINAGE 40, MINVOL 150, MINDIA 15\nPolygons: 4\n", 0), 0u)
        << r.out;
    EXPECT_NE(r.out.find("  index NAME       MGNT DELETE model MaiAge VolAge DiaAge "
                         "ConstraintAge HarvestAge MaxMAI\n"),
              std::string::npos)
        << r.out;
    EXPECT_NE(r.out.find("      0 93B045 101 0, 1      0 VDYP      80     62     48"
                         "            62         80   3.00\n"),
              std::string::npos)
        << r.out;
    // TIPSY meets 150 m3/ha between its grid ages 40 and 50.
    EXPECT_NE(r.out.find("      0 93B045 101 0, 1      0 TIPSY     90     45     38"
                         "            45         90   4.50\n"),
              std::string::npos)
        << r.out;
    // The deleted polygon shows, with the age its file holds, and as UTF-8.
    EXPECT_NE(r.out.find("      1 Ch\xc3\xa9ne      0, 1      1 VDYP       0      0      0"
                         "             0        123   0.00\n"),
              std::string::npos)
        << r.out;
    EXPECT_EQ(lineCount(r.out), 2 + 1 + 4 * 2);
}

TEST_F(CurveCommands, AgesJsonHasTheRecordsOfBothModels) {
    const RunResult r = run({"ages", project, "--json"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    JsonCheck json(r.out);
    ASSERT_TRUE(json.valid()) << json.error() << "\n" << r.out;
    const JsonValue& root = json.root();
    EXPECT_EQ(root.keys(), (std::vector<std::string>{"criteria", "polygons"}));
    EXPECT_EQ(root.at("criteria").keys(), (std::vector<std::string>{"MINAGE", "MINVOL", "MINDIA"}));
    EXPECT_EQ(root.at("criteria").at("MINVOL").text, "150");
    const std::vector<JsonValue>& polygons = root.at("polygons").items;
    ASSERT_EQ(polygons.size(), 4u);
    EXPECT_EQ(polygons[0].keys(),
              (std::vector<std::string>{"index", "NAME", "DELETE", "MGNT", "HarvAge"}));
    EXPECT_EQ(polygons[0].at("NAME").text, "93B045 101");
    EXPECT_EQ(texts(polygons[2].at("MGNT")), (std::vector<std::string>{"2", "1"}));
    EXPECT_EQ(polygons[1].at("DELETE").text, "1");
    EXPECT_EQ(polygons[1].at("NAME").text, "Ch\\u00e9ne");

    const std::vector<JsonValue>& ages = polygons[0].at("HarvAge").items;
    ASSERT_EQ(ages.size(), 2u);
    EXPECT_EQ(ages[0].keys(), (std::vector<std::string>{"MaiAge", "VolAge", "DiaAge",
                                                        "ConstraintAge", "HarvestAge", "MaxMAI"}));
    std::vector<std::string> vdyp;
    for (const JsonValue& value : ages[0].values) vdyp.push_back(value.text);
    EXPECT_EQ(vdyp, (std::vector<std::string>{"80", "62", "48", "62", "80", "3"}));
    EXPECT_EQ(ages[1].at("VolAge").text, "45");
    EXPECT_EQ(ages[1].at("MaxMAI").text, "4.5");
}

TEST_F(CurveCommands, CurveTextOfTheVdypCurveWithSpeciesColumns) {
    const RunResult r = run({"curve", project, "93B045 101"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.out.rfind("Polygon 0 \"93B045 101\", VDYP, HarvestAge 80\n"
                          "  Age  Dia   Ht   Vol  MAI    PL    FD\n"
                          "    0  0.0  0.0   0.0 0.00   0.0   0.0\n",
                          0),
              0u)
        << r.out.substr(0, 300);
    EXPECT_NE(r.out.find("\n   62 19.3 18.6 150.0 2.33  90.0  60.0\n"), std::string::npos);
    EXPECT_NE(r.out.find("\n  300 93.7 90.0 725.8 1.90 435.4 290.3\n"), std::string::npos);
    EXPECT_EQ(lineCount(r.out), 1 + 1 + 301);
}

TEST_F(CurveCommands, CurveJsonOfEachModel) {
    const JsonValue vdyp = curveJson({"93B045 101"});
    EXPECT_EQ(vdyp.keys(),
              (std::vector<std::string>{"polygon", "NAME", "model", "HarvAge", "species", "rows"}));
    EXPECT_EQ(vdyp.at("model").text, "0");
    EXPECT_EQ(vdyp.at("HarvAge").at("ConstraintAge").text, "62");
    EXPECT_EQ(texts(vdyp.at("species")), (std::vector<std::string>{"PL", "FD"}));
    const std::vector<JsonValue>& rows = vdyp.at("rows").items;
    ASSERT_EQ(rows.size(), 301u);
    EXPECT_EQ(rows[62].keys(),
              (std::vector<std::string>{"age", "dia", "ht", "vol", "mai", "speciesVol"}));
    EXPECT_EQ(rows[62].at("age").text, "62");
    EXPECT_EQ(rows[62].at("vol").text, "150");
    EXPECT_EQ(rows[62].at("mai").text, "2.325");
    EXPECT_EQ(texts(rows[62].at("speciesVol")), (std::vector<std::string>{"90", "60"}));

    const JsonValue tipsy = curveJson({"93B045 101", "--model", "1"});
    EXPECT_EQ(tipsy.at("model").text, "1");
    EXPECT_EQ(tipsy.at("HarvAge").at("HarvestAge").text, "90");
    EXPECT_TRUE(tipsy.at("species").items.empty());
    const std::vector<JsonValue>& steps = tipsy.at("rows").items;
    ASSERT_EQ(steps.size(), 36u);
    EXPECT_EQ(steps[4].keys(), (std::vector<std::string>{"age", "dia", "ht", "vol", "mai"}));
    EXPECT_EQ(steps[4].at("age").text, "40");
    EXPECT_EQ(steps[4].at("vol").text, "100");
    EXPECT_EQ(steps[5].at("age").text, "50");
    EXPECT_EQ(steps[5].at("vol").text, "200");
    EXPECT_EQ(steps[35].at("age").text, "350");
}

TEST_F(CurveCommands, TipsyTextHasNoSpeciesColumns) {
    const RunResult r = run({"curve", project, "93b045 101", "--model=1"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_EQ(r.out.rfind("Polygon 0 \"93B045 101\", TIPSY, HarvestAge 90\n"
                          "  Age   Dia   Ht    Vol  MAI\n",
                          0),
              0u)
        << r.out.substr(0, 300);
    EXPECT_NE(r.out.find("\n   40  16.0 10.0  100.0 2.00\n"), std::string::npos) << r.out;
}

TEST_F(CurveCommands, PolygonByNameThenIndexAndItsManagementModel) {
    // Names compare trimmed and without regard to case; NC now means the future's TIPSY.
    JsonValue found = curveJson({" 93b046 12 "});
    EXPECT_EQ(found.at("polygon").text, "2");
    EXPECT_EQ(found.at("model").text, "1");
    found = curveJson({"2"});
    EXPECT_EQ(found.at("polygon").text, "2");
    // A name wins over an index; NSR now means the future's VDYP.
    found = curveJson({"0"});
    EXPECT_EQ(found.at("polygon").text, "3");
    EXPECT_EQ(found.at("model").text, "0");
    // A deleted polygon is still a polygon.
    EXPECT_EQ(curveJson({"CH\xe9NE"}).at("polygon").text, "1");
    EXPECT_EQ(curveJson({"1"}).at("NAME").text, "Ch\\u00e9ne");
}

TEST_F(CurveCommands, WrongPolygonOrModelIsAUsageError) {
    const std::vector<std::vector<std::string>> wrong = {
        {"curve", project, "93B099 1"},
        {"curve", project, "4"},
        {"curve", project, "--data", kData, "--", "-1"},
        {"curve", project, "1.0"},
        {"curve", project, " "},
        {"curve", project, "99999999999"},
    };
    for (const auto& args : wrong) {
        SCOPED_TRACE("'" + args.back() + "'");
        const RunResult r = run(args);
        EXPECT_EQ(r.code, ExitUsage);
        EXPECT_EQ(r.out, "");
        EXPECT_EQ(lineCount(r.err), 1) << r.err;
        EXPECT_NE(r.err.find("'" + args.back() + "'"), std::string::npos) << r.err;
        EXPECT_NE(r.err.find("0..3"), std::string::npos) << r.err;
    }
    for (const char* model : {"2", "-1", "", "VDYP"}) {
        SCOPED_TRACE(model);
        const RunResult r = run({"curve", project, "0", "--model", model});
        EXPECT_EQ(r.code, ExitUsage);
        EXPECT_EQ(r.out, "");
        EXPECT_NE(
            r.err.find(std::string("--model must be 0 (VDYP) or 1 (TIPSY), not '") + model + "'"),
            std::string::npos)
            << r.err;
    }
}

TEST(CurveCommandUsage, OperandsAndFlags) {
    const std::vector<std::vector<std::string>> wrong = {
        {"ages"},
        {"ages", "a.arx", "b.arx"},
        {"ages", "a.arx", "--model", "0"},
        {"ages", "a.arx", "--remove-mapsheet", "yes"},
        {"curve", "a.arx"},
        {"curve", "a.arx", "1", "2"},
        {"curve", "a.arx", ""},
        {"curve", "a.arx", "1", "--model"},
        {"curve", "a.arx", "1", "--version", "200"},
    };
    for (const auto& args : wrong) {
        SCOPED_TRACE(args.front() + " " + args.back());
        const RunResult r = run(args);
        EXPECT_EQ(r.code, ExitUsage);
        EXPECT_EQ(r.out, "");
        EXPECT_EQ(lineCount(r.err), 1) << r.err;
    }
    EXPECT_NE(usageText().find("  curve PROJECT POLYGON [--model 0|1] [--json] [--quiet] "
                               "[--data DIR]\n"),
              std::string::npos);
    EXPECT_NE(usageText().find("  ages PROJECT [--json] [--quiet] [--data DIR]\n"),
              std::string::npos);
}

TEST(CurveCommandFailures, MissingProjectAndAStepThatNeverAdvances) {
    test::TempDir dir;
    const std::string missing = dir.file("missing.arx");
    for (const std::vector<std::string>& args :
         {std::vector<std::string>{"ages", missing}, {"curve", missing, "0"}}) {
        const RunResult r = run(args);
        EXPECT_EQ(r.code, ExitFailed);
        EXPECT_EQ(r.err, "arborex-batch: cannot load " + missing + ": File not found\n");
    }

    // A grid walked downwards loads, but a curve on it would never reach its last age.
    Model m;
    setProgramDefaults(m);
    m.Settings.YieldMinAge[1] = 350;
    m.Settings.YieldMaxAge[1] = 0;
    m.Settings.YieldIncAge[1] = -10;
    SetAgeInc(m);
    ResizePolygonArrays(m, 1);
    m.LastPoly = 0;
    m.Poly[0].NAME = "1";
    const std::string path = dir.file("backwards.arx");
    test::FakeHost host;
    SaveArx(m, host, path, kCurrentFileVersion, false);
    const RunResult r = run({"curve", path, "0", "--model", "1"});
    EXPECT_EQ(r.code, ExitFailed);
    EXPECT_EQ(r.out, "");
    EXPECT_EQ(r.err, "arborex-batch: the TIPSY age grid of " + path + " has a step of -10 years\n");
}

}  // namespace
}  // namespace arborex::batch
