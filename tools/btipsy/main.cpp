// btipsy: a stand-in of our own for the TIPSY batch program. It reads the batch file and input
// file Arborex writes for TIPSY and answers with TIPSY's printed report and error report, with
// curves from the small growth model of tools/growth: plausible and repeatable, not TIPSY's.
//
//   btipsy Arborex2.btp [/NO_UI]
//
// The batch file is found in the working folder in any case of its name; its slots name the
// input, report and error files (the working folder's TIPSYin.dat, TIPSYout.dat and
// TIPSYout.err when a slot is empty). The stand-in has no screens, so /NO_UI changes nothing.
// Exit status 0 when the run was made (rejected polygons are in the error report), 1 when an
// input file is missing or unreadable, 2 for a wrong command line.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include "base/text.hpp"
#include "btipsy/btp_file.hpp"
#include "btipsy/tipsy_record.hpp"
#include "btipsy/tipsy_report.hpp"
#include "btipsy/tipsy_table.hpp"
#include "standin/species_codes.hpp"
#include "standin/standin_files.hpp"

namespace {

using namespace arborex;
using namespace arborex::btipsy;

int fail(const std::string& text) {
    std::cerr << "btipsy: " << text << "\n";
    return 1;
}

std::optional<std::string> readBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (path.empty() || !in) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::string slotOr(const BatchFile& batch, Slot slot, const char* name) {
    return batch.paths[slot].empty() ? name : batch.paths[slot];
}

std::string fileName(const std::string& path) {
    return std::filesystem::path(path).filename().string();
}

// The batch file's name; nullopt for anything but one name and /NO_UI.
std::optional<std::string> batchArgument(int argc, char** argv) {
    std::optional<std::string> name;
    for (int i = 1; i < argc; ++i) {
        const std::string word = argv[i];
        if (equalsNoCase(word, "/NO_UI")) continue;
        if (name || word.empty() || word[0] == '/') return std::nullopt;
        name = word;
    }
    return name;
}

}  // namespace

int main(int argc, char** argv) {
    const auto argument = batchArgument(argc, argv);
    if (!argument) {
        std::cerr << "usage: btipsy Arborex2.btp [/NO_UI]\n";
        return 2;
    }
    const std::string& batchName = *argument;
    const auto batchBytes = readBytes(standin::findInput(batchName));
    if (!batchBytes) return fail("cannot read " + batchName);
    const auto batch = parseBatchFile(*batchBytes);
    if (!batch) return fail(batchName + " is too short for a batch file");
    const std::string inputName = slotOr(*batch, SlotInput, "TIPSYin.dat");
    const std::string outputName = slotOr(*batch, SlotOutput, "TIPSYout.dat");
    const std::string errorName = slotOr(*batch, SlotErrors, "TIPSYout.err");
    const auto records = standin::readLines(standin::findInput(inputName));
    if (!records) return fail("cannot read " + inputName);

    const standin::SpeciesTable tipsySpecies =
        standin::loadSpeciesT(standin::findReferenceFile("SPECIEST.DAT"));
    const standin::SpeciesTable vdypSpecies =
        standin::loadSpeciesV(standin::findReferenceFile("SPECIESV.DAT"));
    const TableAges ages = tableAges(*batch);

    std::vector<std::string> report = reportTitle(fileName(inputName));
    std::vector<std::string> errors = errorTitle(fileName(inputName));
    for (std::size_t i = 0; i < records->size(); ++i) {
        const std::string& line = (*records)[i];
        if (trim(line).empty()) continue;
        const int record = static_cast<int>(i + 1);
        RecordResult result = readRecord(line, record, tipsySpecies, vdypSpecies);
        if (result.stand) {
            const YieldTable table = yieldTable(*result.stand, ages, record, result.messages);
            const auto block = tableBlock(*result.stand, table);
            report.insert(report.end(), block.begin(), block.end());
        }
        for (const Message& message : result.messages) {
            const auto lines = errorLines(message);
            errors.insert(errors.end(), lines.begin(), lines.end());
        }
    }
    if (!standin::writeLines(outputName, report)) return fail("cannot write " + outputName);
    if (!standin::writeLines(errorName, errors)) return fail("cannot write " + errorName);
    return 0;
}
