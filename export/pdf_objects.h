// The objects of a PDF file, written one after another to a sink, and the table that finds them again.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace dorvo::export_ {

// Takes the bytes of a file in order.
using ByteSink = std::function<void(std::string_view)>;

enum class PdfVersion : int { Acrobat2 = 0, Acrobat3 = 1, Acrobat4 = 2 };  // PDF 1.1, 1.2, 1.3

class PdfObjects {
 public:
  // Writes the header.
  PdfObjects(ByteSink sink, PdfVersion version);

  PdfVersion version() const { return version_; }
  // Version 1.1 has no Flate: its streams stand as they are. It has no marked content and no map to characters either.
  bool packs() const { return version_ != PdfVersion::Acrobat2; }

  // The number of an object to be written later, or at once.
  int reserve();
  void write(int number, std::string_view body);
  int write(std::string_view body);
  // `bytes` are packed already when packs(); `entries` are further entries of the stream's dictionary.
  int write_stream(std::string_view bytes, std::string_view entries = {});

  // The table and the trailer. Every reserved object has been written.
  void finish(int catalog);

 private:
  void begin_object(int number);
  void put(std::string_view bytes);
  void flush();

  ByteSink sink_;
  PdfVersion version_;
  std::vector<std::uint64_t> offsets_;  // of object 1, 2, ...
  std::string buffer_;
  std::uint64_t flushed_ = 0;
};

// Decimal numbers as a content stream or an object holds them, without regard to the locale.
void put_number(std::string& out, long number);
void put_number(std::string& out, double number, int decimals);

// In hexadecimal: a number of so many digits, characters as UTF-16BE.
void put_hex(std::string& out, unsigned number, int digits);
void put_utf16(std::string& out, std::string_view characters);

// "12 0 R"
std::string reference(int number);

}  // namespace dorvo::export_
