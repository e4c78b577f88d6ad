// vdypbat: a stand-in of our own for the VDYP batch program. It reads the files Arborex writes
// for VDYP and answers in VDYP's output and error files, with curves from the small growth
// model of tools/growth: plausible and repeatable, not VDYP's.
//
//   vdypbat -I vdypin.dat -O vdypout.dat -E ERROR.TXT [-WBS ALTWBS.DAT] -BATCHPROCESS linedef.txt
//
// Switches in any case; file names relative to the working folder, inputs found in any case.
// Exit status 0 when the run was made (rejected polygons are reported in the error file), 1
// when an input file is missing or unreadable, 2 for a wrong command line.

#include <iostream>
#include <iterator>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "base/text.hpp"
#include "standin/species_codes.hpp"
#include "standin/standin_files.hpp"
#include "vdypbat/line_def.hpp"
#include "vdypbat/vdyp_polygon.hpp"

namespace {

using namespace arborex;
using namespace arborex::vdypbat;

constexpr const char* kVersionLine = "VDYP7 stand-in (Arborex), version: stand-in 1.0";

struct Arguments {
    std::map<std::string, std::string> files;  // switch without its dash, upper case -> name
};

std::optional<Arguments> parseArguments(int argc, char** argv) {
    Arguments args;
    for (int i = 1; i < argc; ++i) {
        const std::string word = toUpper(argv[i]);
        if (word == "-I" || word == "-O" || word == "-E" || word == "-WBS" ||
            word == "-BATCHPROCESS") {
            if (i + 1 >= argc) return std::nullopt;
            args.files[word.substr(1)] = argv[++i];
        } else {
            return std::nullopt;
        }
    }
    for (const char* needed : {"I", "O", "BATCHPROCESS"})
        if (!args.files.count(needed)) return std::nullopt;
    if (!args.files.count("E")) args.files["E"] = "ERROR.TXT";
    return args;
}

int fail(const std::string& text) {
    std::cerr << "vdypbat: " << text << "\n";
    return 1;
}

// The input file of that switch, read whole; nullopt (with the reason on stderr) when missing.
std::optional<std::vector<std::string>> readInput(const std::string& name) {
    const std::string path = standin::findInput(name);
    auto lines = path.empty() ? std::nullopt : standin::readLines(path);
    if (!lines) fail("cannot read " + name);
    return lines;
}

// ALTWBS.DAT of the stand-in: "CODE factor" lines, the factor taken on that species' net volume
// (an alternative set of waste and breakage allowances); "#" starts a comment.
std::map<std::string, float> wasteFactors(const std::vector<std::string>& lines) {
    std::map<std::string, float> factors;
    for (const std::string& line : lines) {
        std::istringstream in(line.substr(0, line.find('#')));
        std::string code;
        float factor = 0.0f;
        if (in >> code >> factor && factor >= 0.0f) factors[toUpper(code)] = factor;
    }
    return factors;
}

std::optional<AgeGrid> ageGrid(const LineDef& def) {
    const auto start = def.constant("StartAge");
    const auto finish = def.constant("FinishAge");
    const auto increment = def.constant("AgeIncrement");
    if (!start || !finish || !increment || *increment <= 0 || *finish < *start || *start < 0)
        return std::nullopt;
    return AgeGrid{*start, *finish, *increment};
}

}  // namespace

int main(int argc, char** argv) {
    const auto args = parseArguments(argc, argv);
    if (!args) {
        std::cerr << "usage: vdypbat -I vdypin.dat -O vdypout.dat -E ERROR.TXT [-WBS ALTWBS.DAT] "
                     "-BATCHPROCESS linedef.txt\n";
        return 2;
    }
    const auto defLines = readInput(args->files.at("BATCHPROCESS"));
    if (!defLines) return 1;
    std::string problem;
    const auto def = parseLineDef(*defLines, problem);
    if (!def) return fail(problem);
    const auto ages = ageGrid(*def);
    if (!ages) return fail("linedef gives no usable StartAge, FinishAge and AgeIncrement");
    const auto records = readInput(args->files.at("I"));
    if (!records) return 1;

    const standin::SpeciesTable species =
        standin::loadSpeciesV(standin::findReferenceFile("SPECIESV.DAT"));
    RunContext run{*def, *ages, species, {}};
    std::vector<std::string> errors;
    if (args->files.count("WBS")) {
        const std::string& name = args->files.at("WBS");
        const std::string path = standin::findInput(name);
        const auto lines = path.empty() ? std::nullopt : standin::readLines(path);
        if (lines)
            run.wasteFactors = wasteFactors(*lines);
        else
            errors.push_back(errorLine(
                *def, {"WARNING", "", 0, 0, name + " not found: the standard volumes are used"}));
    }

    std::vector<std::string> output = {kVersionLine};
    for (std::size_t i = 0; i < records->size(); ++i) {
        const std::string& record = (*records)[i];
        if (trim(record).empty()) continue;
        PolygonResult result = projectRecord(run, record, static_cast<int>(i + 1));
        for (const Message& message : result.messages) errors.push_back(errorLine(*def, message));
        output.insert(output.end(), std::make_move_iterator(result.lines.begin()),
                      std::make_move_iterator(result.lines.end()));
    }
    if (!standin::writeLines(args->files.at("O"), output))
        return fail("cannot write " + args->files.at("O"));
    if (!standin::writeLines(args->files.at("E"), errors))
        return fail("cannot write " + args->files.at("E"));
    return 0;
}
