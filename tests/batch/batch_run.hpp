#pragma once
// Runs a batch command line in-process, as the program's main() would, and keeps what it wrote.

#include <gtest/gtest.h>

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

#include "batch_commands.hpp"
#include "model/model.hpp"
#include "model/project_file.hpp"
#include "support/fake_host.hpp"

namespace arborex::test {

struct RunResult {
    int code = -1;
    std::string out;
    std::string err;
};

// Commands that read a project get the reference data of the source tree unless the command
// line names a folder.
inline RunResult run(std::vector<std::string> args) {
    static const std::vector<std::string> kReadProjects = {
        "info", "convert", "ages", "curve", "calc", "summary", "harvest-age", "silviculture"};
    const bool readsData = !args.empty() && std::find(kReadProjects.begin(), kReadProjects.end(),
                                                      args[0]) != kReadProjects.end();
    if (readsData && std::find(args.begin(), args.end(), "--data") == args.end()) {
        args.push_back("--data");
        args.push_back(std::string(ARBOREX_SOURCE_DIR) + "/data");
    }
    std::ostringstream out;
    std::ostringstream err;
    RunResult result;
    result.code = batch::runBatch(args, out, err);
    result.out = out.str();
    result.err = err.str();
    return result;
}

// Whether `text` holds `part`; on failure the whole text is shown.
inline ::testing::AssertionResult has(const std::string& text, const std::string& part) {
    if (text.find(part) != std::string::npos) return ::testing::AssertionSuccess();
    return ::testing::AssertionFailure() << "no \"" << part << "\" in:\n" << text;
}

inline int lineCount(const std::string& text) {
    return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

// The project as a command wrote it, without the harvest ages that loading works out again.
inline Model savedProject(const std::string& path) {
    Model m;
    programDefaults(m);
    FakeHost host;
    EXPECT_TRUE(ReadArx(m, host, path));
    return m;
}

}  // namespace arborex::test
