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
  file_ = std::fopen(beside_.c_str(), "w+bx");
  if (!file_ && errno == EEXIST && std::remove(beside_.c_str()) == 0) file_ = std::fopen(beside_.c_str(), "w+bx");
  if (!file_) cannot_write(target_);
}

OutputFile::~OutputFile() {
  if (file_) std::fclose(file_);
  if (!committed_) std::remove(beside_.c_str());
}

void OutputFile::write(std::string_view bytes) {
  if (bytes.empty()) return;
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_) != bytes.size()) cannot_write(target_);
  size_ += bytes.size();
}

void OutputFile::close() {
  if (!file_) return;
  const bool flushed = std::fflush(file_) == 0 && !std::ferror(file_);
  const int reason = errno;
  const bool closed = std::fclose(file_) == 0;
  file_ = nullptr;
  if (!flushed) errno = reason;
  if (!flushed || !closed) cannot_write(target_);
}

void OutputFile::commit() {
  close();
  if (std::rename(beside_.c_str(), target_.c_str()) != 0) cannot_write(target_);
  committed_ = true;
}

}  // namespace dorvo::export_
