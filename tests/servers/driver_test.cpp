// What every driver must do alike: the embedded database, PostgreSQL through ODBC, SQLite through ODBC.
#include <gtest/gtest.h>

#include <functional>
#include <ostream>

#include "../data/scratch_database.h"
#include "data/connection.h"
#include "data/recordset.h"
#include "postgres_server.h"
#include "value/text.h"

namespace dorvo::data {
namespace {

using value::Date;
using value::Error;
using value::Failure;
using value::Null;
using value::text_of;
using value::Variant;

// A database that a test fills and then reads through one of the drivers.
struct Database {
  virtual ~Database() = default;
  virtual void fill(const std::string& sql) = 0;
  virtual std::string text() const = 0;
};

struct SqliteFile : Database {
  void fill(const std::string& sql) override { file.run(sql); }
  std::string text() const override { return file.path(); }
  ScratchDatabase file;
};

struct SqliteOverOdbc : SqliteFile {
  std::string text() const override { return "Driver=SQLite3;Database=" + file.path(); }
};

struct Postgres : Database {
  Postgres() {
    PostgresServer::shared().run(
        "DROP SCHEMA dbo CASCADE; CREATE SCHEMA dbo; GRANT USAGE ON SCHEMA dbo TO reader;"
        "ALTER DEFAULT PRIVILEGES IN SCHEMA dbo GRANT SELECT ON TABLES TO reader");
  }
  void fill(const std::string& sql) override { PostgresServer::shared().run("SET search_path = dbo;" + sql); }
  std::string text() const override { return PostgresServer::shared().text(); }
};

struct Backend {
  const char* name;
  std::function<std::unique_ptr<Database>()> make;
};
std::ostream& operator<<(std::ostream& out, const Backend& backend) {
  return out << backend.name;
}

class DriverTest : public testing::TestWithParam<Backend> {
 protected:
  void SetUp() override { database_ = GetParam().make(); }
  void fill(const std::string& sql) { database_->fill(sql); }
  Recordset open(const std::string& select) {
    if (!connection_) connection_ = Connection::open(database_->text());
    Recordset recordset;
    recordset.Open(select, connection_);
    return recordset;
  }
  void expect_failure(Error number, const std::string& select) {
    try {
      open(select);
      ADD_FAILURE() << "no failure: " << select;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), number) << failure.description();
      EXPECT_EQ(failure.description().find('\n'), std::string::npos) << failure.description();
      EXPECT_EQ(failure.description().find(PostgresServer::kPassword), std::string::npos);
      message_ = failure.description();
    }
  }
  std::unique_ptr<Database> database_;
  std::shared_ptr<Connection> connection_;
  std::string message_;
};

TEST_P(DriverTest, ColumnsComeInTheirDeclaredTypes) {
  fill(
      "CREATE TABLE t (id INT, code BIGINT, small SMALLINT, amount DECIMAL(18,4), rate NUMERIC(9,2), f DOUBLE "
      "PRECISION,"
      " d DATE, ts TIMESTAMP, flag BOOLEAN, name VARCHAR(50), c CHAR(3), note TEXT);"
      "INSERT INTO t VALUES (-7, 9007199254740993, 3, 12345678901.2345, 12.50, 0.1, '2008-04-01', '2008-04-01 "
      "23:59:58',"
      " '1', 'Asha', 'abc', 'long'), (NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL,NULL)");
  Recordset t = open("select * from dbo.t order by id desc");
  const std::pair<const char*, Variant> expected[] = {{"ID", -7},
                                                      {"Code", std::int64_t{9007199254740993}},
                                                      {"small", 3},
                                                      {"amount", 12345678901.2345},
                                                      {"Rate", 12.5},
                                                      {"f", 0.1},
                                                      {"d", Date{2008, 4, 1, 0}},
                                                      {"ts", Date{2008, 4, 1, 86398}},
                                                      {"flag", true},
                                                      {"name", "Asha"},
                                                      {"c", "abc"},
                                                      {"note", "long"}};
  ASSERT_EQ(t.RecordCount(), 2);
  for (const auto& [column, value] : expected)
    EXPECT_EQ(t.Fields(column), value) << column << " " << text_of(t.Fields(column));
  t.MoveNext();
  for (const auto& [column, value] : expected) EXPECT_TRUE(t.Fields(column).is_null()) << column;
}

