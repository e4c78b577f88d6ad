// The calculation screen's controls and menus, laid out to read at 1280 x 800 and to give any
// extra room to the order lists, the graph and the schedule.

#include <QAction>
#include <QCheckBox>
#include <QFontDatabase>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenuBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "report/graph_files.hpp"
#include "ui/frm_calc.hpp"
#include "ui/standing_graph.hpp"

namespace arborex {

namespace {

constexpr std::array<const char*, 7> kSortCaptions = {
    "Sort &Oldest First",  "Sort Closest to &Harvest age",
    "Sort Random",         "Sort Youngest First",
    "Sort by MAI",         "Sort by SI",
    "Sort by Lead Species"};

QPushButton* plainButton(const QString& caption, const char* name, QWidget* parent) {
    auto* button = new QPushButton(caption, parent);
    button->setObjectName(name);
    // Enter belongs to the rate field, which calculates; no button may take it.
    button->setAutoDefault(false);
    button->setDefault(false);
    return button;
}

}  // namespace

// ---- Building the screen ----------------------------------------------------------------------

QAction* frmCalc::addMenuAction(QMenu* menu, const char* name, const QString& caption,
                                const std::function<void()>& handler) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, handler);
    return action;
}

void frmCalc::buildMenus(QMenuBar* bar) {
    QMenu* file = bar->addMenu("&File");
    file->setObjectName("mnuFile");
    addMenuAction(file, "mnuCopyTable", "Copy Harvest Schedule Table",
                  [this] { mnuCopyTable_Click(); });
    addMenuAction(file, "mnuPrintScreen", "&Print Screen...", [this] { mnuPrintScreen_Click(); });
    file->addSeparator();
    addMenuAction(file, "mnuReport", "Create Calculation Report", [this] { mnuReport_Click(); });
    addMenuAction(file, "mnuRepSet", "Report Settings", [this] { mnuRepSet_Click(); });
    file->addSeparator();
    addMenuAction(file, "mniOK", "&OK", [this] { close(); });

    QMenu* calculate = bar->addMenu("&Calculate");
    calculate->setObjectName("mnuCalculate");
    addMenuAction(calculate, "mniCalculate", "&Harvest Rate", [this] { cmdCalculate_Click(); });
    addMenuAction(calculate, "mniHanzlik", "Hanzli&k Rate", [this] { mniHanzlik_Click(); });
    addMenuAction(calculate, "mniCFHanz", "Current/Future Hanzlik at Harvest",
                  [this] { mniCFHanz_Click(); });
    calculate->addSeparator();
    addMenuAction(calculate, "mniHarvParam", "Harvest &Parameters...",
                  [this] { mniHarvParam_Click(); });

    QMenu* sort = bar->addMenu("&Sort");
    sort->setObjectName("mnuSort");
    mniSortDefault_ = addMenuAction(sort, "mniSortDefault", "&Default Sort Order",
                                    [this] { mniSortDefault_Click(); });
    for (int i = 0; i < 7; ++i) {
        mniSort_[static_cast<std::size_t>(i)] = addMenuAction(
            sort, qPrintable(QString("mniSort_%1").arg(i)),
            kSortCaptions[static_cast<std::size_t>(i)], [this, i] { mniSort_Click(i); });
    }
    mniSortCustom_ = addMenuAction(sort, "mniSortCustom", "Custom Sort Order",
                                   [this] { mniSortCustom_Click(); });
    mniSortDefault_->setCheckable(true);
    mniSortCustom_->setCheckable(true);
    for (QAction* entry : mniSort_) entry->setCheckable(true);
    sort->addSeparator();
    addMenuAction(sort, "mnuInclude_0", "Include All Polygons", [this] { mnuInclude_Click(0); });
    addMenuAction(sort, "mnuInclude_1", "Exclude All Polygons", [this] { mnuInclude_Click(1); });

    QMenu* graphs = bar->addMenu("&Graph");
    graphs->setObjectName("mnuGraphs");
    addMenuAction(graphs, "mniTimeVol_0", "Time Volume Graph", [this] { GraphTimeVolume(); });
    addMenuAction(graphs, "mniTimeVol_1", "New Time Volume Graph", [this] { mniTimeVol_Click(1); });
    addMenuAction(graphs, "mniAgeDist", "Age Distribution Graph", [this] { mniAgeDist_Click(); });
    graphs->addSeparator();
    for (int i = 0; i < kResultGraphCount; ++i)
        addMenuAction(graphs, qPrintable(QString("mnuGraph_%1").arg(i)),
                      kResultGraphCaptions[static_cast<std::size_t>(i)],
                      [this, i] { mnuGraph_Click(i); });
}

