#pragma once
// The message catalogue: texts a user may read at length, kept outside the program and asked
// for by tag ("&AREA"). A missing tag never fails; it reads "NOT FOUND - " + tag.

#include <cstdint>
#include <string>
#include <vector>

#include "base/host.hpp"
#include "base/text.hpp"

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

// Reads "MESSAGES.DAT" into `catalogue`, replacing what it held. Lines are trimmed; empty lines
// and lines beginning with ";" are skipped; a line beginning with "&" opens a tag (cut to 16
// characters); any other line is text, a leading "%" marking a line of a list. Text longer than
// 128 characters is cut into pieces of 128 that the following piece continues. A file that
// cannot be opened is told through OpenInputFile and leaves the catalogue empty.
void LoadMessages(MessageCatalogue& catalogue, Host& host, const std::string& path);

// The text of a tag as one string: a piece of Kind 0 as it stands, any other line without its
// trailing blanks and followed by "\r\n". Text that does not begin with "&" comes back as is.
std::string GetMessage(const MessageCatalogue& catalogue, const std::string& tag);
// The same for a multi-line help pane: paragraph ends get two "\r\n", list lines one.
std::string GetMessage2(const MessageCatalogue& catalogue, const std::string& tag);

// Help on focus: makes `tag` the polygon screen's current help tag (`helpTag`) and returns the
// help pane's text for it (GetMessage2).
std::string msgPoly(std::string& helpTag, const MessageCatalogue& catalogue,
                    const std::string& tag);

// The message screen: `text`, a tag or plain text, resolved as GetMessage does; `list` below
// it; `buttons` a mask of MsgButton; `defaultButton` the index (0 OK .. 3 No) of the focused
// button. Returns MsgResult, which is also left in `msgResult`.
int16_t nmsgbox(const MessageCatalogue& catalogue, Prompt& prompt, const std::string& text,
                const std::string& list, const std::string& title, int16_t buttons,
                int16_t defaultButton, int16_t& msgResult);

}  // namespace arborex
