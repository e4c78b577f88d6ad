#include "ui/frm_help.hpp"

#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

constexpr std::array<int, 5> kFontSizes = {9, 10, 12, 14, 16};

}  // namespace

frmHelp::frmHelp(const MessageCatalogue& catalogue, const std::string& tag, QWidget* parent)
    : QDialog(parent), catalogue_(catalogue) {
    setObjectName("frmHelp");
    setWindowTitle("Help");
    setModal(false);

    txtHelp_ = new QPlainTextEdit(this);
    txtHelp_->setObjectName("txtHelp");
    txtHelp_->setReadOnly(true);
    txtHelp_->setMinimumSize(480, 320);

    auto* font = new QPushButton("Font", this);
    font->setObjectName("cmdFont");
    font->setToolTip("Change the size of the text");
    font->setAutoDefault(false);
    auto* ok = new QPushButton("OK", this);
    ok->setObjectName("cmdOK");
    ok->setDefault(true);
    connect(font, &QPushButton::clicked, this, &frmHelp::cmdFont_Click);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(font);
    buttons->addStretch();
    buttons->addWidget(ok);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(txtHelp_, 1);
    layout->addLayout(buttons);

    applyFontSize();
    setTag(tag);
}

void frmHelp::setTag(const std::string& tag) {
    QString text = lq(GetMessage2(catalogue_, tag));
    text.replace("\r\n", "\n");
    txtHelp_->setPlainText(text);
}

void frmHelp::cmdFont_Click() {
    const auto current = std::find(kFontSizes.begin(), kFontSizes.end(), fontSize_);
    const bool last = current == kFontSizes.end() || current + 1 == kFontSizes.end();
    fontSize_ = last ? kFontSizes.front() : *(current + 1);
    applyFontSize();
}

void frmHelp::applyFontSize() {
    QFont font = txtHelp_->font();
    font.setPointSize(fontSize_);
    txtHelp_->setFont(font);
}

}  // namespace arborex
