#include "base/display_format.hpp"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <vector>

#include "base/dates.hpp"
#include "base/text.hpp"

namespace arborex {

namespace {

// ---------------------------------------------------------------------------------------------
// Numbers

constexpr int kDoubleDigits = 15;
constexpr int kFloatDigits = 7;

// |value| as 15 significant decimal digits: value = 0.digits * 10^pointPosition.
struct Decimal {
    std::string digits;
    int pointPosition = 0;
};

Decimal toDecimal(double value, int significant) {
    std::array<char, 48> buffer{};
    auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::fabs(value),
                                std::chars_format::scientific, significant - 1);
    std::string_view text(buffer.data(), static_cast<std::size_t>(result.ptr - buffer.data()));
    std::size_t e = text.find('e');
    Decimal d;
    for (char c : text.substr(0, e))
        if (c != '.') d.digits += c;
    d.pointPosition = std::atoi(std::string(text.substr(e + 1)).c_str()) + 1;
    return d;
}

// The digits of |value| * 10^fractionDigits rounded half away from zero, without leading zeros
// ("0" for zero). The rounding looks at the 15-digit decimal, not at the binary value.
std::string roundedDigits(const Decimal& d, int fractionDigits) {
    int keep = d.pointPosition + fractionDigits;
    if (keep < 0) return "0";
    std::string kept;
    if (keep >= static_cast<int>(d.digits.size())) {
        kept = d.digits + std::string(static_cast<std::size_t>(keep) - d.digits.size(), '0');
    } else {
        kept = d.digits.substr(0, static_cast<std::size_t>(keep));
        if (d.digits[static_cast<std::size_t>(keep)] >= '5') {
            int i = static_cast<int>(kept.size()) - 1;
            for (; i >= 0 && kept[static_cast<std::size_t>(i)] == '9'; --i)
                kept[static_cast<std::size_t>(i)] = '0';
            if (i >= 0)
                ++kept[static_cast<std::size_t>(i)];
            else
                kept.insert(kept.begin(), '1');
        }
    }
    std::size_t first = kept.find_first_not_of('0');
    return first == std::string::npos ? "0" : kept.substr(first);
}

enum class TokenKind { Required, Optional, Point, Comma, Percent, Literal };

struct Token {
    TokenKind kind;
    char literal = 0;
};

std::vector<Token> tokenizeNumberPattern(std::string_view pattern) {
    std::vector<Token> tokens;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        char c = pattern[i];
        switch (c) {
            case '0':
                tokens.push_back({TokenKind::Required});
                break;
            case '#':
                tokens.push_back({TokenKind::Optional});
                break;
            case '.':
                tokens.push_back({TokenKind::Point});
                break;
            case ',':
                tokens.push_back({TokenKind::Comma});
                break;
            case '%':
                tokens.push_back({TokenKind::Percent});
                break;
            case '\\':
                if (i + 1 < pattern.size()) tokens.push_back({TokenKind::Literal, pattern[++i]});
                break;
            case '"':
                while (++i < pattern.size() && pattern[i] != '"')
                    tokens.push_back({TokenKind::Literal, pattern[i]});
                break;
            default:
                tokens.push_back({TokenKind::Literal, c});
                break;
        }
    }
    return tokens;
}

bool isPlaceholder(const Token& t) {
    return t.kind == TokenKind::Required || t.kind == TokenKind::Optional;
}

// The 15-digit general form of an empty pattern.
std::string generalNumber(double value, int significant) {
    if (value == 0.0) return "0";
    Decimal d = toDecimal(value, significant);
    std::string digits = d.digits.substr(0, d.digits.find_last_not_of('0') + 1);
    std::string out = value < 0 ? "-" : "";
    int exponent = d.pointPosition - 1;
    if (exponent < -4 || exponent >= significant) {
        out += digits.substr(0, 1);
        if (digits.size() > 1) {
            out += '.';
            out += digits.substr(1);
        }
        std::string power = std::to_string(std::abs(exponent));
        if (power.size() < 2) power.insert(power.begin(), '0');
        return out + (exponent < 0 ? "E-" : "E+") + power;
    }
    if (d.pointPosition <= 0) return out + "0." + std::string(-d.pointPosition, '0') + digits;
    std::size_t whole = static_cast<std::size_t>(d.pointPosition);
    if (digits.size() <= whole) return out + digits + std::string(whole - digits.size(), '0');
    return out + digits.substr(0, whole) + "." + digits.substr(whole);
}

}  // namespace

