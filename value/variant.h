// The value of a column, a property or a box: NULL, Boolean, integer, double, text or date.
//
// A plain value type, copied freely. Text is UTF-8. Nothing here asks the machine for its locale or its
// time zone.
#pragma once

#include <compare>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

#include "value/failure.h"

namespace dorvo::value {

struct Null {
  friend bool operator==(Null, Null) { return true; }
};

// A day of the proleptic Gregorian calendar with the seconds since its midnight.
struct Date {
  int year = 1899;
  int month = 12;
  int day = 30;
  int seconds = 0;
  friend auto operator<=>(const Date&, const Date&) = default;
};

class Variant {
 public:
  Variant() = default;
  Variant(Null) {}
  Variant(bool flag) : held_(flag) {}
  template <class Int>
  requires std::is_integral_v<Int> &&(!std::is_same_v<Int, bool>)Variant(Int number)
      : held_(static_cast<std::int64_t>(number)) {}
  Variant(double number) : held_(number) {}
  Variant(std::string text) : held_(std::move(text)) {}
  Variant(std::string_view text) : held_(std::string(text)) {}
  Variant(const char* text) : held_(std::string(text)) {}
  Variant(Date date) : held_(date) {}

  bool is_null() const { return std::holds_alternative<Null>(held_); }

  // nullptr when the value is of another kind.
  template <class Kind>
  const Kind* as() const {
    return std::get_if<Kind>(&held_);
  }

  friend bool operator==(const Variant&, const Variant&) = default;

 private:
  std::variant<Null, bool, std::int64_t, double, std::string, Date> held_;
};

// The text of a value in a box or in a join of texts: NULL is empty, True and False are spelled out,
// dates are dd/mm/yyyy, numbers follow number_text().
std::string text_of(const Variant& value);

// The value as a number in arithmetic: True is -1, a date is its count of days since 30/12/1899, text is
// read strictly. Fails with TypeMismatch on other text and with InvalidUseOfNull on NULL.
double number_of(const Variant& value);

// Sum and difference as the statutory computations take them: NULL on either side gives NULL, so that the
// failure comes where the result is written into a box. Plain doubles: no figure is rounded on its way.
Variant operator+(const Variant& left, const Variant& right);
Variant operator-(const Variant& left, const Variant& right);
Variant& operator+=(Variant& left, const Variant& right);

// Comparisons of a condition. NULL makes every one of them false; text beside a number is read strictly.
bool equals(const Variant& value, double number);
bool above(const Variant& value, double number);
bool below(const Variant& value, double number);

// Exact in case; NULL is equal to no text.
bool equals(const Variant& value, std::string_view text);

// Length in characters as a test of emptiness needs it: NULL counts as empty.
bool is_empty(const Variant& value);

}  // namespace dorvo::value
