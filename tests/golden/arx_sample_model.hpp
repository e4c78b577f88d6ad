#pragma once
// A small project for tests of the project file, and a check of the model's array sizes.

#include <string>

#include "model/model.hpp"

namespace arborex::test {

// A small project in which the fields of every record hold their own non-zero values, so that
// a field written at the wrong place or in the wrong width shows: three polygons named
// "093G045 1234", "ABC_12" and "ABCDEFGHIJ"; VDYP curves of five rows (ages 2 to 6 by 1) and
// TIPSY curves of three (ages 5 to 25 by 10); a harvest order of three; and a saved calculation
// whose arrays hold exactly the elements their bounds promise (blocks 0..2, roads 1..3, cuts
// 1..2, years 0..2). The TIPSY version is "3.2m" and the stamp the program's own.
Model distinctModel();

// Gives the sample's polygons the names that a save below 3001 makes of theirs: an 8-character
// map sheet and a 4-character polygon number.
void setOldFormNames(Model& m);

// Empty when the model's per-polygon arrays and curve grids agree with LastPoly and YieldRows;
// otherwise what disagrees.
std::string polygonArrayMismatch(const Model& m);

}  // namespace arborex::test
