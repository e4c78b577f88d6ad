#include "ui/frm_summary.hpp"

#include <algorithm>

#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenuBar>
#include <QPushButton>
#include <QRegularExpression>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "base/dates.hpp"
#include "frame/error_handler.hpp"
#include "ui/frm_harv_age.hpp"
#include "ui/frm_harv_param.hpp"
#include "ui/frm_silvi.hpp"
#include "ui/ui_helpers.hpp"
#include "yield/harvest_ages.hpp"
#include "yield/stand_updates.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmSummary";
constexpr int kTwipsPerPixel = 15;
constexpr int kKeyRole = Qt::UserRole;
constexpr int kTotalRole = Qt::UserRole + 1;

// A row of the list. Columns sort by the numbers in their text ("9.0" before "10.0"), and the
// total row stays at the bottom whichever way the list is sorted.
class SummaryItem final : public QTreeWidgetItem {
public:
    using QTreeWidgetItem::QTreeWidgetItem;

    bool operator<(const QTreeWidgetItem& other) const override {
        const bool descending =
            treeWidget() && treeWidget()->header()->sortIndicatorOrder() == Qt::DescendingOrder;
        const bool thisTotal = data(0, kTotalRole).toBool();
        const bool otherTotal = other.data(0, kTotalRole).toBool();
        if (thisTotal != otherTotal) return descending ? thisTotal : otherTotal;
        const int column = treeWidget() ? treeWidget()->sortColumn() : 0;
        bool numbers = false;
        const double value = numberIn(text(column), numbers);
        bool otherNumbers = false;
        const double otherValue = numberIn(other.text(column), otherNumbers);
        if (numbers && otherNumbers) return value < otherValue;
        if (numbers != otherNumbers) return numbers;  // numbers before words and empty cells
        return text(column).localeAwareCompare(other.text(column)) < 0;
    }

private:
    // The number a cell shows, without its brackets, marker or thousands separators.
    static double numberIn(QString text, bool& ok) {
        static const QRegularExpression decoration("[\\[\\],*<>]");
        return text.remove(decoration).trimmed().toDouble(&ok);
    }
};

// Names, managements and targets read left to right, the numbers line up on the right.
bool textColumn(std::size_t column) {
    return column == 0 || column == 3 || column == 4 || column == 7 || column == 8;
}

}  // namespace

frmSummary::frmSummary(Model& m, Host& host, QWidget* parent)
    : QDialog(parent), m_(m), host_(host) {
    setObjectName("frmSummary");
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    lsvSum_ = new QTreeWidget(this);
    lsvSum_->setObjectName("lsvSum");
    lsvSum_->setRootIsDecorated(false);
    lsvSum_->setUniformRowHeights(true);
    lsvSum_->setAlternatingRowColors(true);
    lsvSum_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    lsvSum_->setSortingEnabled(false);  // sorted on a column click only, as the user asks
    lsvSum_->header()->setSectionsClickable(true);
    lsvSum_->header()->setStretchLastSection(false);
    connect(lsvSum_->header(), &QHeaderView::sectionClicked, this, &frmSummary::lsvSum_ColumnClick);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 8);
    buildMenus();
    buildButtons();
    layout->addWidget(lsvSum_, 1);
    resizeWithin(*this, QSize(1180, 520));

    // On load: caption, columns, rows.
    UpdateCaption();
    setupGrid();
    ShowSummary();
}

QAction* frmSummary::addMenuAction(QMenu* menu, const char* name, const QString& caption,
                                   void (frmSummary::*handler)()) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, handler);
    return action;
}

