// The inputs of the two growth models on the polygon screen: the VDYP fields with their six
// species rows, the TIPSY fields with their five species rows and the treatments.

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include "ui/frm_polygon.hpp"
#include "ui/frm_polygon_parts.hpp"

namespace arborex {

using namespace polygon_screen;

// A species row's list of the model's species table; all rows share one item model.
QComboBox* frmPolygon::addSpeciesList(int row, bool tipsy) {
    auto* box = new QComboBox(this);
    box->setObjectName(indexed(tipsy ? "lstTSpec" : "lstVSpec", row));
    box->setModel(tipsy ? speciesT_ : speciesV_);
    box->installEventFilter(this);
    helpTags_.insert(box, tipsy ? "&SPECTDESC" : "&SPECVDESC");
    connect(box, &QComboBox::activated, this,
            [this, row, tipsy](int entry) { commitSpecies(row, tipsy, entry); });
    return box;
}

QGroupBox* frmPolygon::buildVdypGroup() {
    auto* group = new QGroupBox("Natural - VDYP Specific Data", this);
    group->setObjectName("fraVDYP");
    auto* grid = new QGridLayout;
    struct Row {
        const char* caption;
        std::optional<FieldRef> ref;
        const char* key;
        const char* tag;
    };
    const std::array<Row, 7> rows = {{
        {"Site Index (m)", FieldRef{PolyField::VSITEINDEX}, "", "&VSITE"},
        {"Total Age", FieldRef{PolyField::VAGETOTAL}, "", "&VAGE"},
        {"Total Height (m)", FieldRef{PolyField::VHEIGHTTOTAL}, "", "&VHEIGHT"},
        {"Crown Closure %", FieldRef{PolyField::CLOSURE}, "", "&CROWN"},
        {"PSYU", std::nullopt, "PSYU", "&PSYU"},
        {"PSYU Block", std::nullopt, "PSYUBLOCK", "&PSYUBLOCK"},
        {"VAF", FieldRef{PolyField::VAF}, "", "&VAF"},
    }};
    for (int i = 0; i < 7; ++i) {
        const Row& row = rows[static_cast<std::size_t>(i)];
        txtVData_[static_cast<std::size_t>(i)] =
            addEntry(indexed("txtVData", i), row.ref, row.key, row.tag, kNumberWidth);
        addRow(grid, i, row.caption, txtVData_[static_cast<std::size_t>(i)]);
    }
    txtVData_[4]->setAlignment(Qt::AlignRight);
    cmdPSYULookup_ = addButton("cmdPSYULookup", "...", "&PSYU");
    cmdPSYULookup_->setToolTip("Choose the PSYU from the list");
    cmdPSYULookup_->setFixedWidth(30);
    cmdPSYUFind_ = addButton("cmdPSYUFind", "Find", "&PSYU");
    cmdPSYUFind_->setToolTip("Find the PSYU by region and compartment");
    lblPSYUName_ = new QLabel(group);
    lblPSYUName_->setObjectName("lblPSYUName");
    lblPSYUName_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    connect(cmdPSYULookup_, &QPushButton::clicked, this, [this] { openPsyuLookup(); });
    connect(cmdPSYUFind_, &QPushButton::clicked, this, [this] { openPsyuFinder(); });
    auto* psyu = new QHBoxLayout;
    psyu->setSpacing(4);
    psyu->addWidget(cmdPSYULookup_);
    psyu->addWidget(cmdPSYUFind_);
    psyu->addWidget(lblPSYUName_, 1);
    grid->addLayout(psyu, 4, 2);

    QComboBox* utilization = addChoice(
        "lstVData_0", "VUTILIZ", true,
        [](const Model& m, int p) {
            return levelIndex(m.Ref.Choices.VUTILIZ, polyOf(m, p).VUTILIZ);
        },
        "&VUTILIZ");
    QComboBox* stocking = addChoice(
        "lstVData_1", "STOCKING", true,
        [](const Model& m, int p) {
            return entryIndex(m.Ref.Choices.STOCKING, polyOf(m, p).STOCKING.str());
        },
        "&STOCKING");
    addRow(grid, 7, "Utilization", utilization);
    addRow(grid, 8, "Stocking Class", stocking);
    grid->setColumnStretch(2, 1);

    auto* species = new QGridLayout;
    species->addWidget(caption("Species", group), 0, 0, 1, 2);
    species->addWidget(columnTitle("%", group), 0, 2);
    species->addWidget(columnTitle("Inc. Vol", group), 0, 3);
    for (int i = 0; i < 6; ++i) {
        const auto k = static_cast<std::size_t>(i);
        const std::string slot = std::to_string(i + 1);
        txtVSpec_[k] =
            addEntry(indexed("txtVSpec", i), std::nullopt, "VS" + slot, "&SPECVSYM", kCodeWidth);
        lstVSpec_[k] = addSpeciesList(i, false);
        txtVPer_[k] = addEntry(indexed("txtVPer", i), FieldRef{PolyField::VP, i}, {}, "&SPECVPERC",
                               kPercentWidth);
        chkIncVol_[k] = addCheck(
            indexed("chkIncVol", i), QString(), "VX" + slot,
            [k](const Model& m, int p) { return m.PolyC[static_cast<std::size_t>(p)].VX[k] == 1; },
            "&VMIXSPEC");
        species->addWidget(txtVSpec_[k], i + 1, 0);
        species->addWidget(lstVSpec_[k], i + 1, 1);
        species->addWidget(txtVPer_[k], i + 1, 2);
        species->addWidget(chkIncVol_[k], i + 1, 3, Qt::AlignHCenter);
    }
    lblVPerSum_ = sumLabel("lblVPerSum", group);
    species->addWidget(caption("Total", group), 7, 1, Qt::AlignRight);
    species->addWidget(lblVPerSum_, 7, 2);
    species->setColumnStretch(1, 1);

    auto* layout = new QVBoxLayout(group);
    layout->addLayout(grid);
    layout->addSpacing(6);
    layout->addLayout(species);
    layout->addStretch();
    return group;
}

QGroupBox* frmPolygon::buildTipsyGroup() {
    auto* group = new QGroupBox("Managed - TIPSY Specific Data", this);
    group->setObjectName("fraTIPSY");
    // Two fields a row, so that the species fit below without scrolling.
    auto* grid = new QGridLayout;
    const std::array<const char*, 5> captions = {"Density (S/ha)", "Thinned (S/ha)", "Total Age",
                                                 "OAF1 %", "OAF2 %"};
    const std::array<PolyField, 5> fields = {PolyField::DENSITY, PolyField::THINNED,
                                             PolyField::TAGETOTAL, PolyField::OAF1,
                                             PolyField::OAF2};
    const std::array<const char*, 5> tags = {"&DENSITY", "&THINNED", "&TAGE", "&OAF1", "&OAF2"};
    for (int i = 0; i < 5; ++i) {
        const auto k = static_cast<std::size_t>(i);
        const int row = i < 2 ? i : i - 2;
        const int column = i < 2 ? 0 : 2;
        grid->addWidget(caption(captions[k], group), row, column);
        grid->addWidget(
            addEntry(indexed("txtTData", i), FieldRef{fields[k]}, {}, tags[k], kNumberWidth), row,
            column + 1);
    }
    chkTRT_ = addCheck(
        "chkTRT", "Thinned", "THIN", [](const Model& m, int p) { return polyOf(m, p).THIN == 1; },
        "&TRT");
    grid->addWidget(chkTRT_, 2, 0, 1, 2);
    QComboBox* utilization = addChoice(
        "lstTData_0", "TUTILIZ", true,
        [](const Model& m, int p) {
            return levelIndex(m.Ref.Choices.TUTILIZ, m.PolyM[static_cast<std::size_t>(p)].TUTILIZ);
        },
        "&TUTILIZ");
    QComboBox* regeneration = addChoice(
        "lstTData_1", "REGEN", false, [](const Model& m, int p) { return int{polyOf(m, p).REGEN}; },
        "&REGEN");
    grid->addWidget(caption("Utilization", group), 3, 0);
    grid->addWidget(utilization, 3, 1);
    grid->addWidget(caption("Regeneration", group), 3, 2);
    grid->addWidget(regeneration, 3, 3);
    grid->setColumnStretch(4, 1);

    auto* species = new QGridLayout;
    const std::array<const char*, 4> titles = {"%", "Height", "SI", "GW %"};
    species->addWidget(caption("Species", group), 0, 0, 1, 2);
    for (int c = 0; c < 4; ++c)
        species->addWidget(columnTitle(titles[static_cast<std::size_t>(c)], group), 0, 2 + c);
    for (int i = 0; i < 5; ++i) {
        const auto k = static_cast<std::size_t>(i);
        const std::string slot = std::to_string(i + 1);
        txtTSpec_[k] =
            addEntry(indexed("txtTSpec", i), std::nullopt, "TS" + slot, "&SPECTSYM", kCodeWidth);
        lstTSpec_[k] = addSpeciesList(i, true);
        txtTPer_[k] = addEntry(indexed("txtTPer", i), FieldRef{PolyField::TP, i}, {}, "&SPECTPERC",
                               kPercentWidth);
        txtTHeight_[k] = addEntry(indexed("txtTHeight", i), FieldRef{PolyField::TH, i}, {},
                                  "&SPECTHT", kPercentWidth);
        txtTSite_[k] = addEntry(indexed("txtTSite", i), FieldRef{PolyField::TI, i}, {},
                                "&SPECTSITE", kPercentWidth);
        txtTGW_[k] = addEntry(indexed("txtTGW", i), FieldRef{PolyField::TG, i}, {}, "&SPECTGW",
                              kPercentWidth);
        const int row = i + 1;
        species->addWidget(txtTSpec_[k], row, 0);
        species->addWidget(lstTSpec_[k], row, 1);
        species->addWidget(txtTPer_[k], row, 2);
        species->addWidget(txtTHeight_[k], row, 3);
        species->addWidget(txtTSite_[k], row, 4);
        species->addWidget(txtTGW_[k], row, 5);
    }
    lblTPerSum_ = sumLabel("lblTPerSum", group);
    species->addWidget(caption("Total", group), 6, 1, Qt::AlignRight);
    species->addWidget(lblTPerSum_, 6, 2);
    species->setColumnStretch(1, 1);

    auto* treatments = new QGridLayout;
    cmdCT_ = addButton("cmdCT", "Commercial &Thin...", "&COMMTHIN");
    cmdFert_ = addButton("cmdFert", "&Fertilization...", "&FERT");
    connect(cmdCT_, &QPushButton::clicked, this, &frmPolygon::cmdCT_Click);
    connect(cmdFert_, &QPushButton::clicked, this, &frmPolygon::cmdFert_Click);
    lblCommThin_ = new QLabel(group);
    lblCommThin_->setObjectName("lblCommThin");
    lblFert_ = new QLabel(group);
    lblFert_->setObjectName("lblFert");
    treatments->addWidget(cmdCT_, 0, 0);
    treatments->addWidget(lblCommThin_, 0, 1);
    treatments->addWidget(cmdFert_, 1, 0);
    treatments->addWidget(lblFert_, 1, 1);
    treatments->setColumnStretch(1, 1);

    auto* layout = new QVBoxLayout(group);
    layout->addLayout(grid);
    layout->addSpacing(6);
    layout->addLayout(species);
    layout->addSpacing(6);
    layout->addLayout(treatments);
    layout->addStretch();
    return group;
}

}  // namespace arborex
