#pragma once
// log.txt: with the /LOG option, a final run's trail of every cutting step.

#include "harvest/calc_session.hpp"

namespace arborex {

// Opens "log.txt" in the user's documents folder (Paths[2]), replacing an older one, and
// writes its heading. Only when m.LogMode is on.
void openCalcLog(CalcSession& s);
// One line for block b after a cutting step in `year`; nothing when no log is open.
void addtolog(CalcSession& s, int16_t year, int16_t block);
// The closing lines; the log is closed. Only with m.LogMode and a log open.
void closeCalcLog(CalcSession& s);

}  // namespace arborex
