#include "golden/arx_layout.hpp"

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace arborex::test {

namespace {

template <typename T>
T getLE(const Bytes& bytes, std::size_t at) {
    if (at + sizeof(T) > bytes.size()) throw std::out_of_range("field past the end of the bytes");
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < sizeof(T); ++i)
        bits |= static_cast<std::uint64_t>(bytes[at + i]) << (8 * i);
    T value;
    if constexpr (sizeof(T) == 2) {
        auto narrow = static_cast<std::uint16_t>(bits);
        std::memcpy(&value, &narrow, 2);
    } else if constexpr (sizeof(T) == 4) {
        auto narrow = static_cast<std::uint32_t>(bits);
        std::memcpy(&value, &narrow, 4);
    } else {
        std::memcpy(&value, &bits, 8);
    }
    return value;
}

template <typename T>
void putLE(std::uint8_t* out, T value) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof(T));
    for (std::size_t i = 0; i < sizeof(T); ++i)
        out[i] = static_cast<std::uint8_t>((bits >> (8 * i)) & 0xFF);
}

std::string hex(const Bytes& bytes, std::size_t at, std::size_t size) {
    std::string out;
    char cell[4];
    for (std::size_t i = 0; i < size && at + i < bytes.size(); ++i) {
        std::snprintf(cell, sizeof cell, "%02X", bytes[at + i]);
        out += cell;
    }
    return out.empty() ? "(missing)" : out;
}

std::string indexed(std::string_view name, int index) {
    return std::string(name) + "[" + std::to_string(index) + "]";
}

// --- Header and settings -------------------------------------------------------------------

void putHeader(ArxImage& img, const ProjectHeader& h, int16_t version) {
    img.beginRecord("ProjectHeader", kHeaderSize);
    img.raw(0, h.FileStamp.raw(), "FileStamp");
    img.raw(32, h.Licence.raw(), "Licence");
    img.raw(64, h.District.raw(), "District");
    img.raw(96, h.Company.raw(), "Company");
    img.raw(128, h.User.raw(), "User");
    img.raw(160, h.Scenario.raw(), "Scenario");
    img.raw(192, h.VDYPVersion.raw(), "VDYPVersion");
    img.raw(208, h.TIPSYVersion.raw(), "TIPSYVersion");
    img.f8(224, h.StartDate, "StartDate");
    img.f8(232, h.LastDate, "LastDate");
    img.i2(240, version, "FileVersion");
}

void putPair(ArxImage& img, std::size_t at, const std::array<int16_t, 2>& pair,
             std::string_view name) {
    img.i2(at, pair[0], indexed(name, 0));
    img.i2(at + 2, pair[1], indexed(name, 1));
}

void putOldColors(ArxImage& img, std::size_t at, const ProjectSettings& s) {
    for (int i = 0; i < 10; ++i)
        img.f8(at + 8 * static_cast<std::size_t>(i), s.OldColors[static_cast<std::size_t>(i)],
               indexed("OldColors", i));
}

