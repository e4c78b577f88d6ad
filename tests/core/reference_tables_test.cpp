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

using test::FakeHost;
using test::TempDir;

std::string write(const TempDir& dir, const std::string& name, const std::string& text) {
    const std::string path = dir.file(name);
    std::ofstream(path, std::ios::binary) << text;
    return path;
}

// A VDYP table of three species, each line showing one rule.
ReferenceTables speciesV(FakeHost& host, const TempDir& dir) {
    ReferenceTables ref;
    LoadSpeciesV(ref, host,
                 write(dir, "SPECIESV.DAT",
                       "PL\tC\t-\t Lodgepole pine \t pli \tPLC\t\t \n"
                       "no tabs on this line\n"
                       "XX\t\t-\tfield 1 is empty\tXXX\n"
                       "AT\tD\t-\tTrembling aspen\r\n"
                       "W\tD\tN\t  Willow  \tWS\n"
                       "LONG\tC\t-\tA description well beyond thirty-two characters\n"));
    return ref;
}

ReferenceTables speciesT(FakeHost& host, const TempDir& dir) {
    ReferenceTables ref;
    LoadSpeciesT(ref, host,
                 write(dir, "SPECIEST.DAT",
                       "\"FD\" \"FC\" \"Douglas-fir\" \"fdc\" \"FDI\" \"\"\n"
                       "\"HW\" \"HW\" without a description\n"
                       "\"XX\" \"three quotes only\n"
                       "\"PL\",\"PI\",\"Lodgepole pine, no closing quote\n"));
    return ref;
}

TEST(SpeciesV, FieldsFlagsAndSkippedLines) {
    FakeHost host;
    TempDir dir;
    const ReferenceTables ref = speciesV(host, dir);
    EXPECT_TRUE(host.prompt.shown.empty());
    ASSERT_EQ(ref.SpeciesVCount, 4);
    ASSERT_EQ(ref.SpeciesV.size(), 5u);
    EXPECT_EQ(ref.SpeciesV[0].Desc.str(), "- None -");
    EXPECT_EQ(ref.SpeciesV[0].Code.raw(), "  ");

    const SpeciesRec& pl = ref.SpeciesV[1];
    EXPECT_EQ(pl.Code.str(), "PL");
    EXPECT_EQ(pl.Code2.raw(), "  ");
    EXPECT_EQ(pl.Desc.str(), "Lodgepole pine");
    EXPECT_EQ(pl.Deciduous, 0);
    EXPECT_EQ(pl.NonCommercial, 0);

    EXPECT_EQ(ref.SpeciesV[2].Code.str(), "AT");
    EXPECT_EQ(ref.SpeciesV[2].Deciduous, 1);
    EXPECT_EQ(ref.SpeciesV[2].Desc.str(), "Trembling aspen");

    // Non-commercial: the trimmed description gains its mark.
    EXPECT_EQ(ref.SpeciesV[3].NonCommercial, 1);
    EXPECT_EQ(ref.SpeciesV[3].Desc.raw().substr(0, 13), "Willow (NC)  ");

    // The fixed string cuts code and description.
    EXPECT_EQ(ref.SpeciesV[4].Code.str(), "LO");
    EXPECT_EQ(ref.SpeciesV[4].Desc.str(), "A description well beyond thirty");
}

TEST(SpeciesV, AliasesAreTrimmedUpperCaseAndNeverEmpty) {
    FakeHost host;
    TempDir dir;
    const ReferenceTables ref = speciesV(host, dir);
    ASSERT_EQ(ref.SpeciesVAliasCount, 3);
    ASSERT_EQ(ref.SpeciesVAlias.size(), 4u);
    EXPECT_EQ(ref.SpeciesVAlias[1].Alias.str(), "PLI");
    EXPECT_EQ(ref.SpeciesVAlias[1].Code.str(), "PL");
    EXPECT_EQ(ref.SpeciesVAlias[1].Index, 1);
    EXPECT_EQ(ref.SpeciesVAlias[2].Alias.str(), "PLC");
    EXPECT_EQ(ref.SpeciesVAlias[3].Alias.str(), "WS");
    EXPECT_EQ(ref.SpeciesVAlias[3].Index, 3);
}