QLineEdit* frmCalc::addTextField(const char* name, std::string CalcScreen::*field, float low,
                                 float high, int16_t decimals, bool clamped) {
    auto* edit = new QLineEdit(this);
    edit->setObjectName(name);
    edit->setFixedWidth(edit->fontMetrics().horizontalAdvance("000000") + 12);
    edit->setAlignment(Qt::AlignRight);
    edit->installEventFilter(this);
    textFields_.push_back({edit, field, low, high, decimals, clamped});
    return edit;
}

QCheckBox* frmCalc::addBox(const char* name, const char* caption, bool CalcScreen::*field) {
    auto* box = new QCheckBox(caption, this);
    box->setObjectName(name);
    boxFields_.push_back({box, field});
    return box;
}

QWidget* frmCalc::buildOrderPanel() {
    auto* frame = new QGroupBox("Harvest Order", this);
    frame->setObjectName("fraOrder");
    const QFont fixed = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    lblTitle_ = new QLabel(frame);
    lblTitle_->setObjectName("lblTitle");
    lblTitle_->setFont(fixed);
    // The caption follows the list's width; a narrow screen cuts it rather than widening.
    lblTitle_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    const std::array<const char*, 2> captions = {"Excluded Blocks", "Included Blocks"};
    for (int i = 0; i < 2; ++i) {
        auto* list = new QListWidget(frame);
        list->setObjectName(QString("lstCutOrder_%1").arg(i));
        list->setFont(fixed);
        list->setSelectionMode(QAbstractItemView::SingleSelection);
        list->setMinimumWidth(QFontMetrics(fixed).horizontalAdvance(QString(40, '0')));
        list->viewport()->installEventFilter(this);
        connect(list, &QListWidget::itemDoubleClicked, this,
                [this, i] { lstCutOrder_DblClick(i); });
        connect(list, &QListWidget::itemSelectionChanged, this, [this, i] {
            if (!quiet_) lstCutOrder_Click(i);
        });
        lstCutOrder_[static_cast<std::size_t>(i)] = list;
    }
    lstCutOrder_[1]->setMinimumHeight(120);
    lstCutOrder_[0]->setMinimumHeight(60);

    auto* moves = new QHBoxLayout;
    constexpr std::array<const char*, 4> kMoves = {"Top", "Up", "Down", "Bottom"};
    for (int i = 0; i < 4; ++i) {
        auto* button = plainButton(kMoves[static_cast<std::size_t>(i)],
                                   qPrintable(QString("cmdMove_%1").arg(i)), frame);
        connect(button, &QPushButton::clicked, this, [this, i] { cmdMove_Click(i); });
        moves->addWidget(button);
    }
    moves->addStretch();

    auto* layout = new QVBoxLayout(frame);
    layout->addWidget(new QLabel(captions[1], frame));
    layout->addWidget(lblTitle_);
    layout->addWidget(lstCutOrder_[1], 3);
    layout->addLayout(moves);
    layout->addWidget(new QLabel(captions[0], frame));
    layout->addWidget(lstCutOrder_[0], 1);
    return frame;
}

