#include "data/recordset.h"

#include "data/connection.h"

namespace dorvo::data {

using value::Error;
using value::Failure;

void Recordset::Open(std::string_view source, const std::shared_ptr<Connection>& connection, CursorType, LockType,
                     CommandType) {
  if (table_) throw Failure(Error::ObjectClosed, "The recordset is open already; it must be closed first");
  if (!connection) throw Failure(Error::ObjectClosed, "The recordset has no connection to open its query on");
  table_ = connection->query(source);
  row_ = 0;
}

void Recordset::Close() {
  open_table();
  table_.reset();
  row_ = 0;
}

std::int64_t Recordset::RecordCount() const {
  return static_cast<std::int64_t>(open_table().rows());
}

bool Recordset::EOF_() const {
  return row_ >= open_table().rows();
}

void Recordset::MoveFirst() {
  open_table();
  row_ = 0;
}

void Recordset::MoveNext() {
  if (EOF_()) throw Failure(Error::EngineState, "The recordset stands behind its last row; there is no next one");
  ++row_;
}

void Recordset::AbsolutePosition(std::int64_t row) {
  if (row < 1 || row > RecordCount())
    throw Failure(Error::EngineState, "The recordset has no row number " + std::to_string(row));
  row_ = static_cast<std::size_t>(row - 1);
}

value::Variant Recordset::Fields(std::string_view column) const {
  const std::size_t at = open_table().find(column);
  if (at == npos)
    throw Failure(Error::ItemNotFound, "The result of the query has no column \"" + std::string(column) + "\"");
  return Fields(at);
}

value::Variant Recordset::Fields(std::size_t column) const {
  const Table& table = open_table();
  if (column >= table.columns().size())
    throw Failure(Error::ItemNotFound, "The result of the query has no column number " + std::to_string(column));
  if (row_ >= table.rows())
    throw Failure(Error::EngineState, "Column \"" + table.columns()[column] + "\" was read where there is no row");
  return table.cell(row_, column);
}

std::size_t Recordset::field_count() const {
  return open_table().columns().size();
}

std::string_view Recordset::field_name(std::size_t column) const {
  return open_table().columns().at(column);
}

std::size_t Recordset::find_field(std::string_view column) const {
  return open_table().find(column);
}

const Table& Recordset::open_table() const {
  if (!table_) throw Failure(Error::ObjectClosed, "The recordset is closed");
  return *table_;
}

}  // namespace dorvo::data
