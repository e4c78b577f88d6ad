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

// "Copy": the block between two corners, in whichever order they were given, without the key
// row: cells by tabs, rows by CR LF.
std::string copyCellsText(const GridCells& cells, int row1, int col1, int row2, int col2);
// "Copy Table": the whole grid, key row included, cells trimmed and separated by tabs, rows by
// CR LF; the untitled (never shown) columns are left out.
std::string copyTableText(const GridCells& cells);

// A cell set by hand, pasted or filled down: the polygon is copied to the scratch polygon, the
// column's variable set through ImportItem, the scratch polygon stored back. Returns what the
// cell shows now (MakeVarStr); ImportItem's refusal, if any, is in `message`.
std::string commitGridCell(Model& m, int polygon, int column, std::string_view text,
                           std::string& message);

struct GridChange {
    int row = 0;  // grid row: polygon + 1
    int column = 0;
    std::string text;     // the cell's new text
    std::string message;  // ImportItem's refusal, empty when none
};
// "Paste": lines of tab-separated cells from grid row `row` and column `column` on; rows past
// the last polygon and columns past the last variable are dropped (a paste makes no polygon).
std::vector<GridChange> pasteGridText(Model& m, int row, int column, std::string_view text);
// "Fill Down": the first row's value of each column of the block, as it shows, set on every
// following row of the block.
std::vector<GridChange> fillDown(Model& m, int row1, int col1, int row2, int col2);

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
