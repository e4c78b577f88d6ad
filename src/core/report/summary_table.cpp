#include "report/summary_table.hpp"

#include <span>

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/numeric.hpp"
#include "report/schedule_table.hpp"
#include "yield/curves.hpp"

namespace arborex {

const std::array<SummaryColumn, kSummaryColumnCount> kSummaryColumns = {{
    {"Polygon", 1440},
    {"Area (ha)", 720},
    {"Current Age", 960},
    {"E Yield", 960},
    {"E Age", 960},
    {"E Vol (m\xb3/ha)", 960},
    {"E MAI", 960},
    {"F Yield", 960},
    {"F Age", 960},
    {"F Vol (m\xb3/ha)", 960},
    {"F MAI", 960},
    {"PC %", 720},
    {"PC re-entry", 720},
}};

namespace {

constexpr std::size_t kExistingGroup = 3;
constexpr std::size_t kFutureGroup = 7;
constexpr std::size_t kPCPercent = 11;
constexpr std::size_t kPCReentry = 12;

constexpr std::array<const char*, 4> kManagementNames = {"VDYP", "TIPSY", "Non Commercial", "NSR"};

// Volume and MAI times area, summed for one management group.
struct WeightedSums {
    float volume = 0.0f;
    float mai = 0.0f;
};

// The marker of a target age against the calculated one: none when it is not earlier, "*"
// when it breaks the harvest criteria, "<" when it comes before the culmination.
const char* ageMarker(int16_t age, int16_t calculated, const HarvAgeRec& ages) {
    if (age >= calculated) return "";
    if (age < ages.ConstraintAge) return "*";
    return age < ages.MaiAge ? "<" : ">";
}

// The group of management `g` (0 existing, 1 future) from its first column on; adds the
// volume and MAI, weighted by area, to `sums`.
void fillGroup(const Model& m, int16_t p, std::size_t g, SummaryRow& row, WeightedSums& sums) {
    const PolyData& poly = m.Poly[static_cast<std::size_t>(p)];
    const int16_t management = poly.MGNT[g];
    const std::size_t c = g == 0 ? kExistingGroup : kFutureGroup;
    if (management >= 0 && management < static_cast<int16_t>(kManagementNames.size()))
        row.cells[c] = kManagementNames[static_cast<std::size_t>(management)];
    if (management != 0 && management != 1) return;

    const HarvAgeRec& ages =
        m.HarvAge[static_cast<std::size_t>(p)][static_cast<std::size_t>(management)];
    const int16_t calculated = FindMax(ages.ConstraintAge, ages.MaiAge);
    const bool ownTarget = poly.HAR[g] != -1;
    const int16_t age = ownTarget ? poly.HAR[g] : calculated;
    const float volume = FindVol(m, management, age, p);
    const float mai = findMai(m, management, age, p);
    const char* marker = ageMarker(age, calculated, ages);
    row.cells[c + 1] = ownTarget
                           ? formatNumber(static_cast<int>(age), "0") + marker
                           : "[" + formatNumber(static_cast<int>(calculated), "0") + "] " + marker;
    row.cells[c + 2] = formatNumber(volume, "0.0");
    row.cells[c + 3] = formatNumber(mai, "0.0");
    const float weightedVolume = volume * poly.AREA;
    const float weightedMai = mai * poly.AREA;
    sums.volume = sums.volume + weightedVolume;
    sums.mai = sums.mai + weightedMai;
}

// The own value, or the project's in brackets when the polygon follows it (-1).
std::string projectOrOwn(int16_t own, int16_t project) {
    if (own == -1) return "[" + formatNumber(static_cast<int>(project), "0") + "]";
    return formatNumber(static_cast<int>(own), "0");
}

void fillPartialCut(const Model& m, const PolyData& poly, SummaryRow& row) {
    if (poly.SILVI != 1) return;
    row.cells[kFutureGroup] = "PC";
    for (std::size_t c = kFutureGroup + 1; c <= kFutureGroup + 3; ++c) row.cells[c].clear();
    row.cells[kPCPercent] = projectOrOwn(poly.PCPERC, m.Settings.PCperc);
    row.cells[kPCReentry] = projectOrOwn(poly.PCNEXT, m.Settings.PCnext);
}

}  // namespace

std::vector<SummaryRow> ShowSummary(const Model& m) {
    std::vector<SummaryRow> rows;
    float area = 0.0f;
    std::array<WeightedSums, 2> sums{};
    for (int16_t p = 0; p <= m.LastPoly; ++p) {
        const auto i = static_cast<std::size_t>(p);
        if (m.PolyC[i].DELETE != 0) continue;
        const PolyData& poly = m.Poly[i];
        SummaryRow row;
        row.key = "PG" + formatNumber(static_cast<int>(p), "0");
        row.cells[0] = poly.NAME.str();
        row.cells[1] = formatNumber(poly.AREA, "0.0");
        row.cells[2] = formatNumber(static_cast<int>(poly.AGE), "0");
        area = area + poly.AREA;
        fillGroup(m, p, 0, row, sums[0]);
        fillGroup(m, p, 1, row, sums[1]);
        fillPartialCut(m, poly, row);
        rows.push_back(std::move(row));
    }

    if (area == 0.0f) throw ArborexError(ErrDivisionByZero, "the summary's total area is 0");
    SummaryRow total;
    total.key = "TOTAL";
    total.total = true;
    total.cells[0] = "TOTAL";
    total.cells[1] = formatNumber(area, "#,##0.0");
    for (std::size_t g = 0; g < 2; ++g) {
        const std::size_t c = g == 0 ? kExistingGroup : kFutureGroup;
        total.cells[c] = "Avg.";
        total.cells[c + 2] = formatNumber(quotient(sums[g].volume, area), "0.0");
        total.cells[c + 3] = formatNumber(quotient(sums[g].mai, area), "0.0");
    }
    rows.push_back(std::move(total));
    return rows;
}

std::string summaryClipboardText(const std::vector<SummaryRow>& rows, const std::string& path,
                                 double when) {
    std::vector<std::string> titles;
    for (const SummaryColumn& column : kSummaryColumns) titles.emplace_back(column.caption);
    std::vector<std::span<const std::string>> cells;
    cells.reserve(rows.size());
    for (const SummaryRow& row : rows) cells.emplace_back(row.cells);
    return listClipboardText("Summary - ", titles, cells, path, when);
}

}  // namespace arborex
