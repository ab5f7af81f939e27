#include "export/pdf_objects.h"

#include <charconv>
#include <cstdio>

#include "engine/utf8.h"

namespace dorvo::export_ {
namespace {

constexpr std::size_t kBuffer = 1 << 16;

constexpr const char* kHeaders[] = {"%PDF-1.1\n", "%PDF-1.2\n", "%PDF-1.3\n"};
constexpr const char* kBinaryMark = "%\xE2\xE3\xCF\xD3\n";

}  // namespace

PdfObjects::PdfObjects(ByteSink sink, PdfVersion version) : sink_(std::move(sink)), version_(version) {
  put(kHeaders[static_cast<int>(version)]);
  put(kBinaryMark);
}

int PdfObjects::reserve() {
  offsets_.push_back(0);
  return static_cast<int>(offsets_.size());
}

void PdfObjects::write(int number, std::string_view body) {
  begin_object(number);
  put(body);
  put("\nendobj\n");
}

int PdfObjects::write(std::string_view body) {
  const int number = reserve();
  write(number, body);
  return number;
}

int PdfObjects::write_stream(std::string_view bytes, std::string_view entries) {
  const int number = reserve();
  begin_object(number);
  std::string head = "<</Length ";
  put_number(head, static_cast<long>(bytes.size()));
  if (packs()) head += "/Filter/FlateDecode";
  put(head.append(entries).append(">>\nstream\n"));
  put(bytes);
  put("\nendstream\nendobj\n");
  return number;
}

void PdfObjects::finish(int catalog) {
  const std::uint64_t start = flushed_ + buffer_.size();
  const std::string count = std::to_string(offsets_.size() + 1);
  put("xref\n0 " + count + "\n0000000000 65535 f \n");
  for (const std::uint64_t offset : offsets_) {
    char row[32];
    put({row, static_cast<std::size_t>(
                  std::snprintf(row, sizeof row, "%010llu 00000 n \n", static_cast<unsigned long long>(offset)))});
  }
  put("trailer\n<</Size " + count + "/Root " + reference(catalog) + ">>\nstartxref\n" + std::to_string(start) +
      "\n%%EOF\n");
  flush();
}

void PdfObjects::begin_object(int number) {
  offsets_[static_cast<std::size_t>(number) - 1] = flushed_ + buffer_.size();
  std::string head;
  put_number(head, long{number});
  put(head += " 0 obj\n");
}

void PdfObjects::put(std::string_view bytes) {
  buffer_ += bytes;
  if (buffer_.size() > kBuffer) flush();
}

void PdfObjects::flush() {
  sink_(buffer_);
  flushed_ += buffer_.size();
  buffer_.clear();
}

void put_number(std::string& out, long number) {
  char digits[24];
  out.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

void put_number(std::string& out, double number, int decimals) {
  char digits[48];
  char* end = std::to_chars(digits, digits + sizeof digits, number, std::chars_format::fixed, decimals).ptr;
  if (decimals > 0) {
    while (end[-1] == '0') --end;
    if (end[-1] == '.') --end;
  }
  out.append(digits, end);
}

void put_hex(std::string& out, unsigned number, int digits) {
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) out += "0123456789ABCDEF"[number >> shift & 15];
}

void put_utf16(std::string& out, std::string_view characters) {
  for (std::size_t at = 0; at < characters.size();) {
    const char32_t c = engine::next_char(characters, at);
    if (c >= 0x10000) {
      put_hex(out, 0xD800 + static_cast<unsigned>((c - 0x10000) >> 10), 4);
      put_hex(out, 0xDC00 + static_cast<unsigned>((c - 0x10000) & 0x3FF), 4);
    } else {
      put_hex(out, static_cast<unsigned>(c), 4);
    }
  }
}

std::string reference(int number) {
  return std::to_string(number) + " 0 R";
}

}  // namespace dorvo::export_
