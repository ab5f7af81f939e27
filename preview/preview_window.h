// One preview: the finished pages of one run, with tools, search, printing and export.
//
// The window keeps the pages that it shows: a later run of the same report object opens a window of its own and leaves
// this one as it is. The report object outlives the window, which closes by itself and is then gone.
#pragma once

#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <functional>
#include <vector>

#include "frame/report.h"
#include "preview/find_bar.h"
#include "preview/page_view.h"
#include "preview/print_watch.h"
#include "preview/tool_bar.h"

namespace dorvo::preview {

class PreviewWindow : public QMainWindow {
 public:
  // `failure`: the line that ended the run, empty when it went through. Shows what was filled so far all the same.
  PreviewWindow(frame::Report& report, const std::string& failure);

  std::function<void()> closed;

  PageView& view() { return *view_; }

  // A message over this window that does not hold up the caller.
  void tell(const QString& text, const QString& title);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  using Action = void (PreviewWindow::*)();

  QWidget* notices(const std::vector<std::string>& lines);
  void connect_tools();
  void add_keys();
  void key(const QKeySequence& keys, const std::function<void()>& action);

  // A click on a tool: the report hears of it first, with the pages that this window shows.
  void click(std::size_t tool);
  void print();
  void follow(const PrintOrder& order, int job);
  void copy();
  void find();
  void single();
  void multiple();
  void zoom_out();
  void zoom_in();
  void previous();
  void next();
  void back();
  void forward();

  void search();
  void step(Direction direction);
  void end_search();
  void look_further();

  // Goes there, and remembers where the user was.
  void visit(std::size_t page);
  void remember();
  void show_state();

  frame::Report& report_;
  std::vector<engine::Tool> tools_;
  PageView* view_;
  ToolBar* tool_bar_;
  FindBar* find_bar_;
  QPushButton* cancel_print_;
  Found found_;
  QTimer looking_;                    // further through the pages, between what the user does
  std::vector<std::size_t> visited_;  // pages before this one
  std::vector<std::size_t> ahead_;    // pages that the user came back from
};

}  // namespace dorvo::preview
