#include "btipsy/tipsy_report.hpp"

#include <cstdio>

#include "standin/standin_files.hpp"

namespace arborex::btipsy {
namespace {

constexpr int kVersionColumn = 64;
constexpr int kTableNumberColumn = 55;
constexpr int kErrorTextColumn = 43;
constexpr std::size_t kShortestMessageLine = 51;  // a reader skips lines of 50 or fewer
constexpr std::size_t kLongestMessageLine = 110;
constexpr std::size_t kContinuationColumn = 41;
const std::string kRule(37, '-');

std::string speciesList(const ManagedStand& stand) {
    std::string text;
    for (const growth::SpeciesShare& species : stand.inputs.species)
        text += species.code + " " + std::to_string(species.percent) + "  ";
    return text;
}

std::string treatments(const ManagedStand& stand, const YieldTable& table) {
    std::string text;
    if (table.thinAge)
        text += "commercial thin at " + std::to_string(*table.thinAge) + " years, " +
                standin::decimalText(table.thinShare * 100.0f, 0) + "% of the volume";
    if (stand.fertilization) {
        if (!text.empty()) text += "; ";
        const Fertilization& f = *stand.fertilization;
        text += "fertilized from " + std::to_string(f.startAge) + " years (" + f.kind + " " +
                standin::decimalText(f.increase, 0) + ")";
    }
    if (stand.geneticGain > 0.0f) {
        if (!text.empty()) text += "; ";
        text += "genetic gain " + standin::decimalText(stand.geneticGain * 100.0f, 1) + "%";
    }
    return text.empty() ? "none" : text;
}

std::string row(const TableRow& r) {
    char line[80];
    std::snprintf(
        line, sizeof line, "%6d%s %s %s %s", r.age, standin::fixedNumber(r.volume, 7, 1).c_str(),
        standin::fixedNumber(r.diameter, 7, 1).c_str(),
        standin::fixedNumber(r.height, 7, 1).c_str(), standin::fixedNumber(r.mai, 7, 2).c_str());
    return line;
}

std::string padTo(std::string line, std::size_t size) {
    if (line.size() < size) line.resize(size, ' ');
    return line;
}

// Breaks `text` at the last blank that leaves the first part no longer than `room`.
std::size_t breakAt(const std::string& text, std::size_t room) {
    if (text.size() <= room) return text.size();
    const std::size_t blank = text.rfind(' ', room);
    return blank == std::string::npos || blank == 0 ? room : blank;
}

}  // namespace

std::vector<std::string> reportTitle(const std::string& inputName) {
    std::string version = "Program: TIPSY batch stand-in (Arborex), version";
    standin::put(version, kVersionColumn, static_cast<int>(std::string(kVersion).size()), kVersion);
    return {"TIPSY stand-in (Arborex): managed stand yield tables, not TIPSY's own",
            "Input: " + inputName, version, std::string(72, '=')};
}

std::vector<std::string> tableBlock(const ManagedStand& stand, const YieldTable& table) {
    std::string title = "TABLE   : managed stand yield table of polygon";
    standin::put(title, kTableNumberColumn, 3, std::to_string(stand.polygon), false);
    const std::string leading =
        stand.inputs.species.empty() ? std::string() : stand.inputs.species.front().code;
    std::vector<std::string> lines = {
        "",
        title,
        "Species    : " + speciesList(stand),
        "SITE INDEX = " + standin::decimalText(stand.inputs.siteIndex, 1) + " m at 50 years (" +
            leading + ")",
        "Stocking   : " + std::to_string(stand.inputs.density) + " stems/ha, OAF1 " +
            standin::decimalText(stand.inputs.oaf1, 0) + "%, OAF2 " +
            standin::decimalText(stand.inputs.oaf2, 0) + "%, utilization " +
            standin::decimalText(stand.inputs.utilisation, 1) + " cm",
        "Treatments : " + treatments(stand, table),
        "   Age Volume    Diam  Height     MAI",
        "   yrs  m3/ha      cm       m m3/ha/yr",
        kRule};
    for (const TableRow& r : table.rows) lines.push_back(row(r));
    lines.push_back(kRule);
    return lines;
}

std::vector<std::string> errorTitle(const std::string& inputName) {
    return {"TIPSY stand-in (Arborex): messages of the batch run", "Input: " + inputName, "",
            "Record              Polygon         Message", std::string(72, '=')};
}

std::vector<std::string> errorLines(const Message& message) {
    std::string line = "Record " + standin::fixedNumber(message.record, 9, 0);
    standin::put(line, 28, 6, standin::fixedNumber(message.polygon, 6, 0));
    const std::string text = message.kind + " " + message.text;
    const std::size_t room = kLongestMessageLine - (kErrorTextColumn - 1);
    const std::size_t split = breakAt(text, room);
    standin::put(line, kErrorTextColumn, static_cast<int>(split), text.substr(0, split));
    std::vector<std::string> lines = {padTo(line, kShortestMessageLine)};
    if (split < text.size()) {
        const std::string rest = text.substr(split + (text[split] == ' ' ? 1 : 0));
        lines.push_back(
            padTo(std::string(kContinuationColumn - 1, ' ') + rest, kShortestMessageLine));
    }
    return lines;
}

}  // namespace arborex::btipsy
