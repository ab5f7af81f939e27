// UTF-8, one character at a time.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace dorvo::engine {

constexpr char32_t kReplacement = 0xFFFD;

// The character that starts at `at`, which moves behind it. A byte that begins no character reads as U+FFFD and
// counts alone, so that reading always goes on.
inline char32_t next_char(std::string_view text, std::size_t& at) {
  const auto byte = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
  const unsigned char first = byte(at++);
  if (first < 0x80) return first;
  const std::size_t more = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC2 ? 1 : 0;
  if (more == 0 || first > 0xF4 || at + more > text.size()) return kReplacement;
  char32_t character = first & (0x3Fu >> more);
  for (std::size_t i = 0; i < more; ++i) {
    if ((byte(at + i) & 0xC0) != 0x80) return kReplacement;
    character = (character << 6) | (byte(at + i) & 0x3Fu);
  }
  constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
  if (character < kSmallest[more] || character > 0x10FFFF || (character >= 0xD800 && character < 0xE000))
    return kReplacement;
  at += more;
  return character;
}

inline void append_char(std::string& text, char32_t character) {
  const auto put = [&](char32_t byte) { text += static_cast<char>(byte); };
  if (character < 0x80) return put(character);
  if (character < 0x800) {
    put(0xC0 | (character >> 6));
  } else if (character < 0x10000) {
    put(0xE0 | (character >> 12));
    put(0x80 | ((character >> 6) & 0x3F));
  } else {
    put(0xF0 | (character >> 18));
    put(0x80 | ((character >> 12) & 0x3F));
    put(0x80 | ((character >> 6) & 0x3F));
  }
  put(0x80 | (character & 0x3F));
}

}  // namespace dorvo::engine
