#include "data/sql_text.h"

#include <algorithm>
#include <array>

#include "value/failure.h"
#include "value/text.h"

namespace dorvo::data {
namespace {

using Kind = SqlToken::Kind;

constexpr std::string_view kBlanks = " \t\r\n\f";
constexpr std::string_view kSymbols = "+-*/%<>=!.,;()&|^~:";

bool is_digit(char c) {
  return c >= '0' && c <= '9';
}
bool is_hex_digit(char c) {
  return is_digit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}
bool starts_word(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '#' || c == '@';
}
bool is_word(char c) {
  return starts_word(c) || is_digit(c) || c == '$';
}

template <class Test>
std::size_t run_length(std::string_view text, std::size_t from, Test test) {
  while (from < text.size() && test(text[from])) ++from;
  return from;
}

// Length with both quotes; a doubled quote stands for itself. 0 when it is not closed.
std::size_t quoted_length(std::string_view text, char quote) {
  for (std::size_t at = 1; at < text.size(); ++at) {
    if (text[at] != quote) continue;
    if (at + 1 < text.size() && text[at + 1] == quote) {
      ++at;
    } else {
      return at + 1;
    }
  }
  return 0;
}

// A bracket inside the brackets is read differently by the databases: 0, as if it were not closed.
std::size_t bracketed_length(std::string_view text) {
  const std::size_t end = text.find_first_of("[]", 1);
  if (end == std::string_view::npos || text[end] == '[') return 0;
  if (end + 1 < text.size() && text[end + 1] == ']') return 0;
  return end + 1;
}

std::size_t number_length(std::string_view text) {
  if (text.size() > 2 && text[0] == '0' && (text[1] == 'x' || text[1] == 'X')) return run_length(text, 2, is_hex_digit);
  std::size_t at = run_length(text, 0, is_digit);
  if (at < text.size() && text[at] == '.') at = run_length(text, at + 1, is_digit);
  if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
    std::size_t power = at + 1;
    if (power < text.size() && (text[power] == '+' || text[power] == '-')) ++power;
    const std::size_t end = run_length(text, power, is_digit);
    if (end > power) at = end;
  }
  return at;
}

SqlToken closed(Kind kind, std::string_view text, std::size_t length) {
  return length == 0 ? SqlToken{Kind::Broken, text} : SqlToken{kind, text.substr(0, length)};
}

SqlToken first_token(std::string_view text) {
  const char c = text[0];
  const char next = text.size() > 1 ? text[1] : '\0';
  if (kBlanks.find(c) != std::string_view::npos)
    return {Kind::Blank, text.substr(0, std::min(text.find_first_not_of(kBlanks), text.size()))};
  if (c == '-' && next == '-') return {Kind::Comment, text.substr(0, std::min(text.find('\n'), text.size()))};
  if (c == '/' && next == '*') {
    const std::size_t end = text.find("*/", 2);
    return closed(Kind::Comment, text, end == std::string_view::npos ? 0 : end + 2);
  }
  if (c == '\'') return closed(Kind::Text, text, quoted_length(text, c));
  if (c == '"') return closed(Kind::Name, text, quoted_length(text, c));
  if (c == '[') return closed(Kind::Name, text, bracketed_length(text));
  if (starts_word(c)) return {Kind::Word, text.substr(0, run_length(text, 0, is_word))};
  if (is_digit(c) || (c == '.' && is_digit(next))) return {Kind::Number, text.substr(0, number_length(text))};
  if (kSymbols.find(c) != std::string_view::npos) return {Kind::Symbol, text.substr(0, 1)};
  return {Kind::Broken, text.substr(0, 1)};
}

// Words that begin a statement of their own or make a SELECT write. SQL Server needs no semicolon between statements,
// so they are refused wherever they stand; all are reserved there, so that no plain column can bear such a name.
constexpr auto kForbidden = std::to_array<std::string_view>(
    {"alter",    "backup",      "begin",    "break",      "bulk",           "checkpoint", "close",    "commit",
     "continue", "create",      "dbcc",     "deallocate", "declare",        "delete",     "deny",     "drop",
     "exec",     "execute",     "fetch",    "goto",       "grant",          "if",         "insert",   "into",
     "kill",     "merge",       "open",     "openquery",  "opendatasource", "openrowset", "print",    "raiserror",
     "readtext", "reconfigure", "restore",  "return",     "revert",         "revoke",     "rollback", "save",
     "set",      "setuser",     "shutdown", "truncate",   "update",         "updatetext", "use",      "waitfor",
     "while",    "writetext"});

bool forbidden(const std::string& word) {
  return std::find(kForbidden.begin(), kForbidden.end(), word) != kForbidden.end();
}

[[noreturn]] void refuse(const std::string& what, std::string_view sql, std::string_view where) {
  const auto at = static_cast<std::size_t>(where.data() - sql.data()) + 1;
  throw value::Failure(value::Error::NotOneSelect,
                       "A query must be exactly one SELECT statement: " + what + " at character " + std::to_string(at));
}

void check_lexical(const SqlToken& token, const SqlToken* before, std::string_view sql) {
  if (token.kind == Kind::Comment) refuse("a comment stands", sql, token.text);
  if (token.kind == Kind::Broken && token.text.size() > 1)
    refuse("a quote, bracket or comment is not closed", sql, token.text);
  if (token.kind == Kind::Broken) refuse("a character that is no SQL stands", sql, token.text);
  // In E'...' a backslash would hide the closing quote from PostgreSQL.
  if (token.kind == Kind::Text && before && before->is("e")) refuse("an escaped text stands", sql, before->text);
}

// What is nested deeper than any report's text would cost time and memory without end.
void check_depth(const std::vector<SqlToken>& tokens, std::string_view sql) {
  constexpr int kDeepest = 50;
  int depth = 0;
  for (const SqlToken& token : tokens) {
    if (token.is("(") && ++depth > kDeepest) refuse("parentheses nest too deep", sql, token.text);
    if (token.is(")")) --depth;
  }
}

}  // namespace

