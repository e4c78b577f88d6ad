// Damaged exchange files, made by bounded random mutation of what the grid's export and the
// classic writer produce: the text import and the classic import must come back without
// throwing and leave a sound project. Seeds are fixed, so a failure repeats.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <functional>
#include <random>
#include <string_view>

#include "exchange/classic_csv.hpp"
#include "exchange/grid_export.hpp"
#include "exchange/text_import.hpp"
#include "fuzz/exchange_import_check.hpp"
#include "support/fake_host.hpp"

namespace arborex {
namespace {

constexpr int kIterations = 300;

// A project whose export holds every kind of cell: brackets, words, codes, blanks.
Model seedProject() {
    Model m = test::exchangeFuzzProject();
    for (PolyData& d : m.Poly) {
        d.VS[0] = "PL";
        d.VP[0] = 70;
        d.TS[0] = "FD";
        d.FIZ = "I";
        d.PCPERC = 30;
    }
    m.PolyM[1].NCDESC = "Brush, \"alder\"";
    m.Poly[1].MGNT = {2, 1};
    return m;
}

// One to four damages: a byte changed, a run cut or repeated, a delimiter, quote or line end
// scattered, a very long cell, a number beyond every field.
std::string mutate(const std::string& valid, std::mt19937& rng) {
    std::string t = valid;
    auto pick = [&](std::size_t low, std::size_t high) {
        return std::uniform_int_distribution<std::size_t>(low, high)(rng);
    };
    static const std::string_view pieces[] = {
        "\t",        ",",        "\"",    "\r\n", "\r",       "NAME",
        "POLYGON\t", "99999999", "1e999", "$,+%", "\xC3\xA9", std::string_view("\0", 1)};
    for (std::size_t round = pick(1, 4); round > 0 && !t.empty(); --round) {
        const std::size_t at = pick(0, t.size() - 1);
        switch (pick(0, 4)) {
            case 0:
                t[at] = static_cast<char>(pick(0, 255));
                break;
            case 1:
                t.erase(at, pick(1, 120));
                break;
            case 2:
                t.insert(at, t.substr(at, pick(1, 400)));
                break;
            case 3:
                t.insert(at, pieces[pick(0, std::size(pieces) - 1)]);
                break;
            default:
                t.insert(at, std::string(pick(1, 3000), static_cast<char>(pick(32, 126))));
                break;
        }
    }
    return t;
}

using Import = std::function<void(Model&, Host&, const std::string&, PolygonImport&)>;

void damageAndImport(const std::string& valid, const Import& import, std::uint32_t seed) {
    const Model before = test::exchangeFuzzProject();
    std::mt19937 rng(seed);
    auto slowest = std::chrono::steady_clock::duration::zero();
    for (int i = 0; i < kIterations && !::testing::Test::HasFailure(); ++i) {
        const std::string damaged = mutate(valid, rng);
        SCOPED_TRACE("iteration " + std::to_string(i));
        Model m = before;
        test::FakeHost host;
        PolygonImport run;
        run.DupMode = static_cast<int16_t>(i % 3) - 1;
        const auto start = std::chrono::steady_clock::now();
        EXPECT_NO_THROW(import(m, host, damaged, run));
        slowest = std::max(slowest, std::chrono::steady_clock::now() - start);
        EXPECT_EQ(test::importDamage(before, m, run), "");
    }
    EXPECT_LT(std::chrono::duration<double>(slowest).count(), 1.0);
}

TEST(ExchangeImportMutation, DamagedGridExportsImportSoundly) {
    const std::string valid = gridExportText(gridCells(seedProject()));
    damageAndImport(
        valid,
        [](Model& m, Host& host, const std::string& text, PolygonImport& run) {
            TxtToColumns(m, host, text, run);
        },
        20070329);
}

TEST(ExchangeImportMutation, DamagedClassicFilesImportSoundly) {
    std::uint32_t seed = 20070401;
    for (const auto& [writer, reader] : {std::pair<const char*, char>{kClassicCommaWriter, ','},
                                         std::pair<const char*, char>{"\t", '\t'}}) {
        const std::string valid = classicCsvText(seedProject(), writer);
        const char delimiter = reader;
        damageAndImport(
            valid,
            [delimiter](Model& m, Host& host, const std::string& text, PolygonImport& run) {
                importOldCsvText(m, host, text, delimiter, "damaged.csv", run);
            },
            seed++);
    }
}

// With ARBOREX_EXCHANGE_SEED_DIR set, the valid files are written there as a corpus for the
// coverage-guided fuzzers.
TEST(ExchangeImportMutation, WritesSeedFilesOnRequest) {
    const char* folder = std::getenv("ARBOREX_EXCHANGE_SEED_DIR");
    if (!folder) return;
    const Model m = seedProject();
    std::ofstream(std::string(folder) + "/grid.txt", std::ios::binary)
        << gridExportText(gridCells(m));
    std::ofstream(std::string(folder) + "/classic.csv", std::ios::binary)
        << classicCsvText(m, kClassicCommaWriter);
}

}  // namespace
}  // namespace arborex
