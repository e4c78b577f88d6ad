#pragma once
// Byte layouts of the project file's records, one reader and one writer each, field by field
// in file order with no padding.

#include "model/binary_io.hpp"
#include "model/calc_state.hpp"
#include "model/records.hpp"

namespace arborex::arx {

void write(ByteWriter& w, const ProjectHeader& h);  // 242 bytes
void read(ByteReader& r, ProjectHeader& h);

void writeSettings(ByteWriter& w, const ProjectSettings& s);  // 150 bytes, version 200 on
void readSettings(ByteReader& r, ProjectSettings& s);
void writeSecondSettings(ByteWriter& w, const ProjectSettings& s);  // 88 bytes, 290 on
void readSecondSettings(ByteReader& r, ProjectSettings& s);
void writeSettings111(ByteWriter& w, const ProjectSettings& s);  // 134 bytes, 111..199
void readSettings111(ByteReader& r, ProjectSettings& s);
void writeSettingsOldest(ByteWriter& w, const ProjectSettings& s);  // 16 bytes, below 111
void readSettingsOldest(ByteReader& r, ProjectSettings& s);

void write(ByteWriter& w, const PolyData& p);  // 177 bytes
void read(ByteReader& r, PolyData& p);
void write(ByteWriter& w, const PolyCalc& p);  // 54 bytes
void read(ByteReader& r, PolyCalc& p);
void write(ByteWriter& w, const PolyMgmt& p);  // 96 bytes
void read(ByteReader& r, PolyMgmt& p);
void write(ByteWriter& w, const HarvAgeRec& h);  // 14 bytes
void read(ByteReader& r, HarvAgeRec& h);

// Yield rows: 10 bytes (tenths as i2, MAI f4) from version 290; 16 bytes of four f4 in real
// units before. Mix rows: 12 bytes of six i2; 24 bytes of six f4 in real units before 290.
void writeOld(ByteWriter& w, const YieldRow& row);
// Whole curves of the 290-and-later layout.
void writeRows(ByteWriter& w, const YieldRow* rows, int count);
void readRows(ByteReader& r, YieldRow* rows, int count);
void writeMixRows(ByteWriter& w, const MixRow* rows, int count);
void readMixRows(ByteReader& r, MixRow* rows, int count);
void writeOldMix(ByteWriter& w, const MixRow& row);
inline constexpr std::size_t kOldYieldRowSize = 16;
inline constexpr std::size_t kOldMixRowSize = 24;

void writeRecordA(ByteWriter& w, const CalcInputs& c);  // 26 bytes
void readRecordA(ByteReader& r, CalcInputs& c);
void writeFlags(ByteWriter& w, const CalcInputs& c);  // 10 x i2
void readFlags(ByteReader& r, CalcInputs& c);
void writeRecordB(ByteWriter& w, const CalcInputs& c);  // 402 bytes
void readRecordB(ByteReader& r, CalcInputs& c);

void write(ByteWriter& w, const Block& b);  // 42 bytes
void read(ByteReader& r, Block& b);
void write(ByteWriter& w, const RoadRec& x);  // 14 bytes
void read(ByteReader& r, RoadRec& x);
void write(ByteWriter& w, const CutRec& c);  // 44 bytes
void read(ByteReader& r, CutRec& c);
void write(ByteWriter& w, const YearRec& y);  // 258 bytes
void read(ByteReader& r, YearRec& y);

}  // namespace arborex::arx
