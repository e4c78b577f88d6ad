#include "report/calc_report.hpp"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <ostream>
#include <vector>

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/numeric.hpp"
#include "base/text.hpp"
#include "harvest/calculate.hpp"
#include "harvest/results.hpp"

namespace arborex {

namespace {

constexpr std::array<const char*, 7> kMethodLabels = {"CC ",   "PC1 ", "PC2 ", "CT ",
                                                      "Road ", "NSR ", "NC "};

// One line of the file: every cell but a row's last is followed by the delimiter.
class Line {
public:
    explicit Line(char delim) : delim_(delim) {}
    void cell(const std::string& text) {
        text_ += text;
        text_ += delim_;
    }
    void cells(std::initializer_list<std::string> texts) {
        for (const std::string& text : texts) cell(text);
    }
    void empty(int count) {
        for (int i = 0; i < count; ++i) text_ += delim_;
    }
    void last(const std::string& text) { text_ += text; }
    std::string end() { return text_ + "\r\n"; }

private:
    char delim_;
    std::string text_;
};

std::string areaUnlessNone(double area) {
    return area > 0.0 ? formatNumber(area, "0.000") : std::string();
}

int16_t heldAge(int age) {
    return static_cast<int16_t>(std::clamp(age, 0, 350));
}

// What the harvest report knows of a polygon's yield: the letter of the model, the lead
// species and the site index, by its future management.
struct YieldSource {
    std::string letter, lead;
    float siteIndex = 0.0f;
};

YieldSource yieldSource(const PolyData& poly) {
    switch (poly.MGNT[1]) {
        case 0:
            return {"V", poly.VS[0].str(), poly.VSICALC};
        case 1:
            return {"T", poly.TS[0].str(), poly.TSICALC};
        default:
            return {};
    }
}

// Volume per hectare and deciduous percent of a standing block at an age.
struct Stocking {
    float perHa = 0.0f;
    float deciduous = 0.0f;
};

Stocking stockingOf(const CalcSession& s, const Block& block, int16_t age) {
    const auto p = static_cast<std::size_t>(block.Polygon);
    if (block.Method == kMethodNC) {
        const PolyMgmt& mgmt = s.m.PolyM.at(p);
        return {mgmt.NCVOLHA, static_cast<float>(mgmt.NCDECIDUOUS)};
    }
    if (block.Method < kMethodClearcut || block.Method > kMethodNextPartial) return {};
    const CurveAge& at = curveAt(s.run.Yields, block.Curve).Age[static_cast<std::size_t>(age)];
    Stocking st;
    st.perHa = at.ConVol + at.DecVol;
    if (st.perHa > 0.0f) {
        const float scaled = 100.0f * at.DecVol;
        st.deciduous = scaled / st.perHa;
    }
    return st;
}

// Area and volume of a group, with the volume per hectare behind it.
struct Group {
    float area = 0.0f, volume = 0.0f, perHa = 0.0f;
};

Group standGroup(const CalcSession& s, const Block& block, int16_t age, float area, Line& line) {
    const Stocking st = stockingOf(s, block, age);
    const float volume = area * st.perHa;
    const YieldSource src = yieldSource(s.m.Poly.at(static_cast<std::size_t>(block.Polygon)));
    line.cells({formatNumber(static_cast<int>(age), "0"), formatNumber(area, "0.0"),
                formatNumber(volume, "0.0"), src.letter, formatNumber(st.deciduous, "#"), src.lead,
                formatNumber(src.siteIndex, "0.0")});
    return {area, volume, st.perHa};
}

// The figures of one report date, summed over its polygon rows.
struct DateSums {
    double existingArea = 0, existingVolume = 0, futureArea = 0, futureVolume = 0;
    double roadArea = 0, roadVolume = 0, totalArea = 0, totalVolume = 0;
    double harvestVolume = 0, harvestArea = 0, harvestCce = 0;
};

class RowsBuilder {
public:
    RowsBuilder(CalcSession& s, int16_t initial, char delim)
        : s_(s), o_(s.m.Report), initial_(initial != 0), delim_(delim) {}

