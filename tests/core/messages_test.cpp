// The message catalogue: lookups on a catalogue assembled by hand, the reader's line rules on
// small files, and the message screen's buttons.

#include <gtest/gtest.h>

#include <fstream>

#include "base/messages.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

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

// Reads `text` as a catalogue file.
MessageCatalogue load(const std::string& text, test::FakeHost& host) {
    test::TempDir dir;
    std::ofstream(dir.file("MESSAGES.DAT"), std::ios::binary) << text;
    MessageCatalogue c;
    LoadMessages(c, host, dir.file("MESSAGES.DAT"));
    return c;
}

TEST(LoadMessages, LinesOf128StayWholeAndLongerOnesAreCut) {
    test::FakeHost host;
    const std::string exact(128, 'x');
    const std::string longer = std::string(128, 'y') + "z";
    const MessageCatalogue c = load("&ONE\n" + exact + "\n&TWO\n" + longer + "\n", host);
    EXPECT_TRUE(host.prompt.shown.empty());
    ASSERT_EQ(c.LineCount, 2);
    EXPECT_EQ(c.TagCount, 1);
    EXPECT_EQ(c.MessageLines[0].Kind, 1);
    EXPECT_EQ(c.MessageLines[0].Next, -1);  // ended by the next tag
    EXPECT_EQ(c.MessageLines[1].Kind, 0);
    EXPECT_EQ(c.MessageLines[1].Next, 2);
    EXPECT_EQ(c.MessageLines[2].Text.str(), "z");
    EXPECT_EQ(c.MessageLines[2].Next, -1);  // the file's last line
    EXPECT_EQ(GetMessage(c, "&ONE"), exact + "\r\n");
    EXPECT_EQ(GetMessage(c, "&TWO"), longer + "\r\n");
}

TEST(LoadMessages, RemarksBlanksListsAndTags) {
    test::FakeHost host;
    const MessageCatalogue c = load(
        "; the catalogue\r\n"
        "&AREA\r\n"
        "  Net area in hectares.  \r\n"
        "; a remark inside the tag does not break it\r\n"
        "\r\n"
        "%first item\r\n"
        "%second item\r\n"
        "Last paragraph.\r\n"
        "&A_TAG_LONGER_THAN_SIXTEEN\r\n"
        "cut\r\n"
        "&NOTHING\r\n"
        "&AFTER\r\n"
        "text after an empty tag\r\n"
        "&ATEND\r\n",
        host);
    EXPECT_EQ(GetMessage2(c, "&AREA"),
              "Net area in hectares.\r\n\r\nfirst item\r\nsecond item\r\nLast "
              "paragraph.\r\n\r\n");
    EXPECT_EQ(GetMessage(c, "&AREA"),
              "Net area in hectares.\r\nfirst item\r\nsecond item\r\nLast paragraph.\r\n");
    EXPECT_EQ(GetMessage(c, "&A_TAG_LONGER_TH"), "cut\r\n");  // tags hold 16 characters
    EXPECT_EQ(GetMessage(c, "&NOTHING"), "");
    EXPECT_EQ(GetMessage(c, "&AFTER"), "text after an empty tag\r\n");
    EXPECT_EQ(GetMessage(c, "&ATEND"), "");
    EXPECT_EQ(GetMessage(c, "&MISSING"), "NOT FOUND - &MISSING");
    EXPECT_EQ(GetMessage(c, "AREA"), "AREA");
}

TEST(LoadMessages, AListLinesRemainderIsReadAsALineOfItsOwn) {
    test::FakeHost host;
    // The "%" marks the first piece's line only; the remainder's own "%" marks it again.
    const std::string piece(128, 'p');
    MessageCatalogue c = load("&L\n%" + piece + "rest\n%" + piece + "%item\n", host);
    ASSERT_EQ(c.LineCount, 3);
    EXPECT_EQ(c.MessageLines[0].Kind, 0);
    EXPECT_EQ(c.MessageLines[1].Kind, 1);
    EXPECT_EQ(c.MessageLines[1].Text.str(), "rest");
    EXPECT_EQ(c.MessageLines[3].Kind, 2);
    EXPECT_EQ(c.MessageLines[3].Text.str(), "item");
}

TEST(LoadMessages, AMissingFileIsToldOnceAndLeavesTheCatalogueEmpty) {
    test::FakeHost host;
    test::TempDir dir;
    MessageCatalogue c = catalogue();
    LoadMessages(c, host, dir.file("MESSAGES.DAT"));
    EXPECT_EQ(c.TagCount, -1);
    EXPECT_EQ(c.LineCount, -1);
    ASSERT_EQ(host.prompt.shown.size(), 1u);
    EXPECT_EQ(host.prompt.shown[0].title, "Loading Messages.");
    EXPECT_NE(host.prompt.shown[0].text.find(dir.file("MESSAGES.DAT")), std::string::npos);
    EXPECT_EQ(GetMessage(c, "&AREA"), "NOT FOUND - &AREA");
}

TEST(MsgPoly, RemembersTheTagForTheHelpScreen) {
    const MessageCatalogue c = catalogue();
    std::string helpTag;
    EXPECT_EQ(msgPoly(helpTag, c, "&AREA"), GetMessage2(c, "&AREA"));
    EXPECT_EQ(helpTag, "&AREA");
}

TEST(Nmsgbox, ButtonsByMaskAndTheResultAsAPowerOfTwo) {
    test::FakeHost host;
    MessageCatalogue c = catalogue();
    int16_t result = 0;
    // Yes and No (mask 12), No pressed.
    host.prompt.answers = {Answer::No};
    EXPECT_EQ(
        nmsgbox(c, host.prompt, "&AREA", "Stand 12\nStand 14", "Keep Changes?", 12, 2, result),
        MsgNo);
    EXPECT_EQ(result, 8);
    const auto& box = host.prompt.shown.back();
    EXPECT_EQ(box.buttons, Buttons::YesNo);
    EXPECT_EQ(box.defaultAnswer, Answer::Yes);
    EXPECT_EQ(box.title, "Keep Changes?");
    EXPECT_NE(box.text.find("end of paragraph"), std::string::npos);
    EXPECT_NE(box.text.find("Stand 14"), std::string::npos);
    // OK and Cancel (mask 3), the default pressed.
    EXPECT_EQ(nmsgbox(c, host.prompt, "&GONE", "", "Yield Errors", 3, 1, result), MsgCancel);
    EXPECT_EQ(host.prompt.shown.back().text, "NOT FOUND - &GONE");
    EXPECT_EQ(nmsgbox(c, host.prompt, "Plain text", "", "Note", 1, 0, result), MsgOk);
    EXPECT_EQ(result, 1);
}

}  // namespace
}  // namespace arborex
