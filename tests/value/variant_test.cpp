#include "value/variant.h"

#include <gtest/gtest.h>

namespace dorvo::value {
namespace {

const Date kApril{2008, 4, 1, 0};

TEST(Variant, TextInABox) {
  struct Case {
    Variant value;
    const char* text;
  };
  const Case cases[] = {{Null{}, ""},
                        {true, "True"},
                        {false, "False"},
                        {12, "12"},
                        {-0.0, "0"},
                        {12.50, "12.5"},
                        {"NIL", "NIL"},
                        {kApril, "01/04/2008"},
                        {std::int64_t{9007199254740993}, "9007199254740993"}};
  for (const Case& c : cases) EXPECT_EQ(text_of(c.value), c.text);
}

TEST(Variant, NumberInArithmetic) {
  struct Case {
    Variant value;
    double number;
  };
  const Case cases[] = {{true, -1}, {false, 0}, {12, 12}, {1.5, 1.5}, {" 7 ", 7}, {kApril, 39539}};
  for (const Case& c : cases) EXPECT_EQ(number_of(c.value), c.number);
  EXPECT_THROW(number_of(Variant("")), Failure);
  EXPECT_THROW(number_of(Null{}), Failure);
}

TEST(Variant, NullGoesThroughArithmetic) {
  EXPECT_EQ(Variant(2) + Variant("3"), Variant(5.0));
  EXPECT_EQ(Variant(2) - Variant(true), Variant(3.0));
  EXPECT_TRUE((Variant(2) + Null{}).is_null());
  EXPECT_TRUE((Variant(Null{}) - Variant("no number")).is_null());
  Variant sum(1);
  sum += Variant(2.5);
  EXPECT_EQ(sum, Variant(3.5));
  sum += Null{};
  EXPECT_TRUE(sum.is_null());
  try {
    Variant("NIL") + Variant(1);
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.number(), Error::TypeMismatch);
  }
}

// The text of a double's 15 digits evens out 0.1 + 0.2; what a difference of large amounts leaves beyond them prints.
TEST(Variant, NoFigureIsRounded) {
  EXPECT_EQ(text_of(Variant(0.1) + 0.2), "0.3");
  EXPECT_EQ(text_of(Variant(10000000.25) - 9999999.5), "0.75");
  EXPECT_EQ(text_of(Variant(1234567.85) - 1234000.75), "567.100000000093");
}

TEST(Variant, ABitOfOneEqualsMinusOne) {
  EXPECT_TRUE(equals(Variant(true), -1));
  EXPECT_FALSE(equals(Variant(true), 1));
  EXPECT_TRUE(equals(Variant(false), 0));
}

TEST(Variant, NullMakesEveryComparisonFalse) {
  const Variant null;
  EXPECT_FALSE(equals(null, 0));
  EXPECT_FALSE(above(null, -1));
  EXPECT_FALSE(below(null, 1));
  EXPECT_FALSE(equals(null, ""));
  EXPECT_TRUE(is_empty(null));
}

TEST(Variant, TextComparesExactlyAndNumbersByValue) {
  EXPECT_TRUE(equals(Variant("12.50"), 12.5));
  EXPECT_TRUE(above(Variant("2"), 1.5));
  EXPECT_TRUE(below(Variant(-1), 0));
  EXPECT_TRUE(equals(Variant("BASIC"), "BASIC"));
  EXPECT_FALSE(equals(Variant("Basic"), "BASIC"));
  EXPECT_TRUE(equals(Variant(12.5), "12.5"));
  EXPECT_TRUE(is_empty(Variant("")));
  EXPECT_FALSE(is_empty(Variant(" ")));
  EXPECT_FALSE(is_empty(Variant(0)));
  EXPECT_FALSE(Variant(1) == Variant(1.0));
}

TEST(Failure, TellsItsPlace) {
  const Failure failure = Failure(Error::InvalidUseOfNull, "Invalid use of Null").at("Form201, Detail_Format");
  EXPECT_EQ(static_cast<int>(failure.number()), 94);
  EXPECT_EQ(failure.description(), "Form201, Detail_Format: Invalid use of Null");
}

}  // namespace
}  // namespace dorvo::value
