// The written report, byte for byte in both forms, for a calculated project and one without a
// calculation; the Rich Text escapes of awkward names; the file's replacement; and, where a word
// processor is installed, that it reads the Rich Text as a document with its tables.

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "base/dates.hpp"
#include "base/document_launcher.hpp"
#include "base/errors.hpp"
#include "harvest/calculate.hpp"
#include "report/document_report.hpp"
#include "report/document_report_view.hpp"
#include "support/calc_fixture.hpp"
#include "support/temp_dir.hpp"

namespace arborex::test {
namespace {

const std::string kDataDir = ARBOREX_SOURCE_DIR "/tests/golden/data/document_report/";

std::string readFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    std::ostringstream s;
    s << in.rdbuf();
    return s.str();
}

// A land base of four stands: two cut during the horizon, one too young to reach its target, one
// left out of the cut order; ownerships and a partial cut to show the brackets.
void describeProject(CalcFixture& f) {
    Model& m = f.m;
    m.Settings.PLANHORZ = 50;
    m.Header.Licence = "W1234";
    m.Header.District = "Kamloops";
    m.Header.Company = "Pine Ridge Woodlot";
    m.Header.User = "J. Forester";
    m.Header.Scenario = "Base case";
    m.Header.FileStamp = "Nov 3, 2026";
    m.Header.VDYPVersion = "6.6d";
    m.Header.TIPSYVersion = "3.2m";
    m.Files[FileProject] = "C:\\Woodlots\\W1234.arx";
    m.Ref.OwnershipNames = {"Crown", "Private", "Tenure", "Other"};
    m.Ref.OwnershipCodes = {'C', 'P', 'T', 'O'};
    m.Ref.OwnershipCount = 3;
    m.PolyC[1].OWNERSHIP = 1;
    m.Poly[1].SILVI = 1;
    m.Poly[1].PCPERC = -1;
    m.Poly[1].PCNEXT = 20;
    if (m.LastPoly < 3) return;  // the smaller land bases have no third and fourth stand
    m.Poly[2].HAR[0] = -1;
    m.PolyC[3].EXCLUDE = 1;
}

CalcFixture& calculatedProject() {
    static CalcFixture f({{"OLD-1", 12.5f, 95, 0, 1, 2.5f, 80},
                          {"MID-2", 8.0f, 70, 1, 1, 3.0f, 75},
                          {"YOUNG-3", 20.0f, 10, 0, 1, 2.0f, 250},
                          {"LEFT-4", 4.0f, 90, 2, 1, 2.0f, 80}});
    static bool ready = false;
    if (!ready) {
        describeProject(f);
        f.prepare();
        f.screen.lstCutOrder[IncludedList].pop_back();  // LEFT-4 stays out of the cut order
        EXPECT_TRUE(cmdCalculate(f.session));
        // The report reads the saved constraint settings: an age constraint that the young
        // land base cannot meet shows its periods.
        f.m.Calc.inputs.ConstraintBits |= 4;
        f.m.Calc.inputs.SavedAge = 60;
        f.m.Calc.inputs.SavedAgePerc = 50;
        ready = true;
    }
    return f;
}

ReportContext fixedDay(float hanzlik = 0.0f) {
    DateTimeParts day;
    day.year = 2026;
    day.month = 11;
    day.day = 3;
    return {dayCountFromParts(day), hanzlik};
}

// Compares with the golden file; ARBOREX_UPDATE_GOLDEN=1 rewrites it instead.
void expectGolden(const std::string& actual, const std::string& name) {
    const std::string path = kDataDir + name;
    if (std::getenv("ARBOREX_UPDATE_GOLDEN") != nullptr) {
        std::ofstream(path, std::ios::binary) << actual;
        return;
    }
    EXPECT_EQ(actual, readFile(path)) << "differs from " << path;
}

std::string reportOf(const Model& m, ReportFormat format, const ReportContext& context) {
    TempDir dir;
    const std::string path = dir.file(format == ReportFormat::RTF ? "r.rtf" : "r.txt");
    createReport(m, format, path, context);
    return readFile(path);
}

TEST(DocumentReport, CalculatedProjectMatchesGoldenInBothForms) {
    CalcFixture& f = calculatedProject();
    const ReportContext day = fixedDay(f.run.HanzlikRate);
    expectGolden(reportOf(f.m, ReportFormat::RTF, day), "calculated.rtf");
    expectGolden(reportOf(f.m, ReportFormat::TXT, day), "calculated.txt");
}

TEST(DocumentReport, ProjectWithoutCalculationMatchesGolden) {
    CalcFixture f({{"OLD-1", 12.5f, 95, 0, 1, 2.5f, 80}, {"NEVER-2", 5.0f, 40, 0, 0, 2.0f, 999}});
    describeProject(f);
    f.m.CutOrder = {0, 1};
    f.m.CutOrderLast = 1;
    expectGolden(reportOf(f.m, ReportFormat::TXT, fixedDay()), "no_calc.txt");
}

TEST(DocumentReport, RichTextEscapesBackslashBracesTabAndLatin1) {
    CalcFixture f({{"A\\{b}\tc\xb3", 10.0f, 50, 0, 0, 2.0f, 80}});
    f.m.Header.Company = "Smith {\\} \xb3";
    f.m.Files[FileProject] = "C:\\x{1}\\p.arx";
    const std::string rtf = reportOf(f.m, ReportFormat::RTF, fixedDay());
    EXPECT_NE(rtf.find("A\\\\\\{b\\}\\tab c\\'b3\\cell "), std::string::npos);
    EXPECT_NE(rtf.find("Smith \\{\\\\\\} \\'b3\\par "), std::string::npos);
    // FixSlash doubles the path's backslashes; the braces still get their escape.
    EXPECT_NE(rtf.find("C:\\\\x\\{1\\}\\\\p.arx\\par "), std::string::npos);
    EXPECT_NE(rtf.find("(m\\'b3/ha)"), std::string::npos);
    for (unsigned char c : rtf) EXPECT_LT(c, 128) << "raw byte above 127 in Rich Text";
    const std::string txt = reportOf(f.m, ReportFormat::TXT, fixedDay());
    EXPECT_NE(txt.find("A\\{b}\tc\xb3\t"), std::string::npos);
    EXPECT_NE(txt.find("C:\\x{1}\\p.arx\r\n"), std::string::npos);
}

TEST(DocumentReport, ConstraintPeriodsCountFromTodayAndSkipEmptyYears) {
    CalcFixture f({{"P1", 10.0f, 50, 0, 0, 2.0f, 80}});
    CalcState& c = f.m.Calc;
    c.inputs.ConstraintBits = 4;
    c.inputs.SavedAgePerc = 50;
    c.CalcHorizon = 5;
    c.YearTable.resize(5);
    const float olderArea[6] = {60.0f, 10.0f, 20.0f, 0.0f, 70.0f, 10.0f};
    for (int i = 0; i <= 5; ++i) {
        c.YearTable[i].InvArea = i == 3 ? 0.0f : 100.0f;  // year 3 has no inventory: skipped
        c.YearTable[i].InvAreaAge = olderArea[i];
    }
    const std::string txt = reportOf(f.m, ReportFormat::TXT, fixedDay());
    EXPECT_NE(txt.find("Period(s)\r\n2027-2030\r\n2031-2031\r\n\r\nf) Height"), std::string::npos)
        << txt;
    EXPECT_NE(txt.find("Height constraints are disabled\r\n"), std::string::npos);
}

TEST(DocumentReport, FixSlashDoublesOnlyForRichText) {
    EXPECT_EQ(FixSlash("  C:\\a\\b.arx ", ReportFormat::RTF), "C:\\\\a\\\\b.arx");
    EXPECT_EQ(FixSlash("  C:\\a\\b.arx ", ReportFormat::TXT), "C:\\a\\b.arx");
}

TEST(DocumentReport, FailureLeavesTheFormerFile) {
    CalcFixture f({{"P1", 10.0f, 50, 0, 0, 2.0f, 80}});
    TempDir dir;
    const std::string path = dir.file("r.txt");
    std::ofstream(path) << "former";
    std::filesystem::create_directory(path + ".saving");  // the temporary cannot be written
    EXPECT_THROW(createReport(f.m, ReportFormat::TXT, path, fixedDay()), ArborexError);
    EXPECT_EQ(readFile(path), "former");
    EXPECT_THROW(createReport(f.m, ReportFormat::TXT, dir.file("no/such/r.txt")), ArborexError);
}

struct RecordingLauncher final : DocumentLauncher {
    std::vector<std::string> opened;  // "default PATH" or "PROGRAM PATH"
    bool works = true;
    bool openDocument(const std::string& path) override {
        opened.push_back("default " + path);
        return works;
    }
    bool openWith(const std::string& program, const std::string& path) override {
        opened.push_back(program + " " + path);
        return works;
    }
};

TEST(DocumentReport, ReportViewAsksWritesAndOpensByFormat) {
    CalcFixture f({{"P1", 10.0f, 50, 0, 0, 2.0f, 80}});
    TempDir dir;
    f.m.Paths[UserDocuments] = dir.path();
    f.m.Files[FileDisplayName] = "W1234";
    f.m.Files[FileEditorText] = "/usr/bin/editor";
    RecordingLauncher launcher;
    ScriptedPrompt& prompt = f.host.prompt;
    prompt.files = {FileChoice{dir.file("a.rtf"), 1}, FileChoice{dir.file("b.txt"), 2},
                    std::nullopt, FileChoice{dir.file("c.txt"), 2}};
    ASSERT_TRUE(writeReportView(f.m, prompt, launcher, 0.0f));
    EXPECT_EQ(readFile(dir.file("a.rtf")).substr(0, 6), "{\\rtf1");
    ASSERT_TRUE(writeReportView(f.m, prompt, launcher, 0.0f));
    EXPECT_EQ(readFile(dir.file("b.txt")).substr(0, 2), "\r\n");
    EXPECT_EQ(f.m.Files[FileLastReport], dir.file("b.txt"));
    EXPECT_EQ(launcher.opened, (std::vector<std::string>{"default " + dir.file("a.rtf"),
                                                         "/usr/bin/editor " + dir.file("b.txt")}));
    EXPECT_TRUE(prompt.shown.empty());
    EXPECT_FALSE(writeReportView(f.m, prompt, launcher, 0.0f));  // cancelled

    f.m.LaunchEditor = 0;
    ASSERT_TRUE(writeReportView(f.m, prompt, launcher, 0.0f));
    EXPECT_EQ(launcher.opened.size(), 2u);
    ASSERT_EQ(prompt.shown.size(), 1u);
    EXPECT_EQ(prompt.shown[0].text, "Your report was saved as: " + dir.file("c.txt"));
}

// A real reader of Rich Text: LibreOffice's converter, when it is installed.
TEST(DocumentReport, WordProcessorReadsSectionsAndTables) {
    if (std::system("command -v soffice >/dev/null 2>&1") != 0)
        GTEST_SKIP() << "soffice is not installed";
    CalcFixture& f = calculatedProject();
    TempDir dir;
    const std::string rtf = dir.file("report.rtf");
    createReport(f.m, ReportFormat::RTF, rtf, fixedDay());
    const std::string command = "cd '" + dir.path() + "' && HOME='" + dir.path() +
                                "' timeout 120 soffice --headless --convert-to txt:Text "
                                "report.rtf >/dev/null 2>&1";
    ASSERT_EQ(std::system(command.c_str()), 0);
    const std::string text = readFile(dir.file("report.txt"));
    for (const char* heading :
         {"Arborex Licence Harvest Planning report", "1.0 Introduction", "2.0 Polygon Data",
          "3.0 Harvest Calculation Assumptions", "4.0 Harvest Calculation Results",
          "5.0 Conclusions", "6.0 Report Abbreviations", "Summary:"})
        EXPECT_NE(text.find(heading), std::string::npos) << heading;
    // A table cell read back as its own line, and the path with single backslashes.
    EXPECT_NE(text.find("\nPolygon excluded from sort order"), std::string::npos);
    EXPECT_NE(text.find("C:\\Woodlots\\W1234.arx"), std::string::npos);
}

}  // namespace
}  // namespace arborex::test
