// The single-byte code of simple Latin fonts in a PDF (WinAnsiEncoding).
#pragma once

#include <cstdint>

namespace dorvo::export_ {

// What 0x80 to 0x9F stand for; 0 where the code has no character.
constexpr char16_t kWinAnsiHigh[32] = {0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                       0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,
                                       0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                       0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

// The character of a code, 0 when it has none. The soft hyphen, which shows only at line ends, counts as none.
constexpr char32_t of_win_ansi(std::uint8_t code) {
  if (code < 0x20 || code == 0x7F || code == 0xAD) return 0;
  return code >= 0x80 && code < 0xA0 ? kWinAnsiHigh[code - 0x80] : code;
}

// The code of a character, 0 when it has none.
constexpr std::uint8_t to_win_ansi(char32_t character) {
  if (character < 0x100)
    return of_win_ansi(static_cast<std::uint8_t>(character)) == character ? static_cast<std::uint8_t>(character)
                                                                          : std::uint8_t{0};
  for (std::uint8_t i = 0; i < 32; ++i)
    if (kWinAnsiHigh[i] == character) return static_cast<std::uint8_t>(0x80 + i);
  return 0;
}

}  // namespace dorvo::export_
