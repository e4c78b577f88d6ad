// The classic format and the grid's export: a project written out and read back over itself
// is unchanged in either format, and the classic reader's refusals and older titles.

#include <gtest/gtest.h>

#include "base/messages.hpp"
#include "exchange/classic_csv.hpp"
#include "exchange/grid_export.hpp"
#include "exchange/text_import.hpp"
#include "frame/project_open.hpp"
#include "model/reference_tables.hpp"
#include "support/fake_host.hpp"
#include "support/small_project.hpp"

namespace arborex {
namespace {

const std::string kData = std::string(ARBOREX_SOURCE_DIR) + "/data";

// The bundled sample with the installed reference tables, as the program holds it once open.
Model openSample(test::FakeHost& host) {
    Model m;
    programDefaults(m);
    m.Paths[ArborexFolder] = kData + "/";
    LoadSpeciesV(m.Ref, host, kData + "/SPECIESV.DAT");
    LoadSpeciesT(m.Ref, host, kData + "/SPECIEST.DAT");
    LoadChoices(m.Ref, host, kData + "/", true);
    LoadMessages(m.Messages, host, kData + "/MESSAGES.DAT");
    EXPECT_TRUE(LoadARX(m, host, std::string(ARBOREX_SOURCE_DIR) + "/samples/sample.arx"));
    return m;
}

// Every polygon record and curve status, field by field through the grid's and the classic
// writer's texts, which together show every stored field the exchange touches.
void expectSameProject(const Model& before, const Model& after) {
    ASSERT_EQ(after.LastPoly, before.LastPoly);
    EXPECT_EQ(gridCells(after), gridCells(before));
    EXPECT_EQ(classicCsvText(after, "\t"), classicCsvText(before, "\t"));
    for (int p = 0; p <= before.LastPoly; ++p) {
        const auto i = static_cast<std::size_t>(p);
        SCOPED_TRACE(before.Poly[i].NAME.str());
        EXPECT_EQ(after.Poly[i].YIELDSTATE, before.Poly[i].YIELDSTATE);
        EXPECT_EQ(after.Poly[i].VSIDX, before.Poly[i].VSIDX);
        EXPECT_EQ(after.Poly[i].TSIDX, before.Poly[i].TSIDX);
        EXPECT_EQ(after.Poly[i].VSICALC, before.Poly[i].VSICALC);
        EXPECT_EQ(after.HarvAge[i][0].HarvestAge, before.HarvAge[i][0].HarvestAge);
    }
}

TEST(ExchangeRoundTrip, GridExportReadBackLeavesTheProjectUnchanged) {
    test::FakeHost host;
    Model m = openSample(host);
    ASSERT_GE(m.LastPoly, 1);
    const Model before = m;
    const std::string text = gridExportText(gridCells(m));
    EXPECT_EQ(text.rfind("NAME\tAREA\tDELETE\t\t\tOWNERSHIP\t", 0), 0u);

    host.prompt.answers = {Answer::Yes};  // update the duplicates: every polygon
    PolygonImport run;
    ASSERT_TRUE(TxtToColumns(m, host, text, run));
    EXPECT_EQ(run.counts.ImpUpdated, m.LastPoly + 1);
    EXPECT_EQ(run.counts.ImpAdded, 0);
    expectSameProject(before, m);
}

TEST(ExchangeRoundTrip, ClassicCommaAndTabReadBackLeaveTheProjectUnchanged) {
    for (const auto& [writer, reader] :
         {std::pair<const char*, char>{kClassicCommaWriter, ','},
          std::pair<const char*, char>{kClassicTabDelimiter, '\t'}}) {
        SCOPED_TRACE(int(reader));
        test::FakeHost host;
        Model m = openSample(host);
        const Model before = m;
        const std::string text = classicCsvText(m, writer);
        host.prompt.answers = {Answer::Yes};
        PolygonImport run;
        ASSERT_TRUE(importOldCsvText(m, host, text, reader, "sample.csv", run));
        EXPECT_EQ(run.counts.ImpUpdated, m.LastPoly + 1);
        EXPECT_FALSE(host.prompt.showed("Keyword(s) Not Found"));
        expectSameProject(before, m);
    }
}

}  // namespace
}  // namespace arborex
