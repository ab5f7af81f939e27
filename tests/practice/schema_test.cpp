#include "practice/schema.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <set>

#include "value/text.h"

using namespace dorvo::practice;

namespace {

std::size_t count(const std::string& text, const std::string& part) {
  std::size_t found = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++found;
  return found;
}

const Column* find_column(const char* table, const char* column) {
  const Table* found = find_table(table);
  if (found == nullptr) return nullptr;
  for (const Column& held : found->columns) {
    if (held.name == column) return &held;
  }
  return nullptr;
}

TEST(Schema, ColumnsOfEachKind) {
  const struct {
    const char* table;
    const char* column;
    Type type;
  } cases[] = {
      {"Customer", "CustomerID", Type::Key},
      {"customer", "Medicine", Type::Flag},
      {"CMaster", "FromDate", Type::Date},
      {"CMaster", "SalesWCBalance2125Percent", Type::Amount},
      {"CMaster", "SalesWCRecordType2", Type::Text},
      {"CMASTER", "TotalClosingCeiling", Type::Amount},
      {"CDetail", "VATPercentage", Type::Rate},
      {"CDetail", "Exempted", Type::Flag},
      {"BAnk", "Branch", Type::Text},
      {"CustomerEC", "EleigibilityCertificateNoDAte", Type::Date},
  };
  for (const auto& c : cases) {
    const Column* column = find_column(c.table, c.column);
    ASSERT_NE(column, nullptr) << c.table << "." << c.column;
    EXPECT_EQ(column->type, c.type) << c.table << "." << c.column;
  }
}

// Lookups ignore case, so two columns of one table may not differ in capitals alone.
TEST(Schema, NamesAreUniqueWithoutRegardToCase) {
  for (const Table& table : tables()) {
    std::set<std::string> names;
    for (const Column& column : table.columns) {
      EXPECT_TRUE(names.insert(dorvo::value::lower_name(column.name)).second) << table.name << "." << column.name;
      EXPECT_EQ(column.type == Type::Text, column.size > 0) << table.name << "." << column.name;
    }
  }
}

TEST(Schema, EmbeddedDatabaseTakesTheDdl) {
  sqlite3* database = nullptr;
  ASSERT_EQ(sqlite3_open(":memory:", &database), SQLITE_OK);
  char* message = nullptr;
  EXPECT_EQ(sqlite3_exec(database, ddl(Dialect::Sqlite).c_str(), nullptr, nullptr, &message), SQLITE_OK) << message;
  sqlite3_close(database);
}

TEST(Schema, ServersGetTheSameTablesInTheSchemaDbo) {
  for (const Dialect dialect : {Dialect::TransactSql, Dialect::PostgreSql}) {
    EXPECT_EQ(count(ddl(dialect), "CREATE TABLE dbo."), tables().size());
  }
  EXPECT_EQ(count(ddl(Dialect::Sqlite), "dbo."), 0u);
  EXPECT_EQ(count(ddl(Dialect::PostgreSql), "CREATE SCHEMA"), 1u);
}

TEST(Schema, TypesOfTheDialects) {
  const struct {
    Dialect dialect;
    const char* line;
  } cases[] = {
      {Dialect::Sqlite, "  Medicine BIT"},
      {Dialect::TransactSql, "  Medicine BIT"},
      {Dialect::PostgreSql, "  Medicine BOOLEAN"},
      {Dialect::TransactSql, "  Name NVARCHAR(250),"},
      {Dialect::PostgreSql, "  Name VARCHAR(250),"},
      {Dialect::TransactSql, "  FromDate DATETIME,"},
      {Dialect::PostgreSql, "  FromDate DATE,"},
      {Dialect::PostgreSql, "  GrossSales NUMERIC(18,2),"},
      {Dialect::Sqlite, "  CMasterID INTEGER NOT NULL,"},
  };
  for (const auto& c : cases) EXPECT_EQ(count(ddl(c.dialect), c.line) > 0, true) << c.line;
}

}  // namespace
