#include "preview/preview_window.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QShortcut>
#include <QStatusBar>
#include <QToolBar>
#include <QToolButton>
#include <array>
#include <cmath>

#include "frame/report.h"
#include "preview/print_dialog.h"

namespace dorvo::preview {
namespace {

// The standard tools by their index in the report's toolbar.
enum StandardTool : std::size_t {
  kContents = 0,
  kPrint = 2,
  kCopy = 4,
  kFind = 6,
  kSingle = 8,
  kMultiple = 9,
  kZoomOut = 11,
  kZoomIn = 12,
  kZoom = 13,
  kPrevious = 15,
  kNext = 16,
  kPageNumber = 17,
  kBack = 19,
  kForward = 20
};

constexpr const char* kSeparator = "-";
constexpr int kPagesBeside = 3;
constexpr double kZoomStep = 1.25;
constexpr std::array<int, 7> kZoomPercents = {25, 50, 75, 100, 150, 200, 400};
const QString kPageWidth = QStringLiteral("Page Width");
const QString kWholePage = QStringLiteral("Whole Page");

struct Key {
  std::size_t tool;
  QKeySequence keys;
};

const std::vector<Key>& keys() {
  static const std::vector<Key> all = {
      {kPrint, QKeySequence::Print},
      {kCopy, QKeySequence::Copy},
      {kFind, QKeySequence::Find},
      {kZoomOut, QKeySequence::ZoomOut},
      {kZoomIn, QKeySequence::ZoomIn},
      {kPrevious, QKeySequence(Qt::CTRL | Qt::Key_PageUp)},
      {kNext, QKeySequence(Qt::CTRL | Qt::Key_PageDown)},
      {kBack, QKeySequence(Qt::ALT | Qt::Key_Left)},
      {kForward, QKeySequence(Qt::ALT | Qt::Key_Right)},
  };
  return all;
}

}  // namespace

PreviewWindow::PreviewWindow(frame::Report& report)
    : report_(report), pages_(report.Pages()), tool_rows_(report.Toolbar().Tools) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(QString::fromStdString(report.Name()) + " - Preview");
  resize(1180, 820);
  view_ = new PageView(this);
  setCentralWidget(view_);
  make_tools();
  make_find_bar();
  make_contents();
  make_shortcuts();
  view_->changed = [this] { update_state(); };
  view_->set_pages(pages_);
  view_->setFocus();
}

// ---- tools ----

void PreviewWindow::make_tools() {
  tools_ = addToolBar("Tools");
  tools_->setObjectName("tools");
  tools_->setMovable(false);
  for (std::size_t i = 0; i < tool_rows_.size(); ++i) {
    if (i < engine::Toolbar::kStandardTools)
      add_standard_tool(i, tool_rows_[i]);
    else
      add_own_tool(tool_rows_[i]);
  }
}

void PreviewWindow::add_standard_tool(std::size_t index, const engine::Tool& tool) {
  actions_.push_back(nullptr);
  if (tool.Caption == kSeparator) {
    tools_->addSeparator();
    return;
  }
  if (index == kZoom) return make_zoom_list();
  if (index == kPageNumber) return make_page_box();
  QAction* action = tools_->addAction(QString::fromStdString(tool.Caption));
  action->setEnabled(tool.Enabled);
  connect(action, &QAction::triggered, this, [this, index] { run_tool(index); });
  for (const Key& key : keys())
    if (key.tool == index) action->setShortcut(key.keys);
  if (!action->shortcut().isEmpty())
    action->setToolTip(action->text() + " (" + action->shortcut().toString(QKeySequence::NativeText) + ")");
  action->setCheckable(index == kSingle || index == kMultiple || index == kContents);
  actions_.back() = action;
}

// With its caption's mnemonic, which tools made from actions drop.
void PreviewWindow::add_own_tool(const engine::Tool& tool) {
  auto* button = new QToolButton(tools_);
  button->setObjectName("tool" + QString::number(tool.ID));
  button->setText(QString::fromStdString(tool.Caption));
  button->setToolButtonStyle(Qt::ToolButtonTextOnly);
  button->setEnabled(tool.Enabled);
  const auto click = [this, tool] {
    if (tool_clicked) tool_clicked(tool);
  };
  connect(button, &QToolButton::clicked, this, click);
  // The window answers to the mnemonic, so that it works where the bar has no room for the button.
  button->setShortcut({});
  connect(new QShortcut(QKeySequence::mnemonic(button->text()), this), &QShortcut::activated, this, click);
  tools_->addSeparator();
  tools_->addWidget(button);
}

