// The written report: the title block, the fixed sections and the file itself.
#include "report/document_report.hpp"

#include <array>
#include <utility>

#include "base/atomic_file.hpp"
#include "base/dates.hpp"
#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/text.hpp"
#include "model/model.hpp"
#include "report/document_report_sections.hpp"

namespace arborex {

namespace report_detail {

std::string bracketed(const std::string& value, bool isDefault) {
    return isDefault ? "[" + value + "]" : value;
}

bool isLive(const Model& m, int p) {
    return m.PolyC[p].DELETE == 0;
}

std::string polygonName(const Model& m, int p) {
    return m.Poly[p].NAME.str();
}

std::string ownershipCode(const Model& m, int p) {
    const int own = m.PolyC[p].OWNERSHIP;
    if (own < 0 || own > 3) return {};
    return trim(std::string(1, m.Ref.OwnershipCodes[own]));
}

int16_t curveModel(const Model& m, int p, int management) {
    const int16_t code = m.Poly[p].MGNT[management];
    if (code == 0 || code == 1) return code;
    const int16_t future = m.Poly[p].MGNT[1];
    return future == 1 ? 1 : 0;
}

ReportAge targetAge(const Model& m, int p, int management) {
    const int16_t own = m.Poly[p].HAR[management];
    if (own != -1) return {own, false};
    return {m.HarvAge[p][curveModel(m, p, management)].HarvestAge, true};
}

}  // namespace report_detail

std::string FixSlash(const std::string& path, ReportFormat format) {
    std::string trimmed = trim(path);
    if (format == ReportFormat::TXT) return trimmed;
    std::string doubled;
    for (char c : trimmed) {
        doubled += c;
        if (c == '\\') doubled += '\\';
    }
    return doubled;
}

namespace {

using namespace report_detail;

void titleBlock(const Model& m, ReportWriter& w, double today) {
    const ProjectHeader& h = m.Header;
    w.sectionHeading("Arborex Licence Harvest Planning report");
    w.labelLine("Date            ", formatDate(today, "d mmmm, yyyy"));
    w.labelLine("Arborex Licence#", h.Licence.str());
    w.labelLine("Forest District ", h.District.str());
    w.labelLine("Company         ", h.Company.str());
    w.labelLine("User            ", h.User.str());
    // The path goes out as FixSlash makes it; only braces and codes above 127 still need
    // the Rich Text escape.
    std::string file;
    for (char c : FixSlash(m.Files[FileProject], w.format()))
        file += c == '\\' ? std::string(1, c) : w.escape(std::string(1, c));
    w.labelLine("Arborex File    ", file, true);
    w.labelLine("Scenario        ", h.Scenario.str());
    w.subsectionHeading("Model Information:");
    w.labelLine("Arborex File ", h.FileStamp.str());
    w.labelLine("Arborex Version ",
                std::string(kProgramStamp) + " - " + kReportProgramVersion + "WIN95/98/ME/2000/XP");
    w.labelLine("VDYP Version    ", h.VDYPVersion.str());
    w.labelLine("TIPSY Version   ", h.TIPSYVersion.str());
}

void introduction(const Model& m, ReportWriter& w) {
    w.sectionHeading("1.0 Introduction");
    w.paragraph(
        "This section summarises information used to calculate a long term harvest rate on "
        "Arborex Licence No. " +
        m.Header.Licence.str() +
        ".  The calculated harvest rate can be used to assist in determining the allowable "
        "annual cut (AAC).  It should be assessed in light of the assumptions used, social and "
        "economic considerations in determining the AAC.");
    w.paragraph("Refer to \"Section 6.0\" for the definition of column headers.");
}

void conclusions(ReportWriter& w) {
    w.sectionHeading("5.0 Conclusions");
    w.paragraph(
        "Enter your conclusions to the user of this section on your observations about the "
        "upward or downward bias of the assumptions used to calculate the results. Open this "
        "report.txt file in the 'Note Pad' program or into Word for Windows to edit.");
}

void abbreviations(ReportWriter& w) {
    static const std::array<std::pair<const char*, const char*>, 36> terms{{
        {"%", " Species Composition Percent"},
        {"[]", " Default Variable"},
        {"(s/ha) ", " Stems/ha"},
        {"Available for ", " Number of years the polygon has been ready to harvest"},
        {"C Age ", " Culmination Age"},
        {"C Vol ", " Volume at Culmination Age"},
        {"CC ", " Clearcut"},
        {"CT ", " Commercial Thin"},
        {"Cul ", " Culmination"},
        {"Dens ", " Initial Density (stems/ha)"},
        {"FIZ ", " Forest Inventory Zone"},
        {"Harvest Area (ha) ", " Area reduced by the area netdown."},
        {"MAI ", " Mean Annual Increment (m\xb3/ha/yr)"},
        {"Mgmt Type ", " Management Type (VDYP / TIPSY / NC / NSR)"},
        {"NC ", " Non Commercial"},
        {"NSR ", " Non Satisfiactory Regeneration"},
        {"PC ", " Partial Cut"},
        {"PC% ", " Partial Cut percent to harvest"},
        {"PC1 ", " First Partial Cut"},
        {"PSYU ", " Public Sustained Yield Unit"},
        {"Queue ", " Reason for harvest (CC, PC1, Sub PC, CT, Road, NSR, NC)"},
        {"Reentry ", " Number of years to wait before reentering a partial cut"},
        {"Regen ", " Regeneration Type (Natural / Planted)"},
        {"Road ", " Road net down"},
        {"S1-S6 ", " Species Codes 1 to 6"},
        {"SI ", " Site Index"},
        {"Silv Sys ", " Silviculture System (CC, PC)"},
        {"Stk Cls ", " Stocking Class (0 to 4 or R)"},
        {"Sub PC ", " Subsequent Partial Cut"},
        {"T Age ", " Target Age"},
        {"T Vol ", " Volume at Target Age"},
        {"Target Age",
         "Target harvest age.  The actual harvest age will depend on the time the simulation "
         "harvests the polygon.  See section 4(b) for actual harvest ages."},
        {"Thin ", " Pre-commercial thin to density (stems/ha)"},
        {"TIPSY ", " Table Interpolation Program for Stand Yields"},
        {"VAF ", " Volume Adjustment Factor"},
        {"VDYP ", " Variable Density Yield Projection"},
    }};
    w.sectionHeading("6.0 Report Abbreviations");
    w.beginTable({1500, 8000});
    w.titleRow({"Term", "Definition"});
    for (const auto& [term, definition] : terms)
        w.row({{term, CellAlign::Left, true}, {definition, CellAlign::Left, false}});
    w.endTable();
}

void summary(const Model& m, ReportWriter& w, const ReportSums& sums) {
    const CalcInputs& in = m.Calc.inputs;
    auto perArea = [&](double sum) { return sums.totalArea > 0.0 ? sum / sums.totalArea : 0.0; };
    w.subsectionHeading("Summary:");
    w.labelLine("Total Net Area", formatNumber(sums.totalArea, "#,##0.0") + " ha");
    w.labelLine("Netdown Area", formatNumber(m.Calc.NetArea, "#,##0.0") + " ha");
    w.labelLine("MAI Existing",
                formatNumber(perArea(sums.targetMaiArea[0]), "0.00") + " m\xb3/ha/year");
    w.labelLine("MAI Future",
                formatNumber(perArea(sums.targetMaiArea[1]), "0.00") + " m\xb3/ha/year");
    w.labelLine("Harvest Rate",
                in.AreaRunSaved != 0
                    ? formatNumber(in.SavedAreaRate, "0.000") + " ha/year"
                    : formatNumber(static_cast<int>(in.SavedVolRate), "#,##0") + " m\xb3/year");
}

std::string reportText(const Model& m, ReportFormat format, const ReportContext& context) {
    const double today = context.today != 0.0 ? context.today : dateNow();
    const int presentYear = partsFromDayCount(today).year;
    ReportWriter w(format);
    ReportSums sums;
    // Each section is assembled on its own, then the document is laid out in one pass.
    titleBlock(m, w, today);
    const std::string title = w.take();
    introduction(m, w);
    const std::string intro = w.take();
    writePolygonData(m, w, sums);
    const std::string polygons = w.take();
    writeAssumptions(m, w);
    const std::string assumptions = w.take();
    writeResults(m, w, presentYear, context.hanzlikRate);
    const std::string results = w.take();
    conclusions(w);
    abbreviations(w);
    const std::string closing = w.take();
    summary(m, w, sums);
    const std::string summaryText = w.take();
    return w.documentStart() + title + intro + polygons + assumptions + results + closing +
           summaryText + w.documentEnd();
}

}  // namespace

void createReport(const Model& m, ReportFormat format, const std::string& path,
                  const ReportContext& context) {
    const std::string text = reportText(m, format, context);
    // The former report stays whole until the new one is on disk.
    writeFileAtomically(path, text);
}

}  // namespace arborex
