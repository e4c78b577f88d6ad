#pragma once
// The periodic delimited calculation report: a run at the entered rate writes, as it goes, a
// heading and, every RptIncrement years, one row per included polygon and a total row, cut by
// tabs or commas. Nothing is quoted or escaped: a delimiter inside a name splits its cell, as
// the file has always been read. Every row ends with a carriage return and line feed.

#include <cstdint>
#include <iosfwd>
#include <string>

#include "harvest/calc_session.hpp"

namespace arborex {

// The heading row of the report under the options `o`, line end included.
std::string reportHeadingText(const ReportOptions& o, char delim);

// The rows of one report date (the "Existing" rows before the first year when `initial` is
// set), line ends included, from the blocks that BuildReportIndex finds; the period accumulators
// are cleared afterwards. A weighted average over a period that harvested nothing throws
// ErrDivisionByZero.
std::string reportRowsText(CalcSession& s, int16_t initial, char delim);

// Writes the report into `out` while a run goes on, and passes every call on to the screen's
// own observer, so that the screen keeps showing the run's progress.
class CalcReportWriter final : public CalcObserver {
public:
    // `s` is the session of the run, whose observer is the one forwarded to.
    CalcReportWriter(CalcSession& s, std::ostream& out, char delim);

    void statusText(const std::string& text) override;
    void searchOpened(const std::string& hanzlikLine) override;
    void searchStatus(const std::string& line) override;
    void trialRow(const std::string& row) override;
    void searchEnded() override;
    void rateShown(const std::string& text) override;
    void rateDirtyChanged(bool dirty) override;
    void finalRunEnded() override;
    void reportHeading() override;
    void CreateReport(int16_t initial) override;

private:
    CalcSession& s_;
    std::ostream& out_;
    char delim_;
};

// The file command after its dialogs: ReportEvery from RptIncrement, the calculation at the
// entered rate writing the report to `path` (tab delimited when `tab`, else comma), ReportEvery
// back to 0. The file is written under a temporary name and put in place only when the run ends,
// so a refused or failed run leaves a former file as it was. Returns false when the calculation
// was refused (its reason was shown through the prompt); failures throw ArborexError.
bool runCalcReport(CalcSession& s, const std::string& path, bool tab);

}  // namespace arborex
