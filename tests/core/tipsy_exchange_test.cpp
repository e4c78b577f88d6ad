// The exchange with TIPSY: the batch file copied with new paths, the stand records at their
// columns, the yield report's tables with the thin found in them, and the error file's list.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/errors.hpp"
#include "base/messages.hpp"
#include "fuzz/tipsy_report.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"
#include "yield/tipsy_exchange.hpp"

namespace arborex {
namespace {

using test::atColumn;
using test::tipsyRow;
using test::TipsyTable;

std::string readBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}
void writeBytes(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}
int errorNumberOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const ArborexError& e) {
        return e.number();
    }
    return 0;
}

// ---- The batch file ----

std::string slot(const std::string& text) {
    return text + std::string(256 - text.size(), '\0');
}
std::string btpHeader() {
    std::string header(32, '\0');
    for (int i = 0; i < 32; ++i) header[static_cast<std::size_t>(i)] = static_cast<char>(i * 7);
    return header;
}
std::string btpTail() {
    std::string tail(300, '\0');
    for (int i = 0; i < 300; ++i) tail[static_cast<std::size_t>(i)] = static_cast<char>(i * 13 + 5);
    return tail + "\r\n";
}
std::string btpTemplate() {
    return btpHeader() + slot("") + slot("C:\\TIPSY\\in.dat") + slot("C:\\TIPSY\\out.dat") +
           slot("C:\\TIPSY\\out.err") + btpTail();
}

TEST(BtpFile, PathsArePatchedAndEverythingElseCopiedByteForByte) {
    test::TempDir dir;
    writeBytes(dir.file("ARBOREX2.BTP"), btpTemplate());  // installed in another case

    BtpFile btp = LoadBTPDefaults(dir.file("arborex2.btp"));
    EXPECT_EQ(std::string(btp.header.data(), 32), btpHeader());
    EXPECT_EQ(btp.paths[1], slot("C:\\TIPSY\\in.dat"));
    EXPECT_EQ(std::string(btp.tail.begin(), btp.tail.end()), btpTail());

    CreateBTPfile(btp, dir.file("unchanged.btp"));
    EXPECT_EQ(readBytes(dir.file("unchanged.btp")), btpTemplate());

    const std::string longest(256, 'x');
    btp.paths = {"", "  /tmp/w/TIPSYin.dat  ", "/tmp/w/TIPSYout.dat", longest};
    CreateBTPfile(btp, dir.file("arborex2.btp"));
    EXPECT_EQ(readBytes(dir.file("arborex2.btp")),
              btpHeader() + slot("") + slot("/tmp/w/TIPSYin.dat") + slot("/tmp/w/TIPSYout.dat") +
                  longest + btpTail());
}

TEST(BtpFile, AMissingOrShortTemplateAndAnOverlongPathAreFaults) {
    test::TempDir dir;
    EXPECT_EQ(errorNumberOf([&] { LoadBTPDefaults(dir.file("none.btp")); }), ErrFileNotFound);
    writeBytes(dir.file("short.btp"), btpTemplate().substr(0, 1000));
    EXPECT_EQ(errorNumberOf([&] { LoadBTPDefaults(dir.file("short.btp")); }), ErrInputPastEnd);

    writeBytes(dir.file("t.btp"), btpTemplate());
    BtpFile btp = LoadBTPDefaults(dir.file("t.btp"));
    btp.paths[2] = std::string(257, 'x');
    EXPECT_NE(errorNumberOf([&] { CreateBTPfile(btp, dir.file("new.btp")); }), 0);
    EXPECT_FALSE(std::filesystem::exists(dir.file("new.btp")));
}

// ---- The stand records ----

