#include "synthetic_project.hpp"

namespace arborex::bench {

namespace {

int16_t i2(int value) {
    return static_cast<int16_t>(value % 32000);
}

}  // namespace

Model syntheticProject(int polygons, Managements managements) {
    Model m;
    ResetVars(m);
    SetDefaults(m);
    ResizePolygonArrays(m, polygons);
    m.LastPoly = static_cast<int16_t>(polygons - 1);
    for (int p = 0; p < polygons; ++p) {
        const auto i = static_cast<std::size_t>(p);
        m.Poly[i].NAME = "093G" + std::to_string(p);
        m.Poly[i].AREA = 1.5f + static_cast<float>(p % 97);
        m.Poly[i].AGE = i2(p % 250);
        m.Poly[i].VS[0] = "FD";
        m.Poly[i].VP[0] = 100;
        if (managements == Managements::NaturalThenManaged)
            m.Poly[i].MGNT = {0, 1};
        else
            m.Poly[i].MGNT =
                p % 2 == 0 ? std::array<int16_t, 2>{0, 0} : std::array<int16_t, 2>{1, 1};
        m.Poly[i].YIELDSTATE = {3, 3};
        m.PolyC[i].SORT = i2(p);
        m.PolyC[i].VX.fill(1);
        m.PolyC[i].MINCUTAGE = {-1, -1};
        m.PolyC[i].MINCUTVOL = {-1.0f, -1.0f};
        m.PolyC[i].MINCUTDBH = {-1.0f, -1.0f};
        m.PolyM[i].TUTILIZ = 12.5f;
        m.HarvAge[i][0].HarvestAge = i2(60 + p % 40);
        m.HarvAge[i][1].HarvestAge = i2(50 + p % 30);
        for (int r = 0; r < m.VYield.rowCount(); ++r) {
            m.VYield(p, r) = {i2(r * 3 + p % 7), i2(r * 20 + p % 11), i2(r * 2 + p % 5),
                              0.01f * static_cast<float>(r + p % 13)};
            m.VMix(p, r) = {i2(600 + r % 10), i2(200), i2(100), i2(p % 50), 0, 0};
        }
        for (int r = 0; r < m.TYield.rowCount(); ++r)
            m.TYield(p, r) = {i2(r * 30 + p % 7), i2(r * 150 + p % 11), i2(r * 20 + p % 5),
                              0.1f * static_cast<float>(r + p % 13)};
    }
    m.CutOrderLast = 99;
    m.CutOrder.assign(100, 0);
    m.CutOrderKey.assign(100, 0);
    for (int i = 0; i < 100; ++i) m.CutOrder[static_cast<std::size_t>(i)] = i2(i * 300);
    return m;
}

}  // namespace arborex::bench
