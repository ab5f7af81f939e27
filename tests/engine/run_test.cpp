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

// ---- groups ----

std::string box(const std::string& name, const std::string& column, const std::string& more = "") {
  return "<Field name=\"" + name + "\" column=\"" + column + "\" width=\"900\" height=\"100\" size=\"4\" " + more +
         "/>";
}

TEST(RunLoop, GroupsBreakOnTheirKeyAndFootersSpeakOfTheLastRow) {
  const auto report = table().report(
      "<Layout name=\"A\">"
      "<Section kind=\"GroupHeader\" name=\"H\" key=\"G\" height=\"10\">" +
          box("first", "n") +
          "</Section><Section kind=\"Detail\" name=\"Detail\" height=\"20\"/>"
          "<Section kind=\"GroupFooter\" name=\"F\" height=\"10\">" +
          box("last", "n") + "</Section></Layout>",
      7);
  report->run();
  EXPECT_EQ(shown(*report), "first=1@0 last=3@70 first=4@80 last=6@150 first=7@160 last=7@190");
}

TEST(RunLoop, AGroupWithoutKeyIsOneGroupOverAllRows) {
  const auto report =
      table().report("<Layout name=\"A\"><Section kind=\"GroupHeader\" name=\"H\" height=\"10\">" + box("head", "n") +
                         "</Section><Section kind=\"Detail\" name=\"Detail\" height=\"20\"/>"
                         "<Section kind=\"GroupFooter\" name=\"F\" height=\"10\">" +
                         box("foot", "n") + "</Section></Layout>",
                     7);
  report->run();
  EXPECT_EQ(shown(*report), "head=1@0 foot=7@150");
}

TEST(RunLoop, AHeaderRepeatsOnThePagesOnWhichItsGroupGoesOn) {
  const auto report = table().report(
      "<Layout name=\"A\"><Section kind=\"GroupHeader\" name=\"H\" key=\"g\" height=\"200\" repeat=\"true\">" +
          box("head", "g") + "</Section><Section kind=\"Detail\" name=\"Detail\" height=\"800\">" + box("n", "n") +
          "</Section></Layout>",
      5);
  std::string passes;
  report->on("H_Format", [&] { passes += report->Sections("H").IsRepeat() ? "repeat " : "break "; });
  report->run();
  // 2000 a page: head and two rows; the third goes on below a repeated head; the next group follows it.
  EXPECT_EQ(shown(*report), "head=1@0 n=1@200 n=2@1000 | head=1@0 n=3@200 head=2@1000 n=4@1200 | head=2@0 n=5@200");
  EXPECT_EQ(passes, "break repeat break repeat ");
}

TEST(RunLoop, AHeaderNeverStandsAloneAtTheEndOfAPage) {
  const auto report = table().report(
      "<Layout name=\"A\"><Section kind=\"GroupHeader\" name=\"H\" key=\"g\" height=\"100\">" + box("head", "g") +
          "</Section><Section kind=\"Detail\" name=\"Detail\" height=\"600\">" + box("n", "n") + "</Section></Layout>",
      4);
  report->run();
  EXPECT_EQ(shown(*report), "head=1@0 n=1@100 n=2@700 n=3@1300 | head=2@0 n=4@100");
}

TEST(RunLoop, NewPagesOfGroups) {
  struct Case {
    const char* newpage;
    const char* pages;
  };
  const Case cases[] = {
      {"before", "head=1@0 | head=2@0"},  // no empty page before the first group
      {"after", "head=1@0 | n=1@0 | "},
  };
  const auto header = [](const std::string& newpage) {
    return "<Layout name=\"A\"><Section kind=\"GroupHeader\" name=\"H\" key=\"g\" height=\"100\" newpage=\"" + newpage +
           "\">" + box("head", "g") + "</Section><Section kind=\"Detail\" name=\"Detail\" height=\"100\"/></Layout>";
  };
  auto before = table().report(header("before"), 4);
  before->run();
  EXPECT_EQ(shown(*before), cases[0].pages);
  auto after = table().report(header("after"), 3);
  after->run();
  EXPECT_EQ(after->Pages().Count(), 2u) << "its rows stand on the page behind it, and nothing follows them";
}

// ---- totals ----

