// What saving and loading do around the bytes: the .bak, the purge question, failures that
// must leave the files and the model as they were.

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <tuple>

#include "base/errors.hpp"
#include "frame/project_open.hpp"
#include "golden/arx_layout.hpp"
#include "golden/arx_sample_model.hpp"
#include "model/project_file.hpp"
#include "support/fake_host.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

namespace fs = std::filesystem;
using test::Bytes;

const Bytes kFormer = {'f', 'o', 'r', 'm', 'e', 'r'};
const Bytes kOlder = {'o', 'l', 'd', 'e', 'r'};

std::vector<std::string> filesIn(const std::string& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

// The model as the program holds it between projects: reset, with default settings.
Model startModel() {
    Model m;
    ResetVars(m);
    SetDefaults(m);
    EmptyArrays(m);
    return m;
}

class ArxFiles : public ::testing::Test {
protected:
    // The model can still be saved and read back after whatever happened to it. A read that
    // stopped inside the saved calculation leaves bounds that its arrays do not hold yet; such
    // a model saves, but the reader then takes the arrays from the wrong place, as it does
    // with any file whose bounds and arrays disagree.
    void expectUsable(Model& m, bool reloadable = true) {
        EXPECT_EQ(test::polygonArrayMismatch(m), "");
        test::FakeHost quiet;
        const std::string again = check.file("usable.arx");
        ASSERT_NO_THROW(SaveArx(m, quiet, again, 3226, false));
        if (!reloadable) return;
        Model back;
        EXPECT_TRUE(LoadARX(back, quiet, again));
        EXPECT_EQ(back.LastPoly, m.LastPoly);
    }
    // Loads `bytes` from a file and checks that the file stays as it was.
    bool loadBytes(const Bytes& bytes) {
        test::writeFileBytes(dir.file("bad.arx"), bytes);
        const bool ok = LoadARX(loaded, host, dir.file("bad.arx"));
        EXPECT_EQ(test::readFileBytes(dir.file("bad.arx")), bytes);
        return ok;
    }

    test::TempDir dir;
    test::TempDir check;
    test::FakeHost host;
    Model loaded = startModel();
};

// --- Saving ----------------------------------------------------------------------------------

TEST_F(ArxFiles, SaveKeepsTheFormerFileAsTheOneBak) {
    const std::string path = dir.file("plan.arx");
    test::writeFileBytes(path, kFormer);
    Model m = test::distinctModel();
    SaveArx(m, host, path, 3226, false);
    EXPECT_EQ(test::readFileBytes(dir.file("plan.bak")), kFormer);
    const Bytes first = test::readFileBytes(path);
    EXPECT_EQ(test::getI2(first, 240), 3226);

    SaveArx(m, host, path, 3226, false);
    EXPECT_EQ(test::readFileBytes(dir.file("plan.bak")), first);
    EXPECT_EQ(filesIn(dir.path()), (std::vector<std::string>{"plan.arx", "plan.bak"}));
}

TEST_F(ArxFiles, PurgeQuestionOnlyWhenAPolygonIsDeletedAndNoKeepsThem) {
    Model m = test::distinctModel();
    SaveArx(m, host, dir.file("a.arx"), 3226, true);
    m.PolyC[1].DELETE = 1;
    SaveArx(m, host, dir.file("a.arx"), 3226, false);
    EXPECT_TRUE(host.prompt.shown.empty());

    host.prompt.answers = {Answer::No};
    SaveArx(m, host, dir.file("a.arx"), 3226, true);
    ASSERT_EQ(host.prompt.shown.size(), 1u);
    const test::ShownBox& box = host.prompt.shown[0];
    EXPECT_EQ(box.title, "Purge Deleted Polygons");
    EXPECT_EQ(box.text,
              "Would you like to purge 1 deleted polygons.  'NO' will save the deleted polygons "
              "so they can be undeleted in the future, 'YES' will permanently remove the "
              "deleted polygons.");
    EXPECT_EQ(box.buttons, Buttons::YesNo);
    EXPECT_EQ(box.defaultAnswer, Answer::No);
    EXPECT_EQ(m.LastPoly, 2);
    EXPECT_EQ(test::getI2(test::readFileBytes(dir.file("a.arx")), 242), 2);
}

TEST_F(ArxFiles, PurgeQuestionAnsweredYesSavesWithoutThem) {
    Model m = test::distinctModel();
    m.PolyC[0].DELETE = 1;
    m.PolyC[2].DELETE = 1;
    host.prompt.answers = {Answer::Yes};
    SaveArx(m, host, dir.file("a.arx"), 3226, true);
    EXPECT_TRUE(host.prompt.showed("Would you like to purge 2 deleted polygons."));
    EXPECT_EQ(m.LastPoly, 0);
    const Bytes file = test::readFileBytes(dir.file("a.arx"));
    EXPECT_EQ(test::getI2(file, 242), 0);
    EXPECT_EQ(test::getText(file, 244 + 150 + 88, 12), "ABC_12      ");
}

TEST_F(ArxFiles, BlankPathWritesNothingButStillOffersThePurge) {
    Model m = test::distinctModel();
    m.PolyC[1].DELETE = 1;
    EXPECT_NO_THROW(SaveArx(m, host, "   ", 3226, true));
    EXPECT_TRUE(host.prompt.showed("Purge Deleted Polygons"));
    EXPECT_TRUE(filesIn(dir.path()).empty());
    EXPECT_TRUE(host.status.texts.empty());
}

TEST_F(ArxFiles, OnlyTheCurrentVersionBecomesTheProjectFile) {
    Model m = test::distinctModel();
    SaveArx(m, host, dir.file("current.arx"), 3226, false);
    SaveArx(m, host, dir.file("old.arx"), 200, false);
    EXPECT_EQ(std::tie(m.Files[FileProject], m.Files[FileDisplayName]),
              std::make_tuple(dir.file("current.arx"), "current"));
    // Every save goes to the recent list.
    EXPECT_EQ(std::tie(m.LastFiles[0], m.LastFiles[1]),
              std::make_tuple(dir.file("old.arx"), dir.file("current.arx")));
}

TEST_F(ArxFiles, SaveShowsItsStatusAndProgress) {
    Model m = test::distinctModel();
    SaveArx(m, host, dir.file("a.arx"), 3226, false);
    ASSERT_FALSE(host.status.texts.empty());
    EXPECT_EQ(host.status.texts.front(), "Saving ARX file : " + dir.file("a.arx"));
    const auto& percents = host.status.percents;
    for (int mark : {25, 50, 75, 100})
        EXPECT_NE(std::find(percents.begin(), percents.end(), mark), percents.end()) << mark;
    EXPECT_TRUE(std::is_sorted(percents.begin(), percents.end()));
    EXPECT_FALSE(host.status.open);
}

TEST_F(ArxFiles, SaveIntoAReadOnlyFolderThrowsAndKeepsTheFiles) {
    const std::string folder = dir.file("locked");
    fs::create_directory(folder);
    test::writeFileBytes(folder + "/plan.arx", kFormer);
    test::writeFileBytes(folder + "/plan.bak", kOlder);
    ASSERT_EQ(chmod(folder.c_str(), 0555), 0);
    if (access(folder.c_str(), W_OK) == 0) {
        chmod(folder.c_str(), 0755);
        GTEST_SKIP() << "this user may write into a read-only folder";
    }
    Model m = test::distinctModel();
    EXPECT_THROW(SaveArx(m, host, folder + "/plan.arx", 3226, false), ArborexError);
    chmod(folder.c_str(), 0755);
    EXPECT_EQ(test::readFileBytes(folder + "/plan.arx"), kFormer);
    EXPECT_EQ(test::readFileBytes(folder + "/plan.bak"), kOlder);
    EXPECT_EQ(filesIn(folder), (std::vector<std::string>{"plan.arx", "plan.bak"}));
    EXPECT_FALSE(host.status.open);
    expectUsable(m);
}

TEST_F(ArxFiles, SaveBelowAPlainFileThrows) {
    test::writeFileBytes(dir.file("plain.txt"), kFormer);
    Model m = test::distinctModel();
    EXPECT_THROW(SaveArx(m, host, dir.file("plain.txt") + "/plan.arx", 3226, false), ArborexError);
    EXPECT_EQ(test::readFileBytes(dir.file("plain.txt")), kFormer);
    expectUsable(m);
}

// A .bak that cannot be replaced (here a folder of that name) stops the save before the
// former file is touched.
TEST_F(ArxFiles, SaveThatCannotMakeItsBakThrowsAndKeepsTheFormerFile) {
    test::writeFileBytes(dir.file("plan.arx"), kFormer);
    fs::create_directory(dir.file("plan.bak"));
    test::writeFileBytes(dir.file("plan.bak") + "/inside", kOlder);
    Model m = test::distinctModel();
    EXPECT_THROW(SaveArx(m, host, dir.file("plan.arx"), 3226, false), ArborexError);
    EXPECT_EQ(test::readFileBytes(dir.file("plan.arx")), kFormer);
    EXPECT_EQ(test::readFileBytes(dir.file("plan.bak") + "/inside"), kOlder);
    EXPECT_EQ(filesIn(dir.path()), (std::vector<std::string>{"plan.arx", "plan.bak"}));
}

// --- Files that are not projects ---------------------------------------------------------------

TEST_F(ArxFiles, BlankPathLoadsNothingInSilenceAndAMissingFileIsSaid) {
    EXPECT_FALSE(LoadARX(loaded, host, ""));
    EXPECT_TRUE(host.prompt.shown.empty());
    EXPECT_FALSE(LoadARX(loaded, host, dir.file("absent.arx")));
    EXPECT_TRUE(host.prompt.showed("File not found"));
    EXPECT_FALSE(fs::exists(dir.file("absent.arx")));
}

TEST_F(ArxFiles, TruncatedFilesFailWithTheirNumberAndLeaveAUsableModel) {
    const Bytes full = test::buildArxImage(test::distinctModel(), 3226).bytes();
    const test::ArxImage layout = test::buildArxImage(test::distinctModel(), 3226);
    const std::size_t cuts[] = {1,
                                100,
                                243,
                                300,
                                layout.recordOffset("PolyData[1]") + 50,
                                layout.recordOffset("RecordA") + 3,
                                layout.recordOffset("VYield[1][2]"),
                                layout.recordOffset("TYield[2][2]") + 9,
                                layout.recordOffset("RecordB") + 200,
                                layout.recordOffset("Block[1]") + 4,
                                layout.recordOffset("Year[2]") + 100};
    for (std::size_t cut : cuts) {
        SCOPED_TRACE("cut at " + std::to_string(cut));
        host.prompt.shown.clear();
        loaded = startModel();
        EXPECT_FALSE(loadBytes(Bytes(full.begin(), full.begin() + static_cast<long>(cut))));
        const std::string expected = "62\n" + errorText(ErrInputPastEnd);
        bool said = false;
        for (const auto& box : host.prompt.shown)
            said = said || box.text == expected || box.text == "62\r\n" + errorText(62);
        EXPECT_TRUE(said) << (host.prompt.shown.empty() ? "no box" : host.prompt.shown.back().text);
        EXPECT_FALSE(host.status.open);
        expectUsable(loaded, cut < layout.recordOffset("Bounds"));
    }
}

TEST_F(ArxFiles, FileWithoutItsReportOptionsStillLoads) {
    const Bytes full = test::buildArxImage(test::distinctModel(), 3226).bytes();
    EXPECT_TRUE(loadBytes(Bytes(full.begin(), full.end() - 14)));
    EXPECT_EQ(loaded.LastPoly, 2);
}

TEST_F(ArxFiles, FilesThatAreNoProjectsFail) {
    std::string letter;
    while (letter.size() < 300) letter += "This is a letter, not a project. ";
    letter.resize(300);
    const Bytes text(letter.begin(), letter.end());
    ASSERT_GE(test::getI2(text, 240), 200);  // too short for the settings it promises
    const Bytes zeroVersion = test::buildArxImage(test::distinctModel(), 0).bytes();
    for (const Bytes& bytes : {Bytes{}, text, zeroVersion}) {
        SCOPED_TRACE(bytes.size());
        host.prompt.shown.clear();
        loaded = startModel();
        EXPECT_FALSE(loadBytes(bytes));
        EXPECT_FALSE(host.prompt.shown.empty());
        expectUsable(loaded);
    }
    EXPECT_TRUE(host.prompt.showed("Invalid file"));
    EXPECT_EQ(loaded.LastPoly, -1);
}

TEST_F(ArxFiles, FailedLoadReplacesTheProjectBefore) {
    // The previous project is gone even when the new file fails: the reset comes first.
    loaded = test::distinctModel();
    loaded.Header.Licence = "PREVIOUS";
    const Bytes full = test::buildArxImage(test::distinctModel(), 3226).bytes();
    EXPECT_FALSE(loadBytes(Bytes(full.begin(), full.begin() + 1000)));
    EXPECT_NE(loaded.Header.Licence.str(), "PREVIOUS");
    expectUsable(loaded);
}

}  // namespace
}  // namespace arborex
