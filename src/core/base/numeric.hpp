#pragma once
// Checked whole-number conversions. 16-bit fields never wrap: a value out of range is an
// overflow failure.

#include <cstdint>

namespace arborex {

// Nearest whole number, halves to the even neighbour (2.5 -> 2, 3.5 -> 4, -2.5 -> -2).
double roundHalfEven(double value);

// Rounds half to even, then checks the range; throws ArborexError(ErrOverflow) outside it.
int16_t toI2(double value);
int32_t toI4(double value);
// Whole-number forms that only check the range.
int16_t toI2(long long value);
int32_t toI4(long long value);
int16_t toI2(int value);
// A double stored to a float field: a value beyond the float range is an overflow, never an
// infinity.
float toF4(double value);

// numerator / denominator stored to a float. A zero divisor fails as the arithmetic does:
// ErrDivisionByZero, or ErrOverflow for 0 / 0 and for a result beyond the float range.
float quotient(double numerator, double denominator);
// Values above 32767 become 32767; used where curve values are stored.
double clamp32767(double value);

}  // namespace arborex
