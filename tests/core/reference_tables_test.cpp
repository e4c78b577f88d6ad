// Loading and searching the reference tables: species, PSYU list, region/compartment table and
// choice lists, on small files written for each case, and once on the installed data files.

#include <gtest/gtest.h>

#include <fstream>
#include <set>

#include "model/model.hpp"
#include "model/reference_tables.hpp"
#include "model/species_binding.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

using Rows = std::vector<std::string>;

// One line per record, "|" between the fields, so that a whole table compares at once.
Rows rows(const std::vector<SpeciesRec>& table) {
    Rows out;
    for (const SpeciesRec& r : table)
        out.push_back(r.Code.raw() + "|" + r.Code2.raw() + "|" + r.Desc.str() + "|" +
                      std::to_string(r.Deciduous) + std::to_string(r.NonCommercial));
    return out;
}
// Aliases from index 1: "alias>code@index".
Rows rows(const std::vector<SpeciesAlias>& table) {
    Rows out;
    for (std::size_t i = 1; i < table.size(); ++i)
        out.push_back(table[i].Alias.str() + ">" + table[i].Code.str() + "@" +
                      std::to_string(table[i].Index));
    return out;
}
Rows rows(const std::vector<RegCompRec>& table) {
    Rows out;
    for (const RegCompRec& r : table)
        out.push_back(std::to_string(r.Region) + "|" + std::to_string(r.Comp) + "|" + r.CompLetter +
                      "|" + std::to_string(r.PSYU) + "|" + r.Block + "|" + r.FIZ);
    return out;
}

const char* const kSpeciesV =
    "PL\tC\t-\t Lodgepole pine \t pli \tPLC\t\t \n"
    "no tabs on this line\n"
    "XX\t\t-\tfield 1 is empty\tXXX\n"
    "AT\tD\t-\tTrembling aspen\r\n"
    "W\tD\tN\t  Willow  \tWS\n"
    "LONG\tC\t-\tA description well beyond thirty-two characters\n";

const char* const kSpeciesT =
    "\"FD\" \"FC\" \"Douglas-fir\" \"fdc\" \"FDI\" \"\"\n"
    "\"HW\" \"HW\" without a description\n"
    "\"XX\" \"three quotes only\n"
    "\"PL\",\"PI\",\"Lodgepole pine, no closing quote\n";

class RefTables : public ::testing::Test {
protected:
    std::string write(const std::string& name, const std::string& text) {
        const std::string path = dir.file(name);
        std::ofstream(path, std::ios::binary) << text;
        return path;
    }
    ReferenceTables speciesV() {
        ReferenceTables ref;
        LoadSpeciesV(ref, host, write("SPECIESV.DAT", kSpeciesV));
        return ref;
    }
    ReferenceTables speciesT() {
        ReferenceTables ref;
        LoadSpeciesT(ref, host, write("SPECIEST.DAT", kSpeciesT));
        return ref;
    }

    test::FakeHost host;
    test::TempDir dir;
};

TEST_F(RefTables, SpeciesVFieldsFlagsAliasesAndSkippedLines) {
    const ReferenceTables ref = speciesV();
    EXPECT_TRUE(host.prompt.shown.empty());
    EXPECT_EQ(ref.SpeciesVCount, 4);
    // Non-commercial: the trimmed description gains its mark. The fixed string cuts code and
    // description.
    EXPECT_EQ(rows(ref.SpeciesV),
              (Rows{"  |  |- None -|00", "PL|  |Lodgepole pine|00", "AT|  |Trembling aspen|10",
                    "W |  |Willow (NC)|11", "LO|  |A description well beyond thirty|00"}));
    EXPECT_EQ(ref.SpeciesV[3].Desc.raw().substr(0, 13), "Willow (NC)  ");
    // Aliases are trimmed, upper case and never empty.
    EXPECT_EQ(ref.SpeciesVAliasCount, 3);
    EXPECT_EQ(rows(ref.SpeciesVAlias), (Rows{"PLI>PL@1", "PLC>PL@1", "WS>W@3"}));
}

