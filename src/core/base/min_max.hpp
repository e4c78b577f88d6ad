#pragma once
// The clamp of a numeric entry field, shared by every screen and by the batch's field setters.

#include <cstdint>
#include <string>

namespace arborex {

// Clamps the number in a numeric text field to low..high (low first, then high; text that is
// not a number counts as 0) and writes it back with `decimals` places.
void minMax(std::string& text, float low, float high, int16_t decimals);

}  // namespace arborex
