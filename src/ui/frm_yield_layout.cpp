// The yield view's controls: the menus, the key under the graph, the criteria and the harvest
// age with its up/down control and the commercial thin's figures.

#include <QAction>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "ui/frm_graph.hpp"
#include "ui/frm_yield.hpp"

namespace arborex {

namespace {

QString indexed(const char* name, std::size_t index) {
    return QString("%1_%2").arg(name).arg(index);
}

QLabel* caption(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return label;
}

}  // namespace

void frmYield::buildMenus() {
    auto* bar = new QMenuBar(this);
    bar->setObjectName("mnuYield");
    auto add = [this](auto* menu, const char* name, const QString& text, auto slot) {
        QAction* action = menu->addAction(text);
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    QMenu* table = bar->addMenu("&Table");
    add(table, "mnuCopyTable", "&Copy Table", &frmYield::mnuCopyTable_Click);
    add(table, "mnuExportCSV", "&Export Table...", &frmYield::mnuExportCSV_Click);
    add(bar, "mnuGraph", "&Graph", &frmYield::mnuGraph_Click);
    add(bar, "mnuOK", "&OK", &QDialog::close);
}

QWidget* frmYield::buildKey() {
    auto* key = new QWidget(this);
    key->setObjectName("picKey");
    auto* row = new QHBoxLayout(key);
    row->setContentsMargins(0, 0, 0, 0);
    const std::array<const char*, 3> names = {"dbh", "Vol/ha", "MAI"};
    const std::array<ColourKey, 3> colours = {ColDIA, ColVOL, ColMAI};
    for (std::size_t i = 0; i < names.size(); ++i) {
        auto* line = new QFrame(key);
        line->setObjectName(indexed("linKey", i));
        line->setFixedSize(26, 3);
        line->setStyleSheet(
            QString("background: %1;").arg(storedColour(m_.Settings.COLORS[colours[i]]).name()));
        auto* label = new QLabel(names[i], key);
        label->setObjectName(indexed("lblKey", i));
        row->addWidget(line);
        row->addWidget(label);
        row->addSpacing(10);
    }
    auto* target = new QFrame(key);
    target->setFixedSize(3, 14);
    target->setStyleSheet(QString("background: %1;").arg(storedColour(kTargetMarkerColour).name()));
    row->addWidget(target);
    row->addWidget(new QLabel("target", key));
    return key;
}

QLineEdit* frmYield::addField(const QString& name) {
    auto* field = new QLineEdit(this);
    field->setObjectName(name);
    field->setAlignment(Qt::AlignRight);
    field->setFixedWidth(70);
    field->installEventFilter(this);
    return field;
}

QLabel* frmYield::addValue(const QString& name) {
    auto* label = new QLabel(this);
    label->setObjectName(name);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    label->setMinimumWidth(56);
    return label;
}

QWidget* frmYield::buildCriteria() {
    auto* group = new QGroupBox("Polygon Harvest Criteria", this);
    auto* grid = new QGridLayout(group);
    grid->addWidget(caption("<i>Minimum</i>", group), 0, 1, Qt::AlignRight);
    grid->addWidget(caption("<i>Met at Age</i>", group), 0, 2, Qt::AlignRight);
    const std::array<const char*, 3> names = {"DBH (cm)", "Vol/Ha (m\xc2\xb3)", "Age (years)"};
    for (std::size_t i = 0; i < txtFindAge_.size(); ++i) {
        txtFindAge_[i] = addField(indexed("txtFindAge", i));
        grid->addWidget(caption(QString::fromUtf8(names[i]), group), static_cast<int>(i) + 1, 0);
        grid->addWidget(txtFindAge_[i], static_cast<int>(i) + 1, 1);
    }
    for (std::size_t i = 0; i < lblYield_.size(); ++i)
        lblYield_[i] = addValue(indexed("lblYield", i));
    grid->addWidget(lblYield_[3], 1, 2);
    grid->addWidget(lblYield_[4], 2, 2);
    grid->addWidget(caption("All criteria met", group), 4, 0, 1, 2);
    grid->addWidget(lblYield_[5], 4, 2);
    grid->addWidget(caption("MAI culmination age", group), 5, 0, 1, 2);
    grid->addWidget(lblYield_[1], 5, 2);
    grid->addWidget(caption("MAI at culmination (m\xc2\xb3/ha/yr)", group), 6, 0, 1, 2);
    grid->addWidget(lblYield_[2], 6, 2);
    grid->setRowStretch(7, 1);
    return group;
}

QWidget* frmYield::buildResults() {
    auto* group = new QGroupBox("Harvest Age", this);
    auto* grid = new QGridLayout(group);
    grid->addWidget(caption("Site index (m)", group), 0, 0);
    grid->addWidget(lblYield_[0], 0, 2);
    grid->addWidget(caption("Calculated harvest age", group), 1, 0);
    grid->addWidget(lblYield_[6], 1, 2);

    txtHarvestRate_ = addField("txtHarvestRate");
    auto* updown = new QWidget(group);
    updown->setObjectName("updnHarvestAge");
    auto* arrows = new QVBoxLayout(updown);
    arrows->setContentsMargins(0, 0, 0, 0);
    arrows->setSpacing(0);
    const std::array<std::pair<const char*, Qt::ArrowType>, 2> kinds = {
        std::pair{"updnHarvestAge_Up", Qt::UpArrow},
        std::pair{"updnHarvestAge_Down", Qt::DownArrow}};
    for (const auto& [name, arrow] : kinds) {
        auto* button = new QToolButton(updown);
        button->setObjectName(name);
        button->setArrowType(arrow);
        button->setFixedSize(18, 12);
        button->setAutoRepeat(true);
        arrows->addWidget(button);
    }
    connect(updown->findChild<QToolButton*>("updnHarvestAge_Up"), &QToolButton::clicked, this,
            &frmYield::updnHarvestAge_UpClick);
    connect(updown->findChild<QToolButton*>("updnHarvestAge_Down"), &QToolButton::clicked, this,
            &frmYield::updnHarvestAge_DownClick);
    auto* target = new QHBoxLayout;
    target->setSpacing(2);
    target->addWidget(txtHarvestRate_);
    target->addWidget(updown);
    grid->addWidget(caption("<b>Target harvest age</b>", group), 2, 0);
    grid->addLayout(target, 2, 2, Qt::AlignRight);
    grid->addWidget(caption("DBH at target (cm)", group), 3, 0);
    grid->addWidget(lblYield_[7], 3, 2);
    grid->addWidget(caption("Vol/Ha at target (m\xc2\xb3)", group), 4, 0);
    grid->addWidget(lblYield_[8], 4, 2);

    const std::array<const char*, 3> thin = {"CT Vol/Ha before", "CT Vol/Ha after",
                                             "Commercial thin age"};
    for (std::size_t i = 0; i < lblCT_.size(); ++i) {
        lblCT_[i] = addValue(indexed("lblCT", i));
        grid->addWidget(caption(thin[i], group), static_cast<int>(i) + 5, 0);
        grid->addWidget(lblCT_[i], static_cast<int>(i) + 5, 2);
    }
    grid->setColumnStretch(1, 1);
    return group;
}

}  // namespace arborex
