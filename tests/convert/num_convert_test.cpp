#include "convert/num_convert.h"

#include <gtest/gtest.h>

namespace dorvo::convert {
namespace {

struct Case {
  const char* in;
  const char* out;
};

TEST(NumConvert, AmountsInWords) {
  static constexpr Case kCases[] = {
      {"0", " Rupees only"},
      {"0.5", " Rupees  And Fifty Paise only"},
      {"1", "One Rupees only"},
      {"21", "Twenty One Rupees only"},
      {"31", "Thirty One  Rupees only"},
      {"100", "Hundred Rs.only"},
      {"100.5", "One Hundred  Rupees  And Fifty Paise only"},
      {"101", "One Hundred One Rupees only"},
      {"200", "Two Hundred  Rupees only"},
      {"5000", "Five Thousand  Rupees only"},
      {"12345.67", "Twelve Thousand Three Hundred Fourty Five Rupees  And Sixty Seven Paise only"},
      {"120000", "One Lac Twenty Thousand  Rupees only"},
      {"9999999.99",
       "Ninety Nine Lac Ninety Nine Thousand Nine Hundred Ninety Nine Rupees  And Ninety Nine Paise only"},
      {"10000000", "One Rupecrore  Rupees only"},
      {"12000000", "One Rupecrore Twenty Lac  Rupees only"},
      {"1000000000", "Hundred Crore  Rupees only"},
      // The words as the forms spell them.
      {"19", "Ninteen Rupees only"},
      {"9", "Nine Rupees only"},
      {"44", "Fourty Four Rupees only"},
      {"131", "One Hundred Thirty One  Rupees only"},
      {"0.31", " Rupees  And Thirty One  Paise only"},
      // Two decimals, halves away from zero on the decimal text.
      {"12.345", "Twelve Rupees  And Thirty Five Paise only"},
      {"12.344", "Twelve Rupees  And Thirty Four Paise only"},
      {"0.285", " Rupees  And Twenty Nine Paise only"},
      {"99.995", "Hundred Rs.only"},
      {"999.999", "One Thousand  Rupees only"},
      {"0.004", " Rupees only"},
      // A crore part of two digits, of four digits (itself above hundred), and the largest amount.
      {"250000000", "Twenty Five Rupecrore  Rupees only"},
      {"12340000000", "One Thousand Two Hundred Thirty Four Rupecrore  Rupees only"},
      {"99999999999",
       "Nine Thousand Nine Hundred Ninety Nine Rupecrore Ninety Nine Lac Ninety Nine Thousand Nine "
       "Hundred Ninety Nine Rupees only"},
      // Texts that are no amounts.
      {"", " Rupees only"},
      {"NIL", " Rupees only"},
      // A sign and a twelfth digit push every field one place to the right and drop the paise.
      {"-12345.67", "One Thousand Two Hundred Thirty Four Rupees only"},
      {"123456789012",
       "One Thousand Two Hundred Thirty Four Rupecrore Fifty Six Lac Seventy Eight Thousand Nine "
       "Hundred One Rupees only"},
  };
  for (const Case& c : kCases) EXPECT_EQ(CNumConvert().TrasToEng(c.in), c.out) << c.in;
}

TEST(NumConvert, HostileAmountsEndInSomeWords) {
  for (const char* text : {"1e308", "-1e308", "9e99,", "1.2.3", "-5-5-5-5-5", "................", "e", "-", "+.5",
                           "1e15", "999999999999999999999999", "0x41", "\xE0\xA4\xA8"})
    EXPECT_TRUE(CNumConvert().TrasToEng(text).ends_with("only")) << text;
}

TEST(NumConvert, RegistrationNumbers) {
  static constexpr Case kCases[] = {
      {"", ""},
      {"12", "12--"},
      {"123456", "123456--"},
      {"1234567", "123456-7-"},
      {"27123456789", "271234-5-6789"},
      {"27123456789V", "271234-5-6789V"},
      {"271234-5-6789", "271234---5-6789"},
      {"\xE0\xA4\x95\xE0\xA4\x95", "\xE0\xA4\x95\xE0\xA4\x95--"},
      {"12345\xE0\xA4\x95\xE0\xA4\x96ZZ", "12345\xE0\xA4\x95-\xE0\xA4\x96-ZZ"},
  };
  for (const Case& c : kCases) EXPECT_EQ(CNumConvert().FormatBSTCST(c.in), c.out) << c.in;
}

TEST(NumConvert, WesternWords) {
  static constexpr Case kCases[] = {
      {"0", "zero!"},
      {"", "zero!"},
      {"abc", "zero!"},
      {"7", "seven only"},
      {"10", "ten only"},
      {"19", "nineteen only"},
      {"40", "fourty only"},
      {" 1,234 ", "one thousand two hundred thirty four only"},
      {"100", "one hundred only"},
      {"1000000", "one million only"},
      {"1000001.99", "one million one only"},
      {"2,015,000,000", "two billion fifteen million only"},
      {"999999999999999",
       "nine hundred ninety nine trillion nine hundred ninety nine billion nine hundred ninety nine "
       "million nine hundred ninety nine thousand nine hundred ninety nine only"},
      {"5000000000000007", "seven"},
  };
  for (const Case& c : kCases) EXPECT_EQ(CNumConvert().ToWords(c.in), c.out) << c.in;
}

TEST(NumConvert, EveryReplacedCommaGivesTheMessageLoopATurn) {
  int turns = 0;
  EXPECT_EQ(CNumConvert([&] { ++turns; }).ToWords("1,000,000"), "one million only");
  EXPECT_EQ(turns, 2);
}

}  // namespace
}  // namespace dorvo::convert