TEST_F(RefTables, SpeciesTQuotedFieldsAndTheirLimits) {
    const ReferenceTables ref = speciesT();
    EXPECT_EQ(ref.SpeciesTCount, 3);
    // Four quotes are enough, the description then empty; an open description runs to the
    // end of the line.
    EXPECT_EQ(rows(ref.SpeciesT), (Rows{"  |  |- None -|00", "FD|FC|Douglas-fir|00", "HW|HW||00",
                                        "PL|PI|Lodgepole pine, no closing quote|00"}));
    EXPECT_EQ(ref.SpeciesTAliasCount, 2);
    EXPECT_EQ(rows(ref.SpeciesTAlias), (Rows{"FDC>FD@1", "FDI>FD@1"}));
}

TEST_F(RefTables, SpeciesLookupByCodesThenAliasesTrimmedAnyCaseUnknownIsNone) {
    const ReferenceTables ref = speciesV();
    for (auto [code, index] :
         {std::pair{"PL", 1}, {" at", 2}, {"pli ", 1}, {"ws", 3}, {"ZZ", 0}, {"", 0}})
        EXPECT_EQ(FindVSpecIdx(ref, code), index) << code;

    const ReferenceTables t = speciesT();
    EXPECT_EQ(FindTSpecIdx(t, "fdi"), 1);
    EXPECT_EQ(FindTSpecIdx(t, "PL"), 3);
    EXPECT_EQ(FindTSpecIdx(t, "PI"), 0);  // TIPSY's own code is not a key
    EXPECT_EQ(FindVSpecIdx(t, "FD"), 0);  // each model has its own table

    // A code wins over an alias of the same name.
    ReferenceTables both;
    LoadSpeciesV(both, host, write("v.dat", "S\tC\t-\tSpruce\tSW\nSW\tC\t-\tWhite spruce\n"));
    EXPECT_EQ(FindVSpecIdx(both, "SW"), 2);
}

TEST_F(RefTables, SpeciesReloadReplacesAndAMissingFileKeepsTheTable) {
    ReferenceTables ref = speciesV();
    LoadSpeciesV(ref, host, write("other.dat", "FD\tC\t-\tDouglas-fir\tFDC\n"));
    EXPECT_EQ(ref.SpeciesVCount, 1);
    EXPECT_EQ(ref.SpeciesV.size(), 2u);
    EXPECT_EQ(ref.SpeciesVAliasCount, 1);
    EXPECT_EQ(ref.SpeciesVAlias.size(), 2u);
    EXPECT_EQ(FindVSpecIdx(ref, "PL"), 0);

    LoadSpeciesV(ref, host, dir.file("missing.dat"));
    LoadSpeciesT(ref, host, dir.file("missing.dat"));
    ASSERT_EQ(host.prompt.shown.size(), 2u);
    EXPECT_EQ(host.prompt.shown[0].title, "Loading Species.");
    EXPECT_NE(host.prompt.shown[0].text.find("missing.dat"), std::string::npos);
    EXPECT_EQ(FindVSpecIdx(ref, "FDC"), 1);
    EXPECT_EQ(ref.SpeciesTCount, 0);
    EXPECT_EQ(ref.SpeciesT.size(), 1u);
}

TEST_F(RefTables, PSYUListSkipsLinesAndReadsTolerantNumbers) {
    ReferenceTables ref;
    loadPSYU(ref, host,
             write("PSYU.DAT",
                   "304\tPurden\nno tab\n0\tzero is no unit\n-5\tnor is a negative one\n"
                   "x\tnor a word\n12abc\t Nicola \textra field\n"));
    EXPECT_TRUE(host.prompt.shown.empty());
    ASSERT_EQ(ref.PSYUCount, 2);
    EXPECT_EQ(ref.PSYUList[1].Number, 304);
    EXPECT_EQ(ref.PSYUList[2].Number, 12);
    EXPECT_EQ(LookupPSYU(ref, 12), "Nicola");
    EXPECT_EQ(ref.PSYUCursor, 2);
    EXPECT_EQ(LookupPSYU(ref, 999), "NOT FOUND");
    EXPECT_EQ(ref.PSYUCursor, 0);

    loadPSYU(ref, host, dir.file("gone.dat"));
    EXPECT_TRUE(host.prompt.showed("Loading PSYU."));
    EXPECT_EQ(ref.PSYUCount, 2);
}

