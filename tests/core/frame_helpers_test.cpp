#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <string>

#include "base/dates.hpp"
#include "base/errors.hpp"
#include "base/file_names.hpp"
#include "base/numeric.hpp"
#include "base/text.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

TEST(Trim, Rules) {
    EXPECT_EQ(trim(""), "");
    EXPECT_EQ(trim(std::string_view("\0  abc", 6)), "");
    EXPECT_EQ(trim("     "), "");
    EXPECT_EQ(trim("  a  b  "), "a  b");
    EXPECT_EQ(trim("\tx "), "\tx");  // only blanks are outer padding
    EXPECT_EQ(trim(std::string_view("ab\0 ", 4)), std::string("ab\0", 3));
}

TEST(TextCase, UpperAndComparison) {
    EXPECT_EQ(toUpper("SpecIesT.dat"), "SPECIEST.DAT");
    EXPECT_EQ(toLower("LOG"), "log");
    EXPECT_TRUE(equalsNoCase("SpecIesT", "SPECIEST"));
    EXPECT_FALSE(equalsNoCase("abc", "abcd"));
    EXPECT_FALSE(equalsNoCase("abc", "abd"));
}

TEST(FixedString, CutsPadsAndKeepsRawBytes) {
    FixedString<4> cut("abcdef");
    EXPECT_EQ(cut.raw(), "abcd");
    FixedString<4> padded("ab");
    EXPECT_EQ(padded.raw(), "ab  ");
    EXPECT_EQ(padded.str(), "ab");
    EXPECT_EQ(FixedString<4>().raw(), "    ");
    EXPECT_EQ(FixedString<4>().str(), "");

    FixedString<4> raw;
    raw.bytes = {'x', ' ', '\xff', '\0'};
    EXPECT_EQ(raw.raw(), std::string("x \xff\0", 4));
    EXPECT_EQ(raw.str(), std::string("x \xff\0", 4));  // NUL is not a blank
    raw.bytes = {'\0', 'a', 'b', ' '};
    EXPECT_EQ(raw.str(), "");

    // Equality is on the stored bytes, so padding written explicitly compares equal.
    EXPECT_EQ(FixedString<4>("ab"), FixedString<4>("ab  "));
    EXPECT_NE(FixedString<4>("ab"), FixedString<4>(" ab"));
    padded = "wxyz!";
    EXPECT_EQ(padded.raw(), "wxyz");
}

TEST(RoundHalfEven, HalvesGoToTheEvenNeighbour) {
    EXPECT_EQ(roundHalfEven(0.5), 0.0);
    EXPECT_EQ(roundHalfEven(1.5), 2.0);
    EXPECT_EQ(roundHalfEven(2.5), 2.0);
    EXPECT_EQ(roundHalfEven(-2.5), -2.0);
    EXPECT_EQ(roundHalfEven(12.5), 12.0);
    EXPECT_EQ(roundHalfEven(2.5000001), 3.0);
    EXPECT_EQ(roundHalfEven(-0.7), -1.0);
}

int overflowNumber(double value) {
    try {
        toI2(value);
    } catch (const ArborexError& e) {
        return e.number();
    }
    return 0;
}

TEST(CheckedConversion, SixteenBitsNeverWrap) {
    EXPECT_EQ(toI2(32767.0), 32767);
    EXPECT_EQ(toI2(32766.5), 32766);
    EXPECT_EQ(overflowNumber(32767.5), ErrOverflow);  // rounds to 32768
    EXPECT_EQ(toI2(-32768.0), -32768);
    EXPECT_EQ(toI2(-32768.5), -32768);  // the even neighbour is in range
    EXPECT_EQ(overflowNumber(-32769.0), ErrOverflow);
    EXPECT_EQ(overflowNumber(std::nan("")), ErrOverflow);
    EXPECT_THROW(toI2(40000), ArborexError);
    EXPECT_THROW(toI2(40000LL), ArborexError);
    EXPECT_EQ(toI2(-32768), -32768);
}

TEST(CheckedConversion, ThirtyTwoBits) {
    EXPECT_EQ(toI4(2147483647.0), 2147483647);
    EXPECT_THROW(toI4(2147483647.5), ArborexError);
    EXPECT_EQ(toI4(-2147483648.0), -2147483647 - 1);
    EXPECT_THROW(toI4(-2147483649.0), ArborexError);
    EXPECT_THROW(toI4(2147483648LL), ArborexError);
    EXPECT_EQ(toI4(100.5), 100);
}

TEST(Clamp32767, OnlyTheTopIsCut) {
    EXPECT_EQ(clamp32767(40000.0), 32767.0);
    EXPECT_EQ(clamp32767(32767.0), 32767.0);
    EXPECT_EQ(clamp32767(32767.4), 32767.0);
    EXPECT_EQ(clamp32767(100.5), 100.5);
    EXPECT_EQ(clamp32767(-40000.0), -40000.0);
}

void expectDate(double dayCount, int year, int month, int day, int hour = 0, int minute = 0,
                int second = 0) {
    DateTimeParts p = partsFromDayCount(dayCount);
    EXPECT_EQ(p.year, year) << dayCount;
    EXPECT_EQ(p.month, month) << dayCount;
    EXPECT_EQ(p.day, day) << dayCount;
    EXPECT_EQ(p.hour, hour) << dayCount;
    EXPECT_EQ(p.minute, minute) << dayCount;
    EXPECT_EQ(p.second, second) << dayCount;
}

