#include "summary_command.hpp"

#include <algorithm>
#include <ostream>

#include "batch_args.hpp"
#include "batch_commands.hpp"
#include "batch_host.hpp"
#include "batch_project.hpp"
#include "json_writer.hpp"
#include "project_summary.hpp"
#include "report/summary_table.hpp"

namespace arborex::batch {

namespace {

constexpr const char* kForm = "summary PROJECT [--json] [--quiet] [--data DIR]";

// Names and targets read left to right; the numbers line up on the right.
bool leftAligned(std::size_t column) {
    const std::string caption = kSummaryColumns[column].caption;
    return column == 0 || caption.ends_with("Yield") || caption == "E Age" || caption == "F Age";
}

void writeSummaryText(const std::vector<SummaryRow>& rows, std::ostream& out) {
    std::array<std::size_t, kSummaryColumnCount> widths{};
    for (std::size_t c = 0; c < kSummaryColumnCount; ++c) {
        widths[c] = std::string(kSummaryColumns[c].caption).size();
        for (const SummaryRow& row : rows) widths[c] = std::max(widths[c], row.cells[c].size());
    }
    const auto line = [&](auto cellOf) {
        std::string text;
        for (std::size_t c = 0; c < kSummaryColumnCount; ++c)
            text += (c == 0 ? "" : "  ") + padded(cellOf(c), widths[c], !leftAligned(c));
        while (!text.empty() && text.back() == ' ') text.pop_back();
        out << text << '\n';
    };
    line([](std::size_t c) { return std::string(kSummaryColumns[c].caption); });
    for (const SummaryRow& row : rows) line([&row](std::size_t c) { return row.cells[c]; });
}

void writeSummaryJson(const std::vector<SummaryRow>& rows, std::ostream& out) {
    JsonWriter json(out);
    json.beginArray();
    for (const SummaryRow& row : rows) {
        json.beginObject(Layout::Inline);
        for (std::size_t c = 0; c < kSummaryColumnCount; ++c)
            json.member(kSummaryColumns[c].caption, row.cells[c]);
        json.endObject();
    }
    json.endArray();
    json.finish();
}

}  // namespace

std::string summaryUsage() {
    return "  summary PROJECT [--json] [--quiet] [--data DIR]\n"
           "      Show the summary screen's rows: per polygon the existing and future\n"
           "      management with target age, volume and MAI at that age, the partial cut\n"
           "      settings, and the total row with the averages by area last. A target in\n"
           "      [ ] is the calculated age; * marks one below the harvest criteria, < one\n"
           "      before the culmination. --json gives a list of rows, each keyed by the\n"
           "      column captions with the cells as the screen shows them.\n";
}

int runSummary(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
    const BatchOptions options = parseOptions(args, {"--json", "--quiet", "--data"});
    requireOperands(options, 1, kForm);
    const std::string& path = options.operands[0];

    BatchHost batch;
    auto m = newModel(batch, options);
    if (!loadProject(*m, batch, path, err)) return ExitFailed;
    if (!options.quiet) batch.prompt().writeNotes(err);
    const std::vector<SummaryRow> rows = ShowSummary(*m);
    if (options.json)
        writeSummaryJson(rows, out);
    else
        writeSummaryText(rows, out);
    return ExitOk;
}

}  // namespace arborex::batch
