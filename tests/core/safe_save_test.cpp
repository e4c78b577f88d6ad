// Saves that cannot destroy a project: a saving process killed at any byte or step leaves the
// former or the new project under its name and a whole .bak; a full disk leaves both files as
// they were and tells the user so.

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <set>

#include "base/atomic_file.hpp"
#include "base/errors.hpp"
#include "frame/error_handler.hpp"
#include "frame/project_open.hpp"
#include "golden/arx_layout.hpp"
#include "golden/arx_sample_model.hpp"
#include "model/default_polygon.hpp"
#include "model/project_file.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

namespace fs = std::filesystem;
using test::Bytes;

constexpr std::size_t kLastDateAt = 232;  // the save's time, the one field two saves differ in

std::set<std::string> filesIn(const std::string& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.insert(entry.path().filename().string());
    return names;
}

Bytes withoutSaveTime(Bytes bytes) {
    if (bytes.size() >= kLastDateAt + 8)
        std::fill_n(bytes.begin() + kLastDateAt, 8, std::uint8_t{0});
    return bytes;
}

// Installs hooks for one scope.
class HooksInstalled {
public:
    explicit HooksInstalled(AtomicFileHooks hooks)
        : before_(setAtomicFileHooks(std::move(hooks))) {}
    ~HooksInstalled() { setAtomicFileHooks(std::move(before_)); }

private:
    AtomicFileHooks before_;
};

// Lets `allowed` bytes reach the file, then answers every write as a full disk.
AtomicFileHooks diskFullAfter(std::uint64_t allowed) {
    AtomicFileHooks hooks;
    hooks.writeLimit = [allowed](std::uint64_t written, std::size_t size) -> std::size_t {
        return written >= allowed
                   ? 0
                   : static_cast<std::size_t>(std::min<std::uint64_t>(size, allowed - written));
    };
    return hooks;
}

