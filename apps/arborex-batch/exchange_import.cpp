#include "exchange_import.hpp"

#include <algorithm>
#include <map>
#include <memory>
#include <ostream>
#include <string_view>

#include "base/text.hpp"
#include "batch_args.hpp"
#include "exchange/database_import.hpp"
#include "exchange/field_mapping.hpp"
#include "exchange/text_import.hpp"
#include "json_writer.hpp"
#include "platform/gdal/gdal_table_reader.hpp"
#include "project_summary.hpp"

namespace arborex::batch {

namespace {

constexpr const char* kImportTitle = "Import Data File";

// The lines of a text whose every line ends in "\r\n", as the import gathers its messages.
std::vector<std::string> crlfLines(std::string_view text) {
    std::vector<std::string> lines;
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t end = std::min(text.find("\r\n", from), text.size());
        lines.emplace_back(text.substr(from, end - from));
        from = end + 2;
    }
    return lines;
}

// Each refused value's message once, with its count, the most frequent first.
std::vector<std::pair<std::string, int>> tally(const std::string& messages) {
    std::map<std::string, int> counts;
    for (const std::string& line : crlfLines(messages))
        if (!line.empty()) ++counts[line];
    std::vector<std::pair<std::string, int>> sorted(counts.begin(), counts.end());
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
    return sorted;
}

// The table --table names, among the display names of the file's tables; -1 when none is.
int namedTable(const std::vector<std::string>& names, const std::string& wanted) {
    const std::string name = tableDisplayName(latin1FileText(wanted));
    for (std::size_t i = 0; i < names.size(); ++i)
        if (equalsNoCase(names[i], name)) return static_cast<int>(i);
    return -1;
}

std::string listed(const std::vector<std::string>& names) {
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : ", ") + name;
    return text;
}

// The matching as the database screen lists it, the name columns first.
void describeMatch(const ColumnMatch& match, ImportReport& report) {
    const auto field = [&](int16_t column) {
        return match.fields.at(static_cast<std::size_t>(column));
    };
    std::vector<std::string> named;
    for (const auto& [column, key] :
         {std::pair{match.MapColumn, kMapToMapsheet}, std::pair{match.PolyColumn, kMapToPolygon},
          std::pair{match.StandColumn, kMapToMapstand}})
        if (column >= 0) {
            report.matched.emplace_back(field(column), key);
            named.push_back(field(column));
        }
    for (const ColumnRow& row : columnRows(match, false))
        if (row.variable >= 0 && row.field >= 0) report.matched.emplace_back(row.file, row.arborex);
    for (const std::string& unmatched : match.UnmatchedFields)
        if (std::find(named.begin(), named.end(), unmatched) == named.end())
            report.unmatched.push_back(unmatched);
}

// The records of a table whose fields hold the values asked (an inventory's primary layers,
// say); the others are passed over as if the table did not hold them.
class RecordFilter final : public TableReader {
public:
    RecordFilter(TableReader& reader, const std::vector<std::pair<std::string, std::string>>& where)
        : reader_(reader), where_(where) {}
    std::vector<std::string> tables(const std::string& path) override {
        return reader_.tables(path);
    }
    std::vector<std::string> fields(const std::string& path, const std::string& table) override {
        return reader_.fields(path, table);
    }
    void readRecords(const std::string& path, const std::string& table,
                     const std::function<bool(const Record&, double)>& each) override {
        std::vector<std::pair<std::size_t, std::string>> tests;
        const std::vector<std::string> names = reader_.fields(path, table);
        for (const auto& [field, value] : where_)
            for (std::size_t i = 0; i < names.size(); ++i)
                if (equalsNoCase(trim(names[i]), field)) tests.emplace_back(i, value);
        reader_.readRecords(path, table, [&](const Record& record, double done) {
            for (const auto& [i, value] : tests)
                if (trim(i < record.size() ? record[i].value_or("") : "") != value) return true;
            return each(record, done);
        });
    }

private:
    TableReader& reader_;
    const std::vector<std::pair<std::string, std::string>>& where_;
};

bool hasField(const ColumnMatch& match, const std::string& field) {
    return std::any_of(match.fields.begin(), match.fields.end(),
                       [&](const std::string& f) { return equalsNoCase(trim(f), field); });
}

// A member holding an array of two-member objects, one a line.
template <typename Second>
void writePairs(JsonWriter& json, const char* name,
                const std::vector<std::pair<std::string, Second>>& pairs, const char* first,
                const char* second) {
    json.key(name);
    json.beginArray();
    for (const auto& [a, b] : pairs) {
        json.beginObject(Layout::Inline);
        json.member(first, a);
        json.member(second, b);
        json.endObject();
    }
    json.endArray();
}

}  // namespace

std::vector<std::string> importNotes(const BatchPrompt& prompt, std::size_t from,
                                     const std::string& messages) {
    std::vector<std::string> notes;
    for (std::size_t i = from; i < prompt.shown().size(); ++i) {
        const ShownBox& box = prompt.shown()[i];
        // The refused values come in one box at the end, or in a box after each record.
        const bool gathered = box.title == kProgramTitle && !box.text.empty() &&
                              messages.find(box.text) != std::string::npos;
        if (box.title == kImportCompleteTitle || gathered) continue;
        notes.push_back(box.title == kProgramTitle ? oneLine(box.text)
                                                   : oneLine(box.title) + ": " + oneLine(box.text));
    }
    return notes;
}

