// Amounts in Indian words and hyphenated registration numbers, as they stand on the statutory forms.
//
// All text in, text out. The spellings and blanks of the words, odd ones included, are those of the forms.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace dorvo::convert {

class CNumConvert {
 public:
  // `yield` gives the message loop a turn while a long text is prepared; none is fine.
  explicit CNumConvert(std::function<void()> yield = {}) : yield_(std::move(yield)) {}

  // "12345.67" gives "Twelve Thousand Three Hundred Fourty Five Rupees  And Sixty Seven Paise only".
  // Meant for amounts above 0 of at most eleven digits before the point; callers test for that. Other numbers give the
  // wrong words that they always gave; a text that is no number gives " Rupees only".
  std::string TrasToEng(std::string_view NumberStr) const;

  // "27123456789" gives "271234-5-6789"; empty text stays empty.
  std::string FormatBSTCST(std::string_view num) const;

  // Words in Western groups of three digits: "1,234" gives "one thousand two hundred thirty four only". Paise are cut
  // off; more than fifteen digits give the words of the last fifteen alone.
  std::string ToWords(std::string_view NumberStr) const;

 private:
  std::string replaced(std::string text, std::string_view search, std::string_view by) const;

  std::function<void()> yield_;
};

}  // namespace dorvo::convert
