// The VDYP stand-in run as Arborex runs it, on files laid out as Arborex writes them; its
// outputs are read back by the columns the VDYP import reads.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <filesystem>
#include <map>

#include "base/number_text.hpp"
#include "base/text.hpp"
#include "support/temp_dir.hpp"
#include "tools/standin_run.hpp"

namespace arborex::test {
namespace {

namespace fs = std::filesystem;

struct Grid {
    int start = 0, finish = 300, step = 10;
};

std::string field(const char* name, const char* type, const std::string& rest) {
    std::string line = std::string("       ") + name;
    line.resize(28, ' ');
    line += type;
    line.resize(49, ' ');
    return line + rest;
}

// linedef.txt as Arborex writes it; `psyuBlock` for the layout with a PSYU block column.
std::string lineDef(bool psyuBlock, Grid grid = {}, bool quoted = false) {
    std::vector<std::string> l = {"InLineDef",
                                  field("MapSheet", "Character", "1     7"),
                                  field("PolygonNumber", "Integer", "10    3"),
                                  field("Age", "Integer", "14    3"),
                                  field("Height", "Float", "18    2   0"),
                                  field("SiteIndex", "Float", "21    4   1")};
    for (int s = 0; s < 6; ++s) {
        const std::string n = "Species" + std::to_string(s + 1);
        l.push_back(field(n.c_str(), "Character", std::to_string(26 + 7 * s) + "    2"));
        l.push_back(
            field((n + "Percent").c_str(), "Float", std::to_string(29 + 7 * s) + "    3   0"));
    }
    l.push_back(field("CrownClosure", "Float", "68    3   0"));
    l.push_back(field("Fiz", "Character", "72    1"));
    l.push_back(field("STOCKINGCLASS", "Character", "74    1"));
    l.push_back(field("PSYU", "Integer", "76    4"));
    if (psyuBlock) {
        l.push_back(field("PSYUBLOCK", "Character", "81    1"));
        l.push_back(field("Utilizationlevel", "Float", "83    4   1"));
        l.push_back("       VolumeAdjustmentFactor  Float             88    4   2");
    } else {
        l.push_back(field("Utilizationlevel", "Float", "81    4   1"));
        l.push_back("       VolumeAdjustmentFactor  Float             86    4   2");
    }
    l.push_back(field("StartAge", "ConstantInteger", std::to_string(grid.start)));
    l.push_back(field("FinishAge", "ConstantInteger", std::to_string(grid.finish)));
    l.push_back(field("AgeIncrement", "ConstantInteger", std::to_string(grid.step)));
    for (const char* line : {"EndLineDef", "", "", "OutLineDef"}) l.push_back(line);
    l.push_back(field("MapSheet", "Character", "1     7"));
    l.push_back(field("PolygonNumber", "Integer", "9     3"));
    l.push_back(field("CurrentAge", "Integer", "14    3"));
    l.push_back(field("CrownClosure", "Float", "18    3    0"));
    l.push_back(field("SiteIndex", "Float", "23    5    2"));
    l.push_back(field("AirDiameter", "Float", "31    7    1"));
    for (int s = 0; s < 6; ++s)
        l.push_back(field(("NetAirVolSpc" + std::to_string(s + 1)).c_str(), "Float",
                          std::to_string(40 + 9 * s) + "    7    1"));
    l.push_back(field("Height", "Float", "94    4    1"));
    l.push_back(field("MAI", "Float", "100   7    3"));
    l.push_back(field("NetAirVolume", "Float", "109   7    1"));
    for (const char* line : {"EndLineDef", "", "", "ErrorLineDef"}) l.push_back(line);
    l.push_back(field("ErrorMsgType", "Character", "1     -11"));
    l.push_back(field("MapSheet", "Character", "14      7"));
    l.push_back(field("PolygonNumber", "Integer", "23      3"));
    l.push_back(field("LrecordNumber", "Integer", "29      3"));
    l.push_back(field("ErrorMsg", "Character", "34   -150"));
    l.push_back("ErrorLineDef");
    if (quoted)
        for (std::string& line : l) line = "\"" + line + "\"";
    return crlfText(l);
}

struct Polygon {
    int number = 1;
    std::string age, height, siteIndex = "18.5";
    std::vector<std::pair<std::string, int>> species = {{"PL", 70}, {"SX", 30}};
    std::string closure = "55", utilisation = "12.5", vaf = "1.00";
};

// A vdypin.dat record as Arborex lays it out.
std::string record(const Polygon& p, bool psyuBlock) {
    std::string r(90, ' ');
    lay(r, 1, 8, "Arborex");
    lay(r, 10, 3, std::to_string(p.number));
    lay(r, 14, 3, p.age.empty() ? "0" : p.age);
    lay(r, 18, 2, p.height.empty() ? "0" : p.height);
    lay(r, 21, 4, p.siteIndex);
    for (std::size_t s = 0; s < 6; ++s) {
        const int column = 26 + 7 * static_cast<int>(s);
        if (s < p.species.size() && p.species[s].second != 0) lay(r, column, 2, p.species[s].first);
        lay(r, column + 3, 3, s < p.species.size() ? std::to_string(p.species[s].second) : "0");
    }
    lay(r, 68, 3, p.closure);
    lay(r, 72, 1, "I");
    lay(r, 74, 1, "G");
    lay(r, 76, 4, "23");
    if (psyuBlock) lay(r, 81, 1, "A");
    lay(r, psyuBlock ? 83 : 81, 4, p.utilisation);
    lay(r, psyuBlock ? 88 : 86, 4, p.vaf);
    return r;
}

// One row of vdypout.dat as the import reads it.
struct Row {
    int age = 0;
    double diameter = 0, height = 0, volume = 0, closure = 0, siteIndex = 0;
    std::array<double, 6> species{};
};

double strict(const std::string& line, int column, int width) {
    const auto value = strictNumber(trim(cols(line, column, width)));
    if (!value) ADD_FAILURE() << "not a number in columns " << column << ": " << line;
    return value.value_or(-1.0);
}

struct Output {
    std::string version;
    std::map<int, std::vector<Row>> rows;  // by polygon number
    int opened = 0, closed = 0;
};

Output readOutput(const std::string& path) {
    bool crlf = false;
    const std::vector<std::string> lines = splitLines(readBytes(path), &crlf);
    EXPECT_TRUE(crlf);
    Output out;
    if (lines.empty()) return out;
    const std::size_t colon = lines[0].find(':');
    if (colon != std::string::npos) out.version = trim(lines[0].substr(colon + 1));
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const std::string& line = lines[i];
        const std::string map = toUpper(trim(cols(line, 1, 7)));
        out.opened += map == "^^^^^^";
        out.closed += map == "VVVVVV";
        if (map.empty() || map == "^^^^^^" || map == "VVVVVV") continue;
        Row row;
        row.age = static_cast<int>(tolerantNumber(cols(line, 14, 3)));
        row.closure = tolerantNumber(cols(line, 18, 4));
        row.siteIndex = tolerantNumber(cols(line, 23, 7));
        row.diameter = tolerantNumber(cols(line, 31, 7));
        row.height = tolerantNumber(cols(line, 94, 6));
        for (int s = 0; s < 6; ++s) row.species[s] = strict(line, 40 + 9 * s, 7);
        row.volume = strict(line, 109, 7);
        out.rows[static_cast<int>(tolerantNumber(trim(cols(line, 9, 3))))].push_back(row);
    }
    return out;
}

// A work folder with the inputs of one run.
struct VdypRun {
    TempDir dir;
    std::vector<std::string> arguments = {
        "-I", "vdypin.dat", "-O", "vdypout.dat", "-E", "ERROR.TXT", "-BATCHPROCESS", "linedef.txt"};