void frmSummary::buildMenus() {
    auto* bar = new QMenuBar(this);
    QMenu* file = bar->addMenu("&File");
    file->setObjectName("mnuFile");
    addMenuAction(file, "mnuSave", "&Save", &frmSummary::mnuSave_Click);
    addMenuAction(file, "mnuSaveAs", "Save &As...", &frmSummary::mnuSaveAs_Click);
    file->addSeparator();
    addMenuAction(file, "mnuOK", "&Ok", &frmSummary::mnuOK_Click);
    QMenu* edit = bar->addMenu("&Edit");
    edit->setObjectName("mnuEdit");
    addMenuAction(edit, "mnuCopyTable", "&Copy Table", &frmSummary::mnuCopyTable_Click);
    addMenuAction(edit, "mnuSelectAll", "Select &All", &frmSummary::mnuSelectAll_Click);
    QMenu* update = bar->addMenu("&Update");
    update->setObjectName("mnuUpdate");
    addMenuAction(update, "mnuHarAge", "&Harvest Ages", &frmSummary::mnuHarAge_Click);
    addMenuAction(update, "mnuSilvi", "&Silviculture System", &frmSummary::mnuSilvi_Click);
    addMenuAction(update, "mniHarvParm", "Harvest &Parameters", &frmSummary::mniHarvParm_Click);
    layout()->setMenuBar(bar);
}

void frmSummary::buildButtons() {
    auto* picBar = new QWidget(this);
    picBar->setObjectName("picBar");
    auto* bar = new QHBoxLayout(picBar);
    bar->setContentsMargins(0, 4, 0, 4);
    const auto button = [&](const char* name, const char* caption, void (frmSummary::*handler)()) {
        auto* b = new QPushButton(caption, picBar);
        b->setObjectName(name);
        connect(b, &QPushButton::clicked, this, handler);
        bar->addWidget(b);
        return b;
    };
    button("cmdHarvAges", "&Harvest Ages", &frmSummary::mnuHarAge_Click);
    button("cmdSilvi", "&Silviculture System", &frmSummary::mnuSilvi_Click);
    button("cmdHarvParam", "Harvest &Parameters", &frmSummary::mniHarvParm_Click);
    bar->addStretch();
    button("cmdOK", "&Ok", &frmSummary::mnuOK_Click)->setDefault(true);
    layout()->addWidget(picBar);
}

void frmSummary::UpdateCaption() {
    arborex::UpdateCaption(*this, m_, "Summary");
}

void frmSummary::setupGrid() {
    QStringList captions;
    for (const SummaryColumn& column : kSummaryColumns) captions << lq(column.caption);
    lsvSum_->setColumnCount(static_cast<int>(captions.size()));
    lsvSum_->setHeaderLabels(captions);
    for (std::size_t c = 0; c < kSummaryColumns.size(); ++c) {
        const int column = static_cast<int>(c);
        lsvSum_->setColumnWidth(column, kSummaryColumns[c].width / kTwipsPerPixel);
        lsvSum_->headerItem()->setToolTip(column, captions[column]);
    }
}

void frmSummary::fitColumns() {
    // The set widths are the least a column gets; today's fonts need more for some captions
    // ("E Vol (m³/ha)") and cells ("Non Commercial"), which are never cut.
    for (std::size_t c = 0; c < kSummaryColumns.size(); ++c) {
        const int column = static_cast<int>(c);
        lsvSum_->resizeColumnToContents(column);
        const int needed = lsvSum_->columnWidth(column);
        lsvSum_->setColumnWidth(column,
                                std::max(kSummaryColumns[c].width / kTwipsPerPixel, needed));
    }
}

void frmSummary::ShowSummary() {
    lsvSum_->clear();
    rows_.clear();
    std::vector<SummaryRow> rows;
    if (!runGuarded(m_, host_, "ShowSummary", kModule, [&] { rows = arborex::ShowSummary(m_); }))
        return;
    rows_ = std::move(rows);
    QFont bold = lsvSum_->font();
    bold.setBold(true);
    const QColor red(255, 0, 0);
    QList<QTreeWidgetItem*> items;
    for (const SummaryRow& row : rows_) {
        auto* item = new SummaryItem;
        for (std::size_t c = 0; c < row.cells.size(); ++c) {
            const int column = static_cast<int>(c);
            item->setText(column, lq(row.cells[c]));
            if (!textColumn(c)) item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
            if (!row.total) continue;
            item->setFont(column, bold);
            item->setForeground(column, red);
        }
        item->setData(0, kKeyRole, lq(row.key));
        item->setData(0, kTotalRole, row.total);
        items.push_back(item);
    }
    lsvSum_->addTopLevelItems(items);
    if (sortColumn_ >= 0) lsvSum_->sortItems(sortColumn_, sortOrder_);
    fitColumns();
}

