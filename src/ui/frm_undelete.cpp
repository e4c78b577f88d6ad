#include "ui/frm_undelete.hpp"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "frame/error_handler.hpp"
#include "model/polygon_lifecycle.hpp"
#include "ui/frm_polygon_parts.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

using polygon_screen::polygonNameList;

frmUndelete::frmUndelete(Model& m, Host& host, QWidget* parent)
    : QDialog(parent), m_(m), host_(host) {
    setObjectName("frmUndelete");
    setWindowTitle("Undelete Polygons");

    lstDeleted_ = polygonNameList("lstDeleted", m_, 1, this);
    lstDeleted_->setSelectionMode(QAbstractItemView::ExtendedSelection);
    auto* caption = new QLabel("&Deleted polygons", this);
    caption->setBuddy(lstDeleted_);

    auto* undelete = new QPushButton("&Undelete", this);
    undelete->setObjectName("cmdUndelete");
    undelete->setAutoDefault(false);
    auto* ok = new QPushButton("OK", this);
    ok->setObjectName("cmdOk");
    ok->setDefault(true);
    connect(undelete, &QPushButton::clicked, this, &frmUndelete::cmdUndelete_Click);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(undelete);
    buttons->addStretch();
    buttons->addWidget(ok);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(caption);
    layout->addWidget(lstDeleted_, 1);
    layout->addLayout(buttons);
    resize(280, 340);
}

void frmUndelete::cmdUndelete_Click() {
    for (QListWidgetItem* item : lstDeleted_->selectedItems()) {
        const int polygon = item->data(Qt::UserRole).toInt();
        if (runGuarded(m_, host_, "cmdUndelete_Click", "frmUndelete",
                       [&] { undeletePolygon(m_, polygon); }))
            delete item;
    }
}

}  // namespace arborex
