#include "frame/coerce.h"

#include <cmath>
#include <limits>

#include "value/text.h"

namespace dorvo::frame {
namespace {

// True is -1 as a number.
double boolean_number(const value::Variant& value) {
  if (const auto* text = value.as<std::string>()) {
    if (value::same_name(*text, "True")) return -1;
    if (value::same_name(*text, "False")) return 0;
  }
  return value::number_of(value);
}

}  // namespace

bool boolean_of(const value::Variant& value) {
  return boolean_number(value) != 0;
}

bool exactly_true(const value::Variant& value) {
  return boolean_number(value) == -1;
}

std::int32_t long_of(const value::Variant& value) {
  const double number = value::number_of(value);
  double rounded = std::floor(number + 0.5);
  if (rounded - number == 0.5 && std::fmod(rounded, 2) != 0) rounded -= 1;
  if (!(rounded >= std::numeric_limits<std::int32_t>::min() && rounded <= std::numeric_limits<std::int32_t>::max())) {
    throw value::Failure(value::Error::Overflow, "Overflow: " + value::text_of(value) + " is no 32-bit whole number");
  }
  return static_cast<std::int32_t>(rounded);
}

std::string strict_text_of(const value::Variant& value) {
  if (value.is_null()) throw value::Failure(value::Error::InvalidUseOfNull, "Invalid use of Null");
  return value::text_of(value);
}

}  // namespace dorvo::frame
