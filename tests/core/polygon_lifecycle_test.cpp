// Adding, renaming, deleting, splitting, reordering and listing polygons keep every array in
// step and names unique, case-insensitively and after trimming.

#include <gtest/gtest.h>

#include "base/errors.hpp"
#include "model/default_polygon.hpp"
#include "model/polygon_lifecycle.hpp"
#include "support/fake_host.hpp"
#include "support/small_project.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

using test::smallProject;

TEST(PolygonNames, RefusesBlankAndDuplicateNamesAndChangesNothing) {
    Model m = smallProject({"ABC", "Old"});
    deletePolygon(m, 1);  // a deleted polygon still holds its name until the purge
    const struct {
        const char* name;
        PolygonRefusal refusal;
        int holder;
    } cases[] = {
        {"abc", PolygonRefusal::Duplicate, 0},         {"  ABC   ", PolygonRefusal::Duplicate, 0},
        {"OLD", PolygonRefusal::Duplicate, 1},         {"   ", PolygonRefusal::BlankName, -1},
        {"ABCDEFGHIJKLMNOP", PolygonRefusal::None, 2},  // stored cut to 12
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const AddOutcome added = addPolygon(m, c.name, -1);
        EXPECT_EQ(added.refusal, c.refusal);
        EXPECT_EQ(added.polygon, c.holder);
    }
    EXPECT_EQ(m.LastPoly, 2);
    EXPECT_EQ(m.Poly[2].NAME.str(), "ABCDEFGHIJKL");
    EXPECT_EQ(addPolygon(m, "abcdefghijklXYZ", -1).refusal, PolygonRefusal::Duplicate);
    EXPECT_EQ(refusalText(m, PolygonRefusal::Duplicate, false), "NOT FOUND - &DUPLICATE");
    EXPECT_EQ(refusalText(m, PolygonRefusal::Duplicate, true), "NOT FOUND - &RENDUP");
    EXPECT_EQ(refusalText(m, PolygonRefusal::BlankName, false), "NOT FOUND - &BLANKPOLYGON");
}

TEST(PolygonNames, RenameKeepsOnEmptyAnswerRefusesAnotherPolygonsName) {
    Model m = smallProject({"A1", "B2"});
    EXPECT_EQ(renamePolygon(m, 0, "  "), PolygonRefusal::None);
    EXPECT_EQ(m.Poly[0].NAME.str(), "A1");
    EXPECT_EQ(renamePolygon(m, 0, " b2 "), PolygonRefusal::Duplicate);
    EXPECT_EQ(m.Poly[0].NAME.str(), "A1");
    EXPECT_EQ(renamePolygon(m, 0, "a1"), PolygonRefusal::None);  // its own name, new case
    EXPECT_EQ(renamePolygon(m, 0, " Lakeshore North "), PolygonRefusal::None);
    EXPECT_EQ(m.Poly[0].NAME.str(), "Lakeshore No");
    EXPECT_EQ(findPolygonName(m, "LAKESHORE NO"), 0);
    EXPECT_EQ(findPolygonName(m, "LAKESHORE NO", 0), -1);
}

