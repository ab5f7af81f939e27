// Queries that differ in their key only: asked again and again, they answer as if each were asked for the first time.
#include "data/keyed_text.h"

#include <gtest/gtest.h>

#include "data/connection.h"
#include "scratch_database.h"
#include "value/text.h"

namespace dorvo::data {
namespace {

TEST(KeyedText, IsADecimalNumberBehindAnEqualsSignAtTheEnd) {
  struct Case {
    const char* select;
    const char* key;
  };
  for (const Case& c : {Case{"select a from t where id=41", "41"}, Case{"select a from t where id=007", "007"},
                        Case{"select a from t where id=", ""}, Case{"select a from t where id= 41", ""},
                        Case{"select a from t where id=-41", ""}, Case{"select a from t where id=41 ", ""},
                        Case{"select a from t where id=4.1", ""}, Case{"select a from t where id='41'", ""},
                        Case{"select a from t where id=999999999999999999", "999999999999999999"},
                        Case{"select a from t where id=9999999999999999999", ""}, Case{"41", ""}, Case{"", ""}}) {
    const KeyedText keyed = split_key(c.select);
    EXPECT_EQ(keyed.key, c.key) << c.select;
    EXPECT_EQ(std::string(keyed.text) + std::string(keyed.key), c.select);
  }
}

std::string answer(Connection& connection, const std::string& select) {
  const auto table = connection.query(select);
  std::string rows;
  for (std::size_t row = 0; row < table->rows(); ++row) {
    for (std::size_t column = 0; column < table->columns().size(); ++column)
      rows += table->columns()[column] + "=" + value::text_of(table->cell(row, column)) + " ";
  }
  return rows;
}

TEST(KeyedText, EachKeyGetsItsOwnRows) {
  ScratchDatabase database(
      "CREATE TABLE t (id INTEGER, code TEXT, price MONEY); INSERT INTO t VALUES (1,'7',1.5), (2,'07',2), (2,'x',3);");
  const auto connection = Connection::open(database.path());
  struct Case {
    const char* select;
    const char* rows;
  };
  const Case cases[] = {
      {"select price from dbo.t where id=1", "price=1.5 "},
      {"select price from dbo.t where id=2", "price=2 price=3 "},
      {"select price from dbo.t where id=3", ""},
      {"select price from dbo.t where id=1", "price=1.5 "},
      {"select price from dbo.t where id=0002", "price=2 price=3 "},
      {"select id from t where code=7", "id=1 "},  // compared as texts, since the column is one
      {"select id from t where code=07", "id=1 "},
      {"select id from t where price=3", "id=2 "},
      {"select id from t where 1=1", "id=1 id=2 id=2 "},
      {"select id from t where 1=0", ""},
  };
  for (const Case& c : cases) EXPECT_EQ(answer(*connection, c.select), c.rows) << c.select;
}

TEST(KeyedText, ATableThatGrewShowsItsNewColumn) {
  ScratchDatabase database("CREATE TABLE t (id INTEGER); INSERT INTO t VALUES (1), (2);");
  const auto connection = Connection::open(database.path());
  EXPECT_EQ(answer(*connection, "select * from t where id=1"), "id=1 ");
  database.run("ALTER TABLE t ADD COLUMN paid BIT; UPDATE t SET paid=1;");
  EXPECT_EQ(answer(*connection, "select * from t where id=2"), "id=2 paid=True ");
}

TEST(KeyedText, AFailureLeavesTheNextQueryAlone) {
  ScratchDatabase database("CREATE TABLE t (id INTEGER); INSERT INTO t VALUES (1);");
  const auto connection = Connection::open(database.path());
  for (int again = 0; again < 2; ++again) {
    EXPECT_THROW(answer(*connection, "select nothing from t where id=1"), value::Failure);
    EXPECT_THROW(answer(*connection, "delete from t where id=1"), value::Failure);
    EXPECT_THROW(answer(*connection, "select abs(-9223372036854775808) from t where id=1"), value::Failure);
    EXPECT_EQ(answer(*connection, "select id from t where id=1"), "id=1 ");
  }
  database.run("DELETE FROM t;");  // no statement holds the file
}

}  // namespace
}  // namespace dorvo::data
