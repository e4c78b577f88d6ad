#include "ui/frm_harv_param.hpp"

#include <QCheckBox>
#include <QFocusEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <string>

#include "base/display_format.hpp"
#include "base/host.hpp"
#include "base/min_max.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "frame/error_handler.hpp"
#include "frame/user_settings.hpp"
#include "ui/ui_helpers.hpp"
#include "yield/harvest_ages.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmHarvParam";

struct Range {
    float low;
    float high;
    int16_t decimals;
};

// The re-entry period is held to 50 years here, though a polygon's own may run to 999.
constexpr Range kAdjustFactorRange{0.1f, 1.9f, 1};
constexpr Range kPartialCutRange{1.0f, 50.0f, 0};
constexpr Range kAutoSplitRange{0.1f, 999.9f, 1};

double numberIn(const QLineEdit* field) {
    return tolerantNumber(ls(field->text()));
}

QString shown(int value) {
    return lq(formatNumber(value, "0"));
}

QString shown(float value, const char* pattern) {
    return lq(formatNumber(value, pattern));
}

}  // namespace

frmHarvParam::frmHarvParam(Model& m, Host& host, QWidget* parent)
    : QDialog(parent), m_(m), host_(host) {
    setObjectName("frmHarvParam");
    setWindowTitle("Harvest Parameters");

    auto newField = [this](const QString& name) {
        auto* field = new QLineEdit(this);
        field->setObjectName(name);
        field->setMaximumWidth(80);
        field->setAlignment(Qt::AlignRight);
        field->installEventFilter(this);
        return field;
    };

    auto* criteria = new QFormLayout;
    const std::array<const char*, 3> cutVarCaptions = {"Minimum Age", "Minimum Volume",
                                                       "Minimum DBH"};
    for (std::size_t i = 0; i < txtCutVar_.size(); ++i) {
        txtCutVar_[i] = newField(QString("txtCutVar_%1").arg(i));
        criteria->addRow(cutVarCaptions[i], txtCutVar_[i]);
    }
    txtRegenDelay_ = newField("txtRegenDelay");
    criteria->addRow("Regen Delay (Yrs)", txtRegenDelay_);
    txtPlanHorz_ = newField("txtPlanHorz");
    criteria->addRow("Planning Horizon", txtPlanHorz_);
    txtAutoSplit_ = newField("txtAutoSplit");
    criteria->addRow("Auto Split Polygons", txtAutoSplit_);

    auto* partialCut = new QGroupBox("Partial Cut", this);
    auto* partialFields = new QFormLayout;
    const std::array<const char*, 3> setPCCaptions = {"Adjustment Factor", "Re-entry Period",
                                                      "% to Harvest"};
    for (std::size_t i = 0; i < txtSetPC_.size(); ++i) {
        txtSetPC_[i] = newField(QString("txtSetPC_%1").arg(i));
        partialFields->addRow(setPCCaptions[i], txtSetPC_[i]);
    }
    chkPCAge_ = new QCheckBox(
        "Base subsequent harvest ages on the age that the stand was initially cut rather than "
        "the target harvest age.",
        this);
    chkPCAge_->setObjectName("chkPCAge");
    auto* partialLayout = new QVBoxLayout(partialCut);
    partialLayout->addLayout(partialFields);
    partialLayout->addWidget(chkPCAge_);

    auto* note = new QLabel(
        "If a value on the polygon or yield window is displayed with [ ] this indicates that it "
        "will automatically update if you change any harvest parameters.",
        this);
    note->setObjectName("lblNote");
    note->setWordWrap(true);

    auto* done = new QPushButton("Done", this);
    done->setObjectName("cmdDone");
    done->setDefault(true);
    auto* cancel = new QPushButton("Cancel", this);
    cancel->setObjectName("cmdCancel");
    auto* saveDefaults = new QPushButton("Save Default", this);
    saveDefaults->setObjectName("cmdSaveDefaults");
    saveDefaults->setAutoDefault(false);
    saveDefaults->setToolTip("Keep these parameters as the defaults of new projects");
    connect(done, &QPushButton::clicked, this, &frmHarvParam::cmdDone_Click);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(saveDefaults, &QPushButton::clicked, this, &frmHarvParam::cmdSaveDefaults_Click);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(saveDefaults);
    buttons->addStretch();
    buttons->addWidget(done);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(criteria);
    layout->addWidget(partialCut);
    layout->addWidget(note);
    layout->addSpacing(8);
    layout->addLayout(buttons);

    Form_Load();
}

