// A preview without a screen: a sample report on a small database, shown in real windows of the offscreen platform.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <functional>

#include "preview/preview.h"
#include "preview/preview_window.h"
#include "tests/data/scratch_database.h"
#include "tests/frame/sample_report.h"

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
    start();
  }
  ~PreviewTest() override {
    for (QWidget* widget : QApplication::topLevelWidgets()) widget->close();
    turn();
    frame::basMain() = {};
  }

  // Shows the report and gives its window, the one opened last.
  PreviewWindow& shown(const char* report = kForm201) {
    frame::report_slot(report).Show();
    PreviewWindow* window = nullptr;
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (auto* found = dynamic_cast<PreviewWindow*>(widget); found && found->isVisible() && !known.contains(found))
        window = found;
    EXPECT_NE(window, nullptr);
    known += window;
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

  template <class Widget>
  static Widget& child(QWidget& parent, const char* name) {
    auto* found = parent.findChild<Widget*>(name);
    if (!found) throw std::runtime_error(std::string("there is no ") + name);
    return *found;
  }

  data::ScratchDatabase database;
  QList<PreviewWindow*> known;

 private:
  template <const char* Name>
  static std::unique_ptr<frame::Report> make() {
    return std::make_unique<AllCustomers>(Name);
  }
};

}  // namespace dorvo::preview
