#pragma once
// One record of TIPSYin.dat (200 fixed columns), read and checked as TIPSY checks it.

#include <optional>
#include <string>
#include <vector>

#include "growth/growth_model.hpp"
#include "standin/species_codes.hpp"

namespace arborex::btipsy {

// A line of the error report: "ERROR:" rejects the polygon, "WARNING" only informs.
struct Message {
    std::string kind;
    int record = 0;   // line of TIPSYin.dat, from 1
    int polygon = 0;  // as the input numbers it, 0 when it has none
    std::string text;
};

struct Fertilization {
    int startAge = 0;       // years from establishment
    char kind = 'P';        // "P" percent of volume, "V" m3/ha of volume, "H" percent of height
    float increase = 0.0f;  // in the unit of the kind
};

struct ManagedStand {
    int polygon = 0;
    growth::StandInputs inputs;
    float geneticGain = 0.0f;      // share of volume gained from improved stock, by species percent
    std::optional<int> thinStems;  // commercial thin: residual stems/ha
    std::optional<float> thinHeight;  // and the height at which it is made
    std::optional<Fertilization> fertilization;
};

struct RecordResult {
    std::optional<ManagedStand> stand;  // absent when rejected
    std::vector<Message> messages;
};

// `tipsySpecies` maps the model's species codes back to the table's; `vdypSpecies` says which
// are deciduous (either may be an empty table).
RecordResult readRecord(const std::string& line, int recordNumber,
                        const standin::SpeciesTable& tipsySpecies,
                        const standin::SpeciesTable& vdypSpecies);

}  // namespace arborex::btipsy
