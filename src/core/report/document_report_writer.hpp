#pragma once
// The two forms of the written report differ only in the fragments that every line is built
// from; one writer lays out headings, labelled lines and tables with either set.

#include <string>
#include <string_view>
#include <vector>

#include "report/document_report.hpp"

namespace arborex {

enum class CellAlign { Left, Right, Centre };

struct ReportCell {
    std::string text;
    CellAlign align = CellAlign::Left;
    bool bold = false;
};
using ReportRow = std::vector<ReportCell>;

struct ReportFragments {
    std::string tableStart, tableEnd, cellDefinition;
    std::string sectionFont, subsectionFont, bold, bodyFont;
    std::string fieldSeparator, labelSeparator;
    std::string inTable, cellEnd, rowEnd, lineEnd;
    std::string right, left, centre;
    std::string labelTabStop;  // lines up the values of labelled lines in a proportional font
    bool lastCellKeepsCellEnd = false;  // the text form ends a row with a tab before the line end
};

class ReportWriter {
public:
    explicit ReportWriter(ReportFormat format);

    ReportFormat format() const { return format_; }
    // Text as the form carries it: Rich Text escapes "\", "{", "}", tabs and codes above 127.
    std::string escape(std::string_view text) const;

    void sectionHeading(std::string_view text);
    void subsectionHeading(std::string_view text);
    void paragraph(std::string_view text);
    void blankLine();
    // A bold label, the label separator and a value. `valueReady` skips escaping for text
    // that is already in the form's own terms (FixSlash).
    void labelLine(std::string_view label, std::string_view value, bool valueReady = false);
    // A table whose columns end at `rightEdges` (twips, Rich Text only).
    void beginTable(const std::vector<int>& rightEdges);
    void row(const ReportRow& cells);
    // A row of bold titles.
    void titleRow(const std::vector<std::string>& titles);
    void endTable();

    // The text written since the last take(), which empties it: one section.
    std::string take();
    // The head and the tail of a whole file.
    std::string documentStart() const;
    std::string documentEnd() const;

private:
    ReportFormat format_;
    const ReportFragments& f_;
    std::size_t columns_ = 0;
    std::string out_;
};

}  // namespace arborex
