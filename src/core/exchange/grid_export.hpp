#pragma once
// The data grid's contents without the screen: the key row and a row per polygon, as the grid
// shows them and as its export writes them. The export's key row reads back as an import.

#include <string>
#include <string_view>
#include <vector>

#include "model/model.hpp"

namespace arborex {

using GridCells = std::vector<std::vector<std::string>>;

// Row 0 holds the keys (empty for a never-shown variable), row n + 1 polygon n's MakeVarStr
// texts; a column per catalogue index. Only the key row when there is no polygon.
GridCells gridCells(const Model& m);

// The grid's export: every row from the key row on, each cell trimmed and followed by a tab,
// lines ended by CR LF.
std::string gridExportText(const GridCells& cells);

// ExportTabCSV's text: each row's cells trimmed, `delimiter` between them, CR LF after each.
std::string tabCsvText(const GridCells& cells, std::string_view delimiter);
// Writes tabCsvText to `path`, replacing it. Throws ArborexError when it cannot.
void ExportTabCSV(const std::string& path, const GridCells& cells, std::string_view delimiter);
// Writes a whole text to `path`, replacing it. Throws ArborexError when it cannot.
void writeExportFile(const std::string& path, std::string_view text);

}  // namespace arborex
