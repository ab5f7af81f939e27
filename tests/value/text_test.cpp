#include "value/text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <limits>

namespace dorvo::value {
namespace {

template <class Call>
void expect_failure(Error number, const std::string& about, Call call) {
  try {
    call();
    ADD_FAILURE() << "no failure: " << about;
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.number(), number) << about;
  }
}

TEST(Val, ReadsTheLeadingNumber) {
  struct Case {
    const char* text;
    double number;
  };
  static constexpr Case kCases[] = {
      {"", 0},
      {"NIL", 0},
      {"12", 12},
      {"12.5", 12.5},
      {"  \t\r\n7", 7},
      {"-3", -3},
      {"+4", 4},
      {".5", .5},
      {"5.", 5},
      {"-.25kg", -.25},
      {"1,234", 1},
      {"12.5.6", 12.5},
      {"1E3", 1000},
      {"1e+2x", 100},
      {"1e", 1},
      {"1e-", 1},
      {"1E-2", .01},
      {"--1", 0},
      {"- 1", 0},
      {".", 0},
      {"+", 0},
      {"e5", 0},
      {"12 34", 12},
      {"0x1F", 0},
      {"inf", 0},
      {"nan", 0},
      {"\xC2\xA0"
       "5",
       0},
      {"00012", 12},
      {"1e-400", 0},
      {"0e999999999999", 0},
      {"4.9e-324", 4.9e-324},
  };
  for (const Case& c : kCases) EXPECT_EQ(Val(c.text), c.number) << c.text;
  EXPECT_EQ(Val(std::string(400, '0') + "7"), 7);
  EXPECT_EQ(Val("0." + std::string(400, '0') + "7"), 0);
}

TEST(Val, OfOtherValues) {
  EXPECT_EQ(Val(Variant("12.5%")), 12.5);
  EXPECT_EQ(Val(Variant(7)), 7);
  EXPECT_EQ(Val(Variant(0.1 + 0.2)), 0.3);  // by its text of 15 digits
  EXPECT_EQ(Val(Variant(true)), 0);         // the text "True"
  EXPECT_EQ(Val(Variant(Date{2008, 4, 17, 0})), 17);
  expect_failure(Error::InvalidUseOfNull, "NULL", [] { Val(Variant()); });
}

TEST(Val, BeyondTheLargestNumberIsAnOverflow) {
  for (const std::string& text : {std::string("1e309"), std::string("-1e999999999999999999999"), std::string(400, '9'),
                                  std::string(700, '9') + "e-10", std::string(".1e400")})
    expect_failure(Error::Overflow, text, [&] { Val(text); });
}

TEST(Val, DoesNotAskTheLocale) {
  const std::string before = std::setlocale(LC_ALL, nullptr);
  for (const char* name : {"de_DE.UTF-8", "fr_FR.UTF-8"}) std::setlocale(LC_ALL, name);
  EXPECT_EQ(Val("1.5"), 1.5);
  EXPECT_EQ(number_text(1234567.25), "1234567.25");
  std::setlocale(LC_ALL, before.c_str());
}

TEST(StrictNumber, TakesNumbersOnly) {
  struct Case {
    const char* text;
    double number;
  };
  static constexpr Case kCases[] = {{"0", 0},      {" 12.50 ", 12.5}, {"-7", -7}, {"+7", 7},
                                    {"1e3", 1000}, {".5", .5},        {"5.", 5}};
  for (const Case& c : kCases) EXPECT_EQ(strict_number(c.text), c.number) << c.text;
  for (const char* text : {"", " ", "NIL", "12 Nos", "1,234", "1 2", "--1", "1e", ".", "0x10", "\xE0\xA5\xAB"})
    expect_failure(Error::TypeMismatch, text, [&] { strict_number(text); });
}

TEST(NumberText, PlainDecimalOfFifteenDigits) {
  struct Case {
    double number;
    const char* text;
  };
  static constexpr Case kCases[] = {
      {0, "0"},
      {-0.0, "0"},
      {5, "5"},
      {-12.5, "-12.5"},
      {0.1 + 0.2, "0.3"},
      {1 - 0.9, "0.1"},
      {100, "100"},
      {1234567.891, "1234567.891"},
      {0.05, "0.05"},
      {0.0000001, "0.0000001"},
      {1.0 / 3, "0.333333333333333"},
      {2.0 / 3, "0.666666666666667"},
      {999999999999999.0, "999999999999999"},
      {99999999999999.94, "99999999999999.9"},
      {99999999999999.96, "100000000000000"},
      {999999999999999.9, "1E+15"},
      {1e15, "1E+15"},
      {1.5e15, "1.5E+15"},
      {-1.23456789012345678e20, "-1.23456789012346E+20"},
      {123456789012345678.0, "1.23456789012346E+17"},
      {1e308, "1E+308"},
  };
  for (const Case& c : kCases) EXPECT_EQ(number_text(c.number), c.text);
  expect_failure(Error::Overflow, "inf", [] { number_text(std::numeric_limits<double>::infinity()); });
  expect_failure(Error::Overflow, "nan", [] { number_text(std::nan("")); });
}

TEST(Dates, Texts) {
  struct Case {
    const char* text;
    Date date;
  };
  static constexpr Case kCases[] = {
      {"01/04/2008", {2008, 4, 1, 0}},
      {"1-4-2008", {2008, 4, 1, 0}},
      {"1.4.08", {2008, 4, 1, 0}},
      {"31/12/29", {2029, 12, 31, 0}},
      {"01/01/30", {1930, 1, 1, 0}},
      {"01/01/99", {1999, 1, 1, 0}},
      {"01/01/00", {2000, 1, 1, 0}},
      {"29/02/2000", {2000, 2, 29, 0}},
      {"2008-04-01", {2008, 4, 1, 0}},
      {"2008/04/01", {2008, 4, 1, 0}},
      {" 13/04/2008 ", {2008, 4, 13, 0}},
      {"01/04/2008 23:59:59", {2008, 4, 1, 86399}},
      {"2008-04-01T06:00", {2008, 4, 1, 21600}},
      {"2008-04-01 00:00:00.000", {2008, 4, 1, 0}},
  };
  for (const Case& c : kCases) EXPECT_EQ(parse_date(c.text), c.date) << c.text;
  for (const char* text : {"",
                           "NIL",
                           "29/02/1900",
                           "30/02/2008",
                           "31/04/2008",
                           "00/01/2008",
                           "01/13/2008",
                           "1/4",
                           "1/4/8",
                           "1/4/208",
                           "001/04/2008",
                           "01/04-2008",
                           "2008-4-1-1",
                           "01/04/2008 24:00",
                           "01/04/2008 12",
                           "01/04/2008x",
                           "01/04/20080",
                           "01/04/0000",
                           "99999999999/1/2008",
                           "2008-04-01 1:2:3:4"})
    expect_failure(Error::TypeMismatch, text, [&] { parse_date(text); });
}

TEST(Dates, PrintDayFirst) {
  EXPECT_EQ(date_text({2008, 4, 1, 3600}), "01/04/2008");
  EXPECT_EQ(date_text({987, 12, 31, 0}), "31/12/0987");
}

TEST(Dates, SerialNumbers) {
  struct Case {
    Date date;
    double serial;
  };
  static constexpr Case kCases[] = {
      {{1899, 12, 30, 0}, 0},         {{1899, 12, 29, 0}, -1},   {{1900, 3, 1, 0}, 61},       {{2000, 1, 1, 0}, 36526},
      {{2008, 4, 1, 43200}, 39539.5}, {{100, 1, 1, 0}, -657434}, {{9999, 12, 31, 0}, 2958465}};
  for (const Case& c : kCases) {
    EXPECT_EQ(serial_of(c.date), c.serial);
    EXPECT_EQ(date_of_serial(c.serial), c.date);
  }
  // The last second of a day does not become the next day, and no second is lost on the way.
  for (const int second : {1, 59, 3599, 43199, 86399})
    EXPECT_EQ(date_of_serial(serial_of({2009, 3, 31, second})), (Date{2009, 3, 31, second}));
  for (const double serial : {-657435.0, 2958466.0, std::nan("")})
    expect_failure(Error::Overflow, "serial", [&] { date_of_serial(serial); });
}

TEST(Names, IgnoreTheCaseOfAsciiOnly) {
  EXPECT_TRUE(same_name("SetOFfCFCST", "SetoffCFCST"));
  EXPECT_FALSE(same_name("Name", "Name1"));
  EXPECT_FALSE(same_name("\xC3\x84", "\xC3\xA4"));
  EXPECT_FALSE(same_name("@", "`"));
  EXPECT_EQ(lower_name("TinVAT[]"), "tinvat[]");
}

}  // namespace
}  // namespace dorvo::value
