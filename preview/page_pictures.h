// Pictures of finished pages, drawn when they are asked for by the painter of all raster outputs.
//
// A page is drawn in tiles, so that a large zoom draws only what shows. The tiles used last are kept within a bound of
// memory, whatever the number of pages.
#pragma once

#include <QCache>
#include <QImage>
#include <tuple>

#include "engine/pages.h"

namespace dorvo::preview {

class PagePictures {
 public:
  static constexpr int kTile = 2048;  // dots, of a side
  static constexpr int kKiB = 128 * 1024;

  struct Key {
    std::size_t page = 0;  // index
    int column = 0;
    int row = 0;
    friend bool operator==(const Key&, const Key&) = default;
  };

  PagePictures() : tiles_(kKiB) {}

  // Device dots; another scale than before drops what was drawn.
  void scale(double dots_per_twip);

  // Good until the next call.
  const QImage& tile(const engine::Page& page, const Key& key);
  bool has(const Key& key) const { return tiles_.contains(key); }

  int kib() const { return static_cast<int>(tiles_.totalCost()); }
  std::size_t drawn() const { return drawn_; }  // tiles since the start

 private:
  QImage draw(const engine::Page& page, const Key& key) const;

  double dots_per_twip_ = 0;
  QCache<Key, QImage> tiles_;
  std::size_t drawn_ = 0;
};

inline std::size_t qHash(const PagePictures::Key& key, std::size_t seed = 0) {
  return qHashMulti(seed, key.page, key.column, key.row);
}

}  // namespace dorvo::preview
