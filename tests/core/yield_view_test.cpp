// The yield table view on one polygon whose VDYP curve (1-year grid, 0 to 300) passes 150 m3/ha
// at 62 and 15 cm at 48, with MAI culminating at 80 with 5.0, and whose TIPSY curve (10-year
// grid, 0 to 350) grows 10 m3/ha and 1 cm a step with a flat MAI of 2.5.

#include <gtest/gtest.h>

#include <cmath>

#include "model/model.hpp"
#include "report/yield_view.hpp"
#include "support/fake_host.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex {
namespace {

using Row = std::vector<std::string>;

class YieldViewTest : public ::testing::Test {
protected:
    void SetUp() override {
        ResetVars(m);
        SetDefaults(m);  // YIELDINC 10, MINAGE 40, MINVOL 150, MINDIA 15
        m.Settings.YIELDMODE = 0;
        m.LastPoly = 0;
        EmptyArrays(m);
        ResizePolygonArrays(m, 1);
        PolyData& poly = m.Poly[0];
        poly.MGNT = {0, 1};
        poly.HAR = {-1, -1};
        poly.YIELDSTATE = {3, 3};
        poly.VS[0] = "PL";
        poly.VSICALC = 21.46f;
        m.PolyC[0].MINCUTAGE = {-1, -1};
        m.PolyC[0].MINCUTVOL = m.PolyC[0].MINCUTDBH = {-1.0f, -1.0f};
        for (int k = 0; k <= 300; ++k) {
            YieldRow& row = m.VYield(0, k);
            row.Vol = static_cast<int16_t>(k * 24 + 12);
            row.Dia = static_cast<int16_t>(k * 3 + 6);
            row.Ht = static_cast<int16_t>(k * 2);
            row.Mai = 5.0f - 0.01f * static_cast<float>(std::abs(k - 80));
            m.VMix(0, k) = {static_cast<int16_t>(row.Vol - 100), 100, 0, 0, 0, 0};
        }
        for (int k = 0; k <= 35; ++k) {
            YieldRow& row = m.TYield(0, k);
            row.Vol = static_cast<int16_t>(k * 100);
            row.Dia = static_cast<int16_t>(k * 10);
            row.Mai = 2.5f;
        }
        for (int k = 0; k < ColourCount; ++k) m.Settings.COLORS[static_cast<std::size_t>(k)] = k;
        calcAllCutAges(m, 0);
        calcAllCutAges(m, 1);
    }
    Model m;
    YieldView vdyp{0, 0, 0};
    YieldView tipsy{0, 1, 1};
};

TEST_F(YieldViewTest, TableRowsAtMultiplesOfTheTableStepWithTheirFormats) {
    YieldTable table = yieldTable(m, vdyp);
    EXPECT_EQ(table.heads, Row({"Age", "DBH", "Height", "Vol/Ha", "MAI"}));
    ASSERT_EQ(table.rows.size(), 31u);  // 0, 10, .. 300
    EXPECT_EQ(table.rows[6], Row({"60", "18.6", "12.0", "145.2", "4.80"}));
    EXPECT_EQ(table.rows[8][4], "5.00");

    m.Settings.YIELDINC = 25;  // 0, 25, .. 300 on the 1-year grid
    table = yieldTable(m, vdyp);
    ASSERT_EQ(table.rows.size(), 13u);
    EXPECT_EQ(table.rows[1][0], "25");
    m.Settings.YIELDINC = 15;  // on the 10-year TIPSY grid only 0, 30, .. 330
    EXPECT_EQ(yieldTable(m, tipsy).rows.size(), 12u);
    EXPECT_EQ(yieldTableText(yieldTable(m, {0, 1, 1}), ", ").substr(0, 45),
              "Age, DBH, Height, Vol/Ha, MAI\r\n0, 0.0, 0.0, 0");
}

TEST_F(YieldViewTest, SpeciesColumnsWhenTheManagementOfIndexTIsVdypAndYieldModeIsSet) {
    m.Settings.YIELDMODE = 1;
    YieldTable table = yieldTable(m, vdyp);
    ASSERT_EQ(table.heads.size(), 11u);
    EXPECT_EQ(table.heads[5], "Vol(1)");
    EXPECT_EQ(table.heads[10], "Vol(6)");
    EXPECT_EQ(Row(table.rows[6].begin() + 5, table.rows[6].end()),
              Row({"135.2", "10.0", "0.0", "0.0", "0.0", "0.0"}));
    EXPECT_EQ(yieldTableText(table, "\t").substr(0, 12), "Age\tDBH\tHeig");
    // MGNT[1] is TIPSY: the TIPSY view has none; off without YIELDMODE.
    EXPECT_EQ(yieldTable(m, tipsy).heads.size(), 5u);
    m.Settings.YIELDMODE = 0;
    EXPECT_EQ(yieldTable(m, vdyp).heads.size(), 5u);
}

TEST_F(YieldViewTest, LabelsAndMarkersOfACalculatedCurve) {
    const YieldLabels l = yieldLabels(m, vdyp);
    EXPECT_EQ(l.siteIndex, "21.5");
    EXPECT_EQ(l.maiAge, "80");
    EXPECT_EQ(l.maxMai, "5.00");
    EXPECT_EQ(l.diaAge, "48");
    EXPECT_EQ(l.volAge, "62");
    EXPECT_EQ(l.constraintAge, "62");
    EXPECT_EQ(l.harvestAge, "80");
    EXPECT_EQ(l.targetDbh, "24.6");  // the calculated 80, as HAR1 is -1
    EXPECT_EQ(l.targetVol, "193.2");
    EXPECT_EQ(l.thinAge, "N/A");

    m.Poly[0].HAR[1] = 65;  // TIPSY: target, DIA, VOL (150 at 150), AGE, MAI (flat: first step)
    std::vector<double> xs;
    std::vector<int32_t> colours;
    for (const YieldMarker& marker : yieldMarkers(m, tipsy)) {
        xs.push_back(marker.x);
        colours.push_back(marker.colour);
    }
    EXPECT_EQ(xs, (std::vector<double>{6.5, 15.0, 15.0, 4.0, 0.0}));
    EXPECT_EQ(colours, (std::vector<int32_t>{65535, ColDIA, ColVOL, ColAGE, ColMAI}));
}

TEST_F(YieldViewTest, ThinLabelsOfATipsyCurveWithACommercialThin) {
    PolyMgmt& mgmt = m.PolyM[0];
    mgmt.COMTHIN = 1;
    mgmt.TIPSYCACHE = {43, 51, 2100, 1590, 0, 0, 0, 0};
    const YieldFigures f = yieldFigures(m, tipsy);
    EXPECT_TRUE(f.thinned);
    EXPECT_EQ(f.thinVolAfter, 159.0f);
    const YieldLabels l = yieldLabels(m, tipsy);
    EXPECT_EQ(l.thinAge, "43");
    EXPECT_EQ(l.thinVolBefore, "210.0");
    EXPECT_EQ(l.thinVolAfter, "159.0");
    EXPECT_EQ(yieldLabels(m, vdyp).thinAge, "N/A");  // the thin is in the TIPSY curve only
}

TEST_F(YieldViewTest, ACurveNotCalculatedShowsTheTextAndNotAvailable) {
    m.Poly[0].YIELDSTATE[0] = 0;
    const YieldPicture picture = yieldPicture(m, vdyp);
    EXPECT_EQ(picture.message, "YIELD Not Calculated yet for this polygon");
    EXPECT_TRUE(picture.lines.empty());
    EXPECT_TRUE(yieldMarkers(m, vdyp).empty());
    const YieldLabels l = yieldLabels(m, vdyp);
    for (const std::string* label : {&l.siteIndex, &l.maiAge, &l.volAge, &l.targetVol})
        EXPECT_EQ(*label, "N/A");
    EXPECT_EQ(yieldPicture(m, {-1, 0, 0}).message, kYieldNotCalculated);
    EXPECT_TRUE(yieldTable(m, {-1, 0, 0}).rows.empty());
}

TEST_F(YieldViewTest, LinesScaledEachToItsOwnMaximumAndACautionForThoseWithout) {
    YieldPicture picture = yieldPicture(m, tipsy);
    EXPECT_EQ(picture.width, 35.0);
    EXPECT_EQ(picture.caution, "");
    ASSERT_EQ(picture.lines.size(), 3u);  // volume, diameter, MAI
    EXPECT_EQ(picture.lines[0].colour, ColVOL);
    EXPECT_EQ(picture.lines[0].points.back(), (std::pair<double, double>{35.0, 5.0}));
    EXPECT_EQ(picture.lines[1].points[7].second, 100.0 - 7.0 * 95.0 / 35.0f);
    EXPECT_EQ(picture.lines[2].points[3].second, 5.0);

    for (int k = 0; k <= 35; ++k) m.TYield(0, k).Mai = 0.0f;
    picture = yieldPicture(m, tipsy);
    EXPECT_EQ(picture.caution, "MAI,");
    EXPECT_EQ(picture.lines.size(), 2u);
    test::ScriptedPrompt prompt;
    showCaution(prompt, picture.caution);
    ASSERT_EQ(prompt.shown.size(), 1u);
    EXPECT_TRUE(prompt.showed("Caution MAI, = 0 "));
    for (int k = 0; k <= 35; ++k) m.TYield(0, k).Vol = 0;
    EXPECT_EQ(yieldPicture(m, tipsy).caution, "VOLUME,MAI,");
}

TEST_F(YieldViewTest, CriteriaFieldsStoreANumberAndReturnToTheProjectValueOnAnythingElse) {
    EXPECT_EQ(findAgeText(m, vdyp, 1), "[150]");
    EXPECT_EQ(txtFindAge_LostFocus(m, vdyp, 1, " 200 "), "200");
    EXPECT_EQ(m.PolyC[0].MINCUTVOL[0], 200.0f);
    EXPECT_EQ(m.HarvAge[0][0].VolAge, 83);  // 2000 tenths first at 83
    EXPECT_EQ(m.HarvAge[0][0].HarvestAge, 83);

    for (const char* text : {"abc", "[200]", ""}) {
        EXPECT_EQ(txtFindAge_LostFocus(m, vdyp, 1, text), "[150]") << text;
        EXPECT_EQ(m.PolyC[0].MINCUTVOL[0], -1.0f);
    }
    EXPECT_EQ(m.HarvAge[0][0].VolAge, 62);
    EXPECT_EQ(txtFindAge_LostFocus(m, vdyp, 0, "20.5"), "20.5");
    EXPECT_EQ(m.HarvAge[0][0].DiaAge, 67);
    EXPECT_EQ(txtFindAge_LostFocus(m, vdyp, 2, "abc"), "[40]");
    EXPECT_EQ(txtFindAge_LostFocus(m, vdyp, 2, "100"), "100");
    EXPECT_EQ(m.HarvAge[0][0].HarvestAge, 100);
    EXPECT_EQ(m.Poly[0].YIELDSTATE[0], 3);  // the curve stays valid
    EXPECT_EQ(m.HarvAge[0][0].MaiAge, 80);
}

TEST_F(YieldViewTest, TargetAgeFieldAndItsUpDownControl) {
    EXPECT_EQ(harvestRateText(m, vdyp), "[80]");
    // The first click takes the calculated age as it stands, not one more or less.
    EXPECT_EQ(updnHarvestAge_Click(m, vdyp, 1), "80");
    EXPECT_EQ(m.Poly[0].HAR[0], 80);
    EXPECT_EQ(updnHarvestAge_Click(m, vdyp, 1), "81");
    m.Poly[0].HAR[0] = -1;
    EXPECT_EQ(updnHarvestAge_Click(m, vdyp, -1), "80");
    EXPECT_EQ(updnHarvestAge_Click(m, vdyp, -1), "79");

    EXPECT_EQ(txtHarvestRate_LostFocus(m, vdyp, "95"), "95");
    EXPECT_EQ(m.Poly[0].HAR[0], 95);
    EXPECT_EQ(yieldFigures(m, vdyp).targetAge, 95);
    EXPECT_EQ(txtHarvestRate_LostFocus(m, vdyp, "soon"), "[80]");
    EXPECT_EQ(m.Poly[0].HAR[0], -1);
    EXPECT_EQ(m.Poly[0].HAR[1], -1);  // the other management untouched
    // Without a polygon on view nothing changes.
    EXPECT_EQ(updnHarvestAge_Click(m, {-1, 0, 0}, 1), "");
}

TEST_F(YieldViewTest, AClickOnThePictureSetsTheTargetToTheAgeThere) {
    EXPECT_EQ(picGraph_MouseDown(m, tipsy, 0.0), std::optional<int16_t>(0));
    EXPECT_EQ(m.Poly[0].HAR[1], 0);  // YieldMinAge
    m.Settings.YieldMinAge[1] = 20;
    EXPECT_EQ(picGraph_MouseDown(m, tipsy, 0.0), std::optional<int16_t>(20));
    EXPECT_EQ(picGraph_MouseDown(m, tipsy, 6.25), std::optional<int16_t>(82));  // 82.5: to even
    EXPECT_EQ(harvestRateText(m, tipsy), "82");
    EXPECT_EQ(m.Poly[0].HAR[0], -1);
    EXPECT_EQ(picGraph_MouseDown(m, {-1, 1, 1}, 3.0), std::nullopt);
}

}  // namespace
}  // namespace arborex
