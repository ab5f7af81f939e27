// The embedded database: one file, opened read-only.

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <vector>

#include "data/connection_text.h"
#include "data/driver.h"
#include "data/typed_cell.h"

namespace dorvo::data {
namespace {

using value::Error;
using value::Failure;
using Clock = std::chrono::steady_clock;

constexpr int kBusyMilliseconds = 5000;         // how long a writer is waited for
constexpr std::chrono::seconds kQueryTime{60};  // how long one query may run
constexpr int kStepsBetweenLooks = 20000;       // at the clock

struct CloseDatabase {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;
using Statement = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

struct FileIdentity {
  dev_t device;
  ino_t inode;
  friend bool operator==(const FileIdentity&, const FileIdentity&) = default;
};

[[noreturn]] void cannot_open(const std::string& file, const std::string& why) {
  throw Failure(Error::CannotConnect, "Cannot open the database file \"" + file + "\": " + why);
}

FileIdentity readable_file(const std::string& file) {
  struct stat status {};
  if (stat(file.c_str(), &status) != 0) cannot_open(file, std::strerror(errno));
  if (!S_ISREG(status.st_mode)) cannot_open(file, "it is no file");
  if (access(file.c_str(), R_OK) != 0) cannot_open(file, std::strerror(errno));
  return {status.st_dev, status.st_ino};
}

class SqliteSession : public Session {
 public:
  explicit SqliteSession(const std::string& file) : file_(file), identity_(readable_file(file)) {
    sqlite3* opened = nullptr;
    const int result = sqlite3_open_v2(file.c_str(), &opened, SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX, nullptr);
    database_.reset(opened);
    if (result != SQLITE_OK) cannot_open(file, opened ? sqlite3_errmsg(opened) : "out of memory");
    sqlite3_busy_timeout(opened, kBusyMilliseconds);
    sqlite3_limit(opened, SQLITE_LIMIT_ATTACHED, 0);
    // A misspelt "column" is an error, not a text.
    sqlite3_db_config(opened, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
    sqlite3_progress_handler(opened, kStepsBetweenLooks, &SqliteSession::too_late, this);
    read_schema();
  }

  data::Dialect dialect() const override { return Dialect::Sqlite; }

  std::unique_ptr<Table> query(const std::string& select) override {
    deadline_ = Clock::now() + kQueryTime;
    const Statement statement = prepare(select);
    const int columns = sqlite3_column_count(statement.get());
    auto table = std::make_unique<Table>(names_of(statement.get(), columns));
    const std::vector<ColumnType> types = types_of(statement.get(), columns);
    int result = sqlite3_step(statement.get());
    for (; result == SQLITE_ROW; result = sqlite3_step(statement.get()))
      for (int at = 0; at < columns; ++at) add_cell(*table, statement.get(), at, types[static_cast<std::size_t>(at)]);
    if (result != SQLITE_DONE) fail(result);
    return table;
  }

  // Dead when another file has taken the place of the one that was opened.
  bool alive() override {
    struct stat status {};
    return stat(file_.c_str(), &status) == 0 && FileIdentity{status.st_dev, status.st_ino} == identity_;
  }

 private:
  static int too_late(void* self) { return Clock::now() > static_cast<SqliteSession*>(self)->deadline_ ? 1 : 0; }

  // The file is only looked at when something is read from it.
  void read_schema() {
    deadline_ = Clock::now() + kQueryTime;
    const int result = sqlite3_exec(database_.get(), "SELECT 1 FROM sqlite_schema LIMIT 1", nullptr, nullptr, nullptr);
    if (result == SQLITE_NOTADB) cannot_open(file_, "it is no SQLite database");
    if (result != SQLITE_OK) cannot_open(file_, sqlite3_errmsg(database_.get()));
  }

  Statement prepare(const std::string& select) {
    sqlite3_stmt* prepared = nullptr;
    const char* rest = nullptr;
    const int result =
        sqlite3_prepare_v2(database_.get(), select.c_str(), static_cast<int>(select.size() + 1), &prepared, &rest);
    Statement statement(prepared);
    if (result != SQLITE_OK) fail(result);
    if (!statement || !sqlite3_stmt_readonly(prepared))
      throw Failure(Error::NotOneSelect, "A query must be exactly one SELECT statement that only reads");
    return statement;
  }

  static std::vector<std::string> names_of(sqlite3_stmt* statement, int columns) {
    std::vector<std::string> names;
    for (int at = 0; at < columns; ++at) names.emplace_back(sqlite3_column_name(statement, at));
    return names;
  }

  static std::vector<ColumnType> types_of(sqlite3_stmt* statement, int columns) {
    std::vector<ColumnType> types;
    for (int at = 0; at < columns; ++at) {
      const char* declaration = sqlite3_column_decltype(statement, at);
      types.push_back(declared_type(declaration ? declaration : ""));
    }
    return types;
  }

  static std::string_view bytes_of(sqlite3_stmt* statement, int at) {
    const void* bytes = sqlite3_column_blob(statement, at);
    return {static_cast<const char*>(bytes), bytes ? static_cast<std::size_t>(sqlite3_column_bytes(statement, at)) : 0};
  }

  static void add_cell(Table& table, sqlite3_stmt* statement, int at, ColumnType type) {
    switch (sqlite3_column_type(statement, at)) {
      case SQLITE_INTEGER:
        return add_integer(table, type, sqlite3_column_int64(statement, at));
      case SQLITE_FLOAT:
        return add_number(table, type, sqlite3_column_double(statement, at));
      case SQLITE_TEXT:
        return add_text(table, type, bytes_of(statement, at));
      case SQLITE_BLOB:
        return add_bytes(table, bytes_of(statement, at));
      default:
        return table.add_null();
    }
  }

  [[noreturn]] void fail(int result) const {
    const std::string place = "Database file \"" + file_ + "\": ";
    if (result == SQLITE_INTERRUPT)
      throw Failure(Error::QueryTimeout,
                    place + "the query took longer than " + std::to_string(kQueryTime.count()) + " s");
    if (result == SQLITE_BUSY) throw Failure(Error::QueryTimeout, place + "another program keeps it locked");
    throw Failure(Error::QueryFailed, place + sqlite3_errmsg(database_.get()));
  }

  std::string file_;
  FileIdentity identity_;
  Database database_;
  Clock::time_point deadline_;
};

}  // namespace

std::unique_ptr<Session> open_sqlite(const ConnectionText& text) {
  return std::make_unique<SqliteSession>(text.file());
}

}  // namespace dorvo::data
