// log.txt: its heading, one line per cutting step, its closing lines, and nothing at all
// without the /LOG option.

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "base/dates.hpp"
#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "harvest/calc_log.hpp"
#include "harvest/queue_order.hpp"
#include "harvest/simulation.hpp"
#include "support/calc_fixture.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

using test::CalcFixture;
using Lines = std::vector<std::string>;

class CalcLog : public ::testing::Test {
protected:
    // 0 a VDYP stand (2 m3/ha a year), 1 a TIPSY stand.
    CalcFixture fx{{{"STAND A", 10.0f, 80, 0, 0}, {"STAND B", 10.0f, 80, 1, 1}}};
    test::TempDir dir;

    void SetUp() override {
        fx.prepare();
        fx.m.Paths[UserDocuments] = dir.path() + "/";
        fx.m.Files[FileDisplayName] = "Sample";
    }
    int16_t addBlock(int16_t p, int16_t standYear, float cutFraction, int16_t next = 0) {
        CalcState& calc = fx.m.Calc;
        calc.BlockLast = static_cast<int16_t>(calc.BlockLast + 1);
        calc.BlockList.resize(calc.BlockLast);
        Block& b = calc.BlockList[calc.BlockLast];
        b.Polygon = p;
        b.Area = 10.0f;
        b.CutFraction = cutFraction;
        b.StandYear = standYear;
        b.Curve = fx.run.Yields.PolyCurveExisting[static_cast<std::size_t>(p)];
        b.NextBlock = next;
        return calc.BlockLast;
    }
    // The log's text, with a check that its lines end in a bare line feed.
    Lines logLines() const {
        std::ifstream in(dir.file("log.txt"), std::ios::binary);
        std::stringstream text;
        text << in.rdbuf();
        EXPECT_EQ(text.str().find('\r'), std::string::npos);
        Lines lines;
        for (std::string line; std::getline(text, line);) lines.push_back(line);
        return lines;
    }
};

TEST_F(CalcLog, HeadingALinePerStepAndTheEnd) {
    std::ofstream(dir.file("log.txt")) << "an older log\nwith more lines than the new one\n";
    fx.m.LogMode = true;
    const int16_t cut = addBlock(0, 1950, 0.25f, 1);
    addBlock(0, 2033, 0.0f);                         // 1: the successor, not yet growing
    const int16_t old = addBlock(1, 1600, 0.5f, 1);  // TIPSY, 431 years old

    const double before = dateNow();
    openCalcLog(fx.session);
    const double after = dateNow();
    ASSERT_NE(fx.run.LogFile, nullptr);
    addtolog(fx.session, 2031, cut);
    addtolog(fx.session, 2031, old);
    closeCalcLog(fx.session);
    EXPECT_EQ(fx.run.LogFile, nullptr);

    Lines lines = logLines();
    ASSERT_EQ(lines.size(), 8u);
    const auto stamp = [](double t) {
        return formatDate(t, "Long Date") + " - " + formatDate(t, "Long Time");
    };
    EXPECT_TRUE(lines[2] == stamp(before) || lines[2] == stamp(after)) << lines[2];
    lines[2] = "";
    // Year, polygon, area left old and new, volume per ha old and new, ages old and new.
    EXPECT_EQ(
        lines,
        (Lines{"ARBOREX CALCULATION LOG File", "Sample", "", "--------------------------",
               "2031,STAND A,7.500,10.000,162.0,0.0,81,0",
               "2031,STAND B,5.000,10.000,700.0,0.0,350,0", "--------------------------", "EOF"}));
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

    const Lines lines = logLines();
    ASSERT_EQ(lines.size(), 4u + 3u + 2u);
    // The successor regenerates from the middle of the entry, so its age lags a year behind.
    EXPECT_EQ(Lines(lines.begin() + 4, lines.end() - 1),
              (Lines{"2030,OLD,6.333,3.667,300.0,0.0,320,0", "2031,OLD,2.667,7.333,300.0,1.0,321,1",
                     "2032,OLD,0.000,10.000,300.0,1.0,322,1", "--------------------------"}));
}

TEST_F(CalcLog, WithoutTheOptionNoFileAndAFolderThatCannotTakeItFails) {
    openCalcLog(fx.session);
    EXPECT_EQ(fx.run.LogFile, nullptr);
    addtolog(fx.session, 2031, 99);  // not looked at when no log is open
    closeCalcLog(fx.session);
    EXPECT_FALSE(std::ifstream(dir.file("log.txt")).is_open());

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
