// ImportItem's rules as worked examples: the cell reader's clean-up, clamps, codes checked
// against the reference tables, and refusals that leave the field as it was.

#include <gtest/gtest.h>

#include <functional>

#include "exchange/import_item.hpp"
#include "model/reference_tables.hpp"
#include "support/fake_host.hpp"
#include "support/small_project.hpp"

namespace arborex {
namespace {

const std::string kData = std::string(ARBOREX_SOURCE_DIR) + "/data";

struct ImportItemTest : ::testing::Test {
    test::FakeHost host;
    Model m = test::smallProject({"A1"});
    ImportItemTest() {
        LoadSpeciesV(m.Ref, host, kData + "/SPECIESV.DAT");
        LoadSpeciesT(m.Ref, host, kData + "/SPECIEST.DAT");
        m.NewPoly = m.Poly[0];
        m.NewPolyC = m.PolyC[0];
        m.NewPolyM = m.PolyM[0];
    }
    std::string set(const char* key, const char* value) {
        std::string message = "left over";
        ImportItem(m, key, value, message);
        return message;
    }
};

TEST_F(ImportItemTest, NumbersGoThroughTheCellReader) {
    using Read = std::function<double(const Model&)>;
    const Read area = [](const Model& x) { return x.NewPoly.AREA; };
    const Read vp1 = [](const Model& x) { return x.NewPoly.VP[0]; };
    const Read density = [](const Model& x) { return x.NewPoly.DENSITY; };
    const struct {
        const char* key;
        const char* value;
        Read read;
        double expected;
    } cases[] = {
        {"AREA", "$1,234.5", area, 1234.5},
        {"AREA", " 12 ha", area, 12.0},
        {"AREA", "+3", area, 0.3},  // "+" reads as a decimal point, as files in use expect
        {"AREA", "", area, 0.0},
        {"AREA", "n/a", area, 0.0},
        {"VP1", "15%", vp1, 15.0},
        {"VP1", "62.5", vp1, 62.0},  // halves to even
        {"VP1", "63.5", vp1, 64.0},
        {"DENSITY", "40,000", density, 40000.0},  // 32 bits
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.key) + " <- \"" + c.value + "\"");
        EXPECT_EQ(set(c.key, c.value), "");
        EXPECT_EQ(static_cast<float>(c.read(m)), static_cast<float>(c.expected));
    }
}

TEST_F(ImportItemTest, SettingsFieldsClampOrFollowTheProject) {
    const struct {
        const char* key;
        const char* value;
        int expected;
    } cases[] = {
        {"PCPERC", "75", 50},    {"PCPERC", "0", 1},       {"PCPERC", "text", -1},
        {"PCPERC", "", -1},      {"PCPERC", "[25]", -1},   {"PCNEXT", "5", 10},
        {"PCNEXT", "5000", 999}, {"REGENDELAY", "-5", -1}, {"REGENDELAY", "2000", 999},
        {"REGENDELAY", "3", 3},  {"HAR1", "[84]", -1},     {"HAR2", "90", 90},
        {"OAF1", "x", -1},       {"CLOSURE", "45%", 45},   {"CLOSURE", "[TBA]", -1},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(std::string(c.key) + " <- \"" + c.value + "\"");
        EXPECT_EQ(set(c.key, c.value), "");
        const PolyData& d = m.NewPoly;
        const std::string k = c.key;
        const int got = k == "PCPERC"       ? d.PCPERC
                        : k == "PCNEXT"     ? d.PCNEXT
                        : k == "REGENDELAY" ? m.NewPolyC.REGENDELAY
                        : k == "HAR1"       ? d.HAR[0]
                        : k == "HAR2"       ? d.HAR[1]
                        : k == "OAF1"       ? d.OAF1
                                            : d.CLOSURE;
        EXPECT_EQ(got, c.expected);
    }
    EXPECT_EQ(set("TMINCUTDBH", "[15]"), "");
    EXPECT_EQ(m.NewPolyC.MINCUTDBH[1], -1.0f);
    EXPECT_EQ(set("VMINCUTVOL", "150.5"), "");
    EXPECT_EQ(m.NewPolyC.MINCUTVOL[0], 150.5f);
}

TEST_F(ImportItemTest, AgeOfFourCharactersIsAYear) {
    EXPECT_EQ(set("AGE", "198"), "");
    EXPECT_EQ(m.NewPoly.AGE, 198);
    EXPECT_EQ(set("age", "1987"), "");
    EXPECT_EQ(m.NewPoly.AGE, importCurrentYear() - 1987);
}

