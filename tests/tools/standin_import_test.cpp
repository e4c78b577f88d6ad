// The stand-ins between Arborex's own exchange routines: the files the export writes, the
// programs run in the work folder with the arguments Arborex passes, and their outputs read
// back by the imports without a box, into curves, thins and message lists.

#include <gtest/gtest.h>

#include <functional>

#include "frame/startup.hpp"
#include "model/polygon_lifecycle.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"
#include "tools/standin_run.hpp"
#include "yield/curves.hpp"
#include "yield/tipsy_exchange.hpp"
#include "yield/vdyp_exchange.hpp"
#include "yield/work_files.hpp"

namespace arborex::test {
namespace {

// A project on the default age grids whose polygons are all due for both models.
struct Project {
    FakeHost host;
    TempDir dir;
    Model m;
    std::string work;

    Project() {
        programDefaults(m);
        m.Paths[ArborexFolder] = std::string(ARBOREX_SOURCE_DIR) + "/data/";
        work = dir.path() + "/";
        m.Paths[UserTemp] = work;
        LoadReferenceData(m, host);
        EmptyArrays(m);
    }

    void add(const std::function<void(PolyData&, PolyMgmt&)>& edit) {
        PolyData data;
        PolyCalc calc;
        PolyMgmt mgmt;
        projectFollowingPolygon(data, calc, mgmt);
        data.NAME = "P" + std::to_string(m.LastPoly + 2);
        data.AREA = 10.0f;
        data.MGNT = {0, 1};
        data.YIELDSTATE = {1, 1};
        data.VSITEINDEX = 20.0f;
        data.CLOSURE = 55;
        data.PSYU = 23;
        data.VUTILIZ = 12.5f;
        data.VAF = 1.0f;
        data.VS[0] = "PL";
        data.VS[1] = "SX";
        data.VP = {70, 30, 0, 0, 0, 0};
        data.TS[0] = "PL";
        data.TP = {100, 0, 0, 0, 0};
        data.TI = {20, 0, 0, 0, 0};
        data.TAGETOTAL = 10;
        data.DENSITY = 1600;
        data.OAF1 = 15;
        data.OAF2 = 5;
        data.REGEN = 1;
        mgmt.TUTILIZ = 12.5f;
        edit(data, mgmt);
        calc.VX = {1, 1, 1, 1, 1, 1};
        appendPolygon(m, data, calc, mgmt);
    }

    ProgramRun run(const char* program, const std::vector<std::string>& arguments) {
        return runProgram(dir.path(), program, arguments);
    }
};

TEST(StandInImport, VdypOutputAndErrorsReadBackIntoTheCurvesAndTheList) {
    Project p;
    p.add([](PolyData&, PolyMgmt&) {});
    p.add([](PolyData& d, PolyMgmt&) { d.VP = {70, 20, 0, 0, 0, 0}; });
    CreateFormatV(p.m, p.work + kLineDefFile);
    ASSERT_EQ(ExportVDYP(p.m, p.work + kVdypInFile, false), 2);
    ASSERT_EQ(p.run(ARBOREX_VDYPBAT, vdypArguments(p.m)).exitCode, 0);
    ImportVDYP(p.m, p.host, p.work + kVdypOutFile, {});
    EXPECT_TRUE(p.host.prompt.shown.empty());  // every table complete
    EXPECT_EQ(p.m.Header.VDYPVersion.str(), "stand-in 1.0");
    EXPECT_EQ(p.m.Poly[0].YIELDSTATE[0], 2);
    EXPECT_EQ(p.m.Poly[1].YIELDSTATE[0], 0);
    EXPECT_GT(FindVol(p.m, 0, 100, 0), 100.0f);
    EXPECT_GT(FindVolSpec(p.m, 100, 0, 0), FindVolSpec(p.m, 100, 0, 1));

    std::vector<PostItem> post;
    const ErrorCounts counts = LoadVDYPError(p.m, p.work + kVdypErrorFile, post);
    EXPECT_EQ(counts.label(), "0 Warnings / 1 Errors");
    ASSERT_EQ(post.size(), 1u);
    EXPECT_EQ(post[0].polygon, 1);
    EXPECT_EQ(post[0].text, "P2\tSpecies percents add up to 90, not 100");
}

TEST(StandInImport, TipsyReportAndErrorsReadBackWithTheThin) {
    Project p;
    p.add([](PolyData&, PolyMgmt& g) {
        g.COMTHIN = 1;
        g.CTSTEMHA = 600;
        g.CTHEIGHT = 15.0f;
    });
    p.add([](PolyData& d, PolyMgmt&) { d.TP = {90, 0, 0, 0, 0}; });
    p.add([](PolyData&, PolyMgmt& g) {
        g.FERT = 1;
        g.FSTARTYEAR = 30;
        g.FINCTYPE = 0;
        g.FINCREASE = 8.0f;
    });
    p.add([](PolyData&, PolyMgmt&) {});
    BtpFile btp = LoadBTPDefaults(p.m.Paths[ArborexFolder] + "TIPSY/arborex2.btp");
    btp.paths = {"", p.work + kTipsyInFile, p.work + kTipsyOutFile, p.work + kTipsyErrorFile};
    CreateBTPfile(btp, p.work + kBtpFile);
    ASSERT_EQ(ExportTIPSY(p.m, p.work + kTipsyInFile, false), 4);
    ASSERT_EQ(p.run(ARBOREX_BTIPSY, tipsyArguments(p.m)).exitCode, 0);
    ImportTIPSY2(p.m, p.host, p.work + kTipsyOutFile, {});
    EXPECT_TRUE(p.host.prompt.shown.empty());
    EXPECT_EQ(p.m.Header.TIPSYVersion.str(), "3.2m");
    EXPECT_EQ(p.m.Poly[0].YIELDSTATE[1], 2);
    EXPECT_EQ(p.m.Poly[1].YIELDSTATE[1], 0);

    const auto& thin = p.m.PolyM[0].TIPSYCACHE;  // ThinAge, ThinVolCut, before, after, ...
    EXPECT_GT(thin[0], 10);
    EXPECT_NE(thin[0] % 10, 0);
    EXPECT_GT(thin[2], thin[3]);
    EXPECT_GT(thin[1], 0);
    EXPECT_EQ(p.m.PolyM[3].TIPSYCACHE[0], 0);
    EXPECT_GT(FindVol(p.m, 1, 60, 2), FindVol(p.m, 1, 60, 3) * 1.07f);  // fertilized

    std::vector<PostItem> post;
    const ErrorCounts counts = LoadTIPSYError(p.m, p.host.prompt, p.work + kTipsyErrorFile, post);
    EXPECT_EQ(counts.label(), "0 Warnings / 1 Errors");
    ASSERT_EQ(post.size(), 1u);
    EXPECT_EQ(post[0].polygon, 1);
    EXPECT_EQ(post[0].text, "P2\tERROR: Species percents add up to 90, not 100");
}

}  // namespace
}  // namespace arborex::test
