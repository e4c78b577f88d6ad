#include "chart_style.hpp"

#include <array>
#include <vector>

#include "base/number_text.hpp"
#include "base/text.hpp"

namespace arborex::chart {

namespace {

// The palette that colour numbers 0-15 of the graphing program and of the screens name.
constexpr std::array<QRgb, 16> kPalette = {
    0x000000, 0x000080, 0x008000, 0x008080, 0x800000, 0x800080, 0x808000, 0xC0C0C0,
    0x808080, 0x0000FF, 0x00FF00, 0x00FFFF, 0xFF0000, 0xFF00FF, 0xFFFF00, 0xFFFFFF};

std::vector<std::string> commaFields(const std::string& statement) {
    std::vector<std::string> fields;
    std::size_t from = 0;
    for (;;) {
        const std::size_t comma = statement.find(',', from);
        fields.push_back(trim(statement.substr(from, comma - from)));
        if (comma == std::string::npos) return fields;
        from = comma + 1;
    }
}

std::optional<int> wholeNumber(const std::string& cell) {
    const std::optional<double> number = strictNumber(cell);
    if (!number || *number < -1e9 || *number > 1e9) return std::nullopt;
    return static_cast<int>(*number);
}

}  // namespace

QString latin1(const std::string& text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QColor controlColour(const std::string& cell, const QColor& fallback) {
    const std::string word = trim(cell);
    if (word.empty()) return fallback;
    if (word.front() == '#') {
        const std::optional<int> number = wholeNumber(word.substr(1));
        if (!number || *number < 0 || *number > 0xFFFFFF) return fallback;
        return QColor(*number & 0xFF, (*number >> 8) & 0xFF, (*number >> 16) & 0xFF);
    }
    if (const std::optional<int> index = wholeNumber(word)) {
        if (*index < 0 || *index >= static_cast<int>(kPalette.size())) return fallback;
        return QColor(kPalette[static_cast<std::size_t>(*index)]);
    }
    std::string name;
    for (char c : toLower(word))
        if (c != ' ') name += c;
    const QColor named = QColor::fromString(latin1(name));
    return named.isValid() ? named : fallback;
}

ControlFont controlFont(const std::string& statement, const ControlFont& fallback) {
    ControlFont result = fallback;
    if (trim(statement).empty()) return result;
    const std::vector<std::string> f = commaFields(statement);
    auto field = [&f](std::size_t i) { return i < f.size() ? f[i] : std::string(); };
    if (!field(0).empty()) result.font.setFamily(latin1(field(0)));
    if (const auto size = wholeNumber(field(1)); size && *size > 0 && *size < 200)
        result.font.setPointSize(*size);
    result.font.setBold(equalsNoCase(field(2), "B"));
    result.font.setItalic(equalsNoCase(field(3), "I"));
    result.colour = controlColour(field(4), fallback.colour);
    if (const auto angle = wholeNumber(field(7))) result.angle = *angle % 360;
    return result;
}

ControlLine controlLine(const std::string& statement) {
    const std::vector<std::string> f = commaFields(statement);
    ControlLine line;
    line.visible = wholeNumber(f[0]).value_or(0) != 0;
    line.pen = QPen(controlColour(f.size() > 1 ? f[1] : "", Qt::black));
    const int style = f.size() > 2 ? wholeNumber(f[2]).value_or(0) : 0;
    line.pen.setStyle(style == 1 ? Qt::DashLine : style == 2 ? Qt::DotLine : Qt::SolidLine);
    return line;
}

QBrush patternBrush(int pattern, const QColor& colour) {
    constexpr std::array<Qt::BrushStyle, 8> kStyles = {
        Qt::SolidPattern, Qt::NoBrush,      Qt::HorPattern,   Qt::VerPattern,
        Qt::BDiagPattern, Qt::FDiagPattern, Qt::CrossPattern, Qt::DiagCrossPattern};
    const bool known = pattern >= 0 && pattern < static_cast<int>(kStyles.size());
    return QBrush(colour, known ? kStyles[static_cast<std::size_t>(pattern)] : Qt::SolidPattern);
}

}  // namespace arborex::chart
