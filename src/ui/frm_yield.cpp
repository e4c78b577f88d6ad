#include "ui/frm_yield.hpp"

#include <QAction>
#include <QClipboard>
#include <QEvent>
#include <QFile>
#include <QFocusEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QScrollBar>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>

#include "base/errors.hpp"
#include "frame/error_handler.hpp"
#include "report/graph_data.hpp"
#include "ui/frm_graph.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmYield";
constexpr int kColumnWidth = 58;
constexpr const char* kExportFilter = "Tab Delimited (*.txt)|*.txt|Comma Delimited (*.csv)|*.csv";

QString indexed(const char* name, std::size_t index) {
    return QString("%1_%2").arg(name).arg(index);
}

QLabel* caption(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return label;
}

}  // namespace

frmYield::frmYield(Model& m, Host& host, QWidget* parent) : QDialog(parent), m_(m), host_(host) {
    setObjectName("frmYield");
    setWindowTitle("Yield Table and Polygon Specific Harvest Parameters");
    setWindowFlag(Qt::WindowMaximizeButtonHint);

    grdYield_ = new QTableWidget(this);
    grdYield_->setObjectName("grdYield");
    grdYield_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grdYield_->setSelectionMode(QAbstractItemView::ContiguousSelection);
    grdYield_->verticalHeader()->setVisible(false);
    grdYield_->horizontalHeader()->setDefaultSectionSize(kColumnWidth);
    grdYield_->verticalHeader()->setDefaultSectionSize(20);
    grdYield_->setAlternatingRowColors(true);
    grdYield_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);

    picGraph_ = new YieldGraph(this);
    connect(picGraph_, &YieldGraph::clickedAt, this, &frmYield::picGraph_MouseDown);
    lblYieldXAxis_ = new QLabel("Age (years)", this);
    lblYieldXAxis_->setObjectName("lblYieldXAxis");
    lblYieldXAxis_->setAlignment(Qt::AlignCenter);

    auto* underGraph = new QHBoxLayout;
    underGraph->addWidget(lblYieldXAxis_, 1);
    underGraph->addWidget(buildKey());

    auto* fields = new QHBoxLayout;
    fields->addWidget(buildCriteria());
    fields->addWidget(buildResults());

    lblYieldTitle_ = new QLabel(this);
    lblYieldTitle_->setObjectName("lblYieldTitle");
    QFont bold = lblYieldTitle_->font();
    bold.setBold(true);
    lblYieldTitle_->setFont(bold);

    auto* right = new QVBoxLayout;
    right->addWidget(lblYieldTitle_);
    right->addWidget(picGraph_, 1);
    right->addLayout(underGraph);
    right->addLayout(fields);

    auto* body = new QHBoxLayout;
    body->addWidget(grdYield_);
    body->addLayout(right, 1);

    auto* layout = new QVBoxLayout(this);
    buildMenus();
    layout->setMenuBar(findChild<QMenuBar*>("mnuYield"));
    layout->addLayout(body);
    resizeWithin(*this, QSize(1240, 720));
}

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

bool frmYield::act(const char* routine, const std::function<void()>& step) {
    return runGuarded(m_, host_, routine, kModule, step);
}

// ---- Showing -----------------------------------------------------------------------------------

void frmYield::showManagement(int16_t polygon, int16_t management) {
    YieldView view;
    if (!act("showManagement", [&] { view = yieldViewOf(m_, polygon, management); })) return;
    view_.YieldMgnt = view.YieldMgnt;
    showYield(view.YieldPoly, view.YieldModel);
}

void frmYield::showYield(int16_t polygon, int16_t t) {
    view_.YieldPoly = polygon;
    view_.YieldModel = t;
    YieldPicture picture;
    act("showYield", [&] {
        fillTable();
        picture = yieldPicture(m_, view_);
    });
    picGraph_->setPicture(picture);
    lblYieldTitle_->setText(lq(yieldViewTitle(m_, view_)));
    showFields();
    updateGraph();
    showCaution(host_.prompt, picture.caution);
}

void frmYield::fillTable() {
    const YieldTable table = yieldTable(m_, view_);
    grdYield_->clear();
    grdYield_->setColumnCount(static_cast<int>(table.heads.size()));
    grdYield_->setRowCount(static_cast<int>(table.rows.size()));
    QStringList heads;
    for (const std::string& head : table.heads) heads << lq(head);
    grdYield_->setHorizontalHeaderLabels(heads);
    // Every column in sight: the table is read down, not across.
    grdYield_->setFixedWidth(grdYield_->columnCount() * kColumnWidth + 2 * grdYield_->frameWidth() +
                             grdYield_->verticalScrollBar()->sizeHint().width());
    for (std::size_t r = 0; r < table.rows.size(); ++r)
        for (std::size_t c = 0; c < table.rows[r].size(); ++c) {
            auto* cell = new QTableWidgetItem(lq(table.rows[r][c]));
            cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            grdYield_->setItem(static_cast<int>(r), static_cast<int>(c), cell);
        }
}

void frmYield::showFields() {
    act("showFields", [&] {
        for (std::size_t i = 0; i < txtFindAge_.size(); ++i)
            txtFindAge_[i]->setText(lq(findAgeText(m_, view_, static_cast<int>(i))));
        txtHarvestRate_->setText(lq(harvestRateText(m_, view_)));
    });
    const bool open = view_.YieldPoly >= 0 && view_.YieldPoly <= m_.LastPoly;
    for (QLineEdit* field : txtFindAge_) field->setEnabled(open);
    txtHarvestRate_->setEnabled(open);
    findChild<QWidget*>("updnHarvestAge")->setEnabled(open);
}