TEST(AddPolygon, FromTheDefaultClearsCurvesFromASourceCopiesThem) {
    Model m = smallProject({"SRC"});
    m.VYield(0, 3).Vol = 420;
    m.VMix(0, 3)[1] = 120;
    m.TYield(0, 2).Mai = 2.5f;
    m.HarvAge[0][1].HarvestAge = 70;
    m.PolyC[0].SORT = 9;
    m.DefaultPoly.AREA = 7.0f;
    m.DefaultPoly.YIELDSTATE = {3, 3};
    m.DefaultPoly.VSICALC = 18.0f;

    const int copy = addPolygon(m, " Copy ", 0).polygon;
    ASSERT_EQ(copy, 1);
    EXPECT_EQ(m.Poly[1].NAME.str(), "Copy");
    EXPECT_FLOAT_EQ(m.Poly[1].AREA, 10.0f);
    EXPECT_EQ(m.PolyC[1].SORT, 0);
    EXPECT_EQ(m.VYield(1, 3).Vol, 420);
    EXPECT_EQ(m.VMix(1, 3)[1], 120);
    EXPECT_FLOAT_EQ(m.TYield(1, 2).Mai, 2.5f);
    EXPECT_EQ(m.HarvAge[1][1].HarvestAge, 70);

    const int fresh = addPolygon(m, "New", -1).polygon;
    ASSERT_EQ(fresh, 2);
    EXPECT_FLOAT_EQ(m.Poly[2].AREA, 7.0f);
    EXPECT_EQ(m.Poly[2].YIELDSTATE, (std::array<int16_t, 2>{0, 0}));
    EXPECT_FLOAT_EQ(m.Poly[2].VSICALC, 0.0f);
    EXPECT_EQ(m.VYield(2, 3).Vol, 0);
    EXPECT_EQ(m.HarvAge[2][1].HarvestAge, 0);
    EXPECT_EQ(polygonRowText(m, 2), "*New");
    EXPECT_EQ(polygonRowText(m, 1), "Copy");
}

TEST(AppendPolygon, PastTheLastIndexOverflowsWithoutChange) {
    Model m = smallProject({});
    m.LastPoly = 32767;
    EXPECT_THROW(
        {
            try {
                appendPolygon(m, {}, {}, {});
            } catch (const ArborexError& e) {
                EXPECT_EQ(e.number(), ErrOverflow);
                throw;
            }
        },
        ArborexError);
    EXPECT_EQ(m.Poly.size(), 1u);
}

TEST(SplitPolygons, CutsLiveLargePolygonsIntoLetteredPieces) {
    Model m = smallProject({"BIG", "EDGE", "GONE", "LOWER"});
    m.Poly[0].AREA = 50.0f;
    m.VYield(0, 4).Vol = 300;
    m.Poly[1].AREA = 20.0f;  // not above the maximum
    m.Poly[2].AREA = 50.0f;
    deletePolygon(m, 2);
    m.Poly[3].AREA = 30.5f;

    EXPECT_EQ(splitPolygons(m, 20.0f, 0.0f), 0);
    EXPECT_EQ(splitPolygons(m, 20.0f, 15.0f), 3);
    ASSERT_EQ(m.LastPoly, 6);
    const struct {
        const char* name;
        float area;
    } expected[] = {{"BIG", 20.0f},  {"EDGE", 20.0f}, {"GONE", 50.0f},  {"LOWER", 15.5f},
                    {"BIGa", 15.0f}, {"BIGb", 15.0f}, {"LOWERa", 15.0f}};
    for (int p = 0; p <= m.LastPoly; ++p) {
        EXPECT_EQ(m.Poly[p].NAME.str(), expected[p].name);
        EXPECT_FLOAT_EQ(m.Poly[p].AREA, expected[p].area);
    }
    EXPECT_EQ(m.VYield(5, 4).Vol, 300);
    // A size above the maximum is lowered to it.
    Model lowered = smallProject({"P"});
    lowered.Poly[0].AREA = 50.0f;
    EXPECT_EQ(splitPolygons(lowered, 20.0f, 30.0f), 2);
    EXPECT_FLOAT_EQ(lowered.Poly[0].AREA, 10.0f);
    EXPECT_FLOAT_EQ(lowered.Poly[2].AREA, 20.0f);
}

TEST(DeleteAndDisplay, ListsLivePolygonsAndLosesTheCurrentOneWithTheLastRow) {
    Model m = smallProject({"A", "B", "C"});
    m.Poly[2].YIELDSTATE[1] = 1;
    m.Poly[2].MGNT = {0, 1};
    m.CurPoly = 1;
    deletePolygon(m, 1);
    EXPECT_EQ(m.CurPoly, 1);  // the screen moves on to the next row
    std::vector<PolygonRow> rows = DisplayPoly(m);
    ASSERT_EQ(rows.size(), 2u);
    EXPECT_EQ(rows[1].text, "*C");
    EXPECT_EQ(rows[1].polygon, 2);
    EXPECT_EQ(m.PolyC[2].LISTROW, 1);
    undeletePolygon(m, 1);
    EXPECT_EQ(DisplayPoly(m).size(), 3u);

    Model one = smallProject({"ONLY"});
    one.CurPoly = 0;
    deletePolygon(one, 0);
    EXPECT_EQ(one.CurPoly, -1);
    EXPECT_TRUE(DisplayPoly(one).empty());

    EXPECT_EQ(displaySelection(1, 3), 1);
    EXPECT_EQ(displaySelection(5, 3), 2);
    EXPECT_EQ(displaySelection(0, 0), -1);
}

