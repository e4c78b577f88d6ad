#pragma once
// Display formats: numbers and dates turned into text by patterns such as "0.0", "#,##0",
// "0.0%" or "mmm d, yyyy", with the meaning that the program's screens, reports and exchange
// files have always given them. Output never depends on the process locale: the decimal point is
// ".", the thousands separator ",", month and day names English.

#include <string>
#include <string_view>

namespace arborex {

// Formats `value` by a numeric pattern of one section.
//
// Placeholders: "0" a required digit, "#" an optional one. In the integer part the digits fill the
// placeholders from the right, the leftmost placeholder taking any extra digits; the placeholders
// from the first "0" on are always shown ("0000" of 7 -> "0007"), so a pattern without a "0"
// there shows a zero integer part as nothing ("#" of 0 -> "", "#,###" of 0 -> "", "#.#" of
// 0.5 -> ".5"). A "," in the integer part groups the digits by thousands with ",".
// After "." each placeholder is one fraction digit; trailing zeros in "#" places are dropped,
// but the point itself always stays ("0.##" of 3 -> "3.", "0.0#" of 1 -> "1.0").
// "%" multiplies by 100 and shows "%" where it stands. A character preceded by "\" or enclosed in
// double quotes, and any other character, is copied as it stands.
//
// Rounding of the shown digits is half away from zero, on the value as a decimal of 15
// significant digits ("0" of 2.5 -> "3", "0.00" of 1.005 -> "1.01"). This is not the rule for
// turning values into stored whole numbers, which is half to even (roundHalfEven).
// A negative value gets a leading "-", unless it shows as zero ("0.0" of -0.04 -> "0.0").
//
// Values are doubles. A float field is passed widened to double; the 15-digit decimal then holds
// the widening error (0.1f is 0.100000001490116), which rounding to any pattern of fewer digits
// hides ("0.0" of 0.1f -> "0.1"), as the program has always shown float values.
//
// An empty pattern gives the general form: up to 15 significant digits without trailing zeros,
// in E notation below 0.0001 and from 1E+15 on ("1E-05", "1.5E+15").
std::string formatNumber(double value, std::string_view pattern);
// A float field shows as its own 7 significant digits, so a stored 1.005f rounds as the 1.005
// that the user typed ("0.00" -> "1.01"), not as its binary neighbour below.
std::string formatNumber(float value, std::string_view pattern);
std::string formatNumber(int value, std::string_view pattern);

// Formats a date and time, given as a day count (see dates.hpp), by a pattern of tokens:
//   d dd ddd dddd      day, two-digit day, "Tue", "Tuesday"; ddddd short date, dddddd long date
//   m mm mmm mmmm      month, two-digit month, "Nov", "November"; "m" and "mm" right after an
//                      hour token, or right before a seconds token, are minutes
//   y yy yyyy          day of the year, two-digit year, four-digit year
//   h hh  n nn  s ss   hour, minute, second, plain and two-digit
//   w q                weekday (1 = Sunday), quarter
//   AM/PM am/pm A/P a/p   12-hour clock and the marker in the case written; without one of
//                      these the hour runs 0 to 23
// Letters are matched without regard to case; "\" and double quotes mark literal text; any other
// character is copied as it stands.
// Named forms, without regard to case: "General Date", "Long Date" ("Tuesday, November 3, 2026"),
// "Medium Date" ("03-Nov-26"), "Short Date" ("2026-11-03"), "Long Time" ("3:07:09 PM"),
// "Medium Time" ("03:07 PM"), "Short Time" ("15:07").
std::string formatDate(double dayCount, std::string_view pattern);

}  // namespace arborex
