#pragma once
// linedef.txt: the only place where the caller and the model agree on columns. The file has an
// input block (InLineDef ... EndLineDef) with the age grid as constants, an output block
// (OutLineDef ... EndLineDef) and an error block (ErrorLineDef ... ErrorLineDef).

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace arborex::vdypbat {

struct FieldDef {
    std::string name;  // as written
    std::string type;  // "Character", "Integer" or "Float"
    int column = 0;    // from 1
    int width = 0;     // negative: text left-aligned in up to -width columns, no padding
    int decimals = 0;
};

struct LineDef {
    std::vector<FieldDef> input, output, error;
    std::map<std::string, int> constants;  // upper-cased name -> value: STARTAGE, ...

    // The field of that name, compared without regard to case; nullptr when absent.
    static const FieldDef* find(const std::vector<FieldDef>& fields, std::string_view name);
    std::optional<int> constant(std::string_view name) const;
};

// Reads the definition; nullopt with `problem` set when a block is missing or a line of a
// block is not a field definition. Lines may stand in double quotes.
std::optional<LineDef> parseLineDef(const std::vector<std::string>& lines, std::string& problem);

}  // namespace arborex::vdypbat
