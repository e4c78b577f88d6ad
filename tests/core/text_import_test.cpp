// The text route: pasted tables and text files with catalogue keys, worked through with the
// bad input that real files hold.

#include <gtest/gtest.h>

#include <fstream>

#include "base/messages.hpp"
#include "exchange/grid_export.hpp"
#include "exchange/text_import.hpp"
#include "model/reference_tables.hpp"
#include "support/fake_host.hpp"
#include "support/small_project.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

const std::string kData = std::string(ARBOREX_SOURCE_DIR) + "/data";

struct TextImportTest : ::testing::Test {
    test::FakeHost host;
    Model m = test::smallProject({"A1", "A2"});
    PolygonImport run;
    TextImportTest() {
        m.Paths[ArborexFolder] = kData + "/";
        LoadSpeciesV(m.Ref, host, kData + "/SPECIESV.DAT");
        LoadSpeciesT(m.Ref, host, kData + "/SPECIEST.DAT");
        LoadMessages(m.Messages, host, kData + "/MESSAGES.DAT");
    }
    int boxes(const std::string& title) const {
        int n = 0;
        for (const auto& box : host.prompt.shown) n += box.title == title ? 1 : 0;
        return n;
    }
    const test::ShownBox& box(const std::string& title) const {
        for (const auto& b : host.prompt.shown)
            if (b.title == title) return b;
        throw std::runtime_error("no box " + title);
    }
    const PolyData& poly(const char* name) const {
        return m.Poly.at(static_cast<std::size_t>(findPolygonName(m, name)));
    }
};

TEST(DetectDelimiter, TabCommaSemicolonBlankInThatOrder) {
    EXPECT_EQ(DetectDelimiter("NAME;AREA,AGE\tX"), "\t");
    EXPECT_EQ(DetectDelimiter("NAME;AREA,AGE"), ",");
    EXPECT_EQ(DetectDelimiter("NAME AREA;AGE"), ";");
    EXPECT_EQ(DetectDelimiter("NAME AREA"), " ");
    EXPECT_EQ(DetectDelimiter("NAME"), "");
}

TEST_F(TextImportTest, APastedTableWithTheUsualFaults) {
    host.prompt.answers = {Answer::No};  // skip duplicates
    const std::string table =
        "NAME\tAREA\tvs1\tVP1\tVOLUME\r\n"
        "B1\t$1,234.5\tPL\t15%\t9\r\n"
        "b1\t3\tFD\t50\n"  // the same name in other case
        "\t4\r\n"          // no name
        "ONLY\r\n"         // one piece: passed over
        "C1\t2\tQQ\t+3\textra\tcells\r\n";
    ASSERT_TRUE(TxtToColumns(m, host, table, run));
    EXPECT_EQ(m.LastPoly, 3);
    EXPECT_EQ(poly("B1").AREA, 1234.5f);
    EXPECT_EQ(poly("B1").VS[0].str(), "PL");
    EXPECT_EQ(poly("B1").VP[0], 15);
    EXPECT_EQ(poly("C1").VS[0].str(), "");  // unknown code refused
    EXPECT_EQ(poly("C1").VP[0], 0);         // "+3" is 0.3
    EXPECT_EQ(boxes("Update polygons?"), 1);
    EXPECT_NE(box("Keyword(s) Not Found").text.find("VOLUME"), std::string::npos);
    EXPECT_EQ(box(kProgramTitle).text, "VDYP Species not found: QQ\r\n");
    EXPECT_EQ(box("Import Complete").text,
              "2 OF 4\r\nPOLYGONS IMPORTED \r\n2\tPolygons Added.\r\n"
              "0\tDuplicate Polygons Updated.\r\n\r\nDATA SKIPPED\r\n"
              "1\tDuplicate Polygons Skipped.\r\n1\tBlank Lines Skipped.\r\n"
              "0\tMapsheet and/or Polygon number blank .\r\n");
}

TEST_F(TextImportTest, TheFirstAnswerHoldsForEveryDuplicate) {
    host.prompt.answers = {Answer::Yes};
    m.Poly[0].YIELDSTATE = {3, 3};
    ASSERT_TRUE(TxtToColumns(m, host, "NAME,AREA,FIZ\na1,5,K\nA2,6,\nA1,7,", run));
    EXPECT_EQ(boxes("Update polygons?"), 1);
    EXPECT_EQ(run.counts.ImpUpdated, 3);
    EXPECT_EQ(m.LastPoly, 1);
    EXPECT_EQ(m.Poly[0].AREA, 7.0f);
    EXPECT_EQ(m.Poly[0].FIZ.str(), "K");
    EXPECT_EQ(m.Poly[0].YIELDSTATE, (std::array<int16_t, 2>{1, 1}));  // FIZ touches both
    EXPECT_EQ(box(kProgramTitle).text, "FIZ not found: \r\nFIZ not found: \r\n");
}

