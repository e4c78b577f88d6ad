// The standing volume graph's columns and colours, and the harvest sums of the schedule's
// selection line and the batch's ten-year table, on a hand-made three-year table.

#include <gtest/gtest.h>

#include "model/colours.hpp"
#include "report/harvest_totals.hpp"
#include "report/standing_volume.hpp"

namespace arborex {
namespace {

struct Table {
    Model m;
    CalcScreen screen;
    Table() {
        programDefaults(m);
        for (int k = 0; k < ColourCount; ++k) m.Settings.COLORS[static_cast<std::size_t>(k)] = k;
        m.Calc.CalcHorizon = 2;
        m.Calc.YearTable.resize(2);
        year(0) = row(1000, 10, 8, 6, 400, 100);  // 80% old enough, 60% tall enough
        year(1) = row(0, 0, 0, 0, 0, 0);          // no inventory: no column
        year(2) = row(2000, 10, 10, 10, 990, 0);  // harvests 99% of 1,000
        screen.txtVolToCut = "1000";
    }
    static YearRec row(float standing, float area, float aged, float tall, float conifer,
                       float deciduous) {
        YearRec y;
        y.MatureCon = standing / 2.0f;
        y.ImmatureDec = standing / 2.0f;
        y.InvArea = area;
        y.InvAreaAge = aged;
        y.InvAreaHeight = tall;
        y.VolConifer = conifer;
        y.VolDeciduous = deciduous;
        y.AreaCC = 1.5f;
        y.AreaRoad = 0.25f;
        return y;
    }
    YearRec& year(int y) { return m.Calc.YearTable[y]; }
    std::vector<int32_t> firstColours() {
        std::vector<int32_t> first;
        for (const StandingColumn& c : standingGraph(m, screen).columns)
            first.push_back(c.colours[0]);
        return first;
    }
};

TEST(StandingVolume, ColumnsForYearsWithInventoryColouredByTheFirstRuleMet) {
    Table t;
    const StandingGraphData graph = standingGraph(t.m, t.screen);
    EXPECT_EQ(graph.horizon, 2);
    EXPECT_EQ(graph.top, 2000.0);
    ASSERT_EQ(graph.columns.size(), 2u);
    EXPECT_EQ(graph.columns[1].offset, 2);
    EXPECT_EQ(graph.columns[1].volumes, (std::array<float, 4>{0.0f, 1000.0f, 1000.0f, 0.0f}));
    // Year 0 harvests half the rate; year 2 meets 98% of it.
    EXPECT_EQ(t.firstColours(), (std::vector<int32_t>{ColNMATURED, ColMATURED}));
    // A ticked constraint the year misses comes first: age before height.
    t.screen.chkConHeight = true;
    t.screen.txtHeightPerc = "70";
    EXPECT_EQ(t.firstColours(), (std::vector<int32_t>{ColHMATURED, ColMATURED}));
    t.screen.chkConAge = true;
    t.screen.txtAgePerc = "90";
    EXPECT_EQ(t.firstColours(), (std::vector<int32_t>{ColAMATURED, ColMATURED}));
    t.m.Calc.CalcHorizon = 0;
    EXPECT_TRUE(standingGraph(t.m, t.screen).empty());
}

TEST(HarvestTotals, YearsAndEntriesSumWithTheirSelectionLine) {
    Table t;
    const HarvestTotals years = yearTotals(t.m.Calc, 0, 2);
    EXPECT_EQ(years.volume, 1490.0);
    EXPECT_EQ(years.area, 5.25);
    EXPECT_EQ(selectionSummary(years, true), "3 years: 1,490m\xb3 / 5.3ha  = 283.8m\xb3/ha");
    HarvestTotals entries;
    CutRec cut;
    cut.CutVolume = 1200.0f;
    cut.CutArea = 4.0f;
    addEntry(entries, cut);
    addEntry(entries, cut);
    EXPECT_EQ(selectionSummary(entries, false), "2 entries: 2,400m\xb3  / 8.0ha  = 300.0m\xb3/ha");
    EXPECT_EQ(selectionSummary(HarvestTotals{}, true), "0 years: 0m\xb3 / 0.0ha  = 0.0m\xb3/ha");
    EXPECT_THROW(yearTotals(t.m.Calc, 0, 3), ArborexError);
}

}  // namespace
}  // namespace arborex
