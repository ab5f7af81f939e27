// Text from UTF-8 into a character set by its usual name ("utf-8", "windows-1252", "UTF-16LE"; empty: ASCII).
//
// A character that the set has not is written as a question mark or as a numeric character reference; the caller
// chooses. Independent of the C locale. One thread.
#pragma once

#include <string>
#include <string_view>

namespace dorvo::export_ {

enum class Missing { QuestionMark, Reference };

class Encoder {
 public:
  // Fails with CannotWrite when the system knows no such character set.
  Encoder(const std::string& charset, Missing missing);
  ~Encoder();
  Encoder(const Encoder&) = delete;
  Encoder& operator=(const Encoder&) = delete;

  // Appends the bytes of the text to `bytes`.
  void append(std::string& bytes, std::string_view utf8);
  std::string operator()(std::string_view utf8) {
    std::string bytes;
    append(bytes, utf8);
    return bytes;
  }
  // ASCII text stands for itself in this character set.
  bool holds_ascii() const { return ascii_; }
  // Whether a character was written in place of another one so far.
  bool replaced() const { return replaced_; }

 private:
  void convert(std::string& bytes, std::string_view utf8);

  void* converter_ = nullptr;
  Missing missing_;
  bool ascii_ = false;
  bool replaced_ = false;
};

}  // namespace dorvo::export_
