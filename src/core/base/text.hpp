#pragma once
// Text helpers shared by every module: the trim rule and blank-padded fixed strings.
//
// The core's text is one byte a character, Latin-1, as project files and reference data hold
// it; a program text beyond ASCII writes its byte ("m\xb3/yr" for cubic metres a year). The
// screens and the batch front end convert at their edge.

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace arborex {

// Empty for empty text or text that begins with NUL; otherwise the text without outer blanks.
std::string trim(std::string_view text);
std::string toUpper(std::string_view text);
std::string toLower(std::string_view text);
// Case-insensitive equality of ASCII text.
bool equalsNoCase(std::string_view a, std::string_view b);

// A fixed string of N bytes, blank padded, one byte per character. The bytes are kept exactly
// as read so that a project round-trips byte for byte; comparisons go through str().
template <std::size_t N>
struct FixedString {
    std::array<char, N> bytes;

    FixedString() { bytes.fill(' '); }
    FixedString(std::string_view text) { assign(text); }  // NOLINT: implicit like an assignment

    // Stores `text` cut to N bytes and padded with blanks.
    void assign(std::string_view text) {
        bytes.fill(' ');
        text.copy(bytes.data(), text.size() < N ? text.size() : N);
    }
    FixedString& operator=(std::string_view text) {
        assign(text);
        return *this;
    }
    // The trimmed text.
    std::string str() const { return trim(std::string_view(bytes.data(), N)); }
    // All N bytes as stored.
    std::string raw() const { return std::string(bytes.data(), N); }
    static constexpr std::size_t size() { return N; }
    bool operator==(const FixedString&) const = default;
};

}  // namespace arborex
