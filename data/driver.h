// The seam that every database driver fills: a session that runs one SELECT text and hands its rows over.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "data/table.h"

namespace dorvo::data {

class ConnectionText;

// Which SQL the database speaks; the report texts are written in TransactSql.
enum class Dialect { TransactSql, Sqlite, PostgreSql };

class Session {
 public:
  virtual ~Session() = default;
  virtual data::Dialect dialect() const = 0;

  // `select` is one statement in the session's own dialect. Fails with QueryFailed (the message of the database,
  // without a password), QueryTimeout, or CannotConnect when the connection is lost; the session is then dead.
  virtual std::unique_ptr<Table> query(const std::string& select) = 0;

  // False when the connection is known or found to be dead; may ask the server.
  virtual bool alive() = 0;
};

// The drivers. They fail with CannotConnect, or with BadConnectionText for what only the driver can judge.
std::unique_ptr<Session> open_sqlite(const ConnectionText& text);
std::unique_ptr<Session> open_odbc(const ConnectionText& text);

}  // namespace dorvo::data
