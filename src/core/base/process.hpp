#pragma once
// Running an outside program (the growth models) and waiting for its end. The desktop adapter
// keeps the screens painted while it waits; the batch's adapter simply blocks; tests hand in a
// fake.

#include <string>
#include <vector>

namespace arborex {

struct ProcessRequest {
    std::string program;                 // run directly: never through a shell
    std::vector<std::string> arguments;  // one element an argument, no quoting
    std::string workingFolder;
    int timeoutSeconds = 3600;  // a program that hangs is ended after this
};

enum class ProcessStatus { Finished, NotFound, FailedToStart, Crashed, TimedOut };

struct ProcessResult {
    ProcessStatus status = ProcessStatus::Finished;
    int exitCode = 0;     // when Finished; the system does not judge it
    std::string message;  // a sentence for the user when the status is not Finished
};

class ProcessRunner {
public:
    virtual ~ProcessRunner() = default;
    // Runs the program and waits for its end, or for the timeout.
    virtual ProcessResult run(const ProcessRequest& request) = 0;
};

}  // namespace arborex
