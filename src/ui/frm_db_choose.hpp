#pragma once
// "Choose Table to Import": the file holds several tables (sheets, layers) and the user picks
// the one to import, the first offered.

#include <QDialog>
#include <string>
#include <vector>

class QComboBox;

namespace arborex {

class frmDBChoose final : public QDialog {
    Q_OBJECT
public:
    // `tables` as the user reads them (Latin-1), in the file's order.
    explicit frmDBChoose(const std::vector<std::string>& tables, QWidget* parent = nullptr);

    // The index the user chose with Done; -1 after Cancel or closing the window.
    int chosen() const { return chosen_; }

    // Shows the screen and returns the chosen index, or -1.
    static int choose(const std::vector<std::string>& tables, QWidget* parent);

private:
    void cmdDone_Click();

    QComboBox* cmbTable_;
    int chosen_ = -1;
};

}  // namespace arborex
