#include "convert/num_convert.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

#include "value/text.h"

namespace dorvo::convert {
namespace {

using value::Val;

// "00000000000.00": eleven digits before the point and two behind it, halves away from zero. The sign and a twelfth
// digit have no room and push all else one place to the right.
constexpr std::size_t kIntegerDigits = 11;

// The decimal digits of a number without exponent and sign.
std::string plain_digits(double number) {
  std::string text = value::number_text(std::abs(number));
  const std::size_t mark = text.find('E');
  if (mark == std::string::npos) return text;
  const auto power = static_cast<std::size_t>(Val(text.substr(mark + 2)));
  std::string digits = text.substr(0, mark);
  std::erase(digits, '.');
  return digits + std::string(power + 1 - digits.size(), '0');
}

std::string add_one(std::string digits) {
  for (std::size_t at = digits.size(); at-- > 0;) {
    if (digits[at] != '9') {
      ++digits[at];
      return digits;
    }
    digits[at] = '0';
  }
  return "1" + digits;
}

std::string amount_digits(std::string_view text) {
  double number = 0;
  try {
    number = value::strict_number(text);
  } catch (const value::Failure&) {
    return std::string(text);
  }
  std::string digits = plain_digits(number);
  const std::size_t point = std::min(digits.find('.'), digits.size());
  std::string decimals = point < digits.size() ? digits.substr(point + 1) : "";
  decimals.resize(std::max<std::size_t>(decimals.size(), 3), '0');
  std::string hundredths = digits.substr(0, point) + decimals.substr(0, 2);
  if (decimals[2] >= '5') hundredths = add_one(hundredths);
  if (hundredths.size() < kIntegerDigits + 2) hundredths.insert(0, kIntegerDigits + 2 - hundredths.size(), '0');
  hundredths.insert(hundredths.size() - 2, ".");
  return (number < 0 ? "-" : "") + hundredths;
}

// Characters of S counted from 1, fewer at its end.
std::string_view characters(const std::string& text, std::size_t from, std::size_t count) {
  return from > text.size() ? std::string_view() : std::string_view(text).substr(from - 1, count);
}

// The word of a number from 0 to 99, empty for 0. The misspelt ones, the capitals and the blank behind "thirty one" are
// those of the forms.
std::string indian_word(std::size_t number) {
  static constexpr std::array<const char*, 20> kOnes = {
      "",    "One",    "Two",    "Three",    "Four",     "Five",    "Six",     "Seven",     "Eight",    "nine",
      "ten", "eleven", "Twelve", "thirteen", "Fourteen", "Fifteen", "Sixteen", "Seventeen", "Eighteen", "Ninteen"};
  static constexpr std::array<const char*, 8> kTens = {"Twenty", "thirty",  "fourty", "fifty",
                                                       "sixty",  "seventy", "eighty", "ninety"};
  if (number < kOnes.size()) return kOnes[number];
  std::string word = kTens[number / 10 - 2];
  if (number % 10 != 0) word += " " + value::lower_name(kOnes[number % 10]);
  return number == 31 ? word + " " : word;
}

std::string capitalised(std::string text) {
  bool first = true;
  for (char& c : text) {
    const bool lower = c >= 'a' && c <= 'z';
    const bool upper = c >= 'A' && c <= 'Z';
    if (first && lower) c = static_cast<char>(c - 'a' + 'A');
    if (!first && upper) c = static_cast<char>(c - 'A' + 'a');
    first = c == ' ';
  }
  return text;
}

// Where character number `count` of a UTF-8 text ends.
std::size_t end_of_characters(std::string_view text, std::size_t count) {
  std::size_t at = 0;
  for (; count > 0 && at < text.size(); --count)
    for (++at; at < text.size() && (static_cast<unsigned char>(text[at]) & 0xC0) == 0x80;) ++at;
  return at;
}

void add_word(std::string& words, std::string_view word) {
  if (word.empty()) return;
  if (!words.empty()) words += ' ';
  words += word;
}

// Three characters in words; a character that is no digit adds none.
std::string group_words(std::string_view group) {
  static constexpr std::array<const char*, 10> kOnes = {"",     "one", "two",   "three", "four",
                                                        "five", "six", "seven", "eight", "nine"};
  static constexpr std::array<const char*, 10> kTeens = {"ten",     "eleven",  "twelve",    "thirteen", "fourteen",
                                                         "fifteen", "sixteen", "seventeen", "eighteen", "nineteen"};
  static constexpr std::array<const char*, 10> kTens = {"",      "",      "twenty",  "thirty", "fourty",
                                                        "fifty", "sixty", "seventy", "eighty", "ninety"};
  const auto digit = [&](std::size_t at) {
    return static_cast<std::size_t>(group[at] >= '0' && group[at] <= '9' ? group[at] - '0' : 0);
  };
  std::string words;
  if (digit(0) != 0) add_word(words, std::string(kOnes[digit(0)]) + " hundred");
  if (digit(1) == 1) {
    add_word(words, kTeens[digit(2)]);
  } else {
    add_word(words, kTens[digit(1)]);
    add_word(words, kOnes[digit(2)]);
  }
  return words;
}

}  // namespace

std::string CNumConvert::TrasToEng(std::string_view NumberStr) const {
  const std::string amount = amount_digits(NumberStr);
  const auto word = [&](std::size_t from, std::size_t count) {
    const double number = std::nearbyint(Val(characters(amount, from, count)));
    return indian_word(number > 0 && number < 100 ? static_cast<std::size_t>(number) : 0);
  };
  const auto part = [&](std::size_t from, std::size_t count, const char* unit) {
    return Val(characters(amount, from, count)) != 0 ? word(from, count) + unit : std::string();
  };

  std::string result;
  if (const double crores = Val(characters(amount, 1, 4)); crores != 0) {
    // Cut as if the inner text ended in "rupees "; it ends in " Rupees only", and the forms print what remains.
    constexpr std::size_t kCut = 7;
    result = TrasToEng(value::number_text(crores));
    result.resize(result.size() - kCut);
    result += "crore ";
  }
  result += part(5, 2, " lac ") + part(7, 2, " thousand ") + part(9, 1, " hundred ") + part(10, 2, "") + " rupees ";
  if (characters(amount, 12, 1) == "." && Val(characters(amount, 13, 2)) != 0)
    result += " and " + word(13, 2) + " paise ";
  if (Val(amount) == 100) result = "hundred rs.";
  return capitalised(result) + "only";
}

std::string CNumConvert::FormatBSTCST(std::string_view num) const {
  if (num.empty()) return {};
  const std::size_t sixth = end_of_characters(num, 6);
  const std::size_t seventh = end_of_characters(num, 7);
  std::string text(num.substr(0, sixth));
  text += "-";
  text += num.substr(sixth, seventh - sixth);
  text += "-";
  text += num.substr(seventh);
  return text;
}

std::string CNumConvert::ToWords(std::string_view NumberStr) const {
  static constexpr std::array<const char*, 5> kNames = {"", " thousand", " million", " billion", " trillion"};
  const std::string number = replaced(std::string(NumberStr), ",", "");
  std::string digits(value::trim(number));
  if (Val(digits) == 0) return "zero!";
  digits.resize(std::min(digits.find('.'), digits.size()));
  digits.insert(0, (3 - digits.size() % 3) % 3, '0');

  std::string words;
  for (std::size_t group = 0; 3 * group < digits.size(); ++group) {
    const std::string_view figures = std::string_view(digits).substr(digits.size() - 3 * (group + 1), 3);
    if (figures == "000") continue;
    if (group >= kNames.size()) return words;
    std::string front = group_words(figures) + kNames[group];
    add_word(front, words);
    words = std::move(front);
  }
  return words + " only";
}

std::string CNumConvert::replaced(std::string text, std::string_view search, std::string_view by) const {
  for (std::size_t at = 0; (at = text.find(search, at)) != std::string::npos; at += by.size()) {
    text.replace(at, search.size(), by);
    if (yield_) yield_();
  }
  return text;
}

}  // namespace dorvo::convert
