#include "ui/frm_calc_report.hpp"

#include <QCheckBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "frame/error_handler.hpp"
#include "harvest/calc_session.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

constexpr std::array<const char*, 5> kYearCaptions = {"Annual", "5", "10", "20", "50"};
constexpr std::array<const char*, 5> kYearValues = {"1", "5", "10", "20", "50"};

QCheckBox* addBox(QVBoxLayout* layout, const char* name, const char* caption, int16_t value) {
    auto* box = new QCheckBox(caption);
    box->setObjectName(name);
    box->setChecked(value != 0);
    layout->addWidget(box);
    return box;
}

int16_t boolOf(const QCheckBox* box) {
    return box->isChecked() ? int16_t{-1} : int16_t{0};
}

}  // namespace

frmCalcReport::frmCalcReport(Model& m, Host& host, QWidget* parent)
    : QDialog(parent), m_(m), host_(host) {
    setObjectName("frmCalcReport");
    setWindowTitle("Calculation Report Settings");
    const ReportOptions& o = m_.Report;
    auto* layout = new QVBoxLayout(this);

    auto* increment = new QHBoxLayout;
    increment->addWidget(new QLabel("Reporting Increment"));
    txtReportInc_ = new QLineEdit(QString::number(o.RptIncrement));
    txtReportInc_->setObjectName("txtReportInc");
    increment->addWidget(txtReportInc_);
    increment->addWidget(new QLabel("years"));
    layout->addLayout(increment);

    auto* years = new QHBoxLayout;
    for (int i = 0; i < static_cast<int>(kYearCaptions.size()); ++i) {
        auto* button = new QPushButton(kYearCaptions[static_cast<std::size_t>(i)]);
        button->setObjectName(QString("cmdYear_%1").arg(i));
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, [this, i] { cmdYear_Click(i); });
        years->addWidget(button);
    }
    layout->addLayout(years);

    chkShowPoly_ = addBox(layout, "chkShowPoly", "Show individual polygons", o.RptShowPoly);
    chkAddRow_ = addBox(layout, "chkAddRow", "Add a blank row between years", o.RptAddRow);
    chkTotal_ = addBox(layout, "chkTotal", "Include totals", o.RptTotal);
    chkIncAvg_ = addBox(layout, "chkIncAvg", "Include weighted averages", o.RptIncAvg);
    chkExcel_ = addBox(layout, "chkExcel", "Automatically launch Excel", o.RptExcel);
    chkShow_ =
        addBox(layout, "chkShow", "Prompt for settings prior to creating table", o.RptPrompt);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    auto* ok = new QPushButton("OK");
    ok->setObjectName("cmdOk");
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, [this] { cmdOk_Click(); });
    auto* cancel = new QPushButton("Cancel");
    cancel->setObjectName("cmdCancel");
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    layout->addLayout(buttons);
}

void frmCalcReport::cmdYear_Click(int index) {
    txtReportInc_->setText(kYearValues.at(static_cast<std::size_t>(index)));
}

void frmCalcReport::cmdOk_Click() {
    const std::string increment = ls(txtReportInc_->text());
    const bool stored = runGuarded(m_, host_, "cmdOk_Click", "frmCalcReport", [&] {
        ReportOptions& o = m_.Report;
        o.RptIncrement = fieldWhole(increment);
        o.RptShowPoly = boolOf(chkShowPoly_);
        o.RptAddRow = boolOf(chkAddRow_);
        o.RptTotal = boolOf(chkTotal_);
        o.RptIncAvg = boolOf(chkIncAvg_);
        o.RptExcel = boolOf(chkExcel_);
        o.RptPrompt = boolOf(chkShow_);
    });
    if (stored) accept();
}

}  // namespace arborex
