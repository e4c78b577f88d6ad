#pragma once
// The message catalogue: texts a user may read at length, kept outside the program and asked
// for by tag ("&AREA"). A missing tag never fails; it reads "NOT FOUND - " + tag.

#include <cstdint>
#include <string>
#include <vector>

#include "frame/text.hpp"

namespace arborex {

struct MessageTag {
    FixedString<16> Tag;
    int16_t First = -1;  // index of the tag's first line in MessageLines
};

struct MessageLine {
    FixedString<128> Text;
    int16_t Next = -1;  // next line of the same message, -1 at the end
    int16_t Kind = 1;   // 0 a piece the next line continues, 1 paragraph end, 2 list line end
};

struct MessageCatalogue {
    std::vector<MessageTag> MessageTags;
    std::vector<MessageLine> MessageLines;
    int16_t TagCount = -1;  // highest tag index, -1 while empty
    int16_t LineCount = -1;
};

// The text of a tag as one string: a piece of Kind 0 as it stands, any other line without its
// trailing blanks and followed by "\r\n". Text that does not begin with "&" comes back as is.
std::string GetMessage(const MessageCatalogue& catalogue, const std::string& tag);
// The same for a multi-line help pane: paragraph ends get two "\r\n", list lines one.
std::string GetMessage2(const MessageCatalogue& catalogue, const std::string& tag);

}  // namespace arborex
