#include "data/translate.h"

#include <algorithm>
#include <vector>

#include "data/sql_text.h"
#include "value/text.h"

namespace dorvo::data {
namespace {

using Kind = SqlToken::Kind;

// A token that counts, with what stands in its place in the other SQL.
struct Piece {
  SqlToken token;
  std::string blank;  // before it
  std::string out;
  std::size_t depth = 0;  // of the parentheses that it stands in; a parenthesis counts as outside its pair

  bool is(std::string_view word) const { return token.is(word); }
  bool names() const { return token.kind == Kind::Word || token.kind == Kind::Name; }
};

using Pieces = std::vector<Piece>;

Pieces pieces_of(std::string_view select) {
  Pieces pieces;
  std::string blank;
  std::size_t depth = 0;
  for (const SqlToken& token : sql_tokens(select)) {
    if (token.kind == Kind::Blank) {
      blank = token.text;
      continue;
    }
    if (token.is(")") && depth > 0) --depth;
    pieces.push_back({token, blank, std::string(token.text), depth});
    if (token.is("(")) ++depth;
    blank.clear();
  }
  return pieces;
}

bool is_at(const Pieces& pieces, std::size_t at, std::string_view word) {
  return at < pieces.size() && pieces[at].is(word);
}

// The index of the parenthesis that closes the one at `open`; the number of pieces when none does.
std::size_t closing(const Pieces& pieces, std::size_t open) {
  std::size_t at = open + 1;
  while (at < pieces.size() && !(pieces[at].is(")") && pieces[at].depth == pieces[open].depth)) ++at;
  return at;
}

// Takes pieces out; what follows them moves to their place.
void erase(Pieces& pieces, std::size_t from, std::size_t to) {
  if (to < pieces.size()) pieces[to].blank = pieces[from].blank;
  for (std::size_t at = from; at < to; ++at) pieces[at].out.clear(), pieces[at].blank.clear();
}

void drop_end(Pieces& pieces) {
  if (!pieces.empty() && pieces.back().is(";")) pieces.pop_back();
}

// SQLite has no schema of that name; PostgreSQL has one.
void drop_schema(Pieces& pieces) {
  for (std::size_t at = 0; at + 1 < pieces.size(); ++at) {
    const bool leads = at == 0 || !pieces[at - 1].is(".");
    if (leads && pieces[at].names() && value::same_name(pieces[at].token.name(), "dbo") && pieces[at + 1].is("."))
      erase(pieces, at, at + 2);
  }
}

// N'...' is an ordinary text where all text is Unicode.
void drop_unicode_marks(Pieces& pieces) {
  for (std::size_t at = 0; at + 1 < pieces.size(); ++at)
    if (pieces[at].is("n") && pieces[at + 1].token.kind == Kind::Text && pieces[at + 1].blank.empty())
      pieces[at].out.clear();
}

// "yearid=5and ..." is read by SQL Server alone.
void part_numbers_from_words(Pieces& pieces) {
  for (std::size_t at = 1; at < pieces.size(); ++at)
    if (pieces[at].token.kind == Kind::Word && pieces[at - 1].token.kind == Kind::Number && pieces[at].blank.empty())
      pieces[at].blank = " ";
}

// A quoted name means the column in any capitals, as on SQL Server; PostgreSQL would take it to the letter, and holds
// the names of the schema in lower case.
void fold_quoted_names(Pieces& pieces) {
  for (Piece& piece : pieces) {
    if (piece.token.kind != Kind::Name) continue;
    std::string quoted = "\"";
    for (const char c : value::lower_name(piece.token.name())) quoted += c == '"' ? "\"\"" : std::string(1, c);
    piece.out = quoted + '"';
  }
}

// CONVERT(varchar, d, 103) and CONVERT(varchar(10), d, 103): d as dd/mm/yyyy.
struct DateText {
  std::string_view before, after;  // of d
};
void write_dates(Pieces& pieces, const DateText& form) {
  for (std::size_t at = 0; at + 3 < pieces.size(); ++at) {
    if (!pieces[at].is("convert") || !pieces[at + 1].is("(")) continue;
    if (!pieces[at + 2].is("varchar") && !pieces[at + 2].is("nvarchar") && !pieces[at + 2].is("char")) continue;
    std::size_t comma = at + 3;
    if (pieces[comma].is("(")) comma = closing(pieces, comma) + 1;
    const std::size_t end = closing(pieces, at + 1);
    if (!is_at(pieces, comma, ",") || end >= pieces.size() || end < comma + 4) continue;
    if (pieces[end - 1].token.text != "103" || !pieces[end - 2].is(",")) continue;
    erase(pieces, at, comma);
    pieces[comma].out = form.before;
    erase(pieces, end - 2, end);
    pieces[end].out = form.after;
  }
}

bool is_one_of(const Piece& piece, std::initializer_list<std::string_view> words) {
  return std::any_of(words.begin(), words.end(), [&](std::string_view word) { return piece.is(word); });
}

// Words that a parenthesis may follow though they call nothing.
bool is_keyword(const Piece& piece) {
  return is_one_of(piece, {"select", "distinct", "all", "any", "some",   "exists", "from",    "join",     "on",
                           "where",  "and",      "or",  "not", "in",     "like",   "between", "case",     "when",
                           "then",   "else",     "as",  "by",  "having", "union",  "except",  "intersect"});
}

// Joins of text. A chain is a run of operands of one depth with + between; when one of them is surely a text, every
// + of the chain joins.
class Joins {
 public:
  explicit Joins(Pieces& pieces) : pieces_(pieces) {}
  void write() {
    for (std::size_t at = 0; at < pieces_.size();) at = chain(at);
  }

