#pragma once
// The pieces every control file shares, for the writers of graph_files.hpp: a builder of CR LF
// lines and tab-separated rows, the settings common to all graphs and to the yearly ones.

#include <string>
#include <string_view>
#include <vector>

#include "model/model.hpp"

namespace arborex::graphtext {

class ControlText {
public:
    void line(std::string_view text) {
        text_ += text;
        text_ += "\r\n";
    }
    // A table row: its head (a row name or an x label), then one cell per series.
    void row(std::string_view head, const std::vector<std::string>& cells) {
        text_ += head;
        for (const std::string& cell : cells) {
            text_ += '\t';
            text_ += cell;
        }
        text_ += "\r\n";
    }
    std::string& text() { return text_; }

private:
    std::string text_;
};

// GraphHeader, then "*graph=1,Sample 1", the graph's type and its first title.
void openGraph(ControlText& t, const Model& m, double now, std::string_view type,
               std::string_view title1);
// Title2 (licence and scenario), the title positions and the empty x unit.
void commonLines(ControlText& t, const Model& m);
// What a graph over the years adds: the x title, stacked series and the grid.
void yearlyLines(ControlText& t);
// The y title and unit and the legend's title.
void axisLines(ControlText& t, std::string_view yLabel, std::string_view yUnit,
               std::string_view legendTitle);
// The calendar year of a day count.
int calendarYearOf(double now);

}  // namespace arborex::graphtext
