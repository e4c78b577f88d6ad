#include "report/document_report_view.hpp"

#include "base/document_launcher.hpp"
#include "base/prompt.hpp"
#include "base/text.hpp"
#include "model/model.hpp"
#include "report/document_report.hpp"

namespace arborex {

bool writeReportView(Model& m, Prompt& prompt, DocumentLauncher& launcher, float hanzlikRate) {
    FileRequest request;
    request.title = "Create Report";
    request.filter = "Rich Text File (*.rtf)|*.rtf|Text file (*.txt)|*.txt";
    request.filterIndex = 1;
    request.folder = m.Paths[UserDocuments];
    request.proposedName = m.Files[FileDisplayName];
    request.overwritePrompt = true;
    const auto choice = prompt.saveFile(request);
    if (!choice) return false;
    const std::string& path = choice->path;
    m.Files[FileLastReport] = path;
    const ReportFormat format = choice->filterIndex == 2 ? ReportFormat::TXT : ReportFormat::RTF;
    createReport(m, format, path, {0.0, hanzlikRate});

    if (m.LaunchEditor == 1) {
        const std::string editor =
            trim(m.Files[format == ReportFormat::RTF ? FileEditorWord : FileEditorText]);
        const bool opened =
            editor.empty() ? launcher.openDocument(path) : launcher.openWith(editor, path);
        if (opened) return true;
    }
    prompt.tell(kProgramTitle, "Your report was saved as: " + path);
    return true;
}

}  // namespace arborex
