// The models' work files go before a run and at the program's end, whatever their case; the
// user's own files stay.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "support/temp_dir.hpp"
#include "yield/work_files.hpp"

namespace arborex {
namespace {

void touch(const std::string& path) {
    std::ofstream(path) << "x";
}

TEST(WorkFiles, RemovesTheExchangeFilesWhateverTheirCase) {
    test::TempDir dir;
    Model m;
    m.Paths[UserTemp] = dir.path() + "/";
    for (const char* name : {"VDYPIN.dat", "tipsyout.err", "graph.txt", "ERROR.TXT"})
        touch(dir.file(name));
    touch(dir.file("woodlot.arx"));  // the user's own file stays
    touch(dir.file("graph.txt.bak"));

    deleteWorkFiles(m);

    std::vector<std::string> left;
    for (const auto& entry : std::filesystem::directory_iterator(dir.path()))
        left.push_back(entry.path().filename().string());
    std::sort(left.begin(), left.end());
    EXPECT_EQ(left, (std::vector<std::string>{"graph.txt.bak", "woodlot.arx"}));

    deleteWorkFiles(m);  // nothing left to delete is no failure
}

TEST(WorkFiles, AnUnsetTempFolderDeletesNothing) {
    test::TempDir dir;
    const auto before = std::filesystem::current_path();
    std::filesystem::current_path(dir.path());
    touch("graph.txt");
    Model m;
    deleteWorkFiles(m);
    EXPECT_TRUE(std::filesystem::exists("graph.txt"));
    std::filesystem::current_path(before);
}

}  // namespace
}  // namespace arborex
