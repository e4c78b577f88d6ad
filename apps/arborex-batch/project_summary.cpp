#include "project_summary.hpp"

#include <algorithm>
#include <array>
#include <ostream>
#include <type_traits>
#include <vector>

#include "base/display_format.hpp"
#include "json_writer.hpp"

namespace arborex::batch {

namespace {

// A date field: shown both as its day count and as a date.
struct DateField {
    double days;
};

// The summary's fields, in the order both forms show them. `visit` is called with each
// field's name and value: a trimmed std::string, an integer, a float, a double, a DateField,
// or a std::array of numbers.
template <typename Visit>
void visitHeader(const ProjectHeader& h, Visit&& visit) {
    visit("FileStamp", h.FileStamp.str());
    visit("Licence", h.Licence.str());
    visit("District", h.District.str());
    visit("Company", h.Company.str());
    visit("User", h.User.str());
    visit("Scenario", h.Scenario.str());
    visit("VDYPVersion", h.VDYPVersion.str());
    visit("TIPSYVersion", h.TIPSYVersion.str());
    visit("StartDate", DateField{h.StartDate});
    visit("LastDate", DateField{h.LastDate});
    visit("FileVersion", h.FileVersion);
}

template <typename Visit>
void visitSettings(const ProjectSettings& s, Visit&& visit) {
    visit("REGENDELAY", s.REGENDELAY);
    visit("PCNETDOWN", s.PCNETDOWN);
    visit("PLANHORZ", s.PLANHORZ);
    visit("MINVOL", s.MINVOL);
    visit("MINDIA", s.MINDIA);
    visit("MINAGE", s.MINAGE);
    visit("OAF1", s.OAF1);
    visit("OAF2", s.OAF2);
    visit("PCperc", s.PCperc);
    visit("PCnext", s.PCnext);
    visit("PCADJUSTFACT", s.PCADJUSTFACT);
    visit("PCADJUSTHARVAGE", s.PCADJUSTHARVAGE);
    visit("SPLIT", s.SPLIT);
    visit("VDYPPSYUB", s.VDYPPSYUB);
    visit("TIPSYSITE", s.TIPSYSITE);
    visit("TIPSYHEIGHT", s.TIPSYHEIGHT);
    visit("NETMAI", s.NETMAI);
    visit("USERLEVEL", s.USERLEVEL);
    visit("YIELDMODE", s.YIELDMODE);
    visit("YieldMaxAge", s.YieldMaxAge);
    visit("YieldMinAge", s.YieldMinAge);
    visit("YieldIncAge", s.YieldIncAge);
    visit("YieldRows", s.YieldRows);
    visit("YIELDINC", s.YIELDINC);
    visit("OldColors", s.OldColors);
    visit("ALTWBS", s.ALTWBS);
    visit("COLORS", s.COLORS);
}

template <typename Visit>
void visitCalculation(const CalcState& c, Visit&& visit) {
    visit("BlockLast", c.BlockLast);
    visit("RoadLast", c.RoadLast);
    visit("CutCount", c.CutCount);
    visit("CalcHorizon", c.CalcHorizon);
    visit("NetArea", c.NetArea);
    visit("SortMethod", c.inputs.SortMethod);
}

template <typename Visit>
void visitPolygon(const Model& m, int p, Visit&& visit) {
    const PolyData& poly = m.Poly.at(static_cast<std::size_t>(p));
    const PolyCalc& calc = m.PolyC.at(static_cast<std::size_t>(p));
    visit("index", p);
    visit("NAME", poly.NAME.str());
    visit("AREA", poly.AREA);
    visit("AGE", poly.AGE);
    visit("MGNT", poly.MGNT);
    visit("HAR", poly.HAR);
    visit("YIELDSTATE", poly.YIELDSTATE);
    visit("DELETE", calc.DELETE);
    visit("EXCLUDE", calc.EXCLUDE);
    visit("VDYPRows", volumeRows(m.VYield, p));
    visit("TIPSYRows", volumeRows(m.TYield, p));
}

template <typename T>
struct IsArray : std::false_type {};
template <typename T, std::size_t N>
struct IsArray<std::array<T, N>> : std::true_type {};

// A value as the text form shows it: numbers as they read back, arrays joined by ", ".
template <typename T>
std::string shownText(const T& value) {
    if constexpr (std::is_same_v<T, std::string>) {
        return latin1ToUtf8(value);
    } else if constexpr (std::is_same_v<T, DateField>) {
        return roundTripText(value.days) + " (" + dateText(value.days) + ")";
    } else if constexpr (IsArray<T>::value) {
        std::string text;
        for (const auto& element : value) text += (text.empty() ? "" : ", ") + shownText(element);
        return text;
    } else if constexpr (std::is_floating_point_v<T>) {
        return roundTripText(value);
    } else {
        return std::to_string(value);
    }
}

// Writes one field into the open JSON object.
struct JsonField {
    JsonWriter& json;
    template <typename T>
    void operator()(std::string_view name, const T& value) const {
        if constexpr (std::is_same_v<T, DateField>) {
            json.key(name);
            json.beginObject(Layout::Inline);
            json.member("days", value.days);
            json.member("date", dateText(value.days));
            json.endObject();
        } else if constexpr (IsArray<T>::value) {
            json.arrayMember(name, value);
        } else {
            json.member(name, value);
        }
    }
};

// Collects "Key: value" lines, then writes them with the values in one column.
class AlignedLines {
public:
    template <typename T>
    void operator()(std::string_view name, const T& value) {
        lines_.push_back({std::string(name), shownText(value)});
    }
    void write(std::ostream& out, const std::string& indent) const {
        std::size_t width = 0;
        for (const auto& line : lines_) width = std::max(width, line.first.size());
        for (const auto& line : lines_)
            out << indent << line.first << ':' << std::string(width - line.first.size() + 1, ' ')
                << line.second << '\n';
    }

private:
    std::vector<std::pair<std::string, std::string>> lines_;
};

void writePolygonTable(const Model& m, std::ostream& out) {
    struct Column {
        const char* title;
        std::size_t width;
        bool right;
    };
    static constexpr std::array<Column, 11> kColumns = {{{"index", 5, true},
                                                         {"NAME", 12, false},
                                                         {"AREA", 9, true},
                                                         {"AGE", 5, true},
                                                         {"MGNT", 6, false},
                                                         {"HAR", 10, false},
                                                         {"YIELDSTATE", 10, false},
                                                         {"DELETE", 6, true},
                                                         {"EXCLUDE", 7, true},
                                                         {"VDYPRows", 8, true},
                                                         {"TIPSYRows", 9, true}}};
    auto writeRow = [&](const std::vector<std::string>& cells) {
        std::string line = " ";
        for (std::size_t i = 0; i < kColumns.size(); ++i)
            line += " " + padded(cells[i], kColumns[i].width, kColumns[i].right);
        while (!line.empty() && line.back() == ' ') line.pop_back();
        out << line << '\n';
    };
    std::vector<std::string> titles;
    for (const Column& column : kColumns) titles.push_back(column.title);
    writeRow(titles);
    for (int p = 0; p <= m.LastPoly; ++p) {
        std::vector<std::string> cells;
        visitPolygon(m, p, [&](std::string_view, const auto& value) {
            using T = std::decay_t<decltype(value)>;
            // The name stays in the project's bytes until padded.
            if constexpr (std::is_same_v<T, std::string>)
                cells.push_back(value);
            else
                cells.push_back(shownText(value));
        });
        writeRow(cells);
    }
}

}  // namespace

int volumeRows(const YieldGrid<YieldRow>& curve, int p) {
    if (p < 0 || p >= curve.polygonCount()) return 0;
    const YieldRow* rows = curve.rowsOf(p);
    int count = 0;
    for (int r = 0; r < curve.rowCount(); ++r)
        if (rows[r].Vol != 0) ++count;
    return count;
}

std::string dateText(double dayCount) {
    return formatDate(dayCount, "yyyy-mm-dd hh:nn:ss");
}

std::string latin1ToUtf8(std::string_view latin1Text) {
    std::string utf8;
    utf8.reserve(latin1Text.size());
    for (char c : latin1Text) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80) {
            utf8 += c;
        } else {
            utf8 += static_cast<char>(0xc0 | (byte >> 6));
            utf8 += static_cast<char>(0x80 | (byte & 0x3f));
        }
    }
    return utf8;
}

