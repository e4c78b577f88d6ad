#include <gtest/gtest.h>

#include <fstream>

#include "frame/startup.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

void touch(const std::string& path) {
    std::ofstream(path) << "x";
}

TEST(RunId, SixDigitsFromTheFraction) {
    EXPECT_EQ(makeRunId(0.0), "000000");
    EXPECT_EQ(makeRunId(0.0123454), "012345");
    EXPECT_EQ(makeRunId(0.0123456), "012346");  // rounded, not cut
    EXPECT_EQ(makeRunId(0.9999999), "999999");  // never a seventh digit
    const std::string drawn = makeRunId();
    ASSERT_EQ(drawn.size(), 6u);
    EXPECT_EQ(drawn.find_first_not_of("0123456789"), std::string::npos);
}

TEST(CommandLine, OptionsAndTheProjectPath) {
    for (const char* line : {"-log", "/LOG", "/Log", "  -LoG  "}) {
        const CommandLine parsed = parseCommandLine(line);
        EXPECT_TRUE(parsed.logMode) << line;
        EXPECT_EQ(parsed.projectPath, "") << line;
    }
    const CommandLine other = parseCommandLine("/LOGX -q woodlot.arx");
    EXPECT_FALSE(other.logMode);  // unknown options are passed over
    EXPECT_EQ(other.projectPath, "woodlot.arx");

    const CommandLine both = parseCommandLine("  /home/u/plans/woodlot.arx   /log ");
    EXPECT_TRUE(both.logMode);
    EXPECT_EQ(both.projectPath, "/home/u/plans/woodlot.arx");  // an absolute path, no option

    EXPECT_EQ(parseCommandLine("").projectPath, "");
    EXPECT_FALSE(parseCommandLine("").logMode);
}

TEST(CommandLine, JoinedArgumentsReadBackAsPassed) {
    const std::string joined = joinArguments({"/home/u/My Plans/wood lot.arx", "-log"});
    EXPECT_EQ(joined, "\"/home/u/My Plans/wood lot.arx\" -log");
    const CommandLine parsed = parseCommandLine(joined);
    EXPECT_EQ(parsed.projectPath, "/home/u/My Plans/wood lot.arx");
    EXPECT_TRUE(parsed.logMode);

    EXPECT_EQ(parseCommandLine(joinArguments({"say \"hi\".arx"})).projectPath, "say \"hi\".arx");
}

TEST(CommandLine, AMissingProjectIsToldAndForgotten) {
    test::TempDir dir;
    test::ScriptedPrompt prompt;
    std::string missing = dir.file("gone.arx");
    dropMissingProject(prompt, missing);
    EXPECT_EQ(missing, "");
    ASSERT_EQ(prompt.shown.size(), 1u);
    EXPECT_EQ(prompt.shown[0].title, "File Not Found!");
    EXPECT_EQ(prompt.shown[0].text, "File not found: " + dir.file("gone.arx"));

    std::string present = dir.file("here.arx");
    touch(present);
    dropMissingProject(prompt, present);
    EXPECT_EQ(present, dir.file("here.arx"));
    std::string none;
    dropMissingProject(prompt, none);
    EXPECT_EQ(prompt.shown.size(), 1u);
}

}  // namespace
}  // namespace arborex
