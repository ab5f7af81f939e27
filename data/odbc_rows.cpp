#include "data/odbc_rows.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "data/typed_cell.h"
#include "data/utf8.h"
#include "value/text.h"

namespace dorvo::data {
namespace {

constexpr SQLULEN kWidestBound = 1000;       // characters
constexpr std::size_t kBlockBytes = 262144;  // of all bound columns
constexpr std::size_t kMostRows = 1000;      // of a block
constexpr std::size_t kPieceBytes = 16384;   // of a long value

void check(SQLRETURN result) {
  if (!succeeded(result)) throw OdbcReadFailed{};
}

// How a column is fetched.
struct Column {
  std::string name;
  ColumnType type = ColumnType::Text;
  SQLSMALLINT c_type = SQL_C_WCHAR;
  SQLLEN width = 0;  // bytes of one value; 0: of unknown width
  // One block of values.
  std::vector<char> values;
  std::vector<SQLLEN> indicators;
};

struct TypeRow {
  SQLSMALLINT sql;
  ColumnType type;
  SQLSMALLINT c_type;
  SQLLEN width;  // 0: as wide as the column
};
constexpr SQLLEN kDecimalWidth = 64;
constexpr std::array<TypeRow, 13> kTypes = {{
    {SQL_BIT, ColumnType::Bool, SQL_C_BIT, 1},
    {SQL_TINYINT, ColumnType::Integer, SQL_C_SBIGINT, sizeof(SQLBIGINT)},
    {SQL_SMALLINT, ColumnType::Integer, SQL_C_SBIGINT, sizeof(SQLBIGINT)},
    {SQL_INTEGER, ColumnType::Integer, SQL_C_SBIGINT, sizeof(SQLBIGINT)},
    {SQL_BIGINT, ColumnType::Integer, SQL_C_SBIGINT, sizeof(SQLBIGINT)},
    {SQL_DECIMAL, ColumnType::Number, SQL_C_CHAR, kDecimalWidth},
    {SQL_NUMERIC, ColumnType::Number, SQL_C_CHAR, kDecimalWidth},
    {SQL_REAL, ColumnType::Number, SQL_C_DOUBLE, sizeof(double)},
    {SQL_FLOAT, ColumnType::Number, SQL_C_DOUBLE, sizeof(double)},
    {SQL_DOUBLE, ColumnType::Number, SQL_C_DOUBLE, sizeof(double)},
    {SQL_TYPE_DATE, ColumnType::Date, SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)},
    {SQL_TYPE_TIMESTAMP, ColumnType::Date, SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)},
    {-155, ColumnType::Date, SQL_C_TYPE_TIMESTAMP, sizeof(SQL_TIMESTAMP_STRUCT)},  // SQL Server's datetimeoffset
}};

bool is_binary(SQLSMALLINT sql) {
  return sql == SQL_BINARY || sql == SQL_VARBINARY || sql == SQL_LONGVARBINARY;
}

// Of a text as wide as `characters`, with its closing NUL; 0 when that is too much to bind.
SQLLEN text_width(SQLSMALLINT sql, SQLULEN characters) {
  const bool is_long = sql == SQL_LONGVARCHAR || sql == SQL_WLONGVARCHAR;
  if (is_long || characters == 0 || characters > kWidestBound) return 0;
  return static_cast<SQLLEN>((characters + 1) * sizeof(SQLWCHAR));
}

std::string type_name(const OdbcHandle& statement, SQLUSMALLINT number) {
  std::array<SQLWCHAR, 128> name{};
  SQLSMALLINT bytes = 0;
  const SQLRETURN result = SQLColAttributeW(statement.get(), number, SQL_DESC_TYPE_NAME, name.data(),
                                            static_cast<SQLSMALLINT>(sizeof name), &bytes, nullptr);
  return succeeded(result) ? narrow(name.data(), static_cast<std::size_t>(bytes) / sizeof(SQLWCHAR)) : std::string();
}

