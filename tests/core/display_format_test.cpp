#include "base/display_format.hpp"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <string>

#include "base/dates.hpp"

namespace arborex {
namespace {

TEST(FormatNumber, WholeNumbersRoundHalfAwayFromZero) {
    EXPECT_EQ(formatNumber(2.5, "0"), "3");
    EXPECT_EQ(formatNumber(3.5, "0"), "4");
    EXPECT_EQ(formatNumber(-2.5, "0"), "-3");
    EXPECT_EQ(formatNumber(0.4, "0"), "0");
    EXPECT_EQ(formatNumber(0.0, "0"), "0");
    EXPECT_EQ(formatNumber(1234.5, "0"), "1235");
    EXPECT_EQ(formatNumber(1e15, "0"), "1000000000000000");
    // Beyond 15 significant digits only zeros are shown.
    EXPECT_EQ(formatNumber(123456789012345678.0, "0"), "123456789012346000");
}

TEST(FormatNumber, FixedDecimals) {
    EXPECT_EQ(formatNumber(100.0, "0.0"), "100.0");
    EXPECT_EQ(formatNumber(0.25, "0.0"), "0.3");
    EXPECT_EQ(formatNumber(-0.25, "0.0"), "-0.3");
    EXPECT_EQ(formatNumber(0.8, "0.00"), "0.80");
    EXPECT_EQ(formatNumber(9.999, "0.00"), "10.00");
    EXPECT_EQ(formatNumber(1.0, "0.000"), "1.000");
    EXPECT_EQ(formatNumber(0.0005, "0.000"), "0.001");
    EXPECT_EQ(formatNumber(12.5, ".00"), "12.50");
    EXPECT_EQ(formatNumber(0.5, ".00"), ".50");
}

TEST(FormatNumber, RoundsTheFifteenDigitDecimalNotTheBinaryValue) {
    // In binary these lie just below the half, as decimals of 15 digits exactly on it.
    EXPECT_EQ(formatNumber(1.005, "0.00"), "1.01");
    EXPECT_EQ(formatNumber(2.675, "0.00"), "2.68");
    EXPECT_EQ(formatNumber(1.255, "0.0#"), "1.26");
}

TEST(FormatNumber, ZeroShowsWithoutAMinusSign) {
    EXPECT_EQ(formatNumber(-0.04, "0.0"), "0.0");
    EXPECT_EQ(formatNumber(-0.4, "0"), "0");
    EXPECT_EQ(formatNumber(-0.0, "0.00"), "0.00");
    EXPECT_EQ(formatNumber(-0.0004, "0.0%"), "0.0%");
    EXPECT_EQ(formatNumber(-0.2, "#"), "");
}

TEST(FormatNumber, WidenedFloatsShowTheirFloatValue) {
    EXPECT_EQ(formatNumber(0.1f, "0.0"), "0.1");
    EXPECT_EQ(formatNumber(0.8f, "0.00"), "0.80");
    EXPECT_EQ(formatNumber(150.0f, "0.0"), "150.0");
    EXPECT_EQ(formatNumber(12.345f, "0.00"), "12.35");
}

TEST(FormatNumber, OptionalDigitsShowNothingForZero) {
    EXPECT_EQ(formatNumber(0.0, "#"), "");
    EXPECT_EQ(formatNumber(0.4, "#"), "");
    EXPECT_EQ(formatNumber(0.5, "#"), "1");
    EXPECT_EQ(formatNumber(5.0, "#"), "5");
    EXPECT_EQ(formatNumber(1234.0, "#"), "1234");
    EXPECT_EQ(formatNumber(0.0, "#,###"), "");
    EXPECT_EQ(formatNumber(0.4, "#,###"), "");
    EXPECT_EQ(formatNumber(1234.0, "#,###"), "1,234");
    EXPECT_EQ(formatNumber(0.5, "#.#"), ".5");
    EXPECT_EQ(formatNumber(12.34, "#.#"), "12.3");
}

TEST(FormatNumber, TrailingOptionalFractionDigitsDropZerosButKeepThePoint) {
    EXPECT_EQ(formatNumber(3.0, "0.##"), "3.");
    EXPECT_EQ(formatNumber(0.0, "0.##"), "0.");
    EXPECT_EQ(formatNumber(3.1, "0.##"), "3.1");
    EXPECT_EQ(formatNumber(3.456, "0.##"), "3.46");
    EXPECT_EQ(formatNumber(3.999, "0.##"), "4.");
    EXPECT_EQ(formatNumber(1.0, "#.#"), "1.");
    EXPECT_EQ(formatNumber(0.0, "#.#"), ".");
    EXPECT_EQ(formatNumber(1.0, "0.0#"), "1.0");
    EXPECT_EQ(formatNumber(12.5, "0.0#"), "12.5");
    EXPECT_EQ(formatNumber(1.25, "0.0#"), "1.25");
}

TEST(FormatNumber, ThousandsGrouping) {
    EXPECT_EQ(formatNumber(0.0, "#,##0"), "0");
    EXPECT_EQ(formatNumber(999.0, "#,##0"), "999");
    EXPECT_EQ(formatNumber(999.5, "#,##0"), "1,000");
    EXPECT_EQ(formatNumber(123456.0, "#,##0"), "123,456");
    EXPECT_EQ(formatNumber(1234567.5, "#,##0"), "1,234,568");
    EXPECT_EQ(formatNumber(-1234.0, "#,##0"), "-1,234");
    EXPECT_EQ(formatNumber(1234.56, "#,##0.0"), "1,234.6");
    EXPECT_EQ(formatNumber(0.04, "#,##0.0"), "0.0");
    EXPECT_EQ(formatNumber(12345.6789, "#,##0.000"), "12,345.679");
    EXPECT_EQ(formatNumber(1000000.0, "#,##0.000"), "1,000,000.000");
}

TEST(FormatNumber, Percent) {
    EXPECT_EQ(formatNumber(0.255, "0%"), "26%");
    EXPECT_EQ(formatNumber(0.125, "0%"), "13%");
    EXPECT_EQ(formatNumber(1.0, "0%"), "100%");
    EXPECT_EQ(formatNumber(0.0, "0%"), "0%");
    EXPECT_EQ(formatNumber(0.1234, "0.0%"), "12.3%");
    EXPECT_EQ(formatNumber(0.0005, "0.0%"), "0.1%");
    EXPECT_EQ(formatNumber(-0.5, "0.0%"), "-50.0%");
}

TEST(FormatNumber, RequiredIntegerDigitsPad) {
    EXPECT_EQ(formatNumber(7.0, "0000"), "0007");
    EXPECT_EQ(formatNumber(2026.0, "0000"), "2026");
    EXPECT_EQ(formatNumber(12345.0, "0000"), "12345");
    EXPECT_EQ(formatNumber(-7.0, "0000"), "-0007");
    EXPECT_EQ(formatNumber(5.0, "#00"), "05");
}

TEST(FormatNumber, LiteralText) {
    EXPECT_EQ(formatNumber(2.25, "0.0 ha"), "2.3 ha");
    EXPECT_EQ(formatNumber(-3.0, "(0)"), "-(3)");
    EXPECT_EQ(formatNumber(5.0, "0\"%\""), "5%");
    EXPECT_EQ(formatNumber(5.0, "\\#0"), "#5");
}

TEST(FormatNumber, EmptyPatternGivesTheGeneralForm) {
    EXPECT_EQ(formatNumber(100.0, ""), "100");
    EXPECT_EQ(formatNumber(-2.5, ""), "-2.5");
    EXPECT_EQ(formatNumber(0.0, ""), "0");
    EXPECT_EQ(formatNumber(static_cast<double>(0.1f), ""), "0.100000001490116");
    EXPECT_EQ(formatNumber(0.0001, ""), "0.0001");
    EXPECT_EQ(formatNumber(0.00001, ""), "1E-05");
    EXPECT_EQ(formatNumber(123456789012345.0, ""), "123456789012345");
    EXPECT_EQ(formatNumber(1e15, ""), "1E+15");
    EXPECT_EQ(formatNumber(-1.5e20, ""), "-1.5E+20");
}

TEST(FormatNumber, IgnoresTheProcessLocale) {
    const char* previous = std::setlocale(LC_ALL, nullptr);
    std::string saved = previous ? previous : "C";
    bool switched = std::setlocale(LC_ALL, "de_DE.UTF-8") != nullptr;
    EXPECT_EQ(formatNumber(1234.5, "#,##0.0"), "1,234.5");
    EXPECT_EQ(formatNumber(0.5, ""), "0.5");
    std::setlocale(LC_ALL, saved.c_str());
    if (!switched) GTEST_SKIP() << "no German locale installed";
}

TEST(FormatNumber, NotANumber) {
    EXPECT_EQ(formatNumber(std::nan(""), "0"), "NaN");
    EXPECT_EQ(formatNumber(-HUGE_VAL, "0"), "-Infinity");
}

// Tuesday 3 November 2026, 15:07:09.
double afternoon() {
    return dayCountFromParts({2026, 11, 3, 15, 7, 9});
}

TEST(FormatDate, PatternsOfTheScreensAndFiles) {
    EXPECT_EQ(formatDate(afternoon(), "mmm d, yyyy"), "Nov 3, 2026");
    EXPECT_EQ(formatDate(afternoon(), "d mmmm, yyyy"), "3 November, 2026");
    EXPECT_EQ(formatDate(afternoon(), "mmmm d, yyyy"), "November 3, 2026");
    EXPECT_EQ(formatDate(afternoon(), "h:mm am/pm"), "3:07 pm");
}

TEST(FormatDate, NamedForms) {
    EXPECT_EQ(formatDate(afternoon(), "Long Time"), "3:07:09 PM");
    EXPECT_EQ(formatDate(afternoon(), "Short Date"), "2026-11-03");
    EXPECT_EQ(formatDate(afternoon(), "Long Date"), "Tuesday, November 3, 2026");
    EXPECT_EQ(formatDate(afternoon(), "medium date"), "03-Nov-26");
    EXPECT_EQ(formatDate(afternoon(), "Medium Time"), "03:07 PM");
    EXPECT_EQ(formatDate(afternoon(), "Short Time"), "15:07");
    EXPECT_EQ(formatDate(45000.0, "General Date"), "2023-03-15");
    EXPECT_EQ(formatDate(0.5, "General Date"), "12:00:00 PM");
    EXPECT_EQ(formatDate(45000.25, "General Date"), "2023-03-15 6:00:00 AM");
}

TEST(FormatDate, TwelveHourClockAroundMidnightAndNoon) {
    EXPECT_EQ(formatDate(dayCountFromParts({2026, 1, 1, 0, 5, 0}), "h:mm am/pm"), "12:05 am");
    EXPECT_EQ(formatDate(dayCountFromParts({2026, 1, 1, 12, 0, 0}), "h:mm AM/PM"), "12:00 PM");
    EXPECT_EQ(formatDate(dayCountFromParts({2026, 1, 1, 11, 59, 0}), "hh:mm a/p"), "11:59 a");
    EXPECT_EQ(formatDate(dayCountFromParts({2026, 1, 1, 23, 0, 0}), "h A/P"), "11 P");
}

TEST(FormatDate, MinutesOrMonthsByPosition) {
    EXPECT_EQ(formatDate(afternoon(), "hh:mm:ss"), "15:07:09");
    EXPECT_EQ(formatDate(afternoon(), "HH:MM"), "15:07");
    EXPECT_EQ(formatDate(afternoon(), "mm:ss"), "07:09");
    EXPECT_EQ(formatDate(afternoon(), "h:nn"), "15:07");
    EXPECT_EQ(formatDate(afternoon(), "m/d/yy"), "11/3/26");
    EXPECT_EQ(formatDate(afternoon(), "dd-mm-yyyy hh:mm"), "03-11-2026 15:07");
}

TEST(FormatDate, OtherFieldsAndLiterals) {
    EXPECT_EQ(formatDate(afternoon(), "ddd dd"), "Tue 03");
    EXPECT_EQ(formatDate(afternoon(), "dddd"), "Tuesday");
    EXPECT_EQ(formatDate(afternoon(), "ddddd"), "2026-11-03");
    EXPECT_EQ(formatDate(afternoon(), "y q w"), "307 4 3");
    EXPECT_EQ(formatDate(afternoon(), "d \"at\" h\\h"), "3 at 15h");
    EXPECT_EQ(formatDate(dayCountFromParts({907, 5, 1}), "yyyy yy"), "0907 07");
}

}  // namespace
}  // namespace arborex

namespace arborex {
namespace {

TEST(FormatNumberFloat, AFloatRoundsAsItsSevenDigitDecimal) {
    EXPECT_EQ(formatNumber(1.005f, "0.00"), "1.01");
    EXPECT_EQ(formatNumber(1.005, "0.00"), "1.01");
    EXPECT_EQ(formatNumber(static_cast<double>(1.005f), "0.00"), "1.00");
    EXPECT_EQ(formatNumber(0.1f, "0.0"), "0.1");
    EXPECT_EQ(formatNumber(2.45f, "0.0"), "2.5");
    EXPECT_EQ(formatNumber(12345.67f, "#,##0.0"), "12,345.7");
    EXPECT_EQ(formatNumber(0.1f, ""), "0.1");
    EXPECT_EQ(formatNumber(42, "0000"), "0042");
}

}  // namespace
}  // namespace arborex
