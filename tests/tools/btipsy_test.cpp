// The TIPSY stand-in run as Arborex runs it, on a batch file and input records laid out as
// Arborex writes them; its report is read back as the TIPSY import reads it.

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <map>

#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "base/text.hpp"
#include "support/temp_dir.hpp"
#include "tools/standin_run.hpp"

namespace arborex::test {
namespace {

namespace fs = std::filesystem;

const std::string kTemplate = std::string(ARBOREX_SOURCE_DIR) + "/data/TIPSY/arborex2.btp";
const std::string kRule = "----------";

struct Stand {
    int number = 1;
    std::vector<std::pair<std::string, int>> species = {{"PL", 100}};
    std::string siteIndex = "20", height, age = "20", density = "1600";
    std::string thinStems, thinHeight;            // commercial thin
    std::string fertAge, fertKind, fertIncrease;  // fertilization
};

// A TIPSYin.dat record as Arborex lays it out.
std::string record(const Stand& s) {
    std::string r(200, ' ');
    lay(r, 1, 3, std::to_string(s.number));
    lay(r, 5, 3, s.age);
    lay(r, 9, 1, "I");
    lay(r, 11, 5, "12.5");
    lay(r, 17, 5, s.density);
    lay(r, 23, 5, "0");
    lay(r, 29, 1, "P");
    lay(r, 31, 2, "15");
    lay(r, 35, 2, "5");
    for (std::size_t i = 0; i < s.species.size(); ++i) {
        lay(r, 39 + 3 * static_cast<int>(i), 2, s.species[i].first);
        lay(r, 54 + 4 * static_cast<int>(i), 3, std::to_string(s.species[i].second));
        lay(r, 104 + 3 * static_cast<int>(i), 2, "0");
    }
    lay(r, 74, 2, s.siteIndex);
    lay(r, 89, 2, s.height);
    lay(r, 119, 3, s.thinStems);
    lay(r, 123, 2, s.thinHeight);
    lay(r, 126, 3, s.fertAge);
    lay(r, 130, 1, s.fertKind);
    lay(r, 132, 3, s.fertIncrease);
    return r;
}

// The template with its four slots filled, as Arborex patches it.
std::string batchFile(const std::array<std::string, 4>& paths) {
    const std::string bytes = readBytes(kTemplate);
    std::string out = bytes.substr(0, 32);
    for (const std::string& path : paths) {
        std::string slot = path;
        slot.resize(256, '\0');
        out += slot;
    }
    return out + bytes.substr(1056);
}

struct Table {
    double siteIndex = 0;
    std::vector<std::array<double, 4>> rows;  // age, volume, diameter, height
    int counted = 0;                          // rows on a grid of 0 to 350 by 10
    int thinAge = 0;
    double volumeBefore = 0, volumeAfter = 0;
};

struct Report {
    std::string version;
    std::map<int, Table> tables;  // by polygon index (number - 1)
};

// The report read by marker words and columns, as the TIPSY import reads it.
Report readReport(const std::string& path) {
    bool crlf = false;
    const std::vector<std::string> lines = splitLines(readBytes(path), &crlf);
    EXPECT_TRUE(crlf);
    Report report;
    if (lines.size() < 4) return report;
    report.version = trim(lines[2].size() > 63 ? lines[2].substr(63) : "");
    std::size_t at = 4;
    int polygon = 0;
    while (at < lines.size()) {
        double siteIndex = 0;
        bool found = false;
        while (at < lines.size()) {
            const std::string& line = lines[at++];
            if (line.find(kRule) != std::string::npos) break;
            EXPECT_EQ(toUpper(line).find("TOP HEIGHT"), std::string::npos) << line;
            if (toUpper(line).find("SITE INDEX =") != std::string::npos && !found) {
                siteIndex = tolerantNumber(trim(line.substr(line.find('=') + 1)));
                found = true;
            }
            if (line.find("TABLE   :") != std::string::npos)
                polygon = static_cast<int>(roundHalfEven(tolerantNumber(line.substr(54)) - 1));
        }
        if (at >= lines.size() || polygon == -1) continue;
        Table& table = report.tables[polygon];
        table.siteIndex = siteIndex;
        double volumeNow = 0;
        for (; at < lines.size() && lines[at].find(kRule) == std::string::npos; ++at) {
            const std::string& line = lines[at];
            const int age = static_cast<int>(roundHalfEven(tolerantNumber(cols(line, 1, 6))));
            const double volumePrevious = volumeNow;
            volumeNow = roundHalfEven(tolerantNumber(cols(line, 7, 7)) * 10);
            if (volumeNow < volumePrevious && table.thinAge == 0) {
                table.thinAge = age;
                table.volumeBefore = volumePrevious / 10;
                table.volumeAfter = volumeNow / 10;
            }
            if (age >= 0 && age <= 350 && age % 10 == 0) ++table.counted;
            table.rows.push_back({double(age), volumeNow / 10, tolerantNumber(cols(line, 15, 7)),
                                  tolerantNumber(cols(line, 23, 7))});
        }
        ++at;
    }
    return report;
}

// A work folder with the template patched to name its files.
struct TipsyRun {
    TempDir dir;

