#include "ui/frm_polygon.hpp"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QListWidget>
#include <QMenuBar>
#include <QStandardItemModel>
#include <QVBoxLayout>

#include "frame/error_handler.hpp"
#include "model/default_polygon.hpp"
#include "model/polygon_lifecycle.hpp"
#include "model/reference_tables.hpp"
#include "ui/frm_help.hpp"
#include "ui/ui_helpers.hpp"
#include "yield/polygon_changes.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmPolygon";
constexpr const char* kTitle = "Polygon Data";

}  // namespace

frmPolygon::frmPolygon(Model& m, Host& host, QWidget* parent)
    : QDialog(parent), m_(m), host_(host) {
    setObjectName("frmPolygon");
    setSizeGripEnabled(true);
    speciesV_ = new QStandardItemModel(this);
    speciesT_ = new QStandardItemModel(this);

    auto* bar = new QMenuBar(this);
    bar->setObjectName("mnuBar");
    buildMenus(bar);

    // Built in the order the tab key visits them: the list first.
    QWidget* listPanel = buildListPanel();
    auto* middle = new QVBoxLayout;
    middle->addWidget(buildCommonGroup());
    middle->addWidget(buildHarvestGroup());
    middle->addWidget(buildNcGroup());
    middle->addStretch();
    auto* columns = new QHBoxLayout;
    columns->addLayout(middle);
    columns->addWidget(buildVdypGroup(), 1);
    columns->addWidget(buildTipsyGroup(), 1);
    auto* right = new QVBoxLayout;
    right->addLayout(columns, 1);
    right->addWidget(buildHelpPane());
    auto* body = new QHBoxLayout;
    body->addWidget(listPanel);
    body->addLayout(right, 1);
    auto* layout = new QVBoxLayout(this);
    layout->setMenuBar(bar);
    layout->addLayout(body);

    UpdateCaption();
    // Form_Load: the lists, the default polygon a new one starts from, the polygon list.
    runGuarded(m_, host_, "Form_Load", kModule, [this] {
        LoadChoices(m_.Ref, host_, m_.Paths[ArborexFolder], true);
        fillChoiceLists();
        LoadDefaults(m_, host_);
    });
    DisplayPoly(m_.CurPoly, 0);
    resizeWithin(*this, QSize(1280, 800));
}

frmPolygon::~frmPolygon() = default;

void frmPolygon::UpdateCaption() {
    arborex::UpdateCaption(*this, m_, kTitle);
}

void frmPolygon::done(int result) {
    leavePolygon();
    if (help_) help_->close();
    QDialog::done(result);
}

bool frmPolygon::act(const char* routine, const std::function<void()>& step) {
    return runGuarded(m_, host_, routine, kModule, step);
}

// ---- The polygon on screen ----------------------------------------------------------------------

void frmPolygon::ShowPolygonData() {
    showFields();
    takePolygonSnapshot(m_);
}

void frmPolygon::leavePolygon() {
    LoseLastFocus();
    if (m_.CurPoly < 0) return;
    ChangeOutcome outcome = ChangeOutcome::NoChange;
    act("polychanged", [&] { outcome = polychanged(m_, host_.prompt); });
    if (outcome == ChangeOutcome::Restored) showFields();
    if (outcome == ChangeOutcome::Kept) refreshRow(m_.CurPoly);
}

void frmPolygon::DisplayPoly(int polygon, int lastRow) {
    std::vector<PolygonRow> rows;
    act("DisplayPoly", [&] { rows = arborex::DisplayPoly(m_); });
    quiet_ = true;
    lstMapPoly_->clear();
    QStringList texts;
    texts.reserve(static_cast<qsizetype>(rows.size()));
    for (const PolygonRow& row : rows) texts.push_back(lq(row.text));
    lstMapPoly_->addItems(texts);
    int selected = -1;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        lstMapPoly_->item(static_cast<int>(i))->setData(Qt::UserRole, rows[i].polygon);
        if (rows[i].polygon == polygon) selected = static_cast<int>(i);
    }
    if (selected < 0) selected = displaySelection(lastRow, static_cast<int>(rows.size()));
    lstMapPoly_->setCurrentRow(selected);
    quiet_ = false;
    m_.CurPoly =
        static_cast<int16_t>(selected < 0 ? -1 : rows[static_cast<std::size_t>(selected)].polygon);
    ShowPolygonData();
}

void frmPolygon::redisplayPolygons(int select) {
    // A purge keeps CurPoly on its polygon, whose snapshot moved with it; a project that was
    // replaced has none on screen. Either way nothing unconfirmed is lost.
    if (m_.CurPoly >= 0 && m_.CurPoly <= m_.LastPoly)
        act("polychanged", [this] { polychanged(m_, host_.prompt); });
    UpdateCaption();
    DisplayPoly(select, lstMapPoly_->currentRow());
    emit polygonsChanged();
}

}  // namespace arborex
