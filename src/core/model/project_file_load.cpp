// ReadArx, the reading of LoadARX: reads a project of any version and brings it up to the current
// model.

#include "base/errors.hpp"
#include "base/file_names.hpp"
#include "base/messages.hpp"
#include "model/arx_records.hpp"
#include "model/colours.hpp"
#include "model/project_file.hpp"
#include "model/species_binding.hpp"

namespace arborex {

namespace {

constexpr int16_t kBlankPair = 0x2020;  // two blanks where an earlier writer left text

class Loader {
public:
    Loader(Model& m, Host& host, const std::string& path, const CurvesReadStep& curvesRead)
        : m_(m), host_(host), path_(path), curvesRead_(curvesRead) {}

    void run();
    // Leaves the model usable after a failure: arrays that were never sized to the file's
    // polygon count give way to an empty project.
    void recover();

private:
    void status(const std::string& what) {
        host_.status.setText("Loading ARX file : " + path_ + "\n" + what);
    }
    void progress(ByteReader& r) {
        if (fileSize_ == 0) return;
        int percent = static_cast<int>(100 - r.remaining() * 100 / fileSize_);
        if (percent != lastPercent_) host_.status.setPercent(lastPercent_ = percent);
    }
    void tell(const std::string& text, Icon icon = Icon::Exclamation) {
        host_.prompt.tell(kProgramTitle, text, icon);
    }
    void readSettingsOf(ByteReader& r);
    void checkLength(ByteReader& r) const;
    void readPolygons(ByteReader& r);
    void fillOldPolygon(int p);
    void askMapsheet();
    void readCurves(ByteReader& r);
    void readCalcTables(ByteReader& r);
    void checkStamps();

