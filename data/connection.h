// An open, read-only connection to the practice's database.
//
// Made from a connection text (connection_text.h); the driver behind it is chosen by the text. Held by
// std::shared_ptr: `myConn`, and every data control that runs on the same text. Every result is read whole, so that
// several holders of one connection do not disturb one another. One thread.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "data/driver.h"
#include "data/keyed_text.h"

namespace dorvo::data {

class Connection {
 public:
  // Opens a connection. Fails with BadConnectionText or CannotConnect; no message ever holds a password.
  static std::shared_ptr<Connection> open(std::string_view connection_text);

  // For the start of a run: the connection to this text that is at hand, found alive or renewed, or a new one. A
  // connection that nobody has held or asked for during five minutes is closed. Fails as open() does.
  static std::shared_ptr<Connection> pooled(std::string_view connection_text);

  // Around a session that somebody else made.
  explicit Connection(std::unique_ptr<Session> session) : session_(std::move(session)) {}

  // Runs one SELECT, translated for the database behind this connection, and returns its rows.
  // Fails with NotOneSelect before the text reaches the database, ObjectClosed, or as Session::query() does.
  std::unique_ptr<Table> query(std::string_view select);

  // For the start of a run: a connection that was lost is opened anew, once and in silence. Never called in the middle
  // of a run, whose rows must all be of one connection. A closed one stays closed. Fails with CannotConnect.
  void renew();

  void Close() { session_.reset(); }
  bool is_open() const { return session_ != nullptr; }

 private:
  explicit Connection(std::string_view connection_text);

  void keep_translation(const KeyedText& keyed, std::string_view translated);

  std::string text_;  // empty when the session was made elsewhere: then it cannot be made anew
  std::unique_ptr<Session> session_;
  std::map<std::string, std::string, std::less<>> translated_;  // checked texts that end in a key, without it
};

}  // namespace dorvo::data