TEST_F(RefTables, PSYURepeatedLookupIsAnsweredFromTheCursor) {
    ReferenceTables ref;
    loadPSYU(ref, host, write("PSYU.DAT", "10\tFirst\n20\tSecond\n"));
    EXPECT_EQ(LookupPSYU(ref, 20), "Second");
    // An earlier entry now claims the number; only a fresh search would see it.
    ref.PSYUList[1].Number = 20;
    EXPECT_EQ(LookupPSYU(ref, 20), "Second");
    EXPECT_EQ(LookupPSYU(ref, 10), "NOT FOUND");
    EXPECT_EQ(LookupPSYU(ref, 20), "First");
}

TEST_F(RefTables, RegCompFixedColumnsShortLinesAndLoadingOnce) {
    // The third line has twelve characters: no FIZ, skipped.
    write("Rc_table.dat", " 3 16A  304AF\n 4 12   404 D \n 1 12   101 \n\n");
    ReferenceTables ref;
    LoadRegComp(ref, host, dir.path());
    EXPECT_TRUE(host.prompt.shown.empty());
    EXPECT_EQ(ref.RegCompCount, 2);
    EXPECT_EQ(rows(ref.RegComp), (Rows{"3|16|A|304|A|F", "4|12||404| |D "}));
    EXPECT_EQ(findRegComp(ref, 3, 16, "A "), &ref.RegComp[0]);
    EXPECT_EQ(findRegComp(ref, 4, 12, ""), &ref.RegComp[1]);
    EXPECT_EQ(findRegComp(ref, 3, 16, ""), nullptr);
    EXPECT_EQ(findRegComp(ref, 1, 12, ""), nullptr);

    // A table in hand is kept, whatever the file now says.
    write("Rc_table.dat", " 9  9   909 A\n");
    LoadRegComp(ref, host, dir.path() + "/");
    EXPECT_EQ(ref.RegCompCount, 2);
    EXPECT_EQ(findRegComp(ref, 9, 9, ""), nullptr);

    // A missing table is told every time it is wanted.
    ReferenceTables none;
    LoadRegComp(none, host, dir.file("nowhere"));
    LoadRegComp(none, host, dir.file("nowhere"));
    EXPECT_EQ(host.prompt.shown.size(), 2u);
    EXPECT_EQ(none.RegCompCount, 0);
}

const char* const kChoices =
    "[STOCKING]\nR\n\n  1  \n[NOTES]\nignored\n[VUTILIZ]\n12.5\n[TUTILIZ]\n17.5\r\n[FIZ]\nA\n"
    "[REGEN]\nNatural\nPlanted\n[OWNERSHIP]\nc - Crown\nP - Private\n[SILVI]\nClearcut\n";

TEST_F(RefTables, ChoicesSectionsFillListsNamesAndCodes) {
    write("choose.txt", kChoices);
    ReferenceTables ref;
    LoadChoices(ref, host, dir.path(), true);
    EXPECT_TRUE(host.prompt.shown.empty());
    const ChoiceLists& c = ref.Choices;
    EXPECT_EQ(c.STOCKING, (Rows{"R", "1"}));
    EXPECT_EQ(c.VUTILIZ, (Rows{"12.5"}));
    EXPECT_EQ(c.TUTILIZ, (Rows{"17.5"}));
    EXPECT_EQ(c.FIZ, (Rows{"A"}));
    EXPECT_EQ(c.REGEN, (Rows{"Natural", "Planted"}));
    EXPECT_EQ(c.OWNERSHIP, (Rows{"c - Crown", "P - Private"}));
    EXPECT_EQ(c.SILVI, (Rows{"Clearcut"}));
    EXPECT_EQ(ref.OwnershipCount, 1);
    EXPECT_EQ(ref.OwnershipNames[0], "c - Crown");
    EXPECT_EQ(std::string(ref.OwnershipCodes.begin(), ref.OwnershipCodes.end()), "CP  ");
    EXPECT_EQ(ref.SilviCount, 0);
    EXPECT_EQ(ref.SilviNames[0], "Clearcut");

    // A second load replaces rather than adds.
    LoadChoices(ref, host, dir.path(), true);
    EXPECT_EQ(ref.Choices.REGEN.size(), 2u);
    EXPECT_EQ(ref.OwnershipCount, 1);

    // A missing file leaves the lists as they were.
    LoadChoices(ref, host, dir.file("elsewhere"), true);
    ASSERT_EQ(host.prompt.shown.size(), 1u);
    EXPECT_EQ(host.prompt.shown[0].title, "Loading Choices.");
    EXPECT_EQ(ref.OwnershipCount, 1);
    EXPECT_EQ(ref.Choices.FIZ.size(), 1u);

    // Without lists only the ownership and silviculture tables fill.
    ReferenceTables tablesOnly;
    LoadChoices(tablesOnly, host, dir.path(), false);
    EXPECT_TRUE(tablesOnly.Choices.STOCKING.empty());
    EXPECT_TRUE(tablesOnly.Choices.OWNERSHIP.empty());
    EXPECT_EQ(tablesOnly.OwnershipCount, 1);
    EXPECT_EQ(tablesOnly.SilviCount, 0);
}

