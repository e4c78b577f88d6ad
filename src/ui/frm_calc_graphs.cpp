// The calculation screen's Graph menu: each entry writes its control file into the temporary
// folder and hands it to the graphing program. Without a calculation the entries do nothing.

#include "base/dates.hpp"
#include "platform/qt_document_launcher.hpp"
#include "report/graph_files.hpp"
#include "ui/frm_calc.hpp"

namespace arborex {

void frmCalc::mnuGraph_Click(int index) {
    if (m_.Calc.CutCount == 0) return;
    std::string path;
    act("mnuGraph_Click",
        [this, index, &path] { path = writeResultGraph(m_, run_, index, dateNow()); });
    openGraph(path);
}

void frmCalc::mniTimeVol_Click(int index) {
    if (m_.Calc.CutCount == 0 || index != 1) return;
    std::string path;
    act("GraphTimeVolume2", [this, &path] { path = GraphTimeVolume2(m_, dateNow()); });
    openGraph(path);
}

void frmCalc::openGraph(const std::string& path) {
    if (path.empty()) return;
    static QtDocumentLauncher desktop;
    launchGraph(m_, launcher_ ? *launcher_ : desktop, prompt_, path);
}

}  // namespace arborex
