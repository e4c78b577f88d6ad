#pragma once
// What arborex-chart does with its command line:
//   arborex-chart FILE [--png OUT] [--svg OUT] [--pdf OUT] [--size WxH]
// draws the control file's graphs into the files named, or, with none named, shows them in a
// window. Warnings of the reader go to `err` one a line; a file that cannot be drawn gives one
// line on `err` and a non-zero code.

#include <QStringList>
#include <iosfwd>

namespace arborex::chart {

inline constexpr int kChartFailed = 1;
inline constexpr int kChartUsage = 2;

// Draws into the files named; returns -1 when none is named and the window is wanted, after
// showing it (the caller runs the event loop), else the exit code.
int runChart(const QStringList& arguments, std::ostream& err);

}  // namespace arborex::chart
