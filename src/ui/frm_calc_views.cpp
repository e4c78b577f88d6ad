// The calculation screen's views of the last run: the schedule, the issue line, the graph, and
// the selections that link the graph and the order lists to the schedule.

#include <QCheckBox>
#include <QHeaderView>
#include <QItemSelection>
#include <QLabel>
#include <QListWidget>
#include <QRadioButton>
#include <QStatusBar>
#include <QTreeWidget>
#include <algorithm>
#include <set>

#include "base/display_format.hpp"
#include "base/numeric.hpp"
#include "frame/error_handler.hpp"
#include "report/harvest_totals.hpp"
#include "report/schedule_issues.hpp"
#include "ui/frm_calc.hpp"
#include "ui/standing_graph.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmCalc";
constexpr int kWidestColumn = 260;  // pixels; "Block List" may name many blocks

bool isTextColumn(const std::string& title) {
    static const std::set<std::string> kText = {"Block List", "Issues", "Polygon",
                                                "Ownership",  "Queue",  "Method"};
    return kText.count(title) != 0;
}

// The schedule row (index) of each row key: "RY" + year offset, or "RC" + CutList entry.
struct RowKey {
    bool annual = true;
    int index = 0;
};

RowKey keyOf(const QTreeWidgetItem* item) {
    const std::string key = ls(item->data(0, Qt::UserRole).toString());
    RowKey row;
    row.annual = key.rfind("RY", 0) == 0;
    row.index = key.size() > 2 ? std::stoi(key.substr(2)) : 0;
    return row;
}

}  // namespace

bool frmCalc::polygonView() const {
    return optReport_[1]->isChecked();
}

void frmCalc::refreshViews() {
    DrawStandingGraph();
    ShowIssues();
    ShowSchedule();
}

void frmCalc::ShowSchedule() {
    readFields();
    ScheduleTable table;
    const ScheduleView view = polygonView() ? ScheduleView::Polygon : ScheduleView::Annual;
    const bool advanced = chkAdvanced_->isChecked();
    if (!runGuarded(m_, host_, "ShowSchedule", kModule,
                    [&] { table = scheduleTable(session_, view, advanced); }))
        return;
    quiet_ = true;
    QStringList titles;
    if (table.columns.empty()) {  // no run yet: the titles alone, so the table reads as a table
        for (const std::string& title : scheduleColumns(view, advanced)) titles << lq(title);
        lsvCalc_->setColumnCount(static_cast<int>(titles.size()));
        lsvCalc_->setHeaderLabels(titles);
        fitScheduleColumns();
        quiet_ = false;
        return;
    }
    table_ = std::move(table);

    lsvCalc_->clear();
    for (const std::string& title : table_.columns) titles << lq(title);
    lsvCalc_->setColumnCount(static_cast<int>(titles.size()));
    lsvCalc_->setHeaderLabels(titles);
    QList<QTreeWidgetItem*> items;
    items.reserve(static_cast<qsizetype>(table_.rows.size()));
    for (const ScheduleRow& row : table_.rows) {
        auto* item = new QTreeWidgetItem;
        const QColor colour(row.colour.red, row.colour.green, row.colour.blue);
        for (std::size_t c = 0; c < row.cells.size(); ++c) {
            const int column = static_cast<int>(c);
            item->setText(column, lq(row.cells[c]));
            item->setForeground(column, colour);
            if (c >= table_.columns.size()) continue;
            if (!isTextColumn(table_.columns[c]))
                item->setTextAlignment(column, Qt::AlignRight | Qt::AlignVCenter);
            // A busy year's block list outgrows its column; the whole list on hovering.
            else if (table_.columns[c] == "Block List")
                item->setToolTip(column, item->text(column));
        }
        item->setData(0, Qt::UserRole, lq(row.key));
        items.push_back(item);
    }
    lsvCalc_->addTopLevelItems(items);
    fitScheduleColumns();
    quiet_ = false;
}

void frmCalc::fitScheduleColumns() {
    for (int c = 0; c < lsvCalc_->columnCount(); ++c) {
        lsvCalc_->resizeColumnToContents(c);
        lsvCalc_->setColumnWidth(c, std::min(lsvCalc_->columnWidth(c) + 8, kWidestColumn));
    }
}

void frmCalc::ShowIssues() {
    readFields();
    bool any = false;
    std::string line;
    if (!runGuarded(m_, host_, "ShowIssues", kModule,
                    [&] { line = issueLine(m_, issueLimitsOf(screen_, run_.AreaRun), any); }))
        return;
    lblError_->setText(lq(line));
    QPalette palette = lblError_->palette();
    palette.setColor(QPalette::WindowText,
                     any ? QColor(255, 0, 0) : this->palette().color(QPalette::WindowText));
    lblError_->setPalette(palette);
}

