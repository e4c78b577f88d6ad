// The harvest engine on real yield shapes: the VDYP7 tables of thirteen British Columbia layers
// (twelve polygons, one with two layers), read from the shared data folder, never copied here.
// Each table becomes one natural stand on the VDYP grid, as a VDYP run leaves it. Every test
// skips when the file is absent, so that a machine without the shared data stays green.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "base/file_names.hpp"
#include "base/numeric.hpp"
#include "frame/startup.hpp"
#include "harvest/calculate.hpp"
#include "harvest/simulation.hpp"
#include "model/polygon_lifecycle.hpp"
#include "report/schedule_issues.hpp"
#include "support/bc_yield_tables.hpp"
#include "support/calc_fixture.hpp"
#include "yield/curves.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex {
namespace {

using namespace test;  // the yield tables and their reader

int gridAge(const ProjectSettings& s, int k) {
    return s.YieldMinAge[0] + k * s.YieldIncAge[0];
}

int16_t tenths(double value) {
    return toI2(clamp32767(roundHalfEven(value * 10.0)));
}

// Inventory codes go through the species table's own lookup, aliases included (FDI is listed
// under FD); a code the table does not know falls back to its genus, the first letter.
int16_t speciesIndex(const Model& m, const std::string& code) {
    const int16_t exact = FindVSpecIdx(m.Ref, code);
    return exact != 0 ? exact : FindVSpecIdx(m.Ref, code.substr(0, 1));
}

// One natural stand, regrowing on the same curve after harvest. VDYP7 lists a species group
// twice when two inventory species fall into it (SE 50 and SE 30): they share one slot. As the
// VDYP import leaves a curve, MAI is the table's net volume over age, and Vol is then rebuilt
// as the sum of the species slots.
void addStand(Model& m, const YieldTable& t) {
    PolyData poly;
    PolyCalc calc;
    PolyMgmt mgmt;
    projectFollowingPolygon(poly, calc, mgmt);
    poly.NAME = t.name;
    poly.AREA = 5.0f + 3.0f * static_cast<float>(m.LastPoly + 1);  // 5 to 41 ha, 299 ha in all
    poly.AGE = toI2(t.currentAge);
    poly.MGNT = {0, 0};
    poly.YIELDSTATE = {2, 0};

    std::array<std::size_t, 6> slotOf{};
    std::size_t used = 0;
    for (std::size_t c = 0; c < t.species.size(); ++c) {
        const int16_t index = speciesIndex(m, t.species[c].first);
        std::size_t slot = 0;
        while (slot < used && poly.VSIDX[slot] != index) ++slot;
        if (slot == used) ++used;
        poly.VS[slot] = m.Ref.SpeciesV.at(static_cast<std::size_t>(index)).Code.str();
        poly.VSIDX[slot] = index;
        poly.VP[slot] = toI2(poly.VP[slot] + roundHalfEven(t.species[c].second));
        slotOf[c] = slot;
    }
    const int p = appendPolygon(m, poly, calc, mgmt);
    PolyCalc& added = m.PolyC[static_cast<std::size_t>(p)];
    added.SORT = added.LISTROW = toI2(p);
    const ProjectSettings& s = m.Settings;
    for (int k = 0; k <= s.YieldRows[0]; ++k) {
        const int age = gridAge(s, k);
        std::array<double, 6> share{};
        for (std::size_t c = 0; c < t.species.size(); ++c)
            share[slotOf[c]] += valueAt(t, age, FirstSpecies + c);
        int sum = 0;
        for (std::size_t slot = 0; slot < 6; ++slot)
            sum += m.VMix(p, k)[slot] = tenths(share[slot]);
        const float net = static_cast<float>(tenths(valueAt(t, age, Volume))) / 10.0f;
        const float mai = k == 0 ? 0.0f : net / static_cast<float>(age);
        m.VYield(p, k) = {tenths(valueAt(t, age, Diameter)), toI2(sum),
                          tenths(valueAt(t, age, Height)), mai};
    }
}

class BcLandBase : public ::testing::Test {
protected:
    void SetUp() override {
        if (!fileExists(bcYieldTableFile())) GTEST_SKIP() << bcYieldTableFile() << " is absent";
        Model& m = fx.m;
        programDefaults(m);
        m.Paths[ArborexFolder] = std::string(ARBOREX_SOURCE_DIR) + "/data/";
        LoadReferenceData(m, fx.host);
        tables = readBcYieldTables(fx.host);
        ASSERT_EQ(tables.size(), 13u);
        for (const YieldTable& table : tables) addStand(m, table);
        UpdateYields(m);  // confirms the curves, as after an import
    }

