#include "calc_output.hpp"

#include <algorithm>
#include <ostream>

#include "base/display_format.hpp"
#include "base/number_text.hpp"
#include "json_writer.hpp"
#include "project_summary.hpp"
#include "report/harvest_totals.hpp"
#include "report/schedule_issues.hpp"
#include "report/schedule_table.hpp"

namespace arborex::batch {

namespace {

// The issue line as the screen would show it under the schedule of this run.
std::string issueLineOf(const CalcSession& s) {
    bool any = false;
    return issueLine(s.m, issueLimitsOf(s.screen, s.run.AreaRun), any);
}

// The last year of the schedule; -1 before any run. A refused calculation sets the horizon
// without filling its years.
int lastYear(const CalcState& calc) {
    if (calc.CalcHorizon < 1) return -1;
    return std::min(static_cast<int>(calc.CalcHorizon), calc.YearTable.upperBound());
}

void writeInputs(JsonWriter& json, const CalcScreen& screen) {
    json.key("inputs");
    json.beginObject();
    json.member("txtVolToCut", screen.txtVolToCut);
    json.member("chkArea", screen.chkArea);
    json.member("chkCalcRate", screen.chkCalcRate);
    json.member("txtPeriod", screen.txtPeriod);
    json.member("txtRelax", screen.txtRelax);
    json.member("chkCalcYears", screen.chkCalcYears);
    json.member("txtStartIn", screen.txtStartIn);
    json.member("chkConifer", screen.chkConifer);
    json.member("chkDisPC", screen.chkDisPC);
    json.arrayMember("chkCut", screen.chkCut);
    json.member("chkConAge", screen.chkConAge);
    json.member("txtAge", screen.txtAge);
    json.member("txtAgePerc", screen.txtAgePerc);
    json.member("chkConHeight", screen.chkConHeight);
    json.member("txtHeight", screen.txtHeight);
    json.member("txtHeightPerc", screen.txtHeightPerc);
    json.member("chkConNetDown", screen.chkConNetDown);
    json.member("txtNetDown", screen.txtNetDown);
    json.endObject();
}

void writeSearch(JsonWriter& json, const SearchTrace& search) {
    json.key("search");
    if (!search.opened) {
        json.null();
        return;
    }
    json.beginObject();
    json.member("lblHanzlik", search.startLine);
    json.key("lstCalcStatus");
    json.beginArray();
    for (const std::string& row : search.trials) json.value(row);
    json.endArray();
    json.member("lblStatus", search.lastStatus);
    json.endObject();
}

void writeYear(JsonWriter& json, int offset, const YearRec& y) {
    json.beginObject(Layout::Inline);
    json.member("Year", offset);
    json.member("NumPolygons", y.NumPolygons);
    json.member("BlockNames", y.BlockNames.str());
    json.member("AreaCCE", y.AreaCCE);
    json.member("AreaRoad", y.AreaRoad);
    json.member("AreaPC", y.AreaPC);
    json.member("AreaCC", y.AreaCC);
    json.member("AreaCT", y.AreaCT);
    json.member("AreaNC", y.AreaNC);
    json.member("AreaNSR", y.AreaNSR);
    json.member("VolCC", y.VolCC);
    json.member("VolPC", y.VolPC);
    json.member("VolCT", y.VolCT);
    json.member("VolRoad", y.VolRoad);
    json.member("VolConifer", y.VolConifer);
    json.member("VolDeciduous", y.VolDeciduous);
    json.member("MatureCon", y.MatureCon);
    json.member("MatureDec", y.MatureDec);
    json.member("ImmatureCon", y.ImmatureCon);
    json.member("ImmatureDec", y.ImmatureDec);
    json.member("InvVolume", y.InvVolume);
    json.member("InvArea", y.InvArea);
    json.member("InvAreaHeight", y.InvAreaHeight);
    json.member("InvAreaAge", y.InvAreaAge);
    json.arrayMember("AgeClassArea", y.AgeClassArea);
    json.endObject();
}

void writeCut(JsonWriter& json, const CutRec& c) {
    json.beginObject(Layout::Inline);
    json.member("BlockIdx", c.BlockIdx);
    json.member("YearsFromDue", c.YearsFromDue);
    json.member("CutAge", c.CutAge);
    json.member("CutDbh", c.CutDbh);
    json.member("CutVolHa", c.CutVolHa);
    json.member("CutArea", c.CutArea);
    json.member("CutAreaCCE", c.CutAreaCCE);
    json.member("CutMethod", c.CutMethod);
    json.member("StartYr", c.StartYr);
    json.member("EndYr", c.EndYr);
    json.member("CutYears", c.CutYears);
    json.member("CutVolume", c.CutVolume);
    json.member("CutConifer", c.CutConifer);
    json.member("CutPotential", c.CutPotential);
    json.endObject();
}

void writeBlock(JsonWriter& json, const Block& b) {
    json.beginObject(Layout::Inline);
    json.member("Polygon", b.Polygon);
    json.member("Status", b.Status);
    json.member("Road", b.Road);
    json.member("CutFraction", b.CutFraction);
    json.member("Curve", b.Curve);
    json.member("NextCurve", b.NextCurve);
    json.member("Area", b.Area);
    json.member("DueYear", b.DueYear);
    json.member("HarvestAge", b.HarvestAge);
    json.member("StandYear", b.StandYear);
    json.member("Method", b.Method);
    json.member("ThinVol", b.ThinVol);
    json.member("ThinYear", b.ThinYear);
    json.member("ResidualAge", b.ResidualAge);
    json.member("PrevBlock", b.PrevBlock);
    json.member("NextBlock", b.NextBlock);
    json.member("Rotation", b.Rotation);
    json.endObject();
}

void writeRoad(JsonWriter& json, const RoadRec& r) {
    json.beginObject(Layout::Inline);
    json.member("RoadBlock", r.RoadBlock);
    json.member("RoadArea", r.RoadArea);
    json.member("RoadYear", r.RoadYear);
    json.member("RoadCurve", r.RoadCurve);
    json.member("RoadCut", r.RoadCut);
    json.endObject();
}

void writeTables(JsonWriter& json, const CalcState& calc) {
    json.key("YearTable");
    json.beginArray();
    for (int y = 0; y <= lastYear(calc); ++y) writeYear(json, y, calc.YearTable[y]);
    json.endArray();
    json.key("CutList");
    json.beginArray();
    for (int c = 1; c <= calc.CutCount; ++c) writeCut(json, calc.CutList[c]);
    json.endArray();
    json.key("BlockList");
    json.beginArray();
    for (int b = 0; b <= calc.BlockLast; ++b) writeBlock(json, calc.BlockList[b]);
    json.endArray();
    json.key("RoadList");
    json.beginArray();
    for (int r = 1; r <= calc.RoadLast; ++r) writeRoad(json, calc.RoadList[r]);
    json.endArray();
}

std::string rateText(double rate, bool areaRun) {
    return areaRun ? formatNumber(rate, "#,##0.000") + " ha/yr"
                   : formatNumber(rate, "#,##0") + " m\xb3/yr";
}

// The trial list's rows below its two heading rows.
int trials(const SearchTrace& search) {
    return std::max(0, static_cast<int>(search.trials.size()) - 2);
}

// Harvest by ten-year period: volume, area and the yearly mean of the volume.
void writeDecades(const CalcSession& s, std::ostream& out) {
    const CalcState& calc = s.m.Calc;
    if (lastYear(calc) < 0) return;
    const int startYear = s.run.StartYear;
    out << latin1ToUtf8("\nYears            Volume (m\xb3)   Area (ha)   m\xb3/yr\n");
    for (int first = 0; first <= lastYear(calc); first += 10) {
        const int last = std::min(first + 9, lastYear(calc));
        const HarvestTotals totals = yearTotals(calc, first, last);
        std::string years = std::to_string(startYear + first);
        if (last > first) years += "-" + std::to_string(startYear + last);
        const double mean = totals.volume / static_cast<double>(totals.count);
        out << padded(years, 14, false) << padded(formatNumber(totals.volume, "#,##0"), 13, true)
            << padded(formatNumber(totals.area, "#,##0.0"), 12, true)
            << padded(formatNumber(mean, "#,##0"), 9, true) << '\n';
    }
}

}  // namespace

void writeCalcJson(const CalcSession& s, const CalcOutcome& outcome, std::ostream& out) {
    const CalcRun& run = s.run;
    JsonWriter json(out);
    json.beginObject();
    json.member("project", outcome.project);
    json.key("refusal");
    if (outcome.refusal)
        json.value(*outcome.refusal);
    else
        json.null();
    json.key("warnings");
    json.beginArray();
    for (const ShownBox& box : outcome.warnings) {
        json.beginObject(Layout::Inline);
        json.member("title", box.title);
        json.member("text", box.text);
        json.endObject();
    }
    json.endArray();
    writeInputs(json, s.screen);
    json.member("HanzlikRate", run.HanzlikRate);
    json.member("HanzlikRotation", run.HanzlikRotation);
    json.member("AreaRun", run.AreaRun);
    json.member("HarvestRate", run.HarvestRate);
    json.member("rateFound", !outcome.refusal && outcome.finalRuns > 0);
    json.member("StartYear", static_cast<int>(run.StartYear));
    json.member("DelayYears", static_cast<int>(run.DelayYears));
    json.member("CalcHorizon", static_cast<int>(s.m.Calc.CalcHorizon));
    json.member("NetArea", s.m.Calc.NetArea);
    writeSearch(json, outcome.search);
    json.member("issues", outcome.refusal ? std::string() : issueLineOf(s));
    writeTables(json, s.m.Calc);
    json.endObject();
    json.finish();
}

void writeCalcText(const CalcSession& s, const CalcOutcome& outcome, std::ostream& out) {
    const CalcRun& run = s.run;
    // The program's texts are Latin-1, as its files are; a terminal wants UTF-8.
    const auto line = [&out](const std::string& latin1Text) {
        out << latin1ToUtf8(latin1Text) << '\n';
    };
    line("Project: " + outcome.project);
    for (const ShownBox& box : outcome.warnings)
        line("Warning: " + box.title + ": " + oneLine(box.text));
    if (outcome.refusal) {
        line("Not calculated: " + oneLine(*outcome.refusal));
        return;
    }
    std::string how = "the rate given";
    if (outcome.search.opened)
        how = outcome.finalRuns > 0
                  ? "found by the search in " + std::to_string(trials(outcome.search)) + " trials"
                  : "the search found no rate";
    line("Harvest rate:  " + rateText(run.HarvestRate, run.AreaRun) + " (" + how + ")");
    line("Hanzlik rate:  " + rateText(run.HanzlikRate, false) + " (rotation " +
         formatNumber(run.HanzlikRotation, "0") + " years)");
    line("Horizon:       " + std::to_string(run.StartYear) + " to " +
         std::to_string(run.StartYear + s.m.Calc.CalcHorizon) + ", harvest delayed " +
         std::to_string(run.DelayYears) + " years");
    line("Issues:        " + issueLineOf(s));
    writeDecades(s, out);
}

}  // namespace arborex::batch
