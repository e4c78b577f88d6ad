// The polygon screen's controls, grouped as the user thinks of a polygon: the list, the common
// fields and the harvest plan, then the inputs of each growth model, the NC and NSR fields,
// and the help pane under all of them.

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "ui/frm_polygon.hpp"
#include "ui/frm_polygon_parts.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

using namespace polygon_screen;

// ---- Control factories -------------------------------------------------------------------------

QLineEdit* frmPolygon::addEntry(const QString& name, std::optional<FieldRef> ref,
                                const std::string& key, const char* help, int width) {
    auto* edit = new QLineEdit(this);
    edit->setObjectName(name);
    if (width > 0) edit->setFixedWidth(width);
    if (ref) edit->setAlignment(Qt::AlignRight);
    edit->installEventFilter(this);
    entries_.push_back({edit, ref, key});
    helpTags_.insert(edit, help);
    return edit;
}

QComboBox* frmPolygon::addChoice(const QString& name, const std::string& key, bool storesText,
                                 std::function<int(const Model&, int)> current, const char* help) {
    auto* box = new QComboBox(this);
    box->setObjectName(name);
    box->installEventFilter(this);
    choices_.push_back({box, key, storesText, std::move(current)});
    helpTags_.insert(box, help);
    const std::size_t index = choices_.size() - 1;
    connect(box, &QComboBox::activated, this,
            [this, index](int entry) { commitChoice(choices_[index], entry); });
    return box;
}

QCheckBox* frmPolygon::addCheck(const QString& name, const QString& text, const std::string& key,
                                std::function<bool(const Model&, int)> current, const char* help) {
    auto* box = new QCheckBox(text, this);
    box->setObjectName(name);
    box->installEventFilter(this);
    checks_.push_back({box, key, std::move(current)});
    helpTags_.insert(box, help);
    const std::size_t index = checks_.size() - 1;
    connect(box, &QCheckBox::clicked, this, [this, index] { commitCheck(checks_[index]); });
    return box;
}

QPushButton* frmPolygon::addButton(const QString& name, const QString& text, const char* help) {
    auto* button = new QPushButton(text, this);
    button->setObjectName(name);
    button->setAutoDefault(false);
    button->installEventFilter(this);
    if (help) helpTags_.insert(button, help);
    return button;
}

// ---- Menus and the list ----------------------------------------------------------------------

void frmPolygon::buildMenus(QMenuBar* bar) {
    auto add = [this](QMenu* menu, const char* name, const QString& text,
                      void (frmPolygon::*handler)()) {
        QAction* action = menu->addAction(text);
        action->setObjectName(name);
        connect(action, &QAction::triggered, this, handler);
        return action;
    };
    QMenu* file = bar->addMenu("&File");
    file->setObjectName("mnuFile");
    add(file, "mniSaveDefault", "Save Polygon as &Default", &frmPolygon::mniSaveDefault_Click);
    add(file, "mnuPrintScreen", "&Print Screen...", &frmPolygon::mnuPrintScreen_Click);
    file->addSeparator();
    QAction* closing = file->addAction("&Close");
    closing->setObjectName("mniClose");
    connect(closing, &QAction::triggered, this, &QDialog::close);

    QMenu* polygons = bar->addMenu("&Polygon");
    polygons->setObjectName("mnuPolygon");
    add(polygons, "mniAddPoly", "&Add Polygon...", &frmPolygon::mniAddPoly_Click);
    add(polygons, "mniDelPoly", "&Delete Polygon", &frmPolygon::mniDelPoly_Click);
    add(polygons, "mniUndelete", "&Undelete Polygons...", &frmPolygon::mniUndelete_Click);
    add(polygons, "mniRenPoly", "&Rename Polygon...", &frmPolygon::mniRenPoly_Click);
    polygons->addSeparator();
    add(polygons, "mnuSplit", "&Split Large Polygons...", &frmPolygon::mnuSplit_Click);
    add(polygons, "mnuReorder", "Re&order Species by Percent", &frmPolygon::mnuReorder_Click);
    polygons->addSeparator();
    add(polygons, "mnuCalcYield", "Calculate &Yield Tables...", &frmPolygon::mnuCalcYield_Click);
    add(polygons, "mniYield", "View Yield &Table...", &frmPolygon::mniYield_Click);

    QMenu* data = bar->addMenu("D&ata");
    data->setObjectName("mnuData");
    add(data, "mnuDataGrid", "Data &Grid...", &frmPolygon::mnuDataGrid_Click);
    data->addSeparator();
    add(data, "mnuImpCSV", "&Import OLD Comma format...", &frmPolygon::mnuImpCSV_Click);
    add(data, "mnuExpCSV", "&Export OLD Comma format...", &frmPolygon::mnuExpCSV_Click);
}

