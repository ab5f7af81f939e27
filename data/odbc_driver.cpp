// Databases on a server, through ODBC: SQL Server, PostgreSQL, and SQLite where ODBC leads to it.

#include <array>
#include <cstdint>

#include "data/connection_text.h"
#include "data/driver.h"
#include "data/odbc.h"
#include "data/odbc_rows.h"
#include "data/odbc_text.h"
#include "data/socket_limits.h"
#include "value/text.h"

namespace dorvo::data {
namespace {

using value::Error;
using value::Failure;

// Seconds that the question whether a connection is alive may take.
constexpr SQLULEN kAliveSeconds = 5;

struct System {
  std::string_view name;  // as the driver tells it, or its beginning
  Dialect dialect;
};
constexpr std::array<System, 4> kSystems = {{{"Microsoft SQL Server", Dialect::TransactSql},
                                             {"SQL Server", Dialect::TransactSql},
                                             {"PostgreSQL", Dialect::PostgreSql},
                                             {"SQLite", Dialect::Sqlite}}};

// What a session is told before its first query: it only reads, it does not stand in the way of the practice's own
// writers, and it does not wait for ever.
std::string opening(Dialect dialect, std::chrono::seconds limit) {
  const std::string milliseconds = std::to_string(limit.count() * 1000);
  switch (dialect) {
    case Dialect::TransactSql:
      // Where the database offers it, readers see a snapshot and block nobody.
      return "SET QUOTED_IDENTIFIER ON; SET ANSI_NULLS ON; SET TEXTSIZE 2147483647; SET LOCK_TIMEOUT " + milliseconds +
             "; IF (SELECT snapshot_isolation_state FROM sys.databases WHERE database_id = DB_ID()) = 1"
             " SET TRANSACTION ISOLATION LEVEL SNAPSHOT ELSE SET TRANSACTION ISOLATION LEVEL READ COMMITTED";
    case Dialect::PostgreSql:
      return "SET SESSION CHARACTERISTICS AS TRANSACTION READ ONLY; SET standard_conforming_strings = on;"
             " SET search_path = dbo, \"$user\", public; SET statement_timeout = " +
             milliseconds + "; SET lock_timeout = " + milliseconds;
    case Dialect::Sqlite:
      return "PRAGMA query_only = 1";
  }
  return {};
}

std::string place_of(const ConnectionText& text) {
  const std::string server = text.value({"Data Source", "Server", "Servername", "DSN", "FileDSN", "Driver"});
  const std::string database = text.value({"Initial Catalog", "Database", "Location"});
  return (database.empty() ? "the database" : "database \"" + database + "\"") +
         (server.empty() ? "" : " on \"" + server + "\"");
}

SQLPOINTER number(SQLULEN value) {
  return reinterpret_cast<SQLPOINTER>(static_cast<std::uintptr_t>(value));
}

// SQLite's driver takes UTF-8 in the narrow call and half of each character in the wide one.
SQLRETURN execute(const OdbcHandle& statement, std::string text, Dialect dialect) {
  if (dialect == Dialect::Sqlite)
    return SQLExecDirect(statement.get(), reinterpret_cast<SQLCHAR*>(text.data()),
                         static_cast<SQLINTEGER>(text.size()));
  WideText wide(text);
  return SQLExecDirectW(statement.get(), wide.data(), wide.size());
}

// An ODBC connection that is closed with its owner.
class Login {
 public:
  Login(SQLHANDLE environment, const std::string& text, std::chrono::seconds limit, SQLRETURN& result)
      : handle_(SQL_HANDLE_DBC, environment) {
    const auto seconds = static_cast<SQLULEN>(limit.count());
    SQLSetConnectAttr(handle_.get(), SQL_ATTR_LOGIN_TIMEOUT, number(seconds), 0);
    SQLSetConnectAttr(handle_.get(), SQL_ATTR_ACCESS_MODE, number(SQL_MODE_READ_ONLY), 0);
    const SocketLimits sockets;
    WideText wide(text);
    result = SQLDriverConnectW(handle_.get(), nullptr, wide.data(), static_cast<SQLSMALLINT>(wide.size()), nullptr, 0,
                               nullptr, SQL_DRIVER_NOPROMPT);
    connected_ = succeeded(result);
    sockets.limit_new_sockets();
  }
  ~Login() {
    if (connected_) SQLDisconnect(handle_.get());
  }
  Login(const Login&) = delete;
  Login& operator=(const Login&) = delete;
  const OdbcHandle& handle() const { return handle_; }

