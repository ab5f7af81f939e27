// The pages of one preview on a scrolling ground, with the marks of found and selected text.
//
// Only what shows is drawn (page_pictures.h), so a thousand pages scroll as one does. Zoom 1 is as large as on paper.
#pragma once

#include <QAbstractScrollArea>
#include <QBasicTimer>
#include <functional>
#include <optional>
#include <vector>

#include "engine/pages.h"
#include "preview/found.h"
#include "preview/page_arrangement.h"
#include "preview/page_pictures.h"

namespace dorvo::preview {

class PageView : public QAbstractScrollArea {
 public:
  enum class Fit { Free, PageWidth, WholePage };
  static constexpr double kLeastZoom = 0.1;
  static constexpr double kMostZoom = 8;

  explicit PageView(engine::Pages pages, QWidget* parent = nullptr);

  const engine::Pages& pages() const { return pages_; }

  double zoom() const { return zoom_; }
  void zoom(double zoom);  // kept within its bounds; what stood in the middle stays there
  Fit fit() const { return fit_; }
  void fit(Fit fit);
  int columns() const { return columns_; }
  void columns(int columns);

  std::size_t current_page() const { return current_; }  // index
  void go_to(std::size_t page);                          // its top comes to the top of the view
  void show_match(const Match& match);

  // What is marked; outlives the view. nullptr: nothing.
  void found(Found* found);
  // The lines that the mouse went over, or the whole current page.
  void select_page();
  bool has_selection() const { return selection_.has_value(); }
  QString selected_text() const;

  const PagePictures& pictures() const { return pictures_; }

  std::function<void()> changed;  // current page, zoom or fit are others now

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void timerEvent(QTimerEvent* event) override;

 private:
  struct Selection {
    std::size_t page = 0;
    QRectF area;  // twips on the page
  };

  double dots_per_twip() const;
  double fitting_zoom() const;
  void arrange();
  void zoom_about(double zoom, const QPoint& fixed);  // a point of the viewport that stays where it is
  QPoint origin() const;                              // of the ground in the viewport
  double shown_part(std::size_t page) const;
  void find_current_page();
  std::optional<std::size_t> page_at(const QPoint& point) const;
  QPointF on_page(std::size_t page, const QPoint& point) const;
  QRectF in_view(std::size_t page, const QRectF& box) const;
  void paint_page(QPainter& painter, std::size_t page, const QRect& exposed);
  void paint_marks(QPainter& painter, const engine::Page& page, std::size_t index) const;
  void draw_ahead();
  void tell() const;

  engine::Pages pages_;
  PageArrangement arrangement_;
  PagePictures pictures_;
  double zoom_ = 1;
  Fit fit_ = Fit::Free;
  int columns_ = 1;
  std::size_t current_ = 0;
  Found* found_ = nullptr;
  std::optional<Selection> selection_;
  QPointF pressed_;
  QBasicTimer idle_;
};

}  // namespace dorvo::preview
