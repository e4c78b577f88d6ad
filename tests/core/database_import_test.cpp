// The database route over tables a fake reader holds: kinds by extension, the dBase name rules,
// the choice of table, the column matching, the records' names, duplicates, nulls, and the
// user's mapping of fields the catalogue does not know.

#include <gtest/gtest.h>

#include "base/messages.hpp"
#include "exchange/database_import.hpp"
#include "exchange/field_mapping.hpp"
#include "model/reference_tables.hpp"
#include "support/fake_host.hpp"
#include "support/small_project.hpp"

namespace arborex {
namespace {

const std::string kData = std::string(ARBOREX_SOURCE_DIR) + "/data";
using Cell = std::optional<std::string>;

struct FakeTable {
    std::string name;
    std::vector<std::string> fields;
    std::vector<TableReader::Record> records;
};

class FakeTableReader final : public TableReader {
public:
    std::vector<FakeTable> held;
    bool damaged = false;

    std::vector<std::string> tables(const std::string&) override {
        refuseIfDamaged();
        std::vector<std::string> names;
        for (const auto& t : held) names.push_back(t.name);
        return names;
    }
    std::vector<std::string> fields(const std::string&, const std::string& table) override {
        return find(table).fields;
    }
    void readRecords(const std::string&, const std::string& table,
                     const std::function<bool(const Record&, double)>& each) override {
        refuseIfDamaged();
        const auto& records = find(table).records;
        for (std::size_t i = 0; i < records.size(); ++i)
            if (!each(records[i], double(i + 1) / double(records.size()))) return;
    }

private:
    void refuseIfDamaged() const {
        if (damaged) throw TableReadError("The file could not be read as a table.");
    }
    const FakeTable& find(const std::string& name) const {
        for (const auto& t : held)
            if (t.name == name) return t;
        throw TableReadError("no table " + name);
    }
};

struct DatabaseImportTest : ::testing::Test {
    test::FakeHost host;
    Model m = test::smallProject({"A1", "A2"});
    FakeTableReader reader;
    PolygonImport run;
    DatabaseImport db;
    std::vector<int> percents;

