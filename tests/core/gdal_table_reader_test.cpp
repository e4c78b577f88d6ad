// The GDAL/OGR table reader on files the test writes with GDAL itself (a spreadsheet, a dBase
// table, a GeoPackage, text tables), on the Access sample, and on files it cannot read.

#include <gtest/gtest.h>

#include <fstream>

#include "platform/gdal/gdal_table_reader.hpp"
#include "support/temp_dir.hpp"

#if ARBOREX_HAVE_GDAL
#include <gdal_priv.h>
#include <ogrsf_frmts.h>
#endif

namespace arborex {
namespace {

using Cell = std::optional<std::string>;
using Rows = std::vector<TableReader::Record>;

const std::string kAccessSample =
    std::string(ARBOREX_SHARED_DATA_DIR) + "/fixtures/access-sample.mdb";
const std::string kForet = "For\xC3\xAAt";  // "Forêt" in UTF-8

Rows readAll(TableReader& reader, const std::string& path, const std::string& table,
             std::vector<double>* done = nullptr) {
    Rows rows;
    reader.readRecords(path, table, [&](const TableReader::Record& record, double share) {
        rows.push_back(record);
        if (done) done->push_back(share);
        return true;
    });
    return rows;
}

void writeText(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

struct GdalTableReaderTest : ::testing::Test {
    test::TempDir dir;
    std::unique_ptr<TableReader> reader = makeTableReader();
    void SetUp() override {
        if (!tableReaderAvailable()) GTEST_SKIP() << "built without GDAL";
    }
};

#if ARBOREX_HAVE_GDAL

// A field of the written tables: name and type.
struct FieldSpec {
    const char* name;
    OGRFieldType type;
};

// Writes one table of `fields` and `rows` (a null cell left unset) with GDAL's own driver, as
// a user's spreadsheet or GIS program would have saved it.
void writeLayer(GDALDataset& dataset, const char* table, const std::vector<FieldSpec>& fields,
                const Rows& rows, OGRwkbGeometryType geometry = wkbNone) {
    OGRLayer* layer = dataset.CreateLayer(table, nullptr, geometry, nullptr);
    ASSERT_NE(layer, nullptr);
    for (const auto& f : fields) {
        OGRFieldDefn definition(f.name, f.type);
        ASSERT_EQ(layer->CreateField(&definition), OGRERR_NONE);
    }
    for (const auto& row : rows) {
        OGRFeature feature(layer->GetLayerDefn());
        for (std::size_t i = 0; i < row.size(); ++i)
            if (row[i]) feature.SetField(static_cast<int>(i), row[i]->c_str());
        ASSERT_EQ(layer->CreateFeature(&feature), OGRERR_NONE);
    }
}

struct DatasetCloser {
    void operator()(GDALDataset* d) const { GDALClose(d); }
};

std::unique_ptr<GDALDataset, DatasetCloser> create(const char* driver, const std::string& path) {
    GDALAllRegister();
    GDALDriver* d = GetGDALDriverManager()->GetDriverByName(driver);
    if (!d) return nullptr;
    return std::unique_ptr<GDALDataset, DatasetCloser>(
        d->Create(path.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
}

const std::vector<FieldSpec> kStandFields{
    {"NAME", OFTString}, {"AREA", OFTReal}, {"AGE", OFTInteger}, {"NCDESC", OFTString}};
const Rows kStands{
    {"093G072", "18", "85", kForet},
    {"B2", "0.1", Cell(), Cell()},
    {"C3", Cell(), "120", "plain"},
};

TEST_F(GdalTableReaderTest, SpreadsheetsKeepTheirSheetsFieldsNullsOrderAndNumbers) {
    for (const auto& [driver, file] : {std::pair{"XLSX", "stands.xlsx"}, {"ODS", "stands.ods"}}) {
        SCOPED_TRACE(file);
        const std::string path = dir.file(file);
        {
            auto dataset = create(driver, path);
            ASSERT_TRUE(dataset);
            writeLayer(*dataset, "Stands", kStandFields, kStands);
            writeLayer(*dataset, "Notes", {{"TEXT", OFTString}}, {{"x"}});
        }
        EXPECT_EQ(reader->tables(path), (std::vector<std::string>{"Stands", "Notes"}));
        EXPECT_EQ(reader->fields(path, "Stands"),
                  (std::vector<std::string>{"NAME", "AREA", "AGE", "NCDESC"}));
        std::vector<double> done;
        const Rows rows = readAll(*reader, path, "Stands", &done);
        EXPECT_EQ(rows, kStands);  // 18 not "18.000000", 0.1 not "0.10000000000000001"
        ASSERT_FALSE(done.empty());
        EXPECT_EQ(done.back(), 1.0);
    }
}

TEST_F(GdalTableReaderTest, ADBaseTableAndAGeoPackageReadBackAsWritten) {
    const std::string dbf = dir.file("stands.dbf");
    {
        auto dataset = create("ESRI Shapefile", dbf);
        ASSERT_TRUE(dataset);
        writeLayer(*dataset, "stands", kStandFields, kStands);
    }
    EXPECT_EQ(reader->tables(dbf), (std::vector<std::string>{"stands"}));
    EXPECT_EQ(readAll(*reader, dbf, "stands"), kStands);

    const std::string gpkg = dir.file("inventory.gpkg");
    {
        auto dataset = create("GPKG", gpkg);
        ASSERT_TRUE(dataset);
        writeLayer(*dataset, "vri_layers", kStandFields, kStands);
        writeLayer(*dataset, "notes", {{"TEXT", OFTString}}, {});
    }
    EXPECT_EQ(reader->tables(gpkg), (std::vector<std::string>{"vri_layers", "notes"}));
    EXPECT_EQ(reader->fields(gpkg, "vri_layers"),
              (std::vector<std::string>{"NAME", "AREA", "AGE", "NCDESC"}));
    EXPECT_EQ(readAll(*reader, gpkg, "vri_layers"), kStands);
    EXPECT_TRUE(readAll(*reader, gpkg, "notes").empty());
    // The caller may stop after any record.
    int seen = 0;
    reader->readRecords(gpkg, "vri_layers", [&](const TableReader::Record&, double) {
        ++seen;
        return false;
    });
    EXPECT_EQ(seen, 1);
}

TEST_F(GdalTableReaderTest, GisLayersGiveTheirAttributes) {
    struct Case {
        const char *driver, *file, *table;
    } cases[] = {{"ESRI Shapefile", "stands.shp", "stands"},
                 {"GeoJSON", "stands.geojson", "stands"},
                 {"OpenFileGDB", "inventory.gdb", "stands"}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file);
        const std::string path = dir.file(c.file);
        {
            auto dataset = create(c.driver, path);
            ASSERT_TRUE(dataset);
            writeLayer(*dataset, c.table, kStandFields, kStands, wkbPoint);
        }
        EXPECT_EQ(reader->tables(path), (std::vector<std::string>{c.table}));
        EXPECT_EQ(reader->fields(path, c.table),
                  (std::vector<std::string>{"NAME", "AREA", "AGE", "NCDESC"}));
        EXPECT_EQ(readAll(*reader, path, c.table), kStands);
    }
}

// GDAL cannot write the Excel 97 format, so this workbook is kept beside the test: the same
// sheets and cells as above, saved by Python's xlwt (numbers are all floating point there).
TEST_F(GdalTableReaderTest, AnExcel97WorkbookReadsThroughFreeXL) {
    const std::string path = std::string(ARBOREX_SOURCE_DIR) + "/tests/core/data/stands.xls";
    EXPECT_EQ(reader->tables(path), (std::vector<std::string>{"Stands", "Notes"}));
    EXPECT_EQ(reader->fields(path, "Stands"),
              (std::vector<std::string>{"NAME", "AREA", "AGE", "NCDESC"}));
    EXPECT_EQ(readAll(*reader, path, "Stands"), kStands);
}

#endif  // ARBOREX_HAVE_GDAL

TEST_F(GdalTableReaderTest, TextTablesKeepTheirTextAndEmptyCellsAreNull) {
    const std::string csv = dir.file("vri.csv");
    writeText(csv, "MAP_ID,POLYGON_ID,AREA\r\n093G072,0017,12.50\r\n093G073,,3\r\n");
    EXPECT_EQ(reader->tables(csv), (std::vector<std::string>{"vri"}));
    EXPECT_EQ(readAll(*reader, csv, "vri"),
              (Rows{{"093G072", "0017", "12.50"}, {"093G073", Cell(), "3"}}));

    const std::string txt = dir.file("stands.txt");
    writeText(txt, "NAME\tNCDESC\n" + std::string("A1\t") + kForet + "\n");
    ASSERT_EQ(reader->tables(txt).size(), 1u);
    const std::string table = reader->tables(txt).front();
    EXPECT_EQ(reader->fields(txt, table), (std::vector<std::string>{"NAME", "NCDESC"}));
    EXPECT_EQ(readAll(*reader, txt, table), (Rows{{"A1", kForet}}));
}

TEST_F(GdalTableReaderTest, TheAccessSampleReadsThroughTheOdbcDriver) {
    if (!std::ifstream(kAccessSample)) GTEST_SKIP() << "no " << kAccessSample;
    EXPECT_EQ(reader->tables(kAccessSample), (std::vector<std::string>{"Tabelle1"}));
    EXPECT_EQ(reader->fields(kAccessSample, "Tabelle1"),
              (std::vector<std::string>{"ID", "f1", "f2"}));
    const Rows rows = readAll(*reader, kAccessSample, "Tabelle1");
    ASSERT_GE(rows.size(), 4u);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(rows[i][0], std::to_string(i + 1));
        EXPECT_EQ(rows[i][1], "z" + std::to_string(i + 1));
    }
    EXPECT_EQ(rows[0][2], "sdasdgasdg");
    // The long text with its letters beyond ASCII arrives whole and in UTF-8.
    ASSERT_TRUE(rows[2][2].has_value());
    EXPECT_NE(rows[2][2]->find("\xC3\xA4"), std::string::npos);
    EXPECT_GT(rows[2][2]->size(), 700u);
}

TEST_F(GdalTableReaderTest, MissingAndDamagedFilesAreRefusedWithASentence) {
    EXPECT_THROW(reader->tables(dir.file("absent.xlsx")), TableReadError);
    const std::string broken = dir.file("broken.xlsx");
    writeText(broken, "PK\x03\x04 this is not a workbook");
    EXPECT_THROW(reader->tables(broken), TableReadError);
    const std::string access = dir.file("broken.mdb");
    writeText(access, std::string(4096, '\x5A'));
    try {
        reader->tables(access);
        FAIL() << "a damaged Access file was read";
    } catch (const TableReadError& e) {
        EXPECT_NE(std::string(e.what()).find("Access database"), std::string::npos) << e.what();
    }
    const std::string csv = dir.file("one.csv");
    writeText(csv, "NAME\nA\n");
    EXPECT_THROW(reader->fields(csv, "nosuchtable"), TableReadError);
}

}  // namespace
}  // namespace arborex
