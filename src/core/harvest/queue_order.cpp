#include "harvest/queue_order.hpp"

#include <cstdlib>
#include <random>
#include <utility>

#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/messages.hpp"
#include "base/numeric.hpp"
#include "harvest/rate_search.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex {

namespace {

enum Management : int16_t { VdypStand = 0, TipsyStand = 1, NcStand = 2, NsrStand = 3 };

constexpr int16_t kLeadSpeciesSort = 6;
constexpr int16_t kRightButton = 2;

std::vector<OrderRow>& orderList(CalcScreen& screen, int index) {
    if (index != ExcludedList && index != IncludedList)
        throw ArborexError(ErrSubscript, "order list " + std::to_string(index));
    return screen.lstCutOrder[static_cast<std::size_t>(index)];
}

const PolyData& polyOf(const Model& m, int p) {
    return m.Poly.at(static_cast<std::size_t>(p));
}

void tellPlain(CalcSession& s, const std::string& text) {
    s.prompt.tell(kProgramTitle, text);
}

bool startsWithStar(const OrderRow& row) {
    return !row.text.empty() && row.text.front() == '*';
}

char ownershipLetter(const Model& m, int16_t ownership) {
    if (ownership < 0 || ownership > 3) return ' ';
    return m.Ref.OwnershipCodes[static_cast<std::size_t>(ownership)];
}

const HarvAgeRec& existingHarvAge(const Model& m, int16_t p) {
    const int16_t mgnt = polyOf(m, p).MGNT[0];
    if (mgnt != VdypStand && mgnt != TipsyStand)
        throw ArborexError(ErrSubscript, "curve model " + std::to_string(mgnt));
    return m.HarvAge.at(static_cast<std::size_t>(p))[static_cast<std::size_t>(mgnt)];
}

float existingSiteIndex(const PolyData& poly) {
    return poly.MGNT[0] == TipsyStand ? poly.TSICALC : poly.VSICALC;
}

// How far the stand is past its target age, negative while it still has years to wait. NC and
// NSR stands wait out their restocking delay, so one restocking at once stands level with a
// stand exactly at harvest age.
int16_t yearsPastTarget(const Model& m, int16_t p) {
    const PolyData& poly = polyOf(m, p);
    const PolyMgmt& mgmt = m.PolyM.at(static_cast<std::size_t>(p));
    switch (poly.MGNT[0]) {
        case NsrStand:
            return toI2(-static_cast<int>(mgmt.NSRRESTOCKIN));
        case NcStand:
            return toI2(-static_cast<int>(mgmt.NCRESTOCKIN));
        default:
            return toI2(static_cast<int>(poly.AGE) - targetHarvestAge(m, p, 0));
    }
}

int16_t randomKey() {
    // Never seeded on purpose: two random sorts in one session differ, while a fresh start of
    // the program repeats the same sequence of orders.
    static std::mt19937 generator;
    static std::uniform_real_distribution<float> unit(0.0f, 1.0f);
    const float scaled = unit(generator) * 1000.0f;
    return toI2(static_cast<double>(scaled));
}

int16_t sortKey(const Model& m, int16_t p, int16_t index) {
    const PolyData& poly = polyOf(m, p);
    const bool grown = poly.MGNT[0] == VdypStand || poly.MGNT[0] == TipsyStand;
    switch (index) {
        case 0:
            return poly.AGE;
        case 1:
            return yearsPastTarget(m, p);
        case 2:
            return randomKey();
        case 3:
            return toI2(-static_cast<int>(poly.AGE));
        case 4: {
            if (!grown) return 0;
            const float scaled = existingHarvAge(m, p).MaxMAI * 1000.0f;
            return toI2(static_cast<double>(scaled));
        }
        case 5: {
            if (!grown) return 0;
            const float scaled = existingSiteIndex(poly) * 10.0f;
            return toI2(static_cast<double>(scaled));
        }
        default:
            throw ArborexError(ErrSubscript, "sort entry " + std::to_string(index));
    }
}

int16_t orderColumnOfSort(int16_t index) {
    static constexpr int16_t kColumns[] = {0, 0, 0, 0, 1, 2, 3};
    return kColumns[index];
}

// The lead species in order of first appearance in CutOrder, one entry per trimmed text.
std::vector<std::string> proposedSpeciesRanking(const Model& m) {
    std::vector<std::string> ranking;
    for (int i = 0; i <= m.CutOrderLast; ++i) {
        const std::string species = leadSpecies(m, m.CutOrder.at(static_cast<std::size_t>(i)));
        bool present = false;
        for (const std::string& entry : ranking) present = present || trim(entry) == trim(species);
        if (!present) ranking.push_back(species);
    }
    return ranking;
}

// Minus the species' place in the ranking, so that the top species sorts first; a species
// missing from the ranking has place -1 and so sorts ahead of all of them.
void keysFromRanking(Model& m, const std::vector<std::string>& ranking) {
    for (int i = 0; i <= m.CutOrderLast; ++i) {
        const std::string species =
            trim(leadSpecies(m, m.CutOrder.at(static_cast<std::size_t>(i))));
        int position = -1;
        for (std::size_t r = 0; r < ranking.size() && position < 0; ++r)
            if (trim(ranking[r]) == species) position = static_cast<int>(r);
        m.CutOrderKey.at(static_cast<std::size_t>(i)) = toI2(-position);
    }
}

}  // namespace

