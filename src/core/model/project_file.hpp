#pragma once
// The .arx project file: fixed little-endian records read and written in one pass. Every
// version back to the first loads; 3226 is written, and 200 or 111 on request.

#include <cstdint>
#include <functional>
#include <string>

#include "base/host.hpp"
#include "model/model.hpp"

namespace arborex {

inline constexpr const char* kArxFilter = "Arborex for Windows (*.arx)|*.arx";

// What runs once the polygons and their curves are in, before the saved calculation is read:
// the harvest ages, which the model layer cannot work out itself.
using CurvesReadStep = std::function<void(Model&)>;

// The reading of LoadARX (frame/project_open.hpp, which adds the harvest ages): loads a project
// into `m`, replacing what was there. Returns false for an empty path (in silence), a missing
// file, or a failure while reading; a failure is shown through the prompt with its number and
// text, and the model is left as far as the read had come, consistent in its array sizes.
// Nothing on disk changes.
bool ReadArx(Model& m, Host& host, const std::string& path, const CurvesReadStep& curvesRead = {});

// Writes the model to `path` as `version` (3226, 200 or 111). With `purge`, first offers to
// remove soft-deleted polygons. The former file is kept as "<name>.bak". The file is written
// under a temporary name, synced to disk and renamed into place, so a failure (a full disk
// throws ErrDiskFull) leaves the former file and its .bak as they were, and a crash at any
// moment leaves the former or the new project under the name; failures throw ArborexError.
void SaveArx(Model& m, Host& host, const std::string& path, int16_t version, bool purge);

// Saves to the current project file, or asks for a name when there is none yet.
void SaveFile(Model& m, Host& host, bool purge);
// Asks for a name and saves as version 3226. Returns false when the user cancels.
bool SaveAsFile(Model& m, Host& host, bool purge);
// SaveAsFile without purging, as the error screen's backup button uses it.
bool Saveas(Model& m, Host& host);

// Finds a free "New Arborex File N.arx" name in the user's documents folder and makes it the
// display name, leaving the project path empty so that the first save asks for a name.
void NewFileName(Model& m);

// The name a save in a format below 3001 gives a polygon: an 8-character map sheet and a
// 4-character polygon number, split at the first blank, else the first "_", else after 7.
std::string oldFormatName(const std::string& name);

}  // namespace arborex