TEST_F(RefTables, ChoicesRefuseTheFifthOwnershipAndTheFourthSilvi) {
    write("choose.txt",
          "[OWNERSHIP]\nC - Crown\nP - Private\nT - Top-up\nO - Other\nX - Extra\n"
          "[SILVI]\nClearcut\nPartial Cut\nThird\nFourth\n");
    ReferenceTables ref;
    LoadChoices(ref, host, dir.path(), true);
    ASSERT_EQ(host.prompt.shown.size(), 2u);
    EXPECT_EQ(host.prompt.shown[0].text,
              "A maximum of 4 ownership strings can be stored in the CHOOSE.TXT file");
    EXPECT_EQ(host.prompt.shown[1].text,
              "A maximum of 3 Silvi strings can be stored in the CHOOSE.TXT file");
    EXPECT_EQ(ref.OwnershipCount, 3);
    EXPECT_EQ(std::string(ref.OwnershipCodes.begin(), ref.OwnershipCodes.end()), "CPTO");
    EXPECT_EQ(ref.Choices.OWNERSHIP.size(), 4u);
    EXPECT_EQ(ref.SilviCount, 2);
    EXPECT_EQ(ref.SilviNames[2], "Third");
    EXPECT_EQ(ref.Choices.SILVI.size(), 3u);
}

Model modelWithPolygons(int count) {
    Model m;
    ResizePolygonArrays(m, count);
    m.LastPoly = static_cast<int16_t>(count - 1);
    return m;
}

TEST_F(RefTables, FindSpecIDXBindsCodesAndTakesTheTablesOwnCode) {
    Model m = modelWithPolygons(2);
    m.Ref = speciesV();
    LoadSpeciesT(m.Ref, host,
                 write("SPECIEST.DAT",
                       "\"FD\" \"FC\" \"Douglas-fir\" \"FDC\"\n\"PL\" \"PL\" \"Lodgepole pine\" "
                       "\"PLI\"\n"));
    PolyData& p = m.Poly[1];
    p.VS = {Code2("at"), Code2("ZZ"), Code2("  "), Code2("WS"), Code2("PL"), Code2("")};
    p.VSIDX = {9, 9, 9, 9, 9, 9};
    p.TS = {Code2("PL"), Code2("fd"), Code2("XX"), Code2(""), Code2("")};
    p.TSIDX = {9, 9, 9, 9, 9};
    m.PolyC[1].DELETE = 1;  // deleted polygons are bound too
    findSpecIDX(m);

    EXPECT_EQ(p.VSIDX, (std::array<int16_t, 6>{2, 0, 0, 3, 1, 0}));
    EXPECT_EQ(p.VS[0].str(), "AT");
    EXPECT_EQ(p.VS[1].raw(), "  ");
    EXPECT_EQ(p.VS[3].str(), "W");
    EXPECT_EQ(p.TSIDX, (std::array<int16_t, 5>{2, 1, 0, 0, 0}));
    EXPECT_EQ(p.TS[1].str(), "FD");
    EXPECT_EQ(m.Poly[0].VSIDX[0], 0);
}

TEST_F(RefTables, FindSpecIDXLeavesTheStoredBindingOfATableNotLoaded) {
    Model m = modelWithPolygons(1);
    m.Poly[0].VS[0] = "PLI";
    m.Poly[0].VSIDX[0] = 7;
    m.Poly[0].TS[0] = "FD";
    m.Poly[0].TSIDX[0] = 3;
    findSpecIDX(m);
    EXPECT_EQ(m.Poly[0].VS[0].str(), "PL");  // the fixed string already cut it
    EXPECT_EQ(m.Poly[0].VSIDX[0], 7);
    EXPECT_EQ(m.Poly[0].TSIDX[0], 3);

    // Only the loaded table binds.
    LoadSpeciesT(m.Ref, host, write("t.dat", "\"FD\" \"FC\" \"Douglas-fir\"\n"));
    findSpecIDX(m);
    EXPECT_EQ(m.Poly[0].VSIDX[0], 7);
    EXPECT_EQ(m.Poly[0].TSIDX[0], 1);
}