std::string orderTitle(int16_t orderColumn) {
    switch (orderColumn) {
        case 0:
            return " O Polygon              Age      Avail For    Area (ha)";
        case 1:
            return " O Polygon            MAI Max   Avail For    Area (ha)";
        case 2:
            return " O Polygon              SI       Avail For    Area (ha)";
        case 3:
            return " O Polygon          Lead Sp.   Avail For    Area (ha)";
        default:
            return {};
    }
}

std::string leadSpecies(const Model& m, int16_t polygon) {
    const PolyData& poly = polyOf(m, polygon);
    switch (poly.MGNT[0]) {
        case VdypStand:
            return poly.VS[0].raw();
        case TipsyStand:
            return poly.TS[0].raw();
        case NcStand:
            return "NC";
        case NsrStand:
            return "NSR";
        default:
            return {};
    }
}

void SetCutOrder(CalcSession& s) {
    const std::vector<OrderRow>& included = orderList(s.screen, IncludedList);
    s.m.CutOrderLast = toI2(static_cast<long long>(included.size()) - 1);
    s.run.IncludedLast = -1;
    s.run.IncludedPoly.clear();
    if (included.empty()) return;
    // The keys are kept, not cleared: a cancelled lead species ranking sorts on them again.
    s.m.CutOrder.resize(included.size());
    s.m.CutOrderKey.resize(included.size());
    for (std::size_t i = 0; i < included.size(); ++i) {
        const int16_t p = included[i].polygon;
        s.m.CutOrder[i] = p;
        const int16_t ownership = s.m.PolyC.at(static_cast<std::size_t>(p)).OWNERSHIP;
        if (ownership < 0 || ownership > 3) continue;
        if (!s.screen.chkCut[static_cast<std::size_t>(ownership)]) continue;
        s.run.IncludedPoly.push_back(p);
        s.run.IncludedLast = toI2(static_cast<int>(s.run.IncludedLast) + 1);
    }
}

void ShowPolygonOrder(CalcSession& s, int16_t warn) {
    s.screen.lstCutOrder[ExcludedList].clear();
    s.screen.lstCutOrder[IncludedList].clear();
    std::string errors;
    if (s.m.CutOrderLast != -1) {
        std::vector<bool> inOrder(static_cast<std::size_t>(s.m.LastPoly + 1), false);
        for (int i = 0; i <= s.m.CutOrderLast; ++i) {
            const int16_t p = s.m.CutOrder.at(static_cast<std::size_t>(i));
            if (p < 0 || p > s.m.LastPoly) continue;  // a polygon that no longer exists
            inOrder[static_cast<std::size_t>(p)] = true;
            int16_t list = IncludedList;
            AddPolyToSort(s, p, list, errors);
        }
        for (int p = 0; p <= s.m.LastPoly; ++p) {
            if (inOrder[static_cast<std::size_t>(p)]) continue;
            int16_t list = ExcludedList;
            AddPolyToSort(s, static_cast<int16_t>(p), list, errors);
        }
    } else {
        setSortMethod(s, -1);
        for (int p = 0; p <= s.m.LastPoly; ++p) {
            int16_t list = IncludedList;
            AddPolyToSort(s, static_cast<int16_t>(p), list, errors);
        }
        SetCutOrder(s);
    }
    if (!errors.empty() && warn != 0)
        nmsgbox(s.m.Messages, s.prompt, "&NOYIELD", errors, "Missing Yield Data....", MsgOk, 0,
                s.m.MsgResult);
}

