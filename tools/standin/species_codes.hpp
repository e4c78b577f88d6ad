#pragma once
// The species codes a growth model accepts, read from the installation's species tables.

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace arborex::standin {

struct SpeciesTable {
    bool loaded = false;
    std::map<std::string, std::string> codes;  // accepted code (upper case) -> the table's code
    std::set<std::string> deciduous;           // table codes of broadleaved species

    // The table's code for `code`, nullopt when the model does not know it. Without a table
    // any code of one or two letters is taken as it stands, upper-cased.
    std::optional<std::string> resolve(std::string_view code) const;
    bool isDeciduous(const std::string& tableCode) const { return deciduous.count(tableCode) > 0; }
};

// "SPECIESV.DAT": tab-separated code, "D" for deciduous, "N" for non-commercial, description,
// then aliases. Codes and aliases are accepted. Not loaded when the file cannot be read.
SpeciesTable loadSpeciesV(const std::string& path);
// "SPECIEST.DAT": quoted code, the model's own code, description, aliases. The model's code is
// what an input file carries; the table's own code is accepted too.
SpeciesTable loadSpeciesT(const std::string& path);

}  // namespace arborex::standin