    std::string build() {
        const CalcRun& run = s_.run;
        for (int i = 0; i <= run.IncludedLast; ++i) {
            const std::string row = polygonRow(i);
            if (o_.RptShowPoly) text_ += row;
        }
        if (o_.RptTotal || o_.RptIncAvg) totalRow();
        return text_;
    }

private:
    std::string yearCell() const {
        return initial_ ? "Existing" : formatNumber(static_cast<int>(s_.run.CurYear), "0000");
    }

    const Block* blockAt(const std::vector<int16_t>& index, int i) const {
        const int16_t b = index.at(static_cast<std::size_t>(i));
        return b == 0 ? nullptr : &s_.m.Calc.BlockList[b - 1];
    }

    std::string methodText(int p) const {
        const int16_t flag = s_.run.Report.ReportFlag.at(static_cast<std::size_t>(p));
        std::string text;
        for (int method = 1; method <= 7; ++method)
            if (flag & (1 << method)) text += kMethodLabels[static_cast<std::size_t>(method - 1)];
        return trim(text);
    }

    std::string polygonRow(int i) {
        CalcRun& run = s_.run;
        const int p = run.IncludedPoly.at(static_cast<std::size_t>(i));
        const auto pi = static_cast<std::size_t>(p);
        const PeriodAccumulators& acc = run.Report;
        const int16_t ownership = s_.m.PolyC.at(pi).OWNERSHIP;
        const Block* existing = blockAt(run.ExistingIdx, i);
        const Block* future = blockAt(run.FutureIdx, i);

        Line line(delim_);
        line.cells(
            {yearCell(), s_.m.Poly.at(pi).NAME.str(),
             ownership >= 0 && ownership <= 3
                 ? std::string(1, s_.m.Ref.OwnershipCodes[static_cast<std::size_t>(ownership)])
                 : std::string(),
             methodText(p), formatNumber(acc.ReportVolAcc.at(pi), "#"),
             areaUnlessNone(acc.ReportAreaAcc.at(pi)), areaUnlessNone(acc.ReportCceAcc.at(pi))});
        if (o_.RptIncAvg) line.empty(5);

        Group e;
        if (existing == nullptr) {
            line.empty(7);
            existingAge_ = 0;
        } else {
            // NC and NSR stands leave the age of the row before: their age is not reported.
            if (existing->Method >= kMethodClearcut && existing->Method <= kMethodNextPartial)
                existingAge_ = heldAge(run.CurYear - existing->StandYear);
            const float uncut = 1.0f - existing->CutFraction;
            e = standGroup(s_, *existing, existingAge_, uncut * existing->Area, line);
        }

        Group f;
        if (future == nullptr) {
            line.empty(7);
        } else {
            int16_t age = toI2(run.CurYear - future->StandYear);
            if (future->Method >= kMethodClearcut && future->Method <= kMethodNextPartial)
                age = heldAge(age);
            const float area = existing ? future->Area * existing->CutFraction : future->Area;
            f = standGroup(s_, *future, age, area, line);
        }

        float roadArea = 0.0f, roadVolume = 0.0f;
        const float polygonRoad = s_.m.PolyM.at(pi).ROADAREA;
        if (!(polygonRoad > 0.0f)) {
            line.empty(2);
        } else {
            roadArea = polygonRoad;
            line.cell(formatNumber(roadArea, "0.0"));
            if (existing == nullptr || existing->Road == 0) {
                line.empty(1);
            } else {
                const float uncut = 1.0f - s_.m.Calc.RoadList[existing->Road].RoadCut;
                const float perHa = uncut * e.perHa;
                roadVolume = perHa * roadArea;
                line.cell(formatNumber(roadVolume, "0.0"));
            }
        }

        const float twoAreas = e.area + f.area;
        const float totalArea = twoAreas + roadArea;
        const float twoVolumes = e.volume + f.volume;
        const float totalVolume = twoVolumes + roadVolume;
        line.cell(formatNumber(totalArea, "0.0"));
        line.last(formatNumber(totalVolume, "0.0"));

        sums_.existingArea += e.area;
        sums_.existingVolume += e.volume;
        sums_.futureArea += f.area;
        sums_.futureVolume += f.volume;
        sums_.roadArea += roadArea;
        sums_.roadVolume += roadVolume;
        sums_.totalArea += totalArea;
        sums_.totalVolume += totalVolume;
        sums_.harvestVolume += acc.ReportVolAcc.at(pi);
        sums_.harvestArea += acc.ReportAreaAcc.at(pi);
        sums_.harvestCce += acc.ReportCceAcc.at(pi);
        return line.end();
    }