std::string padded(const std::string& latin1Text, std::size_t width, bool right) {
    const std::string fill(latin1Text.size() < width ? width - latin1Text.size() : 0, ' ');
    const std::string shown = latin1ToUtf8(latin1Text);
    return right ? fill + shown : shown + fill;
}

void writeProjectText(const Model& m, std::ostream& out) {
    out << "Project: " << m.Files[FileProject] << "\n\nHeader\n";
    AlignedLines header;
    visitHeader(m.Header, header);
    header.write(out, "  ");

    out << "\nSettings\n";
    AlignedLines settings;
    visitSettings(m.Settings, settings);
    settings.write(out, "  ");

    out << "\nPolygons: " << m.LastPoly + 1 << '\n';
    if (m.LastPoly >= 0) writePolygonTable(m, out);

    out << "\nCutOrderLast: " << m.CutOrderLast << "\n\nCalculation\n";
    AlignedLines calculation;
    visitCalculation(m.Calc, calculation);
    calculation.write(out, "  ");
}

void writeProjectJson(const Model& m, std::ostream& out) {
    JsonWriter json(out);
    const JsonField field{json};
    json.beginObject();

    json.key("header");
    json.beginObject();
    visitHeader(m.Header, field);
    json.endObject();

    json.key("settings");
    json.beginObject();
    visitSettings(m.Settings, field);
    json.endObject();

    json.member("polygons", m.LastPoly + 1);
    json.key("polygonList");
    json.beginArray();
    for (int p = 0; p <= m.LastPoly; ++p) {
        json.beginObject(Layout::Inline);
        visitPolygon(m, p, field);
        json.endObject();
    }
    json.endArray();

    json.member("CutOrderLast", m.CutOrderLast);
    json.key("calculation");
    json.beginObject();
    visitCalculation(m.Calc, field);
    json.endObject();

    json.endObject();
    json.finish();
}

}  // namespace arborex::batch
