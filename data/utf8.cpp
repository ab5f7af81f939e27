#include "data/utf8.h"

#include <cstddef>
#include <cstdint>

namespace dorvo::data {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

std::size_t ascii_length(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80) ++at;
  return at;
}

// Length of the well-formed sequence that starts the text, 0 when none does; shortest forms only, no surrogates.
std::size_t sequence_length(std::string_view text) {
  const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
  const unsigned char first = byte(0);
  const std::size_t length = first < 0x80                     ? 1
                             : first >= 0xC2 && first <= 0xDF ? 2
                             : first >= 0xE0 && first <= 0xEF ? 3
                             : first >= 0xF0 && first <= 0xF4 ? 4
                                                              : 0;
  if (length == 0 || length > text.size()) return 0;
  for (std::size_t at = 1; at < length; ++at)
    if ((byte(at) & 0xC0) != 0x80) return 0;
  if (first == 0xE0 && byte(1) < 0xA0) return 0;
  if (first == 0xED && byte(1) > 0x9F) return 0;
  if (first == 0xF0 && byte(1) < 0x90) return 0;
  if (first == 0xF4 && byte(1) > 0x8F) return 0;
  return length;
}

void append_character(std::string& out, std::uint32_t code) {
  const auto put = [&](std::uint32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (code < 0x80) {
    put(code);
  } else if (code < 0x800) {
    put(0xC0 | code >> 6), put(0x80 | (code & 0x3F));
  } else if (code < 0x10000) {
    put(0xE0 | code >> 12), put(0x80 | (code >> 6 & 0x3F)), put(0x80 | (code & 0x3F));
  } else {
    put(0xF0 | code >> 18), put(0x80 | (code >> 12 & 0x3F)), put(0x80 | (code >> 6 & 0x3F)), put(0x80 | (code & 0x3F));
  }
}

}  // namespace

void append_utf8(std::string& out, std::string_view text) {
  while (!text.empty()) {
    const std::size_t plain = ascii_length(text);
    out.append(text.substr(0, plain));
    text.remove_prefix(plain);
    if (text.empty()) return;
    const std::size_t length = sequence_length(text);
    out.append(length == 0 ? kReplacement : text.substr(0, length));
    text.remove_prefix(length == 0 ? 1 : length);
  }
}

void append_utf8(std::string& out, std::u16string_view text) {
  const std::size_t before = out.size();
  out.resize(before + text.size());
  std::size_t at = 0;
  for (; at < text.size() && text[at] < 0x80; ++at) out[before + at] = static_cast<char>(text[at]);
  out.resize(before + at);
  for (; at < text.size(); ++at) {
    const std::uint32_t unit = text[at];
    const bool high = unit >= 0xD800 && unit <= 0xDBFF;
    const bool paired = high && at + 1 < text.size() && text[at + 1] >= 0xDC00 && text[at + 1] <= 0xDFFF;
    if (paired) {
      append_character(out, 0x10000 + ((unit - 0xD800) << 10) + (static_cast<std::uint32_t>(text[++at]) - 0xDC00));
    } else {
      append_character(out, unit >= 0xD800 && unit <= 0xDFFF ? 0xFFFD : unit);
    }
  }
}

std::u16string utf16_of(std::string_view utf8) {
  std::string clean;
  append_utf8(clean, utf8);
  std::u16string out;
  out.reserve(clean.size());
  for (std::size_t at = 0; at < clean.size();) {
    const auto lead = static_cast<unsigned char>(clean[at]);
    const std::size_t length = lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    std::uint32_t code = length == 1 ? lead : lead & (0xFFU >> (length + 1));
    for (std::size_t next = 1; next < length; ++next)
      code = code << 6 | (static_cast<unsigned char>(clean[at + next]) & 0x3F);
    at += length;
    if (code >= 0x10000) {
      out.push_back(static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10)));
      out.push_back(static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF)));
    } else {
      out.push_back(static_cast<char16_t>(code));
    }
  }
  return out;
}

}  // namespace dorvo::data