    ProgramRun run(const std::vector<Stand>& stands) {
        std::vector<std::string> records;
        for (const Stand& s : stands) records.push_back(record(s));
        writeBytes(dir.file("TIPSYin.dat"), crlfText(records));
        writeBytes(dir.file("arborex2.btp"),
                   batchFile({"", dir.file("TIPSYin.dat"), dir.file("TIPSYout.dat"),
                              dir.file("TIPSYout.err")}));
        return runProgram(dir.path(), ARBOREX_BTIPSY, {"Arborex2.btp", "/NO_UI"},
                          std::string(ARBOREX_SOURCE_DIR) + "/data");
    }
    Report report() const { return readReport(dir.file("TIPSYout.dat")); }
    // The message lines after the five title lines.
    std::vector<std::string> messages() const {
        std::vector<std::string> lines = splitLines(readBytes(dir.file("TIPSYout.err")));
        EXPECT_GE(lines.size(), 5u);
        lines.erase(lines.begin(), lines.begin() + std::min<std::size_t>(5, lines.size()));
        return lines;
    }
};

TEST(Btipsy, TheTemplateIsOurOwnAndWhatItsGeneratorWrites) {
    TempDir dir;
    ASSERT_EQ(runProgram(dir.path(), ARBOREX_MAKE_BTP, {dir.file("made.btp")}).exitCode, 0);
    const std::string bytes = readBytes(kTemplate);
    EXPECT_EQ(readBytes(dir.file("made.btp")), bytes);
    ASSERT_EQ(bytes.size(), 1056u + 15u);
    EXPECT_EQ(bytes.substr(0, 32), std::string("Arborex btipsy batch template 1") + '\0');
    EXPECT_EQ(bytes.substr(32, 1024), std::string(1024, '\0'));
    EXPECT_EQ(bytes.substr(1056), "AGES 0 400 10\r\n");
}

TEST(Btipsy, WritesATablePerPolygonThatTheImportCountsComplete) {
    TipsyRun t;
    Stand plain, thinned, fertilized, fromHeight;
    plain.species = {{"PL", 70}, {"SX", 30}};
    thinned.number = 2;
    thinned.thinStems = "600";
    thinned.thinHeight = "15";
    fertilized.number = 3;
    fertilized.fertAge = "30";
    fertilized.fertKind = "P";
    fertilized.fertIncrease = "8";
    fromHeight.number = 4;
    fromHeight.siteIndex = "";
    fromHeight.age = "40";
    fromHeight.height = "18";
    ASSERT_EQ(t.run({plain, thinned, fertilized, fromHeight}).exitCode, 0);
    const Report report = t.report();
    EXPECT_EQ(report.version, "3.2m");
    ASSERT_EQ(report.tables.size(), 4u);
    for (const auto& [polygon, table] : report.tables) {
        EXPECT_EQ(table.counted, 36) << polygon;  // every grid age once: YieldRows + 1
        EXPECT_EQ(table.thinAge != 0, polygon == 1) << polygon;
    }
    EXPECT_EQ(report.tables.at(0).siteIndex, 20.0);
    EXPECT_GT(report.tables.at(3).siteIndex, 15.0);

    // The thin: a drop in volume between two rows of its age, off the table's ten-year ages.
    const Table& thin = report.tables.at(1);
    EXPECT_NE(thin.thinAge % 10, 0);
    EXPECT_LT(thin.volumeAfter, thin.volumeBefore * 0.95);
    EXPECT_GT(thin.volumeAfter, thin.volumeBefore * 0.5);

    // Fertilized from 30 years: the unfertilized stand's volume before, 8 % more from then on.
    const Table& fert = report.tables.at(2);
    const Table unfertilized = [&] {
        TipsyRun alone;
        Stand same;
        same.number = 3;
        EXPECT_EQ(alone.run({same}).exitCode, 0);
        return alone.report().tables.at(2);
    }();
    ASSERT_EQ(fert.rows.size(), unfertilized.rows.size());
    for (std::size_t i = 0; i < fert.rows.size(); ++i) {
        const double age = fert.rows[i][0], with = fert.rows[i][1],
                     without = unfertilized.rows[i][1];
        if (age < 30 || without == 0)
            EXPECT_EQ(with, without) << age;
        else
            EXPECT_NEAR(with, std::min(without * 1.08, 3276.0), 0.15) << age;
    }
    EXPECT_TRUE(t.messages().empty());
}

TEST(Btipsy, RejectedPolygonsGetAnErrorLineAndNoTable) {
    struct Case {
        const char* what;
        Stand stand;
        const char* text;
    };
    Stand shortPercent, unknown, noSite;
    shortPercent.species = {{"PL", 60}, {"SX", 30}};
    unknown.species = {{"ZZ", 100}};
    noSite.siteIndex = "";
    noSite.age = "0";
    const Case cases[] = {{"percents", shortPercent, "add up to 90, not 100"},
                          {"unknown code", unknown, "\"ZZ\" is not known"},
                          {"no site index", noSite, "No site index"}};
    for (const Case& c : cases) {
        TipsyRun t;
        Stand bad = c.stand;
        bad.number = 12;
        ASSERT_EQ(t.run({Stand{}, bad}).exitCode, 0) << c.what;
        EXPECT_EQ(t.report().tables.size(), 1u) << c.what;
        const std::vector<std::string> messages = t.messages();
        ASSERT_EQ(messages.size(), 1u) << c.what;
        const std::string& line = messages[0];
        EXPECT_GT(line.size(), 50u);
        EXPECT_EQ(toUpper(trim(cols(line, 43, 7))), "ERROR:") << line;
        EXPECT_EQ(tolerantNumber(cols(line, 28, 6)), 12.0) << line;
        EXPECT_NE(line.find(c.text), std::string::npos) << line;
    }
}

TEST(Btipsy, ALongMessageGoesOnInOneContinuationLine) {
    TipsyRun t;
    Stand bad;
    bad.thinStems = "abc";
    ASSERT_EQ(t.run({bad, Stand{}}).exitCode, 0);
    const std::vector<std::string> messages = t.messages();
    ASSERT_EQ(messages.size(), 2u);
    EXPECT_EQ(trim(cols(messages[0], 43, 7)), "ERROR:");
    EXPECT_GT(messages[1].size(), 50u);
    EXPECT_EQ(trim(cols(messages[1], 1, 40)), "");
    EXPECT_NE((trim(messages[0].substr(42)) + " " + trim(messages[1].substr(40))).find("\"abc\""),
              std::string::npos);
}

TEST(Btipsy, EmptySlotsNameTheWorkingFolderFilesFoundInAnyCase) {
    TempDir dir;
    fs::copy_file(kTemplate, dir.file("ARBOREX2.BTP"));
    writeBytes(dir.file("tipsyin.DAT"), crlfText({record(Stand{})}));
    ASSERT_EQ(runProgram(dir.path(), ARBOREX_BTIPSY, {"Arborex2.btp"}).exitCode, 0);
    EXPECT_EQ(readReport(dir.file("TIPSYout.dat")).tables.at(0).counted, 36);
    EXPECT_TRUE(fs::exists(dir.file("TIPSYout.err")));
}

TEST(Btipsy, AMissingBatchFileOrInputFails) {
    TempDir dir;
    const ProgramRun noBatch = runProgram(dir.path(), ARBOREX_BTIPSY, {"Arborex2.btp", "/NO_UI"});
    EXPECT_NE(noBatch.exitCode, 0);
    EXPECT_NE(noBatch.errors.find("Arborex2.btp"), std::string::npos) << noBatch.errors;
    fs::copy_file(kTemplate, dir.file("arborex2.btp"));
    EXPECT_NE(runProgram(dir.path(), ARBOREX_BTIPSY, {"Arborex2.btp"}).exitCode, 0);
    EXPECT_EQ(runProgram(dir.path(), ARBOREX_BTIPSY, {}).exitCode, 2);
    EXPECT_FALSE(fs::exists(dir.file("TIPSYout.dat")));
}

}  // namespace
}  // namespace arborex::test
