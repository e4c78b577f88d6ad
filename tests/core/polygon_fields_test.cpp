// The polygon screen's entry fields: each commit clamps, rounds and stores as its field's rules
// say, and a field with a project default shows the setting in brackets while it holds -1.

#include <gtest/gtest.h>

#include "base/errors.hpp"
#include "model/polygon_fields.hpp"
#include "support/fake_host.hpp"
#include "support/small_project.hpp"

namespace arborex {
namespace {

class PolygonFields : public ::testing::Test {
protected:
    void SetUp() override {
        m.Poly[0].DENSITY = 1000;
        m.Poly[0].MGNT = {0, 1};
    }
    std::string commit(PolyField field, const std::string& text, int slot = 0) {
        return commitPolygonField(m, host.prompt, 0, {field, slot}, text);
    }
    Model m = test::smallProject({"A"});
    test::FakeHost host;
};

TEST_F(PolygonFields, CommitClampsAndShowsEachFieldByItsRow) {
    const struct {
        PolyField field;
        int slot;
        const char* text;
        const char* shown;
    } cases[] = {
        {PolyField::ROADAREA, 0, "25", "10.0"},  // no more than the polygon's area
        {PolyField::AREA, 0, "abc", "0.1"},      // no number clamps to the low end
        {PolyField::AREA, 0, "12345", "9999.9"},
        {PolyField::AGE, 0, "xyz", "0"},
        {PolyField::AGE, 0, "-1500", "-999"},
        {PolyField::AGE, 0, "2.5", "3"},  // the field shows whole years, rounded away from 0
        {PolyField::VAF, 0, "", "0.01"},
        {PolyField::VAF, 0, "1.234", "1.23"},
        {PolyField::THINNED, 0, "5000", "999"},  // below the density
        {PolyField::THINNED, 0, "many", "400"},
        {PolyField::DENSITY, 0, "100", "331"},
        {PolyField::THINNED, 0, "500", "330"},  // the high end wins over the low
        {PolyField::REGENDELAY, 0, "1200", "999"},
        {PolyField::REGENDELAY, 0, "[0]", "[0]"},
        {PolyField::OAF1, 0, "", "[15]"},
        {PolyField::OAF2, 0, "7x", "[5]"},
        {PolyField::PCPERC, 0, "70", "50"},
        {PolyField::PCNEXT, 0, "soon", "[20]"},
        {PolyField::HAR1, 0, "abc", "[TBA]"},
        {PolyField::NCVOLHA, 0, "40000", "32000"},
        {PolyField::CLOSURE, 0, "x", "[TBA]"},  // 0, then the calculated closure stands in
        {PolyField::VSITEINDEX, 0, "18.44", "18.4"},
        {PolyField::TG, 4, "45", "30"},
        {PolyField::VP, 5, "150", "100"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(commit(c.field, c.text, c.slot), c.shown);
    }
    EXPECT_FLOAT_EQ(m.PolyM[0].ROADAREA, 10.0f);
    EXPECT_EQ(m.Poly[0].AGE, 3);
    EXPECT_EQ(m.PolyC[0].REGENDELAY, -1);
    EXPECT_EQ(m.Poly[0].OAF2, -1);
    EXPECT_EQ(m.Poly[0].HAR[0], -1);
    EXPECT_EQ(m.Poly[0].CLOSURE, 0);
    EXPECT_EQ(m.Poly[0].VP[5], 100);
    EXPECT_EQ(m.Poly[0].THINNED, 330);
    EXPECT_TRUE(host.prompt.shown.empty());
    EXPECT_THROW(commit(PolyField::TP, "10", 5), ArborexError);
}

TEST_F(PolygonFields, BracketsShowTheSettingOrTheCalculatedValue) {
    m.Settings.REGENDELAY = 4;
    m.PolyM[0].ROADAREA = 1.05f;  // shown as the float holds it, not as its widened double
    EXPECT_EQ(polygonFieldText(m, 0, {PolyField::ROADAREA}), "1.1");
    EXPECT_EQ(polygonFieldText(m, 0, {PolyField::REGENDELAY}), "[4]");
    m.HarvAge[0][0].HarvestAge = 80;
    m.HarvAge[0][1].HarvestAge = 70;
    EXPECT_EQ(polygonFieldText(m, 0, {PolyField::HAR1}), "[80]");
    EXPECT_EQ(polygonFieldText(m, 0, {PolyField::HAR2}), "[70]");
    m.Poly[0].MGNT[0] = 2;  // NC has no curve of its own
    EXPECT_EQ(polygonFieldText(m, 0, {PolyField::HAR1}), "[TBA]");
    m.Poly[0].VSICALC = 17.125f;
    EXPECT_EQ(vsiText(m, 0), "[17.13]");
    m.Poly[0].CLOSURE = -1;
    m.PolyC[0].VCCCALC = 44.6f;
    EXPECT_EQ(vccText(m, 0), "[45]");
    EXPECT_EQ(commit(PolyField::CLOSURE, "60"), "60");
}

TEST_F(PolygonFields, ASiteIndexOfZeroWarns) {
    commit(PolyField::TI, "30", 2);
    EXPECT_TRUE(host.prompt.shown.empty());
    EXPECT_EQ(commit(PolyField::TI, "none", 2), "0");
    ASSERT_EQ(host.prompt.shown.size(), 1u);
    EXPECT_EQ(host.prompt.shown[0].text,
              "Warning: if SI = 0 you must enter a valid SIHeight and SIAge combination.  This "
              "will cause TIPSY to calculate an SI for you!");
}

TEST_F(PolygonFields, SetterTakesCatalogueKeysAndTheListsRanges) {
    SpeciesRec pine;
    pine.Code = "PL";
    m.Ref.SpeciesV.push_back(pine);
    m.Ref.SpeciesVCount = 1;
    const struct {
        const char* key;
        const char* text;
    } accepted[] = {{"fiz", "h"},       {"VS2", "pl"},       {"VP2", "40"},
                    {"OWNERSHIP", "p"}, {"VUTILIZ", "17.5"}, {"EXISTINGMGNT", "3"},
                    {"PSYU", "2.5"},    {"CTSTEMHA", "3.5"}, {"HAR2", "[x]"},
                    {"NCDesc", "Rock"}, {"VX3", "0"}};
    for (const auto& a : accepted) EXPECT_TRUE(setPolygonValue(m, host.prompt, 0, a.key, a.text));
    const PolyData& d = m.Poly[0];
    EXPECT_EQ(d.FIZ.str(), "H");
    EXPECT_EQ(d.VS[1].str(), "PL");
    EXPECT_EQ(d.VSIDX[1], 1);
    EXPECT_EQ(d.VP[1], 40);
    EXPECT_EQ(m.PolyC[0].OWNERSHIP, 1);
    EXPECT_FLOAT_EQ(d.VUTILIZ, 17.5f);
    EXPECT_EQ(d.MGNT[0], 3);
    EXPECT_EQ(d.PSYU, 2);  // whole numbers round half to even
    EXPECT_EQ(m.PolyM[0].CTSTEMHA, 4);
    EXPECT_EQ(d.HAR[1], -1);
    EXPECT_EQ(m.PolyM[0].NCDESC.str(), "Rock");
    EXPECT_EQ(m.PolyC[0].VX[2], 0);

    const char* refused[][2] = {{"FIZ", "Z"},      {"EXISTINGMGNT", "4"}, {"VS1", "XX"},
                                {"VUTILIZ", "13"}, {"OWNERSHIP", "Q"},    {"SILVI", "2"}};
    for (const auto& r : refused) {
        SCOPED_TRACE(r[0]);
        try {
            setPolygonValue(m, host.prompt, 0, r[0], r[1]);
            ADD_FAILURE() << "accepted " << r[1];
        } catch (const ArborexError& e) {
            EXPECT_EQ(e.number(), ErrOverflow);
        }
    }
    EXPECT_EQ(d.FIZ.str(), "H");
    EXPECT_EQ(d.VS[0].str(), "");
    EXPECT_FALSE(setPolygonValue(m, host.prompt, 0, "COLOUR", "red"));
    const std::vector<std::string> keys = polygonValueKeys();
    EXPECT_EQ(keys.front(), "AREA");
    EXPECT_EQ(keys.back(), "FSTARTYEAR");
    EXPECT_EQ(keys.size(), 89u);
}

}  // namespace
}  // namespace arborex
