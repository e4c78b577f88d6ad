#pragma once
// Calculated harvest ages of every polygon under one curve model.

#include "model/model.hpp"

namespace arborex {

// Recomputes HarvAge(p, model) for every polygon from its curve of that model (0 VDYP,
// 1 TIPSY). Until curve queries exist the stored ages stand.
void calcAllCutAges(Model& m, int model);

}  // namespace arborex
