#include "export/png_filter.h"

#include <cstdio>
#include <filesystem>

#include "export/cairo_painter.h"
#include "value/failure.h"

namespace dorvo::export_ {
namespace {

// "dir/form.png" and 3: "dir/form-3.png".
std::string page_file(const std::string& file, std::size_t number) {
  const std::filesystem::path path(file);
  const std::string name = path.stem().string() + "-" + std::to_string(number) + path.extension().string();
  return (path.parent_path() / name).string();
}

// Cairo calls this from C code, which no exception may cross: what went wrong waits here.
struct PngSink {
  OutputFile& file;
  std::exception_ptr failure;

  static cairo_status_t write(void* sink, const unsigned char* bytes, unsigned length) {
    auto& self = *static_cast<PngSink*>(sink);
    try {
      self.file.write({reinterpret_cast<const char*>(bytes), length});
      return CAIRO_STATUS_SUCCESS;
    } catch (...) {
      self.failure = std::current_exception();
      return CAIRO_STATUS_WRITE_ERROR;
    }
  }
};

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
  PngSink sink{*files_.back(), nullptr};
  const cairo_status_t status = cairo_surface_write_to_png_stream(image.surface(), PngSink::write, &sink);
  if (sink.failure) std::rethrow_exception(sink.failure);
  if (status != CAIRO_STATUS_SUCCESS)
    throw value::Failure(value::Error::CannotWrite,
                         "Cannot write \"" + FileName + "\": " + cairo_status_to_string(status));
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
