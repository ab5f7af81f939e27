// What is seen is what prints: our pictures of a page beside another program's picture of our PDF.
#include <cairo.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <tiffio.h>

#include <cmath>
#include <csignal>
#include <sstream>
#include <string>
#include <vector>

#include "export/pdf_filter.h"
#include "export/png_filter.h"
#include "export/tiff_filter.h"
#include "tests/export/page_builder.h"
#include "tests/export/sample_pages.h"
#include "tests/export/test_files.h"
#include "value/failure.h"

namespace dorvo::export_ {
namespace {

using test::Folder;
using test::form_page;
using test::output_of;
using test::PageBuilder;
using test::read_file;

// Darkness of every dot, 0 to 1.
struct Picture {
  int width = 0, height = 0;
  std::vector<double> dark;
  double at(int x, int y) const {
    return x < width && y < height
               ? dark[static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)]
               : 0;
  }
  double mean(int left, int top, int size) const {
    double sum = 0;
    for (int y = top; y < top + size; ++y)
      for (int x = left; x < left + size; ++x) sum += at(x, y);
    return sum / (size * size);
  }
};

Picture picture_of_png(const std::string& file) {
  cairo_surface_t* surface = cairo_image_surface_create_from_png(file.c_str());
  EXPECT_EQ(cairo_surface_status(surface), CAIRO_STATUS_SUCCESS) << file;
  Picture picture{cairo_image_surface_get_width(surface), cairo_image_surface_get_height(surface), {}};
  for (int y = 0; y < picture.height; ++y) {
    const unsigned char* row = cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface);
    for (int x = 0; x < picture.width; ++x) picture.dark.push_back(1 - row[4 * x + 1] / 255.0);
  }
  cairo_surface_destroy(surface);
  return picture;
}

