#include "ui/frm_spreadsheet_model.hpp"

#include "exchange/variable_catalogue.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

GridModel::GridModel(QObject* parent) : QAbstractTableModel(parent) {
    cells_.emplace_back(kVariableCount);  // the key row, until the first fill
}

void GridModel::setCells(GridCells cells) {
    beginResetModel();
    cells_ = std::move(cells);
    warned_.clear();
    endResetModel();
}

bool GridModel::refreshCells(GridCells cells) {
    if (cells.size() != cells_.size()) {
        setCells(std::move(cells));
        return true;
    }
    cells_ = std::move(cells);
    if (rowCount() > 0) emit dataChanged(index(0, 0), index(rowCount() - 1, kVariableCount - 1));
    emit headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
    return false;
}

const std::string& GridModel::cell(int gridRow, int column) const {
    return cells_.at(static_cast<std::size_t>(gridRow)).at(static_cast<std::size_t>(column));
}

void GridModel::setCell(int gridRow, int column, const std::string& text) {
    cells_.at(static_cast<std::size_t>(gridRow)).at(static_cast<std::size_t>(column)) = text;
    const QModelIndex at = index(gridRow - 1, column);
    emit dataChanged(at, at, {Qt::DisplayRole});
    if (column == kNameVariable) emit headerDataChanged(Qt::Vertical, gridRow - 1, gridRow - 1);
}

void GridModel::setWarned(int gridRow, int column) {
    warned_.insert(keyOf(gridRow, column));
    const QModelIndex at = index(gridRow - 1, column);
    emit dataChanged(at, at, {Qt::BackgroundRole});
}

bool GridModel::warned(int gridRow, int column) const {
    return warned_.count(keyOf(gridRow, column)) > 0;
}

int GridModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : polygonRows();
}

int GridModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : kVariableCount;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const int gridRow = index.row() + 1;
    if (role == Qt::DisplayRole || role == Qt::EditRole) return lq(cell(gridRow, index.column()));
    if (role == Qt::BackgroundRole && warned(gridRow, index.column())) return WarnBack();
    return {};
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return QAbstractTableModel::headerData(section, orientation, role);
    if (orientation == Qt::Horizontal) {
        if (section < 0 || section >= kVariableCount) return {};
        return lq(cell(0, section));
    }
    if (section < 0 || section >= polygonRows()) return {};
    return lq(cell(section + 1, kNameVariable));
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
    // The grid's own floating editor does the editing: the view never opens one.
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::NoItemFlags;
}

}  // namespace arborex
