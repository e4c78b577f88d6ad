#include "platform/single_instance.hpp"

#include <QDir>
#include <QLockFile>
#include <QStandardPaths>

namespace arborex {

static QString defaultLockPath() {
    return QDir(QStandardPaths::writableLocation(QStandardPaths::TempLocation))
        .filePath("arborex.lock");
}

SingleInstance::SingleInstance() : SingleInstance(defaultLockPath()) {}

SingleInstance::SingleInstance(const QString& lockPath)
    : lock_(std::make_unique<QLockFile>(lockPath)) {
    lock_->setStaleLockTime(0);  // a lock lives as long as its process, however long that is
}

SingleInstance::~SingleInstance() = default;

bool SingleInstance::anotherRunning() {
    if (lock_->isLocked()) return false;
    if (lock_->tryLock(0)) return false;
    return lock_->error() == QLockFile::LockFailedError;
}

}  // namespace arborex
