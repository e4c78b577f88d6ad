#pragma once
// "Harvest Parameters": the project-wide harvest criteria, planning horizon, regeneration delay,
// partial cut settings and auto split area. Done keeps the fields in the project's settings,
// Save Default also keeps them as this user's defaults for new projects. Harvest ages are not
// recomputed here: the screen that opened this one runs UpdateYields afterwards.

#include <QDialog>
#include <array>

#include "model/model.hpp"

class QCheckBox;
class QLineEdit;

namespace arborex {

struct Host;

class frmHarvParam final : public QDialog {
    Q_OBJECT
public:
    frmHarvParam(Model& m, Host& host, QWidget* parent = nullptr);

    // Stores every field in Model::Settings: the number at the head of its text, rounded half
    // to even for the 16-bit values. A value the field cannot hold throws ErrOverflow, and then
    // nothing is stored.
    void SaveMem();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Form_Load();
    // The clamp of a field on leaving it; fields without a range are left as typed.
    void validateField(QLineEdit* field);
    // A button pressed with Enter takes the focus from no field, so the field still being
    // typed in gets its clamp before anything is stored.
    void validateFocusedField();
    void cmdDone_Click();
    void cmdSaveDefaults_Click();

    Model& m_;
    Host& host_;
    std::array<QLineEdit*, 3> txtCutVar_{};
    QLineEdit* txtRegenDelay_ = nullptr;
    QLineEdit* txtPlanHorz_ = nullptr;
    std::array<QLineEdit*, 3> txtSetPC_{};
    QCheckBox* chkPCAge_ = nullptr;
    QLineEdit* txtAutoSplit_ = nullptr;
};

}  // namespace arborex
