#include "report/document_report_writer.hpp"

#include <cstdio>
#include <utility>

namespace arborex {

namespace {

// Rich Text lines also end in CR LF in the file, so that the source reads line by line; readers
// ignore them.
const ReportFragments& rtfFragments() {
    static const ReportFragments f = [] {
        ReportFragments r;
        r.tableStart =
            "\\par \\trowd \\trgaph50\\trleft-50 \\trgaph50\\trleft-50 \\trbrdrt\\brdrs\\brdrw10 "
            "\\trbrdrl\\brdrs\\brdrw10 \\trbrdrb\\brdrs\\brdrw10 \\trbrdrr\\brdrs\\brdrw10 "
            "\\trbrdrh\\brdrs\\brdrw10 \\trbrdrv\\brdrs\\brdrw10 ";
        r.tableEnd = "\\pard \r\n";
        r.cellDefinition =
            "\\clvertalc \\clbrdrb\\brdrs\\brdrw10 \\clbrdrt\\brdrs\\brdrw10 "
            "\\clbrdrr\\brdrs\\brdrw10 \\clbrdrl\\brdrs\\brdrw10 \\cellx";
        r.sectionFont = "\\b\\fs28 ";
        r.subsectionFont = "\\b\\fs20 ";
        r.bold = "\\b\\fs16 ";
        r.bodyFont = "\\b0\\fs16 ";
        r.fieldSeparator = "\t";
        r.labelSeparator = ": \t";
        r.inTable = "\\intbl ";
        r.cellEnd = "\\cell ";
        r.rowEnd = "\\cell\\row \r\n";
        r.lineEnd = "\\par \r\n";
        r.right = "\\qr ";
        r.left = "\\ql ";
        r.centre = "\\qc ";
        r.labelTabStop = "\\tx2600 ";
        return r;
    }();
    return f;
}

const ReportFragments& textFragments() {
    static const ReportFragments f = [] {
        ReportFragments r;
        r.tableStart = "\r\n";
        r.tableEnd = "\r\n";
        r.fieldSeparator = "\t";
        r.labelSeparator = ": \t";
        r.cellEnd = "\t";
        r.rowEnd = "\r\n";
        r.lineEnd = "\r\n";
        r.lastCellKeepsCellEnd = true;
        return r;
    }();
    return f;
}

}  // namespace

ReportWriter::ReportWriter(ReportFormat format)
    : format_(format), f_(format == ReportFormat::RTF ? rtfFragments() : textFragments()) {}

std::string ReportWriter::escape(std::string_view text) const {
    if (format_ == ReportFormat::TXT) return std::string(text);
    std::string out;
    out.reserve(text.size());
    for (char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '\\' || c == '{' || c == '}') {
            out += '\\';
            out += c;
        } else if (c == '\t') {
            out += "\\tab ";
        } else if (code > 127) {
            char hex[8];
            std::snprintf(hex, sizeof hex, "\\'%02x", code);
            out += hex;
        } else {
            out += c;
        }
    }
    return out;
}

void ReportWriter::sectionHeading(std::string_view text) {
    out_ += f_.lineEnd + f_.sectionFont + escape(text) + f_.bodyFont + f_.lineEnd;
}

void ReportWriter::subsectionHeading(std::string_view text) {
    out_ += f_.lineEnd + f_.subsectionFont + escape(text) + f_.bodyFont + f_.lineEnd;
}

void ReportWriter::paragraph(std::string_view text) {
    out_ += escape(text) + f_.lineEnd;
}

void ReportWriter::blankLine() {
    out_ += f_.lineEnd;
}

void ReportWriter::labelLine(std::string_view label, std::string_view value, bool valueReady) {
    out_ += f_.labelTabStop + f_.bold + escape(label) + f_.bodyFont + f_.labelSeparator +
            (valueReady ? std::string(value) : escape(value)) + f_.lineEnd;
}

// Rich Text defines the columns once, at the table's start; the rows that follow take them.
void ReportWriter::beginTable(const std::vector<int>& rightEdges) {
    columns_ = rightEdges.size();
    out_ += f_.tableStart;
    if (format_ == ReportFormat::TXT) return;
    for (int edge : rightEdges) out_ += f_.cellDefinition + std::to_string(edge) + " ";
    out_ += "\r\n";
}

void ReportWriter::row(const ReportRow& given) {
    // A Rich Text row has a cell for every column defined, or readers shift its cells.
    ReportRow cells = given;
    if (format_ == ReportFormat::RTF && cells.size() < columns_) cells.resize(columns_);
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const ReportCell& cell = cells[i];
        const std::string& align = cell.align == CellAlign::Right    ? f_.right
                                   : cell.align == CellAlign::Centre ? f_.centre
                                                                     : f_.left;
        out_ += f_.inTable + align + (cell.bold ? f_.bold : std::string()) + escape(cell.text) +
                (cell.bold ? f_.bodyFont : std::string());
        const bool last = i + 1 == cells.size();
        if (!last || f_.lastCellKeepsCellEnd) out_ += f_.cellEnd;
    }
    out_ += f_.rowEnd;
}

void ReportWriter::titleRow(const std::vector<std::string>& titles) {
    ReportRow cells;
    for (const std::string& t : titles) cells.push_back({t, CellAlign::Centre, true});
    row(cells);
}

void ReportWriter::endTable() {
    out_ += f_.tableEnd;
}

std::string ReportWriter::take() {
    return std::exchange(out_, std::string());
}

std::string ReportWriter::documentStart() const {
    if (format_ == ReportFormat::TXT) return {};
    return "{\\rtf1\\ansi\\ansicpg1252\\deff0\\deflang1033{\\fonttbl{\\f0\\fswiss\\fcharset0 "
           "Arial;}}    \\b0\\fs16 \r\n";
}

std::string ReportWriter::documentEnd() const {
    return format_ == ReportFormat::RTF ? "}\r\n" : std::string();
}

}  // namespace arborex
