// The schedule command in-process on the bundled sample: the report at the saved rate, the
// delimiter by the file's extension or the flag, and a refused calculation that writes nothing.

#include "schedule_command.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "batch_args.hpp"
#include "batch_commands.hpp"
#include "calc_command.hpp"
#include "support/temp_dir.hpp"

namespace arborex::batch {
namespace {

const std::string kSample = std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx";

struct Result {
    int code = -1;
    std::string out, err;
};

Result schedule(const std::string& target, std::vector<std::string> flags) {
    std::vector<std::string> args = {kSample,
                                     target,
                                     "--start-year",
                                     "2030",
                                     "--quiet",
                                     "--data",
                                     std::string(ARBOREX_SOURCE_DIR) + "/data"};
    args.insert(args.end(), flags.begin(), flags.end());
    std::ostringstream out, err;
    Result r;
    r.code = runSchedule(args, out, err);
    r.out = out.str();
    r.err = err.str();
    return r;
}

std::vector<std::string> linesOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

TEST(ScheduleCommand, WritesTheReportWithTheDelimiterOfItsExtensionOrFlag) {
    test::TempDir dir;
    const std::string csv = dir.file("plan.csv");
    const Result r = schedule(csv, {"--increment", "10", "--totals", "yes", "--polygons=no"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_EQ(r.out, "Wrote " + csv + " (comma separated)\n");
    const std::vector<std::string> lines = linesOf(csv);
    ASSERT_GE(lines.size(), 3u);
    EXPECT_EQ(lines[0],
              "Year,Polygon Name,Harvested Volume,Harvested Area,Harvested Area CCE,Area,Volume,"
              "Area,Volume,Road Area,Road Volume,Total Area,Total Volume\r");
    EXPECT_EQ(lines[1].rfind("Existing,TOTAL,,,,", 0), 0u);
    EXPECT_EQ(lines[2].rfind("2039,TOTAL,", 0), 0u);
    for (std::size_t i = 1; i < lines.size(); ++i)
        EXPECT_NE(lines[i].find(",TOTAL,"), std::string::npos) << lines[i];

    const std::string forcedTab = dir.file("plan2.csv");
    ASSERT_EQ(schedule(forcedTab, {"--delimiter", "tab", "--polygons", "yes"}).code, ExitOk);
    EXPECT_EQ(linesOf(forcedTab).at(0).rfind("Year\tPolygon Name\tOwnership\t", 0), 0u);
}

TEST(ScheduleCommand, ARefusedCalculationWritesNothingAndSaysWhyOnOneLine) {
    test::TempDir dir;
    const std::string txt = dir.file("plan.txt");
    const Result r = schedule(txt, {"--delay", "5000"});
    EXPECT_EQ(r.code, ExitRefused);
    EXPECT_EQ(r.err.rfind("arborex-batch: The 'Delay Harvest For n Years' must be less that", 0),
              0u);
    EXPECT_EQ(std::count(r.err.begin(), r.err.end(), '\n'), 1);
    EXPECT_FALSE(std::filesystem::exists(txt));
    EXPECT_TRUE(std::filesystem::is_empty(dir.path()));
}

TEST(ScheduleCommand, BadReportFlagsAreUsageErrors) {
    test::TempDir dir;
    EXPECT_THROW(schedule(dir.file("a.txt"), {"--increment", "0"}), UsageError);
    EXPECT_THROW(schedule(dir.file("a.txt"), {"--delimiter", "semicolon"}), UsageError);
    EXPECT_THROW(schedule(dir.file("a.txt"), {"--totals", "maybe"}), UsageError);
    EXPECT_THROW(schedule(dir.file("a.txt"), {"--json"}), UsageError);
}

}  // namespace
}  // namespace arborex::batch
