#include "ui/frm_calc_status.hpp"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/ui_helpers.hpp"

namespace arborex {

frmCalcStatus::frmCalcStatus(QWidget* parent)
    : QDialog(parent),
      lblHanzlik_(new QLabel(this)),
      lblStatus_(new QLabel(this)),
      lstCalcStatus_(new QListWidget(this)),
      cmdOK_(new QPushButton("OK", this)) {
    setObjectName("frmCalcStatus");
    setWindowTitle("Harvest Rate Search");
    setModal(false);
    lblHanzlik_->setObjectName("lblHanzlik");
    lblStatus_->setObjectName("lblStatus");
    lstCalcStatus_->setObjectName("lstCalcStatus");
    // The trial rows are columns of blanks: only a fixed-pitch font keeps them aligned.
    lstCalcStatus_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    lstCalcStatus_->setMinimumSize(340, 300);
    lstCalcStatus_->setSelectionMode(QAbstractItemView::NoSelection);
    cmdOK_->setObjectName("cmdOK");
    cmdOK_->setAutoDefault(false);
    connect(cmdOK_, &QPushButton::clicked, this, &QDialog::accept);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOK_);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lblHanzlik_);
    layout->addWidget(lstCalcStatus_, 1);
    layout->addWidget(lblStatus_);
    layout->addLayout(buttons);
}

void frmCalcStatus::searchOpened(const std::string& hanzlikLine) {
    lblHanzlik_->setText(lq(hanzlikLine));
    lblStatus_->clear();
    lstCalcStatus_->clear();
    cmdOK_->setEnabled(false);
    if (!isVisible()) {
        show();
        centerme(*this);
    }
    raise();
}

void frmCalcStatus::searchStatus(const std::string& line) {
    lblStatus_->setText(lq(line));
}

void frmCalcStatus::trialRow(const std::string& row) {
    lstCalcStatus_->addItem(lq(row));
    lstCalcStatus_->scrollToBottom();
}

void frmCalcStatus::searchEnded() {
    cmdOK_->setEnabled(true);
    cmdOK_->setFocus();
}

}  // namespace arborex
