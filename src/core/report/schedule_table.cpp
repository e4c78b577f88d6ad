#include "report/schedule_table.hpp"

#include <algorithm>
#include <array>
#include <string>

#include "base/display_format.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "base/text.hpp"

namespace arborex {

namespace {

constexpr std::array<const char*, 7> kMethodNames = {
    "Clearcut", "1st Partial Harvest", "Subsequent PC", "Commercial Thin", "Road",
    "NSR",      "Non Commercial"};

constexpr std::array<Rgb, 7> kMethodColours = {{{0, 0, 0},
                                                {0, 192, 0},
                                                {0, 192, 192},
                                                {0, 0, 192},
                                                {192, 0, 0},
                                                {192, 192, 0},
                                                {192, 0, 192}}};

// A share as a fraction, 0 when there is nothing to share: an empty inventory or an entry of
// a stand that had no volume shows 0%, not a failure.
float share(float part, float whole) {
    return whole == 0.0f ? 0.0f : quotient(part, whole);
}

// An advanced column's area or volume, empty when nothing was cut that way.
std::string unlessZero(float value, const char* pattern) {
    return value == 0.0f ? std::string() : formatNumber(value, pattern);
}

ScheduleRow annualRow(const CalcSession& s, const IssueLimits& limits, int offset, bool advanced) {
    const YearRec& y = s.m.Calc.YearTable[offset];
    const float netArea = s.m.Calc.NetArea;
    const float area = y.AreaCC + y.AreaPC + y.AreaCT + y.AreaRoad;
    const float volume = y.VolConifer + y.VolDeciduous;
    ScheduleRow row;
    row.key = "RY" + std::to_string(offset);
    row.cells = {formatNumber(s.run.StartYear + offset, "0000"),
                 y.BlockNames.str(),
                 formatNumber(area, "#,##0.000"),
                 formatNumber(y.AreaCCE, "#,##0.000"),
                 yearIssueText(yearIssues(y, limits)),
                 formatNumber(volume, "#,##0.0"),
                 formatNumber(y.VolConifer, "#,##0"),
                 formatNumber(y.VolDeciduous, "#,##0"),
                 formatNumber(share(y.VolDeciduous, volume), "0.0%")};
    auto& c = row.cells;
    const float heightShare = share(y.InvAreaHeight, netArea);
    const float ageShare = share(y.InvAreaAge, netArea);
    if (!advanced) {
        c.insert(c.end(), {formatNumber(static_cast<int>(y.NumPolygons), "0"),
                           formatNumber(heightShare, "0%"), formatNumber(ageShare, "0%")});
        return row;
    }
    const float conifer = y.MatureCon + y.ImmatureCon;
    const float deciduous = y.MatureDec + y.ImmatureDec;
    c.insert(c.end(),
             {unlessZero(y.AreaCC, "#,##0.000"), unlessZero(y.VolCC, "#,##0"),
              unlessZero(y.AreaPC, "#,##0.000"), unlessZero(y.VolPC, "#,##0"),
              unlessZero(y.AreaCT, "#,##0.000"), unlessZero(y.VolCT, "#,##0"),
              unlessZero(y.AreaRoad, "#,##0.000"), unlessZero(y.VolRoad, "#,##0"),
              formatNumber(static_cast<int>(y.NumPolygons), "0"), formatNumber(heightShare, "0.0%"),
              formatNumber(ageShare, "0.0%"), formatNumber(y.InvVolume, "#,##0"),
              formatNumber(conifer, "#,##0"), formatNumber(deciduous, "#,##0"),
              formatNumber(share(deciduous, y.InvVolume), "0.0%")});
    return row;
}

std::string queueText(const Block& block, int16_t method) {
    if (method == kMethodThin) return "CT";
    const int way = block.Status - kFinishedStep;
    switch (way) {
        case kStatusRelaxed:
            return "Relaxed";
        case kStatusNSR:
            return "NSR";
        case kStatusLaterNC:
            return "NC";
        case kStatusQueued:
            return "Queue";
        case kStatusReentry:
            return "PC";
        case kStatusWaiting:
            return "";
        default:
            break;
    }
    if (way >= 0) return formatNumber(static_cast<int>(block.Status), "0");
    // A block that never finished: how much of it was cut.
    return formatNumber(block.CutFraction, "0%") + " complete";
}

ScheduleRow polygonRow(const Model& m, int entry, bool advanced) {
    const CutRec& cut = m.Calc.CutList[entry];
    const Block& block = m.Calc.BlockList[cut.BlockIdx];
    const auto p = static_cast<std::size_t>(block.Polygon);
    const int16_t ownership = m.PolyC.at(p).OWNERSHIP;
    const bool known = cut.CutMethod >= 1 && cut.CutMethod <= 7;
    const auto method = static_cast<std::size_t>(known ? cut.CutMethod - 1 : 0);
    ScheduleRow row;
    row.key = "RC" + std::to_string(entry);
    row.colour = known ? kMethodColours[method] : Rgb{};
    row.cells = {m.Poly.at(p).NAME.str(),
                 ownership >= 0 && ownership <= 3
                     ? std::string(1, m.Ref.OwnershipCodes[static_cast<std::size_t>(ownership)])
                     : std::string(),
                 queueText(block, cut.CutMethod),
                 formatNumber(static_cast<int>(block.Rotation), "0"),
                 known ? kMethodNames[method] : "",
                 entryIssueText(m, entry),
                 std::to_string(cut.StartYr),
                 std::to_string(cut.EndYr),
                 formatNumber(cut.CutVolume, "#,##0")};
    auto& c = row.cells;
    if (!advanced) {
        c.push_back(formatNumber(cut.CutArea, "0.0"));
        return row;
    }
    const float deciduous = cut.CutVolume - cut.CutConifer;
    const float scaled = 100.0f * cut.CutVolume;
    c.insert(c.end(), {formatNumber(cut.CutConifer, "#,##0"), formatNumber(deciduous, "#,##0"),
                       formatNumber(share(scaled, cut.CutPotential), "0"),
                       formatNumber(cut.CutArea, "0.0"), formatNumber(cut.CutAreaCCE, "0.000"),
                       formatNumber(static_cast<int>(cut.CutAge), "0"),
                       formatNumber(cut.CutDbh, "0.0"), formatNumber(cut.CutVolHa, "0.0")});
    return row;
}

std::vector<std::string> annualColumns(bool advanced) {
    std::vector<std::string> columns = {"Year",   "Block List", "Area",      "Area CCE", "Issues",
                                        "Volume", "Conifer",    "Deciduous", "Decid. %"};
    if (!advanced) {
        columns.insert(columns.end(), {"Number Polygons", "Height Cons.", "Age Cons."});
        return columns;
    }
    columns.insert(columns.end(),
                   {"Area CC", "Vol CC", "Area PC", "Vol PC", "Area CT", "Vol CT", "Area Roads",
                    "Vol Roads", "Number Polygons", "Height Cons.", "Age Cons.", "Total Vol",
                    "Conifer Vol", "Deciduous Vol", "Deciduius %"});
    return columns;
}

std::vector<std::string> polygonColumns(bool advanced) {
    std::vector<std::string> columns = {"Polygon", "Ownership", "Queue", "Rotation", "Method",
                                        "Issues",  "Start",     "End",   "Volume"};
    if (!advanced) {
        columns.push_back("Area");
        return columns;
    }
    columns.insert(columns.end(), {"Conifer", "Deciduous", "% Vol. Harvested", "Area", "Area CCE",
                                   "Age", "dbh", "vol/ha"});
    return columns;
}

}  // namespace

std::vector<std::string> scheduleColumns(ScheduleView view, bool advanced) {
    return view == ScheduleView::Annual ? annualColumns(advanced) : polygonColumns(advanced);
}

IssueLimits issueLimitsOf(const CalcScreen& screen, bool areaRun) {
    IssueLimits limits;
    limits.rate = tolerantNumber(screen.txtVolToCut);
    limits.areaRun = areaRun;
    if (screen.chkConAge) limits.agePercent = static_cast<float>(tolerantNumber(screen.txtAgePerc));
    if (screen.chkConHeight)
        limits.heightPercent = static_cast<float>(tolerantNumber(screen.txtHeightPerc));
    return limits;
}

ScheduleTable scheduleTable(CalcSession& s, ScheduleView view, bool advanced) {
    ScheduleTable table;
    const CalcState& calc = s.m.Calc;
    if (calc.CalcHorizon < 1) return table;
    if (view == ScheduleView::Annual) {
        const IssueLimits limits = issueLimitsOf(s.screen, s.run.AreaRun);
        s.run.HarvestRate = limits.rate;
        table.columns = scheduleColumns(view, advanced);
        const int last = std::min(static_cast<int>(calc.CalcHorizon), calc.YearTable.upperBound());
        for (int y = 0; y <= last; ++y) table.rows.push_back(annualRow(s, limits, y, advanced));
        return table;
    }
    table.columns = scheduleColumns(view, advanced);
    for (int c = 1; c <= calc.CutCount; ++c) {
        // The entries of blocks past the run's last are left over from a longer run.
        if (calc.CutList[c].BlockIdx > calc.BlockLast) break;
        table.rows.push_back(polygonRow(s.m, c, advanced));
    }
    return table;
}

std::string scheduleClipboardText(const ScheduleTable& table, const std::string& path,
                                  double when) {
    std::vector<std::span<const std::string>> rows;
    rows.reserve(table.rows.size());
    for (const ScheduleRow& row : table.rows) rows.emplace_back(row.cells);
    return listClipboardText("Harvest Schedule - ", table.columns, rows, path, when);
}

std::string listClipboardText(std::string_view heading, const std::vector<std::string>& titles,
                              const std::vector<std::span<const std::string>>& rows,
                              const std::string& path, double when) {
    const std::string end = "\r\n";
    std::string text = std::string(heading) + formatDate(when, "Long Time") + " on " +
                       formatDate(when, "Short Date") + end + path + end + kProgramTitle + " " +
                       kReleaseNumber + " (" + kReleaseDate + ")" + end + end;
    for (const std::string& title : titles) text += title + "\t";
    text += end;
    for (const std::span<const std::string> cells : rows) {
        for (std::size_t i = 0; i < cells.size(); ++i)
            text += (i == 0 ? cells[i] : trim(cells[i])) + "\t";
        text += end;
    }
    return text;
}

}  // namespace arborex
