// Sections 3 and 4 of the written report: the calculation's assumptions and its results.
#include <algorithm>
#include <array>
#include <string>

#include "base/display_format.hpp"
#include "model/model.hpp"
#include "report/document_report_sections.hpp"

namespace arborex::report_detail {

namespace {

ReportCell number(std::string text) {
    return {std::move(text), CellAlign::Right, false};
}
ReportCell label(std::string text) {
    return {std::move(text), CellAlign::Left, false};
}

const char* sortName(int16_t method) {
    static const std::array<const char*, 10> names{
        "Unknown", "Custom",         "Default", "Oldest First", "Closest to Harvest",
        "Random",  "Youngest First", "MAI Max", "Site Index",   "Lead Species"};
    const int i = method + 3;
    return i >= 0 && i < static_cast<int>(names.size()) ? names[i] : "Unknown";
}

bool inCutOrder(const Model& m, int p) {
    for (int i = 0; i <= m.CutOrderLast && i < static_cast<int>(m.CutOrder.size()); ++i)
        if (m.CutOrder[i] == p) return true;
    return false;
}

void cutOrder(const Model& m, ReportWriter& w) {
    w.subsectionHeading(std::string("a) Initial Cut Order (") + sortName(m.Calc.inputs.SortMethod) +
                        ")");
    w.beginTable({1500, 2500, 3500, 4750, 6000});
    w.titleRow({"Polygon", "Current", "Target", "Available", "Regen"});
    w.titleRow({"", "Age", "Age", "for (yrs)", "Delay (yrs)"});
    for (int i = 0; i <= m.CutOrderLast && i < static_cast<int>(m.CutOrder.size()); ++i) {
        const int p = m.CutOrder[i];
        if (p < 0 || p > m.LastPoly) continue;
        const PolyData& poly = m.Poly[p];
        const int16_t mgnt = poly.MGNT[0];
        const bool ownDelay = m.PolyC[p].REGENDELAY != -1;
        const std::string delay = bracketed(
            formatNumber(ownDelay ? m.PolyC[p].REGENDELAY : m.Settings.REGENDELAY, "0"), !ownDelay);
        ReportRow row{label(polygonName(m, p)), number(formatNumber(poly.AGE, "0"))};
        if (mgnt == 2 || mgnt == 3) {
            row.push_back(number(mgnt == 2 ? "NC" : "NSR"));
            row.push_back(label(""));
        } else {
            const ReportAge target = targetAge(m, p, 0);
            row.push_back(number(bracketed(formatNumber(target.age, "0"), target.isDefault)));
            row.push_back(number(formatNumber(poly.AGE - target.age, "0")));
        }
        row.push_back(number(delay));
        w.row(row);
    }
    w.endTable();
}

void constraints(const Model& m, ReportWriter& w) {
    const CalcInputs& in = m.Calc.inputs;
    w.subsectionHeading("b) Harvest Constraints");
    w.labelLine("Area Netdown      ",
                (in.ConstraintBits & 1) != 0 ? formatNumber(in.SavedNetDown, "0") + "%" : "NONE");
    w.labelLine("Height Constraint ", (in.ConstraintBits & 2) != 0
                                          ? "At least " + formatNumber(in.SavedHeightPerc, "0") +
                                                "% of the net area has a stand height at least " +
                                                formatNumber(in.SavedHeight, "0") + "m tall"
                                          : "NONE");
    w.labelLine("Age Constraint    ", (in.ConstraintBits & 4) != 0
                                          ? "At least " + formatNumber(in.SavedAgePerc, "0") +
                                                "% of the net area is older than " +
                                                formatNumber(in.SavedAge, "0") + "years of age"
                                          : "NONE");
}

void parameters(const Model& m, ReportWriter& w) {
    const ProjectSettings& s = m.Settings;
    w.subsectionHeading("c) Harvest Parameters (Global)");
    w.labelLine("Minimum Harvest Age     ", formatNumber(s.MINAGE, "0") + " Years");
    w.labelLine("Minimum Harvest Diameter", formatNumber(s.MINDIA, "") + " cm");
    w.labelLine("Minimum Harvest Vol/ha  ", formatNumber(s.MINVOL, "") + " m\xb3/ha");
    w.labelLine("TIPSY OAF1              ", formatNumber(s.OAF1, "0") + "%");
    w.labelLine("TIPSY OAF2              ", formatNumber(s.OAF2, "0") + "%");
    w.labelLine("P.C. Adjustment Factor  ", formatNumber(s.PCADJUSTFACT, "0.00"));
    w.labelLine("P.C. Harvest Ages       ", s.PCADJUSTHARVAGE == 1
                                                ? "Automatic - Change to age harvested"
                                                : "Manual - Set by user");
    w.labelLine("Planning Horizon        ", formatNumber(s.PLANHORZ, "0") + " years");
}

}  // namespace

void writeAssumptions(const Model& m, ReportWriter& w) {
    w.sectionHeading("3.0 Harvest Calculation Assumptions");
    cutOrder(m, w);
    constraints(m, w);
    parameters(m, w);
}

namespace {

// Volume sums by ownership, index 4 the whole.
struct HarvestSums {
    std::array<double, 5> total{}, conifer{}, area{};
};

const char* queueName(int16_t method) {
    static const std::array<const char*, 7> names{"CC", "PC1", "Sub PC", "CT", "Road", "NSR", "NC"};
    return method >= 1 && method <= 7 ? names[method - 1] : "";
}

void harvestByPolygon(const Model& m, ReportWriter& w, HarvestSums& sums) {
    const CalcState& c = m.Calc;
    w.subsectionHeading("b) Harvest by Polygon: **");
    w.beginTable({1250, 1750, 2500, 3000, 3750, 4500, 5250, 6000, 6750, 7500, 8250});
    w.titleRow({"Polygon", "Own", "Queue", "Rot", "Harvest", "Start", "Harvest", "Target", "Actual",
                "Actual", "Total"});
    w.titleRow(
        {"", "", "", "", "Area", "Year", "Length", "Harvest", "Harvest", "Harvest", "Harvest"});
    w.titleRow({"", "", "", "", "(ha)", "", "(yr)", "Age", "Age", "(m\xb3/ha)", "(m\xb3)"});
    for (int i = 1; i <= c.CutCount && i <= c.CutList.upperBound(); ++i) {
        const CutRec& cut = c.CutList[i];
        const Block& block = c.BlockList[cut.BlockIdx];
        const int p = block.Polygon;
        const int own = std::clamp<int>(m.PolyC[p].OWNERSHIP, 0, 3);
        ReportRow row{label(polygonName(m, p)),
                      label(ownershipCode(m, p)),
                      label(queueName(cut.CutMethod)),
                      number(formatNumber(block.Rotation, "0")),
                      number(formatNumber(cut.CutArea, "#,##0.00")),
                      number(formatNumber(cut.StartYr, "0000")),
                      number(formatNumber(cut.CutYears, "0.00"))};
        const std::string age = formatNumber(cut.CutAge, "0");
        const std::string volHa = formatNumber(cut.CutVolHa, "#,##0");
        const std::string volume = formatNumber(cut.CutVolume, "#,##0");
        switch (cut.CutMethod) {
            case 1:
            case 2:
            case 3: {
                const ReportAge target = targetAge(m, p, block.Rotation == 1 ? 0 : 1);
                row.push_back(number(bracketed(formatNumber(target.age, "0"), target.isDefault)));
                row.insert(row.end(), {number(age), number(volHa), number(volume)});
                break;
            }
            case 4:
                row.insert(row.end(), {label(""), label(""), label(""), number(volume)});
                break;
            case 5:
                row.insert(row.end(), {label(""), number(age), number(volHa), number(volume)});
                break;
            case 7:
                row.insert(row.end(), {label(""), label(""), number(volHa), number(volume)});
                break;
            default:
                row.resize(11, label(""));
                break;
        }
        w.row(row);
        for (int k : {own, 4}) {
            sums.total[k] += cut.CutVolume;
            sums.conifer[k] += cut.CutConifer;
        }
    }
    w.endTable();
}

// The polygon's first block, -1 when it has none.
int firstBlock(const CalcState& c, int p) {
    for (int b = 0; b <= c.BlockLast && b <= c.BlockList.upperBound(); ++b)
        if (c.BlockList[b].Polygon == p) return b;
    return -1;
}

const char* notHarvestedReason(const Model& m, int p, int block) {
    if (!inCutOrder(m, p)) return "Polygon excluded from sort order";
    const int16_t target = targetAge(m, p, 0).age;
    if (target == 999) return "Minimum parameters never met";
    if (target > m.Poly[p].AGE + m.Settings.PLANHORZ)
        return "Polygon does not reach harvest age during the planning horizon";
    if (block >= 0) return "Simulation failed prior to this polygon being harvested";
    return nullptr;
}

void notHarvested(const Model& m, ReportWriter& w, HarvestSums& sums) {
    const CalcState& c = m.Calc;
    const double keep = (100.0 - c.inputs.SavedNetDown) / 100.0;
    w.subsectionHeading("c) Polygons not harvested");
    w.beginTable({1250, 1750, 2750, 8000});
    w.titleRow({"Polygon", "Own", "Harvest", "Reason"});
    w.titleRow({"", "", "Area (ha)", ""});
    double listed = 0.0;
    for (int p = 0; p <= m.LastPoly; ++p) {
        if (!isLive(m, p)) continue;
        const int block = firstBlock(c, p);
        if (block >= 0 && c.BlockList[block].NextBlock != 0) {
            const double area = m.Poly[p].AREA * keep;
            sums.area[std::clamp<int>(m.PolyC[p].OWNERSHIP, 0, 3)] += area;
            sums.area[4] += area;
            continue;
        }
        const char* reason = notHarvestedReason(m, p, block);
        if (reason == nullptr) continue;
        listed += m.Poly[p].AREA;
        w.row({label(polygonName(m, p)), label(ownershipCode(m, p)),
               number(formatNumber(m.Poly[p].AREA, "0.0")), label(reason)});
    }
    w.row({{"Total", CellAlign::Left, true},
           label(""),
           {formatNumber(listed + sums.area[4], "#,##0.0"), CellAlign::Right, true},
           label("")});
    w.endTable();
}

void averageHarvest(const Model& m, ReportWriter& w, const HarvestSums& sums, float hanzlik) {
    const double years = m.Settings.PLANHORZ + 1.0;
    w.subsectionHeading("d) Actual average Harvest with constraints and non harvest years over " +
                        formatNumber(m.Settings.PLANHORZ, "0") + " year planning horizon:");
    w.beginTable({1500, 2500, 3500, 4500, 5500, 6500});
    w.titleRow({"Ownership", "Harvest", "Conifer", "Deciduous", "Total", "Average"});
    w.titleRow({"", "Area (ha)", "(m\xb3)", "(m\xb3)", "(m\xb3)", "(m\xb3/yr)"});
    auto sumRow = [&](const std::string& name, double area, double total, double conifer,
                      double divisor, bool bold) {
        w.row({{name, CellAlign::Left, bold},
               number(formatNumber(area / divisor, "#,##0.0")),
               number(formatNumber(conifer / divisor, "#,##0")),
               number(formatNumber((total - conifer) / divisor, "#,##0")),
               number(formatNumber(total / divisor, "#,##0")),
               number(formatNumber(total / years, "#,##0"))});
    };
    for (int k = 0; k < 4; ++k)
        sumRow(m.Ref.OwnershipNames[k], sums.area[k], sums.total[k], sums.conifer[k], 1.0, false);
    sumRow("Total", sums.area[4], sums.total[4], sums.conifer[4], 1.0, true);
    sumRow("Average", sums.area[4], sums.total[4], sums.conifer[4], years, true);
    w.endTable();
    w.labelLine("Hanzlik Rate ", formatNumber(hanzlik, "#,##0") + " m\xb3/year");
    w.paragraph("** Net of decay, waste, breakage, VAF and OAFs");
}

// The periods in which the share of the inventory meeting a constraint fell below its percent.
void constraintPeriods(const Model& m, ReportWriter& w, bool enabled, float YearRec::*meeting,
                       int percent, int presentYear, const char* disabledText) {
    if (!enabled) {
        w.paragraph(disabledText);
        return;
    }
    const CalcState& c = m.Calc;
    const int last = std::min<int>(c.CalcHorizon, c.YearTable.upperBound());
    auto period = [&](int from, int to) {
        w.paragraph(formatNumber(presentYear + from, "0000") + "-" +
                    formatNumber(presentYear + to, "0000"));
    };
    int runStart = -1;
    for (int i = 0; i <= last; ++i) {
        const YearRec& y = c.YearTable[i];
        if (y.InvArea == 0.0f) continue;
        const bool fails = 100.0f * (y.*meeting) / y.InvArea < static_cast<float>(percent);
        if (fails && runStart < 0) runStart = i;
        if (!fails && runStart >= 0) {
            period(runStart, i);
            runStart = -1;
        }
    }
    if (runStart >= 0) period(runStart, last);
}

}  // namespace

void writeResults(const Model& m, ReportWriter& w, int presentYear, float hanzlikRate) {
    const CalcInputs& in = m.Calc.inputs;
    w.sectionHeading("4.0 Harvest Calculation Results");
    w.subsectionHeading(
        in.AreaRunSaved != 0
            ? "a) Harvest Rate " + formatNumber(in.SavedAreaRate, "0.000") + " ha/year"
            : "a) Harvest Rate " + formatNumber(static_cast<int>(in.SavedVolRate), "0") +
                  " m\xb3/year");
    HarvestSums sums;
    harvestByPolygon(m, w, sums);
    notHarvested(m, w, sums);
    averageHarvest(m, w, sums, hanzlikRate);
    w.subsectionHeading("e) Age Constraints Not Met During the following Period(s)");
    constraintPeriods(m, w, (in.ConstraintBits & 4) != 0, &YearRec::InvAreaAge, in.SavedAgePerc,
                      presentYear, "Age constraints are disabled");
    w.subsectionHeading("f) Height Constraints Not Met During the following Period(s)");
    constraintPeriods(m, w, (in.ConstraintBits & 2) != 0, &YearRec::InvAreaHeight,
                      in.SavedHeightPerc, presentYear, "Height constraints are disabled");
}

}  // namespace arborex::report_detail
