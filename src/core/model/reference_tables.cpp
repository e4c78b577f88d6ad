#include "model/reference_tables.hpp"

#include <fstream>
#include <optional>
#include <string_view>

#include "base/errors.hpp"
#include "base/input_file.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "model/model.hpp"

namespace arborex {

ReferenceTables::ReferenceTables() {
    SpeciesRec none;
    none.Code = "  ";
    none.Desc = "- None -";
    SpeciesV.push_back(none);
    SpeciesT.push_back(none);
    SpeciesVAlias.resize(1);
    SpeciesTAlias.resize(1);
    PSYUList.resize(1);
}

namespace {

// What a table holds before any file is read; a reload starts again from it.
const ReferenceTables& pristine() {
    static const ReferenceTables tables;
    return tables;
}

std::vector<std::string> splitAt(std::string_view line, char separator) {
    std::vector<std::string> fields;
    std::size_t start = 0;
    for (;;) {
        const std::size_t end = line.find(separator, start);
        fields.emplace_back(line.substr(start, end == std::string_view::npos ? end : end - start));
        if (end == std::string_view::npos) return fields;
        start = end + 1;
    }
}

// The highest index once one more entry joins a table whose highest index is `last`; a table
// past the 16-bit range is a failure, never a wrap.
int16_t nextIndex(int16_t last) {
    return toI2(static_cast<int>(last) + 1);
}

void addAlias(std::vector<SpeciesAlias>& aliases, int16_t& count, const SpeciesRec& species,
              int16_t index, std::string_view text) {
    const std::string alias = toUpper(trim(text));
    if (alias.empty()) return;
    count = nextIndex(count);
    SpeciesAlias entry;
    entry.Code = species.Code;
    entry.Alias = alias;
    entry.Index = index;
    aliases.push_back(entry);
}

int16_t findSpecies(const std::vector<SpeciesRec>& table, const std::vector<SpeciesAlias>& aliases,
                    const std::string& code) {
    const std::string wanted = trim(code);
    for (std::size_t i = 0; i < table.size(); ++i)
        if (equalsNoCase(table[i].Code.str(), wanted)) return static_cast<int16_t>(i);
    for (std::size_t i = 0; i < aliases.size(); ++i)
        if (equalsNoCase(aliases[i].Alias.str(), wanted)) return aliases[i].Index;
    return 0;
}

std::string inFolder(const std::string& folder, const char* name) {
    if (folder.empty() || folder.back() == '/' || folder.back() == '\\') return folder + name;
    return folder + '/' + name;
}

// The leading number of a field of a reference line; nullopt when it does not fit 16 bits,
// which makes the line as unusable as one without the field.
std::optional<int16_t> leadingI2(std::string_view text) {
    double number = 0.0;
    try {
        number = tolerantNumber(text);
    } catch (const ArborexError&) {
        return std::nullopt;
    }
    if (!(number >= -32768.5 && number < 32767.5)) return std::nullopt;
    return toI2(number);
}

// One non-blank line of a known choose.txt section.
void addChoice(ReferenceTables& ref, Host& host, const std::string& section,
               const std::string& entry, bool fillLists) {
    ChoiceLists& lists = ref.Choices;
    std::vector<std::string>* list = nullptr;
    if (section == "[STOCKING]") {
        list = &lists.STOCKING;
    } else if (section == "[VUTILIZ]") {
        list = &lists.VUTILIZ;
    } else if (section == "[TUTILIZ]") {
        list = &lists.TUTILIZ;
    } else if (section == "[FIZ]") {
        list = &lists.FIZ;
    } else if (section == "[REGEN]") {
        list = &lists.REGEN;
    } else if (section == "[OWNERSHIP]") {
        // A polygon keeps its ownership as an index into these four, so a fifth has no place.
        if (ref.OwnershipCount >= static_cast<int>(ref.OwnershipNames.size()) - 1) {
            host.prompt.tell(kProgramTitle,
                             "A maximum of 4 ownership strings can be stored in the CHOOSE.TXT "
                             "file",
                             Icon::Exclamation);
            return;
        }
        ++ref.OwnershipCount;
        ref.OwnershipNames[ref.OwnershipCount] = entry;
        ref.OwnershipCodes[ref.OwnershipCount] = toUpper(entry.substr(0, 1))[0];
        list = &lists.OWNERSHIP;
    } else if (section == "[SILVI]") {
        if (ref.SilviCount >= static_cast<int>(ref.SilviNames.size()) - 1) {
            host.prompt.tell(kProgramTitle,
                             "A maximum of 3 Silvi strings can be stored in the CHOOSE.TXT file",
                             Icon::Exclamation);
            return;
        }
        ++ref.SilviCount;
        ref.SilviNames[ref.SilviCount] = entry;
        list = &lists.SILVI;
    }
    if (list && fillLists) list->push_back(entry);
}

}  // namespace

void LoadSpeciesV(ReferenceTables& ref, Host& host, const std::string& path) {
    std::ifstream in;
    if (OpenInputFile(host, path, "Loading Species.", in) < 0) return;
    ref.SpeciesV = pristine().SpeciesV;
    ref.SpeciesVCount = 0;
    ref.SpeciesVAlias = pristine().SpeciesVAlias;
    ref.SpeciesVAliasCount = 0;

    std::string line;
    while (readTextLine(in, line)) {
        const std::vector<std::string> fields = splitAt(line, '\t');
        if (fields.size() < 2 || trim(fields[1]).empty()) continue;
        const auto field = [&fields](std::size_t i) {
            return i < fields.size() ? fields[i] : std::string();
        };
        SpeciesRec species;
        species.Code = trim(fields[0]);
        species.Deciduous = equalsNoCase(trim(fields[1]), "D") ? 1 : 0;
        species.NonCommercial = equalsNoCase(trim(field(2)), "N") ? 1 : 0;
        species.Desc = species.NonCommercial ? trim(field(3)) + " (NC)" : field(3);
        ref.SpeciesVCount = nextIndex(ref.SpeciesVCount);
        ref.SpeciesV.push_back(species);
        for (std::size_t i = 4; i < fields.size(); ++i)
            addAlias(ref.SpeciesVAlias, ref.SpeciesVAliasCount, species, ref.SpeciesVCount,
                     fields[i]);
    }
}

void LoadSpeciesT(ReferenceTables& ref, Host& host, const std::string& path) {
    std::ifstream in;
    if (OpenInputFile(host, path, "Loading Species.", in) < 0) return;
    ref.SpeciesT = pristine().SpeciesT;
    ref.SpeciesTCount = 0;
    ref.SpeciesTAlias = pristine().SpeciesTAlias;
    ref.SpeciesTAliasCount = 0;

    std::string line;
    while (readTextLine(in, line)) {
        // Pieces between quotes: the odd ones are the quoted fields, and a last odd piece
        // without its closing quote runs to the end of the line.
        const std::vector<std::string> pieces = splitAt(line, '"');
        if (pieces.size() < 5) continue;  // fewer than four quotes
        SpeciesRec species;
        species.Code = trim(pieces[1]);
        species.Code2 = trim(pieces[3]);
        if (pieces.size() > 5) species.Desc = pieces[5];
        ref.SpeciesTCount = nextIndex(ref.SpeciesTCount);
        ref.SpeciesT.push_back(species);
        for (std::size_t i = 7; i < pieces.size(); i += 2)
            addAlias(ref.SpeciesTAlias, ref.SpeciesTAliasCount, species, ref.SpeciesTCount,
                     pieces[i]);
    }
}

void loadPSYU(ReferenceTables& ref, Host& host, const std::string& path) {
    std::ifstream in;
    if (OpenInputFile(host, path, "Loading PSYU.", in) < 0) return;
    ref.PSYUList = pristine().PSYUList;
    ref.PSYUCount = 0;
    ref.PSYUCursor = 0;

    std::string line;
    while (readTextLine(in, line)) {
        const std::vector<std::string> fields = splitAt(line, '\t');
        if (fields.size() < 2) continue;
        const auto number = leadingI2(fields[0]);
        if (!number || *number <= 0) continue;
        PSYUEntry entry;
        entry.Number = *number;
        entry.Name = fields[1];
        ref.PSYUCount = nextIndex(ref.PSYUCount);
        ref.PSYUList.push_back(entry);
    }
}

void LoadChoices(ReferenceTables& ref, Host& host, const std::string& folder, bool fillLists) {
    std::ifstream in;
    if (OpenInputFile(host, inFolder(folder, "choose.txt"), "Loading Choices.", in) < 0) return;
    ref.OwnershipNames = pristine().OwnershipNames;
    ref.OwnershipCodes = pristine().OwnershipCodes;
    ref.OwnershipCount = pristine().OwnershipCount;
    ref.SilviNames = pristine().SilviNames;
    ref.SilviCount = pristine().SilviCount;
    if (fillLists) ref.Choices = pristine().Choices;

    std::string section;
    std::string line;
    while (readTextLine(in, line)) {
        if (!line.empty() && line.front() == '[') {
            section = toUpper(trim(line));
            continue;
        }
        const std::string entry = trim(line);
        if (!entry.empty()) addChoice(ref, host, section, entry, fillLists);
    }
}

void LoadRegComp(ReferenceTables& ref, Host& host, const std::string& folder) {
    if (ref.RegCompCount > 0) return;
    std::ifstream in;
    if (OpenInputFile(host, inFolder(folder, "Rc_table.dat"), "Loading Region/Compartment Table.",
                      in) < 0)
        return;
    ref.RegComp.clear();
    ref.RegCompCount = 0;

    std::string line;
    while (readTextLine(in, line)) {
        if (line.size() <= 12) continue;
        const std::string_view text(line);
        const auto region = leadingI2(text.substr(0, 2));
        const auto comp = leadingI2(text.substr(2, 3));
        const auto psyu = leadingI2(text.substr(8, 3));
        if (!region || !comp || !psyu) continue;
        RegCompRec rec;
        rec.Region = *region;
        rec.Comp = *comp;
        rec.CompLetter = trim(text.substr(5, 3));
        rec.PSYU = *psyu;
        rec.Block = std::string(text.substr(11, 1));
        rec.FIZ = std::string(text.substr(12));
        ref.RegCompCount = nextIndex(ref.RegCompCount);
        ref.RegComp.push_back(rec);
    }
}

int16_t FindVSpecIdx(const ReferenceTables& ref, const std::string& code) {
    return findSpecies(ref.SpeciesV, ref.SpeciesVAlias, code);
}

int16_t FindTSpecIdx(const ReferenceTables& ref, const std::string& code) {
    return findSpecies(ref.SpeciesT, ref.SpeciesTAlias, code);
}

std::string LookupPSYU(ReferenceTables& ref, int16_t number) {
    const auto cursor = static_cast<std::size_t>(ref.PSYUCursor);
    if (cursor < ref.PSYUList.size() && ref.PSYUList[cursor].Number == number)
        return ref.PSYUList[cursor].Name.str();
    ref.PSYUCursor = 0;
    for (std::size_t i = 1; i < ref.PSYUList.size(); ++i) {
        if (ref.PSYUList[i].Number != number) continue;
        ref.PSYUCursor = static_cast<int16_t>(i);
        return ref.PSYUList[i].Name.str();
    }
    return "NOT FOUND";
}

const RegCompRec* findRegComp(const ReferenceTables& ref, int16_t region, int16_t comp,
                              const std::string& letter) {
    const std::string wanted = trim(letter);
    for (const RegCompRec& rec : ref.RegComp)
        if (rec.Region == region && rec.Comp == comp && rec.CompLetter == wanted) return &rec;
    return nullptr;
}

int FindAllPSYU(Model& m, Host& host) {
    LoadRegComp(m.Ref, host, m.Paths[ArborexFolder]);
    int filled = 0;
    for (int p = 0; p <= m.LastPoly; ++p) {
        const auto i = static_cast<std::size_t>(p);
        if (m.PolyC.at(i).DELETE != 0) continue;
        PolyData& poly = m.Poly.at(i);
        const auto region = leadingI2(poly.REGION.str());
        const auto comp = leadingI2(poly.COMP.str());
        if (!region || !comp) continue;
        const RegCompRec* rec = findRegComp(m.Ref, *region, *comp, poly.COMPL.str());
        if (!rec) continue;
        poly.PSYU = rec->PSYU;
        poly.PSYUBLOCK = rec->Block;
        poly.FIZ = rec->FIZ;
        ++filled;
    }
    return filled;
}

}  // namespace arborex
