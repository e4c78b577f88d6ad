// The VDYP exchange: the line definitions and input records the model reads, the output and
// error files it writes read back into the curves and the run's message list.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/errors.hpp"
#include "base/messages.hpp"
#include "base/numeric.hpp"
#include "fuzz/vdyp_output_sample.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"
#include "yield/vdyp_exchange.hpp"

namespace arborex {
namespace {

using test::vdypRow;
using test::withField;

std::string readAll(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void writeAll(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

// Lines joined with CR LF after each.
std::string crlf(std::initializer_list<std::string> lines) {
    std::string text;
    for (const std::string& line : lines) text += line + "\r\n";
    return text;
}

// A 90-column record from its text without the trailing blanks.
std::string record(std::string text) {
    text.resize(90, ' ');
    return text;
}

const std::string kInputHead = crlf({
    "InLineDef",
    "       MapSheet             Character            1     7",
    "       PolygonNumber        Integer              10    3",
    "       Age                  Integer              14    3",
    "       Height               Float                18    2   0",
    "       SiteIndex            Float                21    4   1",
    "       Species1             Character            26    2",
    "       Species1Percent      Float                29    3   0",
    "       Species2             Character            33    2",
    "       Species2Percent      Float                36    3   0",
    "       Species3             Character            40    2",
    "       Species3Percent      Float                43    3   0",
    "       Species4             Character            47    2",
    "       Species4Percent      Float                50    3   0",
    "       Species5             Character            54    2",
    "       Species5Percent      Float                57    3   0",
    "       Species6             Character            61    2",
    "       Species6Percent      Float                64    3   0",
    "       CrownClosure         Float                68    3   0",
    "       Fiz                  Character            72    1",
    "       STOCKINGCLASS        Character            74    1",
    "       PSYU                 Integer              76    4",
});
const std::string kWithoutBlock = crlf({
    "       Utilizationlevel     Float                81    4   1",
    "       VolumeAdjustmentFactor  Float             86    4   2",
});
const std::string kWithBlock = crlf({
    "       PSYUBLOCK            Character            81    1",
    "       Utilizationlevel     Float                83    4   1",
    "       VolumeAdjustmentFactor  Float             88    4   2",
});
const std::string kGrid = crlf({
    "       StartAge             ConstantInteger      5",
    "       FinishAge            ConstantInteger      250",
    "       AgeIncrement         ConstantInteger      10",
    "EndLineDef",
    "",
    "",
    "OutLineDef",
    "       MapSheet             Character            1     7",
    "       PolygonNumber        Integer              9     3",
    "       CurrentAge           Integer              14    3",
    "       CrownClosure         Float                18    3    0",
    "       SiteIndex            Float                23    5    2",
    "       AirDiameter          Float                31    7    1",
});
const std::string kSpeciesVolumes = crlf({
    "       NetAirVolSpc1        Float                40    7    1",
    "       NetAirVolSpc2        Float                49    7    1",
    "       NetAirVolSpc3        Float                58    7    1",
    "       NetAirVolSpc4        Float                67    7    1",
    "       NetAirVolSpc5        Float                76    7    1",
    "       NetAirVolSpc6        Float                85    7    1",
});
const std::string kTail = crlf({
    "       Height               Float                94    4    1",
    "       MAI                  Float                100   7    3",
    "       NetAirVolume         Float                109   7    1",
    "EndLineDef",
    "",
    "",
    "ErrorLineDef",
    "       ErrorMsgType         Character            1     -11",
    "       MapSheet             Character            14      7",
    "       PolygonNumber        Integer              23      3",
    "       LrecordNumber        Integer              29      3",
    "       ErrorMsg             Character            34   -150",
    "ErrorLineDef",
});

TEST(VdypLineDef, IsWrittenByteForByteForEachLayout) {
    struct Case {
        int16_t psyuBlock, yieldMode;
        std::string expected;
    };
    const Case cases[] = {
        {0, 1, kInputHead + kWithoutBlock + kGrid + kSpeciesVolumes + kTail},
        {1, 1, kInputHead + kWithBlock + kGrid + kSpeciesVolumes + kTail},
        {0, 0, kInputHead + kWithoutBlock + kGrid + kTail},
    };
    test::TempDir dir;
    for (const Case& c : cases) {
        Model m;
        programDefaults(m);
        m.Settings.YieldMinAge[0] = 5;
        m.Settings.YieldMaxAge[0] = 250;
        m.Settings.YieldIncAge[0] = 10;
        m.Settings.VDYPPSYUB = c.psyuBlock;
        m.Settings.YIELDMODE = c.yieldMode;
        CreateFormatV(m, dir.file("linedef.txt"));
        EXPECT_EQ(readAll(dir.file("linedef.txt")), c.expected)
            << "VDYPPSYUB " << c.psyuBlock << ", YIELDMODE " << c.yieldMode;
    }
}

// Eleven polygons: 0 and 9 due with fields at their edges, 5 due for its future management,
// 1 NC, 2 NSR and 3 deleted though stale, the rest current.
Model exportProject() {
    Model m =
        test::smallProject({"P0", "P1", "P2", "P3", "P4", "P5", "P6", "P7", "P8", "P9", "P10"});
    for (int p = 0; p <= m.LastPoly; ++p) {
        m.VYield(p, 2).Vol = 100;
        m.Poly[p].VSICALC = 17.0f;
    }
    PolyData& p0 = m.Poly[0];
    p0.YIELDSTATE[0] = 0;
    p0.VAGETOTAL = 1234;  // cut to its field
    p0.VS[0] = std::string_view("C\0", 2);
    p0.VP[0] = 100;
    p0.FIZ = std::string_view("\0", 1);
    m.Poly[1].MGNT = {2, 1};
    m.Poly[2].MGNT = {3, 1};
    m.Poly[1].YIELDSTATE[0] = m.Poly[2].YIELDSTATE[0] = 0;
    m.PolyC[3].DELETE = 1;
    m.Poly[3].YIELDSTATE[0] = 1;
    m.Poly[5].MGNT = {1, 0};
    m.Poly[5].YIELDSTATE[0] = 2;
    PolyData& p9 = m.Poly[9];
    p9.YIELDSTATE[0] = 1;
    p9.VAGETOTAL = 85;
    p9.VHEIGHTTOTAL = 21;
    p9.VSITEINDEX = 18.5f;
    const char* species[] = {"FD", "PL", "SX", "CW", "HW", "BL"};
    for (int s = 0; s < 6; ++s) p9.VS[s] = species[s];
    p9.VP = {40, 30, 0, 15, 10, 5};
    p9.CLOSURE = 55;
    p9.FIZ = "I";
    p9.STOCKING = "0";
    p9.PSYU = 123;
    p9.PSYUBLOCK = "A";
    p9.VUTILIZ = 12.5f;
    p9.VAF = 0.95f;
    return m;
}

const std::string kRecord0 = record(
    "Arborex  1   123 0  0.0  C  100    0      0      0      0      0   0       0    0.0  0.00");
const std::string kRecord5 = record(
    "Arborex  6   0   0  0.0     0      0      0      0      0      0   0       0    0.0  0.00");
const std::string kRecord9 = record(
    "Arborex  10  85  21 18.5 FD 40  PL 30     0   CW 15  HW 10  BL 5   55  I 0 123  12.5 0.95");
// With the PSYU block the record keeps 90 columns, so VAF at column 88 keeps three characters.
const std::string kRecord9Block = record(
    "Arborex  10  85  21 18.5 FD 40  PL 30     0   CW 15  HW 10  BL 5   55  I 0 123  A 12.5 0.9");

TEST(VdypExport, WritesTheDuePolygonsAndClearsTheirCurves) {
    test::TempDir dir;
    Model m = exportProject();
    EXPECT_EQ(ExportVDYP(m, dir.file("vdypin.dat"), false), 3);
    EXPECT_EQ(readAll(dir.file("vdypin.dat")), crlf({kRecord0, kRecord5, kRecord9}));
    for (int p = 0; p <= m.LastPoly; ++p) {
        const bool exported = p == 0 || p == 5 || p == 9;
        EXPECT_EQ(m.VYield(p, 2).Vol, exported ? 0 : 100) << p;
        EXPECT_EQ(m.Poly[p].VSICALC, exported ? 0.0f : 17.0f) << p;
        if (exported) {
            EXPECT_EQ(m.Poly[p].YIELDSTATE[0], 0) << p;
        }
    }

    m = exportProject();
    m.Settings.VDYPPSYUB = 1;
    EXPECT_EQ(ExportVDYP(m, dir.file("vdypin.dat"), false), 3);
    const std::string written = readAll(dir.file("vdypin.dat"));
    EXPECT_EQ(written.substr(written.size() - 92), kRecord9Block + "\r\n");

    m = exportProject();  // all but NC, NSR and deleted
    EXPECT_EQ(ExportVDYP(m, dir.file("vdypin.dat"), true), 8);
    EXPECT_EQ(m.VYield(4, 2).Vol, 0);
    EXPECT_EQ(m.VYield(3, 2).Vol, 100);
}

TEST(VdypExport, PolygonNumbersPast999LoseTheirLastDigit) {
    Model m = test::smallProject({});
    for (int p = 0; p < 1000; ++p) test::appendNamed(m, "P" + std::to_string(p));
    m.Poly[999].YIELDSTATE[0] = 0;
    test::TempDir dir;
    EXPECT_EQ(ExportVDYP(m, dir.file("vdypin.dat"), false), 1);
    EXPECT_EQ(readAll(dir.file("vdypin.dat")).substr(0, 13), "Arborex  100 ");
}

TEST(VdypArguments, PassTheAlternativeFileOnlyWhenAsked) {
    test::TempDir dir;
    Model m;
    programDefaults(m);
    m.Paths[ArborexFolder] = dir.path() + "/install/";
    m.Paths[UserTemp] = dir.path() + "/work/";
    std::filesystem::create_directories(m.Paths[ArborexFolder] + "VDYP");
    std::filesystem::create_directories(m.Paths[UserTemp]);
    writeAll(m.Paths[ArborexFolder] + "VDYP/ALTWBS.DAT", "installed");

    m.Settings.ALTWBS = 0;
    EXPECT_EQ(vdypArguments(m),
              (std::vector<std::string>{"-I", "vdypin.dat", "-O", "vdypout.dat", "-E", "ERROR.TXT",
                                        "-BATCHPROCESS", "linedef.txt"}));
    EXPECT_FALSE(std::filesystem::exists(m.Paths[UserTemp] + "ALTWBS.DAT"));

    m.Settings.ALTWBS = 1;
    const std::vector<std::string> withFile = {
        "-I",        "vdypin.dat", "-O",         "vdypout.dat",   "-E",
        "ERROR.TXT", "-WBS",       "ALTWBS.DAT", "-BATCHPROCESS", "linedef.txt"};
    EXPECT_EQ(vdypArguments(m), withFile);
    EXPECT_EQ(readAll(m.Paths[UserTemp] + "ALTWBS.DAT"), "installed");

    // The user's own copy, in any case of its name, is kept.
    std::filesystem::remove(m.Paths[UserTemp] + "ALTWBS.DAT");
    writeAll(m.Paths[UserTemp] + "altwbs.dat", "mine");
    EXPECT_EQ(vdypArguments(m), withFile);
    EXPECT_FALSE(std::filesystem::exists(m.Paths[UserTemp] + "ALTWBS.DAT"));
    EXPECT_EQ(readAll(m.Paths[UserTemp] + "altwbs.dat"), "mine");
}

class VdypImport : public ::testing::Test {
protected:
    // Imports `text` written as vdypout.dat; returns the progress labels.
    std::vector<std::string> import(const std::string& text) {
        writeAll(dir.file("vdypout.dat"), text);
        std::vector<std::string> labels;
        ImportVDYP(m, host, dir.file("vdypout.dat"),
                   [&](const std::string& label) { labels.push_back(label); });
        return labels;
    }
    std::string table(int polygonNumber, int from, int to) {
        std::string text;
        for (const std::string& row : test::vdypTable(polygonNumber, from, to))
            text += row + "\r\n";
        return text;
    }
    test::TempDir dir;
    test::FakeHost host;
    Model m = test::vdypProject();
};

TEST_F(VdypImport, ReadsTheTablesIntoTheCurves) {
    const std::string text = "VDYP7 Console Version: 7.17a\r\n" + crlf({"vvvvvv  1", "^^^^^^  2"}) +
                             table(2, 0, 4) +
                             crlf({withField(vdypRow(2, 3, 0), 109, 7, "5000.0"),  // above 3276.7
                                   vdypRow(5, 1, 10.0),  // past the last polygon
                                   vdypRow(0, 1, 10.0), "", "VVVVVV  2"});
    const std::vector<std::string> labels = import(text);

    EXPECT_EQ(m.Header.VDYPVersion.str(), "7.17a");
    const YieldRow& row2 = m.VYield(1, 2);
    EXPECT_EQ(row2.Dia, 10);
    EXPECT_EQ(row2.Ht, 5);
    EXPECT_EQ(row2.Vol, 40);
    EXPECT_EQ(row2.Mai, 2.0f);  // net volume over age
    EXPECT_EQ(m.VMix(1, 2), (MixRow{20, 21, 22, 23, 24, 25}));
    EXPECT_EQ(m.VYield(1, 0).Mai, 0.0f);
    EXPECT_EQ(m.VYield(1, 3).Vol, 32767);
    EXPECT_EQ(m.VYield(1, 3).Mai, 3276.7f / 3.0f);
    EXPECT_EQ(m.PolyC[1].VCCCALC, 55.0f);
    EXPECT_EQ(m.Poly[1].VSICALC, 18.25f);
    EXPECT_EQ(m.Poly[1].YIELDSTATE[0], 2);
    EXPECT_EQ(m.Poly[0].YIELDSTATE[0], 0);
    EXPECT_EQ(m.Poly[2].YIELDSTATE[0], 0);
    EXPECT_EQ(m.VYield(0, 1).Vol, 0);
    // Six rows of a five-row grid: the polygon counts as cut off.
    ASSERT_EQ(host.prompt.shown.size(), 1u);
    ASSERT_FALSE(labels.empty());
    for (std::size_t i = 0; i < labels.size(); ++i) {
        EXPECT_EQ(labels[i].back(), '%');
        if (i > 0) {
            EXPECT_LT(std::stoi(labels[i - 1]), std::stoi(labels[i]));
        }
    }
}

TEST_F(VdypImport, ReadsTheModelsMaiWhenNetMaiIsOff) {
    m.Settings.NETMAI = 0;
    m.Settings.YIELDMODE = 0;
    // Species volumes are not read without YIELDMODE; the MAI field is read six wide.
    import("VDYP\r\n" + crlf({withField(vdypRow(1, 0, 7.0), 40, 7, "x")}));
    EXPECT_EQ(m.VYield(0, 0).Mai, 1.23f);
    EXPECT_EQ(m.VYield(0, 0).Vol, 70);
    EXPECT_EQ(m.VMix(0, 0), (MixRow{}));
    EXPECT_EQ(m.Header.VDYPVersion.str(), "");
}

TEST_F(VdypImport, AgesBetweenGridStepsGoToTheNearestRowTiesToEven) {
    m.Settings.YieldMaxAge[0] = 40;
    m.Settings.YieldIncAge[0] = 10;
    SetAgeInc(m);  // still five rows
    // Rows 0.5, 1.5, 2, 3.5 and 5 (off the grid): five lines make the table complete.
    import("VDYP\r\n" + crlf({vdypRow(1, 5, 1.0), vdypRow(1, 15, 2.0), vdypRow(1, 20, 3.0),
                              vdypRow(1, 35, 4.0), vdypRow(1, 50, 5.0)}));
    const int16_t expected[] = {10, 0, 30, 0, 40};
    for (int row = 0; row < 5; ++row) EXPECT_EQ(m.VYield(0, row).Vol, expected[row]) << row;
    EXPECT_EQ(m.VYield(0, 2).Mai, quotient(3.0, 20));
    EXPECT_TRUE(host.prompt.shown.empty());
}

TEST_F(VdypImport, TellsOfACutOffTableNamingItsPolygon) {
    programDefaults(m);  // 301 rows
    EmptyArrays(m);
    for (const char* name : {"Alpha", "Beta", "Gamma"}) test::appendNamed(m, name);
    struct Case {
        int rowsOfBeta;
        bool box;
        const char* complete;
    };
    for (const Case& c : {Case{301, false, ""}, Case{300, true, "1"}, Case{0, false, ""}}) {
        host.prompt.shown.clear();
        import("VDYP\r\n" + table(1, 0, 300) + table(2, 0, c.rowsOfBeta - 1));
        SCOPED_TRACE(c.rowsOfBeta);
        ASSERT_EQ(host.prompt.shown.size(), c.box ? 1u : 0u);
        if (!c.box) continue;
        const test::ShownBox& box = host.prompt.shown[0];
        EXPECT_EQ(box.title, "ERROR Importing VDYP");
        EXPECT_EQ(box.icon, Icon::Critical);
        EXPECT_EQ(box.text,
                  std::string("The VDYP file ended unexpectedly.  Not all yield curves are "
                              "upto date.\n\n") +
                      c.complete +
                      " polygons completed successfully.\nError occurred while importing: "
                      "Beta\n\n" +
                      GetMessage(m.Messages, "&VDYPERR"));
    }
}

TEST_F(VdypImport, FailsOnValuesThatAreNoNumberOrOverflow) {
    const std::string good = vdypRow(1, 1, 1.0);
    struct Case {
        std::string line;
        int error;
    };
    const Case cases[] = {
        {withField(good, 109, 7, "12x"), ErrTypeMismatch},
        {withField(good, 109, 7, ""), ErrTypeMismatch},
        {withField(good, 58, 7, "n/a"), ErrTypeMismatch},
        {good.substr(0, 100), ErrTypeMismatch},  // a line cut off before its volume
        {withField(good, 109, 7, "-4000"), ErrOverflow},
    };
    for (const Case& c : cases) {
        m = test::vdypProject();
        try {
            import("VDYP\r\n" + crlf({vdypRow(1, 0, 9.0), c.line}));
            ADD_FAILURE() << c.line;
        } catch (const ArborexError& e) {
            EXPECT_EQ(e.number(), c.error) << c.line;
        }
        EXPECT_EQ(m.VYield(0, 0).Vol, 90);  // what was read stays
    }
}

TEST_F(VdypImport, TakesLinesEndingInLineFeedsAndALastLineWithoutEnd) {
    std::string text = "VDYP: 7\n" + table(1, 0, 4);
    for (std::size_t at; (at = text.find("\r\n")) != std::string::npos;) text.erase(at, 1);
    text.pop_back();
    import(text);
    EXPECT_EQ(m.VYield(0, 4).Vol, 80);
    EXPECT_EQ(m.Header.VDYPVersion.str(), "7");
    EXPECT_TRUE(host.prompt.shown.empty());
}

TEST_F(VdypImport, AMissingFileIsToldAndChangesNothing) {
    ImportVDYP(m, host, dir.file("vdypout.dat"), nullptr);
    ASSERT_EQ(host.prompt.shown.size(), 1u);
    EXPECT_EQ(host.prompt.shown[0].title, "Importing VDYP Data File");
    EXPECT_EQ(m.Poly[0].YIELDSTATE[0], 0);
}

std::string errorLine(const char* kind, int polygonNumber, const char* text) {
    char line[200];
    std::snprintf(line, sizeof line, "%-11s  %-7s  %3d   %3d  %s", kind, "Arborex", polygonNumber,
                  1, text);
    return line;
}

TEST(VdypErrorFile, CountsAndListsWarningsAndErrors) {
    test::TempDir dir;
    Model m = test::vdypProject();
    std::vector<PostItem> post;
    EXPECT_EQ(LoadVDYPError(m, dir.file("ERROR.TXT"), post).label(), "0 Warnings / 0 Errors");
    EXPECT_TRUE(post.empty());

    writeAll(dir.file("error.txt"),
             crlf({errorLine("WARNING", 2, "Site index is low."),
                   errorLine("error", 0, "No yield table made."), errorLine("NOTE", 1, "Info"),
                   "ERROR short line", errorLine(" Error", 3, "  Bad species.  ")}));
    EXPECT_EQ(LoadVDYPError(m, dir.file("ERROR.TXT"), post).label(), "1 Warnings / 2 Errors");
    EXPECT_EQ(post, (std::vector<PostItem>{{"P2\tSite index is low.", 1},
                                           {"Arborex\t\tNo yield table made.", -1},
                                           {"P3\tBad species.", 2}}));
}

}  // namespace
}  // namespace arborex
