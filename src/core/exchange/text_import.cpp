// The text route of the import.

#include "exchange/text_import.hpp"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "base/input_file.hpp"
#include "base/text.hpp"
#include "exchange/variable_catalogue.hpp"
#include "yield/polygon_changes.hpp"

namespace arborex {

namespace {

// A cell as the import reads it: trimmed, every double quote removed.
std::string cellText(std::string_view cell) {
    std::string text = trim(cell);
    text.erase(std::remove(text.begin(), text.end(), '"'), text.end());
    return trim(text);
}

bool contains(const std::string& text, const char* fragment) {
    return text.find(fragment) != std::string::npos;
}

// The length of the UTF-8 sequence starting at `at`, 0 when it is not well formed.
std::size_t utf8Length(std::string_view bytes, std::size_t at, unsigned& codePoint) {
    const auto lead = static_cast<unsigned char>(bytes[at]);
    std::size_t length = 0;
    if (lead >= 0xC2 && lead <= 0xDF)
        length = 2, codePoint = lead & 0x1Fu;
    else if (lead >= 0xE0 && lead <= 0xEF)
        length = 3, codePoint = lead & 0x0Fu;
    else if (lead >= 0xF0 && lead <= 0xF4)
        length = 4, codePoint = lead & 0x07u;
    else
        return 0;
    if (at + length > bytes.size()) return 0;
    for (std::size_t i = 1; i < length; ++i) {
        const auto next = static_cast<unsigned char>(bytes[at + i]);
        if ((next & 0xC0u) != 0x80u) return 0;
        codePoint = (codePoint << 6) | (next & 0x3Fu);
    }
    return length;
}

bool isUtf8(std::string_view bytes) {
    bool multibyte = false;
    for (std::size_t i = 0; i < bytes.size();) {
        if (static_cast<unsigned char>(bytes[i]) < 0x80) {
            ++i;
            continue;
        }
        unsigned codePoint = 0;
        const std::size_t length = utf8Length(bytes, i, codePoint);
        if (length == 0) return false;
        multibyte = true;
        i += length;
    }
    return multibyte;
}

struct ColumnMap {
    std::vector<int> variable;  // catalogue index per column, -1 unmatched
    int name = -1, mapsheet = -1, polygon = -1;
    std::string unknown;  // unmatched titles, one a line
};

ColumnMap mapColumns(const std::vector<std::string>& titles) {
    ColumnMap map;
    for (std::size_t i = 0; i < titles.size(); ++i) {
        const std::string title = cellText(titles[i]);
        const int index = findVariable(title);
        map.variable.push_back(index);
        if (index == kNameVariable && map.name < 0) map.name = static_cast<int>(i);
        // A column without a title is nobody's keyword: the grid's own export ends every line
        // with a tab and leaves the hidden columns untitled.
        if (index < 0 && !title.empty()) map.unknown += title + "\r\n";
    }
    if (map.name >= 0) return map;
    for (std::size_t i = 0; i < titles.size(); ++i) {
        const std::string title = toUpper(cellText(titles[i]));
        if (map.mapsheet < 0 && contains(title, "MAPSHEET"))
            map.mapsheet = static_cast<int>(i);
        else if (map.polygon < 0 && contains(title, "POLYGON"))
            map.polygon = static_cast<int>(i);
    }
    return map;
}

void importLine(Model& m, Host& host, PolygonImport& run, const ColumnMap& map,
                std::vector<std::string> cells) {
    if (cells.size() <= 1) return;
    if (cells.size() > map.variable.size()) cells.resize(map.variable.size());
    const int needed = map.name >= 0 ? map.name : std::max(map.mapsheet, map.polygon);
    if (static_cast<int>(cells.size()) <= needed) return;
    std::string name;
    if (map.name >= 0) {
        name = cellText(cells[static_cast<std::size_t>(map.name)]);
    } else {
        const std::string sheet = cellText(cells[static_cast<std::size_t>(map.mapsheet)]);
        const std::string number = cellText(cells[static_cast<std::size_t>(map.polygon)]);
        if (sheet.empty() || number.empty()) {
            ++run.counts.ImpNoName;
            return;
        }
        name = mapsheetPolygonName(sheet, number);
    }
    const int p = setPolygon(m, host.prompt, run, name);
    if (p < 0) return;
    copyToScratch(m, p);
    const auto& catalogue = SetupVars();
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const int index = map.variable[i];
        // The name was set by setPolygon; a second NAME column must not rename the polygon.
        if (index <= kNameVariable) continue;
        importCell(m, run, catalogue[static_cast<std::size_t>(index)].VarKey, cellText(cells[i]));
    }
    DoYieldsNeedToBeUpdated(m, p);
}

}  // namespace

