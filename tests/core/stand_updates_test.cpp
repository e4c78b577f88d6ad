// Harvest ages and silviculture systems set on a selection of polygons. Polygon 0 "Alpha", 30
// years old, has a VDYP curve (1-year grid) passing 150 m3/ha at 62 and 15 cm at 48, its MAI
// culminating at 80 (5.0, falling 0.012 a year either side), and a TIPSY curve (10-year grid) of
// 3 m3/ha a year and 0.5 cm a year; polygon 1 "Beta" has no curves.

#include <gtest/gtest.h>

#include <cstdlib>
#include <tuple>

#include "base/errors.hpp"
#include "model/model.hpp"
#include "support/fake_host.hpp"
#include "yield/harvest_ages.hpp"
#include "yield/stand_updates.hpp"

namespace arborex {
namespace {

using Targets = std::array<int16_t, 2>;

class StandUpdates : public ::testing::Test {
protected:
    void SetUp() override {
        ResetVars(m);
        SetDefaults(m);
        m.LastPoly = 1;
        EmptyArrays(m);
        ResizePolygonArrays(m, 2);
        for (std::size_t p = 0; p < 2; ++p) {
            m.PolyC[p].MINCUTAGE = {-1, -1};
            m.PolyC[p].MINCUTVOL = m.PolyC[p].MINCUTDBH = {-1.0f, -1.0f};
            m.Poly[p].HAR = {-1, -1};
            m.Poly[p].MGNT = {0, 1};
            m.Poly[p].YIELDSTATE = {3, 3};
            m.Poly[p].PCPERC = m.Poly[p].PCNEXT = -1;
        }
        m.Poly[0].NAME = "Alpha";
        m.Poly[1].NAME = "Beta";
        m.Poly[0].AGE = 30;
        for (int k = 0; k <= 300; ++k) {
            YieldRow& row = m.VYield(0, k);
            row.Vol = static_cast<int16_t>(k * 24 + 12);
            row.Dia = static_cast<int16_t>(k * 3 + 6);
            row.Mai = 5.0f - 0.012f * static_cast<float>(std::abs(k - 80));
        }
        for (int k = 0; k <= 35; ++k) {
            YieldRow& row = m.TYield(0, k);
            row.Vol = static_cast<int16_t>(k * 300);
            row.Dia = static_cast<int16_t>(k * 50);
            row.Mai = 4.0f - 0.1f * static_cast<float>(std::abs(k - 7));
        }
        calcAllCutAges(m, 0);
        calcAllCutAges(m, 1);
    }
    Model m;
};

TEST_F(StandUpdates, TheFixtureHasTheAgesTheExamplesAssume) {
    const HarvAgeRec& vdyp = m.HarvAge[0][0];
    EXPECT_EQ(std::tie(vdyp.MaiAge, vdyp.ConstraintAge, vdyp.HarvestAge),
              std::make_tuple(int16_t(80), int16_t(62), int16_t(80)));
    EXPECT_EQ(m.HarvAge[0][1].ConstraintAge, 50);
}

struct Example {
    int16_t method;
    int16_t amount;
    bool ignore;
    int16_t expected;
};

// With the existing target at 100 (volume 241.2) and the culmination at 80 (volume 193.2),
// criteria at 62.
TEST_F(StandUpdates, EachMethodOnTheVdypTarget) {
    const std::vector<Example> examples = {
        {0, 10, false, 110}, {0, -50, false, 62}, {0, -50, true, 50},
        {1, 10, false, 90},  {2, 10, false, 88},  {3, 10, false, 105},  // 251.2 m3 first at 105
        {4, 10, false, 111},                                            // 265.32 m3
        {5, 10, false, 85},                                             // 203.2 m3
        {6, 10, false, 89},                                             // 212.52 m3
        {7, 70, false, 70},  {7, 30, false, 62},  {7, 30, true, 30},
        {8, 10, false, -1},  {9, 50, false, 80},  {9, 10, false, 62},   // AGE 30 + amount
        {10, 10, true, 39},  {10, -10, true, 39}, {10, 10, false, 62},  // MAI 4.5
        {7, 999, false, 999}};
    for (const Example& e : examples) {
        SCOPED_TRACE(testing::Message() << "method " << e.method << " amount " << e.amount
                                        << (e.ignore ? " ignoring criteria" : ""));
        m.Poly[0].HAR = {100, 55};
        AdjustHarvest(m, 0, 0, e.amount, e.method, e.ignore);
        EXPECT_EQ(m.Poly[0].HAR, (Targets{e.expected, 55}));  // the TIPSY target is not touched
    }
}

TEST_F(StandUpdates, ThePartsEdgeCases) {
    // Culmination 80, criteria 95: ten years above culmination is held to the criteria.
    m.PolyC[0].MINCUTAGE[0] = 95;
    calcAllCutAges(m, 0);
    AdjustHarvest(m, 0, 0, 10, 1, false);
    EXPECT_EQ(m.Poly[0].HAR[0], 95);
    AdjustHarvest(m, 0, 0, 10, 1, true);
    EXPECT_EQ(m.Poly[0].HAR[0], 90);

    // A percentage of the culmination rounds half to even: 83 * 1.5 = 124.5.
    m.HarvAge[0][0].MaiAge = 83;
    AdjustHarvest(m, 0, 0, 50, 2, true);
    EXPECT_EQ(m.Poly[0].HAR[0], 124);

    // A current target is the calculated age when the polygon has none of its own.
    m.Poly[0].HAR[0] = -1;
    AdjustHarvest(m, 0, 0, 5, 0, false);
    EXPECT_EQ(m.Poly[0].HAR[0], 100);  // HarvestAge 95 + 5

    m.Poly[0].HAR[0] = 32000;
    try {
        AdjustHarvest(m, 0, 0, 1000, 0, false);
        FAIL() << "no overflow";
    } catch (const ArborexError& e) {
        EXPECT_EQ(e.number(), ErrOverflow);
    }
}

TEST_F(StandUpdates, OnlyImportedCurvesWithVolumeAreAdjustedAndBecomeCurrent) {
    m.Poly[0].YIELDSTATE = {2, 1};
    m.Poly[0].HAR = {100, 100};
    m.Poly[0].MGNT = {0, 1};
    AdjustHarvest(m, 0, 0, 10, 0, false);
    AdjustHarvest(m, 1, 0, 10, 0, false);
    EXPECT_EQ(m.Poly[0].YIELDSTATE, (Targets{3, 1}));
    EXPECT_EQ(m.Poly[0].HAR, (Targets{110, 100}));

    m.Poly[1].YIELDSTATE = {2, 2};  // no volume at the top of either grid
    AdjustHarvest(m, 0, 1, 10, 7, false);
    EXPECT_EQ(m.Poly[1].YIELDSTATE, (Targets{2, 2}));
    EXPECT_EQ(m.Poly[1].HAR, (Targets{-1, -1}));
}

TEST_F(StandUpdates, TheCheckBoxesChooseTheCurveModelNotTheRotation) {
    m.Poly[0].MGNT = {1, 1};
    HarvestAgeUpdate update;
    update.method = 7;
    update.amount = 120;
    update.updateVdyp = true;
    updateHarvestAges(m, {0}, update);
    EXPECT_EQ(m.Poly[0].HAR, (Targets{-1, -1}));

    update.updateVdyp = false;
    update.updateTipsy = true;
    updateHarvestAges(m, {0, 1}, update);
    EXPECT_EQ(m.Poly[0].HAR, (Targets{120, 120}));
    EXPECT_EQ(m.Poly[1].HAR, (Targets{-1, -1}));  // no curve: skipped

    // The ages are worked out afresh first: criteria changed since are in force.
    m.Settings.MINAGE = 150;
    update.amount = 130;
    updateHarvestAges(m, {0}, update);
    EXPECT_EQ(m.Poly[0].HAR, (Targets{150, 150}));
    update.method = kMethodDefaultAge;
    updateHarvestAges(m, {}, update);  // nothing selected, nothing done
    EXPECT_EQ(m.Poly[0].HAR, (Targets{150, 150}));
    updateHarvestAges(m, {0}, update);
    EXPECT_EQ(m.Poly[0].HAR, (Targets{-1, -1}));
}

TEST_F(StandUpdates, SelectionProtocolAndStatus) {
    EXPECT_EQ(summaryRowKey(12), "PG12");
    const std::vector<std::pair<std::string, bool>> rows = {
        {"PG3", true}, {"PG1", false}, {"Total", true}, {"PG", true}, {"XG5", true}, {"PG0", true}};
    EXPECT_EQ(selectedPolygons(rows), (std::vector<int16_t>{3, 0}));

    EXPECT_EQ(selectionStatus(m, {}, "Harvest Age"),
              "No polygons are selected\r\nPlease select one or more polygons and try again");
    EXPECT_EQ(selectionStatus(m, {1}, "Harvest Age"),
              "Polygon 'Beta' will be updated with the current Harvest Age Settings");
    EXPECT_EQ(selectionStatus(m, {1, 0}, "Silviculture"),
              "2 Polygons will be updated with the current Silviculture Settings");
    EXPECT_EQ(std::string(kHarvestAgeMethods[10]),
              "% below culmination mai (m\xb3/ha/yr) (before culmination)");
}

TEST_F(StandUpdates, PartialCutFieldsClampOrFallBackToTheProject) {
    const std::vector<std::tuple<int, const char*, int16_t>> typed = {
        {0, "5", 5},        {1, "5", 10},    {0, "60", 50},
        {1, "1200", 999},   {1, " 25 ", 25}, {0, "12.5", 13} /* as the clamp shows it */,
        {0, "abc", -1},     {0, "[20]", -1}, {1, "", -1},
        {1, "12 years", -1}};
    for (const auto& [index, text, value] : typed)
        EXPECT_EQ(partialCutFieldValue(index, text), value) << index << " '" << text << "'";
    m.Settings.PCperc = 20;
    m.Settings.PCnext = 25;
    EXPECT_EQ(partialCutFieldText(m, 0, -1), "[20]");
    EXPECT_EQ(partialCutFieldText(m, 1, -1), "[25]");
    EXPECT_EQ(partialCutFieldText(m, 1, 15), "15");
}

TEST_F(StandUpdates, PartialCutNeedsACurrentVdypCurve) {
    m.Poly[0].MGNT = {1, 1};
    m.Poly[1].YIELDSTATE = {2, 3};
    SilviUpdate partial{true, 30, -1};
    const std::string refused = updateSilviculture(m, {0, 1}, partial);
    EXPECT_EQ(refused, "Beta\r\n");
    EXPECT_EQ(std::tie(m.Poly[0].SILVI, m.Poly[0].PCPERC, m.Poly[0].PCNEXT),
              std::make_tuple(int16_t(1), int16_t(30), int16_t(-1)));
    EXPECT_EQ(m.Poly[0].MGNT, (Targets{0, 0}));
    EXPECT_EQ(m.Poly[1].SILVI, 0);
    EXPECT_EQ(m.Poly[1].MGNT, (Targets{0, 1}));

    test::ScriptedPrompt prompt;
    tellPartialCutRefused(prompt, "");
    EXPECT_TRUE(prompt.shown.empty());
    tellPartialCutRefused(prompt, refused);
    ASSERT_EQ(prompt.shown.size(), 1u);
    EXPECT_EQ(prompt.shown[0].title, "No VDYP Avaliable?");
    EXPECT_TRUE(prompt.showed("they do not contain a current VDYP yield curve."));
    EXPECT_TRUE(prompt.showed("Beta"));

    // The screen starts from the first selected polygon.
    const SilviUpdate preset = silviculturePreset(m, {0, 1});
    EXPECT_EQ(std::tie(preset.partialCut, preset.SetPCPerc, preset.SetPCNext),
              std::make_tuple(true, int16_t(30), int16_t(-1)));
    EXPECT_FALSE(silviculturePreset(m, {1}).partialCut);

    // A clearcut needs no curve, and keeps the managements and partial cut fields.
    EXPECT_EQ(updateSilviculture(m, {0, 1}, SilviUpdate{}), "");
    EXPECT_EQ(m.Poly[0].SILVI, 0);
    EXPECT_EQ(m.Poly[0].PCPERC, 30);
    EXPECT_EQ(m.Poly[0].MGNT, (Targets{0, 0}));
}

}  // namespace
}  // namespace arborex