TEST(RunLoop, TotalsOfGroupAndReportReadTheColumn) {
  const auto report = table().report(
      "<Layout name=\"A\"><Section kind=\"GroupHeader\" name=\"H\" key=\"g\"/>"
      "<Section kind=\"Detail\" name=\"Detail\" height=\"20\">" +
          box("a", "a") + box("running", "a", "sum=\"report\"") +
          "</Section><Section kind=\"GroupFooter\" name=\"F\" height=\"10\">" + box("sub", "a", "sum=\"group\"") +
          "</Section><Section kind=\"ReportFooter\" name=\"R\" height=\"10\">" + box("all", "a", "sum=\"report\"") +
          "</Section></Layout>",
      7);
  // What a handler writes over the line does not disturb the total.
  report->on("Detail_Format", [&] { report->field("a").Text("NIL"); });
  report->run();
  // 0.1 + 0.2 + 0.3, 0.4 + 0.5 + 0.6, 0.7; in binary 0.1 + 0.2 alone is not 0.3.
  EXPECT_EQ(shown(*report),
            "a=NIL@0 running=0.1@0 a=NIL@20 running=0.3@20 a=NIL@40 running=0.6@40 sub=0.6@60 "
            "a=NIL@70 running=1@70 a=NIL@90 running=1.5@90 a=NIL@110 running=2.1@110 sub=1.5@130 "
            "a=NIL@140 running=2.8@140 sub=0.7@160 all=2.8@170");
}

TEST(RunLoop, APageFooterCountsTheRowsThatLandedOnItsPages) {
  const auto report = table().report(
      "<Layout name=\"A\"><Section kind=\"Detail\" name=\"Detail\" height=\"700\"/>"
      "<Section kind=\"PageFooter\" name=\"PageFooter\" height=\"100\">" +
          box("total", "n", "sum=\"report\"") + box("last", "n") + "</Section></Layout>",
      5);
  report->run();
  EXPECT_EQ(shown(*report), "total=3@1900 last=2@1900 | total=10@1900 last=4@1900 | total=15@1900 last=5@1900");
}

TEST(RunLoop, ATotalOfManyAmountsIsExact) {
  const Rows many(100000);
  const auto report = many.report(
      "<Layout name=\"A\"><Section kind=\"Detail\" name=\"Detail\"/>"
      "<Section kind=\"ReportFooter\" name=\"R\" height=\"100\">" +
          box("all", "a", "sum=\"report\"") + "</Section></Layout>",
      100000);
  report->run();
  EXPECT_EQ(shown(*report), "all=500005000@0") << "100000 * 100001 / 2 tenths";
}

// ---- page breaks ----

struct Broken {
  const char* story;
  const char* breaks;
  bool section_visible;
  const char* pages;
};

TEST(RunLoop, PageBreaksInsideASection) {
  const Broken cases[] = {
      {"none", "", true, "top=one@0 low=two@500"},
      {"one: what lies below moves up by its position", "<PageBreak name=\"B\" top=\"500\"/>", true,
       "top=one@0 | low=two@0"},
      {"disabled", "<PageBreak name=\"B\" top=\"500\" visible=\"false\"/>", true, "top=one@0 low=two@500"},
      {"in a hidden section", "<PageBreak name=\"B\" top=\"500\"/>", false, ""},
      {"at the top of a page makes no empty page", "<PageBreak name=\"B\" top=\"0\"/>", true, "top=one@0 low=two@500"},
      {"two at one place make no empty page", "<PageBreak name=\"B\" top=\"450\"/><PageBreak name=\"C\" top=\"450\"/>",
       true, "top=one@0 | low=two@50"},
      {"out of order in the file", "<PageBreak name=\"B\" top=\"500\"/><PageBreak name=\"C\" top=\"200\"/>", true,
       "top=one@0 | low=two@0"},
  };
  for (const Broken& each : cases) {
    const auto report = table().report(
        std::string("<Layout name=\"A\"><Section kind=\"Detail\" name=\"Detail\" height=\"1000\" visible=\"") +
            (each.section_visible ? "true" : "false") +
            "\"><Label name=\"top\" width=\"900\" height=\"100\" size=\"4\" text=\"one\"/>"
            "<Label name=\"low\" top=\"500\" width=\"900\" height=\"100\" size=\"4\" text=\"two\"/>" +
            each.breaks + "</Section></Layout>",
        1);
    report->run();
    EXPECT_EQ(shown(*report), each.pages) << each.story;
    EXPECT_EQ(report->Pages().Count(), std::string(each.pages).find('|') == std::string::npos ? 1u : 2u) << each.story;
  }
}

