// A preview without a screen: a sample report on a small database, shown in real windows of the offscreen platform.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <functional>

#include "preview/qt_windows.h"
#include "preview/tools.h"
#include "tests/data/scratch_database.h"
#include "tests/frame/sample_report.h"
#include "value/failure.h"

namespace dorvo::preview {

inline constexpr char kForm201[] = "Form201";
inline constexpr char kForm202[] = "Form202";

// One page for each customer of the database.
class AllCustomers : public frame::SampleReport {
 public:
  using SampleReport::SampleReport;

 protected:
  std::string query() const override { return "SELECT Name FROM Customer ORDER BY CustomerID"; }
};

class PreviewTest : public testing::Test {
 protected:
  explicit PreviewTest(
      const std::string& rows = "INSERT INTO Customer VALUES (1, 'Asha'), (2, 'Ganesh'), (3, 'Meera');")
      : database("CREATE TABLE Customer (CustomerID INT, Name VARCHAR(40));" + rows) {
    frame::basMain() = {};
    frame::basMain().ConnectionString = database.path();
    frame::use_sample_reports<kForm201, kForm202>();
    frame::set_report_classes({{kForm201, make<kForm201>}, {kForm202, make<kForm202>}});
    windows = start();
  }
  ~PreviewTest() override {
    for (QWidget* widget : QApplication::topLevelWidgets()) widget->close();
    windows->turn();
    frame::register_ports({});
    frame::basMain() = {};
  }

  // Shows the report and gives its window.
  PreviewWindow& shown(const char* report = kForm201) {
    frame::report_slot(report).Show();
    PreviewWindow* window = windows->windows().back();
    QApplication::setActiveWindow(window);
    EXPECT_TRUE(QTest::qWaitForWindowExposed(window));
    return *window;
  }

  // Does something in the next modal dialog, once it is open.
  static void in_dialog(std::function<void(QDialog&)> action) {
    QTimer::singleShot(0, qApp, [action] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr) << "no dialog opened";
      action(*dialog);
    });
  }

  // Handles events until it holds.
  static bool comes(const std::function<bool()>& it) { return QTest::qWaitFor(it, 30000); }

  template <class Widget>
  static Widget& child(QWidget& parent, const char* name) {
    auto* found = parent.findChild<Widget*>(name);
    if (!found) throw std::runtime_error(std::string("there is no ") + name);
    return *found;
  }

  static void click(QWidget& parent, const char* button) {
    QTest::mouseClick(&child<QWidget>(parent, button), Qt::LeftButton);
  }
  // A click on a tool's button.
  static void tool(PreviewWindow& window, const char* caption) { click(child<ToolBar>(window, "Tool Bar"), caption); }
  // The mouse goes from one point to another with its left button down.
  static void drag(QWidget& widget, const QPoint& from, const QPoint& to) {
    const std::tuple<QEvent::Type, QPoint, Qt::MouseButton, Qt::MouseButtons> steps[] = {
        {QEvent::MouseButtonPress, from, Qt::LeftButton, Qt::LeftButton},
        {QEvent::MouseMove, to, Qt::NoButton, Qt::LeftButton},
        {QEvent::MouseButtonRelease, to, Qt::LeftButton, Qt::NoButton},
    };
    for (const auto& [type, point, button, buttons] : steps) {
      QMouseEvent event(type, point, widget.mapToGlobal(point), button, buttons, Qt::NoModifier);
      QApplication::sendEvent(&widget, &event);
    }
  }
  static void type(QWidget& parent, const char* edit, const std::string& text) {
    auto& line = child<QWidget>(parent, edit);
    line.setFocus();
    QTest::keyClick(&line, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&line, Qt::Key_Delete);
    QTest::keyClicks(&line, QString::fromStdString(text));
  }

  std::shared_ptr<QtWindows> windows;
  data::ScratchDatabase database;

 private:
  template <const char* Name>
  static std::unique_ptr<frame::Report> make() {
    return std::make_unique<AllCustomers>(Name);
  }
};

class ThousandPages : public PreviewTest {
 protected:
  ThousandPages()
      : PreviewTest(
            "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1000)"
            "INSERT INTO Customer SELECT i, 'Dealer ' || i FROM n;") {}
};

}  // namespace dorvo::preview
