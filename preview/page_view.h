// The pages of one preview on a scrolling ground.
//
// Only pages that show are drawn, by the painter that draws every raster, and the pictures drawn last are kept within a
// bound; so a thousand pages scroll as smoothly as ten.
#pragma once

#include <QAbstractScrollArea>
#include <QCache>
#include <QImage>
#include <functional>
#include <optional>
#include <vector>

#include "engine/pages.h"
#include "preview/page_text.h"

namespace dorvo::preview {

enum class Fit { Free, PageWidth, WholePage };

class PageView : public QAbstractScrollArea {
 public:
  explicit PageView(QWidget* parent = nullptr);

  void set_pages(engine::Pages pages);
  const engine::Pages& pages() const { return pages_; }

  double zoom() const { return zoom_; }  // 1: as large as on paper, at the screen's dots an inch
  void set_zoom(double zoom);            // within 10 % and 800 %
  Fit fit() const { return fit_; }
  void set_fit(Fit fit);
  int columns() const { return columns_; }  // pages beside each other
  void set_columns(int columns);

  std::size_t current_page() const { return current_; }                   // index of the page in view
  void go_to(std::size_t page);                                           // its top comes to the top of the view
  void mark(const QString& sought, const std::optional<Match>& current);  // empty: no marks
  void show_match(const Match& match);

  // Pages drawn since the view was made.
  std::size_t drawn() const { return drawn_; }

  std::function<void()> changed;  // the current page, the zoom or the fit is another

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void wheelEvent(QWheelEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void lay_out();
  double dots_per_twip() const;
  double fitting_zoom() const;
  std::size_t row_size() const { return static_cast<std::size_t>(columns_); }
  std::size_t first_row_below(int y) const;
  std::size_t page_in_view() const;
  QPoint origin() const;  // of the ground in the viewport
  const QImage& picture(std::size_t page);
  void paint_page(QPainter& painter, std::size_t page, const QPoint& origin);
  void tell();

  engine::Pages pages_;
  std::vector<QSize> sizes_;   // of the pages, twips
  std::vector<QRect> places_;  // of the pages on the ground
  std::vector<int> row_ends_;  // bottoms of the rows of pages
  QSize ground_;
  QCache<std::size_t, QImage> pictures_;  // cost in KiB
  std::size_t current_ = 0;
  double zoom_ = 1;
  Fit fit_ = Fit::Free;
  int columns_ = 1;
  QString sought_;
  std::optional<Match> current_match_;
  std::size_t drawn_ = 0;
};

}  // namespace dorvo::preview