TEST(SpeciesT, QuotedFieldsAndTheirLimits) {
    FakeHost host;
    TempDir dir;
    const ReferenceTables ref = speciesT(host, dir);
    ASSERT_EQ(ref.SpeciesTCount, 3);
    EXPECT_EQ(ref.SpeciesT[1].Code.str(), "FD");
    EXPECT_EQ(ref.SpeciesT[1].Code2.str(), "FC");
    EXPECT_EQ(ref.SpeciesT[1].Desc.str(), "Douglas-fir");
    // Four quotes are enough; the description is then empty.
    EXPECT_EQ(ref.SpeciesT[2].Code.str(), "HW");
    EXPECT_EQ(ref.SpeciesT[2].Desc.str(), "");
    // An open description runs to the end of the line.
    EXPECT_EQ(ref.SpeciesT[3].Code.str(), "PL");
    EXPECT_EQ(ref.SpeciesT[3].Code2.str(), "PI");
    EXPECT_EQ(ref.SpeciesT[3].Desc.str(), "Lodgepole pine, no closing quote");

    ASSERT_EQ(ref.SpeciesTAliasCount, 2);
    EXPECT_EQ(ref.SpeciesTAlias[1].Alias.str(), "FDC");
    EXPECT_EQ(ref.SpeciesTAlias[2].Alias.str(), "FDI");
    EXPECT_EQ(ref.SpeciesTAlias[2].Index, 1);
}

TEST(SpeciesLookup, CodesThenAliasesTrimmedAnyCaseUnknownIsNone) {
    FakeHost host;
    TempDir dir;
    const ReferenceTables ref = speciesV(host, dir);
    EXPECT_EQ(FindVSpecIdx(ref, "PL"), 1);
    EXPECT_EQ(FindVSpecIdx(ref, " at"), 2);
    EXPECT_EQ(FindVSpecIdx(ref, "pli "), 1);
    EXPECT_EQ(FindVSpecIdx(ref, "ws"), 3);
    EXPECT_EQ(FindVSpecIdx(ref, "ZZ"), 0);
    EXPECT_EQ(FindVSpecIdx(ref, ""), 0);
    EXPECT_EQ(FindVSpecIdx(ref, "PLI"), FindVSpecIdx(ref, "PL"));

    const ReferenceTables t = speciesT(host, dir);
    EXPECT_EQ(FindTSpecIdx(t, "fdi"), 1);
    EXPECT_EQ(FindTSpecIdx(t, "PL"), 3);
    EXPECT_EQ(FindTSpecIdx(t, "PI"), 0);  // TIPSY's own code is not a key
    EXPECT_EQ(FindVSpecIdx(t, "FD"), 0);  // each model has its own table
}

TEST(SpeciesLookup, ACodeWinsOverAnAliasOfTheSameName) {
    FakeHost host;
    TempDir dir;
    ReferenceTables ref;
    LoadSpeciesV(ref, host, write(dir, "v.dat", "S\tC\t-\tSpruce\tSW\nSW\tC\t-\tWhite spruce\n"));
    EXPECT_EQ(FindVSpecIdx(ref, "SW"), 2);
}

