#include "ui/frm_db_choose.hpp"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/ui_helpers.hpp"

namespace arborex {

frmDBChoose::frmDBChoose(const std::vector<std::string>& tables, QWidget* parent)
    : QDialog(parent) {
    setObjectName("frmDBChoose");
    setWindowTitle("Choose Table to Import");

    cmbTable_ = new QComboBox(this);
    cmbTable_->setObjectName("cmbTable");
    cmbTable_->setMinimumContentsLength(24);
    for (const std::string& table : tables) cmbTable_->addItem(lq(table));
    cmbTable_->setCurrentIndex(tables.empty() ? -1 : 0);
    auto* label = new QLabel("Table / Sheet to Import", this);
    label->setBuddy(cmbTable_);

    auto* done = new QPushButton("Done", this);
    done->setObjectName("cmdDone");
    done->setDefault(true);
    auto* cancel = new QPushButton("Cancel", this);
    cancel->setObjectName("cmdCancel");
    cancel->setAutoDefault(false);
    connect(done, &QPushButton::clicked, this, &frmDBChoose::cmdDone_Click);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(done);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(label);
    layout->addWidget(cmbTable_);
    layout->addSpacing(8);
    layout->addLayout(buttons);
    centerme(*this);
}

void frmDBChoose::cmdDone_Click() {
    chosen_ = cmbTable_->currentIndex();
    accept();
}

int frmDBChoose::choose(const std::vector<std::string>& tables, QWidget* parent) {
    frmDBChoose screen(tables, parent);
    screen.exec();
    return screen.chosen();
}

}  // namespace arborex