Model exportProject() {
    Model m = test::tipsyProject({"A", "B", "NC", "GONE", "CURRENT", "NSR"});
    m.SHOWUI = 0;
    auto species = [&](const char* code, const char* modelCode) {
        SpeciesRec row;
        row.Code = code;
        row.Code2 = modelCode;
        m.Ref.SpeciesT.push_back(row);
    };
    m.Ref.SpeciesT[0].Code2 = "NO";  // row 0 is never a match, even for a blank code
    species("FD", "F ");
    species("PL", "PL");
    species("FD", "ZZ");  // a later row of the same code is never reached
    m.Ref.SpeciesTCount = 3;

    PolyData& a = m.Poly[0];
    a.TAGETOTAL = 5;
    a.FIZ = "C";
    a.DENSITY = 1600;
    a.THIN = 0;
    a.THINNED = 900;
    a.REGEN = 1;
    a.OAF1 = -1;
    a.OAF2 = 3;
    a.TS = {Code2("FD"), Code2("PL"), Code2("XX"), Code2(""), Code2("")};
    a.TP = {70, 30, 0, 0, 0};
    a.TI = {22, 19, 17, 0, 0};
    a.TH = {3, 2, 1, 0, 0};
    PolyMgmt& am = m.PolyM[0];
    am.TUTILIZ = 12.5f;
    am.TG = {5, 2, 0, 0, 0};
    am.CTSTEMHA = 600;  // no commercial thin and no fertilizer: not passed
    am.FSTARTYEAR = 20;

    PolyData& b = m.Poly[1];
    b.MGNT = {0, 1};
    b.YIELDSTATE[1] = 2;
    b.FIZ = "";
    b.DENSITY = 1200;
    b.THIN = 1;
    b.THINNED = 900;
    b.REGEN = 0;
    b.OAF1 = 0;
    b.OAF2 = -1;
    b.TS[0] = "PL";
    b.TP = {100, 0, 0, 0, 0};
    b.TI[0] = 18;
    PolyMgmt& bm = m.PolyM[1];
    bm.TUTILIZ = 17.5f;
    bm.COMTHIN = 1;
    bm.CTSTEMHA = 600;
    bm.CTHEIGHT = 12.5f;
    bm.FERT = 1;
    bm.FSTARTYEAR = 25;
    bm.FINCTYPE = 1;
    bm.FINCREASE = 10.0f;

    m.Poly[2].MGNT = {2, 0};
    m.PolyC[3].DELETE = 1;
    m.Poly[4].YIELDSTATE[1] = 3;
    m.Poly[5].MGNT = {3, 0};
    for (int p = 0; p < 6; ++p) {
        m.TYield(p, 3).Vol = 99;
        m.Poly[static_cast<std::size_t>(p)].TSICALC = 19.0f;
    }
    return m;
}

std::string record(const std::string& text) {
    return text + std::string(200 - text.size(), ' ') + "\r\n";
}

TEST(ExportTIPSY, WritesThePolygonsDueAsRecordsOfFixedColumns) {
    test::TempDir dir;
    Model m = exportProject();
    EXPECT_EQ(ExportTIPSY(m, dir.file("TIPSYin.dat"), false), 2);
    // clang-format off
    EXPECT_EQ(readBytes(dir.file("TIPSYin.dat")),
              record("1   5   C 12.5  1600  0     P 15  3   F  PL          70  30  0   0   0   22"
                     "             3              5  2  0  0  0") +
              record("2   0     17.5  1200  900   N 0   5   PL             100 0   0   0   0   18"
                     "             0              0  0  0  0  0  600 13 25  V 10"));
    // clang-format on
    for (int p : {0, 1}) {  // cleared before the model runs
        EXPECT_EQ(m.TYield(p, 3).Vol, 0);
        EXPECT_EQ(m.Poly[static_cast<std::size_t>(p)].TSICALC, 0.0f);
        EXPECT_EQ(m.Poly[static_cast<std::size_t>(p)].YIELDSTATE[1], 0);
    }
    for (int p : {2, 3, 4, 5}) {  // NC, deleted, current, NSR: their curves stay
        EXPECT_EQ(m.TYield(p, 3).Vol, 99);
        EXPECT_FALSE(tipsyDue(m, p, false));
    }
    EXPECT_EQ(m.Poly[4].YIELDSTATE[1], 3);

    EXPECT_TRUE(tipsyDue(m, 4, true));
    EXPECT_FALSE(tipsyDue(m, 3, true));
    EXPECT_EQ(ExportTIPSY(m, dir.file("TIPSYin.dat"), true), 3);
}

