#pragma once
// Runs the growth models from the batch front end: the program itself (never a shell), in its
// working folder, waited for with a deadline. The batch has no screens to keep painted, so it
// simply blocks.

#include "base/process.hpp"

namespace arborex::batch {

class PosixProcessRunner final : public ProcessRunner {
public:
    // NotFound when the program does not exist or may not be run, FailedToStart when the
    // working folder is missing or the system refuses to start it, Crashed when a signal ended
    // it, TimedOut (the program killed) after request.timeoutSeconds. The program's standard
    // output goes to standard error, so that what the batch prints stays its own; its input is
    // empty.
    ProcessResult run(const ProcessRequest& request) override;
};

}  // namespace arborex::batch
