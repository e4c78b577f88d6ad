// The calculation screen's delimited report: its settings dialog and the file command, which
// reruns the calculation at the entered rate and writes the report as the run goes.

#include <QLineEdit>
#include <QMenuBar>

#include "base/text.hpp"
#include "frame/error_handler.hpp"
#include "platform/qt_document_launcher.hpp"
#include "report/calc_report.hpp"
#include "ui/frm_calc.hpp"
#include "ui/frm_calc_report.hpp"

namespace arborex {

void frmCalc::mnuRepSet_Click() {
    frmCalcReport settings(m_, host_, this);
    settings.exec();
}

void frmCalc::mnuReport_Click() {
    if (calculating_) return;
    if (m_.Report.RptPrompt) {
        frmCalcReport settings(m_, host_, this);
        if (settings.exec() != QDialog::Accepted) return;
    }
    FileRequest request;
    request.title = "Export Calculation Report File";
    request.filter = "Tab Delimited (*.txt)|*.txt|Comma Seperated Values (*.csv)|*.csv";
    request.filterIndex = 1;
    request.proposedName = m_.Files[FileDisplayName];
    request.overwritePrompt = true;
    const std::optional<FileChoice> choice = prompt_.saveFile(request);
    if (!choice) return;

    if (auto* edit = qobject_cast<QLineEdit*>(focusWidget())) field_LostFocus(edit);
    calculating_ = true;
    content_->setEnabled(false);
    menuBar_->setEnabled(false);
    bool written = false;
    act("mnuReport_Click", [this, &choice, &written] {
        BusyCursor busy;
        written = runCalcReport(session_, choice->path, choice->filterIndex == 1);
    });
    content_->setEnabled(true);
    menuBar_->setEnabled(true);
    calculating_ = false;
    statusText("");
    if (written) refreshViews();

    const std::string path = trim(choice->path);
    if (!written || !m_.Report.RptExcel || path.empty()) return;
    static QtDocumentLauncher desktop;
    DocumentLauncher& launcher = launcher_ ? *launcher_ : desktop;
    const std::string program = trim(m_.Files[FileEditorExcel]);
    if (program.empty())
        launcher.openDocument(path);
    else
        launcher.openWith(program, path);
}

}  // namespace arborex
