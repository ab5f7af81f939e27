// An open, read-only connection to the practice's database.
//
// Made from a connection text (connection_text.h); the driver behind it is chosen by the text. Held by
// std::shared_ptr: `myConn`, and every data control that runs on the same text. Every result is read whole, so that
// several holders of one connection do not disturb one another. One thread.
#pragma once

#include <functional>
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

  // The connection to this text that is at hand, or a new one. One that nobody has held or asked for during five
  // minutes is closed. Fails as open() does.
  static std::shared_ptr<Connection> pooled(std::string_view connection_text);

  // Called at the start of a run, which will use `own` (may be null) and the pooled connection to this text: where
  // they were lost they are opened anew, once and in silence. In the middle of a run nothing is replaced, as its rows
  // must all be of one connection. Fails with CannotConnect.
  static void begin_run(std::string_view connection_text, Connection* own);

  // Sees every query text as the report wrote it, before it runs; for checks. An empty one ends that.
  using Watcher = std::function<void(std::string_view select)>;
  static void watch(Watcher watcher);

  // Around a session that somebody else made.
  explicit Connection(std::unique_ptr<Session> session) : session_(std::move(session)) {}

  // Runs one SELECT, translated for the database behind this connection, and returns its rows.
  // Fails with NotOneSelect before the text reaches the database, ObjectClosed, or as Session::query() does.
  std::unique_ptr<Table> query(std::string_view select);

  void Close() { session_.reset(); }
  bool is_open() const { return session_ != nullptr; }

 private:
  explicit Connection(std::string_view connection_text);
  void renew();

  void keep_translation(const KeyedText& keyed, std::string_view translated);

  std::string text_;  // empty when the session was made elsewhere: then it cannot be made anew
  std::unique_ptr<Session> session_;
  std::map<std::string, std::string, std::less<>> translated_;  // checked texts that end in a key, without it
};

}  // namespace dorvo::data