QWidget* frmCalc::buildParameterPanel() {
    auto* frame = new QGroupBox("Calculation", this);
    frame->setObjectName("fraCalc");
    txtVolToCut_ = addTextField("txtVolToCut", &CalcScreen::txtVolToCut, 0, 0, 0, false);
    lbl0_ = new QLabel(frame);
    lbl0_->setObjectName("lbl_0");
    cmdCalculate_ = plainButton("&Calculate", "cmdCalculate", frame);
    connect(cmdCalculate_, &QPushButton::clicked, this, &frmCalc::cmdCalculate_Click);
    connect(txtVolToCut_, &QLineEdit::returnPressed, this, &frmCalc::cmdCalculate_Click);

    chkCalcRate_ = addBox("chkCalcRate", "Auto - Harvest Rate", &CalcScreen::chkCalcRate);
    QCheckBox* area = addBox("chkArea", "Area Based", &CalcScreen::chkArea);
    QLineEdit* period = addTextField("txtPeriod", &CalcScreen::txtPeriod, 1, 10, 0, true);
    QLineEdit* relax = addTextField("txtRelax", &CalcScreen::txtRelax, 0, 5, 0, true);
    QCheckBox* calcYears =
        addBox("chkCalcYears", "Auto - Delay Harvest for", &CalcScreen::chkCalcYears);
    txtStartIn_ = addTextField("txtStartIn", &CalcScreen::txtStartIn, 0, 0, 0, false);
    QCheckBox* conifer = addBox("chkConifer", "Utilize Conifer Only", &CalcScreen::chkConifer);
    QCheckBox* disPC = addBox("chkDisPC", "Disable Partial Cut", &CalcScreen::chkDisPC);

    connect(area, &QCheckBox::clicked, this, &frmCalc::chkArea_Click);
    for (QCheckBox* box : {chkCalcRate_, calcYears, conifer, disPC})
        connect(box, &QCheckBox::clicked, this, &frmCalc::markOutOfDate);
    for (QLineEdit* edit : {period, relax})
        connect(edit, &QLineEdit::textEdited, this, &frmCalc::markOutOfDate);

    auto* grid = new QGridLayout(frame);
    grid->addWidget(new QLabel("Harvest Rate", frame), 0, 0);
    grid->addWidget(txtVolToCut_, 0, 1);
    grid->addWidget(lbl0_, 0, 2);
    grid->addWidget(cmdCalculate_, 0, 3);
    grid->addWidget(chkCalcRate_, 1, 0, 1, 2);
    grid->addWidget(area, 1, 2, 1, 2);
    grid->addWidget(new QLabel("Period", frame), 2, 0);
    grid->addWidget(period, 2, 1);
    grid->addWidget(new QLabel("years", frame), 2, 2);
    grid->addWidget(new QLabel("Relax by", frame), 3, 0);
    grid->addWidget(relax, 3, 1);
    grid->addWidget(new QLabel("years", frame), 3, 2);
    grid->addWidget(calcYears, 4, 0);
    grid->addWidget(txtStartIn_, 4, 1);
    grid->addWidget(new QLabel("years", frame), 4, 2);
    grid->addWidget(conifer, 5, 0, 1, 2);
    grid->addWidget(disPC, 5, 2, 1, 2);
    for (int i = 0; i < 4; ++i) {
        auto* box = new QCheckBox(frame);
        box->setObjectName(QString("chkCut_%1").arg(i));
        connect(box, &QCheckBox::clicked, this, &frmCalc::markOutOfDate);
        chkCut_[static_cast<std::size_t>(i)] = box;
        grid->addWidget(box, 6 + i / 2, (i % 2) * 2, 1, 2);
    }
    grid->setColumnStretch(3, 1);
    return frame;
}

QWidget* frmCalc::buildConstraintPanel() {
    auto* frame = new QGroupBox("Constraints", this);
    frame->setObjectName("fraConstraints");
    chkConAge_ = addBox("chkConAge", "Age Constraint", &CalcScreen::chkConAge);
    txtAgePerc_ = addTextField("txtAgePerc", &CalcScreen::txtAgePerc, 0, 100, 0, true);
    QLineEdit* age = addTextField("txtAge", &CalcScreen::txtAge, 0, 350, 0, true);
    chkConHeight_ = addBox("chkConHeight", "Height Constraint", &CalcScreen::chkConHeight);
    txtHeightPerc_ = addTextField("txtHeightPerc", &CalcScreen::txtHeightPerc, 0, 100, 0, true);
    QLineEdit* height = addTextField("txtHeight", &CalcScreen::txtHeight, 0, 99, 1, true);
    chkConNetDown_ = addBox("chkConNetDown", "Area Net Down", &CalcScreen::chkConNetDown);
    txtNetDown_ = addTextField("txtNetDown", &CalcScreen::txtNetDown, 0, 99, 0, true);
    connect(chkConAge_, &QCheckBox::clicked, this, &frmCalc::chkConstraint_Click);
    connect(chkConHeight_, &QCheckBox::clicked, this, &frmCalc::chkConstraint_Click);
    connect(chkConNetDown_, &QCheckBox::clicked, this, &frmCalc::chkConNetDown_Click);
    for (QLineEdit* edit : {age, height})
        connect(edit, &QLineEdit::textEdited, this, &frmCalc::markOutOfDate);

    auto* grid = new QGridLayout(frame);
    grid->addWidget(chkConAge_, 0, 0);
    grid->addWidget(txtAgePerc_, 0, 1);
    grid->addWidget(new QLabel("% Older than", frame), 0, 2);
    grid->addWidget(age, 0, 3);
    grid->addWidget(new QLabel("yrs", frame), 0, 4);
    grid->addWidget(chkConHeight_, 1, 0);
    grid->addWidget(txtHeightPerc_, 1, 1);
    grid->addWidget(new QLabel("% Taller than", frame), 1, 2);
    grid->addWidget(height, 1, 3);
    grid->addWidget(new QLabel("m", frame), 1, 4);
    grid->addWidget(chkConNetDown_, 2, 0);
    grid->addWidget(txtNetDown_, 2, 1);
    grid->addWidget(new QLabel("%", frame), 2, 2);

    // Carried through the project file and read by nothing else: present, hidden, disabled.
    const std::array<std::pair<const char*, std::string CalcScreen::*>, 3> unused = {
        {{"txtNoHarv", &CalcScreen::txtNoHarv},
         {"txtHarvGap", &CalcScreen::txtHarvGap},
         {"txtWithin", &CalcScreen::txtWithin}}};
    for (const auto& [name, field] : unused) {
        QLineEdit* edit = addTextField(name, field, 0, 0, 0, false);
        edit->setEnabled(false);
        edit->hide();
    }
    grid->setColumnStretch(5, 1);
    return frame;
}

