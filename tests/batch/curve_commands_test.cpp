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

using test::has;
using test::JsonCheck;
using test::JsonValue;
using test::lineCount;
using test::run;
using test::RunResult;
using Strings = std::vector<std::string>;

// The texts of an array's items, or of an object's values.
Strings texts(const JsonValue& json) {
    Strings result;
    for (const JsonValue& item : json.items.empty() ? json.values : json.items)
        result.push_back(item.text);
    return result;
}

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

// Four polygons: 0 with both curves, current, and a future target age of 95, 1 deleted with a
// stored harvest age, 2 NC now and TIPSY later with a commercial thin at 43, 3 named "0", NSR
// now and VDYP later.
void writeProject(const std::string& path) {
    Model m;
    programDefaults(m);
    ResizePolygonArrays(m, 4);
    m.LastPoly = 3;
    m.Header.TIPSYVersion = "3.2m";
    for (PolyCalc& calc : m.PolyC) {
        calc.MINCUTAGE = {-1, -1};
        calc.MINCUTVOL = calc.MINCUTDBH = {-1.0f, -1.0f};
    }
    m.Poly[0].NAME = "93B045 101";
    m.Poly[0].MGNT = {0, 1};
    m.Poly[0].VS = {Code2("PL"), Code2(""), Code2("FD"), Code2(""), Code2(""), Code2("")};
    m.Poly[0].HAR = {-1, 95};
    m.Poly[0].YIELDSTATE = {3, 3};
    setVdypCurve(m, 0);
    setTipsyCurve(m, 0);
    m.Poly[1].NAME = "Ch\xe9ne";
    m.Poly[1].MGNT = {0, 1};
    m.PolyC[1].DELETE = 1;
    m.HarvAge[1][0].HarvestAge = 123;
    m.Poly[2].NAME = "93B046 12";
    m.Poly[2].MGNT = {2, 1};
    setTipsyCurve(m, 2);
    m.PolyM[2].COMTHIN = 1;
    m.PolyM[2].TIPSYCACHE = {43, 51, 1900, 1390, 0, 0, 0, 0};
    m.Poly[3].NAME = "0";
    m.Poly[3].MGNT = {3, 0};
    test::FakeHost host;
    SaveArx(m, host, path, kCurrentFileVersion, false);
}

const std::string kData = std::string(ARBOREX_SOURCE_DIR) + "/data";

class CurveCommands : public ::testing::Test {
protected:
    void SetUp() override { writeProject(project); }
    // The command's JSON, checked to parse.
    JsonValue json(Strings args) {
        args.push_back("--json");
        const RunResult r = run(args);
        EXPECT_EQ(r.code, ExitOk) << r.err;
        JsonCheck check(r.out);
        EXPECT_TRUE(check.valid()) << check.error() << "\n" << r.out;
        return check.root();
    }
    JsonValue curveJson(Strings args) {
        args.insert(args.begin(), {"curve", project});
        return json(args);
    }
    test::TempDir dir;
    std::string project = dir.file("woodlot.arx");
};

TEST_F(CurveCommands, AgesTextShowsCriteriaAndTheWorkedExample) {
    const RunResult r = run({"ages", project});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_EQ(r.err, "");
    EXPECT_EQ(r.out.rfind("Criteria: MINAGE 40, MINVOL 150, MINDIA 15\nPolygons: 4\n", 0), 0u)
        << r.out;
    EXPECT_EQ(lineCount(r.out), 2 + 1 + 4 * 2);
    for (const char* line :
         {"  index NAME       MGNT DELETE model MaiAge VolAge DiaAge ConstraintAge HarvestAge "
          "MaxMAI\n",
          "      0 93B045 101 0, 1      0 VDYP      80     62     48            62         80 "
          "  3.00\n",
          // TIPSY meets 150 m3/ha between its grid ages 40 and 50.
          "      0 93B045 101 0, 1      0 TIPSY     90     45     38            45         90 "
          "  4.50\n",
          // The deleted polygon shows, with the age its file holds, and as UTF-8.
          "      1 Ch\xc3\xa9ne      0, 1      1 VDYP       0      0      0             0     "
          "   123   0.00\n"})
        EXPECT_TRUE(has(r.out, line));
}

