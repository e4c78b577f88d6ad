// Lookups in the message catalogue, on a catalogue assembled by hand.

#include <gtest/gtest.h>

#include "frame/messages.hpp"

namespace arborex {
namespace {

MessageCatalogue catalogue() {
    MessageCatalogue c;
    auto line = [&](const std::string& text, int16_t kind) {
        MessageLine l;
        l.Text = text;
        l.Kind = kind;
        l.Next = static_cast<int16_t>(c.MessageLines.size() + 1);
        c.MessageLines.push_back(l);
    };
    c.MessageTags.push_back({FixedString<16>("&AREA"), 0});
    line(std::string(128, 'a'), 0);  // a full piece that the next line continues
    line("end of paragraph", 1);
    line("a list line", 2);
    c.MessageLines.back().Next = -1;
    c.MessageTags.push_back({FixedString<16>("&EMPTY"), -1});
    c.TagCount = 1;
    c.LineCount = static_cast<int16_t>(c.MessageLines.size() - 1);
    return c;
}

TEST(Messages, PiecesJoinAndLinesEndAsTheirKindSays) {
    MessageCatalogue c = catalogue();
    EXPECT_EQ(GetMessage(c, "&AREA"),
              std::string(128, 'a') + "end of paragraph\r\na list line\r\n");
    EXPECT_EQ(GetMessage2(c, "&AREA"),
              std::string(128, 'a') + "end of paragraph\r\n\r\na list line\r\n");
}

TEST(Messages, MissingTagsEmptyTagsAndPlainText) {
    MessageCatalogue c = catalogue();
    EXPECT_EQ(GetMessage(c, "&NOPE"), "NOT FOUND - &NOPE");
    EXPECT_EQ(GetMessage(c, "&area"), "NOT FOUND - &area");  // tags compare exactly
    EXPECT_EQ(GetMessage(c, "&EMPTY"), "");
    EXPECT_EQ(GetMessage(c, "plain words"), "plain words");
    EXPECT_EQ(GetMessage(MessageCatalogue{}, "&OLDVERSION"), "NOT FOUND - &OLDVERSION");
}

}  // namespace
}  // namespace arborex
