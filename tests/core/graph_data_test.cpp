// The picture graphs as data: the tick rule of both axes, the time volume columns with their
// legend, and the age distribution's clusters under each fill type, on a hand-made table.

#include <gtest/gtest.h>

#include "report/graph_data.hpp"

namespace arborex {
namespace {

std::vector<std::string> labels(const std::vector<GraphTick>& ticks) {
    std::vector<std::string> out;
    for (const GraphTick& tick : ticks) out.push_back(tick.label);
    return out;
}

TEST(GraphData, TicksStepByOneTwoOrFiveTimesAPowerOfTen) {
    EXPECT_EQ(tickStep(0, 1000, 10), 100.0);
    EXPECT_EQ(tickStep(0, 1234, 10), 200.0);
    EXPECT_EQ(tickStep(2025, 2126, 10), 20.0);
    EXPECT_EQ(tickStep(0, 3, 10), 0.5);
    EXPECT_EQ(labels(axisTicks(2025, 2126, 10, "0")),
              (std::vector<std::string>{"2040", "2060", "2080", "2100", "2120"}));
    EXPECT_EQ(labels(axisTicks(0, 1200, 10, "#,##0")),
              (std::vector<std::string>{"0", "200", "400", "600", "800", "1,000", "1,200"}));
}

struct Table {
    Model m;
    CalcScreen screen;
    Table() {
        programDefaults(m);
        for (int k = 0; k < ColourCount; ++k) m.Settings.COLORS[static_cast<std::size_t>(k)] = k;
        m.Calc.CalcHorizon = 2;
        m.Calc.YearTable.resize(2);
        // Year 0 harvests its rate with mature and immature conifer; year 1 has no inventory;
        // year 2 harvests half the rate.
        year(0) = row(600, 634, 1000);
        year(2) = row(300, 0, 500);
        year(0).AgeClassArea = {5, 10, 0, 0, 0, 0, 0, 0, 40, 1};
        year(2).AgeClassArea = {7, 0, 0, 0, 0, 0, 0, 0, 30, 0};
        screen.txtVolToCut = "1000";
    }
    static YearRec row(float mature, float immature, float cut) {
        YearRec y;
        y.MatureCon = mature;
        y.ImmatureCon = immature;
        y.InvArea = mature > 0 ? 10.0f : 0.0f;
        y.InvAreaAge = y.InvAreaHeight = y.InvArea;
        y.VolConifer = cut;
        return y;
    }
    YearRec& year(int y) { return m.Calc.YearTable[y]; }
};

TEST(GraphData, TimeVolumeStacksEachYearAndNamesTheTestsThatOccur) {
    Table t;
    const GraphPicture p = GraphTimeVolume(t.m, t.screen, 2025);
    EXPECT_EQ(p.title, "Standing Volume / Year");
    EXPECT_EQ(p.x.low, 2025.0);
    EXPECT_EQ(p.x.high, 2028.0);
    // 1,234 raised to the next tick of 200.
    EXPECT_EQ(p.y.high, 1400.0);
    EXPECT_EQ(p.y.title, "Volume");
    EXPECT_EQ(p.y.unit, "(m\xb3)");
    ASSERT_EQ(p.boxes.size(), 3u);
    EXPECT_EQ(p.boxes[0].colour, ColMATURE);
    EXPECT_EQ(p.boxes[1].bottom, 600.0);
    EXPECT_EQ(p.boxes[1].top, 1234.0);
    EXPECT_EQ(p.boxes[1].colour, ColIMATURE);
    EXPECT_EQ(p.boxes[2].left, 2027.0);
    EXPECT_EQ(p.boxes[2].colour, ColNMATURE);
    ASSERT_EQ(p.legend.size(), 3u);
    EXPECT_EQ(p.legend[0].name, "Harvestable");
    EXPECT_EQ(p.legend[1].name, "Harvestable - No Volume");
    EXPECT_EQ(p.legend[1].colour, ColNMATURE);
    EXPECT_EQ(p.legend[2].name, "Immature");

    t.m.Calc.CalcHorizon = 0;
    EXPECT_TRUE(GraphTimeVolume(t.m, t.screen, 2025).empty());
}

TEST(GraphData, AgeDistributionClustersTheYearsAskedForByTheirFillType) {
    Table t;
    AgeGraphRequest request = defaultAgeGraphRequest(2025);
    request.years = {2025, 0, 2027, 0, 0, 0};  // two blank years
    request.patterns = {FillCross, 0, FillHorizontal, 0, 0, 0};
    GraphPicture p = ageDistributionGraph(t.m, request, 2025);
    EXPECT_EQ(p.x.ticks.size(), 10u);
    EXPECT_EQ(p.x.ticks[8].label, "141-250");
    EXPECT_EQ(p.y.high, 40.0);
    ASSERT_EQ(p.legend.size(), 2u);
    EXPECT_EQ(p.legend[1].name, "2027");
    // Bars of 0.4 classes: 2025 has four classes with area, 2027 two.
    ASSERT_EQ(p.boxes.size(), 6u);
    EXPECT_DOUBLE_EQ(p.boxes[4].left, 0.5);
    EXPECT_EQ(p.boxes[4].top, 7.0);
    EXPECT_EQ(p.boxes[4].fill, FillHorizontal);
    EXPECT_EQ(p.boxes[4].colour, request.colours[2]);

    request.fillType = 1;  // colour only
    p = ageDistributionGraph(t.m, request, 2025);
    EXPECT_EQ(p.boxes[4].fill, FillSolid);
    EXPECT_EQ(p.boxes[4].colour, request.colours[2]);
    request.fillType = 2;  // pattern only, in black
    p = ageDistributionGraph(t.m, request, 2025);
    EXPECT_EQ(p.boxes[4].fill, FillHorizontal);
    EXPECT_EQ(p.boxes[4].colour, 0);
}

TEST(GraphData, YearFieldsAreTrimmedReadAndClamped) {
    EXPECT_EQ(ageGraphYear("  2035 "), 2035);
    EXPECT_EQ(ageGraphYear("2040abc"), 2040);
    EXPECT_EQ(ageGraphYear(""), 0);
    EXPECT_EQ(ageGraphYear("99999"), 32767);
}

TEST(GraphData, YieldCurveWithoutPolygonHasAxesButNoCurves) {
    Model m;
    programDefaults(m);
    const GraphPicture p = GraphYieldCurve(m, -1, 0);
    EXPECT_EQ(p.title, "Yield Table - ");
    EXPECT_EQ(p.x.title, "Year");
    EXPECT_EQ(p.y.unit, "(m\xb3/Ha)");
    EXPECT_TRUE(p.empty());
}

TEST(GraphData, YieldCurveTracesVolumeMaiAndDiameterAtEveryAgeStep) {
    Model m;
    ResetVars(m);
    SetDefaults(m);  // TIPSY's grid: 0 to 350 by 10 years
    m.LastPoly = 0;
    EmptyArrays(m);
    ResizePolygonArrays(m, 1);
    m.Poly[0].NAME = "  BLK7 ";
    for (int k = 0; k <= 35; ++k) {
        YieldRow& r = m.TYield(0, k);
        r.Vol = static_cast<int16_t>(k * 100);  // tenths: 10 m3/ha a step, 350 at the end
        r.Dia = static_cast<int16_t>(k * 10);
        r.Mai = 2.5f;
    }
    for (int k = 0; k < ColourCount; ++k) m.Settings.COLORS[static_cast<std::size_t>(k)] = k;
    const GraphPicture p = GraphYieldCurve(m, 0, 1);
    EXPECT_EQ(p.title, "Yield Table - BLK7");
    EXPECT_EQ(p.x.low, 0.0);
    EXPECT_EQ(p.x.high, 350.0);
    EXPECT_EQ(p.y.high, 350.0);  // 350 is already on the 50 step
    EXPECT_EQ(p.y.title, "Volume / Ha");
    ASSERT_EQ(p.curves.size(), 3u);
    EXPECT_EQ(p.curves[0].colour, ColVOL);
    EXPECT_EQ(p.curves[1].colour, ColMAI);
    EXPECT_EQ(p.curves[2].colour, ColDIA);
    ASSERT_EQ(p.curves[0].points.size(), 36u);
    EXPECT_EQ(p.curves[0].points[12], (std::pair<double, double>{120.0, 120.0}));
    EXPECT_EQ(p.curves[1].points[12].second, 2.5);
    EXPECT_EQ(p.curves[2].points[12].second, 12.0);
    EXPECT_EQ(p.legend[0].name, "Vol/ha");
    EXPECT_TRUE(p.legend[0].line);
}

}  // namespace
}  // namespace arborex