TEST(ExportTIPSY, LaterSpeciesCarrySiteAndHeightOnlyWhenTheSwitchesSaySo) {
    struct Case {
        int16_t site, height;
        const char* siteColumns;    // 77-78, species 1
        const char* heightColumns;  // 92-93
    };
    for (const Case& c : {Case{0, 0, "  ", "  "}, Case{1, 0, "19", "  "}, Case{0, 1, "  ", "2 "},
                          Case{1, 1, "19", "2 "}}) {
        test::TempDir dir;
        Model m = exportProject();
        m.Settings.TIPSYSITE = c.site;
        m.Settings.TIPSYHEIGHT = c.height;
        ExportTIPSY(m, dir.file("in.dat"), false);
        const std::string first = readBytes(dir.file("in.dat")).substr(0, 200);
        EXPECT_EQ(first.substr(73, 2), "22");  // species 0 always
        EXPECT_EQ(first.substr(88, 2), "3 ");
        EXPECT_EQ(first.substr(76, 2), c.siteColumns);
        EXPECT_EQ(first.substr(91, 2), c.heightColumns);
        EXPECT_EQ(first.substr(79, 2), c.site ? "17" : "  ");
    }
}

TEST(TipsyArguments, TheModelRunsWithoutItsScreensUnlessAskedTo) {
    Model m;
    m.SHOWUI = 0;
    EXPECT_EQ(tipsyArguments(m), (std::vector<std::string>{"Arborex2.btp", "/NO_UI"}));
    m.SHOWUI = 1;
    EXPECT_EQ(tipsyArguments(m), (std::vector<std::string>{"Arborex2.btp"}));
}

// ---- The yield report ----

struct Imported {
    Model m = test::tipsyProject({"A", "B", "C"});
    test::FakeHost host;
    std::vector<std::string> progress;

    void import(const std::string& report) {
        test::TempDir dir;
        writeBytes(dir.file("TIPSYout.dat"), report);
        ImportTIPSY2(m, host, dir.file("TIPSYout.dat"),
                     [this](const std::string& label) { progress.push_back(label); });
    }
    const YieldRow& row(int p, int step) const { return m.TYield(p, step); }
    const std::array<int16_t, 8>& thin(int p) const {
        return m.PolyM[static_cast<std::size_t>(p)].TIPSYCACHE;
    }
    bool told() const { return host.prompt.showed("ERROR Importing TIPSY"); }
};

std::vector<std::string> gridRowsThrough(int lastAge) {
    std::vector<std::string> rows = test::tipsyGridRows();
    rows.resize(static_cast<std::size_t>(lastAge / 10 + 1));
    return rows;
}
TipsyTable tableOf(int number, std::vector<std::string> rows) {
    return {{test::tipsyTableLine(number), test::tipsySiteIndexLine("21.5")}, std::move(rows)};
}

TEST(ImportTIPSY2, EveryGridAgeOfATableBecomesARowOfTheCurve) {
    for (const char* eol : {"\r\n", "\n"}) {
        Imported in;
        in.import(test::tipsyReport({test::tipsyGridTable(2)}, eol));
        EXPECT_EQ(in.m.Header.TIPSYVersion.str(), "4.1d Batch");
        const YieldRow& at60 = in.row(1, 6);
        EXPECT_EQ(at60.Vol, 1800);
        EXPECT_EQ(at60.Dia, 180);
        EXPECT_EQ(at60.Ht, 150);
        EXPECT_EQ(at60.Mai, 3.0f);
        EXPECT_EQ(in.row(1, 0).Mai, 0.0f);  // age 0 has no increment
        EXPECT_EQ(in.row(1, 10).Vol, 3000);
        EXPECT_EQ(in.m.Poly[1].TSICALC, 21.5f);
        EXPECT_EQ(in.m.Poly[1].YIELDSTATE[1], 2);
        EXPECT_EQ(in.thin(1)[0], 0);
        EXPECT_EQ(in.m.Poly[0].YIELDSTATE[1], 1);  // not in the report
        EXPECT_FALSE(in.told());
        ASSERT_FALSE(in.progress.empty());
        EXPECT_EQ(in.progress.front().back(), '%');
    }
}

