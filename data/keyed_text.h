// Query texts that differ only in the key they end with: "... where cmasterid=41".
//
// Reports ask the same few questions for one record after another. Their text is told apart into the part that stays
// and the key, so that what was worked out for the part once (checked, translated, prepared) serves for every key.
#pragma once

#include <algorithm>
#include <cctype>
#include <string_view>

namespace dorvo::data {

struct KeyedText {
  std::string_view text;  // up to the key and with the "=" before it; all of it when there is no key
  std::string_view key;   // decimal digits that fit 64 bits; empty when the text ends otherwise
};

inline KeyedText split_key(std::string_view select) {
  constexpr std::size_t kMostDigits = 18;
  const auto is_digit = [](unsigned char c) { return std::isdigit(c) != 0; };
  const auto digits =
      static_cast<std::size_t>(std::find_if_not(select.rbegin(), select.rend(), is_digit) - select.rbegin());
  const std::string_view text = select.substr(0, select.size() - digits);
  if (digits == 0 || digits > kMostDigits || !text.ends_with('=')) return {select, {}};
  return {text, select.substr(text.size())};
}

}  // namespace dorvo::data
