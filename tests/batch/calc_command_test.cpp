// The calc command in-process on the bundled sample, whose saved calculation asks for a search
// over the Crown and private land.

#include "calc_command.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "batch_commands.hpp"
#include "batch_run.hpp"
#include "json_check.hpp"
#include "support/temp_dir.hpp"

namespace arborex::batch {
namespace {

using test::JsonCheck;
using test::JsonValue;
using test::run;
using test::RunResult;

const std::string kSample = std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx";

RunResult calc(std::vector<std::string> flags) {
    flags.insert(flags.begin(), {"calc", kSample, "--start-year", "2030"});
    return run(flags);
}

// The part of a calc document from "YearTable" on: the tables of the run.
std::string tablesOf(const std::string& json) {
    const std::size_t at = json.find("\"YearTable\"");
    return at == std::string::npos ? std::string() : json.substr(at);
}

TEST(CalcCommand, SampleSearchIsCompleteAndRepeatable) {
    const RunResult first = calc({"--json"});
    ASSERT_EQ(first.code, ExitOk) << first.err;
    JsonCheck json(first.out);
    ASSERT_TRUE(json.valid()) << json.error();
    const JsonValue& root = json.root();
    EXPECT_EQ(root.keys(),
              (std::vector<std::string>{
                  "project", "refusal", "warnings", "inputs", "HanzlikRate", "HanzlikRotation",
                  "AreaRun", "HarvestRate", "rateFound", "StartYear", "DelayYears", "CalcHorizon",
                  "NetArea", "search", "issues", "YearTable", "CutList", "BlockList", "RoadList"}));
    EXPECT_EQ(root.at("refusal").kind, JsonValue::Kind::Null);
    EXPECT_EQ(root.at("rateFound").text, "true");
    EXPECT_EQ(root.at("StartYear").text, "2030");
    EXPECT_EQ(root.at("issues").text, "No Harvesting Issues");

    // The search window's rows, from the Hanzlik start to the rate shown in the rate field.
    const JsonValue& search = root.at("search");
    EXPECT_NE(search.at("lblHanzlik").text.find(" m\\u00b3/yr HANZLIK - STARTING RATE"),
              std::string::npos)
        << search.at("lblHanzlik").text;
    const std::vector<JsonValue>& rows = search.at("lstCalcStatus").items;
    ASSERT_GT(rows.size(), 4u);
    EXPECT_EQ(rows[0].text, "  Rate   Year   Error Message");
    EXPECT_EQ(search.at("lblStatus").text,
              root.at("inputs").at("txtVolToCut").text + "  HARVEST RATE");

    // One row a year, offsets 0 to the horizon; entries point at blocks of the run.
    const std::vector<JsonValue>& years = root.at("YearTable").items;
    ASSERT_EQ(years.size(), 251u);
    EXPECT_EQ(years.back().at("Year").text, "250");
    const std::vector<JsonValue>& cuts = root.at("CutList").items;
    const std::size_t blocks = root.at("BlockList").items.size();
    ASSERT_FALSE(cuts.empty());
    for (const JsonValue& cut : cuts) EXPECT_LT(std::stoul(cut.at("BlockIdx").text), blocks);

    const RunResult second = calc({"--json"});
    EXPECT_EQ(second.out, first.out);
}

// FNV-1a, 64 bits.
std::uint64_t digest(const std::string& text) {
    std::uint64_t hash = 14695981039346656037ull;
    for (const char c : text) {
        hash ^= static_cast<unsigned char>(c);
        hash *= 1099511628211ull;
    }
    return hash;
}

// Every table of two runs of the sample, which uses all seven harvest methods, by a digest: any
// change in what the simulation computes, down to the last bit of a float, shows here.
TEST(CalcCommand, SampleResultsAreUnchanged) {
    const RunResult search = calc({"--json"});
    const RunResult constrained =
        calc({"--json", "--area", "--relax", "3", "--age-constraint", "60", "20"});
    EXPECT_EQ(digest(tablesOf(search.out)), 193279347834501201u);
    EXPECT_EQ(digest(tablesOf(constrained.out)), 1637479198151019000u);
}

TEST(CalcCommand, FixedRateSummary) {
    const RunResult r = calc({"--rate", "800"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_NE(r.out.find("Harvest rate:  800 m\xc2\xb3/yr (the rate given)\n"), std::string::npos)
        << r.out;
    EXPECT_NE(r.out.find("Horizon:       2030 to 2280, harvest delayed 0 years\n"),
              std::string::npos);
    EXPECT_NE(r.out.find("Issues:        No Harvesting Issues\n"), std::string::npos);
    // Ten-year rows, the last with the horizon's final year alone.
    EXPECT_NE(r.out.find("\n2040-2049             8,000        22.4      800\n"), std::string::npos)
        << r.out;
    EXPECT_NE(r.out.find("\n2280                    800"), std::string::npos) << r.out;
    EXPECT_EQ(r.out.find("HANZLIK"), std::string::npos);
}

TEST(CalcCommand, FlagsReachTheFieldsWithTheirLimits) {
    const RunResult r = calc({"--rate", "700", "--period", "11", "--relax", "9", "--netdown",
                              "15.4", "--age-constraint", "80", "30", "--height-constraint",
                              "12.34", "150", "--no-partial-cut", "--conifer-only=yes", "--json"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    JsonCheck json(r.out);
    ASSERT_TRUE(json.valid());
    const JsonValue& inputs = json.root().at("inputs");
    EXPECT_EQ(inputs.at("txtPeriod").text, "10");
    EXPECT_EQ(inputs.at("txtRelax").text, "5");
    EXPECT_EQ(inputs.at("txtNetDown").text, "15");
    EXPECT_EQ(inputs.at("chkConNetDown").text, "true");
    EXPECT_EQ(inputs.at("txtAge").text, "80");
    EXPECT_EQ(inputs.at("txtAgePerc").text, "30");
    EXPECT_EQ(inputs.at("txtHeight").text, "12.3");
    EXPECT_EQ(inputs.at("txtHeightPerc").text, "100");
    EXPECT_EQ(inputs.at("chkDisPC").text, "true");
    EXPECT_EQ(inputs.at("chkConifer").text, "true");
    EXPECT_EQ(inputs.at("chkCalcRate").text, "false");
    EXPECT_EQ(json.root().at("search").kind, JsonValue::Kind::Null);
    EXPECT_EQ(json.root().at("HarvestRate").text, "700");
    // No year has all its stands above 12.3 m: the constraint holds the harvest back, and the
    // issue line counts the years it was broken and the years without harvest.
    const std::string& issues = json.root().at("issues").text;
    EXPECT_EQ(issues.rfind("Harvesting Issues (Polygon=", 0), 0u) << issues;
    EXPECT_NE(issues.find("Height Constraints: "), std::string::npos) << issues;
    EXPECT_NE(issues.find("No Harvest for "), std::string::npos) << issues;
}

TEST(CalcCommand, AreaBasedSearchStartsAtFiveHectares) {
    const RunResult r = calc({"--area", "--search", "--owners", "C,private", "--json"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    JsonCheck json(r.out);
    ASSERT_TRUE(json.valid());
    EXPECT_EQ(json.root().at("AreaRun").text, "true");
    EXPECT_EQ(json.root().at("search").at("lblHanzlik").text, "5.000 ha/yr STARTING RATE");
    EXPECT_EQ(json.root().at("inputs").at("chkCut").items[1].text, "true");
    EXPECT_EQ(json.root().at("inputs").at("chkCut").items[2].text, "false");
}

TEST(CalcCommand, RefusalIsReportedAndNothingSaved) {
    test::TempDir dir;
    const std::string saved = dir.file("never.arx");
    RunResult r = calc({"--delay", "300", "--save", saved, "--json"});
    EXPECT_EQ(r.code, ExitRefused);
    JsonCheck json(r.out);
    ASSERT_TRUE(json.valid());
    EXPECT_EQ(json.root().at("refusal").text,
              "The 'Delay Harvest For n Years' must be less that the planning horizon of 250 "
              "years.");
    EXPECT_FALSE(std::filesystem::exists(saved));

    r = calc({"--owners", "Other"});
    EXPECT_EQ(r.code, ExitRefused);
    EXPECT_NE(r.out.find("Not calculated: No polygons to harvest with selected Harvest "
                         "Ownership.\n"),
              std::string::npos)
        << r.out;
}

TEST(CalcCommand, WrongCommandLinesAreUsageErrors) {
    const std::vector<std::vector<std::string>> wrong = {{"--rate", "500", "--search"},
                                                         {"--delay", "3", "--auto-delay"},
                                                         {"--owners", "Federal"},
                                                         {"--period", "ten"},
                                                         {"--start-year", "0"},
                                                         {"--sort", "tallest"},
                                                         {"--area=maybe"},
                                                         {"--age-constraint", "80"},
                                                         {"--rate", "-5"}};
    for (const auto& flags : wrong) {
        SCOPED_TRACE(flags.front());
        const RunResult r = calc(flags);
        EXPECT_EQ(r.code, ExitUsage);
        EXPECT_EQ(test::lineCount(r.err), 1) << r.err;
        EXPECT_EQ(r.out, "");
    }
}

// A project saved after a run keeps the run's inputs, so calculating it again repeats the run.
TEST(CalcCommand, SavedRunIsReproducedFromTheProject) {
    test::TempDir dir;
    const std::string saved = dir.file("planned.arx");
    const RunResult first =
        calc({"--rate", "900", "--relax", "2", "--sort", "oldest", "--save", saved, "--json"});
    ASSERT_EQ(first.code, ExitOk) << first.err;

    const RunResult again = run({"calc", saved, "--start-year", "2030", "--json"});
    ASSERT_EQ(again.code, ExitOk) << again.err;
    EXPECT_EQ(tablesOf(again.out), tablesOf(first.out));
    EXPECT_FALSE(tablesOf(first.out).empty());

    const RunResult info = run({"info", saved, "--json"});
    EXPECT_NE(info.out.find("\"SortMethod\": 0"), std::string::npos) << info.out;
}

TEST(CalcCommand, LogIsWrittenInTheCurrentFolder) {
    test::TempDir dir;
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(dir.path());
    const RunResult r = calc({"--rate", "500", "--log"});
    std::filesystem::current_path(before);
    ASSERT_EQ(r.code, ExitOk) << r.err;
    std::ifstream log(dir.file("log.txt"));
    std::string heading;
    std::getline(log, heading);
    EXPECT_EQ(heading, "ARBOREX CALCULATION LOG File");
}

}  // namespace
}  // namespace arborex::batch
