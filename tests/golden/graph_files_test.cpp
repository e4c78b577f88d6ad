// The graphing program's control files of a small calculated project, byte for byte against
// files under tests/golden/data/graphs (ARBOREX_UPDATE_GOLDEN=1 rewrites them), and how they
// are written and handed to the graphing program.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/dates.hpp"
#include "base/errors.hpp"
#include "harvest/calculate.hpp"
#include "model/colours.hpp"
#include "report/graph_files.hpp"
#include "support/calc_fixture.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

// 5 March 2030, 2:07 pm: the run's start year is 2030 too.
double testNow() {
    return dayCountFromParts({2030, 3, 5, 14, 7, 0});
}

std::string goldenPath(const std::string& name) {
    return std::string(ARBOREX_SOURCE_DIR) + "/tests/golden/data/graphs/" + name;
}

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

void expectGolden(const std::string& name, const std::string& text) {
    if (std::getenv("ARBOREX_UPDATE_GOLDEN")) {
        std::ofstream(goldenPath(name), std::ios::binary) << text;
        return;
    }
    EXPECT_EQ(text, readFile(goldenPath(name))) << name;
}

// Two conifer stands on VDYP and one on TIPSY, a ten-year horizon, 300 m3/yr.
struct CalculatedProject : test::CalcFixture {
    CalculatedProject()
        : CalcFixture({{"A", 10.0f, 85}, {"B", 4.0f, 95, 1, 1, 3.0f}, {"C", 6.0f, 60}}) {
        setColours(m);
        m.Ref.SpeciesV.back().Desc = "Lodgepole pine";
        m.Ref.SpeciesT.back().Desc = "Lodgepole pine";
        m.Settings.PLANHORZ = 10;
        m.Header.Licence = " A12345 ";
        m.Header.Scenario = "Base case  ";
        m.Header.User = "Forester";
        m.Files[FileProject] = "/home/forester/tenure.arx";
        m.Files[FileChartex] = "/opt/arborex/arborex-chart";
        screen.txtVolToCut = "300";
        prepare();
        EXPECT_TRUE(cmdCalculate(session));
    }
};

TEST(GraphFiles, EachResultGraphOfACalculatedProject) {
    CalculatedProject p;
    ASSERT_GT(p.m.Calc.CutCount, 0);
    for (int index = 0; index < kResultGraphCount; ++index)
        expectGolden("graph" + std::to_string(index) + ".txt",
                     resultGraphText(p.m, p.run, index, testNow()));
    expectGolden("tvgraph.txt", timeVolumeGraphText(p.m, testNow()));
    AgeGraphRequest request;
    request.years = {2030, 2032, 2035, 2039, 0, 2045};  // a blank year and one past the table
    request.colours = {255, 65280, 16711680, 0, 8421504, 65535};
    request.patterns = {0, 1, 2, 3, 4, 7};
    expectGolden("areagraph.txt", ageGraphText(p.m, request, testNow()));
    request.fillType = 2;
    const std::string monochrome = ageGraphText(p.m, request, testNow());
    EXPECT_NE(monochrome.find("FColor\tblack\tblack\tblack\tblack\tblack\tblack\r\n"),
              std::string::npos);
}

TEST(GraphFiles, YearlyLabelsOverAQuarterMillennium) {
    EXPECT_EQ(yearLabel(0, 2025), "2025");
    EXPECT_EQ(yearLabel(1, 2025), "");
    EXPECT_EQ(yearLabel(5, 2025), "*tic");
    EXPECT_EQ(yearLabel(25, 2025), "2050");
    EXPECT_EQ(yearLabel(0, 2031), "2031");  // the first year is always named

    Model m;
    programDefaults(m);
    m.Settings.PLANHORZ = 250;
    m.Calc.YearTable.resize(250);
    m.Calc.CalcHorizon = 250;
    const std::string text = timeVolumeGraphText(m, testNow());
    const std::size_t table = text.find("Pattern\t0\t0\t0\t0\r\n");
    ASSERT_NE(table, std::string::npos);
    std::istringstream rows(text.substr(table));
    std::string row, named;
    int years = 0, tics = 0, blank = 0;
    std::getline(rows, row);
    while (std::getline(rows, row) && row != "*endof\r") {
        const std::string label = row.substr(0, row.find('\t'));
        if (label == "*tic")
            ++tics;
        else if (label.empty())
            ++blank;
        else
            named += label + " ";
        ++years;
    }
    EXPECT_EQ(years, 250);
    EXPECT_EQ(named, "2030 2050 2075 2100 2125 2150 2175 2200 2225 2250 2275 ");
    EXPECT_EQ(tics, 39);
    EXPECT_EQ(blank, 250 - 11 - 39);
}

class RecordingLauncher final : public DocumentLauncher {
public:
    bool starts = true;
    std::string program, path;
    bool openDocument(const std::string&) override { return false; }
    bool openWith(const std::string& p, const std::string& file) override {
        program = p;
        path = file;
        return starts;
    }
};

TEST(GraphFiles, WrittenIntoTheTemporaryFolderAndHandedToTheGraphingProgram) {
    CalculatedProject p;
    test::TempDir dir;
    p.m.Paths[UserTemp] = dir.path() + "/";
    const std::string written = writeResultGraph(p.m, p.run, 1, testNow());
    EXPECT_EQ(written, dir.file("graph.txt"));
    EXPECT_EQ(readFile(written), readFile(goldenPath("graph1.txt")));
    EXPECT_EQ(GraphTimeVolume2(p.m, testNow()), dir.file("tvgraph.txt"));
    EXPECT_EQ(writeAgeGraph(p.m, AgeGraphRequest{}, testNow()), dir.file("areagraph.txt"));

    RecordingLauncher launcher;
    EXPECT_TRUE(launchGraph(p.m, launcher, p.host.prompt, written));
    EXPECT_EQ(launcher.program, "/opt/arborex/arborex-chart");
    EXPECT_EQ(launcher.path, written);
    EXPECT_TRUE(p.host.prompt.shown.empty());
    launcher.starts = false;
    EXPECT_FALSE(launchGraph(p.m, launcher, p.host.prompt, written));
    EXPECT_TRUE(p.host.prompt.shown.empty());  // a program that does not start is passed over

    // A failed write leaves the former file as it was.
    std::filesystem::create_directory(written + ".saving");
    EXPECT_THROW(writeResultGraph(p.m, p.run, 0, testNow()), ArborexError);
    EXPECT_EQ(readFile(written), readFile(goldenPath("graph1.txt")));

    // Without a calculation the menu entries write nothing.
    std::filesystem::remove_all(written + ".saving");
    std::filesystem::remove(written);
    p.m.Calc.CutCount = 0;
    EXPECT_EQ(writeResultGraph(p.m, p.run, 0, testNow()), "");
    EXPECT_EQ(GraphTimeVolume2(p.m, testNow()), "");
    EXPECT_EQ(writeAgeGraph(p.m, AgeGraphRequest{}, testNow()), "");
    EXPECT_FALSE(std::filesystem::exists(written));
}

TEST(GraphFiles, AverageVolumeFailsInAYearWithoutAreaCut) {
    CalculatedProject p;
    p.m.Calc.YearTable[3].AreaCCE = 0.0f;
    p.m.Calc.YearTable[3].VolConifer = 0.0f;
    p.m.Calc.YearTable[3].VolDeciduous = 0.0f;
    EXPECT_THROW(resultGraphText(p.m, p.run, 2, testNow()), ArborexError);
    EXPECT_NO_THROW(resultGraphText(p.m, p.run, 1, testNow()));
}

}  // namespace
}  // namespace arborex
