// A saved calculation reopens as it was: a run that made no road (every ROADAREA 0, common on a
// small tenure) must not leave a phantom road record that shifts the entries and the yearly
// table behind it. A file whose tables end early reopens its polygons without the calculation.

#include <gtest/gtest.h>

#include <stdexcept>

#include "frame/project_open.hpp"
#include "golden/arx_layout.hpp"
#include "harvest/calculate.hpp"
#include "model/arx_records.hpp"
#include "model/binary_io.hpp"
#include "model/project_file.hpp"
#include "support/calc_fixture.hpp"
#include "support/temp_dir.hpp"

namespace arborex {
namespace {

// The bytes the project file holds for one table, so that every field, NaN included, compares.
template <typename Table>
test::Bytes tableBytes(const Table& table, const std::string& path) {
    {
        ByteWriter w(path);
        for (const auto& record : table) arx::write(w, record);
        w.finish();
    }
    return test::readFileBytes(path);
}

struct SavedRun {
    test::CalcFixture fx{{{"A", 12.5f, 90},
                          {"B", 8.0f, 120},
                          {"C", 20.0f, 40},
                          {"D", 5.5f, 70},
                          {"E", 14.0f, 100},
                          {"F", 9.0f, 10}}};
    test::TempDir dir;
    std::string path = dir.file("run.arx");

    SavedRun() {
        fx.m.Settings.PLANHORZ = 60;
        fx.prepare();
        fx.screen.chkCalcRate = true;
        if (!cmdCalculate(fx.session)) throw std::runtime_error("the run was refused");
        SaveArx(fx.m, fx.host.host, path, 3226, false);
    }
};

TEST(ArxCalcTables, ARunWithoutRoadsReopensWithEveryTableAsItWas) {
    SavedRun run;
    const CalcState& ran = run.fx.m.Calc;
    ASSERT_EQ(ran.RoadLast, 0);
    ASSERT_TRUE(ran.RoadList.empty());
    ASSERT_GT(ran.CutCount, 1);
    ASSERT_GT(ran.BlockLast, 0);

    Model back;
    programDefaults(back);
    ASSERT_TRUE(LoadARX(back, run.fx.host.host, run.path));
    const CalcState& read = back.Calc;
    EXPECT_EQ(read.BlockLast, ran.BlockLast);
    EXPECT_EQ(read.RoadLast, 0);
    EXPECT_TRUE(read.RoadList.empty());
    EXPECT_EQ(read.CutCount, ran.CutCount);
    EXPECT_EQ(read.CalcHorizon, ran.CalcHorizon);
    const std::string scratch = run.dir.file("table.bin");
    EXPECT_EQ(tableBytes(read.BlockList, scratch), tableBytes(ran.BlockList, scratch));
    EXPECT_EQ(tableBytes(read.CutList, scratch), tableBytes(ran.CutList, scratch));
    EXPECT_EQ(tableBytes(read.YearTable, scratch), tableBytes(ran.YearTable, scratch));
}

// The calculation's tables come last but for the seven report options (14 bytes, written and
// never read); the yearly table's count sits six bytes (count and net area) before them.
TEST(ArxCalcTables, TablesThatEndEarlyLeavePolygonsButNoCalculation) {
    SavedRun run;
    const test::Bytes whole = test::readFileBytes(run.path);
    const CalcState& ran = run.fx.m.Calc;
    const int16_t horizon = ran.CalcHorizon;
    const std::size_t tablesAt = whole.size() - 14 -
                                 (ran.BlockList.size() * 42 + ran.RoadList.size() * 14 +
                                  ran.CutList.size() * 44 + ran.YearTable.size() * 258);
    ASSERT_EQ(test::getI2(whole, tablesAt - 6), horizon);

    test::Bytes endsInTable(whole.begin(), whole.end() - 14 - 100);
    test::Bytes hugeCount = whole;
    test::setI2(hugeCount, tablesAt - 6, 32000);
    for (const test::Bytes& damaged : {endsInTable, hugeCount}) {
        test::writeFileBytes(run.path, damaged);
        test::FakeHost host;
        Model back;
        programDefaults(back);
        EXPECT_FALSE(LoadARX(back, host.host, run.path));
        ASSERT_FALSE(host.prompt.shown.empty());
        EXPECT_EQ(host.prompt.shown.back().text.substr(0, 3), "62\n");
        EXPECT_EQ(back.LastPoly, run.fx.m.LastPoly);
        EXPECT_EQ(back.Calc.CalcHorizon, 0);
        EXPECT_TRUE(back.Calc.YearTable.empty());
        EXPECT_TRUE(back.Calc.BlockList.empty());
        EXPECT_TRUE(back.Calc.CutList.empty());
    }
}

}  // namespace
}  // namespace arborex
