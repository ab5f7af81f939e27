// bench_servers: a form and a register of 100,000 rows on the embedded database and on a PostgreSQL over ODBC, and the
// register's query through our driver beside the same query read by bare ODBC calls. Medians of several runs, wall
// time.
#include <sql.h>
#include <sqlext.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bench/practice_db.h"
#include "bench/register.h"
#include "data/connection.h"
#include "export/pdf_writer.h"
#include "frame/settings.h"
#include "returns/form_201.h"
#include "tests/servers/postgres_server.h"
#include "tests/servers/practice_sql.h"

namespace {

using namespace dorvo;
using Clock = std::chrono::steady_clock;

constexpr int kRows = 100000;

// The fastest of several times, in milliseconds: what else the machine does only ever slows a run.
struct Fastest {
  double wall = 1e9;
  double processor = 1e9;

  void time(const std::function<void()>& work) {
    const std::clock_t clock = std::clock();
    const Clock::time_point start = Clock::now();
    work();
    wall = std::min(wall, std::chrono::duration<double, std::milli>(Clock::now() - start).count());
    processor = std::min(processor, static_cast<double>(std::clock() - clock) * 1000 / CLOCKS_PER_SEC);
  }
};

double fastest_ms(int times, const std::function<void()>& work) {
  Fastest fastest;
  for (int time = 0; time < times; ++time) fastest.time(work);
  return fastest.wall;
}

std::size_t print(engine::ActiveReport& report) {
  std::size_t bytes = 0;
  export_::PdfWriter writer([&](std::string_view part) { bytes += part.size(); });
  report.sink([&](const engine::PagePtr& page) { writer.page(*page); });
  report.run();
  writer.end();
  return bytes;
}

// The register's query by bare ODBC calls: columns bound to arrays, a thousand rows a fetch, values left where they
// arrive.
class RawRead {
 public:
  RawRead(const data::PostgresServer& server) {
    SQLAllocHandle(SQL_HANDLE_ENV, nullptr, &environment_);
    SQLSetEnvAttr(environment_, SQL_ATTR_ODBC_VERSION, reinterpret_cast<SQLPOINTER>(SQL_OV_ODBC3), 0);
    SQLAllocHandle(SQL_HANDLE_DBC, environment_, &connection_);
    std::string text = "Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=" + std::to_string(server.port()) +
                       ";Database=practice;UID=owner;PWD=owner";
    SQLDriverConnect(connection_, nullptr, reinterpret_cast<SQLCHAR*>(text.data()), SQL_NTS, nullptr, 0, nullptr,
                     SQL_DRIVER_NOPROMPT);
  }
  ~RawRead() {
    SQLDisconnect(connection_);
    SQLFreeHandle(SQL_HANDLE_DBC, connection_);
    SQLFreeHandle(SQL_HANDLE_ENV, environment_);
  }
  RawRead(const RawRead&) = delete;
  RawRead& operator=(const RawRead&) = delete;

  // Rows read.
  std::size_t operator()() {
    static constexpr std::array<SQLSMALLINT, 9> kTypes = {SQL_C_SBIGINT, SQL_C_TYPE_TIMESTAMP, SQL_C_WCHAR,
                                                          SQL_C_WCHAR,   SQL_C_CHAR,           SQL_C_CHAR,
                                                          SQL_C_CHAR,    SQL_C_CHAR,           SQL_C_WCHAR};
    static constexpr std::array<SQLLEN, 9> kWidths = {8, sizeof(SQL_TIMESTAMP_STRUCT), 122, 26, 64, 64, 64, 64, 42};
    constexpr std::size_t kBlock = 1000;
    SQLHANDLE statement = nullptr;
    SQLAllocHandle(SQL_HANDLE_STMT, connection_, &statement);
    SQLULEN fetched = 0;
    SQLSetStmtAttr(statement, SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(kBlock), 0);
    SQLSetStmtAttr(statement, SQL_ATTR_ROWS_FETCHED_PTR, &fetched, 0);
    std::string query =
        std::string("SELECT No, ReturnDate, Dealer, Tin, Sales, Tax, Paid, Due, Bank FROM dbo.Register ") +
        "ORDER BY No NULLS FIRST";
    SQLExecDirect(statement, reinterpret_cast<SQLCHAR*>(query.data()), SQL_NTS);
    std::array<std::vector<char>, 9> values;
    std::array<std::vector<SQLLEN>, 9> lengths;
    for (std::size_t at = 0; at < kTypes.size(); ++at) {
      values[at].resize(kBlock * static_cast<std::size_t>(kWidths[at]));
      lengths[at].resize(kBlock);
      SQLBindCol(statement, static_cast<SQLUSMALLINT>(at + 1), kTypes[at], values[at].data(), kWidths[at],
                 lengths[at].data());
    }
    std::size_t rows = 0;
    while (SQL_SUCCEEDED(SQLFetch(statement))) rows += fetched;
    SQLFreeHandle(SQL_HANDLE_STMT, statement);
    return rows;
  }

