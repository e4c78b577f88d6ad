#include "ui/frm_add.hpp"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "frame/error_handler.hpp"
#include "model/polygon_lifecycle.hpp"
#include "ui/frm_polygon_parts.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

using polygon_screen::polygonNameList;

frmAdd::frmAdd(Model& m, Host& host, QWidget* parent) : QDialog(parent), m_(m), host_(host) {
    setObjectName("frmAdd");
    setWindowTitle("Add Polygon");

    txtPoly_ = new QLineEdit(this);
    txtPoly_->setObjectName("txtPoly");
    auto* name = new QLabel("New &Polygon Name", this);
    name->setBuddy(txtPoly_);

    lstDefaults_ = polygonNameList("lstDefaults", m_, 0, this);
    lstDefaults_->setCurrentRow(-1);
    auto* source = new QLabel(
        "&Copy from (with no polygon selected the new one starts from the default polygon)", this);
    source->setWordWrap(true);
    source->setBuddy(lstDefaults_);

    auto* add = new QPushButton("&Add", this);
    add->setObjectName("cmdAdd");
    add->setDefault(true);
    auto* cancel = new QPushButton("Cancel", this);
    cancel->setObjectName("cmdCancel");
    cancel->setAutoDefault(false);
    connect(add, &QPushButton::clicked, this, &frmAdd::cmdAdd_Click);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(add);
    buttons->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(name);
    layout->addWidget(txtPoly_);
    layout->addSpacing(6);
    layout->addWidget(source);
    layout->addWidget(lstDefaults_, 1);
    layout->addLayout(buttons);
    resize(320, 380);
}

void frmAdd::cmdAdd_Click() {
    const QListWidgetItem* chosen = lstDefaults_->selectedItems().value(0);
    const int sourcePolygon = chosen ? chosen->data(Qt::UserRole).toInt() : -1;
    AddOutcome outcome;
    const bool done = runGuarded(m_, host_, "cmdAdd_Click", "frmAdd", [&] {
        outcome = addPolygon(m_, ls(txtPoly_->text()), sourcePolygon);
    });
    if (!done) return;
    if (outcome.refusal == PolygonRefusal::Duplicate) emit duplicateFound(outcome.polygon);
    if (outcome.refusal != PolygonRefusal::None) {
        host_.prompt.tell(kProgramTitle, refusalText(m_, outcome.refusal, false),
                          Icon::Exclamation);
        txtPoly_->setFocus();
        txtPoly_->selectAll();
        return;
    }
    added_ = outcome.polygon;
    accept();
}

}  // namespace arborex