bool SqlToken::is(std::string_view word) const {
  return (kind == Kind::Word || kind == Kind::Symbol) && value::same_name(text, word);
}

std::string SqlToken::name() const {
  if (kind != Kind::Name) return std::string(text);
  std::string plain;
  const std::string_view inner = text.substr(1, text.size() - 2);
  for (std::size_t at = 0; at < inner.size(); ++at) {
    plain.push_back(inner[at]);
    if (inner[at] == '"') ++at;  // stands doubled
  }
  return plain;
}

std::vector<SqlToken> sql_tokens(std::string_view sql) {
  std::vector<SqlToken> tokens;
  while (!sql.empty()) {
    tokens.push_back(first_token(sql));
    sql.remove_prefix(tokens.back().text.size());
  }
  return tokens;
}

void check_one_select(std::string_view sql) {
  std::vector<SqlToken> tokens = sql_tokens(sql);
  for (std::size_t at = 0; at < tokens.size(); ++at) check_lexical(tokens[at], at ? &tokens[at - 1] : nullptr, sql);
  std::erase_if(tokens, [](const SqlToken& token) { return token.kind == Kind::Blank; });
  if (!tokens.empty() && tokens.back().is(";")) tokens.pop_back();
  if (tokens.empty()) refuse("the text is empty", sql, sql);
  check_depth(tokens, sql);
  if (!tokens[0].is("select"))
    refuse("\"" + std::string(tokens[0].text.substr(0, 20)) + "\" stands", sql, tokens[0].text);

  for (std::size_t at = 1; at < tokens.size(); ++at) {
    const SqlToken& token = tokens[at];
    const SqlToken& before = tokens[at - 1];
    if (token.is(";")) refuse("a second statement begins", sql, token.text);
    if (token.kind != Kind::Word) continue;
    const bool inner =
        before.is("(") || before.is("union") || before.is("all") || before.is("except") || before.is("intersect");
    if (token.is("select") && !inner) refuse("a second SELECT begins", sql, token.text);
    if (forbidden(value::lower_name(token.text))) refuse("\"" + std::string(token.text) + "\" stands", sql, token.text);
    // A SELECT that draws a number writes to the sequence.
    if (token.is("value") && before.is("next")) refuse("\"NEXT VALUE\" stands", sql, before.text);
  }
}

}  // namespace dorvo::data
