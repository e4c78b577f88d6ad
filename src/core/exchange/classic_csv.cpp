// The classic format's writer and reader.

#include "exchange/classic_csv.hpp"

#include <algorithm>
#include <set>

#include "base/display_format.hpp"
#include "base/split_csv.hpp"
#include "base/text.hpp"
#include "exchange/grid_export.hpp"
#include "exchange/import_item.hpp"
#include "exchange/text_import.hpp"
#include "exchange/variable_text.hpp"

namespace arborex {

namespace {

constexpr std::size_t kTitleWidth = 16;
constexpr const char* kBlankTitle = "{BLANK}";

std::vector<std::string> buildColumns() {
    std::vector<std::string> c = {
        "NAME",       "AREA",       "DELETE",     "OWNERSHIP",  "ROADAREA",   "AGE",
        "FIZ",        "SILVI",      "PCPERC",     "PCNEXT",     "REGENDELAY", "EXISTINGMGNT",
        "FUTUREMGNT", "VMINCUTAGE", "VMINCUTDBH", "VMINCUTVOL", "TMINCUTAGE", "TMINCUTDBH",
        "TMINCUTVOL", "HAR1",       "HAR2",       "VUTILIZ",    "VAGETOTAL",  "VHEIGHTTOTAL",
        "VSITEINDEX", "VSICALC",    "CLOSURE",    "STOCKING",   "PSYU",       "PSYUBLOCK",
        "REGION",     "COMP",       "COMPL",      "VAF"};
    for (int s = 1; s <= 6; ++s)
        for (const char* group : {"VS", "VP", "VX"}) c.push_back(group + std::to_string(s));
    for (const char* key :
         {"TUTILIZ", "TAGETOTAL", "DENSITY", "THINNED", "THIN", "REGEN", "OAF1", "OAF2"})
        c.emplace_back(key);
    for (int s = 1; s <= 5; ++s)
        for (const char* group : {"TS", "TP", "TH", "TI"}) c.push_back(group + std::to_string(s));
    return c;
}

std::string silviLabel(const ReferenceTables& ref, int16_t silvi) {
    static const std::array<std::string, 2> installed{"Clearcut", "Partial Cut"};
    if (silvi < 0 || silvi > 1) return {};
    const auto i = static_cast<std::size_t>(silvi);
    return ref.SilviCount >= silvi ? ref.SilviNames[i] : installed[i];
}

// One value of the classic writer. Columns shown as the grid shows them go through MakeVarStr.
std::string classicCell(const Model& m, int polygon, const std::string& title) {
    const auto p = static_cast<std::size_t>(polygon);
    const PolyData& d = m.Poly.at(p);
    const PolyCalc& c = m.PolyC.at(p);
    const PolyMgmt& g = m.PolyM.at(p);
    const std::string group = title.substr(0, 2);
    const auto slot = static_cast<std::size_t>(std::max(0, title.back() - '1'));
    if (title == "AREA") return formatNumber(d.AREA, "0.0");
    if (title == "ROADAREA") return formatNumber(g.ROADAREA, "0.0");
    if (title == "VUTILIZ") return formatNumber(d.VUTILIZ, "0.0#");
    if (title == "TUTILIZ") return formatNumber(g.TUTILIZ, "0.0#");
    if (title == "DELETE") return formatNumber(c.DELETE, "0");
    if (title == "AGE") return formatNumber(d.AGE, "0");
    if (title == "DENSITY") return formatNumber(d.DENSITY, "0");
    if (title == "THINNED") return formatNumber(d.THINNED, "0");
    if (title == "TAGETOTAL") return formatNumber(d.TAGETOTAL, "0");
    if (title == "VAGETOTAL") return formatNumber(d.VAGETOTAL, "0");
    if (title == "VHEIGHTTOTAL") return formatNumber(d.VHEIGHTTOTAL, "0");
    if (title == "PSYU") return formatNumber(d.PSYU, "0000");
    if (title == "SILVI") return silviLabel(m.Ref, d.SILVI);
    if (title == "EXISTINGMGNT") return managementWord(d.MGNT[0]);
    if (title == "FUTUREMGNT") return managementWord(d.MGNT[1]);
    if (title == "VSITEINDEX") return formatNumber(d.VSITEINDEX, "0.##");
    if (title == "VSICALC") return d.VSICALC == 0.0f ? "TBA" : formatNumber(d.VSICALC, "0.##");
    if (title == "VAF") return formatNumber(d.VAF, "0.00");
    if (title == "THIN") return formatNumber(d.THIN, "0");
    if (title == "REGEN") return d.REGEN == 1 ? "P" : "N";
    if (group == "VP" && title.size() == 3) return formatNumber(d.VP.at(slot), "0");
    if (group == "VX" && title.size() == 3) return formatNumber(c.VX.at(slot), "0");
    if (group == "TP" && title.size() == 3) return formatNumber(d.TP.at(slot), "0");
    if (group == "TH" && title.size() == 3) return formatNumber(d.TH.at(slot), "0");
    if (group == "TI" && title.size() == 3) return formatNumber(d.TI.at(slot), "0.00");
    std::string message;
    return MakeVarStr(m, title, polygon, message);
}

// The reader's titles: trimmed, at most 16 characters, "{BLANK}" for an empty one but the
// last, so that an untitled column is skipped without complaint.
std::vector<std::string> readTitles(const std::vector<std::string>& fields, int count) {
    std::vector<std::string> titles;
    for (int i = 1; i <= count; ++i) {
        std::string title = toUpper(trim(fields[static_cast<std::size_t>(i)]));
        title = trim(title.substr(0, kTitleWidth));
        if (title.empty() && i < count) title = kBlankTitle;
        titles.push_back(title);
    }
    return titles;
}

// The titles the reader takes; the rest are listed as unknown.
const std::set<std::string>& knownTitles() {
    static const std::set<std::string> known = [] {
        std::set<std::string> k(classicColumns().begin(), classicColumns().end());
        for (const char* older : {"UTILIZ", "PC", "MAPSHEET", "POLYGON", kBlankTitle})
            k.insert(older);
        return k;
    }();
    return known;
}

void importClassicField(Model& m, PolygonImport& run, const std::string& title,
                        const std::string& value) {
    if (title == "MAPSHEET" || title == "POLYGON" || title == "NAME" || title == kBlankTitle ||
        title.empty())
        return;
    if (title == "UTILIZ") {
        importCell(m, run, "VUTILIZ", value);
        importCell(m, run, "TUTILIZ", value);
    } else if (title == "PC") {
        importCell(m, run, "SILVI", "PC");
    } else if (title == "THIN") {
        const std::optional<double> v = importNumeric(value);
        importCell(m, run, "THIN", v && *v == 1.0 ? "1" : "0");
    } else if (knownTitles().count(title) != 0) {
        // The bracketed setting of the writer is no number: ImportItem takes it as -1.
        importCell(m, run, title, value);
    }
}

int titleIndex(const std::vector<std::string>& titles, const char* wanted) {
    const auto at = std::find(titles.begin(), titles.end(), wanted);
    return at == titles.end() ? -1 : static_cast<int>(at - titles.begin()) + 1;
}

}  // namespace

const std::vector<std::string>& classicColumns() {
    static const std::vector<std::string> columns = buildColumns();
    return columns;
}

std::string classicCsvText(const Model& m, std::string_view delimiter) {
    const std::vector<std::string>& columns = classicColumns();
    auto line = [&](auto cell) {
        std::string text;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            if (i > 0) text += delimiter;
            text += cell(columns[i]);
        }
        return text + "\r\n";
    };
    std::string text = line([](const std::string& title) { return title; });
    for (int p = 0; p <= m.LastPoly; ++p)
        text += line([&](const std::string& title) { return classicCell(m, p, title); });
    return text;
}

