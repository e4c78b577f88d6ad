#pragma once
// The calculation screen's inputs as the project keeps them (Model::Calc.inputs), to and from
// the screen's fields.

#include <string>

#include "harvest/calc_session.hpp"

namespace arborex {

// From the fields to the saved inputs; numeric fields are read and rounded to whole numbers,
// so a field holding text saves as 0. The saved rates and AreaRunSaved belong to the last
// calculation and are left alone.
void SaveCalcData(CalcSession& s);
// From the saved inputs to the fields, sort method first, then the rate of the saved kind. A
// constraint box is ticked when its bit is set and otherwise left as it is.
void LoadCalcData(CalcSession& s);
// chkArea's handler: AreaRun and the saved rate of that kind in txtVolToCut.
void chkArea_Click(CalcSession& s);
// The unit shown beside the rate (lbl(0)): "ha/yr" or "m³/yr", as Latin-1 text.
std::string rateUnit(bool areaRun);

}  // namespace arborex