QWidget* frmPolygon::buildListPanel() {
    auto* panel = new QWidget(this);
    lstMapPoly_ = new QListWidget(panel);
    lstMapPoly_->setObjectName("lstMapPoly");
    lstMapPoly_->setUniformItemSizes(true);
    lstMapPoly_->setFixedWidth(150);
    lstMapPoly_->installEventFilter(this);
    helpTags_.insert(lstMapPoly_, "&MAPPOLY");
    connect(lstMapPoly_, &QListWidget::currentRowChanged, this, [this] { lstMapPoly_Click(); });

    const std::array<const char*, 4> captions = {"&Add", "&Delete", "Re&name", "&Undelete"};
    const std::array<const char*, 4> tags = {"&ADDBUT", "&DELBUT", "&RENBUT", "&UNDELBUT"};
    const std::array<void (frmPolygon::*)(), 4> handlers = {
        &frmPolygon::mniAddPoly_Click, &frmPolygon::mniDelPoly_Click, &frmPolygon::mniRenPoly_Click,
        &frmPolygon::mniUndelete_Click};
    auto* buttons = new QGridLayout;
    buttons->setSpacing(4);
    for (int i = 0; i < 4; ++i) {
        const auto k = static_cast<std::size_t>(i);
        cmdPoly_[k] = addButton(indexed("cmdPoly", i), captions[k], tags[k]);
        connect(cmdPoly_[k], &QPushButton::clicked, this, handlers[k]);
        buttons->addWidget(cmdPoly_[k], i / 2, i % 2);
    }
    QPushButton* calcYield = addButton("cmdCalcYield", "Calculate Yields...", nullptr);
    connect(calcYield, &QPushButton::clicked, this, &frmPolygon::mnuCalcYield_Click);
    buttons->addWidget(calcYield, 2, 0, 1, 2);
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(new QLabel("Polygons", panel));
    layout->addWidget(lstMapPoly_, 1);
    layout->addLayout(buttons);
    return panel;
}

// ---- Groups ------------------------------------------------------------------------------------

QGroupBox* frmPolygon::buildCommonGroup() {
    auto* group = new QGroupBox("Common", this);
    group->setObjectName("fraCommon");
    auto* grid = new QGridLayout(group);
    const std::array<const char*, 4> captions = {"Area (ha)", "Age", "Road Area (ha)",
                                                 "Regen Delay (yrs)"};
    const std::array<PolyField, 4> fields = {PolyField::AREA, PolyField::AGE, PolyField::ROADAREA,
                                             PolyField::REGENDELAY};
    const std::array<const char*, 4> tags = {"&AREA", "&CURAGE", "&ROADAREA", "&REGENDELAYPP"};
    for (int i = 0; i < 4; ++i) {
        const auto k = static_cast<std::size_t>(i);
        txtPData_[k] =
            addEntry(indexed("txtPData", i), FieldRef{fields[k]}, {}, tags[k], kNumberWidth);
        addRow(grid, i, captions[k], txtPData_[k]);
    }
    QComboBox* fiz = addChoice(
        "lstPData_0", "FIZ", true,
        [](const Model& m, int p) { return entryIndex(m.Ref.Choices.FIZ, polyOf(m, p).FIZ.str()); },
        "&FIZ");
    QComboBox* owner = addChoice(
        "lstPData_1", "OWNERSHIP", false,
        [](const Model& m, int p) { return int{m.PolyC[static_cast<std::size_t>(p)].OWNERSHIP}; },
        "&OWNER");
    addRow(grid, 4, "FIZ", fiz);
    addRow(grid, 5, "Ownership", owner);
    grid->setColumnStretch(2, 1);
    return group;
}

