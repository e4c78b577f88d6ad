#pragma once
// A strict reader of JSON text for tests: it accepts exactly the JSON grammar, keeps members
// in document order, and refuses raw bytes outside ASCII, which the batch output escapes.

#include <cctype>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace arborex::test {

struct JsonValue {
    enum class Kind { Null, Bool, Number, String, Array, Object } kind = Kind::Null;
    std::string
        text;  // a number's, a flag's or a string's text as written: no quotes, escapes kept
    std::vector<JsonValue> items;
    // An object's members in document order: names[i] holds values[i]. Two vectors, since a
    // pair cannot hold the still incomplete JsonValue under every standard library.
    std::vector<std::string> names;
    std::vector<JsonValue> values;

    std::vector<std::string> keys() const { return names; }
    // The member `name`; a Null value when absent.
    const JsonValue& at(const std::string& name) const {
        static const JsonValue missing;
        for (std::size_t i = 0; i < names.size(); ++i)
            if (names[i] == name) return values[i];
        return missing;
    }
};

class JsonCheck {
public:
    explicit JsonCheck(std::string text) : text_(std::move(text)) {
        try {
            skipBlanks();
            root_ = parseValue();
            skipBlanks();
            if (pos_ != text_.size()) fail("text after the document");
            valid_ = true;
        } catch (const std::string& message) {
            error_ = message + " at " + std::to_string(pos_);
        }
    }
    bool valid() const { return valid_; }
    const std::string& error() const { return error_; }
    const JsonValue& root() const { return root_; }

private:
    [[noreturn]] void fail(const std::string& message) { throw message; }
    char peek() const { return pos_ < text_.size() ? text_[pos_] : '\0'; }
    void expect(char c) {
        if (peek() != c) fail(std::string("expected '") + c + "'");
        ++pos_;
    }
    void skipBlanks() {
        while (pos_ < text_.size() && (text_[pos_] == ' ' || text_[pos_] == '\n' ||
                                       text_[pos_] == '\r' || text_[pos_] == '\t'))
            ++pos_;
    }
    void literal(const std::string& word) {
        if (text_.compare(pos_, word.size(), word) != 0) fail("bad literal");
        pos_ += word.size();
    }

    JsonValue parseValue() {
        JsonValue v;
        const char c = peek();
        if (c == '{') {
            v.kind = JsonValue::Kind::Object;
            ++pos_;
            skipBlanks();
            if (peek() == '}') return ++pos_, v;
            for (;;) {
                skipBlanks();
                std::string name = parseString();
                skipBlanks();
                expect(':');
                skipBlanks();
                v.names.push_back(std::move(name));
                v.values.push_back(parseValue());
                skipBlanks();
                if (peek() == ',') {
                    ++pos_;
                    continue;
                }
                expect('}');
                return v;
            }
        }
        if (c == '[') {
            v.kind = JsonValue::Kind::Array;
            ++pos_;
            skipBlanks();
            if (peek() == ']') return ++pos_, v;
            for (;;) {
                skipBlanks();
                v.items.push_back(parseValue());
                skipBlanks();
                if (peek() == ',') {
                    ++pos_;
                    continue;
                }
                expect(']');
                return v;
            }
        }
        if (c == '"') {
            v.kind = JsonValue::Kind::String;
            v.text = parseString();
            return v;
        }
        if (c == 't' || c == 'f') {
            v.kind = JsonValue::Kind::Bool;
            v.text = c == 't' ? "true" : "false";
            literal(v.text);
            return v;
        }
        if (c == 'n') {
            literal("null");
            return v;
        }
        v.kind = JsonValue::Kind::Number;
        v.text = parseNumber();
        return v;
    }

    std::string parseString() {
        expect('"');
        std::string s;
        for (;;) {
            if (pos_ >= text_.size()) fail("unterminated string");
            const auto c = static_cast<unsigned char>(text_[pos_++]);
            if (c == '"') return s;
            if (c < 0x20 || c >= 0x80) fail("raw control or non-ASCII byte in a string");
            if (c != '\\') {
                s += static_cast<char>(c);
                continue;
            }
            const char e = peek();
            ++pos_;
            if (e == 'u') {
                for (int i = 0; i < 4; ++i)
                    if (!std::isxdigit(static_cast<unsigned char>(peek())))
                        fail("bad \\u escape");
                    else
                        ++pos_;
                s += text_.substr(pos_ - 6, 6);
            } else if (std::string("\"\\/bfnrt").find(e) != std::string::npos && e != '\0') {
                s += '\\';
                s += e;
            } else {
                fail("bad escape");
            }
        }
    }

    std::string parseNumber() {
        const std::size_t start = pos_;
        auto digits = [&] {
            const std::size_t from = pos_;
            while (std::isdigit(static_cast<unsigned char>(peek()))) ++pos_;
            if (pos_ == from) fail("digit expected");
        };
        if (peek() == '-') ++pos_;
        if (peek() == '0')
            ++pos_;
        else
            digits();
        if (peek() == '.') {
            ++pos_;
            digits();
        }
        if (peek() == 'e' || peek() == 'E') {
            ++pos_;
            if (peek() == '+' || peek() == '-') ++pos_;
            digits();
        }
        return text_.substr(start, pos_ - start);
    }

    std::string text_;
    std::size_t pos_ = 0;
    JsonValue root_;
    bool valid_ = false;
    std::string error_;
};

}  // namespace arborex::test
