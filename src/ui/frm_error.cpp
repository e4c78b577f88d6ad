#include "ui/frm_error.hpp"

#include <QCheckBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <cstdlib>

#include "ui/ui_helpers.hpp"

namespace arborex {

namespace {

QLineEdit* readOnlyLine(QWidget* parent, const char* name, const QString& text) {
    auto* field = new QLineEdit(text, parent);
    field->setObjectName(name);
    field->setReadOnly(true);
    return field;
}

QLabel* label(QWidget* parent, const char* name, const char* caption, QWidget* buddy) {
    auto* text = new QLabel(caption, parent);
    text->setObjectName(name);
    text->setBuddy(buddy);
    return text;
}

QPushButton* button(QWidget* parent, const char* name, const char* caption) {
    auto* pushButton = new QPushButton(caption, parent);
    pushButton->setObjectName(name);
    pushButton->setAutoDefault(false);
    return pushButton;
}

}  // namespace

frmError::frmError(FailureReport report, QWidget* parent)
    : QDialog(parent), report_(std::move(report)), endProcess_([] { std::_Exit(1); }) {
    setObjectName("frmError");
    setWindowTitle("ERROR");
    setModal(true);

    auto* txtLocation = readOnlyLine(this, "txtLocation", qs(report_.location));
    auto* txtErrNum = readOnlyLine(this, "txtErrNum", QString::number(report_.number));
    auto* txtMessage = new QPlainTextEdit(lq(report_.message), this);
    txtMessage->setObjectName("txtMessage");
    txtMessage->setReadOnly(true);
    txtMessage->setMaximumHeight(90);
    auto* fields = new QFormLayout;
    fields->addRow(label(this, "lblLocation", "Page / Section Name", txtLocation), txtLocation);
    fields->addRow(label(this, "lblErrNum", "Error Number", txtErrNum), txtErrNum);
    fields->addRow(label(this, "lblMessage", "Message", txtMessage), txtMessage);

    auto* cmdRetry = button(this, "cmdRetry", "Retry");
    auto* cmdIgnore = button(this, "cmdIgnore", "Ignore && Continue");
    auto* cmdExit = button(this, "cmdExit", "Exit Section");
    auto* cmdBackup = button(this, "cmdBackup", "Backup my data now");
    auto* cmdEnd = button(this, "cmdEnd", "End");
    cmdBackup->setEnabled(static_cast<bool>(report_.backup));
    cmdEnd->setToolTip("Close the program at once, without saving");
    connect(cmdRetry, &QPushButton::clicked, this, [this] { choose(ErrorChoice::Retry); });
    connect(cmdIgnore, &QPushButton::clicked, this, [this] { choose(ErrorChoice::Ignore); });
    connect(cmdExit, &QPushButton::clicked, this, [this] { choose(ErrorChoice::ExitSection); });
    connect(cmdBackup, &QPushButton::clicked, this, &frmError::cmdBackup_Click);
    connect(cmdEnd, &QPushButton::clicked, this, [this] { endProcess_(); });

    // The user ticks it and nothing remembers it: no list of ignored failures is kept.
    auto* chkIgnore = new QCheckBox("Always ignore this error (this session only)", this);
    chkIgnore->setObjectName("chkIgnore");
    auto* lblWarning = new QLabel(
        "Warning:  If the error message is releated to disk access backing up data will not "
        "allways work.",
        this);
    lblWarning->setObjectName("lblWarning");
    lblWarning->setWordWrap(true);

    auto* choices = new QHBoxLayout;
    choices->addWidget(cmdRetry);
    choices->addWidget(cmdIgnore);
    choices->addWidget(cmdExit);
    auto* rescue = new QHBoxLayout;
    rescue->addWidget(cmdBackup);
    rescue->addStretch();
    rescue->addWidget(cmdEnd);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addWidget(chkIgnore);
    layout->addLayout(choices);
    layout->addSpacing(8);
    layout->addWidget(lblWarning);
    layout->addLayout(rescue);
    setMinimumWidth(460);
    cmdRetry->setFocus(Qt::OtherFocusReason);
}

void frmError::choose(ErrorChoice choice) {
    choice_ = choice;
    done(static_cast<int>(choice));
}

// The backup may itself fail and raise a screen of its own over this one; either way this
// screen stays up for the user's decision.
void frmError::cmdBackup_Click() {
    if (report_.backup) report_.backup();
}

}  // namespace arborex
