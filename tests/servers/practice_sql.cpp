#include "practice_sql.h"

#include "data/connection.h"
#include "practice/schema.h"
#include "value/text.h"

namespace dorvo::data {
namespace {

std::string literal(const value::Variant& value) {
  if (value.is_null()) return "NULL";
  if (auto* flag = value.as<bool>()) return *flag ? "TRUE" : "FALSE";
  if (auto* date = value.as<value::Date>())
    return "'" + std::to_string(date->year) + "-" + std::to_string(date->month) + "-" + std::to_string(date->day) + "'";
  if (!value.as<std::string>()) return value::text_of(value);
  std::string quoted = "'";
  for (const char c : *value.as<std::string>()) quoted += c == '\'' ? "''" : std::string(1, c);
  return quoted + "'";
}

std::string inserts(const std::string& table, const Table& rows) {
  std::string sql;
  for (std::size_t row = 0; row < rows.rows(); ++row) {
    sql += "INSERT INTO dbo." + table + " VALUES (";
    for (std::size_t column = 0; column < rows.columns().size(); ++column)
      sql += (column ? "," : "") + literal(rows.cell(row, column));
    sql += ");\n";
  }
  return sql;
}

}  // namespace

std::string postgres_script(const std::string& practice_file) {
  std::string sql = practice::ddl(practice::Dialect::PostgreSql);
  const auto connection = Connection::open(practice_file);
  for (const practice::Table& table : practice::tables()) {
    const std::string name(table.name);
    sql += inserts(name, *connection->query("select * from " + name));
  }
  return sql;
}

}  // namespace dorvo::data
