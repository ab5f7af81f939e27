// The preview's tool bar, built from the tools of a report: the standard ones by their places, then what was added.
//
// A click, and what the zoom list and the page number take, come as calls. Widgets bear the captions as names.
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QSpinBox>
#include <QToolBar>
#include <functional>
#include <vector>

#include "engine/active_report.h"
#include "preview/page_view.h"

namespace dorvo::preview {

class ToolBar : public QToolBar {
 public:
  explicit ToolBar(const engine::Toolbar& toolbar);

  std::function<void(std::size_t tool)> clicked;
  std::function<void(double zoom)> zoomed;
  std::function<void(PageView::Fit fit)> fitted;
  std::function<void(std::size_t page)> paged;  // index

  // The tool's button; nullptr for gaps, the zoom list and the page number.
  QAction* action(std::size_t tool) const { return actions_.at(tool); }

  void show_page(std::size_t page, std::size_t count);  // index
  void show_zoom(double zoom, PageView::Fit fit);
  void edit_page_number();

 private:
  void add_tool(std::size_t index, const engine::Tool& tool);
  void add_button(std::size_t index, const engine::Tool& tool);
  void add_zoom(const engine::Tool& tool);
  void add_page_number(const engine::Tool& tool);
  void take_zoom();

  std::vector<QAction*> actions_;
  QComboBox* zoom_ = nullptr;
  QSpinBox* page_ = nullptr;
  QLabel* count_ = nullptr;
};

}  // namespace dorvo::preview