void PreviewWindow::run_tool(std::size_t index) {
  switch (index) {
    case kContents:
      return contents_->setVisible(!contents_->isVisible());
    case kPrint:
      return print();
    case kCopy:
      return copy();
    case kFind:
      return show_find(true);
    case kSingle:
      return view_->set_columns(1);
    case kMultiple:
      return view_->set_columns(kPagesBeside);
    case kZoomOut:
      return zoom_by(1 / kZoomStep);
    case kZoomIn:
      return zoom_by(kZoomStep);
    case kPrevious:
      return jump(view_->current_page() > 0 ? view_->current_page() - 1 : 0);
    case kNext:
      return jump(view_->current_page() + 1);
    case kBack:
      return go_back();
    case kForward:
      return go_forward();
    default:
      return;
  }
}

void PreviewWindow::make_zoom_list() {
  zoom_ = new QComboBox(tools_);
  zoom_->setObjectName("zoom");
  zoom_->setEditable(true);
  zoom_->setInsertPolicy(QComboBox::NoInsert);
  for (int percent : kZoomPercents) zoom_->addItem(QString::number(percent) + "%");
  zoom_->addItem(kPageWidth);
  zoom_->addItem(kWholePage);
  tools_->addWidget(zoom_);
  connect(zoom_, &QComboBox::textActivated, this, [this](const QString& text) { choose_zoom(text); });
  connect(zoom_->lineEdit(), &QLineEdit::returnPressed, this, [this] { choose_zoom(zoom_->currentText()); });
}

void PreviewWindow::make_page_box() {
  page_ = new QLineEdit(tools_);
  page_->setObjectName("page");
  page_->setFixedWidth(90);
  page_->setAlignment(Qt::AlignCenter);
  tools_->addWidget(page_);
  connect(page_, &QLineEdit::returnPressed, this, [this] {
    const int number = page_->text().section('/', 0, 0).trimmed().toInt();
    if (number >= 1 && static_cast<std::size_t>(number) <= pages_.Count()) jump(static_cast<std::size_t>(number) - 1);
    update_state();
    view_->setFocus();
  });
}

void PreviewWindow::make_find_bar() {
  find_bar_ = new QToolBar("Find", this);
  find_bar_->setObjectName("findBar");
  find_bar_->setMovable(false);
  addToolBarBreak();
  addToolBar(find_bar_);
  find_text_ = new QLineEdit(find_bar_);
  find_text_->setObjectName("find");
  find_text_->setPlaceholderText("Find");
  find_text_->setMaximumWidth(260);
  find_bar_->addWidget(find_text_);
  connect(find_bar_->addAction("Find Next"), &QAction::triggered, this, [this] { find_next(); });
  connect(find_bar_->addAction("Find Previous"), &QAction::triggered, this, [this] { find_previous(); });
  connect(find_bar_->addAction("Close"), &QAction::triggered, this, [this] { show_find(false); });
  connect(find_text_, &QLineEdit::returnPressed, this, [this] { find_next(); });
  connect(find_text_, &QLineEdit::textChanged, this, [this] {
    match_.reset();
    view_->mark(find_text_->text(), match_);
    statusBar()->clearMessage();
  });
  find_bar_->hide();
}

void PreviewWindow::make_contents() {
  contents_ = new QDockWidget("Table of Contents", this);
  contents_->setObjectName("contents");
  auto* list = new QListWidget(contents_);
  for (std::size_t i = 0; i < pages_.Count(); ++i) list->addItem("Page " + QString::number(i + 1));
  connect(list, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0) jump(static_cast<std::size_t>(row));
  });
  contents_->setWidget(list);
  addDockWidget(Qt::LeftDockWidgetArea, contents_);
  contents_->hide();
}

