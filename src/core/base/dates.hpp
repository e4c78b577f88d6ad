#pragma once
// Dates as an f8 day count: whole days from 30 December 1899 (day 0), the fraction being the
// time of day. Before day 0 the whole part counts back and the fraction still counts forward,
// so -1.25 is 29 December 1899 at 06:00.

namespace arborex {

struct DateTimeParts {
    int year = 1899;
    int month = 12;  // 1..12
    int day = 30;    // 1..31
    int hour = 0;
    int minute = 0;
    int second = 0;
    int weekday() const;  // 0 Sunday .. 6 Saturday
};

double dayCountFromParts(const DateTimeParts& parts);
DateTimeParts partsFromDayCount(double dayCount);
// The local date and time now, or noon of ARBOREX_TODAY (YYYY-MM-DD) when it is set.
double dateNow();

}  // namespace arborex
