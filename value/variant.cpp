#include "value/variant.h"

#include <algorithm>
#include <cmath>

#include "value/text.h"

namespace dorvo::value {
namespace {

// Amounts are decimal and doubles are not. Where two sides cancel, the result is rounded to the digits that the larger
// side has, so that 1234567.85 - 1234000.75 is 567.1 and not 567.100000000093.
double sum(double left, double right) {
  const double plain = left + right;
  const double larger = std::max(std::abs(left), std::abs(right));
  if (std::abs(plain) >= larger || !std::isfinite(plain)) return plain;
  const int decimals = 14 - static_cast<int>(std::floor(std::log10(larger)));
  if (decimals < 0 || decimals > 22) return plain;  // beyond 22 a power of ten is no exact double
  const double scale = std::pow(10.0, decimals);
  return std::round(plain * scale) / scale;
}

}  // namespace

std::string text_of(const Variant& value) {
  if (auto* flag = value.as<bool>()) return *flag ? "True" : "False";
  if (auto* whole = value.as<std::int64_t>()) return std::to_string(*whole);
  if (auto* number = value.as<double>()) return number_text(*number);
  if (auto* text = value.as<std::string>()) return *text;
  if (auto* date = value.as<Date>()) return date_text(*date);
  return {};
}

double number_of(const Variant& value) {
  if (auto* flag = value.as<bool>()) return *flag ? -1 : 0;
  if (auto* whole = value.as<std::int64_t>()) return static_cast<double>(*whole);
  if (auto* number = value.as<double>()) return *number;
  if (auto* text = value.as<std::string>()) return strict_number(*text);
  if (auto* date = value.as<Date>()) return serial_of(*date);
  throw Failure(Error::InvalidUseOfNull, "Invalid use of Null");
}

Variant operator+(const Variant& left, const Variant& right) {
  if (left.is_null() || right.is_null()) return Null{};
  return sum(number_of(left), number_of(right));
}

Variant operator-(const Variant& left, const Variant& right) {
  if (left.is_null() || right.is_null()) return Null{};
  return sum(number_of(left), -number_of(right));
}

Variant& operator+=(Variant& left, const Variant& right) {
  return left = left + right;
}

bool equals(const Variant& value, double number) {
  return !value.is_null() && number_of(value) == number;
}

bool above(const Variant& value, double number) {
  return !value.is_null() && number_of(value) > number;
}

bool below(const Variant& value, double number) {
  return !value.is_null() && number_of(value) < number;
}

bool equals(const Variant& value, std::string_view text) {
  return !value.is_null() && text_of(value) == text;
}

bool is_empty(const Variant& value) {
  auto* text = value.as<std::string>();
  return value.is_null() || (text && text->empty());
}

}  // namespace dorvo::value