void frmHarvParam::Form_Load() {
    const ProjectSettings& s = m_.Settings;
    txtCutVar_[0]->setText(shown(s.MINAGE));
    txtCutVar_[1]->setText(shown(s.MINVOL, "0.0"));
    txtCutVar_[2]->setText(shown(s.MINDIA, "0.0"));
    txtRegenDelay_->setText(shown(s.REGENDELAY));
    txtPlanHorz_->setText(shown(s.PLANHORZ));
    txtSetPC_[0]->setText(shown(s.PCADJUSTFACT, "0.00"));
    txtSetPC_[1]->setText(shown(s.PCnext));
    txtSetPC_[2]->setText(shown(s.PCperc));
    // Only 1 turns the rule on in the simulation, so only 1 shows as ticked.
    chkPCAge_->setChecked(s.PCADJUSTHARVAGE == 1);
    txtAutoSplit_->setText(shown(s.SPLIT, "0.0"));
}

void frmHarvParam::SaveMem() {
    // Everything is converted before anything is stored, so a failure leaves the settings whole.
    ProjectSettings s = m_.Settings;
    s.MINAGE = toI2(numberIn(txtCutVar_[0]));
    s.MINVOL = toF4(numberIn(txtCutVar_[1]));
    s.MINDIA = toF4(numberIn(txtCutVar_[2]));
    s.REGENDELAY = toI2(numberIn(txtRegenDelay_));
    s.PLANHORZ = toI2(numberIn(txtPlanHorz_));
    s.PCADJUSTFACT = toF4(numberIn(txtSetPC_[0]));
    s.PCnext = toI2(numberIn(txtSetPC_[1]));
    s.PCperc = toI2(numberIn(txtSetPC_[2]));
    s.PCADJUSTHARVAGE = chkPCAge_->isChecked() ? 1 : 0;
    s.SPLIT = toF4(numberIn(txtAutoSplit_));
    m_.Settings = s;
}

void frmHarvParam::validateField(QLineEdit* field) {
    const Range* range = nullptr;
    if (field == txtAutoSplit_)
        range = &kAutoSplitRange;
    else if (field == txtSetPC_[0])
        range = &kAdjustFactorRange;
    else if (field == txtSetPC_[1] || field == txtSetPC_[2])
        range = &kPartialCutRange;
    if (!range) return;
    runGuarded(m_, host_, ss(field->objectName()) + "_LostFocus", kModule, [&] {
        std::string text = ls(field->text());
        minMax(text, range->low, range->high, range->decimals);
        field->setText(lq(text));
    });
}

void frmHarvParam::validateFocusedField() {
    if (auto* field = qobject_cast<QLineEdit*>(focusWidget())) validateField(field);
}

void frmHarvParam::cmdDone_Click() {
    const bool saved = runGuarded(m_, host_, "cmdDone_Click", kModule, [this] {
        validateFocusedField();
        SaveMem();
    });
    // After a failed save the screen stays, so that the entry at fault can be put right.
    if (saved) accept();
}

void frmHarvParam::cmdSaveDefaults_Click() {
    runGuarded(m_, host_, "cmdSaveDefaults_Click", kModule, [this] {
        validateFocusedField();
        SaveMem();
        SaveRegHarvest(m_, host_.settings);
    });
}

bool frmHarvParam::eventFilter(QObject* watched, QEvent* event) {
    auto* field = qobject_cast<QLineEdit*>(watched);
    if (field && event->type() == QEvent::FocusIn) {
        // Selected once the event loop runs again: a mouse click that gave the focus would
        // otherwise place the cursor over the selection.
        QTimer::singleShot(0, field, &QLineEdit::selectAll);
    } else if (field && event->type() == QEvent::FocusOut) {
        // Switching to another window or opening a menu does not leave the field.
        const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            validateField(field);
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace arborex
