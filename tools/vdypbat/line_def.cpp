#include "vdypbat/line_def.hpp"

#include <charconv>
#include <sstream>

#include "base/text.hpp"

namespace arborex::vdypbat {
namespace {

enum class Block { None, Input, Output, Error };

std::optional<int> wholeNumber(const std::string& text) {
    int value = 0;
    const char* end = text.data() + text.size();
    const auto [ptr, ec] = std::from_chars(text.data(), end, value);
    if (ec != std::errc() || ptr != end) return std::nullopt;
    return value;
}

// A line without its enclosing quotation marks and outer blanks.
std::string unquoted(const std::string& line) {
    std::string text = trim(line);
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"')
        text = trim(text.substr(1, text.size() - 2));
    return text;
}

std::vector<std::string> words(const std::string& text) {
    std::istringstream in(text);
    std::vector<std::string> result;
    for (std::string word; in >> word;) result.push_back(word);
    return result;
}

// One field line of a block: name, type, column, width and, for numbers, decimals.
bool readField(const std::vector<std::string>& w, LineDef& def, Block block) {
    if (w.size() < 3) return false;
    if (equalsNoCase(w[1], "ConstantInteger")) {
        const auto value = wholeNumber(w[2]);
        if (!value) return false;
        def.constants[toUpper(w[0])] = *value;
        return true;
    }
    if (w.size() < 4 || w.size() > 5) return false;
    FieldDef field{w[0], w[1], 0, 0, 0};
    const auto column = wholeNumber(w[2]);
    const auto width = wholeNumber(w[3]);
    const auto decimals = w.size() == 5 ? wholeNumber(w[4]) : std::optional<int>(0);
    if (!column || !width || !decimals || *column < 1 || *width == 0) return false;
    field.column = *column;
    field.width = *width;
    field.decimals = *decimals;
    auto& fields = block == Block::Input    ? def.input
                   : block == Block::Output ? def.output
                                            : def.error;
    fields.push_back(field);
    return true;
}

}  // namespace

const FieldDef* LineDef::find(const std::vector<FieldDef>& fields, std::string_view name) {
    for (const FieldDef& field : fields)
        if (equalsNoCase(field.name, name)) return &field;
    return nullptr;
}

std::optional<int> LineDef::constant(std::string_view name) const {
    const auto found = constants.find(toUpper(name));
    if (found == constants.end()) return std::nullopt;
    return found->second;
}

std::optional<LineDef> parseLineDef(const std::vector<std::string>& lines, std::string& problem) {
    LineDef def;
    Block block = Block::None;
    bool seen[4] = {};
    int number = 0;
    for (const std::string& raw : lines) {
        ++number;
        const std::string text = unquoted(raw);
        if (text.empty()) continue;
        const std::vector<std::string> w = words(text);
        if (w.size() == 1) {
            const std::string& word = w[0];
            if (equalsNoCase(word, "EndLineDef") ||
                (block == Block::Error && equalsNoCase(word, "ErrorLineDef"))) {
                block = Block::None;
                continue;
            }
            if (block == Block::None) {
                if (equalsNoCase(word, "InLineDef")) block = Block::Input;
                if (equalsNoCase(word, "OutLineDef")) block = Block::Output;
                if (equalsNoCase(word, "ErrorLineDef")) block = Block::Error;
                if (block != Block::None) {
                    seen[static_cast<int>(block)] = true;
                    continue;
                }
            }
        }
        if (block == Block::None || !readField(w, def, block)) {
            problem = "linedef line " + std::to_string(number) + " is not understood: " + text;
            return std::nullopt;
        }
    }
    const char* names[] = {"", "InLineDef", "OutLineDef", "ErrorLineDef"};
    for (int b = 1; b <= 3; ++b) {
        if (!seen[b]) {
            problem = std::string("linedef has no ") + names[b] + " block";
            return std::nullopt;
        }
    }
    return def;
}

}  // namespace arborex::vdypbat
