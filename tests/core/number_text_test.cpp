#include "base/number_text.hpp"

#include <gtest/gtest.h>

#include <clocale>

#include "base/errors.hpp"

namespace arborex {
namespace {

TEST(TolerantNumber, TakesTheLeadingNumberAndIgnoresTheRest) {
    EXPECT_DOUBLE_EQ(tolerantNumber("12abc"), 12.0);
    EXPECT_DOUBLE_EQ(tolerantNumber("  -3.5x"), -3.5);
    EXPECT_DOUBLE_EQ(tolerantNumber("\t+7"), 7.0);
    EXPECT_DOUBLE_EQ(tolerantNumber(".5"), 0.5);
    EXPECT_DOUBLE_EQ(tolerantNumber("5."), 5.0);
    EXPECT_DOUBLE_EQ(tolerantNumber("1,234"), 1.0);
    EXPECT_DOUBLE_EQ(tolerantNumber("12 34"), 12.0);
}

TEST(TolerantNumber, ReadsAnExponentOnlyWhenItHasDigits) {
    EXPECT_DOUBLE_EQ(tolerantNumber("1e3"), 1000.0);
    EXPECT_DOUBLE_EQ(tolerantNumber("2.5E-2"), 0.025);
    EXPECT_DOUBLE_EQ(tolerantNumber("1e+2x"), 100.0);
    EXPECT_DOUBLE_EQ(tolerantNumber("1e"), 1.0);
    EXPECT_DOUBLE_EQ(tolerantNumber("1e+"), 1.0);
    EXPECT_DOUBLE_EQ(tolerantNumber("3east"), 3.0);
}

TEST(TolerantNumber, GivesZeroWithoutALeadingNumber) {
    EXPECT_EQ(tolerantNumber("abc"), 0.0);
    EXPECT_EQ(tolerantNumber(""), 0.0);
    EXPECT_EQ(tolerantNumber("   "), 0.0);
    EXPECT_EQ(tolerantNumber("-"), 0.0);
    EXPECT_EQ(tolerantNumber("."), 0.0);
    EXPECT_EQ(tolerantNumber("$5"), 0.0);
    EXPECT_EQ(tolerantNumber("e5"), 0.0);
}

TEST(TolerantNumber, OverflowIsAFailureAndUnderflowIsZero) {
    try {
        tolerantNumber("1e400");
        FAIL() << "no overflow";
    } catch (const ArborexError& e) {
        EXPECT_EQ(e.number(), ErrOverflow);
    }
    EXPECT_THROW(tolerantNumber("-1e99999999999999999999"), ArborexError);
    EXPECT_EQ(tolerantNumber("1e-400"), 0.0);
    EXPECT_EQ(tolerantNumber("0.0000001e-400"), 0.0);
    EXPECT_EQ(tolerantNumber("1e-99999999999999999999"), 0.0);
    EXPECT_EQ(tolerantNumber("0e999"), 0.0);
}

TEST(StrictNumber, AcceptsOnlyAWholeNumberAfterTrimming) {
    EXPECT_EQ(strictNumber("  42  "), 42.0);
    EXPECT_EQ(strictNumber("-0.25"), -0.25);
    EXPECT_EQ(strictNumber("+3"), 3.0);
    EXPECT_EQ(strictNumber("1.5e2"), 150.0);
    EXPECT_EQ(strictNumber(".5"), 0.5);

    EXPECT_FALSE(strictNumber(""));
    EXPECT_FALSE(strictNumber("   "));
    EXPECT_FALSE(strictNumber("12a"));
    EXPECT_FALSE(strictNumber("1,2"));
    EXPECT_FALSE(strictNumber("1e"));
    EXPECT_FALSE(strictNumber("1 2"));
    EXPECT_FALSE(strictNumber("."));
    EXPECT_FALSE(strictNumber("--1"));
    EXPECT_FALSE(strictNumber("[25]"));
    EXPECT_FALSE(strictNumber("1e400"));
    EXPECT_FALSE(
        strictNumber(std::string_view("\0"
                                      "5",
                                      2)));
}

TEST(NumberText, IgnoresTheProcessLocale) {
    const char* previous = std::setlocale(LC_NUMERIC, nullptr);
    std::string saved = previous ? previous : "C";
    bool switched = std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;
    EXPECT_DOUBLE_EQ(tolerantNumber("1.5"), 1.5);
    EXPECT_EQ(strictNumber("2.25"), 2.25);
    EXPECT_FALSE(strictNumber("2,25"));
    std::setlocale(LC_NUMERIC, saved.c_str());
    if (!switched) GTEST_SKIP() << "no German locale installed";
}

TEST(CleanCell, TrimsAndDropsCurrencyGroupingPercentAndBlanks) {
    EXPECT_EQ(cleanCell("  $1,234.5  "), "1234.5");
    EXPECT_EQ(cleanCell("45 %"), "45");
    EXPECT_EQ(cleanCell("1 000"), "1000");
    EXPECT_EQ(cleanCell("12+5"), "12.5");
    EXPECT_EQ(cleanCell("TBA"), "TBA");
    EXPECT_EQ(cleanCell(""), "");
}

TEST(CellNumber, ReadsWhatTheCleanedCellHolds) {
    EXPECT_EQ(cellNumber("$1,234"), 1234.0);
    EXPECT_EQ(cellNumber("45%"), 45.0);
    EXPECT_EQ(cellNumber(" -7 "), -7.0);
    // A plus sign is a decimal point to the cell reader.
    EXPECT_EQ(cellNumber("+5"), 0.5);
    EXPECT_FALSE(cellNumber("[25]"));
    EXPECT_FALSE(cellNumber("n/a"));
    EXPECT_FALSE(cellNumber(""));
}

}  // namespace
}  // namespace arborex
