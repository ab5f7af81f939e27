#include "value/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <limits>

namespace dorvo::value {
namespace {

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}
bool is_blank(char c) {
  return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

// Length of the longest number that starts the text: sign, digits, point, digits, exponent.
std::size_t number_length(std::string_view text) {
  std::size_t at = 0;
  std::size_t digits = 0;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
  while (at < text.size() && is_digit(text[at])) ++at, ++digits;
  if (at < text.size() && text[at] == '.') {
    ++at;
    while (at < text.size() && is_digit(text[at])) ++at, ++digits;
  }
  if (digits == 0) return 0;
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    std::size_t power = at + 1;
    if (power < text.size() && (text[power] == '+' || text[power] == '-')) ++power;
    if (power < text.size() && is_digit(text[power])) {
      while (power < text.size() && is_digit(text[power])) ++power;
      at = power;
    }
  }
  return at;
}

// Of a number that no double holds: whether it is beyond the largest one, or below the smallest.
bool is_huge(std::string_view number) {
  const std::size_t mark = std::min(number.find_first_of("eE"), number.size());
  const std::string_view digits = number.substr(0, mark);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  const std::size_t first = digits.find_first_of("123456789");
  if (first == std::string_view::npos) return false;
  long long power = 0;
  if (mark < number.size()) {
    std::string_view exponent = number.substr(mark + 1);
    if (exponent.front() == '+') exponent.remove_prefix(1);
    const auto read = std::from_chars(exponent.data(), exponent.data() + exponent.size(), power);
    if (read.ec != std::errc()) return exponent.front() != '-';
  }
  return power + static_cast<long long>(point) > static_cast<long long>(first);
}

double parse_number(std::string_view number) {
  if (!number.empty() && number.front() == '+') number.remove_prefix(1);
  double parsed = 0;
  auto [end, problem] = std::from_chars(number.data(), number.data() + number.size(), parsed);
  if (problem == std::errc::result_out_of_range) {
    // Too small counts as 0; too large has no text in any box.
    if (is_huge(number)) throw Failure(Error::Overflow, "Overflow: a number beyond 1E+308");
    return 0;
  }
  return parsed;
}

bool leap(int year) {
  return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
}

int days_in_month(int year, int month) {
  static constexpr std::array<int, 12> kDays = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && leap(year) ? 29 : kDays[static_cast<std::size_t>(month - 1)];
}

// Days since 1 March of year 0, by the usual shifted-year count.
long long days_from_civil(int year, int month, int day) {
  const long long y = month <= 2 ? year - 1 : year;
  const long long era = (y >= 0 ? y : y - 399) / 400;
  const long long yoe = y - era * 400;
  const long long doy = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
  return era * 146097 + yoe * 365 + yoe / 4 - yoe / 100 + doy;
}

const long long kSerialZero = days_from_civil(1899, 12, 30);

[[noreturn]] void no_date(std::string_view text) {
  throw Failure(Error::TypeMismatch, "Type mismatch: \"" + std::string(text) + "\" is no date; expected dd/mm/yyyy");
}

// Up to `most` digits at the front of `rest`, taken off it; -1 when there is none.
int take_number(std::string_view& rest, int& digits) {
  int number = 0;
  digits = 0;
  while (!rest.empty() && is_digit(rest.front()) && digits < 5) {
    number = number * 10 + (rest.front() - '0');
    rest.remove_prefix(1);
    ++digits;
  }
  return digits == 0 ? -1 : number;
}

bool take_separator(std::string_view& rest, char& separator) {
  if (rest.empty() || (rest.front() != '/' && rest.front() != '-' && rest.front() != '.')) return false;
  if (separator != 0 && rest.front() != separator) return false;
  separator = rest.front();
  rest.remove_prefix(1);
  return true;
}

// "hh:mm" or "hh:mm:ss", with a fraction of a second that is dropped; -1 when it is neither.
int parse_time(std::string_view rest) {
  std::array<int, 3> part = {0, 0, 0};
  int digits = 0;
  for (std::size_t i = 0; i < part.size(); ++i) {
    part[i] = take_number(rest, digits);
    if (digits == 0 || digits > 2) return -1;
    if (rest.empty() || rest.front() != ':') {
      if (i == 0) return -1;
      break;
    }
    if (i < 2) rest.remove_prefix(1);
  }
  if (!rest.empty() && rest.front() == '.') {
    rest.remove_prefix(1);
    while (!rest.empty() && is_digit(rest.front())) rest.remove_prefix(1);
  }
  if (!rest.empty() || part[0] > 23 || part[1] > 59 || part[2] > 59) return -1;
  return part[0] * 3600 + part[1] * 60 + part[2];
}

}  // namespace

double Val(std::string_view text) {
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  const std::size_t length = number_length(text);
  return length == 0 ? 0 : parse_number(text.substr(0, length));
}

double Val(const Variant& value) {
  if (value.is_null()) throw Failure(Error::InvalidUseOfNull, "Invalid use of Null");
  if (auto* text = value.as<std::string>()) return Val(*text);
  return Val(text_of(value));
}

double strict_number(std::string_view text) {
  const std::string_view number = trim(text);
  const std::size_t length = number_length(number);
  if (length == 0 || length != number.size())
    throw Failure(Error::TypeMismatch,
                  "Type mismatch: \"" + std::string(text) + "\" is no number; expected digits with at most one point");
  return parse_number(number);
}