// Hidden controls count: on preprinted stationery each page keeps its number.
TEST(RunLoop, ABreakBehindHiddenControlsStillMakesAPage) {
  const auto report = table().report(R"(<Layout name="A"><Section kind="Detail" name="Detail" height="1000">
      <Label name="L" visible="false" height="100" text="x"/><PageBreak name="B" top="500"/>
      <Label name="M" visible="false" top="600" height="100" text="x"/></Section></Layout>)",
                                     1);
  report->run();
  EXPECT_EQ(report->Pages().Count(), 2u);
}

// A break at the foot of one section and one at the top of the next are one break.
TEST(RunLoop, EmptyRoomBehindABreakIsNoPage) {
  const auto report = table().report(R"(<Layout name="A">
      <Section kind="GroupHeader" name="H" height="1000"><Label name="L" height="100" text="x"/>
        <PageBreak name="B" top="955"/></Section>
      <Section kind="Detail" name="Detail" height="500"><PageBreak name="C" top="0"/>
        <Label name="M" top="10" height="100" text="x"/></Section></Layout>)",
                                     1);
  report->run();
  EXPECT_EQ(shown(*report), "L=x@0 | M=x@10");
}

TEST(RunLoop, ABreakCutsRulesAndLeavesTextsWhole) {
  const auto report = table().report(R"(<Layout name="A"><Section kind="Detail" name="Detail" height="1000">
      <Line name="V" left="10" top="100" x2="10" y2="900"/><Line name="D" left="0" top="900" x2="800" y2="100"/>
      <Shape name="S" top="400" width="50" height="200"/>
      <Label name="L" top="450" width="500" height="100" text="x"/><PageBreak name="B" top="500"/>
    </Section></Layout>)",
                                     1);
  report->run();
  const auto parts = [&](std::size_t page) {
    std::string result;
    for (const auto& item : report->Pages()[page].items) {
      result += item.name() + " " + std::to_string(item.left) + "," + std::to_string(item.top) + " " +
                std::to_string(item.width) + "x" + std::to_string(item.height) + "; ";
    }
    return result;
  };
  EXPECT_EQ(parts(0), "V 10,100 0x400; D 400,500 400x-400; S 0,400 50x100; L 0,450 500x100; ");
  EXPECT_EQ(parts(1), "V 10,0 0x400; D 0,400 400x-400; S 0,0 50x100; ");
}

// ---- sections that do not fit ----

TEST(RunLoop, ASectionThatMayBeCutIsCutAboveATextNotThroughIt) {
  const auto report = table().report(R"(<Layout name="A">
      <Section kind="GroupHeader" name="H" height="1500"/>
      <Section kind="Detail" name="Detail" height="1000" keep="false">
      <Label name="a" top="100" height="200" text="x"/><Label name="b" top="400" height="200" text="x"/>
      <Line name="v" left="0" top="0" x2="0" y2="1000"/></Section></Layout>)",
                                     1);
  report->run();
  // 500 are left; b would be cut through at 500, so that the second page begins with it.
  EXPECT_EQ(shown(*report), "a=x@1600 v@1500 | b=x@0 v@0");
  EXPECT_EQ(report->Pages()[0].items[1].height, 400);
  EXPECT_EQ(report->Pages()[1].items[1].height, 600);
}

TEST(RunLoop, FailsWhenHeaderAndFooterLeaveNoRoom) {
  const auto report = table().report(list(100), 1);
  report->height = 500;
  EXPECT_THROW(report->run(), value::Failure);
  EXPECT_EQ(report->Pages().Count(), 0u);
}

TEST(RunLoop, AReportHeaderStandsAboveTheFirstPageHeader) {
  struct Case {
    int height;
    const char* pages;
  };
  const Case cases[] = {
      {500, "top=x@0 head=x@500 n=1@600 n=2@1200 | head=x@0 n=3@100"},
      // Taller than a page: the page header comes first, and the rest goes on.
      {2500, "head=x@0 top=x@100 | head=x@0 n=1@700 n=2@1300 | head=x@0 n=3@100"},
  };
  for (const Case& each : cases) {
    const auto report = table().report(
        "<Layout name=\"A\"><Section kind=\"ReportHeader\" name=\"RH\" height=\"" + std::to_string(each.height) +
            "\"><Label name=\"top\" text=\"x\" height=\"50\"/></Section><Section kind=\"PageHeader\" name=\"PH\" "
            "height=\"100\"><Label name=\"head\" text=\"x\" height=\"50\"/></Section><Section kind=\"Detail\" "
            "name=\"Detail\" height=\"600\">" +
            box("n", "n") + "</Section></Layout>",
        3);
    report->run();
    EXPECT_EQ(shown(*report), each.pages);
  }
}

