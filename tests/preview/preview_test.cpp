// The preview driven by clicks and keys.
#include <gtest/gtest.h>

#include <QClipboard>
#include <QLineEdit>
#include <QMessageBox>
#include <QScrollBar>
#include <QToolButton>
#include <QWheelEvent>
#include <chrono>

#include "preview/page_text.h"
#include "tests/preview/preview_fixture.h"

namespace dorvo::preview {
namespace {

int page_number(PreviewWindow& window) {
  return window.findChild<QSpinBox*>("Page Number")->value();
}

QString page_text(PreviewWindow& window, std::size_t page) {
  return PageText(window.view().pages()[page]).text();
}

TEST_F(PreviewTest, ShowOpensAWindowAndReturns) {
  PreviewWindow& window = shown();
  EXPECT_EQ(window.windowTitle(), "Form201");
  EXPECT_EQ(window.view().pages().Count(), 3u);
  EXPECT_EQ(windows->open(), 1u);
  window.close();
  EXPECT_EQ(windows->open(), 0u);
}

TEST_F(PreviewTest, StandardToolsStandWhereTheirNamesSay) {
  const std::pair<StandardTool, const char*> tools[] = {
      {kContents, "Table of Contents"},
      {kPrint, "Print..."},
      {kCopy, "Copy"},
      {kFind, "Find"},
      {kSingle, "Single"},
      {kMultiple, "Multiple"},
      {kZoomOut, "Zoom Out"},
      {kZoomIn, "Zoom In"},
      {kZoom, "Zoom"},
      {kPrevious, "Previous"},
      {kNext, "Next"},
      {kPageNumber, "Page Number"},
      {kBack, "Back"},
      {kForward, "Forward"},
  };
  const engine::Toolbar standard;
  for (const auto& [tool, caption] : tools) EXPECT_EQ(standard.Tools[tool].Caption, caption);
}

TEST_F(PreviewTest, ToolbarHasTheStandardToolsThenTheReports) {
  PreviewWindow& window = shown();
  auto& bar = child<ToolBar>(window, "Tool Bar");
  QStringList captions;
  for (QAction* action : bar.actions()) {
    if (action->isSeparator())
      captions += "-";
    else
      captions += bar.widgetForAction(action)->objectName();
  }
  EXPECT_EQ(captions.join("|").toStdString(),
            "Table of Contents|-|Print...|-|Copy|-|Find|-|Single|Multiple|-|Zoom Out|Zoom In|Zoom|-|Previous|Next|"
            "Page Number|Page Count|-|Back|Forward|-|E&xport Report");
  EXPECT_FALSE(child<QToolButton>(window, "Table of Contents").isEnabled());
  EXPECT_TRUE(child<QToolButton>(window, "Print...").isEnabled());
  EXPECT_EQ(child<QToolButton>(window, "E&xport Report").text(), "E&xport Report");
  EXPECT_EQ(child<QLabel>(window, "Page Count").text().trimmed(), "of 3");
}

TEST_F(PreviewTest, PagesByToolsKeysAndNumber) {
  PreviewWindow& window = shown();
  PageView& view = window.view();
  struct Step {
    const char* what;
    std::function<void()> act;
    int page;
  };
  const auto key = [](QWidget& to, Qt::Key pressed, Qt::KeyboardModifiers with = Qt::NoModifier) {
    return [&to, pressed, with] { QTest::keyClick(&to, pressed, with); };
  };
  const auto number = [&](const char* typed) {
    return [this, &window, typed] {
      QTest::keyClick(&window, Qt::Key_G, Qt::ControlModifier);
      type(window, "Page Number", typed);
      QTest::keyClick(&child<QWidget>(window, "Page Number"), Qt::Key_Return);
    };
  };
  const Step steps[] = {
      {"End", key(view, Qt::Key_End), 3},
      {"Home", key(view, Qt::Key_Home), 1},
      {"Next", [&] { tool(window, "Next"); }, 2},
      {"Ctrl+PgDn", key(window, Qt::Key_PageDown, Qt::ControlModifier), 3},
      {"Next at the end", [&] { tool(window, "Next"); }, 3},
      {"Previous", [&] { tool(window, "Previous"); }, 2},
      {"Ctrl+PgUp", key(window, Qt::Key_PageUp, Qt::ControlModifier), 1},
      {"Ctrl+End", key(window, Qt::Key_End, Qt::ControlModifier), 3},
      {"number 2", number("2"), 2},
      {"number 9", number("9"), 2},
      {"Back", [&] { tool(window, "Back"); }, 3},
      {"Alt+Left", key(window, Qt::Key_Left, Qt::AltModifier), 1},
      {"Forward", [&] { tool(window, "Forward"); }, 3},
      {"Alt+Right", key(window, Qt::Key_Right, Qt::AltModifier), 2},
      {"Forward at the end", [&] { tool(window, "Forward"); }, 2},
  };
  EXPECT_EQ(page_number(window), 1);
  for (const Step& step : steps) {
    step.act();
    EXPECT_EQ(page_number(window), step.page) << step.what;
  }
}

TEST_F(PreviewTest, PageKeysScrollByAView) {
  PreviewWindow& window = shown();
  QScrollBar& bar = *window.view().verticalScrollBar();
  QTest::keyClick(&window.view(), Qt::Key_PageDown);
  EXPECT_EQ(bar.value(), window.view().viewport()->height());
  QTest::keyClick(&window.view(), Qt::Key_PageUp);
  EXPECT_EQ(bar.value(), 0);
}

TEST_F(PreviewTest, Zoom) {
  PreviewWindow& window = shown();
  PageView& view = window.view();
  auto& list = child<QComboBox>(window, "Zoom");
  const auto typed = [&](const char* text) {
    return [this, &window, &list, text] {
      type(window, "Zoom", text);
      QTest::keyClick(list.lineEdit(), Qt::Key_Return);
    };
  };
  const std::tuple<const char*, std::function<void()>, const char*> steps[] = {
      {"in", [&] { tool(window, "Zoom In"); }, "125%"},
      {"out", [&] { tool(window, "Zoom Out"); }, "100%"},
      {"Ctrl++", [&] { QTest::keyClick(&window, Qt::Key_Plus, Qt::ControlModifier); }, "125%"},
      {"Ctrl+-", [&] { QTest::keyClick(&window, Qt::Key_Minus, Qt::ControlModifier); }, "100%"},
      {"typed", typed("60"), "60%"},
      {"typed with %", typed("150%"), "150%"},
      {"nonsense", typed("wide"), "150%"},
      {"too large", typed("99999"), "800%"},
      {"too small", typed("0.5"), "10%"},
      {"Ctrl+0", [&] { QTest::keyClick(&window, Qt::Key_0, Qt::ControlModifier); }, "100%"},
      {"Ctrl+1", [&] { QTest::keyClick(&window, Qt::Key_1, Qt::ControlModifier); }, "Whole Page"},
      {"Ctrl+2", [&] { QTest::keyClick(&window, Qt::Key_2, Qt::ControlModifier); }, "Page Width"},
      {"listed", typed("Whole Page"), "Whole Page"},
  };
  for (const auto& [what, act, told] : steps) {
    act();
    EXPECT_EQ(list.currentText().toStdString(), told) << what;
  }
  const double height = 16838 * view.zoom() * view.logicalDpiY() / 1440;
  EXPECT_LE(height, view.viewport()->height());
  EXPECT_GT(height, view.viewport()->height() - 40);
}

// What stands under the mouse stays under it.
TEST_F(PreviewTest, WheelZoomsAboutTheMouse) {
  PreviewWindow& window = shown();
  PageView& view = window.view();
  view.zoom(2);
  view.horizontalScrollBar()->setValue(0);
  view.verticalScrollBar()->setValue(0);
  const QPoint mouse(200, 160);  // "Asha", 1152 twips from the left and 1020 from the top
  const auto text_at = [&] {
    drag(*view.viewport(), mouse - QPoint(20, 4), mouse + QPoint(20, 4));
    return view.selected_text();
  };
  const QString before = text_at();
  ASSERT_EQ(before, "Asha");
  QWheelEvent wheel(mouse, view.viewport()->mapToGlobal(mouse), {}, {0, 240}, {}, Qt::ControlModifier,
                    Qt::NoScrollPhase, false);
  QApplication::sendEvent(view.viewport(), &wheel);
  EXPECT_NEAR(view.zoom(), 2 * 1.15 * 1.15, 1e-9);
  EXPECT_EQ(text_at(), before);
}

TEST_F(PreviewTest, SeveralPagesInARow) {
  PreviewWindow& window = shown();
  PageView& view = window.view();
  tool(window, "Multiple");
  EXPECT_EQ(view.columns(), 3);
  EXPECT_EQ(view.horizontalScrollBar()->maximum(), 0);
  EXPECT_TRUE(child<QToolButton>(window, "Multiple").isChecked());
  tool(window, "Next");
  tool(window, "Next");
  EXPECT_EQ(page_number(window), 3);
  tool(window, "Single");
  EXPECT_EQ(view.columns(), 1);
  EXPECT_TRUE(child<QToolButton>(window, "Single").isChecked());
  EXPECT_EQ(page_number(window), 3);
}

TEST_F(PreviewTest, CopyTakesThePageOrTheSelection) {
  PreviewWindow& window = shown();
  QClipboard& clipboard = *QApplication::clipboard();
  QTest::keyClick(&window, Qt::Key_C, Qt::ControlModifier);
  EXPECT_TRUE(clipboard.text().startsWith("Register\thead\nAsha\tCaption\n")) << clipboard.text().toStdString();

  // From the left end of the page over the first line of Detail: margins 1152 and 720, header 300, line 240 high.
  PageView& view = window.view();
  view.zoom(0.5);
  const double dots = view.zoom() * view.logicalDpiX() / 1440.0;
  const int left = (view.viewport()->width() - static_cast<int>(11906 * dots)) / 2;
  const auto at = [&](double x, double y) {
    return QPoint(left + static_cast<int>(x * dots), PageArrangement::kGap + static_cast<int>(y * dots));
  };
  drag(*view.viewport(), at(200, 1100), at(3000, 1180));
  tool(window, "Copy");
  EXPECT_EQ(clipboard.text(), "Asha");
  QTest::keyClick(&window, Qt::Key_A, Qt::ControlModifier);
  tool(window, "Copy");
  EXPECT_TRUE(clipboard.text().startsWith("Register\thead\nAsha\tCaption\n"));
}

TEST_F(PreviewTest, SeveralAtOnceEachWithItsPages) {
  PreviewWindow& first = shown(kForm201);
  PreviewWindow& second = shown(kForm202);
  frame::basMain().BlankForm = true;
  PreviewWindow& third = shown(kForm201);  // a later run of the first one's report object
  EXPECT_EQ(windows->open(), 3u);
  EXPECT_EQ(second.windowTitle(), "Form202");
  EXPECT_TRUE(page_text(first, 0).contains("Asha"));
  EXPECT_FALSE(page_text(third, 0).contains("Asha"));
  first.close();
  EXPECT_EQ(windows->open(), 2u);
  windows->turn();
  EXPECT_EQ(frame::report_slot(kForm201).Pages().Count(), 3u);
  EXPECT_TRUE(page_text(shown(kForm202), 0).contains("Caption"));
}

TEST_F(PreviewTest, AReportWithoutRowsShowsNoPages) {
  database.run("DELETE FROM Customer");
  PreviewWindow& window = shown();
  EXPECT_EQ(page_number(window), 0);
  EXPECT_FALSE(child<QToolButton>(window, "Print...").isEnabled());
  tool(window, "E&xport Report");  // does nothing
  for (const Qt::Key key : {Qt::Key_End, Qt::Key_PageDown, Qt::Key_Plus})
    QTest::keyClick(&window.view(), key, key == Qt::Key_Plus ? Qt::ControlModifier : Qt::NoModifier);
  QTest::keyClick(&window, Qt::Key_A, Qt::ControlModifier);
  QTest::mouseClick(window.view().viewport(), Qt::LeftButton);
  EXPECT_EQ(windows->open(), 1u);
}

TEST_F(PreviewTest, AFailedRunIsToldAndThrownOn) {
  database.run("DROP TABLE Customer");
  std::string thrown;
  try {
    frame::report_slot(kForm201).Show();
  } catch (const value::Failure& failure) {
    thrown = failure.description();
  }
  EXPECT_NE(thrown.find("Customer"), std::string::npos) << thrown;
  ASSERT_EQ(windows->open(), 1u);
  PreviewWindow& window = *windows->windows().back();
  auto* box = window.findChild<QMessageBox*>();
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(box->text().toStdString(), thrown);
  EXPECT_TRUE(box->isVisible());
  box->accept();
  EXPECT_EQ(child<QLabel>(window, "Notices").text().toStdString(), thrown);
}

// What was filled before the failure is shown.
class FailsOnMeera : public AllCustomers {
 public:
  using AllCustomers::AllCustomers;

