#pragma once
// Opening a project: the file's records, then the harvest ages of both curve models.

#include <string>

#include "base/host.hpp"
#include "model/model.hpp"

namespace arborex {

// Loads a project into `m`, replacing what was there, and works out the harvest ages of both
// curve models once its curves are in. Returns false for an empty path (in silence), a missing
// file, or a failure while reading; a failure is shown through the prompt with its number and
// text, and the model is left as far as the read had come, consistent in its array sizes.
// Nothing on disk changes.
bool LoadARX(Model& m, Host& host, const std::string& path);

}  // namespace arborex
