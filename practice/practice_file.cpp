#include "practice/practice_file.h"

#include <sqlite3.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>

#include "value/failure.h"

namespace dorvo::practice {
namespace {

// Stands in the head of every sample practice, where SQLite keeps a mark for the application whose file it is.
constexpr std::string_view kMark = "DorP";
constexpr std::streamoff kMarkOffset = 68;

// A file that may be replaced: an earlier sample, or nothing at all. A practice's own figures never are.
bool is_replaceable(const std::string& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in || in.peek() == std::ifstream::traits_type::eof()) return true;
  std::array<char, kMark.size()> held{};
  in.seekg(kMarkOffset);
  in.read(held.data(), held.size());
  return in && std::string_view(held.data(), held.size()) == kMark;
}

// As the reports find it in an embedded file: dates as year-month-day, flags as 1 and 0.
int bind(sqlite3_stmt* statement, int place, const value::Variant& held) {
  if (const auto* flag = held.as<bool>()) return sqlite3_bind_int(statement, place, *flag ? 1 : 0);
  if (const auto* whole = held.as<std::int64_t>()) return sqlite3_bind_int64(statement, place, *whole);
  if (const auto* real = held.as<double>()) return sqlite3_bind_double(statement, place, *real);
  if (const auto* text = held.as<std::string>()) {
    return sqlite3_bind_text(statement, place, text->data(), static_cast<int>(text->size()), SQLITE_TRANSIENT);
  }
  if (const auto* date = held.as<value::Date>()) {
    char text[32];
    const int length = std::snprintf(text, sizeof text, "%04d-%02d-%02d", date->year, date->month, date->day);
    return sqlite3_bind_text(statement, place, text, length, SQLITE_TRANSIENT);
  }
  return sqlite3_bind_null(statement, place);
}

}  // namespace

PracticeFile::PracticeFile(std::string target)
    : target_(std::move(target)), beside_(target_ + "." + std::to_string(getpid()) + ".part") {
  if (!is_replaceable(target_)) fail("it is a file of another kind, and only an earlier sample is replaced");
  std::remove(beside_.c_str());
  const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_EXCLUSIVE;
  if (sqlite3_open_v2(beside_.c_str(), &database_, flags, nullptr) != SQLITE_OK) {
    const int system = sqlite3_system_errno(database_);
    const std::string reason = system != 0 ? std::strerror(system) : sqlite3_errmsg(database_);
    close();
    fail(reason);
  }
  try {
    // Nothing left over from earlier pages: the same rows give the same bytes.
    run("PRAGMA application_id = 0x446F7250; PRAGMA secure_delete = ON; PRAGMA journal_mode = OFF; PRAGMA synchronous "
        "= OFF; BEGIN");
    run(ddl(Dialect::Sqlite));
  } catch (...) {
    close();
    std::remove(beside_.c_str());
    throw;
  }
}

PracticeFile::~PracticeFile() {
  if (database_ == nullptr) return;
  close();
  std::remove(beside_.c_str());
}

void PracticeFile::insert(const Row& row) {
  sqlite3_stmt* insert = statement(row.table());
  int place = 0;
  for (const value::Variant& held : row.values()) bind(insert, ++place, held);
  const int result = sqlite3_step(insert);
  if (result != SQLITE_DONE) fail(sqlite3_errmsg(database_));
  sqlite3_reset(insert);
}

void PracticeFile::commit() {
  run("COMMIT");
  close();
  if (std::rename(beside_.c_str(), target_.c_str()) != 0) {
    const std::string reason = std::strerror(errno);
    std::remove(beside_.c_str());
    fail(reason);
  }
}

void PracticeFile::run(const std::string& sql) {
  if (sqlite3_exec(database_, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) fail(sqlite3_errmsg(database_));
}

sqlite3_stmt* PracticeFile::statement(const Table& table) {
  sqlite3_stmt*& prepared = inserts_[&table];
  if (prepared == nullptr) {
    std::string sql = "INSERT INTO " + std::string(table.name) + " VALUES (?";
    for (std::size_t i = 1; i < table.columns.size(); ++i) sql += ",?";
    sql += ")";
    if (sqlite3_prepare_v2(database_, sql.c_str(), -1, &prepared, nullptr) != SQLITE_OK) {
      fail(sqlite3_errmsg(database_));
    }
  }
  return prepared;
}

void PracticeFile::close() {
  for (const auto& [table, prepared] : inserts_) sqlite3_finalize(prepared);
  inserts_.clear();
  sqlite3_close(database_);
  database_ = nullptr;
}

void PracticeFile::fail(const std::string& reason) const {
  throw value::Failure(value::Error::CannotWrite, target_ + ": the practice cannot be written: " + reason);
}

}  // namespace dorvo::practice
