#include "report/graph_control_reader.hpp"

#include <fstream>
#include <sstream>

#include "base/errors.hpp"
#include "base/number_text.hpp"
#include "base/text.hpp"

namespace arborex {

namespace {

constexpr double kGap = std::numeric_limits<double>::quiet_NaN();

std::string findSetting(const std::vector<ControlSetting>& settings, std::string_view key) {
    for (auto it = settings.rbegin(); it != settings.rend(); ++it)
        if (equalsNoCase(it->first, key)) return it->second;
    return {};
}

std::vector<std::string_view> splitTabs(std::string_view line) {
    std::vector<std::string_view> cells;
    std::size_t from = 0;
    while (true) {
        const std::size_t tab = line.find('\t', from);
        cells.push_back(line.substr(from, tab == std::string_view::npos ? tab : tab - from));
        if (tab == std::string_view::npos) return cells;
        from = tab + 1;
    }
}

// A small whole number of a head row; 0 for anything else.
int headNumber(std::string_view cell) {
    const std::optional<double> number = strictNumber(cell);
    if (!number || !(*number >= -1e6 && *number <= 1e6)) return 0;
    return static_cast<int>(*number);
}

class Reader {
public:
    GraphControl read(std::string_view text) {
        int lineNumber = 0;
        std::size_t from = 0;
        while (from < text.size()) {
            std::size_t end = text.find('\n', from);
            if (end == std::string_view::npos) end = text.size();
            std::string_view line = text.substr(from, end - from);
            if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
            from = end + 1;
            statement(line, ++lineNumber);
        }
        for (ControlGraph& g : result_.graphs) finish(g);
        return std::move(result_);
    }

private:
    enum class Part { Header, Settings, Table, Ended };

    void statement(std::string_view line, int number) {
        const std::string trimmed = trim(line);
        if (trimmed.empty()) return;
        if (trimmed.front() == '*' && part_ != Part::Table) {
            star(trimmed, number);
            return;
        }
        if (part_ == Part::Table) {
            if (equalsNoCase(trimmed, "*endof")) {
                part_ = Part::Ended;
                return;
            }
            if (trimmed.rfind("*graph", 0) == 0) {
                star(trimmed, number);
                return;
            }
            tableRow(line);
            return;
        }
        const std::size_t equals = trimmed.find('=');
        if (equals == std::string::npos || part_ == Part::Ended) {
            unknown(trimmed, number);
            return;
        }
        ControlSetting setting{trim(trimmed.substr(0, equals)), trim(trimmed.substr(equals + 1))};
        if (part_ == Part::Header)
            result_.header.push_back(std::move(setting));
        else
            result_.graphs.back().settings.push_back(std::move(setting));
    }

    // "*graph=...", "*table", "*endof" outside a table.
    void star(const std::string& text, int number) {
        const std::string word = toLower(trim(text.substr(0, text.find('='))));
        if (word == "*graph") {
            ControlGraph graph;
            const std::size_t equals = text.find('=');
            if (equals != std::string::npos) graph.name = trim(text.substr(equals + 1));
            result_.graphs.push_back(std::move(graph));
            part_ = Part::Settings;
        } else if (word == "*table" && (part_ == Part::Settings)) {
            part_ = Part::Table;
        } else if (word == "*endof" && part_ != Part::Header) {
            part_ = Part::Ended;
        } else {
            unknown(text, number);
        }
    }

    void tableRow(std::string_view line) {
        ControlGraph& g = result_.graphs.back();
        const std::vector<std::string_view> cells = splitTabs(line);
        const std::string head = trim(cells.front());
        const std::size_t given = cells.size() - 1;
        if (equalsNoCase(head, "Title")) {
            if (g.series.size() < given) g.series.resize(given);
            for (std::size_t s = 0; s < given; ++s) g.series[s].title = trim(cells[s + 1]);
            return;
        }
        const bool headRow = equalsNoCase(head, "FColor") || equalsNoCase(head, "BColor") ||
                             equalsNoCase(head, "Style") || equalsNoCase(head, "Width") ||
                             equalsNoCase(head, "Pattern");
        // A head or data row with more cells than series so far adds untitled series.
        if (g.series.size() < given) {
            ControlSeries untitled;
            untitled.values.assign(g.xLabels.size(), kGap);
            g.series.resize(given, untitled);
        }
        for (std::size_t s = 0; s < given; ++s) {
            ControlSeries& series = g.series[s];
            const std::string cell = trim(cells[s + 1]);
            if (!headRow) continue;
            if (equalsNoCase(head, "FColor")) series.fillColour = cell;
            if (equalsNoCase(head, "BColor")) series.backColour = cell;
            if (equalsNoCase(head, "Style")) series.style = headNumber(cell);
            if (equalsNoCase(head, "Width")) series.width = headNumber(cell);
            if (equalsNoCase(head, "Pattern")) series.pattern = headNumber(cell);
        }
        if (headRow) return;
        g.xLabels.push_back(std::string(cells.front()));
        for (std::size_t s = 0; s < g.series.size(); ++s) {
            const std::optional<double> value =
                s < given ? strictNumber(cells[s + 1]) : std::optional<double>{};
            g.series[s].values.resize(g.xLabels.size() - 1, kGap);
            g.series[s].values.push_back(value && std::isfinite(*value) ? *value : kGap);
        }
    }

    void unknown(const std::string& text, int number) {
        constexpr std::size_t kShown = 40;
        result_.warnings.push_back("line " + std::to_string(number) + ": unknown statement '" +
                                   text.substr(0, kShown) + (text.size() > kShown ? "...'" : "'") +
                                   " skipped");
    }

    // Known settings into their fields; every series one value per x label.
    void finish(ControlGraph& g) {
        g.type = g.setting("Type");
        g.title1 = g.setting("Title1");
        g.title2 = g.setting("Title2");
        g.xAxisLabel = g.setting("XAxisLabel");
        g.yAxisLabel = g.setting("Y1AxisLabel");
        g.yAxisUnit = g.setting("Y1AxisUnit");
        g.legendTitle = g.setting("LegendTitle");
        g.yAxisColumns = g.setting("Y1AxisCol");
        std::string yMin = g.setting("Y1Min");
        if (yMin.empty()) yMin = result_.headerSetting("Y1Min");
        if (const auto number = strictNumber(yMin); number && std::isfinite(*number))
            g.yMin = *number;
        if (const auto number = strictNumber(g.setting("Y1max")); number && std::isfinite(*number))
            g.yMax = *number;
        for (ControlSeries& s : g.series) s.values.resize(g.xLabels.size(), kGap);
    }

    GraphControl result_;
    Part part_ = Part::Header;
};

}  // namespace

std::string ControlGraph::setting(std::string_view key) const {
    return findSetting(settings, key);
}

std::string GraphControl::headerSetting(std::string_view key) const {
    return findSetting(header, key);
}

GraphControl readGraphControl(std::string_view text) {
    return Reader().read(text);
}

GraphControl readGraphControlFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) throw ArborexError(ErrFileNotFound, path);
    std::ostringstream text;
    text << file.rdbuf();
    return readGraphControl(text.str());
}

}  // namespace arborex
