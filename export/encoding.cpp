#include "export/encoding.h"

#include <iconv.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdint>

#include "value/failure.h"

namespace dorvo::export_ {
namespace {

bool is_ascii(std::string_view text) {
  return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

// Code point of the character at the front and its length in bytes; a byte that starts none counts as U+FFFD.
std::uint32_t first_character(std::string_view text, std::size_t& length) {
  const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  length = 1;
  const std::size_t size = byte(0) >= 0xF0 ? 4 : byte(0) >= 0xE0 ? 3 : byte(0) >= 0xC2 ? 2 : 1;
  if (size == 1 || size > text.size()) return byte(0) < 0x80 ? byte(0) : 0xFFFD;
  std::uint32_t code = byte(0) & (0x7Fu >> size);
  for (std::size_t i = 1; i < size; ++i) {
    if ((byte(i) & 0xC0) != 0x80) return 0xFFFD;
    code = code << 6 | (byte(i) & 0x3F);
  }
  length = size;
  return code;
}

}  // namespace

Encoder::Encoder(const std::string& charset, Missing missing) : missing_(missing) {
  const iconv_t converter = iconv_open(charset.empty() ? "ASCII" : charset.c_str(), "UTF-8");
  if (converter == reinterpret_cast<iconv_t>(-1))
    throw value::Failure(value::Error::CannotWrite,
                         "Unknown character set \"" + charset + "\"; expected a name such as utf-8 or windows-1252");
  converter_ = converter;
  std::string sample;
  for (char c = ' '; c < '\x7F'; ++c) sample += c;
  std::string bytes;
  convert(bytes, sample);
  ascii_ = bytes == sample;
}

Encoder::~Encoder() {
  iconv_close(converter_);
}

void Encoder::append(std::string& bytes, std::string_view utf8) {
  if (ascii_ && is_ascii(utf8))
    bytes += utf8;
  else
    convert(bytes, utf8);
}

void Encoder::convert(std::string& bytes, std::string_view utf8) {
  std::array<char, 4096> buffer;
  while (!utf8.empty()) {
    char* in = const_cast<char*>(utf8.data());  // iconv reads it only
    std::size_t in_left = utf8.size();
    char* out = buffer.data();
    std::size_t out_left = buffer.size();
    const std::size_t done = iconv(converter_, &in, &in_left, &out, &out_left);
    const int problem = done == static_cast<std::size_t>(-1) ? errno : 0;
    bytes.append(buffer.data(), buffer.size() - out_left);
    utf8.remove_prefix(utf8.size() - in_left);
    if (problem == EILSEQ || problem == EINVAL) {
      std::size_t length = 0;
      const std::uint32_t code = first_character(utf8, length);
      utf8.remove_prefix(length);
      replaced_ = true;
      convert(bytes, missing_ == Missing::QuestionMark ? "?" : "&#" + std::to_string(code) + ";");
    }
  }
  // Sets with shift states end every text in their first state.
  char* out = buffer.data();
  std::size_t out_left = buffer.size();
  iconv(converter_, nullptr, nullptr, &out, &out_left);
  bytes.append(buffer.data(), buffer.size() - out_left);
}

}  // namespace dorvo::export_
