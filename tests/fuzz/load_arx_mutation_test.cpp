// Damaged project files, made by bounded random mutation of valid files of every version
// family: the reader must come back, with true or false, leave a model whose arrays fit its
// counts, and leave the file alone. Seeds are fixed, so a failure repeats.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <random>

#include "frame/project_open.hpp"
#include "golden/arx_layout.hpp"
#include "golden/arx_sample_model.hpp"
#include "model/project_file.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

using test::ArxImage;
using test::Bytes;

constexpr int kIterationsPerFamily = 750;
constexpr int16_t kFamilies[] = {3226, 250, 150, 100};

Model startModel() {
    Model m;
    ResetVars(m);
    SetDefaults(m);
    EmptyArrays(m);
    return m;
}

// Offsets of the counts that size what follows them: LastPoly, the curve bounds, the harvest
// order and the four array bounds.
std::vector<std::size_t> countOffsets(const ArxImage& image) {
    std::vector<std::size_t> offsets;
    for (const test::FieldSpan& span : image.fields()) {
        const std::string& n = span.name;
        const bool curveBound =
            n.find(".Yield") != std::string::npos &&
            (n.find("Rows") != std::string::npos || n.find("Age") != std::string::npos);
        if (curveBound || n == "LastPoly.LastPoly" || n == "CutOrderLast.CutOrderLast" ||
            n.rfind("Bounds.N", 0) == 0)
            offsets.push_back(span.offset);
    }
    return offsets;
}

class Mutator {
public:
    Mutator(std::uint32_t seed, std::vector<Bytes> donors)
        : rng_(seed), donors_(std::move(donors)) {}

    // A damaged copy of `valid`, and what was done to it.
    Bytes mutate(const Bytes& valid, const std::vector<std::size_t>& counts, std::string& what) {
        Bytes b = valid;
        const int kind = pick(0, 5);
        switch (kind) {
            case 0:
                flipBytes(b, what);
                break;
            case 1:
                truncate(b, what);
                break;
            case 2:
                splice(b, what);
                break;
            case 3:
                shift(b, what);
                break;
            case 4:
                extremeCount(b, counts, what);
                break;
            default:
                extremeCount(b, counts, what);
                flipBytes(b, what);
                break;
        }
        return b;
    }
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(rng_); }

private:
    std::size_t position(std::size_t size) {
        return size == 0 ? 0 : static_cast<std::size_t>(pick(0, static_cast<int>(size) - 1));
    }
    void flipBytes(Bytes& b, std::string& what) {
        const int flips = pick(1, 8);
        for (int i = 0; i < flips && !b.empty(); ++i) {
            const std::size_t at = position(b.size());
            b[at] ^= static_cast<std::uint8_t>(pick(1, 255));
            what += " flip@" + std::to_string(at);
        }
    }
    void truncate(Bytes& b, std::string& what) {
        b.resize(position(b.size()));
        what += " cut@" + std::to_string(b.size());
    }
    void splice(Bytes& b, std::string& what) {
        const Bytes& donor = donors_[static_cast<std::size_t>(pick(0, int(donors_.size()) - 1))];
        const std::size_t from = position(donor.size());
        const std::size_t to = position(b.size());
        const std::size_t length = std::min<std::size_t>(
            {static_cast<std::size_t>(pick(1, 400)), donor.size() - from, b.size() - to});
        std::copy_n(donor.begin() + static_cast<long>(from), length,
                    b.begin() + static_cast<long>(to));
        what += " splice " + std::to_string(from) + "->" + std::to_string(to) + "+" +
                std::to_string(length);
    }
    void shift(Bytes& b, std::string& what) {
        const std::size_t at = position(b.size());
        const int length = pick(1, 40);
        if (pick(0, 1) == 0) {
            b.insert(b.begin() + static_cast<long>(at), static_cast<std::size_t>(length),
                     static_cast<std::uint8_t>(pick(0, 255)));
            what += " insert@" + std::to_string(at);
        } else {
            const auto end = std::min(b.size(), at + static_cast<std::size_t>(length));
            b.erase(b.begin() + static_cast<long>(at), b.begin() + static_cast<long>(end));
            what += " erase@" + std::to_string(at);
        }
    }
    void extremeCount(Bytes& b, const std::vector<std::size_t>& counts, std::string& what) {
        static const int16_t extremes[] = {-32768, -2, -1, 0, 1, 2, 300, 32767};
        const std::size_t at = counts[static_cast<std::size_t>(pick(0, int(counts.size()) - 1))];
        if (at + 2 > b.size()) return;
        const int16_t value =
            pick(0, 3) == 0 ? static_cast<int16_t>(pick(-32768, 32767)) : extremes[pick(0, 7)];
        test::setI2(b, at, value);
        what += " count@" + std::to_string(at) + "=" + std::to_string(value);
    }

    std::mt19937 rng_;
    std::vector<Bytes> donors_;
};

TEST(LoadArxMutation, DamagedFilesOfEveryFamilyLoadOrFailCleanly) {
    std::vector<ArxImage> images;
    std::vector<Bytes> donors;
    for (int16_t version : kFamilies) {
        images.push_back(test::buildArxImage(test::distinctModel(), version));
        donors.push_back(images.back().bytes());
    }
    test::TempDir dir;
    const std::string path = dir.file("damaged.arx");
    auto slowest = std::chrono::steady_clock::duration::zero();

    for (std::size_t family = 0; family < images.size(); ++family) {
        const Bytes& valid = images[family].bytes();
        const std::vector<std::size_t> counts = countOffsets(images[family]);
        ASSERT_GE(counts.size(), 5u);
        Mutator mutator(static_cast<std::uint32_t>(20070329 + family), donors);
        for (int i = 0; i < kIterationsPerFamily && !::testing::Test::HasFailure(); ++i) {
            std::string what;
            const Bytes damaged = mutator.mutate(valid, counts, what);
            SCOPED_TRACE("version " + std::to_string(kFamilies[family]) + ", iteration " +
                         std::to_string(i) + ":" + what);
            test::writeFileBytes(path, damaged);

            Model m = startModel();
            test::FakeHost host;
            host.prompt.answers = {mutator.pick(0, 1) ? Answer::Yes : Answer::No};
            bool loaded = false;
            const auto start = std::chrono::steady_clock::now();
            EXPECT_NO_THROW(loaded = LoadARX(m, host, path));
            slowest = std::max(slowest, std::chrono::steady_clock::now() - start);

            EXPECT_EQ(test::polygonArrayMismatch(m), "");
            EXPECT_EQ(test::readFileBytes(path), damaged);
            EXPECT_FALSE(host.status.open);
            if (!loaded) {
                EXPECT_FALSE(host.prompt.shown.empty());
            }
            // Now and then, the model must still save.
            if (i % 50 == 0) {
                EXPECT_NO_THROW(SaveArx(m, host, dir.file("saved.arx"), 3226, false));
            }
        }
    }
    EXPECT_LT(std::chrono::duration<double>(slowest).count(), 2.0);
}

// With ARBOREX_ARX_SEED_DIR set, the valid files are written there as a corpus for the
// coverage-guided fuzzer.
TEST(LoadArxMutation, WritesSeedFilesOnRequest) {
    const char* folder = std::getenv("ARBOREX_ARX_SEED_DIR");
    if (!folder) return;
    for (int16_t version : kFamilies)
        test::writeFileBytes(std::string(folder) + "/seed_" + std::to_string(version) + ".arx",
                             test::buildArxImage(test::distinctModel(), version).bytes());
}

}  // namespace
}  // namespace arborex
