#include "base/dates.hpp"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace arborex {

namespace {

// Days since 1970-01-01 of a proleptic Gregorian date (H. Hinnant's civil algorithms).
constexpr long long daysFromCivil(long long y, unsigned m, unsigned d) {
    y -= m <= 2;
    const long long era = (y >= 0 ? y : y - 399) / 400;
    const unsigned yoe = static_cast<unsigned>(y - era * 400);
    const unsigned doy = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + d - 1;
    const unsigned doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
    return era * 146097 + static_cast<long long>(doe) - 719468;
}

void civilFromDays(long long z, int& y, int& m, int& d) {
    z += 719468;
    const long long era = (z >= 0 ? z : z - 146096) / 146097;
    const unsigned doe = static_cast<unsigned>(z - era * 146097);
    const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
    const long long yy = static_cast<long long>(yoe) + era * 400;
    const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
    const unsigned mp = (5 * doy + 2) / 153;
    d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
    m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
    y = static_cast<int>(yy + (m <= 2));
}

constexpr long long kDayZero = daysFromCivil(1899, 12, 30);

}  // namespace

int DateTimeParts::weekday() const {
    long long days = daysFromCivil(year, static_cast<unsigned>(month), static_cast<unsigned>(day));
    long long w = (days + 4) % 7;  // 1970-01-01 was a Thursday
    return static_cast<int>(w < 0 ? w + 7 : w);
}

double dayCountFromParts(const DateTimeParts& p) {
    double whole = static_cast<double>(
        daysFromCivil(p.year, static_cast<unsigned>(p.month), static_cast<unsigned>(p.day)) -
        kDayZero);
    double time = (p.hour * 3600.0 + p.minute * 60.0 + p.second) / 86400.0;
    return whole >= 0 ? whole + time : whole - time;
}

DateTimeParts partsFromDayCount(double dayCount) {
    double whole = std::trunc(dayCount);
    double fraction = std::fabs(dayCount - whole);
    long long seconds = std::llround(fraction * 86400.0);
    if (seconds >= 86400) {  // a fraction that rounds up to midnight belongs to the next day
        seconds -= 86400;
        whole += 1;  // before day 0 too: the fraction counts forward from the whole day
    }
    DateTimeParts p;
    civilFromDays(static_cast<long long>(whole) + kDayZero, p.year, p.month, p.day);
    p.hour = static_cast<int>(seconds / 3600);
    p.minute = static_cast<int>(seconds / 60 % 60);
    p.second = static_cast<int>(seconds % 60);
    return p;
}

double dateNow() {
    // A fixed day, for runs that must repeat to the byte (reports compared across days):
    // ARBOREX_TODAY=YYYY-MM-DD, taken at noon.
    if (const char* fixed = std::getenv("ARBOREX_TODAY")) {
        DateTimeParts p;
        if (std::sscanf(fixed, "%d-%d-%d", &p.year, &p.month, &p.day) == 3) {
            p.hour = 12;
            return dayCountFromParts(p);
        }
    }
    std::time_t t = std::time(nullptr);
    std::tm local{};
    localtime_r(&t, &local);
    DateTimeParts p{local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                    local.tm_hour,        local.tm_min,     local.tm_sec};
    return dayCountFromParts(p);
}

}  // namespace arborex
