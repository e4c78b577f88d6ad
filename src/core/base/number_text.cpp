#include "base/number_text.hpp"

#include <charconv>
#include <cstddef>
#include <system_error>

#include "base/errors.hpp"
#include "base/text.hpp"

namespace arborex {

namespace {

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

// The length of the number at the start of `text`, 0 when there is none. A dangling exponent
// ("1e", "1e+") is not part of the number.
std::size_t numberLength(std::string_view text) {
    std::size_t i = 0;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
    std::size_t digits = 0;
    while (i < text.size() && isDigit(text[i])) ++i, ++digits;
    if (i < text.size() && text[i] == '.') {
        ++i;
        while (i < text.size() && isDigit(text[i])) ++i, ++digits;
    }
    if (digits == 0) return 0;
    if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
        std::size_t j = i + 1;
        if (j < text.size() && (text[j] == '+' || text[j] == '-')) ++j;
        std::size_t expStart = j;
        while (j < text.size() && isDigit(text[j])) ++j;
        if (j > expStart) i = j;
    }
    return i;
}

// Whether a number that from_chars found out of range is too large rather than too small. With
// the mantissa written as 0.d... times 10^p, p counts the integer digits from the first
// significant one, or minus the zeros that follow the point; p plus the exponent decides.
bool tooLarge(std::string_view number) {
    if (!number.empty() && number.front() == '-') number.remove_prefix(1);
    std::size_t exponentAt = number.find_first_of("eE");
    std::string_view mantissa = number.substr(0, exponentAt);
    std::size_t point = mantissa.find('.');
    std::string_view whole = mantissa.substr(0, point);
    std::size_t firstSignificant = whole.find_first_not_of('0');
    long long p = 0;
    if (firstSignificant != std::string_view::npos) {
        p = static_cast<long long>(whole.size() - firstSignificant);
    } else if (point != std::string_view::npos) {
        std::string_view fraction = mantissa.substr(point + 1);
        std::size_t zeros = fraction.find_first_not_of('0');
        if (zeros == std::string_view::npos) return false;  // zero itself is never out of range
        p = -static_cast<long long>(zeros);
    }
    if (exponentAt == std::string_view::npos) return p > 0;
    std::string_view e = number.substr(exponentAt + 1);
    bool negative = !e.empty() && e.front() == '-';
    if (!e.empty() && (e.front() == '+' || e.front() == '-')) e.remove_prefix(1);
    long long exponent = 0;
    auto [ptr, ec] = std::from_chars(e.data(), e.data() + e.size(), exponent);
    (void)ptr;
    if (ec == std::errc::result_out_of_range) return !negative;
    return p + (negative ? -exponent : exponent) > 0;
}

// Converts text already known to match the grammar. from_chars takes no leading "+".
std::optional<double> convert(std::string_view number) {
    bool plus = !number.empty() && number.front() == '+';
    if (plus) number.remove_prefix(1);
    double value = 0.0;
    auto [ptr, ec] = std::from_chars(number.data(), number.data() + number.size(), value);
    (void)ptr;
    if (ec == std::errc::result_out_of_range) {
        if (tooLarge(number)) return std::nullopt;
        return 0.0;
    }
    if (ec != std::errc()) return std::nullopt;
    return value;
}

}  // namespace

double tolerantNumber(std::string_view text) {
    std::size_t start = text.find_first_not_of(" \t\r\n");
    if (start == std::string_view::npos) return 0.0;
    text.remove_prefix(start);
    std::size_t length = numberLength(text);
    if (length == 0) return 0.0;
    auto value = convert(text.substr(0, length));
    if (!value) throw ArborexError(ErrOverflow, std::string(text.substr(0, length)));
    return *value;
}

std::optional<double> strictNumber(std::string_view text) {
    std::string trimmed = trim(text);
    std::size_t length = numberLength(trimmed);
    if (length == 0 || length != trimmed.size()) return std::nullopt;
    return convert(trimmed);
}

std::string cleanCell(std::string_view cell) {
    std::string cleaned;
    for (char c : trim(cell)) {
        if (c == '$' || c == ',' || c == '%' || c == ' ') continue;
        cleaned += c == '+' ? '.' : c;
    }
    return cleaned;
}

std::optional<double> cellNumber(std::string_view cell) {
    return strictNumber(cleanCell(cell));
}

}  // namespace arborex
