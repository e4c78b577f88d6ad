// Writes the installation's default polygon, data/DEFAULT.DEF: make_default_def [OUT].
// A new polygon starts as a young stand managed under VDYP now and TIPSY after harvest, with
// every harvest criterion and management factor left to the project's settings.

#include <exception>
#include <iostream>
#include <memory>

#include "model/default_polygon.hpp"
#include "model/model.hpp"
#include "model/polygon_lifecycle.hpp"

using namespace arborex;

namespace {

void buildDefaultPolygon(Model& m) {
    ResetVars(m);
    PolyData& p = m.DefaultPoly;
    PolyCalc& c = m.DefaultPolyC;
    PolyMgmt& g = m.DefaultPolyM;
    projectFollowingPolygon(p, c, g);
    p.VUTILIZ = 12.5f;  // cm: the usual close utilisation of the interior
    p.FIZ = "I";
    p.CLOSURE = -1;
    p.VAF = 1.0f;
    p.STOCKING = "0";
    p.DENSITY = 1600;  // planted stems per hectare
    p.REGEN = 1;
    p.MGNT = {0, 1};
    g.TUTILIZ = 12.5f;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string path = argc > 1 ? argv[1] : "data/DEFAULT.DEF";
    try {
        auto m = std::make_unique<Model>();
        buildDefaultPolygon(*m);
        SaveDefaultPolygon(*m, path);
    } catch (const std::exception& e) {
        std::cerr << "make_default_def: cannot write " << path << ": " << e.what() << '\n';
        return 1;
    }
    return 0;
}