TEST_P(DriverTest, DecimalsKeepEveryDigit) {
  fill(
      "CREATE TABLE t (k INT, a DECIMAL(18,2), b NUMERIC(19,6)); INSERT INTO t VALUES (1, 0.01, 0.000001),"
      " (2, 999999999999.99, 123456789.123456), (3, -0.10, -1), (4, 100, 0)");
  Recordset t = open("select * from t order by k");
  for (const auto& [a, b] :
       {std::pair("0.01", "0.000001"), {"999999999999.99", "123456789.123456"}, {"-0.1", "-1"}, {"100", "0"}}) {
    EXPECT_EQ(text_of(t.Fields("a")), a);
    EXPECT_EQ(text_of(t.Fields("b")), b);
    t.MoveNext();
  }
}

TEST_P(DriverTest, TextOfEveryScriptAndLength) {
  const std::string mixed = "\xE0\xA4\xA8\xE0\xA4\xBE\xE0\xA4\xB5 Nav \xF0\x9F\x98\x80 \xC3\xA9";
  fill(
      "CREATE TABLE t (k INT, a VARCHAR(60), b TEXT, c TEXT, d VARCHAR(9000), e INT);"
      "INSERT INTO t VALUES (1, '" +
      mixed + "', '" + std::string(70000, 'x') + "y', '', '" + std::string(8999, 'z') + "w', 5)");
  Recordset t = open("select * from t");
  EXPECT_EQ(text_of(t.Fields("a")), mixed);
  EXPECT_EQ(text_of(t.Fields("b")), std::string(70000, 'x') + "y");
  EXPECT_EQ(t.Fields("c"), Variant(""));
  EXPECT_EQ(text_of(t.Fields("d")), std::string(8999, 'z') + "w");
  EXPECT_EQ(t.Fields("e"), Variant(5));
  EXPECT_EQ(open("select k from t where a = '" + mixed + "'").RecordCount(), 1);
}

TEST_P(DriverTest, JoinedTextsAndDatesInWords) {
  fill(
      "CREATE TABLE BAnk (ID INT, BankName VARCHAR(50), Branch VARCHAR(50), FromDate DATE);"
      "INSERT INTO BAnk VALUES (1, 'Bank of M', 'Pune', '2008-04-01'), (2, NULL, 'Nagpur', NULL)");
  Recordset t = open(
      "SELECT dbo.BAnk.BankName+'   ' + Branch as BankName, CONVERT(varchar, BAnk.FromDate, 103) + '-' as D"
      " FROM dbo.BAnk where ID>0and ID < 3 order by ID;");
  EXPECT_EQ(t.Fields("bankname"), Variant("Bank of M   Pune"));
  EXPECT_EQ(t.Fields("d"), Variant("01/04/2008-"));
  t.MoveNext();
  EXPECT_TRUE(t.Fields("bankname").is_null());
  EXPECT_TRUE(t.Fields("d").is_null());
}

TEST_P(DriverTest, NullsStandFirst) {
  fill("CREATE TABLE t (k INT, n VARCHAR(9)); INSERT INTO t VALUES (1, 'b'), (2, NULL), (3, 'a'), (4, 'B')");
  std::string order;
  Recordset t = open("select k from t order by n, k");
  for (; !t.EOF_(); t.MoveNext()) order += text_of(t.Fields("k"));
  EXPECT_EQ(order, "2431");
}

TEST_P(DriverTest, QuotedNamesMeanTheColumnInAnyCapitals) {
  fill("CREATE TABLE CMaster (GrossSales DECIMAL(18,2), OpenDate INT); INSERT INTO CMaster VALUES (5.25, 1)");
  EXPECT_EQ(
      open("select [GrossSales], \"OPENDATE\" from [dbo].[CMASTER] where cmaster.grosssales > 5").Fields("GROSSSALES"),
      Variant(5.25));
}

