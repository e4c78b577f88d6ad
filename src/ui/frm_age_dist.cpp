#include "ui/frm_age_dist.hpp"

#include <QColorDialog>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "base/dates.hpp"
#include "base/display_format.hpp"
#include "frame/error_handler.hpp"
#include "model/colours.hpp"
#include "platform/qt_document_launcher.hpp"
#include "report/graph_data.hpp"
#include "ui/frm_graph.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

constexpr const char* kModule = "frmAgeDist";
constexpr const char* kFillTypes[] = {"Pattern && Color", "Color Only",
                                      "Pattern Only (monochrome)"};

int thisYear() {
    return partsFromDayCount(dateNow()).year;
}

}  // namespace

frmAgeDist::frmAgeDist(Model& m, Host& host, DocumentLauncher* launcher, QWidget* parent)
    : QDialog(parent), m_(m), host_(host), launcher_(launcher) {
    setObjectName("frmAgeDist");
    setWindowTitle("Graph Age Distrbution");

    auto* grid = new QGridLayout;
    grid->addWidget(new QLabel("Year", this), 0, 0);
    grid->addWidget(new QLabel("Fill Style", this), 0, 1);
    grid->addWidget(new QLabel("Colour", this), 0, 2);
    for (int i = 0; i < 6; ++i) {
        const auto n = static_cast<std::size_t>(i);
        txtYear_[n] = new QLineEdit(this);
        txtYear_[n]->setObjectName(QString("txtYear_%1").arg(i));
        txtYear_[n]->setMaximumWidth(70);
        lstFillStyle_[n] = new QComboBox(this);
        lstFillStyle_[n]->setObjectName(QString("lstFillStyle_%1").arg(i));
        for (const char* style : kFillStyleNames) lstFillStyle_[n]->addItem(style);
        picCol_[n] = new QPushButton(this);
        picCol_[n]->setObjectName(QString("picCol_%1").arg(i));
        picCol_[n]->setFixedSize(48, 22);
        connect(picCol_[n], &QPushButton::clicked, this, [this, i] { picCol_Click(i); });
        grid->addWidget(txtYear_[n], i + 1, 0);
        grid->addWidget(lstFillStyle_[n], i + 1, 1);
        grid->addWidget(picCol_[n], i + 1, 2);
    }

    auto* fillType = new QGroupBox("Fill Type", this);
    fillType->setObjectName("fraFillType");
    auto* fillLayout = new QVBoxLayout(fillType);
    for (int i = 0; i < 3; ++i) {
        auto* option = new QRadioButton(kFillTypes[i], fillType);
        option->setObjectName(QString("optFillType_%1").arg(i));
        fillLayout->addWidget(option);
        optFillType_[static_cast<std::size_t>(i)] = option;
    }

    auto* buttons = new QHBoxLayout;
    const auto button = [&](const char* name, const char* caption) {
        auto* b = new QPushButton(caption, this);
        b->setObjectName(name);
        buttons->addWidget(b);
        return b;
    };
    connect(button("cmdGraph", "&Graph"), &QPushButton::clicked, this,
            [this] { cmdGraph_Click(); });
    connect(button("cmdNewGraph", "&New Graph"), &QPushButton::clicked, this,
            [this] { cmdNewGraph_Click(); });
    button("cmdTable", "&Table");  // kept without an action, as it always was
    connect(button("cmdOk", "&OK"), &QPushButton::clicked, this, [this] { accept(); });

    auto* top = new QHBoxLayout;
    top->addLayout(grid);
    top->addWidget(fillType, 0, Qt::AlignTop);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addLayout(buttons);

    setupdefaults();
    setWindowTitle("Age Distribution Graph");
}

void frmAgeDist::setupdefaults() {
    const AgeGraphRequest proposal = defaultAgeGraphRequest(thisYear());
    for (std::size_t i = 0; i < txtYear_.size(); ++i) {
        txtYear_[i]->setText(qs(formatNumber(static_cast<int>(proposal.years[i]), "0")));
        lstFillStyle_[i]->setCurrentIndex(proposal.patterns[i]);
        colours_[i] = proposal.colours[i];
        paintColour(static_cast<int>(i));
    }
    optFillType_[static_cast<std::size_t>(proposal.fillType)]->setChecked(true);
}

void frmAgeDist::paintColour(int index) {
    const QColor colour = storedColour(colours_[static_cast<std::size_t>(index)]);
    picCol_[static_cast<std::size_t>(index)]->setStyleSheet(
        QString("background-color: %1; border: 1px solid black;").arg(colour.name()));
}

AgeGraphRequest frmAgeDist::request() const {
    AgeGraphRequest request;
    for (std::size_t i = 0; i < txtYear_.size(); ++i) {
        request.years[i] = ageGraphYear(ls(txtYear_[i]->text()));
        request.colours[i] = colours_[i];
        request.patterns[i] = static_cast<int16_t>(lstFillStyle_[i]->currentIndex());
    }
    for (std::size_t i = 0; i < optFillType_.size(); ++i)
        if (optFillType_[i]->isChecked()) request.fillType = static_cast<int>(i);
    return request;
}

void frmAgeDist::picCol_Click(int index) {
    const int32_t c = colours_[static_cast<std::size_t>(index)];
    const QColor chosen =
        QColorDialog::getColor(QColor(c & 0xff, (c >> 8) & 0xff, (c >> 16) & 0xff), this, "Colour");
    if (!chosen.isValid()) return;
    colours_[static_cast<std::size_t>(index)] = rgb(chosen.red(), chosen.green(), chosen.blue());
    paintColour(index);
}

void frmAgeDist::cmdGraph_Click() {
    GraphPicture picture;
    if (!runGuarded(m_, host_, "cmdGraph_Click", kModule,
                    [&] { picture = ageDistributionGraph(m_, request(), thisYear()); }))
        return;
    if (!graph_) graph_ = new frmGraph(m_, host_, this);
    graph_->GraphScreen(std::move(picture));
    graph_->show();
    graph_->raise();
}

void frmAgeDist::cmdNewGraph_Click() {
    static QtDocumentLauncher desktop;
    DocumentLauncher& launcher = launcher_ ? *launcher_ : desktop;
    runGuarded(m_, host_, "cmdNewGraph_Click", kModule, [&] {
        const std::string path = writeAgeGraph(m_, request(), dateNow());
        if (!path.empty()) launchGraph(m_, launcher, host_.prompt, path);
    });
}

}  // namespace arborex
