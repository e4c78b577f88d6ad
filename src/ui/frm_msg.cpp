#include "ui/frm_msg.hpp"

#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/prompt.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

constexpr const char* kCaptions[4] = {"OK", "Cancel", "Yes", "No"};

// Catalogue texts end their lines with "\r\n"; a label wants plain line ends and no empty line
// after the last.
QString displayText(const std::string& text) {
    QString shown = lq(text);
    shown.replace("\r\n", "\n");
    while (shown.endsWith('\n')) shown.chop(1);
    return shown;
}

}  // namespace

frmMsg::frmMsg(const std::string& title, const std::string& text, const std::string& list,
               int16_t buttons, int16_t defaultButton, QWidget* parent)
    : QDialog(parent), defaultButton_(defaultButton) {
    setObjectName("frmMsg");
    setWindowTitle(lq(title));
    setModal(true);

    lblMSG_ = new QLabel(displayText(text), this);
    lblMSG_->setObjectName("lblMSG");
    lblMSG_->setTextFormat(Qt::PlainText);
    lblMSG_->setWordWrap(true);
    lblMSG_->setMinimumWidth(360);
    txtMSG_ = new QPlainTextEdit(displayText(list), this);
    txtMSG_->setObjectName("txtMSG");
    txtMSG_->setReadOnly(true);
    txtMSG_->setVisible(!list.empty());

    auto* row = new QHBoxLayout;
    row->addStretch();
    for (int i = 0; i < 4; ++i) {
        auto* button = new QPushButton(kCaptions[i], this);
        button->setObjectName(QString("cmdButton_%1").arg(i));
        button->setVisible((buttons & (1 << i)) != 0);
        connect(button, &QPushButton::clicked, this, [this, i] { cmdButton_Click(i); });
        row->addWidget(button);
        cmdButton_[static_cast<std::size_t>(i)] = button;
    }
    row->addStretch();

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblMSG_);
    layout->addWidget(txtMSG_, 1);
    layout->addSpacing(8);
    layout->addLayout(row);
}

bool frmMsg::isShown(int index) const {
    return index >= 0 && index < 4 && !cmdButton_[static_cast<std::size_t>(index)]->isHidden();
}

void frmMsg::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!isShown(defaultButton_)) return;
    QPushButton* button = cmdButton_[static_cast<std::size_t>(defaultButton_)];
    button->setDefault(true);
    button->setFocus(Qt::OtherFocusReason);
}

void frmMsg::cmdButton_Click(int index) {
    msgResult_ = static_cast<int16_t>(1 << index);
    done(msgResult_);
}

void frmMsg::reject() {
    if (isShown(1))
        msgResult_ = MsgCancel;
    else if (isShown(3))
        msgResult_ = MsgNo;
    else
        msgResult_ = MsgOk;
    done(msgResult_);
}

}  // namespace arborex