TEST_F(CurveCommands, AgesJsonHasTheRecordsOfBothModels) {
    const JsonValue root = json({"ages", project});
    EXPECT_EQ(root.keys(), (Strings{"criteria", "polygons"}));
    EXPECT_EQ(root.at("criteria").keys(), (Strings{"MINAGE", "MINVOL", "MINDIA"}));
    EXPECT_EQ(root.at("criteria").at("MINVOL").text, "150");
    const std::vector<JsonValue>& polygons = root.at("polygons").items;
    ASSERT_EQ(polygons.size(), 4u);
    EXPECT_EQ(polygons[0].keys(), (Strings{"index", "NAME", "DELETE", "MGNT", "HarvAge"}));
    EXPECT_EQ(texts(polygons[2].at("MGNT")), (Strings{"2", "1"}));
    EXPECT_EQ(polygons[1].at("DELETE").text, "1");
    EXPECT_EQ(polygons[1].at("NAME").text, "Ch\\u00e9ne");

    const std::vector<JsonValue>& ages = polygons[0].at("HarvAge").items;
    ASSERT_EQ(ages.size(), 2u);
    EXPECT_EQ(ages[0].keys(),
              (Strings{"MaiAge", "VolAge", "DiaAge", "ConstraintAge", "HarvestAge", "MaxMAI"}));
    EXPECT_EQ(texts(ages[0]), (Strings{"80", "62", "48", "62", "80", "3"}));
    EXPECT_EQ(ages[1].at("VolAge").text, "45");
    EXPECT_EQ(ages[1].at("MaxMAI").text, "4.5");
}

