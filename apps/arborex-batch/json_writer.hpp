#pragma once
// A small streaming JSON writer for the batch front end's machine-readable output.
//
// Members come out in the order they are written, so the caller's order is the document's
// key order. Output is indented by two blanks; a container opened as Inline stays on one line
// ("[300, 350]"), and everything inside it too. Every number is written so that it reads back
// to the same value: floats and doubles in their shortest round-trip form, non-finite values as
// null. Text is taken as one byte per character (Latin-1, as project files hold it), so that
// any byte sequence gives valid UTF-8 JSON: bytes from 0x80 up become \u00XX escapes.
//
// The writer does not check nesting: the caller pairs begin and end, and writes key() before
// each value inside an object.

#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace arborex::batch {

enum class Layout { Block, Inline };

class JsonWriter {
public:
    explicit JsonWriter(std::ostream& out) : out_(out) {}

    void beginObject(Layout layout = Layout::Block) { open('{', layout); }
    void endObject() { close('}'); }
    void beginArray(Layout layout = Layout::Block) { open('[', layout); }
    void endArray() { close(']'); }

    // The name of the next member of the open object.
    void key(std::string_view name);

    void value(std::string_view latin1Text);
    void value(const char* latin1Text) { value(std::string_view(latin1Text)); }
    void value(std::int64_t number);
    void value(int number) { value(static_cast<std::int64_t>(number)); }
    void value(float number);
    void value(double number);
    void value(bool flag);
    void null();

    // key() then value(), for the common case.
    template <typename T>
    void member(std::string_view name, const T& v) {
        key(name);
        value(v);
    }
    // key() then an inline array of the values.
    template <typename Range>
    void arrayMember(std::string_view name, const Range& values) {
        key(name);
        beginArray(Layout::Inline);
        for (const auto& v : values) value(v);
        endArray();
    }

    // Ends the document with a line break.
    void finish() { out_ << '\n'; }

private:
    struct Level {
        Layout layout;
        bool empty = true;
    };
    void open(char bracket, Layout layout);
    void close(char bracket);
    // Separator and indentation before a value or a key; nothing right after a key.
    void beforeItem();
    void newLine(std::size_t depth);

    std::ostream& out_;
    std::vector<Level> levels_;
    bool afterKey_ = false;
};

// `text` as a quoted JSON string, bytes read as Latin-1.
std::string jsonQuoted(std::string_view latin1Text);

// The shortest decimal text that reads back to exactly `number` ("0.8" for 0.8f, "1e-05").
std::string roundTripText(float number);
std::string roundTripText(double number);

}  // namespace arborex::batch
