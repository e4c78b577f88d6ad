// The grid's cell texts and its exports.

#include "exchange/grid_export.hpp"

#include <fstream>

#include "base/errors.hpp"
#include "base/text.hpp"
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

void writeExportFile(const std::string& path, std::string_view text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out || !out.write(text.data(), static_cast<std::streamsize>(text.size())))
        throw ArborexError(ErrPathFileAccess, path);
}

void ExportTabCSV(const std::string& path, const GridCells& cells, std::string_view delimiter) {
    writeExportFile(path, tabCsvText(cells, delimiter));
}

}  // namespace arborex
