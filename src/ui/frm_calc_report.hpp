#pragma once
// "Calculation Report Settings": the seven settings of the delimited calculation report, kept in
// the project. OK stores them all and accepts; Cancel leaves them and rejects, which also tells
// "Create Calculation Report" to stop.

#include <QDialog>
#include <array>

#include "model/model.hpp"

class QCheckBox;
class QLineEdit;

namespace arborex {

class frmCalcReport final : public QDialog {
    Q_OBJECT
public:
    frmCalcReport(Model& m, Host& host, QWidget* parent = nullptr);

private:
    // The increment buttons "Annual", "5", "10", "20", "50".
    void cmdYear_Click(int index);
    void cmdOk_Click();

    Model& m_;
    Host& host_;
    QLineEdit* txtReportInc_ = nullptr;
    QCheckBox* chkShowPoly_ = nullptr;
    QCheckBox* chkAddRow_ = nullptr;
    QCheckBox* chkTotal_ = nullptr;
    QCheckBox* chkIncAvg_ = nullptr;
    QCheckBox* chkExcel_ = nullptr;
    QCheckBox* chkShow_ = nullptr;
};

}  // namespace arborex