Column described(const OdbcHandle& statement, SQLUSMALLINT number, Dialect dialect) {
  std::array<SQLWCHAR, 512> name{};
  SQLSMALLINT length = 0, sql = 0, digits = 0, nullable = 0;
  SQLULEN size = 0;
  check(SQLDescribeColW(statement.get(), number, name.data(), static_cast<SQLSMALLINT>(name.size()), &length, &sql,
                        &size, &digits, &nullable));
  Column column;
  column.name = narrow(name.data(), std::min(static_cast<std::size_t>(length), name.size() - 1));
  // SQLite keeps values of any kind in a column of any kind: only their text is sure to come whole.
  if (dialect == Dialect::Sqlite && !is_binary(sql)) {
    column.type = declared_type(type_name(statement, number));
    return column;
  }
  if (is_binary(sql)) {
    column.type = ColumnType::Binary;
    column.c_type = SQL_C_BINARY;
    return column;
  }
  for (const TypeRow& row : kTypes) {
    if (row.sql != sql) continue;
    column.type = row.type;
    column.c_type = row.c_type;
    column.width = row.width;
    return column;
  }
  column.width = text_width(sql, size);
  // PostgreSQL's driver hands flags over as texts of this width unless it is told otherwise. Only then is it asked for
  // the name of the type, which costs it a query of its own.
  constexpr SQLULEN kWidthOfFlags = 5;
  if (dialect == Dialect::PostgreSql && size == kWidthOfFlags && type_name(statement, number) == "bool")
    column.type = ColumnType::Bool;
  return column;
}

void add_text(Table& table, const Column& column, const SQLWCHAR* text, std::size_t bytes) {
  const std::size_t units = bytes / sizeof(SQLWCHAR);
  if (column.type == ColumnType::Text || column.type == ColumnType::Undeclared)
    return table.add(std::u16string_view(reinterpret_cast<const char16_t*>(text), units));
  add_text(table, column.type, narrow(text, units));
}

void add_value(Table& table, const Column& column, const char* value, std::size_t bytes) {
  const auto read = [&](auto& into) { std::memcpy(&into, value, sizeof into); };
  switch (column.c_type) {
    case SQL_C_BIT:
      return table.add(*value != 0);
    case SQL_C_SBIGINT: {
      SQLBIGINT number = 0;
      read(number);
      return table.add(static_cast<std::int64_t>(number));
    }
    case SQL_C_DOUBLE: {
      double number = 0;
      read(number);
      return table.add(number);
    }
    case SQL_C_TYPE_TIMESTAMP: {
      SQL_TIMESTAMP_STRUCT stamp{};
      read(stamp);
      return table.add(
          value::Date{stamp.year, stamp.month, stamp.day, stamp.hour * 3600 + stamp.minute * 60 + stamp.second});
    }
    case SQL_C_CHAR:
      return add_text(table, column.type, std::string_view(value, bytes));
    case SQL_C_BINARY:
      return add_bytes(table, {value, bytes});
    default:
      return add_text(table, column, reinterpret_cast<const SQLWCHAR*>(value), bytes);
  }
}

// Bytes of the closing NUL that a value of this kind is delivered with.
std::size_t closing_bytes(SQLSMALLINT c_type) {
  return c_type == SQL_C_WCHAR ? sizeof(SQLWCHAR) : c_type == SQL_C_CHAR ? 1 : 0;
}

bool has_length(SQLSMALLINT c_type) {
  return c_type == SQL_C_WCHAR || c_type == SQL_C_CHAR || c_type == SQL_C_BINARY;
}

class Reader {
 public:
  Reader(const OdbcHandle& statement, Dialect dialect, bool bind) : statement_(statement) {
    SQLSMALLINT count = 0;
    check(SQLNumResultCols(statement.get(), &count));
    std::vector<std::string> names;
    for (SQLSMALLINT at = 1; at <= count; ++at) {
      columns_.push_back(described(statement, static_cast<SQLUSMALLINT>(at), dialect));
      names.push_back(columns_.back().name);
    }
    table_ = std::make_unique<Table>(std::move(names));
    expect_rows();
    if (bind) bind_columns();
  }

  std::unique_ptr<Table> read() {
    if (columns_.empty()) return std::move(table_);
    while (true) {
      const SQLRETURN result = SQLFetch(statement_.get());
      if (result == SQL_NO_DATA) return std::move(table_);
      check(result);
      for (std::size_t row = 0; row < fetched_; ++row)
        if (!add_row(row)) return nullptr;
    }
  }