void importText(Model& m, BatchHost& batch, const ImportRequest& request, PolygonImport& run,
                ImportReport& report) {
    report.route = "text";
    std::string text;
    const std::size_t before = batch.prompt().shown().size();
    if (!readImportFile(batch.host(), request.file, kImportTitle, text)) {
        report.refusal = batch.prompt().lastMessage();
        return;
    }
    if (TxtToColumns(m, batch.host(), text, run)) {
        report.messages = run.messages;
        return;
    }
    const auto notes = importNotes(batch.prompt(), before, report.messages);
    report.refusal = notes.empty() ? "nothing imported" : notes.back();
}

void importDatabase(Model& m, BatchHost& batch, const ImportRequest& request, PolygonImport& run,
                    ImportReport& report) {
    report.route = "database";
    if (const std::string problem = dbfNameProblem(request.file); !problem.empty()) {
        report.refusal = problem;
        return;
    }
    const std::unique_ptr<TableReader> reader = makeTableReader();
    std::vector<std::string> notes;
    const TableChooser choose = [&](const std::vector<std::string>& names) {
        if (!request.table) {
            notes.push_back("the file holds " + std::to_string(names.size()) + " tables (" +
                            listed(names) + "); the first is read, --table NAME reads another");
            return 0;
        }
        const int chosen = namedTable(names, *request.table);
        if (chosen < 0)
            report.refusal = "no table \"" + latin1FileText(*request.table) +
                             "\" (tables: " + listed(names) + ")";
        return chosen;
    };
    const std::size_t before = batch.prompt().shown().size();
    DatabaseImport db;
    if (!GetColumnHeader(*reader, batch.prompt(), request.file, choose, db)) {
        if (report.refusal.empty()) report.refusal = batch.prompt().lastMessage();
        return;
    }
    report.table = tableDisplayName(db.ImportTable);
    if (request.table && namedTable({report.table}, *request.table) < 0) {
        report.refusal = "no table \"" + latin1FileText(*request.table) + "\" (the file holds \"" +
                         report.table + "\")";
        return;
    }
    const auto noField = [&](const char* flag, const std::string& field, const std::string& value) {
        return UsageError(std::string(flag) + " " + field + "=" + value + ": no field " + field +
                          " in table \"" + report.table + "\"");
    };
    FieldMapping mapping;
    for (const auto& [field, key] : request.mapping) {
        if (!hasField(db.match, field)) throw noField("--map", field, key);
        mapping.keyOfField[field] = key;
    }
    for (const auto& [field, value] : request.where)
        if (!hasField(db.match, field)) throw noField("--where", field, value);
    applyFieldMapping(db.match, mapping);
    describeMatch(db.match, report);
    const std::size_t records = batch.prompt().shown().size();
    RecordFilter kept(*reader, request.where);
    if (!ImportData(m, batch.host(), kept, db, run)) {
        const auto shown = importNotes(batch.prompt(), before, report.messages);
        report.refusal = shown.empty() ? "nothing imported" : shown.back();
        return;
    }
    // The route shows a record's refused values in a box after the record.
    for (std::size_t i = records; i < batch.prompt().shown().size(); ++i)
        if (batch.prompt().shown()[i].title == kProgramTitle)
            report.messages += batch.prompt().shown()[i].text;
    report.notes = notes;
}

void writeImportText(const Model& m, const ImportRequest& request, const PolygonImport& run,
                     const ImportReport& report, std::ostream& out) {
    out << "Import of " << request.file << " (" << report.route << " route"
        << (report.table.empty() ? "" : ", table \"" + latin1ToUtf8(report.table) + "\"") << ")\n";
    if (report.route == "database") {
        out << "Columns matched:\n";
        for (const auto& [field, key] : report.matched)
            out << "  " << latin1ToUtf8(field) << " -> " << key << '\n';
        if (!report.unmatched.empty()) {
            out << "Fields with no matching Arborex variable:";
            for (const std::string& field : report.unmatched) out << ' ' << latin1ToUtf8(field);
            out << '\n';
        }
    }
    for (const std::string& line : crlfLines(importClosingText(run.counts)))
        out << latin1ToUtf8(line) << '\n';
    const auto messages = tally(report.messages);
    if (!messages.empty()) out << "Values refused (the field kept its former value):\n";
    for (const auto& [message, count] : messages)
        out << "  " << count << " x " << latin1ToUtf8(message) << '\n';
    for (const std::string& note : report.notes) out << "note: " << latin1ToUtf8(note) << '\n';
    out << "Wrote " << request.saveTo << " (" << m.LastPoly + 1 << " polygons)\n";
}

void writeImportJson(const Model& m, const ImportRequest& request, bool created,
                     const PolygonImport& run, const ImportReport& report, std::ostream& out) {
    JsonWriter json(out);
    json.beginObject();
    json.member("project", request.project);
    json.member("file", request.file);
    json.member("route", report.route);
    if (report.route == "database") {
        json.member("table", report.table);
        json.key("columns");
        json.beginObject();
        writePairs(json, "matched", report.matched, "field", "key");
        json.arrayMember("unmatched", report.unmatched);
        json.endObject();
    }
    json.member("saved", request.saveTo);
    json.member("created", created);
    json.member("polygons", m.LastPoly + 1);
    json.key("counts");
    json.beginObject(Layout::Inline);
    json.member("ImpAdded", run.counts.ImpAdded);
    json.member("ImpUpdated", run.counts.ImpUpdated);
    json.member("ImpSkipped", run.counts.ImpSkipped);
    json.member("ImpBlank", run.counts.ImpBlank);
    json.member("ImpNoName", run.counts.ImpNoName);
    json.endObject();
    writePairs(json, "messages", tally(report.messages), "message", "count");
    json.arrayMember("notes", report.notes);
    json.endObject();
    json.finish();
}

// Every column the grid shows before "Advanced Columns" is ticked.

}  // namespace arborex::batch
