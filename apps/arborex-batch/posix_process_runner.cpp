#include "posix_process_runner.hpp"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

extern char** environ;

namespace arborex::batch {

namespace {

ProcessResult failure(ProcessStatus status, const std::string& message) {
    ProcessResult result;
    result.status = status;
    result.message = message;
    return result;
}

std::string quoted(const std::string& program) {
    return "\"" + program + "\"";
}

// The spawn's own resources, released on every way out.
class SpawnSetup {
public:
    SpawnSetup() { posix_spawn_file_actions_init(&actions_); }
    ~SpawnSetup() { posix_spawn_file_actions_destroy(&actions_); }
    SpawnSetup(const SpawnSetup&) = delete;
    SpawnSetup& operator=(const SpawnSetup&) = delete;
    posix_spawn_file_actions_t* actions() { return &actions_; }

private:
    posix_spawn_file_actions_t actions_;
};

// Waits for `pid` until the deadline; the program is killed when it passes.
ProcessResult waitFor(pid_t pid, const std::string& program, int timeoutSeconds) {
    using Clock = std::chrono::steady_clock;
    const auto deadline = Clock::now() + std::chrono::seconds(timeoutSeconds);
    auto nap = std::chrono::milliseconds(5);
    int status = 0;
    for (;;) {
        const pid_t ended = waitpid(pid, &status, WNOHANG);
        if (ended == pid) break;
        if (ended < 0 && errno != EINTR)
            return failure(ProcessStatus::Crashed,
                           "The program " + quoted(program) + " was lost while it ran.");
        if (Clock::now() >= deadline) {
            kill(pid, SIGKILL);
            while (waitpid(pid, &status, 0) < 0 && errno == EINTR) {
            }
            return failure(ProcessStatus::TimedOut,
                           "The program " + quoted(program) + " did not finish within " +
                               std::to_string(timeoutSeconds) + " seconds and was stopped.");
        }
        std::this_thread::sleep_for(nap);
        if (nap < std::chrono::milliseconds(100)) nap *= 2;
    }
    if (WIFSIGNALED(status))
        return failure(ProcessStatus::Crashed, "The program " + quoted(program) +
                                                   " ended abnormally (signal " +
                                                   std::to_string(WTERMSIG(status)) + ").");
    ProcessResult result;
    result.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : 0;
    return result;
}

}  // namespace

ProcessResult PosixProcessRunner::run(const ProcessRequest& request) {
    // The child changes folder before it starts the program, so a relative path is made
    // absolute here, against the batch's own folder.
    std::error_code ignored;
    const std::string program = std::filesystem::absolute(request.program, ignored).string();
    struct stat info {};
    if (request.program.empty() || stat(program.c_str(), &info) != 0 || !S_ISREG(info.st_mode) ||
        access(program.c_str(), X_OK) != 0)
        return failure(ProcessStatus::NotFound, "The program " + quoted(request.program) +
                                                    " was not found or cannot be run.");
    if (!std::filesystem::is_directory(request.workingFolder, ignored))
        return failure(ProcessStatus::FailedToStart,
                       "The program " + quoted(request.program) + " could not start: its folder " +
                           quoted(request.workingFolder) + " does not exist.");

    SpawnSetup setup;
    posix_spawn_file_actions_addchdir_np(setup.actions(), request.workingFolder.c_str());
    posix_spawn_file_actions_addopen(setup.actions(), STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(setup.actions(), STDERR_FILENO, STDOUT_FILENO);

    std::vector<std::string> words;
    words.push_back(program);
    words.insert(words.end(), request.arguments.begin(), request.arguments.end());
    std::vector<char*> argv;
    for (std::string& word : words) argv.push_back(word.data());
    argv.push_back(nullptr);

    pid_t pid = 0;
    const int failed =
        posix_spawn(&pid, program.c_str(), setup.actions(), nullptr, argv.data(), environ);
    if (failed == ENOENT || failed == EACCES || failed == ENOEXEC)
        return failure(ProcessStatus::NotFound, "The program " + quoted(request.program) +
                                                    " was not found or cannot be run.");
    if (failed != 0)
        return failure(ProcessStatus::FailedToStart,
                       "The program " + quoted(request.program) +
                           " could not start: " + std::strerror(failed) + ".");
    return waitFor(pid, request.program, request.timeoutSeconds);
}

}  // namespace arborex::batch
