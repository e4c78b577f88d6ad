#include "ui/qt_prompt.hpp"

#include <QFileDialog>
#include <QInputDialog>
#include <QMessageBox>
#include <QRegularExpression>

#include "ui/frm_error.hpp"
#include "ui/frm_msg.hpp"
#include "ui/ui_helpers.hpp"

namespace arborex {

QStringList toQtFilters(const std::string& filter) {
    if (filter.empty()) return {};
    const QStringList parts = qs(filter).split('|');
    QStringList result;
    static const QRegularExpression trailingPatterns(R"(\s*\([^()]*\)\s*$)");
    for (qsizetype i = 0; i < parts.size(); i += 2) {
        QString label = parts[i];
        label.remove(trailingPatterns);
        QString patterns = i + 1 < parts.size() ? parts[i + 1].trimmed() : QString("*");
        if (patterns.isEmpty()) patterns = "*";
        patterns.replace(';', ' ');
        result << label.trimmed() + " (" + patterns.simplified() + ")";
    }
    return result;
}

static QMessageBox::StandardButton standardButton(Answer answer) {
    switch (answer) {
        case Answer::Ok:
            return QMessageBox::Ok;
        case Answer::Cancel:
            return QMessageBox::Cancel;
        case Answer::Yes:
            return QMessageBox::Yes;
        case Answer::No:
            return QMessageBox::No;
    }
    return QMessageBox::Ok;
}

static QMessageBox::StandardButtons buttonSet(Buttons buttons) {
    switch (buttons) {
        case Buttons::Ok:
            return QMessageBox::Ok;
        case Buttons::OkCancel:
            return QMessageBox::Ok | QMessageBox::Cancel;
        case Buttons::YesNo:
            return QMessageBox::Yes | QMessageBox::No;
        case Buttons::YesNoCancel:
            return QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    }
    return QMessageBox::Ok;
}

static QMessageBox::Icon boxIcon(Icon icon) {
    switch (icon) {
        case Icon::None:
            return QMessageBox::NoIcon;
        case Icon::Information:
            return QMessageBox::Information;
        case Icon::Exclamation:
            return QMessageBox::Warning;
        case Icon::Critical:
            return QMessageBox::Critical;
        case Icon::Question:
            return QMessageBox::Question;
    }
    return QMessageBox::NoIcon;
}

Answer QtPrompt::ask(const std::string& title, const std::string& text, Buttons buttons,
                     Answer defaultAnswer, Icon icon) {
    QMessageBox box(boxIcon(icon), lq(title), lq(text), buttonSet(buttons), parent_);
    if (buttonSet(buttons) & standardButton(defaultAnswer))
        box.setDefaultButton(standardButton(defaultAnswer));
    // Escape and the close button give the box's cautious answer.
    if (buttons == Buttons::YesNo)
        box.setEscapeButton(QMessageBox::No);
    else if (buttons != Buttons::Ok)
        box.setEscapeButton(QMessageBox::Cancel);
    switch (box.exec()) {
        case QMessageBox::Cancel:
            return Answer::Cancel;
        case QMessageBox::Yes:
            return Answer::Yes;
        case QMessageBox::No:
            return Answer::No;
        default:
            return Answer::Ok;
    }
}

std::optional<std::string> QtPrompt::input(const std::string& title, const std::string& text,
                                           const std::string& proposed) {
    bool ok = false;
    const QString answer =
        QInputDialog::getText(parent_, lq(title), lq(text), QLineEdit::Normal, lq(proposed), &ok);
    if (!ok) return std::nullopt;
    return ls(answer);
}

// The extension a save dialog adds when the user types none: the first pattern's, unless it
// is a wildcard.
static QString suffixOf(const QString& qtFilter) {
    static const QRegularExpression firstExtension(R"(\(\*\.([A-Za-z0-9_]+))");
    const auto match = firstExtension.match(qtFilter);
    return match.hasMatch() ? match.captured(1) : QString();
}

std::optional<FileChoice> QtPrompt::chooseFile(const FileRequest& request, bool save) {
    QFileDialog dialog(parent_, qs(request.title), qs(request.folder));
    const QStringList filters = toQtFilters(request.filter);
    if (!filters.isEmpty()) dialog.setNameFilters(filters);
    if (request.filterIndex >= 1 && request.filterIndex <= filters.size())
        dialog.selectNameFilter(filters[request.filterIndex - 1]);
    if (save) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.setOption(QFileDialog::DontConfirmOverwrite, !request.overwritePrompt);
        dialog.setDefaultSuffix(suffixOf(dialog.selectedNameFilter()));
        QObject::connect(&dialog, &QFileDialog::filterSelected, &dialog,
                         [&dialog](const QString& f) { dialog.setDefaultSuffix(suffixOf(f)); });
    } else {
        dialog.setAcceptMode(QFileDialog::AcceptOpen);
        dialog.setFileMode(QFileDialog::ExistingFile);
    }
    if (!request.proposedName.empty()) dialog.selectFile(qs(request.proposedName));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    FileChoice choice;
    choice.path = ss(dialog.selectedFiles().first());
    const qsizetype index = filters.indexOf(dialog.selectedNameFilter());
    choice.filterIndex = index < 0 ? 1 : static_cast<int>(index) + 1;
    return choice;
}

std::optional<FileChoice> QtPrompt::openFile(const FileRequest& request) {
    return chooseFile(request, false);
}

std::optional<FileChoice> QtPrompt::saveFile(const FileRequest& request) {
    return chooseFile(request, true);
}

ErrorChoice QtPrompt::reportError(const FailureReport& failure) {
    frmError screen(failure, parent_);
    screen.exec();
    return screen.choice();
}

int16_t QtPrompt::messageScreen(const std::string& title, const std::string& text,
                                const std::string& list, int16_t buttons, int16_t defaultButton) {
    frmMsg screen(title, text, list, buttons, defaultButton, parent_);
    screen.exec();
    return screen.MsgResult();
}

}  // namespace arborex
