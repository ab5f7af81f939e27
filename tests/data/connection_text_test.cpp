#include "data/connection_text.h"

#include <gtest/gtest.h>

#include "value/failure.h"

namespace dorvo::data {
namespace {

using Kind = ConnectionText::Kind;
using value::Error;
using value::Failure;

TEST(ConnectionText, FilesOfTheEmbeddedDatabase) {
  struct Case {
    const char* text;
    const char* file;
  };
  static constexpr Case kCases[] = {
      {"practice.db", "practice.db"},
      {"  /srv/practice data/p.db ", "/srv/practice data/p.db"},
      {"/srv/a=b;c.db", "/srv/a=b;c.db"},
      {"./a=b.db", "./a=b.db"},
      {"Provider=SQLite;Data Source=x", "x"},
      {"provider = sqlite3 ; DATA SOURCE = \"/a;b.db\" ;", "/a;b.db"},
      {"Provider=SQLite;Data Source={/a}}b.db}", "/a}b.db"},
      {"Provider=SQLite;Data Source='it''s.db';;", "it's.db"},
      {"Provider=SQLite;Data Source=/a=b", "/a=b"},
  };
  for (const Case& c : kCases) {
    const ConnectionText text = ConnectionText::parse(c.text);
    EXPECT_EQ(text.kind(), Kind::SqliteFile) << c.text;
    EXPECT_EQ(text.file(), c.file) << c.text;
  }
}

TEST(ConnectionText, Servers) {
  struct Case {
    const char* text;
    Kind kind;
  };
  static constexpr Case kCases[] = {
      {"Provider=SQLOLEDB.1;Data Source=srv;Initial Catalog=p", Kind::SqlServer},
      {"Provider=sqlncli11;Server=srv", Kind::SqlServer},
      {"Provider=SQLNCLI11.1;Server=srv", Kind::SqlServer},
      {"Provider=MSOLEDBSQL19;Server=srv", Kind::SqlServer},
      {"Provider=PostgreSQL;Data Source=srv", Kind::PostgreSql},
      {"Provider=MSDASQL.1;DSN=practice", Kind::Odbc},
      {"DSN=practice", Kind::Odbc},
      {"Driver={PostgreSQL Unicode};Server=srv;PWD={a;b}}c}", Kind::Odbc},
  };
  for (const Case& c : kCases) EXPECT_EQ(ConnectionText::parse(c.text).kind(), c.kind) << c.text;
}

TEST(ConnectionText, ValuesAreFoundInAnyCapitalsTheFirstOfSeveral) {
  const auto text =
      ConnectionText::parse("Provider=SQLOLEDB;PASSWORD=\"a\"\"b;c\";User ID=sa;Password=later;PWD=other");
  EXPECT_EQ(text.password(), "a\"b;c");
  EXPECT_EQ(text.value({"UID", "User ID"}), "sa");
  EXPECT_EQ(text.value({"Database"}), "");
}

TEST(ConnectionText, BadTextsAreRefusedWithoutTheirValues) {
  struct Case {
    const char* text;
    const char* says;
  };
  static constexpr Case kCases[] = {
      {"", "it is empty"},
      {"  ", "it is empty"},
      {"DSN=x;PWD=geh;eim", "item 3 has no \"=\""},
      {"DSN=x;=geheim", "item 2 has no name"},
      {"DSN=x;PWD={geheim", "the quote or brace of item 2 is not closed"},
      {"DSN=x;PWD=\"geheim", "the quote or brace of item 2 is not closed"},
      {"DSN=x;PWD={geheim} geheim;UID=a", "behind the quote or brace of item 2"},
      {"Provider=Oracle;Password=geheim", "its provider is unknown"},
      {"Provider=SQLOLEDB Data Source=x Password=geheim", "its provider is unknown"},
      {"Password=geheim;Server=x", "no Provider, Driver or DSN"},
      {"Data Source=practice.db", "no Provider, Driver or DSN"},
      {"Provider=SQLite;Password=geheim", "names no Data Source"},
      {"a;b", "item 1 has no name"},
      {"{Driver}=x;Server=a/b;PWD=geheim", "item 1 has no name"},
      {"\xEF\xBB\xBF"
       "Driver=/x.so;Password=geheim",
       "item 1 has no name"},
  };
  for (const Case& c : kCases) {
    try {
      ConnectionText::parse(c.text);
      ADD_FAILURE() << "accepted: " << c.text;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), Error::BadConnectionText);
      EXPECT_NE(failure.description().find(c.says), std::string::npos) << failure.description();
      EXPECT_EQ(failure.description().find("geheim"), std::string::npos) << failure.description();
    }
  }
}

TEST(ConnectionText, MessagesLoseThePasswordAndTheirLineEnds) {
  EXPECT_EQ(without_password("[x] login failed\r\nPWD=geheim;geheim\n", "geheim"), "[x] login failed PWD=***;***");
  EXPECT_EQ(without_password("a ** b", "*"), "a ****** b");
  EXPECT_EQ(without_password("as it is", ""), "as it is");
}

}  // namespace
}  // namespace dorvo::data
