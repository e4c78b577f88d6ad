#include "harvest/calc_session.hpp"

#include "base/dates.hpp"
#include "base/errors.hpp"
#include "base/number_text.hpp"
#include "base/numeric.hpp"

namespace arborex {

void SpeciesTally::add(int species, int offset, double value) {
    if (species < 0 || static_cast<std::size_t>(species) >= rows.size() || offset < -1 ||
        offset > kLastOffset)
        throw ArborexError(ErrSubscript, "species tally");
    auto& row = rows[static_cast<std::size_t>(species)];
    row[static_cast<std::size_t>(offset + 1)] += value;
}

void PeriodAccumulators::clear(int polygons) {
    const auto n = static_cast<std::size_t>(polygons < 0 ? 0 : polygons);
    ReportVolAcc.assign(n, 0.0);
    ReportAreaAcc.assign(n, 0.0);
    ReportCceAcc.assign(n, 0.0);
    ReportFlag.assign(n, 0);
    ReportMinAge = 999;
    ReportMaxAge = 0;
    ReportSum1 = 0.0;
    ReportSum2 = 0.0;
}

int16_t calendarYear(const CalcRun& run) {
    if (run.FixedStartYear != 0) return run.FixedStartYear;
    return toI2(partsFromDayCount(dateNow()).year);
}

int16_t fieldWhole(const std::string& text) {
    return toI2(tolerantNumber(text));
}

}  // namespace arborex
