#include "value/variant.h"

#include "value/text.h"

namespace dorvo::value {

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
  return number_of(left) + number_of(right);
}

Variant operator-(const Variant& left, const Variant& right) {
  if (left.is_null() || right.is_null()) return Null{};
  return number_of(left) - number_of(right);
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
