#include "standin/site_index.hpp"

namespace arborex::standin {

std::optional<float> siteIndexFromHeight(growth::StandInputs stand, int age, float height) {
    if (age <= 0 || height <= 0.0f || stand.species.empty()) return std::nullopt;
    stand.siteIndex = 1.0f;
    const float unitHeight = growth::naturalStandAt(stand, age).height;
    if (unitHeight <= 0.0f) return std::nullopt;
    return height / unitHeight;
}

}  // namespace arborex::standin
