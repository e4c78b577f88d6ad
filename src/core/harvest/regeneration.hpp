#pragma once
// The stands that follow a cut: the successor block, NSR ground restocking, commercial thins.

#include "harvest/calc_session.hpp"

namespace arborex {

// Appends the successor of block b to BlockList and links it as b's NextBlock.
void PlantBlock(CalcSession& s, int16_t block);
// Restocks every NSR block whose time has come.
void NSR(CalcSession& s, int16_t mode);
// Takes every commercial thin that is due, before any block of the year.
void CommercialThin(CalcSession& s, int16_t mode);

}  // namespace arborex