QWidget* frmCalc::buildGraphPanel() {
    auto* frame = new QGroupBox("Standing Volume / Time", this);
    frame->setObjectName("fraGraph");
    picCalc_ = new StandingGraph(frame);
    connect(picCalc_, &StandingGraph::pressed, this, &frmCalc::picCalc_MouseDown);
    auto* axis = new QVBoxLayout;
    for (int i = 0; i < 3; ++i) {
        auto* label = new QLabel(frame);
        label->setObjectName(QString("lblYieldYAxis_%1").arg(i));
        label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        lblYieldYAxis_[static_cast<std::size_t>(i)] = label;
        axis->addWidget(label);
        if (i < 2) axis->addStretch();
    }
    auto* layout = new QHBoxLayout(frame);
    layout->addLayout(axis);
    layout->addWidget(picCalc_, 1);
    return frame;
}

QWidget* frmCalc::buildSchedulePanel() {
    auto* frame = new QGroupBox("Harvest Schedule", this);
    frame->setObjectName("fraSchedule");
    const std::array<const char*, 2> views = {"Annual", "Polygon"};
    auto* choices = new QHBoxLayout;
    for (int i = 0; i < 2; ++i) {
        auto* option = new QRadioButton(views[static_cast<std::size_t>(i)], frame);
        option->setObjectName(QString("optReport_%1").arg(i));
        option->setChecked(i == 0);
        connect(option, &QRadioButton::toggled, this, [this](bool on) {
            if (!on) return;
            ShowSchedule();
            ShowIssues();
        });
        optReport_[static_cast<std::size_t>(i)] = option;
        choices->addWidget(option);
    }
    chkAdvanced_ = new QCheckBox("Advanced", frame);
    chkAdvanced_->setObjectName("chkAdvanced");
    connect(chkAdvanced_, &QCheckBox::clicked, this, [this] {
        ShowSchedule();
        ShowIssues();
    });
    choices->addWidget(chkAdvanced_);
    choices->addStretch();

    lsvCalc_ = new QTreeWidget(frame);
    lsvCalc_->setObjectName("lsvCalc");
    lsvCalc_->setRootIsDecorated(false);
    lsvCalc_->setUniformRowHeights(true);
    lsvCalc_->setAlternatingRowColors(true);
    lsvCalc_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lsvCalc_->setMinimumHeight(160);
    lsvCalc_->header()->setStretchLastSection(false);
    connect(lsvCalc_, &QTreeWidget::itemSelectionChanged, this, [this] {
        if (!quiet_) ShowSelected();
    });

    lblError_ = new QLabel(frame);
    lblError_->setObjectName("lblError");
    lblError_->setWordWrap(true);

    auto* layout = new QVBoxLayout(frame);
    layout->addLayout(choices);
    layout->addWidget(lsvCalc_, 1);
    layout->addWidget(lblError_);
    return frame;
}

}  // namespace arborex
