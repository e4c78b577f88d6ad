#include "ui/frm_silvi.hpp"

#include <QFocusEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>
#include <utility>

#include "base/host.hpp"
#include "frame/error_handler.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

frmSilvi::frmSilvi(Model& m, Host& host, std::vector<int16_t> selection, QWidget* parent)
    : QDialog(parent), m_(m), host_(host), selection_(std::move(selection)) {
    setObjectName("frmSilvi");
    setWindowTitle("Silviculture System");

    const std::array<const char*, 2> methods = {"Clearcut", "Partial Cut"};
    for (std::size_t i = 0; i < optCutMeth_.size(); ++i) {
        optCutMeth_[i] = new QRadioButton(methods[i], this);
        optCutMeth_[i]->setObjectName(QString("optCutMeth_%1").arg(i));
        connect(optCutMeth_[i], &QRadioButton::toggled, this, &frmSilvi::optCutMeth_Click);
    }
    for (std::size_t i = 0; i < txtPC_.size(); ++i) {
        txtPC_[i] = new QLineEdit(this);
        txtPC_[i]->setObjectName(QString("txtPC_%1").arg(i));
        txtPC_[i]->setMaximumWidth(60);
        txtPC_[i]->setAlignment(Qt::AlignRight);
        txtPC_[i]->installEventFilter(this);
    }

    // The two fields stand inside one sentence, under the partial cut choice.
    auto* removed = new QHBoxLayout;
    removed->addWidget(txtPC_[0]);
    removed->addWidget(new QLabel("% volume to be removed.  With a", this));
    removed->addStretch();
    auto* reentry = new QHBoxLayout;
    reentry->addWidget(new QLabel("minimum re-entry period of", this));
    reentry->addWidget(txtPC_[1]);
    reentry->addWidget(new QLabel("years.", this));
    reentry->addStretch();
    auto* sentence = new QVBoxLayout;
    sentence->setContentsMargins(24, 0, 0, 0);
    sentence->addLayout(removed);
    sentence->addLayout(reentry);

    lblStatus_ = new QLabel(this);
    lblStatus_->setObjectName("lblStatus");
    lblStatus_->setWordWrap(true);
    lblStatus_->setFrameShape(QFrame::StyledPanel);
    lblStatus_->setMinimumHeight(40);

    auto* update = new QPushButton("Update PC", this);
    update->setObjectName("cmdUpdatePC");
    update->setDefault(true);
    auto* cancel = new QPushButton("Cancel", this);
    cancel->setObjectName("cmdCancel");
    cancel->setAutoDefault(false);
    connect(update, &QPushButton::clicked, this, &frmSilvi::cmdUpdatePC_Click);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(update);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(optCutMeth_[0]);
    layout->addWidget(optCutMeth_[1]);
    layout->addLayout(sentence);
    layout->addWidget(lblStatus_);
    layout->addLayout(buttons);

    Form_Load();
}

void frmSilvi::Form_Load() {
    lblStatus_->setText(lq(selectionStatus(m_, selection_, "Silviculture")).replace("\r\n", "\n"));
    // What the fields show is what an update stores, so they start in step with the state.
    state_ = silviculturePreset(m_, selection_);
    optCutMeth_[state_.partialCut ? 1 : 0]->setChecked(true);
    txtPC_[0]->setText(lq(partialCutFieldText(m_, 0, state_.SetPCPerc)));
    txtPC_[1]->setText(lq(partialCutFieldText(m_, 1, state_.SetPCNext)));
    optCutMeth_Click();
    centerme(*this);
}

void frmSilvi::optCutMeth_Click() {
    const bool partialCut = optCutMeth_[1]->isChecked();
    for (QLineEdit* field : txtPC_) field->setEnabled(partialCut);
}

void frmSilvi::txtPC_LostFocus(int index) {
    const int16_t value = partialCutFieldValue(index, ls(txtPC_[index]->text()));
    (index == 0 ? state_.SetPCPerc : state_.SetPCNext) = value;
    txtPC_[index]->setText(lq(partialCutFieldText(m_, index, value)));
}

void frmSilvi::cmdUpdatePC_Click() {
    if (selection_.empty()) return;
    // A button pressed with Enter takes the focus from no field: the typed value counts.
    for (int i = 0; i < 2; ++i)
        if (focusWidget() == txtPC_[i]) txtPC_LostFocus(i);
    state_.partialCut = optCutMeth_[1]->isChecked();
    const bool done = runGuarded(m_, host_, "cmdUpdatePC_Click", "frmSilvi", [this] {
        tellPartialCutRefused(host_.prompt, updateSilviculture(m_, selection_, state_));
    });
    if (done) accept();
}

bool frmSilvi::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusOut) {
        // Switching to another window or opening a menu does not leave the field.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            for (int i = 0; i < 2; ++i)
                if (watched == txtPC_[i]) txtPC_LostFocus(i);
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace arborex
