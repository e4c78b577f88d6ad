#pragma once
// The main screen's "Report" view: the save dialog, the report, then the report opened in its
// editor or the path shown.

namespace arborex {

struct Model;
class Prompt;
class DocumentLauncher;

// Asks for the file ("Create Report", Rich Text or text by the filter), remembers it in
// Files[13], writes it with createReport, then with LaunchEditor 1 opens it with EditorWord or
// EditorText (the desktop's default program when that is not set); otherwise, or when nothing
// could open it, shows "Your report was saved as: " and the path. False when cancelled.
// `hanzlikRate` is the session's Hanzlik rate for the report. Failures throw ArborexError.
bool writeReportView(Model& m, Prompt& prompt, DocumentLauncher& launcher, float hanzlikRate);

}  // namespace arborex
