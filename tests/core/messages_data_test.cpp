// The message catalogue delivered with the program: every tag the program asks for has a text,
// and the file keeps to what the catalogue reader can take.

#include <gtest/gtest.h>

#include <fstream>
#include <set>
#include <string>

#include "base/messages.hpp"
#include "support/fake_host.hpp"

namespace arborex {
namespace {

const std::string kCatalogue = ARBOREX_SOURCE_DIR "/data/MESSAGES.DAT";

const char* const kRequestedTags[] = {
    "&ADDBUT",    "&AREA",      "&BLANKPOLYGON", "&COMMTHIN",  "&CROWN",    "&CSVNOTKEY",
    "&CURAGE",    "&DELBUT",    "&DENSITY",      "&DUPLICATE", "&FERT",     "&FIZ",
    "&HARAGE",    "&MANAGE",    "&MAPPOLY",      "&NCDECID",   "&NCDESC",   "&NCHARVIN",
    "&NCHEIGHT",  "&NCVOL",     "&NEWTIPSY",     "&NORATE",    "&NOYIELD",  "&NSRRESTOCK",
    "&OAF1",      "&OAF2",      "&OLDVERSION",   "&OWNER",     "&PC",       "&PCNEXT",
    "&PCPERC",    "&PRECUTERR", "&PSYU",         "&PSYUBLOCK", "&REGEN",    "&REGENDELAYPP",
    "&RENBUT",    "&RENDUP",    "&ROADAREA",     "&SHOWYIELD", "&SORTERR",  "&SPECTDESC",
    "&SPECTGW",   "&SPECTHT",   "&SPECTPERC",    "&SPECTSITE", "&SPECTSYM", "&SPECVDESC",
    "&SPECVPERC", "&SPECVSYM",  "&STOCKING",     "&TAGE",      "&THINNED",  "&TIPSYERR",
    "&TRT",       "&TUTILIZ",   "&UNDELBUT",     "&VAF",       "&VAGE",     "&VDYPERR",
    "&VHEIGHT",   "&VMIXSPEC",  "&VSITE",        "&VUTILIZ",
};

TEST(MessagesData, EveryRequestedTagHasItsOwnText) {
    test::FakeHost fake;
    MessageCatalogue catalogue;
    LoadMessages(catalogue, fake, kCatalogue);
    ASSERT_TRUE(fake.prompt.shown.empty()) << "the catalogue did not open: " << kCatalogue;

    ASSERT_EQ(std::size(kRequestedTags), 64u);
    for (const char* tag : kRequestedTags) {
        const std::string text = GetMessage2(catalogue, tag);
        EXPECT_FALSE(text.empty()) << tag;
        EXPECT_NE(text.rfind("NOT FOUND - ", 0), 0u) << tag;
    }

    // The first of two equal tags would hide the second without a word.
    std::set<std::string> distinct;
    for (const MessageTag& entry : catalogue.MessageTags) distinct.insert(entry.Tag.str());
    EXPECT_EQ(distinct.size(), catalogue.MessageTags.size());

    // This text is the title of the old-version box, so it must stay a single line.
    EXPECT_EQ(GetMessage(catalogue, "&OLDVERSION").find("\r\n"),
              GetMessage(catalogue, "&OLDVERSION").size() - 2);
}

TEST(MessagesData, LinesKeepToWhatTheReaderTakes) {
    std::ifstream in(kCatalogue, std::ios::binary);
    ASSERT_TRUE(in) << kCatalogue;
    std::string line;
    int lineNumber = 0;
    while (std::getline(in, line)) {
        ++lineNumber;
        for (unsigned char c : line)
            ASSERT_TRUE(c < 128 && (c >= 32 || c == '\t' || c == '\r'))
                << "not plain ASCII on line " << lineNumber;
        const std::string text = trim(line);
        if (text.empty() || text.front() == ';') continue;
        if (text.front() == '&') {
            EXPECT_LE(text.size(), 16u) << "tag cut short on line " << lineNumber;
            continue;
        }
        // A long paragraph is cut every 128 characters and each rest read as a line of its own,
        // so a "%" just past a cut would turn the rest into a list line.
        const std::string body = text.front() == '%' ? text.substr(1) : text;
        for (std::size_t cut = 128; cut < body.size(); cut += 128)
            EXPECT_NE(body[cut], '%') << "list mark after a cut on line " << lineNumber;
    }
}

}  // namespace
}  // namespace arborex