void putSettings(ArxImage& img, const ProjectSettings& s) {
    img.beginRecord("Settings", kSettingsSize);
    img.i2(0, s.REGENDELAY, "REGENDELAY");
    img.i2(2, s.PCNETDOWN, "PCNETDOWN");
    img.i2(4, s.PLANHORZ, "PLANHORZ");
    img.f4(6, s.MINVOL, "MINVOL");
    img.f4(10, s.MINDIA, "MINDIA");
    img.i2(14, s.MINAGE, "MINAGE");
    img.i2(16, s.OAF1, "OAF1");
    img.i2(18, s.OAF2, "OAF2");
    img.i2(20, s.PCperc, "PCperc");
    img.i2(22, s.PCnext, "PCnext");
    img.f4(24, s.PCADJUSTFACT, "PCADJUSTFACT");
    img.i2(28, s.PCADJUSTHARVAGE, "PCADJUSTHARVAGE");
    img.i2(30, s.reserved1[0], "reserved30");
    img.f4(32, s.SPLIT, "SPLIT");
    img.i2(36, s.VDYPPSYUB, "VDYPPSYUB");
    img.i2(38, s.reserved1[1], "reserved38");
    img.i2(40, s.TIPSYSITE, "TIPSYSITE");
    img.i2(42, s.TIPSYHEIGHT, "TIPSYHEIGHT");
    img.i2(44, s.NETMAI, "NETMAI");
    img.i2(46, s.USERLEVEL, "USERLEVEL");
    img.i2(48, s.reserved1[2], "reserved48");
    img.i2(50, s.YIELDMODE, "YIELDMODE");
    putPair(img, 52, s.YieldMaxAge, "YieldMaxAge");
    putPair(img, 56, s.YieldMinAge, "YieldMinAge");
    putPair(img, 60, s.YieldIncAge, "YieldIncAge");
    putPair(img, 64, s.YieldRows, "YieldRows");
    img.i2(68, s.YIELDINC, "YIELDINC");
    putOldColors(img, 70, s);
}

void putSecondSettings(ArxImage& img, const ProjectSettings& s) {
    img.beginRecord("SecondSettings", kSecondSettingsSize);
    img.i2(0, s.reserved2[0], "reserved0");
    img.i2(2, s.ALTWBS, "ALTWBS");
    img.i2(4, s.reserved2[1], "reserved4");
    for (int i = 0; i < ColourCount; ++i)
        img.i4(6 + 4 * static_cast<std::size_t>(i), s.COLORS[static_cast<std::size_t>(i)],
               indexed("COLORS", i));
    img.i2(86, s.reserved2[2], "reserved86");
}

void putSettings111(ArxImage& img, const ProjectSettings& s) {
    img.beginRecord("Settings111", kSettings111Size);
    img.i2(0, s.REGENDELAY, "REGENDELAY");
    img.f4(2, s.PCADJUSTFACT, "PCADJUSTFACT");
    img.i2(6, s.PLANHORZ, "PLANHORZ");
    img.f4(8, s.MINVOL, "MINVOL");
    img.f4(12, s.MINDIA, "MINDIA");
    img.i2(16, s.MINAGE, "MINAGE");
    img.i2(18, s.OAF1, "OAF1");
    img.i2(20, s.OAF2, "OAF2");
    img.i2(22, s.PCNETDOWN, "PCNETDOWN");
    img.i2(24, s.VDYPPSYUB, "VDYPPSYUB");
    img.open(26, 2, "reserved26");
    img.i2(28, s.TIPSYSITE, "TIPSYSITE");
    img.i2(30, s.TIPSYHEIGHT, "TIPSYHEIGHT");
    img.i2(32, s.NETMAI, "NETMAI");
    img.i2(34, s.USERLEVEL, "USERLEVEL");
    putPair(img, 36, s.YieldMaxAge, "YieldMaxAge");
    putPair(img, 40, s.YieldMinAge, "YieldMinAge");
    putPair(img, 44, s.YieldIncAge, "YieldIncAge");
    putPair(img, 48, s.YieldRows, "YieldRows");
    img.i2(52, s.YIELDINC, "YIELDINC");
    putOldColors(img, 54, s);
}

void putOldestSettings(ArxImage& img, const ProjectSettings& s) {
    img.beginRecord("OldestSettings", kOldestSettingsSize);
    for (int m = 0; m < 2; ++m) {
        const std::size_t at = 8 * static_cast<std::size_t>(m);
        const auto i = static_cast<std::size_t>(m);
        img.i2(at, s.YieldRows[i], indexed("YieldRows", m));
        img.i2(at + 2, s.YieldMinAge[i], indexed("YieldMinAge", m));
        img.i2(at + 4, s.YieldMaxAge[i], indexed("YieldMaxAge", m));
        img.i2(at + 6, s.YieldIncAge[i], indexed("YieldIncAge", m));
    }
}

