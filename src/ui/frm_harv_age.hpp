#pragma once
// "Harvest Age": moves the target harvest ages of the polygons selected on the summary screen,
// by one of the harvest age methods and an amount, for the managements that use VDYP, TIPSY or
// both. The harvest ages are not recomputed here: the screen that opened this one runs
// UpdateYields afterwards.

#include <QDialog>
#include <array>
#include <cstdint>
#include <vector>

#include "model/model.hpp"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;

namespace arborex {

struct Host;

class frmHarvAge final : public QDialog {
    Q_OBJECT
public:
    frmHarvAge(Model& m, Host& host, std::vector<int16_t> selection, QWidget* parent = nullptr);

private:
    void Form_Load();
    void cmdUpdateHar_Click();

    Model& m_;
    Host& host_;
    std::vector<int16_t> selection_;
    int16_t Method = 0;
    QComboBox* cmbMethod_ = nullptr;
    QLineEdit* txtAmount_ = nullptr;
    std::array<QCheckBox*, 2> chkYld_{};
    QCheckBox* chkIgnor_ = nullptr;
    QLabel* lblStatus_ = nullptr;
};

}  // namespace arborex
