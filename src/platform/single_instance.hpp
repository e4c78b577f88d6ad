#pragma once
// Tells whether another copy of the program is running, by a lock file that the first copy
// holds for as long as it lives. A copy that crashed leaves a stale lock, which QLockFile
// recognises by its process id and takes over.

#include <QString>
#include <memory>

class QLockFile;

namespace arborex {

class SingleInstance {
public:
    // The lock "arborex.lock" in the system's temporary folder.
    SingleInstance();
    // A lock at a given path (tests).
    explicit SingleInstance(const QString& lockPath);
    ~SingleInstance();
    SingleInstance(const SingleInstance&) = delete;
    SingleInstance& operator=(const SingleInstance&) = delete;

    // Tries to take the lock; true when another copy holds it. This copy then runs without
    // the lock, so the first copy stays the one that others see.
    bool anotherRunning();

private:
    std::unique_ptr<QLockFile> lock_;
};

}  // namespace arborex