void PreviewWindow::make_shortcuts() {
  const auto add = [this](const QKeySequence& keys, auto action) {
    connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
  };
  add(QKeySequence::FindNext, [this] { find_next(); });
  add(QKeySequence::FindPrevious, [this] { find_previous(); });
  add(QKeySequence(Qt::CTRL | Qt::Key_0), [this] { view_->set_zoom(1); });
  add(QKeySequence(Qt::CTRL | Qt::Key_Equal), [this] { zoom_by(kZoomStep); });
  add(QKeySequence(Qt::CTRL | Qt::Key_Home), [this] { jump(0); });
  add(QKeySequence(Qt::CTRL | Qt::Key_End), [this] { jump(pages_.Count() == 0 ? 0 : pages_.Count() - 1); });
  add(QKeySequence(Qt::CTRL | Qt::Key_G), [this] {
    page_->setFocus();
    page_->selectAll();
  });
  add(QKeySequence(Qt::CTRL | Qt::Key_W), [this] { close(); });
  add(QKeySequence(Qt::Key_Escape), [this] { show_find(false); });
}

// ---- what they do ----

void PreviewWindow::print() {
  print_pages(this, QString::fromStdString(report_.Name()), pages_, view_->current_page(),
              report_.Printer().PrintQuality == engine::kQualityDraft);
}

void PreviewWindow::copy() {
  if (pages_.Count() > 0) QApplication::clipboard()->setText(text_of(pages_[view_->current_page()]));
}

void PreviewWindow::show_find(bool shown) {
  find_bar_->setVisible(shown);
  if (shown) {
    find_text_->setFocus();
    find_text_->selectAll();
  } else {
    view_->mark({}, {});
    view_->setFocus();
  }
}

void PreviewWindow::find_next() {
  find(Direction::Forward);
}

void PreviewWindow::find_previous() {
  find(Direction::Backward);
}

void PreviewWindow::find(Direction direction) {
  if (!find_bar_->isVisible()) return show_find(true);
  const QString sought = find_text_->text();
  match_ = find_text(view_->pages(), sought, view_->current_page(), match_, direction);
  view_->mark(sought, match_);
  if (match_) view_->show_match(*match_);
  if (match_ || sought.isEmpty())
    statusBar()->clearMessage();
  else
    statusBar()->showMessage("\"" + sought + "\" was not found");
}

void PreviewWindow::zoom_by(double factor) {
  view_->set_zoom(view_->zoom() * factor);
}

void PreviewWindow::choose_zoom(const QString& text) {
  if (text == kPageWidth) return view_->set_fit(Fit::PageWidth);
  if (text == kWholePage) return view_->set_fit(Fit::WholePage);
  const int percent = QString(text).remove('%').trimmed().toInt();
  if (percent > 0) view_->set_zoom(percent / 100.0);
  update_state();
}

void PreviewWindow::jump(std::size_t page) {
  if (page >= pages_.Count() || page == view_->current_page()) return;
  back_.push_back(view_->current_page());
  forward_.clear();
  view_->go_to(page);
}

void PreviewWindow::go_back() {
  if (back_.empty()) return;
  forward_.push_back(view_->current_page());
  const std::size_t page = back_.back();
  back_.pop_back();
  view_->go_to(page);
}

void PreviewWindow::go_forward() {
  if (forward_.empty()) return;
  back_.push_back(view_->current_page());
  const std::size_t page = forward_.back();
  forward_.pop_back();
  view_->go_to(page);
}

void PreviewWindow::update_state() {
  const std::size_t count = pages_.Count();
  const std::size_t page = view_->current_page();
  page_->setText(count == 0 ? QString("0 / 0") : QString("%1 / %2").arg(page + 1).arg(count));
  const QString zoom = view_->fit() == Fit::PageWidth   ? kPageWidth
                       : view_->fit() == Fit::WholePage ? kWholePage
                                                        : QString::number(std::lround(view_->zoom() * 100)) + "%";
  zoom_->setEditText(zoom);
  const auto enable = [this](std::size_t tool, bool on) {
    if (actions_[tool]) actions_[tool]->setEnabled(on && tool_rows_[tool].Enabled);
  };
  for (std::size_t tool : {kPrint, kCopy, kFind, kZoomIn, kZoomOut}) enable(tool, count > 0);
  enable(kPrevious, page > 0);
  enable(kNext, page + 1 < count);
  enable(kBack, !back_.empty());
  enable(kForward, !forward_.empty());
  if (actions_[kSingle]) actions_[kSingle]->setChecked(view_->columns() == 1);
  if (actions_[kMultiple]) actions_[kMultiple]->setChecked(view_->columns() > 1);
}

}  // namespace dorvo::preview
