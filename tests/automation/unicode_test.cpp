// UTF-16 and UTF-8, whole and broken.
#include <gtest/gtest.h>

#include "automation/com.h"

namespace dorvo::automation {
namespace {

using namespace std::string_literals;

TEST(Unicode, RoundTrips) {
  struct Case {
    std::u16string wide;
    std::string narrow;
  };
  const Case cases[] = {
      {u"", ""},
      {u"Form 201"s, "Form 201"},
      {u"\u00E9\u07FF", "\xC3\xA9\xDF\xBF"},
      {u"\u0936\u20B9\uFFFD", "\xE0\xA4\xB6\xE2\x82\xB9\xEF\xBF\xBD"},
      {u"\U0001F600\U0010FFFF", "\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF"},
      {u"a\0b"s, "a\0b"s},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(utf8(c.wide), c.narrow);
    EXPECT_EQ(utf16(c.narrow), c.wide);
  }
}

TEST(Unicode, BrokenTextBecomesTheReplacementCharacter) {
  const std::string mark = "\xEF\xBF\xBD";
  const char16_t high = 0xD83D, low = 0xDE00;
  EXPECT_EQ(utf8({&high, 1}), mark);
  EXPECT_EQ(utf8({&low, 1}), mark);
  EXPECT_EQ(utf8(std::u16string{low, high}), mark + mark);
  EXPECT_EQ(utf8(std::u16string{high, u'a'}), mark + "a");

  EXPECT_EQ(utf16("\x80"), u"\uFFFD") << "a continuation alone";
  EXPECT_EQ(utf16("\xE0\xA4"), u"\uFFFD\uFFFD") << "cut off";
  EXPECT_EQ(utf16("\xC0\xAF"), u"\uFFFD\uFFFD") << "overlong";
  EXPECT_EQ(utf16("\xED\xA0\x80"), u"\uFFFD\uFFFD\uFFFD") << "half a pair";
  EXPECT_EQ(utf16("\xF4\x90\x80\x80"), u"\uFFFD\uFFFD\uFFFD\uFFFD") << "behind the last character";
  EXPECT_EQ(utf16("\xC3(a"), u"\uFFFD(a");
}

TEST(Unicode, StringsOfHostsTellTheirLength) {
  const std::u16string held = u"a\0b"s;
  BSTR text = SysAllocStringLen(held.data(), 3);
  EXPECT_EQ(SysStringLen(text), 3u);
  std::uint32_t bytes = 0;
  std::memcpy(&bytes, reinterpret_cast<const char*>(text) - 4, 4);
  EXPECT_EQ(bytes, 6u) << "the four bytes in front";
  EXPECT_EQ(text[3], u'\0');
  SysFreeString(text);
  EXPECT_EQ(SysStringLen(nullptr), 0u);
}

}  // namespace
}  // namespace dorvo::automation