TEST(RunLoop, MarginsMoveEverything) {
  const auto report = table().report(list(600), 1);
  report->margin = 50;
  report->run();
  EXPECT_EQ(report->Pages()[0].items[0].top, 150);
  EXPECT_EQ(report->Pages()[0].items[0].left, 50);
}

// ---- columns ----

TEST(RunLoop, ColumnsRunDownThenAcross) {
  const auto report = table().report(
      "<Layout name=\"A\" width=\"3000\"><Section kind=\"GroupHeader\" name=\"H\" key=\"h\" "
      "height=\"500\"><Label name=\"head\" text=\"x\" height=\"50\"/></Section>"
      "<Section kind=\"Detail\" name=\"Detail\" height=\"700\" columns=\"3\" spacing=\"300\">" +
          box("n", "n") + "</Section></Layout>",
      8);
  report->run();
  std::string places;
  for (const auto& page : report->Pages()) {
    for (const auto& item : page->items) {
      places += *item.text + " " + std::to_string(item.left) + "," + std::to_string(item.top) + "; ";
    }
    places += "| ";
  }
  // Two rows of 700 down, three columns of 1100 across: 6 rows of the first group; the second group begins a page.
  EXPECT_EQ(places,
            "x 0,0; 1 0,500; 2 0,1200; 3 1100,500; 4 1100,1200; 5 2200,500; 6 2200,1200; | "
            "x 0,0; 7 0,500; 8 0,1200; | ");
}

TEST(RunLoop, AfterColumnsTheNextSectionStandsBelowTheLongest) {
  const auto report = table().report(
      "<Layout name=\"A\" width=\"3000\"><Section kind=\"Detail\" name=\"Detail\" height=\"900\" "
      "columns=\"2\">" +
          box("n", "n") +
          "</Section><Section kind=\"ReportFooter\" name=\"R\" height=\"100\">"
          "<Label name=\"end\" text=\"x\" height=\"50\"/></Section></Layout>",
      3);
  report->run();
  EXPECT_EQ(shown(*report), "n=1@0 n=2@900 n=3@0 end=x@1800");
}

// ---- sub-reports ----

class Parent {
 public:
  explicit Parent(int child_rows, int parent_rows = 1)
      : report(table().report(R"(<Layout name="Parent"><Section kind="Detail" name="Detail" height="300" keep="false">
          <SubReport name="sub" left="50" top="100" width="900" height="100"/>
          <Label name="below" top="250" width="900" height="50" size="4" text="x"/></Section></Layout>)",
                              parent_rows)),
        child(
            table().report("<Layout name=\"Child\"><Section kind=\"ReportHeader\" name=\"RH\" height=\"20\"/>"
                           "<Section kind=\"PageHeader\" name=\"PH\" height=\"5000\"/>"
                           "<Section kind=\"GroupHeader\" name=\"H\" height=\"200\">" +
                               box("head", "n") + "</Section><Section kind=\"Detail\" name=\"Detail\" height=\"150\">" +
                               box("row", "n") + "</Section><Section kind=\"GroupFooter\" name=\"F\" height=\"100\">" +
                               box("sum", "n", "sum=\"group\"") + "</Section></Layout>",
                           child_rows)) {
    report->on("Detail_Format", [this] { report->control_as<engine::SubReport>("sub").Report(child); });
  }
  std::unique_ptr<Trial> report;
  std::shared_ptr<Trial> child;
};

TEST(RunLoop, ASubReportGrowsItsSection) {
  Parent both(2);
  both.report->run();
  // The frame starts at 100; report head 20, group head 200, two rows of 150, foot 100: 620 in place of 100, so that
  // what lies below the frame moves down by 520.
  EXPECT_EQ(shown(*both.report), "head=1@120 row=1@320 row=2@470 sum=3@620 below=x@770");
  EXPECT_EQ(both.report->Pages()[0].items[0].left, 50);
  EXPECT_EQ(both.report->Pages()[0].layouts.size(), 2u);
}