    DatabaseImportTest() {
        m.Paths[ArborexFolder] = kData + "/";
        LoadSpeciesV(m.Ref, host, kData + "/SPECIESV.DAT");
        LoadSpeciesT(m.Ref, host, kData + "/SPECIEST.DAT");
        LoadMessages(m.Messages, host, kData + "/MESSAGES.DAT");
    }
    bool open(FakeTable table, const std::string& path = "/data/inventory.xlsx") {
        reader.held = {std::move(table)};
        return GetColumnHeader(reader, host.prompt, path, nullptr, db);
    }
    bool import() {
        return ImportData(m, host, reader, db, run, [&](int p) { percents.push_back(p); });
    }
    const PolyData& poly(const char* name) const {
        const int p = findPolygonName(m, name);
        if (p < 0) throw std::runtime_error(std::string("no polygon ") + name);
        return m.Poly.at(static_cast<std::size_t>(p));
    }
    std::string closing() const {
        for (const auto& b : host.prompt.shown)
            if (b.title == "Import Complete") return b.text;
        return "(none)";
    }
};

TEST(PathFileExt, SplitsOnTheLastSeparatorOfEitherKindAndTheLastPoint) {
    struct Case {
        const char *path, *folder, *name, *extension;
    } cases[] = {
        {"C:\\Data\\inv.2024.XLS", "C:\\Data", "inv.2024", "XLS"},
        {"/home/u/stands.dbf", "/home/u", "stands", "dbf"},
        {"/home/u.v/stands", "/home/u.v", "stands", ""},
        {"stands.csv", "", "stands", "csv"},
    };
    for (const auto& c : cases) {
        std::string folder, name, extension;
        PathFileExt(c.path, folder, name, extension);
        EXPECT_EQ(folder, c.folder) << c.path;
        EXPECT_EQ(name, c.name) << c.path;
        EXPECT_EQ(extension, c.extension) << c.path;
    }
}

TEST(ImportKind, ByExtensionWithoutRegardToCase) {
    EXPECT_EQ(importKindOf("a.MDB"), ImportKind::Access);
    EXPECT_EQ(importKindOf("a.accdb"), ImportKind::Access);
    EXPECT_EQ(importKindOf("a.Xlsx"), ImportKind::Excel);
    EXPECT_EQ(importKindOf("a.ods"), ImportKind::OpenDocument);
    EXPECT_EQ(importKindOf("a.dat"), ImportKind::Text);
    EXPECT_EQ(importKindOf("/x/inventory.gdb/"), ImportKind::FileGeodatabase);
    EXPECT_EQ(importKindOf("a.geojson"), ImportKind::GeoJSON);
    EXPECT_EQ(importKindOf("a.pdf"), ImportKind::Unknown);
    EXPECT_TRUE(readsAsDatabase(ImportKind::Shapefile));
    EXPECT_FALSE(readsAsDatabase(ImportKind::Text));
}

TEST(DbfNameRules, EightCharactersAndNoBlanks) {
    EXPECT_EQ(dbfNameProblem("/d/STANDS241.DBF"), "DBF filenames must be shorter then 8 chars");
    EXPECT_EQ(dbfNameProblem("/d/my st.dbf"), "DBF filenames can't contain spaces");
    EXPECT_EQ(dbfNameProblem("/d/STANDS_1.dbf"), "");  // eight is allowed
    EXPECT_EQ(dbfNameProblem("/d/very long name.csv"), "");
}

TEST(MatchColumns, NameColumnsThenKeyThenAlternateIgnoringCase) {
    const ColumnMatch match =
        matchColumns({" map_id ", "Polygon_ID", "polygon_area", "AGE", "vs1", "MAPSTAND", "X"});
    EXPECT_EQ(match.MapColumn, 0);
    EXPECT_EQ(match.PolyColumn, 1);
    EXPECT_EQ(match.StandColumn, 5);
    EXPECT_EQ(match.ColumnOf[1], 2);  // AREA by its alternate
    EXPECT_EQ(match.ColumnOf[7], 3);  // AGE by its key, before VAGETOTAL's alternate "AGE"
    EXPECT_EQ(match.ColumnOf[30], -1);
    EXPECT_EQ(match.ColumnOf[43], 4);  // VS1
    EXPECT_EQ(match.UnmatchedFields,
              (std::vector<std::string>{" map_id ", "Polygon_ID", "MAPSTAND", "X"}));

    const auto rows = columnRows(match, false);
    ASSERT_EQ(rows.size(), 3u + 4u);
    EXPECT_EQ(rows[0].arborex, "AREA");
    EXPECT_EQ(rows[0].file, "polygon_area");
    EXPECT_EQ(rows[0].description, "Net Polygon Area (#.# ha)");
    EXPECT_EQ(rows[6].file, "X");
    EXPECT_EQ(rows[6].description, "No Matching Arborex Variable found");
    EXPECT_EQ(rows[6].field, 6);
    EXPECT_EQ(columnRows(match, true).size(), 101u + 4u);
}

TEST_F(DatabaseImportTest, TablesAreChosenAndFailuresTold) {
    reader.held = {{"Sheet1$", {"NAME"}, {}}, {"Stands$", {"NAME", "AREA"}, {}}};
    std::vector<std::string> offered;
    auto chooseSecond = [&](const std::vector<std::string>& names) {
        offered = names;
        return 1;
    };
    ASSERT_TRUE(GetColumnHeader(reader, host.prompt, "/d/x.xls", chooseSecond, db));
    EXPECT_EQ(offered, (std::vector<std::string>{"Sheet1", "Stands"}));
    EXPECT_EQ(db.ImportTable, "Stands$");
    EXPECT_EQ(db.match.ColumnOf[1], 1);

    const auto shownBefore = host.prompt.shown.size();
    EXPECT_FALSE(GetColumnHeader(
        reader, host.prompt, "/d/x.xls", [](const std::vector<std::string>&) { return -1; }, db));
    EXPECT_EQ(host.prompt.shown.size(), shownBefore);  // the user stopped: nothing to tell

    reader.held.clear();
    EXPECT_FALSE(GetColumnHeader(reader, host.prompt, "/d/x.mdb", nullptr, db));
    EXPECT_EQ(host.prompt.shown.back().text, "No Sheets Found");
    EXPECT_FALSE(GetColumnHeader(reader, host.prompt, "/d/notes.pdf", nullptr, db));
    EXPECT_EQ(host.prompt.shown.back().text, "notes.pdf - Type not recognized");
    reader.damaged = true;
    EXPECT_FALSE(GetColumnHeader(reader, host.prompt, "/d/x.mdb", nullptr, db));
    EXPECT_EQ(host.prompt.shown.back().text, "The file could not be read as a table.");
}

TEST_F(DatabaseImportTest, MapIdAndPolygonIdNameThePolygonsAndNullsLeaveFields) {
    host.prompt.answers = {Answer::Yes};  // update duplicates
    ASSERT_TRUE(open({"VRI",
                      {"MAP_ID", "POLYGON_ID", "POLYGON_AREA", "SPECIES_CD_1", "NCDesc"},
                      {
                          {"093G072", "17", "12.5", "PL", "For\xC3\xAAt"},
                          {"093G072", "18", std::nullopt, "FD", std::nullopt},
                          {"A1", std::nullopt, std::nullopt, std::nullopt, std::nullopt},
                          {std::nullopt, std::nullopt, std::nullopt, std::nullopt, std::nullopt},
                      }}));
    // An existing polygon named like a built name, in other case, is updated.
    m.Poly[1].NAME = "93g072 18";
    ASSERT_TRUE(import());
    EXPECT_EQ(poly("93G072 17").AREA, 12.5f);
    EXPECT_EQ(poly("93G072 17").VS[0].str(), "PL");
    const int accents = findPolygonName(m, "93G072 17");
    EXPECT_EQ(m.PolyM[static_cast<std::size_t>(accents)].NCDESC.str(), "For\xEAt");
    EXPECT_EQ(m.Poly[1].AREA, 10.0f);  // null area: the stored value stays
    EXPECT_EQ(m.Poly[1].VS[0].str(), "FD");
    EXPECT_EQ(m.LastPoly, 2);
    // "A1" with a null polygon number is "A1 " and so the existing A1; the empty record is blank.
    EXPECT_EQ(closing(),
              "3 OF 4\r\nPOLYGONS IMPORTED \r\n1\tPolygons Added.\r\n"
              "2\tDuplicate Polygons Updated.\r\n\r\nDATA SKIPPED\r\n"
              "0\tDuplicate Polygons Skipped.\r\n1\tBlank Lines Skipped.\r\n"
              "0\tMapsheet and/or Polygon number blank .\r\n");
    EXPECT_EQ(percents.front(), 0);
    EXPECT_EQ(percents.back(), 100);
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
}

TEST_F(DatabaseImportTest, TheDuplicateQuestionIsAskedOnceAndItsAnswerHolds) {
    host.prompt.answers = {Answer::No};
    ASSERT_TRUE(open({"T", {"NAME", "AREA"}, {{"a1", "1"}, {"B", "2"}, {"A2", "3"}, {"A1", "4"}}}));
    ASSERT_TRUE(import());
    int questions = 0;
    for (const auto& b : host.prompt.shown) questions += b.title == "Update polygons?" ? 1 : 0;
    EXPECT_EQ(questions, 1);
    EXPECT_EQ(poly("A1").AREA, 10.0f);
    EXPECT_EQ(poly("B").AREA, 2.0f);
    EXPECT_NE(closing().find("3\tDuplicate Polygons Skipped."), std::string::npos);
}

TEST_F(DatabaseImportTest, ARecordsMessagesAreShownAfterItAndTheImportGoesOn) {
    ASSERT_TRUE(open({"T", {"NAME", "FIZ", "AREA"}, {{"N1", "Z", "2"}, {"N2", "Q", "3"}}}));
    ASSERT_TRUE(import());
    std::vector<std::string> told;
    for (const auto& b : host.prompt.shown)
        if (b.title == kProgramTitle) told.push_back(b.text);
    EXPECT_EQ(told, (std::vector<std::string>{"FIZ not found: Z\r\n", "FIZ not found: Q\r\n"}));
    EXPECT_EQ(poly("N2").AREA, 3.0f);
}

TEST_F(DatabaseImportTest, WithoutANameFieldNothingChanges) {
    ASSERT_TRUE(open({"T", {"MAP_ID", "AREA"}, {{"093G072", "1"}}}));
    EXPECT_FALSE(import());
    EXPECT_EQ(host.prompt.shown.back().text, "No Name field exists, can't import");
    EXPECT_EQ(m.LastPoly, 1);

    reader.damaged = true;
    db.match = matchColumns({"NAME"});
    EXPECT_FALSE(import());
    EXPECT_EQ(host.prompt.shown.back().text, "The file could not be read as a table.");
    EXPECT_EQ(m.LastPoly, 1);
}

TEST_F(DatabaseImportTest, TheUsersMappingIsAppliedAndRememberedPerHeader) {
    const std::vector<std::string> header{"MAP_ID", "POLYGON_NUMBER", "EST_AGE_SPP1", "OTHER"};
    ASSERT_TRUE(open({"VRI", header, {{"093G072", "5", "85", "x"}}}));
    EXPECT_EQ(db.match.PolyColumn, -1);

    FieldMapping chosen;
    chosen.keyOfField = {{"POLYGON_NUMBER", "POLYGON"}, {"EST_AGE_SPP1", "age"}};
    saveFieldMapping(host.settings, header, chosen);
    const std::vector<std::string> sameHeader{"map_id", "polygon_number", "est_age_spp1", "other"};
    const FieldMapping remembered = loadFieldMapping(host.settings, sameHeader);
    EXPECT_EQ(remembered.keyOfField, chosen.keyOfField);
    EXPECT_TRUE(loadFieldMapping(host.settings, {"MAP_ID", "POLYGON_NUMBER"}).keyOfField.empty());

    applyFieldMapping(db.match, remembered);
    EXPECT_EQ(db.match.PolyColumn, 1);
    EXPECT_EQ(db.match.ColumnOf[7], 2);
    EXPECT_EQ(db.match.UnmatchedFields, (std::vector<std::string>{"MAP_ID", "OTHER"}));
    ASSERT_TRUE(import());
    EXPECT_EQ(poly("93G072 5").AGE, 85);
}

TEST(FieldMapping, ChoicesAndKeys) {
    const auto choices = mappingChoices();
    ASSERT_EQ(choices.size(), 1u + 101u + 3u);
    EXPECT_EQ(choices.front(), "");
    EXPECT_EQ(choices[1], "NAME");
    EXPECT_EQ(choices.back(), "MAPSTAND");
    EXPECT_TRUE(isMappingKey("ncdesc"));
    EXPECT_FALSE(isMappingKey("VOLUME"));
    // The key is stable across runs: a remembered mapping must be found again next year.
    EXPECT_EQ(headerKey({"A", "b"}), headerKey({"a", "B"}));
    EXPECT_NE(headerKey({"A", "B"}), headerKey({"B", "A"}));
    EXPECT_EQ(headerKey({}), "cbf29ce484222325");
}

}  // namespace
}  // namespace arborex
