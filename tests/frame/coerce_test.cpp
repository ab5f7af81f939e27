// What hosts hand in for Booleans, whole numbers and texts.
#include "frame/coerce.h"

#include <gtest/gtest.h>

namespace dorvo::frame {
namespace {

using value::Error;
using value::Failure;
using value::Variant;

TEST(Coerce, BooleanAndExactlyTrue) {
  struct Case {
    Variant given;
    bool is_true;
    bool is_exactly_true;
  };
  const Case cases[] = {
      {true, true, true}, {false, false, false}, {-1, true, true},     {1, true, false},
      {0, false, false},  {"True", true, true},  {"TRUE", true, true}, {"false", false, false},
      {"1", true, false}, {"-1", true, true},    {2.5, true, false},   {"0", false, false},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(boolean_of(c.given), c.is_true) << value::text_of(c.given);
    EXPECT_EQ(exactly_true(c.given), c.is_exactly_true) << value::text_of(c.given);
  }
}

TEST(Coerce, WholeNumbers) {
  struct Case {
    Variant given;
    std::int32_t expected;
  };
  const Case cases[] = {{7, 7},
                        {"12", 12},
                        {2.5, 2},
                        {3.5, 4},
                        {-2.5, -2},
                        {-0.5, 0},
                        {true, -1},
                        {"2147483647", 2147483647},
                        {2.4, 2},
                        {2.6, 3},
                        {-2147483648.0, INT32_MIN}};
  for (const Case& c : cases) EXPECT_EQ(long_of(c.given), c.expected) << value::text_of(c.given);
}

TEST(Coerce, Refused) {
  struct Case {
    void (*convert)(const Variant&);
    Variant given;
    Error error;
  };
  const auto boolean = [](const Variant& v) { boolean_of(v); };
  const auto whole = [](const Variant& v) { long_of(v); };
  const auto text = [](const Variant& v) { strict_text_of(v); };
  const Case cases[] = {
      {boolean, "yes", Error::TypeMismatch},
      {boolean, "", Error::TypeMismatch},
      {boolean, value::Null(), Error::InvalidUseOfNull},
      {whole, "abc", Error::TypeMismatch},
      {whole, "12x", Error::TypeMismatch},
      {whole, "", Error::TypeMismatch},
      {whole, 2147483648.0, Error::Overflow},
      {whole, "1e30", Error::Overflow},
      {whole, value::Null(), Error::InvalidUseOfNull},
      {text, value::Null(), Error::InvalidUseOfNull},
  };
  for (const Case& c : cases) {
    try {
      c.convert(c.given);
      ADD_FAILURE() << "taken: " << value::text_of(c.given);
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), c.error) << value::text_of(c.given);
    }
  }
}

}  // namespace
}  // namespace dorvo::frame