    ProgramRun run(const std::vector<Polygon>& polygons, bool psyuBlock = false, Grid grid = {},
                   bool quoted = false) {
        std::vector<std::string> records;
        for (const Polygon& p : polygons) records.push_back(record(p, psyuBlock));
        writeBytes(dir.file("vdypin.dat"), crlfText(records));
        writeBytes(dir.file("linedef.txt"), lineDef(psyuBlock, grid, quoted));
        return runProgram(dir.path(), ARBOREX_VDYPBAT, arguments,
                          std::string(ARBOREX_SOURCE_DIR) + "/data");
    }
    Output output() const { return readOutput(dir.file("vdypout.dat")); }
    std::vector<std::string> errors() const { return splitLines(readBytes(dir.file("ERROR.TXT"))); }
};

TEST(Vdypbat, ProjectsEachPolygonOverTheGridInTheOutputColumns) {
    VdypRun v;
    Polygon fromHeight;
    fromHeight.number = 10;  // read back from columns 9 to 11
    fromHeight.siteIndex = "0.0";
    fromHeight.age = "60";
    fromHeight.height = "20";
    fromHeight.species = {{"FD", 100}};
    ASSERT_EQ(v.run({Polygon{}, fromHeight}).exitCode, 0);
    const Output out = v.output();
    EXPECT_EQ(out.version, "stand-in 1.0");
    EXPECT_EQ(out.opened, 2);
    EXPECT_EQ(out.closed, 2);
    ASSERT_EQ(out.rows.size(), 2u);
    for (const auto& [polygon, rows] : out.rows) {
        ASSERT_EQ(rows.size(), 31u) << polygon;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(rows[i].age, static_cast<int>(i) * 10);
            double sum = 0;
            for (double v : rows[i].species) sum += v;
            EXPECT_NEAR(sum, rows[i].volume, 0.35) << polygon << " at " << rows[i].age;
        }
        EXPECT_EQ(rows[0].volume, 0.0);
        EXPECT_GT(rows[10].volume, 50.0);
        EXPECT_GT(rows[10].height, rows[5].height);
    }
    const std::vector<Row>& mixed = out.rows.at(1);
    EXPECT_EQ(mixed[0].closure, 55.0);
    EXPECT_EQ(mixed[0].siteIndex, 18.5);
    EXPECT_GT(mixed[10].species[0], mixed[10].species[1]);  // PL 70 % before SX 30 %
    EXPECT_EQ(mixed[10].species[2], 0.0);
    // Worked out from 20 m at 60 years: a little below 20 m at 50 years.
    EXPECT_GT(out.rows.at(10)[0].siteIndex, 15.0);
    EXPECT_LT(out.rows.at(10)[0].siteIndex, 20.0);
    EXPECT_TRUE(v.errors().empty());
}

