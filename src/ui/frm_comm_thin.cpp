#include "ui/frm_comm_thin.hpp"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/host.hpp"
#include "frame/error_handler.hpp"
#include "ui/frm_help.hpp"
#include "ui/ui_helpers.hpp"
#include "yield/stand_treatments.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmCommThin";

}  // namespace

QHBoxLayout* treatmentButtons(QDialog& screen, const MessageCatalogue& catalogue,
                              const char* helpTag, std::function<void()> apply) {
    auto* applyButton = new QPushButton("Apply", &screen);
    applyButton->setObjectName("cmdApply");
    applyButton->setDefault(true);
    auto* cancel = new QPushButton("Cancel", &screen);
    cancel->setObjectName("cmdCancel");
    auto* help = new QPushButton("Help", &screen);
    help->setObjectName("cmdShowHelp");
    help->setAutoDefault(false);
    QObject::connect(applyButton, &QPushButton::clicked, &screen, std::move(apply));
    QObject::connect(cancel, &QPushButton::clicked, &screen, &QDialog::reject);
    QObject::connect(help, &QPushButton::clicked, &screen, [&screen, &catalogue, helpTag] {
        auto* window = screen.findChild<frmHelp*>();
        if (!window) {
            window = new frmHelp(catalogue, helpTag, &screen);
            window->setAttribute(Qt::WA_DeleteOnClose);
        }
        window->show();
        window->raise();
    });
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(help);
    buttons->addStretch();
    buttons->addWidget(applyButton);
    buttons->addWidget(cancel);
    return buttons;
}

frmCommThin::frmCommThin(Model& m, Host& host, QWidget* parent)
    : QDialog(parent), m_(m), host_(host) {
    setObjectName("frmCommThin");
    setWindowTitle("Commercial Thin");

    chkCommThin_ = new QCheckBox("Enable Commercial Thin", this);
    chkCommThin_->setObjectName("chkCommThin");
    connect(chkCommThin_, &QCheckBox::toggled, this, &frmCommThin::chkCommThin_Click);

    fraCT_ = new QGroupBox("Commercial Thin Settings", this);
    fraCT_->setObjectName("fraCT");
    txtDensity_ = new QLineEdit(fraCT_);
    txtDensity_->setObjectName("txtDensity");
    txtDensity_->setMaximumWidth(80);
    txtDensity_->setAlignment(Qt::AlignRight);
    connect(txtDensity_, &QLineEdit::editingFinished, this, &frmCommThin::txtDensity_LostFocus);
    lstHeight_ = new QListWidget(fraCT_);
    lstHeight_->setObjectName("lstHeight");
    lstHeight_->setMaximumWidth(80);
    lstHeight_->setFixedHeight(3 * lstHeight_->fontMetrics().height() + 12);
    auto* frame = new QVBoxLayout(fraCT_);
    frame->addWidget(new QLabel("Commercial Thin to density (331 to 816 stems/ha)", fraCT_));
    frame->addWidget(txtDensity_);
    frame->addWidget(new QLabel("Start Commercial Thin when height reaches (m)", fraCT_));
    frame->addWidget(lstHeight_);

    lblInfo_ = new QLabel(this);
    lblInfo_->setObjectName("lblInfo");
    lblInfo_->setWordWrap(true);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(chkCommThin_);
    layout->addWidget(fraCT_);
    layout->addWidget(lblInfo_);
    layout->addSpacing(8);
    layout->addLayout(
        treatmentButtons(*this, m_.Messages, "&COMMTHIN", [this] { cmdApply_Click(); }));
    setMinimumWidth(360);

    Form_Load();
}

void frmCommThin::Form_Load() {
    runGuarded(m_, host_, "Form_Load", kModule, [this] {
        const CommThinFields fields = loadCommThin(m_, m_.CurPoly);
        const ThinZone& zone = thinZone(m_.Poly.at(static_cast<std::size_t>(m_.CurPoly)).FIZ.str());
        lblInfo_->setText(zone.information);
        lstHeight_->clear();
        for (const char* height : zone.heights) lstHeight_->addItem(height);
        lstHeight_->setCurrentRow(fields.height);
        chkCommThin_->setChecked(fields.enabled);
        txtDensity_->setText(lq(fields.density));
    });
    chkCommThin_Click();
}

void frmCommThin::chkCommThin_Click() {
    fraCT_->setEnabled(chkCommThin_->isChecked());
}

void frmCommThin::txtDensity_LostFocus() {
    txtDensity_->setText(lq(commThinDensityText(ls(txtDensity_->text()))));
}

void frmCommThin::cmdApply_Click() {
    ThinResult result = ThinResult::Refused;
    runGuarded(m_, host_, "cmdApply_Click", kModule, [&] {
        txtDensity_LostFocus();
        const CommThinFields fields{chkCommThin_->isChecked(), ls(txtDensity_->text()),
                                    lstHeight_->currentRow()};
        result = applyCommThin(m_, host_.prompt, m_.CurPoly, fields);
    });
    // A refused thin leaves the screen open, to be switched off or cancelled.
    if (result != ThinResult::Refused) accept();
}

}  // namespace arborex
