// Texts in their boxes: wrapped, made smaller, grown, cut and told.
//
// In the face that serves Arial a digit is 0.556 em wide and a line 1.117 em high, 1.150 em from line to line. So at
// 10 pt, 200 twips, ten digits take 1113 twips, a line 223 and two lines 453.
#include "engine/fit.h"

#include <gtest/gtest.h>

#include "tests/engine/trial.h"

namespace dorvo {
namespace {

using engine::ControlLayout;
using tests::Rows;
using tests::shown;

struct Fit {
  const char* story;
  const char* text;
  int width;
  int height;
  const char* how;  // letters: g grow, s shrink, o one line
  std::size_t lines;
  int half_points;
  int box_height;
  bool clipped;
};

TEST(FitText, WrapsShrinksGrowsAndCuts) {
  const Fit cases[] = {
      {"fits", "0123456789", 1113, 224, "", 1, 20, 224, false},
      {"one twip of rounding is forgiven", "0123456789", 1112, 223, "", 1, 20, 223, false},
      {"wraps at a word", "01234 56789", 1000, 454, "", 2, 20, 454, false},
      {"wraps and is too high", "01234 56789", 1000, 224, "", 2, 20, 224, true},
      {"one line is too wide", "01234 56789", 1000, 454, "o", 1, 20, 454, true},
      {"line ends of its own", "01\r\n23", 1000, 224, "", 2, 20, 224, true},
      // Eleven characters with a blank of 0.278: 5.84 em; 1000 twips hold them up to 171 twips, 8.5 pt.
      {"shrinks to one line", "01234 56789", 1000, 224, "s", 1, 17, 224, false},
      {"two lines fit without shrinking", "01234 56789", 1000, 454, "s", 2, 20, 454, false},
      // Ten digits in one word, 5.56 em: 1001 twips hold them at 9 pt, and no word is broken before.
      {"shrinks rather than breaks a word", "0123456789", 1001, 1000, "s", 1, 18, 1000, false},
      {"never below 6 pt", "01234567890123456789", 1000, 224, "s", 2, 12, 224, true},
      {"grows", "01234 56789", 1000, 100, "g", 2, 20, 454, false},
      {"grows only as far as it must", "0123", 1000, 300, "g", 1, 20, 300, false},
      {"empty", "", 10, 10, "", 0, 20, 10, false},
      {"a box without width", "01", 0, 500, "", 2, 20, 500, true},
  };
  const engine::Style style;
  for (const Fit& each : cases) {
    ControlLayout box;
    box.style = &style;
    box.width = each.width;
    box.height = each.height;
    const std::string_view how = each.how;
    box.grow = how.find('g') != std::string_view::npos;
    box.shrink = how.find('s') != std::string_view::npos;
    box.wrap = how.find('o') == std::string_view::npos;
    const engine::FittedText fitted = engine::fit_text(each.text, box);
    EXPECT_EQ(fitted.shaped ? fitted.shaped->lines.size() : 0, each.lines) << each.story;
    EXPECT_EQ(fitted.half_points, each.half_points) << each.story;
    EXPECT_EQ(fitted.height, each.box_height) << each.story;
    EXPECT_EQ(fitted.clipped, each.clipped) << each.story;
  }
}

const Rows& table() {
  static const Rows rows;
  return rows;
}

TEST(FitText, ABorderTakesRoom) {
  const engine::Style style;
  ControlLayout box;
  box.style = &style;
  box.width = 1113;
  box.height = 224;
  box.border = true;
  EXPECT_TRUE(engine::fit_text("0123456789", box).clipped) << "40 twips on each side";
}

TEST(FitText, AGrownBoxMovesWhatLiesBelowAndStretchesTheRulesBesideIt) {
  const auto report = table().report(R"(<Layout name="A"><Section kind="Detail" name="Detail" height="400">
      <Line name="side" left="0" top="0" x2="0" y2="400"/>
      <Field name="list" column="t" top="50" width="1000" height="230" grow="true"/>
      <Field name="next" top="60" left="1000" width="500" height="230" text="x"/>
      <Label name="below" top="300" width="900" height="100" size="4" text="x"/>
      <Shape name="frame" top="10" left="0" width="2000" height="380"/>
      <Line name="end" left="0" top="390" x2="900" y2="390"/></Section></Layout>)",
                                     2);
  report->on("Detail_Format", [&] {
    if (report->field("list").Text() == "row 1") report->field("list").Text("1\r\n2\r\n3");
  });
  report->run();
  // Three lines at 10 pt are 2 * 1.150 + 1.117 em, 684 twips, in place of 230: 454 more.
  EXPECT_EQ(shown(*report),
            "side@0 list=1\r\n2\r\n3@50 next=x@60 below=x@754 frame@10 end@844 "
            "side@854 list=row 2@904 next=x@914 below=x@1154 frame@864 end@1244");
  const auto& items = report->Pages()[0].items;
  EXPECT_EQ(items[0].height, 854) << "the rule beside it";
  EXPECT_EQ(items[1].height, 684);
  EXPECT_EQ(items[4].height, 834) << "the frame around it";
  EXPECT_EQ(items[6].height, 400) << "the next row is as the layout has it";
}

TEST(FitText, AGrownTextThatIsTallerThanThePageGoesOnLineByLine) {
  const auto report = table().report(R"(<Layout name="A"><Section kind="Detail" name="Detail" height="100">
      <Field name="list" top="0" width="1000" height="100" grow="true"/></Section></Layout>)",
                                     1);
  report->on("Detail_Format", [&] { report->field("list").Text("1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8\r\n9\r\n10"); });
  report->run();
  // 229.8 twips from line to line: eight whole lines in 2000.
  EXPECT_EQ(shown(*report), "list=1\r\n2\r\n3\r\n4\r\n5\r\n6\r\n7\r\n8@0 | list=9\r\n10@0");
}

TEST(FitText, CutTextsAreTold) {
  const auto report = table().report(R"(<Layout name="Bill"><Section kind="Detail" name="Detail" height="1000">
      <Field name="txtName" column="t" width="300" height="230"/></Section></Layout>)",
                                     3);
  report->on("Detail_Format", [&] {
    if (report->field("txtName").Text() != "row 3") return;
    std::string note = "row 3\r\n";
    for (int i = 0; i < 60; ++i) note += "\u0928";
    report->field("txtName").Text(note);
  });
  report->run();
  std::string start = "row 3 ";
  for (int i = 0; i < 53; ++i) start += "\u0928";
  EXPECT_EQ(report->Messages(),
            (std::vector<std::string>{
                "Bill, page 1, txtName: the text is larger than its box and is cut: row 1",
                "Bill, page 1, txtName: the text is larger than its box and is cut: row 2",
                "Bill, page 2, txtName: the text is larger than its box and is cut: " + start + "..."}));
  EXPECT_TRUE(report->Pages()[0].items[0].clipped);
  report->run();
  EXPECT_EQ(report->Messages().size(), 3u) << "of the last run only";
}

TEST(FitText, MessagesDoNotGrowWithoutEnd) {
  const Rows many(500);
  const auto report = many.report(R"(<Layout name="Bill"><Section kind="Detail" name="Detail" height="100">
      <Field name="txtName" column="t" width="300" height="230"/></Section></Layout>)",
                                  500);
  report->run();
  ASSERT_EQ(report->Messages().size(), 101u);
  EXPECT_EQ(report->Messages().back(), "Bill: further texts are cut");
}

}  // namespace
}  // namespace dorvo
