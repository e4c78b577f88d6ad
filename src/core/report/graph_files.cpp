#include "report/graph_files.hpp"

#include <ostream>
#include <sstream>

#include "base/atomic_file.hpp"
#include "base/dates.hpp"
#include "base/display_format.hpp"
#include "base/errors.hpp"
#include "base/numeric.hpp"
#include "model/colours.hpp"
#include "report/graph_files_text.hpp"

namespace arborex {

const std::array<const char*, 10> kAgeClassLabels = {
    "0", "1-20", "21-40", "41-60", "61-80", "81-100", "101-120", "121-140", "141-250", "251+"};

namespace {

// The header's fixed lines before the project's own (lines 1-22) and after them (27-33).
constexpr const char* kHeaderTop[] = {
    "Paper = letter",
    "Orientation = landscape",
    "Page=11000,8500,white",
    "Border=500,500,10000,7500,1,white,black",
    "Graph=1500,1000,6500,6000,2,white,black",
    "Legend=8500,1000,2000,6000,1,white,black",
    "Title1Font=  Arial, 16, B,  , Black, Center, Middle, 0",
    "Title2Font=  Arial, 12, B, I, Black, Center, Middle, 0",
    "XAxisFont=   Arial, 8 ,  ,  , Black, Center, Middle,90",
    "Y1AxisFont=  Arial, 8 ,  ,  , Black, Right, Middle, 0",
    "Y2AxisFont=  Arial, 8 ,  ,  , Black, Left, Middle, 0",
    "XTitleFont=  Arial, 10, B,  , Black, Center, Middle, 0",
    "Y1TitleFont= Arial, 10, B,  , Black, Center, Middle, 0",
    "Y2TitleFont= Arial, 10, B,  , Black, Center, Middle, 0",
    "LegendFont=  Arial, 8 ,  ,  , Black, Left, Middle, 0",
    "LegendTitleFont=Arial, 10, B,  , Black, Center, Top, 0",
    "LegendTitlePos=auto,auto,0",
    "Outline=1, black, 0",
    "Shadow=50, DDDDDD",
    "BarSpace = 20",
    "clusterSpace = 50",
    "Shade=10,20",
};
constexpr const char* kHeaderBottom[] = {
    "XTicSize = 100",
    "XTicLine=1, Black, 0",
    "XAxisLabelPos=auto,+500,0",
    "Y1AxisLabelPos=-800,auto,800",
    "Y1TicSize = 100",
    "Y1TicLine=1, Black, 0",
    "Y1Min = 0",
};

std::string colour(int32_t value) {
    return "#" + std::to_string(value);
}

std::string inFolder(const Model& m, const char* name) {
    return m.Paths[UserTemp] + name;
}

}  // namespace

namespace graphtext {

int calendarYearOf(double now) {
    return partsFromDayCount(now).year;
}

void openGraph(ControlText& t, const Model& m, double now, std::string_view type,
               std::string_view title1) {
    std::ostringstream header;
    GraphHeader(header, m, now);
    t.text() += header.str();
    t.line("*graph=1,Sample 1");
    t.line(type);
    t.line(title1);
}

void commonLines(ControlText& t, const Model& m) {
    t.line("Title2=" + m.Header.Licence.str() + " - " + m.Header.Scenario.str());
    t.line("Title1Pos=4750,500,0");
    t.line("Title2Pos=4750,750,0");
    t.line("XAxisUnit =");
}

void yearlyLines(ControlText& t) {
    t.line("XAxisLabel = Year");
    t.line("Y1AxisCol = stack");
    t.line("Y1GridLine=1, Black, 2");
    t.line("XGridLine=1, Light Gray, 2");
}

void axisLines(ControlText& t, std::string_view yLabel, std::string_view yUnit,
               std::string_view legendTitle) {
    t.line(yLabel);
    t.line(yUnit);
    t.line(legendTitle);
}

}  // namespace graphtext

using graphtext::ControlText;

std::string yearLabel(int index, int firstYear) {
    const int year = firstYear + index;
    if (index == 0 || year % 25 == 0) return formatNumber(year, "0000");
    if (year % 5 == 0) return "*tic";
    return {};
}

void GraphHeader(std::ostream& out, const Model& m, double now) {
    for (const char* line : kHeaderTop) out << line << "\r\n";
    out << "Filename=" << m.Files[FileProject] << "\r\n";
    out << "CreatedDate=" << formatDate(now, "mmmm d, yyyy") << "\r\n";
    out << "CreatedTime=" << formatDate(now, "h:mm am/pm") << "\r\n";
    out << "CreatedBy=" << m.Header.User.str() << "\r\n";
    for (const char* line : kHeaderBottom) out << line << "\r\n";
}

std::string timeVolumeGraphText(const Model& m, double now) {
    ControlText t;
    graphtext::openGraph(t, m, now, "Type=LineFill", "Title1= Time Volume");
    graphtext::commonLines(t, m);
    graphtext::yearlyLines(t);
    graphtext::axisLines(t, "Y1AxisLabel = Volume (m\xb3)", "Y1AxisUnit = m\xb3",
                         "LegendTitle=Timber Type");
    t.line("*table");
    const std::array<int32_t, ColourCount>& c = m.Settings.COLORS;
    t.row("Title",
          {"Mature Deciduous", "Mature Conifer", "Immature Deciduous", "Immature Conifer"});
    const std::vector<std::string> colours = {colour(c[ColMATURED]), colour(c[ColMATURE]),
                                              colour(c[ColIMATURED]), colour(c[ColIMATURE])};
    t.row("FColor", colours);
    t.row("BColor", colours);
    t.row("Style", {"1", "2", "3", "4"});
    t.row("Width", {"2", "2", "2", "2"});
    t.row("Pattern", {"0", "0", "0", "0"});
    const int first = graphtext::calendarYearOf(now);
    for (int i = 0; i < m.Settings.PLANHORZ; ++i) {
        const YearRec& y = m.Calc.YearTable[i];
        t.row(yearLabel(i, first),
              {formatNumber(y.MatureDec, "0"), formatNumber(y.MatureCon, "0"),
               formatNumber(y.ImmatureDec, "0"), formatNumber(y.ImmatureCon, "0")});
    }
    t.line("*endof");
    return std::move(t.text());
}

AgeGraphRequest defaultAgeGraphRequest(int firstYear) {
    AgeGraphRequest request;
    request.colours = {rgb(0, 128, 0),   rgb(0, 128, 128), rgb(128, 0, 0),
                       rgb(128, 0, 128), rgb(128, 128, 0), rgb(192, 192, 192)};
    for (std::size_t i = 0; i < request.years.size(); ++i)
        request.years[i] = toI2(firstYear + 10 * static_cast<int>(i));
    return request;
}

std::string ageGraphText(const Model& m, const AgeGraphRequest& request, double now) {
    ControlText t;
    graphtext::openGraph(t, m, now, "Type=Bar", "Title1=Age Class Distribution by Area");
    graphtext::commonLines(t, m);
    t.line("XAxisLabel = Age Class");
    t.line("XGridLine=0, Light Gray, 2");
    t.line("Y1GridLine=1, Black, 2");
    t.line("Y1AxisCol = cluster");
    graphtext::axisLines(t, "Y1AxisLabel = Area (ha)", "Y1AxisUnit = ha", "LegendTitle = Year");
    t.line("*table");
    std::vector<std::string> titles, colours, patterns;
    for (std::size_t s = 0; s < request.years.size(); ++s) {
        titles.push_back(formatNumber(static_cast<int>(request.years[s]), "0000"));
        colours.push_back(request.fillType == 2 ? "black" : colour(request.colours[s]));
        patterns.push_back(std::to_string(request.patterns[s]));
    }
    t.row("Title", titles);
    t.row("FColor", colours);
    t.row("BColor", colours);
    t.row("Pattern", patterns);
    const int first = graphtext::calendarYearOf(now);
    const CalcState& calc = m.Calc;
    for (std::size_t k = 0; k < kAgeClassLabels.size(); ++k) {
        std::vector<std::string> cells;
        for (int16_t year : request.years) {
            const int index = year - first;
            const bool inTable = index >= 0 && index <= calc.YearTable.upperBound();
            const float area = inTable ? calc.YearTable[index].AgeClassArea[k] : 0.0f;
            cells.push_back(formatNumber(area, "0"));
        }
        t.row(kAgeClassLabels[k], cells);
    }
    t.line("*endof");
    return std::move(t.text());
}

std::string writeResultGraph(const Model& m, const CalcRun& run, int index, double now) {
    if (m.Calc.CutCount == 0) return {};
    const std::string path = inFolder(m, kGraphFile);
    writeFileAtomically(path, resultGraphText(m, run, index, now));
    return path;
}

std::string GraphTimeVolume2(const Model& m, double now) {
    if (m.Calc.CutCount == 0) return {};
    const std::string path = inFolder(m, kTimeVolumeGraphFile);
    writeFileAtomically(path, timeVolumeGraphText(m, now));
    return path;
}

std::string writeAgeGraph(const Model& m, const AgeGraphRequest& request, double now) {
    if (m.Calc.CutCount == 0) return {};
    const std::string path = inFolder(m, kAgeGraphFile);
    writeFileAtomically(path, ageGraphText(m, request, now));
    return path;
}

bool launchGraph(const Model& m, DocumentLauncher& launcher, Prompt& /*prompt*/,
                 const std::string& path) {
    // The graphing program's start is not checked: a missing or wrong one shows nothing here,
    // and the control file stays in the temporary folder for another program.
    const std::string& program = m.Files[FileChartex];
    return !program.empty() && launcher.openWith(program, path);
}

}  // namespace arborex
