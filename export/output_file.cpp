#include "export/output_file.h"

#include <unistd.h>

#include <cerrno>
#include <cstring>

#include "value/failure.h"

namespace dorvo::export_ {
namespace {

[[noreturn]] void cannot_write(const std::string& target) {
  throw value::Failure(value::Error::CannotWrite, "Cannot write \"" + target + "\": " + std::strerror(errno));
}

}  // namespace

OutputFile::OutputFile(std::string target) : target_(std::move(target)) {
  beside_ = target_ + "." + std::to_string(getpid()) + ".part";
  file_ = std::fopen(beside_.c_str(), "wbx");
  if (!file_ && errno == EEXIST && std::remove(beside_.c_str()) == 0) file_ = std::fopen(beside_.c_str(), "wbx");
  if (!file_) cannot_write(target_);
}

OutputFile::~OutputFile() {
  if (!file_) return;
  std::fclose(file_);
  std::remove(beside_.c_str());
}

void OutputFile::write(std::string_view bytes) {
  if (bytes.empty()) return;
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size()) cannot_write(target_);
  size_ += bytes.size();
}

void OutputFile::commit() {
  if (std::fflush(file_) != 0 || std::ferror(file_)) cannot_write(target_);
  const int closed = std::fclose(file_);
  file_ = nullptr;
  if (closed != 0 || std::rename(beside_.c_str(), target_.c_str()) != 0) {
    const int reason = errno;
    std::remove(beside_.c_str());
    errno = reason;
    cannot_write(target_);
  }
}

}  // namespace dorvo::export_
