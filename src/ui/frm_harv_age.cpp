#include "ui/frm_harv_age.hpp"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <utility>

#include "base/host.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "frame/error_handler.hpp"
#include "ui/busy_cursor.hpp"
#include "ui/ui_helpers.hpp"
#include "yield/stand_updates.hpp"

namespace arborex {

frmHarvAge::frmHarvAge(Model& m, Host& host, std::vector<int16_t> selection, QWidget* parent)
    : QDialog(parent), m_(m), host_(host), selection_(std::move(selection)) {
    setObjectName("frmHarvAge");
    setWindowTitle("Harvest Age");

    cmbMethod_ = new QComboBox(this);
    cmbMethod_->setObjectName("cmbMethod");
    for (const char* method : kHarvestAgeMethods) cmbMethod_->addItem(lq(method));
    connect(cmbMethod_, &QComboBox::currentIndexChanged, this,
            [this](int index) { Method = static_cast<int16_t>(index); });
    txtAmount_ = new QLineEdit(this);
    txtAmount_->setObjectName("txtAmount");
    txtAmount_->setMaximumWidth(80);
    txtAmount_->setAlignment(Qt::AlignRight);
    auto* below = new QLabel("Use negative numbers for below", this);
    below->setObjectName("lblBelow");

    const std::array<const char*, 2> yieldCaptions = {"Update 1st Harvest Age",
                                                      "Update Future Harvest Age"};
    for (std::size_t i = 0; i < chkYld_.size(); ++i) {
        chkYld_[i] = new QCheckBox(yieldCaptions[i], this);
        chkYld_[i]->setObjectName(QString("chkYld_%1").arg(i));
        chkYld_[i]->setChecked(true);
    }
    chkIgnor_ = new QCheckBox("Ignore Harvest Parameters", this);
    chkIgnor_->setObjectName("chkIgnor");

    lblStatus_ = new QLabel(this);
    lblStatus_->setObjectName("lblStatus");
    lblStatus_->setWordWrap(true);
    lblStatus_->setFrameShape(QFrame::StyledPanel);
    lblStatus_->setMinimumHeight(40);

    auto* update = new QPushButton("Update Harvest Ages", this);
    update->setObjectName("cmdUpdateHar");
    update->setDefault(true);
    auto* cancel = new QPushButton("Cancel", this);
    cancel->setObjectName("cmdCancel");
    cancel->setAutoDefault(false);
    connect(update, &QPushButton::clicked, this, &frmHarvAge::cmdUpdateHar_Click);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* amount = new QVBoxLayout;
    amount->addWidget(txtAmount_);
    amount->addWidget(below);
    auto* fields = new QFormLayout;
    fields->addRow("Method", cmbMethod_);
    fields->addRow("Amount", amount);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(update);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addWidget(chkYld_[0]);
    layout->addWidget(chkYld_[1]);
    layout->addWidget(chkIgnor_);
    layout->addWidget(lblStatus_);
    layout->addLayout(buttons);

    Form_Load();
}

void frmHarvAge::Form_Load() {
    cmbMethod_->setCurrentIndex(0);
    lblStatus_->setText(lq(selectionStatus(m_, selection_, "Harvest Age")).replace("\r\n", "\n"));
    centerme(*this);
}

void frmHarvAge::cmdUpdateHar_Click() {
    if (selection_.empty()) return;
    const bool done = runGuarded(m_, host_, "cmdUpdateHar_Click", "frmHarvAge", [this] {
        HarvestAgeUpdate update;
        update.method = Method;
        update.amount = toI2(tolerantNumber(ls(txtAmount_->text())));
        update.updateVdyp = chkYld_[0]->isChecked();
        update.updateTipsy = chkYld_[1]->isChecked();
        update.ignoreCriteria = chkIgnor_->isChecked();
        const BusyCursor busy;
        updateHarvestAges(m_, selection_, update);
    });
    if (done) accept();
}

}  // namespace arborex