    static double ratio(double numerator, double denominator) {
        if (denominator == 0.0) throw ArborexError(ErrDivisionByZero, "CreateReport");
        return numerator / denominator;
    }

    void totalRow() {
        const bool poly = o_.RptShowPoly != 0;
        const bool total = o_.RptTotal != 0;
        const PeriodAccumulators& acc = s_.run.Report;
        Line line(delim_);
        line.cells({yearCell(), "TOTAL"});
        if (poly) line.empty(2);
        if (!total) {
            // Two cells more than the harvest columns: the total row has always been shifted so.
            if (poly) line.empty(5);
        } else if (initial_) {
            line.empty(3);
        } else {
            line.cells({formatNumber(sums_.harvestVolume, "0"),
                        formatNumber(sums_.harvestArea, "0.000"),
                        formatNumber(sums_.harvestCce, "0.000")});
        }
        if (o_.RptIncAvg) {
            if (initial_ || s_.run.CurYear < s_.run.FirstCutYear) {
                line.empty(5);
            } else {
                line.cells({formatNumber(ratio(acc.ReportSum1, sums_.harvestCce), "0.0"),
                            formatNumber(ratio(acc.ReportSum2, sums_.harvestVolume), "0"),
                            formatNumber(static_cast<int>(acc.ReportMinAge), "0"),
                            formatNumber(static_cast<int>(acc.ReportMaxAge), "0"),
                            formatNumber(ratio(sums_.harvestVolume, sums_.harvestCce), "0.0")});
            }
        }
        if (poly) line.empty(1);
        if (total)
            line.cells(
                {formatNumber(sums_.existingArea, "0"), formatNumber(sums_.existingVolume, "0")});
        if (poly) line.empty(5);
        if (total)
            line.cells(
                {formatNumber(sums_.futureArea, "0"), formatNumber(sums_.futureVolume, "0")});
        if (poly) line.empty(4);
        if (total) {
            line.cells({formatNumber(sums_.roadArea, "0"), formatNumber(sums_.roadVolume, "0"),
                        formatNumber(sums_.totalArea, "0")});
            line.last(formatNumber(sums_.totalVolume, "0"));
        }
        text_ += line.end();
    }

