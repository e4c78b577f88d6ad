#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "base/errors.hpp"
#include "frame/error_handler.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

std::string readAll(const std::string& path) {
    std::ifstream in(path);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

TEST(ErrorHandler, RetryRunsTheStepAgainAndEachFailureIsLogged) {
    test::TempDir dir;
    Model m;
    m.Paths[UserDocuments] = dir.path() + "/";
    test::FakeHost host;
    auto& prompt = host.prompt;
    prompt.errorChoices = {ErrorChoice::Retry, ErrorChoice::Retry};

    int calls = 0;
    bool done = runGuarded(m, host, "SaveArx", "BASARBO", [&] {
        if (++calls < 3) throw ArborexError(ErrPermissionDenied, "/x.arx");
    });
    EXPECT_TRUE(done);
    EXPECT_EQ(calls, 3);
    ASSERT_EQ(prompt.failures.size(), 2u);
    EXPECT_EQ(prompt.failures[0].number, 70);
    EXPECT_EQ(prompt.failures[0].location, "SaveArx / BASARBO");
    EXPECT_NE(prompt.failures[0].message.find("Permission denied"), std::string::npos);

    std::string log = readAll(dir.file("errorlog.txt"));
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 2);
    EXPECT_NE(log.find("\t70\tSaveArx\tBASARBO"), std::string::npos);
}

TEST(ErrorHandler, IgnoreAndExitLeaveTheStep) {
    test::TempDir dir;
    Model m;
    m.Paths[UserDocuments] = dir.path() + "/";
    test::FakeHost host;
    auto& prompt = host.prompt;
    prompt.errorChoices = {ErrorChoice::Ignore, ErrorChoice::ExitSection};
    EXPECT_FALSE(runGuarded(m, host, "a", "b", [] { throw ArborexError(ErrOverflow); }));
    EXPECT_FALSE(runGuarded(m, host, "a", "b", [] { throw std::bad_alloc(); }));
    EXPECT_EQ(prompt.failures[1].number, ErrOutOfMemory);
}

TEST(ErrorHandler, AnUnwritableLogStillShowsTheScreen) {
    Model m;
    m.Paths[UserDocuments] = "/nonexistent-folder/for/arborex/";
    test::FakeHost host;
    auto& prompt = host.prompt;
    EXPECT_EQ(HandleError(m, host, 11, "", "r", "m"), ErrorChoice::ExitSection);
    EXPECT_EQ(prompt.failures.size(), 1u);
}

// An error screen whose user ends the program at once: what is on disk by then stays.
class EndingPrompt final : public Prompt {
public:
    std::string logPath;
    std::string logWhenShown;
    bool couldBackUp = false;
    Answer ask(const std::string&, const std::string&, Buttons, Answer a, Icon) override {
        return a;
    }
    std::optional<std::string> input(const std::string&, const std::string&,
                                     const std::string&) override {
        return std::nullopt;
    }
    std::optional<FileChoice> openFile(const FileRequest&) override { return std::nullopt; }
    std::optional<FileChoice> saveFile(const FileRequest&) override { return std::nullopt; }
    ErrorChoice reportError(const FailureReport& failure) override {
        logWhenShown = readAll(logPath);
        couldBackUp = static_cast<bool>(failure.backup);
        if (failure.backup) failure.backup();  // the save dialog is cancelled: nothing happens
        return ErrorChoice::ExitSection;
    }
};

TEST(ErrorHandler, TheLogLineIsWrittenBeforeTheScreenShows) {
    test::TempDir dir;
    Model m;
    ResetVars(m);
    m.Paths[UserDocuments] = dir.path() + "/";
    test::FakeHost fake;
    EndingPrompt prompt;
    prompt.logPath = dir.file("errorlog.txt");
    Host host{prompt, fake.status, fake.settings, fake.views, fake.system};

    HandleError(m, host, ErrDivisionByZero, "", "IncrementYear", "modCalc");
    EXPECT_NE(prompt.logWhenShown.find("\t11\tIncrementYear\tmodCalc\r\n"), std::string::npos);
    EXPECT_FALSE(prompt.couldBackUp);  // no project, nothing to back up

    m.LastPoly = 0;
    EmptyArrays(m);
    HandleError(m, host, ErrOverflow, "", "CutBlock", "modCalc");
    EXPECT_TRUE(prompt.couldBackUp);
}

}  // namespace
}  // namespace arborex
