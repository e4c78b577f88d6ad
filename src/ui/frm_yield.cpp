#include "ui/frm_yield.hpp"

#include <QClipboard>
#include <QEvent>
#include <QFile>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QScrollBar>
#include <QTableWidget>
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