static std::string formatWithDigits(double value, std::string_view pattern, int significant) {
    if (std::isnan(value)) return "NaN";
    if (std::isinf(value)) return value < 0 ? "-Infinity" : "Infinity";
    if (pattern.empty()) return generalNumber(value, significant);

    std::vector<Token> tokens = tokenizeNumberPattern(pattern);
    std::size_t pointAt = tokens.size();
    for (std::size_t i = 0; i < tokens.size(); ++i)
        if (tokens[i].kind == TokenKind::Point) {
            pointAt = i;
            break;
        }
    // A pattern without integer placeholders still shows the integer digits, before the point.
    bool hasIntegerPlaceholder = false;
    for (std::size_t i = 0; i < pointAt; ++i) hasIntegerPlaceholder |= isPlaceholder(tokens[i]);
    if (!hasIntegerPlaceholder) {
        tokens.insert(tokens.begin() + static_cast<std::ptrdiff_t>(pointAt), {TokenKind::Optional});
        ++pointAt;
    }

    // Integer placeholders from the first "0" on are always shown; fraction placeholders up to
    // the last "0".
    int integerPlaces = 0, firstRequiredPlace = -1, fractionPlaces = 0, requiredFraction = 0;
    bool grouping = false, percent = false;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const Token& t = tokens[i];
        if (t.kind == TokenKind::Percent) percent = true;
        if (i < pointAt) {
            if (t.kind == TokenKind::Required && firstRequiredPlace < 0)
                firstRequiredPlace = integerPlaces;
            if (isPlaceholder(t)) ++integerPlaces;
            if (t.kind == TokenKind::Comma && integerPlaces > 0) grouping = true;
        } else if (isPlaceholder(t)) {
            ++fractionPlaces;
            if (t.kind == TokenKind::Required) requiredFraction = fractionPlaces;
        }
    }
    const int requiredIntegerPlaces =
        firstRequiredPlace < 0 ? 0 : integerPlaces - firstRequiredPlace;

    Decimal decimal = toDecimal(value, significant);
    if (percent) decimal.pointPosition += 2;
    std::string scaled = roundedDigits(decimal, fractionPlaces);
    bool showsZero = scaled == "0";
    if (scaled.size() <= static_cast<std::size_t>(fractionPlaces))
        scaled.insert(0, static_cast<std::size_t>(fractionPlaces) + 1 - scaled.size(), '0');
    std::string integerDigits = scaled.substr(0, scaled.size() - fractionPlaces);
    std::string fractionDigits = scaled.substr(scaled.size() - fractionPlaces);
    if (integerDigits == "0") integerDigits.clear();
    if (integerDigits.size() < static_cast<std::size_t>(requiredIntegerPlaces))
        integerDigits.insert(0, requiredIntegerPlaces - integerDigits.size(), '0');
    int shownFraction = fractionPlaces;
    while (shownFraction > requiredFraction && fractionDigits[shownFraction - 1] == '0')
        --shownFraction;

    // Digits of the integer part fill the placeholders from the right; the leftmost one takes
    // whatever does not fit.
    std::string out = value < 0 && !showsZero ? "-" : "";
    const int integerCount = static_cast<int>(integerDigits.size());
    int integerPlace = 0, fractionPlace = 0, nextDigit = 0;
    auto emitIntegerDigit = [&](int index) {
        out += integerDigits[static_cast<std::size_t>(index)];
        int fromRight = integerCount - index;
        if (grouping && fromRight > 1 && (fromRight - 1) % 3 == 0) out += ',';
    };
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const Token& t = tokens[i];
        if (isPlaceholder(t) && i < pointAt) {
            int placesAfter = integerPlaces - integerPlace - 1;
            for (; nextDigit < integerCount - placesAfter; ++nextDigit) emitIntegerDigit(nextDigit);
            ++integerPlace;
        } else if (isPlaceholder(t)) {
            if (fractionPlace < shownFraction) out += fractionDigits[fractionPlace];
            ++fractionPlace;
        } else if (t.kind == TokenKind::Point) {
            if (i == pointAt) out += '.';
        } else if (t.kind == TokenKind::Percent) {
            out += '%';
        } else if (t.kind == TokenKind::Literal) {
            out += t.literal;
        }
    }
    return out;
}

