#include "base/messages.hpp"

#include "base/input_file.hpp"
#include "base/numeric.hpp"

namespace arborex {

namespace {

// Index of the tag's first line; -2 when the tag is unknown.
int findTag(const MessageCatalogue& c, const std::string& tag) {
    for (int i = 0; i <= c.TagCount && i < static_cast<int>(c.MessageTags.size()); ++i)
        if (c.MessageTags[static_cast<std::size_t>(i)].Tag.str() == tag)
            return c.MessageTags[static_cast<std::size_t>(i)].First;
    return -2;
}

std::string withoutTrailingBlanks(const std::string& raw) {
    auto end = raw.find_last_not_of(' ');
    return end == std::string::npos ? std::string() : raw.substr(0, end + 1);
}

std::string compose(const MessageCatalogue& c, const std::string& tag, bool paragraphs) {
    if (tag.empty() || tag.front() != '&') return tag;
    int line = findTag(c, tag);
    if (line == -2) return "NOT FOUND - " + tag;
    std::string text;
    // A bounded walk: a damaged chain must not loop for ever.
    for (std::size_t guard = 0; line >= 0 && line < static_cast<int>(c.MessageLines.size()) &&
                                guard <= c.MessageLines.size();
         ++guard) {
        const MessageLine& l = c.MessageLines[static_cast<std::size_t>(line)];
        if (l.Kind == 0) {
            text += l.Text.raw();
        } else {
            text += withoutTrailingBlanks(l.Text.raw()) + "\r\n";
            if (paragraphs && l.Kind == 1) text += "\r\n";
        }
        line = l.Next;
    }
    return text;
}

constexpr std::size_t kPieceLength = 128;

// Builds the catalogue's two arrays line by line.
class CatalogueReader {
public:
    explicit CatalogueReader(MessageCatalogue& c) : c_(c) {}

    void line(const std::string& raw) {
        const std::string text = trim(raw);
        if (text.empty() || text.front() == ';') return;
        if (text.front() == '&') {
            openTag(text);
            return;
        }
        addText(text);
    }

    void finish() {
        closeChain();
        closeEmptyTag();
    }

private:
    void openTag(const std::string& tag) {
        closeChain();
        closeEmptyTag();
        MessageTag entry;
        entry.Tag = tag;
        entry.First = toI2(static_cast<int>(c_.MessageLines.size()));
        c_.MessageTags.push_back(entry);
        c_.TagCount = toI2(static_cast<int>(c_.MessageTags.size()) - 1);
    }

    // A text line, cut into pieces of 128; each remainder is read again as a line of its own,
    // so a "%" at its head marks it too.
    void addText(std::string text) {
        for (;;) {
            int16_t kind = 1;
            if (!text.empty() && text.front() == '%') {
                text.erase(0, 1);
                kind = 2;
            }
            if (text.size() <= kPieceLength) {
                append(text, kind);
                return;
            }
            append(text.substr(0, kPieceLength), 0);
            text.erase(0, kPieceLength);
        }
    }

    void append(const std::string& text, int16_t kind) {
        MessageLine line;
        line.Text = text;
        line.Kind = kind;
        const int index = static_cast<int>(c_.MessageLines.size());
        line.Next = toI2(index + 1);
        c_.MessageLines.push_back(line);
        c_.LineCount = toI2(index);
    }

    // The last line read ends its message.
    void closeChain() {
        if (!c_.MessageLines.empty()) c_.MessageLines.back().Next = -1;
    }

    // A tag that gathered no line has no text, rather than the next tag's.
    void closeEmptyTag() {
        if (!c_.MessageTags.empty() &&
            c_.MessageTags.back().First >= static_cast<int>(c_.MessageLines.size()))
            c_.MessageTags.back().First = -1;
    }

    MessageCatalogue& c_;
};

}  // namespace

void LoadMessages(MessageCatalogue& catalogue, Host& host, const std::string& path) {
    catalogue = MessageCatalogue{};
    std::ifstream in;
    if (OpenInputFile(host, path, "Loading Messages.", in) < 0) return;
    CatalogueReader reader(catalogue);
    std::string line;
    while (readTextLine(in, line)) reader.line(line);
    reader.finish();
}

std::string msgPoly(std::string& helpTag, const MessageCatalogue& catalogue,
                    const std::string& tag) {
    helpTag = tag;
    return GetMessage2(catalogue, tag);
}

int16_t nmsgbox(const MessageCatalogue& catalogue, Prompt& prompt, const std::string& text,
                const std::string& list, const std::string& title, int16_t buttons,
                int16_t defaultButton, int16_t& msgResult) {
    msgResult =
        prompt.messageScreen(title, GetMessage(catalogue, text), list, buttons, defaultButton);
    return msgResult;
}

std::string GetMessage(const MessageCatalogue& c, const std::string& tag) {
    return compose(c, tag, false);
}

std::string GetMessage2(const MessageCatalogue& c, const std::string& tag) {
    return compose(c, tag, true);
}

}  // namespace arborex
