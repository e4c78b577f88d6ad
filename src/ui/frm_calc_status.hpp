#pragma once
// The rate search's window: the starting rate, the line of the moment and one row per trial.
// It is modeless and stays open after the search until the user closes it; its OK button is
// disabled while the search runs, because the search cannot be interrupted.

#include <QDialog>
#include <string>

class QLabel;
class QListWidget;
class QPushButton;

namespace arborex {

class frmCalcStatus final : public QDialog {
    Q_OBJECT
public:
    explicit frmCalcStatus(QWidget* parent = nullptr);

    // A new search: shows the window with its starting line, an empty list and OK disabled.
    // Texts are the core's Latin-1 texts.
    void searchOpened(const std::string& hanzlikLine);
    void searchStatus(const std::string& line);
    void trialRow(const std::string& row);
    // The search is over: OK closes the window.
    void searchEnded();

private:
    QLabel* lblHanzlik_;
    QLabel* lblStatus_;
    QListWidget* lstCalcStatus_;
    QPushButton* cmdOK_;
};

}  // namespace arborex
