#include "base/min_max.hpp"

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/number_text.hpp"

namespace arborex {

void minMax(std::string& text, float low, float high, int16_t decimals) {
    // Clamped while still a double, so that a huge entry never has to fit a float.
    double value = 0.0;
    try {
        value = tolerantNumber(text);
    } catch (const ArborexError&) {
        value = text.find('-') < text.find_first_of("0123456789") ? -1e300 : 1e300;
    }
    if (!(value >= low)) value = low;
    if (value > high) value = high;
    std::string pattern = "0";
    if (decimals > 0) {
        pattern += '.';
        pattern.append(static_cast<std::size_t>(decimals), '0');
    }
    text = formatNumber(static_cast<float>(value), pattern);
}

}  // namespace arborex
