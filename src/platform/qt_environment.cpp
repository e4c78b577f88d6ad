#include "platform/qt_environment.hpp"

#include <QDir>
#include <QFile>
#include <QMimeDatabase>
#include <QProcess>
#include <QStandardPaths>
#include <QTextStream>

namespace arborex {

namespace {

QString withoutTrailingSlash(QString folder) {
    while (folder.size() > 1 && folder.endsWith('/')) folder.chop(1);
    return folder;
}

// The first line of xdg-mime's answer, empty when it cannot run or says nothing in time.
QString defaultDesktopEntry(const QString& mimeType) {
    const QString xdgMime = QStandardPaths::findExecutable("xdg-mime");
    if (xdgMime.isEmpty()) return {};
    QProcess process;
    process.start(xdgMime, {"query", "default", mimeType});
    if (!process.waitForFinished(3000)) {
        process.kill();
        process.waitForFinished(1000);
        return {};
    }
    return QString::fromLocal8Bit(process.readAllStandardOutput()).section('\n', 0, 0).trimmed();
}

// The program of a desktop entry's Exec line, as a full path when it is on the PATH.
QString programOfEntry(const QString& entryName) {
    const QString entry = QStandardPaths::locate(QStandardPaths::ApplicationsLocation, entryName);
    QFile file(entry);
    if (entry.isEmpty() || !file.open(QIODevice::ReadOnly | QIODevice::Text)) return {};
    QTextStream in(&file);
    while (!in.atEnd()) {
        const QString line = in.readLine().trimmed();
        if (!line.startsWith("Exec=")) continue;
        const QString program = line.mid(5).section(' ', 0, 0, QString::SectionSkipEmpty);
        const QString found = QStandardPaths::findExecutable(program);
        return found.isEmpty() ? program : found;
    }
    return {};
}

}  // namespace

std::string QtEnvironment::variable(const std::string& name) {
    const QString key = QString::fromStdString(name).toUpper();
    if (key == "APPDATA")
        return withoutTrailingSlash(
                   QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation))
            .toStdString();
    if (key == "USERPROFILE") return withoutTrailingSlash(QDir::homePath()).toStdString();
    if (key == "USERNAME") {
        QString user = qEnvironmentVariable("USER");
        if (user.isEmpty()) user = qEnvironmentVariable("LOGNAME");
        return user.toStdString();
    }
    return qEnvironmentVariable(name.c_str()).toStdString();
}

std::string QtEnvironment::documentsFolder() {
    return withoutTrailingSlash(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation))
        .toStdString();
}

std::string QtEnvironment::applicationFor(const std::string& path) {
    const QMimeType type = QMimeDatabase().mimeTypeForFile(QString::fromStdString(path));
    if (!type.isValid() || type.isDefault()) return {};
    const QString entry = defaultDesktopEntry(type.name());
    if (entry.isEmpty()) return {};
    return programOfEntry(entry).toStdString();
}

}  // namespace arborex