// --- Polygon records -----------------------------------------------------------------------

template <std::size_t N>
void putI2s(ArxImage& img, std::size_t at, const std::array<int16_t, N>& values,
            std::string_view name) {
    for (std::size_t i = 0; i < N; ++i) img.i2(at + 2 * i, values[i], indexed(name, int(i)));
}

template <std::size_t N>
void putCodes(ArxImage& img, std::size_t at, const std::array<Code2, N>& codes,
              std::string_view name) {
    for (std::size_t i = 0; i < N; ++i) img.raw(at + 2 * i, codes[i].raw(), indexed(name, int(i)));
}

void putPolyData(ArxImage& img, const PolyData& p, int index) {
    img.beginRecord(indexed("PolyData", index), kPolyDataSize);
    img.raw(0, p.NAME.raw(), "NAME");
    img.f4(12, p.AREA, "AREA");
    img.i2(16, p.AGE, "AGE");
    img.f4(18, p.VUTILIZ, "VUTILIZ");
    img.raw(22, p.FIZ.raw(), "FIZ");
    img.f4(23, p.VSITEINDEX, "VSITEINDEX");
    img.i2(27, p.VAGETOTAL, "VAGETOTAL");
    img.i2(29, p.VHEIGHTTOTAL, "VHEIGHTTOTAL");
    img.i2(31, p.CLOSURE, "CLOSURE");
    img.i2(33, p.PSYU, "PSYU");
    img.raw(35, p.PSYUBLOCK.raw(), "PSYUBLOCK");
    img.f4(36, p.VAF, "VAF");
    img.raw(40, p.STOCKING.raw(), "STOCKING");
    putCodes(img, 41, p.VS, "VS");
    putI2s(img, 53, p.VSIDX, "VSIDX");
    putI2s(img, 65, p.VP, "VP");
    img.f4(77, p.VSICALC, "VSICALC");
    img.f4(81, p.TSICALC, "TSICALC");
    img.raw(85, p.REGION.raw(), "REGION");
    img.raw(87, p.COMP.raw(), "COMP");
    img.raw(90, p.COMPL.raw(), "COMPL");
    img.i4(91, p.DENSITY, "DENSITY");
    img.i4(95, p.THINNED, "THINNED");
    img.i2(99, p.THIN, "THIN");
    img.i2(101, p.TAGETOTAL, "TAGETOTAL");
    img.i2(103, p.REGEN, "REGEN");
    img.i2(105, p.OAF1, "OAF1");
    img.i2(107, p.OAF2, "OAF2");
    putCodes(img, 109, p.TS, "TS");
    putI2s(img, 119, p.TP, "TP");
    putI2s(img, 129, p.TSIDX, "TSIDX");
    putI2s(img, 139, p.TH, "TH");
    putI2s(img, 149, p.TI, "TI");
    img.i2(159, p.SILVI, "SILVI");
    img.i2(161, p.PCPERC, "PCPERC");
    img.i2(163, p.PCNEXT, "PCNEXT");
    putI2s(img, 165, p.HAR, "HAR");
    putI2s(img, 169, p.MGNT, "MGNT");
    putI2s(img, 173, p.YIELDSTATE, "YIELDSTATE");
}

void putPolyCalc(ArxImage& img, const PolyCalc& c, int index) {
    img.beginRecord(indexed("PolyCalc", index), kPolyCalcSize);
    img.i2(0, c.SORT, "SORT");
    img.i2(2, c.LISTROW, "LISTROW");
    img.i2(4, c.EXCLUDE, "EXCLUDE");
    img.i2(6, c.DELETE, "DELETE");
    img.i2(8, c.CALCFLAG, "CALCFLAG");
    img.i2(10, c.OWNERSHIP, "OWNERSHIP");
    img.i2(12, c.REGENDELAY, "REGENDELAY");
    putI2s(img, 14, c.VX, "VX");
    img.f4(26, c.VCCCALC, "VCCCALC");
    img.i2(30, c.CALCA, "CALCA");
    img.i2(32, c.CALCB, "CALCB");
    img.f4(34, c.MINCUTVOL[0], "MINCUTVOL[0]");
    img.f4(38, c.MINCUTVOL[1], "MINCUTVOL[1]");
    img.f4(42, c.MINCUTDBH[0], "MINCUTDBH[0]");
    img.f4(46, c.MINCUTDBH[1], "MINCUTDBH[1]");
    putI2s(img, 50, c.MINCUTAGE, "MINCUTAGE");
}