    CalcSession& s_;
    const ReportOptions& o_;
    bool initial_;
    char delim_;
    std::string text_;
    DateSums sums_;
    int16_t existingAge_ = 0;  // carried from row to row for NC and NSR stands
};

}  // namespace

std::string reportHeadingText(const ReportOptions& o, char delim) {
    const bool poly = o.RptShowPoly != 0;
    const bool polyOrTotal = poly || o.RptTotal != 0;
    Line line(delim);
    line.cells({"Year", "Polygon Name"});
    if (poly) line.cells({"Ownership", "Harvest Method"});
    if (polyOrTotal) line.cells({"Harvested Volume", "Harvested Area", "Harvested Area CCE"});
    if (o.RptIncAvg)
        line.cells({"Area weighted harvest Age", "Volume weighted harvest Age", "Min Harvest Age",
                    "Max Harvest Age", "Volume/Hectare Harvested"});
    for (int side = 0; side < 2; ++side) {
        if (poly) line.cell("Age");
        if (polyOrTotal) line.cells({"Area", "Volume"});
        if (poly) line.cells({"Yield", "Decid %", "Lead Species", "Site Index"});
    }
    if (polyOrTotal) {
        line.cells({"Road Area", "Road Volume", "Total Area"});
        line.last("Total Volume");
    }
    return line.end();
}

std::string reportRowsText(CalcSession& s, int16_t initial, char delim) {
    BuildReportIndex(s);
    CalcRun& run = s.run;
    const int16_t year = run.CurYear;
    // The initial rows show the stands one year before the start.
    if (initial != 0) run.CurYear = toI2(year - 1);
    std::string text;
    try {
        text = RowsBuilder(s, initial, delim).build();
    } catch (...) {
        run.CurYear = year;
        throw;
    }
    run.CurYear = year;
    if (s.m.Report.RptAddRow) text += "\r\n";
    run.Report.clear(s.m.LastPoly + 1);
    return text;
}

CalcReportWriter::CalcReportWriter(CalcSession& s, std::ostream& out, char delim)
    : s_(s), out_(out), delim_(delim) {}

void CalcReportWriter::statusText(const std::string& text) {
    s_.observer.statusText(text);
}
void CalcReportWriter::searchOpened(const std::string& hanzlikLine) {
    s_.observer.searchOpened(hanzlikLine);
}
void CalcReportWriter::searchStatus(const std::string& line) {
    s_.observer.searchStatus(line);
}
void CalcReportWriter::trialRow(const std::string& row) {
    s_.observer.trialRow(row);
}
void CalcReportWriter::searchEnded() {
    s_.observer.searchEnded();
}
void CalcReportWriter::rateShown(const std::string& text) {
    s_.observer.rateShown(text);
}
void CalcReportWriter::rateDirtyChanged(bool dirty) {
    s_.observer.rateDirtyChanged(dirty);
}
void CalcReportWriter::finalRunEnded() {
    s_.observer.finalRunEnded();
}

void CalcReportWriter::reportHeading() {
    out_ << reportHeadingText(s_.m.Report, delim_);
    s_.observer.reportHeading();
}

void CalcReportWriter::CreateReport(int16_t initial) {
    out_ << reportRowsText(s_, initial, delim_);
    if (!out_) throw ArborexError(ErrPathFileAccess, "CreateReport");
    s_.observer.CreateReport(initial);
}

bool runCalcReport(CalcSession& s, const std::string& path, bool tab) {
    namespace fs = std::filesystem;
    const std::string part = path + ".part";
    std::ofstream file(part, std::ios::binary | std::ios::trunc);
    if (!file) throw ArborexError(ErrPathFileAccess, path);

    CalcReportWriter writer(s, file, tab ? '\t' : ',');
    CalcSession reporting{s.m, s.screen, s.run, s.prompt, writer};
    bool calculated = false;
    s.run.ReportEvery = s.m.Report.RptIncrement;
    try {
        calculated = cmdCalculate(reporting);
        file.close();
        if (!file) throw ArborexError(ErrPathFileAccess, path);
    } catch (...) {
        s.run.ReportEvery = 0;
        file.close();
        std::error_code ignored;
        fs::remove(part, ignored);
        throw;
    }
    s.run.ReportEvery = 0;
    std::error_code ignored;
    if (!calculated) {
        fs::remove(part, ignored);
        return false;
    }
    std::error_code failed;
    fs::rename(part, path, failed);
    if (failed) {
        fs::remove(part, ignored);
        throw ArborexError(ErrPathFileAccess, path);
    }
    return true;
}

}  // namespace arborex