TEST(ImportTIPSY2, OnlyTheFirstFallInVolumeIsTheThinAndRowsOffTheGridDoNotCount) {
    std::vector<std::string> rows = gridRowsThrough(60);  // 60: 180.0 m3, 18.0 cm, 15.0 m
    for (const std::string& row :
         {tipsyRow(63, 177.5, 19.5, 16.0), tipsyRow(65, 178.0, 19.8, 16.2),
          tipsyRow(70, 176.0, 21.0, 17.5), tipsyRow(80, 190.0, 24.0, 20.0),
          tipsyRow(90, 200.0, 27.0, 22.5), tipsyRow(100, 210.0, 30.0, 25.0)})
        rows.push_back(row);
    Imported in;
    in.m.PolyM[0].TIPSYCACHE[0] = 40;  // a thin of an earlier import is forgotten
    in.import(test::tipsyReport({tableOf(1, rows)}));

    // Age, cut (2.5 m3 rounds to the even 2), volume, diameter and height before and after.
    EXPECT_EQ(in.thin(0), (std::array<int16_t, 8>{63, 2, 1800, 1775, 180, 195, 150, 160}));
    EXPECT_EQ(in.row(0, 6).Vol, 1800);
    EXPECT_EQ(in.row(0, 7).Vol, 1760);  // 63 and 65 left nothing behind
    EXPECT_EQ(in.row(0, 7).Mai, 176.0f / 70.0f + 2.5f / 63.0f);
    EXPECT_EQ(in.row(0, 10).Mai, 210.0f / 100.0f + 2.5f / 63.0f);
    EXPECT_EQ(in.row(0, 5).Mai, 3.0f);
    EXPECT_FALSE(in.told());  // eleven grid rows: complete
}

TEST(ImportTIPSY2, AThinOnAGridAgeKeepsTheLaterRow) {
    // Two rows of age 50 make one row too many; a thin printed in three rows is complete.
    for (int rowsAt50 : {2, 3}) {
        std::vector<std::string> rows = gridRowsThrough(40);
        rows.push_back(tipsyRow(50, 150.0, 15.0, 12.5));
        for (int i = 1; i < rowsAt50; ++i) rows.push_back(tipsyRow(50, 110.0, 16.0, 12.5));
        for (int age = 60; age <= 100; age += 10) rows.push_back(tipsyRow(age, age * 2.0, 20, 20));
        Imported in;
        in.import(test::tipsyReport({tableOf(3, rows)}));
        EXPECT_EQ(in.thin(2)[0], 50);
        EXPECT_EQ(in.thin(2)[1], 40);
        EXPECT_EQ(in.row(2, 5).Vol, 1100);
        EXPECT_EQ(in.row(2, 5).Dia, 160);
        EXPECT_EQ(in.told(), rowsAt50 == 2) << rowsAt50;
    }
}