void ExportCSV(const Model& m, const std::string& path, std::string_view delimiter) {
    writeExportFile(path, classicCsvText(m, delimiter));
}

bool importOldCsvText(Model& m, Host& host, std::string_view text, char delimiter,
                      const std::string& path, PolygonImport& run) {
    const std::vector<std::string> lines = splitLines(text);
    const std::string first = lines.empty() ? std::string() : lines.front();
    std::vector<std::string> fields;
    const int titleCount = SplitCSV(first, delimiter, fields);
    if (titleCount < 3) {
        host.prompt.tell(kProgramTitle,
                         "(" + path +
                             ") is not a valid CSV file or it contains less than 3 ROW TITLES "
                             "seperated by commas.  The following is the first line of the file "
                             "that should contain the row titles.\r\n\r\n" +
                             first);
        return false;
    }
    const std::vector<std::string> titles = readTitles(fields, titleCount);
    const int nameAt = titleIndex(titles, "NAME");
    const int sheetAt = titleIndex(titles, "MAPSHEET");
    const int polygonAt = titleIndex(titles, "POLYGON");
    if (nameAt < 0 && (sheetAt < 0 || polygonAt < 0)) {
        host.prompt.tell(kProgramTitle, first + "\r\n\r\n" +
                                            (sheetAt < 0 ? "NAME & MAPSHEET title Missing"
                                                         : "NAME & POLYGON title Missing"));
        return false;
    }
    run.counts = {};
    run.messages.clear();
    std::string unknown;
    bool firstData = true;
    for (std::size_t l = 1; l < lines.size(); ++l) {
        const int count = SplitCSV(lines[l], delimiter, fields);
        if (count <= 3) continue;
        auto field = [&](int at) {
            return at >= 1 && at <= count ? fields[static_cast<std::size_t>(at)] : std::string();
        };
        std::string name = field(nameAt);
        if (nameAt < 0) {
            const std::string sheet = field(sheetAt), number = field(polygonAt);
            name = sheet.empty() || number.empty() ? std::string() : sheet + " " + number;
        }
        name = FixedString<12>(name).str();
        if (name.empty()) {
            ++run.counts.ImpNoName;
            continue;
        }
        const int last = std::min(titleCount, count);
        importRecord(m, host.prompt, run, name, [&] {
            for (int i = 1; i <= last; ++i) {
                const std::string& title = titles[static_cast<std::size_t>(i - 1)];
                if (firstData && !title.empty() && knownTitles().count(title) == 0)
                    unknown += title + "\r\n";
                importClassicField(m, run, title, fields[static_cast<std::size_t>(i)]);
            }
            firstData = false;
        });
    }
    finishImport(m, host, run, unknown);
    return true;
}

bool ImportOldCSV(Model& m, Host& host, const std::string& path, char delimiter,
                  PolygonImport& run) {
    std::string text;
    if (!readImportFile(host, path, "Import Data File", text)) return false;
    return importOldCsvText(m, host, text, delimiter, path, run);
}

}  // namespace arborex
