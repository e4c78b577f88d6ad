#pragma once
// "Commercial Thin": the commercial thin of the polygon on screen (CurPoly), a TIPSY input.
// The forest inventory zone decides the species TIPSY can thin and the heights it offers, so
// applying the thin makes the stand pure. Modal; Apply stores and closes, Cancel changes nothing.

#include <QDialog>
#include <functional>

#include "model/model.hpp"

class QCheckBox;
class QGroupBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QListWidget;

namespace arborex {

struct Host;

// The button row of both treatment screens: cmdShowHelp, which opens the help text of
// `helpTag` beside the screen, then cmdApply (the default) and cmdCancel, which closes the
// screen without change.
QHBoxLayout* treatmentButtons(QDialog& screen, const MessageCatalogue& catalogue,
                              const char* helpTag, std::function<void()> apply);

class frmCommThin final : public QDialog {
    Q_OBJECT
public:
    frmCommThin(Model& m, Host& host, QWidget* parent = nullptr);

private:
    void Form_Load();
    void chkCommThin_Click();
    void txtDensity_LostFocus();
    void cmdApply_Click();

    Model& m_;
    Host& host_;
    QCheckBox* chkCommThin_ = nullptr;
    QGroupBox* fraCT_ = nullptr;
    QLineEdit* txtDensity_ = nullptr;
    QListWidget* lstHeight_ = nullptr;
    QLabel* lblInfo_ = nullptr;
};

}  // namespace arborex
