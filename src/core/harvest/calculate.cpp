#include "harvest/calculate.hpp"

#include <cstdlib>
#include <string>

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/messages.hpp"
#include "base/min_max.hpp"
#include "base/number_text.hpp"
#include "harvest/calc_log.hpp"
#include "harvest/hanzlik.hpp"
#include "harvest/queue_order.hpp"
#include "harvest/rate_search.hpp"
#include "harvest/simulation.hpp"
#include "yield/curves.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex {

namespace {

const PolyData& polygonOf(const CalcSession& s, int i) {
    const int p = s.run.IncludedPoly.at(static_cast<std::size_t>(i));
    return s.m.Poly.at(static_cast<std::size_t>(p));
}

// Polygons cut once only, because their future curve has no volume at their next harvest age.
void warnNoSecondHarvest(CalcSession& s) {
    std::string list;
    int count = 0;
    for (int i = 0; i <= s.run.IncludedLast; ++i) {
        const int p = s.run.IncludedPoly.at(static_cast<std::size_t>(i));
        const PolyData& poly = s.m.Poly.at(static_cast<std::size_t>(p));
        if (poly.SILVI != 0) continue;
        const int16_t age = targetHarvestAge(s.m, p, 1);
        if (FindVol(s.m, poly.MGNT[1], age, static_cast<int16_t>(p)) != 0.0f) continue;
        ++count;
        list += poly.NAME.str() + "  " + formatNumber(static_cast<int>(age), "0") + "\r\n";
    }
    if (list.empty()) return;
    nmsgbox(s.m.Messages, s.prompt,
            std::to_string(count) +
                " Polygon(s) have a 0m\xb3 volume at their subsequent harvest age.  They will "
                "only be harvested on the first rotation.",
            list, "Error", MsgOk, 0, s.m.MsgResult);
}

void warnMissingPartialCut(CalcSession& s) {
    int count = 0;
    for (int i = 0; i <= s.run.IncludedLast; ++i) {
        const PolyData& poly = polygonOf(s, i);
        if (poly.SILVI == 1 && (poly.PCPERC == 0 || poly.PCNEXT == 0)) ++count;
    }
    if (count == 0) return;
    // "Polygon1(s)" is how users have always read this warning.
    s.prompt.tell(kProgramTitle,
                  std::to_string(count) +
                      " Polygon1(s) are missing Partial Cut Parameters.  These parameters will be "
                      "run with the default PC settings as set in the Harvest Parameters box");
}

// Years until the first stand of a harvested management reaches its harvest age; 0 when one
// is ripe already, 1000 when no polygon is harvested at all.
int firstHarvestableYear(const CalcSession& s) {
    int latest = -1000;
    for (int i = 0; i <= s.run.IncludedLast; ++i) {
        const int p = s.run.IncludedPoly.at(static_cast<std::size_t>(i));
        const PolyData& poly = s.m.Poly.at(static_cast<std::size_t>(p));
        if (poly.MGNT[0] != 0 && poly.MGNT[0] != 1) continue;
        const int ripeness = poly.AGE - targetHarvestAge(s.m, p, 0);
        if (ripeness > latest) latest = ripeness;
    }
    return latest < 1 ? std::abs(latest) : 0;
}

}  // namespace

bool cmdCalculate(CalcSession& s) {
    Model& m = s.m;
    CalcScreen& screen = s.screen;
    CalcRun& run = s.run;
    run.AreaRun = screen.chkArea;

    if (m.LogMode) openCalcLog(s);
    // A refused calculation leaves the tables of the last run; its log is closed at once.
    const auto refuse = [&](const std::string& text) {
        s.prompt.tell(kProgramTitle, text);
        closeCalcLog(s);
        return false;
    };

    m.Calc.CalcHorizon = m.Settings.PLANHORZ;
    run.FirstSetup = true;
    run.Relax = fieldWhole(screen.txtRelax);
    run.Period = fieldWhole(screen.txtPeriod);
    m.Calc.inputs.Text2 = "";
    m.Calc.inputs.Text3 = "";

    bool anyOwnership = false;
    for (const bool ticked : screen.chkCut) anyOwnership = anyOwnership || ticked;
    if (!anyOwnership)
        return refuse(
            "Please select which ownership(s) to harvest by placing checks in the harvest "
            "boxes.");

    SetCutOrder(s);
    if (m.CutOrderLast == -1) return refuse("No Polygons selected");
    if (run.IncludedLast == -1)
        return refuse("No polygons to harvest with selected Harvest Ownership.");

    if (m.Settings.PCnext == 0) m.Settings.PCnext = 20;
    if (m.Settings.PCperc == 0) m.Settings.PCperc = 20;
    if (!screen.chkDisPC) {
        warnNoSecondHarvest(s);
        warnMissingPartialCut(s);
    }

    minMax(screen.txtNetDown, 0.0f, 99.0f, 0);
    float hanzlik = 0.0f;
    CalcHanzlik(s, hanzlik);
    run.HanzlikRate = hanzlik;

    const int waitYears = firstHarvestableYear(s);
    if (screen.chkCalcYears) screen.txtStartIn = formatNumber(waitYears, "0");
    run.DelayYears = fieldWhole(screen.txtStartIn);

    const int16_t horizon = m.Settings.PLANHORZ;
    if (waitYears >= horizon)
        return refuse("Nothing will be harvestable durring the planning horizon of " +
                      std::to_string(horizon) + " years.");
    if (run.DelayYears >= horizon)
        return refuse("The 'Delay Harvest For n Years' must be less that the planning horizon of " +
                      std::to_string(horizon) + " years.");

    // A delimited report always runs at the rate in the field.
    if (screen.chkCalcRate && run.ReportEvery == 0) {
        Auto(s);
    } else {
        run.HarvestRate = static_cast<float>(tolerantNumber(screen.txtVolToCut));
        int16_t failed = 0;
        AVAC(s, kFinalRun, failed);
    }

    m.Calc.inputs.AreaRunSaved = screen.chkArea ? 1 : 0;
    ReCalc(s, 0);
    closeCalcLog(s);
    return true;
}

}  // namespace arborex