 private:
  // Reads the chain that begins at `at` and returns where the next one may begin.
  std::size_t chain(std::size_t at) {
    std::vector<std::size_t> pluses;
    bool text = false;
    std::size_t next = operand(at, text);
    if (next == at) return at + 1;
    while (is_at(pieces_, next, "+")) {
      const std::size_t behind = operand(next + 1, text);
      if (behind == next + 1) break;
      pluses.push_back(next);
      next = behind;
    }
    if (text)
      for (const std::size_t plus : pluses) pieces_[plus].out = "||";
    return next;
  }

  // Where the operand that begins at `at` ends; `at` itself when none does. What stands in its parentheses may hold
  // chains of its own.
  std::size_t operand(std::size_t at, bool& text) {
    if (at >= pieces_.size()) return at;
    const Piece& piece = pieces_[at];
    if (piece.token.kind == Kind::Text || piece.token.kind == Kind::Number) {
      text |= piece.token.kind == Kind::Text;
      return at + 1;
    }
    if (piece.is("(")) return parentheses(at, text);
    if (!piece.names() || is_keyword(piece)) return at;
    if (is_at(pieces_, at + 1, "(")) {
      bool inner = false;
      text |= piece.is("convert") && is_at(pieces_, at + 2, "varchar");
      return parentheses(at + 1, inner);
    }
    if (piece.is("n") && at + 1 < pieces_.size() && pieces_[at + 1].token.kind == Kind::Text) {
      text = true;
      return at + 2;
    }
    return is_at(pieces_, at + 1, ".") ? std::max(at + 1, operand(at + 2, text)) : at + 1;
  }

  // A group of one chain is itself a text when the chain is.
  std::size_t parentheses(std::size_t open, bool& text) {
    const std::size_t end = closing(pieces_, open);
    for (std::size_t at = open + 1; at < end;) {
      const std::size_t begin = at;
      at = chain(at);
      if (begin == open + 1 && at == end) text |= joins(begin, end);
    }
    return std::min(end + 1, pieces_.size());
  }

  bool joins(std::size_t from, std::size_t to) const {
    return std::any_of(pieces_.begin() + static_cast<std::ptrdiff_t>(from),
                       pieces_.begin() + static_cast<std::ptrdiff_t>(to),
                       [](const Piece& piece) { return piece.out == "||" || piece.token.kind == Kind::Text; });
  }

