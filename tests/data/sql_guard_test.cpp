#include <gtest/gtest.h>

#include "data/sql_text.h"
#include "value/failure.h"

namespace dorvo::data {
namespace {

using value::Error;
using value::Failure;

TEST(SqlGuard, OneSelectPasses) {
  for (const char* text : {
           "SELECT 1",
           "  \r\n\tselect * from settings ",
           "SELECT 1;",
           "SELECT 1 ; \n",
           "select 'a;b -- c /* d */ drop' as x",
           "select 'it''s; DROP TABLE x' from t",
           "select [drop], \"insert\", t.[update] from t",
           "select CustomerCode,max(RevisionNo)RevisionNo,Fromdate from CMaster group by CustomerCode,Fromdate",
           "select * from a where y =(SELECT MAX(a.yearid) FROM customer a)and x in (1,2,3)",
           "select 1 union all select 2 except select 3",
           "SELECT replace(Name,'a','b') FROM t order by Name desc",
           "select * from cdetail where EntryType='SALESUS81' and Particular <> 'Form \"C\"'",
           "select N'\xE0\xA4\xA8' as n from t with (nolock)",
           "select a from t where like_update = 1 and dropped = 2",
           "select next, value from t",
       })
    EXPECT_NO_THROW(check_one_select(text)) << text;
}

TEST(SqlGuard, AllElseIsRefused) {
  const std::string nul = std::string("SELECT 1") + '\0' + "; DROP TABLE x";
  for (const std::string& text : {
           std::string(""),
           std::string("   "),
           std::string(";"),
           std::string("INSERT INTO x VALUES (1)"),
           std::string("UPDATE x SET a=1"),
           std::string("delete from x"),
           std::string("DROP TABLE x"),
           std::string("PRAGMA writable_schema=1"),
           std::string("ATTACH 'x.db' AS y"),
           std::string("VACUUM INTO 'x'"),
           std::string("EXPLAIN SELECT 1"),
           std::string("WITH a AS (SELECT 1) INSERT INTO x SELECT * FROM a"),
           std::string("WITH a AS (SELECT 1) SELECT * FROM a"),
           std::string("SELECT * INTO y FROM x"),
           std::string("SELECT 1; SELECT 2"),
           std::string("SELECT 1;;"),
           std::string("SELECT 1; DROP TABLE x"),
           // SQL Server begins the next statement without a semicolon.
           std::string("SELECT 1 DROP TABLE x"),
           std::string("SELECT * FROM a SELECT * FROM b"),
           std::string("select 1 exec xp_cmdshell 'x'"),
           std::string("select * from t order by 1 waitfor delay '0:0:9'"),
           std::string("select * from openrowset('x','y','z')"),
           std::string("select * from t for update"),
           std::string("select 1, next value for dbo.numbers"),
           std::string("select 1 from t where a = dbo.select b from t"),
           // What a comment hides depends on the database.
           std::string("SELECT 1 /* x */"),
           std::string("SELECT 1 -- x"),
           std::string("SELECT 1 -- x\n; DROP TABLE x"),
           std::string("SELECT 1 /* /* */ ; DROP TABLE x -- */"),
           std::string("/* SELECT */ DROP TABLE x"),
           std::string("--SELECT\nDROP TABLE x"),
           // What is not closed, or closed elsewhere by another database.
           std::string("SELECT 'a"),
           std::string("SELECT \"a"),
           std::string("SELECT [a"),
           std::string("SELECT [a]]; DROP TABLE x --]"),
           std::string("SELECT E'\\' , '; DROP TABLE x; --'"),
           std::string("SELECT $$a$$"),
           std::string("SELECT `a`"),
           std::string("SELECT {fn now()}"),
           std::string("SELECT ?"),
           std::string("SELECT 1\xC2\xA0"
                       "DROP TABLE x"),
           std::string("\xEF\xBB\xBFSELECT 1"),
           nul,
           "select " + std::string(100000, '(') + "1" + std::string(100000, ')'),
       }) {
    try {
      check_one_select(text);
      ADD_FAILURE() << "passed: " << text;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), Error::NotOneSelect) << text;
      EXPECT_EQ(failure.description().find('\n'), std::string::npos) << text;
    }
  }
}

TEST(SqlGuard, TheMessageTellsWhatAndWhere) {
  try {
    check_one_select("select * from t where a in (1); drop table t");
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.description(),
              "A query must be exactly one SELECT statement: a second statement begins at character 31");
  }
}

TEST(SqlTokens, JoinedGiveTheTextBack) {
  const std::string text = "SELECT a.b+'x''y' , [c d], \"e\"\"f\", .5, 1E5, 0x1F /* k */ -- l\n FROM t\x01\xC3 'open";
  std::string joined;
  for (const SqlToken& token : sql_tokens(text)) joined += token.text;
  EXPECT_EQ(joined, text);
}

}  // namespace
}  // namespace dorvo::data
