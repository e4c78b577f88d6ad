#include "base/text.hpp"

#include <algorithm>
#include <cctype>

namespace arborex {

std::string trim(std::string_view text) {
    if (text.empty() || text.front() == '\0') return {};
    auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    auto last = text.find_last_not_of(' ');
    return std::string(text.substr(first, last - first + 1));
}

std::string toUpper(std::string_view text) {
    std::string out(text);
    for (char& c : out) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return out;
}

std::string toLower(std::string_view text) {
    std::string out(text);
    for (char& c : out) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return out;
}

bool equalsNoCase(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) ==
                      std::tolower(static_cast<unsigned char>(y));
           });
}

}  // namespace arborex