TEST_F(TextImportTest, MapSheetAndPolygonNumberMakeTheName) {
    ASSERT_TRUE(TxtToColumns(m, host, "MAPSHEET;POLYGON;AREA\n093B045;7;5\n;8;5\n", run));
    EXPECT_EQ(m.LastPoly, 2);
    EXPECT_EQ(m.Poly[2].NAME.str(), "93B045 7");
    EXPECT_EQ(m.Poly[2].AREA, 5.0f);
    EXPECT_EQ(run.counts.ImpNoName, 1);
}

TEST_F(TextImportTest, RefusedTextsChangeNothing) {
    const GridCells before = gridCells(m);
    const struct {
        const char* text;
        const char* message;
    } cases[] = {
        {"AREA\tAGE\r\n1\t2\r\n", "No Headerline found"},
        {"", "No Headerline found"},
        {"NAME\r\nA9\r\n", "Delimiter could not be detected"},
        {"POLYGON\tAREA\r\n7\t2\r\n", "No Name field exists, can't import"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        host.prompt.shown.clear();
        EXPECT_FALSE(TxtToColumns(m, host, c.text, run));
        EXPECT_TRUE(host.prompt.showed(c.message));
        EXPECT_EQ(gridCells(m), before);
    }
    host.prompt.shown.clear();
    EXPECT_TRUE(TxtToColumns(m, host, "NAME\tAREA\r\n", run));  // a header alone
    EXPECT_EQ(box("Import Complete").text.rfind("0 OF 0\r\n", 0), 0u);
    EXPECT_EQ(gridCells(m), before);
}

TEST_F(TextImportTest, ASecondNameColumnDoesNotRenameThePolygon) {
    ASSERT_TRUE(TxtToColumns(m, host, "NAME\tAREA\tNAME\r\nB1\t2\t\r\nB2\t3\tA1\r\n", run));
    EXPECT_EQ(m.Poly[2].NAME.str(), "B1");
    EXPECT_EQ(m.Poly[3].NAME.str(), "B2");
}

TEST(GridCells, AProjectWithoutPolygonsHasOnlyTheKeyRow) {
    Model m = test::smallProject({});
    const GridCells cells = gridCells(m);
    ASSERT_EQ(cells.size(), 1u);
    EXPECT_EQ(cells[0].size(), 101u);
    EXPECT_EQ(cells[0][3], "");  // SORT is never shown
    EXPECT_EQ(gridExportText(cells).substr(0, 12), "NAME\tAREA\tDE");
    EXPECT_EQ(tabCsvText({{" a ", "b"}, {"c"}}, ","), "a,b\r\nc\r\n");
}

TEST(Latin1FileText, Utf8BecomesLatin1AndOtherBytesStay) {
    EXPECT_EQ(latin1FileText("\xEF\xBB\xBFNAME\tcaf\xC3\xA9"), "NAME\tcaf\xE9");
    EXPECT_EQ(latin1FileText("caf\xE9 cr\xE8me"), "caf\xE9 cr\xE8me");  // Windows-1252
    EXPECT_EQ(latin1FileText("5 \xE2\x82\xAC"), "5 ?");
    EXPECT_EQ(latin1FileText("\xC3"), "\xC3");  // cut short: not UTF-8
}

TEST_F(TextImportTest, AUtf8FileKeepsItsAccents) {
    test::TempDir dir;
    std::ofstream(dir.file("stands.txt"), std::ios::binary)
        << "\xEF\xBB\xBFNAME\tNCDesc\r\nB\xC3\xA9\tFr\xC3\xAAne\r\n";
    std::string text;
    ASSERT_TRUE(readImportFile(host, dir.file("stands.txt"), "Import Data File", text));
    ASSERT_TRUE(TxtToColumns(m, host, text, run));
    EXPECT_EQ(m.Poly[2].NAME.str(), "B\xE9");
    EXPECT_EQ(m.PolyM[2].NCDESC.str(), "Fr\xEAne");
    EXPECT_FALSE(readImportFile(host, dir.file("missing.txt"), "Import Data File", text));
}

}  // namespace
}  // namespace arborex
