#include "preview/preview_window.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QScreen>
#include <QShortcut>
#include <QStatusBar>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <map>

#include "preview/page_text.h"
#include "preview/print_dialog.h"
#include "preview/tools.h"
#include "value/failure.h"

namespace dorvo::preview {
namespace {

constexpr double kZoomStep = 1.25;
constexpr int kBeside = 3;  // pages in a row
constexpr QSize kUsualSize(1080, 860);
constexpr std::size_t kMostNotices = 5;
constexpr qint64 kTimeSlice = 10;  // ms

// The report has the pages of a window while it hears of a click there.
class PagesOnLoan {
 public:
  PagesOnLoan(frame::Report& report, const engine::Pages& pages) : report_(report), pages_(pages) {
    report_.swap_pages(pages_);
  }
  ~PagesOnLoan() { report_.swap_pages(pages_); }
  PagesOnLoan(const PagesOnLoan&) = delete;
  PagesOnLoan& operator=(const PagesOnLoan&) = delete;

 private:
  frame::Report& report_;
  engine::Pages pages_;
};

}  // namespace

PreviewWindow::PreviewWindow(frame::Report& report, const std::string& failure)
    : report_(report),
      tools_(report.Toolbar().Tools),
      view_(new PageView(report.Pages())),
      tool_bar_(new ToolBar(report.Toolbar())),
      find_bar_(new FindBar),
      cancel_print_(new QPushButton("Cancel printing")) {
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(QString::fromStdString(report.Name()));
  addToolBar(tool_bar_);
  setContextMenuPolicy(Qt::PreventContextMenu);

  std::vector<std::string> lines = report.Messages();
  if (!failure.empty()) lines.insert(lines.begin(), failure);
  auto* middle = new QWidget;
  auto* rows = new QVBoxLayout(middle);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  if (!lines.empty()) rows->addWidget(notices(lines));
  rows->addWidget(view_, 1);
  rows->addWidget(find_bar_);
  find_bar_->hide();
  setCentralWidget(middle);
  cancel_print_->setObjectName("Cancel Printing");
  cancel_print_->hide();
  statusBar()->addPermanentWidget(cancel_print_);
  statusBar()->hide();  // until there is a job to tell of

  connect_tools();
  add_keys();
  resize(kUsualSize.boundedTo(screen()->availableSize()));
  view_->setFocus();
  tool_bar_->action(kSingle)->setChecked(true);
  show_state();
}

// What the user should know of the run, above the pages.
QWidget* PreviewWindow::notices(const std::vector<std::string>& lines) {
  QStringList texts;
  for (const std::string& line : lines) texts += QString::fromStdString(line).simplified();
  auto* strip = new QLabel(texts.mid(0, kMostNotices).join('\n'));
  if (lines.size() > kMostNotices)
    strip->setText(strip->text() + "\nand " + QString::number(lines.size() - kMostNotices) + " more");
  strip->setObjectName("Notices");
  strip->setTextFormat(Qt::PlainText);
  strip->setTextInteractionFlags(Qt::TextSelectableByMouse);
  strip->setWordWrap(true);
  strip->setToolTip(Qt::convertFromPlainText(texts.join('\n')));
  strip->setStyleSheet(
      "#Notices { background: #fff3c4; color: #3a2f00; padding: 6px; border-bottom: 1px solid #c9b458 }");
  return strip;
}

void PreviewWindow::connect_tools() {
  tool_bar_->clicked = [this](std::size_t tool) { click(tool); };
  tool_bar_->fitted = [this](PageView::Fit fit) {
    view_->fit(fit);
    view_->setFocus();
  };
  tool_bar_->zoomed = [this](double zoom) {
    if (zoom > 0) view_->zoom(zoom);
    show_state();
    view_->setFocus();
  };
  tool_bar_->paged = [this](std::size_t page) {
    visit(page);
    view_->setFocus();
  };
  find_bar_->step = [this](Direction direction) { step(direction); };
  find_bar_->edited = [this] { search(); };
  find_bar_->closed = [this] { end_search(); };
  view_->changed = [this] { show_state(); };
  connect(&looking_, &QTimer::timeout, this, [this] { look_further(); });
}

void PreviewWindow::key(const QKeySequence& keys, const std::function<void()>& action) {
  connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
}

// Keys that no tool has.
void PreviewWindow::add_keys() {
  key(Qt::CTRL | Qt::Key_G, [this] { tool_bar_->edit_page_number(); });
  key(Qt::CTRL | Qt::Key_W, [this] { close(); });
  key(Qt::CTRL | Qt::Key_A, [this] { view_->select_page(); });
  key(Qt::CTRL | Qt::Key_0, [this] { view_->zoom(1); });
  key(Qt::CTRL | Qt::Key_1, [this] { view_->fit(PageView::Fit::WholePage); });
  key(Qt::CTRL | Qt::Key_2, [this] { view_->fit(PageView::Fit::PageWidth); });
  key(Qt::Key_F3, [this] { step(Direction::Forward); });
  key(Qt::SHIFT | Qt::Key_F3, [this] { step(Direction::Backward); });
  key(Qt::Key_Escape, [this] { end_search(); });
  for (const QKeySequence& keys : {QKeySequence(Qt::CTRL | Qt::Key_Home), QKeySequence(Qt::CTRL | Qt::Key_End)}) {
    const bool is_home = keys == QKeySequence(Qt::CTRL | Qt::Key_Home);
    key(keys, [this, is_home] { visit(is_home ? 0 : view_->pages().Count()); });
  }
  // Of the pages only, or a text box would lose them.
  for (const auto& [plain, page] : {std::pair<Qt::Key, bool>{Qt::Key_Home, true}, {Qt::Key_End, false}}) {
    auto* shortcut = new QShortcut(QKeySequence(plain), view_, nullptr, nullptr, Qt::WidgetShortcut);
    connect(shortcut, &QShortcut::activated, this,
            [this, is_home = page] { visit(is_home ? 0 : view_->pages().Count()); });
  }
}

void PreviewWindow::click(std::size_t tool) {
  static const std::map<std::size_t, Action> kActions = {
      {kPrint, &PreviewWindow::print},    {kCopy, &PreviewWindow::copy},         {kFind, &PreviewWindow::find},
      {kSingle, &PreviewWindow::single},  {kMultiple, &PreviewWindow::multiple}, {kZoomOut, &PreviewWindow::zoom_out},
      {kZoomIn, &PreviewWindow::zoom_in}, {kPrevious, &PreviewWindow::previous}, {kNext, &PreviewWindow::next},
      {kBack, &PreviewWindow::back},      {kForward, &PreviewWindow::forward},
  };
  {
    const PagesOnLoan loan(report_, view_->pages());
    report_.ActiveReport_ToolbarClick(tools_[tool]);
  }
  if (const auto action = kActions.find(tool); action != kActions.end()) (this->*action->second)();
}

void PreviewWindow::print() {
  if (view_->pages().Count() == 0) return;
  try {
    const std::size_t page = view_->current_page();
    const engine::Sheet& shown = view_->pages().sheet(page);
    PrintDialog dialog({report_.Name(), view_->pages().Count(), page, QSize(shown.width, shown.height),
                        report_.Printer().PrintQuality == engine::kQualityDraft},
                       printers(), this);
    if (dialog.exec() != QDialog::Accepted) return;
    std::vector<engine::PagePtr> chosen;
    for (const std::size_t index : dialog.pages()) chosen.push_back(view_->pages().at(index));
    follow(dialog.order(), send(dialog.order(), chosen));
  } catch (const value::Failure& failure) {
    tell(QString::fromStdString(failure.description()), "Print");
  }
}

void PreviewWindow::follow(const PrintOrder& order, int job) {
  auto* watch = new PrintWatch(order, job, this);
  statusBar()->showMessage(job_text(order, job, {}));
  statusBar()->show();
  cancel_print_->show();
  disconnect(cancel_print_, nullptr, this, nullptr);
  const auto pressed = connect(cancel_print_, &QPushButton::clicked, this, [this, watch] {
    try {
      watch->cancel();
    } catch (const value::Failure& failure) {
      tell(QString::fromStdString(failure.description()), "Print");
    }
  });
  watch->changed = [this, watch, pressed](const JobStatus& status) {
    const QString text = job_text(watch->order(), watch->job(), status);
    statusBar()->showMessage(text);
    if (!has_ended(status.state)) return;
    if (disconnect(pressed)) cancel_print_->hide();  // else it serves a later job by now
    if (status.state != JobState::Done) tell(text, "Print");
  };
}

void PreviewWindow::copy() {
  if (view_->pages().Count() == 0) return;
  const QString selected = view_->selected_text();
  QApplication::clipboard()->setText(selected.isEmpty() ? PageText(view_->pages()[view_->current_page()]).text()
                                                        : selected);
}

void PreviewWindow::find() {
  find_bar_->begin();
}

void PreviewWindow::search() {
  if (find_bar_->text() == found_.sought()) return;
  found_ = Found(view_->pages(), find_bar_->text());
  view_->found(&found_);
  find_bar_->show_count(found_);
  looking_.start();
}

void PreviewWindow::look_further() {
  QElapsedTimer busy;
  busy.start();
  while (found_.look_further() && busy.elapsed() < kTimeSlice) continue;
  if (found_.has_seen_all()) looking_.stop();
  find_bar_->show_count(found_);
}

void PreviewWindow::step(Direction direction) {
  if (find_bar_->isHidden()) return find();
  search();
  const std::size_t from = view_->current_page();
  if (const auto& match = found_.step(direction, from)) {
    if (match->page != from) remember();
    view_->show_match(*match);
  }
  find_bar_->show_count(found_);
}

void PreviewWindow::end_search() {
  find_bar_->hide();
  looking_.stop();
  found_ = Found();
  view_->found(nullptr);
  view_->setFocus();
}

void PreviewWindow::single() {
  view_->columns(1);
  show_state();
}

void PreviewWindow::multiple() {
  view_->columns(std::max(2, std::min(kBeside, static_cast<int>(view_->pages().Count()))));
  view_->fit(PageView::Fit::PageWidth);
  show_state();
}

void PreviewWindow::zoom_out() {
  view_->zoom(view_->zoom() / kZoomStep);
}

void PreviewWindow::zoom_in() {
  view_->zoom(view_->zoom() * kZoomStep);
}

void PreviewWindow::previous() {
  if (view_->current_page() > 0) visit(view_->current_page() - 1);
}

void PreviewWindow::next() {
  visit(view_->current_page() + 1);
}

void PreviewWindow::remember() {
  visited_.push_back(view_->current_page());
  ahead_.clear();
}

void PreviewWindow::visit(std::size_t page) {
  if (view_->pages().Count() == 0) return;
  page = std::min(page, view_->pages().Count() - 1);
  if (page != view_->current_page()) remember();
  view_->go_to(page);
}

void PreviewWindow::back() {
  if (visited_.empty()) return;
  ahead_.push_back(view_->current_page());
  const std::size_t page = visited_.back();
  visited_.pop_back();
  view_->go_to(page);
}

void PreviewWindow::forward() {
  if (ahead_.empty()) return;
  visited_.push_back(view_->current_page());
  const std::size_t page = ahead_.back();
  ahead_.pop_back();
  view_->go_to(page);
}

void PreviewWindow::show_state() {
  const std::size_t count = view_->pages().Count(), page = view_->current_page();
  tool_bar_->show_page(page, count);
  tool_bar_->show_zoom(view_->zoom(), view_->fit());
  const auto enable = [&](StandardTool tool, bool is_of_use) {
    if (QAction* action = tool_bar_->action(tool)) action->setEnabled(tools_[tool].Enabled && is_of_use);
  };
  enable(kPrint, count > 0);
  enable(kCopy, count > 0);
  enable(kFind, count > 0);
  enable(kZoomOut, view_->zoom() > PageView::kLeastZoom);
  enable(kZoomIn, view_->zoom() < PageView::kMostZoom);
  enable(kPrevious, page > 0);
  enable(kNext, page + 1 < count);
  enable(kBack, !visited_.empty());
  enable(kForward, !ahead_.empty());
  tool_bar_->action(kSingle)->setChecked(view_->columns() == 1);
  tool_bar_->action(kMultiple)->setChecked(view_->columns() > 1);
}

void PreviewWindow::tell(const QString& text, const QString& title) {
  auto* box = new QMessageBox(QMessageBox::Warning, title, text, QMessageBox::Ok, this);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setTextFormat(Qt::PlainText);
  box->open();
}

void PreviewWindow::closeEvent(QCloseEvent* event) {
  event->accept();
  if (closed) closed();
}

}  // namespace dorvo::preview