TEST(ImportTIPSY2, ABlockWithoutATableLineGoesToThePolygonBefore) {
    std::vector<std::string> doubled;
    for (int age = 0; age <= 100; age += 10) doubled.push_back(tipsyRow(age, age * 4.0, 1, 1));
    Imported in;
    in.import(test::tipsyReport(
        {test::tipsyGridTable(2),
         {{test::tipsySiteIndexLine("30")}, doubled},
         {{test::tipsyTableLine(0), test::tipsySiteIndexLine("40")}, test::tipsyGridRows()},
         {{test::tipsySiteIndexLine("50")}, test::tipsyGridRows()}}));
    EXPECT_EQ(in.row(1, 10).Vol, 4000);
    EXPECT_EQ(in.m.Poly[1].TSICALC, 30.0f);
    // Table 0 names no polygon, and the block after it has nowhere to go either.
    for (int p : {0, 2}) EXPECT_EQ(in.m.Poly[static_cast<std::size_t>(p)].YIELDSTATE[1], 1);
    // Polygon B was read twice over: 22 rows is no complete table.
    EXPECT_TRUE(in.host.prompt.showed("Error occurred while importing: B"));

    Imported first;  // before any table line the polygon is the first
    first.import(test::tipsyReport({{{test::tipsySiteIndexLine("30")}, doubled}}));
    EXPECT_EQ(first.row(0, 10).Vol, 4000);
}

TEST(ImportTIPSY2, TheSiteIndexIsTheFirstSiteOrTopHeightOfTheHeader) {
    using test::tipsySiteIndexLine;
    using test::tipsyTopHeightLine;
    const struct {
        std::vector<std::string> header;
        float si;
    } cases[] = {
        {{tipsySiteIndexLine("23.4")}, 23.4f},
        {{"  SITE INDEX =   18"}, 18.0f},
        {{tipsyTopHeightLine("12.5", false)}, 12.5f},
        {{tipsyTopHeightLine("14.5", true)}, 14.5f},
        {{atColumn(51, "9.0", atColumn(38, "11.0", "  Top height  actual"))}, 11.0f},
        {{tipsyTopHeightLine("12.5", false), tipsySiteIndexLine("23.4")}, 12.5f},
        {{tipsySiteIndexLine("23.4"), tipsyTopHeightLine("14.5", true)}, 23.4f},
    };
    for (const auto& c : cases) {
        std::vector<std::string> header = c.header;
        header.push_back(test::tipsyTableLine(1));
        Imported in;
        in.import(test::tipsyReport({{header, test::tipsyGridRows()}}));
        EXPECT_EQ(in.m.Poly[0].TSICALC, c.si) << c.header.front();
    }
}

TEST(ImportTIPSY2, AReportCutOffInsideATableIsToldAndKeepsTheRowsRead) {
    Imported in;
    test::TempDir dir;
    writeBytes(dir.file("MESSAGES.DAT"), "&TIPSYERR\r\nRun TIPSY again.\r\n");
    LoadMessages(in.m.Messages, in.host, dir.file("MESSAGES.DAT"));

    TipsyTable cut = tableOf(2, gridRowsThrough(50));
    cut.closed = false;
    in.import(test::tipsyReport({test::tipsyGridTable(1), cut}));

    ASSERT_EQ(in.host.prompt.shown.size(), 1u);
    const test::ShownBox& box = in.host.prompt.shown[0];
    EXPECT_EQ(box.title, "ERROR Importing TIPSY");
    EXPECT_EQ(box.text,
              "The TIPSY file ended unexpectedly.  Not all yield curves are upto date.\r\n\r\n"
              "1 polygons completed successfully.\r\nError occurred while importing: B\r\n\r\n"
              "Run TIPSY again.\r\n");
    EXPECT_EQ(box.icon, Icon::Critical);
    EXPECT_EQ(in.row(1, 4).Vol, 1200);
    EXPECT_EQ(in.m.Poly[1].YIELDSTATE[1], 2);
}

TEST(ImportTIPSY2, AReportWithoutTablesImportsNothing) {
    Imported in;
    in.import(test::tipsyReport({}) + "  No stand was run.\r\n");
    EXPECT_EQ(in.m.Header.TIPSYVersion.str(), "4.1d Batch");
    EXPECT_TRUE(in.host.prompt.shown.empty());
    for (int p = 0; p < 3; ++p) EXPECT_EQ(in.m.Poly[static_cast<std::size_t>(p)].YIELDSTATE[1], 1);
}