TEST_P(DriverTest, SumsAndEmptyResults) {
  fill("CREATE TABLE t (g INT, a DECIMAL(18,2)); INSERT INTO t VALUES (1, 0.10), (1, 0.20), (2, 5)");
  Recordset t = open("select g, sum(a) as s, max(g) as m, count(*) as n from t group by t.g order by g");
  EXPECT_EQ(text_of(t.Fields("s")), "0.3");
  EXPECT_EQ(text_of(t.Fields("n")), "2");
  EXPECT_EQ(open("select * from t where g = 9").RecordCount(), 0);
  EXPECT_TRUE(open("select sum(a) as s from t where g = 9").Fields("s").is_null());
}

TEST_P(DriverTest, ManyRowsInBlocks) {
  std::string rows;
  for (int at = 1; at <= 2500; ++at)
    rows += (at == 1 ? "(" : ",(") + std::to_string(at) + ", 'row " + std::to_string(at) + "')";
  fill("CREATE TABLE t (k INT, name VARCHAR(30)); INSERT INTO t VALUES " + rows);
  Recordset t = open("select * from t order by k");
  ASSERT_EQ(t.RecordCount(), 2500);
  for (int at = 1; at <= 2500; ++at, t.MoveNext()) ASSERT_EQ(text_of(t.Fields("name")), "row " + std::to_string(at));
}

TEST_P(DriverTest, ATextWiderThanItsColumnSaysIsReadWhole) {
  fill("CREATE TABLE t (k INT, a VARCHAR(10)); INSERT INTO t VALUES (1, 'short')");
  Recordset t = open("select k, a + '" + std::string(400, 'q') + "' as w from t");
  EXPECT_EQ(text_of(t.Fields("w")), "short" + std::string(400, 'q'));
}

TEST_P(DriverTest, MistakesAreOneClearLineAndTheNextQueryWorks) {
  fill("CREATE TABLE t (a INT); INSERT INTO t VALUES (1)");
  expect_failure(Error::QueryFailed, "select * from Customer");
  EXPECT_NE(value::lower_name(message_).find("customer"), std::string::npos) << message_;
  expect_failure(Error::QueryFailed, "select nosuch from t");
  EXPECT_NE(message_.find("nosuch"), std::string::npos) << message_;
  expect_failure(Error::QueryFailed, "select from where");
  expect_failure(Error::NotOneSelect, "select 1; drop table t");
  expect_failure(Error::NotOneSelect, "delete from t");
  EXPECT_EQ(open("select a from t").Fields("a"), Variant(1));
}

// An ODBC text that leaves the driver's own settings alone: flags come as texts.
TEST(PostgresOverOdbc, FlagsAreFlagsWhateverTheDriverMakesOfThem) {
  const PostgresServer& server = PostgresServer::shared();
  server.run(
      "DROP TABLE IF EXISTS dbo.flags; CREATE TABLE dbo.flags (k INT, f BOOLEAN, five VARCHAR(5));"
      "INSERT INTO dbo.flags VALUES (1, TRUE, '1'), (2, FALSE, 'true'), (3, NULL, NULL)");
  Recordset flags;
  flags.Open("select * from dbo.flags order by k",
             Connection::open("Driver={PostgreSQL Unicode};Server=127.0.0.1;Port=" + std::to_string(server.port()) +
                              ";Database=practice;UID=owner;PWD=owner"));
  EXPECT_EQ(flags.Fields("f"), Variant(true));
  EXPECT_EQ(flags.Fields("five"), Variant("1"));
  flags.MoveNext();
  EXPECT_EQ(flags.Fields("f"), Variant(false));
  EXPECT_EQ(flags.Fields("five"), Variant("true"));
  flags.MoveNext();
  EXPECT_TRUE(flags.Fields("f").is_null());
}

INSTANTIATE_TEST_SUITE_P(, DriverTest,
                         testing::Values(Backend{"Sqlite", [] { return std::make_unique<SqliteFile>(); }},
                                         Backend{"PostgresOverOdbc", [] { return std::make_unique<Postgres>(); }},
                                         Backend{"SqliteOverOdbc", [] { return std::make_unique<SqliteOverOdbc>(); }}),
                         [](const auto& row) { return row.param.name; });

}  // namespace
}  // namespace dorvo::data
