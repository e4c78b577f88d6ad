#include "platform/app_paths.hpp"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

#include "frame/file_names.hpp"

namespace arborex {

static std::string withSlash(const QString& folder) {
    QString path = QDir::cleanPath(folder);
    if (!path.endsWith('/')) path += '/';
    return path.toStdString();
}

std::string programDataFolder(const QString& executableFolder) {
    const std::string beside = withSlash(executableFolder);
    // The message catalogue is the one file every installation carries.
    if (!findFileNoCase(beside, "MESSAGES.DAT").empty()) return beside;
    const QString shared = QDir(executableFolder).filePath("../share/arborex");
    if (QFileInfo(shared).isDir()) return withSlash(shared);
    return beside;
}

std::string userTempFolder() {
    return withSlash(QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) +
                     "/temp");
}

std::string userDocumentsFolder() {
    return withSlash(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) +
                     "/Arborex for Windows");
}

bool makeFolder(const std::string& folder) {
    return !folder.empty() && QDir().mkpath(QString::fromStdString(folder));
}

}  // namespace arborex