TEST(RunLoop, ASubReportWithoutRowsShowsHeadAndFootOnce) {
  Parent both(0);
  std::vector<std::string> events;
  for (const char* event : {"RH_Format", "H_Format", "Detail_Format", "F_Format"}) both.child->trace(event, events);
  both.child->at_start = [&] { events.push_back("start"); };
  both.child->at_end = [&] { events.push_back("end"); };
  both.report->run();
  EXPECT_EQ(shown(*both.report), "head=@100 sum=0@300 below=x@450");
  EXPECT_EQ(events, (std::vector<std::string>{"start", "H_Format", "F_Format", "end"}));
}

TEST(RunLoop, AFrameWithoutReportKeepsItsRoom) {
  Parent both(2);
  both.report->on("Detail_Format", [] {});
  both.report->run();
  EXPECT_EQ(shown(*both.report), "below=x@250");
}

TEST(RunLoop, ASubReportIsCutBetweenItsRows) {
  Parent both(12);
  both.report->run();
  // Heads end at 320; 11 rows of 150 end at 1970, the twelfth would end at 2120.
  EXPECT_NE(shown(*both.report).find("row=11@1820 | row=12@0 sum=78@150 below=x@300"), std::string::npos)
      << shown(*both.report);
}

TEST(RunLoop, ASubReportRunsAnewForEachRowOfItsParent) {
  Parent both(1, 3);
  int runs = 0;
  both.child->at_start = [&] { ++runs; };
  both.report->run();
  EXPECT_EQ(runs, 3);
}

TEST(RunLoop, AParentMayOpenItsSubReportsRowsBefore) {
  Parent both(2);
  bool found = false;
  both.report->on("Detail_Format", [&] {
    auto& master = both.child->recMaster();
    master.ConnectionString(table().path());
    master.Source("SELECT * FROM r WHERE n = 5");
    master.Open();
    found = !master.Recordset().EOF_();
    both.report->control_as<engine::SubReport>("sub").Report(both.child);
  });
  both.report->run();
  EXPECT_TRUE(found);
}

TEST(RunLoop, AReportInsideItselfFails) {
  Parent both(2);
  const std::shared_ptr<Trial> itself(both.report.get(), [](Trial*) {});
  both.report->on("Detail_Format", [&] { both.report->control_as<engine::SubReport>("sub").Report(itself); });
  EXPECT_THROW(both.report->run(), value::Failure);
}

// ---- failures ----

std::string failure_of(Trial& report) {
  try {
    report.run();
    return "none";
  } catch (const value::Failure& failure) {
    return std::to_string(static_cast<int>(failure.number())) + " " + failure.description();
  }
}

TEST(RunLoop, AFailingHandlerEndsTheRunAndWhatWasFilledStands) {
  const auto report = table().report(list(600), 9);
  std::vector<std::string> events;
  report->trace("PageFooter_Format", events);
  report->at_end = [&] { events.push_back("end"); };
  report->on("Detail_Format", [&] {
    if (report->field("n").Text() != "5") return;
    report->field("n").Text("5 in part");
    report->control("nowhere");
  });
  EXPECT_EQ(failure_of(*report), "5002 List, Detail_Format: the layout has no control nowhere");
  EXPECT_EQ(shown(*report), "n=1@100 n=2@700 n=3@1300 | n=4@100 n=5 in part@700");
  EXPECT_EQ(events, std::vector<std::string>{"PageFooter_Format"}) << "of the first page; then nothing runs";
}

