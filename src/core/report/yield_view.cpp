#include "report/yield_view.hpp"

#include <algorithm>
#include <array>

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "base/text.hpp"
#include "report/graph_data.hpp"
#include "yield/curves.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex {

namespace {

constexpr int kSpeciesColumns = 6;
// The picture is 100 high; a line's maximum stands at 5 from the top.
constexpr float kPictureHeight = 100.0f;
constexpr float kLineHeight = 95.0f;

std::size_t at(int16_t index) {
    return static_cast<std::size_t>(index);
}

bool onView(const Model& m, const YieldView& view) {
    return view.YieldPoly >= 0 && view.YieldPoly <= m.LastPoly;
}

bool editsTarget(const Model& m, const YieldView& view) {
    return onView(m, view) && (view.YieldMgnt == 0 || view.YieldMgnt == 1);
}

const HarvAgeRec& harvAgeOf(const Model& m, const YieldView& view) {
    return m.HarvAge.at(at(view.YieldPoly)).at(at(view.YieldModel));
}

std::string bracketed(const std::string& text) {
    return "[" + text + "]";
}

std::string ageText(int16_t age) {
    return formatNumber(static_cast<int>(age), "0");
}

// The grid ages of model t, in an int walk so that the age past the last stays out of the
// 16-bit queries.
template <typename Visit>
void forEachGridAge(const Model& m, int16_t t, Visit&& visit) {
    const ProjectSettings& s = m.Settings;
    const int step = s.YieldIncAge.at(at(t));
    if (step <= 0) throw ArborexError(ErrDivisionByZero);
    for (int age = s.YieldMinAge.at(at(t)); age <= s.YieldMaxAge.at(at(t)); age += step)
        visit(static_cast<int16_t>(age));
}

// A user's number: the text is one and is not the bracketed value shown.
std::optional<double> typedNumber(std::string_view text) {
    const std::string trimmed = trim(text);
    if (!trimmed.empty() && trimmed.front() == '[') return std::nullopt;
    return strictNumber(trimmed);
}

std::string setTarget(Model& m, const YieldView& view, int16_t age) {
    m.Poly.at(at(view.YieldPoly)).HAR.at(at(view.YieldMgnt)) = age;
    return ageText(age);
}

}  // namespace

YieldView yieldViewOf(const Model& m, int16_t polygon, int16_t management) {
    const int16_t model = m.Poly.at(at(polygon)).MGNT.at(at(management));
    if (model != 0 && model != 1) throw ArborexError(ErrSubscript);
    return {polygon, model, management};
}

int16_t managementOfModel(const Model& m, int16_t polygon, int16_t t) {
    const auto& mgnt = m.Poly.at(at(polygon)).MGNT;
    for (int16_t r = 0; r < 2; ++r)
        if (mgnt[at(r)] == t) return r;
    return -1;
}

std::string yieldViewTitle(const Model& m, const YieldView& view) {
    if (!onView(m, view)) return {};
    std::string title = "Polygon " + m.Poly[at(view.YieldPoly)].NAME.str() + " - " +
                        (view.YieldModel == 0 ? "VDYP" : "TIPSY") + " curve";
    if (view.YieldMgnt == 0) title += ", existing management";
    if (view.YieldMgnt == 1) title += ", future management";
    return title;
}

bool yieldCalculated(const Model& m, const YieldView& view) {
    return onView(m, view) && m.Poly[at(view.YieldPoly)].YIELDSTATE.at(at(view.YieldModel)) >= 1;
}

// ---- The table -------------------------------------------------------------------------------

YieldTable yieldTable(const Model& m, const YieldView& view) {
    YieldTable table;
    table.heads = {"Age", "DBH", "Height", "Vol/Ha", "MAI"};
    const int16_t t = view.YieldModel, p = view.YieldPoly;
    // The species columns follow the management of index t, not the model on view: kept as the
    // program has always shown them.
    const bool species =
        onView(m, view) && m.Poly[at(p)].MGNT.at(at(t)) == 0 && m.Settings.YIELDMODE != 0;
    if (species)
        for (int k = 1; k <= kSpeciesColumns; ++k)
            table.heads.push_back("Vol(" + formatNumber(k, "0") + ")");
    if (!onView(m, view)) return table;

    const int16_t every = m.Settings.YIELDINC;
    if (every == 0) throw ArborexError(ErrDivisionByZero);
    forEachGridAge(m, t, [&](int16_t age) {
        if (age % every != 0) return;
        std::vector<std::string> row = {ageText(age), formatNumber(FindDia(m, t, age, p), "0.0"),
                                        formatNumber(FindHt(m, t, age, p), "0.0"),
                                        formatNumber(FindVol(m, t, age, p), "0.0"),
                                        formatNumber(findMai(m, t, age, p), "0.00")};
        for (int16_t slot = 0; species && slot < kSpeciesColumns; ++slot)
            row.push_back(formatNumber(FindVolSpec(m, age, p, slot), "0.0"));
        table.rows.push_back(std::move(row));
    });
    return table;
}