 protected:
  void Detail_Format() override {
    if (text("txtName") == "Meera") throw value::Failure(value::Error::TypeMismatch, "Meera has no number");
  }
};

TEST_F(PreviewTest, AFailedRunShowsWhatWasFilled) {
  frame::set_report_classes({{kForm201, [] { return std::unique_ptr<frame::Report>(new FailsOnMeera(kForm201)); }}});
  EXPECT_THROW(frame::report_slot(kForm201).Show(), value::Failure);
  PreviewWindow& window = *windows->windows().back();
  ASSERT_GE(window.view().pages().Count(), 2u);
  EXPECT_TRUE(page_text(window, 1).contains("Ganesh"));
  EXPECT_TRUE(child<QLabel>(window, "Notices").text().contains("Meera has no number"));
}

TEST_F(ThousandPages, ScrollDrawingOnlyWhatShows) {
  PreviewWindow& window = shown();
  PageView& view = window.view();
  ASSERT_EQ(view.pages().Count(), 1000u);
  view.viewport()->repaint();
  EXPECT_LE(view.pictures().drawn(), 2u);
  const auto began = std::chrono::steady_clock::now();
  QScrollBar& bar = *view.verticalScrollBar();
  constexpr int kSteps = 100;
  for (int i = 1; i <= kSteps; ++i) {
    bar.setValue(static_cast<int>(std::int64_t{bar.maximum()} * i / kSteps));
    view.viewport()->repaint();
  }
  const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - began;
  EXPECT_EQ(view.current_page(), 999u);
  EXPECT_LE(view.pictures().drawn(), 2u + 2u * kSteps);
  EXPECT_LE(view.pictures().kib(), PagePictures::kKiB);
  EXPECT_LT(took.count() / kSteps, 100) << "ms a step";
  RecordProperty("ms_a_step", std::to_string(took.count() / kSteps));
}

// A page at the largest zoom would be a picture of 230 MB.
TEST_F(ThousandPages, ALargeZoomDrawsOnlyThePartThatShows) {
  PreviewWindow& window = shown();
  window.view().zoom(PageView::kMostZoom);
  const std::size_t before = window.view().pictures().drawn();
  window.view().viewport()->repaint();
  EXPECT_LE(window.view().pictures().drawn() - before, 4u);
  EXPECT_LE(window.view().pictures().kib(), 4 * 16 * 1024 + 4);
}

}  // namespace
}  // namespace dorvo::preview
