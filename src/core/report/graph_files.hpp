#pragma once
// The control files of the graphing program (Files[5]): graph.txt for the seven result graphs
// of the calculation screen's Graph menu, tvgraph.txt for the standing volume by maturity and
// type, areagraph.txt for the age distribution screen. Each is plain Latin-1 text with CR LF
// line ends and tab-separated table columns, built from the last run's tables; each file is
// replaced whole, through a temporary name, so that a failure leaves the former one.

#include <array>
#include <cstdint>
#include <iosfwd>
#include <string>

#include "base/document_launcher.hpp"
#include "base/prompt.hpp"
#include "harvest/calc_session.hpp"

namespace arborex {

inline constexpr const char* kGraphFile = "graph.txt";
inline constexpr const char* kTimeVolumeGraphFile = "tvgraph.txt";
inline constexpr const char* kAgeGraphFile = "areagraph.txt";

inline constexpr int kResultGraphCount = 7;
// The Graph menu's entries, by index: the menu text of each result graph.
extern const std::array<const char*, kResultGraphCount> kResultGraphCaptions;

// The ten age classes' labels: "0", "1-20" ... "121-140", "141-250", "251+".
extern const std::array<const char*, 10> kAgeClassLabels;

// The x label of year index `index` on a yearly axis starting at `firstYear`: the year as "0000"
// at index 0 and on multiples of 25, "*tic" on other multiples of 5, else empty.
std::string yearLabel(int index, int firstYear);

// The fixed header of every control file; `now` (a day count) gives the created date and time.
void GraphHeader(std::ostream& out, const Model& m, double now);

// The text of graph.txt for menu index 0..6, over PLANHORZ years from the calendar year of
// `now`. The species graph (4) reads the run's tallies, which only a calculation in this session
// fills. A year beyond the last run's table throws ErrSubscript; graph 2 in a year without area
// cut fails as the division does.
std::string resultGraphText(const Model& m, const CalcRun& run, int index, double now);

// The text of tvgraph.txt: the four standing volumes a year.
std::string timeVolumeGraphText(const Model& m, double now);

// What the age distribution screen hands over: per column its year (0 for a blank one), its
// colour (as COLORS stores colours) and its fill pattern (the index of lstFillStyle).
struct AgeGraphRequest {
    std::array<int16_t, 6> years{};
    std::array<int32_t, 6> colours{};
    std::array<int16_t, 6> patterns{};
    // optFillType: 0 pattern and colour, 1 colour only, 2 pattern only (monochrome: black).
    int fillType = 0;
};

// The age distribution screen's proposal: the years `firstYear` and every ten years after it,
// the colours 2 to 7 of the sixteen-colour palette (green, cyan, red, magenta, brown, light
// grey), solid fills in colour.
AgeGraphRequest defaultAgeGraphRequest(int firstYear);

// The text of areagraph.txt: one row per age class, one column per requested year, the standing
// area of that class in that year; a year outside the last run's table (a blank one) shows 0.
std::string ageGraphText(const Model& m, const AgeGraphRequest& request, double now);

// The three writers of the menu entries and the age distribution screen: each writes its file
// into Paths[1] and returns its path, or returns an empty path and writes nothing while the
// project holds no calculation (CutCount 0). A file that cannot be written throws
// ArborexError and leaves the former one whole (writeFileAtomically).
std::string writeResultGraph(const Model& m, const CalcRun& run, int index, double now);
std::string GraphTimeVolume2(const Model& m, double now);
std::string writeAgeGraph(const Model& m, const AgeGraphRequest& request, double now);

// Starts the graphing program Files[5] with the control file, without waiting for it; returns
// whether it started. A program that cannot be started is passed over without a box.
bool launchGraph(const Model& m, DocumentLauncher& launcher, Prompt& prompt,
                 const std::string& path);

}  // namespace arborex