QGroupBox* frmPolygon::buildHarvestGroup() {
    auto* group = new QGroupBox("Harvest", this);
    group->setObjectName("fraHarvest");
    auto* grid = new QGridLayout(group);
    grid->addWidget(columnTitle("Existing", group), 0, 1);
    grid->addWidget(columnTitle("Future", group), 0, 2);
    const std::array<const char*, 2> keys = {"EXISTINGMGNT", "FUTUREMGNT"};
    const std::array<PolyField, 2> ages = {PolyField::HAR1, PolyField::HAR2};
    const std::array<const char*, 2> yieldCaptions = {"View &Existing", "View F&uture"};
    grid->addWidget(caption("Management", group), 1, 0);
    grid->addWidget(caption("Harvest Age", group), 2, 0);
    for (int i = 0; i < 2; ++i) {
        const auto k = static_cast<std::size_t>(i);
        QComboBox* manage = addChoice(
            indexed("lstManage", i), keys[k], false,
            [k](const Model& m, int p) { return int{polyOf(m, p).MGNT[k]}; }, "&MANAGE");
        manage->addItems(i == 0 ? QStringList{"VDYP", "TIPSY", "NC", "NSR"}
                                : QStringList{"VDYP", "TIPSY"});
        grid->addWidget(manage, 1, i + 1);
        QLineEdit* age =
            addEntry(indexed("txtHar", i), FieldRef{ages[k]}, {}, "&HARAGE", kNumberWidth);
        grid->addWidget(age, 2, i + 1, Qt::AlignHCenter);
        cmdYield_[k] = addButton(indexed("cmdYield", i), yieldCaptions[k], "&SHOWYIELD");
        connect(cmdYield_[k], &QPushButton::clicked, this, [this, i] { cmdYield_Click(i); });
        grid->addWidget(cmdYield_[k], 3, i + 1);
    }

    const std::array<const char*, 2> methods = {"Clearcut", "Partial Cut"};
    for (int i = 0; i < 2; ++i) {
        const auto k = static_cast<std::size_t>(i);
        optCutMeth_[k] = new QRadioButton(methods[k], group);
        optCutMeth_[k]->setObjectName(indexed("optCutMeth", i));
        optCutMeth_[k]->installEventFilter(this);
        helpTags_.insert(optCutMeth_[k], "&PC");
        connect(optCutMeth_[k], &QRadioButton::clicked, this,
                [this, i] { commitValue("optCutMeth_Click", "SILVI", std::to_string(i)); });
        grid->addWidget(optCutMeth_[k], 4, i + 1);
    }
    grid->addWidget(caption("Cut Method", group), 4, 0);
    grid->addWidget(caption("Partial Cut %", group), 5, 0);
    grid->addWidget(addEntry("txtPC_0", FieldRef{PolyField::PCPERC}, {}, "&PCPERC", kNumberWidth),
                    5, 1, Qt::AlignHCenter);
    grid->addWidget(caption("Re-entry (yrs)", group), 6, 0);
    grid->addWidget(addEntry("txtPC_1", FieldRef{PolyField::PCNEXT}, {}, "&PCNEXT", kNumberWidth),
                    6, 1, Qt::AlignHCenter);
    return group;
}