void putPolyMgmt(ArxImage& img, const PolyMgmt& g, int index) {
    img.beginRecord(indexed("PolyMgmt", index), kPolyMgmtSize);
    img.f4(0, g.ROADAREA, "ROADAREA");
    img.f4(4, g.TUTILIZ, "TUTILIZ");
    img.i2(8, g.NSRRESTOCKIN, "NSRRESTOCKIN");
    img.i2(10, g.NCRESTOCKIN, "NCRESTOCKIN");
    img.raw(12, g.NCDESC.raw(), "NCDESC");
    img.f4(44, g.NCVOLHA, "NCVOLHA");
    img.i2(48, g.NCDECIDUOUS, "NCDECIDUOUS");
    img.i2(50, g.NCHEIGHT, "NCHEIGHT");
    putI2s(img, 52, g.TG, "TG");
    img.i2(62, g.COMTHIN, "COMTHIN");
    img.i2(64, g.CTSTEMHA, "CTSTEMHA");
    img.f4(66, g.CTHEIGHT, "CTHEIGHT");
    putI2s(img, 70, g.TIPSYCACHE, "TIPSYCACHE");
    img.i2(86, g.FERT, "FERT");
    img.f4(88, g.FINCREASE, "FINCREASE");
    img.i2(92, g.FINCTYPE, "FINCTYPE");
    img.i2(94, g.FSTARTYEAR, "FSTARTYEAR");
}

void putHarvAge(ArxImage& img, const HarvAgeRec& h, int polygon, int model) {
    img.beginRecord(indexed(indexed("HarvAge", polygon), model), kHarvAgeSize);
    img.i2(0, h.MaiAge, "MaiAge");
    img.i2(2, h.VolAge, "VolAge");
    img.i2(4, h.DiaAge, "DiaAge");
    img.i2(6, h.ConstraintAge, "ConstraintAge");
    img.i2(8, h.HarvestAge, "HarvestAge");
    img.f4(10, h.MaxMAI, "MaxMAI");
}

// --- Curves ----------------------------------------------------------------------------------

void putYieldRows(ArxImage& img, const YieldGrid<YieldRow>& grid, int polygons, bool newRows,
                  std::string_view name) {
    for (int p = 0; p < polygons; ++p) {
        for (int r = 0; r < grid.rowCount(); ++r) {
            const YieldRow& row = grid(p, r);
            img.beginRecord(indexed(indexed(name, p), r), newRows ? 10 : 16);
            if (newRows) {
                img.i2(0, row.Dia, "Dia");
                img.i2(2, row.Vol, "Vol");
                img.i2(4, row.Ht, "Ht");
                img.f4(6, row.Mai, "Mai");
            } else {
                // Older files kept real units rather than tenths.
                img.f4(0, static_cast<float>(row.Dia) / 10.0f, "Dia");
                img.f4(4, static_cast<float>(row.Vol) / 10.0f, "Vol");
                img.f4(8, static_cast<float>(row.Ht) / 10.0f, "Ht");
                img.f4(12, row.Mai, "Mai");
            }
        }
    }
}