TEST(ImportTIPSY2, AMissingReportIsToldAndABrokenOneIsAFault) {
    Imported missing;
    test::TempDir dir;
    ImportTIPSY2(missing.m, missing.host, dir.file("TIPSYout.dat"), nullptr);
    EXPECT_TRUE(missing.host.prompt.showed("Importing TIPSY2 Data File"));

    Imported in;
    EXPECT_EQ(errorNumberOf([&] { in.import("TIPSY batch report\r\n\r\n"); }), ErrInputPastEnd);
    std::vector<std::string> rows = gridRowsThrough(90);
    rows.push_back(tipsyRow(100, 3300.0, 30.0, 25.0));  // beyond 3,276.7 m3/ha
    EXPECT_EQ(errorNumberOf([&] { in.import(test::tipsyReport({tableOf(1, rows)})); }),
              ErrOverflow);
    EXPECT_EQ(errorNumberOf([&] { in.import(test::tipsyReport({tableOf(9, rows)})); }),
              ErrSubscript);
}

// ---- The error file ----

TEST(LoadTIPSYError, MessagesBecomeLinesOfTheListAndOtherKindsABox) {
    using test::tipsyContinuationLine;
    using test::tipsyErrorLine;
    test::TempDir dir;
    writeBytes(dir.file("tipsyout.ERR"),  // written in another case
               test::tipsyErrorFile({
                   tipsyErrorLine(2, "WARNING  Site index is below the range of the model"),
                   tipsyContinuationLine("and was raised to its lowest value"),
                   tipsyContinuationLine("a second run-on line stands on its own"),
                   tipsyErrorLine(0, "ERROR:   The batch file names no species table"),
                   "  a short line is passed over",
                   tipsyErrorLine(1, "NOTICE   Run finished at 10:42 on the second day"),
                   tipsyErrorLine(3, "Error:   Density is out of range for this model"),
               }));
    Model m = test::tipsyProject({"A", "B", "C"});
    test::ScriptedPrompt prompt;
    std::vector<PostItem> post{{"earlier", 0}};

    const ErrorCounts counts = LoadTIPSYError(m, prompt, dir.file("TIPSYout.err"), post);
    EXPECT_EQ(counts.label(), "1 Warnings / 2 Errors");
    EXPECT_EQ(post, (std::vector<PostItem>{
                        {"earlier", 0},
                        {"B\tWARNING  Site index is below the range of the model", 1},
                        {"\t\tand was raised to its lowest value", 1},
                        {"Arborex\t\tERROR:   The batch file names no species table", -1},
                        {"C\tError:   Density is out of range for this model", 2},
                    }));
    ASSERT_EQ(prompt.shown.size(), 2u);
    EXPECT_EQ(prompt.shown[0].text, "SECOND");
    EXPECT_EQ(prompt.shown[1].text, "NOTICE");
    EXPECT_EQ(prompt.shown[1].title, kProgramTitle);
}

TEST(LoadTIPSYError, AnAbsentOrHeadingOnlyFileCountsNothing) {
    test::TempDir dir;
    Model m = test::tipsyProject({"A"});
    test::ScriptedPrompt prompt;
    std::vector<PostItem> post;
    EXPECT_EQ(LoadTIPSYError(m, prompt, dir.file("TIPSYout.err"), post).label(),
              "0 Warnings / 0 Errors");
    writeBytes(dir.file("TIPSYout.err"), "TIPSY ERROR REPORT\r\n\r\n");
    EXPECT_EQ(LoadTIPSYError(m, prompt, dir.file("TIPSYout.err"), post).label(),
              "0 Warnings / 0 Errors");
    EXPECT_TRUE(post.empty());
    EXPECT_TRUE(prompt.shown.empty());
}

}  // namespace
}  // namespace arborex
