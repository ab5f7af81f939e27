#include "preview/tool_bar.h"

#include <QLineEdit>
#include <QLocale>
#include <QSignalBlocker>
#include <QToolButton>
#include <cmath>
#include <iterator>
#include <map>

#include "preview/tools.h"

namespace dorvo::preview {
namespace {

constexpr int kPercents[] = {10, 25, 50, 75, 100, 125, 150, 200, 400, 800};
constexpr const char* kPageWidth = "Page Width";
constexpr const char* kWholePage = "Whole Page";
constexpr const char* kGapCaption = "-";

struct Hint {
  const char* text;
  QList<QKeySequence> keys;
};

const std::map<std::size_t, Hint>& hints() {
  static const std::map<std::size_t, Hint> kHints = {
      {kContents, {"Contents of the report", {}}},
      {kPrint, {"Prints pages", {QKeySequence::Print}}},
      {kCopy, {"Copies the selected text, or the page's", {QKeySequence::Copy}}},
      {kFind, {"Finds a text", {QKeySequence::Find}}},
      {kSingle, {"One page in a row", {}}},
      {kMultiple, {"Several pages in a row", {}}},
      {kZoomOut, {"Smaller", {QKeySequence::ZoomOut}}},
      {kZoomIn, {"Larger", {QKeySequence::ZoomIn, QKeySequence(Qt::CTRL | Qt::Key_Equal)}}},
      {kPrevious, {"Previous page", {QKeySequence(Qt::CTRL | Qt::Key_PageUp)}}},
      {kNext, {"Next page", {QKeySequence(Qt::CTRL | Qt::Key_PageDown)}}},
      {kBack, {"Back to the page before", {QKeySequence(Qt::ALT | Qt::Key_Left)}}},
      {kForward, {"Forward again", {QKeySequence(Qt::ALT | Qt::Key_Right)}}},
  };
  return kHints;
}

bool is_checkable(std::size_t index) {
  return index == kSingle || index == kMultiple || index == kContents;
}

QString caption_of(const engine::Tool& tool) {
  return QString::fromStdString(tool.Caption);
}

}  // namespace

ToolBar::ToolBar(const engine::Toolbar& toolbar) : actions_(toolbar.Tools.size(), nullptr) {
  setObjectName("Tool Bar");
  setWindowTitle("Tools");
  setMovable(false);
  setContextMenuPolicy(Qt::PreventContextMenu);
  setToolButtonStyle(Qt::ToolButtonTextOnly);
  for (std::size_t index = 0; index < toolbar.Tools.size(); ++index) {
    if (index == engine::Toolbar::kStandardTools) addSeparator();
    add_tool(index, toolbar.Tools[index]);
  }
}

void ToolBar::add_tool(std::size_t index, const engine::Tool& tool) {
  if (tool.Caption == kGapCaption) {
    addSeparator();
  } else if (index == kZoom) {
    add_zoom(tool);
  } else if (index == kPageNumber) {
    add_page_number(tool);
  } else {
    add_button(index, tool);
  }
}

// The button shows the caption with its mnemonic, which a button made from an action would lose; the window answers to
// the mnemonic, also where the bar has no room for the button.
void ToolBar::add_button(std::size_t index, const engine::Tool& tool) {
  auto* action = new QAction(caption_of(tool), this);
  action->setEnabled(tool.Enabled);
  action->setObjectName(caption_of(tool));
  action->setCheckable(is_checkable(index));
  connect(action, &QAction::triggered, this, [this, index] { clicked(index); });
  if (const auto hint = hints().find(index); hint != hints().end()) {
    action->setShortcuts(hint->second.keys);
    const QString key = hint->second.keys.isEmpty() ? QString() : hint->second.keys.first().toString();
    action->setToolTip(hint->second.text + (key.isEmpty() ? QString() : " (" + key + ")"));
  }
  if (index >= engine::Toolbar::kStandardTools) action->setShortcut(QKeySequence::mnemonic(action->text()));
  addAction(action);
  if (auto* button = dynamic_cast<QToolButton*>(widgetForAction(action))) {
    button->setText(caption_of(tool));
    button->setShortcut({});
    button->setObjectName(caption_of(tool));
    button->setFocusPolicy(Qt::TabFocus);
  }
  actions_[index] = action;
}

void ToolBar::add_zoom(const engine::Tool& tool) {
  zoom_ = new QComboBox;
  zoom_->setObjectName(caption_of(tool));
  zoom_->setEnabled(tool.Enabled);
  zoom_->setEditable(true);
  zoom_->setInsertPolicy(QComboBox::NoInsert);
  zoom_->setToolTip("How large pages are shown");
  for (const int percent : kPercents) zoom_->addItem(QString::number(percent) + "%");
  zoom_->addItems({kPageWidth, kWholePage});
  connect(zoom_, &QComboBox::activated, this, [this] { take_zoom(); });
  connect(zoom_->lineEdit(), &QLineEdit::returnPressed, this, [this] { take_zoom(); });
  addWidget(zoom_);
}

void ToolBar::take_zoom() {
  const QString text = zoom_->currentText().trimmed();
  if (text == kPageWidth) return fitted(PageView::Fit::PageWidth);
  if (text == kWholePage) return fitted(PageView::Fit::WholePage);
  bool is_number = false;
  const double percent = QLocale::c().toDouble(text.endsWith('%') ? text.chopped(1) : text, &is_number);
  zoomed(is_number && percent > 0 ? percent / 100 : 0);  // 0: as it was
}

void ToolBar::add_page_number(const engine::Tool& tool) {
  page_ = new QSpinBox;
  page_->setObjectName(caption_of(tool));
  page_->setEnabled(tool.Enabled);
  page_->setKeyboardTracking(false);
  page_->setButtonSymbols(QSpinBox::NoButtons);
  page_->setAlignment(Qt::AlignRight);
  page_->setToolTip("Page (Ctrl+G)");
  connect(page_, &QSpinBox::valueChanged, this, [this](int number) { paged(static_cast<std::size_t>(number) - 1); });
  addWidget(page_);
  count_ = new QLabel;
  count_->setObjectName("Page Count");
  addWidget(count_);
}

void ToolBar::show_page(std::size_t page, std::size_t count) {
  if (!page_) return;
  const QSignalBlocker quiet(page_);
  page_->setRange(count > 0 ? 1 : 0, static_cast<int>(count));
  page_->setValue(count > 0 ? static_cast<int>(page) + 1 : 0);
  page_->setEnabled(count > 0);
  count_->setText(" of " + QString::number(count) + " ");
}

void ToolBar::show_zoom(double zoom, PageView::Fit fit) {
  if (!zoom_) return;
  const QSignalBlocker quiet(zoom_);
  zoom_->setEditText(fit == PageView::Fit::PageWidth   ? QString(kPageWidth)
                     : fit == PageView::Fit::WholePage ? QString(kWholePage)
                                                       : QString::number(std::lround(zoom * 100)) + "%");
}

void ToolBar::edit_page_number() {
  if (!page_) return;
  page_->setFocus(Qt::ShortcutFocusReason);
  page_->selectAll();
}

}  // namespace dorvo::preview