std::string number_text(double number) {
  if (number == 0) return "0";
  if (!std::isfinite(number)) throw Failure(Error::Overflow, "Overflow: a figure is not a finite number");
  if (number == std::trunc(number) && std::abs(number) < 1e15) return std::to_string(static_cast<long long>(number));
  // 15 significant digits in scientific form: [-]d.dddddddddddddde[+-]xx
  std::array<char, 40> buffer{};
  auto [end, problem] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::scientific, 14);
  std::string_view form(buffer.data(), static_cast<std::size_t>(end - buffer.data()));
  const bool negative = form.front() == '-';
  if (negative) form.remove_prefix(1);
  const std::size_t mark = form.find('e');
  int power = 0;
  std::string_view power_text = form.substr(mark + 1);
  if (power_text.front() == '+') power_text.remove_prefix(1);
  std::from_chars(power_text.data(), power_text.data() + power_text.size(), power);
  std::string digits(1, form.front());
  digits += form.substr(2, mark - 2);
  while (digits.size() > 1 && digits.back() == '0') digits.pop_back();
  const int count = static_cast<int>(digits.size());

  std::string text = negative ? "-" : "";
  if (power >= 15) {
    text += digits.substr(0, 1);
    if (count > 1) text += "." + digits.substr(1);
    text += "E+" + std::to_string(power);
  } else if (power < 0) {
    text += "0." + std::string(static_cast<std::size_t>(-power - 1), '0') + digits;
  } else if (count <= power + 1) {
    text += digits + std::string(static_cast<std::size_t>(power + 1 - count), '0');
  } else {
    text += digits.substr(0, static_cast<std::size_t>(power + 1)) + "." +
            digits.substr(static_cast<std::size_t>(power + 1));
  }
  return text;
}

std::string date_text(const Date& date) {
  std::array<char, 48> buffer{};
  std::snprintf(buffer.data(), buffer.size(), "%02d/%02d/%04d", date.day, date.month, date.year);
  return buffer.data();
}

Date parse_date(std::string_view text) {
  std::string_view rest = trim(text);
  std::array<int, 3> part{};
  std::array<int, 3> digits{};
  char separator = 0;
  for (std::size_t i = 0; i < 3; ++i) {
    part[i] = take_number(rest, digits[i]);
    if (digits[i] == 0 || digits[i] > 4) no_date(text);
    if (i < 2 && !take_separator(rest, separator)) no_date(text);
  }
  Date date;
  const bool year_first = digits[0] == 4;
  date.day = year_first ? part[2] : part[0];
  date.month = part[1];
  date.year = year_first ? part[0] : part[2];
  const int year_digits = year_first ? digits[0] : digits[2];
  if (digits[1] > 2 || (year_first ? digits[2] : digits[0]) > 2 || year_digits == 3 || year_digits == 1) no_date(text);
  if (year_digits == 2) date.year += date.year < 30 ? 2000 : 1900;
  if (date.year < 1 || date.month < 1 || date.month > 12 || date.day < 1 ||
      date.day > days_in_month(date.year, date.month))
    no_date(text);
  date.seconds = 0;
  if (!rest.empty()) {
    if (rest.front() != ' ' && rest.front() != 'T') no_date(text);
    rest.remove_prefix(1);
    date.seconds = parse_time(trim(rest));
    if (date.seconds < 0) no_date(text);
  }
  return date;
}

double serial_of(const Date& date) {
  return static_cast<double>(days_from_civil(date.year, date.month, date.day) - kSerialZero) + date.seconds / 86400.0;
}

Date date_of_serial(double serial) {
  if (!(serial > -657435 && serial < 2958466))
    throw Failure(Error::Overflow, "Overflow: " + number_text(serial) + " is no day of the calendar");
  const double day_floor = std::floor(serial);
  long long seconds = std::llround((serial - day_floor) * 86400);
  long long days = static_cast<long long>(day_floor) + kSerialZero;
  if (seconds == 86400) seconds = 0, ++days;
  const long long era = (days >= 0 ? days : days - 146096) / 146097;
  const long long doe = days - era * 146097;
  const long long yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const long long doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const long long mp = (5 * doy + 2) / 153;
  Date date;
  date.day = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  date.month = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  date.year = static_cast<int>(yoe + era * 400 + (date.month <= 2 ? 1 : 0));
  date.seconds = static_cast<int>(seconds);
  return date;
}

std::uint64_t name_hash(std::string_view name) {
  constexpr std::uint64_t kFold = 0x2020202020202020;  // the bit between the capitals of ASCII and their small letters
  std::uint64_t hash = name.size();
  while (!name.empty()) {
    std::uint64_t part = 0;
    const std::size_t bytes = std::min(name.size(), sizeof part);
    std::memcpy(&part, name.data(), bytes);
    hash = (hash ^ (part | kFold)) * 0x9E3779B97F4A7C15;
    hash ^= hash >> 32;
    name.remove_prefix(bytes);
  }
  return hash;
}

std::string lower_name(std::string_view name) {
  std::string lower(name);
  for (char& c : lower)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  return lower;
}

bool same_name(std::string_view left, std::string_view right) {
  if (left.size() != right.size()) return false;
  if (left == right) return true;  // mostly they are spelled alike
  for (std::size_t i = 0; i < left.size(); ++i) {
    const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    if (lower(left[i]) != lower(right[i])) return false;
  }
  return true;
}

std::string_view trim(std::string_view text) {
  while (!text.empty() && is_blank(text.front())) text.remove_prefix(1);
  while (!text.empty() && is_blank(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace dorvo::value