void frmYield::updateGraph() {
    YieldLabels labels;
    std::vector<YieldMarker> markers;
    act("updateGraph", [&] {
        labels = yieldLabels(m_, view_);
        markers = yieldMarkers(m_, view_);
    });
    const std::array<const std::string*, 9> yield = {
        &labels.siteIndex,  &labels.maiAge,    &labels.maxMai,
        &labels.diaAge,     &labels.volAge,    &labels.constraintAge,
        &labels.harvestAge, &labels.targetDbh, &labels.targetVol};
    for (std::size_t i = 0; i < lblYield_.size(); ++i) lblYield_[i]->setText(lq(*yield[i]));
    lblCT_[0]->setText(lq(labels.thinVolBefore));
    lblCT_[1]->setText(lq(labels.thinVolAfter));
    lblCT_[2]->setText(lq(labels.thinAge));
    picGraph_->setMarkers(std::move(markers));
}

// ---- The fields --------------------------------------------------------------------------------

void frmYield::targetChanged() {
    updateGraph();
    if (targetAgeChanged_) targetAgeChanged_();
}

void frmYield::txtFindAge_LostFocus(int index) {
    QLineEdit* field = txtFindAge_.at(static_cast<std::size_t>(index));
    act("txtFindAge_LostFocus", [&] {
        field->setText(lq(arborex::txtFindAge_LostFocus(m_, view_, index, ls(field->text()))));
    });
    // The calculated harvest age may have moved, and with it a target that follows it.
    txtHarvestRate_->setText(lq(harvestRateText(m_, view_)));
    targetChanged();
}

void frmYield::txtHarvestRate_LostFocus() {
    act("txtHarvestRate_LostFocus", [&] {
        txtHarvestRate_->setText(
            lq(arborex::txtHarvestRate_LostFocus(m_, view_, ls(txtHarvestRate_->text()))));
    });
    txtHarvestRate_->setModified(false);
    targetChanged();
}

void frmYield::stepTarget(int16_t step) {
    // A number typed and not yet left counts before the step.
    if (txtHarvestRate_->isModified()) txtHarvestRate_LostFocus();
    act(step > 0 ? "updnHarvestAge_UpClick" : "updnHarvestAge_DownClick",
        [&] { txtHarvestRate_->setText(lq(updnHarvestAge_Click(m_, view_, step))); });
    targetChanged();
}

void frmYield::updnHarvestAge_UpClick() {
    stepTarget(1);
}

void frmYield::updnHarvestAge_DownClick() {
    stepTarget(-1);
}

void frmYield::picGraph_MouseDown(double x) {
    std::optional<int16_t> age;
    act("picGraph_MouseDown", [&] { age = arborex::picGraph_MouseDown(m_, view_, x); });
    if (!age) return;
    txtHarvestRate_->setText(lq(harvestRateText(m_, view_)));
    targetChanged();
}

bool frmYield::eventFilter(QObject* watched, QEvent* event) {
    const bool left = event->type() == QEvent::FocusOut &&
                      static_cast<QFocusEvent*>(event)->reason() != Qt::ActiveWindowFocusReason &&
                      static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason;
    const bool entered = event->type() == QEvent::KeyPress &&
                         (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Return ||
                          static_cast<QKeyEvent*>(event)->key() == Qt::Key_Enter);
    if (left || entered) {
        if (watched == txtHarvestRate_) txtHarvestRate_LostFocus();
        for (std::size_t i = 0; i < txtFindAge_.size(); ++i)
            if (watched == txtFindAge_[i]) txtFindAge_LostFocus(static_cast<int>(i));
        if (entered) return true;
    }
    return QDialog::eventFilter(watched, event);
}

// ---- The menus ---------------------------------------------------------------------------------

void frmYield::mnuCopyTable_Click() {
    act("mnuCopyTable_Click", [&] {
        QGuiApplication::clipboard()->setText(lq(yieldTableText(yieldTable(m_, view_), "\t")));
    });
}

void frmYield::mnuExportCSV_Click() {
    FileRequest request;
    request.title = "Export Table as Delimited File";
    request.filter = kExportFilter;
    request.overwritePrompt = true;
    const auto choice = host_.prompt.saveFile(request);
    if (!choice) return;
    act("mnuExportCSV_Click", [&] {
        const std::string text =
            yieldTableText(yieldTable(m_, view_), choice->filterIndex == 2 ? ", " : "\t");
        QFile file(qs(choice->path));
        if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) ||
            file.write(text.data(), static_cast<qint64>(text.size())) !=
                static_cast<qint64>(text.size()))
            throw ArborexError(ErrPathFileAccess, choice->path);
    });
}

void frmYield::mnuGraph_Click() {
    GraphPicture picture;
    if (!act("mnuGraph_Click",
             [&] { picture = GraphYieldCurve(m_, view_.YieldPoly, view_.YieldModel); }))
        return;
    if (!graph_) graph_ = new frmGraph(m_, host_, this);
    graph_->GraphScreen(std::move(picture));
    graph_->show();
    graph_->raise();
}

}  // namespace arborex