  Pieces& pieces_;
};

bool ends_items(const Piece& piece) {
  return is_one_of(piece, {"having", "order", "union", "except", "intersect", "offset", "limit"});
}

// The items of every ORDER BY or GROUP BY: where each begins and ends.
struct Item {
  std::size_t from, to;
};
std::vector<Item> items(const Pieces& pieces, std::string_view kind, std::size_t deepest) {
  std::vector<Item> found;
  for (std::size_t at = 0; at + 1 < pieces.size(); ++at) {
    if (!pieces[at].is(kind) || !pieces[at + 1].is("by") || pieces[at].depth > deepest) continue;
    const std::size_t depth = pieces[at].depth;
    std::size_t from = at + 2;
    for (std::size_t to = from;; ++to) {
      const bool here = to < pieces.size() && pieces[to].depth == depth;
      const bool ends = to >= pieces.size() || pieces[to].depth < depth || (here && ends_items(pieces[to]));
      if (!ends && !(here && pieces[to].is(","))) continue;
      if (to > from) found.push_back({from, to});
      if (ends) break;
      from = to + 1;
    }
  }
  return found;
}

constexpr std::size_t kAnyDepth = static_cast<std::size_t>(-1);

bool is_qualified(const Pieces& pieces, std::size_t at) {
  return at + 2 < pieces.size() && pieces[at].names() && pieces[at + 1].is(".") && pieces[at + 2].names();
}

bool is_alias(const Pieces& pieces, const std::string& name) {
  for (std::size_t at = 1; at < pieces.size() && !(pieces[at].depth == 0 && pieces[at].is("from")); ++at)
    if (pieces[at].depth == 0 && pieces[at - 1].is("as") && value::same_name(pieces[at].token.name(), name))
      return true;
  return false;
}

bool is_grouped(const Pieces& pieces, const std::string& table, const std::string& name) {
  const std::vector<Item> groups = items(pieces, "group", 0);
  return std::any_of(groups.begin(), groups.end(), [&](const Item& item) {
    return is_qualified(pieces, item.from) && value::same_name(pieces[item.from].token.name(), table) &&
           value::same_name(pieces[item.from + 2].token.name(), name);
  });
}

// "ORDER BY a.Name" where the rows are grouped, but not by a.Name: no database could order by that column, so that the
// alias of the select list is meant.
void order_by_alias(Pieces& pieces) {
  if (items(pieces, "group", 0).empty()) return;
  for (const Item& item : items(pieces, "order", 0)) {
    if (!is_qualified(pieces, item.from)) continue;
    const std::string table = pieces[item.from].token.name();
    const std::string name = pieces[item.from + 2].token.name();
    if (is_alias(pieces, name) && !is_grouped(pieces, table, name)) erase(pieces, item.from, item.from + 2);
  }
}

// NULLs stand before all values, as on SQL Server.
void order_nulls(Pieces& pieces) {
  for (const Item& item : items(pieces, "order", kAnyDepth)) {
    Piece& last = pieces[item.to - 1];
    last.out += last.is("desc") ? " NULLS LAST" : " NULLS FIRST";
  }
}

std::string joined(const Pieces& pieces) {
  std::string text;
  for (const Piece& piece : pieces) text += piece.blank + piece.out;
  return text;
}

}  // namespace

std::string translate(std::string_view select, Dialect dialect) {
  if (dialect == Dialect::TransactSql) return std::string(select);
  Pieces pieces = pieces_of(select);
  drop_end(pieces);
  part_numbers_from_words(pieces);
  drop_unicode_marks(pieces);
  Joins(pieces).write();
  order_by_alias(pieces);
  if (dialect == Dialect::Sqlite) {
    write_dates(pieces, {"strftime('%d/%m/%Y',", ")"});
    drop_schema(pieces);
  } else {
    write_dates(pieces, {"to_char(", ", 'DD/MM/YYYY')"});
    fold_quoted_names(pieces);
    order_nulls(pieces);
  }
  return joined(pieces);
}

}  // namespace dorvo::data
