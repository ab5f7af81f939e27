#include "data/recordset.h"

#include <gtest/gtest.h>

#include "data/connection.h"
#include "scratch_database.h"
#include "value/text.h"

namespace dorvo::data {
namespace {

using value::Date;
using value::Error;
using value::Failure;
using value::Null;
using value::text_of;
using value::Variant;

template <class Call>
void expect_failure(Error number, Call call) {
  try {
    call();
    ADD_FAILURE() << "no failure";
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.number(), number) << failure.description();
  }
}

class RecordsetTest : public testing::Test {
 protected:
  void open(const std::string& sql, const std::string& select) {
    database_.run(sql);
    connection_ = Connection::open(database_.path());
    recordset_.Open(select, connection_);
  }
  Variant first(const std::string& declaration, const std::string& literal) {
    ScratchDatabase database("CREATE TABLE t (v " + declaration + "); INSERT INTO t VALUES (" + literal + ")");
    Recordset recordset;
    recordset.Open("select v from t", Connection::open(database.path()));
    return recordset.Fields("V");
  }
  ScratchDatabase database_;
  std::shared_ptr<Connection> connection_;
  Recordset recordset_;
};

TEST_F(RecordsetTest, StepsThroughItsRows) {
  open("CREATE TABLE t (a INT); INSERT INTO t VALUES (1),(2)", "select a from t order by a");
  EXPECT_EQ(recordset_.RecordCount(), 2);
  EXPECT_EQ(recordset_.Fields("a"), Variant(1));
  recordset_.MoveNext();
  EXPECT_EQ(recordset_.Fields("A"), Variant(2));
  EXPECT_FALSE(recordset_.EOF_());
  recordset_.MoveNext();
  EXPECT_TRUE(recordset_.EOF_());
  expect_failure(Error::EngineState, [&] { recordset_.Fields("a"); });
  expect_failure(Error::EngineState, [&] { recordset_.MoveNext(); });
  recordset_.MoveFirst();
  EXPECT_EQ(recordset_.Fields("a"), Variant(1));
}

TEST_F(RecordsetTest, AnEmptyResultIsNoFailureUntilItIsRead) {
  open("CREATE TABLE t (a INT)", "select * from t");
  EXPECT_EQ(recordset_.RecordCount(), 0);
  EXPECT_TRUE(recordset_.EOF_());
  EXPECT_EQ(recordset_.State(), State::Open);
  EXPECT_EQ(recordset_.field_count(), 1U);
  expect_failure(Error::EngineState, [&] { recordset_.Fields("a"); });
  expect_failure(Error::ItemNotFound, [&] { recordset_.Fields("b"); });
}

TEST_F(RecordsetTest, OfTwoColumnsOfOneNameTheFirstCounts) {
  open(
      "CREATE TABLE Customer (CustomerCode INT, YearID INT); CREATE TABLE CMaster (Id INT, customercode INT);"
      "INSERT INTO Customer VALUES (7, 3); INSERT INTO CMaster VALUES (1, 8)",
      "select Customer.*, CMaster.* from dbo.Customer, dbo.CMaster");
  EXPECT_EQ(recordset_.Fields("CUSTOMERCODE"), Variant(7));
  EXPECT_EQ(recordset_.Fields(3), Variant(8));
  EXPECT_EQ(recordset_.find_field("yearid"), 1U);
  EXPECT_EQ(recordset_.find_field("none"), Recordset::npos);
}

TEST_F(RecordsetTest, ClosesAndReopens) {
  open("CREATE TABLE t (a INT); INSERT INTO t VALUES (1)", "select a from t");
  expect_failure(Error::ObjectClosed, [&] { recordset_.Open("select a from t", connection_); });
  recordset_.Close();
  EXPECT_EQ(recordset_.State(), State::Closed);
  expect_failure(Error::ObjectClosed, [&] { recordset_.Close(); });
  expect_failure(Error::ObjectClosed, [&] { recordset_.RecordCount(); });
  expect_failure(Error::ObjectClosed, [&] { recordset_.Open("select 1", nullptr); });
  expect_failure(Error::QueryFailed, [&] { recordset_.Open("select x from t", connection_); });
  EXPECT_EQ(recordset_.State(), State::Closed);
  recordset_.Open("select a+1 as b from t", connection_);
  EXPECT_EQ(recordset_.Fields("b"), Variant(2));
}

TEST_F(RecordsetTest, RowsOutliveTheirConnection) {
  open("CREATE TABLE t (a TEXT); INSERT INTO t VALUES ('x')", "select a from t");
  recordset_.ActiveConnection(nullptr);
  connection_->Close();
  connection_.reset();
  EXPECT_EQ(recordset_.Fields("a"), Variant("x"));
}

TEST_F(RecordsetTest, DeclaredTypesDecide) {
  struct Case {
    const char *declaration, *literal;
    Variant value;
  };
  const Case cases[] = {
      {"INT", "5", 5},
      {"BIGINT", "9007199254740993", std::int64_t{9007199254740993}},
      {"INT", "NULL", Null{}},
      {"INT", "12.5", 12.5},
      {"INT", "'12 Nos'", "12 Nos"},
      {"DECIMAL(18,2)", "1234567890123.25", 1234567890123.25},
      {"MONEY", "100", 100.0},
      {"numeric(9,4)", "0.0001", 0.0001},
      {"FLOAT", "1e-3", 0.001},
      {"DECIMAL(18,2)", "'n.a.'", "n.a."},
      {"BIT", "1", true},
      {"BIT", "0", false},
      {"BIT", "-1", true},
      {"BOOLEAN", "'True'", true},
      {"BIT", "'maybe'", "maybe"},
      {"DATETIME", "'2008-04-01'", Date{2008, 4, 1, 0}},
      {"DATE", "'2008-04-01 13:14:15.5'", Date{2008, 4, 1, 47655}},
      {"smalldatetime", "'31/03/2009'", Date{2009, 3, 31, 0}},
      {"DATETIME", "'2008-02-30'", "2008-02-30"},
      {"DATETIME", "'soon'", "soon"},
      {"DATETIME", "20080401", 20080401},
      {"VARCHAR(20)", "12", "12"},
      {"NVARCHAR(50)", "'\xE0\xA4\x95'", "\xE0\xA4\x95"},
      {"TEXT", "''", ""},
      {"TEXT", "CAST(x'41FF42' AS TEXT)",
       "A\xEF\xBF\xBD"
       "B"},
      {"IMAGE", "x'00AF'", "0x00AF"},
      {"BLOB", "x''", "0x"},
      {"", "12.5", 12.5},
      {"", "'a'", "a"},
  };
  for (const Case& c : cases) EXPECT_EQ(first(c.declaration, c.literal), c.value) << c.declaration << " " << c.literal;
}

TEST_F(RecordsetTest, TextsOfAnyLengthAndContent) {
  EXPECT_EQ(first("TEXT", "CAST(x'610062' AS TEXT)"), Variant(std::string_view("a\0b", 3)));
  const Variant longest = first("TEXT", "replace(printf('%2000000s', ''), ' ', 'x')");
  EXPECT_EQ(text_of(longest), std::string(2000000, 'x'));
}

}  // namespace
}  // namespace dorvo::data
