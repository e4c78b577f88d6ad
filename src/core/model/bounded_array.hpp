#pragma once
// A dynamic array with a fixed lower bound (0 or 1), whose allocated size may differ from the
// "last" counter that goes with it: the project file writes every element the array holds,
// whatever the counter says. An empty table holds no element, so it writes none.

#include <cstddef>
#include <vector>

#include "base/errors.hpp"

namespace arborex {

template <typename T, int LowerBound>
class BoundedArray {
public:
    BoundedArray() = default;

    static constexpr int lowerBound() { return LowerBound; }
    int upperBound() const { return LowerBound + static_cast<int>(items_.size()) - 1; }
    std::size_t size() const { return items_.size(); }

    // Bounds are checked on every access: an index outside them is an unexpected failure.
    T& operator[](int index) { return items_[checked(index)]; }
    const T& operator[](int index) const { return items_[checked(index)]; }

    // Elements LowerBound..upper; contents kept, new elements zeroed. An upper bound below
    // the lower one empties the array.
    void resize(int upper) {
        items_.resize(upper < LowerBound ? 0 : static_cast<std::size_t>(upper - LowerBound + 1));
    }
    // Back to no element.
    void reset() { items_.clear(); }
    bool empty() const { return items_.empty(); }

    T* data() { return items_.data(); }
    const T* data() const { return items_.data(); }
    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }
    auto begin() const { return items_.begin(); }
    auto end() const { return items_.end(); }

private:
    std::size_t checked(int index) const {
        if (index < LowerBound || index > upperBound()) throw ArborexError(ErrSubscript);
        return static_cast<std::size_t>(index - LowerBound);
    }
    std::vector<T> items_;
};

}  // namespace arborex