TEST(RunLoop, FailuresTellTheirPlace) {
  struct Case {
    const char* story;
    std::function<void(Trial&)> arrange;
    const char* failure;
  };
  const Case cases[] = {
      {"no such column in a handler",
       [](Trial& r) { r.on("Detail_Format", [&r] { r.recMaster().Recordset().Fields("m"); }); },
       "3265 List, Detail_Format: The result of the query has no column \"m\""},
      {"a control of another kind", [](Trial& r) { r.on("Detail_Format", [&r] { r.control_as<engine::Label>("n"); }); },
       "5002 List, Detail_Format, n: the control is of another kind in the layout"},
      {"at the start", [](Trial& r) { r.at_start = [&r] { r.Sections("Head"); }; },
       "5002 List, ActiveReport_ReportStart: the layout has no section Head"},
      {"another exception", [](Trial& r) { r.on("PageFooter_Format", [] { throw std::out_of_range("index"); }); },
       "5003 List, PageFooter_Format: index"},
      {"no such table", [](Trial& r) { r.at_start = [&r] { r.recMaster().Source("SELECT * FROM nowhere"); }; },
       "3710 List, recMaster: "},
      {"a box of a column that is not there",
       [](Trial& r) { r.at_start = [&r] { r.recMaster().Source("SELECT 1 AS m"); }; },
       "3265 List, recMaster: n needs the column n, which the result of the query has not"},
      {"a figure that has no text",
       [](Trial& r) { r.at_start = [&r] { r.recMaster().Source("SELECT 1 AS n UNION ALL SELECT 2e308"); }; },
       "6 List, recMaster, n: Overflow"},
  };
  for (const Case& each : cases) {
    const auto report = table().report(list(600), 2);
    each.arrange(*report);
    EXPECT_EQ(failure_of(*report).find(each.failure), 0u) << each.story << ": " << failure_of(*report);
    if (each.failure[0] == '6') {
      EXPECT_EQ(shown(*report), "n=1@100") << "the row before stands";
    }
  }
}

TEST(RunLoop, AFailureOfASubReportTellsWhere) {
  Parent both(2);
  both.child->on("Detail_Format", [&] { both.child->control("nowhere"); });
  EXPECT_EQ(failure_of(*both.report), "5002 Child, Detail_Format: the layout has no control nowhere");
  EXPECT_EQ(shown(*both.report), "head=1@120 row=1@320 below=x@520") << "what was filled stands";
}

TEST(RunLoop, NoQueryIsNoRow) {
  const auto report = table().report(list(600), 2);
  report->at_start = [&] { report->recMaster().Source(""); };
  EXPECT_EQ(failure_of(*report), "none");
  EXPECT_EQ(report->Pages().Count(), 0u);
}

// ---- runs one after the other ----

TEST(RunLoop, TheSecondRunEqualsTheFirst) {
  const auto report = table().report(
      R"(<Layout name="A"><Section kind="PageHeader" name="PH" height="100"><Label name="head" text="Register"
         width="900" height="100" size="4"/></Section><Section kind="Detail" name="Detail" height="600">
         <Field name="srno" text="0" width="900" height="100" size="4"/><Label name="once" text="x"/></Section></Layout>)",
      4);
  report->on("Detail_Format", [&] {
    report->field("srno").Text(std::to_string(std::stoi(report->field("srno").Text()) + 1));
    report->control("once").Visible(report->pageNumber() == 1);
    if (report->pageNumber() == 2) report->Sections("PH").Visible(false);
  });
  report->run();
  const std::string first = shown(*report);
  EXPECT_EQ(first,
            "head=Register@0 srno=1@100 once=x@100 srno=2@700 once=x@700 srno=3@1300 once=x@1300 | "
            "head=Register@0 srno=4@100 once=x@100");
  report->run();
  EXPECT_EQ(shown(*report), first);

  // Only what a launcher wrote on purpose stays.
  report->control_as<engine::Label>("head").DesignCaption("Bills of May");
  report->run();
  EXPECT_EQ(shown(*report).find("head=Bills of May@0"), 0u);
  EXPECT_NE(shown(*report).find("| head=Bills of May@0"), std::string::npos);
}

TEST(RunLoop, PagesGoToTheSinkAsTheyAreCompleted) {
  const Rows many(100000);
  const auto report = many.report(list(600), 100000);
  std::size_t pages = 0;
  std::size_t rows = 0;
  report->sink([&](const engine::PagePtr& page) {
    EXPECT_EQ(page->number, static_cast<int>(++pages));
    EXPECT_EQ(page.use_count(), 1);
    rows += page->items.size();
  });
  report->run();
  EXPECT_EQ(pages, 33334u);
  EXPECT_EQ(rows, 100000u);
  EXPECT_EQ(report->Pages().Count(), 0u);
}

