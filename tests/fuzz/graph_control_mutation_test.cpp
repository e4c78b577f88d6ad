// Damaged control files, made by bounded random mutation of the files the program writes: the
// reader must come back without throwing, with every series holding one value per x label.
// Seeds are fixed, so a failure repeats.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <random>
#include <sstream>

#include "report/graph_control_reader.hpp"

namespace arborex {
namespace {

constexpr int kIterationsPerFile = 400;
constexpr const char* kFiles[] = {"graph0.txt", "graph3.txt",  "graph4.txt",
                                  "graph6.txt", "tvgraph.txt", "areagraph.txt"};

std::string readGolden(const std::string& name) {
    std::ifstream in(std::string(ARBOREX_SOURCE_DIR) + "/tests/golden/data/graphs/" + name,
                     std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

class Mutator {
public:
    explicit Mutator(std::uint32_t seed) : rng_(seed) {}

    std::string mutate(const std::string& valid, std::string& what) {
        std::string t = valid;
        const int steps = pick(1, 3);
        for (int i = 0; i < steps; ++i) {
            switch (pick(0, 5)) {
                case 0: {  // bytes changed, control characters and Latin-1 among them
                    const std::size_t at = position(t);
                    if (!t.empty()) t[at] = static_cast<char>(pick(0, 255));
                    what += " flip@" + std::to_string(at);
                    break;
                }
                case 1:
                    t.resize(position(t));
                    what += " cut@" + std::to_string(t.size());
                    break;
                case 2: {  // a statement or cell the reader must meet anywhere
                    static const char* pieces[] = {"\t",         "\r\n",         "*table\r\n",
                                                   "*endof\r\n", "*graph=9\r\n", "Title\t",
                                                   "=",          "1e308\t1e999", "\n\n\n"};
                    const std::string piece = pieces[pick(0, 8)];
                    const std::size_t at = position(t);
                    t.insert(at, piece);
                    what += " insert@" + std::to_string(at);
                    break;
                }
                case 3: {  // a run of text repeated or removed
                    const std::size_t at = position(t);
                    const std::size_t length = std::min<std::size_t>(
                        t.size() - at, static_cast<std::size_t>(pick(1, 200)));
                    if (pick(0, 1) == 0)
                        t.insert(at, t.substr(at, length));
                    else
                        t.erase(at, length);
                    what += " run@" + std::to_string(at) + "+" + std::to_string(length);
                    break;
                }
                case 4: {  // every tab of a stretch gone, or line ends made bare
                    const std::size_t at = position(t);
                    for (std::size_t i = at; i < std::min(t.size(), at + 300); ++i)
                        if (t[i] == '\t' || t[i] == '\r') t[i] = ' ';
                    what += " untab@" + std::to_string(at);
                    break;
                }
                default: {  // a row of many cells
                    const std::size_t at = position(t);
                    t.insert(at, std::string(static_cast<std::size_t>(pick(1, 2000)), '\t'));
                    what += " tabs@" + std::to_string(at);
                    break;
                }
            }
        }
        return t;
    }

private:
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(rng_); }
    std::size_t position(const std::string& t) {
        return t.empty() ? 0 : static_cast<std::size_t>(pick(0, static_cast<int>(t.size()) - 1));
    }
    std::mt19937 rng_;
};

TEST(GraphControlMutation, DamagedFilesReadWithoutFailing) {
    auto slowest = std::chrono::steady_clock::duration::zero();
    std::uint32_t seed = 20070329;
    for (const char* name : kFiles) {
        const std::string valid = readGolden(name);
        ASSERT_FALSE(valid.empty()) << name;
        Mutator mutator(seed++);
        for (int i = 0; i < kIterationsPerFile && !::testing::Test::HasFailure(); ++i) {
            std::string what;
            const std::string damaged = mutator.mutate(valid, what);
            SCOPED_TRACE(std::string(name) + ", iteration " + std::to_string(i) + ":" + what);
            GraphControl control;
            const auto start = std::chrono::steady_clock::now();
            EXPECT_NO_THROW(control = readGraphControl(damaged));
            slowest = std::max(slowest, std::chrono::steady_clock::now() - start);
            for (const ControlGraph& g : control.graphs)
                for (const ControlSeries& s : g.series)
                    EXPECT_EQ(s.values.size(), g.xLabels.size());
        }
    }
    EXPECT_LT(std::chrono::duration<double>(slowest).count(), 1.0);
}

// With ARBOREX_GRAPH_SEED_DIR set, the valid files are copied there as a corpus for the
// coverage-guided fuzzer.
TEST(GraphControlMutation, WritesSeedFilesOnRequest) {
    const char* folder = std::getenv("ARBOREX_GRAPH_SEED_DIR");
    if (!folder) return;
    for (const char* name : kFiles)
        std::ofstream(std::string(folder) + "/" + name, std::ios::binary) << readGolden(name);
}

}  // namespace
}  // namespace arborex
