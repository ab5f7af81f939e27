// The result of one query, whole in memory: client-side, static, read-only.
//
// A Recordset owns its rows; Variants read from it are copies. It stands on one row at a time, on the first
// after Open. Columns are found by name without regard to case; of two columns of one name the first counts.
// One thread.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "data/table.h"
#include "value/variant.h"

namespace dorvo::data {

class Connection;

enum class CursorType : int { Static = 3 };
enum class LockType : int { ReadOnly = 1, BatchOptimistic = 4 };
enum class CommandType : int { Text = 1, Unspecified = -1 };
enum class CursorLocation : int { Client = 3 };
enum class State : int { Closed = 0, Open = 1 };

class Recordset {
 public:
  // Runs `source`, which must be exactly one SELECT statement, on an open connection and reads the whole
  // result. Fails with NotOneSelect, ObjectClosed (no open connection, or this recordset is open already) or
  // QueryFailed; the recordset then stays closed.
  void Open(std::string_view source, const std::shared_ptr<Connection>& connection,
            CursorType cursor = CursorType::Static, LockType lock = LockType::ReadOnly,
            CommandType command = CommandType::Text);
  void Close();  // fails with ObjectClosed when it is not open
  data::State State() const { return table_ ? State::Open : State::Closed; }

  // Detaches the rows from their connection; they stay readable.
  void ActiveConnection(std::nullptr_t) {}
  void CursorLocation(data::CursorLocation) {}
  // Provider properties ("Update Criteria", "Update Resync") are accepted: nothing is ever updated.
  void Properties(std::string_view, int) {}

  std::int64_t RecordCount() const;
  bool EOF_() const;
  void MoveFirst();
  void MoveNext();  // past the last row is no failure once; reading there is
  // Stands on that row, counted from 1. Fails with EngineState when there is no such row.
  void AbsolutePosition(std::int64_t row);

  // The column of the row it stands on. Fails with ItemNotFound for a column that the result has not, and with
  // EngineState before the first and behind the last row.
  value::Variant Fields(std::string_view column) const;
  value::Variant Fields(std::size_t column) const;
  std::size_t field_count() const;
  std::string_view field_name(std::size_t column) const;
  // npos when there is none.
  std::size_t find_field(std::string_view column) const;
  static constexpr std::size_t npos = static_cast<std::size_t>(-1);

 private:
  const Table& open_table() const;

  std::unique_ptr<Table> table_;
  std::size_t row_ = 0;
};

}  // namespace dorvo::data
