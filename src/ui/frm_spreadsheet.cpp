#include "ui/frm_spreadsheet.hpp"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QVBoxLayout>

#include "exchange/variable_catalogue.hpp"
#include "frame/error_handler.hpp"
#include "ui/busy_cursor.hpp"
#include "ui/frm_spreadsheet_model.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmSpreadsheet";
constexpr int kTwipsPerPixel = 15;
constexpr int kAdvancedWidth = 1000 / kTwipsPerPixel;

}  // namespace

frmSpreadsheet::frmSpreadsheet(Model& m, Host& host, QWidget* parent)
    : QDialog(parent), m_(m), host_(host) {
    setObjectName("frmSpreadsheet");
    setWindowFlags(windowFlags() | Qt::WindowMinMaxButtonsHint);
    model_ = new GridModel(this);

    grd_ = new QTableView(this);
    grd_->setObjectName("grd");
    grd_->setModel(model_);
    grd_->setSelectionMode(QAbstractItemView::ContiguousSelection);
    grd_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    grd_->setWordWrap(false);
    grd_->installEventFilter(this);
    // Fixed row heights: the view never measures thousands of rows.
    QHeaderView* rows = grd_->verticalHeader();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setDefaultSectionSize(fontMetrics().height() + 6);
    rows->setMinimumWidth(fontMetrics().horizontalAdvance(QString(12, QChar('N'))) + 10);
    rows->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    grd_->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    grd_->horizontalHeader()->setDefaultSectionSize(kAdvancedWidth);
    connect(grd_, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { openEditor(index.row() + 1, index.column()); });

    txtEdit_ = new QLineEdit(grd_->viewport());
    txtEdit_->setObjectName("txtEdit");
    txtEdit_->setFrame(false);
    txtEdit_->hide();
    txtEdit_->installEventFilter(this);
    connect(txtEdit_, &QLineEdit::textEdited, this, [this] { typing_ = true; });
    connect(grd_->horizontalScrollBar(), &QScrollBar::valueChanged, this,
            &frmSpreadsheet::placeEditor);
    connect(grd_->verticalScrollBar(), &QScrollBar::valueChanged, this,
            &frmSpreadsheet::placeEditor);

    cmdDone_ = new QPushButton("Return to Polygon Data", this);
    cmdDone_->setObjectName("cmdDone");
    cmdDone_->setAutoDefault(false);
    connect(cmdDone_, &QPushButton::clicked, this, &QDialog::close);

    auto* bar = new QMenuBar(this);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdDone_);
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(bar);
    layout->addWidget(grd_, 1);
    layout->addLayout(buttons);
    buildMenus(bar);

    SetupVars();
    setupGrid();
    ShowAdvanced();
    ShowPolygons();
    UpdateCaption();
    resizeWithin(*this, QSize(900, 600));
    centerme(*this);
}

frmSpreadsheet::~frmSpreadsheet() = default;

QAction* frmSpreadsheet::addAction(QMenu* menu, const char* name, const QString& caption,
                                   void (frmSpreadsheet::*handler)()) {
    QAction* action = menu->addAction(caption);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, handler);
    return action;
}

void frmSpreadsheet::buildMenus(QMenuBar* bar) {
    QMenu* file = bar->addMenu("&File");
    file->setObjectName("mnuFile");
    addAction(file, "mnuImport", "&Import Data", &frmSpreadsheet::mnuImport_Click);
    addAction(file, "mnuExport", "&Export Data", &frmSpreadsheet::mnuExport_Click);
    file->addSeparator();
    addAction(file, "mnuImportOld", "Import OLD Comma format", &frmSpreadsheet::mnuImportOld_Click);
    addAction(file, "mnuExportOld", "Export OLD Comma format", &frmSpreadsheet::mnuExportOld_Click);
    file->addSeparator();
    QAction* done = file->addAction("Done");
    done->setObjectName("mnuDone");
    connect(done, &QAction::triggered, this, &QDialog::close);

    QMenu* edit = bar->addMenu("&Edit");
    edit->setObjectName("mnuEdit");
    addAction(edit, "mnuCopy", "Copy", &frmSpreadsheet::mnuCopy_Click)
        ->setShortcut(QKeySequence::Copy);
    addAction(edit, "mnuPaste", "Paste", &frmSpreadsheet::mnuPaste_Click)
        ->setShortcut(QKeySequence::Paste);
    addAction(edit, "mnuFillDown", "Fill Down", &frmSpreadsheet::mnuFillDown_Click)
        ->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_D));
    edit->addSeparator();
    addAction(edit, "mnuCopyTable", "Copy Table", &frmSpreadsheet::mnuCopyTable_Click);
    addAction(edit, "mnuPasteTable", "Paste Table", &frmSpreadsheet::mnuPasteTable_Click);

    QMenu* view = bar->addMenu("&View");
    view->setObjectName("mnuView");
    mnuAdvanced_ =
        addAction(view, "mnuAdvanced", "Advanced Columns", &frmSpreadsheet::mnuAdvanced_Click);
    mnuAdvanced_->setCheckable(true);
    addAction(view, "mnuVariableNames", "Variable Names",
              &frmSpreadsheet::frmSpreadsheet_Form_DblClick);
}

