#include "automation/com.h"

namespace dorvo::automation {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

bool is_high(char32_t c) {
  return c >= 0xD800 && c < 0xDC00;
}
bool is_low(char32_t c) {
  return c >= 0xDC00 && c < 0xE000;
}

void append_utf8(std::string& out, char32_t c) {
  const auto byte = [&](char32_t bits) { out.push_back(static_cast<char>(bits)); };
  if (c < 0x80) {
    byte(c);
  } else if (c < 0x800) {
    byte(0xC0 | c >> 6);
    byte(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    byte(0xE0 | c >> 12);
    byte(0x80 | (c >> 6 & 0x3F));
    byte(0x80 | (c & 0x3F));
  } else {
    byte(0xF0 | c >> 18);
    byte(0x80 | (c >> 12 & 0x3F));
    byte(0x80 | (c >> 6 & 0x3F));
    byte(0x80 | (c & 0x3F));
  }
}

// The character at `at`, which moves behind it; a wrong byte is passed alone.
char32_t next_character(std::string_view text, std::size_t& at) {
  const auto lead = static_cast<unsigned char>(text[at++]);
  if (lead < 0x80) return lead;
  const int more = lead >= 0xF0 && lead < 0xF5   ? 3
                   : lead >= 0xE0 && lead < 0xF0 ? 2
                   : lead >= 0xC2 && lead < 0xE0 ? 1
                                                 : 0;
  if (more == 0 || at + static_cast<std::size_t>(more) > text.size()) return kReplacement;
  char32_t c = lead & (0x3Fu >> more);
  for (int i = 0; i < more; ++i) {
    const auto next = static_cast<unsigned char>(text[at + static_cast<std::size_t>(i)]);
    if ((next & 0xC0) != 0x80) return kReplacement;
    c = c << 6 | (next & 0x3Fu);
  }
  constexpr char32_t kLeast[] = {0, 0x80, 0x800, 0x10000};
  if (c < kLeast[more] || c > 0x10FFFF || is_high(c) || is_low(c)) return kReplacement;
  at += static_cast<std::size_t>(more);
  return c;
}

}  // namespace

std::string utf8(std::u16string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size(); ++at) {
    char32_t c = text[at];
    if (is_high(c) && at + 1 < text.size() && is_low(text[at + 1])) {
      c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<char32_t>(text[++at]) - 0xDC00);
    } else if (is_high(c) || is_low(c)) {
      c = kReplacement;
    }
    append_utf8(out, c);
  }
  return out;
}

std::u16string utf16(std::string_view text) {
  std::u16string out;
  out.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const char32_t c = next_character(text, at);
    if (c < 0x10000) {
      out.push_back(static_cast<char16_t>(c));
    } else {
      out.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
      out.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
    }
  }
  return out;
}

}  // namespace dorvo::automation
