#include "model/default_polygon.hpp"

#include <filesystem>

#include "base/atomic_file.hpp"
#include "base/file_names.hpp"
#include "model/arx_records.hpp"
#include "model/model.hpp"

namespace arborex {

void SaveDefaultPolygon(const Model& m, const std::string& path) {
    // Every new polygon starts from this file, so a broken write must not replace it.
    AtomicFile file(path);
    ByteWriter w(file);
    arx::write(w, m.DefaultPoly);
    arx::write(w, m.DefaultPolyC);
    arx::write(w, m.DefaultPolyM);
    w.finish();
    file.commit();
}

bool LoadDefaults(Model& m, Host& host) {
    std::string path = findFileNoCase(m.Paths[UserDocuments], kDefaultPolygonFile);
    if (path.empty()) {
        const std::string installed = findFileNoCase(m.Paths[ArborexFolder], kDefaultPolygonFile);
        std::error_code ec;
        if (!installed.empty() && !m.Paths[UserDocuments].empty() &&
            std::filesystem::copy_file(installed, m.Paths[UserDocuments] + kDefaultPolygonFile, ec))
            path = m.Paths[UserDocuments] + kDefaultPolygonFile;
    }
    if (path.empty()) {
        host.prompt.tell(kProgramTitle, "Default polygon is missing.", Icon::Exclamation);
        return false;
    }
    PolyData data;
    PolyCalc calc;
    PolyMgmt mgmt;
    {
        ByteReader r(path);
        arx::read(r, data);
        arx::read(r, calc);
        arx::read(r, mgmt);
    }
    m.DefaultPoly = data;
    m.DefaultPolyC = calc;
    m.DefaultPolyM = mgmt;
    m.DefaultPoly.REGION = "";
    m.DefaultPoly.COMP = "";
    m.DefaultPoly.COMPL = "";
    m.DefaultPolyC.MINCUTAGE = {-1, -1};
    m.DefaultPolyC.MINCUTVOL = {-1.0f, -1.0f};
    m.DefaultPolyC.MINCUTDBH = {-1.0f, -1.0f};
    m.DefaultPolyC.VCCCALC = 0.0f;
    return true;
}

}  // namespace arborex
