#pragma once
// "Silviculture System": clearcut or partial cut, with the percent removed and the re-entry
// period, for the polygons selected on the summary screen. A partial cut is refused, with a list,
// on polygons without a current VDYP curve. The harvest ages are not recomputed here: the screen
// that opened this one runs UpdateYields afterwards.

#include <QDialog>
#include <array>
#include <cstdint>
#include <vector>

#include "model/model.hpp"
#include "yield/stand_updates.hpp"

class QLabel;
class QLineEdit;
class QRadioButton;

namespace arborex {

struct Host;

class frmSilvi final : public QDialog {
    Q_OBJECT
public:
    frmSilvi(Model& m, Host& host, std::vector<int16_t> selection, QWidget* parent = nullptr);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Form_Load();
    void optCutMeth_Click();
    void txtPC_LostFocus(int index);
    void cmdUpdatePC_Click();

    Model& m_;
    Host& host_;
    std::vector<int16_t> selection_;
    // The choices as the fields hold them: SetPCPerc and SetPCNext, -1 for the project's value.
    SilviUpdate state_;
    std::array<QRadioButton*, 2> optCutMeth_{};
    std::array<QLineEdit*, 2> txtPC_{};
    QLabel* lblStatus_ = nullptr;
};

}  // namespace arborex
