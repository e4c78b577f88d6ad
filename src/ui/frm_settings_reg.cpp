#include "ui/frm_settings_reg.hpp"

#include <QColorDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QTabWidget>
#include <QVBoxLayout>

#include "base/number_text.hpp"
#include "base/settings_store.hpp"
#include "model/colours.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

QColor toQColor(int32_t value) {
    return QColor(value & 0xFF, (value >> 8) & 0xFF, (value >> 16) & 0xFF);
}

}  // namespace

frmSettingsReg::frmSettingsReg(Model& m, Host& host, QWidget* parent)
    : QDialog(parent), m_(m), host_(host) {
    setObjectName("frmSettingsReg");
    setWindowTitle("Settings");
    takeLocks();

    auto* tabs = new QTabWidget(this);
    tabs->setObjectName("tsMenu");
    auto* userPage = new QWidget(tabs);
    auto* userLayout = new QVBoxLayout(userPage);
    userLayout->addWidget(buildTab(false));
    userLayout->addWidget(buildColours());
    tabs->addTab(userPage, "User Settings");
    tabs->addTab(buildTab(true), "Administrative Settings");

    auto* note =
        new QLabel("Growth model settings apply to projects created after they are changed.", this);
    note->setWordWrap(true);
    auto* done = new QPushButton("Done", this);
    done->setObjectName("cmdDone");
    done->setDefault(true);
    connect(done, &QPushButton::clicked, this, [this] {
        if (cmdDone_Click()) accept();
    });
    auto* cancel = new QPushButton("Cancel", this);
    cancel->setObjectName("cmdCancel");
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(note, 1);
    buttons->addWidget(done);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    layout->addLayout(buttons);
    resize(640, 560);
}

frmSettingsReg::~frmSettingsReg() {
    releaseLocks();
}

void frmSettingsReg::takeLocks() {
    for (SettingsRoot root : {SettingsRoot::User, SettingsRoot::Machine}) {
        const LockResult result = takeSettingsLock(host_.settings, root, m_.RunId);
        (root == SettingsRoot::User ? userLock_ : machineLock_) = result;
        if (result != LockResult::Taken)
            host_.prompt.tell("Settings", lockMessage(root, result), Icon::Exclamation);
    }
}

void frmSettingsReg::releaseLocks() {
    if (released_) return;
    released_ = true;
    if (userLock_ == LockResult::Taken) releaseSettingsLock(host_.settings, SettingsRoot::User);
    if (machineLock_ == LockResult::Taken)
        releaseSettingsLock(host_.settings, SettingsRoot::Machine);
}

bool frmSettingsReg::editable(SettingsRoot root) const {
    return (root == SettingsRoot::User ? userLock_ : machineLock_) == LockResult::Taken;
}

QWidget* frmSettingsReg::buildTab(bool machine) {
    auto* page = new QWidget;
    auto* form = new QFormLayout(page);
    const bool canEdit = editable(machine ? SettingsRoot::Machine : SettingsRoot::User);
    int index = 0;
    for (const SettingDef& def : settingsTable()) {
        if (def.machine != machine || !def.caption) continue;
        auto* edit = new QLineEdit(page);
        edit->setObjectName(QString(machine ? "txtAdmin_%1" : "txtUser_%1").arg(index++));
        const std::string shown = getRegistryStr(host_.settings, def.section, def.key, def.machine);
        edit->setText(qs(shown));
        edit->setReadOnly(!canEdit);
        edit->setToolTip(QString("%1 \\ %2").arg(def.section, def.key));
        form->addRow(def.caption, edit);
        fields_.push_back({&def, edit, shown});
    }
    auto* scroll = new QScrollArea;
    scroll->setWidget(page);
    scroll->setWidgetResizable(true);
    return scroll;
}

QWidget* frmSettingsReg::buildColours() {
    auto* box = new QWidget;
    auto* grid = new QGridLayout(box);
    const bool canEdit = editable(SettingsRoot::User);
    for (int i = 0; i < ColourCount; ++i) {
        const std::string stored = getRegistryStr(host_.settings, "COLORS", kColourKeys[i], false);
        const auto number = strictNumber(stored);
        colours_.push_back(number ? static_cast<int32_t>(*number)
                                  : m_.Settings.COLORS[static_cast<std::size_t>(i)]);
        auto* swatch = new QLabel(box);
        swatch->setObjectName(QString("picColor_%1").arg(i));
        swatch->setFixedSize(28, 18);
        swatch->setAutoFillBackground(true);
        auto* pick = new QPushButton(kColourKeys[i], box);
        pick->setObjectName(QString("cmdColor_%1").arg(i));
        pick->setEnabled(canEdit);
        connect(pick, &QPushButton::clicked, this, [this, i] { cmdColor_Click(i); });
        picColor_.push_back(swatch);
        cmdColor_.push_back(pick);
        const int row = i % 10, column = (i / 10) * 2;
        grid->addWidget(swatch, row, column);
        grid->addWidget(pick, row, column + 1);
        paintColour(i);
    }
    return box;
}

void frmSettingsReg::paintColour(int index) {
    QPalette palette = picColor_[static_cast<std::size_t>(index)]->palette();
    palette.setColor(QPalette::Window, toQColor(colours_[static_cast<std::size_t>(index)]));
    picColor_[static_cast<std::size_t>(index)]->setPalette(palette);
}

void frmSettingsReg::cmdColor_Click(int index) {
    const QColor chosen = QColorDialog::getColor(
        toQColor(colours_[static_cast<std::size_t>(index)]), this, kColourKeys[index]);
    if (!chosen.isValid()) return;
    colours_[static_cast<std::size_t>(index)] = rgb(chosen.red(), chosen.green(), chosen.blue());
    paintColour(index);
}

bool frmSettingsReg::cmdDone_Click() {
    for (const Field& field : fields_) {
        const std::string problem = settingProblem(*field.def, ss(field.edit->text().trimmed()));
        if (problem.empty()) continue;
        host_.prompt.tell("Settings", problem, Icon::Exclamation);
        field.edit->setFocus();
        field.edit->selectAll();
        return false;
    }
    for (const Field& field : fields_) {
        const std::string text = ss(field.edit->text().trimmed());
        const bool mayWrite =
            editable(field.def->machine ? SettingsRoot::Machine : SettingsRoot::User);
        if (!mayWrite || text == field.shown) continue;
        PutRegistryStr(host_.settings, field.def->section, field.def->key, text,
                       field.def->machine);
        if (!isProjectSetting(*field.def)) readSetting(m_, host_, *field.def);
    }
    if (editable(SettingsRoot::User)) {
        for (int i = 0; i < ColourCount; ++i) {
            const int32_t colour = colours_[static_cast<std::size_t>(i)];
            PutRegistryStr(host_.settings, "COLORS", kColourKeys[i], std::to_string(colour), false);
            m_.Settings.COLORS[static_cast<std::size_t>(i)] = colour;
        }
    }
    return true;
}

void frmSettingsReg::done(int result) {
    releaseLocks();
    QDialog::done(result);
}

}  // namespace arborex
