#pragma once
// The managed stand's yield table over the table ages, with its treatments.

#include <optional>
#include <vector>

#include "btipsy/btp_file.hpp"
#include "btipsy/tipsy_record.hpp"

namespace arborex::btipsy {

struct TableRow {
    int age = 0;
    float volume = 0.0f, diameter = 0.0f, height = 0.0f, mai = 0.0f;
};

struct YieldTable {
    std::vector<TableRow> rows;
    std::optional<int> thinAge;  // a commercial thin made in the table
    float thinShare = 0.0f;      // of the standing volume it took
};

// One row per table age; a commercial thin adds a row just before it and one just after it,
// both at its age, so that the volume column drops there. Notes about the treatments join
// `messages` (as warnings of that record).
YieldTable yieldTable(const ManagedStand& stand, const TableAges& ages, int record,
                      std::vector<Message>& messages);

}  // namespace arborex::btipsy
