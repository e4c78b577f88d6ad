#pragma once
// "Settings": the settings store's two roots on two tabs, "User Settings" and "Administrative
// Settings", under a lock per root so that two running copies never edit the same settings.
// A tab whose lock another copy holds, or whose root this user may not write, is read-only.
// Done writes what changed to the store; folders, programs, display and colours apply at once,
// the settings a project carries from the next new project.

#include <QDialog>
#include <vector>

#include "base/host.hpp"
#include "frame/settings_lock.hpp"
#include "frame/user_settings.hpp"
#include "model/model.hpp"

class QLineEdit;
class QPushButton;
class QLabel;

namespace arborex {

class frmSettingsReg final : public QDialog {
    Q_OBJECT
public:
    frmSettingsReg(Model& m, Host& host, QWidget* parent = nullptr);
    ~frmSettingsReg() override;

    // Checks and stores the fields; false (and a box) when one does not hold a valid value.
    bool cmdDone_Click();
    // Whether the tab of a root may be edited.
    bool editable(SettingsRoot root) const;

protected:
    void done(int result) override;

private:
    struct Field {
        const SettingDef* def;
        QLineEdit* edit;
        std::string shown;  // the text as first shown, to store only what changed
    };
    QWidget* buildTab(bool machine);
    QWidget* buildColours();
    void takeLocks();
    void releaseLocks();
    void cmdColor_Click(int index);
    void paintColour(int index);

    Model& m_;
    Host& host_;
    std::vector<Field> fields_;
    std::vector<int32_t> colours_;
    std::vector<QLabel*> picColor_;
    std::vector<QPushButton*> cmdColor_;
    LockResult userLock_ = LockResult::InUse;
    LockResult machineLock_ = LockResult::InUse;
    bool released_ = false;
};

}  // namespace arborex