namespace {

// ---------------------------------------------------------------------------------------------
// Dates

constexpr std::array<std::string_view, 12> kMonthNames = {
    "January", "February", "March",     "April",   "May",      "June",
    "July",    "August",   "September", "October", "November", "December"};
constexpr std::array<std::string_view, 7> kDayNames = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                       "Thursday", "Friday", "Saturday"};

constexpr std::string_view kShortDate = "yyyy-mm-dd";
constexpr std::string_view kLongDate = "dddd, mmmm d, yyyy";
constexpr std::string_view kLongTime = "h:mm:ss AM/PM";

// A date field ("d" to "dddddd", "m", "h", ...), a 12-hour marker ("AM/PM" as written) or a
// literal character.
struct DateToken {
    char field = 0;  // lower-case letter of a field, 0 otherwise
    int length = 0;
    std::string_view marker;
    char literal = 0;

    static DateToken ofField(char letter, int length) { return {letter, length, {}, 0}; }
    static DateToken ofMarker(std::string_view text) { return {0, 0, text, 0}; }
    static DateToken ofLiteral(char c) { return {0, 0, {}, c}; }
};

char lowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

int longestField(char field, int run) {
    switch (field) {
        case 'd':
            return run < 6 ? run : 6;
        case 'm':
            return run < 4 ? run : 4;
        case 'y':
            return run >= 4 ? 4 : run >= 2 ? 2 : 1;
        case 'h':
        case 'n':
        case 's':
            return run < 2 ? run : 2;
        default:
            return 1;
    }
}

bool startsWithNoCase(std::string_view text, std::size_t at, std::string_view word) {
    return text.size() - at >= word.size() && equalsNoCase(text.substr(at, word.size()), word);
}

std::vector<DateToken> tokenizeDatePattern(std::string_view pattern) {
    std::vector<DateToken> tokens;
    for (std::size_t i = 0; i < pattern.size();) {
        char c = pattern[i];
        char lower = lowerAscii(c);
        if (startsWithNoCase(pattern, i, "am/pm") || startsWithNoCase(pattern, i, "a/p")) {
            std::size_t length = startsWithNoCase(pattern, i, "am/pm") ? 5 : 3;
            tokens.push_back(DateToken::ofMarker(pattern.substr(i, length)));
            i += length;
        } else if (std::string_view("dmyhnswq").find(lower) != std::string_view::npos) {
            int run = 0;
            while (i + run < pattern.size() && lowerAscii(pattern[i + run]) == lower) ++run;
            int length = longestField(lower, run);
            tokens.push_back(DateToken::ofField(lower, length));
            i += static_cast<std::size_t>(length);
        } else if (c == '\\' && i + 1 < pattern.size()) {
            tokens.push_back(DateToken::ofLiteral(pattern[i + 1]));
            i += 2;
        } else if (c == '"') {
            while (++i < pattern.size() && pattern[i] != '"')
                tokens.push_back(DateToken::ofLiteral(pattern[i]));
            ++i;
        } else {
            tokens.push_back(DateToken::ofLiteral(c));
            ++i;
        }
    }
    return tokens;
}

// "m" and "mm" stand for minutes right after an hour field or right before a seconds field.
bool isMinuteField(const std::vector<DateToken>& tokens, std::size_t at) {
    for (std::size_t i = at; i-- > 0;)
        if (tokens[i].field != 0) {
            if (tokens[i].field == 'h') return true;
            break;
        }
    for (std::size_t i = at + 1; i < tokens.size(); ++i)
        if (tokens[i].field != 0) return tokens[i].field == 's';
    return false;
}

std::string padded(int number, int width) {
    std::string text = std::to_string(number);
    if (static_cast<int>(text.size()) < width) text.insert(0, width - text.size(), '0');
    return text;
}

