#pragma once
// A project of a few named polygons on a short age grid, for tests of polygon editing: each
// polygon follows the project's settings, is 10 ha, and its VDYP and TIPSY curves are current.

#include <initializer_list>

#include "model/model.hpp"
#include "model/polygon_lifecycle.hpp"

namespace arborex::test {

inline Model smallProject(std::initializer_list<const char*> names) {
    Model m;
    programDefaults(m);
    m.Settings.YieldMaxAge = {4, 20};
    m.Settings.YieldMinAge = {0, 0};
    m.Settings.YieldIncAge = {1, 10};
    SetAgeInc(m);
    EmptyArrays(m);
    for (const char* name : names) {
        PolyData data;
        PolyCalc calc;
        PolyMgmt mgmt;
        projectFollowingPolygon(data, calc, mgmt);
        data.NAME = name;
        data.AREA = 10.0f;
        data.YIELDSTATE = {3, 3};
        appendPolygon(m, data, calc, mgmt);
    }
    return m;
}

}  // namespace arborex::test
