// Damaged TIPSY reports and error files, made by bounded random mutation of valid ones: each
// reading must end, either normally or with an ArborexError for the error boundary, and leave
// the curve tables their size. Seeds are fixed, so a failure repeats.

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <random>

#include "base/errors.hpp"
#include "fuzz/tipsy_report.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"
#include "yield/tipsy_exchange.hpp"

namespace arborex {
namespace {

constexpr int kReportMutations = 2500;
constexpr int kErrorFileMutations = 1500;

std::string validReport() {
    std::vector<std::string> thinned = test::tipsyGridRows();
    thinned.insert(thinned.begin() + 7, test::tipsyRow(63, 150.0, 19.5, 16.0));
    return test::tipsyReport(
        {test::tipsyGridTable(1),
         {{test::tipsyTopHeightLine("14.5", true), test::tipsyTableLine(2)}, thinned},
         {{test::tipsySiteIndexLine("19")}, test::tipsyGridRows()},
         {{test::tipsyTableLine(3)}, test::tipsyGridRows(), false}});
}

std::string validErrorFile() {
    return test::tipsyErrorFile({
        test::tipsyErrorLine(1, "WARNING  Site index is below the range of the model"),
        test::tipsyContinuationLine("and was raised to its lowest value"),
        test::tipsyErrorLine(0, "ERROR:   The batch file names no species table"),
        test::tipsyErrorLine(3, "NOTICE   Run finished"),
        test::tipsyErrorLine(2, "ERROR:   Density is out of range for this model"),
    });
}

class Mutator {
public:
    explicit Mutator(std::uint32_t seed) : rng_(seed) {}

    std::string mutate(std::string text, std::string& what) {
        const int kind = pick(0, 5);
        switch (kind) {
            case 0:
                flipBytes(text, what);
                break;
            case 1:
                text.resize(position(text));
                what += " cut@" + std::to_string(text.size());
                break;
            case 2:
                moveLine(text, what);
                break;
            case 3:
                extremeField(text, what);
                break;
            case 4:
                markerWord(text, what);
                break;
            default:
                extremeField(text, what);
                flipBytes(text, what);
                break;
        }
        return text;
    }

private:
    int pick(int low, int high) { return std::uniform_int_distribution<int>(low, high)(rng_); }
    std::size_t position(const std::string& text) {
        return text.empty() ? 0 : static_cast<std::size_t>(pick(0, int(text.size()) - 1));
    }
    std::size_t lineStart(const std::string& text) {
        const std::size_t at = position(text);
        const std::size_t start = text.rfind('\n', at);
        return start == std::string::npos ? 0 : start + 1;
    }
    void flipBytes(std::string& text, std::string& what) {
        static const char bytes[] = {'\0', '\r', '\n', '-', '=', '.', '9', ' ', 'E', '\xff'};
        for (int i = pick(1, 6); i > 0 && !text.empty(); --i) {
            const std::size_t at = position(text);
            text[at] = bytes[pick(0, 9)];
            what += " flip@" + std::to_string(at);
        }
    }
    // A line repeated, dropped or carried elsewhere.
    void moveLine(std::string& text, std::string& what) {
        const std::size_t start = lineStart(text);
        std::size_t end = text.find('\n', start);
        end = end == std::string::npos ? text.size() : end + 1;
        const std::string line = text.substr(start, end - start);
        if (pick(0, 1) == 0) text.erase(start, end - start);
        text.insert(lineStart(text), line);
        what += " line@" + std::to_string(start);
    }
    // A number at one of the columns the readers take numbers from.
    void extremeField(std::string& text, std::string& what) {
        static const char* numbers[] = {"32767", "-32768", "3276.8", "99999", "1e308",
                                        "1e999", "-1",     "0",      "-0.5",  "   .5"};
        static const int columns[] = {1, 7, 15, 23, 28, 38, 51, 55, 64};
        const std::size_t start = lineStart(text);
        const auto at = start + static_cast<std::size_t>(columns[pick(0, 8)] - 1);
        const std::string number = numbers[pick(0, 9)];
        if (at + number.size() > text.size()) return;
        text.replace(at, number.size(), number);
        what += " number@" + std::to_string(at) + "=" + number;
    }
    void markerWord(std::string& text, std::string& what) {
        static const char* words[] = {"TABLE   :",  "SITE INDEX =", "TOP HEIGHT Actual",
                                      "----------", "WARNING",      "ERROR:"};
        const std::size_t at = position(text);
        const std::string word = words[pick(0, 5)];
        text.insert(at, word);
        what += " word@" + std::to_string(at) + "=" + word;
    }

    std::mt19937 rng_;
};

// Writes `count` mutations of `valid` to `path` and runs `read` on each, which must end
// normally or with an ArborexError; anything else fails the test. Both endings must occur, so
// that the mutations are seen to reach past the first lines.
template <typename Read>
void readMutations(const std::string& valid, std::uint32_t seed, int count, const std::string& path,
                   Read read) {
    Mutator mutator(seed);
    int finished = 0, failed = 0;
    for (int i = 0; i < count && !::testing::Test::HasFailure(); ++i) {
        std::string what;
        std::ofstream(path, std::ios::binary | std::ios::trunc) << mutator.mutate(valid, what);
        SCOPED_TRACE("iteration " + std::to_string(i) + ":" + what);
        try {
            read();
            ++finished;
        } catch (const ArborexError&) {
            ++failed;
        } catch (const std::exception& e) {
            ADD_FAILURE() << "escaped: " << e.what();
        }
    }
    EXPECT_GT(finished, count / 4);
    EXPECT_GT(failed, 0);
}

TEST(ImportTipsyMutation, DamagedReportsReadOrFailWithAnArborexError) {
    const Model start = test::tipsyProject({"A", "B", "C"});
    test::TempDir dir;
    const std::string path = dir.file("TIPSYout.dat");
    readMutations(validReport(), 20070329, kReportMutations, path, [&] {
        Model m = start;
        test::FakeHost host;
        // The tables keep their size whatever happens to the reading.
        struct SizeCheck {
            const Model& m;
            int rows;
            ~SizeCheck() {
                EXPECT_EQ(m.TYield.polygonCount(), 3);
                EXPECT_EQ(m.TYield.rowCount(), rows);
            }
        } check{m, start.TYield.rowCount()};
        ImportTIPSY2(m, host, path, [](const std::string&) {});
    });
}

TEST(ImportTipsyMutation, DamagedErrorFilesReadOrFailWithAnArborexError) {
    const Model m = test::tipsyProject({"A", "B", "C"});
    test::TempDir dir;
    const std::string path = dir.file("TIPSYout.err");
    readMutations(validErrorFile(), 3226, kErrorFileMutations, path, [&] {
        test::ScriptedPrompt prompt;
        std::vector<PostItem> post;
        LoadTIPSYError(m, prompt, path, post);
        for (const PostItem& item : post) EXPECT_LE(item.polygon, m.LastPoly);
    });
}

}  // namespace
}  // namespace arborex
