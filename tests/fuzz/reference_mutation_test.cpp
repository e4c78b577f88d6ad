// Damaged reference files and message catalogues, made by bounded random mutation of the
// installed ones: every loader must come back, keep its counts in step with its arrays, and
// answer lookups. Seeds are fixed, so a failure repeats.

#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <sstream>

#include "base/messages.hpp"
#include "model/reference_tables.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

constexpr int kIterations = 400;

std::string readData(const std::string& name) {
    std::ifstream in(std::string(ARBOREX_SOURCE_DIR) + "/data/" + name, std::ios::binary);
    std::stringstream s;
    s << in.rdbuf();
    return s.str();
}

// One damage: bytes flipped, a run cut out or repeated, a line made very long, separators
// and quotes scattered.
std::string mutate(const std::string& valid, std::mt19937& rng) {
    std::string b = valid;
    auto pick = [&](std::size_t low, std::size_t high) {
        return std::uniform_int_distribution<std::size_t>(low, high)(rng);
    };
    const std::size_t rounds = pick(1, 4);
    for (std::size_t r = 0; r < rounds && !b.empty(); ++r) {
        const std::size_t at = pick(0, b.size() - 1);
        switch (pick(0, 5)) {
            case 0:
                b[at] = static_cast<char>(pick(0, 255));
                break;
            case 1:
                b.erase(at, pick(1, 64));
                break;
            case 2:
                b.insert(at, b.substr(at, pick(1, 200)));
                break;
            case 3:
                b.insert(at, std::string(pick(100, 600), static_cast<char>(pick(32, 126))));
                break;
            case 4:
                b.insert(at, 1, "\t\"\n%&;[]\r"[pick(0, 8)]);
                break;
            default:
                b.resize(at);
                break;
        }
    }
    return b;
}

void write(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

void expectConsistent(const ReferenceTables& ref) {
    EXPECT_EQ(ref.SpeciesV.size(), static_cast<std::size_t>(ref.SpeciesVCount) + 1);
    EXPECT_EQ(ref.SpeciesT.size(), static_cast<std::size_t>(ref.SpeciesTCount) + 1);
    EXPECT_EQ(ref.PSYUList.size(), static_cast<std::size_t>(ref.PSYUCount) + 1);
    EXPECT_EQ(ref.RegComp.size(), static_cast<std::size_t>(ref.RegCompCount));
    EXPECT_LE(ref.OwnershipCount, 3);
    EXPECT_LE(ref.SilviCount, 2);
    for (const SpeciesAlias& alias : ref.SpeciesVAlias) EXPECT_LE(alias.Index, ref.SpeciesVCount);
}

TEST(ReferenceMutation, DamagedTablesLoadWithoutHarm) {
    const char* files[] = {"SPECIESV.DAT", "SPECIEST.DAT", "PSYU.DAT", "Rc_table.dat",
                           "choose.txt"};
    std::mt19937 rng(20261123);
    test::TempDir dir;
    const std::string folder = dir.path() + "/";
    for (int i = 0; i < kIterations; ++i) {
        const std::string name = files[i % 5];
        write(folder + name, mutate(readData(name), rng));
        test::FakeHost host;
        ReferenceTables ref;
        LoadSpeciesV(ref, host, folder + "SPECIESV.DAT");
        LoadSpeciesT(ref, host, folder + "SPECIEST.DAT");
        loadPSYU(ref, host, folder + "PSYU.DAT");
        LoadChoices(ref, host, folder, true);
        LoadRegComp(ref, host, folder);
        expectConsistent(ref);
        FindVSpecIdx(ref, "PLI");
        FindTSpecIdx(ref, "FD");
        LookupPSYU(ref, 1);
        findRegComp(ref, 1, 1, "");
        write(folder + name, readData(name));  // back to a sound file for the next round
        if (HasFailure()) FAIL() << "after damaging " << name << " in round " << i;
    }
}

TEST(ReferenceMutation, DamagedCataloguesLoadWithoutHarm) {
    const std::string valid = readData("MESSAGES.DAT");
    std::mt19937 rng(7);
    test::TempDir dir;
    for (int i = 0; i < kIterations; ++i) {
        write(dir.file("MESSAGES.DAT"), mutate(valid, rng));
        test::FakeHost host;
        MessageCatalogue c;
        LoadMessages(c, host, dir.file("MESSAGES.DAT"));
        ASSERT_EQ(c.MessageTags.size(), static_cast<std::size_t>(c.TagCount + 1));
        ASSERT_EQ(c.MessageLines.size(), static_cast<std::size_t>(c.LineCount + 1));
        for (const MessageTag& tag : c.MessageTags) GetMessage2(c, tag.Tag.str());
        GetMessage(c, "&AREA");
    }
}

}  // namespace
}  // namespace arborex