 private:
  OdbcHandle handle_;
  bool connected_ = false;
};

class OdbcSession : public Session {
 public:
  explicit OdbcSession(const ConnectionText& text)
      : limits_(time_limits(text)),
        place_(place_of(text)),
        password_(text.password()),
        environment_(odbc_environment()) {
    const std::string odbc = odbc_text(text, installed_drivers(*environment_));
    SQLRETURN result = SQL_ERROR;
    login_ = std::make_unique<Login>(environment_->get(), odbc, limits_.login, result);
    if (!succeeded(result)) cannot_connect(problem_of(login_->handle()).message);
    dialect_ = find_dialect();
    open();
  }

  data::Dialect dialect() const override { return dialect_; }

  std::unique_ptr<Table> query(const std::string& select) override {
    if (auto table = run(select, true)) return table;
    auto table = run(select, false);
    if (!table) throw Failure(Error::QueryFailed, "Cannot read " + place_ + ": a value was not delivered whole");
    return table;
  }

  bool alive() override {
    if (dead_) return false;
    SQLUINTEGER state = SQL_CD_FALSE;
    const SQLRETURN asked = SQLGetConnectAttr(login_->handle().get(), SQL_ATTR_CONNECTION_DEAD, &state, 0, nullptr);
    if (succeeded(asked) && state == SQL_CD_TRUE) return false;
    const OdbcHandle statement(SQL_HANDLE_STMT, login_->handle().get());
    limit(statement, kAliveSeconds);
    return succeeded(execute(statement, "SELECT 1", dialect_));
  }

 private:
  data::Dialect find_dialect() {
    std::array<SQLWCHAR, 128> name{};
    SQLSMALLINT bytes = 0;
    SQLGetInfoW(login_->handle().get(), SQL_DBMS_NAME, name.data(), static_cast<SQLSMALLINT>(sizeof name), &bytes);
    const std::string system = narrow(name.data(), static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR));
    for (const System& row : kSystems)
      if (value::same_name(system.substr(0, row.name.size()), row.name)) return row.dialect;
    cannot_connect("it is a \"" + system + "\"; expected SQL Server, PostgreSQL or SQLite");
  }

  void open() {
    const OdbcHandle statement(SQL_HANDLE_STMT, login_->handle().get());
    const SQLRETURN result = execute(statement, opening(dialect_, limits_.query), dialect_);
    if (result != SQL_NO_DATA && !succeeded(result)) cannot_connect(problem_of(statement).message);
  }

  // PostgreSQL was told at the opening; its driver would send two more statements with every query.
  void limit(const OdbcHandle& statement, SQLULEN seconds) const {
    if (dialect_ != Dialect::PostgreSql) SQLSetStmtAttr(statement.get(), SQL_ATTR_QUERY_TIMEOUT, number(seconds), 0);
  }

  // Nothing when a bound value turned out wider than its column says it is.
  std::unique_ptr<Table> run(const std::string& select, bool bind) {
    const OdbcHandle statement(SQL_HANDLE_STMT, login_->handle().get());
    limit(statement, static_cast<SQLULEN>(limits_.query.count()));
    if (!succeeded(execute(statement, select, dialect_))) fail(problem_of(statement));
    try {
      return read_rows(statement, dialect_, bind);
    } catch (const OdbcReadFailed&) {
      fail(problem_of(statement));
    }
  }

  [[noreturn]] void cannot_connect(const std::string& why) const {
    throw Failure(Error::CannotConnect, without_password("Cannot connect to " + place_ + ": " + why, password_));
  }

  [[noreturn]] void fail(const OdbcProblem& problem) {
    const std::string message = without_password(problem.message, password_);
    if (problem.is("HYT0") || problem.is("57014") || problem.is("55P03"))
      throw Failure(Error::QueryTimeout, "Cannot read " + place_ + ": the query took longer than " +
                                             std::to_string(limits_.query.count()) + " s (" + message + ")");
    if (is_lost(problem)) {
      dead_ = true;
      throw Failure(Error::CannotConnect, "The connection to " + place_ + " is lost: " + message);
    }
    throw Failure(Error::QueryFailed, "Cannot read " + place_ + ": " + message);
  }

  bool is_lost(const OdbcProblem& problem) const {
    if (problem.is("08") || problem.is("57P")) return true;
    SQLUINTEGER state = SQL_CD_FALSE;
    return succeeded(SQLGetConnectAttr(login_->handle().get(), SQL_ATTR_CONNECTION_DEAD, &state, 0, nullptr)) &&
           state == SQL_CD_TRUE;
  }

  TimeLimits limits_;
  std::string place_;
  std::string password_;
  std::shared_ptr<OdbcHandle> environment_;
  std::unique_ptr<Login> login_;
  data::Dialect dialect_ = Dialect::TransactSql;
  bool dead_ = false;
};

}  // namespace

std::unique_ptr<Session> open_odbc(const ConnectionText& text) {
  return std::make_unique<OdbcSession>(text);
}

}  // namespace dorvo::data
