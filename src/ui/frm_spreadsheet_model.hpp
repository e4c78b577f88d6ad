#pragma once
// The data grid's table as the view sees it: the core's cell texts computed in one pass, the key
// row as the column headers and the names as the row headers, so that both stay in view while
// the rest scrolls. Model row r is grid row r + 1 (polygon r); model column c is catalogue
// index c. Cells changed by hand keep the warn colour until the grid is rebuilt.

#include <QAbstractTableModel>
#include <QColor>
#include <string>
#include <unordered_set>

#include "exchange/grid_export.hpp"

namespace arborex {

class GridModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit GridModel(QObject* parent = nullptr);

    // Replaces every cell (ShowPolygons); the warn colour is cleared.
    void setCells(GridCells cells);
    // The same texts again without a reset, keeping the warn colour, when the shape holds; a
    // different number of polygons resets. Returns true when it reset.
    bool refreshCells(GridCells cells);
    const GridCells& cells() const { return cells_; }

    // A cell by grid row (1 for polygon 0) and catalogue column.
    const std::string& cell(int gridRow, int column) const;
    void setCell(int gridRow, int column, const std::string& text);
    void setWarned(int gridRow, int column);
    bool warned(int gridRow, int column) const;
    int polygonRows() const { return static_cast<int>(cells_.size()) - 1; }

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    static QColor WarnBack() { return QColor(255, 192, 192); }

private:
    static long long keyOf(int gridRow, int column) {
        return static_cast<long long>(gridRow) * 128 + column;
    }

    GridCells cells_;
    std::unordered_set<long long> warned_;
};

}  // namespace arborex
