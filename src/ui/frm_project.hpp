#pragma once
// "Project Information": the project header's five descriptive fields and its two dates.
// Fields hold the header's bytes as Latin-1 text, one character per byte.

#include <QDialog>
#include <array>

#include "base/host.hpp"
#include "model/model.hpp"

class QLineEdit;

namespace arborex {

class frmProject final : public QDialog {
    Q_OBJECT
public:
    frmProject(Model& m, Host& host, QWidget* parent = nullptr);

    // Stores the fields in the header, each cut to 32 characters.
    void SaveToMEM();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void cmdSaveExit_Click();
    void cmdSaveIni_Click();

    Model& m_;
    Host& host_;
    std::array<QLineEdit*, 5> txtInfo_{};
};

}  // namespace arborex
