// The pieces under the batch commands: the JSON writer, the unattended prompt, the options.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <sstream>

#include "batch_args.hpp"
#include "batch_host.hpp"
#include "json_check.hpp"
#include "json_writer.hpp"

namespace arborex::batch {
namespace {

TEST(JsonWriter, BlockAndInlineLayout) {
    std::ostringstream out;
    JsonWriter json(out);
    json.beginObject();
    json.member("a", 1);
    json.arrayMember("b", std::vector<int>{1, 2});
    json.key("c");
    json.beginArray();
    json.beginObject(Layout::Inline);
    json.member("x", "y");
    json.key("z");
    json.beginArray();  // stays on the line of its inline parent
    json.endArray();
    json.endObject();
    json.endArray();
    json.key("d");
    json.beginObject();
    json.endObject();
    json.endObject();
    json.finish();
    EXPECT_EQ(out.str(),
              "{\n"
              "  \"a\": 1,\n"
              "  \"b\": [1, 2],\n"
              "  \"c\": [\n"
              "    {\"x\": \"y\", \"z\": []}\n"
              "  ],\n"
              "  \"d\": {}\n"
              "}\n");
    EXPECT_TRUE(test::JsonCheck(out.str()).valid());
}

TEST(JsonWriter, NumbersReadBackAndNonFiniteIsNull) {
    EXPECT_EQ(roundTripText(0.8f), "0.8");
    EXPECT_EQ(roundTripText(0.1), "0.1");
    EXPECT_EQ(roundTripText(100.0f), "100");
    EXPECT_EQ(roundTripText(1e-5f), "1e-05");
    const float third = 1.0f / 3.0f;
    EXPECT_EQ(std::strtof(roundTripText(third).c_str(), nullptr), third);
    const double day = 45397.395833333336;
    EXPECT_EQ(std::strtod(roundTripText(day).c_str(), nullptr), day);

    std::ostringstream out;
    JsonWriter json(out);
    json.beginArray(Layout::Inline);
    json.value(std::numeric_limits<float>::quiet_NaN());
    json.value(std::numeric_limits<double>::infinity());
    json.value(int64_t{-32768});
    json.value(true);
    json.null();
    json.endArray();
    EXPECT_EQ(out.str(), "[null, null, -32768, true, null]");
}

TEST(JsonWriter, StringsAreEscapedAsLatin1) {
    EXPECT_EQ(jsonQuoted("plain"), "\"plain\"");
    EXPECT_EQ(jsonQuoted("a\"b\\c"), "\"a\\\"b\\\\c\"");
    EXPECT_EQ(jsonQuoted("line\nnext\ttab\r"), "\"line\\nnext\\ttab\\r\"");
    EXPECT_EQ(jsonQuoted(std::string("nul\0x", 5)), "\"nul\\u0000x\"");
    EXPECT_EQ(jsonQuoted("\x01\x1f\x7f"), "\"\\u0001\\u001f\x7f\"");
    EXPECT_EQ(jsonQuoted("Ch\xe9ne \xff\x80"), "\"Ch\\u00e9ne \\u00ff\\u0080\"");
    EXPECT_TRUE(test::JsonCheck(jsonQuoted("\xc3\xa9\x01\"")).valid());
}

TEST(BatchPrompt, AnswersWithoutWaiting) {
    BatchPrompt keep(Answer::No);
    BatchPrompt remove(Answer::Yes);
    const auto ask = [](BatchPrompt& p, const std::string& title, Buttons buttons,
                        Answer fallback) {
        return p.ask(title, "?", buttons, fallback, Icon::Question);
    };
    EXPECT_EQ(ask(keep, kMapsheetQuestion, Buttons::YesNo, Answer::No), Answer::No);
    EXPECT_EQ(ask(remove, kMapsheetQuestion, Buttons::YesNo, Answer::No), Answer::Yes);
    // Deleted polygons are never purged, whatever the default.
    EXPECT_EQ(ask(remove, kPurgeQuestion, Buttons::YesNo, Answer::Yes), Answer::No);
    EXPECT_EQ(ask(keep, "Other", Buttons::YesNoCancel, Answer::Cancel), Answer::Cancel);
    EXPECT_EQ(ask(keep, "Other", Buttons::OkCancel, Answer::Ok), Answer::Ok);
    EXPECT_EQ(keep.input("t", "x", "proposed"), std::nullopt);
    EXPECT_EQ(keep.openFile({}), std::nullopt);
    EXPECT_EQ(keep.saveFile({}), std::nullopt);
    ASSERT_EQ(keep.shown().size(), 3u);
    EXPECT_EQ(keep.shown()[1].answer, Answer::Cancel);
}

TEST(BatchPrompt, NotesAndTheReasonOfAFailure) {
    BatchPrompt prompt;
    EXPECT_EQ(prompt.lastMessage(), "");
    prompt.tell("Arborex for Windows", "All yield curves must be recalculated.");
    prompt.ask("Question", "Asked?", Buttons::YesNo, Answer::No, Icon::Question);
    prompt.tell("Old", "File Version: x\r\n\r\nProgram Version: y", Icon::Information);
    EXPECT_EQ(prompt.lastMessage(), "File Version: x; Program Version: y");
    prompt.tell("Arborex for Windows", "62\nInput past end of file", Icon::Critical);
    EXPECT_EQ(prompt.lastMessage(), "Input past end of file");
    prompt.tell("Arborex for Windows", "2024");
    EXPECT_EQ(prompt.lastMessage(), "2024");  // a lone number is the text itself

    std::ostringstream notes;
    prompt.writeNotes(notes);
    EXPECT_EQ(notes.str(),
              "note: Arborex for Windows: All yield curves must be recalculated.\n"
              "note: Old: File Version: x; Program Version: y\n"
              "note: Arborex for Windows: 62; Input past end of file\n"
              "note: Arborex for Windows: 2024\n");
}

TEST(BatchOptions, FlagsInEitherFormAndOperandsInOrder) {
    BatchOptions o =
        parseOptions({"in.arx", "--version=111", "out.arx", "--remove-mapsheet", "yes", "--quiet"},
                     {"--version", "--remove-mapsheet", "--quiet"});
    EXPECT_EQ(o.operands, (std::vector<std::string>{"in.arx", "out.arx"}));
    EXPECT_EQ(o.version, 111);
    EXPECT_EQ(o.removeMapsheet, Answer::Yes);
    EXPECT_TRUE(o.quiet);
    EXPECT_FALSE(o.json);

    o = parseOptions({"--", "--json", "-"}, {"--json"});
    EXPECT_EQ(o.operands, (std::vector<std::string>{"--json", "-"}));
    EXPECT_FALSE(o.json);
    EXPECT_EQ(o.version, 3226);
    EXPECT_EQ(o.removeMapsheet, Answer::No);

    // An unknown flag, a version that cannot be written, a missing or attached value.
    const std::vector<std::vector<std::string>> wrong = {{"--json"},
                                                         {"--version", "290"},
                                                         {"--version"},
                                                         {"--quiet=yes"},
                                                         {"--remove-mapsheet", "Yes"}};
    for (const auto& args : wrong)
        EXPECT_THROW(parseOptions(args, {"--quiet", "--version", "--remove-mapsheet"}), UsageError)
            << args.front();
}

}  // namespace
}  // namespace arborex::batch