TEST_F(RefTables, FindAllPSYUFillsLivePolygonsThatFindARecord) {
    write("Rc_table.dat", " 3 16A  304AF\n 4 12   404 D\n");
    Model m = modelWithPolygons(4);
    m.Paths[ArborexFolder] = dir.path() + "/";
    const char* places[][3] = {
        {" 3", "016", "A"}, {"4", "12x", " "}, {"3", "16", "B"}, {"4", "12", ""}};
    for (std::size_t p = 0; p < 4; ++p) {
        m.Poly[p].REGION = places[p][0];
        m.Poly[p].COMP = places[p][1];
        m.Poly[p].COMPL = places[p][2];  // polygon 2 has no such letter
        m.Poly[p].PSYU = 1;
        m.Poly[p].FIZ = "Z";
    }
    m.PolyC[3].DELETE = 1;

    EXPECT_EQ(FindAllPSYU(m, host), 2);
    EXPECT_TRUE(host.prompt.shown.empty());
    auto filled = [&m](std::size_t p) {
        return std::to_string(m.Poly[p].PSYU) + "|" + m.Poly[p].PSYUBLOCK.str() + "|" +
               m.Poly[p].FIZ.str();
    };
    EXPECT_EQ(filled(0), "304|A|F");
    EXPECT_EQ(filled(1), "404||D");
    EXPECT_EQ(filled(2), "1||Z");
    EXPECT_EQ(m.Poly[3].PSYU, 1);
}

TEST(InstalledData, LoadsCleanlyAndHangsTogether) {
    test::FakeHost host;
    const std::string folder = std::string(ARBOREX_SOURCE_DIR) + "/data/";
    ReferenceTables ref;
    LoadChoices(ref, host, folder, true);
    LoadSpeciesV(ref, host, folder + "SPECIESV.DAT");
    LoadSpeciesT(ref, host, folder + "SPECIEST.DAT");
    loadPSYU(ref, host, folder + "PSYU.DAT");
    LoadRegComp(ref, host, folder);
    EXPECT_TRUE(host.prompt.shown.empty());

    EXPECT_GT(FindVSpecIdx(ref, "PL"), 0);
    EXPECT_EQ(FindVSpecIdx(ref, "PLI"), FindVSpecIdx(ref, "PL"));
    EXPECT_EQ(FindVSpecIdx(ref, "FDC"), FindVSpecIdx(ref, "FD"));
    EXPECT_GT(FindTSpecIdx(ref, "FD"), 0);  // what a commercial thin plants on the coast
    EXPECT_GT(FindTSpecIdx(ref, "PL"), 0);  // and in the interior
    for (int i = 1; i <= ref.SpeciesTCount; ++i)
        EXPECT_FALSE(ref.SpeciesT[static_cast<std::size_t>(i)].Code2.str().empty()) << i;

    ASSERT_GT(ref.PSYUCount, 0);
    ASSERT_GT(ref.RegCompCount, 0);
    std::set<int16_t> units;
    for (int i = 1; i <= ref.PSYUCount; ++i) units.insert(ref.PSYUList[i].Number);
    for (const RegCompRec& rec : ref.RegComp) {
        EXPECT_TRUE(units.count(rec.PSYU)) << rec.PSYU;
        ASSERT_EQ(rec.FIZ.size(), 1u);
        EXPECT_TRUE(rec.FIZ[0] >= 'A' && rec.FIZ[0] <= 'L') << rec.FIZ;
    }

    EXPECT_EQ(ref.OwnershipCount, 3);
    EXPECT_EQ(std::string(ref.OwnershipCodes.begin(), ref.OwnershipCodes.end()), "CPTO");
    EXPECT_EQ(ref.Choices.REGEN.size(), 2u);  // 0 natural, 1 planted
    EXPECT_EQ(ref.Choices.FIZ.size(), 12u);
}

}  // namespace
}  // namespace arborex
