#pragma once
// A site index worked out from a stand's age and height, as both models do when an inventory
// gives height and age but no site index.

#include <optional>

#include "growth/growth_model.hpp"

namespace arborex::standin {

// The site index at which the leading species of `stand` is `height` m tall at `age` years;
// nullopt when age or height is not above 0. Heights of the growth model scale with the site
// index, so the height at site index 1 answers it.
std::optional<float> siteIndexFromHeight(growth::StandInputs stand, int age, float height);

}  // namespace arborex::standin