TEST(Vdypbat, BothRecordLayoutsAndQuotedDefinitionsGiveTheSameTables) {
    VdypRun plain;
    ASSERT_EQ(plain.run({Polygon{}}).exitCode, 0);
    const std::string expected = readBytes(plain.dir.file("vdypout.dat"));
    for (const auto& [psyuBlock, quoted] : {std::pair{true, false}, std::pair{false, true}}) {
        VdypRun other;
        ASSERT_EQ(other.run({Polygon{}}, psyuBlock, {}, quoted).exitCode, 0);
        EXPECT_EQ(readBytes(other.dir.file("vdypout.dat")), expected)
            << "PSYU block " << psyuBlock << ", quoted " << quoted;
    }
}

TEST(Vdypbat, TheAgeGridComesFromTheLineDefinition) {
    VdypRun v;
    ASSERT_EQ(v.run({Polygon{}}, true, {5, 95, 5}).exitCode, 0);
    const Output out = v.output();
    const std::vector<Row>& rows = out.rows.at(1);
    ASSERT_EQ(rows.size(), 19u);
    EXPECT_EQ(rows.front().age, 5);
    EXPECT_EQ(rows.back().age, 95);
}

TEST(Vdypbat, TheAdjustmentFactorAndTheAlternativeFileScaleTheVolumes) {
    VdypRun standard;
    ASSERT_EQ(standard.run({Polygon{}}).exitCode, 0);
    const Row full = standard.output().rows.at(1)[10];

    VdypRun halved;
    Polygon half;
    half.vaf = "0.50";
    ASSERT_EQ(halved.run({half}).exitCode, 0);
    EXPECT_NEAR(halved.output().rows.at(1)[10].volume, full.volume / 2, 0.1);

    VdypRun alternative;
    alternative.arguments.insert(alternative.arguments.begin() + 6, {"-WBS", "ALTWBS.DAT"});
    writeBytes(alternative.dir.file("altwbs.dat"), "# test\r\nPL 0.5\r\n");
    ASSERT_EQ(alternative.run({Polygon{}}).exitCode, 0);
    const Row pine = alternative.output().rows.at(1)[10];
    EXPECT_NEAR(pine.species[0], full.species[0] / 2, 0.1);
    EXPECT_EQ(pine.species[1], full.species[1]);

    fs::remove(alternative.dir.file("altwbs.dat"));
    ASSERT_EQ(alternative.run({Polygon{}}).exitCode, 0);
    EXPECT_EQ(alternative.output().rows.at(1)[10].volume, full.volume);
    const std::vector<std::string> errors = alternative.errors();
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(trim(cols(errors[0], 1, 8)), "WARNING");
    EXPECT_EQ(tolerantNumber(cols(errors[0], 23, 4)), 0.0);  // for the run as a whole
}

