// Bytes put aside while a filter must see all pages before it can write the head of its file. Kept in an unnamed
// temporary file, so that memory does not grow with the pages; gone with the object. Fails with CannotWrite.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace dorvo::export_ {

class Spool {
 public:
  Spool();

  void write(std::string_view bytes);
  void write_number(std::int64_t number);
  void write_text(std::string_view text);  // its length, then its bytes

  // Back to the first byte, from now on for reading.
  void rewind();
  bool read(std::string& bytes, std::size_t most);  // false at the end
  bool read_number(std::int64_t& number);           // false at the end
  std::string read_text();

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::unique_ptr<std::FILE, Close> file_;
};

}  // namespace dorvo::export_
