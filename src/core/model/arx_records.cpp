#include "model/arx_records.hpp"

#include <algorithm>

namespace arborex::arx {

namespace {

// Writing and reading walk the same field list, so the two can never disagree on a layout.
struct Out {
    ByteWriter& w;
    void operator()(int16_t& v) { w.i2(v); }
    void operator()(int32_t& v) { w.i4(v); }
    void operator()(float& v) { w.f4(v); }
    void operator()(double& v) { w.f8(v); }
    template <std::size_t N>
    void operator()(FixedString<N>& s) {
        w.str(s);
    }
    template <typename T, std::size_t N>
    void operator()(std::array<T, N>& a) {
        for (auto& x : a) (*this)(x);
    }
};

struct In {
    ByteReader& r;
    void operator()(int16_t& v) { v = r.i2(); }
    void operator()(int32_t& v) { v = r.i4(); }
    void operator()(float& v) { v = r.f4(); }
    void operator()(double& v) { v = r.f8(); }
    template <std::size_t N>
    void operator()(FixedString<N>& s) {
        r.str(s);
    }
    template <typename T, std::size_t N>
    void operator()(std::array<T, N>& a) {
        for (auto& x : a) (*this)(x);
    }
};

template <typename IO>
void header(IO& io, ProjectHeader& h) {
    io(h.FileStamp), io(h.Licence), io(h.District), io(h.Company), io(h.User), io(h.Scenario);
    io(h.VDYPVersion), io(h.TIPSYVersion), io(h.StartDate), io(h.LastDate), io(h.FileVersion);
}

template <typename IO>
void settings150(IO& io, ProjectSettings& s) {
    io(s.REGENDELAY), io(s.PCNETDOWN), io(s.PLANHORZ), io(s.MINVOL), io(s.MINDIA);
    io(s.MINAGE), io(s.OAF1), io(s.OAF2), io(s.PCperc), io(s.PCnext), io(s.PCADJUSTFACT);
    io(s.PCADJUSTHARVAGE), io(s.reserved1[0]), io(s.SPLIT), io(s.VDYPPSYUB);
    io(s.reserved1[1]), io(s.TIPSYSITE), io(s.TIPSYHEIGHT), io(s.NETMAI), io(s.USERLEVEL);
    io(s.reserved1[2]), io(s.YIELDMODE), io(s.YieldMaxAge), io(s.YieldMinAge);
    io(s.YieldIncAge), io(s.YieldRows), io(s.YIELDINC), io(s.OldColors);
}

template <typename IO>
void settings88(IO& io, ProjectSettings& s) {
    io(s.reserved2[0]), io(s.ALTWBS), io(s.reserved2[1]), io(s.COLORS), io(s.reserved2[2]);
}

template <typename IO>
void settings134(IO& io, ProjectSettings& s) {
    io(s.REGENDELAY), io(s.PCADJUSTFACT), io(s.PLANHORZ), io(s.MINVOL), io(s.MINDIA);
    io(s.MINAGE), io(s.OAF1), io(s.OAF2), io(s.PCNETDOWN), io(s.VDYPPSYUB);
    io(s.reserved1[1]), io(s.TIPSYSITE), io(s.TIPSYHEIGHT), io(s.NETMAI), io(s.USERLEVEL);
    io(s.YieldMaxAge), io(s.YieldMinAge), io(s.YieldIncAge), io(s.YieldRows), io(s.YIELDINC);
    io(s.OldColors);
}

template <typename IO>
void settingsOldest(IO& io, ProjectSettings& s) {
    for (int m = 0; m < 2; ++m)
        io(s.YieldRows[m]), io(s.YieldMinAge[m]), io(s.YieldMaxAge[m]), io(s.YieldIncAge[m]);
}

template <typename IO>
void polyData(IO& io, PolyData& p) {
    io(p.NAME), io(p.AREA), io(p.AGE), io(p.VUTILIZ), io(p.FIZ), io(p.VSITEINDEX);
    io(p.VAGETOTAL), io(p.VHEIGHTTOTAL), io(p.CLOSURE), io(p.PSYU), io(p.PSYUBLOCK), io(p.VAF);
    io(p.STOCKING), io(p.VS), io(p.VSIDX), io(p.VP), io(p.VSICALC), io(p.TSICALC);
    io(p.REGION), io(p.COMP), io(p.COMPL), io(p.DENSITY), io(p.THINNED), io(p.THIN);
    io(p.TAGETOTAL), io(p.REGEN), io(p.OAF1), io(p.OAF2), io(p.TS), io(p.TP), io(p.TSIDX);
    io(p.TH), io(p.TI), io(p.SILVI), io(p.PCPERC), io(p.PCNEXT), io(p.HAR), io(p.MGNT);
    io(p.YIELDSTATE);
}

template <typename IO>
void polyCalc(IO& io, PolyCalc& p) {
    io(p.SORT), io(p.LISTROW), io(p.EXCLUDE), io(p.DELETE), io(p.CALCFLAG), io(p.OWNERSHIP);
    io(p.REGENDELAY), io(p.VX), io(p.VCCCALC), io(p.CALCA), io(p.CALCB), io(p.MINCUTVOL);
    io(p.MINCUTDBH), io(p.MINCUTAGE);
}

template <typename IO>
void polyMgmt(IO& io, PolyMgmt& p) {
    io(p.ROADAREA), io(p.TUTILIZ), io(p.NSRRESTOCKIN), io(p.NCRESTOCKIN), io(p.NCDESC);
    io(p.NCVOLHA), io(p.NCDECIDUOUS), io(p.NCHEIGHT), io(p.TG), io(p.COMTHIN), io(p.CTSTEMHA);
    io(p.CTHEIGHT), io(p.TIPSYCACHE), io(p.FERT), io(p.FINCREASE), io(p.FINCTYPE);
    io(p.FSTARTYEAR);
}

template <typename IO>
void harvAge(IO& io, HarvAgeRec& h) {
    io(h.MaiAge), io(h.VolAge), io(h.DiaAge), io(h.ConstraintAge), io(h.HarvestAge);
    io(h.MaxMAI);
}

template <typename IO>
void recordA(IO& io, CalcInputs& c) {
    io(c.reservedA), io(c.ConstraintBits), io(c.SavedNetDown), io(c.SavedHeight);
    io(c.SavedAge), io(c.SavedHeightPerc), io(c.SavedAgePerc), io(c.SavedVolRate);
    io(c.SavedStartIn), io(c.SavedCalcYears), io(c.SavedCalcRate);
}

template <typename IO>
void flags(IO& io, CalcInputs& c) {
    io(c.SavedCut), io(c.reservedFlag4), io(c.SavedDisPC), io(c.reservedFlag6);
    io(c.SavedHarvGap), io(c.SavedNoHarv), io(c.SavedWithin);
}

template <typename IO>
void recordB(IO& io, CalcInputs& c) {
    io(c.AreaRunSaved), io(c.reservedB), io(c.SavedConifer), io(c.SavedAreaRate);
    io(c.OrderColumn), io(c.SortMethod), io(c.Text1), io(c.Text2), io(c.Text3);
}

template <typename IO>
void block(IO& io, Block& b) {
    io(b.Polygon), io(b.Status), io(b.Road), io(b.CutFraction), io(b.reserved), io(b.Curve);
    io(b.NextCurve), io(b.Area), io(b.DueYear), io(b.HarvestAge), io(b.StandYear);
    io(b.Method), io(b.ThinVol), io(b.ThinYear), io(b.ResidualAge), io(b.PrevBlock);
    io(b.NextBlock), io(b.Rotation);
}

template <typename IO>
void road(IO& io, RoadRec& x) {
    io(x.RoadBlock), io(x.RoadArea), io(x.RoadYear), io(x.RoadCurve), io(x.RoadCut);
}

template <typename IO>
void cut(IO& io, CutRec& c) {
    io(c.BlockIdx), io(c.YearsFromDue), io(c.CutAge), io(c.CutDbh), io(c.CutVolHa);
    io(c.CutArea), io(c.CutAreaCCE), io(c.CutMethod), io(c.StartYr), io(c.EndYr);
    io(c.CutYears), io(c.CutVolume), io(c.CutConifer), io(c.CutPotential);
}

template <typename IO>
void year(IO& io, YearRec& y) {
    io(y.NumPolygons), io(y.BlockNames), io(y.AreaCCE), io(y.AreaRoad), io(y.AreaPC);
    io(y.reserved), io(y.AreaCC), io(y.AreaCT), io(y.AreaNC), io(y.AreaNSR), io(y.VolCC);
    io(y.VolPC), io(y.VolCT), io(y.VolRoad), io(y.VolConifer), io(y.VolDeciduous);
    io(y.MatureCon), io(y.MatureDec), io(y.ImmatureCon), io(y.ImmatureDec), io(y.InvVolume);
    io(y.InvArea), io(y.InvAreaHeight), io(y.InvAreaAge), io(y.AgeClassArea);
}

// The writers take const records; the field walk only reads them.
template <typename T>
T& mut(const T& v) {
    return const_cast<T&>(v);
}

}  // namespace

#define ARX_RECORD(Type, walk)                 \
    void write(ByteWriter& w, const Type& v) { \
        Out io{w};                             \
        walk(io, mut(v));                      \
    }                                          \
    void read(ByteReader& r, Type& v) {        \
        In io{r};                              \
        walk(io, v);                           \
    }

ARX_RECORD(ProjectHeader, header)
ARX_RECORD(PolyData, polyData)
ARX_RECORD(PolyCalc, polyCalc)
ARX_RECORD(PolyMgmt, polyMgmt)
ARX_RECORD(HarvAgeRec, harvAge)
ARX_RECORD(Block, block)
ARX_RECORD(RoadRec, road)
ARX_RECORD(CutRec, cut)
ARX_RECORD(YearRec, year)
#undef ARX_RECORD

#define ARX_NAMED(writeName, readName, Type, walk) \
    void writeName(ByteWriter& w, const Type& v) { \
        Out io{w};                                 \
        walk(io, mut(v));                          \
    }                                              \
    void readName(ByteReader& r, Type& v) {        \
        In io{r};                                  \
        walk(io, v);                               \
    }

ARX_NAMED(writeSettings, readSettings, ProjectSettings, settings150)
ARX_NAMED(writeSecondSettings, readSecondSettings, ProjectSettings, settings88)
ARX_NAMED(writeSettings111, readSettings111, ProjectSettings, settings134)
ARX_NAMED(writeSettingsOldest, readSettingsOldest, ProjectSettings, settingsOldest)
ARX_NAMED(writeRecordA, readRecordA, CalcInputs, recordA)
ARX_NAMED(writeFlags, readFlags, CalcInputs, flags)
ARX_NAMED(writeRecordB, readRecordB, CalcInputs, recordB)
#undef ARX_NAMED

// A curve is hundreds of rows; packing them in chunks keeps the per-row cost to a few copies.
namespace {
constexpr int kRowsPerChunk = 128;
}

void writeRows(ByteWriter& w, const YieldRow* rows, int count) {
    char chunk[kRowsPerChunk * 10];
    for (int first = 0; first < count; first += kRowsPerChunk) {
        const int n = std::min(kRowsPerChunk, count - first);
        char* b = chunk;
        for (const YieldRow* row = rows + first; row != rows + first + n; ++row, b += 10) {
            std::memcpy(b, &row->Dia, 2);
            std::memcpy(b + 2, &row->Vol, 2);
            std::memcpy(b + 4, &row->Ht, 2);
            std::memcpy(b + 6, &row->Mai, 4);
        }
        w.bytes(chunk, static_cast<std::size_t>(n) * 10);
    }
}

void readRows(ByteReader& r, YieldRow* rows, int count) {
    char chunk[kRowsPerChunk * 10];
    for (int first = 0; first < count; first += kRowsPerChunk) {
        const int n = std::min(kRowsPerChunk, count - first);
        r.bytes(chunk, static_cast<std::size_t>(n) * 10);
        const char* b = chunk;
        for (YieldRow* row = rows + first; row != rows + first + n; ++row, b += 10) {
            std::memcpy(&row->Dia, b, 2);
            std::memcpy(&row->Vol, b + 2, 2);
            std::memcpy(&row->Ht, b + 4, 2);
            std::memcpy(&row->Mai, b + 6, 4);
        }
    }
}

void writeMixRows(ByteWriter& w, const MixRow* rows, int count) {
    static_assert(sizeof(MixRow) == 12);
    w.bytes(rows, static_cast<std::size_t>(count) * sizeof(MixRow));
}

void readMixRows(ByteReader& r, MixRow* rows, int count) {
    r.bytes(rows, static_cast<std::size_t>(count) * sizeof(MixRow));
}

void writeOld(ByteWriter& w, const YieldRow& row) {
    w.f4(static_cast<float>(row.Dia) / 10.0f);
    w.f4(static_cast<float>(row.Vol) / 10.0f);
    w.f4(static_cast<float>(row.Ht) / 10.0f);
    w.f4(row.Mai);
}

void writeOldMix(ByteWriter& w, const MixRow& row) {
    for (int16_t share : row) w.f4(static_cast<float>(share) / 10.0f);
}

}  // namespace arborex::arx
