#include "ui/frm_calc_sort_ls.hpp"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>
#include <array>

#include "ui/ui_helpers.hpp"

namespace arborex {

frmCalcSortLS::frmCalcSortLS(const std::vector<std::string>& species, QWidget* parent)
    : QDialog(parent), lstSpec_(new QListWidget(this)) {
    setObjectName("frmCalcSortLS");
    setWindowTitle("Sort by Lead Species");
    lstSpec_->setObjectName("lstSpec");
    lstSpec_->setSelectionMode(QAbstractItemView::SingleSelection);
    lstSpec_->setMinimumSize(160, 220);
    for (const std::string& code : species) lstSpec_->addItem(lq(code));
    if (lstSpec_->count() > 0) lstSpec_->setCurrentRow(0);

    constexpr std::array<const char*, 4> kMoves = {"Top", "Up", "Down", "Bottom"};
    auto* moves = new QVBoxLayout;
    for (int i = 0; i < 4; ++i) {
        auto* button = new QPushButton(kMoves[static_cast<std::size_t>(i)], this);
        button->setObjectName(QString("cmdMove_%1").arg(i));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, i] { cmdMove_Click(i); });
        moves->addWidget(button);
    }
    moves->addStretch();

    auto* ok = new QPushButton("OK", this);
    ok->setObjectName("cmdOk");
    ok->setDefault(true);
    auto* cancel = new QPushButton("Cancel", this);
    cancel->setObjectName("cmdCancel");
    cancel->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* body = new QHBoxLayout;
    body->addWidget(lstSpec_, 1);
    body->addLayout(moves);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(new QLabel("Species on top are harvested first:", this));
    layout->addLayout(body, 1);
    layout->addLayout(buttons);
}

std::vector<std::string> frmCalcSortLS::ranking() const {
    std::vector<std::string> species;
    for (int row = 0; row < lstSpec_->count(); ++row)
        species.push_back(ls(lstSpec_->item(row)->text()));
    return species;
}

std::optional<std::vector<std::string>> frmCalcSortLS::rank(const std::vector<std::string>& species,
                                                            QWidget* parent) {
    frmCalcSortLS dialog(species, parent);
    if (dialog.exec() != QDialog::Accepted) return std::nullopt;
    return dialog.ranking();
}

void frmCalcSortLS::cmdMove_Click(int index) {
    const int row = lstSpec_->currentRow();
    const int count = lstSpec_->count();
    if (row < 0) return;
    const int target = index == 0 ? 0 : index == 1 ? row - 1 : index == 2 ? row + 1 : count - 1;
    if (target < 0 || target >= count) return;
    QListWidgetItem* item = lstSpec_->takeItem(row);
    lstSpec_->insertItem(target, item);
    lstSpec_->setCurrentRow(target);
}

}  // namespace arborex
