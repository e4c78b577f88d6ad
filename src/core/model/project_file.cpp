#include "model/project_file.hpp"

#include "base/atomic_file.hpp"
#include "base/dates.hpp"
#include "base/display_format.hpp"
#include "base/file_names.hpp"
#include "model/arx_records.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/recent_files.hpp"

namespace arborex {

namespace {

// Version families of the layout.
bool hasSecondSettings(int v) {
    return v >= 290;
}
bool hasPolyCalc(int v) {
    return v >= 200;
}
bool hasNewRows(int v) {
    return v >= 290;
}
bool hasMix(int v) {
    return v >= 200;
}

// Reports progress only when the shown percentage moves, so that a large project does not
// spend its time redrawing the bar.
class ProgressBar {
public:
    explicit ProgressBar(StatusScreen& status) : status_(status) {}
    void set(int percent) {
        if (percent == last_) return;
        last_ = percent;
        status_.setPercent(percent);
    }

private:
    StatusScreen& status_;
    int last_ = -1;
};

void writeSettingsOf(ByteWriter& w, Model& m, int version) {
    ProjectSettings& s = m.Settings;
    if (version >= 200) {
        if (version < 290)
            for (int i = 0; i < 10; ++i) s.OldColors[i] = static_cast<double>(s.COLORS[i]);
        arx::writeSettings(w, s);
        if (hasSecondSettings(version)) arx::writeSecondSettings(w, s);
    } else if (version >= 111) {
        arx::writeSettings111(w, s);
    } else {
        arx::writeSettingsOldest(w, s);
    }
}

void writePolygons(ByteWriter& w, Model& m, int version, ProgressBar& bar) {
    const int count = m.LastPoly + 1;
    for (int p = 0; p < count; ++p) {
        bar.set(25 * (p + 1) / count);
        PolyData& poly = m.Poly.at(static_cast<std::size_t>(p));
        if (version < 3001) poly.NAME = oldFormatName(poly.NAME.str());
        arx::write(w, poly);
        if (hasPolyCalc(version)) arx::write(w, m.PolyC.at(static_cast<std::size_t>(p)));
        if (hasSecondSettings(version)) arx::write(w, m.PolyM.at(static_cast<std::size_t>(p)));
        arx::write(w, m.HarvAge.at(static_cast<std::size_t>(p))[0]);
        arx::write(w, m.HarvAge.at(static_cast<std::size_t>(p))[1]);
    }
}

void writeCurves(ByteWriter& w, const Model& m, int version, ProgressBar& bar) {
    const int count = m.LastPoly + 1;
    const bool newRows = hasNewRows(version);
    const int rowsV = m.VYield.rowCount();
    const int rowsT = m.TYield.rowCount();
    for (int p = 0; p < count; ++p) {
        bar.set(25 + 25 * (p + 1) / count);
        const YieldRow* rows = m.VYield.rowsOf(p);
        if (newRows)
            arx::writeRows(w, rows, rowsV);
        else
            for (int r = 0; r < rowsV; ++r) arx::writeOld(w, rows[r]);
    }
    if (hasMix(version)) {
        for (int p = 0; p < count; ++p) {
            bar.set(50 + 25 * (p + 1) / count);
            const MixRow* rows = m.VMix.rowsOf(p);
            if (newRows)
                arx::writeMixRows(w, rows, rowsV);
            else
                for (int r = 0; r < rowsV; ++r) arx::writeOldMix(w, rows[r]);
        }
    }
    for (int p = 0; p < count; ++p) {
        bar.set(75 + 25 * (p + 1) / count);
        const YieldRow* rows = m.TYield.rowsOf(p);
        if (newRows)
            arx::writeRows(w, rows, rowsT);
        else
            for (int r = 0; r < rowsT; ++r) arx::writeOld(w, rows[r]);
    }
}

// Blocks 13 to 20. Every allocated element of each array is written, whatever its counter.
void writeCalcTables(ByteWriter& w, const Model& m) {
    const CalcState& c = m.Calc;
    arx::writeRecordB(w, c.inputs);
    w.i2(c.BlockLast);
    w.i2(c.RoadLast);
    w.i2(c.CutCount);
    w.i2(c.CalcHorizon);
    w.f4(c.NetArea);
    for (const Block& b : c.BlockList) arx::write(w, b);
    for (const RoadRec& r : c.RoadList) arx::write(w, r);
    for (const CutRec& cut : c.CutList) arx::write(w, cut);
    for (const YearRec& y : c.YearTable) arx::write(w, y);
    const ReportOptions& o = m.Report;
    for (int16_t v : {o.RptIncrement, o.RptShowPoly, o.RptAddRow, o.RptTotal, o.RptIncAvg,
                      o.RptExcel, o.RptPrompt})
        w.i2(v);
}

void writeProject(ByteWriter& w, Model& m, int16_t version, ProgressBar& bar) {
    arx::write(w, m.Header);
    w.i2(m.LastPoly);
    writeSettingsOf(w, m, version);
    writePolygons(w, m, version, bar);
    arx::writeRecordA(w, m.Calc.inputs);
    if (version >= 200) arx::writeFlags(w, m.Calc.inputs);
    w.i2(m.CutOrderLast);
    for (int i = 0; i <= m.CutOrderLast; ++i) w.i2(m.CutOrder.at(static_cast<std::size_t>(i)));
    writeCurves(w, m, version, bar);
    if (version >= 290) writeCalcTables(w, m);
}

int countDeleted(const Model& m) {
    int deleted = 0;
    for (int p = 0; p <= m.LastPoly; ++p)
        if (m.PolyC.at(static_cast<std::size_t>(p)).DELETE == 1) ++deleted;
    return deleted;
}

}  // namespace

std::string oldFormatName(const std::string& name) {
    std::size_t split = name.find(' ');
    if (split == std::string::npos) split = name.find('_');
    std::string mapsheet;
    std::string polygon;
    if (split != std::string::npos) {
        mapsheet = name.substr(0, split);
        polygon = name.substr(split + 1);
    } else {
        mapsheet = name.substr(0, std::min<std::size_t>(7, name.size()));
        polygon = name.size() > 7 ? name.substr(7) : std::string();
    }
    return FixedString<8>(mapsheet).raw() + FixedString<4>(polygon).raw();
}

void SaveArx(Model& m, Host& host, const std::string& path, int16_t version, bool purge) {
    if (purge) {
        int deleted = countDeleted(m);
        if (deleted > 0 &&
            host.prompt.ask("Purge Deleted Polygons",
                            "Would you like to purge " + std::to_string(deleted) +
                                " deleted polygons.  'NO' will save the deleted polygons so "
                                "they can be undeleted in the future, 'YES' will permanently "
                                "remove the deleted polygons.",
                            Buttons::YesNo, Answer::No, Icon::Question) == Answer::Yes)
            PurgeDeletedPolygons(m, host);
    }
    if (trim(path).empty()) return;

    // The new file is written beside the project and renamed into place once it is whole on
    // disk; only then does the former file become the one .bak. A crash, a kill or a full disk
    // at any moment therefore leaves the former or the new project under its name, and a whole
    // .bak beside it.
    host.status.show("Saving ARX file : " + path);
    try {
        AtomicFile file(path);
        ByteWriter w(file);
        if (version == kCurrentFileVersion) {
            m.Files[FileProject] = path;
            m.Files[FileDisplayName] = displayName(path);
        }
        AddLast(m, host, path);
        SaveRegLast(m, host.settings);
        m.Header.FileStamp = kProgramStamp;
        m.Header.FileVersion = version;
        m.Header.LastDate = dateNow();
        ProgressBar bar(host.status);
        writeProject(w, m, version, bar);
        w.finish();
        file.commit([&path] { keepBackup(path, changeExtension(path, ".bak")); });
    } catch (...) {
        host.status.close();
        throw;
    }
    host.status.close();
}

bool SaveAsFile(Model& m, Host& host, bool purge) {
    FileRequest request;
    request.title = "Save As";
    request.filter = kArxFilter;
    request.filterIndex = 1;
    request.folder = m.Paths[UserDocuments];
    request.proposedName = m.Files[FileDisplayName];
    request.overwritePrompt = true;
    auto choice = host.prompt.saveFile(request);
    if (!choice || trim(choice->path).empty()) return false;
    SaveArx(m, host, choice->path, kCurrentFileVersion, purge);
    host.views.projectRenamed();
    return true;
}

bool Saveas(Model& m, Host& host) {
    return SaveAsFile(m, host, false);
}

void SaveFile(Model& m, Host& host, bool purge) {
    if (trim(m.Files[FileProject]).empty()) {
        SaveAsFile(m, host, purge);
        return;
    }
    SaveArx(m, host, m.Files[FileProject], kCurrentFileVersion, purge);
}

void NewFileName(Model& m) {
    const std::string folder = m.Paths[UserDocuments];
    for (long counter = 0;; ++counter) {
        std::string name = "New Arborex File " + formatNumber(static_cast<double>(counter), "#");
        name = trim(name) + ".arx";
        if (findFileNoCase(folder, name).empty()) {
            m.Files[FileDisplayName] = displayName(name);
            m.Files[FileProject].clear();
            return;
        }
    }
}

}  // namespace arborex
