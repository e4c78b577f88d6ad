// The grid's cell texts and its exports.

#include "exchange/grid_export.hpp"

#include <algorithm>

#include "base/atomic_file.hpp"
#include "base/text.hpp"
#include "exchange/import_item.hpp"
#include "exchange/polygon_import.hpp"
#include "exchange/text_import.hpp"
#include "exchange/variable_catalogue.hpp"
#include "exchange/variable_text.hpp"

namespace arborex {

GridCells gridCells(const Model& m) {
    const auto& catalogue = SetupVars();
    GridCells cells;
    std::vector<std::string>& keys = cells.emplace_back();
    for (const Variable& v : catalogue) keys.emplace_back(v.VarShow == -1 ? "" : v.VarKey);
    std::string message;
    for (int p = 0; p <= m.LastPoly; ++p) {
        std::vector<std::string>& row = cells.emplace_back();
        for (const Variable& v : catalogue) row.push_back(MakeVarStr(m, v.VarKey, p, message));
    }
    return cells;
}

std::string copyCellsText(const GridCells& cells, int row1, int col1, int row2, int col2) {
    std::string text;
    for (int r = std::max(1, std::min(row1, row2)); r <= std::max(row1, row2); ++r) {
        if (r >= static_cast<int>(cells.size())) break;
        const auto& row = cells[static_cast<std::size_t>(r)];
        for (int c = std::min(col1, col2); c <= std::max(col1, col2); ++c) {
            if (c > std::min(col1, col2)) text += '\t';
            if (c >= 0 && c < static_cast<int>(row.size()))
                text += row[static_cast<std::size_t>(c)];
        }
        text += "\r\n";
    }
    return text;
}

std::string copyTableText(const GridCells& cells) {
    std::string text;
    for (const auto& row : cells) {
        bool first = true;
        for (std::size_t c = 0; c < row.size(); ++c) {
            if (cells.front().size() > c && cells.front()[c].empty()) continue;
            if (!first) text += '\t';
            text += trim(row[c]);
            first = false;
        }
        text += "\r\n";
    }
    return text;
}

std::string commitGridCell(Model& m, int polygon, int column, std::string_view text,
                           std::string& message) {
    const std::string_view key = SetupVars().at(static_cast<std::size_t>(column)).VarKey;
    copyToScratch(m, polygon);
    ImportItem(m, key, trim(text), message);
    const auto p = static_cast<std::size_t>(polygon);
    m.Poly[p] = m.NewPoly;
    m.PolyC[p] = m.NewPolyC;
    m.PolyM[p] = m.NewPolyM;
    std::string ignored;
    return MakeVarStr(m, key, polygon, ignored);
}

std::vector<GridChange> pasteGridText(Model& m, int row, int column, std::string_view text) {
    std::vector<GridChange> changes;
    const std::vector<std::string> lines = splitLines(text);
    for (std::size_t l = 0; l < lines.size(); ++l) {
        const int r = row + static_cast<int>(l);
        if (r < 1 || r > m.LastPoly + 1) break;
        const std::vector<std::string> pieces = splitOn(lines[l], "\t");
        for (std::size_t i = 0; i < pieces.size(); ++i) {
            const int c = column + static_cast<int>(i);
            if (c < 1 || c >= kVariableCount) break;
            GridChange& change = changes.emplace_back(GridChange{r, c, {}, {}});
            change.text = commitGridCell(m, r - 1, c, pieces[i], change.message);
        }
    }
    return changes;
}

std::vector<GridChange> fillDown(Model& m, int row1, int col1, int row2, int col2) {
    std::vector<GridChange> changes;
    const int top = std::max(1, std::min(row1, row2));
    const int bottom = std::min(std::max(row1, row2), m.LastPoly + 1);
    const int left = std::max(1, std::min(col1, col2));
    const int right = std::min(std::max(col1, col2), kVariableCount - 1);
    if (top > bottom) return changes;
    for (int c = left; c <= right; ++c) {
        std::string message;
        const std::string value =
            MakeVarStr(m, SetupVars()[static_cast<std::size_t>(c)].VarKey, top - 1, message);
        for (int r = top + 1; r <= bottom; ++r) {
            GridChange& change = changes.emplace_back(GridChange{r, c, {}, {}});
            change.text = commitGridCell(m, r - 1, c, value, change.message);
        }
    }
    return changes;
}

std::string gridExportText(const GridCells& cells) {
    std::string text;
    for (const auto& row : cells) {
        for (const std::string& cell : row) text += trim(cell) + "\t";
        text += "\r\n";
    }
    return text;
}

std::string tabCsvText(const GridCells& cells, std::string_view delimiter) {
    std::string text;
    for (const auto& row : cells) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            if (i > 0) text += delimiter;
            text += trim(row[i]);
        }
        text += "\r\n";
    }
    return text;
}

// An export that fails half way must not leave a cut-off file where the user's table was.
void writeExportFile(const std::string& path, std::string_view text) {
    writeFileAtomically(path, text);
}

void ExportTabCSV(const std::string& path, const GridCells& cells, std::string_view delimiter) {
    writeExportFile(path, tabCsvText(cells, delimiter));
}

}  // namespace arborex
