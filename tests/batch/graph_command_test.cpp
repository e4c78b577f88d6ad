// The graph command on the bundled sample, calculated and saved with the tables of its run, and
// on the sample as shipped, which holds no calculation.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "batch_run.hpp"
#include "graph_command.hpp"
#include "report/graph_control_reader.hpp"
#include "report/graph_files.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

using test::has;
using test::RunResult;

const std::string kSample = std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx";
const std::string kData = std::string(ARBOREX_SOURCE_DIR) + "/data";

RunResult graph(std::vector<std::string> args) {
    args.insert(args.begin(), "graph");
    args.insert(args.end(), {"--data", kData, "--quiet"});
    return test::run(args);
}

TEST(GraphCommand, WritesEachKindOfTheSavedCalculationAndRefusesWithoutOne) {
    const char* names[] = {"volume-harvested-graph",
                           "area-harvested-graph",
                           "average-volume-ha-graph",
                           "age-class-distribution-graph",
                           "harvested-volume-by-species-graph",
                           "growth-year-graph",
                           "harvest-forecast"};
    for (int i = 0; i < kResultGraphCount; ++i)
        EXPECT_EQ(batch::graphKindName(kResultGraphCaptions[static_cast<std::size_t>(i)]),
                  names[i]);

    test::TempDir dir;
    const std::string planned = dir.file("planned.arx");
    RunResult r = test::run({"calc", kSample, "--rate", "900", "--save", planned, "--quiet"});
    ASSERT_EQ(r.code, 0) << r.err;
    const std::string out = dir.file("forecast.txt");
    r = graph({planned, "harvest-forecast", out});
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_TRUE(has(r.out, "Wrote " + out));
    GraphControl control = readGraphControlFile(out);
    ASSERT_EQ(control.graphs.size(), 1u);
    EXPECT_EQ(control.graphs[0].title1, "Harvest Forecast");
    EXPECT_EQ(control.graphs[0].series.size(), 1u);
    EXPECT_FALSE(control.graphs[0].xLabels.empty());

    r = graph({planned, "3", out});
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(readGraphControlFile(out).graphs[0].series.size(), 10u);
    r = graph({planned, "time-volume", out});
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(readGraphControlFile(out).graphs[0].title1, "Time Volume");
    r = graph({planned, "age-distribution", out, "--years", "2000,1999"});
    ASSERT_EQ(r.code, 0) << r.err;
    control = readGraphControlFile(out);
    ASSERT_EQ(control.graphs[0].series.size(), 6u);
    EXPECT_EQ(control.graphs[0].series[1].title, "1999");
    EXPECT_EQ(control.graphs[0].series[2].title, "0000");
    EXPECT_EQ(control.graphs[0].xLabels.size(), 10u);

    // Wrong kinds and flags are usage errors; nothing is written.
    std::filesystem::remove(out);
    r = graph({kSample, "pie-chart", out});
    EXPECT_EQ(r.code, 2);
    EXPECT_TRUE(has(r.err, "no graph 'pie-chart'"));
    r = graph({kSample, "area-harvested-graph", out, "--years", "2030"});
    EXPECT_EQ(r.code, 2);
    EXPECT_FALSE(std::filesystem::exists(out));

    // A project without a calculation is refused as report and schedule refuse it: one line,
    // status 3, no file.
    r = graph({kSample, "0", out});
    EXPECT_EQ(r.code, 3);
    EXPECT_EQ(test::lineCount(r.err), 1);
    EXPECT_TRUE(has(r.err, "holds no calculation to graph"));
    EXPECT_FALSE(std::filesystem::exists(out));
}

}  // namespace
}  // namespace arborex
