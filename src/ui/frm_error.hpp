#pragma once
// The error screen of an unexpected failure: where it happened, its number and text, and the
// user's choice of what the interrupted routine does next.

#include <QDialog>
#include <functional>
#include <utility>

#include "base/prompt.hpp"

namespace arborex {

class frmError final : public QDialog {
    Q_OBJECT
public:
    explicit frmError(FailureReport report, QWidget* parent = nullptr);

    // Retry, Ignore && Continue and Exit Section set the choice and close the screen. Closing
    // it any other way (close button, Escape) leaves Exit Section.
    ErrorChoice choice() const { return choice_; }

    // What cmdEnd does: end the process at once, with no exit box and no saving. Tests replace
    // it; by default it is std::_Exit(1).
    void setEndAction(std::function<void()> endProcess) { endProcess_ = std::move(endProcess); }

private:
    void choose(ErrorChoice choice);
    void cmdBackup_Click();

    FailureReport report_;
    ErrorChoice choice_ = ErrorChoice::ExitSection;
    std::function<void()> endProcess_;
};

}  // namespace arborex
