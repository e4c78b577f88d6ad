#include "ui/frm_database.hpp"

#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenuBar>
#include <QProgressBar>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "base/text.hpp"
#include "frame/error_handler.hpp"
#include "ui/busy_cursor.hpp"
#include "ui/frm_db_choose.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmDatabase";

// The mapping's own key for a field: its name in capitals.
std::string fieldKey(const std::string& field) {
    return toUpper(trim(field));
}

}  // namespace

frmDatabase::frmDatabase(Model& m, Host& host, TableReader& reader, const std::string& path,
                         QWidget* parent)
    : QDialog(parent), m_(m), host_(host), reader_(reader) {
    setObjectName("frmDatabase");
    setWindowTitle("Database Importer: " + qs(path));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    buildMenus();
    buildControls();
    resizeWithin(*this, QSize(760, 480));

    const TableChooser choose = [this](const std::vector<std::string>& names) {
        return frmDBChoose::choose(names, this);
    };
    runGuarded(m_, host_, "GetColumnHeader", kModule,
               [&] { opened_ = GetColumnHeader(reader_, host_.prompt, path, choose, db_); });
    if (!opened_) return;
    mapping_ = loadFieldMapping(host_.settings, db_.match.fields);
    mnuShowAdvanced_Click();
}

void frmDatabase::buildMenus() {
    auto* bar = new QMenuBar(this);
    bar->setObjectName("mnuBar");
    mnuShowAdvanced_ = bar->addAction("Show Advanced Columns");
    mnuShowAdvanced_->setObjectName("mnuShowAdvanced");
    mnuShowAdvanced_->setCheckable(true);
    connect(mnuShowAdvanced_, &QAction::triggered, this, &frmDatabase::mnuShowAdvanced_Click);
    mnuCancel_ = bar->addAction("Cancel (Don't Import)");
    mnuCancel_->setObjectName("mnuCancel");
    connect(mnuCancel_, &QAction::triggered, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 8);
    layout->setMenuBar(bar);
}

void frmDatabase::buildControls() {
    lsvColumns_ = new QTreeWidget(this);
    lsvColumns_->setObjectName("lsvColumns");
    lsvColumns_->setRootIsDecorated(false);
    lsvColumns_->setUniformRowHeights(false);  // a chooser's row is taller than a text row
    lsvColumns_->setAlternatingRowColors(true);
    lsvColumns_->setSelectionMode(QAbstractItemView::SingleSelection);
    QStringList captions;
    for (const char* caption : kColumnHeaders) captions << caption;
    lsvColumns_->setHeaderLabels(captions);
    lsvColumns_->setColumnWidth(0, 150);
    lsvColumns_->setColumnWidth(1, 170);

    barPercent_ = new QProgressBar(this);
    barPercent_->setObjectName("barPercent");
    barPercent_->setRange(0, 100);
    barPercent_->setValue(0);

    cmdImport_ = new QPushButton("Import Data", this);
    cmdImport_->setObjectName("cmdImport");
    cmdImport_->setDefault(true);
    connect(cmdImport_, &QPushButton::clicked, this, &frmDatabase::cmdImport_Click);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(barPercent_, 1);
    bottom->addWidget(cmdImport_);
    auto* layout = static_cast<QVBoxLayout*>(this->layout());
    layout->addWidget(lsvColumns_, 1);
    layout->addLayout(bottom);
}

void frmDatabase::mnuShowAdvanced_Click() {
    // The list deletes the old choosers later; until then they must not answer to the names
    // of the new ones.
    for (QComboBox* old : lsvColumns_->findChildren<QComboBox*>()) old->setObjectName({});
    lsvColumns_->clear();
    int unmatched = 0;
    for (const ColumnRow& row : columnRows(db_.match, mnuShowAdvanced_->isChecked())) {
        auto* item = new QTreeWidgetItem(lsvColumns_);
        item->setText(0, lq(row.arborex));
        item->setText(1, lq(row.file));
        item->setText(2, lq(row.description));
        if (row.variable < 0) {
            QComboBox* box = mappingBox(unmatched++, row.file);
            item->setSizeHint(0, box->sizeHint());
            lsvColumns_->setItemWidget(item, 0, box);
        }
    }
}

// The chooser of an unmatched field: none, a catalogue key or a name column, showing what the
// user chose before for this header.
QComboBox* frmDatabase::mappingBox(int unmatched, const std::string& field) {
    auto* box = new QComboBox;
    box->setObjectName(QString("cmbMap_%1").arg(unmatched));
    box->setToolTip("Import " + lq(field) + " as");
    for (const std::string& key : mappingChoices()) box->addItem(lq(key));
    const auto chosen = mapping_.keyOfField.find(fieldKey(field));
    if (chosen != mapping_.keyOfField.end()) {
        const int index = box->findText(lq(chosen->second), Qt::MatchFixedString);
        if (index >= 0) box->setCurrentIndex(index);
    }
    connect(box, &QComboBox::currentTextChanged, this,
            [this, field](const QString& key) { mappingChosen(field, key); });
    return box;
}

void frmDatabase::mappingChosen(const std::string& field, const QString& key) {
    if (key.isEmpty())
        mapping_.keyOfField.erase(fieldKey(field));
    else
        mapping_.keyOfField[fieldKey(field)] = ls(key);
}

void frmDatabase::cmdImport_Click() {
    cmdImport_->setEnabled(false);
    mnuShowAdvanced_->setEnabled(false);
    mnuCancel_->setEnabled(false);
    saveFieldMapping(host_.settings, db_.match.fields, mapping_);
    DatabaseImport mapped = db_;
    applyFieldMapping(mapped.match, mapping_);

    int shown = -1;
    const auto progress = [this, &shown](int percent) {
        if (percent == shown) return;
        shown = percent;
        barPercent_->setValue(percent);
        QApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    };
    bool imported = false;
    importing_ = true;
    {
        BusyCursor busy;
        ArrowCursorPrompt arrow(host_.prompt);
        Host host{arrow, host_.status, host_.settings, host_.views, host_.system};
        run_ = PolygonImport{};
        runGuarded(m_, host, "ImportData", kModule,
                   [&] { imported = ImportData(m_, host, reader_, mapped, run_, progress); });
    }
    importing_ = false;
    cmdImport_->setEnabled(true);
    mnuShowAdvanced_->setEnabled(true);
    mnuCancel_->setEnabled(true);
    if (imported) accept();
}

void frmDatabase::reject() {
    if (!importing_) QDialog::reject();
}

}  // namespace arborex
