// Connections to the embedded database: opening, refusing, pooling.
#include "data/connection.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

#include "scratch_database.h"
#include "value/text.h"

namespace dorvo::data {
namespace {

using value::Error;
using value::Failure;

void write_file(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

// The file that a program leaves behind that dies in the middle of a change.
void leave_broken_change(const std::string& path) {
  ScratchDatabase database("CREATE TABLE t (a); INSERT INTO t VALUES (zeroblob(100000))");
  sqlite3* writer = nullptr;
  ASSERT_EQ(sqlite3_open(database.path().c_str(), &writer), SQLITE_OK);
  EXPECT_EQ(
      sqlite3_exec(writer, "PRAGMA cache_size = 1; BEGIN; DELETE FROM t; INSERT INTO t VALUES (randomblob(200000))",
                   nullptr, nullptr, nullptr),
      SQLITE_OK);
  std::filesystem::copy_file(database.path(), path);
  std::filesystem::copy_file(database.path() + "-journal", path + "-journal");
  sqlite3_close(writer);
}

TEST(Connection, WhatIsNoDatabaseFileIsTold) {
  ScratchFolder folder;
  write_file(folder.file("foreign.db"), std::string(4096, 'x'));
  leave_broken_change(folder.file("broken.db"));
  struct Case {
    std::string text, says;
  };
  for (const Case& c :
       {Case{folder.file("none.db"), "No such file or directory"}, Case{folder.file("."), "it is no file"},
        Case{folder.file("foreign.db"), "it is no SQLite database"},
        Case{folder.file("broken.db"),
             "it has a write-ahead log or a change that was broken off; a program that may write in its folder must "
             "open it first"}}) {
    try {
      Connection::open(c.text);
      ADD_FAILURE() << c.text;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), Error::CannotConnect);
      EXPECT_EQ(failure.description(), "Cannot open the database file \"" + c.text + "\": " + c.says);
    }
  }
}

TEST(Connection, AMissingTableOrColumnIsOneClearLineAndNothingIsEverWritten) {
  ScratchDatabase database("CREATE TABLE t (a INT); INSERT INTO t VALUES (1)");
  const auto connection = Connection::open(database.path());
  const std::string file = "Database file \"" + database.path() + "\": ";
  struct Case {
    std::string select;
    Error number;
    std::string says;
  };
  for (const Case& c :
       {Case{"select * from Customer", Error::QueryFailed, file + "no such table: Customer"},
        Case{"select b from dbo.t", Error::QueryFailed, file + "no such column: b"},
        Case{"select \"b\" from t", Error::QueryFailed, file + "no such column: b"},
        Case{"select from", Error::QueryFailed, file + "near \"from\": syntax error"},
        Case{"DELETE FROM t", Error::NotOneSelect, "\"DELETE\" stands at character 1"},
        Case{"SELECT 1; DELETE FROM t", Error::NotOneSelect, "a second statement begins at character 9"},
        Case{"PRAGMA user_version=7", Error::NotOneSelect, "\"PRAGMA\" stands at character 1"}}) {
    try {
      connection->query(c.select);
      ADD_FAILURE() << c.select;
    } catch (const Failure& failure) {
      EXPECT_EQ(failure.number(), c.number);
      EXPECT_TRUE(failure.description().ends_with(c.says)) << failure.description();
    }
  }
  EXPECT_EQ(connection->query("select a from t")->rows(), 1U);
}

TEST(Connection, AClosedOneTakesNoQuery) {
  ScratchDatabase database;
  const auto connection = Connection::open(database.path());
  connection->Close();
  EXPECT_FALSE(connection->is_open());
  try {
    connection->query("select 1");
    FAIL();
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.number(), Error::ObjectClosed);
  }
}

TEST(ConnectionPool, OneTextOneConnection) {
  ScratchDatabase database("CREATE TABLE t (a INT)");
  const auto first = Connection::pooled(database.path());
  EXPECT_EQ(Connection::pooled(database.path()), first);
  EXPECT_NE(Connection::pooled("Provider=SQLite;Data Source=" + database.path()), first);
  first->Close();
  const auto second = Connection::pooled(database.path());
  EXPECT_NE(second, first);
  EXPECT_TRUE(second->is_open());
}

TEST(ConnectionPool, AFileThatTookTheOldOnesPlaceIsOpenedAnew) {
  ScratchDatabase database("CREATE TABLE t (a INT); INSERT INTO t VALUES (1)");
  ScratchDatabase newer("CREATE TABLE t (a INT); INSERT INTO t VALUES (2)");
  const auto held = Connection::pooled(database.path());
  EXPECT_EQ(held->query("select a from t")->cell(0, 0), value::Variant(1));
  std::filesystem::rename(newer.path(), database.path());
  // In the middle of a run the old file goes on.
  EXPECT_EQ(Connection::pooled(database.path())->query("select a from t")->cell(0, 0), value::Variant(1));
  Connection::begin_run(database.path(), nullptr);
  EXPECT_EQ(Connection::pooled(database.path())->query("select a from t")->cell(0, 0), value::Variant(2));
  EXPECT_EQ(held->query("select a from t")->cell(0, 0), value::Variant(2));
}

TEST(Connection, AWatcherSeesTheTextsOfTheReports) {
  ScratchDatabase database("CREATE TABLE t (a INT)");
  std::vector<std::string> seen;
  Connection::watch([&](std::string_view text) { seen.emplace_back(text); });
  Connection::open(database.path())->query("select a from dbo.t");
  Connection::watch({});
  Connection::open(database.path())->query("select 2");
  EXPECT_EQ(seen, std::vector<std::string>{"select a from dbo.t"});
}

}  // namespace
}  // namespace dorvo::data
