#include "support/calc_fixture.hpp"

#include "model/polygon_lifecycle.hpp"

namespace arborex::test {

CalcFixture::CalcFixture(const std::vector<TestStand>& stands) {
    ResetVars(m);
    SetDefaults(m);
    EmptyArrays(m);
    SpeciesRec pine;
    pine.Code = "PL";
    m.Ref.SpeciesV.push_back(pine);
    m.Ref.SpeciesVCount = 1;
    m.Ref.SpeciesT.push_back(pine);
    m.Ref.SpeciesTCount = 1;
    for (const TestStand& stand : stands) {
        PolyData poly;
        PolyCalc calc;
        PolyMgmt mgmt;
        projectFollowingPolygon(poly, calc, mgmt);
        poly.NAME = stand.name.empty() ? "P" + std::to_string(m.LastPoly + 1) : stand.name;
        poly.AREA = stand.area;
        poly.AGE = stand.age;
        poly.MGNT = {stand.existing, stand.future};
        poly.HAR = {stand.harvestAge, stand.harvestAge};
        poly.YIELDSTATE = {3, 3};
        poly.VS[0] = "PL";
        poly.VSIDX[0] = 1;
        poly.VP[0] = 100;
        poly.TS[0] = "PL";
        poly.TSIDX[0] = 1;
        poly.TP[0] = 100;
        calc.VX = {1, 0, 0, 0, 0, 0};
        const int p = appendPolygon(m, poly, calc, mgmt);
        m.PolyC[static_cast<std::size_t>(p)].SORT = 1;
        for (int k = 0; k < m.VYield.rowCount(); ++k) {
            const int age = m.Settings.YieldMinAge[0] + k * m.Settings.YieldIncAge[0];
            const auto tenths = static_cast<int16_t>(stand.volumePerYear * 10.0f * age);
            m.VYield(p, k) = {static_cast<int16_t>(age * 3), tenths, static_cast<int16_t>(age * 2),
                              0.0f};
            m.VMix(p, k)[0] = tenths;
        }
        for (int k = 0; k < m.TYield.rowCount(); ++k) {
            const int age = m.Settings.YieldMinAge[1] + k * m.Settings.YieldIncAge[1];
            m.TYield(p, k) = {static_cast<int16_t>(age * 3),
                              static_cast<int16_t>(stand.volumePerYear * 10.0f * age),
                              static_cast<int16_t>(age * 2), 0.0f};
        }
        m.HarvAge[static_cast<std::size_t>(p)][0].HarvestAge = stand.harvestAge;
        m.HarvAge[static_cast<std::size_t>(p)][1].HarvestAge = stand.harvestAge;
    }
    screen.chkCut = {true, true, true, true};
    run.FixedStartYear = 2030;
}

void CalcFixture::prepare() {
    ExpandYields(m, host.status, run.Yields);
    screen.lstCutOrder = {};
    for (int p = 0; p <= m.LastPoly; ++p)
        screen.lstCutOrder[IncludedList].push_back(
            {m.Poly[static_cast<std::size_t>(p)].NAME.str(), static_cast<int16_t>(p)});
}

}  // namespace arborex::test