void putMixRows(ArxImage& img, const YieldGrid<MixRow>& grid, int polygons, bool newRows) {
    for (int p = 0; p < polygons; ++p) {
        for (int r = 0; r < grid.rowCount(); ++r) {
            const MixRow& row = grid(p, r);
            img.beginRecord(indexed(indexed("VMix", p), r), newRows ? 12 : 24);
            for (std::size_t s = 0; s < 6; ++s) {
                if (newRows)
                    img.i2(2 * s, row[s], indexed("share", int(s)));
                else
                    img.f4(4 * s, static_cast<float>(row[s]) / 10.0f, indexed("share", int(s)));
            }
        }
    }
}

// --- Calculation state -----------------------------------------------------------------------

void putRecordA(ArxImage& img, const CalcInputs& c) {
    img.beginRecord("RecordA", 26);
    img.i2(0, c.reservedA, "reserved0");
    img.i2(2, c.ConstraintBits, "ConstraintBits");
    img.i2(4, c.SavedNetDown, "SavedNetDown");
    img.i2(6, c.SavedHeight, "SavedHeight");
    img.i2(8, c.SavedAge, "SavedAge");
    img.i2(10, c.SavedHeightPerc, "SavedHeightPerc");
    img.i2(12, c.SavedAgePerc, "SavedAgePerc");
    img.i4(14, c.SavedVolRate, "SavedVolRate");
    img.i4(18, c.SavedStartIn, "SavedStartIn");
    img.i2(22, c.SavedCalcYears, "SavedCalcYears");
    img.i2(24, c.SavedCalcRate, "SavedCalcRate");
}

void putFlags(ArxImage& img, const CalcInputs& c) {
    img.beginRecord("Flags", 20);
    putI2s(img, 0, c.SavedCut, "SavedCut");
    img.i2(8, c.reservedFlag4, "reserved4");
    img.i2(10, c.SavedDisPC, "SavedDisPC");
    img.i2(12, c.reservedFlag6, "reserved6");
    img.i2(14, c.SavedHarvGap, "SavedHarvGap");
    img.i2(16, c.SavedNoHarv, "SavedNoHarv");
    img.i2(18, c.SavedWithin, "SavedWithin");
}

void putRecordB(ArxImage& img, const CalcInputs& c) {
    img.beginRecord("RecordB", 402);
    img.i2(0, c.AreaRunSaved, "AreaRunSaved");
    putI2s(img, 2, c.reservedB, "reserved");
    img.i2(10, c.SavedConifer, "SavedConifer");
    img.f8(12, c.SavedAreaRate, "SavedAreaRate");
    img.i2(20, c.OrderColumn, "OrderColumn");
    img.i2(22, c.SortMethod, "SortMethod");
    img.raw(24, c.Text1.raw(), "Text1");
    img.raw(146, c.Text2.raw(), "Text2");
    img.raw(274, c.Text3.raw(), "Text3");
}

void putBlock(ArxImage& img, const Block& b, int index) {
    img.beginRecord(indexed("Block", index), 42);
    img.i2(0, b.Polygon, "Polygon");
    img.i2(2, b.Status, "Status");
    img.i2(4, b.Road, "Road");
    img.f4(6, b.CutFraction, "CutFraction");
    img.i4(10, b.reserved, "reserved");
    img.i2(14, b.Curve, "Curve");
    img.i2(16, b.NextCurve, "NextCurve");
    img.f4(18, b.Area, "Area");
    img.i2(22, b.DueYear, "DueYear");
    img.i2(24, b.HarvestAge, "HarvestAge");
    img.i2(26, b.StandYear, "StandYear");
    img.i2(28, b.Method, "Method");
    img.i2(30, b.ThinVol, "ThinVol");
    img.i2(32, b.ThinYear, "ThinYear");
    img.i2(34, b.ResidualAge, "ResidualAge");
    img.i2(36, b.PrevBlock, "PrevBlock");
    img.i2(38, b.NextBlock, "NextBlock");
    img.i2(40, b.Rotation, "Rotation");
}