TEST(SpeciesTables, ReloadReplacesAndAMissingFileKeepsTheTable) {
    FakeHost host;
    TempDir dir;
    ReferenceTables ref = speciesV(host, dir);
    LoadSpeciesV(ref, host, write(dir, "other.dat", "FD\tC\t-\tDouglas-fir\tFDC\n"));
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

TEST(PSYUList, SkippedLinesAndTolerantNumbers) {
    FakeHost host;
    TempDir dir;
    ReferenceTables ref;
    loadPSYU(ref, host,
             write(dir, "PSYU.DAT",
                   "304\tPurden\n"
                   "no tab\n"
                   "0\tzero is no unit\n"
                   "-5\tnor is a negative one\n"
                   "x\tnor a word\n"
                   "12abc\t Nicola \textra field\n"));
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

TEST(PSYUList, ARepeatedLookupIsAnsweredFromTheCursor) {
    FakeHost host;
    TempDir dir;
    ReferenceTables ref;
    loadPSYU(ref, host, write(dir, "PSYU.DAT", "10\tFirst\n20\tSecond\n"));
    EXPECT_EQ(LookupPSYU(ref, 20), "Second");
    // An earlier entry now claims the number; only a fresh search would see it.
    ref.PSYUList[1].Number = 20;
    EXPECT_EQ(LookupPSYU(ref, 20), "Second");
    EXPECT_EQ(LookupPSYU(ref, 10), "NOT FOUND");
    EXPECT_EQ(LookupPSYU(ref, 20), "First");
}

TEST(RegComp, FixedColumnsShortLinesAndLoadingOnce) {
    FakeHost host;
    TempDir dir;
    write(dir, "Rc_table.dat",
          " 3 16A  304AF\n"
          " 4 12   404 D \n"
          " 1 12   101 \n"  // twelve characters: no FIZ, skipped
          "\n");
    ReferenceTables ref;
    LoadRegComp(ref, host, dir.path());
    EXPECT_TRUE(host.prompt.shown.empty());
    ASSERT_EQ(ref.RegCompCount, 2);
    const RegCompRec& a = ref.RegComp[0];
    EXPECT_EQ(a.Region, 3);
    EXPECT_EQ(a.Comp, 16);
    EXPECT_EQ(a.CompLetter, "A");
    EXPECT_EQ(a.PSYU, 304);
    EXPECT_EQ(a.Block, "A");
    EXPECT_EQ(a.FIZ, "F");
    EXPECT_EQ(ref.RegComp[1].CompLetter, "");
    EXPECT_EQ(ref.RegComp[1].Block, " ");
    EXPECT_EQ(ref.RegComp[1].FIZ, "D ");

    EXPECT_EQ(findRegComp(ref, 3, 16, "A "), &ref.RegComp[0]);
    EXPECT_EQ(findRegComp(ref, 4, 12, ""), &ref.RegComp[1]);
    EXPECT_EQ(findRegComp(ref, 3, 16, ""), nullptr);
    EXPECT_EQ(findRegComp(ref, 1, 12, ""), nullptr);

    // A table in hand is kept, whatever the file now says.
    write(dir, "Rc_table.dat", " 9  9   909 A\n");
    LoadRegComp(ref, host, dir.path() + "/");
    EXPECT_EQ(ref.RegCompCount, 2);
    EXPECT_EQ(findRegComp(ref, 9, 9, ""), nullptr);
}

TEST(RegComp, AMissingTableIsToldEveryTimeItIsWanted) {
    FakeHost host;
    TempDir dir;
    ReferenceTables ref;
    LoadRegComp(ref, host, dir.path());
    LoadRegComp(ref, host, dir.path());
    EXPECT_EQ(host.prompt.shown.size(), 2u);
    EXPECT_EQ(ref.RegCompCount, 0);
}

const char* const kChoices =
    "[STOCKING]\n"
    "R\n"
    "\n"
    "  1  \n"
    "[NOTES]\n"
    "ignored\n"
    "[VUTILIZ]\n"
    "12.5\n"
    "[TUTILIZ]\n"
    "17.5\r\n"
    "[FIZ]\n"
    "A\n"
    "[REGEN]\n"
    "Natural\n"
    "Planted\n"
    "[OWNERSHIP]\n"
    "c - Crown\n"
    "P - Private\n"
    "[SILVI]\n"
    "Clearcut\n";

TEST(Choices, SectionsFillListsNamesAndCodes) {
    FakeHost host;
    TempDir dir;
    write(dir, "choose.txt", kChoices);
    ReferenceTables ref;
    LoadChoices(ref, host, dir.path(), true);
    EXPECT_TRUE(host.prompt.shown.empty());
    EXPECT_EQ(ref.Choices.STOCKING, (std::vector<std::string>{"R", "1"}));
    EXPECT_EQ(ref.Choices.VUTILIZ, (std::vector<std::string>{"12.5"}));
    EXPECT_EQ(ref.Choices.TUTILIZ, (std::vector<std::string>{"17.5"}));
    EXPECT_EQ(ref.Choices.FIZ, (std::vector<std::string>{"A"}));
    EXPECT_EQ(ref.Choices.REGEN, (std::vector<std::string>{"Natural", "Planted"}));
    EXPECT_EQ(ref.Choices.OWNERSHIP, (std::vector<std::string>{"c - Crown", "P - Private"}));
    EXPECT_EQ(ref.Choices.SILVI, (std::vector<std::string>{"Clearcut"}));
    EXPECT_EQ(ref.OwnershipCount, 1);
    EXPECT_EQ(ref.OwnershipNames[0], "c - Crown");
    EXPECT_EQ(ref.OwnershipCodes[0], 'C');
    EXPECT_EQ(ref.OwnershipCodes[1], 'P');
    EXPECT_EQ(ref.OwnershipCodes[2], ' ');
    EXPECT_EQ(ref.SilviCount, 0);
    EXPECT_EQ(ref.SilviNames[0], "Clearcut");

    // A second load replaces rather than adds.
    LoadChoices(ref, host, dir.path(), true);
    EXPECT_EQ(ref.Choices.REGEN.size(), 2u);
    EXPECT_EQ(ref.OwnershipCount, 1);
}

TEST(Choices, WithoutListsOnlyTheOwnershipAndSilviTablesFill) {
    FakeHost host;
    TempDir dir;
    write(dir, "choose.txt", kChoices);
    ReferenceTables ref;
    LoadChoices(ref, host, dir.path(), false);
    EXPECT_TRUE(ref.Choices.STOCKING.empty());
    EXPECT_TRUE(ref.Choices.OWNERSHIP.empty());
    EXPECT_EQ(ref.OwnershipCount, 1);
    EXPECT_EQ(ref.SilviCount, 0);
}

TEST(Choices, TheFifthOwnershipAndTheFourthSilviAreRefused) {
    FakeHost host;
    TempDir dir;
    write(dir, "choose.txt",
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

TEST(Choices, AMissingFileLeavesTheListsAsTheyWere) {
    FakeHost host;
    TempDir dir;
    write(dir, "choose.txt", kChoices);
    ReferenceTables ref;
    LoadChoices(ref, host, dir.path(), true);
    LoadChoices(ref, host, dir.file("elsewhere"), true);
    ASSERT_EQ(host.prompt.shown.size(), 1u);
    EXPECT_EQ(host.prompt.shown[0].title, "Loading Choices.");
    EXPECT_EQ(ref.OwnershipCount, 1);
    EXPECT_EQ(ref.Choices.FIZ.size(), 1u);
}

Model modelWithPolygons(int count) {
    Model m;
    ResizePolygonArrays(m, count);
    m.LastPoly = static_cast<int16_t>(count - 1);
    return m;
}

TEST(FindSpecIDX, BindsCodesAndTakesTheTablesOwnCode) {
    FakeHost host;
    TempDir dir;
    Model m = modelWithPolygons(2);
    m.Ref = speciesV(host, dir);
    LoadSpeciesT(m.Ref, host,
                 write(dir, "SPECIEST.DAT",
                       "\"FD\" \"FC\" \"Douglas-fir\" \"FDC\"\n"
                       "\"PL\" \"PL\" \"Lodgepole pine\" \"PLI\"\n"));
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

TEST(FindSpecIDX, TablesNotLoadedLeaveTheStoredBinding) {
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
    FakeHost host;
    TempDir dir;
    LoadSpeciesT(m.Ref, host, write(dir, "t.dat", "\"FD\" \"FC\" \"Douglas-fir\"\n"));
    findSpecIDX(m);
    EXPECT_EQ(m.Poly[0].VSIDX[0], 7);
    EXPECT_EQ(m.Poly[0].TSIDX[0], 1);
}

TEST(FindAllPSYU, FillsLivePolygonsThatFindARecord) {
    FakeHost host;
    TempDir dir;
    write(dir, "Rc_table.dat", " 3 16A  304AF\n 4 12   404 D\n");
    Model m = modelWithPolygons(4);
    m.Paths[ArborexFolder] = dir.path() + "/";
    auto place = [&m](int p, const char* region, const char* comp, const char* letter) {
        m.Poly[static_cast<std::size_t>(p)].REGION = region;
        m.Poly[static_cast<std::size_t>(p)].COMP = comp;
        m.Poly[static_cast<std::size_t>(p)].COMPL = letter;
        m.Poly[static_cast<std::size_t>(p)].PSYU = 1;
        m.Poly[static_cast<std::size_t>(p)].FIZ = "Z";
    };
    place(0, " 3", "016", "A");
    place(1, "4", "12x", " ");
    place(2, "3", "16", "B");  // no such letter
    place(3, "4", "12", "");
    m.PolyC[3].DELETE = 1;

    EXPECT_EQ(FindAllPSYU(m, host), 2);
    EXPECT_TRUE(host.prompt.shown.empty());
    EXPECT_EQ(m.Poly[0].PSYU, 304);
    EXPECT_EQ(m.Poly[0].PSYUBLOCK.str(), "A");
    EXPECT_EQ(m.Poly[0].FIZ.str(), "F");
    EXPECT_EQ(m.Poly[1].PSYU, 404);
    EXPECT_EQ(m.Poly[1].PSYUBLOCK.str(), "");
    EXPECT_EQ(m.Poly[1].FIZ.str(), "D");
    EXPECT_EQ(m.Poly[2].PSYU, 1);
    EXPECT_EQ(m.Poly[2].FIZ.str(), "Z");
    EXPECT_EQ(m.Poly[3].PSYU, 1);
}

TEST(InstalledData, LoadsCleanlyAndHangsTogether) {
    FakeHost host;
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