TEST(ReorderSpecies, SortsSlotsByPercentKeepingParallelFieldsTogether) {
    Model m = smallProject({"A"});
    PolyData& d = m.Poly[0];
    const char* vdyp[] = {"AT", "PL", "SX", "", "", ""};
    for (int s = 0; s < 6; ++s) d.VS[s] = vdyp[s];
    d.VP = {10, 30, 30, 0, 0, 0};
    d.VSIDX = {1, 2, 3, 0, 0, 0};
    m.PolyC[0].VX = {1, 0, 1, 1, 1, 1};
    const char* tipsy[] = {"FD", "PL", "SX", "", ""};
    for (int s = 0; s < 5; ++s) d.TS[s] = tipsy[s];
    d.TP = {60, 0, 40, 0, 0};  // complete: species without a share lose their code
    d.TH = {1, 2, 3, 0, 0};
    d.TI = {11, 12, 13, 0, 0};
    m.PolyM[0].TG = {21, 22, 23, 0, 0};
    m.CurPoly = 0;

    reorderSpecies(m);
    // Equal percents: the first (PL) stays ahead of SX; 70 in all, so nothing is blanked.
    EXPECT_EQ(d.VS[0].str() + d.VS[1].str() + d.VS[2].str(), "PLSXAT");
    EXPECT_EQ(d.VP, (std::array<int16_t, 6>{30, 30, 10, 0, 0, 0}));
    EXPECT_EQ(d.VSIDX, (std::array<int16_t, 6>{2, 3, 1, 0, 0, 0}));
    EXPECT_EQ(m.PolyC[0].VX, (std::array<int16_t, 6>{0, 1, 1, 1, 1, 1}));
    EXPECT_EQ(d.TS[0].str() + "|" + d.TS[1].str() + "|" + d.TS[2].str(), "FD|SX|");
    EXPECT_EQ(d.TP, (std::array<int16_t, 5>{60, 40, 0, 0, 0}));
    EXPECT_EQ(d.TH, (std::array<int16_t, 5>{1, 3, 2, 0, 0}));
    EXPECT_EQ(d.TI, (std::array<int16_t, 5>{11, 13, 12, 0, 0}));
    EXPECT_EQ(m.PolyM[0].TG, (std::array<int16_t, 5>{21, 23, 22, 0, 0}));
    // The saved copy follows the data and calculation records, not the management one.
    EXPECT_EQ(m.OldPoly.VP, d.VP);
    EXPECT_EQ(m.OldPolyC.VX, m.PolyC[0].VX);
    EXPECT_EQ(m.OldPolyM.TG, (std::array<int16_t, 5>{}));
}

TEST(SaveAsDefault, WritesTheFileThatLoadDefaultsReadsBack) {
    test::TempDir dir;
    Model m = smallProject({"A"});
    m.Paths[UserDocuments] = dir.path() + "/";
    m.Poly[0].REGION = "12";
    m.Poly[0].VAF = 0.85f;
    saveAsDefaultPolygon(m, 0);
    EXPECT_EQ(m.DefaultPoly.REGION.str(), "12");

    Model loaded = smallProject({});
    loaded.Paths[UserDocuments] = dir.path() + "/";
    test::FakeHost host;
    ASSERT_TRUE(LoadDefaults(loaded, host));
    EXPECT_FLOAT_EQ(loaded.DefaultPoly.VAF, 0.85f);
    EXPECT_EQ(loaded.DefaultPoly.REGION.str(), "");
}

}  // namespace
}  // namespace arborex