std::string yieldTableText(const YieldTable& table, std::string_view separator) {
    std::string text;
    const auto line = [&](const std::vector<std::string>& cells) {
        for (std::size_t k = 0; k < cells.size(); ++k) {
            if (k > 0) text += separator;
            text += cells[k];
        }
        text += "\r\n";
    };
    line(table.heads);
    for (const auto& row : table.rows) line(row);
    return text;
}

// ---- The picture -----------------------------------------------------------------------------

YieldPicture yieldPicture(const Model& m, const YieldView& view) {
    YieldPicture picture;
    const int16_t t = view.YieldModel, p = view.YieldPoly;
    const ProjectSettings& s = m.Settings;
    const int step = s.YieldIncAge.at(at(t));
    if (step <= 0) throw ArborexError(ErrDivisionByZero);
    const int low = s.YieldMinAge[at(t)];
    picture.width = std::max(1.0, static_cast<double>(s.YieldMaxAge[at(t)] - low) / step);
    for (const GraphTick& tick : axisTicks(low, s.YieldMaxAge[at(t)], 10, "0"))
        picture.ticks.push_back({(tick.value - low) / step, tick.label});
    if (!yieldCalculated(m, view)) {
        picture.message = kYieldNotCalculated;
        return picture;
    }

    struct Source {
        float (*find)(const Model&, int16_t, int16_t, int16_t);
        ColourKey colour;
        const char* name;
    };
    const std::array<Source, 3> sources = {Source{FindVol, ColVOL, "VOLUME,"},
                                           Source{FindDia, ColDIA, "DIAMETER,"},
                                           Source{findMai, ColMAI, "MAI,"}};
    for (const Source& source : sources) {
        std::vector<float> values;
        float largest = 0.0f;
        forEachGridAge(m, t, [&](int16_t age) {
            values.push_back(source.find(m, t, age, p));
            largest = std::max(largest, values.back());
        });
        if (largest <= 0.0f) {
            picture.caution += source.name;
            continue;
        }
        YieldLine line{s.COLORS[source.colour], {}};
        for (std::size_t k = 0; k < values.size(); ++k) {
            const float scaled = values[k] * kLineHeight / largest;
            const float y = kPictureHeight - scaled;
            line.points.emplace_back(static_cast<double>(k), y);
        }
        picture.lines.push_back(std::move(line));
    }
    return picture;
}

std::string cautionText(const std::string& list) {
    return "Caution " + list + " = 0 ";
}

void showCaution(Prompt& prompt, const std::string& list) {
    if (!list.empty()) prompt.tell(kProgramTitle, cautionText(list), Icon::Exclamation);
}

std::vector<YieldMarker> yieldMarkers(const Model& m, const YieldView& view) {
    if (!yieldCalculated(m, view)) return {};
    const int16_t t = view.YieldModel;
    const ProjectSettings& s = m.Settings;
    const int step = s.YieldIncAge.at(at(t));
    if (step <= 0) throw ArborexError(ErrDivisionByZero);
    const YieldFigures f = yieldFigures(m, view);
    const auto x = [&](int16_t age) {
        return static_cast<double>(age - s.YieldMinAge[at(t)]) / step;
    };
    return {{x(f.targetAge), kTargetMarkerColour},
            {x(f.ages.DiaAge), s.COLORS[ColDIA]},
            {x(f.ages.VolAge), s.COLORS[ColVOL]},
            {x(f.minimumAge), s.COLORS[ColAGE]},
            {x(f.ages.MaiAge), s.COLORS[ColMAI]}};
}

int16_t yieldAgeAt(const Model& m, int16_t t, double x) {
    const ProjectSettings& s = m.Settings;
    return toI2(s.YieldIncAge.at(at(t)) * x + s.YieldMinAge.at(at(t)));
}

// ---- The labels ------------------------------------------------------------------------------

YieldFigures yieldFigures(const Model& m, const YieldView& view) {
    YieldFigures f;
    const int16_t t = view.YieldModel, p = view.YieldPoly;
    const PolyData& poly = m.Poly.at(at(p));
    const PolyMgmt& mgmt = m.PolyM.at(at(p));
    f.siteIndex = t == 0 ? poly.VSICALC : poly.TSICALC;
    f.ages = harvAgeOf(m, view);
    const int16_t minimum = m.PolyC.at(at(p)).MINCUTAGE.at(at(t));
    f.minimumAge = minimum == -1 ? m.Settings.MINAGE : minimum;
    const int16_t target = editsTarget(m, view) ? poly.HAR[at(view.YieldMgnt)] : int16_t{-1};
    f.targetAge = target == -1 ? f.ages.HarvestAge : target;
    f.targetDbh = FindDia(m, t, f.targetAge, p);
    f.targetVol = FindVol(m, t, f.targetAge, p);
    f.thinAge = mgmt.TIPSYCACHE[0];
    f.thinned = t == 1 && mgmt.COMTHIN == 1 && f.thinAge > 0;
    f.thinVolBefore = static_cast<float>(mgmt.TIPSYCACHE[2]) / 10.0f;
    f.thinVolAfter = static_cast<float>(mgmt.TIPSYCACHE[3]) / 10.0f;
    return f;
}

