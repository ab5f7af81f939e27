#include "data/odbc_text.h"

#include <gtest/gtest.h>

#include "value/failure.h"

namespace dorvo::data {
namespace {

using value::Error;
using value::Failure;

const std::vector<std::string> kMicrosoft = {"PostgreSQL ANSI", "FreeTDS", "ODBC Driver 17 for SQL Server",
                                             "ODBC Driver 18 for SQL Server"};
const std::vector<std::string> kDebian = {"PostgreSQL ANSI", "PostgreSQL Unicode", "SQLite3", "FreeTDS"};

TEST(OdbcText, AdoTextsBecomeThoseOfTheBestDriver) {
  struct Case {
    const char *ado, *microsoft, *freetds;
  };
  static constexpr Case kCases[] = {
      {"Provider=SQLOLEDB.1;Data Source=srv;Initial Catalog=Practice;User ID=sa;Password=geheim",
       "Driver={ODBC Driver 18 for SQL Server};Server=srv;Database=Practice;UID=sa;PWD=geheim;Encrypt=no",
       "Driver={FreeTDS};Server=srv;Port=1433;ClientCharset=UTF-8;Database=Practice;UID=sa;PWD=geheim"},
      {"Provider=SQLNCLI11;Server=srv\\express;Database=p;Integrated Security=SSPI",
       "Driver={ODBC Driver 18 for SQL Server};Server=srv\\express;Database=p;Trusted_Connection=yes;Encrypt=no",
       "Driver={FreeTDS};Server=srv\\express;ClientCharset=UTF-8;Database=p;Trusted_Connection=yes"},
      {"Provider=MSOLEDBSQL;Data Source=tcp:srv\\express,1533;Connect Timeout=5;Encrypt=Mandatory;Trust Server "
       "Certificate=Yes",
       "Driver={ODBC Driver 18 for SQL Server};Server=srv,1533;Encrypt=yes;TrustServerCertificate=yes",
       "Driver={FreeTDS};Server=srv;Port=1533;ClientCharset=UTF-8"},
      {"Provider=SQLOLEDB;Data Source=(local);User ID=\"a;b\";Password='g=e}h{\"';Persist Security Info=True;Packet "
       "Size=4096",
       "Driver={ODBC Driver 18 for SQL Server};Server=localhost;UID={a;b};PWD={g=e}}h{\"};Encrypt=no",
       "Driver={FreeTDS};Server=localhost;Port=1433;ClientCharset=UTF-8;UID={a;b};PWD={g=e}}h{\"}"},
      {"Provider=SQLOLEDB;Data Source=.\\x;Initial Catalog={My Practice};Application Name=Print;Workstation ID=desk 1",
       "Driver={ODBC Driver 18 for SQL Server};Server=localhost\\x;Database=My Practice;APP=Print;WSID=desk "
       "1;Encrypt=no",
       "Driver={FreeTDS};Server=localhost\\x;ClientCharset=UTF-8;Database=My Practice;APP=Print;WSID=desk 1"},
  };
  for (const Case& c : kCases) {
    const ConnectionText text = ConnectionText::parse(c.ado);
    EXPECT_EQ(odbc_text(text, kMicrosoft), c.microsoft);
    EXPECT_EQ(odbc_text(text, kDebian), c.freetds);
  }
}

TEST(OdbcText, PostgreSql) {
  const auto text = ConnectionText::parse(
      "Provider=PostgreSQL;Data Source=db,5433;Location=p;User ID=reader;Password=x y;SSL Mode=require");
  EXPECT_EQ(odbc_text(text, kDebian),
            "Driver={PostgreSQL Unicode};Servername=db;Port=5433;BoolsAsChar=0;Database=p;UID=reader;PWD=x "
            "y;SSLmode=require");
  EXPECT_EQ(odbc_text(ConnectionText::parse("Provider=PostgreSQL;Data Source=db"), {"PostgreSQL ANSI"}),
            "Driver={PostgreSQL ANSI};Servername=db;Port=5432;BoolsAsChar=0");
}

TEST(OdbcText, OdbcTextsGoAsTheyStand) {
  for (const char* text : {"DSN=practice", "Driver={PostgreSQL Unicode};Server=a;PWD={x;y}}z}; UID = b ;",
                           "driver=FreeTDS;Server=srv;Port=1433;TDS_Version=7.4;Foo=Bar"})
    EXPECT_EQ(odbc_text(ConnectionText::parse(text), kDebian), text);
}

TEST(OdbcText, TheProviderForOdbcPassesOn) {
  EXPECT_EQ(odbc_text(ConnectionText::parse("Provider=MSDASQL.1;Persist Security Info=False;Data Source=practice;User "
                                            "ID=a;Password={b;c};Initial Catalog=p"),
                      {}),
            "DSN=practice;UID=a;PWD={b;c};Database=p");
  EXPECT_EQ(
      odbc_text(ConnectionText::parse("Provider=MSDASQL;Extended Properties=\"Driver={FreeTDS};Server=srv\";UID=a"),
                {}),
      "Driver={FreeTDS};Server=srv;UID=a");
}

TEST(OdbcText, WithoutADriverTheFailureNamesWhatIsMissing) {
  for (const auto& [ado, says] : {std::pair("Provider=SQLOLEDB;Data Source=s;Password=geheim", "tdsodbc"),
                                  std::pair("Provider=PostgreSQL;Data Source=s;Password=geheim", "odbc-postgresql")}) {
    try {
      odbc_text(ConnectionText::parse(ado), {"SQLite3"});
      ADD_FAILURE() << ado;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), Error::CannotConnect);
      EXPECT_NE(failure.description().find(says), std::string::npos);
      EXPECT_EQ(failure.description().find("geheim"), std::string::npos);
    }
  }
}

TEST(OdbcText, TimeLimits) {
  const TimeLimits usual = time_limits(ConnectionText::parse("DSN=x"));
  EXPECT_EQ(usual.login.count(), 15);
  EXPECT_EQ(usual.query.count(), 60);
  const TimeLimits told = time_limits(ConnectionText::parse("Provider=SQLOLEDB;Connect Timeout=5;general timeout=300"));
  EXPECT_EQ(told.login.count(), 5);
  EXPECT_EQ(told.query.count(), 300);
  for (const char* text : {"DSN=x;Connect Timeout=0", "DSN=x;Command Timeout=-5",
                           "DSN=x;Connect Timeout=", "DSN=x;Connect Timeout=5s", "DSN=x;Connect Timeout=99999999"})
    EXPECT_THROW(time_limits(ConnectionText::parse(text)), Failure) << text;
}

}  // namespace
}  // namespace dorvo::data
