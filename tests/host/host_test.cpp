// The host program from end to end: what it prints, lists and makes.
#include <gtest/gtest.h>

#include <regex>

#include "tests/host/host_run.h"

namespace dorvo::host {
namespace {

using Texts = std::vector<std::string>;

TEST_F(HostTest, PrintsAFormToEachFile) {
  const Outcome outcome = print({"--class", "clsForm1", "--set", "PropCMasterID=2", "--out", "a.png"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out + outcome.err, "");
  EXPECT_EQ(files(), (std::set<std::string>{"a.json", "a.pdf", "a.png"}));
  EXPECT_EQ(whole_file(folder() / "a.pdf").substr(0, 5), "%PDF-");
  EXPECT_EQ(whole_file(folder() / "a.png").substr(1, 3), "PNG");

  const nlohmann::json dumped = dump();
  EXPECT_EQ(dumped["report"], "Form1");
  EXPECT_EQ(dumped["messages"].size(), 0u);
  ASSERT_EQ(dumped["pages"].size(), 1u);
  EXPECT_EQ(dumped["pages"][0]["number"], 1);
  EXPECT_EQ(dumped["pages"][0]["width"], 11906);
  EXPECT_EQ(dumped["pages"][0]["height"], 16838);
}

TEST_F(HostTest, SameRunSameBytes) {
  const std::vector<std::string> form = {"--class", "clsForm201", "--set", "PropCMasterID=1"};
  ASSERT_EQ(print(form).status, 0);
  const std::string pdf = whole_file(folder() / "a.pdf"), json = whole_file(folder() / "a.json");
  ASSERT_EQ(print(form).status, 0);
  EXPECT_EQ(whole_file(folder() / "a.pdf"), pdf);
  EXPECT_EQ(whole_file(folder() / "a.json"), json);
}

// The same shared flag through both doors: the later one wins, whatever kind it is.
TEST_F(HostTest, PropertiesAreWrittenInTheOrderGiven) {
  const std::vector<std::string> on = {"--set", "ShowCity=TRUE"}, off = {"--settings", "ShowCity=false"};
  for (const bool on_last : {true, false}) {
    std::vector<std::string> arguments = {"--class", "clsForm201"};
    for (const auto& pair : on_last ? std::vector{off, on} : std::vector{on, off}) {
      arguments.insert(arguments.end(), pair.begin(), pair.end());
    }
    arguments.insert(arguments.end(), {"--set", "PropCMasterID=1"});
    ASSERT_EQ(print(arguments).status, 0);
    EXPECT_EQ(box("txtCity").empty(), !on_last);
  }
}

TEST_F(HostTest, TwinGetsTheKeyWhenTheFlagComesFirst) {
  ASSERT_EQ(print({"--class", "clsForm201", "--set", "onethirty=True", "--set", "PropCMasterID=1"}).status, 0);
  EXPECT_EQ(dump()["report"], "Form201132");
  EXPECT_EQ(dump()["pages"][0]["width"], 21600);
  EXPECT_EQ(print({"--class", "clsForm201", "--set", "PropCMasterID=1", "--set", "onethirty=True"}).status, 3);
  EXPECT_EQ(dump()["report"], "Form201132") << "opened with the key that it had";
}

TEST_F(HostTest, FooterOfTheUser) {
  ASSERT_EQ(print({"--class", "clsForm1", "--settings", "ShowFooter=True", "--settings", "UserName=A = B & Co.",
                   "--set", "PropCMasterID=2"})
                .status,
            0);
  EXPECT_EQ(box("lblName"), Texts{"A = B & Co."});
  ASSERT_EQ(print({"--class", "clsForm1", "--settings", "ShowFooter=1", "--set", "PropCMasterID=2"}).status, 0);
  EXPECT_EQ(box("lblName"), Texts{}) << "a 1 is not the Boolean True";
}

TEST_F(HostTest, NoPage) {
  for (const auto& arguments : {std::vector<std::string>{"--class", "clsForm1", "--set", "PropCMasterID=999999"},
                                std::vector<std::string>{"--class", "clsInterestMaster", "--set", "PropYearID=3"}}) {
    const Outcome outcome = print(arguments);
    EXPECT_EQ(outcome.status, 3) << outcome.err;
    EXPECT_TRUE(is_one_line(outcome.err)) << outcome.err;
    EXPECT_EQ(files(), std::set<std::string>{"a.json"});
    EXPECT_EQ(dump()["pages"].size(), 0u);
    EXPECT_EQ(dump()["messages"].size(), 0u);
  }
}

TEST_F(HostTest, ConnectionTextFromFileAndVariable) {
  std::ofstream(folder() / "db.txt") << "\xEF\xBB\xBFProvider=SQLite;Data Source=" << practice_file()
                                     << "\r\nsecond line\n";
  const std::vector<std::string> rest = {"--class", "clsForm1", "--set", "PropCMasterID=2", "--out", "a.json"};
  std::vector<std::string> arguments = {"print", "--db-file", "db.txt"};
  arguments.insert(arguments.end(), rest.begin(), rest.end());
  EXPECT_EQ(run(arguments).status, 0);
  arguments = {"print", "--db-env", "PRACTICE"};
  arguments.insert(arguments.end(), rest.begin(), rest.end());
  EXPECT_EQ(run(arguments, "PRACTICE='" + practice_file() + "'").status, 0);
  EXPECT_EQ(run(arguments).status, 2) << "no such variable";
}

TEST_F(HostTest, LayoutsFromAFolder) {
  const fs::path layouts = folder() / "layouts";
  fs::copy(DORVO_SOURCE_DIR "/layouts", layouts);
  std::string xml = whole_file(layouts / "Form1.xml");
  xml.replace(xml.find("text=\"Form-1\""), 13, "text=\"Form-X\"");
  std::ofstream(layouts / "Form1.xml") << xml;
  ASSERT_EQ(print({"--class", "clsForm1", "--layouts", "layouts", "--set", "PropCMasterID=2"}).status, 0);
  EXPECT_EQ(box("lblForm"), Texts{"Form-X"});

  std::ofstream(layouts / "Form1.xml") << "<Layout name=\"Form1\" version=\"1\">\n<Sektion/></Layout>";
  fs::remove(folder() / "a.pdf");
  const Outcome outcome = print({"--class", "clsForm1", "--layouts", "layouts", "--set", "PropCMasterID=2"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_TRUE(is_one_line(outcome.err)) << outcome.err;
  EXPECT_NE(outcome.err.find("Form1.xml:2"), std::string::npos) << outcome.err;
  EXPECT_FALSE(fs::exists(folder() / "a.pdf"));
}

TEST_F(HostTest, EveryKindOfFile) {
  const std::string help = run({"print", "--help"}).out;
  const std::regex kind(R"( \.(pdf|png|json|rtf|html|xls|tif|txt)\b)");
  std::set<std::string> kinds;
  for (std::sregex_iterator it(help.begin(), help.end(), kind), end; it != end; ++it) kinds.insert((*it)[1]);
  EXPECT_GE(kinds.size(), 7u) << help;
  std::vector<std::string> arguments = {"--class", "clsForm1", "--set", "PropCMasterID=2"};
  for (const std::string& extension : kinds) arguments.insert(arguments.end(), {"--out", "b." + extension});
  const Outcome outcome = print(arguments);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  kinds.erase("png");
  for (const std::string& extension : kinds) {
    EXPECT_GT(whole_file(folder() / ("b." + extension)).size(), 100u) << extension;
  }
}

TEST_F(HostTest, Lists) {
  const Outcome classes = run({"classes"});
  EXPECT_EQ(classes.status, 0);
  for (const auto* line : {"\nclsReceiptRegiser\n", "  SHowForm               Variant  method\n",
                           "  myConn                 Object   write, by reference\n",
                           "  yrid                   Variant  read and write\n"}) {
    EXPECT_NE(("\n" + classes.out).find(line), std::string::npos) << line;
  }
  const Outcome reports = run({"reports"});
  EXPECT_EQ(reports.status, 0);
  EXPECT_NE(reports.out.find("Form1                  built\n"), std::string::npos);
  EXPECT_NE(reports.out.find("CSTReturnIIIBAnnexure"), std::string::npos);
}

TEST_F(HostTest, DemoDatabase) {
  ASSERT_EQ(run({"demo-db", "a.db", "--dealers", "2", "--years", "1", "--seed", "7"}).status, 0);
  ASSERT_EQ(run({"demo-db", "b.db", "--dealers", "2", "--years", "1", "--seed", "7"}).status, 0);
  ASSERT_EQ(run({"demo-db", "c.db", "--dealers", "2", "--years", "1", "--seed", "8"}).status, 0);
  EXPECT_EQ(whole_file(folder() / "a.db"), whole_file(folder() / "b.db"));
  EXPECT_NE(whole_file(folder() / "a.db"), whole_file(folder() / "c.db"));
}

// ---- what it says about itself ----

TEST_F(HostTest, HelpOfEveryCommandAndItsManPage) {
  const std::string page = whole_file(DORVO_SOURCE_DIR "/host/dorvoform.1");
  std::string plain = std::regex_replace(page, std::regex(R"(\\-)"), "-");
  const Outcome whole = run({"--help"});
  EXPECT_EQ(whole.status, 0);
  for (const auto* command : {"print", "classes", "reports", "demo-db"}) {
    EXPECT_NE(whole.out.find(command), std::string::npos);
    const Outcome help = run({command, "--help"});
    EXPECT_EQ(help.status, 0) << command;
    EXPECT_NE(plain.find(command), std::string::npos) << command;
    const std::regex option("--[a-z-]+");
    for (std::sregex_iterator it(help.out.begin(), help.out.end(), option), end; it != end; ++it) {
      EXPECT_NE(plain.find(it->str()), std::string::npos) << it->str() << " of " << command;
    }
  }
  const Outcome version = run({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_TRUE(std::regex_match(version.out, std::regex("dorvoform \\d+\\.\\d+\\.\\d+\n"))) << version.out;
}

}  // namespace
}  // namespace dorvo::host