void putRoad(ArxImage& img, const RoadRec& r, int index) {
    img.beginRecord(indexed("Road", index), 14);
    img.i2(0, r.RoadBlock, "RoadBlock");
    img.f4(2, r.RoadArea, "RoadArea");
    img.i2(6, r.RoadYear, "RoadYear");
    img.i2(8, r.RoadCurve, "RoadCurve");
    img.f4(10, r.RoadCut, "RoadCut");
}

void putCut(ArxImage& img, const CutRec& c, int index) {
    img.beginRecord(indexed("Cut", index), 44);
    img.i2(0, c.BlockIdx, "BlockIdx");
    img.i2(2, c.YearsFromDue, "YearsFromDue");
    img.i2(4, c.CutAge, "CutAge");
    img.f4(6, c.CutDbh, "CutDbh");
    img.f4(10, c.CutVolHa, "CutVolHa");
    img.f4(14, c.CutArea, "CutArea");
    img.f4(18, c.CutAreaCCE, "CutAreaCCE");
    img.i2(22, c.CutMethod, "CutMethod");
    img.i2(24, c.StartYr, "StartYr");
    img.i2(26, c.EndYr, "EndYr");
    img.f4(28, c.CutYears, "CutYears");
    img.f4(32, c.CutVolume, "CutVolume");
    img.f4(36, c.CutConifer, "CutConifer");
    img.f4(40, c.CutPotential, "CutPotential");
}

void putYear(ArxImage& img, const YearRec& y, int index) {
    img.beginRecord(indexed("Year", index), 258);
    img.i2(0, y.NumPolygons, "NumPolygons");
    img.raw(2, y.BlockNames.raw(), "BlockNames");
    const float values[] = {
        y.AreaCCE,    y.AreaRoad,     y.AreaPC,        y.reserved,  y.AreaCC,      y.AreaCT,
        y.AreaNC,     y.AreaNSR,      y.VolCC,         y.VolPC,     y.VolCT,       y.VolRoad,
        y.VolConifer, y.VolDeciduous, y.MatureCon,     y.MatureDec, y.ImmatureCon, y.ImmatureDec,
        y.InvVolume,  y.InvArea,      y.InvAreaHeight, y.InvAreaAge};
    const char* names[] = {
        "AreaCCE",    "AreaRoad",     "AreaPC",        "reserved",  "AreaCC",      "AreaCT",
        "AreaNC",     "AreaNSR",      "VolCC",         "VolPC",     "VolCT",       "VolRoad",
        "VolConifer", "VolDeciduous", "MatureCon",     "MatureDec", "ImmatureCon", "ImmatureDec",
        "InvVolume",  "InvArea",      "InvAreaHeight", "InvAreaAge"};
    for (std::size_t i = 0; i < std::size(values); ++i) img.f4(130 + 4 * i, values[i], names[i]);
    for (std::size_t i = 0; i < 10; ++i)
        img.f4(218 + 4 * i, y.AgeClassArea[i], indexed("AgeClassArea", int(i)));
}

void putCalcTables(ArxImage& img, const Model& m) {
    const CalcState& c = m.Calc;
    putRecordB(img, c.inputs);
    img.beginRecord("Bounds", 12);
    img.i2(0, c.BlockLast, "N1");
    img.i2(2, c.RoadLast, "N2");
    img.i2(4, c.CutCount, "N3");
    img.i2(6, c.CalcHorizon, "N4");
    img.f4(8, c.NetArea, "NetArea");
    for (int i = c.BlockList.lowerBound(); i <= c.BlockList.upperBound(); ++i)
        putBlock(img, c.BlockList[i], i);
    for (int i = c.RoadList.lowerBound(); i <= c.RoadList.upperBound(); ++i)
        putRoad(img, c.RoadList[i], i);
    for (int i = c.CutList.lowerBound(); i <= c.CutList.upperBound(); ++i)
        putCut(img, c.CutList[i], i);
    for (int i = c.YearTable.lowerBound(); i <= c.YearTable.upperBound(); ++i)
        putYear(img, c.YearTable[i], i);
    const ReportOptions& o = m.Report;
    img.beginRecord("ReportOptions", 14);
    const int16_t options[] = {o.RptIncrement, o.RptShowPoly, o.RptAddRow, o.RptTotal,
                               o.RptIncAvg,    o.RptExcel,    o.RptPrompt};
    for (std::size_t i = 0; i < 7; ++i) img.i2(2 * i, options[i], indexed("option", int(i)));
}

}  // namespace