TEST(Vdypbat, RejectedPolygonsGetAnErrorLineAndNoTable) {
    struct Case {
        const char* what;
        Polygon polygon;
        const char* text;
    };
    Polygon noSite, shortPercent, unknown, noCode;
    noSite.siteIndex = "0.0";
    shortPercent.species = {{"PL", 70}, {"SX", 20}};
    unknown.species = {{"QQ", 100}};
    noCode.species = {{"PL", 70}, {"", 30}};
    const Case cases[] = {{"no site index", noSite, "No site index"},
                          {"percents", shortPercent, "add up to 90, not 100"},
                          {"unknown code", unknown, "\"QQ\" is not known"},
                          {"no code", noCode, "has 30% but no species code"}};
    for (const Case& c : cases) {
        VdypRun v;
        Polygon good;
        Polygon bad = c.polygon;
        bad.number = 7;
        ASSERT_EQ(v.run({good, bad}).exitCode, 0) << c.what;
        const Output out = v.output();
        EXPECT_EQ(out.rows.size(), 1u) << c.what;
        EXPECT_EQ(out.rows.count(7), 0u) << c.what;
        const std::vector<std::string> errors = v.errors();
        ASSERT_FALSE(errors.empty()) << c.what;
        const std::string& line = errors[0];
        EXPECT_GE(line.size(), 34u);
        EXPECT_EQ(toUpper(trim(cols(line, 1, 8))), "ERROR") << line;
        EXPECT_EQ(tolerantNumber(cols(line, 23, 4)), 7.0) << line;
        EXPECT_EQ(tolerantNumber(cols(line, 29, 3)), 2.0) << line;  // the second record
        EXPECT_NE(trim(line.substr(33)).find(c.text), std::string::npos) << line;
    }
}

TEST(Vdypbat, ABlankSettingIsAWarningAndThePolygonStillRuns) {
    VdypRun v;
    Polygon open;
    open.closure = "";
    ASSERT_EQ(v.run({open}).exitCode, 0);
    EXPECT_EQ(v.output().rows.at(1).size(), 31u);
    EXPECT_EQ(v.output().rows.at(1)[0].closure, 50.0);
    const std::vector<std::string> errors = v.errors();
    ASSERT_EQ(errors.size(), 1u);
    EXPECT_EQ(trim(cols(errors[0], 1, 8)), "WARNING");
    EXPECT_EQ(trim(cols(errors[0], 14, 7)), "Arborex");
}

TEST(Vdypbat, WithoutASpeciesTableAnyCodeOfTwoLettersIsTaken) {
    VdypRun v;
    // A copy of the program with no species table beside it or above it.
    fs::create_directories(v.dir.file("alone/VDYP"));
    const std::string program = v.dir.file("alone/VDYP/vdypbat");
    fs::copy_file(ARBOREX_VDYPBAT, program);
    Polygon unknown;
    unknown.species = {{"QQ", 100}};
    writeBytes(v.dir.file("vdypin.dat"), crlfText({record(unknown, false)}));
    writeBytes(v.dir.file("linedef.txt"), lineDef(false));
    ASSERT_EQ(runProgram(v.dir.path(), program, v.arguments).exitCode, 0);
    EXPECT_EQ(v.output().rows.at(1).size(), 31u);
}

TEST(Vdypbat, InputsAreFoundInAnyCaseAndAMissingOneFails) {
    VdypRun v;
    writeBytes(v.dir.file("VDYPIN.DAT"), crlfText({record(Polygon{}, false)}));
    writeBytes(v.dir.file("LineDef.TXT"), lineDef(false));
    ASSERT_EQ(runProgram(v.dir.path(), ARBOREX_VDYPBAT,
                         {"-i", "vdypin.dat", "-o", "vdypout.dat", "-e", "ERROR.TXT",
                          "-BatchProcess", "linedef.txt"})
                  .exitCode,
              0);
    EXPECT_EQ(v.output().rows.at(1).size(), 31u);

    fs::remove(v.dir.file("VDYPIN.DAT"));
    const ProgramRun missing = runProgram(v.dir.path(), ARBOREX_VDYPBAT, v.arguments);
    EXPECT_NE(missing.exitCode, 0);
    EXPECT_NE(missing.errors.find("vdypin.dat"), std::string::npos) << missing.errors;
    EXPECT_EQ(runProgram(v.dir.path(), ARBOREX_VDYPBAT, {"-I", "vdypin.dat"}).exitCode, 2);
}

}  // namespace
}  // namespace arborex::test
