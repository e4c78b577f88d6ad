// The variable catalogue and how a polygon's variables show: brackets for what follows the
// project or is calculated, "[TBA]" and "[NA]", words for codes.

#include <gtest/gtest.h>

#include <set>

#include "base/text.hpp"
#include "exchange/grid_export.hpp"
#include "exchange/text_import.hpp"
#include "exchange/variable_catalogue.hpp"
#include "exchange/variable_text.hpp"
#include "support/small_project.hpp"

namespace arborex {
namespace {

TEST(VariableCatalogue, HoldsTheHundredAndOneVariablesInTheirFixedOrder) {
    const auto& vars = SetupVars();
    ASSERT_EQ(vars.size(), 101u);
    EXPECT_EQ(vars[0].VarKey, "NAME");
    EXPECT_EQ(vars[1].VarAlt1, "POLYGON_AREA");
    EXPECT_EQ(vars[3].VarShow, -1);  // SORT and EXCLUDE never show
    EXPECT_EQ(vars[4].VarShow, -1);
    EXPECT_EQ(vars[30].VarAlt1, "AGE");  // VAGETOTAL reads the inventory's AGE column
    EXPECT_EQ(vars[43].VarAlt1, "SPECIES_CD_1");
    EXPECT_EQ(vars[72].VarKey, "TI1");  // the one TIPSY site index always shown
    EXPECT_EQ(vars[72].VarShow, 0);
    EXPECT_EQ(vars[77].VarShow, 1);
    EXPECT_EQ(vars[97].VarDesc, "TIPSY Ferterlize Stand? (1 or Y = Yes, 0 or N = No)");
    EXPECT_EQ(vars[100].VarKey, "FStartYear");
    EXPECT_EQ(vars[100].VarDesc, "TIPSY Years from establishment (#)");

    std::set<std::string> keys;
    for (const Variable& v : vars) keys.insert(toUpper(v.VarKey));
    EXPECT_EQ(keys.size(), 101u);
    EXPECT_EQ(findVariable(" ncdesc "), 25);
    EXPECT_EQ(findVariable("POLYGON_AREA"), -1);  // alternate keys are the database route's
}

TEST(VariableCatalogue, TagsAndSpeciesSlots) {
    EXPECT_EQ(variableTag("FIZ"), ModelTag::Both);
    EXPECT_EQ(variableTag("AREA"), ModelTag::None);
    EXPECT_EQ(variableTag("HAR2"), ModelTag::None);
    EXPECT_EQ(variableTag("VUTILIZ"), ModelTag::VDYP);
    EXPECT_EQ(variableTag("VSICALC"), ModelTag::None);
    EXPECT_EQ(variableTag("VCCCALC"), ModelTag::None);
    EXPECT_EQ(variableTag("vx6"), ModelTag::VDYP);
    EXPECT_EQ(variableTag("TUTILIZ"), ModelTag::TIPSY);
    EXPECT_EQ(variableTag("FStartYear"), ModelTag::TIPSY);
    EXPECT_EQ(speciesSlot("VS1"), 0);
    EXPECT_EQ(speciesSlot("TG5"), 4);
}

TEST(VariableCatalogue, VariableNamesListsEachKeyWithItsDescription) {
    const std::string text = variableNamesText();
    EXPECT_EQ(text.rfind("NAME\tPolygon Name (12 characters)\r\nAREA\tNet Polygon Area", 0), 0u);
    EXPECT_EQ(splitLines(text).size(), 101u);
    EXPECT_NE(
        text.find("FDc Volume Increase 0-50m\xb3, Other species Volume Increase 0-15m\xb3)\r\n"
                  "FStartYear\tTIPSY Years from establishment (#)\r\n"),
        std::string::npos);
}

std::string shown(const Model& m, const char* key) {
    std::string message;
    std::string text = MakeVarStr(m, key, 0, message);
    EXPECT_EQ(message, "") << key;
    return text;
}

TEST(MakeVarStr, BracketsShowWhatThePolygonFollows) {
    Model m = test::smallProject({"A1"});
    m.Settings.PCperc = 25;
    m.Settings.MINDIA = 17.5f;
    m.HarvAge[0][1].HarvestAge = 71;
    PolyData& d = m.Poly[0];
    d.MGNT = {2, 1};
    d.CLOSURE = -1;
    EXPECT_EQ(shown(m, "PCPERC"), "[25]");
    EXPECT_EQ(shown(m, "TMINCUTDBH"), "[18]");
    EXPECT_EQ(shown(m, "HAR1"), "[NA]");  // NC has no harvest age
    EXPECT_EQ(shown(m, "HAR2"), "[71]");
    EXPECT_EQ(shown(m, "CLOSURE"), "[TBA]");
    m.PolyC[0].VCCCALC = 44.6f;
    EXPECT_EQ(shown(m, "CLOSURE"), "[45]");
    d.PCPERC = 30;
    d.CLOSURE = 50;
    EXPECT_EQ(shown(m, "PCPERC"), "30");
    EXPECT_EQ(shown(m, "closure"), "50");
}

TEST(MakeVarStr, CodesShowAsWordsAndZerosAsBlanks) {
    Model m = test::smallProject({"A1"});
    PolyData& d = m.Poly[0];
    d.AREA = 12.25f;
    d.VAF = 0.9f;
    d.SILVI = 1;
    d.MGNT = {3, 2};
    d.REGEN = 1;
    d.VS[0] = "PL";
    d.VP[0] = 0;
    m.PolyC[0].VX[1] = 0;
    m.PolyC[0].OWNERSHIP = 2;
    m.PolyC[0].DELETE = 1;
    m.PolyM[0].FINCTYPE = 2;
    m.PolyM[0].NCDESC = "Brush";
    const struct {
        const char* key;
        const char* text;
    } cases[] = {
        {"AREA", "12.3"},    {"VAF", "0.900"},     {"SILVI", "PC"},        {"EXISTINGMGNT", "NSR"},
        {"FUTUREMGNT", "?"}, {"REGEN", "Planted"}, {"THIN", "No"},         {"VS1", "PL"},
        {"VP1", ""},         {"VX1", ""},          {"VX2", "E"},           {"OWNERSHIP", "T"},
        {"DELETE", "Yes"},   {"EXCLUDE", ""},      {"FIncType", "Height"}, {"NCDesc", "Brush"},
        {"VAGETOTAL", ""},   {"VSITEINDEX", ""}};
    for (const auto& c : cases) EXPECT_EQ(shown(m, c.key), c.text) << c.key;

    std::string message;
    EXPECT_EQ(MakeVarStr(m, "Volume", 0, message), "");
    EXPECT_EQ(message, "Variable not found: VOLUME");
}

TEST(GridEditing, ACellShowsWhatTheModelHoldsAfterTheEdit) {
    Model m = test::smallProject({"A1", "A2", "A3"});
    m.Settings.REGENDELAY = 2;
    std::string message;
    EXPECT_EQ(commitGridCell(m, 0, findVariable("PCPERC"), "75", message), "50");
    EXPECT_EQ(commitGridCell(m, 0, findVariable("REGENDELAY"), "soon", message), "[2]");
    EXPECT_EQ(commitGridCell(m, 0, findVariable("FIZ"), "Q", message), "");
    EXPECT_EQ(message, "FIZ not found: Q");

    // Pasted cells past the last polygon or the last column are dropped; no polygon is made.
    const std::vector<GridChange> pasted = pasteGridText(m, 2, 99, "0\t1\t9\r\n1\t2\r\n3\t4\r\n");
    EXPECT_EQ(m.LastPoly, 2);
    ASSERT_EQ(pasted.size(), 4u);
    EXPECT_EQ(pasted[1].column, 100);
    EXPECT_EQ(pasted[3].row, 3);
    EXPECT_EQ(m.PolyM[2].FSTARTYEAR, 2);
    EXPECT_EQ(pasted[0].text, "Percent");

    m.Poly[0].AREA = 4.5f;
    const std::vector<GridChange> filled = fillDown(m, 3, 1, 1, 1);
    ASSERT_EQ(filled.size(), 2u);
    EXPECT_EQ(m.Poly[2].AREA, 4.5f);
    EXPECT_EQ(filled[1].text, "4.5");

    const GridCells cells = gridCells(m);
    EXPECT_EQ(copyCellsText(cells, 2, 2, 0, 1), "4.5\t\r\n4.5\t\r\n");  // any corner first
    const std::string table = copyTableText(cells);
    EXPECT_EQ(table.rfind("NAME\tAREA\tDELETE\tOWNERSHIP\t", 0), 0u);  // SORT, EXCLUDE out
    EXPECT_EQ(splitLines(table).size(), 4u);
}

}  // namespace
}  // namespace arborex
