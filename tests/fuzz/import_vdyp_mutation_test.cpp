// Damaged VDYP output, made by bounded random mutation of a valid file: the import must come
// back or fail with an ArborexError, never crash or throw anything else, and leave the curve
// arrays as large as they were. Seeds are fixed, so a failure repeats.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <random>

#include "base/errors.hpp"
#include "fuzz/vdyp_output_sample.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"
#include "yield/vdyp_exchange.hpp"

namespace arborex {
namespace {

constexpr int kIterations = 3000;

class Mutator {
public:
    explicit Mutator(std::uint32_t seed) : rng_(seed) {}

    std::string mutate(std::string text, std::string& what) {
        switch (pick(0, 5)) {
            case 0:
                for (int flips = pick(1, 8); flips > 0 && !text.empty(); --flips) {
                    const std::size_t at = position(text.size());
                    text[at] = static_cast<char>(text[at] ^ pick(1, 255));
                    what += " flip@" + std::to_string(at);
                }
                break;
            case 1:
                text.resize(position(text.size()));
                what += " cut@" + std::to_string(text.size());
                break;
            case 2: {
                const std::size_t from = position(text.size());
                const std::size_t to = position(text.size());
                const std::size_t length = static_cast<std::size_t>(pick(1, 300));
                text.insert(to, text.substr(from, length));
                what += " copy " + std::to_string(from) + "->" + std::to_string(to);
                break;
            }
            case 3: {
                const std::size_t at = position(text.size());
                text.erase(at, static_cast<std::size_t>(pick(1, 40)));
                what += " erase@" + std::to_string(at);
                break;
            }
            default:
                extremeField(text, what);
                break;
        }
        return text;
    }

private:
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(rng_); }
    std::size_t position(std::size_t size) {
        return size == 0 ? 0 : static_cast<std::size_t>(pick(0, static_cast<int>(size) - 1));
    }
    // A number field of some line replaced by a value at the edges of what is stored.
    void extremeField(std::string& text, std::string& what) {
        static const char* const values[] = {"",       "x",   "-1",    "0",       "999", "99999",
                                             "-99999", "1e9", "1e999", "3276.75", ".",   "-"};
        static const std::size_t fields[][2] = {{9, 3},  {14, 3}, {18, 4}, {23, 7},  {31, 7},
                                                {40, 7}, {85, 7}, {94, 6}, {100, 6}, {109, 7}};
        const std::size_t lineStart = text.rfind('\n', position(text.size()));
        const std::size_t start = lineStart == std::string::npos ? 0 : lineStart + 1;
        const auto& field = fields[pick(0, 9)];
        const char* value = values[pick(0, 11)];
        const std::size_t at = start + field[0] - 1;
        if (at + field[1] > text.size()) return;
        std::string laid(value);
        laid.resize(field[1], ' ');
        text.replace(at, field[1], laid);
        what += " field@" + std::to_string(at) + "=" + value;
    }

    std::mt19937 rng_;
};

TEST(ImportVdypMutation, DamagedOutputImportsOrFailsCleanly) {
    const std::string valid = test::vdypOutput();
    test::TempDir dir;
    const std::string path = dir.file("vdypout.dat");
    Mutator mutator(20070329);
    int failures = 0;
    for (int i = 0; i < kIterations && !::testing::Test::HasFailure(); ++i) {
        std::string what;
        const std::string damaged = mutator.mutate(valid, what);
        SCOPED_TRACE("iteration " + std::to_string(i) + ":" + what);
        std::ofstream(path, std::ios::binary) << damaged;

        Model m = test::vdypProject();
        m.Settings.NETMAI = static_cast<int16_t>(i % 2);
        test::FakeHost host;
        try {
            ImportVDYP(m, host, path, [](const std::string&) {});
        } catch (const ArborexError&) {
            ++failures;
        } catch (const std::exception& e) {
            ADD_FAILURE() << "unexpected exception: " << e.what();
        }
        EXPECT_EQ(m.VYield.polygonCount(), 3);
        EXPECT_EQ(m.VYield.rowCount(), 5);
        EXPECT_EQ(m.VMix.rowCount(), 5);
        for (const PolyData& d : m.Poly) EXPECT_TRUE(d.YIELDSTATE[0] == 0 || d.YIELDSTATE[0] == 2);
    }
    // The mutations reach both outcomes.
    EXPECT_GT(failures, 0);
    EXPECT_LT(failures, kIterations);
}

// With ARBOREX_VDYP_SEED_DIR set, the valid output is written there as a corpus for the
// coverage-guided fuzzer.
TEST(ImportVdypMutation, WritesSeedFileOnRequest) {
    const char* folder = std::getenv("ARBOREX_VDYP_SEED_DIR");
    if (!folder) return;
    std::ofstream(std::string(folder) + "/seed_vdypout.dat", std::ios::binary)
        << test::vdypOutput();
}

}  // namespace
}  // namespace arborex
