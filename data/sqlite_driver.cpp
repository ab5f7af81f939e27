// The embedded database: one file, opened read-only.

#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <chrono>
#include <cstring>
#include <map>
#include <vector>

#include "data/connection_text.h"
#include "data/driver.h"
#include "data/keyed_text.h"
#include "data/typed_cell.h"

namespace dorvo::data {
namespace {

using value::Error;
using value::Failure;
using Clock = std::chrono::steady_clock;

constexpr int kBusyMilliseconds = 5000;         // how long a writer is waited for
constexpr std::chrono::seconds kQueryTime{60};  // how long one query may run
constexpr int kStepsBetweenLooks = 20000;       // at the clock
constexpr std::size_t kMostKept = 64;           // prepared statements; reports have few texts

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
    const KeyedText keyed = split_key(select);
    if (!keyed.key.empty()) {
      if (Prepared* kept = find_kept(keyed.text)) return rows_for(*kept, keyed.key);
    }
    Prepared once(prepare(select));
    return rows(once);
  }

  // Dead when another file has taken the place of the one that was opened.
  bool alive() override {
    struct stat status {};
    return stat(file_.c_str(), &status) == 0 && FileIdentity{status.st_dev, status.st_ino} == identity_;
  }

 private:
  // A statement with what does not change from one of its runs to the next.
  struct Prepared {
    explicit Prepared(Statement prepared) : statement(std::move(prepared)) { describe(); }

    void describe() {
      const int count = sqlite3_column_count(statement.get());
      columns = std::make_shared<Columns>(names_of(statement.get(), count));
      types = types_of(statement.get(), count);
    }

    Statement statement;
    std::shared_ptr<const Columns> columns;
    std::vector<ColumnType> types;
  };

  // Ends a run of a statement, so that it holds no lock on the file.
  struct Reset {
    sqlite3_stmt* statement;
    ~Reset() { sqlite3_reset(statement); }
  };

  // The statement for a text that ends in a key, prepared at its first use; nullptr when the key is no plain parameter.
  Prepared* find_kept(std::string_view text) {
    if (const auto found = kept_.find(text); found != kept_.end()) return &found->second;
    Statement statement = prepare(std::string(text) + ":key");
    if (sqlite3_bind_parameter_count(statement.get()) != 1) return nullptr;
    if (kept_.size() == kMostKept) kept_.clear();
    return &kept_.emplace(std::string(text), Prepared(std::move(statement))).first->second;
  }

  std::unique_ptr<Table> rows_for(Prepared& prepared, std::string_view key) {
    sqlite3_int64 number = 0;
    std::from_chars(key.data(), key.data() + key.size(), number);
    sqlite3_bind_int64(prepared.statement.get(), 1, number);
    return rows(prepared);
  }

  std::unique_ptr<Table> rows(Prepared& prepared) {
    sqlite3_stmt* statement = prepared.statement.get();
    const Reset reset{statement};
    int result = sqlite3_step(statement);
    // The tables were changed since it was prepared, and it was prepared anew.
    if (sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_REPREPARE, 1) > 0) prepared.describe();
    auto table = std::make_unique<Table>(prepared.columns);
    const int columns = static_cast<int>(prepared.types.size());
    for (; result == SQLITE_ROW; result = sqlite3_step(statement))
      for (int at = 0; at < columns; ++at)
        add_cell(*table, statement, at, prepared.types[static_cast<std::size_t>(at)]);
    if (result != SQLITE_DONE) fail(result);
    return table;
  }

  static int too_late(void* self) { return Clock::now() > static_cast<SqliteSession*>(self)->deadline_ ? 1 : 0; }

  // The file is only looked at when something is read from it.
  void read_schema() {
    deadline_ = Clock::now() + kQueryTime;
    const int result = sqlite3_exec(database_.get(), "SELECT 1 FROM sqlite_schema LIMIT 1", nullptr, nullptr, nullptr);
    if (result == SQLITE_NOTADB) cannot_open(file_, "it is no SQLite database");
    if (result == SQLITE_READONLY)
      cannot_open(file_,
                  "it has a write-ahead log or a change that was broken off; a program that may write in its "
                  "folder must open it first");
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
  std::map<std::string, Prepared, std::less<>> kept_;  // by the text before the key
  Clock::time_point deadline_;
};

}  // namespace

std::unique_ptr<Session> open_sqlite(const ConnectionText& text) {
  return std::make_unique<SqliteSession>(text.file());
}

}  // namespace dorvo::data
