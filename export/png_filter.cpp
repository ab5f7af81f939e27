#include "export/png_filter.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>

#include "export/cairo_painter.h"
#include "export/deflate.h"

namespace dorvo::export_ {
namespace {

// "dir/form.png" and 3: "dir/form-3.png".
std::string page_file(const std::string& file, std::size_t number) {
  const std::filesystem::path path(file);
  const std::string name = path.stem().string() + "-" + std::to_string(number) + path.extension().string();
  return (path.parent_path() / name).string();
}

void put_u32(std::string& out, std::uint32_t number) {
  for (const int shift : {24, 16, 8, 0}) out += static_cast<char>(number >> shift & 0xFF);
}

void put_chunk(std::string& out, std::string_view kind, std::string_view content) {
  put_u32(out, static_cast<std::uint32_t>(content.size()));
  const std::size_t from = out.size();
  out.append(kind).append(content);
  put_u32(out, checksum(std::string_view(out).substr(from)));
}

// The dots of a surface of blue, green, red and an unused byte.
class Dots {
 public:
  explicit Dots(const PageImage& image) : width_(image.width()), height_(image.height()) {
    cairo_surface_flush(image.surface());
    data_ = cairo_image_surface_get_data(image.surface());
    stride_ = cairo_image_surface_get_stride(image.surface());
  }

  bool is_gray() const {
    for (int y = 0; y < height_; ++y) {
      const unsigned char* dot = row(y);
      for (int x = 0; x < width_; ++x, dot += 4)
        if (dot[0] != dot[1] || dot[1] != dot[2]) return false;
    }
    return true;
  }

  // As PNG packs them: a byte that says "unfiltered" before each row.
  std::string rows(bool gray) const {
    std::string rows;
    rows.reserve(static_cast<std::size_t>(height_) * (1 + static_cast<std::size_t>(width_) * (gray ? 1 : 3)));
    for (int y = 0; y < height_; ++y) {
      rows += '\0';
      const unsigned char* dot = row(y);
      for (int x = 0; x < width_; ++x, dot += 4) {
        if (!gray) rows.append({static_cast<char>(dot[2]), static_cast<char>(dot[1])});
        rows += static_cast<char>(dot[0]);
      }
    }
    return rows;
  }

 private:
  const unsigned char* row(int y) const { return data_ + static_cast<std::ptrdiff_t>(y) * stride_; }

  int width_, height_, stride_ = 0;
  const unsigned char* data_ = nullptr;
};

// Grey where the page has no colour, which is a third of the bytes.
std::string png_of(const PageImage& image, int dots_per_inch) {
  constexpr char kGray = 0, kColor = 2;
  constexpr double kInchesPerMetre = 39.3701;
  const Dots dots(image);
  const bool gray = dots.is_gray();
  std::string head, scale;
  put_u32(head, static_cast<std::uint32_t>(image.width()));
  put_u32(head, static_cast<std::uint32_t>(image.height()));
  head.append({8, gray ? kGray : kColor, 0, 0, 0});
  for (int axis = 0; axis < 2; ++axis)
    put_u32(scale, static_cast<std::uint32_t>(std::lround(dots_per_inch * kInchesPerMetre)));
  scale += '\1';  // dots a metre

  std::string png = "\x89PNG\r\n\x1A\n";
  put_chunk(png, "IHDR", head);
  put_chunk(png, "pHYs", scale);
  put_chunk(png, "IDAT", deflated(dots.rows(gray)));
  put_chunk(png, "IEND", {});
  return png;
}

}  // namespace

void PngFilter::begin() {
  files_.clear();
}

void PngFilter::page(const engine::PagePtr& page) {
  PageImage image(*page, Resolution, CAIRO_FORMAT_RGB24);
  cairo_set_source_rgb(image.context(), 1, 1, 1);
  cairo_paint(image.context());
  image.draw(*page, Tone::Color);

  files_.push_back(std::make_unique<OutputFile>(page_file(FileName, files_.size() + 1)));
  files_.back()->write(png_of(image, Resolution));
  files_.back()->close();
}

void PngFilter::end() {
  if (files_.size() == 1) files_[0]->retarget(FileName);
  std::size_t done = 0;
  try {
    for (; done < files_.size(); ++done) files_[done]->commit();
  } catch (...) {
    while (done > 0) std::remove(files_[--done]->target().c_str());
    throw;
  }
  files_.clear();
}

}  // namespace dorvo::export_