int dayOfYear(const DateTimeParts& p) {
    DateTimeParts date{p.year, p.month, p.day};
    DateTimeParts newYear{p.year, 1, 1};
    return static_cast<int>(dayCountFromParts(date) - dayCountFromParts(newYear)) + 1;
}

std::string formatParts(const DateTimeParts& p, std::string_view pattern) {
    std::vector<DateToken> tokens = tokenizeDatePattern(pattern);
    bool twelveHour = false;
    for (const DateToken& t : tokens) twelveHour |= !t.marker.empty();
    int hour = p.hour;
    if (twelveHour) hour = p.hour % 12 == 0 ? 12 : p.hour % 12;

    std::string out;
    for (std::size_t i = 0; i < tokens.size(); ++i) {
        const DateToken& t = tokens[i];
        if (!t.marker.empty()) {
            std::size_t slash = t.marker.find('/');
            out += p.hour < 12 ? t.marker.substr(0, slash) : t.marker.substr(slash + 1);
            continue;
        }
        switch (t.field) {
            case 0:
                out += t.literal;
                break;
            case 'd':
                if (t.length <= 2) out += padded(p.day, t.length);
                if (t.length == 3) out += kDayNames[p.weekday()].substr(0, 3);
                if (t.length == 4) out += kDayNames[p.weekday()];
                if (t.length == 5) out += formatParts(p, kShortDate);
                if (t.length == 6) out += formatParts(p, kLongDate);
                break;
            case 'm':
                if (t.length <= 2 && isMinuteField(tokens, i)) {
                    out += padded(p.minute, t.length);
                } else {
                    std::string_view name = kMonthNames[p.month - 1];
                    if (t.length <= 2) out += padded(p.month, t.length);
                    if (t.length == 3) out += name.substr(0, 3);
                    if (t.length == 4) out += name;
                }
                break;
            case 'y':
                if (t.length == 1) out += std::to_string(dayOfYear(p));
                if (t.length == 2) out += padded(p.year % 100, 2);
                if (t.length == 4) out += padded(p.year, 4);
                break;
            case 'h':
                out += padded(hour, t.length);
                break;
            case 'n':
                out += padded(p.minute, t.length);
                break;
            case 's':
                out += padded(p.second, t.length);
                break;
            case 'w':
                out += std::to_string(p.weekday() + 1);
                break;
            case 'q':
                out += std::to_string((p.month - 1) / 3 + 1);
                break;
        }
    }
    return out;
}

}  // namespace

std::string formatNumber(double value, std::string_view pattern) {
    return formatWithDigits(value, pattern, kDoubleDigits);
}

std::string formatNumber(float value, std::string_view pattern) {
    return formatWithDigits(static_cast<double>(value), pattern, kFloatDigits);
}

std::string formatNumber(int value, std::string_view pattern) {
    return formatWithDigits(static_cast<double>(value), pattern, kDoubleDigits);
}

std::string formatDate(double dayCount, std::string_view pattern) {
    DateTimeParts parts = partsFromDayCount(dayCount);
    std::string name = trim(pattern);
    if (equalsNoCase(name, "General Date")) {
        bool hasTime = parts.hour != 0 || parts.minute != 0 || parts.second != 0;
        bool hasDate = std::trunc(dayCount) != 0.0;
        if (!hasTime) return formatParts(parts, kShortDate);
        if (!hasDate) return formatParts(parts, kLongTime);
        return formatParts(parts, kShortDate) + " " + formatParts(parts, kLongTime);
    }
    if (equalsNoCase(name, "Long Date")) return formatParts(parts, kLongDate);
    if (equalsNoCase(name, "Medium Date")) return formatParts(parts, "dd-mmm-yy");
    if (equalsNoCase(name, "Short Date")) return formatParts(parts, kShortDate);
    if (equalsNoCase(name, "Long Time")) return formatParts(parts, kLongTime);
    if (equalsNoCase(name, "Medium Time")) return formatParts(parts, "hh:mm AM/PM");
    if (equalsNoCase(name, "Short Time")) return formatParts(parts, "hh:mm");
    return formatParts(parts, pattern);
}

}  // namespace arborex
