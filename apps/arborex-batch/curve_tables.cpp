#include "curve_tables.hpp"

#include <algorithm>
#include <ostream>
#include <type_traits>

#include "base/display_format.hpp"
#include "json_writer.hpp"
#include "project_summary.hpp"
#include "report/yield_view.hpp"
#include "yield/curves.hpp"

namespace arborex::batch {

namespace {

template <typename Visit>
void visitHarvAge(const HarvAgeRec& h, Visit&& visit) {
    visit("MaiAge", h.MaiAge);
    visit("VolAge", h.VolAge);
    visit("DiaAge", h.DiaAge);
    visit("ConstraintAge", h.ConstraintAge);
    visit("HarvestAge", h.HarvestAge);
    visit("MaxMAI", h.MaxMAI);
}

const HarvAgeRec& harvAgeOf(const Model& m, int p, int16_t model) {
    return m.HarvAge.at(static_cast<std::size_t>(p)).at(static_cast<std::size_t>(model));
}

std::string maiText(float mai) {
    return formatNumber(mai, "0.00");
}

std::string tenthsText(float value) {
    return formatNumber(value, "0.0");
}

// Rows of cells written with each column as wide as its widest cell, text columns to the left
// and number columns to the right. Cells hold project text, one byte a character, until shown.
class AlignedTable {
public:
    void addColumn(std::string title, bool rightAligned) {
        titles_.push_back(std::move(title));
        right_.push_back(rightAligned);
    }
    void addRow(std::vector<std::string> cells) { rows_.push_back(std::move(cells)); }

    void write(std::ostream& out) const {
        std::vector<std::size_t> widths;
        for (const std::string& title : titles_) widths.push_back(title.size());
        for (const auto& row : rows_)
            for (std::size_t i = 0; i < row.size() && i < widths.size(); ++i)
                widths[i] = std::max(widths[i], row[i].size());
        writeLine(titles_, widths, out);
        for (const auto& row : rows_) writeLine(row, widths, out);
    }

private:
    void writeLine(const std::vector<std::string>& cells, const std::vector<std::size_t>& widths,
                   std::ostream& out) const {
        std::string line = " ";
        for (std::size_t i = 0; i < cells.size() && i < widths.size(); ++i)
            line += " " + padded(cells[i], widths[i], right_[i]);
        while (!line.empty() && line.back() == ' ') line.pop_back();
        out << line << '\n';
    }

