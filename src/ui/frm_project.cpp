#include "ui/frm_project.hpp"

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

#include "base/display_format.hpp"
#include "frame/error_handler.hpp"
#include "frame/user_settings.hpp"

namespace arborex {

namespace {

constexpr int kFieldLength = 32;
constexpr const char* kFieldLabels[5] = {"Scenario Number", "Arborex Licence Number",
                                         "Forest District", "Company Name", "User Name"};

// The header field behind each txtInfo, in screen order.
FixedString<32>& headerField(ProjectHeader& header, int index) {
    switch (index) {
        case 0:
            return header.Scenario;
        case 1:
            return header.Licence;
        case 2:
            return header.District;
        case 3:
            return header.Company;
        default:
            return header.User;
    }
}

}  // namespace

frmProject::frmProject(Model& m, Host& host, QWidget* parent)
    : QDialog(parent), m_(m), host_(host) {
    setObjectName("frmProject");
    setWindowTitle("Project Information");

    auto* fields = new QGridLayout;
    for (int i = 0; i < 5; ++i) {
        auto* label = new QLabel(kFieldLabels[i], this);
        label->setObjectName(QString("lblInfo_%1").arg(i));
        auto* field = new QLineEdit(this);
        field->setObjectName(QString("txtInfo_%1").arg(i));
        field->setMinimumWidth(260);
        field->setText(QString::fromLatin1(headerField(m_.Header, i).str()));
        field->installEventFilter(this);
        label->setBuddy(field);
        fields->addWidget(label, i, 0);
        fields->addWidget(field, i, 1);
        txtInfo_[static_cast<std::size_t>(i)] = field;
    }
    const std::array<const char*, 2> dateCaptions = {"Started", "Last Saved"};
    const std::array<double, 2> dates = {m_.Header.StartDate, m_.Header.LastDate};
    for (int i = 0; i < 2; ++i) {
        auto* label = new QLabel(dateCaptions[static_cast<std::size_t>(i)], this);
        auto* date = new QLabel(
            QString::fromStdString(formatDate(dates[static_cast<std::size_t>(i)], "mmm d, yyyy")),
            this);
        date->setObjectName(QString("lblDate_%1").arg(i));
        fields->addWidget(label, 5 + i, 0);
        fields->addWidget(date, 5 + i, 1);
    }

    auto* ok = new QPushButton("OK", this);
    ok->setObjectName("cmdSaveExit");
    ok->setDefault(true);
    auto* cancel = new QPushButton("Cancel", this);
    cancel->setObjectName("cmdCancel");
    auto* saveDefault = new QPushButton("Save Default", this);
    saveDefault->setObjectName("cmdSaveIni");
    saveDefault->setToolTip("Keep these names as the defaults of new projects");
    connect(ok, &QPushButton::clicked, this, &frmProject::cmdSaveExit_Click);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(saveDefault, &QPushButton::clicked, this, &frmProject::cmdSaveIni_Click);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(saveDefault);
    buttons->addStretch();
    buttons->addWidget(ok);
    buttons->addWidget(cancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addSpacing(8);
    layout->addLayout(buttons);
}

void frmProject::SaveToMEM() {
    for (int i = 0; i < 5; ++i) {
        const QString text = txtInfo_[static_cast<std::size_t>(i)]->text().left(kFieldLength);
        headerField(m_.Header, i) = text.toLatin1().toStdString();
    }
}

void frmProject::cmdSaveExit_Click() {
    SaveToMEM();
    accept();
}

void frmProject::cmdSaveIni_Click() {
    runGuarded(m_, host_, "cmdSaveIni_Click", "frmProject", [this] {
        SaveToMEM();
        SaveRegProjectInfo(m_, host_.settings);
    });
}

// A field selects its whole text on focus, so typing replaces it. The selection waits for the
// event loop: a mouse click that gave the focus would otherwise place the cursor over it.
bool frmProject::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        if (auto* field = qobject_cast<QLineEdit*>(watched))
            QTimer::singleShot(0, field, &QLineEdit::selectAll);
    }
    return QDialog::eventFilter(watched, event);
}

}  // namespace arborex
