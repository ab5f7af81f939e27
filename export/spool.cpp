#include "export/spool.h"

#include <cerrno>
#include <cstring>

#include "value/failure.h"

namespace dorvo::export_ {
namespace {

[[noreturn]] void cannot_spool() {
  throw value::Failure(value::Error::CannotWrite,
                       std::string("Cannot write a temporary file for an export: ") + std::strerror(errno));
}

}  // namespace

Spool::Spool() : file_(std::tmpfile()) {
  if (!file_) cannot_spool();
}

void Spool::write(std::string_view bytes) {
  if (std::fwrite(bytes.data(), 1, bytes.size(), file_.get()) != bytes.size()) cannot_spool();
}

void Spool::write_number(std::int64_t number) {
  write({reinterpret_cast<const char*>(&number), sizeof number});
}

void Spool::write_text(std::string_view text) {
  write_number(static_cast<std::int64_t>(text.size()));
  write(text);
}

void Spool::rewind() {
  if (std::fflush(file_.get()) != 0 || std::fseek(file_.get(), 0, SEEK_SET) != 0) cannot_spool();
}

bool Spool::read(std::string& bytes, std::size_t most) {
  bytes.resize(most);
  bytes.resize(std::fread(bytes.data(), 1, most, file_.get()));
  if (std::ferror(file_.get())) cannot_spool();
  return !bytes.empty();
}

bool Spool::read_number(std::int64_t& number) {
  const bool whole = std::fread(&number, sizeof number, 1, file_.get()) == 1;
  if (std::ferror(file_.get())) cannot_spool();
  return whole;
}

std::string Spool::read_text() {
  std::int64_t size = 0;
  std::string text;
  if (read_number(size) && size > 0) read(text, static_cast<std::size_t>(size));
  return text;
}

}  // namespace dorvo::export_
