#pragma once
// A polygon-by-row table stored in one block: row r of polygon p is at p * rowCount + r.
// Curves of a 32,768-polygon project hold millions of rows, so they are kept flat.

#include <cstddef>
#include <vector>

#include "base/errors.hpp"

namespace arborex {

template <typename T>
class YieldGrid {
public:
    int polygonCount() const { return polygons_; }
    int rowCount() const { return rows_; }

    T& operator()(int polygon, int row) { return cells_[checked(polygon, row)]; }
    const T& operator()(int polygon, int row) const { return cells_[checked(polygon, row)]; }
    // The rows of one polygon, rowCount() of them.
    T* rowsOf(int polygon) { return &cells_[checked(polygon, 0)]; }
    const T* rowsOf(int polygon) const { return &cells_[checked(polygon, 0)]; }

    // Resizes keeping every (polygon, row) cell that stays inside; new cells are zeroed.
    void resize(int polygons, int rows) {
        if (polygons < 0 || rows < 0) throw ArborexError(ErrSubscript);
        if (rows == rows_) {
            cells_.resize(static_cast<std::size_t>(polygons) * static_cast<std::size_t>(rows));
        } else {
            std::vector<T> next(static_cast<std::size_t>(polygons) *
                                static_cast<std::size_t>(rows));
            for (int p = 0; p < polygons && p < polygons_; ++p)
                for (int r = 0; r < rows && r < rows_; ++r)
                    next[static_cast<std::size_t>(p) * rows + r] =
                        cells_[static_cast<std::size_t>(p) * rows_ + r];
            cells_.swap(next);
        }
        polygons_ = polygons;
        rows_ = rows;
    }
    // Sized anew with every cell zeroed.
    void assign(int polygons, int rows) {
        if (polygons < 0 || rows < 0) throw ArborexError(ErrSubscript);
        cells_.assign(static_cast<std::size_t>(polygons) * static_cast<std::size_t>(rows), T{});
        polygons_ = polygons;
        rows_ = rows;
    }
    T* data() { return cells_.data(); }
    const T* data() const { return cells_.data(); }

private:
    std::size_t checked(int polygon, int row) const {
        if (polygon < 0 || polygon >= polygons_ || row < 0 || row >= rows_)
            throw ArborexError(ErrSubscript);
        return static_cast<std::size_t>(polygon) * static_cast<std::size_t>(rows_) +
               static_cast<std::size_t>(row);
    }
    std::vector<T> cells_;
    int polygons_ = 0;
    int rows_ = 0;
};

}  // namespace arborex
