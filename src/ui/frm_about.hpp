#pragma once
// The about box: the program's name, version and purpose. Shown as a dialog from the menu and
// button, and as a timed splash when the program starts without a project.

#include <QDialog>

namespace arborex {

inline constexpr const char* kProgramVersion = "3.2.26";

class frmAbout final : public QDialog {
    Q_OBJECT
public:
    explicit frmAbout(QWidget* parent = nullptr, bool splash = false);

    // Opens the box over `parent` as a dialog; it deletes itself when closed.
    static frmAbout* showAbout(QWidget* parent);
    // Shows the box without a frame and closes it after `milliseconds`.
    static frmAbout* showSplash(QWidget* parent, int milliseconds = 3000);
};

}  // namespace arborex
