// A saved calculation reopens as it was: a run that made no road (every ROADAREA 0, common on a
// small tenure) must not leave a phantom road record that shifts the entries and the yearly
// table behind it.

#include <gtest/gtest.h>

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

TEST(ArxCalcTables, ARunWithoutRoadsReopensWithEveryTableAsItWas) {
    test::CalcFixture fx({{"A", 12.5f, 90},
                          {"B", 8.0f, 120},
                          {"C", 20.0f, 40},
                          {"D", 5.5f, 70},
                          {"E", 14.0f, 100},
                          {"F", 9.0f, 10}});
    fx.m.Settings.PLANHORZ = 60;
    fx.prepare();
    fx.screen.chkCalcRate = true;
    ASSERT_TRUE(cmdCalculate(fx.session));
    const CalcState& ran = fx.m.Calc;
    ASSERT_EQ(ran.RoadLast, 0);
    ASSERT_TRUE(ran.RoadList.empty());
    ASSERT_GT(ran.CutCount, 1);
    ASSERT_GT(ran.BlockLast, 0);

    test::TempDir dir;
    SaveArx(fx.m, fx.host.host, dir.file("noroads.arx"), 3226, false);
    Model back;
    programDefaults(back);
    ASSERT_TRUE(LoadARX(back, fx.host.host, dir.file("noroads.arx")));
    const CalcState& read = back.Calc;
    EXPECT_EQ(read.BlockLast, ran.BlockLast);
    EXPECT_EQ(read.RoadLast, 0);
    EXPECT_TRUE(read.RoadList.empty());
    EXPECT_EQ(read.CutCount, ran.CutCount);
    EXPECT_EQ(read.CalcHorizon, ran.CalcHorizon);
    const std::string scratch = dir.file("table.bin");
    EXPECT_EQ(tableBytes(read.BlockList, scratch), tableBytes(ran.BlockList, scratch));
    EXPECT_EQ(tableBytes(read.CutList, scratch), tableBytes(ran.CutList, scratch));
    EXPECT_EQ(tableBytes(read.YearTable, scratch), tableBytes(ran.YearTable, scratch));
}

}  // namespace
}  // namespace arborex
