#include "platform/qt_document_launcher.hpp"

#include <QDesktopServices>
#include <QFileInfo>
#include <QProcess>
#include <QUrl>

namespace arborex {

bool QtDocumentLauncher::openDocument(const std::string& path) {
    return QDesktopServices::openUrl(QUrl::fromLocalFile(QString::fromStdString(path)));
}

bool QtDocumentLauncher::openWith(const std::string& program, const std::string& path) {
    const QFileInfo found(QString::fromStdString(program));
    if (!found.exists() || found.isDir()) return false;
    return QProcess::startDetached(found.absoluteFilePath(), {QString::fromStdString(path)});
}

}  // namespace arborex
