#include "preview/page_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "export/cairo_painter.h"

namespace dorvo::preview {
namespace {

constexpr int kGap = 12;  // dots around a page
constexpr int kPicturesKiB = 96 * 1024;
constexpr double kTwipsPerInch = 1440;
constexpr double kLeastZoom = 0.1;
constexpr double kMostZoom = 8;
constexpr double kWheelStep = 1.15;
const QColor kGround(0x80, 0x80, 0x80);
const QColor kMark(255, 230, 0, 90);
const QColor kCurrentMark(255, 120, 0, 150);

QImage drawn_page(const engine::Page& page, double dots_per_inch) {
  export_::PageImage image(page, dots_per_inch, CAIRO_FORMAT_RGB24);
  cairo_set_source_rgb(image.context(), 1, 1, 1);
  cairo_paint(image.context());
  image.draw(page, export_::Tone::Color);
  cairo_surface_flush(image.surface());
  return QImage(cairo_image_surface_get_data(image.surface()), image.width(), image.height(),
                cairo_image_surface_get_stride(image.surface()), QImage::Format_RGB32)
      .copy();
}

}  // namespace

PageView::PageView(QWidget* parent) : QAbstractScrollArea(parent), pictures_(kPicturesKiB) {
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setAutoFillBackground(false);
}

void PageView::set_pages(engine::Pages pages) {
  pages_ = std::move(pages);
  sizes_.clear();
  for (const engine::PagePtr& page : pages_) sizes_.emplace_back(page->width, page->height);
  pictures_.clear();
  lay_out();
  go_to(0);
}

double PageView::dots_per_twip() const {
  return zoom_ * logicalDpiX() / kTwipsPerInch;
}

void PageView::set_zoom(double zoom) {
  fit_ = Fit::Free;
  const std::size_t page = current_page();
  zoom_ = std::clamp(zoom, kLeastZoom, kMostZoom);
  pictures_.clear();
  lay_out();
  go_to(page);
}

void PageView::set_fit(Fit fit) {
  const std::size_t page = current_page();
  fit_ = fit;
  if (fit_ != Fit::Free) zoom_ = fitting_zoom();
  pictures_.clear();
  lay_out();
  go_to(page);
}

double PageView::fitting_zoom() const {
  if (sizes_.empty()) return zoom_;
  const QSize page = sizes_[current_page()];
  const double inch = logicalDpiX() / kTwipsPerInch;
  const double wide = (viewport()->width() - kGap * (columns_ + 1)) / (page.width() * inch * columns_);
  const double high = (viewport()->height() - 2 * kGap) / (page.height() * inch);
  return std::clamp(fit_ == Fit::PageWidth ? wide : std::min(wide, high), kLeastZoom, kMostZoom);
}

void PageView::set_columns(int columns) {
  const std::size_t page = current_page();
  columns_ = std::max(1, columns);
  if (fit_ != Fit::Free) zoom_ = fitting_zoom();
  pictures_.clear();
  lay_out();
  go_to(page);
}

// Rows of `columns_` pages, each row as high as its highest page, all rows centred over each other.
void PageView::lay_out() {
  const double scale = dots_per_twip();
  const std::size_t per_row = row_size();
  std::vector<int> shifts;
  places_.clear();
  row_ends_.clear();
  int width = 0;
  int y = kGap;
  for (std::size_t first = 0; first < sizes_.size(); first += per_row) {
    const std::size_t end = std::min(sizes_.size(), first + per_row);
    int x = kGap;
    int height = 0;
    for (std::size_t i = first; i < end; ++i) {
      const QSize size(static_cast<int>(std::lround(sizes_[i].width() * scale)),
                       static_cast<int>(std::lround(sizes_[i].height() * scale)));
      places_.emplace_back(QPoint(x, y), size);
      x += size.width() + kGap;
      height = std::max(height, size.height());
    }
    width = std::max(width, x);
    y += height + kGap;
    row_ends_.push_back(y);
  }
  ground_ = QSize(width, y);
  for (std::size_t i = 0; i < places_.size(); ++i) {
    const std::size_t last = std::min(places_.size(), (i / per_row + 1) * per_row) - 1;
    shifts.push_back((width - places_[last].right() - 1 - kGap) / 2);
  }
  for (std::size_t i = 0; i < places_.size(); ++i) places_[i].translate(shifts[i], 0);
  verticalScrollBar()->setRange(0, std::max(0, ground_.height() - viewport()->height()));
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(40);
  horizontalScrollBar()->setRange(0, std::max(0, ground_.width() - viewport()->width()));
  horizontalScrollBar()->setPageStep(viewport()->width());
  viewport()->update();
}

std::size_t PageView::first_row_below(int y) const {
  return static_cast<std::size_t>(std::upper_bound(row_ends_.begin(), row_ends_.end(), y) - row_ends_.begin());
}

QPoint PageView::origin() const {
  const int spare = std::max(0, viewport()->width() - ground_.width());
  return {spare / 2 - horizontalScrollBar()->value(), -verticalScrollBar()->value()};
}

// Of the row in the middle of the view; at either end of the scrolling, of the row there.
std::size_t PageView::page_in_view() const {
  if (sizes_.empty()) return 0;
  const QScrollBar& bar = *verticalScrollBar();
  if (bar.value() == bar.minimum()) return 0;
  if (bar.value() == bar.maximum()) return (row_ends_.size() - 1) * row_size();
  return first_row_below(bar.value() + viewport()->height() / 2) * row_size();
}

void PageView::go_to(std::size_t page) {
  if (page < places_.size()) verticalScrollBar()->setValue(places_[page].top() - kGap);
  current_ = page;
  tell();
}

void PageView::mark(const QString& sought, const std::optional<Match>& current) {
  sought_ = sought;
  current_match_ = current;
  viewport()->update();
}

void PageView::show_match(const Match& match) {
  const QRect& place = places_[match.page];
  const int y = place.top() + static_cast<int>(match.box.center().y() * dots_per_twip());
  const int x = place.left() + static_cast<int>(match.box.center().x() * dots_per_twip());
  if (y < verticalScrollBar()->value() + kGap || y > verticalScrollBar()->value() + viewport()->height() - kGap)
    verticalScrollBar()->setValue(y - viewport()->height() / 2);
  if (x < horizontalScrollBar()->value() || x > horizontalScrollBar()->value() + viewport()->width())
    horizontalScrollBar()->setValue(x - viewport()->width() / 2);
  current_ = match.page;
  tell();
}

const QImage& PageView::picture(std::size_t page) {
  if (const QImage* kept = pictures_.object(page)) return *kept;
  const double ratio = devicePixelRatioF();
  auto* image = new QImage(drawn_page(*pages_.at(page), zoom_ * logicalDpiX() * ratio));
  image->setDevicePixelRatio(ratio);
  ++drawn_;
  const auto kib = static_cast<int>(image->sizeInBytes() / 1024);
  pictures_.insert(page, image, std::min(kib, kPicturesKiB));
  return *pictures_.object(page);
}

void PageView::paint_page(QPainter& painter, std::size_t page, const QPoint& origin) {
  const QRect place = places_[page].translated(origin);
  painter.fillRect(place.translated(3, 3), QColor(0x50, 0x50, 0x50));
  painter.drawImage(place.topLeft(), picture(page));
  const double scale = dots_per_twip();
  for (const Match& match : matches_on(*pages_.at(page), page, sought_)) {
    const bool current = current_match_ && current_match_->page == page && current_match_->place == match.place;
    const QRectF box(match.box.topLeft() * scale + place.topLeft(), match.box.size() * scale);
    painter.fillRect(box, current ? kCurrentMark : kMark);
  }
}

void PageView::paintEvent(QPaintEvent*) {
  QPainter painter(viewport());
  painter.fillRect(viewport()->rect(), kGround);
  if (sizes_.empty()) return;
  const QPoint from = origin();
  const std::size_t last = first_row_below(viewport()->height() - from.y());
  for (std::size_t row = first_row_below(-from.y()); row <= last && row < row_ends_.size(); ++row) {
    const std::size_t first = row * row_size();
    for (std::size_t page = first; page < std::min(places_.size(), first + row_size()); ++page)
      paint_page(painter, page, from);
  }
}

void PageView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  if (fit_ != Fit::Free)
    set_fit(fit_);
  else
    lay_out();
}

void PageView::scrollContentsBy(int, int) {
  current_ = page_in_view();
  viewport()->update();
  tell();
}

void PageView::wheelEvent(QWheelEvent* event) {
  if (event->modifiers() & Qt::ControlModifier) {
    set_zoom(event->angleDelta().y() > 0 ? zoom_ * kWheelStep : zoom_ / kWheelStep);
    event->accept();
  } else {
    QAbstractScrollArea::wheelEvent(event);
  }
}

void PageView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Home:
      return go_to(0);
    case Qt::Key_End:
      return go_to(sizes_.empty() ? 0 : sizes_.size() - 1);
    case Qt::Key_Space:
      return verticalScrollBar()->triggerAction(event->modifiers() & Qt::ShiftModifier
                                                    ? QAbstractSlider::SliderPageStepSub
                                                    : QAbstractSlider::SliderPageStepAdd);
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}

void PageView::tell() {
  if (changed) changed();
}

}  // namespace dorvo::preview
