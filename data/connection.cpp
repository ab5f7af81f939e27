#include "data/connection.h"

#include <chrono>
#include <map>

#include "data/connection_text.h"
#include "data/sql_text.h"
#include "data/translate.h"

namespace dorvo::data {
namespace {

using Clock = std::chrono::steady_clock;
constexpr std::chrono::minutes kIdle{5};
constexpr std::size_t kMostKept = 64;  // translated texts

std::unique_ptr<Session> open_session(std::string_view connection_text) {
  const ConnectionText text = ConnectionText::parse(connection_text);
  return text.kind() == ConnectionText::Kind::SqliteFile ? open_sqlite(text) : open_odbc(text);
}

// Connections by their text.
struct Pooled {
  std::shared_ptr<Connection> connection;
  Clock::time_point last_use;
};
std::map<std::string, Pooled, std::less<>>& pool() {
  static std::map<std::string, Pooled, std::less<>> connections;
  return connections;
}

Connection::Watcher& watcher_of_all() {
  static Connection::Watcher watcher;
  return watcher;
}

void close_idle(Clock::time_point now) {
  std::erase_if(pool(), [&](const auto& entry) {
    const auto& [connection, last_use] = entry.second;
    return !connection->is_open() || (connection.use_count() == 1 && now - last_use > kIdle);
  });
}

}  // namespace

Connection::Connection(std::string_view connection_text)
    : text_(connection_text), session_(open_session(connection_text)) {}

std::shared_ptr<Connection> Connection::open(std::string_view connection_text) {
  return std::shared_ptr<Connection>(new Connection(connection_text));
}

std::shared_ptr<Connection> Connection::pooled(std::string_view connection_text) {
  const Clock::time_point now = Clock::now();
  close_idle(now);
  const auto found = pool().find(connection_text);
  if (found != pool().end()) {
    found->second.last_use = now;
    return found->second.connection;
  }
  std::shared_ptr<Connection> made = open(connection_text);
  pool().insert({std::string(connection_text), {made, now}});
  return made;
}

void Connection::begin_run(std::string_view connection_text, Connection* own) {
  if (own) own->renew();
  const auto found = pool().find(connection_text);
  if (found != pool().end() && found->second.connection.get() != own) found->second.connection->renew();
}

void Connection::watch(Watcher watcher) {
  watcher_of_all() = std::move(watcher);
}

std::unique_ptr<Table> Connection::query(std::string_view select) {
  if (!session_) throw value::Failure(value::Error::ObjectClosed, "The connection to the database is closed");
  if (watcher_of_all()) watcher_of_all()(select);
  const KeyedText keyed = split_key(select);
  if (const auto known = translated_.find(keyed.text); known != translated_.end())
    return session_->query(known->second + std::string(keyed.key));
  check_one_select(select);
  std::string translated = translate(select, session_->dialect());
  keep_translation(keyed, translated);
  return session_->query(translated);
}

void Connection::keep_translation(const KeyedText& keyed, std::string_view translated) {
  if (keyed.key.empty() || !translated.ends_with(keyed.key)) return;
  if (translated_.size() == kMostKept) translated_.clear();
  translated.remove_suffix(keyed.key.size());
  translated_.emplace(keyed.text, translated);
}

void Connection::renew() {
  if (!session_ || text_.empty() || session_->alive()) return;
  session_ = open_session(text_);
}

}  // namespace dorvo::data