// A folder with the project "plan.arx" (the sample as shipped) and its "plan.bak" (an older,
// different project), and the model of a new version of the sample that a save will write.
class SafeSave : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(LoadARX(next, host, std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx"));
        next.Header.Scenario = "after the kill test";
        next.Poly[0].AREA = 12.5f;
        former = test::readFileBytes(std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx");
        Model older = test::distinctModel();
        SaveArx(older, host, reference.file("older.arx"), 3226, false);
        olderBak = test::readFileBytes(reference.file("older.arx"));
        SaveArx(next, host, reference.file("fresh.arx"), 3226, false);
        fresh = withoutSaveTime(test::readFileBytes(reference.file("fresh.arx")));
        ASSERT_NE(withoutSaveTime(former), fresh);
        restore();
    }

    // Removed first: an interrupted save may have left both names on one file.
    void restore() {
        fs::remove(path);
        fs::remove(bak);
        test::writeFileBytes(path, former);
        test::writeFileBytes(bak, olderBak);
    }

    // Saves `next` to plan.arx in a child process under `hooks` and, when given, a limit on
    // the size of any file it writes. Returns its wait status; it exits with 0 when the save
    // succeeded, and with the failure's number otherwise.
    int saveInChild(AtomicFileHooks hooks, rlim_t fileSizeLimit = 0) {
        const pid_t child = fork();
        if (child == 0) {
            setAtomicFileHooks(std::move(hooks));
            if (fileSizeLimit > 0) {
                // Past the limit the kernel cuts a write short and then refuses the next.
                signal(SIGXFSZ, SIG_IGN);
                const rlimit limit{fileSizeLimit, fileSizeLimit};
                setrlimit(RLIMIT_FSIZE, &limit);
            }
            test::FakeHost quiet;
            try {
                SaveArx(next, quiet, path, 3226, false);
            } catch (const ArborexError& e) {
                _exit(e.number() & 0xff);
            } catch (...) {
                _exit(1);
            }
            _exit(0);
        }
        int status = 0;
        waitpid(child, &status, 0);
        return status;
    }

    // What stands after an interrupted save: the former or the whole new project under the
    // name, each loading whole, and the one .bak holding a whole project: the older one while
    // the former file is still in place, the former one once the new file has replaced it.
    void expectWholeFiles(const std::string& moment) {
        SCOPED_TRACE(moment);
        const Bytes now = test::readFileBytes(path);
        const Bytes backup = test::readFileBytes(bak);
        const bool isFormer = now == former;
        const bool isFresh = withoutSaveTime(now) == fresh;
        ASSERT_TRUE(isFormer || isFresh) << "a file of " << now.size() << " bytes";
        if (isFresh)
            EXPECT_EQ(backup, former);
        else
            EXPECT_TRUE(backup == olderBak || backup == former);
        if (loaded.insert(isFresh).second) {
            Model back;
            test::FakeHost quiet;
            EXPECT_TRUE(LoadARX(back, quiet, path));
            EXPECT_EQ(back.LastPoly, next.LastPoly);
            EXPECT_EQ(quiet.prompt.failures.size(), 0u);
        }
        for (const std::string& name : filesIn(dir.path()))
            EXPECT_TRUE(name == "plan.arx" || name == "plan.bak" || name == "plan.arx.saving" ||
                        name == "plan.bak.saving")
                << name;
        restore();
    }

    test::TempDir dir;
    test::TempDir reference;
    test::FakeHost host;
    const std::string path = dir.file("plan.arx");
    const std::string bak = dir.file("plan.bak");
    Model next;
    Bytes former;
    Bytes olderBak;
    Bytes fresh;            // the new project with its save time blanked
    std::set<bool> loaded;  // which of former and new were loaded whole already
};

TEST_F(SafeSave, KilledAtAnyByteOrStepLeavesAWholeProjectAndBak) {
    std::set<std::uint64_t> positions = {0, 1, 241, 242, 243, fresh.size() - 1};
    for (std::uint64_t k = 0; k < 100; ++k) positions.insert(k * fresh.size() / 100);
    for (std::uint64_t at : positions) {
        AtomicFileHooks hooks;
        hooks.writeLimit = [at](std::uint64_t written, std::size_t size) -> std::size_t {
            if (written >= at) raise(SIGKILL);
            return static_cast<std::size_t>(std::min<std::uint64_t>(size, at - written));
        };
        const int status = saveInChild(std::move(hooks));
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "at byte " << at;
        expectWholeFiles("killed at byte " + std::to_string(at));
    }
    for (CommitStep step : {CommitStep::Synced, CommitStep::BackupStaged, CommitStep::BackedUp,
                            CommitStep::Replaced}) {
        AtomicFileHooks hooks;
        hooks.atStep = [step](CommitStep reached) {
            if (reached == step) raise(SIGKILL);
        };
        const int status = saveInChild(std::move(hooks));
        ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
        expectWholeFiles("killed at step " + std::to_string(static_cast<int>(step)));
    }
    EXPECT_EQ(loaded, (std::set<bool>{false, true}));

    // The next save takes the place of whatever an interrupted one left behind: here both
    // names on the former file and a cut-off temporary.
    AtomicFileHooks hooks;
    hooks.atStep = [](CommitStep reached) {
        if (reached == CommitStep::BackedUp) raise(SIGKILL);
    };
    saveInChild(std::move(hooks));
    test::writeFileBytes(path + ".saving", {'c', 'u', 't'});
    ASSERT_EQ(saveInChild({}), 0);
    EXPECT_EQ(withoutSaveTime(test::readFileBytes(path)), fresh);
    EXPECT_EQ(test::readFileBytes(bak), former);
    EXPECT_EQ(filesIn(dir.path()), (std::set<std::string>{"plan.arx", "plan.bak"}));
}

TEST_F(SafeSave, AFirstSaveKilledLeavesNothingOrTheWholeProject) {
    fs::remove(path);
    fs::remove(bak);
    for (std::uint64_t at : {std::uint64_t{0}, std::uint64_t{500}, fresh.size() - 1}) {
        AtomicFileHooks hooks;
        hooks.writeLimit = [at](std::uint64_t written, std::size_t size) -> std::size_t {
            if (written >= at) raise(SIGKILL);
            return static_cast<std::size_t>(std::min<std::uint64_t>(size, at - written));
        };
        saveInChild(std::move(hooks));
        EXPECT_FALSE(fs::exists(path)) << at;
    }
    AtomicFileHooks hooks;
    hooks.atStep = [](CommitStep reached) {
        if (reached == CommitStep::Replaced) raise(SIGKILL);
    };
    saveInChild(std::move(hooks));
    EXPECT_EQ(withoutSaveTime(test::readFileBytes(path)), fresh);
    EXPECT_FALSE(fs::exists(bak));
}

// A disk that fills at the first byte, in the middle of a write and at the last byte.
TEST_F(SafeSave, AFullDiskKeepsBothFilesAndSaysSo) {
    test::TempDir documents;
    next.Paths[UserDocuments] = documents.path() + "/";
    for (std::uint64_t allowed : {std::uint64_t{0}, std::uint64_t{70001}, fresh.size() - 1}) {
        SCOPED_TRACE(allowed);
        HooksInstalled full(diskFullAfter(allowed));
        test::FakeHost user;
        EXPECT_FALSE(runGuarded(next, user, "mniSave_Click", "frmArbo",
                                [&] { SaveArx(next, user, path, 3226, false); }));
        ASSERT_EQ(user.prompt.failures.size(), 1u);
        EXPECT_EQ(user.prompt.failures[0].number, 61);
        EXPECT_EQ(user.prompt.failures[0].message,
                  "Disk full (" + path + ": not saved, the file already there is unchanged)");
        EXPECT_EQ(test::readFileBytes(path), former);
        EXPECT_EQ(test::readFileBytes(bak), olderBak);
        EXPECT_EQ(filesIn(dir.path()), (std::set<std::string>{"plan.arx", "plan.bak"}));
        EXPECT_FALSE(user.status.open);
    }
    std::ifstream log(documents.file("errorlog.txt"));
    std::string line;
    int lines = 0;
    while (std::getline(log, line))
        lines += line.find("\t61\tmniSave_Click\tfrmArbo") != std::string::npos;
    EXPECT_EQ(lines, 3);
    // Once there is room again the same model saves, and the former project becomes the .bak.
    SaveArx(next, host, path, 3226, false);
    EXPECT_EQ(withoutSaveTime(test::readFileBytes(path)), fresh);
    EXPECT_EQ(test::readFileBytes(bak), former);
}

// A real short write: the kernel stops the file at a size limit in the middle of a write.
TEST_F(SafeSave, AWriteTheSystemCutsShortKeepsBothFiles) {
    const int status = saveInChild({}, 50000);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), ErrDiskFull);
    EXPECT_EQ(test::readFileBytes(path), former);
    EXPECT_EQ(test::readFileBytes(bak), olderBak);
    EXPECT_EQ(filesIn(dir.path()), (std::set<std::string>{"plan.arx", "plan.bak"}));
}

