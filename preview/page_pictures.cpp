#include "preview/page_pictures.h"

#include <algorithm>
#include <cmath>

#include "export/cairo_painter.h"

namespace dorvo::preview {
namespace {

int dots(int twips, double dots_per_twip) {
  return static_cast<int>(std::lround(twips * dots_per_twip));
}

}  // namespace

void PagePictures::scale(double dots_per_twip) {
  if (dots_per_twip == dots_per_twip_) return;
  dots_per_twip_ = dots_per_twip;
  tiles_.clear();
}

const QImage& PagePictures::tile(const engine::Page& page, const Key& key) {
  if (const QImage* kept = tiles_.object(key)) return *kept;
  auto* image = new QImage(draw(page, key));
  ++drawn_;
  tiles_.insert(key, image, static_cast<int>(image->sizeInBytes() / 1024) + 1);
  return *image;
}

QImage PagePictures::draw(const engine::Page& page, const Key& key) const {
  const int left = key.column * kTile, top = key.row * kTile;
  QImage image(std::min(kTile, dots(page.width, dots_per_twip_) - left),
               std::min(kTile, dots(page.height, dots_per_twip_) - top), QImage::Format_RGB32);
  image.fill(Qt::white);
  cairo_surface_t* surface = cairo_image_surface_create_for_data(
      image.bits(), CAIRO_FORMAT_RGB24, image.width(), image.height(), static_cast<int>(image.bytesPerLine()));
  cairo_t* context = cairo_create(surface);
  cairo_translate(context, -left, -top);
  export_::CairoPainter painter(context, dots_per_twip_, export_::Tone::Color);
  engine::paint(page, painter);
  cairo_surface_flush(surface);
  cairo_destroy(context);
  cairo_surface_destroy(surface);
  return image;
}

}  // namespace dorvo::preview
