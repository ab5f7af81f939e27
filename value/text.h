// Between text, numbers and dates. One rule for the whole library, independent of the C locale.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "value/variant.h"

namespace dorvo::value {

// The leading number of a text, 0 when there is none: blanks are skipped, then a sign, digits, a point,
// an exponent are read up to the first character that cannot go on a number. Fails with Overflow beyond 1E+308.
double Val(std::string_view text);
inline double Val(const std::string& text) {
  return Val(std::string_view(text));
}
inline double Val(const char* text) {
  return Val(std::string_view(text));
}
double Val(const Variant& value);  // fails with InvalidUseOfNull

// The whole text as a number. Fails with TypeMismatch when it is anything else, empty text included.
double strict_number(std::string_view text);

// Plain decimal with at most 15 significant digits, no trailing zeros, no point for a whole number, "0" for
// zero of either sign; an exponent only from 1E+15 up.
std::string number_text(double number);

// "dd/mm/yyyy".
std::string date_text(const Date& date);

// A day first date with "/", "-" or "." between; two-digit years are 2000-2029 and 1930-1999. A time after a
// blank is read too. The form year-month-day, with a four-digit year, is what databases deliver and is read
// as well. Fails with TypeMismatch on anything that names no day of the calendar.
Date parse_date(std::string_view text);

// Days since 30/12/1899, with the time of day as the fraction.
double serial_of(const Date& date);
Date date_of_serial(double serial);

// The byte-wise comparison of names that ignores the case of ASCII letters: columns, controls, members.
bool same_name(std::string_view left, std::string_view right);
std::uint64_t name_hash(std::string_view name);  // equal for names that are the same
std::string lower_name(std::string_view name);

std::string_view trim(std::string_view text);

}  // namespace dorvo::value
