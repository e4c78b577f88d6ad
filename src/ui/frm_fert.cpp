#include "ui/frm_fert.hpp"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QVBoxLayout>

#include "base/host.hpp"
#include "frame/error_handler.hpp"
#include "ui/frm_comm_thin.hpp"
#include "ui/ui_helpers.hpp"
#include "yield/stand_treatments.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmFert";

QLineEdit* numberField(const char* name, QWidget* parent) {
    auto* field = new QLineEdit(parent);
    field->setObjectName(name);
    field->setMaximumWidth(80);
    field->setAlignment(Qt::AlignRight);
    return field;
}

}  // namespace

frmFert::frmFert(Model& m, Host& host, QWidget* parent) : QDialog(parent), m_(m), host_(host) {
    setObjectName("frmFert");
    setWindowTitle("TIPSY Fertilization");

    chkFert_ = new QCheckBox("Enable Fertilization", this);
    chkFert_->setObjectName("chkFert");
    connect(chkFert_, &QCheckBox::toggled, this, &frmFert::chkFert_Click);

    fraFert_ = new QGroupBox("Fertilization Settings", this);
    fraFert_->setObjectName("fraFert");
    txtStartYear_ = numberField("txtStartYear", fraFert_);
    connect(txtStartYear_, &QLineEdit::editingFinished, this, &frmFert::txtStartYear_LostFocus);
    txtIncrease_ = numberField("txtIncrease", fraFert_);
    connect(txtIncrease_, &QLineEdit::editingFinished, this, &frmFert::txtIncrease_LostFocus);
    lblUnit_ = new QLabel(fraFert_);
    lblUnit_->setObjectName("lblUnit");
    lbl_[0] = new QLabel(
        "Each species will be fertilized by the ministry standard response (defaults), with an "
        "automatic effectiveness default of 80%. ",
        fraFert_);
    lbl_[1] = new QLabel("Increase due to fertilization", fraFert_);
    for (std::size_t i = 0; i < lbl_.size(); ++i) lbl_[i]->setObjectName(QString("lbl_%1").arg(i));
    lbl_[0]->setWordWrap(true);
    const std::array<const char*, 3> methods = {"Absolute Volume", "Volume Increment", "Height"};
    for (std::size_t i = 0; i < optMethod_.size(); ++i) {
        optMethod_[i] = new QRadioButton(methods[i], fraFert_);
        optMethod_[i]->setObjectName(QString("optMethod_%1").arg(i));
        const int index = static_cast<int>(i);
        connect(optMethod_[i], &QRadioButton::clicked, this,
                [this, index] { optMethod_Click(index); });
    }

    auto* frame = new QGridLayout(fraFert_);
    frame->addWidget(new QLabel("Start Age (years from establishment)", fraFert_), 0, 0, 1, 2);
    frame->addWidget(txtStartYear_, 1, 0);
    frame->addWidget(lbl_[1], 2, 0, 1, 2);
    frame->addWidget(txtIncrease_, 3, 0);
    frame->addWidget(lblUnit_, 3, 1);
    for (std::size_t i = 0; i < optMethod_.size(); ++i)
        frame->addWidget(optMethod_[i], static_cast<int>(i) + 1, 2);
    frame->addWidget(lbl_[0], 4, 0, 1, 3);
    frame->setColumnStretch(1, 1);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(chkFert_);
    layout->addWidget(fraFert_);
    layout->addSpacing(8);
    layout->addLayout(treatmentButtons(*this, m_.Messages, "&FERT", [this] { cmdApply_Click(); }));
    setMinimumWidth(380);

    Form_Load();
}

void frmFert::Form_Load() {
    // The standard response leaves the method and the amount out of the user's reach.
    lbl_[0]->setVisible(true);
    for (QWidget* hidden : {static_cast<QWidget*>(lbl_[1]), static_cast<QWidget*>(lblUnit_),
                            static_cast<QWidget*>(txtIncrease_)})
        hidden->setVisible(false);
    for (QRadioButton* option : optMethod_) option->setVisible(false);

    runGuarded(m_, host_, "Form_Load", kModule, [this] {
        const FertFields fields = loadFert(m_, m_.CurPoly);
        chkFert_->setChecked(fields.enabled);
        if (fields.method >= 0 && fields.method < static_cast<int16_t>(optMethod_.size())) {
            optMethod_[static_cast<std::size_t>(fields.method)]->setChecked(true);
            optMethod_Click(fields.method);
        }
        txtIncrease_->setText(lq(fields.increase));
        txtStartYear_->setText(lq(fields.startYear));
    });
    chkFert_Click();
}

void frmFert::chkFert_Click() {
    fraFert_->setEnabled(chkFert_->isChecked());
}

void frmFert::optMethod_Click(int index) {
    lblUnit_->setText(lq(fertUnit(static_cast<int16_t>(index))));
}

int16_t frmFert::selectedMethod() const {
    for (std::size_t i = 0; i < optMethod_.size(); ++i)
        if (optMethod_[i]->isChecked()) return static_cast<int16_t>(i);
    return -1;
}

void frmFert::txtIncrease_LostFocus() {
    txtIncrease_->setText(lq(fertIncreaseText(ls(txtIncrease_->text()), selectedMethod())));
}

void frmFert::txtStartYear_LostFocus() {
    txtStartYear_->setText(lq(fertStartYearText(ls(txtStartYear_->text()))));
}

void frmFert::cmdApply_Click() {
    const bool applied = runGuarded(m_, host_, "cmdApply_Click", kModule, [this] {
        txtStartYear_LostFocus();
        FertFields fields;
        fields.enabled = chkFert_->isChecked();
        fields.method = selectedMethod();
        fields.increase = ls(txtIncrease_->text());
        fields.startYear = ls(txtStartYear_->text());
        applyFert(m_, m_.CurPoly, fields);
    });
    if (applied) accept();
}

}  // namespace arborex
