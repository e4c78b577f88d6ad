// log.txt: its heading, one line per cutting step, its closing lines, and nothing at all
// without the /LOG option.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "frame/dates.hpp"
#include "frame/display_format.hpp"
#include "frame/errors.hpp"
#include "harvest/calc_log.hpp"
#include "harvest/queue_order.hpp"
#include "harvest/simulation.hpp"
#include "support/calc_fixture.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

using test::CalcFixture;
using test::TempDir;

class CalcLog : public ::testing::Test {
protected:
    // 0 a VDYP stand (2 m3/ha a year), 1 a TIPSY stand.
    CalcFixture fx{{{"STAND A", 10.0f, 80, 0, 0}, {"STAND B", 10.0f, 80, 1, 1}}};
    TempDir dir;

    void SetUp() override {
        fx.prepare();
        fx.m.Paths[UserDocuments] = dir.path() + "/";
        fx.m.Files[FileDisplayName] = "Sample";
    }
    int16_t addBlock(int16_t p, int16_t standYear, float cutFraction) {
        CalcState& calc = fx.m.Calc;
        Block b;
        b.Polygon = p;
        b.Area = 10.0f;
        b.CutFraction = cutFraction;
        b.StandYear = standYear;
        b.Curve = fx.run.Yields.PolyCurveExisting[static_cast<std::size_t>(p)];
        calc.BlockLast = static_cast<int16_t>(calc.BlockLast + 1);
        calc.BlockList.resize(calc.BlockLast);
        calc.BlockList[calc.BlockLast] = b;
        return calc.BlockLast;
    }
    std::string logText() const {
        std::ifstream in(dir.file("log.txt"), std::ios::binary);
        std::stringstream text;
        text << in.rdbuf();
        return text.str();
    }
    std::vector<std::string> logLines() const {
        std::vector<std::string> lines;
        std::istringstream in(logText());
        for (std::string line; std::getline(in, line);) lines.push_back(line);
        return lines;
    }
};

TEST_F(CalcLog, HeadingALinePerStepAndTheEnd) {
    {
        std::ofstream old(dir.file("log.txt"));
        old << "an older log\nwith more lines than the new one will have\n";
    }
    fx.m.LogMode = true;
    const int16_t cut = addBlock(0, 1950, 0.25f);
    const int16_t next = addBlock(0, 2033, 0.0f);  // not yet growing
    fx.m.Calc.BlockList[cut].NextBlock = next;
    const int16_t old = addBlock(1, 1600, 0.5f);  // TIPSY, 431 years old
    fx.m.Calc.BlockList[old].NextBlock = next;

    const double before = dateNow();
    openCalcLog(fx.session);
    const double after = dateNow();
    ASSERT_NE(fx.run.LogFile, nullptr);
    addtolog(fx.session, 2031, cut);
    addtolog(fx.session, 2031, old);
    closeCalcLog(fx.session);
    EXPECT_EQ(fx.run.LogFile, nullptr);

    const std::vector<std::string> lines = logLines();
    ASSERT_EQ(lines.size(), 8u);
    EXPECT_EQ(lines[0], "ARBOREX CALCULATION LOG File");
    EXPECT_EQ(lines[1], "Sample");
    const auto stamp = [](double t) {
        return formatDate(t, "Long Date") + " - " + formatDate(t, "Long Time");
    };
    EXPECT_TRUE(lines[2] == stamp(before) || lines[2] == stamp(after)) << lines[2];
    EXPECT_EQ(lines[3], "--------------------------");
    // Year, polygon, area left old and new, volume per ha old and new, ages old and new.
    EXPECT_EQ(lines[4], "2031,STAND A,7.500,10.000,162.0,0.0,81,0");
    EXPECT_EQ(lines[5], "2031,STAND B,5.000,10.000,700.0,0.0,350,0");
    EXPECT_EQ(lines[6], "--------------------------");
    EXPECT_EQ(lines[7], "EOF");
    EXPECT_EQ(logText().find('\r'), std::string::npos);
}

TEST_F(CalcLog, OnlyAFinalRunLogsOneLinePerCuttingStep) {
    // 10 ha past the top of its curve, 300 m3/ha for good, cut at 1,100 m3 a year: three steps.
    CalcFixture land({{"OLD", 10.0f, 320, 0, 0, 1.0f}});
    land.m.Settings.SPLIT = 10.0f;
    land.m.Calc.CalcHorizon = 5;
    land.m.LogMode = true;
    land.m.Paths[UserDocuments] = dir.path() + "/";
    land.prepare();
    SetCutOrder(land.session);
    openCalcLog(land.session);
    land.run.HarvestRate = 1100.0;
    int16_t failed = 0;
    AVAC(land.session, kTrialRun, failed);  // cuts the same three steps, and writes nothing
    EXPECT_EQ(failed, -1);
    AVAC(land.session, kFinalRun, failed);
    closeCalcLog(land.session);

    const std::vector<std::string> lines = logLines();
    ASSERT_EQ(lines.size(), 4u + 3u + 2u);
    // The successor regenerates from the middle of the entry, so its age lags a year behind.
    EXPECT_EQ(lines[4], "2030,OLD,6.333,3.667,300.0,0.0,320,0");
    EXPECT_EQ(lines[5], "2031,OLD,2.667,7.333,300.0,1.0,321,1");
    EXPECT_EQ(lines[6], "2032,OLD,0.000,10.000,300.0,1.0,322,1");
    EXPECT_EQ(lines[7], "--------------------------");
}

TEST_F(CalcLog, WithoutTheOptionNoFileAndNoLines) {
    openCalcLog(fx.session);
    EXPECT_EQ(fx.run.LogFile, nullptr);
    addtolog(fx.session, 2031, 99);  // not looked at when no log is open
    closeCalcLog(fx.session);
    EXPECT_FALSE(std::ifstream(dir.file("log.txt")).is_open());
}

TEST_F(CalcLog, AFolderThatCannotTakeTheLogIsAFileAccessFailure) {
    fx.m.LogMode = true;
    fx.m.Paths[UserDocuments] = dir.file("missing") + "/";
    try {
        openCalcLog(fx.session);
        FAIL() << "no failure";
    } catch (const ArborexError& e) {
        EXPECT_EQ(e.number(), ErrPathFileAccess);
        EXPECT_EQ(e.detail(), dir.file("missing") + "/log.txt");
    }
    EXPECT_EQ(fx.run.LogFile, nullptr);
}

}  // namespace
}  // namespace arborex
