#pragma once
// Writing a user's file so that a crash, a kill or a full disk at any moment leaves either the
// former file or the complete new one under its name. The new contents go to a temporary file
// beside the target, reach the disk (fsync), and only then replace the target by a rename,
// which the file system performs in one step.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace arborex {

// The moments of a commit at which a test may stop the process.
enum class CommitStep {
    Synced,        // the temporary file is complete on disk and closed
    BackupStaged,  // the former file also stands under the backup's temporary name
    BackedUp,      // the backup holds the former file; the target still does too
    Replaced,      // the target holds the new file
};

// Seams through which tests cut a write short or stop the process mid-save. `writeLimit` gets
// the bytes already written and the size of the next write and returns how many of them may
// go; 0 behaves as a full disk. `atStep` runs at each CommitStep.
struct AtomicFileHooks {
    std::function<std::size_t(std::uint64_t written, std::size_t size)> writeLimit;
    std::function<void(CommitStep)> atStep;
};
// Installs `hooks` for the whole process and returns those they replace.
AtomicFileHooks setAtomicFileHooks(AtomicFileHooks hooks);

// A new version of one file. Failures throw ArborexError: ErrDiskFull when the disk (or the
// user's quota) is full, and always with a text that says the former file is unchanged for as
// long as that is true. The temporary file never outlives the object unless the process dies.
class AtomicFile {
public:
    // Creates "<target>.saving", replacing what an interrupted save may have left there. The
    // new file takes the permissions of the file it replaces.
    explicit AtomicFile(std::string target);
    ~AtomicFile();
    AtomicFile(const AtomicFile&) = delete;
    AtomicFile& operator=(const AtomicFile&) = delete;

    // Writes all of `data`; a short write is resumed, a failing one throws.
    void write(const void* data, std::size_t size);
    // Puts the contents on disk, runs `beforeReplace` (which may keep a backup of the former
    // file and may throw, leaving the target as it was), then renames the new file over the
    // target.
    void commit(const std::function<void()>& beforeReplace = {});

    const std::string& target() const { return target_; }

private:
    std::string target_;
    std::string temporary_;
    int fd_ = -1;
    std::uint64_t written_ = 0;
    bool committed_ = false;
};

// Writes `bytes` as the new contents of `path` through an AtomicFile.
void writeFileAtomically(const std::string& path, std::string_view bytes);

// Keeps the file at `path` as `backup`, replacing an earlier backup in one step, while `path`
// stays in place: at every moment both names hold a whole file. Nothing happens when `path`
// does not exist or is the backup itself.
void keepBackup(const std::string& path, const std::string& backup);

}  // namespace arborex