void AddPolyToSort(CalcSession& s, int16_t polygon, int16_t& list, std::string& errors) {
    const auto p = static_cast<std::size_t>(polygon);
    const PolyData& poly = polyOf(s.m, polygon);
    PolyCalc& calc = s.m.PolyC.at(p);
    if (calc.DELETE != 0) return;

    const int16_t existing = poly.MGNT[0];
    const int16_t future = poly.MGNT[1];
    const std::size_t before = errors.size();
    const auto addError = [&](const char* reason) {
        errors += poly.NAME.str() + "\t" + reason + "\n";
    };
    if (poly.AREA <= 0.0f) addError(" - Area is 0 ha");
    if (poly.YIELDSTATE[0] < 3 && !(existing != 0 && future != 0))
        addError(" - VDYP Required and not Current");
    if (poly.YIELDSTATE[1] < 3 && (existing == 1 || future == 1))
        addError(" - TIPSY Required and not Current");
    const bool failed = errors.size() != before;

    std::string value;
    if (existing == NcStand) {
        value = "NC";
    } else if (existing == NsrStand) {
        value = "NSR";
    } else {
        switch (s.m.Calc.inputs.OrderColumn) {
            case 0:
                value = formatNumber(static_cast<int>(poly.AGE), "0");
                break;
            case 1:
                value = formatNumber(existingHarvAge(s.m, polygon).MaxMAI, "0.00");
                break;
            case 2:
                value = formatNumber(existingSiteIndex(poly), "0.0");
                break;
            case 3:
                value = leadSpecies(s.m, polygon);
                break;
            default:
                break;
        }
    }
    const std::string availFor = formatNumber(static_cast<int>(yearsPastTarget(s.m, polygon)), "0");
    const std::string text = std::string(1, ownershipLetter(s.m, calc.OWNERSHIP)) + " " +
                             poly.NAME.raw() + "\t" + value + "   \t" + availFor + "   \t" +
                             formatNumber(poly.AREA, "0.0");

    if (!failed) {
        calc.SORT = 1;
        orderList(s.screen, list).push_back({text, polygon});
    } else {
        // The "*" is what refuses the row a place in the included list later on.
        calc.SORT = 0;
        list = ExcludedList;
        orderList(s.screen, ExcludedList).push_back({"*" + text, polygon});
    }
}

void setSortMethod(CalcSession& s, int16_t method) {
    s.m.Calc.inputs.SortMethod = method;
}

void sortCutOrder(Model& m) {
    const int last = m.CutOrderLast;
    if (last < 1) return;
    auto& order = m.CutOrder;
    auto& keys = m.CutOrderKey;
    if (order.size() < static_cast<std::size_t>(last + 1) ||
        keys.size() < static_cast<std::size_t>(last + 1))
        throw ArborexError(ErrSubscript, "CutOrder");
    // Swapping only on a strict difference keeps rows of equal keys in their order.
    bool swapped = true;
    while (swapped) {
        swapped = false;
        for (int i = 0; i < last; ++i) {
            const auto row = static_cast<std::size_t>(i);
            if (keys[row] < keys[row + 1]) {
                std::swap(keys[row], keys[row + 1]);
                std::swap(order[row], order[row + 1]);
                swapped = true;
            }
        }
    }
}

