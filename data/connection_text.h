// A connection text: which database is meant, and how it is reached.
//
// Understood are the ADO style ("Provider=SQLOLEDB.1;Data Source=...;Initial Catalog=..."), the ODBC style
// ("Driver={...};Server=...", "DSN=..."), "Provider=SQLite;Data Source=practice.db", and the plain path of a database
// file. Values may stand in "..." or '...' (the quote doubled inside) or in {...} (the closing brace doubled inside).
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dorvo::data {

class ConnectionText {
 public:
  // Names that one property goes by; unused places are empty.
  using Keys = std::array<std::string_view, 6>;

  enum class Kind {
    SqliteFile,  // file()
    Odbc,        // goes to ODBC as it stands
    SqlServer,   // ADO style for a SQL Server
    PostgreSql,  // ADO style for a PostgreSQL
  };

  // Fails with BadConnectionText. No message quotes any part of the text: where it is broken, a
  // password may stand anywhere.
  static ConnectionText parse(std::string_view text);

  Kind kind() const { return kind_; }
  const std::string& file() const { return file_; }
  const std::string& text() const { return text_; }  // as an ODBC driver takes it, for Kind::Odbc
  std::string password() const;                      // to be kept out of messages; empty when there is none

  // The value of the first of these keys that the text has, in any case; empty when it has none.
  std::string value(const Keys& keys) const;
  // All of them in their order.
  const std::vector<std::pair<std::string, std::string>>& pairs() const { return pairs_; }
  // Whether it has one of them.
  bool has(const Keys& keys) const;

 private:
  using Pair = std::pair<std::string, std::string>;
  const Pair* find(const Keys& keys) const;
  void choose_kind(std::string_view text);

  Kind kind_ = Kind::SqliteFile;
  std::string file_;
  std::string text_;
  std::vector<Pair> pairs_;
};

// `message` without the password of the connection text, on one line.
std::string without_password(std::string message, const std::string& password);

}  // namespace dorvo::data