    Model& m_;
    Host& host_;
    std::string path_;
    const CurvesReadStep& curvesRead_;
    int v_ = 0;
    std::uint64_t fileSize_ = 0;
    int lastPercent_ = -1;
    bool arraysSized_ = false;
    ProjectSettings settingsBefore_;
};

void Loader::readSettingsOf(ByteReader& r) {
    if (v_ >= 200) {
        arx::readSettings(r, m_.Settings);
        if (v_ >= 290) arx::readSecondSettings(r, m_.Settings);
    } else if (v_ >= 111) {
        arx::readSettings111(r, m_.Settings);
    } else {
        arx::readSettingsOldest(r, m_.Settings);
    }
}

// A damaged count must not make the loader allocate gigabytes for a file of a few bytes: the
// polygon records and curves that the counts promise have to be there.
void Loader::checkLength(ByteReader& r) const {
    const std::uint64_t polygons = static_cast<std::uint64_t>(m_.LastPoly + 1);
    const std::uint64_t rowsV = static_cast<std::uint64_t>(m_.Settings.YieldRows[0] + 1);
    const std::uint64_t rowsT = static_cast<std::uint64_t>(m_.Settings.YieldRows[1] + 1);
    const bool newRows = v_ >= 290;
    std::uint64_t perPolygon = 177 + 2 * 14 + (v_ >= 200 ? 54 : 0) + (v_ >= 290 ? 96 : 0);
    perPolygon += rowsV * (newRows ? 10 : arx::kOldYieldRowSize);
    if (v_ >= 200) perPolygon += rowsV * (newRows ? 12 : arx::kOldMixRowSize);
    perPolygon += rowsT * (newRows ? 10 : arx::kOldYieldRowSize);
    const std::uint64_t fixed = 26 + (v_ >= 200 ? 20 : 0) + 2;
    if (r.remaining() < polygons * perPolygon + fixed) throw ArborexError(ErrInputPastEnd);
}

void Loader::fillOldPolygon(int p) {
    const auto i = static_cast<std::size_t>(p);
    PolyData& poly = m_.Poly[i];
    PolyCalc& calc = m_.PolyC[i];
    calc.SORT = calc.LISTROW = static_cast<int16_t>(p);
    calc.EXCLUDE = calc.DELETE = calc.OWNERSHIP = calc.CALCFLAG = 0;
    calc.CALCA = calc.CALCB = 0;
    calc.VCCCALC = 0.0f;
    calc.REGENDELAY = -1;
    calc.MINCUTAGE = {-1, -1};
    calc.MINCUTDBH = {-1.0f, -1.0f};
    calc.MINCUTVOL = {-1.0f, -1.0f};
    calc.VX.fill(1);
    poly.OAF1 = poly.OAF2 = -1;
    // An age that was merely computed must not be taken for the user's own target.
    for (int mg = 0; mg < 2; ++mg) {
        const int model = poly.MGNT[mg];
        if (model != 0 && model != 1) continue;  // NC and NSR have no curve of their own
        if (poly.HAR[mg] == m_.HarvAge[i][static_cast<std::size_t>(model)].HarvestAge)
            poly.HAR[mg] = -1;
    }
}

void Loader::readPolygons(ByteReader& r) {
    for (int p = 0; p <= m_.LastPoly; ++p) {
        const auto i = static_cast<std::size_t>(p);
        arx::read(r, m_.Poly[i]);
        if (v_ >= 200) arx::read(r, m_.PolyC[i]);
        if (v_ >= 290) arx::read(r, m_.PolyM[i]);
        arx::read(r, m_.HarvAge[i][0]);
        arx::read(r, m_.HarvAge[i][1]);
        if (v_ < 200) fillOldPolygon(p);
        if (v_ < 290) {
            m_.PolyM[i] = m_.DefaultPolyM;
            m_.PolyM[i].TUTILIZ = m_.Poly[i].VUTILIZ;
        }
        if (v_ >= 200 && m_.NewTIPSY) m_.Poly[i].YIELDSTATE[1] = 1;
        progress(r);
    }
}

void Loader::askMapsheet() {
    const Answer answer =
        host_.prompt.ask("Remove mapsheet identifier?",
                         "Do you want to remove the mapsheet name from the polygon name?",
                         Buttons::YesNo, Answer::No, Icon::Question);
    for (int p = 0; p <= m_.LastPoly; ++p) {
        FixedString<12>& name = m_.Poly[static_cast<std::size_t>(p)].NAME;
        const std::string raw = name.raw();
        if (answer == Answer::Yes)
            name = raw.substr(8, 4);
        else
            name = trim(raw.substr(0, 8)) + " " + trim(raw.substr(8));
    }
}

void Loader::readCurves(ByteReader& r) {
    const bool newRows = v_ >= 290;
    const int rowsV = m_.VYield.rowCount();
    const int rowsT = m_.TYield.rowCount();
    const int polygons = m_.LastPoly + 1;
    // Rows of old layouts are thrown away: their curves are recalculated.
    status("VDYP Data");
    for (int p = 0; p < polygons; ++p) {
        if (!newRows) {
            r.skip(static_cast<std::size_t>(rowsV) * arx::kOldYieldRowSize);
        } else {
            arx::readRows(r, m_.VYield.rowsOf(p), rowsV);
        }
        progress(r);
    }
    if (v_ >= 200) {
        status("VDYP Mix Species Data");
        for (int p = 0; p < polygons; ++p) {
            if (!newRows) {
                r.skip(static_cast<std::size_t>(rowsV) * arx::kOldMixRowSize);
            } else {
                arx::readMixRows(r, m_.VMix.rowsOf(p), rowsV);
            }
            progress(r);
        }
    }
    status("TIPSY Data");
    for (int p = 0; p < polygons; ++p) {
        if (!newRows) {
            r.skip(static_cast<std::size_t>(rowsT) * arx::kOldYieldRowSize);
        } else {
            arx::readRows(r, m_.TYield.rowsOf(p), rowsT);
        }
        progress(r);
    }
}

// The writer puts out every allocated element; the reader takes an array only above its
// threshold. Files of earlier programs were written so, and they still read the same way.
void Loader::readCalcTables(ByteReader& r) {
    CalcState& c = m_.Calc;
    arx::readRecordB(r, c.inputs);
    if (c.inputs.AreaRunSaved == kBlankPair) ResetCalcState(m_);
    c.BlockLast = r.i2();
    c.RoadLast = r.i2();
    c.CutCount = r.i2();
    c.CalcHorizon = r.i2();
    c.NetArea = r.f4();
    // A damaged count must not size megabytes of tables for a file that ends first: a
    // calculation whose tables cannot all be there is dropped before anything is sized.
    const auto bytesOf = [](int records, bool read, std::uint64_t size) {
        return read ? static_cast<std::uint64_t>(records) * size : std::uint64_t{0};
    };
    const std::uint64_t needed = bytesOf(c.BlockLast + 1, c.BlockLast > 0, 42) +
                                 bytesOf(c.RoadLast, c.RoadLast > 1, 14) +
                                 bytesOf(c.CutCount, c.CutCount > 1, 44) +
                                 bytesOf(c.CalcHorizon + 1, c.CalcHorizon > 0, 258);
    if (needed > r.remaining()) {
        ResetCalcState(m_);
        throw ArborexError(ErrInputPastEnd);
    }
    // Each array takes the size its bound gives, so the model stays consistent with its
    // counters; the elements are read only above the threshold the file has always used, and
    // a single block, road or entry stays zeroed as it always has.
    c.BlockList.resize(c.BlockLast);
    if (c.BlockLast > 0)
        for (Block& b : c.BlockList) arx::read(r, b);
    c.RoadList.resize(c.RoadLast);
    if (c.RoadLast > 1)
        for (RoadRec& x : c.RoadList) arx::read(r, x);
    c.CutList.resize(c.CutCount);
    if (c.CutCount > 1)
        for (CutRec& cut : c.CutList) arx::read(r, cut);
    c.YearTable.resize(c.CalcHorizon);
    if (c.CalcHorizon > 0)
        for (YearRec& y : c.YearTable) arx::read(r, y);
    if (v_ < 3011) c.inputs.SortMethod = -3;
}

void Loader::checkStamps() {
    const std::string stamp = m_.Header.FileStamp.str();
    if (stamp != kProgramStamp) {
        std::string title = GetMessage(m_.Messages, "&OLDVERSION");
        while (!title.empty() && (title.back() == '\n' || title.back() == '\r')) title.pop_back();
        host_.prompt.tell(title,
                          "File Version: " + stamp + "\n\n" + "Program Version: " + kProgramStamp,
                          Icon::Information);
        m_.OldVersion = true;
    }
    if (m_.Header.TIPSYVersion.str() != "3.2m") {
        tell(GetMessage(m_.Messages, "&NEWTIPSY"), Icon::Information);
        m_.NewTIPSY = true;
    }
}

void Loader::run() {
    ResetVars(m_);
    EmptyArrays(m_);
    settingsBefore_ = m_.Settings;
    host_.status.show("Loading ARX file : " + path_ + "\n" + "Polygon Data");
    ByteReader r(path_);
    fileSize_ = r.remaining();
    m_.Files[FileProject] = path_;
    m_.Files[FileDisplayName] = displayName(path_);

    arx::read(r, m_.Header);
    m_.LastPoly = r.i2();
    v_ = m_.Header.FileVersion;
    if (v_ == 0) {
        // Nothing of such a file can be trusted: no polygon, no curves, no calculation.
        m_.LastPoly = -1;
        tell("Invalid file");
        return;
    }
    readSettingsOf(r);
    m_.Settings.PCADJUSTHARVAGE = 0;
    if (m_.LastPoly < -1) throw ArborexError(ErrSubscript);
    m_.OldFormat = v_ < 290;

    setColours(m_);
    if (v_ < 3100) m_.Settings.SPLIT = 100.0f;
    m_.Settings.YIELDMODE = 1;
    SetAgeInc(m_);
    if (m_.Settings.YieldRows[0] < 0 || m_.Settings.YieldRows[1] < 0)
        throw ArborexError(ErrSubscript);
    if (m_.LastPoly < 0) tell("This file contains no polygon information");
    checkStamps();

    checkLength(r);
    if (m_.LastPoly >= 0)
        ResizePolygonArrays(m_, m_.LastPoly + 1);
    else
        EmptyArrays(m_);
    arraysSized_ = true;
    readPolygons(r);
    if (v_ < 3001) askMapsheet();

    arx::readRecordA(r, m_.Calc.inputs);
    if (v_ >= 200) {
        arx::readFlags(r, m_.Calc.inputs);
    } else {
        m_.Calc.inputs.SavedCut = {1, 1, 1, 1};
        m_.Calc.inputs.SavedDisPC = m_.Calc.inputs.reservedFlag6 = 0;
        m_.Calc.inputs.SavedHarvGap = m_.Calc.inputs.SavedNoHarv = 0;
        m_.Calc.inputs.SavedWithin = 0;
    }
    m_.CutOrderLast = r.i2();
    if (m_.CutOrderLast > -1) {
        m_.CutOrder.assign(static_cast<std::size_t>(m_.CutOrderLast + 1), 0);
        m_.CutOrderKey.assign(static_cast<std::size_t>(m_.CutOrderLast + 1), 0);
        for (auto& polygon : m_.CutOrder) polygon = r.i2();
    } else {
        m_.CutOrderLast = -1;
    }
    readCurves(r);

    if (m_.OldFormat) {
        tell("All yield curves must be recalculated.");
        for (int p = 0; p <= m_.LastPoly; ++p)
            for (auto& state : m_.Poly[static_cast<std::size_t>(p)].YIELDSTATE)
                if (state > 0) state = 1;
    }
    if (host_.views.polygonScreenOpen()) host_.views.redisplayPolygons(m_.LastPoly);
    findSpecIDX(m_);
    m_.LoadGood = true;
    if (curvesRead_) curvesRead_(m_);
    if (v_ >= 290) readCalcTables(r);
}

void Loader::recover() {
    if (arraysSized_) return;
    m_.Settings = settingsBefore_;
    m_.LastPoly = -1;
    EmptyArrays(m_);
}

}  // namespace

bool ReadArx(Model& m, Host& host, const std::string& path, const CurvesReadStep& curvesRead) {
    if (trim(path).empty()) return false;
    if (!fileExists(path)) {
        host.prompt.tell(kProgramTitle, "File not found", Icon::Exclamation);
        return false;
    }
    Loader loader(m, host, path, curvesRead);
    try {
        loader.run();
    } catch (...) {
        std::string detail;
        const int number = failureNumberOf(std::current_exception(), detail);
        loader.recover();
        // A file that could not be read is not the project: a plain save must not replace it.
        m.Files[FileProject].clear();
        host.status.close();
        host.prompt.tell(kProgramTitle, std::to_string(number) + "\n" + errorText(number),
                         Icon::Critical);
        return false;
    }
    host.status.close();
    if (m.Header.FileVersion == 0) {
        m.Files[FileProject].clear();
        return false;
    }
    return true;
}

}  // namespace arborex
