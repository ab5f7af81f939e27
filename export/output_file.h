// A file that appears whole or not at all: written beside its target under another name, then renamed.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>

namespace dorvo::export_ {

class OutputFile {
 public:
  // Opens the file beside `target`. Fails with CannotWrite, naming the target and the system's reason.
  explicit OutputFile(std::string target);
  ~OutputFile();  // not committed: removes what was written
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  void write(std::string_view bytes);
  // For a library that writes the file itself, seeking in it; what it writes does not count in size(), and a failed
  // write comes out at close() or commit().
  std::FILE* stream() { return file_; }
  // Bytes written so far.
  std::size_t size() const { return size_; }
  // Flushes and closes; the target still stands as it was. Fails with CannotWrite.
  void close();
  // Another name for the target, in the same folder.
  void retarget(std::string target) { target_ = std::move(target); }
  // Flushes, closes and renames. Fails with CannotWrite; nothing stands at the target then that was not there before.
  void commit();

  const std::string& target() const { return target_; }

 private:
  std::string target_;
  std::string beside_;
  std::FILE* file_ = nullptr;
  bool committed_ = false;
  std::size_t size_ = 0;
};

}  // namespace dorvo::export_