bool frmSpreadsheet::guarded(const char* routine, const std::function<void()>& step) {
    return runGuarded(m_, host_, routine, kModule, step);
}

// ---- The table -------------------------------------------------------------------------------

void frmSpreadsheet::setupGrid() {
    // The key row is the column headers and the names the row headers: the grid's fixed row
    // and column. Column 0 would repeat the names, so it is not shown as a cell.
    grd_->setUpdatesEnabled(false);
    grd_->setColumnHidden(kNameVariable, true);
    for (int c = 1; c < kVariableCount; ++c) grd_->setColumnWidth(c, keyWidth(c));
    grd_->setUpdatesEnabled(true);
}

int frmSpreadsheet::keyWidth(int column) const {
    // The set width, or more where the key would not fit (a current column's key is bold).
    QFont bold = grd_->horizontalHeader()->font();
    bold.setBold(true);
    const QString key = lq(std::string(SetupVars()[static_cast<std::size_t>(column)].VarKey));
    return std::max(kAdvancedWidth, QFontMetrics(bold).horizontalAdvance(key) + 12);
}

void frmSpreadsheet::ShowAdvanced() {
    const bool advanced = mnuAdvanced_->isChecked();
    const auto& catalogue = SetupVars();
    for (int c = 1; c < kVariableCount; ++c) {
        const int16_t show = catalogue[static_cast<std::size_t>(c)].VarShow;
        if (show == -1) {
            grd_->setColumnHidden(c, true);
        } else if (show == 1) {
            grd_->setColumnHidden(c, !advanced);
            if (advanced) grd_->setColumnWidth(c, keyWidth(c));
        }
    }
    placeEditor();
}

void frmSpreadsheet::mnuAdvanced_Click() {
    closeEditor();
    ShowAdvanced();
}

void frmSpreadsheet::ShowPolygons() {
    closing_ = true;  // the rows go: what the editor held has no cell to go back to
    txtEdit_->hide();
    EditState = 0;
    closing_ = false;
    BusyCursor busy;
    GridCells cells;
    guarded("ShowPolygons", [&] { cells = gridCells(m_); });
    if (cells.empty()) cells.emplace_back(kVariableCount);
    model_->setCells(std::move(cells));
    shownProject_ = m_.Files[FileProject];
}

void frmSpreadsheet::refresh() {
    if (EditState == 1) closeEditor();
    BusyCursor busy;
    GridCells cells;
    if (!guarded("ShowPolygons", [&] { cells = gridCells(m_); })) return;
    model_->refreshCells(std::move(cells));
    UpdateCaption();
}

bool frmSpreadsheet::gridIsStale() {
    if (model_->polygonRows() == m_.LastPoly + 1 && shownProject_ == m_.Files[FileProject])
        return false;
    ShowPolygons();
    UpdateCaption();
    return true;
}

void frmSpreadsheet::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    // Another project opened from the main screen must not be edited under the old one's rows.
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && EditState == 0)
        gridIsStale();
}

void frmSpreadsheet::UpdateCaption() {
    arborex::UpdateCaption(*this, m_, "Data Grid");
}

void frmSpreadsheet::done(int result) {
    closeEditor();
    QDialog::done(result);
}

void frmSpreadsheet::frmSpreadsheet_Form_DblClick() {
    host_.prompt.tell(kVariableNamesTitle, variableNamesText());
}

void frmSpreadsheet::mouseDoubleClickEvent(QMouseEvent* event) {
    QDialog::mouseDoubleClickEvent(event);
    frmSpreadsheet_Form_DblClick();
}

}  // namespace arborex
