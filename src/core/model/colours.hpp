#pragma once
// Default screen and graph colours. A colour is stored as red + 256 * green + 65536 * blue.

#include <cstdint>

namespace arborex {

struct Model;

constexpr int32_t rgb(int red, int green, int blue) {
    return red + 256 * green + 65536 * blue;
}

// COLORS to the program's defaults. Runs at start and on every project load, before the
// user's settings are read, so a project's own colours matter only when no user value is set.
void setColours(Model& m);

// Settings keys of COLORS, in order.
extern const char* const kColourKeys[20];

}  // namespace arborex
