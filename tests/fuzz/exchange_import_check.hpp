#pragma once
// What any polygon import must leave, whatever its input: every per-polygon array in step with
// LastPoly, the polygons that were there still there under their names, each polygon named,
// no name twice, and the counters adding up to what was added.

#include <set>
#include <string>
#include <vector>

#include "base/text.hpp"
#include "exchange/polygon_import.hpp"
#include "model/model.hpp"
#include "model/polygon_lifecycle.hpp"
#include "support/small_project.hpp"

namespace arborex::test {

// Two polygons to update or skip.
inline Model exchangeFuzzProject() {
    return smallProject({"A1", "093B045 7"});
}

// Empty when the import left a sound project; otherwise what is wrong.
inline std::string importDamage(const Model& before, const Model& after, const PolygonImport& run) {
    const auto count = static_cast<std::size_t>(after.LastPoly + 1);
    if (after.Poly.size() < count || after.PolyC.size() < count || after.PolyM.size() < count ||
        after.HarvAge.size() < count)
        return "arrays out of step with LastPoly";
    if (after.LastPoly - before.LastPoly != run.counts.ImpAdded) return "added count differs";
    if (run.counts.ImpSkipped < 0 || run.counts.ImpBlank < 0 || run.counts.ImpUpdated < 0 ||
        run.counts.ImpNoName < 0)
        return "negative counter";
    for (int p = 0; p <= before.LastPoly; ++p)
        if (after.Poly[static_cast<std::size_t>(p)].NAME !=
            before.Poly[static_cast<std::size_t>(p)].NAME)
            return "a polygon already in the project lost its name";
    std::set<std::string> names;
    for (std::size_t p = 0; p < count; ++p) {
        const std::string name = toUpper(after.Poly[p].NAME.str());
        if (name.empty()) return "a polygon without a name";
        if (!names.insert(name).second) return "two polygons named " + name;
    }
    return {};
}

}  // namespace arborex::test