TEST_F(CurveCommands, CurveTextOfEachModel) {
    RunResult r = run({"curve", project, "93B045 101"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_EQ(r.err, "");
    // VDYP has a column per species with a code.
    EXPECT_EQ(r.out.rfind("Polygon 0 \"93B045 101\", VDYP, HarvestAge 80\n"
                          "  Age  Dia   Ht   Vol  MAI    PL    FD\n"
                          "    0  0.0  0.0   0.0 0.00   0.0   0.0\n",
                          0),
              0u)
        << r.out.substr(0, 300);
    EXPECT_TRUE(has(r.out, "\n   62 19.3 18.6 150.0 2.33  90.0  60.0\n"));
    EXPECT_TRUE(has(r.out, "\n  300 93.7 90.0 725.8 1.90 435.4 290.3\n"));
    EXPECT_EQ(lineCount(r.out), 1 + 1 + 301);

    r = run({"curve", project, "93b045 101", "--model=1"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_EQ(r.out.rfind("Polygon 0 \"93B045 101\", TIPSY, HarvestAge 90\n"
                          "  Age   Dia   Ht    Vol  MAI\n",
                          0),
              0u)
        << r.out.substr(0, 300);
    EXPECT_TRUE(has(r.out, "\n   40  16.0 10.0  100.0 2.00\n"));
}

TEST_F(CurveCommands, CurveJsonOfEachModel) {
    const JsonValue vdyp = curveJson({"93B045 101"});
    EXPECT_EQ(vdyp.keys(),
              (Strings{"polygon", "NAME", "model", "HarvAge", "yieldView", "species", "rows"}));
    EXPECT_EQ(vdyp.at("model").text, "0");
    EXPECT_EQ(vdyp.at("HarvAge").at("ConstraintAge").text, "62");
    EXPECT_EQ(texts(vdyp.at("species")), (Strings{"PL", "FD"}));
    const std::vector<JsonValue>& rows = vdyp.at("rows").items;
    ASSERT_EQ(rows.size(), 301u);
    EXPECT_EQ(rows[62].keys(), (Strings{"age", "dia", "ht", "vol", "mai", "speciesVol"}));
    EXPECT_EQ(rows[62].at("vol").text, "150");
    EXPECT_EQ(rows[62].at("mai").text, "2.325");
    EXPECT_EQ(texts(rows[62].at("speciesVol")), (Strings{"90", "60"}));

    const JsonValue tipsy = curveJson({"93B045 101", "--model", "1"});
    EXPECT_EQ(tipsy.at("model").text, "1");
    EXPECT_EQ(tipsy.at("HarvAge").at("HarvestAge").text, "90");
    EXPECT_TRUE(tipsy.at("species").items.empty());
    const std::vector<JsonValue>& steps = tipsy.at("rows").items;
    ASSERT_EQ(steps.size(), 36u);
    EXPECT_EQ(steps[4].keys(), (Strings{"age", "dia", "ht", "vol", "mai"}));
    EXPECT_EQ(std::tuple(steps[4].at("age").text, steps[4].at("vol").text),
              std::tuple("40", "100"));
    EXPECT_EQ(steps[35].at("age").text, "350");
}

TEST_F(CurveCommands, CurveJsonHasTheYieldViewsLabels) {
    const JsonValue vdyp = curveJson({"93B045 101"}).at("yieldView");
    EXPECT_EQ(vdyp.keys(), (Strings{"management", "calculated", "siteIndex", "culmination",
                                    "criteria", "target", "thin"}));
    EXPECT_EQ(std::tuple(vdyp.at("management").text, vdyp.at("calculated").text),
              std::tuple("0", "true"));
    EXPECT_EQ(texts(vdyp.at("culmination")), (Strings{"80", "3"}));
    EXPECT_EQ(vdyp.at("criteria").keys(),
              (Strings{"minimumAge", "DiaAge", "VolAge", "ConstraintAge", "HarvestAge"}));
    EXPECT_EQ(texts(vdyp.at("criteria")), (Strings{"40", "48", "62", "62", "80"}));
    // HAR1 is -1: the calculated age, with the curve's dbh and volume there.
    EXPECT_EQ(texts(vdyp.at("target")), (Strings{"80", "25", "193.5"}));
    EXPECT_EQ(vdyp.at("thin").kind, JsonValue::Kind::Null);

    // The future's own target of 95, halfway between TIPSY's grid ages 90 and 100.
    const JsonValue tipsy = curveJson({"93B045 101", "--model", "1"}).at("yieldView");
    EXPECT_EQ(tipsy.at("management").text, "1");
    EXPECT_EQ(texts(tipsy.at("target")), (Strings{"95", "38", "335"}));

    // A thin in a curve not calculated yet; the NSR stand's VDYP is its future management's.
    const JsonValue thinned = curveJson({"93B046 12"}).at("yieldView");
    EXPECT_EQ(thinned.at("calculated").text, "false");
    EXPECT_EQ(thinned.at("thin").keys(), (Strings{"age", "volBefore", "volAfter"}));
    EXPECT_EQ(texts(thinned.at("thin")), (Strings{"43", "190", "139"}));
    EXPECT_EQ(curveJson({"0"}).at("yieldView").at("management").text, "1");
}

TEST_F(CurveCommands, PolygonByNameThenIndexAndItsManagementModel) {
    // Names compare trimmed and without regard to case; NC now means the future's TIPSY.
    JsonValue found = curveJson({" 93b046 12 "});
    EXPECT_EQ(std::tuple(found.at("polygon").text, found.at("model").text), std::tuple("2", "1"));
    EXPECT_EQ(curveJson({"2"}).at("polygon").text, "2");
    // A name wins over an index; NSR now means the future's VDYP.
    found = curveJson({"0"});
    EXPECT_EQ(std::tuple(found.at("polygon").text, found.at("model").text), std::tuple("3", "0"));
    // A deleted polygon is still a polygon.
    EXPECT_EQ(curveJson({"CH\xe9NE"}).at("polygon").text, "1");
    EXPECT_EQ(curveJson({"1"}).at("NAME").text, "Ch\\u00e9ne");
}

TEST_F(CurveCommands, WrongOperandsFlagsPolygonsOrModelsAreUsageErrors) {
    // Exit 2, nothing on out, and one line on err that names what was wrong.
    const auto usageError = [](const Strings& args) {
        SCOPED_TRACE(::testing::PrintToString(args));
        const RunResult r = run(args);
        EXPECT_EQ(r.code, ExitUsage);
        EXPECT_EQ(r.out, "");
        EXPECT_EQ(lineCount(r.err), 1) << r.err;
        return r.err;
    };
    const std::vector<Strings> wrong = {{"ages"},
                                        {"ages", "a.arx", "b.arx"},
                                        {"ages", "a.arx", "--model", "0"},
                                        {"ages", "a.arx", "--remove-mapsheet", "yes"},
                                        {"curve", "a.arx"},
                                        {"curve", "a.arx", "1", "2"},
                                        {"curve", "a.arx", ""},
                                        {"curve", "a.arx", "1", "--model"},
                                        {"curve", "a.arx", "1", "--version", "200"}};
    for (const Strings& args : wrong) usageError(args);
    for (const std::string polygon : {"93B099 1", "4", "1.0", " ", "99999999999"}) {
        const std::string err = usageError({"curve", project, polygon});
        EXPECT_TRUE(has(err, "'" + polygon + "'"));
        EXPECT_TRUE(has(err, "0..3"));
    }
    EXPECT_TRUE(has(usageError({"curve", project, "--data", kData, "--", "-1"}), "'-1'"));
    for (const std::string model : {"2", "-1", "", "VDYP"})
        EXPECT_TRUE(has(usageError({"curve", project, "0", "--model", model}),
                        "--model must be 0 (VDYP) or 1 (TIPSY), not '" + model + "'"));
    EXPECT_TRUE(has(usageText(),
                    "  curve PROJECT POLYGON [--model 0|1] [--json] [--quiet] [--data DIR]\n"));
    EXPECT_TRUE(has(usageText(), "  ages PROJECT [--json] [--quiet] [--data DIR]\n"));
}

TEST(CurveCommandFailures, MissingProjectAndAStepThatNeverAdvances) {
    test::TempDir dir;
    const std::string missing = dir.file("missing.arx");
    for (const Strings& args : {Strings{"ages", missing}, Strings{"curve", missing, "0"}}) {
        const RunResult r = run(args);
        EXPECT_EQ(r.code, ExitFailed);
        EXPECT_EQ(r.err, "arborex-batch: cannot load " + missing + ": File not found\n");
    }

    // A grid walked downwards loads, but a curve on it would never reach its last age.
    Model m;
    programDefaults(m);
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
