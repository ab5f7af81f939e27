#include "preview/page_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "preview/page_text.h"

namespace dorvo::preview {
namespace {

constexpr double kTwipsPerInch = 1440;
constexpr double kWheelZoom = 1.15;  // a notch
constexpr double kNotch = 120;
constexpr int kLine = 40;       // dots that an arrow key scrolls
constexpr int kIdleAfter = 40;  // ms without painting
constexpr QColor kGround(0x8A, 0x8D, 0x91);
constexpr QColor kShadow(0x5E, 0x60, 0x63);
constexpr QColor kMark(255, 225, 0, 110);
constexpr QColor kCurrentMark(255, 120, 0, 150);
constexpr QColor kSelection(60, 130, 230, 90);

}  // namespace

PageView::PageView(engine::Pages pages, QWidget* parent) : QAbstractScrollArea(parent), pages_(std::move(pages)) {
  setFocusPolicy(Qt::StrongFocus);
  setFrameShape(QFrame::NoFrame);
  viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
  viewport()->setCursor(Qt::IBeamCursor);
  arrange();
}

double PageView::dots_per_twip() const {
  return zoom_ * logicalDpiX() / kTwipsPerInch;
}

double PageView::fitting_zoom() const {
  if (pages_.Count() == 0 || fit_ == Fit::Free) return zoom_;
  const engine::Sheet& page = pages_.sheet(current_);
  constexpr int kGap = PageArrangement::kGap;
  const double inch = logicalDpiX() / kTwipsPerInch;
  // The scroll bar counts as shown, or showing it would change the zoom that made it needed.
  const int bar = verticalScrollBar()->sizeHint().width();
  const int room = width() - (pages_.Count() > 1 || fit_ == Fit::PageWidth ? bar : 0);
  const double wide = (room - kGap * (columns_ + 1)) / (page.width * inch * columns_);
  const double high = (height() - 2 * kGap) / (page.height * inch);
  return std::clamp(fit_ == Fit::PageWidth ? wide : std::min(wide, high), kLeastZoom, kMostZoom);
}

void PageView::arrange() {
  arrangement_ = PageArrangement(pages_, columns_, dots_per_twip());
  pictures_.scale(dots_per_twip() * devicePixelRatioF());
  const QSize beyond = arrangement_.size() - viewport()->size();
  verticalScrollBar()->setRange(0, std::max(0, beyond.height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(kLine);
  horizontalScrollBar()->setRange(0, std::max(0, beyond.width()));
  horizontalScrollBar()->setPageStep(viewport()->width());
  horizontalScrollBar()->setSingleStep(kLine);
  viewport()->update();
}

void PageView::zoom_about(double zoom, const QPoint& fixed) {
  zoom = std::clamp(zoom, kLeastZoom, kMostZoom);
  const std::optional<std::size_t> page = page_at(fixed);
  const std::size_t anchor = page.value_or(current_);
  const QPointF point = pages_.Count() == 0 ? QPointF() : on_page(anchor, fixed);
  zoom_ = zoom;
  arrange();
  if (pages_.Count() == 0) return;
  const QPointF moved = in_view(anchor, QRectF(point, QSizeF())).topLeft() - fixed;
  horizontalScrollBar()->setValue(horizontalScrollBar()->value() + static_cast<int>(std::lround(moved.x())));
  verticalScrollBar()->setValue(verticalScrollBar()->value() + static_cast<int>(std::lround(moved.y())));
  find_current_page();
}

void PageView::zoom(double zoom) {
  fit_ = Fit::Free;
  zoom_about(zoom, viewport()->rect().center());
  tell();
}

void PageView::fit(Fit fit) {
  fit_ = fit;
  zoom_ = fitting_zoom();
  arrange();
  go_to(current_);
}

void PageView::columns(int columns) {
  columns_ = std::max(1, columns);
  fit(fit_);
}

QPoint PageView::origin() const {
  const int spare = std::max(0, viewport()->width() - arrangement_.size().width());
  return {spare / 2 - horizontalScrollBar()->value(), -verticalScrollBar()->value()};
}

double PageView::shown_part(std::size_t page) const {
  const QRect place = arrangement_.place(page).translated(origin());
  const QRect shown = place & viewport()->rect();
  return shown.isEmpty() ? 0 : 1.0 * shown.width() * shown.height() / (1.0 * place.width() * place.height());
}

// The page that most is seen of; the one that the user went to, as long as no other shows more.
void PageView::find_current_page() {
  if (pages_.Count() == 0) return;
  const int top = -origin().y();
  const auto [first, end] = arrangement_.between(top, top + viewport()->height());
  std::size_t best = std::min(current_, pages_.Count() - 1);
  for (std::size_t page = first; page < end; ++page)
    if (shown_part(page) > shown_part(best)) best = page;
  current_ = best;
}

void PageView::go_to(std::size_t page) {
  if (pages_.Count() == 0) return;
  page = std::min(page, pages_.Count() - 1);
  verticalScrollBar()->setValue(arrangement_.place(page).top() - PageArrangement::kGap);
  current_ = page;
  tell();
}

void PageView::show_match(const Match& match) {
  const QRect room = viewport()->rect().adjusted(kLine, kLine, -kLine, -kLine);
  const QPoint at = in_view(match.page, match.box).center().toPoint();
  if (at.y() < room.top() || at.y() > room.bottom())
    verticalScrollBar()->setValue(verticalScrollBar()->value() + at.y() - room.center().y());
  if (at.x() < room.left() || at.x() > room.right())
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + at.x() - room.center().x());
  current_ = match.page;
  viewport()->update();
  tell();
}

void PageView::found(Found* found) {
  found_ = found;
  viewport()->update();
}

void PageView::select_page() {
  if (pages_.Count() == 0) return;
  const engine::Sheet& page = pages_.sheet(current_);
  selection_ = Selection{current_, QRectF(0, 0, page.width, page.height)};
  viewport()->update();
}

QString PageView::selected_text() const {
  return selection_ ? PageText(pages_[selection_->page]).text_in(selection_->area) : QString();
}

std::optional<std::size_t> PageView::page_at(const QPoint& point) const {
  const QPoint ground = point - origin();
  const auto [first, end] = arrangement_.between(ground.y(), ground.y());
  for (std::size_t page = first; page < end; ++page)
    if (arrangement_.place(page).contains(ground)) return page;
  return std::nullopt;
}

QPointF PageView::on_page(std::size_t page, const QPoint& point) const {
  return QPointF(point - origin() - arrangement_.place(page).topLeft()) / dots_per_twip();
}

QRectF PageView::in_view(std::size_t page, const QRectF& box) const {
  const double scale = dots_per_twip();
  return {box.topLeft() * scale + arrangement_.place(page).topLeft() + origin(), box.size() * scale};
}

void PageView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.fillRect(event->rect(), kGround);
  const QRect ground = event->rect().translated(-origin());
  const auto [first, end] = arrangement_.between(ground.top(), ground.bottom());
  for (std::size_t page = first; page < end; ++page) paint_page(painter, page, event->rect());
  idle_.start(kIdleAfter, this);
}

void PageView::paint_page(QPainter& painter, std::size_t page, const QRect& exposed) {
  constexpr int kShade = 3;
  const QRect place = arrangement_.place(page).translated(origin());
  if (!place.adjusted(0, 0, kShade, kShade).intersects(exposed)) return;
  painter.fillRect(place.translated(kShade, kShade), kShadow);
  // Tiles count in dots of the device, which may be finer than those of the window.
  const double ratio = devicePixelRatioF();
  const QRectF shown = QRectF((place & exposed).translated(-place.topLeft()));
  const double side = PagePictures::kTile / ratio;
  const engine::PagePtr held = pages_.at(page);
  for (int row = static_cast<int>(shown.top() / side); row * side < shown.bottom(); ++row) {
    for (int column = static_cast<int>(shown.left() / side); column * side < shown.right(); ++column) {
      const QImage& tile = pictures_.tile(*held, {page, column, row});
      painter.drawImage(
          QRectF(place.left() + column * side, place.top() + row * side, tile.width() / ratio, tile.height() / ratio),
          tile);
    }
  }
  paint_marks(painter, *held, page);
}

void PageView::paint_marks(QPainter& painter, const engine::Page& page, std::size_t index) const {
  if (found_) {
    const std::vector<QRectF>& boxes = found_->on(index);
    const std::optional<Match>& at = found_->at();
    for (std::size_t place = 0; place < boxes.size(); ++place) {
      const bool is_current = at && at->page == index && at->place == place;
      painter.fillRect(in_view(index, boxes[place]), is_current ? kCurrentMark : kMark);
    }
  }
  if (!selection_ || selection_->page != index) return;
  for (const QRectF& line : PageText(page).lines_in(selection_->area))
    painter.fillRect(in_view(index, line), kSelection);
}

// While the user reads, the neighbours of what shows are drawn, so that the next step finds them ready.
void PageView::draw_ahead() {
  const int top = -origin().y(), step = viewport()->height();
  const auto [first, end] = arrangement_.between(top - step, top + 2 * step);
  for (std::size_t page = first; page < end; ++page) {
    const PagePictures::Key key{page, 0, 0};
    if (pictures_.has(key)) continue;
    pictures_.tile(*pages_.at(page), key);
    return idle_.start(0, this);  // one at a time, so that no key stroke waits for all
  }
}

void PageView::timerEvent(QTimerEvent* event) {
  if (event->timerId() != idle_.timerId()) return QAbstractScrollArea::timerEvent(event);
  idle_.stop();
  draw_ahead();
}

void PageView::resizeEvent(QResizeEvent*) {
  const QRect first = pages_.Count() == 0 ? QRect() : arrangement_.place(current_);
  const int above = first.top() - verticalScrollBar()->value();
  zoom_ = fitting_zoom();
  arrange();
  if (!pages_.Count() == 0 && fit_ != Fit::Free)
    verticalScrollBar()->setValue(arrangement_.place(current_).top() - above);
  tell();
}

void PageView::scrollContentsBy(int dx, int dy) {
  viewport()->scroll(dx, dy);
  const std::size_t before = current_;
  find_current_page();
  if (current_ != before) tell();
}

void PageView::wheelEvent(QWheelEvent* event) {
  if (!(event->modifiers() & Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
  fit_ = Fit::Free;
  zoom_about(zoom_ * std::pow(kWheelZoom, event->angleDelta().y() / kNotch), event->position().toPoint());
  tell();
}

void PageView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Up:
      return verticalScrollBar()->triggerAction(QScrollBar::SliderSingleStepSub);
    case Qt::Key_Down:
      return verticalScrollBar()->triggerAction(QScrollBar::SliderSingleStepAdd);
    case Qt::Key_Left:
      return horizontalScrollBar()->triggerAction(QScrollBar::SliderSingleStepSub);
    case Qt::Key_Right:
      return horizontalScrollBar()->triggerAction(QScrollBar::SliderSingleStepAdd);
    case Qt::Key_PageUp:
      return verticalScrollBar()->triggerAction(QScrollBar::SliderPageStepSub);
    case Qt::Key_PageDown:
    case Qt::Key_Space:
      return verticalScrollBar()->triggerAction(QScrollBar::SliderPageStepAdd);
    default:
      return QAbstractScrollArea::keyPressEvent(event);
  }
}

void PageView::mousePressEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return QAbstractScrollArea::mousePressEvent(event);
  selection_.reset();
  if (const auto page = page_at(event->pos())) {
    pressed_ = on_page(*page, event->pos());
    selection_ = Selection{*page, QRectF()};
  }
  viewport()->update();
}

void PageView::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & Qt::LeftButton) || !selection_) return;
  selection_->area = QRectF(pressed_, on_page(selection_->page, event->pos())).normalized();
  viewport()->update();
}

void PageView::tell() const {
  if (changed) changed();
}

}  // namespace dorvo::preview
