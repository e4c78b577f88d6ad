// Section 2 of the written report: the polygons' data and yields.
#include <array>
#include <string>
#include <vector>

#include "base/display_format.hpp"
#include "base/text.hpp"
#include "model/model.hpp"
#include "report/document_report_sections.hpp"
#include "yield/curves.hpp"

namespace arborex::report_detail {

namespace {

const char* managementName(int16_t code) {
    switch (code) {
        case 0:
            return "VDYP";
        case 1:
            return "TIPSY";
        case 2:
            return "NC";
        case 3:
            return "NSR";
        default:
            return "";
    }
}

bool usesModel(const PolyData& poly, int16_t model) {
    return poly.MGNT[0] == model || poly.MGNT[1] == model;
}

ReportCell number(std::string text) {
    return {std::move(text), CellAlign::Right, false};
}
ReportCell label(std::string text) {
    return {std::move(text), CellAlign::Left, false};
}

// Current volume per hectare under the existing management.
float currentVolumeHa(const Model& m, int p) {
    const PolyData& poly = m.Poly[p];
    if (poly.MGNT[0] == 0 || poly.MGNT[0] == 1)
        return FindVol(m, poly.MGNT[0], poly.AGE, static_cast<int16_t>(p));
    if (poly.MGNT[0] == 2) return m.PolyM[p].NCVOLHA;
    return 0.0f;
}

void generalInformation(const Model& m, ReportWriter& w, ReportSums& sums) {
    w.subsectionHeading("a) General Information and Current Volumes");
    w.beginTable({1500, 2000, 2550, 3500, 4250, 5000, 5500, 6500, 7000, 7750, 8500});
    w.titleRow({"Polygon", "Own", "Area", "Current", "VAF", "PSYU", "FIZ", "Mgmt", "Silv", "Vol/ha",
                "Volume"});
    w.titleRow({"", "", "(ha)", "Age", "", "", "", "Type", "Sys", "(m\xb3/ha)", "(m\xb3)"});
    double totalVolume = 0.0;
    for (int p = 0; p <= m.LastPoly; ++p) {
        if (!isLive(m, p)) continue;
        const PolyData& poly = m.Poly[p];
        const float volHa = currentVolumeHa(m, p);
        const float volume = volHa * poly.AREA;
        sums.totalArea += poly.AREA;
        totalVolume += volume;
        w.row({label(polygonName(m, p)), label(ownershipCode(m, p)),
               number(formatNumber(poly.AREA, "#,##0.0")), number(formatNumber(poly.AGE, "0")),
               number(formatNumber(poly.VAF, "0.00")), number(formatNumber(poly.PSYU, "0")),
               label(trim(poly.FIZ.str())), label(managementName(poly.MGNT[0])),
               label(poly.SILVI == 1 ? "PC" : "CC"), number(formatNumber(volHa, "#,##0")),
               number(formatNumber(volume, "#,##0"))});
    }
    w.row({{"TOTAL", CellAlign::Left, true},
           label(""),
           {formatNumber(sums.totalArea, "#,##0.0"), CellAlign::Right, true},
           label(""),
           label(""),
           label(""),
           label(""),
           label(""),
           label(""),
           label(""),
           {formatNumber(totalVolume, "#,##0"), CellAlign::Right, true}});
    w.endTable();
}

// Species columns: separate code and percent columns in Rich Text, one shared column in text.
void addSpeciesCells(const ReportWriter& w, ReportRow& row, const std::string& code,
                     const std::string& value) {
    if (w.format() == ReportFormat::RTF) {
        row.push_back(label(code));
        row.push_back(number(value));
    } else {
        row.push_back(label(code.empty() ? std::string() : code + "  " + value));
    }
}

std::vector<std::string> speciesTitles(const ReportWriter& w, int count) {
    std::vector<std::string> titles;
    for (int i = 1; i <= count; ++i) {
        const std::string s = "S" + std::to_string(i);
        if (w.format() == ReportFormat::RTF) {
            titles.push_back(s);
            titles.push_back("%");
        } else {
            titles.push_back(s + "  %");
        }
    }
    return titles;
}

// Right edges of the leading columns, then pairs of species columns of equal width.
std::vector<int> speciesEdges(std::vector<int> edges, int pairs, int width) {
    for (int i = 0; i < 2 * pairs; ++i) edges.push_back(edges.back() + width);
    return edges;
}

void vdypSpecific(const Model& m, ReportWriter& w) {
    w.subsectionHeading("b) VDYP (unmanaged) Specific");
    w.beginTable(speciesEdges({1500, 2250, 2750, 3250}, 6, 450));
    std::vector<std::string> titles{"Polygon", "SI", "CC", "Stk"};
    for (const std::string& t : speciesTitles(w, 6)) titles.push_back(t);
    w.titleRow(titles);
    w.titleRow({"", "(m)", "(%)", "Cls"});
    for (int p = 0; p <= m.LastPoly; ++p) {
        const PolyData& poly = m.Poly[p];
        if (!isLive(m, p) || !usesModel(poly, 0)) continue;
        ReportRow row{label(polygonName(m, p)), number(formatNumber(poly.VSICALC, "#.#")),
                      number(formatNumber(m.PolyC[p].VCCCALC, "#")),
                      label(trim(poly.STOCKING.str()))};
        for (int s = 0; s < 6; ++s) {
            const std::string code = trim(poly.VS[s].str());
            addSpeciesCells(w, row, code, code.empty() ? "" : formatNumber(poly.VP[s], "0"));
        }
        w.row(row);
    }
    w.endTable();
}

void tipsySpecific(const Model& m, ReportWriter& w) {
    w.subsectionHeading("c) TIPSY (Managed) Specific");
    w.beginTable(speciesEdges({1500, 2000, 2750, 3500, 4250}, 5, 430));
    std::vector<std::string> titles{"Polygon", "SI", "Dens", "Thin", "Regen"};
    for (const std::string& t : speciesTitles(w, 5)) titles.push_back(t);
    w.titleRow(titles);
    w.titleRow({"", "(m)", "(s/ha)", "(s/ha)", ""});
    for (int p = 0; p <= m.LastPoly; ++p) {
        const PolyData& poly = m.Poly[p];
        if (!isLive(m, p) || !usesModel(poly, 1)) continue;
        ReportRow row{
            label(polygonName(m, p)), number(formatNumber(poly.TSICALC, "#.#")),
            number(formatNumber(static_cast<int>(poly.DENSITY), "#,##0")),
            number(poly.THIN != 0 ? formatNumber(static_cast<int>(poly.THINNED), "#,##0") : "n/a"),
            label(poly.REGEN == 1 ? "Planted" : "Natural")};
        for (int s = 0; s < 5; ++s) {
            const std::string code = trim(poly.TS[s].str());
            addSpeciesCells(w, row, code, code.empty() ? "" : formatNumber(poly.TP[s], "0"));
        }
        w.row(row);
    }
    w.endTable();
}

void tipsyEnhanced(const Model& m, ReportWriter& w) {
    w.subsectionHeading("d) TIPSY Enhanced Management Variables");
    w.beginTable(speciesEdges({1500, 2000, 2750, 3500, 4250}, 5, 430));
    w.titleRow({"Polygon", "CT@", "CT To", "Fert", "Fert", "S1", "GW", "S2", "GW", "S3", "GW", "S4",
                "GW", "S5", "GW"});
    w.titleRow({"", "(m)", "(s/ha)", "Year", "Vol", "", "(%)", "", "(%)", "", "(%)", "", "(%)", "",
                "(%)"});
    for (int p = 0; p <= m.LastPoly; ++p) {
        const PolyData& poly = m.Poly[p];
        const PolyMgmt& mg = m.PolyM[p];
        if (!isLive(m, p) || !usesModel(poly, 1)) continue;
        const bool thin = mg.COMTHIN == 1;
        const bool fert = mg.FERT == 1;
        ReportRow row{
            label(polygonName(m, p)), number(thin ? formatNumber(mg.CTHEIGHT, "#.#") : ""),
            number(thin ? formatNumber(mg.CTSTEMHA, "#,###") : ""),
            number(fert ? formatNumber(mg.FSTARTYEAR, "#") : ""), label(fert ? "PFA" : "")};
        for (int s = 0; s < 5; ++s) {
            const std::string code = trim(poly.TS[s].str());
            row.push_back(label(code));
            row.push_back(number(code.empty() ? "" : formatNumber(mg.TG[s], "0")));
        }
        w.row(row);
    }
    w.endTable();
}

// One row of table e) for a management; adds to the area-weighted sums.
void yieldRow(const Model& m, ReportWriter& w, int p, int management, double sums[4]) {
    const PolyData& poly = m.Poly[p];
    const int16_t code = poly.MGNT[management];
    ReportRow row{label(management == 0 ? polygonName(m, p) : std::string(13, ' '))};
    if (code == 2 || code == 3) {
        row.push_back(label(managementName(code)));
        row.resize(10, label(""));
        w.row(row);
        return;
    }
    const bool partial = poly.SILVI == 1 && management == 0;
    row.push_back(label(partial ? "PC" : managementName(code)));
    const auto pi = static_cast<int16_t>(p);
    const int16_t culAge = m.HarvAge[p][code].MaiAge;
    const float culVol = FindVol(m, code, culAge, pi);
    const float culMai = findMai(m, code, culAge, pi);
    const ReportAge target = targetAge(m, p, management);
    const float targetVol = FindVol(m, code, target.age, pi);
    const float targetMai = findMai(m, code, target.age, pi);
    sums[0] += static_cast<double>(culVol) * poly.AREA;
    sums[1] += static_cast<double>(culMai) * poly.AREA;
    sums[2] += static_cast<double>(targetVol) * poly.AREA;
    sums[3] += static_cast<double>(targetMai) * poly.AREA;
    row.push_back(number(formatNumber(culAge, "0")));
    row.push_back(number(formatNumber(culVol, "#,##0")));
    row.push_back(number(formatNumber(culMai, "0.00")));
    row.push_back(number(bracketed(formatNumber(target.age, "0"), target.isDefault)));
    row.push_back(number(formatNumber(targetVol, "#,##0")));
    row.push_back(number(formatNumber(targetMai, "0.00")));
    if (partial) {
        const bool ownPerc = poly.PCPERC != -1;
        const bool ownNext = poly.PCNEXT != -1;
        row.push_back(number(
            bracketed(formatNumber(ownPerc ? poly.PCPERC : m.Settings.PCperc, "0"), !ownPerc)));
        row.push_back(number(
            bracketed(formatNumber(ownNext ? poly.PCNEXT : m.Settings.PCnext, "0"), !ownNext)));
    } else {
        row.push_back(label(""));
        row.push_back(label(""));
    }
    w.row(row);
}

void averageRow(ReportWriter& w, const char* title, const double sums[4], double area) {
    auto mean = [area](double sum) { return area > 0.0 ? sum / area : 0.0; };
    w.row({{title, CellAlign::Left, true},
           label(""),
           label(""),
           number(formatNumber(mean(sums[0]), "0")),
           number(formatNumber(mean(sums[1]), "0.##")),
           label(""),
           number(formatNumber(mean(sums[2]), "0")),
           number(formatNumber(mean(sums[3]), "0.##")),
           label(""),
           label("")});
}

void polygonYields(const Model& m, ReportWriter& w, ReportSums& totals) {
    w.subsectionHeading("e) Polygon Yields");
    w.beginTable({1500, 2250, 2900, 3650, 4500, 5150, 5900, 6750, 7500, 8250});
    w.titleRow({"Polygon", "Yield", "Cul.", "C Vol", "C MAI", "Target", "T Vol", "T MAI", "PC %",
                "Reentry"});
    w.titleRow({"", "Ex/Fut", "Age", "(m\xb3/ha)", "(m\xb3/ha/yr)", "Age", "(m\xb3/ha)",
                "(m\xb3/ha/yr)", "", "Year"});
    double sums[2][4] = {{0, 0, 0, 0}, {0, 0, 0, 0}};
    for (int p = 0; p <= m.LastPoly; ++p) {
        if (!isLive(m, p)) continue;
        yieldRow(m, w, p, 0, sums[0]);
        yieldRow(m, w, p, 1, sums[1]);
    }
    averageRow(w, "Average Existing", sums[0], totals.totalArea);
    averageRow(w, "Average Future", sums[1], totals.totalArea);
    w.endTable();
    totals.targetMaiArea[0] = sums[0][3];
    totals.targetMaiArea[1] = sums[1][3];
}

}  // namespace

void writePolygonData(const Model& m, ReportWriter& w, ReportSums& sums) {
    w.sectionHeading("2.0 Polygon Data");
    generalInformation(m, w, sums);
    vdypSpecific(m, w);
    tipsySpecific(m, w);
    tipsyEnhanced(m, w);
    polygonYields(m, w, sums);
}

}  // namespace arborex::report_detail