void frmCalc::DrawStandingGraph() {
    readFields();
    StandingGraphData graph;
    if (!runGuarded(m_, host_, "DrawStandingGraph", kModule,
                    [&] { graph = standingGraph(m_, screen_); }))
        return;
    const bool empty = graph.empty();
    const double top = graph.top;
    picCalc_->setData(std::move(graph));
    const std::array<double, 3> marks = {top, top / 2.0, 0.0};
    for (std::size_t i = 0; i < lblYieldYAxis_.size(); ++i)
        lblYieldYAxis_[i]->setText(empty ? QString() : lq(formatNumber(marks[i], "#,##0")));
}

void frmCalc::ShowSelected() {
    HarvestTotals totals;
    const QList<QTreeWidgetItem*> selected = lsvCalc_->selectedItems();
    bool annual = !polygonView();
    const bool summed = runGuarded(m_, host_, "ShowSelected", kModule, [&] {
        for (const QTreeWidgetItem* item : selected) {
            const RowKey key = keyOf(item);
            annual = key.annual;
            if (key.annual)
                addYear(totals, m_.Calc.YearTable[key.index]);
            else
                addEntry(totals, m_.Calc.CutList[key.index]);
        }
    });
    if (!summed) return;
    sbStatus_->showMessage(lq(selectionSummary(totals, annual)));
}

void frmCalc::selectScheduleRows(const std::vector<int>& rows) {
    quiet_ = true;
    lsvCalc_->clearSelection();
    QItemSelection selection;
    const int last = lsvCalc_->columnCount() - 1;
    QAbstractItemModel* model = lsvCalc_->model();
    for (const int row : rows) {
        if (row < 0 || row >= lsvCalc_->topLevelItemCount()) continue;
        selection.select(model->index(row, 0), model->index(row, last));
    }
    lsvCalc_->selectionModel()->select(selection, QItemSelectionModel::Select);
    if (!rows.empty() && rows.front() < lsvCalc_->topLevelItemCount())
        lsvCalc_->scrollToItem(lsvCalc_->topLevelItem(rows.front()));
    quiet_ = false;
}

void frmCalc::picCalc_MouseDown(Qt::MouseButton button, double x) {
    if (button != Qt::LeftButton || lsvCalc_->topLevelItemCount() == 0) return;
    std::vector<int> rows;
    if (!polygonView()) {
        if (x >= 0.0 && x <= m_.Calc.CalcHorizon)
            rows.push_back(static_cast<int>(roundHalfEven(x)));
    } else {
        // Every entry whose years hold the year under the mouse.
        const double year = run_.StartYear + x;
        const bool found = runGuarded(m_, host_, "picCalc_MouseDown", kModule, [&] {
            for (int r = 0; r < lsvCalc_->topLevelItemCount(); ++r) {
                const RowKey key = keyOf(lsvCalc_->topLevelItem(r));
                const CutRec& cut = m_.Calc.CutList[key.index];
                if (cut.StartYr <= year && year <= cut.EndYr) rows.push_back(r);
            }
        });
        if (!found) return;
    }
    selectScheduleRows(rows);
    ShowSelected();
}

void frmCalc::lstCutOrder_Click(int index) {
    const QList<QListWidgetItem*> picked =
        lstCutOrder_[static_cast<std::size_t>(index)]->selectedItems();
    if (picked.isEmpty() || table_.rows.empty()) return;
    const int polygon = picked.front()->data(kPolygonRole).toInt();
    const CalcState& calc = m_.Calc;
    std::set<int> rows;
    const bool found = runGuarded(m_, host_, "lstCutOrder_Click", kModule, [&] {
        // The entries in schedule order, as the polygon view lists them.
        for (int c = 1; c <= calc.CutCount; ++c) {
            const CutRec& cut = calc.CutList[c];
            if (cut.BlockIdx > calc.BlockLast) break;
            if (calc.BlockList[cut.BlockIdx].Polygon != polygon) continue;
            if (polygonView()) {
                rows.insert(c - 1);
                continue;
            }
            for (int year = cut.StartYr; year <= cut.EndYr; ++year)
                rows.insert(year - run_.StartYear);
        }
    });
    if (!found) return;
    selectScheduleRows(std::vector<int>(rows.begin(), rows.end()));
    ShowSelected();
}

}  // namespace arborex
