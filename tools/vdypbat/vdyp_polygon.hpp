#pragma once
// One polygon of vdypin.dat: read by the input definition, checked as VDYP checks it, and
// projected over the age grid into the output definition's columns.

#include <map>
#include <string>
#include <vector>

#include "standin/species_codes.hpp"
#include "vdypbat/line_def.hpp"

namespace arborex::vdypbat {

// A line of ERROR.TXT.
struct Message {
    std::string kind;  // "ERROR" rejects the polygon, "WARNING" only informs
    std::string mapSheet;
    int polygon = 0;  // as the input numbers it, 0 for the run as a whole
    int record = 0;   // line of vdypin.dat, from 1
    std::string text;
};

struct AgeGrid {
    int start = 0, finish = 0, increment = 1;
};

struct RunContext {
    const LineDef& def;
    AgeGrid ages;
    const standin::SpeciesTable& species;
    std::map<std::string, float> wasteFactors;  // ALTWBS.DAT: species -> factor on its volume
};

struct PolygonResult {
    bool accepted = false;
    std::vector<std::string> lines;  // the table between its markers
    std::vector<Message> messages;
};

PolygonResult projectRecord(const RunContext& run, const std::string& record, int recordNumber);

// A message in the error definition's columns.
std::string errorLine(const LineDef& def, const Message& message);

}  // namespace arborex::vdypbat
