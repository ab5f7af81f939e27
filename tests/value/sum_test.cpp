// Sums of amounts: exact to the paisa where doubles alone are not.
#include <gtest/gtest.h>

#include "value/text.h"
#include "value/variant.h"

namespace dorvo::value {
namespace {

struct Case {
  Variant left;
  Variant right;
  const char* sum;
  const char* difference;
};

TEST(Sum, KeepsPaise) {
  const Case cases[] = {
      {0.1, 0.2, "0.3", "-0.1"},
      {1234567.85, 1234000.75, "2468568.6", "567.1"},
      {10000000.35, 9999999.30, "19999999.65", "1.05"},
      {Variant(0.1) + 0.2, 0.3, "0.6", "0"},
      {99999999999.99, 99999999999.98, "199999999999.97", "0.01"},
      {-250.25, -250.5, "-500.75", "0.25"},
      {-1234567.85, 1234000.75, "-567.1", "-2468568.6"},
      {1.0 / 3, 0.3, "0.633333333333333", "0.033333333333333"},
      {0, 0, "0", "0"},
      {7, 1e-20, "7", "7"},
      {"12.5", true, "11.5", "13.5"},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(text_of(each.left + each.right), each.sum);
    EXPECT_EQ(text_of(each.left - each.right), each.difference);
  }
}

TEST(Sum, IsNullWhenASideIs) {
  EXPECT_TRUE((Variant(1) + Null{}).is_null());
  EXPECT_TRUE((Null{} - Variant(1)).is_null());
}

}  // namespace
}  // namespace dorvo::value
