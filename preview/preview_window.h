// The window of one preview: the report's toolbar over its pages.
//
// Holds its pages itself, so that a later run of the same report object leaves this window as it is. The report object
// must live as long as the window; report objects live for the whole process.
#pragma once

#include <QMainWindow>
#include <optional>
#include <vector>

#include "engine/active_report.h"
#include "preview/page_view.h"

class QAction;
class QComboBox;
class QLineEdit;
class QToolBar;
class QTreeWidget;

namespace dorvo::frame {
class Report;
}

namespace dorvo::preview {

class PreviewWindow : public QMainWindow {
 public:
  // Takes the pages that the report's run left in it.
  explicit PreviewWindow(frame::Report& report);

  frame::Report& report() { return report_; }
  const engine::Pages& pages() const { return pages_; }
  PageView& view() { return *view_; }
  QToolBar& tools() { return *tools_; }
  // The action of a standard tool, nullptr for a separator.
  QAction* tool(std::size_t index) const { return actions_.at(index); }

  void find_next();
  void find_previous();

  std::function<void(const engine::Tool&)> tool_clicked;  // one that the report added

 private:
  void make_tools();
  void make_find_bar();
  void make_contents();
  void make_shortcuts();
  void add_standard_tool(std::size_t index, const engine::Tool& tool);
  void add_own_tool(const engine::Tool& tool);
  void run_tool(std::size_t index);
  void make_zoom_list();
  void make_page_box();
  void print();
  void copy();
  void show_find(bool shown);
  void find(Direction direction);
  void zoom_by(double factor);
  void choose_zoom(const QString& text);
  void jump(std::size_t page);  // and remember where from
  void go_back();
  void go_forward();
  void update_state();

  frame::Report& report_;
  engine::Pages pages_;
  std::vector<engine::Tool> tool_rows_;
  PageView* view_ = nullptr;
  QToolBar* tools_ = nullptr;
  QToolBar* find_bar_ = nullptr;
  QLineEdit* find_text_ = nullptr;
  QComboBox* zoom_ = nullptr;
  QLineEdit* page_ = nullptr;
  QDockWidget* contents_ = nullptr;
  std::vector<QAction*> actions_;
  std::optional<Match> match_;
  std::vector<std::size_t> back_;
  std::vector<std::size_t> forward_;
};

}  // namespace dorvo::preview
