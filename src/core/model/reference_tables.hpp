#pragma once
// The read-only tables of the outside world, loaded from the installation folder at start:
// the species codes that VDYP and TIPSY accept, the PSYU list, the region/compartment table
// and the choice lists of the polygon screen. A missing or damaged file never stops the
// program: the user is told once and the table keeps what it had.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/host.hpp"
#include "base/text.hpp"

namespace arborex {

struct Model;

struct SpeciesRec {
    FixedString<2> Code;
    FixedString<2> Code2;  // the TIPSY table's own code; blanks in the VDYP table
    FixedString<32> Desc;
    int16_t Deciduous = 0;
    int16_t NonCommercial = 0;
};

// A long inventory code ("PLI") standing for a table entry ("PL").
struct SpeciesAlias {
    FixedString<2> Code;
    FixedString<4> Alias;  // upper case
    int16_t Index = 0;     // into the species table
};

struct PSYUEntry {
    int16_t Number = 0;
    FixedString<32> Name;
};

struct RegCompRec {
    int16_t Region = 0;
    int16_t Comp = 0;
    std::string CompLetter;
    int16_t PSYU = 0;
    std::string Block;
    std::string FIZ;
};

// The entries of choose.txt's sections, trimmed, in file order.
struct ChoiceLists {
    std::vector<std::string> STOCKING, VUTILIZ, TUTILIZ, FIZ, REGEN, OWNERSHIP, SILVI;
};

struct ReferenceTables {
    // Index 0 of each species table is "- None -" with the code of two blanks; the counts are
    // the highest index.
    std::vector<SpeciesRec> SpeciesV, SpeciesT;
    int16_t SpeciesVCount = 0;
    int16_t SpeciesTCount = 0;
    // Aliases from index 1; the counts are the highest index, 0 when there is none.
    std::vector<SpeciesAlias> SpeciesVAlias, SpeciesTAlias;
    int16_t SpeciesVAliasCount = 0;
    int16_t SpeciesTAliasCount = 0;

    // Entries from index 1; PSYUCount is the highest index, 0 when empty.
    std::vector<PSYUEntry> PSYUList;
    int16_t PSYUCount = 0;
    int16_t PSYUCursor = 0;  // index of the last hit of LookupPSYU

    std::vector<RegCompRec> RegComp;
    int16_t RegCompCount = 0;  // the number of records

    std::array<std::string, 4> OwnershipNames;
    std::array<char, 4> OwnershipCodes{' ', ' ', ' ', ' '};
    int16_t OwnershipCount = -1;  // highest index, -1 when empty
    std::array<std::string, 3> SilviNames;
    int16_t SilviCount = -1;

    // What the polygon screen's lists show; filled when LoadChoices is asked to fill lists.
    ChoiceLists Choices;

    ReferenceTables();
};

// "SPECIESV.DAT": tab-separated code, "D" or not, "N" or not, description, aliases.
void LoadSpeciesV(ReferenceTables& ref, Host& host, const std::string& path);
// "SPECIEST.DAT": quoted code, TIPSY code, description, aliases.
void LoadSpeciesT(ReferenceTables& ref, Host& host, const std::string& path);
// "PSYU.DAT": tab-separated number and name.
void loadPSYU(ReferenceTables& ref, Host& host, const std::string& path);
// "choose.txt" from `folder` (the installation folder, Paths[0]).
void LoadChoices(ReferenceTables& ref, Host& host, const std::string& folder, bool fillLists);
// "Rc_table.dat" from `folder`, once: a table already holding records is kept.
void LoadRegComp(ReferenceTables& ref, Host& host, const std::string& folder);

// Table index of a code, compared trimmed and without regard to case, through the aliases
// as well; 0 ("- None -") when unknown.
int16_t FindVSpecIdx(const ReferenceTables& ref, const std::string& code);
int16_t FindTSpecIdx(const ReferenceTables& ref, const std::string& code);
// The trimmed name of a PSYU, "NOT FOUND" when unknown. A repeated number is answered from the
// cursor without a search.
std::string LookupPSYU(ReferenceTables& ref, int16_t number);
// The first record of the region/compartment table for a region, compartment and letter;
// nullptr when there is none.
const RegCompRec* findRegComp(const ReferenceTables& ref, int16_t region, int16_t comp,
                              const std::string& letter);
// Fills PSYU, PSYUBLOCK and FIZ of every live polygon whose REGION, COMP and COMPL find a
// record (LoadRegComp first). Returns the number of polygons filled.
int FindAllPSYU(Model& m, Host& host);

}  // namespace arborex