void mniSort_Click(CalcSession& s, int16_t index, const SpeciesRanking& rankSpecies) {
    if (index < 0 || index > kLeadSpeciesSort)
        throw ArborexError(ErrSubscript, "sort entry " + std::to_string(index));
    ReCalc(s, -1);
    const std::vector<OrderRow>& included = orderList(s.screen, IncludedList);
    s.m.CutOrderLast = toI2(static_cast<long long>(included.size()) - 1);
    if (s.m.CutOrderLast == -1) {
        tellPlain(s, "No Polygons are selected to be cut");
        return;
    }
    SetCutOrder(s);
    setSortMethod(s, index);
    s.m.Calc.inputs.OrderColumn = orderColumnOfSort(index);
    if (index == kLeadSpeciesSort) {
        // A cancelled ranking still sorts, on the keys of the sort before: users have seen
        // that order change and it is kept so.
        if (rankSpecies) {
            const auto ranking = rankSpecies(proposedSpeciesRanking(s.m));
            if (ranking) keysFromRanking(s.m, *ranking);
        }
    } else {
        for (int i = 0; i <= s.m.CutOrderLast; ++i) {
            const auto row = static_cast<std::size_t>(i);
            s.m.CutOrderKey.at(row) = sortKey(s.m, s.m.CutOrder.at(row), index);
        }
    }
    sortCutOrder(s.m);
    ShowPolygonOrder(s, 0);
}

void mniSortDefault_Click(CalcSession& s) {
    ReCalc(s, -1);
    s.m.CutOrderLast = -1;
    ShowPolygonOrder(s, 0);
}

void mniSortCustom_Click(CalcSession& s) {
    tellPlain(s,
              "Use the 'Top', 'Up', 'Down' and 'Bottom' buttons next to the harvest order list to "
              "adjust your sort order manually");
}

int cmdMove_Click(CalcSession& s, int16_t index, int selectedRow) {
    if (index < 0 || index > 3) throw ArborexError(ErrSubscript, "move " + std::to_string(index));
    setSortMethod(s, -2);
    ReCalc(s, -1);
    std::vector<OrderRow>& included = orderList(s.screen, IncludedList);
    const int count = static_cast<int>(included.size());
    if (selectedRow < 0 || selectedRow >= count) return selectedRow;
    const int target = index == 0   ? 0
                       : index == 1 ? selectedRow - 1
                       : index == 2 ? selectedRow + 1
                                    : count - 1;
    if (target < 0 || target >= count) return selectedRow;
    const OrderRow row = included[static_cast<std::size_t>(selectedRow)];
    included.erase(included.begin() + selectedRow);
    included.insert(included.begin() + target, row);
    return target;
}

void lstCutOrder_DblClick(CalcSession& s, int16_t index, int row) {
    std::vector<OrderRow>& from = orderList(s.screen, index);
    if (row < 0 || row >= static_cast<int>(from.size())) return;
    ReCalc(s, -1);
    if (startsWithStar(from[static_cast<std::size_t>(row)])) {
        tellPlain(s,
                  "This polygon contains an error and can't be added to the 'Included Blocks' "
                  "section");
        return;
    }
    orderList(s.screen, std::abs(index - 1)).push_back(from[static_cast<std::size_t>(row)]);
    from.erase(from.begin() + row);
}

void lstCutOrder_MouseUp(CalcSession& s, int16_t index, int16_t button) {
    if (button != kRightButton) return;
    ReCalc(s, -1);
    std::vector<OrderRow>& from = orderList(s.screen, index);
    std::vector<OrderRow>& to = orderList(s.screen, std::abs(index - 1));
    // Walking upward hands the rows over in reverse order; a second move restores it.
    for (int r = static_cast<int>(from.size()) - 1; r >= 0; --r) {
        const auto row = static_cast<std::size_t>(r);
        if (startsWithStar(from[row])) continue;
        to.push_back(from[row]);
        from.erase(from.begin() + r);
    }
}

void mnuInclude_Click(CalcSession& s, int16_t index) {
    lstCutOrder_MouseUp(s, index, kRightButton);
}

}  // namespace arborex