    CalcFixture fx{std::vector<TestStand>{}};
    std::vector<YieldTable> tables;
};

TEST_F(BcLandBase, HarvestAgesFollowTheCulminationOfEachTable) {
    Model& m = fx.m;
    const ProjectSettings& s = m.Settings;
    for (auto& ages : m.HarvAge) ages = {};
    calcAllCutAges(m, 0);
    for (int p = 0; p <= m.LastPoly; ++p) {
        const YieldTable& t = tables[static_cast<std::size_t>(p)];
        SCOPED_TRACE(t.name);
        // The culmination from the table's net volumes in the tenths the grid keeps (MAI is near
        // flat between two rows, so the rounding can move it by a year or two); the youngest grid
        // age wins a tie, as the curve store does.
        int culmination = s.YieldMinAge[0];
        double best = -1.0, most = 0.0, thickest = 0.0;
        for (int k = 0; k <= s.YieldRows[0]; ++k) {
            const int age = gridAge(s, k);
            const double volume = valueAt(t, age, Volume);
            const double mai = age == 0 ? 0.0 : tenths(volume) / 10.0 / age;
            if (mai > best) {
                best = mai;
                culmination = age;
            }
            most = std::max(most, volume);
            thickest = std::max(thickest, valueAt(t, age, Diameter));
        }
        const HarvAgeRec& ages = m.HarvAge[static_cast<std::size_t>(p)][0];
        ASSERT_GT(most, 0.0);
        EXPECT_EQ(ages.MaiAge, culmination);
        if (most < s.MINVOL || thickest < s.MINDIA) {
            EXPECT_EQ(ages.HarvestAge, 999);  // never cut
        } else {
            EXPECT_GE(ages.HarvestAge, std::max<int>(s.MINAGE, ages.MaiAge));
            EXPECT_LE(ages.HarvestAge, s.YieldMaxAge[0]);
        }
    }
    // A curve wiped before a new VDYP run has no culmination and no harvest age.
    clearVYield(m, 4);
    calcAllCutAges(m, 0);
    const HarvAgeRec& none = m.HarvAge[4][0];
    EXPECT_EQ(none.MaxMAI, 0.0f);
    EXPECT_EQ(std::vector<int>({none.MaiAge, none.VolAge, none.DiaAge, none.HarvestAge}),
              std::vector<int>({s.YieldMinAge[0], 999, 999, 999}));
}

TEST_F(BcLandBase, ExpansionReproducesEachTableAtItsGridAges) {
    Model& m = fx.m;
    fx.prepare();
    const ExpandedYields& yields = fx.run.Yields;
    const int top = m.Settings.YieldMaxAge[0];
    for (int p = 0; p <= m.LastPoly; ++p) {
        const YieldTable& t = tables[static_cast<std::size_t>(p)];
        SCOPED_TRACE(t.name);
        const int16_t index = yields.PolyCurveExisting[static_cast<std::size_t>(p)];
        ASSERT_NE(index, 0);
        EXPECT_EQ(yields.PolyCurveFuture[static_cast<std::size_t>(p)], index);
        const ExpandedCurve& curve = curveAt(yields, index);
        const auto total = [&curve](int age) {
            const CurveAge& a = curve.Age[static_cast<std::size_t>(age)];
            return a.ConVol + a.DecVol;
        };
        for (int k = 0; k <= m.Settings.YieldRows[0]; ++k) {
            const int age = gridAge(m.Settings, k);
            if (age > kExpandedTopAge) break;
            EXPECT_NEAR(total(age), m.VYield(p, k).Vol / 10.0f, 1e-3f);
        }
        for (int age = top; age <= kExpandedTopAge; ++age) EXPECT_EQ(total(age), total(top));
        // Against the file's own rows: each species slot was rounded to tenths on its own.
        const double slack = 0.05 * static_cast<double>(t.species.size()) + 0.01;
        for (const TableRow& row : t.rows) {
            if (row.age > top) break;
            double deciduous = 0.0;
            for (std::size_t c = 0; c < t.species.size(); ++c) {
                const auto species = static_cast<std::size_t>(speciesIndex(m, t.species[c].first));
                if (m.Ref.SpeciesV.at(species).Deciduous != 0)
                    deciduous += row.value[FirstSpecies + c];
            }
            EXPECT_NEAR(total(row.age), row.value[Volume], slack) << "age " << row.age;
            EXPECT_NEAR(curve.Age[static_cast<std::size_t>(row.age)].DecVol, deciduous, slack);
        }
    }
}

TEST_F(BcLandBase, RateSearchFindsASustainableRateNearHanzlik) {
    Model& m = fx.m;
    fx.prepare();
    fx.screen.chkCalcRate = true;
    ASSERT_TRUE(cmdCalculate(fx.session));
    EXPECT_TRUE(fx.host.prompt.shown.empty());  // no polygon skipped, no warning
    const double rate = fx.run.HarvestRate;
    const double hanzlik = fx.run.HanzlikRate;
    EXPECT_GT(rate, 0.0);
    EXPECT_GT(hanzlik, 0.0);
    // Hanzlik reads the stored curves, the search their expanded species volumes: a unit slip in
    // either puts the two ten times apart. A factor of two leaves room for what the formula
    // ignores (the surplus of old stands, the stands that never reach the minimum volume).
    EXPECT_GT(rate, hanzlik / 2.0);
    EXPECT_LT(rate, hanzlik * 2.0);

    const int horizon = m.Calc.CalcHorizon;
    const int firstCut = fx.run.FirstCutYear - fx.run.StartYear;
    const auto shortYears = [&](double atRate) {
        int count = 0;
        for (int y = firstCut; y < horizon; ++y) {
            const YearIssues issues = yearIssues(m.Calc.YearTable[y], IssueLimits{atRate});
            if (issues.noHarvest || issues.lowHarvest) ++count;
        }
        return count;
    };
    EXPECT_EQ(shortYears(rate), 0);

    // Each hectare can be cut at most once at the start and once per shortest harvest age after
    // it, never above the richest curve's top volume.
    double cut = 0.0, area = 0.0, richest = 0.0;
    int shortest = 999;
    for (int y = 0; y <= horizon; ++y)
        cut += m.Calc.YearTable[y].VolConifer + m.Calc.YearTable[y].VolDeciduous;
    for (int p = 0; p <= m.LastPoly; ++p) {
        area += m.Poly[static_cast<std::size_t>(p)].AREA;
        shortest = std::min<int>(shortest, targetHarvestAge(m, p, 0));
        for (int k = 0; k <= m.Settings.YieldRows[0]; ++k)
            richest = std::max(richest, m.VYield(p, k).Vol / 10.0);
    }
    EXPECT_LE(cut, area * richest * ((horizon + 1.0) / shortest + 1.0));

    fx.run.HarvestRate = 2.0 * rate;
    int16_t failed = 0;
    AVAC(fx.session, kFinalRun, failed);
    EXPECT_GT(shortYears(2.0 * rate), 0);
}

}  // namespace
}  // namespace arborex
