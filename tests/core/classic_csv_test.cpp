// The classic format and the grid's export: a project written out and read back over itself
// is unchanged in either format, and the classic reader's refusals and older titles.

#include <gtest/gtest.h>

#include "base/messages.hpp"
#include "exchange/classic_csv.hpp"
#include "exchange/grid_export.hpp"
#include "exchange/text_import.hpp"
#include "frame/project_open.hpp"
#include "model/reference_tables.hpp"
#include "support/fake_host.hpp"
#include "support/small_project.hpp"

namespace arborex {
namespace {

const std::string kData = std::string(ARBOREX_SOURCE_DIR) + "/data";

// The bundled sample with the installed reference tables, as the program holds it once open.
Model openSample(test::FakeHost& host) {
    Model m;
    programDefaults(m);
    m.Paths[ArborexFolder] = kData + "/";
    LoadSpeciesV(m.Ref, host, kData + "/SPECIESV.DAT");
    LoadSpeciesT(m.Ref, host, kData + "/SPECIEST.DAT");
    LoadChoices(m.Ref, host, kData + "/", true);
    LoadMessages(m.Messages, host, kData + "/MESSAGES.DAT");
    EXPECT_TRUE(LoadARX(m, host, std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx"));
    return m;
}

// Every polygon record and curve status, field by field through the grid's and the classic
// writer's texts, which together show every stored field the exchange touches.
void expectSameProject(const Model& before, const Model& after) {
    ASSERT_EQ(after.LastPoly, before.LastPoly);
    EXPECT_EQ(gridCells(after), gridCells(before));
    EXPECT_EQ(classicCsvText(after, "\t"), classicCsvText(before, "\t"));
    for (int p = 0; p <= before.LastPoly; ++p) {
        const auto i = static_cast<std::size_t>(p);
        SCOPED_TRACE(before.Poly[i].NAME.str());
        EXPECT_EQ(after.Poly[i].YIELDSTATE, before.Poly[i].YIELDSTATE);
        EXPECT_EQ(after.Poly[i].VSIDX, before.Poly[i].VSIDX);
        EXPECT_EQ(after.Poly[i].TSIDX, before.Poly[i].TSIDX);
        EXPECT_EQ(after.Poly[i].VSICALC, before.Poly[i].VSICALC);
        EXPECT_EQ(after.HarvAge[i][0].HarvestAge, before.HarvAge[i][0].HarvestAge);
    }
}

TEST(ExchangeRoundTrip, GridExportReadBackLeavesTheProjectUnchanged) {
    test::FakeHost host;
    Model m = openSample(host);
    ASSERT_GE(m.LastPoly, 1);
    const Model before = m;
    const std::string text = gridExportText(gridCells(m));
    EXPECT_EQ(text.rfind("NAME\tAREA\tDELETE\t\t\tOWNERSHIP\t", 0), 0u);

    host.prompt.answers = {Answer::Yes};  // update the duplicates: every polygon
    PolygonImport run;
    ASSERT_TRUE(TxtToColumns(m, host, text, run));
    EXPECT_EQ(run.counts.ImpUpdated, m.LastPoly + 1);
    EXPECT_EQ(run.counts.ImpAdded, 0);
    expectSameProject(before, m);
}

TEST(ExchangeRoundTrip, ClassicCommaAndTabReadBackLeaveTheProjectUnchanged) {
    for (const auto& [writer, reader] :
         {std::pair<const char*, char>{kClassicCommaWriter, ','},
          std::pair<const char*, char>{kClassicTabDelimiter, '\t'}}) {
        SCOPED_TRACE(int(reader));
        test::FakeHost host;
        Model m = openSample(host);
        const Model before = m;
        const std::string text = classicCsvText(m, writer);
        host.prompt.answers = {Answer::Yes};
        PolygonImport run;
        ASSERT_TRUE(importOldCsvText(m, host, text, reader, "sample.csv", run));
        EXPECT_EQ(run.counts.ImpUpdated, m.LastPoly + 1);
        EXPECT_FALSE(host.prompt.showed("Keyword(s) Not Found"));
        expectSameProject(before, m);
    }
}

TEST(ClassicCsv, WritesTheFixedColumnsWithTheCommaAndBlank) {
    Model m = test::smallProject({"A1"});
    m.Settings.PCperc = 25;
    m.Poly[0].VUTILIZ = 12.5f;
    m.Poly[0].PSYU = 42;
    m.Poly[0].VS[0] = "PL";
    m.Poly[0].VP[0] = 100;
    m.Poly[0].TI[0] = 21;
    const std::string text = classicCsvText(m, kClassicCommaWriter);
    EXPECT_EQ(text.substr(0, text.find("\r\n") + 2),
              "NAME, AREA, DELETE, OWNERSHIP, ROADAREA, AGE, FIZ, SILVI, PCPERC, PCNEXT, "
              "REGENDELAY, EXISTINGMGNT, FUTUREMGNT, VMINCUTAGE, VMINCUTDBH, VMINCUTVOL, "
              "TMINCUTAGE, TMINCUTDBH, TMINCUTVOL, HAR1, HAR2, VUTILIZ, VAGETOTAL, VHEIGHTTOTAL, "
              "VSITEINDEX, VSICALC, CLOSURE, STOCKING, PSYU, PSYUBLOCK, REGION, COMP, COMPL, VAF, "
              "VS1, VP1, VX1, VS2, VP2, VX2, VS3, VP3, VX3, VS4, VP4, VX4, VS5, VP5, VX5, VS6, "
              "VP6, VX6, TUTILIZ, TAGETOTAL, DENSITY, THINNED, THIN, REGEN, OAF1, OAF2, TS1, TP1, "
              "TH1, TI1, TS2, TP2, TH2, TI2, TS3, TP3, TH3, TI3, TS4, TP4, TH4, TI4, TS5, TP5, "
              "TH5, TI5\r\n");
    // Settings in brackets, "TBA" for a site index not calculated yet, "0." for none given.
    EXPECT_EQ(text.substr(text.find("\r\n") + 2),
              "A1, 10.0, 0, C, 0.0, 0, , Clearcut, [25], [20], [0], VDYP, VDYP, [40], [15], "
              "[150], [40], [15], [150], [0], [0], 12.5, 0, 0, 0., TBA, 0, , 0042, , , , , 0.00, "
              "PL, 100, 1, , 0, 1, , 0, 1, , 0, 1, , 0, 1, , 0, 1, 0.0, 0, 0, 0, 0, N, [15], "
              "[5], , 0, 0, 21.00, , 0, 0, 0.00, , 0, 0, 0.00, , 0, 0, 0.00, , 0, 0, 0.00\r\n");
}

struct ClassicImportTest : ::testing::Test {
    test::FakeHost host;
    Model m = test::smallProject({"A1"});
    PolygonImport run;
    ClassicImportTest() { m.Paths[ArborexFolder] = kData + "/"; }
    bool import(const std::string& text) {
        return importOldCsvText(m, host, text, ',', "C:\\old.csv", run);
    }
};

TEST_F(ClassicImportTest, ABadTitleRowStopsBeforeAnythingChanges) {
    const GridCells before = gridCells(m);
    EXPECT_FALSE(import("NAME, AREA\r\nB1, 5\r\n"));
    EXPECT_TRUE(host.prompt.showed(
        "(C:\\old.csv) is not a valid CSV file or it contains less than 3 ROW TITLES seperated "
        "by commas.  The following is the first line of the file that should contain the row "
        "titles.\r\n\r\nNAME, AREA"));
    EXPECT_FALSE(import("MAPSHEET, AREA, AGE\r\nB1, 5, 6, 7\r\n"));
    EXPECT_TRUE(host.prompt.showed("MAPSHEET, AREA, AGE\r\n\r\nNAME & POLYGON title Missing"));
    EXPECT_FALSE(import("POLYGON, AREA, AGE\r\n"));
    EXPECT_TRUE(host.prompt.showed("NAME & MAPSHEET title Missing"));
    EXPECT_FALSE(import(""));
    EXPECT_EQ(gridCells(m), before);
}

TEST_F(ClassicImportTest, OlderTitlesQuotesAndShortLines) {
    m.Settings.PCperc = 25;
    ASSERT_TRUE(
        import("MAPSHEET,POLYGON,UTILIZ,PC,PCPERC,,OLDKEY,AREA\r\n"
               "093B045,7,17.5,x,[25],ignored,1,2\r\n"
               "\"093,C\",8,12.5,,30,,2,3\r\n"  // a quoted delimiter stays
               "093B045,9,\r\n"                 // three fields: not counted
               ",10,7.5,,,,,\r\n"));            // blank map sheet
    ASSERT_EQ(m.LastPoly, 2);
    const PolyData& first = m.Poly[1];
    EXPECT_EQ(first.NAME.str(), "093B045 7");
    EXPECT_EQ(first.VUTILIZ, 17.5f);
    EXPECT_EQ(m.PolyM[1].TUTILIZ, 17.5f);
    EXPECT_EQ(first.SILVI, 1);
    EXPECT_EQ(first.PCPERC, -1);  // the writer's bracketed setting reads back as the setting
    EXPECT_EQ(first.AREA, 2.0f);
    EXPECT_EQ(m.Poly[2].NAME.str(), "093,C 8");
    EXPECT_EQ(m.Poly[2].PCPERC, 30);
    EXPECT_EQ(run.counts.ImpAdded, 2);
    EXPECT_EQ(run.counts.ImpNoName, 1);
    EXPECT_EQ(run.counts.ImpBlank, 0);
    int unknownBoxes = 0;
    for (const auto& box : host.prompt.shown)
        if (box.title == "Keyword(s) Not Found") {
            ++unknownBoxes;
            EXPECT_NE(box.text.find("OLDKEY\r\n"), std::string::npos);
        }
    EXPECT_EQ(unknownBoxes, 1);
}

TEST_F(ClassicImportTest, DuplicatesAreSkippedOnTheFirstAnswer) {
    host.prompt.answers = {Answer::No};
    ASSERT_TRUE(import("NAME,AREA,AGE,FIZ\r\na1,5,6,B\r\nA1,7,8,C\r\n"));
    EXPECT_EQ(m.LastPoly, 0);
    EXPECT_EQ(m.Poly[0].AREA, 10.0f);
    EXPECT_EQ(run.counts.ImpSkipped, 2);
    EXPECT_TRUE(host.prompt.showed("0 OF 2\r\n"));
}

}  // namespace
}  // namespace arborex
