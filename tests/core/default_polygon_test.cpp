#include <gtest/gtest.h>

#include <filesystem>

#include "base/errors.hpp"
#include "model/default_polygon.hpp"
#include "model/model.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

namespace fs = std::filesystem;

struct Folders {
    test::TempDir dir;
    test::FakeHost host;
    std::unique_ptr<Model> model = std::make_unique<Model>();
    Model& m = *model;
    Folders() {
        fs::create_directories(dir.file("install"));
        fs::create_directories(dir.file("docs"));
        m.Paths[ArborexFolder] = dir.file("install/");
        m.Paths[UserDocuments] = dir.file("docs/");
        ResetVars(m);
    }
};

TEST(DefaultPolygon, TheInstalledFileHoldsThreeRecordsAndIsCopiedToTheUser) {
    Folders f;
    fs::copy_file(std::string(ARBOREX_SOURCE_DIR) + "/data/DEFAULT.DEF",
                  f.dir.file("install/DEFAULT.DEF"));
    EXPECT_EQ(fs::file_size(f.dir.file("install/DEFAULT.DEF")), 177u + 54u + 96u);

    ASSERT_TRUE(LoadDefaults(f.m, f.host));
    EXPECT_TRUE(fs::exists(f.dir.file("docs/DEFAULT.DEF")));
    EXPECT_TRUE(f.host.prompt.shown.empty());
    const PolyData& p = f.m.DefaultPoly;
    EXPECT_EQ(p.HAR, (std::array<int16_t, 2>{-1, -1}));
    EXPECT_EQ(p.MGNT, (std::array<int16_t, 2>{0, 1}));
    EXPECT_EQ(p.OAF1, -1);
    EXPECT_EQ(p.VUTILIZ, 12.5f);
    EXPECT_EQ(p.VS[0].raw(), "  ");
    EXPECT_EQ(f.m.DefaultPolyC.VX, (std::array<int16_t, 6>{1, 1, 1, 1, 1, 1}));
    EXPECT_EQ(f.m.DefaultPolyC.REGENDELAY, -1);
    EXPECT_EQ(f.m.DefaultPolyM.TUTILIZ, 12.5f);
}

TEST(DefaultPolygon, ASavedPolygonComesBackWithoutItsPlaceAndCriteria) {
    Folders f;
    f.m.DefaultPoly.NAME = "Template";
    f.m.DefaultPoly.AREA = 12.5f;
    f.m.DefaultPoly.REGION = "12";
    f.m.DefaultPoly.COMP = "045";
    f.m.DefaultPoly.COMPL = "A";
    f.m.DefaultPoly.TS[0] = "FD";
    f.m.DefaultPolyC.MINCUTAGE = {60, 70};
    f.m.DefaultPolyC.MINCUTVOL = {200.0f, 250.0f};
    f.m.DefaultPolyC.MINCUTDBH = {20.0f, 25.0f};
    f.m.DefaultPolyC.VCCCALC = 45.0f;
    f.m.DefaultPolyM.NCDESC = "Brush";
    SaveDefaultPolygon(f.m, f.dir.file("docs/default.def"));  // any case is found

    Model back;
    back.Paths = f.m.Paths;
    ASSERT_TRUE(LoadDefaults(back, f.host));
    EXPECT_EQ(back.DefaultPoly.NAME.str(), "Template");
    EXPECT_EQ(back.DefaultPoly.AREA, 12.5f);
    EXPECT_EQ(back.DefaultPoly.TS[0].str(), "FD");
    EXPECT_EQ(back.DefaultPolyM.NCDESC.str(), "Brush");
    EXPECT_EQ(back.DefaultPoly.REGION.raw(), "  ");
    EXPECT_EQ(back.DefaultPoly.COMP.raw(), "   ");
    EXPECT_EQ(back.DefaultPoly.COMPL.raw(), " ");
    EXPECT_EQ(back.DefaultPolyC.MINCUTAGE, (std::array<int16_t, 2>{-1, -1}));
    EXPECT_EQ(back.DefaultPolyC.MINCUTVOL, (std::array<float, 2>{-1.0f, -1.0f}));
    EXPECT_EQ(back.DefaultPolyC.MINCUTDBH, (std::array<float, 2>{-1.0f, -1.0f}));
    EXPECT_EQ(back.DefaultPolyC.VCCCALC, 0.0f);
}

TEST(DefaultPolygon, AMissingFileIsToldAndADamagedOneFails) {
    Folders f;
    f.m.DefaultPoly.NAME = "Kept";
    EXPECT_FALSE(LoadDefaults(f.m, f.host));
    ASSERT_EQ(f.host.prompt.shown.size(), 1u);
    EXPECT_EQ(f.host.prompt.shown[0].text, "Default polygon is missing.");
    EXPECT_EQ(f.m.DefaultPoly.NAME.str(), "Kept");

    SaveDefaultPolygon(f.m, f.dir.file("docs/DEFAULT.DEF"));
    fs::resize_file(f.dir.file("docs/DEFAULT.DEF"), 200);
    try {
        LoadDefaults(f.m, f.host);
        FAIL() << "a short file loaded";
    } catch (const ArborexError& e) {
        EXPECT_EQ(e.number(), ErrInputPastEnd);
    }
    EXPECT_EQ(f.m.DefaultPoly.NAME.str(), "Kept");  // nothing half read
}

}  // namespace
}  // namespace arborex