TEST_F(SafeSave, AFullDiskOnAFirstSaveLeavesNoFile) {
    fs::remove(path);
    fs::remove(bak);
    HooksInstalled full(diskFullAfter(1000));
    try {
        SaveArx(next, host, path, 3226, false);
        ADD_FAILURE() << "the save did not fail";
    } catch (const ArborexError& e) {
        EXPECT_EQ(e.number(), ErrDiskFull);
    }
    EXPECT_TRUE(filesIn(dir.path()).empty());
}

// The user's default polygon and the exports go through the same writer.
TEST_F(SafeSave, AFullDiskKeepsTheDefaultPolygonAndAnExport) {
    const std::string defaults = dir.file("DEFAULT.DEF");
    SaveDefaultPolygon(next, defaults);
    const Bytes saved = test::readFileBytes(defaults);
    ASSERT_EQ(saved.size(), 177u + 54u + 96u);
    const std::string table = dir.file("polygons.txt");
    writeFileAtomically(table, "NAME\tAREA\r\n");
    {
        HooksInstalled full(diskFullAfter(100));
        next.DefaultPoly.AREA = 99.0f;
        EXPECT_THROW(SaveDefaultPolygon(next, defaults), ArborexError);
        EXPECT_THROW(writeFileAtomically(table, std::string(200, 'x')), ArborexError);
    }
    EXPECT_EQ(test::readFileBytes(defaults), saved);
    EXPECT_EQ(test::readFileBytes(table),
              (Bytes{'N', 'A', 'M', 'E', '\t', 'A', 'R', 'E', 'A', '\r', '\n'}));
    SaveDefaultPolygon(next, defaults);
    EXPECT_EQ(test::getF4(test::readFileBytes(defaults), 12), 99.0f);
    EXPECT_EQ(filesIn(dir.path()),
              (std::set<std::string>{"DEFAULT.DEF", "plan.arx", "plan.bak", "polygons.txt"}));
}

}  // namespace
}  // namespace arborex
