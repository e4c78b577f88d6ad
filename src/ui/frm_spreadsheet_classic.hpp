#pragma once
// The classic delimited format's two menu entries, the same on the polygon screen
// (mnuExpCSV, mnuImpCSV) and on the data grid (mnuExportOld, mnuImportOld).

#include "base/host.hpp"
#include "model/model.hpp"

namespace arborex {

// "Export File": tab delimited for the .txt choice, comma and blank for the .csv choice.
void exportClassicFile(Model& m, Host& host);
// "Import Data File": tab or comma by the choice. True when the import ran, so that screens
// listing polygons show them again.
bool importClassicFile(Model& m, Host& host);

}  // namespace arborex
