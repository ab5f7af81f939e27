#include "data/connection_text.h"

#include <algorithm>
#include <array>

#include "value/failure.h"
#include "value/text.h"

namespace dorvo::data {
namespace {

constexpr std::string_view kExpected =
    "expected \"Provider=...;Data Source=...\", \"Driver=...;Server=...\", \"DSN=...\" or the path of a database file";

[[noreturn]] void refuse(const std::string& what) {
  throw value::Failure(value::Error::BadConnectionText, "Bad connection text: " + what);
}

std::string item_name(std::size_t number) {
  return "item " + std::to_string(number);
}

bool is_key(std::string_view key) {
  return !key.empty() && std::all_of(key.begin(), key.end(), [](char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == ' ' || c == '_';
  });
}

// A path may hold "=" and ";" too, but no name of a property stands before its first "=".
bool is_list(std::string_view text) {
  const std::size_t equals = text.find('=');
  return equals != std::string_view::npos && is_key(value::trim(text.substr(0, equals)));
}

// A list whose first name is spoilt is no path, and its password must not be told as part of one.
bool is_spoilt_list(std::string_view text) {
  if (text.find(';') == std::string_view::npos) return false;
  const std::string lower = value::lower_name(text);
  const auto has = [&](std::string_view word) { return lower.find(word) != std::string::npos; };
  return !has("/") || has("pwd") || has("password");
}

// Reads the items of a list one after the other.
class Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  bool at_end() {
    while (!rest_.empty() && (rest_.front() == ';' || value::trim(rest_.substr(0, 1)).empty())) rest_.remove_prefix(1);
    return rest_.empty();
  }

  std::pair<std::string, std::string> next() {
    ++number_;
    const std::size_t mark = rest_.find_first_of("=;");
    if (mark == std::string_view::npos || rest_[mark] == ';')
      refuse(item_name(number_) + " has no \"=\"; expected NAME=VALUE between semicolons");
    const std::string_view key = value::trim(rest_.substr(0, mark));
    if (!is_key(key)) refuse(item_name(number_) + " has no name before its \"=\"");
    rest_.remove_prefix(mark + 1);
    while (!rest_.empty() && value::trim(rest_.substr(0, 1)).empty()) rest_.remove_prefix(1);
    return {std::string(key), read_value()};
  }

 private:
  std::string read_value() {
    if (!rest_.empty() && (rest_.front() == '"' || rest_.front() == '\'' || rest_.front() == '{')) return quoted();
    const std::string_view plain = rest_.substr(0, std::min(rest_.find(';'), rest_.size()));
    rest_.remove_prefix(plain.size());
    return std::string(value::trim(plain));
  }

  std::string quoted() {
    const char quote = rest_.front() == '{' ? '}' : rest_.front();
    rest_.remove_prefix(1);
    std::string plain;
    while (true) {
      const std::size_t end = rest_.find(quote);
      if (end == std::string_view::npos) refuse("the quote or brace of " + item_name(number_) + " is not closed");
      plain += rest_.substr(0, end);
      rest_.remove_prefix(end + 1);
      if (rest_.empty() || rest_.front() != quote) break;
      plain += quote;
      rest_.remove_prefix(1);
    }
    const std::size_t end = std::min(rest_.find(';'), rest_.size());
    if (!value::trim(rest_.substr(0, end)).empty())
      refuse("text stands behind the quote or brace of " + item_name(number_) + "; expected a semicolon");
    rest_.remove_prefix(end);
    return plain;
  }

  std::string_view rest_;
  std::size_t number_ = 0;
};

// Names of providers, without a version behind ("SQLOLEDB.1", "SQLNCLI11").
struct Provider {
  std::string_view name;
  ConnectionText::Kind kind;
};
constexpr std::array<Provider, 6> kProviders = {{
    {"sqloledb", ConnectionText::Kind::SqlServer},
    {"sqlncli", ConnectionText::Kind::SqlServer},
    {"msoledbsql", ConnectionText::Kind::SqlServer},
    {"postgresql", ConnectionText::Kind::PostgreSql},
    {"msdasql", ConnectionText::Kind::Odbc},
    {"sqlite", ConnectionText::Kind::SqliteFile},
}};

const Provider* find_provider(std::string_view name) {
  std::string plain = value::lower_name(name);
  while (!plain.empty() && ((plain.back() >= '0' && plain.back() <= '9') || plain.back() == '.')) plain.pop_back();
  const auto* row = std::find_if(kProviders.begin(), kProviders.end(),
                                 [&](const Provider& provider) { return provider.name == plain; });
  return row == kProviders.end() ? nullptr : row;
}

}  // namespace

ConnectionText ConnectionText::parse(std::string_view text) {
  text = value::trim(text);
  if (text.empty()) refuse("it is empty; " + std::string(kExpected));
  if (text.find('\0') != std::string_view::npos) refuse("it holds a NUL character");
  ConnectionText parsed;
  if (!is_list(text)) {
    if (is_spoilt_list(text)) refuse("item 1 has no name before a \"=\"; " + std::string(kExpected));
    parsed.file_ = text;
    return parsed;
  }
  for (Reader reader(text); !reader.at_end();) parsed.pairs_.push_back(reader.next());
  parsed.choose_kind(text);
  return parsed;
}

void ConnectionText::choose_kind(std::string_view text) {
  kind_ = Kind::Odbc;
  text_ = text;
  if (!has({"Provider"})) {
    if (!has({"Driver", "DSN", "FileDSN"})) refuse("it names no Provider, Driver or DSN; " + std::string(kExpected));
    return;
  }
  const Provider* provider = find_provider(value({"Provider"}));
  if (!provider)
    refuse("its provider is unknown; expected SQLOLEDB, SQLNCLI, MSOLEDBSQL, PostgreSQL, MSDASQL or SQLite");
  kind_ = provider->kind;
  if (kind_ == Kind::SqliteFile) {
    file_ = value({"Data Source"});
    if (file_.empty()) refuse("it names no Data Source; expected the path of the database file");
  }
}

std::string ConnectionText::password() const {
  return value({"Password", "PWD"});
}

std::string ConnectionText::value(const Keys& keys) const {
  const Pair* pair = find(keys);
  return pair ? pair->second : std::string();
}

bool ConnectionText::has(const Keys& keys) const {
  return find(keys) != nullptr;
}

const ConnectionText::Pair* ConnectionText::find(const Keys& keys) const {
  for (const Pair& pair : pairs_)
    if (std::any_of(keys.begin(), keys.end(), [&](auto key) { return value::same_name(key, pair.first); }))
      return &pair;
  return nullptr;
}

std::string without_password(std::string message, const std::string& password) {
  if (!password.empty())
    for (std::size_t at = 0; (at = message.find(password, at)) != std::string::npos; at += 3)
      message.replace(at, password.size(), "***");
  constexpr std::string_view kLineEnds = "\r\n\t";
  for (std::size_t at = 0; (at = message.find_first_of(kLineEnds, at)) != std::string::npos; ++at)
    message.replace(at, std::min(message.find_first_not_of(kLineEnds, at), message.size()) - at, " ");
  return std::string(value::trim(message));
}

}  // namespace dorvo::data
