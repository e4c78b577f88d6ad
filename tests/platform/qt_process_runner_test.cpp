// The desktop's process runner on real programs of this system: a program is run with its own
// arguments in its working folder, and each way of failing comes back as a status with words.

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <filesystem>
#include <fstream>

#include "platform/qt_process_runner.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

std::string script(const test::TempDir& dir, const std::string& name, const std::string& body) {
    const std::string path = dir.file(name);
    std::ofstream(path) << "#!/bin/sh\n" << body << "\n";
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    return path;
}

TEST(QtProcessRunner, RunsTheProgramWithItsArgumentsInItsFolder) {
    int argc = 0;
    QCoreApplication app(argc, nullptr);
    test::TempDir dir;
    const std::string program = script(dir, "echoargs", "printf '%s|' \"$@\" > out.txt; exit 3");
    QtProcessRunner runner;
    const ProcessResult done =
        runner.run({program, {"-I", "vdyp in.dat", "$HOME"}, dir.path(), 60});
    EXPECT_EQ(done.status, ProcessStatus::Finished);
    EXPECT_EQ(done.exitCode, 3);
    std::ifstream out(dir.file("out.txt"));
    std::string line;
    std::getline(out, line);
    EXPECT_EQ(line, "-I|vdyp in.dat|$HOME|");  // no shell expands or splits them

    EXPECT_EQ(runner.run({dir.file("absent"), {}, dir.path(), 60}).status, ProcessStatus::NotFound);
    const std::string crash = script(dir, "crash", "kill -SEGV $$");
    EXPECT_EQ(runner.run({crash, {}, dir.path(), 60}).status, ProcessStatus::Crashed);
    const std::string hang = script(dir, "hang", "exec sleep 30");
    const ProcessResult late = runner.run({hang, {}, dir.path(), 1});
    EXPECT_EQ(late.status, ProcessStatus::TimedOut);
    EXPECT_NE(late.message.find("1 seconds"), std::string::npos);
    std::ofstream(dir.file("plain")) << "not a program";
    EXPECT_EQ(runner.run({dir.file("plain"), {}, dir.path(), 60}).status,
              ProcessStatus::FailedToStart);
}

}  // namespace
}  // namespace arborex
