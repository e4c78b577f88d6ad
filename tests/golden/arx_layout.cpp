#include "golden/arx_layout.hpp"

#include <algorithm>
#include <bit>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace arborex::test {

namespace {

// The program's files are little-endian, as its own platforms are; fields are copied as they lie.
static_assert(std::endian::native == std::endian::little);

template <typename T>
T getLE(const Bytes& bytes, std::size_t at) {
    if (at + sizeof(T) > bytes.size()) throw std::out_of_range("field past the end of the bytes");
    T value;
    std::memcpy(&value, bytes.data() + at, sizeof(T));
    return value;
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

// A field of the record `r` in scope, named as its member.
#define AT(offset, member) Field(offset, #member, r.member)

// --- Header and settings -------------------------------------------------------------------

void putHeader(ArxImage& img, const ProjectHeader& r, int16_t version) {
    img.record("ProjectHeader", 242,
               {AT(0, FileStamp), AT(32, Licence), AT(64, District), AT(96, Company), AT(128, User),
                AT(160, Scenario), AT(192, VDYPVersion), AT(208, TIPSYVersion), AT(224, StartDate),
                AT(232, LastDate), Field(240, "FileVersion", version)});
}

void putSettings(ArxImage& img, const ProjectSettings& r) {
    img.record(
        "Settings", 150,
        {AT(0, REGENDELAY),    AT(2, PCNETDOWN),    AT(4, PLANHORZ),      AT(6, MINVOL),
         AT(10, MINDIA),       AT(14, MINAGE),      AT(16, OAF1),         AT(18, OAF2),
         AT(20, PCperc),       AT(22, PCnext),      AT(24, PCADJUSTFACT), AT(28, PCADJUSTHARVAGE),
         AT(30, reserved1[0]), AT(32, SPLIT),       AT(36, VDYPPSYUB),    AT(38, reserved1[1]),
         AT(40, TIPSYSITE),    AT(42, TIPSYHEIGHT), AT(44, NETMAI),       AT(46, USERLEVEL),
         AT(48, reserved1[2]), AT(50, YIELDMODE),   AT(52, YieldMaxAge),  AT(56, YieldMinAge),
         AT(60, YieldIncAge),  AT(64, YieldRows),   AT(68, YIELDINC),     AT(70, OldColors)});
}

void putSecondSettings(ArxImage& img, const ProjectSettings& r) {
    img.record("SecondSettings", 88,
               {AT(0, reserved2[0]), AT(2, ALTWBS), AT(4, reserved2[1]), AT(6, COLORS),
                AT(86, reserved2[2])});
}

void putSettings111(ArxImage& img, const ProjectSettings& r) {
    img.record("Settings111", 134,
               {AT(0, REGENDELAY),   AT(2, PCADJUSTFACT), AT(6, PLANHORZ),    AT(8, MINVOL),
                AT(12, MINDIA),      AT(16, MINAGE),      AT(18, OAF1),       AT(20, OAF2),
                AT(22, PCNETDOWN),   AT(24, VDYPPSYUB),   Field::open(26, 2), AT(28, TIPSYSITE),
                AT(30, TIPSYHEIGHT), AT(32, NETMAI),      AT(34, USERLEVEL),  AT(36, YieldMaxAge),
                AT(40, YieldMinAge), AT(44, YieldIncAge), AT(48, YieldRows),  AT(52, YIELDINC),
                AT(54, OldColors)});
}

void putOldestSettings(ArxImage& img, const ProjectSettings& r) {
    img.record("OldestSettings", 16,
               {AT(0, YieldRows[0]), AT(2, YieldMinAge[0]), AT(4, YieldMaxAge[0]),
                AT(6, YieldIncAge[0]), AT(8, YieldRows[1]), AT(10, YieldMinAge[1]),
                AT(12, YieldMaxAge[1]), AT(14, YieldIncAge[1])});
}

// --- Polygon records -----------------------------------------------------------------------

void putPolyData(ArxImage& img, const PolyData& r, int index) {
    img.record(indexed("PolyData", index), 177,
               {AT(0, NAME),        AT(12, AREA),       AT(16, AGE),        AT(18, VUTILIZ),
                AT(22, FIZ),        AT(23, VSITEINDEX), AT(27, VAGETOTAL),  AT(29, VHEIGHTTOTAL),
                AT(31, CLOSURE),    AT(33, PSYU),       AT(35, PSYUBLOCK),  AT(36, VAF),
                AT(40, STOCKING),   AT(41, VS),         AT(53, VSIDX),      AT(65, VP),
                AT(77, VSICALC),    AT(81, TSICALC),    AT(85, REGION),     AT(87, COMP),
                AT(90, COMPL),      AT(91, DENSITY),    AT(95, THINNED),    AT(99, THIN),
                AT(101, TAGETOTAL), AT(103, REGEN),     AT(105, OAF1),      AT(107, OAF2),
                AT(109, TS),        AT(119, TP),        AT(129, TSIDX),     AT(139, TH),
                AT(149, TI),        AT(159, SILVI),     AT(161, PCPERC),    AT(163, PCNEXT),
                AT(165, HAR),       AT(169, MGNT),      AT(173, YIELDSTATE)});
}

void putPolyCalc(ArxImage& img, const PolyCalc& r, int index) {
    img.record(indexed("PolyCalc", index), 54,
               {AT(0, SORT), AT(2, LISTROW), AT(4, EXCLUDE), AT(6, DELETE), AT(8, CALCFLAG),
                AT(10, OWNERSHIP), AT(12, REGENDELAY), AT(14, VX), AT(26, VCCCALC), AT(30, CALCA),
                AT(32, CALCB), AT(34, MINCUTVOL), AT(42, MINCUTDBH), AT(50, MINCUTAGE)});
}

void putPolyMgmt(ArxImage& img, const PolyMgmt& r, int index) {
    img.record(indexed("PolyMgmt", index), 96,
               {AT(0, ROADAREA), AT(4, TUTILIZ), AT(8, NSRRESTOCKIN), AT(10, NCRESTOCKIN),
                AT(12, NCDESC), AT(44, NCVOLHA), AT(48, NCDECIDUOUS), AT(50, NCHEIGHT), AT(52, TG),
                AT(62, COMTHIN), AT(64, CTSTEMHA), AT(66, CTHEIGHT), AT(70, TIPSYCACHE),
                AT(86, FERT), AT(88, FINCREASE), AT(92, FINCTYPE), AT(94, FSTARTYEAR)});
}

void putHarvAge(ArxImage& img, const HarvAgeRec& r, int polygon, int model) {
    img.record(indexed(indexed("HarvAge", polygon), model), 14,
               {AT(0, MaiAge), AT(2, VolAge), AT(4, DiaAge), AT(6, ConstraintAge),
                AT(8, HarvestAge), AT(10, MaxMAI)});
}

// --- Curves ----------------------------------------------------------------------------------

// Older files kept real units rather than tenths, in f4.
float realUnits(int16_t tenths) {
    return static_cast<float>(tenths) / 10.0f;
}

void putYieldRows(ArxImage& img, const YieldGrid<YieldRow>& grid, int polygons, bool newRows,
                  std::string_view name) {
    for (int p = 0; p < polygons; ++p) {
        for (int row = 0; row < grid.rowCount(); ++row) {
            const YieldRow& r = grid(p, row);
            const std::string record = indexed(indexed(name, p), row);
            if (newRows)
                img.record(record, 10, {AT(0, Dia), AT(2, Vol), AT(4, Ht), AT(6, Mai)});
            else
                img.record(record, 16,
                           {Field(0, "Dia", realUnits(r.Dia)), Field(4, "Vol", realUnits(r.Vol)),
                            Field(8, "Ht", realUnits(r.Ht)), AT(12, Mai)});
        }
    }
}

void putMixRows(ArxImage& img, const YieldGrid<MixRow>& grid, int polygons, bool newRows) {
    for (int p = 0; p < polygons; ++p) {
        for (int row = 0; row < grid.rowCount(); ++row) {
            const MixRow& shares = grid(p, row);
            std::array<float, 6> old{};
            for (std::size_t s = 0; s < 6; ++s) old[s] = realUnits(shares[s]);
            const std::string record = indexed(indexed("VMix", p), row);
            if (newRows)
                img.record(record, 12, {Field(0, "share", shares)});
            else
                img.record(record, 24, {Field(0, "share", old)});
        }
    }
}

// --- Calculation state -----------------------------------------------------------------------

void putCalcInputs(ArxImage& img, const CalcInputs& r, int16_t version) {
    img.record(
        "RecordA", 26,
        {AT(0, reservedA), AT(2, ConstraintBits), AT(4, SavedNetDown), AT(6, SavedHeight),
         AT(8, SavedAge), AT(10, SavedHeightPerc), AT(12, SavedAgePerc), AT(14, SavedVolRate),
         AT(18, SavedStartIn), AT(22, SavedCalcYears), AT(24, SavedCalcRate)});
    if (version < 200) return;
    img.record("Flags", 20,
               {AT(0, SavedCut), AT(8, reservedFlag4), AT(10, SavedDisPC), AT(12, reservedFlag6),
                AT(14, SavedHarvGap), AT(16, SavedNoHarv), AT(18, SavedWithin)});
}

void putRecordB(ArxImage& img, const CalcInputs& r) {
    img.record(
        "RecordB", 402,
        {AT(0, AreaRunSaved), AT(2, reservedB), AT(10, SavedConifer), AT(12, SavedAreaRate),
         AT(20, OrderColumn), AT(22, SortMethod), AT(24, Text1), AT(146, Text2), AT(274, Text3)});
}

void putBlock(ArxImage& img, const Block& r, int index) {
    img.record(indexed("Block", index), 42,
               {AT(0, Polygon), AT(2, Status), AT(4, Road), AT(6, CutFraction), AT(10, reserved),
                AT(14, Curve), AT(16, NextCurve), AT(18, Area), AT(22, DueYear), AT(24, HarvestAge),
                AT(26, StandYear), AT(28, Method), AT(30, ThinVol), AT(32, ThinYear),
                AT(34, ResidualAge), AT(36, PrevBlock), AT(38, NextBlock), AT(40, Rotation)});
}

void putRoad(ArxImage& img, const RoadRec& r, int index) {
    img.record(
        indexed("Road", index), 14,
        {AT(0, RoadBlock), AT(2, RoadArea), AT(6, RoadYear), AT(8, RoadCurve), AT(10, RoadCut)});
}

void putCut(ArxImage& img, const CutRec& r, int index) {
    img.record(
        indexed("Cut", index), 44,
        {AT(0, BlockIdx), AT(2, YearsFromDue), AT(4, CutAge), AT(6, CutDbh), AT(10, CutVolHa),
         AT(14, CutArea), AT(18, CutAreaCCE), AT(22, CutMethod), AT(24, StartYr), AT(26, EndYr),
         AT(28, CutYears), AT(32, CutVolume), AT(36, CutConifer), AT(40, CutPotential)});
}

void putYear(ArxImage& img, const YearRec& r, int index) {
    img.record(
        indexed("Year", index), 258,
        {AT(0, NumPolygons),   AT(2, BlockNames),  AT(130, AreaCCE),       AT(134, AreaRoad),
         AT(138, AreaPC),      AT(142, reserved),  AT(146, AreaCC),        AT(150, AreaCT),
         AT(154, AreaNC),      AT(158, AreaNSR),   AT(162, VolCC),         AT(166, VolPC),
         AT(170, VolCT),       AT(174, VolRoad),   AT(178, VolConifer),    AT(182, VolDeciduous),
         AT(186, MatureCon),   AT(190, MatureDec), AT(194, ImmatureCon),   AT(198, ImmatureDec),
         AT(202, InvVolume),   AT(206, InvArea),   AT(210, InvAreaHeight), AT(214, InvAreaAge),
         AT(218, AgeClassArea)});
}

void putCalcTables(ArxImage& img, const Model& m) {
    const CalcState& r = m.Calc;
    putRecordB(img, r.inputs);
    img.record("Bounds", 12,
               {Field(0, "N1", r.BlockLast), Field(2, "N2", r.RoadLast), Field(4, "N3", r.CutCount),
                Field(6, "N4", r.CalcHorizon), AT(8, NetArea)});
    for (int i = r.BlockList.lowerBound(); i <= r.BlockList.upperBound(); ++i)
        putBlock(img, r.BlockList[i], i);
    for (int i = r.RoadList.lowerBound(); i <= r.RoadList.upperBound(); ++i)
        putRoad(img, r.RoadList[i], i);
    for (int i = r.CutList.lowerBound(); i <= r.CutList.upperBound(); ++i)
        putCut(img, r.CutList[i], i);
    for (int i = r.YearTable.lowerBound(); i <= r.YearTable.upperBound(); ++i)
        putYear(img, r.YearTable[i], i);
}

void putReportOptions(ArxImage& img, const ReportOptions& r) {
    img.record("ReportOptions", 14,
               {AT(0, RptIncrement), AT(2, RptShowPoly), AT(4, RptAddRow), AT(6, RptTotal),
                AT(8, RptIncAvg), AT(10, RptExcel), AT(12, RptPrompt)});
}

#undef AT

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
    std::memcpy(bytes.data() + at, &value, 2);
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

// --- Field and ArxImage ----------------------------------------------------------------------

void Field::appendLE(const void* value, std::size_t size) {
    // A copy into grown storage rather than a range insert, which GCC 12 at -O3 takes for an
    // overflowing memmove.
    const std::size_t at = bytes.size();
    bytes.resize(at + size);
    std::memcpy(bytes.data() + at, value, size);
}

Field Field::open(std::size_t offset, std::size_t size) {
    Field field(offset, "reserved" + std::to_string(offset), int16_t{0});
    field.bytes.assign(size, 0);
    field.specified = false;
    return field;
}

void ArxImage::record(const std::string& name, std::size_t size, const std::vector<Field>& fields) {
    const std::size_t base = bytes_.size();
    records_.emplace_back(name, base);
    bytes_.resize(base + size, 0);
    std::vector<int> covered(size, 0);
    for (const Field& field : fields) {
        if (field.at + field.bytes.size() > size)
            throw std::logic_error(name + "." + field.name + " runs past its record");
        std::copy(field.bytes.begin(), field.bytes.end(),
                  bytes_.begin() + static_cast<std::ptrdiff_t>(base + field.at));
        for (std::size_t i = field.at; i < field.at + field.bytes.size(); ++i) ++covered[i];
        const std::size_t count = field.elements == 0 ? 1 : field.elements;
        const std::size_t width = field.bytes.size() / count;
        for (std::size_t e = 0; e < count; ++e) {
            const std::string element =
                field.elements == 0 ? field.name : indexed(field.name, static_cast<int>(e));
            fields_.push_back(
                {name + "." + element, base + field.at + e * width, width, field.specified});
        }
    }
    for (std::size_t i = 0; i < size; ++i)
        if (covered[i] != 1)
            throw std::logic_error(name + " byte " + std::to_string(i) +
                                   (covered[i] == 0 ? " has no field" : " has two fields"));
}

std::size_t ArxImage::recordOffset(std::string_view name) const {
    for (const auto& [record, offset] : records_)
        if (record == name) return offset;
    throw std::out_of_range("no record " + std::string(name));
}

std::string ArxImage::differences(const Bytes& actual,
                                  const std::vector<std::string>& ignore) const {
    std::string out;
    if (actual.size() != bytes_.size())
        out += "length: expected " + std::to_string(bytes_.size()) + ", got " +
               std::to_string(actual.size()) + "\n";
    for (const FieldSpan& span : fields_) {
        bool skip = !span.specified;
        for (const std::string& name : ignore)
            skip = skip || span.name == name || span.name.rfind(name + ".", 0) == 0;
        const bool inside = span.offset + span.size <= actual.size();
        if (skip || (inside && std::memcmp(actual.data() + span.offset, bytes_.data() + span.offset,
                                           span.size) == 0))
            continue;
        out += span.name + " @" + std::to_string(span.offset) + ": expected " +
               hex(bytes_, span.offset, span.size) + ", got " +
               hex(actual, span.offset, span.size) + "\n";
    }
    return out;
}

// --- Whole files -----------------------------------------------------------------------------

ArxImage buildArxImage(const Model& m, int16_t version) {
    ArxImage img;
    putHeader(img, m.Header, version);
    img.record("LastPoly", 2, {Field(0, "LastPoly", m.LastPoly)});
    if (version >= 200) putSettings(img, m.Settings);
    if (version >= 290) putSecondSettings(img, m.Settings);
    if (version >= 111 && version < 200) putSettings111(img, m.Settings);
    if (version < 111) putOldestSettings(img, m.Settings);

    const int polygons = m.LastPoly + 1;
    for (int p = 0; p < polygons; ++p) {
        const auto i = static_cast<std::size_t>(p);
        putPolyData(img, m.Poly[i], p);
        if (version >= 200) putPolyCalc(img, m.PolyC[i], p);
        if (version >= 290) putPolyMgmt(img, m.PolyM[i], p);
        putHarvAge(img, m.HarvAge[i][0], p, 0);
        putHarvAge(img, m.HarvAge[i][1], p, 1);
    }

    putCalcInputs(img, m.Calc.inputs, version);
    img.record("CutOrderLast", 2, {Field(0, "CutOrderLast", m.CutOrderLast)});
    if (m.CutOrderLast > -1) {
        std::vector<Field> order;
        for (int i = 0; i <= m.CutOrderLast; ++i)
            order.emplace_back(2 * static_cast<std::size_t>(i), indexed("", i),
                               m.CutOrder[static_cast<std::size_t>(i)]);
        img.record("CutOrder", 2 * order.size(), order);
    }

    const bool newRows = version >= 290;
    putYieldRows(img, m.VYield, polygons, newRows, "VYield");
    if (version >= 200) putMixRows(img, m.VMix, polygons, newRows);
    putYieldRows(img, m.TYield, polygons, newRows, "TYield");
    if (version >= 290) {
        putCalcTables(img, m);
        putReportOptions(img, m.Report);
    }
    return img;
}

}  // namespace arborex::test
