// SQL text cut into tokens, for the guard and the translator.
//
// The tokens are views of the text, in order and without gaps: joined they give it back. Only lexical forms that SQL
// Server, PostgreSQL and SQLite read alike get a kind of their own; all else is Broken, so that no database can see
// another statement than the one that was looked at.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace dorvo::data {

struct SqlToken {
  enum class Kind {
    Blank,
    Word,    // keyword or plain name
    Name,    // "name" or [name]
    Number,  // 12, 12.5, 1E5, 0x1F
    Text,    // 'text'
    Symbol,  // one character
    Comment,
    Broken,  // not closed, or a character that the databases disagree on
  };
  Kind kind;
  std::string_view text;

  bool is(std::string_view word) const;  // the plain word or symbol, in any case
  std::string name() const;              // of a Word or Name, without its quotes
};

std::vector<SqlToken> sql_tokens(std::string_view sql);

// Fails with NotOneSelect unless the text is exactly one SELECT statement that only reads; one semicolon may follow it.
void check_one_select(std::string_view sql);

}  // namespace dorvo::data
