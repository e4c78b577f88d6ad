// The report command in-process: the sample without a calculation is refused and nothing is
// written; after a calculation saved with calc, both forms are written from it.

#include "report_command.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

#include "batch_commands.hpp"
#include "batch_run.hpp"
#include "calc_command.hpp"
#include "support/temp_dir.hpp"

namespace arborex::batch {
namespace {

using test::has;
using test::run;
using test::RunResult;

const std::string kSample = std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx";
const std::string kData = std::string(ARBOREX_SOURCE_DIR) + "/data";

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

TEST(ReportCommand, RefusesWithoutCalculationAndWritesBothFormsAfterOne) {
    test::TempDir dir;
    const RunResult refused = run({"report", kSample, dir.file("r.rtf"), "--data", kData});
    EXPECT_EQ(refused.code, ExitRefused);
    EXPECT_EQ(refused.err, "arborex-batch: " + kSample + " has no saved calculation to report\n");
    EXPECT_FALSE(std::filesystem::exists(dir.file("r.rtf")));

    const std::string calculated = dir.file("calc.arx");
    ASSERT_EQ(
        run({"calc", kSample, "--search", "--start-year", "2030", "--save", calculated, "--quiet"})
            .code,
        ExitOk);
    const RunResult rtf = run({"report", calculated, dir.file("r.rtf"), "--data", kData});
    ASSERT_EQ(rtf.code, ExitOk) << rtf.err;
    const std::string rich = readFile(dir.file("r.rtf"));
    EXPECT_EQ(rich.rfind("{\\rtf1\\ansi", 0), 0u);
    EXPECT_TRUE(has(rich, "\\b\\fs20 a) Harvest Rate 1224 m\\'b3/year"));

    const RunResult txt = run({"report", calculated, dir.file("r.txt"), "--data", kData});
    ASSERT_EQ(txt.code, ExitOk) << txt.err;
    const std::string text = readFile(dir.file("r.txt"));
    EXPECT_TRUE(has(text, "4.0 Harvest Calculation Results\r\n"));
    EXPECT_TRUE(has(text, "Harvest Rate: \t1,224 m\xb3/year\r\n"));
    // The session's Hanzlik rate, as the calculation screen works it out.
    EXPECT_TRUE(has(text, "Hanzlik Rate : \t1,052 m\xb3/year\r\n"));

    EXPECT_EQ(run({"report", calculated}).code, ExitUsage);
    EXPECT_TRUE(has(run({"--help"}).out, "report PROJECT OUT.rtf|OUT.txt"));
}

}  // namespace
}  // namespace arborex::batch
