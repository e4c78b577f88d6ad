#include "ui/frm_psyu_lookup.hpp"

#include <QHBoxLayout>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/display_format.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

// The entry's trimmed name rides along with its number, so that choosing needs no search.
constexpr int kNameRole = Qt::UserRole + 1;

}  // namespace

frmPSYULookup::frmPSYULookup(const Model& m, QWidget* parent) : QDialog(parent) {
    setObjectName("frmPSYULookup");
    setWindowTitle("Lookup PSYU");

    lstPSYU_ = new QListWidget(this);
    lstPSYU_->setObjectName("lstPSYU");
    lstPSYU_->setMinimumSize(300, 320);
    const auto& list = m.Ref.PSYUList;
    for (int i = 1; i <= m.Ref.PSYUCount && i < static_cast<int>(list.size()); ++i) {
        const PSYUEntry& entry = list[static_cast<std::size_t>(i)];
        const QString name = QString::fromLatin1(entry.Name.str());
        auto* item = new QListWidgetItem(
            name + "  (" + qs(formatNumber(static_cast<int>(entry.Number), "0")) + ")", lstPSYU_);
        item->setData(Qt::UserRole, static_cast<int>(entry.Number));
        item->setData(kNameRole, name);
    }

    cmdDone_ = new QPushButton("OK", this);
    cmdDone_->setObjectName("cmdDone");
    cmdDone_->setDefault(true);
    cmdDone_->setEnabled(false);
    auto* cancel = new QPushButton("Cancel", this);
    cancel->setObjectName("cmdCancel");
    cancel->setAutoDefault(false);
    connect(lstPSYU_, &QListWidget::currentItemChanged, this,
            [this](const QListWidgetItem* current) { cmdDone_->setEnabled(current != nullptr); });
    connect(lstPSYU_, &QListWidget::itemDoubleClicked, this,
            [this](const QListWidgetItem* item) { choose(item); });
    connect(cmdDone_, &QPushButton::clicked, this, [this] { choose(lstPSYU_->currentItem()); });
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdDone_);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(lstPSYU_, 1);
    layout->addLayout(buttons);
}

void frmPSYULookup::choose(const QListWidgetItem* item) {
    if (!item) return;
    selectedNumber_ = static_cast<int16_t>(item->data(Qt::UserRole).toInt());
    selectedName_ = item->data(kNameRole).toString().toLatin1().toStdString();
    accept();
}

}  // namespace arborex