std::vector<Picture> pictures_of_tiff(const std::string& file) {
  std::vector<Picture> pictures;
  TIFF* tiff = TIFFOpen(file.c_str(), "r");
  if (!tiff) {
    ADD_FAILURE() << file;
    return pictures;
  }
  do {
    std::uint32_t width = 0, height = 0;
    std::uint16_t compression = 0, bits = 0;
    float dots = 0;
    TIFFGetField(tiff, TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(tiff, TIFFTAG_IMAGELENGTH, &height);
    TIFFGetField(tiff, TIFFTAG_COMPRESSION, &compression);
    TIFFGetField(tiff, TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetField(tiff, TIFFTAG_YRESOLUTION, &dots);
    EXPECT_EQ(compression, COMPRESSION_CCITTFAX4);
    EXPECT_EQ(bits, 1);
    EXPECT_GE(dots, 204);
    std::vector<std::uint32_t> raster(std::size_t{width} * height);
    EXPECT_EQ(TIFFReadRGBAImageOriented(tiff, width, height, raster.data(), ORIENTATION_TOPLEFT, 1), 1);
    Picture picture{static_cast<int>(width), static_cast<int>(height), {}};
    for (const std::uint32_t dot : raster) picture.dark.push_back(1 - TIFFGetG(dot) / 255.0);
    pictures.push_back(std::move(picture));
  } while (TIFFReadDirectory(tiff));
  TIFFClose(tiff);
  return pictures;
}

// Text, joined text, rules of every kind, a ground under text, clipped text, text with a border.
engine::PagePtr mixed_page(int number = 1) {
  PageBuilder page(number);
  page.text("M/s. राम ट्रेडर्स & Sons, Pune", 700, 700, 8000, 400);
  page.style.font = "Times New Roman";
  page.style.half_points = 36;
  page.style.bold = true;
  page.style.align = engine::Align::Center;
  page.text("Form-1 (See rule 4.)", 700, 1500, 10000, 500);
  page.style = {};
  page.look.weight = 10;
  page.shape(700, 2200, 5000, 1000);
  page.look.filled = true;
  page.look.fill = 0x202020;
  page.shape(6000, 2200, 3000, 1000);
  page.look.fill = 0xFFFFFF;
  page.shape(6300, 2400, 1000, 500);
  page.text("within", 6400, 2450, 800, 300);
  page.look = {};
  page.look.weight = 40;
  page.line(700, 3600, 9000, 0);
  page.line(700, 3800, 0, 2000);
  page.line(2000, 5800, 3000, -1500);
  page.look.line_style = engine::LineStyle::Dash;
  page.line(5200, 4000, 4000, 0);
  page.look = {};
  page.style.half_points = 60;
  page.text("CLIPPED", 700, 6200, 3000, 800).clipped = true;
  page.style.half_points = 20;
  page.style.align = engine::Align::Right;
  page.look.border = true;
  page.text("123456.50", 5000, 6200, 3000, 300);
  return page.page();
}

// The least difference of a block of ours from theirs, when it may stand a dot away.
double difference(const Picture& ours, const Picture& theirs, int x, int y, int size) {
  double least = 1;
  for (int down = -1; down <= 1; ++down)
    for (int right = -1; right <= 1; ++right)
      least = std::min(least, std::abs(ours.mean(x, y, size) - theirs.mean(x + right, y + down, size)));
  return least;
}

// Block by block, since two programs never smooth an edge alike.
void expect_alike(const Picture& ours, const Picture& theirs, double allowed) {
  EXPECT_NEAR(ours.width, theirs.width, 1);
  EXPECT_NEAR(ours.height, theirs.height, 1);
  constexpr int kBlock = 12;
  int filled = 0;
  for (int y = kBlock; y + kBlock <= ours.height; y += kBlock)
    for (int x = kBlock; x + kBlock <= ours.width; x += kBlock) {
      ASSERT_LE(difference(ours, theirs, x, y, kBlock), allowed) << "block at " << x << ", " << y;
      filled += ours.mean(x, y, kBlock) > 0.05;
    }
  EXPECT_GT(filled, 300);
}

class Raster : public testing::Test {
 protected:
  Folder folder;
  engine::Pages pages;
  template <class Filter>
  std::string written(const std::string& name) {
    Filter filter;
    filter.FileName = folder.file(name);
    filter.Export(pages);
    return filter.FileName;
  }
  Picture of_pdf(int dots) {
    written<PdfFilter>("page.pdf");
    output_of("pdftoppm -png -r " + std::to_string(dots) + " " + folder.file("page.pdf") + " " + folder.file("pdf"));
    return picture_of_png(folder.file("pdf-1.png"));
  }
};

TEST_F(Raster, PictureIsThatOfThePdf) {
  pages.add(mixed_page());
  expect_alike(picture_of_png(written<PngFilter>("page.png")), of_pdf(150), 0.1);
}

TEST_F(Raster, TiffIsThatOfThePdf) {
  pages.add(mixed_page());
  const std::vector<Picture> pictures = pictures_of_tiff(written<TiffFilter>("page.tif"));
  ASSERT_EQ(pictures.size(), 1u);
  expect_alike(pictures[0], of_pdf(204), 0.15);
}

TEST_F(Raster, TiffHoldsAllPagesInOneFile) {
  for (int n = 1; n <= 3; ++n) pages.add(form_page(n));
  pages.add(PageBuilder(4, 16838, 11906).page());
  const std::vector<Picture> pictures = pictures_of_tiff(written<TiffFilter>("form.tif"));
  ASSERT_EQ(pictures.size(), 4u);
  EXPECT_EQ(pictures[0].width, 1687);  // 11906 twips at 204 dots an inch
  EXPECT_EQ(pictures[0].height, 2385);
  EXPECT_EQ(pictures[3].width, 2385);
  for (int n = 0; n < 3; ++n) EXPECT_GT(pictures[static_cast<std::size_t>(n)].mean(0, 0, 1600), 0.01);
  EXPECT_EQ(pictures[3].mean(0, 0, 1600), 0);
  EXPECT_EQ(folder.files(), 1u);
}

TEST_F(Raster, ThinAndPaleThingsAreNotLostInBlackAndWhite) {
  PageBuilder page;
  page.look.weight = 2;  // a tenth of a point, a quarter of a dot
  page.line(1003, 1005, 5000, 0);
  page.line(1003, 1005, 0, 5000);
  page.style.color = 0xA0A0A0;
  page.style.half_points = 12;
  page.text("llllllllll", 3000, 3000, 3000, 300);
  pages.add(page.page());
  const Picture picture = pictures_of_tiff(written<TiffFilter>("thin.tif"))[0];
  const auto column = [&](int x, int top, int bottom) {
    int dots = 0;
    for (int y = top; y < bottom; ++y) dots += picture.at(x, y) > 0.5;
    return dots;
  };
  EXPECT_EQ(column(500, 0, 300), 1);  // the level rule crosses every column once
  int upright = 0;
  for (int x = 130; x < 155; ++x) upright += column(x, 200, 800) == 600;
  EXPECT_EQ(upright, 1);
  int strokes = 0;
  for (int x = 420; x < 500; ++x) strokes += column(x, 424, 445) > 8;
  EXPECT_GE(strokes, 10);
}

TEST_F(Raster, OnePngAPage) {
  pages.add(form_page(1));
  written<PngFilter>("one.png");
  EXPECT_TRUE(std::filesystem::exists(folder.file("one.png")));
  EXPECT_EQ(folder.files(), 1u);
  pages.add(form_page(2));
  written<PngFilter>("two.png");
  EXPECT_TRUE(std::filesystem::exists(folder.file("two-1.png")));
  EXPECT_TRUE(std::filesystem::exists(folder.file("two-2.png")));
  EXPECT_EQ(folder.files(), 3u);
}

TEST_F(Raster, ColoursOfAPicture) {
  PageBuilder page(1, 1440, 1440);
  page.look.weight = 0;
  page.look.filled = true;
  page.look.fill = 0xC81E05;
  page.shape(0, 0, 720, 1440);
  pages.add(page.page());
  cairo_surface_t* surface = cairo_image_surface_create_from_png(written<PngFilter>("colour.png").c_str());
  const unsigned char* dots = cairo_image_surface_get_data(surface);
  EXPECT_EQ(std::vector<int>(dots, dots + 3), (std::vector<int>{0x05, 0x1E, 0xC8}));  // blue, green, red
  EXPECT_EQ(std::vector<int>(dots + 4 * 149, dots + 4 * 149 + 3), (std::vector<int>{255, 255, 255}));
  cairo_surface_destroy(surface);
}

TEST_F(Raster, SamePagesGiveTheSameBytes) {
  pages.add(mixed_page());
  EXPECT_EQ(read_file(written<TiffFilter>("a.tif")), read_file(written<TiffFilter>("b.tif")));
  EXPECT_EQ(read_file(written<PngFilter>("a.png")), read_file(written<PngFilter>("b.png")));
}

TEST_F(Raster, AFullDiskOrAMissingFolderLeavesNothing) {
  for (int n = 1; n <= 3; ++n) pages.add(form_page(n));
  rlimit before = {};
  getrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit small = {9000, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  EXPECT_THROW(written<TiffFilter>("full.tif"), value::Failure);
  EXPECT_THROW(written<PngFilter>("full.png"), value::Failure);
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(folder.files(), 0u);
  EXPECT_THROW(written<TiffFilter>("no such folder/a.tif"), value::Failure);
  EXPECT_THROW(written<PngFilter>("no such folder/a.png"), value::Failure);
}

// The second page's file cannot be put in place: the first one goes too.
TEST_F(Raster, AllPicturesOrNone) {
  pages.add(form_page(1));
  pages.add(form_page(2));
  std::filesystem::create_directories(folder.file("form-2.png/in the way"));
  EXPECT_THROW(written<PngFilter>("form.png"), value::Failure);
  EXPECT_EQ(folder.files(), 2u);  // what stood in the way
}

}  // namespace
}  // namespace dorvo::export_
