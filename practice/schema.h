// The tables of a host application that the reports read, as one table of data, and their DDL in three dialects.
//
// A practice's own server holds the same tables with more columns; the reports need the ones named here.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace dorvo::practice {

enum class Dialect { Sqlite, TransactSql, PostgreSql };

enum class Type {
  Key,      // whole number, never NULL
  Integer,  // whole number
  Amount,   // rupees and paise
  Rate,     // percent
  Date,     // a day, without a time
  Flag,     // yes or no
  Text,     // up to `size` characters, any script
};

struct Column {
  std::string_view name;
  Type type;
  int size = 0;  // of a text, in characters
};

struct Table {
  std::string_view name;
  std::string_view key;                   // columns of the primary key, empty when the table has none
  std::vector<std::string_view> indexes;  // columns of each further index
  std::vector<Column> columns;
};

// All tables, each after those it refers to.
std::span<const Table> tables();

// The table of that name, in any capitals; null when there is none.
const Table* find_table(std::string_view name);

// Statements that make the tables, each ended by ";" and a line end. Servers get them in the schema dbo, which
// PostgreSQL is told to make; an embedded file knows no schemas.
std::string ddl(Dialect dialect);

}  // namespace dorvo::practice
