#include "json_writer.hpp"

#include <array>
#include <charconv>
#include <cmath>

namespace arborex::batch {

namespace {

constexpr char kHex[] = "0123456789abcdef";

template <typename Float>
std::string shortestText(Float number) {
    std::array<char, 64> buffer{};
    auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number);
    return std::string(buffer.data(), result.ptr);
}

}  // namespace

std::string roundTripText(float number) {
    return shortestText(number);
}
std::string roundTripText(double number) {
    return shortestText(number);
}

std::string jsonQuoted(std::string_view latin1Text) {
    std::string quoted;
    quoted.reserve(latin1Text.size() + 2);
    quoted += '"';
    for (char c : latin1Text) {
        const auto byte = static_cast<unsigned char>(c);
        switch (c) {
            case '"':
                quoted += "\\\"";
                break;
            case '\\':
                quoted += "\\\\";
                break;
            case '\n':
                quoted += "\\n";
                break;
            case '\r':
                quoted += "\\r";
                break;
            case '\t':
                quoted += "\\t";
                break;
            default:
                if (byte < 0x20 || byte >= 0x80) {
                    // A Latin-1 byte is the code point of the same number.
                    quoted += "\\u00";
                    quoted += kHex[byte >> 4];
                    quoted += kHex[byte & 0x0f];
                } else {
                    quoted += c;
                }
        }
    }
    quoted += '"';
    return quoted;
}

void JsonWriter::newLine(std::size_t depth) {
    out_ << '\n';
    for (std::size_t i = 0; i < depth; ++i) out_ << "  ";
}

void JsonWriter::beforeItem() {
    if (afterKey_) {
        afterKey_ = false;
        return;
    }
    if (levels_.empty()) return;
    Level& level = levels_.back();
    if (level.layout == Layout::Inline) {
        if (!level.empty) out_ << ", ";
    } else {
        if (!level.empty) out_ << ',';
        newLine(levels_.size());
    }
    level.empty = false;
}

void JsonWriter::open(char bracket, Layout layout) {
    beforeItem();
    out_ << bracket;
    // Inside a one-line container everything stays on that line.
    const bool parentInline = !levels_.empty() && levels_.back().layout == Layout::Inline;
    levels_.push_back({parentInline ? Layout::Inline : layout});
}

void JsonWriter::close(char bracket) {
    const Level level = levels_.back();
    levels_.pop_back();
    if (!level.empty && level.layout == Layout::Block) newLine(levels_.size());
    out_ << bracket;
}

void JsonWriter::key(std::string_view name) {
    beforeItem();
    out_ << jsonQuoted(name) << ": ";
    afterKey_ = true;
}

void JsonWriter::value(std::string_view latin1Text) {
    beforeItem();
    out_ << jsonQuoted(latin1Text);
}

void JsonWriter::value(std::int64_t number) {
    beforeItem();
    out_ << number;
}

void JsonWriter::value(float number) {
    beforeItem();
    if (std::isfinite(number))
        out_ << roundTripText(number);
    else
        out_ << "null";
}

void JsonWriter::value(double number) {
    beforeItem();
    if (std::isfinite(number))
        out_ << roundTripText(number);
    else
        out_ << "null";
}

void JsonWriter::value(bool flag) {
    beforeItem();
    out_ << (flag ? "true" : "false");
}

void JsonWriter::null() {
    beforeItem();
    out_ << "null";
}

}  // namespace arborex::batch
