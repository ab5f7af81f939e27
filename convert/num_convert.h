// Amounts in Indian words and hyphenated registration numbers, as they stand on the statutory forms.
//
// All text in, text out. The spellings and blanks of the words, odd ones included, are those of the forms.
#pragma once

#include <string>
#include <string_view>

namespace dorvo::convert {

class CNumConvert {
 public:
  // "12345.67" gives "Twelve Thousand Three Hundred Fourty Five Rupees  And Sixty Seven Paise only".
  // Meant for amounts above 0 of at most eleven digits before the point; callers test for that.
  std::string TrasToEng(std::string_view NumberStr) const;

  // "27123456789" gives "271234-5-6789"; empty text stays empty.
  std::string FormatBSTCST(std::string_view num) const;

  // Words in Western groups of three digits.
  std::string ToWords(std::string_view NumberStr) const;
};

}  // namespace dorvo::convert