std::string DetectDelimiter(std::string_view line) {
    for (const char* delimiter : {"\t", ",", ";", " "})
        if (line.find(delimiter) != std::string_view::npos) return delimiter;
    return {};
}

std::vector<std::string> splitLines(std::string_view text) {
    std::vector<std::string> lines;
    std::size_t start = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' && text[i] != '\n') continue;
        lines.emplace_back(text.substr(start, i - start));
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') ++i;
        start = i + 1;
    }
    if (start < text.size()) lines.emplace_back(text.substr(start));
    return lines;
}

std::vector<std::string> splitOn(std::string_view line, std::string_view delimiter) {
    std::vector<std::string> pieces;
    std::size_t start = 0;
    for (std::size_t at; (at = line.find(delimiter, start)) != std::string_view::npos;
         start = at + delimiter.size())
        pieces.emplace_back(line.substr(start, at - start));
    pieces.emplace_back(line.substr(start));
    return pieces;
}

std::string latin1FileText(std::string_view bytes) {
    if (bytes.substr(0, 3) == "\xEF\xBB\xBF") bytes.remove_prefix(3);
    if (!isUtf8(bytes)) return std::string(bytes);
    std::string text;
    for (std::size_t i = 0; i < bytes.size();) {
        unsigned codePoint = static_cast<unsigned char>(bytes[i]);
        const std::size_t length = codePoint < 0x80 ? 1 : utf8Length(bytes, i, codePoint);
        text += codePoint <= 0xFF ? static_cast<char>(codePoint) : '?';
        i += length;
    }
    return text;
}

bool readImportFile(Host& host, const std::string& path, const std::string& title,
                    std::string& text) {
    std::ifstream in;
    if (OpenInputFile(host, path, title, in) < 0) return false;
    text = latin1FileText(std::string(std::istreambuf_iterator<char>(in), {}));
    return true;
}

bool TxtToColumns(Model& m, Host& host, std::string_view TextBuffer, PolygonImport& run) {
    const std::vector<std::string> lines = splitLines(TextBuffer);
    const std::string firstKey(SetupVars()[kNameVariable].VarKey);
    auto header = std::find_if(lines.begin(), lines.end(),
                               [&](const std::string& l) { return contains(l, firstKey.c_str()); });
    if (header == lines.end())
        header = std::find_if(lines.begin(), lines.end(),
                              [](const std::string& l) { return contains(l, "POLYGON"); });
    if (header == lines.end()) {
        host.prompt.tell(kProgramTitle, "No Headerline found");
        return false;
    }
    const std::string delimiter = DetectDelimiter(*header);
    if (delimiter.empty()) {
        host.prompt.tell(kProgramTitle, "Delimiter could not be detected");
        return false;
    }
    const ColumnMap map = mapColumns(splitOn(*header, delimiter));
    if (!map.unknown.empty()) showUnknownTitles(m, host.prompt, map.unknown);
    if (map.name < 0 && (map.mapsheet < 0 || map.polygon < 0)) {
        host.prompt.tell(kProgramTitle, "No Name field exists, can't import");
        return false;
    }
    run.counts = {};
    run.messages.clear();
    for (auto line = std::next(header); line != lines.end(); ++line)
        importLine(m, host, run, map, splitOn(*line, delimiter));
    finishImport(m, host, run);
    return true;
}

}  // namespace arborex
