// Finding a text: where it stands, which place comes next, and the marks.
#include <QLabel>
#include <QLineEdit>

#include "preview/page_text.h"
#include "tests/export/hand_pages.h"
#include "tests/preview/preview_fixture.h"

namespace dorvo::preview {
namespace {

// By hand: letters half an em wide at 10 pt, which is 100 twips; 0.9 em above the baseline, 0.2 below.
TEST(PageText, BoxesOfATextAreThoseOfItsLetters) {
  test::HandPages hand;
  hand.page().text(1000, 2000, 4000, 600, "Total of totals\r\nno total", "txtA");
  hand.text(6000, 2000, 2000, 240, "120 total", "txtB");
  const std::vector<QRectF> boxes = PageText(hand.pages()[0]).find("TOTAL");
  const QRectF expected[] = {
      {1000, 2000, 500, 220}, {1900, 2000, 500, 220}, {6400, 2000, 500, 220}, {1300, 2240, 500, 220}};
  ASSERT_EQ(boxes.size(), std::size(expected));
  for (std::size_t i = 0; i < boxes.size(); ++i) {
    EXPECT_NEAR(boxes[i].left(), expected[i].left(), 0.1) << i;
    EXPECT_NEAR(boxes[i].top(), expected[i].top(), 0.1) << i;
    EXPECT_NEAR(boxes[i].width(), expected[i].width(), 0.1) << i;
    EXPECT_NEAR(boxes[i].height(), expected[i].height(), 0.1) << i;
  }
  EXPECT_TRUE(PageText(hand.pages()[0]).find("").empty());
  EXPECT_TRUE(PageText(hand.pages()[0]).find("Totals of").empty());
}

TEST(PageText, WhatABoxCutsIsNotFound) {
  test::HandPages hand;
  hand.page().text(1000, 2000, 450, 240, "seen hidden", "txtA");
  const_cast<engine::PageItem&>(hand.last().items.back()).clipped = true;
  const PageText text(hand.pages()[0]);
  EXPECT_EQ(text.find("seen").size(), 1u);
  EXPECT_TRUE(text.find("hidden").empty());
}

TEST(PageText, ReadsFromTopToBottomAndLeftToRight) {
  test::HandPages hand;
  hand.page().text(6000, 2010, 2000, 240, "120", "txtAmount");
  hand.text(1000, 3000, 4000, 240, "below");
  hand.text(1000, 2000, 4000, 240, "Sales");
  const PageText text(hand.pages()[0]);
  EXPECT_EQ(text.text(), "Sales\t120\nbelow");
  EXPECT_EQ(text.text_in(QRectF(5000, 1900, 2000, 2000)), "120");
  EXPECT_EQ(text.lines_in(QRectF(0, 0, 11906, 2500)).size(), 2u);
}

TEST(Found, GoesThroughAllPlacesBothWaysAndRound) {
  test::HandPages hand;
  hand.page().text(1000, 2000, 4000, 240, "ab ab");
  hand.page().text(1000, 2000, 4000, 240, "none");
  hand.page().text(1000, 2000, 4000, 240, "ab");
  using Place = std::pair<std::size_t, std::size_t>;
  const std::pair<Direction, std::vector<Place>> cases[] = {
      {Direction::Forward, {{2, 0}, {0, 0}, {0, 1}, {2, 0}}},
      {Direction::Backward, {{0, 1}, {0, 0}, {2, 0}, {0, 1}}},
  };
  for (const auto& [direction, places] : cases) {
    Found found(hand.pages(), "ab");
    for (const Place& place : places) {
      const auto& match = found.step(direction, 1);  // from the page in the middle
      ASSERT_TRUE(match);
      EXPECT_EQ(Place(match->page, match->place), place);
    }
  }
  Found found(hand.pages(), "ab");
  found.step(Direction::Forward, 1);
  while (found.look_further()) continue;
  EXPECT_TRUE(found.has_seen_all());
  EXPECT_EQ(found.count(), 3u);
  EXPECT_EQ(found.number_at(), 3u);
  Found nowhere(hand.pages(), "abc");
  EXPECT_FALSE(nowhere.step(Direction::Forward, 0));
  EXPECT_FALSE(Found(hand.pages(), "").step(Direction::Forward, 0));
  EXPECT_FALSE(Found().step(Direction::Backward, 0));
}

class FindTest : public PreviewTest {
 protected:
  // Dots in the colour of a mark: much red, less blue.
  static int marked(PreviewWindow& window) {
    const QImage picture = window.view().viewport()->grab().toImage();
    int count = 0;
    for (int y = 0; y < picture.height(); ++y)
      for (int x = 0; x < picture.width(); ++x) {
        const QRgb dot = picture.pixel(x, y);
        count += qRed(dot) > 200 && qBlue(dot) < 170 ? 1 : 0;
      }
    return count;
  }
  static QString count(PreviewWindow& window) { return child<QLabel>(window, "Find Count").text(); }
};

TEST_F(FindTest, MarksTheTextAndGoesToIt) {
  PreviewWindow& window = shown();
  QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
  auto& text = child<QLineEdit>(window, "Find Text");
  ASSERT_TRUE(text.isVisible());
  EXPECT_EQ(marked(window), 0);
  type(window, "Find Text", "ganesh");
  QTest::keyClick(&text, Qt::Key_Return);
  EXPECT_EQ(window.view().current_page(), 1u);
  EXPECT_GT(marked(window), 50);
  EXPECT_TRUE(comes([&] { return count(window) == "1 of 1"; })) << count(window).toStdString();
  QTest::keyClick(&window, Qt::Key_F3);  // only one: round to itself
  EXPECT_EQ(window.view().current_page(), 1u);
  QTest::keyClick(&window, Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(window.view().current_page(), 0u);

  type(window, "Find Text", "caption");
  QTest::keyClick(&text, Qt::Key_Return);
  click(window, "Find Next");
  EXPECT_TRUE(comes([&] { return count(window) == "2 of 3"; })) << count(window).toStdString();
  QTest::keyClick(&window, Qt::Key_F3, Qt::ShiftModifier);
  EXPECT_EQ(count(window), "1 of 3");
  click(window, "Find Previous");
  EXPECT_EQ(count(window), "3 of 3");

  type(window, "Find Text", "nobody");
  QTest::keyClick(&text, Qt::Key_Return);
  EXPECT_EQ(count(window), "Not found");
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_FALSE(text.isVisible());
  EXPECT_EQ(marked(window), 0);
}

// Without Enter, the pages that show are marked after a pause.
TEST_F(FindTest, MarksWhileTyping) {
  PreviewWindow& window = shown();
  tool(window, "Find");
  type(window, "Find Text", "Register");
  EXPECT_TRUE(comes([&] { return count(window) == "3 found"; })) << count(window).toStdString();
  EXPECT_GT(marked(window), 50);
  click(window, "Find Close");
  EXPECT_EQ(marked(window), 0);
}

TEST_F(ThousandPages, FindGoesFarAtOnce) {
  PreviewWindow& window = shown();
  QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
  type(window, "Find Text", "Dealer 777");
  QTest::keyClick(&child<QLineEdit>(window, "Find Text"), Qt::Key_Return);
  EXPECT_EQ(window.view().current_page(), 776u);
  EXPECT_TRUE(comes([&] { return child<QLabel>(window, "Find Count").text() == "1 of 1"; }));
}

}  // namespace
}  // namespace dorvo::preview
