#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "frame/error_handler.hpp"
#include "frame/errors.hpp"
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

}  // namespace
}  // namespace arborex