YieldLabels yieldLabels(const Model& m, const YieldView& view) {
    YieldLabels l;
    const std::string na = kNotAvailable;
    if (!yieldCalculated(m, view)) {
        l = {na, na, na, na, na, na, na, na, na, na, na, na};
        return l;
    }
    const YieldFigures f = yieldFigures(m, view);
    l.siteIndex = formatNumber(f.siteIndex, "0.0");
    l.maiAge = ageText(f.ages.MaiAge);
    l.maxMai = formatNumber(f.ages.MaxMAI, "0.00");
    l.diaAge = ageText(f.ages.DiaAge);
    l.volAge = ageText(f.ages.VolAge);
    l.constraintAge = ageText(f.ages.ConstraintAge);
    l.harvestAge = ageText(f.ages.HarvestAge);
    l.targetDbh = formatNumber(f.targetDbh, "0.0");
    l.targetVol = formatNumber(f.targetVol, "0.0");
    l.thinAge = f.thinned ? ageText(f.thinAge) : na;
    l.thinVolBefore = f.thinned ? formatNumber(f.thinVolBefore, "0.0") : na;
    l.thinVolAfter = f.thinned ? formatNumber(f.thinVolAfter, "0.0") : na;
    return l;
}

// ---- The fields ------------------------------------------------------------------------------

std::string findAgeText(const Model& m, const YieldView& view, int index) {
    if (!onView(m, view)) return {};
    const PolyCalc& c = m.PolyC.at(at(view.YieldPoly));
    const ProjectSettings& s = m.Settings;
    const auto t = at(view.YieldModel);
    switch (index) {
        case 0:
            return c.MINCUTDBH.at(t) == -1.0f ? bracketed(formatNumber(s.MINDIA, ""))
                                              : formatNumber(c.MINCUTDBH[t], "");
        case 1:
            return c.MINCUTVOL.at(t) == -1.0f ? bracketed(formatNumber(s.MINVOL, ""))
                                              : formatNumber(c.MINCUTVOL[t], "");
        case 2:
            return c.MINCUTAGE.at(t) == -1 ? bracketed(ageText(s.MINAGE)) : ageText(c.MINCUTAGE[t]);
        default:
            throw ArborexError(ErrSubscript);
    }
}

std::string harvestRateText(const Model& m, const YieldView& view) {
    if (!editsTarget(m, view)) return {};
    const int16_t target = m.Poly[at(view.YieldPoly)].HAR[at(view.YieldMgnt)];
    return target == -1 ? bracketed(ageText(harvAgeOf(m, view).HarvestAge)) : ageText(target);
}

std::string txtFindAge_LostFocus(Model& m, const YieldView& view, int index,
                                 std::string_view text) {
    if (!onView(m, view)) return {};
    if (index < 0 || index > 2) throw ArborexError(ErrSubscript);
    PolyCalc& c = m.PolyC.at(at(view.YieldPoly));
    const auto t = at(view.YieldModel);
    const std::optional<double> number = typedNumber(text);
    if (index == 0) c.MINCUTDBH.at(t) = number ? toF4(*number) : -1.0f;
    if (index == 1) c.MINCUTVOL.at(t) = number ? toF4(*number) : -1.0f;
    if (index == 2) c.MINCUTAGE.at(t) = number ? toI2(*number) : int16_t{-1};
    CalcCutAge(m, view.YieldPoly, view.YieldModel);
    return findAgeText(m, view, index);
}

std::string txtHarvestRate_LostFocus(Model& m, const YieldView& view, std::string_view text) {
    if (!editsTarget(m, view)) return {};
    const std::optional<double> number = typedNumber(text);
    m.Poly.at(at(view.YieldPoly)).HAR.at(at(view.YieldMgnt)) = number ? toI2(*number) : -1;
    return harvestRateText(m, view);
}

std::string updnHarvestAge_Click(Model& m, const YieldView& view, int16_t step) {
    if (!editsTarget(m, view)) return {};
    const int16_t target = m.Poly[at(view.YieldPoly)].HAR[at(view.YieldMgnt)];
    if (target == -1) return setTarget(m, view, harvAgeOf(m, view).HarvestAge);
    return setTarget(m, view, toI2(target + step));
}

std::optional<int16_t> picGraph_MouseDown(Model& m, const YieldView& view, double x) {
    if (!editsTarget(m, view)) return std::nullopt;
    const int16_t age = yieldAgeAt(m, view.YieldModel, x);
    setTarget(m, view, age);
    return age;
}

}  // namespace arborex