 private:
  // A driver that has the whole result at hand knows how many rows it has; others say so.
  void expect_rows() {
    constexpr SQLLEN kMostBelieved = 1000000;
    SQLLEN rows = -1;
    if (succeeded(SQLRowCount(statement_.get(), &rows)) && rows > 0 && rows <= kMostBelieved)
      table_->expect(static_cast<std::size_t>(rows));
  }

  void bind_columns() {
    std::size_t bytes = 0;
    for (; bound_ < columns_.size() && columns_[bound_].width != 0; ++bound_)
      bytes += static_cast<std::size_t>(columns_[bound_].width) + sizeof(SQLLEN);
    const bool all = bound_ == columns_.size() && bound_ > 0;
    block_ = all ? std::clamp<std::size_t>(kBlockBytes / bytes, 1, kMostRows) : 1;
    if (block_ > 1) {
      SQLSetStmtAttr(statement_.get(), SQL_ATTR_ROW_BIND_TYPE, reinterpret_cast<SQLPOINTER>(SQL_BIND_BY_COLUMN), 0);
      check(SQLSetStmtAttr(statement_.get(), SQL_ATTR_ROW_ARRAY_SIZE, reinterpret_cast<SQLPOINTER>(block_), 0));
      check(SQLSetStmtAttr(statement_.get(), SQL_ATTR_ROWS_FETCHED_PTR, &fetched_, 0));
    }
    for (std::size_t at = 0; at < bound_; ++at) {
      Column& column = columns_[at];
      column.values.resize(block_ * static_cast<std::size_t>(column.width));
      column.indicators.resize(block_);
      check(SQLBindCol(statement_.get(), static_cast<SQLUSMALLINT>(at + 1), column.c_type, column.values.data(),
                       column.width, column.indicators.data()));
    }
  }

  // False when a bound value did not fit.
  bool add_row(std::size_t row) {
    for (std::size_t at = 0; at < bound_; ++at) {
      const Column& column = columns_[at];
      const SQLLEN length = column.indicators[row];
      const char* value = column.values.data() + row * static_cast<std::size_t>(column.width);
      if (length == SQL_NULL_DATA) {
        table_->add_null();
        continue;
      }
      const SQLLEN room = column.width - static_cast<SQLLEN>(closing_bytes(column.c_type));
      if (has_length(column.c_type) && (length == SQL_NO_TOTAL || length > room)) return false;
      add_value(*table_, column, value, static_cast<std::size_t>(std::max<SQLLEN>(length, 0)));
    }
    for (std::size_t at = bound_; at < columns_.size(); ++at) read_long(at);
    return true;
  }

  // A value read piece by piece.
  void read_long(std::size_t at) {
    const Column& column = columns_[at];
    const std::size_t closing = closing_bytes(column.c_type);
    long_.clear();
    while (true) {
      SQLLEN length = 0;
      const SQLRETURN result = SQLGetData(statement_.get(), static_cast<SQLUSMALLINT>(at + 1), column.c_type,
                                          piece_.data(), static_cast<SQLLEN>(piece_.size()), &length);
      if (result == SQL_NO_DATA) break;
      check(result);
      if (length == SQL_NULL_DATA) return table_->add_null();
      const std::size_t room = piece_.size() - closing;
      const bool more =
          length == SQL_NO_TOTAL || (has_length(column.c_type) && static_cast<std::size_t>(length) > room);
      long_.insert(long_.end(), piece_.begin(),
                   piece_.begin() + static_cast<std::ptrdiff_t>(more ? room : static_cast<std::size_t>(length)));
      if (!more) break;
    }
    add_value(*table_, column, long_.data(), long_.size());
  }

  const OdbcHandle& statement_;
  std::vector<Column> columns_;
  std::unique_ptr<Table> table_;
  std::size_t bound_ = 0;  // the columns before this one are bound
  std::size_t block_ = 1;  // rows fetched at once
  SQLULEN fetched_ = 1;
  std::vector<char> piece_ = std::vector<char>(kPieceBytes);
  std::vector<char> long_;
};

}  // namespace

std::unique_ptr<Table> read_rows(const OdbcHandle& statement, Dialect dialect, bool bind) {
  return Reader(statement, dialect, bind).read();
}

}  // namespace dorvo::data