    std::vector<std::string> titles_;
    std::vector<bool> right_;
    std::vector<std::vector<std::string>> rows_;
};

std::string mgntText(const PolyData& poly) {
    return std::to_string(poly.MGNT[0]) + ", " + std::to_string(poly.MGNT[1]);
}

// The yield table view's labels as numbers, for the management whose model the curve is.
void writeYieldViewJson(JsonWriter& json, const Model& m, const CurveTable& curve) {
    YieldView view{curve.polygon, curve.model, managementOfModel(m, curve.polygon, curve.model)};
    const YieldFigures f = yieldFigures(m, view);
    json.beginObject();
    json.member("management", view.YieldMgnt);
    json.member("calculated", yieldCalculated(m, view));
    json.member("siteIndex", f.siteIndex);
    json.key("culmination");
    json.beginObject(Layout::Inline);
    json.member("age", f.ages.MaiAge);
    json.member("MAI", f.ages.MaxMAI);
    json.endObject();
    json.key("criteria");
    json.beginObject(Layout::Inline);
    json.member("minimumAge", f.minimumAge);
    json.member("DiaAge", f.ages.DiaAge);
    json.member("VolAge", f.ages.VolAge);
    json.member("ConstraintAge", f.ages.ConstraintAge);
    json.member("HarvestAge", f.ages.HarvestAge);
    json.endObject();
    json.key("target");
    json.beginObject(Layout::Inline);
    json.member("age", f.targetAge);
    json.member("dbh", f.targetDbh);
    json.member("vol", f.targetVol);
    json.endObject();
    json.key("thin");
    if (f.thinned) {
        json.beginObject(Layout::Inline);
        json.member("age", f.thinAge);
        json.member("volBefore", f.thinVolBefore);
        json.member("volAfter", f.thinVolAfter);
        json.endObject();
    } else {
        json.null();
    }
    json.endObject();
}

}  // namespace

void writeHarvAgeJson(JsonWriter& json, const HarvAgeRec& h) {
    json.beginObject(Layout::Inline);
    visitHarvAge(h, [&json](const char* name, const auto& value) { json.member(name, value); });
    json.endObject();
}

const char* curveModelName(int16_t model) {
    return model == 0 ? "VDYP" : "TIPSY";
}

CurveTable readCurve(const Model& m, int16_t polygon, int16_t model) {
    CurveTable curve;
    curve.polygon = polygon;
    curve.model = model;
    if (model == 0) {
        const PolyData& poly = m.Poly.at(static_cast<std::size_t>(polygon));
        for (int16_t slot = 0; slot < static_cast<int16_t>(poly.VS.size()); ++slot) {
            std::string code = poly.VS[static_cast<std::size_t>(slot)].str();
            if (!code.empty()) curve.species.push_back({slot, std::move(code)});
        }
    }
    const auto t = static_cast<std::size_t>(model);
    const int first = m.Settings.YieldMinAge[t];
    const int last = m.Settings.YieldMaxAge[t];
    const int step = m.Settings.YieldIncAge[t];
    // An int walk: the age past the last stays out of the 16-bit queries.
    for (int age = first; step > 0 && age <= last; age += step) {
        CurveRow row;
        row.age = static_cast<int16_t>(age);
        row.dia = FindDia(m, model, row.age, polygon);
        row.ht = FindHt(m, model, row.age, polygon);
        row.vol = FindVol(m, model, row.age, polygon);
        row.mai = findMai(m, model, row.age, polygon);
        for (const SpeciesColumn& column : curve.species)
            row.speciesVol.push_back(FindVolSpec(m, row.age, polygon, column.slot));
        curve.rows.push_back(std::move(row));
    }
    return curve;
}

void writeAgesText(const Model& m, std::ostream& out) {
    const ProjectSettings& s = m.Settings;
    out << "Criteria: MINAGE " << s.MINAGE << ", MINVOL " << roundTripText(s.MINVOL) << ", MINDIA "
        << roundTripText(s.MINDIA) << "\nPolygons: " << m.LastPoly + 1 << "\n";
    if (m.LastPoly < 0) return;

    AlignedTable table;
    table.addColumn("index", true);
    table.addColumn("NAME", false);
    table.addColumn("MGNT", false);
    table.addColumn("DELETE", true);
    table.addColumn("model", false);
    visitHarvAge(HarvAgeRec{}, [&](const char* name, const auto&) { table.addColumn(name, true); });
    for (int p = 0; p <= m.LastPoly; ++p) {
        const PolyData& poly = m.Poly.at(static_cast<std::size_t>(p));
        const int16_t deleted = m.PolyC.at(static_cast<std::size_t>(p)).DELETE;
        for (int16_t model : {int16_t{0}, int16_t{1}}) {
            std::vector<std::string> cells = {std::to_string(p), poly.NAME.str(), mgntText(poly),
                                              std::to_string(deleted), curveModelName(model)};
            visitHarvAge(harvAgeOf(m, p, model), [&](const char*, const auto& value) {
                if constexpr (std::is_floating_point_v<std::decay_t<decltype(value)>>)
                    cells.push_back(maiText(value));
                else
                    cells.push_back(std::to_string(value));
            });
            table.addRow(std::move(cells));
        }
    }
    table.write(out);
}

void writeAgesJson(const Model& m, std::ostream& out) {
    JsonWriter json(out);
    json.beginObject();
    json.key("criteria");
    json.beginObject(Layout::Inline);
    json.member("MINAGE", m.Settings.MINAGE);
    json.member("MINVOL", m.Settings.MINVOL);
    json.member("MINDIA", m.Settings.MINDIA);
    json.endObject();

    json.key("polygons");
    json.beginArray();
    for (int p = 0; p <= m.LastPoly; ++p) {
        const PolyData& poly = m.Poly.at(static_cast<std::size_t>(p));
        json.beginObject();
        json.member("index", p);
        json.member("NAME", poly.NAME.str());
        json.member("DELETE", m.PolyC.at(static_cast<std::size_t>(p)).DELETE);
        json.arrayMember("MGNT", poly.MGNT);
        json.key("HarvAge");
        json.beginArray();
        for (int16_t model : {int16_t{0}, int16_t{1}})
            writeHarvAgeJson(json, harvAgeOf(m, p, model));
        json.endArray();
        json.endObject();
    }
    json.endArray();
    json.endObject();
    json.finish();
}

void writeCurveText(const Model& m, const CurveTable& curve, std::ostream& out) {
    const PolyData& poly = m.Poly.at(static_cast<std::size_t>(curve.polygon));
    out << "Polygon " << curve.polygon << " \"" << latin1ToUtf8(poly.NAME.str()) << "\", "
        << curveModelName(curve.model) << ", HarvestAge "
        << harvAgeOf(m, curve.polygon, curve.model).HarvestAge << '\n';

    AlignedTable table;
    for (const char* title : {"Age", "Dia", "Ht", "Vol", "MAI"}) table.addColumn(title, true);
    for (const SpeciesColumn& column : curve.species) table.addColumn(column.code, true);
    for (const CurveRow& row : curve.rows) {
        std::vector<std::string> cells = {std::to_string(row.age), tenthsText(row.dia),
                                          tenthsText(row.ht), tenthsText(row.vol),
                                          maiText(row.mai)};
        for (float volume : row.speciesVol) cells.push_back(tenthsText(volume));
        table.addRow(std::move(cells));
    }
    table.write(out);
}

void writeCurveJson(const Model& m, const CurveTable& curve, std::ostream& out) {
    JsonWriter json(out);
    json.beginObject();
    json.member("polygon", curve.polygon);
    json.member("NAME", m.Poly.at(static_cast<std::size_t>(curve.polygon)).NAME.str());
    json.member("model", curve.model);
    json.key("HarvAge");
    writeHarvAgeJson(json, harvAgeOf(m, curve.polygon, curve.model));
    json.key("yieldView");
    writeYieldViewJson(json, m, curve);
    json.key("species");
    json.beginArray(Layout::Inline);
    for (const SpeciesColumn& column : curve.species) json.value(column.code);
    json.endArray();

    json.key("rows");
    json.beginArray();
    for (const CurveRow& row : curve.rows) {
        json.beginObject(Layout::Inline);
        json.member("age", row.age);
        json.member("dia", row.dia);
        json.member("ht", row.ht);
        json.member("vol", row.vol);
        json.member("mai", row.mai);
        if (curve.model == 0) json.arrayMember("speciesVol", row.speciesVol);
        json.endObject();
    }
    json.endArray();
    json.endObject();
    json.finish();
}

}  // namespace arborex::batch
