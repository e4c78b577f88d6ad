// Leaving a polygon: the changes are listed in the screen's order, kept or restored, and mark
// stale only the curves whose inputs changed; an import marks fewer.

#include <gtest/gtest.h>

#include <functional>

#include "support/fake_host.hpp"
#include "support/small_project.hpp"
#include "yield/polygon_changes.hpp"

namespace arborex {
namespace {

struct Records {
    PolyData d;
    PolyCalc c;
    PolyMgmt g;
};

TEST(ComparePolygon, EachFieldNamesItselfAndMarksItsCurves) {
    const struct {
        const char* label;
        std::function<void(Records&)> change;
        int screenMarks;
        int importMarks;
    } cases[] = {
        {"Area", [](Records& r) { r.d.AREA = 12.0f; }, StaleNone, StaleNone},
        {"Fiz", [](Records& r) { r.d.FIZ = "H"; }, StaleBoth, StaleBoth},
        {"VDYP Utilization", [](Records& r) { r.d.VUTILIZ = 17.5f; }, StaleVDYP, StaleVDYP},
        {"Compartment", [](Records& r) { r.d.COMP = "12"; }, StaleVDYP, StaleVDYP},
        {"VAF", [](Records& r) { r.d.VAF = 0.9f; }, StaleVDYP, StaleNone},
        {"VDYP Species Type", [](Records& r) { r.d.VS[5] = "SX"; }, StaleVDYP, StaleVDYP},
        {"TIPSY Species Site Index", [](Records& r) { r.d.TI[4] = 20; }, StaleTIPSY, StaleTIPSY},
        {"OAF2", [](Records& r) { r.d.OAF2 = 5; }, StaleTIPSY, StaleTIPSY},
        {"TIPSY Genetic Gain", [](Records& r) { r.g.TG[0] = 10; }, StaleTIPSY, StaleNone},
        {"TIPSY Total Age", [](Records& r) { r.d.TAGETOTAL = 30; }, StaleTIPSY, StaleNone},
        {"Commerical Thin Height", [](Records& r) { r.g.CTHEIGHT = 16.0f; }, StaleTIPSY, StaleNone},
        {"Fertilization Start Year", [](Records& r) { r.g.FSTARTYEAR = 5; }, StaleTIPSY, StaleNone},
        {"Cut Type = Partial Cut", [](Records& r) { r.d.SILVI = 1; }, StaleNone, StaleNone},
        {"Exisiting Management", [](Records& r) { r.d.MGNT[0] = 1; }, StaleNone, StaleNone},
        {"VDYP Include Species", [](Records& r) { r.c.VX[2] = 1; }, StaleNone, StaleNone},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.label);
        Records before, after;
        c.change(after);
        for (bool importRules : {false, true}) {
            const PolygonChanges changes = comparePolygon(before.d, before.c, before.g, after.d,
                                                          after.c, after.g, importRules);
            EXPECT_EQ(changes.labels, std::string(c.label) + "\r\n");
            EXPECT_EQ(changes.marks, importRules ? c.importMarks : c.screenMarks);
            EXPECT_EQ(changes.vxChanged, after.c.VX != before.c.VX);
        }
    }
    // Trailing blanks are no change; a return to clearcut names the other button.
    Records before, after;
    before.d.SILVI = 1;
    after.d.FIZ = "  ";
    const PolygonChanges changes =
        comparePolygon(before.d, before.c, before.g, after.d, after.c, after.g, false);
    EXPECT_EQ(changes.labels, "Cut Type = Clear Cut\r\n");
}

TEST(ComparePolygon, ListsInTheScreensOrderUnderItsHeading) {
    Records before, after;
    after.d.MGNT[1] = 1;
    after.d.VAF = 2.0f;
    after.d.TP[0] = 50;
    after.d.AREA = 3.0f;
    const PolygonChanges changes =
        comparePolygon(before.d, before.c, before.g, after.d, after.c, after.g, false);
    EXPECT_EQ(changes.labels, "Area\r\nVAF\r\nTIPSY Species Composition\r\nFuture Management\r\n");
    EXPECT_EQ(changesHeading(changes),
              "The Following variables have been changed:\r\nTIPSY must be recalculated\r\n"
              "VDYP must be recalculated\r\n");
}

class Polychanged : public ::testing::Test {
protected:
    void SetUp() override {
        m.CurPoly = 1;
        m.Poly[1].VSICALC = 17.0f;
        m.HarvAge[1][0].HarvestAge = 80;
        m.HarvAge[1][1].HarvestAge = 60;
        for (int row = 0; row <= m.Settings.YieldRows[0]; ++row) {
            m.VMix(1, row) = {100, 20, 3, 0, 0, 0};
            m.VYield(1, row).Vol = 123;
        }
        takePolygonSnapshot(m);
    }
    PolyData& poly() { return m.Poly[1]; }
    Model m = test::smallProject({"A", "B"});
    test::FakeHost host;
};

TEST_F(Polychanged, KeptChangeStalesItsCurveAndBecomesTheSavedState) {
    EXPECT_EQ(polychanged(m, host.prompt), ChangeOutcome::NoChange);
    poly().FIZ = "K";
    EXPECT_EQ(polychanged(m, host.prompt), ChangeOutcome::Kept);
    ASSERT_EQ(host.prompt.shown.size(), 1u);
    EXPECT_EQ(host.prompt.shown[0].title, "Keep Changes?");
    EXPECT_EQ(host.prompt.shown[0].defaultAnswer, Answer::Yes);
    EXPECT_NE(host.prompt.shown[0].text.find("Do you want to keep these changes?"),
              std::string::npos);
    EXPECT_EQ(poly().YIELDSTATE, (std::array<int16_t, 2>{1, 1}));
    EXPECT_FLOAT_EQ(poly().VSICALC, 0.0f);
    EXPECT_EQ(m.HarvAge[1][0].HarvestAge, 0);
    EXPECT_EQ(m.HarvAge[1][1].HarvestAge, 0);
    EXPECT_EQ(m.OldPoly.FIZ.str(), "K");
    EXPECT_EQ(polychanged(m, host.prompt), ChangeOutcome::NoChange);
}

TEST_F(Polychanged, AreaAloneLeavesTheCurvesAndUserLevelZeroNeverAsks) {
    m.Settings.USERLEVEL = 0;
    poly().AREA = 4.0f;
    EXPECT_EQ(polychanged(m, host.prompt), ChangeOutcome::Kept);
    EXPECT_TRUE(host.prompt.shown.empty());
    EXPECT_EQ(poly().YIELDSTATE, (std::array<int16_t, 2>{3, 3}));
    EXPECT_EQ(m.HarvAge[1][0].HarvestAge, 80);
}

TEST_F(Polychanged, RefusalRestoresEveryField) {
    const Records saved{m.OldPoly, m.OldPolyC, m.OldPolyM};
    poly().VS[2] = "FD";
    poly().VP = {50, 50, 0, 0, 0, 0};
    poly().TS[1] = "PL";
    poly().TH[1] = 12;
    m.PolyC[1].VX[0] = 0;
    m.PolyM[1].NCDESC = "Rock";
    m.PolyM[1].TG[3] = 5;
    host.prompt.answers = {Answer::No};
    EXPECT_EQ(polychanged(m, host.prompt), ChangeOutcome::Restored);
    EXPECT_FALSE(
        comparePolygon(saved.d, saved.c, saved.g, poly(), m.PolyC[1], m.PolyM[1], false).any());
    EXPECT_EQ(poly().VS[2].str(), "");
    EXPECT_EQ(poly().YIELDSTATE, (std::array<int16_t, 2>{3, 3}));
    EXPECT_EQ(m.VYield(1, 2).Vol, 123);
}

TEST_F(Polychanged, ExcludingASpeciesOnlyResharesTheVolume) {
    m.PolyC[1].VX[1] = 0;
    EXPECT_EQ(polychanged(m, host.prompt), ChangeOutcome::Kept);
    EXPECT_EQ(host.prompt.shown[0].text.find("must be recalculated"), std::string::npos);
    EXPECT_EQ(poly().YIELDSTATE, (std::array<int16_t, 2>{3, 3}));
    for (int row = 0; row <= m.Settings.YieldRows[0]; ++row) EXPECT_EQ(m.VYield(1, row).Vol, 103);
}

TEST_F(Polychanged, ImportStoresTheNewRecordsWithItsNarrowerMarks) {
    m.NewPoly = m.Poly[1];
    m.NewPolyC = m.PolyC[1];
    m.NewPolyM = m.PolyM[1];
    m.NewPoly.VAF = 0.7f;
    m.NewPolyM.COMTHIN = 1;
    m.NewPolyC.VX[2] = 0;
    DoYieldsNeedToBeUpdated(m, 1);
    EXPECT_FLOAT_EQ(poly().VAF, 0.7f);
    EXPECT_EQ(m.PolyM[1].COMTHIN, 1);
    EXPECT_EQ(poly().YIELDSTATE, (std::array<int16_t, 2>{3, 3}));
    EXPECT_EQ(m.VYield(1, 0).Vol, 120);

    m.NewPoly.TS[0] = "SX";
    DoYieldsNeedToBeUpdated(m, 1);
    EXPECT_EQ(poly().TS[0].str(), "SX");
    EXPECT_EQ(poly().YIELDSTATE, (std::array<int16_t, 2>{3, 1}));
    EXPECT_EQ(m.HarvAge[1][1].HarvestAge, 0);
    EXPECT_EQ(m.HarvAge[1][0].HarvestAge, 80);
}

}  // namespace
}  // namespace arborex
