// The preview driven by clicks and keys.
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <chrono>

#include "tests/preview/preview_fixture.h"

namespace dorvo::preview {
namespace {

TEST_F(PreviewTest, ShowOpensAWindowAndReturns) {
  PreviewWindow& window = shown();
  EXPECT_EQ(window.windowTitle(), "Form201 - Preview");
  EXPECT_EQ(window.view().pages().Count(), 3u);
  EXPECT_EQ(open_windows(), 1u);
  window.close();
  turn();
  EXPECT_EQ(open_windows(), 0u);
}

TEST_F(PreviewTest, StandardToolbarThenExportReport) {
  PreviewWindow& window = shown();
  QStringList captions;
  for (std::size_t i = 0; i < engine::Toolbar::kStandardTools; ++i)
    if (QAction* action = window.tool(i)) captions += action->text();
  EXPECT_EQ(captions.join("|"),
            "Table of Contents|Print...|Copy|Find|Single|Multiple|Zoom Out|Zoom In|Previous|Next|Back|Forward");
  EXPECT_FALSE(window.tool(0)->isEnabled());
  EXPECT_TRUE(window.tool(2)->isEnabled());
  EXPECT_EQ(child<QToolButton>(window, "tool1").text(), "E&xport Report");
  // The widget that stands last in the bar is the report's own.
  EXPECT_EQ(window.tools().widgetForAction(window.tools().actions().last())->objectName(), "tool1");
}

TEST_F(PreviewTest, PagesByKeysToolsAndNumber) {
  PreviewWindow& window = shown();
  auto& page = child<QLineEdit>(window, "page");
  EXPECT_EQ(page.text(), "1 / 3");
  QTest::keyClick(&window.view(), Qt::Key_End);
  EXPECT_EQ(page.text(), "3 / 3");
  QTest::keyClick(&window.view(), Qt::Key_Home);
  EXPECT_EQ(page.text(), "1 / 3");
  window.tool(16)->trigger();
  EXPECT_EQ(page.text(), "2 / 3");
  QTest::keyClick(&window, Qt::Key_PageDown, Qt::ControlModifier);
  EXPECT_EQ(page.text(), "3 / 3");
  EXPECT_FALSE(window.tool(16)->isEnabled());
  page.selectAll();
  QTest::keyClicks(&page, "1");
  QTest::keyClick(&page, Qt::Key_Return);
  EXPECT_EQ(page.text(), "1 / 3");
  page.selectAll();
  QTest::keyClicks(&page, "17");
  QTest::keyClick(&page, Qt::Key_Return);
  EXPECT_EQ(page.text(), "1 / 3");
  window.tool(19)->trigger();  // back
  EXPECT_EQ(page.text(), "3 / 3");
  window.tool(20)->trigger();  // forward
  EXPECT_EQ(page.text(), "1 / 3");
}

TEST_F(PreviewTest, FindMarksTheTextAndGoesRound) {
  PreviewWindow& window = shown();
  QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
  auto& find = child<QLineEdit>(window, "find");
  ASSERT_TRUE(find.isVisible());
  const QImage before = window.view().viewport()->grab().toImage();
  QTest::keyClicks(&find, "ganesh");
  QTest::keyClick(&find, Qt::Key_Return);
  EXPECT_EQ(window.view().current_page(), 1u);
  // The marked letters lie on orange: somewhere red is strong and blue weak.
  const QImage after = window.view().viewport()->grab().toImage();
  int marked = 0;
  for (int y = 0; y < after.height(); ++y)
    for (int x = 0; x < after.width(); ++x)
      marked += qRed(after.pixel(x, y)) > 200 && qBlue(after.pixel(x, y)) < 160 ? 1 : 0;
  EXPECT_GT(marked, 50);
  QTest::keyClick(&window, Qt::Key_F3);  // only one: round to itself
  EXPECT_EQ(window.view().current_page(), 1u);
  find.selectAll();
  QTest::keyClicks(&find, "nobody");
  QTest::keyClick(&find, Qt::Key_Return);
  EXPECT_EQ(window.statusBar()->currentMessage(), "\"nobody\" was not found");
  QTest::keyClick(&window, Qt::Key_Escape);
  EXPECT_FALSE(find.isVisible());
}

TEST_F(PreviewTest, FindGoesThroughAllMatchesBothWays) {
  PreviewWindow& window = shown();
  std::vector<std::pair<std::size_t, std::size_t>> forward, backward;
  std::optional<Match> match;
  for (int i = 0; i < 4; ++i) {
    match = find_text(window.view().pages(), "register", 0, match, Direction::Forward);
    ASSERT_TRUE(match);
    forward.emplace_back(match->page, match->place);
  }
  for (int i = 0; i < 2; ++i) {
    match = find_text(window.view().pages(), "register", 0, match, Direction::Backward);
    backward.emplace_back(match->page, match->place);
  }
  using Places = std::vector<std::pair<std::size_t, std::size_t>>;
  EXPECT_EQ(forward, (Places{{0, 0}, {1, 0}, {2, 0}, {0, 0}}));
  EXPECT_EQ(backward, (Places{{2, 0}, {1, 0}}));
  EXPECT_FALSE(find_text(window.view().pages(), "", 0, {}, Direction::Forward));
}

TEST_F(PreviewTest, Zoom) {
  PreviewWindow& window = shown();
  auto& list = child<QComboBox>(window, "zoom");
  EXPECT_EQ(list.currentText(), "100%");
  window.tool(12)->trigger();
  EXPECT_EQ(list.currentText(), "125%");
  window.tool(11)->trigger();
  EXPECT_EQ(list.currentText(), "100%");
  list.lineEdit()->selectAll();
  QTest::keyClicks(list.lineEdit(), "60");
  QTest::keyClick(list.lineEdit(), Qt::Key_Return);
  EXPECT_DOUBLE_EQ(window.view().zoom(), 0.6);
  window.view().set_fit(Fit::WholePage);
  const engine::Page& page = window.view().pages()[0];
  const double height = page.height * window.view().zoom() * window.view().logicalDpiY() / 1440;
  EXPECT_LE(height, window.view().viewport()->height());
  EXPECT_GT(height, window.view().viewport()->height() - 40);
  EXPECT_EQ(list.currentText(), "Whole Page");
  window.tool(9)->trigger();
  EXPECT_EQ(window.view().columns(), 3);
  EXPECT_TRUE(window.tool(9)->isChecked());
  window.view().set_zoom(100);
  EXPECT_DOUBLE_EQ(window.view().zoom(), 8);
}

TEST_F(PreviewTest, CopyTakesTheTextOfThePage) {
  PreviewWindow& window = shown();
  QTest::keyClick(&window, Qt::Key_C, Qt::ControlModifier);
  const QString text = QApplication::clipboard()->text();
  EXPECT_TRUE(text.startsWith("Register\thead\nAsha\tCaption\n")) << text.toStdString();
}

TEST_F(PreviewTest, SeveralAtOnceEachWithItsPages) {
  PreviewWindow& first = shown(kForm201);
  PreviewWindow& second = shown(kForm202);
  frame::basMain().BlankForm = true;
  PreviewWindow& third = shown(kForm201);
  EXPECT_EQ(open_windows(), 3u);
  EXPECT_EQ(second.windowTitle(), "Form202 - Preview");
  // The third is a later run of the first one's report object.
  EXPECT_EQ(&first.report(), &third.report());
  EXPECT_TRUE(text_of(first.pages()[0]).contains("Asha"));
  EXPECT_FALSE(text_of(third.pages()[0]).contains("Asha"));
  first.close();
  turn();
  EXPECT_EQ(open_windows(), 2u);
}

TEST_F(PreviewTest, AReportWithoutRowsShowsNoPages) {
  database.run("DELETE FROM Customer");
  PreviewWindow& window = shown();
  EXPECT_EQ(child<QLineEdit>(window, "page").text(), "0 / 0");
  EXPECT_FALSE(window.tool(2)->isEnabled());
  QTest::mouseClick(&child<QToolButton>(window, "tool1"), Qt::LeftButton);  // does nothing
  QTest::keyClick(&window.view(), Qt::Key_End);
}

TEST_F(PreviewTest, AFailedRunIsToldAndThrownOn) {
  database.run("DROP TABLE Customer");
  std::string told;
  in_dialog([&](QDialog& box) {
    told = box.property("text").toString().toStdString();
    box.accept();
  });
  EXPECT_THROW(frame::report_slot(kForm201).Show(), value::Failure);
  EXPECT_NE(told.find("Customer"), std::string::npos) << told;
  EXPECT_EQ(open_windows(), 1u);
}

class ThousandPages : public PreviewTest {
 protected:
  ThousandPages()
      : PreviewTest(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1000)"
            "INSERT INTO Customer SELECT i, 'Dealer ' || i FROM n;") {}
};

TEST_F(ThousandPages, ScrollDrawingOnlyWhatShows) {
  PreviewWindow& window = shown();
  PageView& view = window.view();
  ASSERT_EQ(view.pages().Count(), 1000u);
  window.repaint();
  EXPECT_LE(view.drawn(), 2u);
  const auto began = std::chrono::steady_clock::now();
  QScrollBar& bar = *view.verticalScrollBar();
  constexpr int kSteps = 50;
  for (int i = 1; i <= kSteps; ++i) {
    bar.setValue(bar.maximum() * i / kSteps);
    view.viewport()->repaint();
  }
  const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - began;
  EXPECT_EQ(view.current_page(), 999u);
  EXPECT_LE(view.drawn(), 2u + 2u * kSteps);
  EXPECT_LT(took.count() / kSteps, 100) << "ms a step";
  RecordProperty("ms_a_step", std::to_string(took.count() / kSteps));
  QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
  auto& find = child<QLineEdit>(window, "find");
  QTest::keyClicks(&find, "Dealer 777");
  QTest::keyClick(&find, Qt::Key_Return);
  EXPECT_EQ(view.current_page(), 776u);
}

}  // namespace
}  // namespace dorvo::preview
