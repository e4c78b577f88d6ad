#pragma once
// The summary list: every live polygon with its existing and future management side by side,
// the target harvest age of each with a marker of how it stands against the calculated age,
// the volume and MAI at that age, and the partial cut settings; a total row with the
// area-weighted averages closes it. Every cell is text as the list shows it (Latin-1).

#include <array>
#include <string>
#include <vector>

#include "model/model.hpp"

namespace arborex {

struct SummaryColumn {
    const char* caption;
    int width;  // twips
};

inline constexpr std::size_t kSummaryColumnCount = 13;
extern const std::array<SummaryColumn, kSummaryColumnCount> kSummaryColumns;

struct SummaryRow {
    std::string key;  // "PG" and the polygon's index, or "TOTAL"
    std::array<std::string, kSummaryColumnCount> cells;
    bool total = false;
};

// One row per polygon from 0 to LastPoly that is not deleted, then the total row. A target age
// taken from the calculation shows in brackets; "*" marks a target below the harvest criteria,
// "<" one before the culmination of MAI. A polygon under partial cut shows "PC" in place of its
// future group, though the averages still count that group's volume and MAI. An area sum of 0
// throws ArborexError ErrDivisionByZero.
std::vector<SummaryRow> ShowSummary(const Model& m);

// The list as the clipboard copy gives it: "Summary - " and the time, the project's path, the
// program line, the captions, then each row's cells. `when` is a date-time day count.
std::string summaryClipboardText(const std::vector<SummaryRow>& rows, const std::string& path,
                                 double when);

}  // namespace arborex
