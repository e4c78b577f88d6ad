#include "base/numeric.hpp"

#include <cmath>
#include <limits>

#include "base/errors.hpp"

namespace arborex {

double roundHalfEven(double value) {
    // nearbyint follows the current rounding mode, which is to-nearest-even unless changed.
    return std::nearbyint(value);
}

int16_t toI2(double value) {
    if (std::isnan(value)) throw ArborexError(ErrOverflow);
    double r = roundHalfEven(value);
    if (r < -32768.0 || r > 32767.0) throw ArborexError(ErrOverflow);
    return static_cast<int16_t>(r);
}

int32_t toI4(double value) {
    if (std::isnan(value)) throw ArborexError(ErrOverflow);
    double r = roundHalfEven(value);
    if (r < -2147483648.0 || r > 2147483647.0) throw ArborexError(ErrOverflow);
    return static_cast<int32_t>(r);
}

int16_t toI2(long long value) {
    if (value < std::numeric_limits<int16_t>::min() || value > std::numeric_limits<int16_t>::max())
        throw ArborexError(ErrOverflow);
    return static_cast<int16_t>(value);
}

int16_t toI2(int value) {
    return toI2(static_cast<long long>(value));
}

int32_t toI4(long long value) {
    if (value < std::numeric_limits<int32_t>::min() || value > std::numeric_limits<int32_t>::max())
        throw ArborexError(ErrOverflow);
    return static_cast<int32_t>(value);
}

float toF4(double value) {
    if (std::fabs(value) > static_cast<double>(std::numeric_limits<float>::max()))
        throw ArborexError(ErrOverflow);
    return static_cast<float>(value);
}

float quotient(double numerator, double denominator) {
    if (denominator == 0.0) throw ArborexError(numerator == 0.0 ? ErrOverflow : ErrDivisionByZero);
    return toF4(numerator / denominator);
}

double clamp32767(double value) {
    return value > 32767.0 ? 32767.0 : value;
}

}  // namespace arborex
