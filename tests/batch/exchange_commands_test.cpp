// import, export and tables in-process: a project started from a tab file, duplicates updated
// or skipped in the bundled sample, an export read back leaving the polygons as they were, the
// classic header, and command lines that are refused before anything is written.

#include "exchange_commands.hpp"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "batch_commands.hpp"
#include "batch_run.hpp"
#include "calc_command.hpp"
#include "json_check.hpp"
#include "model/project_file.hpp"
#include "platform/gdal/gdal_table_reader.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex::batch {
namespace {

using test::has;
using test::JsonCheck;
using test::RunResult;
using Strings = std::vector<std::string>;

std::string bytesOf(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void writeText(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

class ExchangeCommands : public ::testing::Test {
protected:
    RunResult run(Strings words) {
        words.insert(words.end(), {"--data", std::string(ARBOREX_SOURCE_DIR) + "/data"});
        return test::run(words);
    }
    std::string copyOfSample() {
        const std::string path = dir.file("sample.arx");
        std::filesystem::copy_file(std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx", path);
        return path;
    }
    test::TempDir dir;
};

// Two polygons, a refused FIZ and a species code the table does not know.
constexpr const char* kTabFile =
    "NAME\tAREA\tAGE\tFIZ\tVS1\tVP1\tCOLOUR\r\n"
    "North 1\t12.5\t85\tZ\tFD\t100\tred\r\n"
    "North 2\t$1,234.5\t40\tK\tQQ\t60\tblue\r\n";

TEST_F(ExchangeCommands, ImportStartsAProjectFromATabFile) {
    const std::string file = dir.file("stands.txt");
    writeText(file, kTabFile);
    const std::string project = dir.file("new.arx");
    const RunResult r = run({"import", project, file});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_TRUE(has(r.out, "Import of " + file +
                               " (text route)\n2 OF 2\nPOLYGONS IMPORTED \n"
                               "2\tPolygons Added.\n0\tDuplicate Polygons Updated.\n"));
    EXPECT_TRUE(has(r.out,
                    "Values refused (the field kept its former value):\n"
                    "  1 x FIZ not found: Z\n"
                    "  1 x VDYP Species not found: QQ\n"));
    EXPECT_TRUE(has(r.out, "note: Keyword(s) Not Found: "));
    EXPECT_TRUE(has(r.out, "COLOUR"));
    EXPECT_TRUE(has(r.out, "Wrote " + project + " (2 polygons)\n"));
    const Model m = test::savedProject(project);
    ASSERT_EQ(m.LastPoly, 1);
    EXPECT_EQ(m.Poly[0].NAME.str(), "North 1");
    EXPECT_FLOAT_EQ(m.Poly[0].AREA, 12.5f);
    EXPECT_FLOAT_EQ(m.Poly[1].AREA, 1234.5f);
    EXPECT_EQ(m.Poly[0].VS[0].str(), "FD");
}

TEST_F(ExchangeCommands, DuplicatesAreSkippedUnlessUpdateIsAsked) {
    const std::string project = copyOfSample();
    const std::string file = dir.file("update.txt");
    writeText(file, "NAME\tAREA\r\n93b045 101\t99.5\r\nSouth 9\t3\r\n");

    RunResult r = run({"import", project, file, "--json", "--save", dir.file("skipped.arx")});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    JsonCheck skipped(r.out);
    ASSERT_TRUE(skipped.valid()) << skipped.error() << "\n" << r.out;
    const auto& counts = skipped.root().at("counts");
    EXPECT_EQ(counts.at("ImpSkipped").text, "1");
    EXPECT_EQ(counts.at("ImpAdded").text, "1");
    EXPECT_EQ(skipped.root().at("created").text, "false");
    EXPECT_EQ(skipped.root().at("polygons").text, "16");
    EXPECT_NE(test::savedProject(dir.file("skipped.arx")).Poly[0].AREA, 99.5f);

    r = run({"import", project, file, "--duplicates", "update", "--json"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    JsonCheck updated(r.out);
    ASSERT_TRUE(updated.valid()) << updated.error();
    EXPECT_EQ(updated.root().at("counts").at("ImpUpdated").text, "1");
    EXPECT_EQ(updated.root().at("counts").at("ImpAdded").text, "1");
    EXPECT_TRUE(std::filesystem::exists(dir.file("sample.bak")));
    const Model m = test::savedProject(project);
    EXPECT_FLOAT_EQ(m.Poly[0].AREA, 99.5f);
    EXPECT_EQ(m.LastPoly, 15);
}

// Both formats, read back as updates of the polygons they came from, change nothing: the grid's
// full export is the same byte for byte, and no curve is marked out of date.
TEST_F(ExchangeCommands, AnExportReadBackLeavesThePolygonsAsTheyWere) {
    const std::string project = copyOfSample();
    const std::string grid = dir.file("grid.txt");
    ASSERT_EQ(run({"export", project, grid, "--advanced"}).code, ExitOk);
    const std::string before = bytesOf(grid);
    const Model original = test::savedProject(project);
    for (const Strings& form :
         {Strings{grid, "--advanced"}, Strings{dir.file("old.csv"), "--classic"}}) {
        ASSERT_EQ(run({"export", project, form[0], form[1]}).code, ExitOk);
        const RunResult r = run({"import", project, form[0], "--duplicates", "update", "--json"});
        ASSERT_EQ(r.code, ExitOk) << r.err;
        EXPECT_TRUE(has(r.out, "\"ImpUpdated\": 15,")) << form[1];
        EXPECT_TRUE(has(r.out, "\"messages\": [],")) << form[1];
        ASSERT_EQ(run({"export", project, grid, "--advanced"}).code, ExitOk);
        EXPECT_EQ(bytesOf(grid), before) << form[1];
        const Model again = test::savedProject(project);
        for (int p = 0; p <= original.LastPoly; ++p)
            EXPECT_EQ(again.Poly[p].YIELDSTATE, original.Poly[p].YIELDSTATE) << form[1] << " " << p;
    }
}

TEST_F(ExchangeCommands, ExportWritesTheGridOrTheClassicColumns) {
    const std::string project = copyOfSample();
    RunResult r = run({"export", project, dir.file("out.csv"), "--classic"});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_EQ(r.out,
              "Wrote " + dir.file("out.csv") + " (15 polygons, 80 columns, classic format)\n");
    const std::string classic = bytesOf(dir.file("out.csv"));
    EXPECT_EQ(classic.rfind("NAME, AREA, DELETE, OWNERSHIP, ROADAREA, AGE, FIZ, SILVI, ", 0), 0u);
    EXPECT_TRUE(has(classic.substr(0, classic.find("\r\n") + 2), ", TS5, TP5, TH5, TI5\r\n"));

    ASSERT_EQ(run({"export", project, dir.file("tab.txt"), "--classic"}).code, ExitOk);
    EXPECT_EQ(bytesOf(dir.file("tab.txt")).rfind("NAME\tAREA\tDELETE\t", 0), 0u);

    // Without --advanced the columns the grid shows before "Advanced Columns" is ticked.
    ASSERT_EQ(run({"export", project, dir.file("grid.txt")}).code, ExitOk);
    EXPECT_EQ(bytesOf(dir.file("grid.txt")).rfind("NAME\tAREA\tOWNERSHIP\tROADAREA\tAGE\t", 0), 0u);
    ASSERT_EQ(run({"export", project, dir.file("all.txt"), "--advanced"}).code, ExitOk);
    EXPECT_EQ(bytesOf(dir.file("all.txt")).rfind("NAME\tAREA\tDELETE\t\t\tOWNERSHIP\t", 0), 0u);
}

TEST_F(ExchangeCommands, WrongCommandLinesAndMissingFilesWriteNothing) {
    const std::string project = dir.file("p.arx");
    const std::string file = dir.file("f.txt");
    writeText(file, kTabFile);
    for (const Strings& words :
         {Strings{"import", project}, Strings{"import", project, file, "--duplicates", "ask"},
          Strings{"import", project, file, "--map", "POLYGON_NUMBER"},
          Strings{"import", project, file, "--map", "EST_AGE=NOSUCHKEY"},
          Strings{"export", project}, Strings{"export", project, file, "--classic", "--advanced"},
          Strings{"tables"}, Strings{"tables", file, "--table", "x"}}) {
        const RunResult r = run(words);
        EXPECT_EQ(r.code, ExitUsage) << words[0] << " " << words.back() << ": " << r.err;
        EXPECT_EQ(test::lineCount(r.err), 1) << r.err;
    }
    RunResult r = run({"import", project, dir.file("absent.txt")});
    EXPECT_EQ(r.code, ExitFailed);
    EXPECT_EQ(r.err, "arborex-batch: cannot read " + dir.file("absent.txt") + ": File Not Found\n");

    // A text with no header line is refused as a whole.
    writeText(file, "just some words\r\nand more\r\n");
    r = run({"import", project, file});
    EXPECT_EQ(r.code, ExitRefused);
    EXPECT_EQ(r.err, "arborex-batch: " + file + ": No Headerline found\n");
    EXPECT_FALSE(std::filesystem::exists(project));
}

// An inventory's layers: its fields mapped by hand, one kind of layer kept, a code refused.
TEST_F(ExchangeCommands, ACsvTableThroughTheDatabaseRoute) {
    if (!tableReaderAvailable()) GTEST_SKIP() << "built without GDAL";
    const std::string file = dir.file("layers.csv");
    writeText(file,
              "MAP_ID,POLYGON_NUMBER,LAYER,SITE,SPECIES_CD_1\n"
              "093G072,1234,D,5.5,AT\n"
              "093G072,1234,P,18.5,FDI\n"
              "093G072,1235,P,,QQ\n");
    RunResult r = test::run({"tables", file});
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_EQ(r.out,
              "layers (5 fields)\n  MAP_ID\n  POLYGON_NUMBER\n  LAYER\n  SITE\n  SPECIES_CD_1\n");

    const std::string project = dir.file("layers.arx");
    const Strings words = {
        "import", project,           file,      "--map",  "polygon_number=POLYGON",
        "--map",  "SITE=VSITEINDEX", "--where", "LAYER=P"};
    r = run(words);
    ASSERT_EQ(r.code, ExitOk) << r.err;
    EXPECT_TRUE(has(r.out,
                    "(database route, table \"layers\")\nColumns matched:\n"
                    "  MAP_ID -> MAPSHEET\n  POLYGON_NUMBER -> POLYGON\n"
                    "  SITE -> VSITEINDEX\n  SPECIES_CD_1 -> VS1\n"
                    "Fields with no matching Arborex variable: LAYER\n2 OF 2\n"));
    EXPECT_TRUE(has(r.out, "  1 x VDYP Species not found: QQ\n"));
    const Model m = test::savedProject(project);
    ASSERT_EQ(m.LastPoly, 1);
    EXPECT_EQ(m.Poly[0].NAME.str(), "93G072 1234");
    EXPECT_FLOAT_EQ(m.Poly[0].VSITEINDEX, 18.5f);
    EXPECT_EQ(m.Poly[0].VS[0].str(), "FD");

    // A field the table does not have is a wrong command line, and nothing is written.
    r = run({"import", dir.file("other.arx"), file, "--where", "LAYER_LEVEL_CODE=1"});
    EXPECT_EQ(r.code, ExitUsage);
    EXPECT_TRUE(has(r.err, "no field LAYER_LEVEL_CODE in table \"layers\""));
    EXPECT_FALSE(std::filesystem::exists(dir.file("other.arx")));
}

}  // namespace
}  // namespace arborex::batch
