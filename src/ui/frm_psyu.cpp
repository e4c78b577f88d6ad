#include "ui/frm_psyu.hpp"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "base/number_text.hpp"
#include "base/numeric.hpp"
#include "frame/error_handler.hpp"
#include "model/reference_tables.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmPSYU";

// Fixed strings hold one byte per character.
QString latin1(const std::string& bytes) {
    return QString::fromLatin1(bytes.data(), static_cast<qsizetype>(bytes.size()));
}
std::string bytesOf(const QLineEdit* field) {
    return field->text().toLatin1().toStdString();
}
int16_t numberOf(const QLineEdit* field) {
    return toI2(tolerantNumber(bytesOf(field)));
}

}  // namespace

frmPSYU::frmPSYU(Model& m, Host& host, QWidget* parent) : QDialog(parent), m_(m), host_(host) {
    setObjectName("frmPSYU");
    setWindowTitle("Find PSYU by Region and Compartment");

    auto* grid = new QGridLayout;
    auto addField = [this, grid](const char* name, const char* caption, int row) {
        auto* field = new QLineEdit(this);
        field->setObjectName(name);
        auto* label = new QLabel(caption, this);
        label->setBuddy(field);
        grid->addWidget(label, row, 0);
        grid->addWidget(field, row, 1);
        return field;
    };
    txtRegion_ = addField("txtRegion", "Region#", 0);
    txtComp_ = addField("txtComp", "Compartment#", 1);
    txtCompL_ = addField("txtCompL", "Compartment Letter", 2);
    txtFIZ_ = addField("txtFIZ", "FIZ", 4);
    txtPSYUBlk_ = addField("txtPSYUBlk", "PSYU Block", 5);
    txtPSYU_ = addField("txtPSYU", "PSYU", 6);

    auto* find = new QPushButton("Find PSYU", this);
    find->setObjectName("cmdFindPSYU");
    find->setAutoDefault(false);
    grid->addWidget(find, 3, 1, Qt::AlignLeft);
    connect(find, &QPushButton::clicked, this, &frmPSYU::cmdFindPSYU_Click);

    auto* ok = new QPushButton("OK", this);
    ok->setObjectName("cmdOK");
    ok->setDefault(true);
    auto* cancel = new QPushButton("Cancel", this);
    cancel->setObjectName("cmdCancel");
    cancel->setAutoDefault(false);
    connect(ok, &QPushButton::clicked, this, &frmPSYU::cmdOK_Click);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addSpacing(8);
    layout->addLayout(buttons);

    if (m_.CurPoly < 0 || m_.CurPoly >= static_cast<int>(m_.Poly.size())) return;
    const PolyData& poly = m_.Poly[static_cast<std::size_t>(m_.CurPoly)];
    txtRegion_->setText(latin1(poly.REGION.str()));
    txtComp_->setText(latin1(poly.COMP.str()));
    txtCompL_->setText(latin1(poly.COMPL.str()));
    txtFIZ_->setText(latin1(poly.FIZ.str()));
    txtPSYUBlk_->setText(latin1(poly.PSYUBLOCK.str()));
    txtPSYU_->setText(QString::number(poly.PSYU));
}

void frmPSYU::cmdFindPSYU_Click() {
    runGuarded(m_, host_, "cmdFindPSYU_Click", kModule, [this] {
        LoadRegComp(m_.Ref, host_, m_.Paths[ArborexFolder]);
        const RegCompRec* found =
            findRegComp(m_.Ref, numberOf(txtRegion_), numberOf(txtComp_), trim(bytesOf(txtCompL_)));
        if (!found) {
            host_.prompt.tell(
                "Find PSYU",
                "The PSYU data was not found. Please check your numbers and try again.",
                Icon::Exclamation);
            return;
        }
        txtFIZ_->setText(latin1(found->FIZ));
        txtPSYUBlk_->setText(latin1(found->Block));
        txtPSYU_->setText(QString::number(found->PSYU));
    });
}

void frmPSYU::cmdOK_Click() {
    const bool stored = runGuarded(m_, host_, "cmdOK_Click", kModule, [this] {
        if (m_.CurPoly < 0 || m_.CurPoly >= static_cast<int>(m_.Poly.size())) return;
        const int16_t psyu = numberOf(txtPSYU_);
        PolyData& poly = m_.Poly[static_cast<std::size_t>(m_.CurPoly)];
        poly.REGION = bytesOf(txtRegion_);
        poly.COMP = bytesOf(txtComp_);
        poly.COMPL = bytesOf(txtCompL_);
        poly.FIZ = bytesOf(txtFIZ_);
        poly.PSYUBLOCK = bytesOf(txtPSYUBlk_);
        poly.PSYU = psyu;
    });
    if (stored) accept();
}

}  // namespace arborex
