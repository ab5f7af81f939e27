// The run loop: which event comes when, where bands go, and what a second run finds.
#include <gtest/gtest.h>

#include "tests/engine/trial.h"

namespace dorvo {
namespace {

using tests::Rows;
using tests::shown;
using tests::Trial;

const Rows& table() {
  static const Rows rows;
  return rows;
}

// A list of rows of `height` twips between a page header of 100 and a page footer of 100.
std::string list(int height, const std::string& more = "", const std::string& detail = "") {
  return "<Layout name=\"List\"><Section kind=\"PageHeader\" name=\"PageHeader\" height=\"100\"/>"
         "<Section kind=\"Detail\" name=\"Detail\" height=\"" +
         std::to_string(height) + "\" " + detail +
         "><Field name=\"n\" column=\"n\" width=\"900\" height=\"100\" size=\"4\"/></Section>" + more +
         "<Section kind=\"PageFooter\" name=\"PageFooter\" height=\"100\"/></Layout>";
}

struct Filled {
  const char* story;
  int rows;
  int height;  // of a row; the page has room for 1800
  const char* pages;
};

TEST(RunLoop, FillsPages) {
  const Filled cases[] = {
      {"no rows, no page", 0, 600, ""},
      {"one row", 1, 600, "n=1@100"},
      {"exactly one page", 3, 600, "n=1@100 n=2@700 n=3@1300"},
      {"one row more", 4, 600, "n=1@100 n=2@700 n=3@1300 | n=4@100"},
      {"one twip too tall for three", 3, 601, "n=1@100 n=2@701 | n=3@100"},
      {"as tall as the room of a page", 2, 1800, "n=1@100 | n=2@100"},
      {"taller than any page: cut at its height", 2, 1801, "n=1@100 |  | n=2@100 | "},
      {"twice as tall as a page", 1, 3600, "n=1@100 | "},
  };
  for (const Filled& each : cases) {
    const auto report = table().report(list(each.height), each.rows);
    report->run();
    EXPECT_EQ(shown(*report), each.pages) << each.story;
  }
}

TEST(RunLoop, EventsComeInOrder) {
  std::vector<std::string> events;
  const auto report = table().report(R"(<Layout name="Events">
    <Section kind="ReportHeader" name="ReportHeader" height="100"><Field name="rh" column="n"/></Section>
    <Section kind="PageHeader" name="PageHeader" height="100"><Field name="ph" column="n"/></Section>
    <Section kind="GroupHeader" name="Outer" key="h" height="10"><Field name="oh" column="n"/></Section>
    <Section kind="GroupHeader" name="Inner" key="g" height="10"><Field name="ih" column="n"/></Section>
    <Section kind="Detail" name="Detail" height="300"><Field name="n" column="n"/></Section>
    <Section kind="GroupFooter" name="InnerFoot" height="10"><Field name="if" column="n"/></Section>
    <Section kind="GroupFooter" name="OuterFoot" height="10"><Field name="of" column="n"/></Section>
    <Section kind="PageFooter" name="PageFooter" height="100"><Field name="pf" column="n"/></Section>
    <Section kind="ReportFooter" name="ReportFooter" height="100"><Field name="rf" column="n"/></Section>
    </Layout>)",
                                     7);
  report->at_start = [&] { events.push_back("start"); };
  report->at_end = [&] { events.push_back("end"); };
  const std::pair<const char*, const char*> sections[] = {
      {"ReportHeader", "rh"}, {"PageHeader", "ph"}, {"Outer", "oh"},      {"Inner", "ih"},
      {"InnerFoot", "if"},    {"OuterFoot", "of"},  {"PageFooter", "pf"}, {"ReportFooter", "rf"}};
  for (const auto& [section, box] : sections) report->trace(std::string(section) + "_Format", events, box);
  report->trace("DETAIL_FORMAT", events, "n");
  report->trace("Detail_BeforePrint", events);
  report->run();

  // Rows 1 to 3 are of group 1, 4 to 6 of group 2, 7 of group 3, which is also of the second outer group. A page has
  // room for 1800, the first for 1700: heads of 20 and five rows, then row 6 with its feet, heads and row 7.
  const std::vector<std::string> expected = {"start",
                                             "ReportHeader_Format 1",
                                             "PageHeader_Format 1",
                                             "Outer_Format 1",
                                             "Inner_Format 1",  //
                                             "DETAIL_FORMAT 1",
                                             "Detail_BeforePrint",
                                             "DETAIL_FORMAT 2",
                                             "Detail_BeforePrint",  //
                                             "DETAIL_FORMAT 3",
                                             "Detail_BeforePrint",
                                             "InnerFoot_Format 3",  //
                                             "Inner_Format 4",
                                             "DETAIL_FORMAT 4",
                                             "Detail_BeforePrint",
                                             "DETAIL_FORMAT 5",
                                             "Detail_BeforePrint",
                                             "DETAIL_FORMAT 6",
                                             "Detail_BeforePrint",
                                             "PageFooter_Format 5",
                                             "PageHeader_Format 6",  //
                                             "InnerFoot_Format 6",
                                             "OuterFoot_Format 6",
                                             "Outer_Format 7",
                                             "Inner_Format 7",  //
                                             "DETAIL_FORMAT 7",
                                             "Detail_BeforePrint",
                                             "InnerFoot_Format 7",
                                             "OuterFoot_Format 7",  //
                                             "ReportFooter_Format 7",
                                             "PageFooter_Format 7",
                                             "end"};
  EXPECT_EQ(events, expected);
  EXPECT_EQ(report->Pages().Count(), 2u);
}

TEST(RunLoop, NoRowsRaiseStartAndEndOnly) {
  std::vector<std::string> events;
  const auto report = table().report(list(100, "<Section kind=\"ReportHeader\" name=\"RH\"/>"), 0);
  report->at_start = [&] { events.push_back("start"); };
  report->at_end = [&] { events.push_back("end"); };
  for (const char* event : {"RH_Format", "PageHeader_Format", "Detail_Format", "PageFooter_Format"}) {
    report->trace(event, events);
  }
  report->run();
  EXPECT_EQ(events, (std::vector<std::string>{"start", "end"}));
}

}  // namespace
}  // namespace dorvo
