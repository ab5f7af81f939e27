// Bad input: one clear line, the right exit status, nothing half-written.
#include <gtest/gtest.h>
#include <sqlite3.h>

#include "tests/host/host_run.h"

namespace dorvo::host {
namespace {

using Arguments = std::vector<std::string>;
using Names = std::set<std::string>;

class BadInput : public HostTest {
 protected:
  static void make_database(const std::string& sql) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open((folder() / "own.db").c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(database);
  }
  static void expect_failed_run(const Outcome& outcome, const std::string& said) {
    EXPECT_EQ(outcome.status, 1) << outcome.err;
    EXPECT_TRUE(is_one_line(outcome.err)) << outcome.err;
    EXPECT_NE(outcome.err.find(said), std::string::npos) << outcome.err;
    EXPECT_FALSE(fs::exists(folder() / "a.pdf"));
    const nlohmann::json dumped = dump();
    ASSERT_TRUE(dumped.is_object());
    ASSERT_EQ(dumped["messages"].size(), 1u);
    EXPECT_EQ("dorvoform: " + dumped["messages"][0].get<std::string>() + "\n", outcome.err);
    EXPECT_EQ(dumped["pages"].size(), 0u);
    for (const std::string& name : files()) EXPECT_EQ(name.find(".part"), std::string::npos) << name;
  }
};

TEST_F(BadInput, CommandLine) {
  const Arguments form = {"--class", "clsForm1"};
  const Arguments out = {"--out", "a.json"};
  struct Case {
    Arguments arguments;
    std::string said;
  };
  const std::string db = practice_file();
  const Case cases[] = {
      {{}, "command is required"},
      {{"paint"}, "paint"},
      {{"print"}, "required"},
      {{"print", "--db", db, "--class", "clsForm1"}, "--out"},
      {{"print", "--class", "clsForm1", "--out", "a.json"}, "db"},
      {{"print", "--db", db, "--db-env", "HOME", "--class", "clsForm1", "--out", "a.json"}, "db"},
      {{"print", "--db", db, "--out", "a.json"}, "class"},
      {{"print", "--db", db, "--class", "clsForm1", "--report", "Form1", "--out", "a.json"}, "report"},
      {{"print", "--db", db, "--class", "clsForm999", "--out", "a.json"}, "clsForm999"},
      {{"print", "--db", db, "--class", "Form1", "--out", "a.json"}, "\"Form1\""},
      {{"print", "--db", db, "--report", "Form999", "--out", "a.json"}, "Form999"},
      {{"print", "--db", db, "--class", "clsForm1", "--set", "PropHeading=x", "--out", "a.json"}, "PropHeading"},
      {{"print", "--db", db, "--class", "clsForm1", "--settings", "BlankForm=True", "--out", "a.json"}, "BlankForm"},
      {{"print", "--db", db, "--class", "clsForm1", "--set", "PropCMasterID=abc", "--out", "a.json"},
       "PropCMasterID=abc: expected a whole number"},
      {{"print", "--db", db, "--class", "clsForm1", "--set", "PropCMasterID=", "--out", "a.json"}, "whole number"},
      {{"print", "--db", db, "--class", "clsForm1", "--set", "PropCMasterID=99999999999", "--out", "a.json"},
       "whole number"},
      {{"print", "--db", db, "--class", "clsForm1", "--set", "BlankForm=yes", "--out", "a.json"}, "True or False"},
      {{"print", "--db", db, "--class", "clsForm1", "--set", "SHowForm=1", "--out", "a.json"}, "SHowForm"},
      {{"print", "--db", db, "--class", "clsForm1", "--settings", "myConn=x", "--out", "a.json"}, "myConn"},
      {{"print", "--db", db, "--class", "clsForm1", "--set", "PropCMasterID", "--out", "a.json"}, "NAME=VALUE"},
      {{"print", "--db", db, "--class", "clsAddressLabel", "--set", "ShowBorder=perhaps", "--out", "a.json"},
       "ShowBorder"},
      {{"print", "--db", db, "--class", "clsForm1", "--out", "a.doc"}, "a.doc"},
      {{"print", "--db", db, "--class", "clsForm1", "--out", "a.json", "--out", "a.json"}, "twice"},
      {{"print", "--db", db, "--class", "clsForm1", "--out", "a.json", "--option", "PDF.Colour=1"}, "PDF.Colour"},
      {{"print", "--db", db, "--class", "clsForm1", "--out", "a.json", "--option", "PDF.Version=x"}, "PDF.Version"},
      {{"print", "--db", db, "--class", "clsForm1", "--out", "a.json", "--layouts", "nowhere"}, "nowhere"},
      {{"demo-db"}, "FILE"},
      {{"demo-db", "x.db", "--dealers", "many"}, "dealers"},
      {{"demo-db", "x.db", "--years", "-1"}, "years"},
  };
  for (const Case& c : cases) {
    std::string command;
    for (const std::string& argument : c.arguments) command += argument + " ";
    const Outcome outcome = run(c.arguments);
    EXPECT_EQ(outcome.status, 2) << command;
    EXPECT_TRUE(is_one_line(outcome.err)) << command << "\n" << outcome.err;
    EXPECT_NE(outcome.err.find(c.said), std::string::npos) << command << "\n" << outcome.err;
    EXPECT_EQ(outcome.out, "") << command;
    EXPECT_EQ(files(), Names{}) << command;
  }
}

TEST_F(BadInput, Database) {
  std::ofstream(folder() / "foreign.db") << "This is a letter and no database at all, however long it may be.";
  struct Case {
    std::string database;
    std::string said;
  };
  const Case cases[] = {
      {"nowhere.db", "nowhere.db"},
      {"foreign.db", "foreign.db"},
      {".", "."},
      {"Provider=SQLite;Data Source=nowhere.db", "nowhere.db"},
      {"Provider=Nothing;Data Source=x", "provider"},
      {"Provider", "Provider"},
      {"", ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.database);
    expect_failed_run(print({"--class", "clsForm1", "--set", "PropCMasterID=2"}, c.database), c.said);
    EXPECT_EQ(dump()["report"], "Form1");
  }
}

TEST_F(BadInput, TablesAndColumns) {
  const Arguments form = {"--class", "clsForm1", "--set", "PropCMasterID=2"};
  make_database("CREATE TABLE Other (A INT);");
  expect_failed_run(print(form, "own.db"), "Customer");
  fs::remove(folder() / "own.db");
  make_database(
      "CREATE TABLE Customer (CustomerID INT, SignatureID INT, Name TEXT); CREATE TABLE signature (SignatureID INT, "
      "Signature TEXT); INSERT INTO Customer VALUES (2, NULL, 'Asha');");
  expect_failed_run(print(form, "own.db"), "BSTNo");
}

TEST_F(BadInput, PasswordStaysSecret) {
  const Outcome outcome =
      print({"--class", "clsForm1", "--set", "PropCMasterID=2"},
            "Provider=SQLOLEDB.1;Data Source=127.0.0.1,1;Initial Catalog=p;User ID=sa;Password=tiger");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ((outcome.err + outcome.out + whole_file(folder() / "a.json")).find("tiger"), std::string::npos);
}

TEST_F(BadInput, ReportThatIsNotBuilt) {
  const std::string reports = run({"reports"}).out;
  if (reports.find("AddressLabel           not built") == std::string::npos) GTEST_SKIP() << "it is built";
  expect_failed_run(print({"--class", "clsAddressLabel", "--set", "PropCustomerIDList=1"}), "AddressLabel");
}

TEST_F(BadInput, TargetsThatCannotBeWritten) {
  std::ofstream(folder() / "file") << "x";
  fs::create_directory(folder() / "taken.pdf");
  for (const auto* target : {"nowhere/b.pdf", "file/b.pdf", "taken.pdf", "nowhere/b.png", "nowhere/b.xls"}) {
    const Outcome outcome = run({"print", "--db", practice_file(), "--class", "clsForm1", "--set", "PropCMasterID=2",
                                 "--out", "a.json", "--out", target});
    EXPECT_EQ(outcome.status, 1) << target;
    EXPECT_TRUE(is_one_line(outcome.err)) << outcome.err;
    EXPECT_NE(outcome.err.find(fs::path(target).stem().string()), std::string::npos) << outcome.err;
    EXPECT_EQ(dump()["messages"].size(), 1u) << target;
    EXPECT_EQ(files(), (Names{"a.json", "file", "taken.pdf"})) << target;
    EXPECT_TRUE(fs::is_empty(folder() / "taken.pdf"));
  }
  const Outcome no_dump = run({"print", "--db", practice_file(), "--class", "clsForm1", "--set", "PropCMasterID=2",
                               "--out", "nowhere/a.json", "--out", "b.pdf"});
  EXPECT_EQ(no_dump.status, 1);
  EXPECT_TRUE(is_one_line(no_dump.err)) << no_dump.err;
  EXPECT_FALSE(fs::exists(folder() / "b.pdf"));
  EXPECT_EQ(run({"demo-db", "nowhere/p.db"}).status, 1);
}

// A disk that takes no more: the system stops files at half a kilobyte.
TEST_F(BadInput, FullDisk) {
  const std::string full = "trap '' XFSZ; ulimit -f 1;";
  std::ofstream(folder() / "old.pdf") << "old";
  for (const auto* target : {"old.pdf", "b.png", "b.rtf", "b.xls", "b.tif", "b.txt"}) {
    const Outcome outcome = run(
        {"print", "--db", practice_file(), "--class", "clsForm201", "--set", "PropCMasterID=1", "--out", target}, full);
    EXPECT_EQ(outcome.status, 1) << target;
    EXPECT_TRUE(is_one_line(outcome.err)) << target << ": " << outcome.err;
    EXPECT_EQ(files(), Names{"old.pdf"}) << target;
  }
  EXPECT_EQ(whole_file(folder() / "old.pdf"), "old") << "what stood there before is left alone";
  const Outcome dump = run(
      {"print", "--db", practice_file(), "--class", "clsForm201", "--set", "PropCMasterID=1", "--out", "b.json"}, full);
  EXPECT_EQ(dump.status, 1);
  EXPECT_TRUE(is_one_line(dump.err)) << dump.err;
  EXPECT_EQ(run({"schema", "sqlite"}, full).status, 1);
  EXPECT_EQ(run({"demo-db", "p.db"}, full).status, 1);
  EXPECT_EQ(files(), Names{"old.pdf"});
}

// A dealer's list or a name that a host hands in goes into the query as it stands; it can never write.
TEST_F(BadInput, TextsOfAHostCannotHarm) {
  const std::string before = whole_file(practice_file());
  const Outcome outcome =
      print({"--report", "Form1", "--set", "PropCMasterID=2", "--set", "PropSortBy=1; DROP TABLE Customer"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(whole_file(practice_file()), before);
}

}  // namespace
}  // namespace dorvo::host
