#include "export/tiff_filter.h"

#include <tiffio.h>

#include <cerrno>
#include <cstdarg>
#include <cstring>
#include <vector>

#include "export/cairo_painter.h"
#include "export/output_file.h"
#include "value/failure.h"

namespace dorvo::export_ {
namespace {

// Bits of a row, the leftmost the highest: 1 where at least half of a dot is ink.
void pack_row(const unsigned char* ink, int width, unsigned char* bits) {
  for (int x = 0; x < width; x += 8) {
    unsigned byte = 0;
    const int count = width - x < 8 ? width - x : 8;
    for (int i = 0; i < count; ++i) byte |= static_cast<unsigned>(ink[x + i] >> 7) << (7 - i);
    *bits++ = static_cast<unsigned char>(byte);
  }
}

}  // namespace

// The open file under libtiff's own handle. A failed write is kept until libtiff comes back, since its C code must not
// see an exception.
struct TiffFilter::Writer {
  OutputFile file;
  int error = 0;  // errno of the first write that failed
  TIFF* tiff = nullptr;
  std::vector<unsigned char> bits;

  explicit Writer(const std::string& target) : file(target) {
    TIFFOpenOptions* options = TIFFOpenOptionsAlloc();
    const auto silent = [](TIFF*, void*, const char*, const char*, va_list) { return 1; };
    TIFFOpenOptionsSetErrorHandlerExtR(options, silent, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options, silent, nullptr);
    tiff = TIFFClientOpenExt(target.c_str(), "w", this, read, write, seek, close, size, nullptr, nullptr, options);
    TIFFOpenOptionsFree(options);
    if (!tiff) fail();
  }
  ~Writer() {
    if (tiff) TIFFCleanup(tiff);
  }

  [[noreturn]] void fail() const {
    throw value::Failure(value::Error::CannotWrite,
                         "Cannot write \"" + file.target() + "\": " + (error ? std::strerror(error) : "TIFF refused"));
  }
  void check(bool done) const {
    if (!done || error) fail();
  }

  void page(const engine::Page& page) {
    PageImage image(page, kDotsPerInch, CAIRO_FORMAT_A8);
    image.draw(page, Tone::Ink);
    cairo_surface_flush(image.surface());
    pack(image);

    const auto rows = static_cast<std::uint32_t>(image.height());
    bool done = TIFFSetField(tiff, TIFFTAG_SUBFILETYPE, FILETYPE_PAGE) == 1;
    done = done && TIFFSetField(tiff, TIFFTAG_IMAGEWIDTH, static_cast<std::uint32_t>(image.width()));
    done = done && TIFFSetField(tiff, TIFFTAG_IMAGELENGTH, rows);
    done = done && TIFFSetField(tiff, TIFFTAG_BITSPERSAMPLE, 1) && TIFFSetField(tiff, TIFFTAG_SAMPLESPERPIXEL, 1);
    done = done && TIFFSetField(tiff, TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_MINISWHITE);
    done = done && TIFFSetField(tiff, TIFFTAG_COMPRESSION, COMPRESSION_CCITTFAX4);
    done = done && TIFFSetField(tiff, TIFFTAG_ROWSPERSTRIP, rows);
    done = done && TIFFSetField(tiff, TIFFTAG_XRESOLUTION, double{kDotsPerInch});
    done = done && TIFFSetField(tiff, TIFFTAG_YRESOLUTION, double{kDotsPerInch});
    done = done && TIFFSetField(tiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH);
    done = done && TIFFWriteEncodedStrip(tiff, 0, bits.data(), static_cast<tmsize_t>(bits.size())) >= 0;
    check(done && TIFFWriteDirectory(tiff) == 1);
  }

  void pack(const PageImage& image) {
    const unsigned char* ink = cairo_image_surface_get_data(image.surface());
    const auto stride = static_cast<std::size_t>(cairo_image_surface_get_stride(image.surface()));
    const std::size_t row_bytes = (static_cast<std::size_t>(image.width()) + 7) / 8;
    bits.resize(row_bytes * static_cast<std::size_t>(image.height()));
    for (std::size_t y = 0; y < static_cast<std::size_t>(image.height()); ++y)
      pack_row(ink + y * stride, image.width(), bits.data() + y * row_bytes);
  }

  void end() {
    check(std::fflush(file.stream()) == 0 || note_error());
    TIFFCleanup(tiff);
    tiff = nullptr;
    check(true);
    file.commit();
  }

  bool note_error() {
    if (error == 0) error = errno ? errno : EIO;
    return false;
  }

  static Writer& of(thandle_t handle) { return *static_cast<Writer*>(handle); }
  static tmsize_t read(thandle_t handle, void* bytes, tmsize_t count) {
    return static_cast<tmsize_t>(std::fread(bytes, 1, static_cast<std::size_t>(count), of(handle).file.stream()));
  }
  static tmsize_t write(thandle_t handle, void* bytes, tmsize_t count) {
    const std::size_t done = std::fwrite(bytes, 1, static_cast<std::size_t>(count), of(handle).file.stream());
    if (static_cast<tmsize_t>(done) != count) of(handle).note_error();
    return static_cast<tmsize_t>(done);
  }
  static toff_t seek(thandle_t handle, toff_t to, int whence) {
    std::FILE* file = of(handle).file.stream();
    if (fseeko(file, static_cast<off_t>(to), whence) != 0) of(handle).note_error();
    return static_cast<toff_t>(ftello(file));
  }
  static int close(thandle_t) { return 0; }
  static toff_t size(thandle_t handle) {
    const toff_t here = seek(handle, 0, SEEK_CUR), end = seek(handle, 0, SEEK_END);
    seek(handle, here, SEEK_SET);
    return end;
  }
};

TiffFilter::TiffFilter() = default;
TiffFilter::~TiffFilter() = default;

void TiffFilter::begin() {
  writer_ = std::make_unique<Writer>(FileName);
}

void TiffFilter::page(const engine::PagePtr& page) {
  writer_->page(*page);
}

void TiffFilter::end() {
  writer_->end();
  writer_.reset();
}

}  // namespace dorvo::export_
