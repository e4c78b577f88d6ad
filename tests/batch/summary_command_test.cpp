// `summary` on the bundled sample: the summary screen's rows as a table and as JSON.

#include <gtest/gtest.h>

#include "batch_run.hpp"
#include "json_check.hpp"

namespace arborex {
namespace {

using test::has;
using test::run;

const std::string kSample = std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx";
const std::string kData = std::string(ARBOREX_SOURCE_DIR) + "/data";

TEST(SummaryCommand, JsonRowsAreKeyedByTheCaptionsWithTheTotalLast) {
    const test::RunResult r = run({"summary", kSample, "--json", "--data", kData});
    ASSERT_EQ(r.code, 0) << r.err;
    const test::JsonCheck check(r.out);
    ASSERT_TRUE(check.valid()) << check.error();
    const test::JsonValue& rows = check.root();
    ASSERT_EQ(rows.items.size(), 16u);
    const test::JsonValue& partialCut = rows.items[1];
    EXPECT_EQ(partialCut.keys(),
              (std::vector<std::string>{"Polygon", "Area (ha)", "Current Age", "E Yield", "E Age",
                                        "E Vol (m\\u00b3/ha)", "E MAI", "F Yield", "F Age",
                                        "F Vol (m\\u00b3/ha)", "F MAI", "PC %", "PC re-entry"}));
    EXPECT_EQ(partialCut.at("Polygon").text, "93B045 102");
    EXPECT_EQ(partialCut.at("E Age").text, "[115] ");
    EXPECT_EQ(partialCut.at("F Yield").text, "PC");
    EXPECT_EQ(partialCut.at("PC re-entry").text, "[20]");
    const test::JsonValue& total = rows.items.back();
    EXPECT_EQ(total.at("Polygon").text, "TOTAL");
    EXPECT_EQ(total.at("Area (ha)").text, "375.5");
    EXPECT_EQ(total.at("F MAI").text, "3.4");
}

TEST(SummaryCommand, TextIsATableUnderTheCaptions) {
    const test::RunResult r = run({"summary", kSample, "--data", kData});
    ASSERT_EQ(r.code, 0) << r.err;
    EXPECT_EQ(test::lineCount(r.out), 17);
    EXPECT_EQ(r.out.rfind("Polygon     Area (ha)  Current Age  E Yield", 0), 0u) << r.out;
    EXPECT_TRUE(has(r.out, "E Vol (m\xc2\xb3/ha)"));  // UTF-8 for the terminal
    EXPECT_TRUE(has(r.out, "\n93B045 107        6.2          180  Non Commercial"));
    EXPECT_TRUE(has(r.out, "\nTOTAL           375.5               Avg."));
}

}  // namespace
}  // namespace arborex
