#include "data/translate.h"

#include <gtest/gtest.h>

namespace dorvo::data {
namespace {

struct Case {
  const char* in;
  const char* sqlite;
  const char* postgres;
};

constexpr Case kCases[] = {
    {"select * from settings ;", "select * from settings", "select * from settings"},
    // The schema.
    {"SELECT dbo.BAnk.BankName FROM dbo.CMaster WHERE x.dbo.y = [DBO].z",
     "SELECT BAnk.BankName FROM CMaster WHERE x.dbo.y = z",
     "SELECT dbo.BAnk.BankName FROM dbo.CMaster WHERE x.dbo.y = \"dbo\".z"},
    // Joins of text; sums stay.
    {"select dbo.BAnk.BankName+'   ' + Branch as BankName from t",
     "select BAnk.BankName||'   ' || Branch as BankName from t",
     "select dbo.BAnk.BankName||'   ' || Branch as BankName from t"},
    {"select sum(a.x + a.y) as s, a + b, 'c' + d from t", "select sum(a.x + a.y) as s, a + b, 'c' || d from t",
     "select sum(a.x + a.y) as s, a + b, 'c' || d from t"},
    {"select ('a' + b) + c, (d + e) + f from t", "select ('a' || b) || c, (d + e) + f from t",
     "select ('a' || b) || c, (d + e) + f from t"},
    {"select f(a + 'x') + 1, N'p' + q from t", "select f(a || 'x') + 1, 'p' || q from t",
     "select f(a || 'x') + 1, 'p' || q from t"},
    {"select x from t where a=+1 and b = c + d and n like 'x' + n",
     "select x from t where a=+1 and b = c + d and n like 'x' || n",
     "select x from t where a=+1 and b = c + d and n like 'x' || n"},
    {"select 'a + dbo.b CONVERT(varchar, d, 103)' from t", "select 'a + dbo.b CONVERT(varchar, d, 103)' from t",
     "select 'a + dbo.b CONVERT(varchar, d, 103)' from t"},
    // Dates.
    {"SELECT CONVERT(varchar, a.Fromdate, 103) + '-' + CONVERT(varchar(10), a.ToDate, 103) AS Column8 FROM t",
     "SELECT strftime('%d/%m/%Y', a.Fromdate) || '-' || strftime('%d/%m/%Y', a.ToDate) AS Column8 FROM t",
     "SELECT to_char( a.Fromdate, 'DD/MM/YYYY') || '-' || to_char( a.ToDate, 'DD/MM/YYYY') AS Column8 FROM t"},
    {"SELECT CONVERT(varchar, d, 101) FROM t", "SELECT CONVERT(varchar, d, 101) FROM t",
     "SELECT CONVERT(varchar, d, 101) FROM t"},
    // An order by the alias of the select list.
    {"select c.Name as name from CMaster a group by a.CustomerCode,c.Name order by a.Name asc",
     "select c.Name as name from CMaster a group by a.CustomerCode,c.Name order by Name asc",
     "select c.Name as name from CMaster a group by a.CustomerCode,c.Name order by Name asc NULLS FIRST"},
    {"select max(x) as CustomerCode from a group by a.CustomerCode order by a.CustomerCode",
     "select max(x) as CustomerCode from a group by a.CustomerCode order by a.CustomerCode",
     "select max(x) as CustomerCode from a group by a.CustomerCode order by a.CustomerCode NULLS FIRST"},
    {"select c.Name as name, a.* from a order by a.Name", "select c.Name as name, a.* from a order by a.Name",
     "select c.Name as name, a.* from a order by a.Name NULLS FIRST"},
    // The place of NULLs.
    {"select * from t order by f(a, b) desc, c", "select * from t order by f(a, b) desc, c",
     "select * from t order by f(a, b) desc NULLS LAST, c NULLS FIRST"},
    {"select (select max(x) from u order by x) from t", "select (select max(x) from u order by x) from t",
     "select (select max(x) from u order by x NULLS FIRST) from t"},
    // Quoted names mean the column in any capitals.
    {"select [Name], \"Group\"\"X\" from t", "select [Name], \"Group\"\"X\" from t",
     "select \"name\", \"group\"\"x\" from t"},
    {"select * from t where a=5and b=N'x'", "select * from t where a=5 and b='x'",
     "select * from t where a=5 and b='x'"},
};

TEST(Translate, TableOfTexts) {
  for (const Case& c : kCases) {
    EXPECT_EQ(translate(c.in, Dialect::TransactSql), c.in);
    EXPECT_EQ(translate(c.in, Dialect::Sqlite), c.sqlite);
    EXPECT_EQ(translate(c.in, Dialect::PostgreSql), c.postgres);
  }
}

TEST(Translate, BrokenTextsDoNotHang) {
  for (const char* text : {"",
                           "convert",
                           "convert(",
                           "convert(varchar",
                           "convert(varchar(",
                           "convert(varchar,",
                           "(",
                           ")",
                           "((((",
                           "))))",
                           "+",
                           "a+",
                           "+'x'+",
                           "order by",
                           "order by ,",
                           "group by",
                           "dbo",
                           "dbo.",
                           ".",
                           "a.",
                           "'",
                           "n",
                           "convert(varchar(10),d,103",
                           "(a+(b+('x'+"}) {
    EXPECT_NO_THROW(translate(text, Dialect::Sqlite)) << text;
    EXPECT_NO_THROW(translate(text, Dialect::PostgreSql)) << text;
  }
}

}  // namespace
}  // namespace dorvo::data