 private:
  SQLHANDLE environment_ = nullptr, connection_ = nullptr;
};

void fill(const data::PostgresServer& server, const std::string& practice_file) {
  server.run("DROP SCHEMA dbo CASCADE; " + data::postgres_script(practice_file) +
             "CREATE TABLE dbo.Register (No INT PRIMARY KEY, ReturnDate DATE, Dealer VARCHAR(60), Tin VARCHAR(12),"
             " Sales NUMERIC(18,2), Tax NUMERIC(18,2), Paid NUMERIC(18,2), Due NUMERIC(18,2), Bank VARCHAR(20));"
             "INSERT INTO dbo.Register SELECT n, DATE '2005-04-01' + (n % 730)::INT, 'Dealer ' || (n * 7919 % 99991) ||"
             " ' and Sons', 27000000000 + n * 611953 % 999999937 || 'V', (n * 7919 % 9999991) / 4.0,"
             " (n * 104729 % 999983) / 4.0, n * 1299709 % 99991, n % 997,"
             " CASE n % 3 WHEN 0 THEN 'Union' WHEN 1 THEN 'Central' ELSE 'State' END"
             " FROM generate_series(1::BIGINT, " +
             std::to_string(kRows) +
             ") AS g(n);"
             "GRANT USAGE ON SCHEMA dbo TO reader; GRANT SELECT ON ALL TABLES IN SCHEMA dbo TO reader; ANALYZE");
}

void row(const char* what, double sqlite, double postgres) {
  std::printf("%-44s %9.2f ms  %9.2f ms\n", what, sqlite, postgres);
}

}  // namespace

int main() {
  bench::open_practice({});
  const std::string sqlite = frame::basMain().ConnectionString;
  const std::string practice_file = sqlite.substr(sqlite.find("Source=") + 7);
  const std::string register_file = (std::filesystem::temp_directory_path() / "dorvo-register-servers.db").string();
  bench::make_register(register_file, kRows);
  const data::PostgresServer server;
  fill(server, practice_file);

  std::printf("%-44s %12s  %12s\n", "", "SQLite", "PostgreSQL");
  returns::Form201 form;
  form.PropCMasterID(1);
  std::array<double, 2> taken{};
  const std::array<std::string, 2> practices = {sqlite, server.text()};
  for (std::size_t at = 0; at < 2; ++at) {
    frame::basMain().ConnectionString = practices[at];
    frame::basMain().myConn = data::Connection::pooled(practices[at]);
    print(form);
    taken[at] = fastest_ms(200, [&] { print(form); });
  }
  row("Form201, warm, from query to PDF", taken[0], taken[1]);

  const std::array<std::string, 2> registers = {"Provider=SQLite;Data Source=" + register_file, server.text()};
  for (std::size_t at = 0; at < 2; ++at) {
    const auto report = bench::register_report(registers[at]);
    taken[at] = fastest_ms(5, [&] { print(*report); });
  }
  row("register of 100,000 rows to PDF", taken[0], taken[1]);
  RawRead raw(server);
  Fastest of_sqlite, of_postgres, bare;
  const auto embedded = data::Connection::pooled(registers[0]);
  const auto served = data::Connection::pooled(registers[1]);
  for (int round = 0; round < 15; ++round) {
    of_sqlite.time([&] { embedded->query(bench::kRegisterQuery); });
    of_postgres.time([&] { served->query(bench::kRegisterQuery); });
    bare.time([&] { raw(); });
  }
  row("its query into a recordset", of_sqlite.wall, of_postgres.wall);
  row("  of it time of this process", of_sqlite.processor, of_postgres.processor);
  std::printf("%-44s %12s  %9.2f ms\n", "the same by bare ODBC calls", "", bare.wall);
  std::printf("%-44s %12s  %9.2f ms\n", "  of it time of this process", "", bare.processor);
  std::filesystem::remove(register_file);
}
