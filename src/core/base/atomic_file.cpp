#include "base/atomic_file.hpp"

// Durability needs fsync, and a backup that never leaves a moment without one needs a hard
// link: neither is in the standard library, so this file speaks POSIX.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "base/errors.hpp"

namespace arborex {

namespace {

AtomicFileHooks& hooks() {
    static AtomicFileHooks installed;
    return installed;
}

void reachStep(CommitStep step) {
    if (hooks().atStep) hooks().atStep(step);
}

bool isDiskFull(int error) {
    return error == ENOSPC || error == EDQUOT || error == EFBIG;
}

[[noreturn]] void throwOpenFailure(int error, const std::string& target) {
    switch (error) {
        case ENOENT:
        case ENOTDIR:
            throw ArborexError(ErrPathNotFound, target);
        case EACCES:
        case EPERM:
        case EROFS:
            throw ArborexError(ErrPermissionDenied, target);
        default:
            throw ArborexError(isDiskFull(error) ? ErrDiskFull : ErrPathFileAccess, target);
    }
}

// A failure while the new contents are on their way: the target has not been touched yet.
[[noreturn]] void throwUnsaved(int error, const std::string& target) {
    throw ArborexError(isDiskFull(error) ? ErrDiskFull : ErrPathFileAccess,
                       target + ": not saved, the file already there is unchanged");
}

std::string temporaryFor(const std::string& path) {
    return path + ".saving";
}

// Makes a folder's new entries survive a power cut. Some file systems refuse to sync a folder;
// the rename has happened all the same, so that is no failure.
void syncFolderOf(const std::string& path) {
    std::string folder = std::filesystem::path(path).parent_path().string();
    if (folder.empty()) folder = ".";
    const int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    ::fsync(fd);
    ::close(fd);
}

// Copies `from` to `to` with its contents on disk, for file systems without hard links.
void copyDurably(const std::string& from, const std::string& to) {
    std::error_code ec;
    std::filesystem::copy_file(from, to, std::filesystem::copy_options::overwrite_existing, ec);
    const int fd = ec ? -1 : ::open(to.c_str(), O_WRONLY | O_CLOEXEC);
    const bool synced = fd >= 0 && ::fsync(fd) == 0;
    if (fd >= 0) ::close(fd);
    if (!synced) {
        ::unlink(to.c_str());
        throw ArborexError(ErrPathFileAccess, to);
    }
}

}  // namespace

AtomicFileHooks setAtomicFileHooks(AtomicFileHooks replacement) {
    return std::exchange(hooks(), std::move(replacement));
}

AtomicFile::AtomicFile(std::string target)
    : target_(std::move(target)), temporary_(temporaryFor(target_)) {
    fd_ = ::open(temporary_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
    if (fd_ < 0) throwOpenFailure(errno, target_);
    struct stat former {};
    if (::stat(target_.c_str(), &former) == 0) ::fchmod(fd_, former.st_mode & 07777);
}

AtomicFile::~AtomicFile() {
    if (fd_ >= 0) ::close(fd_);
    if (!committed_) ::unlink(temporary_.c_str());
}

void AtomicFile::write(const void* data, std::size_t size) {
    const auto* next = static_cast<const char*>(data);
    while (size > 0) {
        std::size_t allowed = size;
        if (hooks().writeLimit) allowed = std::min(size, hooks().writeLimit(written_, size));
        if (allowed == 0) throwUnsaved(ENOSPC, target_);
        const ssize_t done = ::write(fd_, next, allowed);
        if (done < 0) {
            if (errno == EINTR) continue;
            throwUnsaved(errno, target_);
        }
        if (done == 0) throwUnsaved(ENOSPC, target_);
        next += done;
        size -= static_cast<std::size_t>(done);
        written_ += static_cast<std::uint64_t>(done);
    }
}

void AtomicFile::commit(const std::function<void()>& beforeReplace) {
    // A file system that allocates late reports a full disk only here.
    if (::fsync(fd_) != 0) throwUnsaved(errno, target_);
    const int fd = std::exchange(fd_, -1);
    if (::close(fd) != 0) throwUnsaved(errno, target_);
    reachStep(CommitStep::Synced);
    if (beforeReplace) beforeReplace();
    if (::rename(temporary_.c_str(), target_.c_str()) != 0)
        throw ArborexError(ErrPathFileAccess, target_);
    committed_ = true;
    reachStep(CommitStep::Replaced);
    syncFolderOf(target_);
}

void writeFileAtomically(const std::string& path, std::string_view bytes) {
    AtomicFile file(path);
    file.write(bytes.data(), bytes.size());
    file.commit();
}

void keepBackup(const std::string& path, const std::string& backup) {
    struct stat former {};
    if (::lstat(path.c_str(), &former) != 0 || path == backup) return;
    // The backup is made under a name of its own and renamed over the old one, so that a
    // backup stands whole under its name at every moment.
    const std::string staged = temporaryFor(backup);
    ::unlink(staged.c_str());
    if (::link(path.c_str(), staged.c_str()) != 0) copyDurably(path, staged);
    reachStep(CommitStep::BackupStaged);
    const bool renamed = ::rename(staged.c_str(), backup.c_str()) == 0;
    // A rename between two names of one file (left so by a save killed after this point)
    // succeeds without moving anything, so the staged name is removed in every case.
    ::unlink(staged.c_str());
    if (!renamed) throw ArborexError(ErrPermissionDenied, backup);
    reachStep(CommitStep::BackedUp);
}

}  // namespace arborex
