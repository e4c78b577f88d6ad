#pragma once
// The harvest schedule under the calculation screen, as text: the annual view (one row a year)
// and the polygon view (one row a harvest entry), each plain or widened by "Advanced", with
// every cell formatted as the screen shows it, and the table as the clipboard receives it.

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "harvest/calc_session.hpp"
#include "report/schedule_issues.hpp"

namespace arborex {

enum class ScheduleView { Annual, Polygon };

struct Rgb {
    uint8_t red = 0, green = 0, blue = 0;
    bool operator==(const Rgb&) const = default;
};

struct ScheduleRow {
    std::string key;  // "RY" and the year offset, or "RC" and the entry
    std::vector<std::string> cells;
    Rgb colour;  // of the row's text
};

struct ScheduleTable {
    std::vector<std::string> columns;
    std::vector<ScheduleRow> rows;
};

// The column titles of a view, which an empty schedule shows too.
std::vector<std::string> scheduleColumns(ScheduleView view, bool advanced);

// The yardsticks of the issues from the screen's fields: the rate as entered and the percents
// of the ticked constraints.
IssueLimits issueLimitsOf(const CalcScreen& screen, bool areaRun);

// The schedule of the run in Model::Calc; no columns and no rows while CalcHorizon is below 1.
// The annual view stores the entered rate in HarvestRate, as filling the schedule always has.
ScheduleTable scheduleTable(CalcSession& s, ScheduleView view, bool advanced);

// The table as the clipboard copy gives it: the heading lines, the titles, then each row's cells
// trimmed, every cell followed by a tab. `when` is a date-time day count; `path` the project's.
std::string scheduleClipboardText(const ScheduleTable& table, const std::string& path, double when);

// What every list's clipboard copy holds: `heading` ("Harvest Schedule - ") with the time and
// date, the project's path, the program line, a blank line, the titles each followed by a tab,
// then per row its first cell as it is and the others trimmed, each followed by a tab. Lines
// end in CR LF.
std::string listClipboardText(std::string_view heading, const std::vector<std::string>& titles,
                              const std::vector<std::span<const std::string>>& rows,
                              const std::string& path, double when);

}  // namespace arborex
