// A PostgreSQL of the tests' own, on loopback, gone with the object.
#pragma once

#include <string>

namespace dorvo::data {

class PostgresServer {
 public:
  // Of the whole test program; started when first asked for.
  static PostgresServer& shared();

  PostgresServer();
  ~PostgresServer();
  PostgresServer(const PostgresServer&) = delete;
  PostgresServer& operator=(const PostgresServer&) = delete;

  // As the owner of the database "practice", which has the schema dbo.
  void run(const std::string& sql) const;
  std::string answer(const std::string& sql) const;  // the first line
  void stop() const;                                 // as a pulled plug would
  void start() const;

  int port() const { return port_; }
  // Connection texts: the login `reader` may only read what it was granted.
  std::string text(const std::string& more = "") const;
  std::string text_of(const std::string& database, const std::string& user, const std::string& password,
                      const std::string& more = "") const;
  static const std::string kPassword;  // of `reader`, with every character that a text must quote

 private:
  void call(const std::string& command) const;

  std::string folder_;
  int port_ = 0;
};

// The first line that a shell command prints; throws std::runtime_error when it fails.
std::string run_command(const std::string& command);

}  // namespace dorvo::data