QGroupBox* frmPolygon::buildNcGroup() {
    auto* group = new QGroupBox("NC and NSR", this);
    group->setObjectName("fraNC");
    auto* grid = new QGridLayout(group);
    grid->addWidget(caption("NC Description", group), 0, 0);
    grid->addWidget(addEntry("txtNC_0", std::nullopt, "NCDESC", "&NCDESC", 0), 0, 1, 1, 2);
    const std::array<const char*, 4> captions = {"NC Restock In (yrs)", "NC Volume/ha",
                                                 "NC Deciduous %", "NC Height (m)"};
    const std::array<PolyField, 4> fields = {PolyField::NCRESTOCKIN, PolyField::NCVOLHA,
                                             PolyField::NCDECIDUOUS, PolyField::NCHEIGHT};
    const std::array<const char*, 4> tags = {"&NCHARVIN", "&NCVOL", "&NCDECID", "&NCHEIGHT"};
    for (int i = 0; i < 4; ++i) {
        const auto k = static_cast<std::size_t>(i);
        addRow(grid, i + 1, captions[k],
               addEntry(indexed("txtNC", i + 1), FieldRef{fields[k]}, {}, tags[k], kNumberWidth));
    }
    addRow(grid, 5, "NSR Restock In (yrs)",
           addEntry("txtNSR", FieldRef{PolyField::NSRRESTOCKIN}, {}, "&NSRRESTOCK", kNumberWidth));
    grid->setColumnStretch(2, 1);
    return group;
}

QWidget* frmPolygon::buildHelpPane() {
    auto* pane = new QWidget(this);
    txtHelp_ = new QPlainTextEdit(pane);
    txtHelp_->setObjectName("txtHelp");
    txtHelp_->setReadOnly(true);
    txtHelp_->setFixedHeight(txtHelp_->fontMetrics().lineSpacing() * 7 + 12);
    QPushButton* more = addButton("cmdShowHelp", "More &Help...", nullptr);
    connect(more, &QPushButton::clicked, this, [this] { openHelp(); });
    lblNoChange_ = new QLabel(
        "Each field is stored as you leave it; the changes to a polygon are confirmed when you "
        "leave the polygon.",
        pane);
    lblNoChange_->setObjectName("lblNoChange");
    lblNoChange_->setWordWrap(true);
    auto* side = new QVBoxLayout;
    side->addWidget(more);
    side->addWidget(lblNoChange_, 1, Qt::AlignTop);
    auto* layout = new QHBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(txtHelp_, 1);
    layout->addLayout(side);
    return pane;
}

// ---- Lists
// ---------------------------------------------------------------------------------------

void frmPolygon::fillChoiceLists() {
    const ChoiceLists& lists = m_.Ref.Choices;
    auto fill = [this](const char* name, const std::vector<std::string>& entries) {
        auto* box = findChild<QComboBox*>(name);
        box->clear();
        for (const std::string& entry : entries) box->addItem(lq(entry));
    };
    fill("lstPData_0", lists.FIZ);
    fill("lstPData_1", lists.OWNERSHIP);
    fill("lstVData_0", lists.VUTILIZ);
    fill("lstVData_1", lists.STOCKING);
    fill("lstTData_0", lists.TUTILIZ);
    fill("lstTData_1", lists.REGEN);

    auto species = [](QStandardItemModel* model, const std::vector<SpeciesRec>& table, int last) {
        model->clear();
        for (int i = 0; i <= last && i < static_cast<int>(table.size()); ++i)
            model->appendRow(new QStandardItem(lq(table[static_cast<std::size_t>(i)].Desc.str())));
    };
    species(speciesV_, m_.Ref.SpeciesV, m_.Ref.SpeciesVCount);
    species(speciesT_, m_.Ref.SpeciesT, m_.Ref.SpeciesTCount);
}

}  // namespace arborex