int16_t getI2(const Bytes& bytes, std::size_t at) {
    return getLE<int16_t>(bytes, at);
}
int32_t getI4(const Bytes& bytes, std::size_t at) {
    return getLE<int32_t>(bytes, at);
}
float getF4(const Bytes& bytes, std::size_t at) {
    return getLE<float>(bytes, at);
}
double getF8(const Bytes& bytes, std::size_t at) {
    return getLE<double>(bytes, at);
}

std::string getText(const Bytes& bytes, std::size_t at, std::size_t width) {
    if (at + width > bytes.size()) throw std::out_of_range("text past the end of the bytes");
    return std::string(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                       bytes.begin() + static_cast<std::ptrdiff_t>(at + width));
}

void setI2(Bytes& bytes, std::size_t at, int16_t value) {
    if (at + 2 > bytes.size()) throw std::out_of_range("field past the end of the bytes");
    putLE(bytes.data() + at, value);
}

void setF4(Bytes& bytes, std::size_t at, float value) {
    if (at + 4 > bytes.size()) throw std::out_of_range("field past the end of the bytes");
    putLE(bytes.data() + at, value);
}

Bytes readFileBytes(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw std::runtime_error("cannot read " + path);
    return Bytes(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void writeFileBytes(const std::string& path, const Bytes& bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    if (!out) throw std::runtime_error("cannot write " + path);
}

// --- ArxImage --------------------------------------------------------------------------------

void ArxImage::beginRecord(std::string name, std::size_t size) {
    if (!record_.empty()) checkCoverage();
    record_ = std::move(name);
    base_ = bytes_.size();
    recordSize_ = size;
    covered_.assign(size, 0);
    records_.emplace_back(record_, base_);
    bytes_.resize(base_ + size, 0);
}

void ArxImage::put(std::size_t at, const void* data, std::size_t size, std::string_view field,
                   bool specified) {
    if (at + size > recordSize_)
        throw std::logic_error(record_ + "." + std::string(field) + " runs past its record");
    if (data) std::memcpy(bytes_.data() + base_ + at, data, size);
    for (std::size_t i = at; i < at + size; ++i) ++covered_[i];
    fields_.push_back({record_ + "." + std::string(field), base_ + at, size, specified});
}

void ArxImage::i2(std::size_t at, int16_t value, std::string_view field) {
    std::uint8_t out[2];
    putLE(out, value);
    put(at, out, 2, field);
}

void ArxImage::i4(std::size_t at, int32_t value, std::string_view field) {
    std::uint8_t out[4];
    putLE(out, value);
    put(at, out, 4, field);
}

void ArxImage::f4(std::size_t at, float value, std::string_view field) {
    std::uint8_t out[4];
    putLE(out, value);
    put(at, out, 4, field);
}

void ArxImage::f8(std::size_t at, double value, std::string_view field) {
    std::uint8_t out[8];
    putLE(out, value);
    put(at, out, 8, field);
}

void ArxImage::raw(std::size_t at, std::string_view bytes, std::string_view field) {
    put(at, bytes.data(), bytes.size(), field);
}

void ArxImage::text(std::size_t at, std::string_view text, std::size_t width,
                    std::string_view field) {
    std::string padded(width, ' ');
    text.copy(padded.data(), std::min(text.size(), width));
    put(at, padded.data(), width, field);
}

void ArxImage::open(std::size_t at, std::size_t size, std::string_view field) {
    put(at, nullptr, size, field, false);
}

void ArxImage::finish() {
    if (!record_.empty()) checkCoverage();
}

void ArxImage::checkCoverage() const {
    for (std::size_t i = 0; i < recordSize_; ++i)
        if (covered_[i] != 1)
            throw std::logic_error(record_ + " byte " + std::to_string(i) +
                                   (covered_[i] == 0 ? " has no field" : " has two fields"));
}

const FieldSpan& ArxImage::field(std::string_view name) const {
    for (const FieldSpan& span : fields_)
        if (span.name == name) return span;
    throw std::out_of_range("no field " + std::string(name));
}

std::size_t ArxImage::recordOffset(std::string_view name) const {
    for (const auto& [record, offset] : records_)
        if (record == name) return offset;
    throw std::out_of_range("no record " + std::string(name));
}

std::vector<std::string> ArxImage::differences(const Bytes& actual,
                                               const std::vector<std::string>& ignore) const {
    std::vector<std::string> out;
    if (actual.size() != bytes_.size())
        out.push_back("length: expected " + std::to_string(bytes_.size()) + ", got " +
                      std::to_string(actual.size()));
    for (const FieldSpan& span : fields_) {
        if (!span.specified) continue;
        bool skip = false;
        for (const std::string& name : ignore) skip = skip || name == span.name;
        if (skip) continue;
        const bool inside = span.offset + span.size <= actual.size();
        if (inside &&
            std::memcmp(actual.data() + span.offset, bytes_.data() + span.offset, span.size) == 0)
            continue;
        out.push_back(span.name + " @" + std::to_string(span.offset) + ": expected " +
                      hex(bytes_, span.offset, span.size) + ", got " +
                      hex(actual, span.offset, span.size));
    }
    return out;
}

// --- Whole files -----------------------------------------------------------------------------

ArxImage buildArxImage(const Model& m, int16_t version) {
    ArxImage img;
    putHeader(img, m.Header, version);
    img.beginRecord("LastPoly", 2);
    img.i2(0, m.LastPoly, "LastPoly");

    if (version >= 200) {
        putSettings(img, m.Settings);
        if (version >= 290) putSecondSettings(img, m.Settings);
    } else if (version >= 111) {
        putSettings111(img, m.Settings);
    } else {
        putOldestSettings(img, m.Settings);
    }

    const int polygons = m.LastPoly + 1;
    for (int p = 0; p < polygons; ++p) {
        const auto i = static_cast<std::size_t>(p);
        putPolyData(img, m.Poly[i], p);
        if (version >= 200) putPolyCalc(img, m.PolyC[i], p);
        if (version >= 290) putPolyMgmt(img, m.PolyM[i], p);
        putHarvAge(img, m.HarvAge[i][0], p, 0);
        putHarvAge(img, m.HarvAge[i][1], p, 1);
    }

    putRecordA(img, m.Calc.inputs);
    if (version >= 200) putFlags(img, m.Calc.inputs);
    img.beginRecord("CutOrderLast", 2);
    img.i2(0, m.CutOrderLast, "CutOrderLast");
    if (m.CutOrderLast > -1) {
        img.beginRecord("CutOrder", 2 * static_cast<std::size_t>(m.CutOrderLast + 1));
        for (int i = 0; i <= m.CutOrderLast; ++i)
            img.i2(2 * static_cast<std::size_t>(i), m.CutOrder[static_cast<std::size_t>(i)],
                   indexed("", i));
    }

    const bool newRows = version >= 290;
    putYieldRows(img, m.VYield, polygons, newRows, "VYield");
    if (version >= 200) putMixRows(img, m.VMix, polygons, newRows);
    putYieldRows(img, m.TYield, polygons, newRows, "TYield");

    if (version >= 290) putCalcTables(img, m);
    img.finish();
    return img;
}

}  // namespace arborex::test
