#include "platform/app_paths.hpp"

#include <QDir>
#include <QFileInfo>

#include "base/file_names.hpp"

namespace arborex {

static std::string withSlash(const QString& folder) {
    QString path = QDir::cleanPath(folder);
    if (!path.endsWith('/')) path += '/';
    return path.toStdString();
}

std::string programDataFolder(const QString& executableFolder) {
    const std::string beside = withSlash(executableFolder);
    // The program refuses to start without the TIPSY species table, so it marks the folder.
    if (!findFileNoCase(beside, "speciest.dat").empty()) return beside;
    const QString shared = QDir(executableFolder).filePath("../share/arborex");
    if (QFileInfo(shared).isDir()) return withSlash(shared);
    return beside;
}

}  // namespace arborex