void frmSummary::lsvSum_ColumnClick(int column) {
    // A second click on the same column turns the order round.
    sortOrder_ = column == sortColumn_ && sortOrder_ == Qt::AscendingOrder ? Qt::DescendingOrder
                                                                           : Qt::AscendingOrder;
    sortColumn_ = column;
    lsvSum_->header()->setSortIndicatorShown(true);
    lsvSum_->header()->setSortIndicator(column, sortOrder_);
    lsvSum_->sortItems(column, sortOrder_);
}

void frmSummary::SaveSelected() {
    SelCount = lsvSum_->topLevelItemCount() - 1;
    SelFlags.clear();
    for (const QTreeWidgetItem* item : lsvSum_->selectedItems())
        SelFlags.insert(item->data(0, kKeyRole).toString());
}

void frmSummary::ShowSelected() {
    if (lsvSum_->topLevelItemCount() - 1 != SelCount) return;
    for (int r = 0; r < lsvSum_->topLevelItemCount(); ++r) {
        QTreeWidgetItem* item = lsvSum_->topLevelItem(r);
        item->setSelected(SelFlags.contains(item->data(0, kKeyRole).toString()));
    }
}

void frmSummary::refresh() {
    SaveSelected();
    ShowSummary();
    ShowSelected();
}

std::vector<int16_t> frmSummary::selection() const {
    std::vector<std::pair<std::string, bool>> rows;
    for (int r = 0; r < lsvSum_->topLevelItemCount(); ++r) {
        const QTreeWidgetItem* item = lsvSum_->topLevelItem(r);
        rows.emplace_back(ls(item->data(0, kKeyRole).toString()), item->isSelected());
    }
    return selectedPolygons(rows);
}

// ---- Updates of the selection -------------------------------------------------------------------

void frmSummary::runUpdate(const char* routine, const std::function<void()>& showScreen) {
    SaveSelected();
    runGuarded(m_, host_, routine, kModule, showScreen);
    // The targets and the criteria may have changed: the ages are worked out again.
    runGuarded(m_, host_, routine, kModule, [this] { UpdateYields(m_); });
    ShowSummary();
    ShowSelected();
}

void frmSummary::mnuHarAge_Click() {
    runUpdate("mnuHarAge_Click", [this] { frmHarvAge(m_, host_, selection(), this).exec(); });
}

void frmSummary::mnuSilvi_Click() {
    runUpdate("mnuSilvi_Click", [this] { frmSilvi(m_, host_, selection(), this).exec(); });
}

void frmSummary::mniHarvParm_Click() {
    runUpdate("mniHarvParm_Click", [this] { frmHarvParam(m_, host_, this).exec(); });
}

// ---- Menus --------------------------------------------------------------------------------------

void frmSummary::mnuCopyTable_Click() {
    std::string text;
    if (!runGuarded(m_, host_, "mnuCopyTable_Click", kModule,
                    [&] { text = summaryClipboardText(rows_, m_.Files[FileProject], dateNow()); }))
        return;
    QClipboard* clipboard = QGuiApplication::clipboard();
    clipboard->clear();
    clipboard->setText(lq(text));
}

void frmSummary::mnuOK_Click() {
    close();
}

void frmSummary::mnuSelectAll_Click() {
    lsvSum_->selectAll();
}

void frmSummary::saveThroughMainScreen(void (frmSummary::*request)()) {
    const int16_t lastPoly = m_.LastPoly;
    emit(this->*request)();
    // Saving purges the deleted polygons: the rows' keys follow the new numbering, and the
    // selection, made under the old one, goes.
    if (m_.LastPoly != lastPoly) ShowSummary();
}

void frmSummary::mnuSave_Click() {
    saveThroughMainScreen(&frmSummary::saveRequested);
}

void frmSummary::mnuSaveAs_Click() {
    saveThroughMainScreen(&frmSummary::saveAsRequested);
}

}  // namespace arborex
