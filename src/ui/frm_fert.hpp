#pragma once
// "TIPSY Fertilization": whether the polygon on screen (CurPoly) is fertilized, and from what
// age. The stand gets the ministry's standard response, so the method and the increase are
// loaded but kept out of the user's reach. Modal; Apply stores and closes, Cancel changes
// nothing.

#include <QDialog>
#include <array>

#include "model/model.hpp"

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QRadioButton;

namespace arborex {

struct Host;

class frmFert final : public QDialog {
    Q_OBJECT
public:
    frmFert(Model& m, Host& host, QWidget* parent = nullptr);

private:
    void Form_Load();
    void chkFert_Click();
    void optMethod_Click(int index);
    int16_t selectedMethod() const;
    void txtIncrease_LostFocus();
    void txtStartYear_LostFocus();
    void cmdApply_Click();

    Model& m_;
    Host& host_;
    QCheckBox* chkFert_ = nullptr;
    QGroupBox* fraFert_ = nullptr;
    QLineEdit* txtStartYear_ = nullptr;
    QLineEdit* txtIncrease_ = nullptr;
    QLabel* lblUnit_ = nullptr;
    std::array<QRadioButton*, 3> optMethod_{};
    std::array<QLabel*, 2> lbl_{};
};

}  // namespace arborex
