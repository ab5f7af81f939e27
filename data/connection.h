// An open, read-only connection to the practice's database.
//
// Made from a connection text (connection_text.h); the driver behind it is chosen by the text. Held by
// std::shared_ptr: `myConn`, and every data control that runs on the same text. One thread.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "data/driver.h"

namespace dorvo::data {

class Connection {
 public:
  // Opens a connection. Fails with BadConnectionText or CannotConnect; no message ever holds a password.
  static std::shared_ptr<Connection> open(std::string_view connection_text);

  // The connection to this text that the pool has at hand, or a new one. Fails as open() does.
  static std::shared_ptr<Connection> pooled(std::string_view connection_text);

  explicit Connection(std::unique_ptr<Session> session) : session_(std::move(session)) {}

  // Runs one SELECT, translated for the database behind this connection, and returns its rows.
  // Fails with NotOneSelect before the text reaches the database, ObjectClosed or QueryFailed.
  std::unique_ptr<Table> query(std::string_view select);

  void Close() { session_.reset(); }
  bool is_open() const { return session_ != nullptr; }

 private:
  std::unique_ptr<Session> session_;
};

}  // namespace dorvo::data
