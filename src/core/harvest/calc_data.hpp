#pragma once
// The calculation screen's inputs as the project keeps them (Model::Calc.inputs), to and from
// the screen's fields.

#include "harvest/calc_session.hpp"

namespace arborex {

// From the fields to the saved inputs; numeric fields are read and rounded to whole numbers,
// so a field holding text saves as 0.
void SaveCalcData(CalcSession& s);
// From the saved inputs to the fields, sort method first, then the rate of the saved kind.
void LoadCalcData(CalcSession& s);
// chkArea's handler: AreaRun and the saved rate of that kind in txtVolToCut.
void chkArea_Click(CalcSession& s);

}  // namespace arborex
