#include "yield/harvest_ages.hpp"

namespace arborex {

void calcAllCutAges(Model& /*m*/, int /*model*/) {}

}  // namespace arborex