// Of a long document the later pages are kept packed; who reads them sees no difference.
TEST(RunLoop, PagesOfALongDocumentReadAsTheyWereMade) {
  const std::string layout = R"(<Layout name="Long">
    <Section kind="PageHeader" name="PH" height="250"><Label name="head" text="Register of bills" width="2000"
      height="240"/><Line name="rule" top="245" x2="2000" y2="245"/></Section>
    <Section kind="Detail" name="Detail" height="600">
      <Field name="srno" column="n" width="300" height="240" align="right"/>
      <Field name="name" column="t" left="300" width="300" height="240" shrink="true"/>
      <Field name="cut" column="t" left="600" width="200" height="240" wrap="false"/>
      <Field name="grown" left="900" width="300" height="100" grow="true"/>
      <Field name="empty" left="1300" width="300" height="100"/></Section></Layout>)";
  const Rows many(300);
  const auto arrange = [](Trial& report) {
    report.on("Detail_Format", [&report] { report.field("grown").Text("one two " + report.field("srno").Text()); });
  };
  const auto kept = many.report(layout, 300);
  arrange(*kept);
  kept->run();
  std::vector<engine::PagePtr> made;
  const auto passed_on = many.report(layout, 300);
  arrange(*passed_on);
  passed_on->sink([&](const engine::PagePtr& page) { made.push_back(page); });
  passed_on->run();

  ASSERT_GT(made.size(), engine::Pages::kReady + 2 * engine::Pages::kUnpacked);
  ASSERT_EQ(kept->Pages().Count(), made.size());
  std::size_t index = 0;
  for (const engine::PagePtr& page : kept->Pages()) {
    const engine::Page& other = *made[index++];
    EXPECT_EQ(page->number, other.number);
    EXPECT_EQ(page->layouts.size(), other.layouts.size());
    EXPECT_NE(page->fixed_key, 0u);
    ASSERT_EQ(shown(*page), shown(other));
    for (std::size_t i = 0; i < other.items.size(); ++i) {
      const engine::PageItem& one = page->items[i];
      const engine::PageItem& two = other.items[i];
      EXPECT_EQ(one.left, two.left);
      EXPECT_EQ(one.width, two.width);
      EXPECT_EQ(one.height, two.height);
      EXPECT_EQ(one.half_points, two.half_points);
      EXPECT_EQ(one.clipped, two.clipped);
      EXPECT_EQ(one.fixed, two.fixed);
      EXPECT_EQ(one.section->name, two.section->name);
      ASSERT_EQ(one.shaped == nullptr, two.shaped == nullptr);
      if (!one.shaped) continue;
      EXPECT_EQ(one.shaped->lines.size(), two.shaped->lines.size()) << one.name();
    }
  }

  // A page that is held stays as it is, whatever is read after it; a copy reads the same after the next run.
  const engine::PagePtr held = kept->Pages().at(40);
  const engine::Pages copy = kept->Pages();
  const std::string before = shown(*held);
  for (std::size_t i = made.size(); i-- > 0;) EXPECT_EQ(kept->Pages()[i].number, static_cast<int>(i) + 1);
  kept->run();
  EXPECT_EQ(shown(*held), before);
  EXPECT_EQ(shown(copy[40]), before);
}

TEST(RunLoop, TheFixedLayerOfLikePagesHasOneKey) {
  const auto report = table().report(R"(<Layout name="A"><Section kind="Detail" name="Detail" height="1000">
      <Label name="cap" text="Name" width="900" height="240"/><Shape name="s" top="300" width="10" height="10"/>
      <Field name="n" column="n" top="500" width="900" height="240"/></Section></Layout>)",
                                     6);
  report->on("Detail_Format", [&] {
    if (report->field("n").Text() == "6") report->control("s").Visible(false);
  });
  report->run();
  const auto& pages = report->Pages();
  ASSERT_EQ(pages.Count(), 3u);
  EXPECT_NE(pages[0].fixed_key, 0u);
  EXPECT_EQ(pages[0].fixed_key, pages[1].fixed_key);
  EXPECT_NE(pages[0].fixed_key, pages[2].fixed_key) << "a shape is missing";
  std::string fixed;
  for (const auto& item : pages[0].items) fixed += item.fixed ? "f" : "-";
  EXPECT_EQ(fixed, "ff-ff-");

  report->on("Detail_Format", [&] { report->control_as<engine::Label>("cap").Caption("Dealer"); });
  report->run();
  EXPECT_FALSE(report->Pages()[0].items[0].fixed) << "its caption was written by a handler";
}

}  // namespace
}  // namespace dorvo