TEST(DayCount, CalendarDays) {
    expectDate(0.0, 1899, 12, 30);
    expectDate(2.0, 1900, 1, 1);
    expectDate(61.0, 1900, 3, 1);  // 1900 was not a leap year
    expectDate(45000.0, 2023, 3, 15);
    EXPECT_EQ(dayCountFromParts({2023, 3, 15}), 45000.0);
    EXPECT_EQ(dayCountFromParts({1900, 1, 1}), 2.0);
    EXPECT_EQ(partsFromDayCount(0.0).weekday(), 6);  // a Saturday
    EXPECT_EQ(partsFromDayCount(45000.0).weekday(), 3);
}

TEST(DayCount, TimeOfDay) {
    expectDate(0.5, 1899, 12, 30, 12);
    expectDate(45000.75, 2023, 3, 15, 18);
    EXPECT_DOUBLE_EQ(dayCountFromParts({2023, 3, 15, 6, 0, 0}), 45000.25);
    DateTimeParts p{2026, 11, 3, 15, 7, 9};
    DateTimeParts back = partsFromDayCount(dayCountFromParts(p));
    EXPECT_EQ(back.hour, 15);
    EXPECT_EQ(back.minute, 7);
    EXPECT_EQ(back.second, 9);
    // Less than half a second before midnight belongs to the next day.
    expectDate(1.9999999, 1900, 1, 1);
}

TEST(DayCount, BeforeDayZeroTheFractionStillCountsForward) {
    expectDate(-1.0, 1899, 12, 29);
    expectDate(-1.25, 1899, 12, 29, 6);
    expectDate(-0.5, 1899, 12, 30, 12);
    EXPECT_DOUBLE_EQ(dayCountFromParts({1899, 12, 29, 6, 0, 0}), -1.25);
    expectDate(-36522.0, 1800, 1, 1);
    expectDate(-1.9999999, 1899, 12, 30);
    expectDate(-0.9999999, 1899, 12, 31);
}

TEST(DayCount, NowIsAPlausibleDate) {
    DateTimeParts now = partsFromDayCount(dateNow());
    EXPECT_GE(now.year, 2024);
    EXPECT_LT(now.year, 2200);
}

TEST(ChangeExtension, ReplacesOnlyTheLastElementsExtension) {
    EXPECT_EQ(changeExtension("a/b.arx", ".bak"), "a/b.bak");
    EXPECT_EQ(changeExtension("a.b/c", ".bak"), "a.b/c.bak");
    EXPECT_EQ(changeExtension("project", ".bak"), "project.bak");
    EXPECT_EQ(changeExtension("C:\\data.d\\tenure", ".arx"), "C:\\data.d\\tenure.arx");
    EXPECT_EQ(changeExtension("a/b.c.arx", ".txt"), "a/b.c.txt");
}

TEST(DisplayName, LastElementWithoutExtension) {
    EXPECT_EQ(displayName("C:\\data\\Forest.arx"), "Forest");
    EXPECT_EQ(displayName("/home/u/b.c.arx"), "b.c");
    EXPECT_EQ(displayName("a.b/name"), "name");
    EXPECT_EQ(displayName("name"), "name");
}

void touch(const std::string& path) {
    std::ofstream(path) << "x";
}

TEST(FindFileNoCase, FindsTheSpellingOnDisk) {
    test::TempDir dir;
    touch(dir.file("SpecIesT.dat"));
    EXPECT_EQ(findFileNoCase(dir.path(), "speciest.dat"), dir.file("SpecIesT.dat"));
    EXPECT_EQ(findFileNoCase(dir.path(), "SPECIEST.DAT"), dir.file("SpecIesT.dat"));
    EXPECT_EQ(findFileNoCase(dir.path(), "missing.dat"), "");
    EXPECT_EQ(findFileNoCase(dir.path() + "/nowhere", "speciest.dat"), "");
}

TEST(FindFileNoCase, ExactSpellingWinsAndFoldersDoNotCount) {
    test::TempDir dir;
    touch(dir.file("data.txt"));
    touch(dir.file("DATA.TXT"));
    EXPECT_EQ(findFileNoCase(dir.path(), "DATA.TXT"), dir.file("DATA.TXT"));
    EXPECT_EQ(findFileNoCase(dir.path(), "data.txt"), dir.file("data.txt"));
    std::filesystem::create_directory(dir.file("Folder"));
    EXPECT_EQ(findFileNoCase(dir.path(), "folder"), "");
    EXPECT_EQ(findFileNoCase(dir.path(), "Folder"), "");
}

TEST(FileExists, OnlyRegularFiles) {
    test::TempDir dir;
    touch(dir.file("a.arx"));
    EXPECT_TRUE(fileExists(dir.file("a.arx")));
    EXPECT_FALSE(fileExists(dir.file("b.arx")));
    EXPECT_FALSE(fileExists(dir.path()));
    EXPECT_FALSE(fileExists(""));
}

}  // namespace
}  // namespace arborex
