#include "frame/messages.hpp"

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

}  // namespace

std::string GetMessage(const MessageCatalogue& c, const std::string& tag) {
    return compose(c, tag, false);
}

std::string GetMessage2(const MessageCatalogue& c, const std::string& tag) {
    return compose(c, tag, true);
}

}  // namespace arborex
