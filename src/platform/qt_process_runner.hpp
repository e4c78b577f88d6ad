#pragma once
// Runs an outside program with QProcess: the program itself with its argument list, in its
// working folder, no shell between. While it runs, a local event loop keeps the screens painted
// (the screen that started the run disables what may not run twice).

#include "base/process.hpp"

namespace arborex {

class QtProcessRunner final : public ProcessRunner {
public:
    ProcessResult run(const ProcessRequest& request) override;
};

}  // namespace arborex
