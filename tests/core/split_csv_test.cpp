#include "base/split_csv.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace arborex {
namespace {

using Fields = std::vector<std::string>;

TEST(SplitCSV, FieldsStartAtIndexOne) {
    Fields f;
    EXPECT_EQ(SplitCSV("NAME,AREA,AGE", ',', f), 3);
    EXPECT_EQ(f, (Fields{"", "NAME", "AREA", "AGE"}));
    EXPECT_EQ(SplitCSV("single", ',', f), 1);
    EXPECT_EQ(f, (Fields{"", "single"}));
}

TEST(SplitCSV, EmptyLineGivesZeroAndDropsOldFields) {
    Fields f{"", "old", "fields"};
    EXPECT_EQ(SplitCSV("", ',', f), 0);
    EXPECT_EQ(f, Fields{""});
    f = {"", "old"};
    EXPECT_EQ(SplitCSV("    ", ',', f), 0);
    EXPECT_EQ(f, Fields{""});
}

TEST(SplitCSV, EmptyFieldsCount) {
    Fields f;
    EXPECT_EQ(SplitCSV("a,,c", ',', f), 3);
    EXPECT_EQ(f, (Fields{"", "a", "", "c"}));
    EXPECT_EQ(SplitCSV("a,", ',', f), 2);
    EXPECT_EQ(f, (Fields{"", "a", ""}));
    EXPECT_EQ(SplitCSV(",a", ',', f), 2);
    EXPECT_EQ(f, (Fields{"", "", "a"}));
}

TEST(SplitCSV, ReadsBackTheCommaAndBlankOfTheWriter) {
    Fields f;
    EXPECT_EQ(SplitCSV("  P1, 12.5, [25] , ", ',', f), 4);
    EXPECT_EQ(f, (Fields{"", "P1", "12.5", "[25]", ""}));
}

TEST(SplitCSV, QuotesHoldTheDelimiterAndDoubledQuotes) {
    Fields f;
    EXPECT_EQ(SplitCSV("\"x,y\",z", ',', f), 2);
    EXPECT_EQ(f, (Fields{"", "x,y", "z"}));
    EXPECT_EQ(SplitCSV("\"say \"\"hi\"\"\",2", ',', f), 2);
    EXPECT_EQ(f, (Fields{"", "say \"hi\"", "2"}));
    EXPECT_EQ(SplitCSV("\"\"\"\"", ',', f), 1);
    EXPECT_EQ(f, (Fields{"", "\""}));
    EXPECT_EQ(SplitCSV("\"\",b", ',', f), 2);
    EXPECT_EQ(f, (Fields{"", "", "b"}));
}

TEST(SplitCSV, QuotesMayOpenInsideAFieldAndStayOpenToTheEnd) {
    Fields f;
    EXPECT_EQ(SplitCSV("ab\"c,d\"e,f", ',', f), 2);
    EXPECT_EQ(f, (Fields{"", "abc,de", "f"}));
    EXPECT_EQ(SplitCSV("\"a,b", ',', f), 1);
    EXPECT_EQ(f, (Fields{"", "a,b"}));
}

TEST(SplitCSV, TabDelimitedKeepsATrailingEmptyField) {
    Fields f;
    // Only blanks are trimmed from the line, so the last tab still ends a field.
    EXPECT_EQ(SplitCSV("a\tb, c\t", '\t', f), 3);
    EXPECT_EQ(f, (Fields{"", "a", "b, c", ""}));
}

TEST(SplitCSV, BlankDelimitedCommandLine) {
    Fields f;
    EXPECT_EQ(SplitCSV("  /log  \"C:\\My Files\\a.arx\" ", ' ', f), 3);
    EXPECT_EQ(f, (Fields{"", "/log", "", "C:\\My Files\\a.arx"}));
}

}  // namespace
}  // namespace arborex
