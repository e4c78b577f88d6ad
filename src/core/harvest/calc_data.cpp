#include "harvest/calc_data.hpp"

#include "base/display_format.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "harvest/queue_order.hpp"

namespace arborex {

namespace {

enum ConstraintBit : int16_t { NetDownBit = 1, HeightBit = 2, AgeBit = 4 };

int16_t boxValue(bool ticked) {
    return ticked ? 1 : 0;
}

std::string wholeText(int value) {
    return formatNumber(value, "0");
}

}  // namespace

void SaveCalcData(CalcSession& s) {
    const CalcScreen& f = s.screen;
    CalcInputs& in = s.m.Calc.inputs;
    in.ConstraintBits =
        static_cast<int16_t>((f.chkConNetDown ? NetDownBit : 0) | (f.chkConHeight ? HeightBit : 0) |
                             (f.chkConAge ? AgeBit : 0));
    in.SavedNetDown = fieldWhole(f.txtNetDown);
    in.SavedHeight = fieldWhole(f.txtHeight);
    in.SavedAge = fieldWhole(f.txtAge);
    in.SavedHeightPerc = fieldWhole(f.txtHeightPerc);
    in.SavedAgePerc = fieldWhole(f.txtAgePerc);
    in.SavedStartIn = toI4(tolerantNumber(f.txtStartIn));
    in.SavedCalcYears = boxValue(f.chkCalcYears);
    in.SavedCalcRate = boxValue(f.chkCalcRate);
    for (std::size_t i = 0; i < in.SavedCut.size(); ++i) in.SavedCut[i] = boxValue(f.chkCut[i]);
    in.SavedDisPC = boxValue(f.chkDisPC);
    in.SavedHarvGap = fieldWhole(f.txtHarvGap);
    in.SavedNoHarv = fieldWhole(f.txtNoHarv);
    in.SavedWithin = fieldWhole(f.txtWithin);
    in.SavedConifer = boxValue(f.chkConifer);
}

void LoadCalcData(CalcSession& s) {
    CalcScreen& f = s.screen;
    const CalcInputs& in = s.m.Calc.inputs;
    setSortMethod(s, in.SortMethod);
    f.chkArea = in.AreaRunSaved != 0;
    chkArea_Click(s);
    // An unset bit leaves the box as the screen was designed, so that nothing here unticks it.
    if ((in.ConstraintBits & NetDownBit) != 0) f.chkConNetDown = true;
    if ((in.ConstraintBits & HeightBit) != 0) f.chkConHeight = true;
    if ((in.ConstraintBits & AgeBit) != 0) f.chkConAge = true;
    f.txtNetDown = wholeText(in.SavedNetDown);
    f.txtHeight = wholeText(in.SavedHeight);
    f.txtAge = wholeText(in.SavedAge);
    f.txtHeightPerc = wholeText(in.SavedHeightPerc);
    f.txtAgePerc = wholeText(in.SavedAgePerc);
    f.txtStartIn = wholeText(in.SavedStartIn);
    f.chkCalcYears = in.SavedCalcYears != 0;
    f.chkCalcRate = in.SavedCalcRate != 0;
    for (std::size_t i = 0; i < in.SavedCut.size(); ++i) f.chkCut[i] = in.SavedCut[i] != 0;
    f.chkDisPC = in.SavedDisPC != 0;
    f.txtHarvGap = wholeText(in.SavedHarvGap);
    f.txtNoHarv = wholeText(in.SavedNoHarv);
    f.txtWithin = wholeText(in.SavedWithin);
    f.chkConifer = in.SavedConifer != 0;
}

void chkArea_Click(CalcSession& s) {
    s.run.AreaRun = s.screen.chkArea;
    // The two rates are kept apart, so switching back and forth shows each as it was.
    const CalcInputs& in = s.m.Calc.inputs;
    s.screen.txtVolToCut = s.run.AreaRun ? formatNumber(in.SavedAreaRate, "0.000")
                                         : formatNumber(static_cast<int>(in.SavedVolRate), "0");
    s.observer.rateShown(s.screen.txtVolToCut);
}

std::string rateUnit(bool areaRun) {
    return areaRun ? "ha/yr" : "m\xb3/yr";
}

}  // namespace arborex
