// The treatments of a polygon: the zone decides the thin's species and heights, Apply writes
// only what each screen owns, and a changed treatment makes the TIPSY curve stale.

#include <gtest/gtest.h>

#include "support/fake_host.hpp"
#include "support/small_project.hpp"
#include "yield/stand_treatments.hpp"

namespace arborex {
namespace {

// Two polygons over the installed TIPSY species, each a mix of three species.
struct Treated {
    Model m = test::smallProject({"P1", "P2"});
    test::FakeHost host;

    Treated() {
        LoadSpeciesT(m.Ref, host, std::string(ARBOREX_SOURCE_DIR) + "/data/SPECIEST.DAT");
        for (PolyData& poly : m.Poly) {
            poly.TS = {Code2("HW"), Code2("CW"), Code2("SX"), Code2(), Code2()};
            poly.TP = {50, 30, 20, 0, 0};
            for (std::size_t s = 0; s < 3; ++s)
                poly.TSIDX[s] = FindTSpecIdx(m.Ref, poly.TS[s].str());
        }
    }
    PolyData& poly(int p = 0) { return m.Poly[static_cast<std::size_t>(p)]; }
    PolyMgmt& mgmt(int p = 0) { return m.PolyM[static_cast<std::size_t>(p)]; }
    ThinResult thin(const char* density, int height, int p = 0) {
        return applyCommThin(m, host.prompt, p, {true, density, height});
    }
};

TEST(ThinZone, CoastIsABCInEitherCaseAndComesBackInCapitals) {
    for (const char* fiz : {"A", "b", "c", " C"}) EXPECT_TRUE(isCoastZone(fiz)) << fiz;
    for (const char* fiz : {"D", "l", "", "AB"}) EXPECT_FALSE(isCoastZone(fiz)) << fiz;

    Treated t;
    t.poly().FIZ = "c";
    t.mgmt().CTHEIGHT = 27.0f;
    const CommThinFields fields = loadCommThin(t.m, 0);
    EXPECT_EQ(t.poly().FIZ.str(), "C");
    EXPECT_EQ(fields.height, 1);
    EXPECT_STREQ(thinZone("c").information,
                 "Commercial Thin is only available with pure FD stands on the coast");
    EXPECT_STREQ(thinZone("k").heights[2], "22");
}

TEST(CommThin, DensityClampsTo331Through816) {
    const std::pair<const char*, const char*> cases[] = {
        {"900", "816"}, {"100", "331"}, {"abc", "331"}, {"500.6", "501"}, {"", "331"}};
    for (const auto& [typed, shown] : cases) EXPECT_EQ(commThinDensityText(typed), shown) << typed;
}

TEST(CommThin, ApplyMakesThePureStandOfTheZone) {
    Treated t;
    t.poly(0).FIZ = "b";
    t.poly(1).FIZ = "K";
    EXPECT_EQ(t.thin("900", 2, 0), ThinResult::Applied);
    EXPECT_EQ(t.thin("400", 1, 1), ThinResult::Applied);

    const struct {
        const char* species;
        int16_t density;
        float height;
    } expected[] = {{"FD", 816, 33.0f}, {"PL", 400, 18.0f}};
    for (int p = 0; p < 2; ++p) {
        SCOPED_TRACE(p);
        const PolyData& poly = t.poly(p);
        EXPECT_EQ(poly.TS[0].str(), expected[p].species);
        EXPECT_EQ(poly.TSIDX[0], FindTSpecIdx(t.m.Ref, expected[p].species));
        EXPECT_GT(poly.TSIDX[0], 0);
        EXPECT_EQ(poly.TP[0], 100);
        for (std::size_t s = 1; s < 5; ++s) {
            EXPECT_EQ(poly.TS[s].raw(), "  ");
            EXPECT_EQ(poly.TSIDX[s], 0);
            EXPECT_EQ(poly.TP[s], 0);
        }
        EXPECT_EQ(t.mgmt(p).COMTHIN, 1);
        EXPECT_EQ(t.mgmt(p).CTSTEMHA, expected[p].density);
        EXPECT_EQ(t.mgmt(p).CTHEIGHT, expected[p].height);
    }
    EXPECT_EQ(t.poly(0).FIZ.str(), "B");
    EXPECT_TRUE(t.host.prompt.shown.empty());
}

TEST(CommThin, AHeightNotOfferedShowsTheFirstAndIsReplacedOnApply) {
    Treated t;
    t.poly().FIZ = "A";
    t.mgmt().COMTHIN = 1;
    t.mgmt().CTSTEMHA = 600;
    t.mgmt().CTHEIGHT = 18.0f;  // an interior height on the coast
    const CommThinFields fields = loadCommThin(t.m, 0);
    EXPECT_TRUE(fields.enabled);
    EXPECT_EQ(fields.density, "600");
    EXPECT_EQ(fields.height, 0);
    applyCommThin(t.m, t.host.prompt, 0, fields);
    EXPECT_EQ(t.mgmt().CTHEIGHT, 21.0f);
}

TEST(CommThin, OffKeepsTheSpeciesAndAMissingPureSpeciesRefuses) {
    Treated t;
    const PolyData mixed = t.poly();
    t.mgmt().COMTHIN = 1;
    EXPECT_EQ(applyCommThin(t.m, t.host.prompt, 0, {false, "500", 0}), ThinResult::Off);
    EXPECT_EQ(t.mgmt().COMTHIN, 0);
    EXPECT_EQ(t.poly().TS, mixed.TS);
    EXPECT_EQ(t.poly().TP, mixed.TP);

    // A species table without PL cannot place an interior thin.
    t.m.Ref = ReferenceTables();
    t.poly().FIZ = "d";
    const PolyMgmt before = t.mgmt();
    EXPECT_EQ(t.thin("500", 0), ThinResult::Refused);
    ASSERT_EQ(t.host.prompt.shown.size(), 1u);
    EXPECT_EQ(t.host.prompt.shown[0].text,
              "Commercial Thin is only available with pure PL stands in the interior");
    EXPECT_EQ(t.poly().TS, mixed.TS);
    EXPECT_EQ(t.poly().FIZ.str(), "d");
    EXPECT_EQ(t.mgmt().COMTHIN, before.COMTHIN);
    EXPECT_EQ(t.mgmt().CTSTEMHA, before.CTSTEMHA);
}

TEST(Fert, FieldsClampAndUnitsFollowTheMethod) {
    EXPECT_EQ(fertStartYearText("0"), "0");
    EXPECT_EQ(fertStartYearText("340"), "340");
    EXPECT_EQ(fertStartYearText("341"), "340");
    EXPECT_EQ(fertStartYearText("-5"), "0");
    EXPECT_EQ(fertIncreaseText("40", 0), "40");
    EXPECT_EQ(fertIncreaseText("40", 1), "15");
    EXPECT_EQ(fertIncreaseText("40", 2), "15");
    EXPECT_EQ(fertIncreaseText("0", 0), "1");
    EXPECT_EQ(fertUnit(0), "%");
    EXPECT_EQ(fertUnit(1), "m\xb3/ha");
    EXPECT_EQ(fertUnit(2), "m");
}

TEST(Fert, ApplyWritesOnlyTheSwitchAndTheStartAge) {
    Treated t;
    t.mgmt().FINCTYPE = 1;
    t.mgmt().FINCREASE = 40.0f;  // beyond the field's limit: shown clamped, kept as given
    t.mgmt().FSTARTYEAR = 12;
    FertFields fields = loadFert(t.m, 0);
    EXPECT_FALSE(fields.enabled);
    EXPECT_EQ(fields.increase, "15");
    EXPECT_EQ(fields.startYear, "12");

    fields.enabled = true;
    fields.method = 2;
    fields.increase = "3";
    fields.startYear = "400";
    const PolyData poly = t.poly();
    applyFert(t.m, 0, fields);
    EXPECT_EQ(t.mgmt().FERT, 1);
    EXPECT_EQ(t.mgmt().FSTARTYEAR, 340);
    EXPECT_EQ(t.mgmt().FINCTYPE, 1);
    EXPECT_EQ(t.mgmt().FINCREASE, 40.0f);
    EXPECT_EQ(t.poly().TS, poly.TS);

    fields.enabled = false;
    fields.startYear = "7";
    applyFert(t.m, 0, fields);
    EXPECT_EQ(t.mgmt().FERT, 0);
    EXPECT_EQ(t.mgmt().FSTARTYEAR, 340);
}

TEST(TreatmentChange, MarksTheTipsyCurveOnlyWhenTheTreatmentChanged) {
    Treated t;
    t.poly().FIZ = "c";
    t.m.HarvAge[0][0].HarvestAge = 60;
    t.m.HarvAge[0][1].HarvestAge = 70;
    const PolyData before = t.poly();
    const PolyMgmt beforeM = t.mgmt();

    loadCommThin(t.m, 0);  // the zone in capitals alone changes nothing
    EXPECT_FALSE(markTreatmentChange(t.m, 0, before, beforeM));
    EXPECT_EQ(t.poly().YIELDSTATE[1], 3);

    t.thin("500", 0);
    EXPECT_TRUE(markTreatmentChange(t.m, 0, before, beforeM));
    EXPECT_EQ(t.poly().YIELDSTATE[0], 3);
    EXPECT_EQ(t.poly().YIELDSTATE[1], 1);
    EXPECT_EQ(t.m.HarvAge[0][0].HarvestAge, 60);
    EXPECT_EQ(t.m.HarvAge[0][1].HarvestAge, 0);
}

}  // namespace
}  // namespace arborex