TEST_F(ImportItemTest, CodesAndWords) {
    EXPECT_EQ(set("SILVI", "PC"), "");
    EXPECT_EQ(m.NewPoly.SILVI, 1);
    EXPECT_EQ(set("SILVI", "P"), "");  // one character is never looked at
    EXPECT_EQ(m.NewPoly.SILVI, 0);
    EXPECT_EQ(set("EXISTINGMGNT", "nsr"), "");
    EXPECT_EQ(m.NewPoly.MGNT[0], 3);
    EXPECT_EQ(set("EXISTINGMGNT", ""), "");  // empty leaves it
    EXPECT_EQ(m.NewPoly.MGNT[0], 3);
    EXPECT_EQ(set("FUTUREMGNT", "T"), "");
    EXPECT_EQ(m.NewPoly.MGNT[1], 1);
    EXPECT_EQ(set("OWNERSHIP", "private"), "");
    EXPECT_EQ(m.NewPolyC.OWNERSHIP, 1);
    EXPECT_EQ(set("OWNERSHIP", "Z"), "");
    EXPECT_EQ(m.NewPolyC.OWNERSHIP, 0);
    EXPECT_EQ(set("STOCKING", "r"), "");
    EXPECT_EQ(m.NewPoly.STOCKING.str(), "R");
    EXPECT_EQ(set("STOCKING", "2.4"), "");
    EXPECT_EQ(m.NewPoly.STOCKING.str(), "2");
    EXPECT_EQ(set("VX2", "E"), "");
    EXPECT_EQ(m.NewPolyC.VX[1], 0);
    EXPECT_EQ(set("VX2", ""), "");
    EXPECT_EQ(m.NewPolyC.VX[1], 1);
    EXPECT_EQ(set("ComThin", "Yes"), "");
    EXPECT_EQ(m.NewPolyM.COMTHIN, 1);
    EXPECT_EQ(set("REGEN", "Natural"), "");
    EXPECT_EQ(m.NewPoly.REGEN, 0);
    EXPECT_EQ(set("FIncType", "Height"), "");
    EXPECT_EQ(m.NewPolyM.FINCTYPE, 2);
    EXPECT_EQ(set("COMP", "12345"), "");
    EXPECT_EQ(m.NewPoly.COMP.str(), "123");
    EXPECT_EQ(set("NCDesc", "  Alder brush  "), "");
    EXPECT_EQ(m.NewPolyM.NCDESC.str(), "Alder brush");
    EXPECT_EQ(set("VSICALC", "99"), "");  // output only
    EXPECT_EQ(m.NewPoly.VSICALC, 0.0f);
}

TEST_F(ImportItemTest, SpeciesCodesAreCheckedAgainstTheTables) {
    EXPECT_EQ(set("VS2", "pli"), "");  // an inventory's long code, through its alias
    EXPECT_EQ(m.NewPoly.VS[1].str(), "PL");
    EXPECT_EQ(m.NewPoly.VSIDX[1], FindVSpecIdx(m.Ref, "PL"));
    EXPECT_EQ(set("TS1", "Fd"), "");
    EXPECT_EQ(m.NewPoly.TS[0].str(), "FD");
    EXPECT_EQ(m.NewPoly.TSIDX[0], FindTSpecIdx(m.Ref, "FD"));
    EXPECT_EQ(set("VS2", "QQ"), "VDYP Species not found: QQ");
    EXPECT_EQ(m.NewPoly.VS[1].str(), "PL");
    EXPECT_EQ(set("TS1", "ZZ"), "TIPSY Species not found: ZZ");
    EXPECT_EQ(m.NewPoly.TS[0].str(), "FD");
    EXPECT_EQ(set("VS2", ""), "");  // an empty cell clears the slot
    EXPECT_EQ(m.NewPoly.VS[1].str(), "");
    EXPECT_EQ(m.NewPoly.VSIDX[1], 0);
}

TEST_F(ImportItemTest, RefusalsLeaveTheFieldAsItWas) {
    m.NewPoly.FIZ = "C";
    m.NewPoly.MGNT = {1, 0};
    m.NewPolyC.SORT = 7;
    EXPECT_EQ(set("FIZ", "Z"), "FIZ not found: Z");
    EXPECT_EQ(set("FIZ", ""), "FIZ not found: ");
    EXPECT_EQ(m.NewPoly.FIZ.str(), "C");
    EXPECT_EQ(set("EXISTINGMGNT", "Spruce"), "Existing Management not found: Spruce");
    EXPECT_EQ(set("FUTUREMGNT", "NC"), "Future Management not found: NC");
    EXPECT_EQ(m.NewPoly.MGNT[0], 1);
    EXPECT_EQ(m.NewPoly.MGNT[1], 0);
    EXPECT_EQ(set("SORT", "40000"), "Value out of range for SORT: 40000");
    EXPECT_EQ(m.NewPolyC.SORT, 7);
    EXPECT_EQ(set("VHEIGHTTOTAL", "70,000"), "Value out of range for VHEIGHTTOTAL: 70,000");
    EXPECT_EQ(set("TI1", "-32769"), "Value out of range for TI1: -32769");
    EXPECT_EQ(set("AREA", "1e999"), "Value out of range for AREA: 1e999");
    EXPECT_EQ(set("Volume", "12"), "Variable not found: VOLUME");
    EXPECT_EQ(set("fiz", "b"), "");
    EXPECT_EQ(m.NewPoly.FIZ.str(), "B");
}

TEST_F(ImportItemTest, AChangeMarksTheCurvesItsTagNames) {
    m.NewPoly.YIELDSTATE = {3, 3};
    m.NewPoly.VAF = 1.0f;
    EXPECT_EQ(set("AREA", "99"), "");
    EXPECT_EQ(set("VAF", "1"), "");  // the same value: no change, no mark
    EXPECT_EQ(m.NewPoly.YIELDSTATE, (std::array<int16_t, 2>{3, 3}));
    EXPECT_EQ(set("VAF", "0.9"), "");
    EXPECT_EQ(m.NewPoly.YIELDSTATE, (std::array<int16_t, 2>{1, 3}));
    m.NewPoly.YIELDSTATE = {3, 3};
    EXPECT_EQ(set("TP1", "40"), "");
    EXPECT_EQ(m.NewPoly.YIELDSTATE, (std::array<int16_t, 2>{3, 1}));
    m.NewPoly.YIELDSTATE = {3, 3};
    EXPECT_EQ(set("FIZ", "K"), "");
    EXPECT_EQ(m.NewPoly.YIELDSTATE, (std::array<int16_t, 2>{1, 1}));
}

}  // namespace
}  // namespace arborex
